#include "lineup/imported_lists.h"

#include <set>
#include <utility>

#include "base/failure.h"
#include "headend/stream.h"

namespace zarven::tool {

void ImportedLists::read(const std::string& file, std::string_view text, std::optional<LineupFormat> format) {
    Lineup lineup = read_lineup(file, text, format);
    lists.push_back({file, lineup.format, lineup.list.channels.size(), lineup.list.numbered_by_place});
    append(channels, std::move(lineup.list), lists.size() - 1);
}

Headend headend_of_import(Headend planned, ImportedChannels imported) {
    if (imported.services.empty())
        throw Failure("nothing is imported, and no head-end is written", ExitCode::engine_did_not_run);
    Headend headend;
    headend.name = std::move(planned.name);
    headend.modules = std::move(planned.modules);
    headend.services = std::move(imported.services);
    const std::set<Stream> streams = streams_of(headend.services);
    for (const auto& [stream, reception] : imported.receptions)
        if (streams.count(stream) != 0 && !to_string(reception).empty())
            headend.streams.push_back(reception);
    return headend;
}

} // namespace zarven::tool
