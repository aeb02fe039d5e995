// Engines brought by hand into the state that a test wants: loaded, with nothing placed and nothing left out.

#ifndef RECALCULO_ENGINE_BY_HAND_H
#define RECALCULO_ENGINE_BY_HAND_H

#include <gtest/gtest.h>

#include "placement/engine_run.h"
#include "placement/host.h"
#include "placement/made_services.h"
#include "placement/refusal.h"

namespace zarven::tool {

inline Service with_pids(Service made, std::uint16_t pids) {
    made.ca_pids = pids;
    return made;
}

inline Service transcoded(Service made, std::uint16_t transcoding = 1) {
    made.transcoding = transcoding;
    return made;
}

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
    tRec_Salida& output(const std::string& mac) { return module(mac).mapSalidas.at(1); }

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

    void leave_out(const std::shared_ptr<tRec_Servicio>& left) {
        run.engine.Mapa_ONIDs_Final[left->ONID].MapRec_TSIDs[left->TSID].MapRec_Services.emplace(
            left->idService, left);
    }

    EngineRun run;
};

} // namespace zarven::tool

#endif
