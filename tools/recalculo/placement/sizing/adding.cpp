#include "placement/sizing/adding.h"

#include <algorithm>
#include <utility>

#include "placement/bound.h"
#include "placement/refusal.h"
#include "placement/sizing/further_modules.h"

namespace zarven::tool {

Adding::Adding(const Headend& headend, const std::string& file, const Module& kind,
               const SizingOptions& options)
    : headend_(headend), most_(options.most), jobs_(options.jobs), loaded_(load_engine(headend, file)),
      modules_(capacities_of(loaded_)) {
    addition_.kind = kind;
    kind_ = capacities_of(load_engine(with_modules({}, kind, 1), file)).front();
    find_impossible();
}

Adding::ServiceNumbers Adding::numbers_of(const ServiceResult& service) {
    return {service.stream.onid, service.stream.tsid, service.lcn, service.sid};
}

/// With modules enough the positive keys are placed, and the other services are asked for, too.
void Adding::find_impossible() {
    std::set<Stream> tunable;
    for (const auto& service : loaded_.engine.listaServicios)
        if (tunes_an_input_for(service->idService, *service, false))
            tunable.insert(stream_of(*service));
    std::vector<ModuleCapacity> modules = modules_;
    if (most_ != 0)
        modules.push_back(kind_);
    decltype(loaded_.engine.listaServicios) possible;
    for (const auto& service : loaded_.engine.listaServicios) {
        std::string reason = why_none_could_take(modules, *service);
        if (reason.empty() && tunable.count(stream_of(*service)) == 0)
            reason = "all services of its stream need transcoding, and for such the engine tunes no input";
        if (reason.empty()) {
            possible.push_back(service);
            continue;
        }
        addition_.impossible.push_back(describe(*service, false));
        addition_.impossible.back().reason = reason;
        impossible_.insert(numbers_of(addition_.impossible.back()));
    }
    // What the impossible ask for is no part of what is to be placed.
    loaded_.engine.listaServicios = std::move(possible);
}

/// How many services there are to place; the impossible are no longer among those loaded.
std::size_t Adding::wanted() const {
    return loaded_.engine.listaServicios.size();
}

/// Bisects, because what cannot be done with a number of modules cannot be done with fewer. Up to one above
/// the most, which then says that no number allowed is enough.
void Adding::find_least() {
    const auto are_too_few = [&](std::size_t number) {
        std::vector<ModuleCapacity> modules = modules_;
        modules.insert(modules.end(), number, kind_);
        return bound_of(loaded_, modules).most < wanted();
    };
    std::size_t& least = addition_.at_least;
    std::size_t above = most_ + 1;
    while (least < above) {
        const std::size_t middle = least + (above - least) / 2;
        if (are_too_few(middle))
            least = middle + 1;
        else
            above = middle;
    }
}

/// With enough modules each limit that they raise is out of the way, and those that they do not raise stay as
/// they are. Compared are one module and two: none would leave out services that only the kind can take, and
/// so tell of others.
void Adding::find_shortages() {
    std::vector<ModuleCapacity> modules = modules_;
    modules.push_back(kind_);
    const Bound with_one = bound_of(loaded_, modules);
    modules.push_back(kind_);
    const Bound with_two = bound_of(loaded_, modules);
    for (const BoundKind& kind : bound_kinds) {
        const BoundLimit& limit = with_one.*kind.member;
        if (limit.allows < wanted() && limit.capacity == (with_two.*kind.member).capacity)
            addition_.shortages.push_back({kind.member, limit});
    }
}

bool Adding::suffices(const Result& result) const {
    for (const StreamResult& stream : result.left_out)
        for (const ServiceResult& service : stream.services)
            if (impossible_.count(numbers_of(service)) == 0)
                return false;
    return result.counts.placed + impossible_.size() >= result.counts.loaded;
}

/// Notes an attempt. True if it suffices.
bool Adding::take(std::size_t number, const Result& result) {
    addition_.attempts.push_back({number, result.counts.placed, result.counts.left_out,
                                  result.findings.size(), broken_in(result).all()});
    if (suffices(result)) {
        addition_.number = number;
        addition_.remaining.clear();
        return true;
    }
    if (addition_.attempts.size() > 1 && result.counts.placed <= best_placed_)
        return false;
    best_placed_ = result.counts.placed;
    note_remaining(result);
    return false;
}

void Adding::note_remaining(const Result& result) {
    addition_.remaining.clear();
    for (const StreamResult& stream : result.left_out)
        for (const ServiceResult& service : stream.services)
            if (impossible_.count(numbers_of(service)) == 0)
                addition_.remaining.push_back(service);
}

/// In waves of as many numbers as there are threads; of a wave, those after the first that suffices are
/// forgotten, so that the answer does not depend on the threads.
void Adding::search(Runner& runner) {
    for (std::size_t first = addition_.at_least; first <= most_;) {
        const std::size_t size = std::min(std::size_t{jobs_}, most_ - first + 1);
        std::vector<Result> wave(size);
        runner.plan(size);
        runner.in_parallel(size, [&](std::size_t part) {
            wave[part] = runner.run(with_modules(headend_, addition_.kind, first + part));
        });
        for (const Result& result : wave)
            if (take(first++, result))
                return;
    }
}

Addition Adding::addition(Runner& runner, const Result& now) && {
    // The engine's exchanges can break a limit, and so place what no other arrangement can.
    if (suffices(now)) {
        take(0, now);
        return std::move(addition_);
    }
    find_shortages();
    if (!addition_.shortages.empty()) {
        addition_.at_least = most_ + 1;
        note_remaining(now);
        return std::move(addition_);
    }
    find_least();
    search(runner);
    return std::move(addition_);
}

} // namespace zarven::tool
