// The list is read and turned into services elsewhere; here they meet the modules.

#include "commands/commands.h"

#include <optional>
#include <set>
#include <utility>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/failure.h"
#include "base/streams.h"
#include "headend/headend_json.h"
#include "lineup/channel_import.h"
#include "lineup/lineup.h"
#include "placement/stream.h"
#include "report/terminal.h"

namespace zarven::tool {

namespace {

std::size_t number_of_streams(const std::vector<Service>& services) {
    std::set<Stream> streams;
    for (const Service& service : services)
        streams.insert({service.onid, service.tsid});
    return streams.size();
}

void tell_imported(const std::string& file, const ImportedChannels& imported) {
    for (const UnreadableLine& line : imported.unreadable)
        write_message(fmt::format("{}: line {}: {}", file, line.line, line.reason));
    write_message(fmt::format(
        "{}: {} in {} imported: {} SD, {} HD, {} radio; {} of them scrambled; {} left aside", file,
        counted(imported.services.size(), "service"), counted(number_of_streams(imported.services), "stream"),
        imported.sd, imported.hd, imported.radio, imported.scrambled,
        imported.unreadable.empty() ? "no line" : counted(imported.unreadable.size(), "line")));
}

/// What the list does not tell and the head-end needs.
void tell_estimates(const std::string& file, const Lineup& lineup, const ImportedChannels& imported) {
    std::vector<std::string> estimates = {"bitrates by kind"};
    if (lineup.format == LineupFormat::dvbv5)
        estimates.emplace_back("every service free to air");
    if (lineup.list.numbered_by_place != 0)
        estimates.push_back(
            fmt::format("LCN of {} by place in the file", counted(lineup.list.numbered_by_place, "channel")));
    if (imported.nameless_streams != 0)
        estimates.push_back(
            fmt::format("TSID of {} by frequency", counted(imported.nameless_streams, "stream")));
    if (imported.without_pids != 0)
        estimates.push_back(
            fmt::format("CA PIDs of {} by kind", counted(imported.without_pids, "scrambled service")));
    write_message(fmt::format("{}: read as {}; estimated: {}", file, to_string(lineup.format),
                              fmt::join(estimates, ", ")));
}

} // namespace

void import_command(const ImportOptions& options) {
    if (options.channels == standard_stream && options.modules == standard_stream)
        throw Failure("standard input: found \"-\" for the channel list and for --modules, expected it once");

    Headend planned = read_headend(input_name(options.modules), read_text(options.modules));
    const std::string file = input_name(options.channels);
    std::optional<LineupFormat> format;
    if (!options.format.empty())
        format = lineup_format(options.format);
    const Lineup lineup = read_lineup(file, read_text(options.channels), format);
    ImportedChannels imported = import_channels(lineup.list, options.estimates);
    tell_imported(file, imported);
    tell_estimates(file, lineup, imported);

    Headend headend;
    headend.name = std::move(planned.name);
    headend.modules = std::move(planned.modules);
    headend.services = std::move(imported.services);
    write_text(options.output, write_headend(headend));
}

} // namespace zarven::tool
