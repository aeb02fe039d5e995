// The model of the filling against the engine: the same services on the same inputs and outputs when the
// engine is about to gather for the first time, whatever it is asked for.

#include "placement/rehearsal/filling.h"

#include <map>
#include <random>
#include <set>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "Generador.h"
#include "placement/engine_by_hand.h"
#include "placement/running/host.h"
#include "placement/strategies.h"

namespace zarven::tool::filling_test {
namespace {

/// Of each service the module, the input and the output.
using Seats = std::map<std::uint16_t, std::tuple<std::string, std::uint16_t, std::uint32_t>>;

/// What the engine has placed when it first comes to gathering.
class AtFirstGathering : public host::Watcher {
public:
    explicit AtFirstGathering(const EngineRun& run) : run_(run) {}

    void hear(std::string_view line) override {
        if (has_come_ || line.find("STATUS_UNIFY_INPUTS") == std::string_view::npos)
            return;
        has_come_ = true;
        for (const auto& [mac, module] : run_.engine.Mapa_ModulosCabecera_Proceso) {
            std::map<const tRec_Servicio*, std::uint16_t> inputs;
            for (const auto& [number, input] : module.mapEntradas)
                for (const auto& [key, service] : input.MapaServicios)
                    inputs[service.get()] = number;
            for (const auto& [number, output] : module.mapSalidas)
                for (const auto& [key, service] : output.MapaServicios)
                    seats_[service->SID] = {mac, inputs.at(service.get()), number};
        }
    }
    void wait() override {}

    bool has_come() const { return has_come_; }
    const Seats& seats() const { return seats_; }

private:
    const EngineRun& run_;
    bool has_come_ = false;
    Seats seats_;
};

Seats seats_of(const RehearsedHeadend& model, const Filling<false>& fill, const EngineRun& loaded) {
    Seats seats;
    std::vector<std::pair<std::string, std::uint32_t>> outputs;
    std::vector<std::uint16_t> inputs;
    for (const auto& [mac, module] : loaded.engine.Mapa_ModulosCabecera_Inicial) {
        for (const auto& [number, output] : module.mapSalidas)
            outputs.emplace_back(mac, number);
        for (const auto& [number, input] : module.mapEntradas)
            inputs.push_back(number);
    }
    for (PartIndex part = 0; part < model.parts.size(); ++part)
        if (fill.seating().is_placed(part))
            seats[model.services[part]->SID] = {outputs[fill.seating().output_of[part]].first,
                                                inputs[fill.seating().input_of[part]],
                                                outputs[fill.seating().output_of[part]].second};
    return seats;
}

/// Takes what is not asked for out of a loaded engine.
void withhold(EngineRun& run, const std::set<std::uint16_t>& sids) {
    auto& networks = run.engine.Mapa_ONIDs_Inicial;
    for (auto network = networks.begin(); network != networks.end();) {
        auto& streams = network->second.MapRec_TSIDs;
        for (auto stream = streams.begin(); stream != streams.end();) {
            auto& services = stream->second.MapRec_Services;
            for (auto service = services.begin(); service != services.end();)
                service =
                    sids.count(service->second->SID) != 0 ? services.erase(service) : std::next(service);
            stream = services.empty() ? streams.erase(stream) : std::next(stream);
        }
        network = streams.empty() ? networks.erase(network) : std::next(network);
    }
}

/// A part of a head-end, by each strategy.
void compare(const generador::Parametros& parameters, std::mt19937& numbers, unsigned asked_percent) {
    EngineRun full;
    generador::cargar(full.engine, parameters);
    const RehearsedHeadend model(full);
    AskedParts asked(model);
    std::set<std::uint16_t> withheld;
    for (PartIndex part = 0; part < model.parts.size(); ++part)
        if (numbers() % 100 >= asked_percent) {
            asked.ask(part, false);
            withheld.insert(model.services[part]->SID);
        }
    Filling<false> fill(model);
    for (std::size_t strategy = 0; strategy < strategy_count; ++strategy) {
        EngineRun run;
        generador::cargar(run.engine, parameters);
        withhold(run, withheld);
        AtFirstGathering watcher(run);
        {
            const host::Watching watching(&watcher);
            run_strategy(run, strategy, "f");
        }
        fill.run(asked, reglas::ESTRATEGIAS[strategy]);
        ASSERT_TRUE(watcher.has_come());
        ASSERT_EQ(seats_of(model, fill, full), watcher.seats())
            << "seed " << parameters.semilla << ", strategy " << strategy;
        EXPECT_EQ(fill.placed(), watcher.seats().size());
        EXPECT_EQ(fill.left(), asked.count() - fill.placed());
    }
}

TEST(Filling, PlacesWhatTheEngineDoesUpToItsFirstGathering) {
    std::mt19937 numbers(15);
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        ASSERT_NO_FATAL_FAILURE(compare(generador::escasa(seed), numbers, 100));
        ASSERT_NO_FATAL_FAILURE(compare(generador::escasa(seed), numbers, 20 + seed % 80));
    }
}

TEST(Filling, OnModulesWithSeveralInputsToo) {
    std::mt19937 numbers(16);
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        generador::Parametros parameters;
        parameters.semilla = seed;
        parameters.streams = 25;
        parameters.serviciosPorStream = {1, 20};
        parameters.redes = 3;
        parameters.streamSinNumero = seed % 4 == 0;
        parameters.modulos = 6;
        parameters.entradas = {1, 4};
        parameters.salidas = {1, 4};
        parameters.pidsModulo = {10, 60};
        parameters.porcentajeTranscoding = seed % 2 == 0 ? 30 : 0;
        parameters.transcoders = {0, 6};
        parameters.holgura = generador::Holgura::ESCASA;
        ASSERT_NO_FATAL_FAILURE(compare(parameters, numbers, 100));
        ASSERT_NO_FATAL_FAILURE(compare(parameters, numbers, 70));
    }
}

/// Services without LCN count for the choice of a stream only when no other is left.
TEST(Filling, WhatCountsChangesWithTheLastServiceOfItsKind) {
    Headend headend = two_modules();
    headend.services = {service(0, 1), service(1, 2), service(0, 3), service(0, 4)};
    EngineRun run = load_engine(headend, "f");
    const RehearsedHeadend model(run);
    Filling<false> fill(model);
    AtFirstGathering watcher(run);
    const host::Watching watching(&watcher);
    run_strategy(run, 0, "f");
    fill.run(AskedParts(model), reglas::ESTRATEGIAS[0]);
    EXPECT_EQ(seats_of(model, fill, run), watcher.seats());
    // Stream 2 first, which alone counts at the beginning.
    EXPECT_EQ(fill.seating().stream_of[0], 1U);
    EXPECT_EQ(fill.seating().stream_of[1], 0U);
}

} // namespace
} // namespace zarven::tool::filling_test
