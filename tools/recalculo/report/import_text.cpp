// The order: what is told line by line, what was imported, what is an estimate.

#include "report/import_text.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/counted.h"
#include "lineup/text_lines.h"

namespace zarven::tool {

namespace {

std::string summary(const std::string& name, const ImportedChannels& imported) {
    std::vector<std::string> kinds = {fmt::format("{} SD", imported.sd), fmt::format("{} HD", imported.hd)};
    if (imported.uhd != 0)
        kinds.push_back(fmt::format("{} UHD", imported.uhd));
    kinds.push_back(fmt::format("{} radio", imported.radio));
    if (imported.unknown != 0)
        kinds.push_back(fmt::format("{} of unknown kind", imported.unknown));
    return fmt::format(
        "{}: {} in {} imported: {}; {} of them scrambled; {} left aside{}{}", name,
        counted(imported.services.size(), "service"), counted(streams_of(imported.services).size(), "stream"),
        fmt::join(kinds, ", "), imported.scrambled,
        imported.unreadable.empty() ? "no line" : counted(imported.unreadable.size(), "line"),
        imported.duplicates == 0 ? ""
                                 : fmt::format("; {} passed over", counted(imported.duplicates, "duplicate")),
        imported.not_wanted == 0 ? ""
                                 : fmt::format("; {} not wanted", counted(imported.not_wanted, "service")));
}

void add_remarks(const std::vector<ImportedList>& lists, const ImportedChannels& imported,
                 MessageDigest& digest) {
    for (const std::vector<Remark>* remarks : {&imported.unreadable, &imported.remarks})
        for (const Remark& remark : *remarks) {
            const std::string& file = lists.at(remark.list).file;
            digest.add(file, kind_of_complaint(remark.reason),
                       fmt::format("{}: {}", line_of_file(file, remark.line), remark.reason));
        }
}

/// Which transponders have the ids of others.
void add_shared_ids(const std::string& name, const ImportedChannels& imported, MessageDigest& digest) {
    for (const auto& [listed, given] : imported.shared_ids) {
        std::vector<std::string> transponders;
        for (const Stream stream : given)
            transponders.push_back(
                fmt::format("{} as {}", to_string(imported.receptions.at(stream)), to_string(stream)));
        digest.add(name, "ids of several transponders, which are told apart",
                   fmt::format("{}: {} have the ids {}, and are told apart: {}", name,
                               counted(given.size(), "transponder"), to_string(listed),
                               fmt::join(transponders, ", ")));
    }
}

void add_shared_out(const std::string& name, const ImportedChannels& imported, MessageDigest& digest) {
    for (const SharedOut& shared : imported.shared_out)
        digest.add(
            name, "streams whose transponder carries less than their services take by kind",
            fmt::format("{}: stream {}: its services by kind take {} kbit/s, its transponder carries {}: "
                        "shared out",
                        name, to_string(shared.stream), shared.estimated, shared.carried));
}

/// How far the estimated bitrates have been held against the rates of the transponders.
std::string limits_of_bitrates(const ImportedChannels& imported) {
    std::vector<std::string> limits;
    if (!imported.shared_out.empty())
        limits.push_back(fmt::format("shared out in {} of which the transponder carries less",
                                     counted(imported.shared_out.size(), "stream")));
    if (imported.unchecked_streams != 0)
        limits.push_back(fmt::format("not limited in {} of which the list does not tell the rate",
                                     counted(imported.unchecked_streams, "stream")));
    return limits.empty() ? "" : fmt::format(" ({})", fmt::join(limits, "; "));
}

/// What the list does not tell and the head-end needs.
std::string estimates_of(const std::vector<ImportedList>& lists, const ImportedChannels& imported) {
    std::vector<std::string> estimates;
    const auto measured =
        static_cast<std::size_t>(std::count_if(imported.services.begin(), imported.services.end(),
                                               [](const Service& service) { return service.measured; }));
    const std::size_t estimated = imported.services.size() - measured;
    if (measured == 0)
        estimates.push_back("bitrates by kind" + limits_of_bitrates(imported));
    else if (estimated != 0)
        estimates.push_back(fmt::format("bitrates of {} by kind{}", counted(estimated, "service"),
                                        limits_of_bitrates(imported)));
    if (imported.unknown != 0)
        estimates.push_back(
            fmt::format("{} of unknown kind by name or as SD", counted(imported.unknown, "service")));
    if (imported.kinds_by_name != 0)
        estimates.push_back(
            fmt::format("{} without kind by name", counted(imported.kinds_by_name, "picture")));
    std::size_t numbered_by_place = 0;
    for (const ImportedList& list : lists) {
        numbered_by_place += list.numbered_by_place;
        if (list.format == LineupFormat::dvbv5)
            estimates.push_back(lists.size() == 1
                                    ? "every service free to air"
                                    : fmt::format("every service of {} free to air", list.file));
    }
    if (numbered_by_place != 0)
        estimates.push_back(
            fmt::format("LCN of {} by place in the file", counted(numbered_by_place, "channel")));
    if (imported.renumbered != 0)
        estimates.push_back(
            fmt::format("LCN of {} whose number another list has", counted(imported.renumbered, "channel")));
    std::size_t renumbered = imported.nameless_streams;
    for (const auto& [listed, given] : imported.shared_ids)
        renumbered += given.size() - 1;
    if (renumbered != 0)
        estimates.push_back(fmt::format("TSID of {} by frequency", counted(renumbered, "stream")));
    if (imported.without_pids != 0)
        estimates.push_back(
            fmt::format("CA PIDs of {} by kind", counted(imported.without_pids, "scrambled service")));
    return estimates.empty() ? "nothing" : fmt::format("{}", fmt::join(estimates, ", "));
}

} // namespace

std::vector<std::string> import_messages(const std::vector<ImportedList>& lists,
                                         const ImportedChannels& imported,
                                         const std::vector<MissingWish>& wishes,
                                         MessageDigest::Extent extent) {
    const bool is_one = lists.size() == 1;
    const std::string name = is_one ? lists.front().file : counted(lists.size(), "list");
    MessageDigest digest(extent);
    for (const MissingWish& missing : wishes)
        digest.add(missing.file, "wishes that no service has as name or LCN", wish_text(missing));
    add_remarks(lists, imported, digest);
    add_shared_ids(name, imported, digest);
    add_shared_out(name, imported, digest);
    std::vector<std::string> messages = digest.lines();
    if (!is_one)
        for (const ImportedList& list : lists)
            messages.push_back(fmt::format("{}: read as {}: {}", list.file, to_string(list.format),
                                           counted(list.channels, "channel")));
    messages.push_back(summary(name, imported));
    const std::string format = is_one ? fmt::format("read as {}; ", to_string(lists.front().format)) : "";
    messages.push_back(fmt::format("{}: {}estimated: {}", name, format, estimates_of(lists, imported)));
    return messages;
}

} // namespace zarven::tool
