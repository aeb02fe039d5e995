#include "loads.h"

#include "placement/change/comparison.h"

namespace zarven::web {

namespace {

std::string load_of(const std::string& mac, const tool::OutputResult& output) {
    const bool is_empty = output.bitrate == 0 && output.service_count == 0;
    if (!is_empty && (output.bitrate >= output.bitrate_max || output.service_count > output.service_max))
        return "broken";
    if (tool::is_tight({tool::TightKind::bitrate, mac, output.number, output.bitrate, output.bitrate_max}) ||
        (!is_empty && output.service_count == output.service_max))
        return "full";
    return std::uint64_t{output.bitrate} * 4 >= std::uint64_t{output.bitrate_max} * 3 && !is_empty ? "high"
                                                                                                   : "free";
}

} // namespace

std::vector<std::vector<std::string>> loads_of(const tool::Result& result) {
    std::vector<std::vector<std::string>> loads;
    for (const tool::ModuleResult& module : result.modules) {
        loads.emplace_back();
        for (const tool::OutputResult& output : module.outputs)
            loads.back().push_back(load_of(module.mac, output));
    }
    return loads;
}

} // namespace zarven::web
