// Runs the benchmarks that were registered; `main` of those programs that register them themselves ends with
// it.

#ifndef ZARVEN_BENCH_CORRER_H
#define ZARVEN_BENCH_CORRER_H

#include <benchmark/benchmark.h>

namespace medida {

inline int correr(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

} // namespace medida

#endif
