// A subgradient search [Fisher 1981]: the price of what more is wanted of than there is rises, and else it
// falls. How far is scaled, price by price, by what the excess has been of late [Kingma and Ba 2015], for
// excesses of bitrate and of inputs are not alike; and the steps become shorter.

#include "placement/bound_by_kind.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "placement/best_within.h"

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

struct PricedResource {
    std::uint32_t Demand::*of_demand;
    double PerResource::*total;
};

constexpr PricedResource resources[] = {{&Demand::bitrate, &PerResource::bitrate},
                                        {&Demand::pids, &PerResource::pids},
                                        {&Demand::transcoders, &PerResource::transcoders}};

void add(PerResource& sum, const Demand& demand) {
    for (const PricedResource& resource : resources)
        sum.*resource.total += demand.*resource.of_demand;
}

/// What becomes of a stream at the prices in force.
struct Offer {
    /// Less what its inputs cost.
    double worth = 0;
    double inputs = 0;
    PerResource taken;
};

class Descent {
public:
    Descent(const PricedDemands& demands, const PerResource& start);

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
        PerResource of_one;
    };

    template <class Act> void each_price(const Act& act);
    double left_of(const Demand& demand, const Price& bitrate) const;
    Offer all_of(const std::vector<Demand>& demands, const Price& bitrate) const;
    Offer offer_of(const std::vector<Demand>& stream, const Kind& kind, double least);
    Offer offer_within(const std::vector<Demand>& stream, const Kind& kind, const PricedResource& resource);
    void find_further_inputs();
    void take(Kind& kind, const Offer& offer);
    double bound();
    void step(double length);

    const PricedDemands& demands_;
    std::vector<Kind> kinds_;
    Price pids_;
    Price transcoders_;
    /// The cheapest input, and the most that any one module has.
    double further_price_ = 0;
    PerResource further_;
    BestWithin best_within_;
    std::vector<const Demand*> worth_it_;
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

Descent::Descent(const PricedDemands& demands, const PerResource& start) : demands_(demands) {
    PerResource all;
    double value = 0;
    const auto add_all = [&](const std::vector<Demand>& of_stream) {
        for (const Demand& demand : of_stream) {
            add(all, demand);
            value += static_cast<double>(demand.value);
        }
    };
    std::for_each(demands.streams.begin(), demands.streams.end(), add_all);
    add_all(demands.of_any_stream);
    const auto price = [&](double now, std::uint64_t capacity, double of_all) {
        return Price{now, static_cast<double>(capacity), 0, of_all == 0 ? 0 : value / of_all};
    };
    for (const KindTotals& kind : demands.kinds)
        kinds_.push_back({price(start.bitrate, kind.bitrate, all.bitrate),
                          price(0, kind.inputs, static_cast<double>(demands.streams.size())), kind.of_one});
    pids_ = price(start.pids, demands.pids, all.pids);
    transcoders_ = price(start.transcoders, demands.transcoders, all.transcoders);
    // That of the last stream for which there is an input.
    std::uint64_t inputs = 0;
    for (const KindTotals& kind : demands.kinds)
        inputs += kind.inputs;
    if (inputs >= demands.streams.size())
        return;
    std::vector<double> worths;
    for (const auto& stream : demands.streams)
        worths.push_back(all_of(stream, kinds_.front().bitrate).worth);
    const auto last = worths.begin() + static_cast<std::ptrdiff_t>(inputs);
    std::nth_element(worths.begin(), last, worths.end(), std::greater<>());
    for (Kind& kind : kinds_)
        kind.inputs.price = *last;
}

double Descent::left_of(const Demand& demand, const Price& bitrate) const {
    return static_cast<double>(demand.value) - bitrate.price * demand.bitrate - pids_.price * demand.pids -
           transcoders_.price * demand.transcoders;
}

/// Without inputs, and without a ceiling.
Offer Descent::all_of(const std::vector<Demand>& demands, const Price& bitrate) const {
    Offer offer;
    for (const Demand& demand : demands) {
        const double left = left_of(demand, bitrate);
        if (left <= 0)
            continue;
        offer.worth += left;
        add(offer.taken, demand);
    }
    return offer;
}

