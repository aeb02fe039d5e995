// The engine is not monotonous: with more room it may place less. So a number of modules is looked for
// upwards, one by one, from the least that the bound allows, and what a bisection finds is told as what it
// is: it suffices, and one less does not.

#include "placement/sizing.h"

#include <algorithm>
#include <limits>
#include <map>
#include <mutex>
#include <set>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "base/workers.h"
#include "placement/bound.h"
#include "placement/capacity.h"

namespace zarven::tool {

namespace {

using Identity = std::tuple<std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t>;

Identity identity_of(const ServiceResult& service) {
    return {service.stream.onid, service.stream.tsid, service.lcn, service.sid};
}

/// Runs changed head-ends, from several threads, and counts the runs.
class Runner {
public:
    Runner(const std::string& file, const SizingOptions& options) : file_(file), options_(options) {}

    Result run(const Headend& headend, Reasons reasons = Reasons::omitted) {
        EngineRun run = load_engine(headend, file_);
        run_engine(run, file_);
        Result result = result_of(run, headend.name, reasons);
        const std::lock_guard<std::mutex> one_at_a_time(mutex_);
        ++done_;
        planned_ = std::max(planned_, done_);
        options_.progress(done_, planned_);
        return result;
    }

    /// Before a number of runs that is known; of others only the outcome tells how many they are.
    void plan(std::size_t runs) { planned_ = done_ + runs; }

    void in_parallel(std::size_t parts, const std::function<void(std::size_t)>& part) const {
        tool::in_parallel(parts, options_.jobs, part);
    }

private:
    const std::string& file_;
    const SizingOptions& options_;
    std::mutex mutex_;
    std::size_t done_ = 0;
    std::size_t planned_ = 0;
};

/// The MAC after another one in the order of the engine: the next number, or a longer text.
std::string mac_after(const std::string& mac) {
    const auto is_digit = [](char character) {
        return std::string("0123456789abcdefABCDEF").find(character) != std::string::npos;
    };
    const std::size_t size = mac.size();
    if (size >= 2 && is_digit(mac[size - 1]) && is_digit(mac[size - 2])) {
        const unsigned long number = std::stoul(mac.substr(size - 2), nullptr, 16);
        const bool is_lower = mac.find_first_of("abcdef") != mac.npos;
        const std::string next = mac.substr(0, size - 2) + (is_lower ? fmt::format("{:02x}", number + 1)
                                                                     : fmt::format("{:02X}", number + 1));
        if (next.size() == size) // not after FF
            return next;
    }
    return mac + ":01";
}

} // namespace

Headend with_modules(const Headend& headend, const Module& kind, std::size_t number) {
    Headend changed = headend;
    std::string mac;
    for (const Module& module : headend.modules)
        mac = std::max(mac, module.mac);
    for (std::size_t copy = 0; copy < number; ++copy) {
        mac = mac_after(mac);
        changed.modules.push_back(kind);
        changed.modules.back().mac = mac;
        changed.modules.back().controller = false;
    }
    return changed;
}

namespace {

/// Looks for the smallest number of further modules.
class Adding {
public:
    Adding(const Headend& headend, const std::string& file, const Module& kind, const SizingOptions& options)
        : headend_(headend), most_(options.most), jobs_(options.jobs), loaded_(load_engine(headend, file)),
          modules_(capacities_of(loaded_)) {
        addition_.kind = kind;
        kind_ = capacities_of(load_engine(with_modules({}, kind, 1), file)).front();
        find_impossible();
    }

    Addition addition(Runner& runner, const Result& now) &&;

private:
    void find_impossible();
    std::size_t wanted() const;
    void find_least();
    void find_shortages();
    void note_remaining(const Result& result);
    bool suffices(const Result& result) const;
    void search(Runner& runner);
    bool take(std::size_t number, const Result& result);

