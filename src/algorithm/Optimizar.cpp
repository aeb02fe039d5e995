// State 6: for each service still unassigned, an exchange of two others that makes room for it.
//
// The state is entered four times at most in one pass. Exchanges stage services in the index and erase
// streams from it, so the sweep goes from key to key and never holds on to an entry.

#include "../log/SinFortify.h"

#include "Pasada.h"

#include <syslog.h>

#include "../log/Marcos.h"
#include "../reglas/Reglas.h"
#include "BusquedaDePermuta.h"
#include "Textos.h"

namespace zarven {

namespace {

// What Clear_ONID_TSID tells when the last stream of a network went.
constexpr int ONID_ELIMINADO = 2;

} // namespace

Estado Pasada::optimizar() {
    marcos::linea(" RecalculationAlgorithm ---> STATUS_OPTIMIZE");
    ++vueltas_;
    // No exchange tunes an input, so who receives what holds for the whole sweep.
    const Receptores receptores(motor_.Mapa_ModulosCabecera_Proceso);
    auto& indice = motor_.Mapa_ONIDs;
    for (auto it = indice.begin(); it != indice.end();) {
        const unsigned short onid = it->first;
        ::syslog(LOG_DEBUG, "Hay servicios sin asignar con ONID %d ", onid);
        optimizarONID(receptores, onid, it->second);
        it = indice.upper_bound(onid);
    }
    return finDeOptimizar();
}

void Pasada::optimizarONID(const Receptores& receptores, unsigned short onid, Rec_ONID& red) {
    auto& streams = red.MapRec_TSIDs;
    for (auto it = streams.begin(); it != streams.end();) {
        const unsigned short tsid = it->first;
        ::syslog(LOG_DEBUG, "Hay servicios ( %d ) sin asignar con TSID %d ",
                 static_cast<int>(it->second.MapRec_Services.size()), tsid);
        // With its last stream the network is gone, and red with it.
        if (optimizarTSID(receptores, onid, tsid, it->second.MapRec_Services) == ONID_ELIMINADO)
            return;
        it = streams.upper_bound(tsid);
    }
}

int Pasada::optimizarTSID(const Receptores& receptores, unsigned short onid, unsigned short tsid,
                          tMapaServicios& servicios) {
    int n = 0;
    for (PaseoEstable paseo(servicios); paseo.avanzar();) {
        ::syslog(LOG_DEBUG, "soy el servicio nº%d", ++n);
        ::syslog(LOG_DEBUG, "Hay servicios sin asignar con  idServicio: (itService_Out) %d",
                 static_cast<int>(paseo.clave()));
        ServicioEnMano enMano{onid, tsid, servicios, paseo};
        const int clear = BusquedaDePermuta(motor_, receptores, recurso_, enMano).hacerSitio();
        if (clear != 0)
            return clear;
    }
    return 0;
}

Estado Pasada::finDeOptimizar() const {
    ::syslog(LOG_DEBUG, " Hemos hecho %d vueltas del Optimize", vueltas_);
    if (reglas::quedanVueltas(vueltas_))
        marcos::linea(textos::NO_SE_PUEDEN_ANADIR);
    const Estado siguiente = reglas::trasOptimizar(vueltas_, quedanServicios());
    ::syslog(LOG_DEBUG, " status_algorithm %d", static_cast<int>(siguiente));
    return siguiente;
}

} // namespace zarven
