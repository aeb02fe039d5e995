#include "placement/choosing/chain_pool.h"

#include <algorithm>
#include <utility>

namespace zarven::tool {

namespace {

constexpr std::uint64_t shortest_epoch = 10000;
constexpr std::uint64_t longest_epoch = 640000;

/// What a state of a whole pass takes, in states of a filling.
constexpr std::uint64_t price_of_whole_pass = 8;

/// What is asked for at the start.
constexpr double least_share_asked = 0.7;
constexpr double most_share_asked = 1.5;
constexpr double share_step = 0.1;

} // namespace

ChainPool::ChainPool(const RehearsedHeadend& model, const Goal& goal, std::uint64_t seed)
    : goal_(goal), numbers_(seed), all_(model.parts.size(), 1), length_(shortest_epoch) {
    for (const RehearsedStream& stream : model.streams)
        largest_stream_ = std::max(largest_stream_, stream.last - stream.first);
    for (const reglas::Estrategia& strategy : reglas::ESTRATEGIAS)
        fillings_.push_back(std::make_unique<Chain>(model, goal, strategy, Scope::filling, numbers_.next()));
    for (const reglas::Estrategia& strategy : reglas::ESTRATEGIAS)
        if (model.allows_passes)
            whole_passes_.push_back(
                std::make_unique<Chain>(model, goal, strategy, Scope::whole_pass, numbers_.next()));
    current_ = fillings_.front().get();
}

/// The best three times out of four, the next three times out of four of the rest, and so on.
Chain* ChainPool::drawn(const Chains& chains) {
    std::vector<Chain*> order;
    for (const auto& chain : chains)
        order.push_back(chain.get());
    std::stable_sort(order.begin(), order.end(), [](const Chain* one, const Chain* other) {
        return is_better(one->best().worth, other->best().worth);
    });
    std::size_t place = 0;
    while (place + 1 < order.size() && numbers_.below(4) == 0)
        ++place;
    return order[place];
}

/// All, or what some shares and some numbers a stream come to, whichever comes furthest by itself.
PartFlags ChainPool::start() {
    PartFlags best = all_;
    FillWorth most = current_->worth_of(all_);
    for (std::uint32_t of_stream = 1; of_stream <= largest_stream_; of_stream += of_stream / 12 + 1)
        for (double share = least_share_asked; share < most_share_asked; share += share_step) {
            PartFlags asked = goal_.best_for(share * (0.99 + 0.02 * numbers_.fraction()), of_stream);
            const FillWorth worth = current_->worth_of(asked);
            if (is_better(worth, most)) {
                most = worth;
                best = std::move(asked);
            }
        }
    return best;
}

void ChainPool::begin_filling(const PartFlags& best) {
    const bool is_first = epochs_ < fillings_.size();
    current_ = is_first ? fillings_[epochs_].get() : drawn(fillings_);
    price_ = 1;
    if (is_first)
        return current_->begin(start(), shortest_epoch);
    if (epochs_ % 2 == 0)
        length_ = std::min(length_ * 2, longest_epoch);
    const std::uint64_t from = numbers_.below(4);
    current_->begin(from == 0 ? best : from == 1 ? start() : current_->best().asked, length_);
}

/// From what its filling has found, the best of all, or where it stood.
void ChainPool::begin_whole_pass(const PartFlags& best) {
    const std::size_t number = epochs_ - fillings_.size();
    const bool is_first = number < whole_passes_.size();
    current_ = is_first ? whole_passes_[number].get() : drawn(whole_passes_);
    price_ = price_of_whole_pass;
    const auto found = std::find_if(whole_passes_.begin(), whole_passes_.end(),
                                    [this](const auto& chain) { return chain.get() == current_; });
    const Chain& filling = *fillings_[static_cast<std::size_t>(found - whole_passes_.begin())];
    const std::uint64_t from = numbers_.below(4);
    current_->begin(from == 0               ? best
                    : from == 1 || is_first ? filling.best().asked
                                            : current_->best().asked,
                    length_ / price_);
}

/// By turns, once each filling has had its first epoch.
void ChainPool::begin_epoch(const PartFlags& best) {
    const bool is_whole = !whole_passes_.empty() && epochs_ >= fillings_.size() &&
                          (epochs_ < fillings_.size() + whole_passes_.size() || epochs_ % 2 == 1);
    if (is_whole)
        begin_whole_pass(best);
    else
        begin_filling(best);
    ++epochs_;
}

void ChainPool::run(std::uint64_t states, const PartFlags& best) {
    while (states != 0) {
        if (current_->has_ended())
            begin_epoch(best);
        const std::uint64_t tried = current_->run(std::max<std::uint64_t>(states / price_, 1));
        states -= std::min(states, tried * price_);
    }
}

} // namespace zarven::tool
