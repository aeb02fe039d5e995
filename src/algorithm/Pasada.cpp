// The frame of the pass: its states and the loop that goes from one to the next.

#include "../log/SinFortify.h"

#include "Pasada.h"

namespace zarven {

Pasada::Pasada(tRecalculo& motor, char opcion, int recurso)
    : motor_(motor), opcion_(opcion), recurso_(recurso) {}

//   state                        goes to
//   fill, transcoding            fill, no transcoding | unify
//   fill, no transcoding         check | unify
//   check empty input            unify | fill | uncomplete
//   uncomplete modules           unify | fill | optimize
//   unify inputs                 uncomplete | optimize | end
//   optimize                     check | end
//
// It comes to an end: a fill goes on to anything but unify only when it has placed a service, unify goes
// back only when it has freed an input, and optimize, the one phase that can bring services back, is
// entered four times at most.
void Pasada::ejecutar() {
    Estado estado = reglas::estadoDeRelleno(recurso_);
    for (;;) {
        switch (estado) {
        case Estado::STATUS_FILL_INPUTS_SERVICE_TRANSCODING:
            estado = rellenarConTranscoding();
            break;
        case Estado::STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING:
            estado = rellenarSinTranscoding();
            break;
        case Estado::STATUS_CHECK_EMPTY_INPUT:
            estado = comprobarEntradasVacias();
            break;
        case Estado::STATUS_UNCOMPLETE_MODULES:
            estado = completarModulos();
            break;
        case Estado::STATUS_UNIFY_INPUTS:
            estado = unificarEntradas();
            break;
        case Estado::STATUS_OPTIMIZE:
            estado = optimizar();
            break;
        case Estado::STATUS_END:
            corregirPrimerasEntradas();
            return;
        }
    }
}

void tRecalculo::RecalculationAlgorithm(char opcion, int recurso) {
    Pasada(*this, opcion, recurso).ejecutar();
}

} // namespace zarven
