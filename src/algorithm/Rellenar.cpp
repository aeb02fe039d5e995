// States 1 and 2: one sweep over the inputs, each empty one offered a stream of the working index.

#include "../log/SinFortify.h"

#include "Pasada.h"

#include <optional>
#include <syslog.h>

#include "../engine/Asignar.h"
#include "../log/Marcos.h"
#include "../reglas/Reglas.h"
#include "Textos.h"

namespace zarven {

Estado Pasada::rellenarConTranscoding() {
    marcos::linea(" RecalculationAlgorithm ---> STATUS_FILL_INPUTS_SERVICE_TRANSCODING");
    return barrer(true, Estado::STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING);
}

Estado Pasada::rellenarSinTranscoding() {
    marcos::linea(" RecalculationAlgorithm ---> STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING");
    return barrer(false, Estado::STATUS_CHECK_EMPTY_INPUT);
}

Estado Pasada::barrer(bool transcoding, Estado siguiente) {
    colocados_ = 0;
    std::optional<Elegibles> elegibles;
    for (auto& [mac, modulo] : motor_.Mapa_ModulosCabecera_Proceso)
        for (auto& [numero, entrada] : modulo.mapEntradas) {
            if (transcoding)
                ::syslog(LOG_DEBUG, " RecalculationAlgorithm ---> itEntrada : %du", numero);
            const char modo = reglas::modoDeEntrada(opcion_, numero);
            if (!reglas::sinServicios(entrada) || !quedanServicios() || modo == reglas::NO_SE_OFRECE)
                continue;
            if (!elegibles)
                elegibles.emplace(motor_.Mapa_ONIDs, transcoding);
            colocados_ += asignarServicios(motor_, *elegibles, modulo, entrada, modo, transcoding);
        }

    if (colocados_ == 0)
        marcos::linea(textos::NO_SE_PUEDEN_ANADIR);
    marcos::linea(" RecalculationAlgorithm ---> FIN STATUS_INPUT_RECALCULATION");
    return reglas::trasRellenar(colocados_, siguiente);
}

} // namespace zarven
