// The limits together are relaxed with prices. Give each kbit/s, each PID and each transcoder a price, the
// same on all modules. A service is then worth its value, which is 1 where services are counted, less the
// price of what it takes, or nothing if that is negative. An arrangement places at most what the streams on
// its inputs are worth, and the price of all there is. That holds for any prices; the search below only looks
// for those that make the number small. From there on kinds of modules have prices of their own
// (bound_by_kind.h).

#include "placement/bound.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <numeric>
#include <utility>

#include "Reglas.h"
#include "placement/bound_by_kind.h"

namespace zarven::tool {

namespace {

using Resource = std::uint32_t Demand::*;

struct Totals {
    std::uint64_t inputs = 0;
    std::uint64_t places = 0;
    std::uint64_t bitrate = 0;
    std::uint64_t pids = 0;
    std::uint64_t transcoders = 0;
    /// Module by module.
    std::vector<KindTotals> modules;
};

/// The sum of the largest values, as many as `number`.
std::uint64_t sum_of_largest(std::uint64_t number, std::vector<std::uint64_t> values) {
    std::sort(values.begin(), values.end(), std::greater<>());
    values.resize(static_cast<std::size_t>(std::min(number, std::uint64_t{values.size()})));
    return std::accumulate(values.begin(), values.end(), std::uint64_t{0});
}

class Relaxation {
public:
    Relaxation(const EngineRun& loaded, const std::vector<ModuleCapacity>& modules,
               const std::vector<std::uint64_t>& values, const std::vector<bool>& of_any_stream = {});

    Bound limits() &&;
    Bound bound() &&;

private:
    /// A resource with its total, and the price in force.
    struct Priced {
        Resource resource;
        std::uint64_t capacity;
        double lowest_price;
        double highest_price;
        double PerResource::*common;
        double price = 0;
    };

    void find_limits();
    void add_totals(const std::vector<ModuleCapacity>& modules);
    std::uint64_t common_divisor(Resource resource) const;
    std::uint64_t wanted(Resource resource) const;
    BoundLimit limit_of(Resource resource, std::uint64_t capacity) const;
    BoundLimit limit_of_inputs() const;
    BoundLimit limit_of_places() const;
    void price(Resource resource, const BoundLimit& limit, double PerResource::*common);
    double value() const;
    double least_value(std::size_t first);
    double least_value_by_kind() const;
    std::size_t value_step() const;

