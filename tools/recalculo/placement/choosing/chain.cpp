#include "placement/choosing/chain.h"

#include <algorithm>
#include <cmath>

namespace zarven::tool {

namespace {

/// In services of the mean value.
constexpr double hottest = 0.8;
constexpr double coolest = 0.35;

/// The temperature stays for so many states.
constexpr std::uint64_t states_at_one = 64;

/// In services of the mean value: a state that is worth nothing is left for any other.
constexpr double most_rewarded = 30;

/// At a move that changes something: there may be none.
constexpr int most_attempts = 16;

} // namespace

Chain::Chain(const RehearsedHeadend& model, const Goal& goal, const reglas::Estrategia& strategy, Scope scope,
             std::uint64_t seed)
    : goal_(goal), strategy_(strategy), numbers_(seed), asked_(model), fill_(model),
      moves_(model, goal, numbers_) {
    if (scope == Scope::whole_pass)
        whole_.emplace(model);
}

/// A pass that breaks a limit, or cannot be followed to its end, is worth nothing.
FillWorth Chain::worth_of_asked() {
    if (!whole_) {
        fill_.run(asked_, strategy_);
        return goal_.worth_of(fill_.seating());
    }
    const std::optional<Rehearsed> rehearsed = whole_->run(asked_, strategy_);
    return rehearsed && !rehearsed->is_broken ? goal_.worth_of(whole_->seating()) : FillWorth{};
}

FillWorth Chain::worth_of(const PartFlags& asked) {
    asked_.assign(goal_.one_of_each(asked));
    return worth_of_asked();
}

void Chain::begin(const PartFlags& asked, std::uint64_t length) {
    worth_ = worth_of(asked);
    length_ = length;
    tried_ = 0;
    best_of_epoch_.asked.clear();
    keep_if_best();
}

void Chain::keep_if_best() {
    const auto keep = [this](ChainState& state) {
        if (!state.asked.empty() && !is_better(worth_, state.worth))
            return false;
        state.worth = worth_;
        state.asked = asked_.flags();
        state.placed.resize(state.asked.size());
        for (PartIndex part = 0; part < state.placed.size(); ++part)
            state.placed[part] = seating().is_placed(part) ? 1 : 0;
        return true;
    };
    if (keep(best_of_epoch_))
        keep(best_);
}

void Chain::step(double temperature) {
    for (int attempt = 0; attempt < most_attempts && !moves_.make(asked_, seating()); ++attempt)
        ;
    const FillWorth worth = worth_of_asked();
    const auto gain = static_cast<double>(worth.height - worth_.height);
    moves_.reward(std::clamp(gain, 0.0, goal_.unit() * most_rewarded));
    if (gain < 0 && gain < temperature * std::log(1 - numbers_.fraction())) {
        moves_.take_back(asked_);
        return;
    }
    worth_ = worth;
    keep_if_best();
}

std::uint64_t Chain::run(std::uint64_t states) {
    const std::uint64_t end = std::min(length_, tried_ + states);
    const std::uint64_t begin = tried_;
    double temperature = 0;
    for (; tried_ < end; ++tried_) {
        if (tried_ == begin || tried_ % states_at_one == 0) {
            const double done = static_cast<double>(tried_) / static_cast<double>(length_);
            temperature = goal_.unit() * (hottest + (coolest - hottest) * done);
        }
        step(temperature);
    }
    return end - begin;
}

} // namespace zarven::tool
