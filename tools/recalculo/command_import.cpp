// The list is read and turned into services elsewhere; here they meet the modules.

#include "command_import.h"

#include <set>
#include <utility>

#include <fmt/format.h>

#include "failure.h"
#include "headend_json.h"
#include "utf8.h"

namespace zarven::tool {

namespace {

std::size_t number_of_streams(const std::vector<Service>& services) {
    std::set<std::pair<std::uint16_t, std::uint16_t>> streams;
    for (const Service& service : services)
        streams.emplace(service.onid, service.tsid);
    return streams.size();
}

std::string counted(std::size_t number, std::string_view thing) {
    return fmt::format("{} {}{}", number, thing, number == 1 ? "" : "s");
}

void tell(const std::string& file, const ImportedChannels& imported) {
    for (const UnreadableLine& line : imported.unreadable)
        fmt::print(stderr, "{}: line {}: {}\n", file, line.line, printable(line.reason));
    fmt::print(stderr, "{}: {} in {} imported: {} SD, {} HD, {} radio; {} of them scrambled; {} left aside\n",
               file, counted(imported.services.size(), "service"),
               counted(number_of_streams(imported.services), "stream"), imported.sd, imported.hd,
               imported.radio, imported.scrambled,
               imported.unreadable.empty() ? "no line" : counted(imported.unreadable.size(), "line"));
}

} // namespace

void import_command(const ImportOptions& options) {
    if (options.channels == standard_stream && options.modules == standard_stream)
        throw Failure("standard input: found \"-\" for the channel list and for --modules, expected it once");

    Headend planned = read_headend(input_name(options.modules), read_text(options.modules));
    const ChannelList list = read_channels_conf(read_text(options.channels));
    ImportedChannels imported = import_channels(list, options.estimates);
    tell(input_name(options.channels), imported);

    Headend headend;
    headend.name = std::move(planned.name);
    headend.modules = std::move(planned.modules);
    headend.services = std::move(imported.services);
    write_text(options.output, write_headend(headend));
}

} // namespace zarven::tool
