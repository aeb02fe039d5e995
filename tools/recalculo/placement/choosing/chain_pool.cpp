#include "placement/choosing/chain_pool.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zarven::tool {

namespace {

constexpr std::uint64_t shortest_epoch = 10000;
constexpr std::uint64_t longest_epoch = 640000;

/// What is asked for at the start.
constexpr double least_share_asked = 0.7;
constexpr double most_share_asked = 1.5;
constexpr double share_step = 0.1;

} // namespace

ChainPool::ChainPool(const RehearsedHeadend& model, const Goal& goal, std::uint64_t seed)
    : goal_(goal), numbers_(seed), all_(model.parts.size(), 1), length_(shortest_epoch) {
    for (const RehearsedStream& stream : model.streams)
        largest_stream_ = std::max(largest_stream_, stream.last - stream.first);
    for (std::size_t strategy = 0; strategy < chains_.size(); ++strategy)
        chains_[strategy] =
            std::make_unique<Chain>(model, goal, reglas::ESTRATEGIAS[strategy], numbers_.next());
}

/// The best half of the time, the next a quarter of it, and so on.
std::size_t ChainPool::drawn() {
    std::array<std::size_t, reglas::ESTRATEGIAS.size()> order{};
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](std::size_t one, std::size_t other) {
        return is_better(chains_[one]->best().worth, chains_[other]->best().worth);
    });
    std::size_t place = 0;
    while (place + 1 < order.size() && numbers_.below(4) == 0)
        ++place;
    return order[place];
}

/// All, or what some shares and some numbers a stream come to, whichever comes furthest by itself.
PartFlags ChainPool::start() {
    PartFlags best = all_;
    FillWorth most = chains_[current_]->worth_of(all_);
    for (std::uint32_t of_stream = 1; of_stream <= largest_stream_; of_stream += of_stream / 12 + 1)
        for (double share = least_share_asked; share < most_share_asked; share += share_step) {
            PartFlags asked = goal_.best_for(share * (0.99 + 0.02 * numbers_.fraction()), of_stream);
            const FillWorth worth = chains_[current_]->worth_of(asked);
            if (is_better(worth, most)) {
                most = worth;
                best = std::move(asked);
            }
        }
    return best;
}

void ChainPool::begin_epoch(const PartFlags& best) {
    const bool is_first_of_all = epochs_ < chains_.size();
    current_ = is_first_of_all ? epochs_ : drawn();
    ++epochs_;
    if (is_first_of_all) {
        chains_[current_]->begin(start(), shortest_epoch);
        return;
    }
    if (epochs_ % 2 == 0)
        length_ = std::min(length_ * 2, longest_epoch);
    const std::uint64_t from = numbers_.below(4);
    chains_[current_]->begin(from == 0   ? best
                             : from == 1 ? start()
                                         : chains_[current_]->best().asked,
                             length_);
}

void ChainPool::run(std::uint64_t states, const PartFlags& best) {
    while (states != 0) {
        if (chains_[current_]->has_ended())
            begin_epoch(best);
        states -= chains_[current_]->run(states);
    }
}

} // namespace zarven::tool