    const Headend& headend_;
    std::size_t most_;
    unsigned jobs_;
    EngineRun loaded_;
    std::vector<ModuleCapacity> modules_;
    ModuleCapacity kind_;
    std::set<Identity> impossible_;
    std::size_t best_placed_ = 0;
    Addition addition_;
};

/// The engine tunes an input for services without transcoding only.
void Adding::find_impossible() {
    std::set<Stream> tunable;
    for (const auto& service : loaded_.engine.listaServicios)
        if (service->Transcoding == 0)
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
        impossible_.insert(identity_of(addition_.impossible.back()));
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
    for (BoundLimit Bound::*const which :
         {&Bound::inputs, &Bound::bitrate, &Bound::pids, &Bound::transcoders, &Bound::places}) {
        const BoundLimit& limit = with_one.*which;
        if (limit.allows < wanted() && limit.capacity == (with_two.*which).capacity)
            addition_.shortages.push_back({which, limit});
    }
}

bool Adding::suffices(const Result& result) const {
    for (const StreamResult& stream : result.left_out)
        for (const ServiceResult& service : stream.services)
            if (impossible_.count(identity_of(service)) == 0)
                return false;
    return result.counts.placed + impossible_.size() >= result.counts.loaded;
}

/// Notes an attempt. True if it suffices.
bool Adding::take(std::size_t number, const Result& result) {
    addition_.attempts.push_back(
        {number, result.counts.placed, result.counts.left_out, result.warnings.size()});
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
            if (impossible_.count(identity_of(service)) == 0)
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

/// A limit that may be raised, up to a value that is as good as none.
struct Candidate {
    LimitKind kind;
    std::size_t module;
    std::size_t output;
    std::uint32_t from;
    std::uint32_t generous;
};

/// What a raised limit leads to.
struct Outcome {
    std::size_t placed = 0;
    std::size_t findings = 0;
};

/// Tries every limit of every module.
class Raising {
public:
    Raising(const Headend& headend, Runner& runner) : headend_(headend), runner_(runner) { list(); }

    std::vector<Raise> raises(std::size_t placed_now);

private:
    void list();
    void list(std::size_t module, std::uint64_t bitrate, std::uint64_t pids, std::size_t transcoded,
              std::size_t streams);
    void add(const Candidate& candidate) {
        if (candidate.generous > candidate.from)
            candidates_.push_back(candidate);
    }
    Outcome outcome_with(const Candidate& candidate, std::uint32_t value);
    Raise smallest(const Candidate& candidate, Outcome generous);

    const Headend& headend_;
    Runner& runner_;
    std::vector<Candidate> candidates_;
};

void Raising::list() {
    std::uint64_t bitrate = 1; // a load must stay under its maximum
    std::uint64_t pids = 0;
    std::size_t transcoded = 0;
    std::set<Stream> streams;
    for (const Service& service : headend_.services) {
        bitrate += service.bitrate;
        pids += std::max(service.ca_pids, service.ca_pids_max);
        transcoded += service.transcoding == 1 ? 1 : 0;
        streams.insert({service.onid, service.tsid});
    }
    for (std::size_t module = 0; module < headend_.modules.size(); ++module)
        list(module, bitrate, pids, transcoded, streams.size());
}

void Raising::list(std::size_t index, std::uint64_t bitrate, std::uint64_t pids, std::size_t transcoded,
                   std::size_t streams) {
    // The engine compares loads as signed numbers in one place.
    const std::uint64_t most_bitrate = std::numeric_limits<std::int32_t>::max();
    const std::uint64_t most_others = std::numeric_limits<std::uint16_t>::max();
    const auto within = [](std::uint64_t value, std::uint64_t most) {
        return static_cast<std::uint32_t>(std::min(value, most));
    };
    const Module& module = headend_.modules[index];
    add({LimitKind::pids, index, 0, module.pids_max, within(module.pids_max + pids, most_others)});
    for (std::size_t output = 0; output < module.outputs.size(); ++output)
        add({LimitKind::bitrate, index, output + 1, module.outputs[output],
             within(module.outputs[output] + bitrate, most_bitrate)});
    add({LimitKind::inputs, index, 0, module.inputs, within(module.inputs + streams, most_others)});
    add({LimitKind::sd_transcoders, index, 0, module.sd_transcoders,
         within(module.sd_transcoders + transcoded, most_others)});
    add({LimitKind::hd_transcoders, index, 0, module.hd_transcoders,
         within(module.hd_transcoders + transcoded, most_others)});
    // One like the largest there is: a single step, and nothing to look for.
    if (!module.outputs.empty() && module.outputs.size() < most_others) {
        const std::uint32_t largest = *std::max_element(module.outputs.begin(), module.outputs.end());
        if (largest != 0)
            add({LimitKind::one_more_output, index, module.outputs.size() + 1, largest - 1, largest});
    }
}

void raise(Module& module, const Candidate& candidate, std::uint32_t value) {
    switch (candidate.kind) {
    case LimitKind::pids:
        module.pids_max = static_cast<std::uint16_t>(value);
        break;
    case LimitKind::bitrate:
        module.outputs[candidate.output - 1] = value;
        break;
    case LimitKind::inputs:
        module.inputs = static_cast<std::uint16_t>(value);
        break;
    case LimitKind::sd_transcoders:
        module.sd_transcoders = static_cast<std::uint16_t>(value);
        break;
    case LimitKind::hd_transcoders:
        module.hd_transcoders = static_cast<std::uint16_t>(value);
        break;
    case LimitKind::one_more_output:
        module.outputs.push_back(value);
        break;
    }
}

std::string setting_of(const Candidate& candidate, const Module& raised, std::uint32_t value) {
    const std::string path = fmt::format("modules[{}]", candidate.module);
    switch (candidate.kind) {
    case LimitKind::pids:
        return fmt::format("{}.pids_max={}", path, value);
    case LimitKind::bitrate:
        return fmt::format("{}.outputs[{}]={}", path, candidate.output - 1, value);
    case LimitKind::inputs:
        return fmt::format("{}.inputs={}", path, value);
    case LimitKind::sd_transcoders:
        return fmt::format("{}.sd_transcoders={}", path, value);
    case LimitKind::hd_transcoders:
        return fmt::format("{}.hd_transcoders={}", path, value);
    case LimitKind::one_more_output:
        break;
    }
    return fmt::format("{}.outputs=[{}]", path, fmt::join(raised.outputs, ", "));
}

Outcome Raising::outcome_with(const Candidate& candidate, std::uint32_t value) {
    Headend changed = headend_;
    raise(changed.modules[candidate.module], candidate, value);
    const Result result = runner_.run(changed);
    return {result.counts.placed, result.warnings.size()};
}

/// Bisects between what is and what is generous for the smallest value that places as many.
Raise Raising::smallest(const Candidate& candidate, Outcome generous) {
    const Module& module = headend_.modules[candidate.module];
    Raise found;
    found.kind = candidate.kind;
    found.mac = module.mac;
    found.output = candidate.output;
    found.from = candidate.from;
    found.to = candidate.generous;
    Outcome outcome = generous;
    std::uint32_t too_small = candidate.from;
    while (found.to - too_small > 1) {
        const std::uint32_t middle = too_small + (found.to - too_small) / 2;
        const Outcome with_middle = outcome_with(candidate, middle);
        if (with_middle.placed >= generous.placed) {
            found.to = middle;
            outcome = with_middle;
        } else {
            too_small = middle;
        }
    }
    found.placed = outcome.placed;
    found.findings = outcome.findings;
    Module raised = module;
    raise(raised, candidate, found.to);
    found.setting = setting_of(candidate, raised, found.to);
    if (candidate.kind == LimitKind::one_more_output)
        found.from = 0;
    return found;
}

std::vector<Raise> Raising::raises(std::size_t placed_now) {
    std::vector<Outcome> outcomes(candidates_.size());
    runner_.plan(candidates_.size());
    runner_.in_parallel(candidates_.size(), [&](std::size_t index) {
        outcomes[index] = outcome_with(candidates_[index], candidates_[index].generous);
    });
    std::map<LimitKind, std::size_t> best;
    for (std::size_t index = 0; index < candidates_.size(); ++index) {
        if (outcomes[index].placed <= placed_now)
            continue;
        const auto [of_kind, is_first] = best.emplace(candidates_[index].kind, index);
        if (!is_first && outcomes[index].placed > outcomes[of_kind->second].placed)
            of_kind->second = index;
    }
    std::vector<std::size_t> chosen;
    for (const auto& [kind, index] : best)
        chosen.push_back(index);
    std::vector<Raise> found(chosen.size());
    runner_.in_parallel(chosen.size(), [&](std::size_t index) {
        found[index] = smallest(candidates_[chosen[index]], outcomes[chosen[index]]);
    });
    std::stable_sort(found.begin(), found.end(),
                     [](const Raise& one, const Raise& other) { return one.placed > other.placed; });
    return found;
}

} // namespace

Sizing size_headend(const Headend& headend, const std::string& file, const Module& kind,
                    const SizingOptions& options) {
    Runner runner(file, options);
    const Result now = runner.run(headend, Reasons::told);
    Sizing sizing;
    sizing.name = headend.name;
    sizing.most = options.most;
    sizing.now = now.counts;
    sizing.warnings = now.warnings;
    sizing.addition = Adding(headend, file, kind, options).addition(runner, now);
    if (now.counts.placed < now.counts.loaded)
        sizing.raises = Raising(headend, runner).raises(now.counts.placed);
    return sizing;
}

} // namespace zarven::tool
