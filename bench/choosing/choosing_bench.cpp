// States that a search can try in a second: on the model, by one strategy and by all four, against the engine
// loaded and run anew.

#include <benchmark/benchmark.h>

#include "Correr.h"
#include "Reglas.h"
#include "generated_headend.h"
#include "placement/choosing/engine_trial.h"
#include "placement/choosing/numbers.h"
#include "placement/rehearsal/asked_parts.h"
#include "placement/rehearsal/filling.h"
#include "placement/rehearsal/rehearsed_headend.h"
#include "placement/running/host.h"

using namespace zarven;
using namespace zarven::tool;

namespace {

unsigned services_of(const benchmark::State& state) {
    return static_cast<unsigned>(state.range(0));
}

void model(benchmark::State& state, std::size_t strategies) {
    const EngineRun loaded = load_engine(crowded_headend(services_of(state)), "bench");
    const RehearsedHeadend flat(loaded);
    Filling<false> fill(flat);
    AskedParts asked(flat);
    Numbers numbers(1);
    std::uint64_t tried = 0;
    for (auto _ : state) {
        const auto part = static_cast<PartIndex>(numbers.below(flat.parts.size()));
        asked.ask(part, !asked.is_asked(part));
        for (std::size_t strategy = 0; strategy < strategies; ++strategy)
            fill.run(asked, reglas::ESTRATEGIAS[strategy]);
        benchmark::DoNotOptimize(fill.placed());
        ++tried;
    }
    state.counters["states"] = benchmark::Counter(static_cast<double>(tried), benchmark::Counter::kIsRate);
}

void engine(benchmark::State& state) {
    const Headend headend = crowded_headend(services_of(state));
    const StaysPut none;
    const EngineTrial trial(headend, none);
    std::vector<bool> asked = trial.askable();
    Numbers numbers(1);
    std::uint64_t tried = 0;
    for (auto _ : state) {
        const std::size_t service = numbers.below(asked.size());
        asked[service] = !asked[service];
        EngineRun run = trial.load(asked);
        run_engine(run, "bench");
        benchmark::DoNotOptimize(run.engine.Mapa_ModulosCabecera_Final.size());
        ++tried;
    }
    state.counters["states"] = benchmark::Counter(static_cast<double>(tried), benchmark::Counter::kIsRate);
}

} // namespace

int main(int argc, char** argv) {
    const host::Log silence("");
    for (const int services : {150, 1200, 4800}) {
        benchmark::RegisterBenchmark("Loaded_and_run_anew", engine)->Arg(services);
        benchmark::RegisterBenchmark("Model_four_strategies", model, reglas::ESTRATEGIAS.size())
            ->Arg(services);
        benchmark::RegisterBenchmark("Model_one_strategy", model, std::size_t{1})->Arg(services);
    }
    return medida::correr(argc, argv);
}
