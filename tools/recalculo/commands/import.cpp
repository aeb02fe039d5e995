// The lists are read and turned into services elsewhere; here they meet the modules.

#include "commands/commands.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/failure.h"
#include "base/streams.h"
#include "headend/headend_json.h"
#include "lineup/channel_import.h"
#include "lineup/imported_lists.h"
#include "report/import_text.h"
#include "report/terminal.h"

namespace zarven::tool {

namespace {

/// Standard input can be read once.
void check_standard_input(const ImportOptions& options) {
    const auto lists = std::count(options.channels.begin(), options.channels.end(), standard_stream);
    if (lists > 1)
        throw Failure("standard input: found \"-\" for two channel lists, expected it once");
    if (lists == 1 && options.modules == standard_stream)
        throw Failure("standard input: found \"-\" for the channel list and for --modules, expected it once");
}

} // namespace

void import_command(const ImportOptions& options) {
    check_standard_input(options);
    Headend planned = read_json_file(options.modules, [](const std::string& name, const std::string& text) {
        return read_headend(name, text);
    });
    std::optional<LineupFormat> format;
    if (!options.format.empty())
        format = lineup_format(options.format);
    ImportedLists lists;
    for (const std::string& path : options.channels)
        lists.read(input_name(path), read_text(path), format);
    ImportedChannels imported =
        import_channels(lists.channels, options.estimates,
                        options.keep_duplicates ? Duplicates::kept : Duplicates::passed_over);
    const ReadFilter read = read_filter(options.filter, imported.services);
    choose_services(imported, read.filter);
    for (const std::string& message :
         import_messages(lists.lists, imported, read.missing,
                         options.verbose ? MessageDigest::Extent::all : MessageDigest::Extent::few_of_each))
        write_message(message);
    write_text(options.output, write_headend(headend_of_import(std::move(planned), std::move(imported))));
}

} // namespace zarven::tool
