// Engines brought by hand into the state that a test wants, also into those that failed exchanges leave
// behind.

#ifndef RECALCULO_ENGINE_BY_HAND_H
#define RECALCULO_ENGINE_BY_HAND_H

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "placement/made_services.h"
#include "placement/reasons/refusal.h"
#include "placement/running/engine_run.h"
#include "placement/running/host.h"

namespace zarven::tool {

inline Service with_pids(Service made, std::uint16_t pids) {
    made.ca_pids = pids;
    return made;
}

inline Service transcoded(Service made, std::uint16_t transcoding = 1) {
    made.transcoding = transcoding;
    return made;
}

/// A head-end of two modules: two inputs and two outputs each, the first with transcoders.
inline Headend two_modules() {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 2, {10000, 10000}, 8, 1, 2, 1});
    headend.modules.push_back({"B", 3, false, 2, {10000, 10000}, 8, 0, 0, 0});
    return headend;
}

/// A loaded engine whose result is empty: the loaded modules, nothing placed, nothing left out.
class EngineByHand : public testing::Test {
protected:
    /// Modules A, B, ... with these inputs and one output each, with the services.
    void load(const std::vector<std::uint16_t>& inputs, const std::vector<Service>& services,
              const std::vector<Clone>& clones = {}) {
        Headend headend;
        for (const std::uint16_t number : inputs) {
            const std::string mac(1, static_cast<char>('A' + headend.modules.size()));
            headend.modules.push_back({mac, 3, mac == "A", number, {10000}, 8, 1, 2, 1});
        }
        headend.services = services;
        headend.clones = clones;
        load(headend);
    }

    void load(const Headend& headend) {
        run = load_engine(headend, "f");
        run.engine.Mapa_ModulosCabecera_Final = run.engine.Mapa_ModulosCabecera_Inicial;
    }

    void run_it(const Headend& headend) {
        const host::Log silence("");
        run = load_engine(headend, "f");
        run_engine(run, "f");
    }

    std::shared_ptr<tRec_Servicio> loaded(std::size_t index) { return run.engine.listaServicios.at(index); }
    tRec_Modulo& module(const std::string& mac) { return run.engine.Mapa_ModulosCabecera_Final.at(mac); }
    tRec_Entrada& input(const std::string& mac, unsigned short number) {
        return module(mac).mapEntradas.at(number);
    }
    tRec_Salida& output(const std::string& mac, unsigned short number = 1) {
        return module(mac).mapSalidas.at(number);
    }

    void tune(const std::string& mac, unsigned short input, unsigned short tsid) {
        module(mac).mapEntradas.at(input).confEntrada(tsid, 1);
    }

    /// Tunes every input of the module to a stream that no service is of.
    void occupy(const std::string& mac) {
        for (auto& [number, input] : module(mac).mapEntradas) {
            input.confEntrada(999, 1);
            input.MapaServicios.emplace(1, std::make_shared<tRec_Servicio>());
        }
    }

    /// Puts a service on an output alone, and counts it there.
    void put_on_output(const std::string& mac, const std::shared_ptr<tRec_Servicio>& placed,
                       unsigned short number) {
        output(mac, number).addServicioALaSalida(placed);
        ++output(mac, number).NumServicios;
    }

    /// Puts a service on an input, which is tuned to its stream, and on an output, with all the engine's
    /// counts but those of the transcoders.
    void place(const std::string& mac, const std::shared_ptr<tRec_Servicio>& placed, unsigned short in,
               unsigned short out) {
        input(mac, in).confEntrada(placed->TSID, placed->ONID);
        module(mac).addService(placed, in, out);
        ++output(mac, out).NumServicios;
    }

    /// Puts a clone on an input and an output, free of charge.
    void attach(const std::string& mac, std::size_t index, unsigned short in, unsigned short out) {
        module(mac).addService(run.clones.at(index), in, out);
        run.engine.listaServiciosClonados.clear();
    }

    void leave_out(const std::shared_ptr<tRec_Servicio>& left, unsigned short tsid) {
        run.engine.Mapa_ONIDs_Final[left->ONID].MapRec_TSIDs[tsid].MapRec_Services.emplace(left->idService,
                                                                                           left);
    }
    void leave_out(const std::shared_ptr<tRec_Servicio>& left) { leave_out(left, left->TSID); }

    EngineRun run;
};

} // namespace zarven::tool

#endif
