// State 6: for each service still unassigned, an exchange between two modules that makes room for it.
//
// The state is entered four times at most in one pass. Exchanges stage services in the index and erase
// streams from it, so the sweep goes from key to key and never holds on to an entry.

#include "../log/SinFortify.h"

#include "Pasada.h"

#include <syslog.h>

#include "../log/Marcos.h"
#include "Paseo.h"
#include "Recorrido.h"
#include "ServicioEnMano.h"
#include "Textos.h"

namespace zarven {

namespace {

constexpr int VUELTAS_MAX = 3;

// What Clear_ONID_TSID tells when the last stream of a network went.
constexpr int ONID_ELIMINADO = 2;

} // namespace

Estado Pasada::optimizar() {
    marcos::linea(" RecalculationAlgorithm ---> STATUS_OPTIMIZE");
    ++vueltas_Optimize;
    // No exchange tunes an input, so who receives what holds for the whole sweep.
    const Recorrido recorrido(motor.Mapa_ModulosCabecera_Proceso);
    auto& indice = motor.Mapa_ONIDs;
    for (auto it = indice.begin(); it != indice.end();) {
        const unsigned short onid = it->first;
        ::syslog(LOG_DEBUG, "Hay servicios sin asignar con ONID %d ", onid);
        optimizarONID(recorrido, onid, it->second);
        it = indice.upper_bound(onid);
    }
    return finDeOptimizar();
}

void Pasada::optimizarONID(const Recorrido& recorrido, unsigned short onid, Rec_ONID& rec_onid) {
    auto& streams = rec_onid.MapRec_TSIDs;
    for (auto it = streams.begin(); it != streams.end();) {
        const unsigned short tsid = it->first;
        ::syslog(LOG_DEBUG, "Hay servicios ( %d ) sin asignar con TSID %d ",
                 static_cast<int>(it->second.MapRec_Services.size()), tsid);
        // With its last stream the network is gone, and rec_onid with it.
        if (optimizarTSID(recorrido, onid, tsid, it->second.MapRec_Services) == ONID_ELIMINADO)
            return;
        it = streams.upper_bound(tsid);
    }
}

int Pasada::optimizarTSID(const Recorrido& recorrido, unsigned short onid, unsigned short tsid,
                          tMapaServicios& servicios) {
    int n = 0;
    for (Paseo paseo(servicios); paseo.avanzar();) {
        ::syslog(LOG_DEBUG, "soy el servicio nº%d", ++n);
        ::syslog(LOG_DEBUG, "Hay servicios sin asignar con  idServicio: (itService_Out) %d",
                 static_cast<int>(paseo.clave()));
        const int clear =
            ServicioEnMano(motor, recorrido, recurso, onid, tsid, servicios, paseo).hacerSitio();
        if (clear != 0)
            return clear;
    }
    return 0;
}

Estado Pasada::finDeOptimizar() const {
    ::syslog(LOG_DEBUG, " Hemos hecho %d vueltas del Optimize", vueltas_Optimize);
    Estado siguiente = Estado::STATUS_END;
    if (vueltas_Optimize <= VUELTAS_MAX) {
        marcos::linea(textos::NO_SE_PUEDEN_ANADIR);
        if (quedanServicios())
            siguiente = Estado::STATUS_CHECK_EMPTY_INPUT;
    }
    ::syslog(LOG_DEBUG, " status_algorithm %d", static_cast<int>(siguiente));
    return siguiente;
}

} // namespace zarven
