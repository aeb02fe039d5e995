// One job's chains, one for each strategy of the engine. Which strategy suits a head-end differs; so each
// gets a first epoch, and then mostly those that have come furthest.

#ifndef RECALCULO_CHOOSING_CHAIN_POOL_H
#define RECALCULO_CHOOSING_CHAIN_POOL_H

#include <array>
#include <cstdint>
#include <memory>

#include "placement/choosing/chain.h"

namespace zarven::tool {

class ChainPool {
public:
    /// Model and goal must outlive this.
    ChainPool(const RehearsedHeadend& model, const Goal& goal, std::uint64_t seed);

    /// Tries so many states. `best`: the best that is known, from which some epochs go on.
    void run(std::uint64_t states, const PartFlags& best);

    /// The best state of the epoch in hand.
    const ChainState& found() const { return chains_[current_]->best_of_epoch(); }

private:
    void begin_epoch(const PartFlags& best);
    std::size_t drawn();
    PartFlags start();

    const Goal& goal_;
    Numbers numbers_;
    std::array<std::unique_ptr<Chain>, reglas::ESTRATEGIAS.size()> chains_;
    PartFlags all_;
    std::uint32_t largest_stream_ = 0;
    std::size_t current_ = 0;
    std::size_t epochs_ = 0;
    std::uint64_t length_;
};

} // namespace zarven::tool

#endif
