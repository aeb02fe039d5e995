// States 1 and 2: one sweep over the inputs, each empty one offered a stream of the working index.

#include "../log/SinFortify.h"

#include "Pasada.h"

#include <optional>
#include <syslog.h>

#include "../engine/Asignar.h"
#include "../log/Marcos.h"
#include "Textos.h"

namespace zarven {

namespace {

constexpr char NO_SE_OFRECE = 0;

// How an input chooses its stream, by the option of the pass and the number of the input: the mixed options
// tell inputs 1 and 2 apart and leave the others alone.
char modoDeEntrada(char option, unsigned short numEntrada) {
    switch (option) {
    case 1:
        return MODO_MAX;
    case 2:
        return numEntrada == 1 ? MODO_MAX : numEntrada == 2 ? MODO_MIN : NO_SE_OFRECE;
    case 3:
        return MODO_MIN;
    case 4:
        return numEntrada == 1 ? MODO_MIN : numEntrada == 2 ? MODO_MAX : NO_SE_OFRECE;
    default:
        return NO_SE_OFRECE;
    }
}

} // namespace

Estado Pasada::rellenarConTranscoding() {
    marcos::linea(" RecalculationAlgorithm ---> STATUS_FILL_INPUTS_SERVICE_TRANSCODING");
    return barrer(true, Estado::STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING);
}

Estado Pasada::rellenarSinTranscoding() {
    marcos::linea(" RecalculationAlgorithm ---> STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING");
    return barrer(false, Estado::STATUS_CHECK_EMPTY_INPUT);
}

Estado Pasada::barrer(bool transcoding, Estado siguiente) {
    servicios_Asignados = 0;
    std::optional<Elegibles> elegibles;
    for (auto& [mac, modulo] : motor.Mapa_ModulosCabecera_Proceso)
        for (auto& [numero, entrada] : modulo.mapEntradas) {
            if (transcoding)
                ::syslog(LOG_DEBUG, " RecalculationAlgorithm ---> itEntrada : %du", numero);
            const char modo = modoDeEntrada(option, numero);
            if (!entrada.MapaServicios.empty() || !quedanServicios() || modo == NO_SE_OFRECE)
                continue;
            if (!elegibles)
                elegibles.emplace(motor.Mapa_ONIDs, transcoding);
            servicios_Asignados += asignarServicios(motor, *elegibles, modulo, entrada, modo, transcoding);
        }

    if (servicios_Asignados == 0)
        marcos::linea(textos::NO_SE_PUEDEN_ANADIR);
    marcos::linea(" RecalculationAlgorithm ---> FIN STATUS_INPUT_RECALCULATION");
    return servicios_Asignados == 0 ? Estado::STATUS_UNIFY_INPUTS : siguiente;
}

} // namespace zarven
