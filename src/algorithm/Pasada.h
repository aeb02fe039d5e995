// One placement pass: a state machine over the working modules and the working index.
//
// A pass fills the inputs, tops up modules with room, gathers streams on one module and exchanges services
// between two to make room for those left out. Every phase is a member function that gives the next state;
// the table of them is in Pasada.cpp, each phase in a file of its own.

#ifndef ZARVEN_ALGORITHM_PASADA_H
#define ZARVEN_ALGORITHM_PASADA_H

#include "tRecalculo.h"

#include "../reglas/Reglas.h"

namespace zarven {

class Receptores;

using reglas::Estado;

class Pasada {
public:
    Pasada(tRecalculo& motor, char opcion, int recurso);

    void ejecutar();

private:
    // The phases (Rellenar.cpp, Completar.cpp, Unificar.cpp, Optimizar.cpp).
    Estado rellenarConTranscoding();
    Estado rellenarSinTranscoding();
    Estado comprobarEntradasVacias();
    Estado completarModulos();
    Estado unificarEntradas();
    Estado optimizar();
    void corregirPrimerasEntradas();

    bool quedanServicios() const { return !motor_.Mapa_ONIDs.empty(); }

    Estado barrer(bool transcoding, Estado siguiente);
    bool hayModuloIncompleto() const;
    bool hayModuloConEntradaVacia() const;
    Estado completarEntradas(tRec_Modulo& modulo, Estado propuesto);
    void optimizarONID(const Receptores& receptores, unsigned short onid, Rec_ONID& red);
    // Gives what Clear_ONID_TSID removed from the index.
    int optimizarTSID(const Receptores& receptores, unsigned short onid, unsigned short tsid,
                      tMapaServicios& servicios);
    Estado finDeOptimizar() const;

    tRecalculo& motor_;
    const char opcion_;
    const int recurso_;
    // Times the optimize state has been entered.
    int vueltas_ = 0;
    // Services placed by the last fill sweep.
    int colocados_ = 0;
};

} // namespace zarven

#endif
