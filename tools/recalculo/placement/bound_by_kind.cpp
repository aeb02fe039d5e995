// A subgradient search [Fisher 1981]: the price of what more is wanted of than there is rises, and else it
// falls. How far is scaled, price by price, by what the excess has been of late [Kingma and Ba 2015], for
// excesses of bitrate and of inputs are not alike; and the steps become shorter.

#include "placement/bound_by_kind.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace zarven::tool {

namespace {

constexpr std::size_t most_kinds = 12;
constexpr int most_steps = 600;
/// Of a price, in its unit.
constexpr double first_step = 0.2;
constexpr double last_step = 0.002;
/// What counts of the past at each step: of excesses, and of their squares.
constexpr double memory = 0.9;
constexpr double memory_of_squares = 0.99;

struct TakenAtPrices {
    double bitrate = 0;
    double pids = 0;
    double transcoders = 0;
};

class Descent {
public:
    Descent(const PricedDemands& demands, const CommonPrices& start);

    double least();

private:
    /// A price, with what there is and what is wanted at the prices in force.
    struct Price {
        double price = 0;
        double capacity = 0;
        double wanted = 0;
        /// Prices as they are differ by orders of magnitude; in this unit they are alike.
        double unit = 1;
        /// Of the excesses of late.
        double mean = 0;
        double mean_square = 0;

        double excess() const { return (wanted - capacity) * unit; }
        double paid() const { return price * capacity; }
    };
    struct Kind {
        Price bitrate;
        Price inputs;
    };

    template <class Act> void each_price(const Act& act);
    double worth_of(const std::vector<Demand>& demands, const Price& bitrate, TakenAtPrices& usage) const;
    void take(Kind& kind, const TakenAtPrices& usage);
    double bound();
    void step(double length);

