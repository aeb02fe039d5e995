// Evening out the number of services among the outputs of each module, pair by pair.

#include "../log/SinFortify.h"

#include "tRecalculo.h"

#include <iterator>
#include <syslog.h>

namespace zarven {

namespace {

// False when there is no service to move: an entry that the caller left empty.
bool moverPrimero(tRec_Salida& desde, tRec_Salida& hasta) {
    const std::shared_ptr<tRec_Servicio> servicio = desde.MapaServicios.begin()->second;
    if (hasta.addServicioALaSalida(servicio) == 0)
        return false;
    desde.DeleteServicioALaSalida(servicio);
    return true;
}

// Every move adds one to the emptier output, so the loops end whatever the fuller one loses by it.
void igualar(tRec_Salida& actual, tRec_Salida& siguiente) {
    const auto& enActual = actual.MapaServicios;
    const auto& enSiguiente = siguiente.MapaServicios;
    if (enSiguiente.size() < enActual.size()) {
        while (enSiguiente.size() + 1 < enActual.size() && moverPrimero(actual, siguiente))
            ::syslog(LOG_DEBUG, "-----------*** Movemos un servicio de itSalidaActual a itSalidaSiguiente ");
    } else {
        while (enActual.size() + 1 < enSiguiente.size() && moverPrimero(siguiente, actual))
            ::syslog(LOG_DEBUG, "-----------*** Movemos un servicio de itSalidaSiguiente a itSalidaActual ");
    }
}

void evaluarSalida(tMapaSalidas& salidas, tMapaSalidas::iterator actual) {
    ::syslog(LOG_DEBUG, "-------- Evaluando Salida Actual: %d ....", actual->second.NumSalida);
    ::syslog(LOG_DEBUG, "----------- NumServicios Salida Actual : %d ....",
             static_cast<int>(actual->second.MapaServicios.size()));
    for (auto siguiente = std::next(actual); siguiente != salidas.end(); ++siguiente) {
        // An output without ceiling takes part as the first of a pair only.
        if (siguiente->second.BitRateMax == 0)
            continue;
        ::syslog(LOG_DEBUG, "--------*** Evaluando Salida Siguiente: %d ....", siguiente->second.NumSalida);
        ::syslog(LOG_DEBUG, "-----------*** NumServicios Salida Siguiente : %d ....",
                 static_cast<int>(siguiente->second.MapaServicios.size()));
        igualar(actual->second, siguiente->second);
    }
}

} // namespace

std::uint32_t tRecalculo::Load_Balance(tMapaModulos* mapa) {
    ::syslog(LOG_DEBUG, "Load_Balance....");
    if (mapa == nullptr)
        return 1;
    for (auto& [mac, modulo] : *mapa) {
        ::syslog(LOG_DEBUG, "---- Evaluando MAC: %s .... num salidas %d", mac.c_str(),
                 static_cast<int>(modulo.mapSalidas.size()));
        for (auto it = modulo.mapSalidas.begin(); it != modulo.mapSalidas.end(); ++it)
            evaluarSalida(modulo.mapSalidas, it);
    }
    return 1;
}

} // namespace zarven
