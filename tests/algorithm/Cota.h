// A bound on the length of a run, kept while it runs: every line of the log is paid from an allowance that
// is granted by what stands in the maps. A run that overdraws it is ended by an exception, so that one that
// would go on for ever fails instead of hanging.
//
// What is granted, with U entries in the index, O the most outputs of a module, P the most entries on the
// outputs of a module, M modules, I inputs in all, d lines to dump a service and t = 3 O + 1 to try to
// place one:
//
//   fill         3 + I (7 + U t)               every input is offered one stream, each of its services once
//   check        1
//   uncomplete   1 + I (2 + U (d + t))         every input tries its stream, and dumps what it tries
//   unify        1 + 2 M I + M + 14 I^2        every ordered pair of inputs is a candidate at most, of
//                + the dump of the modules     13 lines; outputs carry what inputs do after gathering
//   optimize     a line per network and        no service is in hand twice: each stream walks those it had
//                stream, and 5                 at the start, and nothing is staged in another one;
//   U times:     M (3 + M) + I (1 + 2 M) + 6   choosing the modules: the search may be repeated for each
//                + O (1 + P) + O^2 (1 + P      dumps of the outputs, and all pairs of services. An exchange
//                + P (1 + P (40 + 3 t)))       that fails takes as many off a module as it puts on it, so
//                                              P holds until one succeeds, which ends the search
//   and, once a principal is taken off, the dump of the index as it is then.
//
// The states of a pass are bounded too, from optimize to optimize. With u entries in the index and T tuned
// inputs at the beginning of such a stretch: nothing adds to the index, so at most u fills place something.
// Unify leads back only after it has lowered the number of tuned inputs, and only a service placed by a
// fill raises it: at most T + u + 1 entries into unify. A fill that places nothing leads to unify; the check
// follows a fill that placed something, or begins the stretch; the uncomplete phase follows the check or
// unify. In all 3 u + 3 + 3 (T + u + 1) states. Optimize is entered four times.

#ifndef ZARVEN_TESTS_COTA_H
#define ZARVEN_TESTS_COTA_H

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>

#include "support/Lineas.h"
#include "tRecalculo.h"

namespace cota {

using lineas::empieza;
using lineas::Estado;
using zarven::tMapaModulos;
using zarven::tMapaONIDs;
using zarven::tRecalculo;

// What stands in a map of modules and an index.
struct Medidas {
    std::size_t M = 0, I = 0, O = 0, P = 0, U = 0;
    std::size_t salidas = 0;      // in all
    std::size_t enModulos = 0;    // entries on inputs and outputs
    std::size_t streams = 0;      // networks and streams of the index
    std::size_t sintonizadas = 0; // inputs with ONID and TSID

    Medidas(const tMapaModulos& modulos, const tMapaONIDs& indice) {
        M = modulos.size();
        for (const auto& [mac, modulo] : modulos) {
            I += modulo.mapEntradas.size();
            O = std::max(O, modulo.mapSalidas.size());
            salidas += modulo.mapSalidas.size();
            for (const auto& [numero, entrada] : modulo.mapEntradas) {
                enModulos += entrada.MapaServicios.size();
                sintonizadas += entrada.ONID != 0 && entrada.TSID != 0;
            }
            std::size_t deEste = 0;
            for (const auto& [id, salida] : modulo.mapSalidas)
                deEste += salida.MapaServicios.size();
            enModulos += deEste;
            P = std::max(P, deEste);
        }
        for (const auto& [onid, rec_onid] : indice) {
            streams += 1 + rec_onid.MapRec_TSIDs.size();
            for (const auto& [tsid, rec_tsid] : rec_onid.MapRec_TSIDs)
                U += rec_tsid.MapRec_Services.size();
        }
    }

    // Takes the larger of each.
    void ampliar(const Medidas& otra) {
        M = std::max(M, otra.M);
        I = std::max(I, otra.I);
        U = std::max(U, otra.U);
        salidas = std::max(salidas, otra.salidas);
        enModulos = std::max(enModulos, otra.enModulos);
        streams = std::max(streams, otra.streams);
    }

    std::size_t volcadoDelIndice(std::size_t d) const { return 6 * streams + d * U; }
    // After gathering the outputs carry what the inputs do, which may be more than they did.
    std::size_t volcadoDeModulos(std::size_t d) const {
        return 6 + 9 * M + 6 * (I + salidas) + 2 * d * enModulos;
    }
};

class Cota {
public:
    // `d`: the most lines that a dump of one service takes.
    Cota(const tRecalculo& engine, std::size_t lineasDeServicio) : motor(engine), d(lineasDeServicio) {
        const Medidas m(motor.Mapa_ModulosCabecera_Inicial, motor.Mapa_ONIDs_Inicial);
        conceder(20 + m.volcadoDelIndice(d));
    }

