// One job's chains, for each strategy of the engine one by its filling, and one by its whole pass where that
// can be rehearsed. Which strategy suits a head-end differs; so each gets a first epoch, and then mostly
// those that have come furthest.

#ifndef RECALCULO_CHOOSING_CHAIN_POOL_H
#define RECALCULO_CHOOSING_CHAIN_POOL_H

#include <cstdint>
#include <memory>
#include <vector>

#include "placement/choosing/chain.h"

namespace zarven::tool {

class ChainPool {
public:
    /// Model and goal must outlive this.
    ChainPool(const RehearsedHeadend& model, const Goal& goal, std::uint64_t seed);

    /// Tries so many states. `best`: the best that is known, from which some epochs go on.
    void run(std::uint64_t states, const PartFlags& best);

    /// The best state of the epoch in hand.
    const ChainState& found() const { return current_->best_of_epoch(); }

private:
    void begin_epoch(const PartFlags& best);
    using Chains = std::vector<std::unique_ptr<Chain>>;

    Chain* drawn(const Chains& chains);
    void begin_filling(const PartFlags& best);
    void begin_whole_pass(const PartFlags& best);
    PartFlags start();

    const Goal& goal_;
    Numbers numbers_;
    Chains fillings_;
    /// None where passes cannot be rehearsed.
    Chains whole_passes_;
    PartFlags all_;
    std::uint32_t largest_stream_ = 0;
    Chain* current_ = nullptr;
    /// What a state of it takes, in states of a filling.
    std::uint64_t price_ = 1;
    std::size_t epochs_ = 0;
    std::uint64_t length_;
};

} // namespace zarven::tool

#endif
