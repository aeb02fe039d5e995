// Rehearsals beside runs of the engine on generated head-ends.

#include "placement/rehearsal/rehearsal.h"

#include <algorithm>
#include <limits>

#include <gtest/gtest.h>

#include "Generador.h"
#include "placement/audit/audit.h"
#include "placement/running/host.h"
#include "placement/services.h"
#include "tries.h"

namespace zarven::tool::rehearsal_test {
namespace {

EngineRun made(const generador::Parametros& parameters) {
    EngineRun run;
    generador::cargar(run.engine, parameters);
    run.clones = run.engine.listaServiciosClonados;
    return run;
}

std::size_t placed_by(const EngineRun& run) {
    ServiceSet on_outputs;
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
        on_outputs.merge(services_on_outputs(module));
    for (const auto& clone : run.clones)
        on_outputs.erase(clone.get());
    return on_outputs.size();
}

struct Tally {
    std::size_t rehearsed = 0;
    std::size_t given_up = 0;
    std::size_t broken = 0;
};

/// Rehearses and runs.
void compare(const generador::Parametros& parameters, Tally& tally) {
    EngineRun run = made(parameters);
    const RehearsedHeadend headend(run);
    if (!headend.allows_passes) {
        ++tally.given_up;
        return;
    }
    Rehearsal rehearsal(headend);
    const std::optional<Rehearsed> outcome = rehearsal.run(headend.modules);
    if (!outcome) {
        ++tally.given_up;
        return;
    }
    ++tally.rehearsed;
    run.engine.Main_Recalculo();
    ASSERT_EQ(outcome->placed, placed_by(run)) << "seed " << parameters.semilla;
    ASSERT_EQ(outcome->is_broken, has_broken(run)) << "seed " << parameters.semilla;
    tally.broken += outcome->is_broken ? 1 : 0;
}

generador::Parametros crowded(std::uint32_t seed) {
    generador::Dado dice(seed * 40503U);
    generador::Parametros parameters;
    parameters.semilla = seed;
    parameters.streams = dice.entre(10, 40);
    parameters.serviciosPorStream = {dice.entre(1, 5), dice.entre(5, 12)};
    parameters.modulos = dice.entre(6, 30);
    parameters.entradas = {1, dice.entre(2, 5)};
    parameters.salidas = {1, dice.entre(1, 3)};
    parameters.redes = dice.entre(1, 3);
    parameters.clavesRepetidas = dice.porcentaje(30);
    parameters.porcentajeTranscoding = dice.porcentaje(40) ? dice.entre(5, 40) : 0;
    parameters.transcoders = {0, dice.entre(0, 4)};
    parameters.holgura = dice.porcentaje(40) ? generador::Holgura::JUSTA : generador::Holgura::ESCASA;
    return parameters;
}

TEST(Rehearsal, PlacesWhatTheEnginePlaces) {
    const host::Log no_log("");
    Tally small;
    for (std::uint32_t seed = 1; seed <= tries(2000); ++seed)
        ASSERT_NO_FATAL_FAILURE(compare(generador::escasa(seed), small));
    // A tenth of them has a stream without number.
    EXPECT_LT(small.given_up, small.rehearsed / 8);
    EXPECT_GT(small.broken, met(10));
    Tally large;
    for (std::uint32_t seed = 1; seed <= tries(200); ++seed)
        ASSERT_NO_FATAL_FAILURE(compare(crowded(seed), large));
    EXPECT_LT(large.given_up, large.rehearsed / 5);
    EXPECT_GT(large.broken, met(10));
}

/// Up to the value that the tests of a run call the next, a higher bitrate has to give the same run.
TEST(Rehearsal, TheTestsOfABitrateTellWhichHigherOnesGiveTheSameRun) {
    const host::Log no_log("");
    std::size_t others = 0;
    const auto walk = [&others](Rehearsal& rehearsal, const RehearsedHeadend& headend, std::size_t module,
                                std::size_t output) {
        std::vector<ModuleCapacity> changed = headend.modules;
        std::uint32_t& value = changed[module].outputs[output].bitrate_max;
        std::optional<Rehearsed> here = rehearsal.run(changed);
        for (int step = 0; here && step < 20; ++step) {
            const std::uint64_t next = rehearsal.tests()[module].bitrate[output].next;
            if (next > std::numeric_limits<std::int32_t>::max())
                return;
            ASSERT_GT(next, value);
            value = static_cast<std::uint32_t>(next) - 1;
            const std::optional<Rehearsed> before = rehearsal.run(changed);
            ASSERT_TRUE(before);
            ASSERT_EQ(before->placed, here->placed);
            ASSERT_EQ(before->is_broken, here->is_broken);
            ASSERT_EQ(rehearsal.tests()[module].bitrate[output].next, next);
            ++value;
            const std::size_t placed = here->placed;
            here = rehearsal.run(changed);
            others += here && here->placed != placed ? 1 : 0;
        }
    };
    for (std::uint32_t seed = 1; seed <= tries(60); ++seed) {
        const EngineRun run = made(seed % 4 == 0 ? crowded(seed) : generador::escasa(seed));
        const RehearsedHeadend headend(run);
        if (!headend.allows_passes)
            continue;
        Rehearsal rehearsal(headend);
        for (std::size_t module = 0; module < headend.modules.size(); ++module)
            for (std::size_t output = 0; output < headend.modules[module].outputs.size(); ++output)
                ASSERT_NO_FATAL_FAILURE(walk(rehearsal, headend, module, output)) << seed;
    }
    EXPECT_GT(others, met(100));
}

/// Every value that the tests of a run call the same has to give the same run.
TEST(Rehearsal, TheTestsOfALimitTellWhichValuesGiveTheSameRun) {
    const host::Log no_log("");
    std::size_t same = 0;
    const auto check = [&same](Rehearsal& rehearsal, const RehearsedHeadend& headend, auto set,
                               auto tests_of) {
        for (std::size_t module = 0; module < headend.modules.size(); ++module) {
            std::vector<ModuleCapacity> changed = headend.modules;
            set(changed[module], 60000);
            const std::optional<Rehearsed> generous = rehearsal.run(changed);
            if (!generous)
                continue;
            const LimitTests tests = tests_of(rehearsal.tests()[module]);
            if (tests.any_failed)
                continue;
            set(changed[module], static_cast<std::uint32_t>(tests.enough));
            const std::optional<Rehearsed> enough = rehearsal.run(changed);
            ASSERT_TRUE(enough);
            ASSERT_EQ(enough->placed, generous->placed);
            ASSERT_EQ(enough->is_broken, generous->is_broken);
            ++same;
        }
    };
    for (std::uint32_t seed = 1; seed <= tries(60); ++seed) {
        const EngineRun run = made(seed % 2 == 0 ? crowded(seed) : generador::escasa(seed));
        const RehearsedHeadend headend(run);
        if (!headend.allows_passes)
            continue;
        Rehearsal rehearsal(headend);
        check(
            rehearsal, headend,
            [](ModuleCapacity& module, std::uint32_t value) {
                module.pids_max = static_cast<std::uint16_t>(value);
            },
            [](const ModuleTests& tests) { return tests.pids; });
        check(
            rehearsal, headend,
            [](ModuleCapacity& module, std::uint32_t value) { module.inputs = std::min(value, 50U); },
            [](const ModuleTests& tests) { return tests.inputs; });
        check(
            rehearsal, headend,
            [](ModuleCapacity& module, std::uint32_t value) {
                module.sd_transcoders = static_cast<std::uint16_t>(value);
            },
            [](const ModuleTests& tests) { return tests.sd_transcoders; });
        check(
            rehearsal, headend,
            [](ModuleCapacity& module, std::uint32_t value) {
                module.hd_transcoders = static_cast<std::uint16_t>(value);
            },
            [](const ModuleTests& tests) { return tests.hd_transcoders; });
        check(
            rehearsal, headend,
            [](ModuleCapacity& module, std::uint32_t value) {
                if (!module.outputs.empty())
                    module.outputs[0].bitrate_max = value == 60000 ? 100000000 : value;
            },
            [](const ModuleTests& tests) { return tests.bitrate.empty() ? LimitTests() : tests.bitrate[0]; });
    }
    EXPECT_GT(same, met(1000));
}

} // namespace
} // namespace zarven::tool::rehearsal_test