    // To be called with every line of the log.
    void leer(const std::string& linea) {
        if (linea.compare(0, 2, "||") != 0)
            interpretar(linea);
        gastar(lineas, "the run is longer than its bound in", dentroDe);
    }

    // All that was granted: the bound of the run.
    std::size_t concedidas() const { return total; }

private:
    void interpretar(const std::string& linea) {
        if (empieza(linea, lineas::PRINCIPIO_DE_OPCION)) {
            nuevoTrecho = true;
            vueltas = 0;
        } else if (const Estado estado = lineas::estado(linea); estado != Estado::NINGUNO) {
            entrar(estado, linea);
        } else if (empieza(linea, lineas::SERVICIO_EN_MANO)) {
            gastar(manos, "more services are in hand than the index held in", dentroDe);
            conceder(deUnServicioEnMano(Medidas(motor.Mapa_ModulosCabecera_Proceso, motor.Mapa_ONIDs)));
        } else if (empieza(linea,
                           "Try_to_Delete_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[0]")) {
            conceder(Medidas(motor.Mapa_ModulosCabecera_Proceso, motor.Mapa_ONIDs).volcadoDelIndice(d));
        } else if (empieza(linea, lineas::VUELTA_DE_OPTIMIZAR)) {
            nuevoTrecho = true;
        } else if (lineas::terminaLaOpcion(linea)) {
            dentroDe = linea;
            lineas = 0;
            conceder(delConductor());
        }
    }

    static void gastar(std::size_t& de, const char* queja, const std::string& donde) {
        if (de == 0)
            throw std::runtime_error(std::string(queja) + " \"" + donde + "\"");
        --de;
    }

    void conceder(std::size_t cuantas) {
        lineas += cuantas;
        total += cuantas;
    }

    void entrar(Estado estado, const std::string& linea) {
        const Medidas m(motor.Mapa_ModulosCabecera_Proceso, motor.Mapa_ONIDs);
        if (nuevoTrecho)
            estados = 6 * m.U + 3 * m.sintonizadas + 6;
        nuevoTrecho = false;
        gastar(estados, "the pass goes through more states than it may at", linea);

        const std::size_t t = 3 * m.O + 1;
        dentroDe = linea;
        lineas = 0;
        conceder(2 * m.M); // the first-input fix-up, should this state be the last
        switch (estado) {
        case Estado::STATUS_FILL_INPUTS_SERVICE_TRANSCODING:
        case Estado::STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING:
            conceder(3 + m.I * (7 + m.U * t));
            break;
        case Estado::STATUS_CHECK_EMPTY_INPUT:
            conceder(1);
            break;
        case Estado::STATUS_UNCOMPLETE_MODULES:
            conceder(1 + m.I * (2 + m.U * (d + t)));
            break;
        case Estado::STATUS_UNIFY_INPUTS:
            conceder(1 + 2 * m.M * m.I + m.M + 14 * m.I * m.I + m.volcadoDeModulos(d));
            break;
        default:
            conceder(m.streams + 5);
            manos = m.U;
            if (++vueltas > 4)
                throw std::runtime_error("optimize is entered more than four times");
        }
    }

    std::size_t deUnServicioEnMano(const Medidas& m) const {
        const std::size_t t = 3 * m.O + 1;
        return m.M * (3 + m.M) + m.I * (1 + 2 * m.M) + 6 + m.O * (1 + m.P) +
               m.O * m.O * (1 + m.P + m.P * (1 + m.P * (40 + 3 * t)));
    }

    // What the driver logs between two passes or at the end: a few lines, the clones twice, what each clone
    // meets on its search, the result dumped and told service by service.
    std::size_t delConductor() const {
        Medidas m(motor.Mapa_ModulosCabecera_Proceso, motor.Mapa_ONIDs);
        m.ampliar(Medidas(motor.Mapa_ModulosCabecera_Final, motor.Mapa_ONIDs_Final));
        const std::size_t clones = motor.listaServiciosClonados.size();
        m.enModulos += 2 * clones;
        return 60 + 2 * d * clones + clones * 2 * (1 + m.enModulos) * (1 + m.enModulos) +
               m.volcadoDelIndice(d) + m.volcadoDeModulos(d) + 3 * m.M + 2 * m.I + m.enModulos +
               2 * m.streams + m.U;
    }

    const tRecalculo& motor;
    const std::size_t d;
    std::size_t lineas = 0;
    std::size_t estados = 0;
    std::size_t manos = 0;
    int vueltas = 0;
    bool nuevoTrecho = true;
    std::string dentroDe = "the beginning";
    std::size_t total = 0;
};

} // namespace cota

#endif
