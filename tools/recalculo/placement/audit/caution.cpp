// Each number or name is looked up by itself; what is found is told in sentences, which name a few services
// and count the others.

#include "placement/audit/caution.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "base/counted.h"
#include "placement/result.h"

namespace zarven::tool {

namespace {

/// A service on an output.
struct Appearance {
    const ModuleResult* module = nullptr;
    const OutputResult* output = nullptr;
    const ServiceResult* service = nullptr;
};

using Appearances = std::vector<Appearance>;

/// A sentence names so many services.
constexpr std::size_t most_named = 3;

std::string name_of(const ModuleResult& module) {
    return "module " + module_name(module.mac, module.label);
}

std::string name_of(const ServiceResult& service) {
    return fmt::format("LCN {} \"{}\" of stream {}", service.lcn, service.name, to_string(service.stream));
}

/// Each service once; where one stands on several outputs, that of the first.
Appearances each_once(const Appearances& appearances) {
    Appearances once;
    std::set<ServiceKey> seen;
    std::copy_if(appearances.begin(), appearances.end(), std::back_inserter(once),
                 [&seen](const Appearance& one) { return seen.insert(key_of(*one.service)).second; });
    return once;
}

/// Named by `name`, the rest by their number.
template <class Name> std::string listed(const Appearances& services, const Name& name) {
    std::string list;
    const std::size_t named = std::min(services.size(), most_named);
    const bool are_all = named == services.size();
    for (std::size_t index = 0; index < named; ++index)
        list += (index == 0 ? "" : index + 1 == named && are_all ? " and " : ", ") + name(services[index]);
    return are_all ? list : list + fmt::format(" and {}", counted(services.size() - named, "other"));
}

/// As often as a service stands on an output, it takes its bitrate there.
std::uint64_t taken_on(const OutputResult& output) {
    std::uint64_t taken = 0;
    for (const ServiceResult& service : output.services)
        taken += service.is_clone ? 0 : service.bitrate;
    return taken;
}

class Search {
public:
    explicit Search(const Result& result) : result_(result) {
        for (const ModuleResult& module : result.modules)
            for (const OutputResult& output : module.outputs) {
                Appearances& carried = carried_.emplace_back();
                for (const ServiceResult& service : output.services)
                    if (!service.is_clone)
                        carried.push_back({&module, &output, &service});
                carried = each_once(carried);
            }
    }

    std::vector<Caution> cautions() && {
        look_for_room();
        look_for_twins<std::uint16_t>(
            {CautionKind::lcn_on_output, CautionKind::lcn_in_network},
            [](const ServiceResult& service) { return service.lcn; },
            [](std::uint16_t lcn) { return lcn == 0 ? "" : fmt::format("LCN {}", lcn); });
        look_for_twins<std::string>(
            {CautionKind::name_on_output, CautionKind::name_in_network},
            [](const ServiceResult& service) { return service.output_name; },
            [](const std::string& name) {
                return name.empty() ? "" : fmt::format("output name \"{}\"", name);
            });
        look_for_twins<std::uint16_t>(
            {CautionKind::sid_in_network, CautionKind::sid_in_network},
            [](const ServiceResult& service) { return service.sid; },
            [](std::uint16_t sid) { return fmt::format("SID {}", sid); });
        std::stable_sort(cautions_.begin(), cautions_.end(),
                         [](const Caution& one, const Caution& other) { return one.kind < other.kind; });
        return std::move(cautions_);
    }

private:
    /// On an output, and in the network; one for both, if an output is not looked at by itself.
    using Kinds = std::pair<CautionKind, CautionKind>;

    void look_for_room();
    template <class Value, class ValueOf, class Subject>
    void look_for_twins(Kinds kinds, const ValueOf& value_of, const Subject& subject);
    void add(CautionKind kind, const std::string& subject, const std::string& problem,
             const Appearances& appearances);

    const Result& result_;
    /// On each output, each service once and without clones.
    std::vector<Appearances> carried_;
    std::vector<Caution> cautions_;
};

void Search::add(CautionKind kind, const std::string& subject, const std::string& problem,
                 const Appearances& appearances) {
    Caution caution;
    caution.kind = kind;
    caution.subject = subject;
    caution.problem = problem;
    caution.is_broken = false;
    for (const Appearance& one : appearances)
        if (std::find(caution.macs.begin(), caution.macs.end(), one.module->mac) == caution.macs.end())
            caution.macs.push_back(one.module->mac);
    cautions_.push_back(std::move(caution));
}

void Search::look_for_room() {
    for (const ModuleResult& module : result_.modules)
        for (const OutputResult& output : module.outputs)
            if (const std::uint64_t lacking = lacking_for_tables(output); lacking != 0)
                add(CautionKind::no_room_for_tables, name_of(module),
                    fmt::format(
                        "no room for tables on output {}: its services take {} of {} kbit/s and {} are to "
                        "stay free, which is {} too much",
                        output.number, taken_on(output), output.bitrate_max, output.reserve, lacking),
                    {{&module, &output, nullptr}});
}

template <class Value, class ValueOf, class Subject>
void Search::look_for_twins(Kinds kinds, const ValueOf& value_of, const Subject& subject) {
    std::map<Value, Appearances> everywhere;
    for (const Appearances& carried : carried_) {
        std::map<Value, Appearances> here;
        for (const Appearance& one : carried)
            here[value_of(*one.service)].push_back(one);
        for (const auto& [value, same] : here) {
            Appearances& all = everywhere[value];
            all.insert(all.end(), same.begin(), same.end());
            const std::string told = subject(value);
            if (same.size() < 2 || told.empty() || kinds.first == kinds.second)
                continue;
            const Appearance& first = same.front();
            add(kinds.first, told,
                fmt::format("{} services on output {} of {} have it: {}", same.size(), first.output->number,
                            name_of(*first.module),
                            listed(same, [](const Appearance& one) { return name_of(*one.service); })),
                same);
        }
    }
    for (const auto& [value, appearances] : everywhere) {
        const Appearances same = each_once(appearances);
        // clang 14, which also makes the page of the planner, captures no structured binding.
        const OutputResult* first = appearances.front().output;
        const bool is_on_one = std::all_of(appearances.begin(), appearances.end(),
                                           [first](const Appearance& one) { return one.output == first; });
        const std::string told = subject(value);
        if (is_on_one || same.size() < 2 || told.empty())
            continue;
        add(kinds.second, told,
            fmt::format("{} services on different outputs have it: {}", same.size(),
                        listed(same,
                               [](const Appearance& one) {
                                   return fmt::format("{} on output {} of {}", name_of(*one.service),
                                                      one.output->number, name_of(*one.module));
                               })),
            same);
    }
}

} // namespace

std::uint64_t lacking_for_tables(const OutputResult& output) {
    const std::uint64_t needed = taken_on(output) + output.reserve;
    const bool is_wanted = output.reserve != 0 && needed != output.reserve;
    return is_wanted && needed > output.bitrate_max ? needed - output.bitrate_max : 0;
}

std::vector<Caution> cautions_of(const Result& result) {
    return Search(result).cautions();
}

} // namespace zarven::tool
