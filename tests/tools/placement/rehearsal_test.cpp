// Rehearsals beside runs of the engine on generated head-ends.

#include "placement/rehearsal/rehearsal.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "Generador.h"
#include "placement/audit.h"
#include "placement/host.h"
#include "placement/services.h"

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

bool is_broken(const EngineRun& run) {
    return has_broken(run);
}

struct Tally {
    std::size_t rehearsed = 0;
    std::size_t given_up = 0;
    std::size_t broken = 0;
};

/// Rehearses and runs.
void compare(const generador::Parametros& parameters, Tally& tally) {
    EngineRun run = made(parameters);
    const auto headend = rehearsed(run);
    if (!headend) {
        ++tally.given_up;
        return;
    }
    Rehearsal rehearsal(*headend);
    const std::optional<Rehearsed> outcome = rehearsal.run(headend->modules);
    if (!outcome) {
        ++tally.given_up;
        return;
    }
    ++tally.rehearsed;
    run.engine.Main_Recalculo();
    ASSERT_EQ(outcome->placed, placed_by(run)) << "seed " << parameters.semilla;
    ASSERT_EQ(outcome->is_broken, is_broken(run)) << "seed " << parameters.semilla;
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
    for (std::uint32_t seed = 1; seed <= 2000; ++seed)
        ASSERT_NO_FATAL_FAILURE(compare(generador::escasa(seed), small));
    Tally large;
    for (std::uint32_t seed = 1; seed <= 200; ++seed)
        ASSERT_NO_FATAL_FAILURE(compare(crowded(seed), large));
    std::printf("small %zu %zu %zu large %zu %zu %zu\n", small.rehearsed, small.given_up, small.broken,
                large.rehearsed, large.given_up, large.broken);
}

} // namespace
} // namespace zarven::tool::rehearsal_test