    const PricedDemands& demands_;
    std::vector<Kind> kinds_;
    Price pids_;
    Price transcoders_;
    /// The weight of all that the means have seen, against what was before it.
    double mean_weight_ = 0;
    double square_weight_ = 0;
};

template <class Act> void Descent::each_price(const Act& act) {
    for (Kind& kind : kinds_) {
        act(kind.bitrate);
        act(kind.inputs);
    }
    act(pids_);
    act(transcoders_);
}

Descent::Descent(const PricedDemands& demands, const CommonPrices& start) : demands_(demands) {
    TakenAtPrices all;
    double value = 0;
    double services = 0;
    const auto add = [&](const std::vector<Demand>& of_stream) {
        for (const Demand& demand : of_stream) {
            all.bitrate += demand.bitrate;
            all.pids += demand.pids;
            all.transcoders += demand.transcoders;
            value += static_cast<double>(demand.value);
            services += 1;
        }
    };
    std::for_each(demands.streams.begin(), demands.streams.end(), add);
    add(demands.of_any_stream);
    const auto price = [&](double now, std::uint64_t capacity, double of_all) {
        return Price{now, static_cast<double>(capacity), 0, of_all == 0 ? 0 : value / of_all};
    };
    for (const KindTotals& kind : demands.kinds)
        kinds_.push_back({price(start.bitrate, kind.bitrate, all.bitrate),
                          price(0, kind.inputs, static_cast<double>(demands.streams.size()))});
    pids_ = price(start.pids, demands.pids, all.pids);
    transcoders_ = price(start.transcoders, demands.transcoders, all.transcoders);
    // That of the last stream for which there is an input.
    std::uint64_t inputs = 0;
    for (const KindTotals& kind : demands.kinds)
        inputs += kind.inputs;
    if (inputs >= demands.streams.size())
        return;
    std::vector<double> worths;
    for (const auto& stream : demands.streams) {
        TakenAtPrices usage;
        worths.push_back(worth_of(stream, kinds_.front().bitrate, usage));
    }
    const auto last = worths.begin() + static_cast<std::ptrdiff_t>(inputs);
    std::nth_element(worths.begin(), last, worths.end(), std::greater<>());
    for (Kind& kind : kinds_)
        kind.inputs.price = *last;
}

double Descent::worth_of(const std::vector<Demand>& demands, const Price& bitrate,
                         TakenAtPrices& usage) const {
    double worth = 0;
    for (const Demand& demand : demands) {
        const double left = static_cast<double>(demand.value) - bitrate.price * demand.bitrate -
                            pids_.price * demand.pids - transcoders_.price * demand.transcoders;
        if (left <= 0)
            continue;
        worth += left;
        usage.bitrate += demand.bitrate;
        usage.pids += demand.pids;
        usage.transcoders += demand.transcoders;
    }
    return worth;
}

void Descent::take(Kind& kind, const TakenAtPrices& usage) {
    kind.bitrate.wanted += usage.bitrate;
    pids_.wanted += usage.pids;
    transcoders_.wanted += usage.transcoders;
}

/// Each stream where it is worth most, if that is more than an input costs there.
double Descent::bound() {
    double sum = 0;
    each_price([&sum](Price& price) {
        price.wanted = 0;
        sum += price.paid();
    });
    for (const auto& stream : demands_.streams) {
        double most = 0;
        Kind* best = nullptr;
        TakenAtPrices usage_of_best;
        for (Kind& kind : kinds_) {
            TakenAtPrices usage;
            const double worth = worth_of(stream, kind.bitrate, usage) - kind.inputs.price;
            if (worth > most) {
                most = worth;
                best = &kind;
                usage_of_best = usage;
            }
        }
        if (best == nullptr)
            continue;
        sum += most;
        best->inputs.wanted += 1;
        take(*best, usage_of_best);
    }
    Kind& cheapest = *std::min_element(kinds_.begin(), kinds_.end(), [](const Kind& one, const Kind& other) {
        return one.bitrate.price < other.bitrate.price;
    });
    TakenAtPrices usage;
    sum += worth_of(demands_.of_any_stream, cheapest.bitrate, usage);
    take(cheapest, usage);
    return sum;
}

void Descent::step(double length) {
    mean_weight_ = 1 - memory * (1 - mean_weight_);
    square_weight_ = 1 - memory_of_squares * (1 - square_weight_);
    each_price([&](Price& price) {
        const double excess = price.excess();
        price.mean = memory * price.mean + (1 - memory) * excess;
        price.mean_square = memory_of_squares * price.mean_square + (1 - memory_of_squares) * excess * excess;
        if (price.mean_square <= 0)
            return;
        const double direction = price.mean / mean_weight_ / std::sqrt(price.mean_square / square_weight_);
        price.price = std::max(0.0, price.price + length * price.unit * direction);
    });
}

double Descent::least() {
    double least = bound();
    double length = first_step;
    const double shorter = std::pow(last_step / first_step, 1.0 / most_steps);
    for (int steps = 0; steps < most_steps; ++steps) {
        step(length);
        length *= shorter;
        least = std::min(least, bound());
    }
    return least;
}

} // namespace

std::vector<KindTotals> kinds_of(std::vector<KindTotals> modules) {
    const auto has_less = [](const KindTotals& one, const KindTotals& other) {
        return one.bitrate * other.inputs < other.bitrate * one.inputs;
    };
    std::stable_sort(modules.begin(), modules.end(), has_less);
    std::vector<KindTotals> kinds;
    const auto add = [](KindTotals& kind, const KindTotals& more) {
        kind.inputs += more.inputs;
        kind.bitrate += more.bitrate;
    };
    for (const KindTotals& module : modules)
        if (!kinds.empty() && !has_less(kinds.back(), module))
            add(kinds.back(), module);
        else
            kinds.push_back(module);
    if (kinds.size() <= most_kinds)
        return kinds;
    std::vector<KindTotals> fewer(most_kinds);
    for (std::size_t kind = 0; kind < kinds.size(); ++kind)
        add(fewer[kind * most_kinds / kinds.size()], kinds[kind]);
    return fewer;
}

double least_bound_by_kind(const PricedDemands& demands, const CommonPrices& start) {
    return Descent(demands, start).least();
}

} // namespace zarven::tool