/// On an input of the kind, and on further ones if that is worth more. What is worth no more than the least
/// wanted is not looked at closely, nor are streams of which hundreds of services would be told by few units.
Offer Descent::offer_of(const std::vector<Demand>& stream, const Kind& kind, double least) {
    Offer all = all_of(stream, kind.bitrate);
    all.worth -= kind.inputs.price;
    all.inputs = 1;
    Offer offer = all;
    if (all.worth <= least || stream.size() > BestWithin::most_units)
        return all;
    for (const PricedResource& resource : resources)
        if (all.taken.*resource.total > kind.of_one.*resource.total)
            if (Offer within = offer_within(stream, kind, resource); within.worth <= offer.worth)
                offer = within;
    return offer;
}

/// An input brings no more than a module can take.
Offer Descent::offer_within(const std::vector<Demand>& stream, const Kind& kind,
                            const PricedResource& resource) {
    worth_it_.clear();
    std::vector<BestWithin::Thing> things;
    for (const Demand& demand : stream)
        if (const double left = left_of(demand, kind.bitrate); left > 0) {
            worth_it_.push_back(&demand);
            things.push_back({left, demand.*resource.of_demand});
        }
    best_within_.assign(std::move(things));
    const auto worth_within = [this](double ceiling) {
        return best_within_.worth(static_cast<std::uint64_t>(ceiling));
    };
    const auto wanted = static_cast<double>(best_within_.size_of_all());
    double ceiling = kind.of_one.*resource.total;
    double paid = kind.inputs.price;
    Offer best{worth_within(ceiling) - paid, 1, {}};
    double best_ceiling = ceiling;
    const double further = further_.*resource.total;
    for (double inputs = 2;
         further > 0 && ceiling < wanted && worth_within(wanted) - paid - further_price_ > best.worth;
         ++inputs) {
        ceiling += further;
        paid += further_price_;
        if (const double worth = worth_within(ceiling) - paid; worth > best.worth) {
            best = {worth, inputs, {}};
            best_ceiling = ceiling;
        }
    }
    for (const std::size_t place : best_within_.chosen(static_cast<std::uint64_t>(best_ceiling)))
        add(best.taken, *worth_it_[place]);
    return best;
}

void Descent::find_further_inputs() {
    further_price_ = kinds_.front().inputs.price;
    for (const Kind& kind : kinds_) {
        further_price_ = std::min(further_price_, kind.inputs.price);
        for (const PricedResource& resource : resources)
            further_.*resource.total = std::max(further_.*resource.total, kind.of_one.*resource.total);
    }
}

void Descent::take(Kind& kind, const Offer& offer) {
    kind.inputs.wanted += offer.inputs;
    kind.bitrate.wanted += offer.taken.bitrate;
    pids_.wanted += offer.taken.pids;
    transcoders_.wanted += offer.taken.transcoders;
}

/// Each stream where it is worth most, if that is more than its inputs cost there.
double Descent::bound() {
    double sum = 0;
    each_price([&sum](Price& price) {
        price.wanted = 0;
        sum += price.paid();
    });
    find_further_inputs();
    for (const auto& stream : demands_.streams) {
        Offer most;
        Kind* best = nullptr;
        for (Kind& kind : kinds_)
            if (const Offer offer = offer_of(stream, kind, most.worth); offer.worth > most.worth) {
                most = offer;
                best = &kind;
            }
        if (best == nullptr)
            continue;
        sum += most.worth;
        take(*best, most);
    }
    Kind& cheapest = *std::min_element(kinds_.begin(), kinds_.end(), [](const Kind& one, const Kind& other) {
        return one.bitrate.price < other.bitrate.price;
    });
    const Offer of_any_stream = all_of(demands_.of_any_stream, cheapest.bitrate);
    sum += of_any_stream.worth;
    take(cheapest, of_any_stream);
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
        for (const PricedResource& resource : resources)
            kind.of_one.*resource.total = std::max(kind.of_one.*resource.total, more.of_one.*resource.total);
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

double least_bound_by_kind(const PricedDemands& demands, const PerResource& start) {
    return Descent(demands, start).least();
}

} // namespace zarven::tool
