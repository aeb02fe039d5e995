// A limit is the smaller a change, the less of it is added in proportion to what there is. After the limits
// come services that could be withheld, and last a further module.

#include "placement/remedy/remedy.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "Reglas.h"
#include "base/failure.h"
#include "base/workers.h"
#include "placement/sizing/further_modules.h"
#include "placement/sizing/raising.h"

namespace zarven::tool {

struct RemedySearch::Change {
    RemedyKind kind = RemedyKind::raised_limit;
    RaisableLimit limit{};
    std::uint32_t value = 0;
    /// Of the service withheld, or of the module that the further one is like.
    std::size_t index = 0;
    /// In proportion to what there is.
    double size = 0;
};

namespace {

std::set<ServiceKey> placed_in(const Result& result) {
    std::set<ServiceKey> placed;
    for (const ModuleResult& module : result.modules)
        for (const InputResult& input : module.inputs)
            for (const ServiceResult& service : input.services)
                if (!service.outputs.empty() && input.stream == service.stream)
                    placed.insert(key_of(service));
    return placed;
}

/// Those of the first that the second does not have.
std::vector<ServiceResult> lost_between(const Result& now, const Result& then) {
    const std::set<ServiceKey> placed = placed_in(then);
    std::vector<ServiceResult> lost;
    for (const ModuleResult& module : now.modules)
        for (const InputResult& input : module.inputs)
            for (const ServiceResult& service : input.services)
                if (!service.is_clone && !service.outputs.empty() && placed.count(key_of(service)) == 0)
                    lost.push_back(service);
    return lost;
}

/// What might be added to a limit: what is short, what the service asks for, and more of that.
std::set<std::uint32_t> amounts(std::uint64_t short_by, std::uint64_t asked_for, std::uint64_t most) {
    std::set<std::uint32_t> amounts;
    for (const std::uint64_t amount : {short_by, asked_for, 2 * asked_for, 4 * asked_for})
        if (amount != 0 && amount <= most)
            amounts.insert(static_cast<std::uint32_t>(amount));
    return amounts;
}

bool is_same_kind(const Module& one, const Module& other) {
    const auto limits = [](const Module& module) {
        return std::tie(module.inputs, module.outputs, module.pids_max, module.sd_transcoders,
                        module.hd_transcoders, module.aux_transcoders);
    };
    return limits(one) == limits(other);
}

/// Without any service where the engine fails: such a change is no remedy.
Result run_of(const Headend& headend, const std::string& file) try {
    EngineRun run = load_engine(headend, file);
    run_engine(run, file);
    return result_of(run, headend.name, Reasons::omitted);
} catch (const Failure&) {
    return {};
}

} // namespace

bool is_placed(const ServiceKey& key, const Result& result) {
    return placed_in(result).count(key) != 0;
}

std::vector<RemedySearch::Change> RemedySearch::raises_for(const tRec_Servicio& service) const {
    std::vector<Change> changes;
    const auto add = [&changes](const RaisableLimit& limit, const std::set<std::uint32_t>& added) {
        for (const std::uint32_t amount : added)
            changes.push_back({RemedyKind::raised_limit, limit, limit.from + amount, 0,
                               static_cast<double>(amount) / std::max(limit.from, std::uint32_t{1})});
    };
    std::map<std::string, ModuleRefusal> refusals;
    for (ModuleRefusal& refusal : state_.refusals_of(service))
        refusals.emplace(refusal.mac, refusal);
    constexpr std::uint32_t most_of_16_bits = UINT16_MAX;
    for (std::size_t index = 0; index < headend_.modules.size(); ++index) {
        const Module& module = headend_.modules[index];
        const Room& room = refusals.at(module.mac).room;
        add({LimitKind::pids, index, 0, module.pids_max, 0},
            amounts(room.pids_short_by, service.number_PIDs_CA, most_of_16_bits - module.pids_max));
        for (std::size_t place = 0; place < module.outputs.size(); ++place) {
            const std::uint32_t bitrate = module.outputs[place];
            const std::uint64_t short_by = room.output.number == place + 1 ? room.output.short_by : 0;
            add({LimitKind::bitrate, index, place + 1, bitrate, 0},
                amounts(short_by, service.peakBitRate,
                        INT32_MAX - std::min<std::uint32_t>(bitrate, INT32_MAX)));
        }
        add({LimitKind::inputs, index, 0, module.inputs, 0}, amounts(0, 1, most_of_16_bits - module.inputs));
        if (reglas::ocupaTranscoder(service.Transcoding)) {
            add({LimitKind::sd_transcoders, index, 0, module.sd_transcoders, 0},
                amounts(0, 1, most_of_16_bits - module.sd_transcoders));
            add({LimitKind::hd_transcoders, index, 0, module.hd_transcoders, 0},
                amounts(0, 1, most_of_16_bits - module.hd_transcoders));
        }
        if (!module.outputs.empty() && module.outputs.size() < most_of_16_bits)
            changes.push_back({RemedyKind::raised_limit,
                               {LimitKind::one_more_output, index, module.outputs.size() + 1, 0, 0},
                               *std::max_element(module.outputs.begin(), module.outputs.end()),
                               0,
                               1.0 / static_cast<double>(module.outputs.size())});
    }
    std::stable_sort(changes.begin(), changes.end(),
                     [](const Change& one, const Change& other) { return one.size < other.size; });
    return changes;
}

/// Services that are placed now and count for less: of less value, or of the same and with a higher LCN.
/// Those of least value first, and of these the highest LCN.
std::vector<RemedySearch::Change> RemedySearch::withholdings_for(const tRec_Servicio& service) const {
    std::uint16_t value = 0;
    bool is_must = false;
    for (const Service& each : headend_.services)
        if (each.onid == service.ONID && each.tsid == service.TSID && each.lcn == service.LCN &&
            each.sid == service.SID) {
            value = each.value;
            is_must = each.must;
        }
    const std::set<ServiceKey> placed = placed_in(now_);
    std::vector<Change> changes;
    for (std::size_t index = 0; index < headend_.services.size(); ++index) {
        const Service& each = headend_.services[index];
        const bool counts_for_less = !each.must && (is_must || std::make_pair(each.value, service.LCN) <
                                                                   std::make_pair(value, each.lcn));
        if (counts_for_less && placed.count({each.lcn, each.onid, each.tsid, each.sid, false}) != 0)
            changes.push_back({RemedyKind::withheld_service, {}, 0, index});
    }
    std::stable_sort(changes.begin(), changes.end(), [this](const Change& one, const Change& other) {
        const Service& first = headend_.services[one.index];
        const Service& second = headend_.services[other.index];
        return std::make_pair(first.value, second.lcn) < std::make_pair(second.value, first.lcn);
    });
    return changes;
}

/// One of each kind that there is.
std::vector<RemedySearch::Change> RemedySearch::further_modules() const {
    std::vector<Change> changes;
    for (std::size_t index = 0; index < headend_.modules.size(); ++index)
        if (std::none_of(changes.begin(), changes.end(), [&](const Change& known) {
                return is_same_kind(headend_.modules[known.index], headend_.modules[index]);
            }))
            changes.push_back({RemedyKind::further_module, {}, 0, index});
    return changes;
}

Remedy RemedySearch::told(const Change& change, const Result& result) const {
    Remedy remedy;
    remedy.kind = change.kind;
    remedy.placed = result.counts.placed;
    remedy.lost = lost_between(now_, result);
    if (change.kind == RemedyKind::raised_limit) {
        Module raised = headend_.modules[change.limit.module];
        raise(raised, change.limit, change.value);
        Raise& told = remedy.raise;
        told.kind = change.limit.kind;
        told.mac = raised.mac;
        told.label = raised.label;
        told.output = change.limit.output;
        told.from = change.limit.from;
        told.to = told.enough = change.value;
        told.placed = remedy.placed;
        told.findings = result.findings.size();
        told.setting = remedy.setting = setting_of(change.limit, raised, change.value);
    } else if (change.kind == RemedyKind::withheld_service) {
        const Service& service = headend_.services[change.index];
        remedy.withheld.stream = stream_of(service);
        remedy.withheld.lcn = service.lcn;
        remedy.withheld.sid = service.sid;
        remedy.withheld.name = service.name;
        remedy.setting = fmt::format("services[{}].ask=false", change.index);
        const auto is_withheld = [&remedy](const ServiceResult& lost) {
            return key_of(lost) == key_of(remedy.withheld);
        };
        remedy.lost.erase(std::remove_if(remedy.lost.begin(), remedy.lost.end(), is_withheld),
                          remedy.lost.end());
    } else {
        remedy.like = headend_.modules[change.index].mac;
        remedy.label = headend_.modules[change.index].label;
    }
    return remedy;
}

/// In waves of as many changes as there are threads; of a wave, those after the first that helps are
/// forgotten, so that the answer does not depend on the threads. Where that costs other services, the search
/// goes on for one that does not.
void RemedySearch::look(const std::vector<Change>& changes, std::size_t most, const ServiceKey& key,
                        Remedies& remedies) const {
    const std::size_t end = std::min(changes.size(), most);
    const auto changed_by = [this](const Change& change) {
        if (change.kind == RemedyKind::further_module)
            return with_modules(headend_, headend_.modules[change.index], 1);
        Headend changed = headend_;
        if (change.kind == RemedyKind::raised_limit)
            raise(changed.modules[change.limit.module], change.limit, change.value);
        else
            changed.services[change.index].ask = false;
        return changed;
    };
    bool is_found = false;
    for (std::size_t first = 0; first < end;) {
        std::vector<Result> wave(std::min(std::size_t{cores()}, end - first));
        in_parallel(wave.size(), cores(),
                    [&](std::size_t part) { wave[part] = run_of(changed_by(changes[first + part]), file_); });
        for (const Result& result : wave) {
            ++remedies.tried;
            const Change& change = changes[first++];
            if (!is_placed(key, result) || broken_in(result).all() != 0)
                continue;
            Remedy remedy = told(change, result);
            const bool costs_others = !remedy.lost.empty();
            if (!is_found || !costs_others)
                remedies.found.push_back(std::move(remedy));
            is_found = true;
            if (!costs_others)
                return;
        }
    }
}

Remedies RemedySearch::remedies_for(const tRec_Servicio& service, std::size_t most) const {
    Remedies remedies;
    const ServiceKey key = key_of(describe(service, false));
    for (const std::vector<Change>& changes :
         {raises_for(service), withholdings_for(service), further_modules()})
        look(changes, most, key, remedies);
    return remedies;
}

} // namespace zarven::tool
