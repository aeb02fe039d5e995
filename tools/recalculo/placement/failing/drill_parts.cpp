// The engine knows of inputs only how many a module has. So one run stands for the failure of any input of a
// module, and what it puts on its inputs 1, 2, ... is counted to be on those that are left, in their order.

#include "placement/failing/drill_parts.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/failure.h"
#include "placement/audit/audit.h"

namespace zarven::tool {

namespace {

bool is_on(const Place& place, const FailedPart& part) {
    return place.mac == part.mac && (part.kind == PartKind::module || place.input == part.input);
}

/// Without an input a place does not keep a service on the air.
bool goes_off_air(const PlacedService& service, const FailedPart& part) {
    if (part.kind == PartKind::stream)
        return service.service.stream == part.stream && !service.places.empty();
    return !service.places.empty() &&
           std::all_of(service.places.begin(), service.places.end(),
                       [&part](const Place& place) { return place.input == 0 || is_on(place, part); }) &&
           std::any_of(service.places.begin(), service.places.end(),
                       [&part](const Place& place) { return is_on(place, part); });
}

/// The inputs behind the failed one keep their numbers.
void number_inputs_as_before(std::vector<PlacedService>& services, const FailedPart& part) {
    for (PlacedService& service : services)
        for (Place& place : service.places)
            if (place.mac == part.mac && place.input >= part.input)
                ++place.input;
}

/// What is placed before and after a failure, told apart.
class Judging {
public:
    Judging(FailedPart part, const std::vector<PlacedService>& before, const DrilledIds& musts)
        : before_(before), musts_(musts) {
        failure_.part = std::move(part);
    }

    void judge(const Rerun& rerun) {
        failure_.run = rerun.run;
        failure_.problem = rerun.problem;
        if (rerun.run != NewRun::usable) {
            for (const PlacedService& service : before_)
                if (goes_off_air(service, failure_.part))
                    failure_.lost.push_back(drilled(service));
            return;
        }
        std::vector<PlacedService> after = rerun.services;
        if (failure_.part.kind == PartKind::input)
            number_inputs_as_before(after, failure_.part);
        const Matches matches = match(before_, after);
        for (const auto& [from, to] : matches.pairs)
            sort_in(before_[from], after[to]);
        for (const std::size_t index : matches.only_before)
            sort_in(before_[index], {});
        for (const std::size_t index : matches.only_after)
            if (!after[index].places.empty())
                failure_.gained.push_back(drilled(after[index]));
    }

    const std::vector<ServiceChange>& moved() const { return moved_; }
    DrilledFailure failure() && { return std::move(failure_); }

private:
    DrilledService drilled(const PlacedService& service) const {
        return {service.service, musts_.count(numbers_of(service.service)) != 0};
    }

    void sort_in(const PlacedService& was, const PlacedService& is) {
        const bool is_placed = !is.places.empty();
        if (was.places.empty()) {
            if (is_placed)
                failure_.gained.push_back(drilled(was));
        } else if (goes_off_air(was, failure_.part)) {
            (is_placed ? failure_.saved : failure_.lost).push_back(drilled(was));
        } else if (!is_placed) {
            failure_.lost_besides.push_back(drilled(was));
        } else if (is_moved(was.places, is.places)) {
            ++failure_.moved;
            moved_.push_back({is.service, was.places, is.places, was.absence, is.absence});
        }
    }

    const std::vector<PlacedService>& before_;
    const DrilledIds& musts_;
    DrilledFailure failure_;
    std::vector<ServiceChange> moved_;
};

} // namespace

Rerun rerun_of(const Headend& headend, const std::string& file) {
    if (headend.modules.empty())
        return {NewRun::impossible};
    EngineRun run = load_engine(headend, file);
    try {
        run_engine(run, file);
    } catch (const Failure& failure) {
        if (failure.code != ExitCode::engine_did_not_run)
            throw;
        return {NewRun::stopped, failure.what()};
    }
    if (has_broken(run))
        return {NewRun::broken};
    return {NewRun::usable, {}, placed_services(result_of(run, headend.name, Reasons::omitted))};
}

DrilledFailure judged(const FailedPart& part, const std::vector<PlacedService>& before, const Rerun& rerun,
                      const DrilledIds& musts, std::vector<ServiceChange>* moved) {
    Judging judging(part, before, musts);
    judging.judge(rerun);
    if (moved != nullptr)
        *moved = judging.moved();
    return std::move(judging).failure();
}

Parts::Parts(const Headend& headend, const std::vector<PlacedService>& before) : before_(before) {
    const auto controllers = std::count_if(headend.modules.begin(), headend.modules.end(),
                                           [](const Module& module) { return module.controller; });
    for (const Module& module : headend.modules) {
        FailedPart part{PartKind::module, module.mac, module.label};
        part.is_controller = module.controller && controllers == 1;
        add(taken_out.modules, harmless.modules, {part});
    }
    for (const Module& module : headend.modules)
        add_inputs(module);
}

void Parts::add_streams(const Headend& headend) {
    std::set<Stream> streams;
    for (const Service& service : headend.services)
        if (service.ask)
            streams.insert(stream_of(service));
    for (const Stream stream : streams) {
        FailedPart part{PartKind::stream};
        part.stream = stream;
        add(taken_out.streams, harmless.streams, {part});
    }
}

void Parts::add(std::size_t& all, std::size_t& quiet, const Alike& parts) {
    all += parts.size();
    Alike loud;
    for (const FailedPart& part : parts)
        if (std::any_of(before_.begin(), before_.end(),
                        [&part](const PlacedService& service) { return goes_off_air(service, part); }))
            loud.push_back(part);
    quiet += parts.size() - loud.size();
    if (!loud.empty())
        groups.push_back(std::move(loud));
}

/// Of a module's inputs only those in use are looked at one by one: there may be many others.
void Parts::add_inputs(const Module& module) {
    std::map<std::uint16_t, Stream> in_use;
    for (const PlacedService& service : before_)
        for (const Place& place : service.places)
            if (place.mac == module.mac && place.input != 0)
                in_use.emplace(place.input, service.service.stream);
    Alike inputs;
    for (const auto& [number, stream] : in_use) {
        FailedPart part{PartKind::input, module.mac, module.label};
        part.input = number;
        part.stream = stream;
        inputs.push_back(part);
    }
    taken_out.inputs += module.inputs - inputs.size();
    harmless.inputs += module.inputs - inputs.size();
    add(taken_out.inputs, harmless.inputs, inputs);
}

} // namespace zarven::tool
