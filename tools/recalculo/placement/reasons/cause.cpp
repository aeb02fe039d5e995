// A result tells of each service its cause and the module that is nearest to taking it; here they are counted
// and put into sentences.

#include "placement/reasons/cause.h"

#include <algorithm>
#include <map>
#include <set>

#include <fmt/format.h>

#include "base/counted.h"
#include "placement/result.h"

namespace zarven::tool {

namespace {

/// What the services of one cause have in common.
struct Group {
    std::size_t services = 0;
    std::set<Stream> streams;
    /// The modules nearest to taking them, and of how many services each is that.
    std::map<std::string, std::size_t> modules;
};

std::string name_in(const Result& result, const std::string& mac) {
    for (const ModuleResult& module : result.modules)
        if (module.mac == mac)
            return module_name(module.mac, module.label);
    return mac;
}

/// " on module X", or " on 3 modules, most often on X (12 services)".
std::string where(const Result& result, const Group& group) {
    if (group.modules.empty())
        return "";
    const auto most =
        std::max_element(group.modules.begin(), group.modules.end(),
                         [](const auto& one, const auto& other) { return one.second < other.second; });
    const std::string name = name_in(result, most->first);
    if (group.modules.size() == 1)
        return " on module " + name;
    return fmt::format(" on {}, most often on {} ({})", counted(group.modules.size(), "module"), name,
                       counted(most->second, "service"));
}

std::string no_input(const Result& result) {
    const std::size_t inputs = inputs_of(result).all;
    return "no input is free: " + (inputs == 1
                                       ? "the only one carries another stream"
                                       : fmt::format("all {} inputs on {} carry other streams", inputs,
                                                     counted(result.modules.size(), "module")));
}

std::string unused_input(const Result& result, const Group& group) {
    std::size_t inputs = 0;
    for (const ModuleResult& module : result.modules)
        if (group.modules.count(module.mac) != 0)
            inputs += static_cast<std::size_t>(
                std::count_if(module.inputs.begin(), module.inputs.end(),
                              [](const InputResult& input) { return input.services.empty(); }));
    const std::string streams =
        group.streams.size() == 1 ? "the stream" : fmt::format("one of {} streams", group.streams.size());
    const std::string which = group.modules.size() == 1
                                  ? "of module " + name_in(result, group.modules.begin()->first)
                                  : "on " + counted(group.modules.size(), "module");
    if (inputs == 1)
        return fmt::format("a free input {} could take {}: the engine's strategies did not use it", which,
                           streams);
    return fmt::format("{} free inputs {} could each take {}: the engine's strategies did not use them",
                       inputs, which, streams);
}

std::string sentence_of(Cause cause, const Group& group, const Result& result) {
    switch (cause) {
    case Cause::impossible:
        return "too much for every module, even an empty one";
    case Cause::no_input:
        return no_input(result);
    case Cause::stream_not_chosen:
        return "the engine tunes no input for transcoding, nor for LCN 0 while others wait, and nothing else asks for "
               "the stream";
    case Cause::places:
        return "no place for another service on an output" + where(result, group);
    case Cause::bitrate:
        return "the bitrate of the outputs is short" + where(result, group);
    case Cause::pids:
        return "PIDs are short" + where(result, group);
    case Cause::transcoders:
        return "no transcoder is left" + where(result, group);
    case Cause::unused_input:
        return unused_input(result, group);
    case Cause::unused_room:
        return "the stream is received and there is room" + where(result, group) +
               ": the engine's strategies did not use it";
    case Cause::contradictory:
        return "on an output all the same: the engine has placed and left out";
    default:
        return "lost by the engine's exchanges";
    }
}

} // namespace

std::vector<CauseCount> causes_of(const Result& result) {
    std::map<Cause, Group> groups;
    const auto note = [&groups](const ServiceResult& service) {
        if (service.cause == Cause::none || service.is_clone)
            return;
        Group& group = groups[service.cause];
        ++group.services;
        group.streams.insert(service.stream);
        if (!service.nearest.empty())
            ++group.modules[service.nearest];
    };
    for (const StreamResult& stream : result.left_out)
        std::for_each(stream.services.begin(), stream.services.end(), note);
    std::for_each(result.neither.begin(), result.neither.end(), note);
    std::vector<CauseCount> causes;
    for (const auto& [cause, group] : groups)
        causes.push_back({cause, group.services, group.streams.size(), sentence_of(cause, group, result)});
    std::stable_sort(causes.begin(), causes.end(), [](const CauseCount& one, const CauseCount& other) {
        return one.services > other.services;
    });
    return causes;
}

bool is_told_once(const std::vector<CauseCount>& causes, Cause cause) {
    return cause == Cause::unused_input &&
           std::any_of(causes.begin(), causes.end(), [cause](const CauseCount& count) {
               return count.cause == cause && count.streams > 1;
           });
}

} // namespace zarven::tool
