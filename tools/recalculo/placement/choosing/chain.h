// Simulated annealing by one strategy of the engine: what is asked for changes step by step, and a step for
// the worse is taken the less often the cooler it gets. It goes by epochs, each of which cools anew. A state
// is worth what the filling comes to, or what the whole pass does, which takes several times as long.

#ifndef RECALCULO_CHOOSING_CHAIN_H
#define RECALCULO_CHOOSING_CHAIN_H

#include <cstdint>
#include <optional>
#include <vector>

#include "Reglas.h"
#include "placement/choosing/goal.h"
#include "placement/choosing/moves.h"
#include "placement/rehearsal/asked_parts.h"
#include "placement/rehearsal/filling.h"
#include "placement/rehearsal/rehearsal.h"

namespace zarven::tool {

using PartFlags = std::vector<std::uint8_t>;

/// A state that a chain has been in.
struct ChainState {
    PartFlags asked;
    PartFlags placed;
    FillWorth worth;
};

/// What a chain looks at.
enum class Scope { filling, whole_pass };

class Chain {
public:
    /// Model and goal must outlive this. Whole passes take a model that allows them.
    Chain(const RehearsedHeadend& model, const Goal& goal, const reglas::Estrategia& strategy, Scope scope,
          std::uint64_t seed);
    Chain(const Chain&) = delete;
    Chain& operator=(const Chain&) = delete;

    /// What it is worth to ask for this.
    FillWorth worth_of(const PartFlags& asked);

    /// A new epoch of so many states, from this one on.
    void begin(const PartFlags& asked, std::uint64_t length);
    bool has_ended() const { return tried_ >= length_; }
    /// As many states, or as many as are left of the epoch; gives how many.
    std::uint64_t run(std::uint64_t states);

    /// The best state since the chain began, and since the epoch did.
    const ChainState& best() const { return best_; }
    const ChainState& best_of_epoch() const { return best_of_epoch_; }

private:
    const Seating& seating() const { return whole_ ? whole_->seating() : fill_.seating(); }
    FillWorth worth_of_asked();
    void step(double temperature);
    void keep_if_best();

    const Goal& goal_;
    const reglas::Estrategia& strategy_;
    Numbers numbers_;
    AskedParts asked_;
    Filling<false> fill_;
    std::optional<Rehearsal> whole_;
    Moves moves_;
    FillWorth worth_;
    ChainState best_;
    ChainState best_of_epoch_;
    std::uint64_t length_ = 0;
    std::uint64_t tried_ = 0;
};

} // namespace zarven::tool

#endif
