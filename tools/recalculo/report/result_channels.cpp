// The import counts the PIDs of a scrambled service, so the made-up PIDs are as many as the result tells.

#include "report/result_channels.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include <fmt/format.h>

#include "base/counted.h"
#include "lineup/channels_conf.h"

namespace zarven::tool {

namespace {

/// The lowest PID that a service may use.
constexpr std::uint16_t first_pid = 32;

/// A channel of a cable network that has a channel of 8 MHz for each stream.
std::uint32_t made_up_frequency(std::size_t stream) {
    return static_cast<std::uint32_t>(114 + 8 * stream);
}

/// Puts `count` PIDs from `first` on, as far as there are any.
void add_sounds(std::uint32_t first, std::uint32_t count, Channel& channel) {
    for (std::uint32_t pid = first; pid < first + count && pid <= highest_pid; ++pid)
        channel.audio_pids.insert(static_cast<std::uint16_t>(pid));
}

void set_pids(const ServiceResult& service, Channel& channel) {
    const std::uint32_t pids = service.is_scrambled ? service.ca_pids : service.is_radio ? 1u : 2u;
    if (service.is_radio) // without sound it would be of unknown kind
        return add_sounds(first_pid, std::max(pids, 1u), channel);
    channel.video_pid = first_pid;
    channel.video_mode = service.is_hd ? video_h264 : video_mpeg2;
    add_sounds(first_pid + 1, pids == 0 ? 0 : pids - 1, channel);
}

/// One export: the services met so far.
class Export {
public:
    explicit Export(const Result& result) {
        export_.clones = result.clones_waiting.size();
        for (const ModuleResult& module : result.modules)
            for (const OutputResult& output : module.outputs)
                for (const ServiceResult& service : output.services)
                    take(service);
        // The engine's exchanges may leave a service placed and left out at once.
        for (const StreamResult& stream : result.left_out)
            for (const ServiceResult& service : stream.services)
                export_.left_out += services_.count(key_of(service)) == 0 ? 1 : 0;
        for (const ServiceResult& service : result.neither)
            ++(service.is_clone ? export_.clones : export_.neither);
        std::map<Stream, std::uint32_t> frequencies;
        for (const auto& [key, service] : services_)
            frequencies.emplace(service.stream, 0);
        std::size_t stream = 0;
        for (auto& [ids, frequency] : frequencies)
            frequency = made_up_frequency(stream++);
        for (const auto& [key, service] : services_)
            add(service, frequencies.at(service.stream));
    }

    ChannelExport result() && { return std::move(export_); }

private:
    void take(const ServiceResult& service) {
        const ServiceKey key = key_of(service);
        if (service.is_clone)
            export_.clones += not_written_.insert(key).second ? 1 : 0;
        else if (service.lcn == 0)
            export_.without_lcn += not_written_.insert(key).second ? 1 : 0;
        else
            services_.emplace(key, service);
    }

    void add(const ServiceResult& service, std::uint32_t frequency) {
        Channel channel;
        channel.number = service.lcn;
        channel.name =
            service.name.empty() ? fmt::format("Service {}", service.sid) : channels_conf_name(service.name);
        export_.renamed += channel.name == service.name ? 0 : 1;
        channel.frequency = frequency;
        channel.source = "C";
        channel.scrambled = service.is_scrambled;
        channel.sid = service.sid;
        channel.nid = service.stream.onid;
        channel.tid = service.stream.tsid;
        set_pids(service, channel);
        export_.channels.push_back(std::move(channel));
    }

    /// By LCN first; a service may stand on several outputs.
    std::map<ServiceKey, ServiceResult> services_;
    /// What is counted and not written.
    std::set<ServiceKey> not_written_;
    ChannelExport export_;
};

} // namespace

ChannelExport result_channels(const Result& result) {
    return Export(result).result();
}

std::string exported_message(const std::string& file, const ChannelExport& exported) {
    std::vector<std::string> parts;
    const auto add = [&parts](std::size_t number, const char* what) {
        if (number != 0)
            parts.push_back(fmt::format("{} {}", number, what));
    };
    add(exported.left_out, "left out");
    add(exported.neither, "neither placed nor left out");
    add(exported.without_lcn, "with LCN 0");
    add(exported.clones, "that are clones");
    return fmt::format("{}: {} written, {} of them renamed; not written: {}", file,
                       counted(exported.channels.size(), "channel"), exported.renamed,
                       parts.empty() ? "none" : fmt::format("{}", fmt::join(parts, ", ")));
}

} // namespace zarven::tool
