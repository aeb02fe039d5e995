// Trials of `recalculo size`: a limit of a module raised, rehearsed and run by the engine, loaded anew. The
// two take turns in one process, so that whatever else the machine does weighs on both.

#include <chrono>
#include <string>

#include <benchmark/benchmark.h>

#include "Correr.h"
#include "generated_headend.h"
#include "placement/running/host.h"
#include "placement/sizing/runner.h"

using namespace zarven::tool;

namespace {

using Clock = std::chrono::steady_clock;

double seconds_of(Clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

void trials(benchmark::State& state) {
    const Headend headend = crowded_headend(static_cast<unsigned>(state.range(0)));
    const std::string file = "bench";
    const SizingOptions options;
    Runner rehearsing(headend, file, options);
    Runner running(headend, file, options);
    running.distrust_rehearsals();
    Clock::duration rehearsed{};
    Clock::duration run{};
    std::size_t trial = 0;
    for (auto _ : state) {
        const std::size_t index = trial++ % headend.modules.size();
        Module raised = headend.modules[index];
        raised.pids_max = static_cast<std::uint16_t>(raised.pids_max + 1 + trial % 16);
        const Clock::time_point begin = Clock::now();
        const Outcome one = rehearsing.with_module(index, raised);
        const Clock::time_point middle = Clock::now();
        const Outcome other = running.with_module(index, raised);
        rehearsed += middle - begin;
        run += Clock::now() - middle;
        if (one.placed != other.placed || one.is_broken != other.is_broken)
            return state.SkipWithError("the rehearsal comes to another outcome than the run");
    }
    const auto number = static_cast<double>(trial);
    state.counters["rehearsals"] = number / seconds_of(rehearsed);
    state.counters["runs"] = number / seconds_of(run);
    state.counters["times"] = seconds_of(run) / seconds_of(rehearsed);
}

} // namespace

int main(int argc, char** argv) {
    const host::Log silence("");
    for (const int services : {150, 1200, 4800})
        benchmark::RegisterBenchmark("Rehearsed_against_run", trials)->Arg(services);
    return medida::correr(argc, argv);
}
