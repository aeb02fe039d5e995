// Annealing through whole runs of the engine, rehearsed where they can be: there its gatherings, exchanges
// and transcoders decide, of which the filling knows nothing.

#ifndef RECALCULO_CHOOSING_ENGINE_CHAIN_H
#define RECALCULO_CHOOSING_ENGINE_CHAIN_H

#include <cstdint>
#include <vector>

#include "placement/choosing/judge.h"
#include "placement/choosing/numbers.h"

namespace zarven::tool {

class EngineChain {
public:
    /// `judge` must outlive this.
    EngineChain(Judge& judge, std::uint64_t seed);

    /// Tries so many states, from where the last call ended or, every now and then, from `best`.
    /// Gives the best sound state that it came by, and may well give one that is not better than `best`.
    TriedChoice run(std::uint64_t runs, const TriedChoice& best);

private:
    void change(std::vector<bool>& asked);
    double height_of(const ChoiceWorth& worth) const;

    Judge& judge_;
    Numbers numbers_;
    /// The places of the services that may be asked for, by stream.
    std::vector<std::vector<std::size_t>> streams_;
    /// Of a service of the mean value.
    double unit_ = 1;
    TriedChoice now_;
    std::uint64_t until_begun_anew_ = 0;
};

} // namespace zarven::tool

#endif
