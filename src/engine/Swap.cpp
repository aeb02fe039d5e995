// Swapping what two modules of one kind carry, for a caller who moves a card.

#include "../log/SinFortify.h"

#include "tRecalculo.h"

#include <algorithm>
#include <syslog.h>
#include <utility>

namespace zarven {

namespace {

bool sonCompatibles(const tRec_Modulo& a, const tRec_Modulo& b) {
    return a.Modelo == b.Modelo && a.mapEntradas.size() == b.mapEntradas.size() &&
           a.mapSalidas.size() == b.mapSalidas.size() && a.PIDsModuloMax == b.PIDsModuloMax;
}

// What a module hands over; its identity and transcoders stay with it.
tRec_Modulo apartar(const tRec_Modulo& modulo) {
    tRec_Modulo aux;
    aux.PIDsModulo = modulo.PIDsModulo;
    aux.PIDsModuloMax = modulo.PIDsModuloMax;
    aux.mapEntradas = modulo.mapEntradas;
    aux.mapSalidas = modulo.mapSalidas;
    return aux;
}

void tomarEntradas(tRec_Modulo& modulo, tRec_Modulo& aux) {
    for (auto& [numero, entrada] : modulo.mapEntradas) {
        const auto it = aux.mapEntradas.find(numero);
        if (it == aux.mapEntradas.end())
            continue;
        entrada.ONID = std::exchange(it->second.ONID, static_cast<unsigned short>(0));
        entrada.TSID = std::exchange(it->second.TSID, static_cast<unsigned short>(0));
        entrada.MapaServicios = std::exchange(it->second.MapaServicios, {});
    }
}

// Outputs are paired by their ceiling. One that has been taken is reset, ceiling included, so that an equal
// one finds the next.
bool tomarSalidas(tRec_Modulo& modulo, tRec_Modulo& aux) {
    for (auto& [idSalida, salida] : modulo.mapSalidas) {
        const auto it = std::find_if(
            aux.mapSalidas.begin(), aux.mapSalidas.end(),
            [techo = salida.BitRateMax](const auto& otra) { return otra.second.BitRateMax == techo; });
        if (it == aux.mapSalidas.end())
            return false;
        it->second.BitRateMax = 0;
        salida.BitRateActual = std::exchange(it->second.BitRateActual, 0U);
        salida.MapaServicios = std::exchange(it->second.MapaServicios, {});
        salida.NumServicios = std::exchange(it->second.NumServicios, 0U);
    }
    return true;
}

bool tomarCarga(tRec_Modulo& modulo, tRec_Modulo& aux) {
    modulo.PIDsModulo = aux.PIDsModulo;
    modulo.PIDsModuloMax = aux.PIDsModuloMax;
    tomarEntradas(modulo, aux);
    if (tomarSalidas(modulo, aux))
        return true;
    ::syslog(LOG_DEBUG, "SWAP: ERROR_MODULOS_NO_COMPATIBLES");
    return false;
}

} // namespace

int tRecalculo::swapModulos(tRec_Modulo& modulo1, tRec_Modulo& modulo2) {
    ::syslog(LOG_DEBUG,
             "SWAP: Primero tenemos que comprobar que son el mismo modelo y tienes las mismas entradas y "
             "salidas");
    if (!sonCompatibles(modulo1, modulo2)) {
        ::syslog(LOG_DEBUG, "SWAP: ERROR_MODULOS_NO_COMPATIBLES ");
        return ERROR_MODULOS_NO_COMPATIBLES;
    }

    tRec_Modulo aux1 = apartar(modulo1);
    tRec_Modulo aux2 = apartar(modulo2);
    if (!tomarCarga(modulo1, aux2))
        return ERROR_MODULOS_NO_COMPATIBLES;
    ::syslog(LOG_DEBUG, "SWAP: finalmente copiamos de modulo aux a modulo 2");
    if (!tomarCarga(modulo2, aux1))
        return ERROR_MODULOS_NO_COMPATIBLES;

    ::syslog(LOG_DEBUG,
             "SWAP: Hacemos clear de los maps del modulo_aux para que no nos borre los servicios, ya "
             "que son punteros y el destructor los liberaria");
    ::syslog(LOG_DEBUG, "SWAP: RETURN_OK");
    return RETURN_OK;
}

} // namespace zarven