    std::vector<const tRec_Servicio*> possible_;
    std::vector<Demand> demands_;
    /// The numbers of services and their demands, stream by stream.
    std::vector<std::vector<Demand>> streams_;
    /// Those whose stream is not known.
    std::vector<Demand> of_any_stream_;
    Totals totals_;
    std::vector<Priced> priced_;
    double least_ = std::numeric_limits<double>::infinity();
    /// Those with which it came about.
    PerResource best_prices_;
    Bound bound_;
};

Relaxation::Relaxation(const EngineRun& loaded, const std::vector<ModuleCapacity>& modules,
                       const std::vector<std::uint64_t>& values, const std::vector<bool>& of_any_stream) {
    std::map<Stream, std::vector<Demand>> by_stream;
    for (std::size_t index = 0; index < values.size(); ++index) {
        if (values[index] == 0)
            continue;
        const auto& service = loaded.engine.listaServicios[index];
        const std::string reason = why_none_could_take(modules, *service);
        if (!reason.empty()) {
            bound_.impossible.push_back(describe(*service, false));
            bound_.impossible.back().reason = reason;
            continue;
        }
        possible_.push_back(service.get());
        demands_.push_back({service->peakBitRate, service->number_PIDs_CA,
                            reglas::ocupaTranscoder(service->Transcoding) ? 1u : 0u, values[index]});
        (index < of_any_stream.size() && of_any_stream[index] ? of_any_stream_
                                                              : by_stream[stream_of(*service)])
            .push_back(demands_.back());
    }
    for (auto& [stream, demands] : by_stream)
        streams_.push_back(std::move(demands));
    bound_.loaded = loaded.engine.listaServicios.size();
    add_totals(modules);
}

/// The loads of an output are multiples of what divides all bitrates, so the rest of it is of no use; PIDs
/// alike.
void Relaxation::add_totals(const std::vector<ModuleCapacity>& modules) {
    const std::uint64_t bitrate_step = common_divisor(&Demand::bitrate);
    const std::uint64_t pids_step = common_divisor(&Demand::pids);
    for (const ModuleCapacity& module : modules) {
        const auto takes = [&module](const tRec_Servicio* service) { return could_take(module, *service); };
        if (std::none_of(possible_.begin(), possible_.end(), takes))
            continue;
        KindTotals usable{module.inputs};
        const std::uint64_t pids = module.pids_max / pids_step * pids_step;
        totals_.inputs += module.inputs;
        totals_.pids += pids;
        totals_.transcoders += module.transcoders();
        for (const OutputCapacity& output : module.outputs) {
            if (!reglas::bajoTecho(0, output.bitrate_max))
                continue;
            usable.bitrate += reglas::cargaMaxima(output.bitrate_max) / bitrate_step * bitrate_step;
            totals_.places += output.service_max;
        }
        usable.of_one = {static_cast<double>(usable.bitrate), static_cast<double>(pids),
                         static_cast<double>(module.transcoders())};
        totals_.bitrate += usable.bitrate;
        totals_.modules.push_back(usable);
    }
}

std::uint64_t Relaxation::common_divisor(Resource resource) const {
    std::uint64_t divisor = 0;
    for (const Demand& demand : demands_)
        divisor = std::gcd(divisor, std::uint64_t{demand.*resource});
    return std::max(divisor, std::uint64_t{1});
}

std::uint64_t Relaxation::wanted(Resource resource) const {
    std::uint64_t sum = 0;
    for (const Demand& demand : demands_)
        sum += demand.*resource;
    return sum;
}

/// Of the services that share the total those that take least for what they are worth; of the first that does
/// not fit the part that does, rounded down.
BoundLimit Relaxation::limit_of(Resource resource, std::uint64_t capacity) const {
    std::vector<Demand> demands = demands_;
    std::sort(demands.begin(), demands.end(), [resource](const Demand& one, const Demand& other) {
        return one.*resource * other.value < other.*resource * one.value;
    });
    BoundLimit limit{capacity, wanted(resource), 0};
    std::uint64_t left = capacity;
    for (const Demand& demand : demands) {
        const std::uint64_t size = demand.*resource;
        if (size > left) {
            limit.allows += static_cast<std::size_t>(demand.value * left / size);
            break;
        }
        left -= size;
        limit.allows += static_cast<std::size_t>(demand.value);
    }
    return limit;
}

BoundLimit Relaxation::limit_of_inputs() const {
    const auto value_of = [](const std::vector<Demand>& demands) {
        return std::accumulate(demands.begin(), demands.end(), std::uint64_t{0},
                               [](std::uint64_t sum, const Demand& demand) { return sum + demand.value; });
    };
    std::vector<std::uint64_t> values;
    for (const auto& stream : streams_)
        values.push_back(value_of(stream));
    return {totals_.inputs, streams_.size(),
            static_cast<std::size_t>(sum_of_largest(totals_.inputs, values) + value_of(of_any_stream_))};
}

BoundLimit Relaxation::limit_of_places() const {
    std::vector<std::uint64_t> values;
    for (const Demand& demand : demands_)
        values.push_back(demand.value);
    return {totals_.places, demands_.size(),
            static_cast<std::size_t>(sum_of_largest(totals_.places, values))};
}

/// A resource of which there is enough has the price 0. At the highest price no service that takes any of it
/// is worth anything; under the lowest one the price of all that is wanted does not matter.
void Relaxation::price(Resource resource, const BoundLimit& limit, double PerResource::*common) {
    if (limit.wanted <= limit.capacity)
        return;
    double highest = 0;
    for (const Demand& demand : demands_)
        if (demand.*resource != 0)
            highest = std::max(highest, static_cast<double>(demand.value) / (demand.*resource));
    priced_.push_back({resource, limit.capacity, 1e-3 / static_cast<double>(limit.wanted), highest, common});
}

/// The bound at the prices in force.
double Relaxation::value() const {
    const auto worth_of = [this](const std::vector<Demand>& demands) {
        double worth = 0;
        for (const Demand& demand : demands) {
            double left = static_cast<double>(demand.value);
            for (const Priced& priced : priced_)
                left -= priced.price * (demand.*priced.resource);
            worth += std::max(left, 0.0);
        }
        return worth;
    };
    std::vector<double> worths;
    for (const auto& stream : streams_)
        worths.push_back(worth_of(stream));
    if (totals_.inputs < worths.size()) {
        const auto middle = worths.begin() + static_cast<std::ptrdiff_t>(totals_.inputs);
        std::nth_element(worths.begin(), middle, worths.end(), std::greater<>());
        worths.erase(middle, worths.end());
    }
    double sum = std::accumulate(worths.begin(), worths.end(), worth_of(of_any_stream_));
    for (const Priced& priced : priced_)
        sum += priced.price * static_cast<double>(priced.capacity);
    return sum;
}

/// The least value over the prices from the one numbered `first` on: golden sections on a logarithmic scale,
/// one resource inside the other, which suits a convex function.
double Relaxation::least_value(std::size_t first) {
    if (first == priced_.size()) {
        const double now = value();
        if (now < least_) {
            least_ = now;
            for (const Priced& priced : priced_)
                best_prices_.*priced.common = priced.price;
        }
        return now;
    }
    Priced& priced = priced_[first];
    const auto at = [&](double logarithm) {
        priced.price = std::exp(logarithm);
        return least_value(first + 1);
    };
    const double section = (std::sqrt(5.0) - 1) / 2;
    const int steps = 24;
    double low = std::log(priced.lowest_price);
    double high = std::log(priced.highest_price);
    double left = high - section * (high - low);
    double right = low + section * (high - low);
    double at_left = at(left);
    double at_right = at(right);
    priced.price = 0;
    double least = std::min({least_value(first + 1), at_left, at_right, at(high)});
    for (int step = 0; step < steps; ++step) {
        if (at_left < at_right) {
            high = right;
            right = std::exchange(left, right - section * (right - low));
            at_right = std::exchange(at_left, at(left));
        } else {
            low = left;
            left = std::exchange(right, left + section * (high - left));
            at_left = std::exchange(at_right, at(right));
        }
        least = std::min({least, at_left, at_right});
    }
    return least;
}

/// Each limit when all others are forgotten.
void Relaxation::find_limits() {
    bound_.inputs = limit_of_inputs();
    bound_.bitrate = limit_of(&Demand::bitrate, totals_.bitrate);
    bound_.pids = limit_of(&Demand::pids, totals_.pids);
    bound_.transcoders = limit_of(&Demand::transcoders, totals_.transcoders);
    bound_.places = limit_of_places();
    bound_.most = bound_.inputs.allows;
    for (const BoundKind& kind : bound_kinds)
        bound_.most = std::min(bound_.most, (bound_.*kind.member).allows);
}

double Relaxation::least_value_by_kind() const {
    const PricedDemands demands{streams_, of_any_stream_, kinds_of(totals_.modules), totals_.pids,
                                totals_.transcoders};
    return demands.kinds.empty() ? least_ : least_bound_by_kind(demands, best_prices_);
}

Bound Relaxation::limits() && {
    find_limits();
    return std::move(bound_);
}

/// What divides all values divides every sum of them.
std::size_t Relaxation::value_step() const {
    std::uint64_t divisor = 0;
    for (const Demand& demand : demands_)
        divisor = std::gcd(divisor, demand.value);
    return static_cast<std::size_t>(std::max(divisor, std::uint64_t{1}));
}

Bound Relaxation::bound() && {
    find_limits();
    price(&Demand::bitrate, bound_.bitrate, &PerResource::bitrate);
    price(&Demand::pids, bound_.pids, &PerResource::pids);
    price(&Demand::transcoders, bound_.transcoders, &PerResource::transcoders);
    // Rounding errors are far smaller than this, and must not lower a bound that is a whole number.
    const double tolerance = 1e-6;
    least_value(0);
    least_ = std::min(least_, least_value_by_kind());
    bound_.most = std::min(bound_.most, static_cast<std::size_t>(std::floor(least_ + tolerance)));
    bound_.most -= bound_.most % value_step();
    return std::move(bound_);
}

std::vector<std::uint64_t> equal_values(const EngineRun& loaded) {
    return std::vector<std::uint64_t>(loaded.engine.listaServicios.size(), 1);
}

} // namespace

const BoundKind& kind_of(BoundLimit Bound::*member) {
    return *std::find_if(std::begin(bound_kinds), std::end(bound_kinds),
                         [member](const BoundKind& kind) { return kind.member == member; });
}

Bound single_limits_of(const EngineRun& loaded, const std::vector<ModuleCapacity>& modules) {
    return Relaxation(loaded, modules, equal_values(loaded)).limits();
}

Bound bound_of(const EngineRun& loaded, const std::vector<ModuleCapacity>& modules) {
    return bound_of(loaded, modules, equal_values(loaded));
}

Bound bound_of(const EngineRun& loaded, const std::vector<ModuleCapacity>& modules,
               const std::vector<std::uint64_t>& values, const std::vector<bool>& of_any_stream) {
    return Relaxation(loaded, modules, values, of_any_stream).bound();
}

} // namespace zarven::tool
