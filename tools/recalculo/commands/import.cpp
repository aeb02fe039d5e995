// The lists are read and turned into services elsewhere; here they meet the modules.

#include "commands/commands.h"

#include <cstddef>
#include <optional>
#include <utility>

#include "base/failure.h"
#include "base/streams.h"
#include "commands/standard_input.h"
#include "headend/headend_json.h"
#include "lineup/channel_import.h"
#include "lineup/imported_lists.h"
#include "measured/measuring.h"
#include "report/import_text.h"
#include "report/measuring_text.h"
#include "report/terminal.h"

namespace zarven::tool {

namespace {

void check_standard_input(const ImportOptions& options) {
    const std::size_t lists = standard_inputs(options.channels);
    const std::size_t measured = standard_inputs(options.measured.files);
    const std::size_t modules = standard_inputs(options.modules);
    expect_one_standard_input(lists, "two channel lists");
    if (measured != 0)
        expect_one_standard_input(measured + lists + modules, "--measured and for something else");
    expect_one_standard_input(lists + modules, "the channel list and for --modules");
    expect_one_standard_input(standard_inputs(options.filter.selections), "two --select");
    if (is_standard_input_in(options.filter.selections))
        expect_one_standard_input(1 + measured + lists + modules, "--select and for something else");
}

bool is_standard_input_taken(const ImportOptions& options) {
    return standard_inputs(options.channels) + standard_inputs(options.measured.files) +
               standard_inputs(options.filter.selections) + standard_inputs(options.modules) !=
           0;
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
    const ReadMeasurements measurements = read_measurements(options.measured);
    ImportedLists lists;
    WishInput wish_input = options.wishes;
    wish_input.verbose = options.verbose;
    const std::vector<WishList> wishes = read_wishes(wish_input, is_standard_input_taken(options));
    for (const std::string& path : options.channels)
        lists.read(input_name(path), read_text(path), format);
    std::vector<std::string> measured;
    const auto refine = [&](ImportedChannels& made) {
        const Measuring measuring = apply_measurements(measurements.files, measurements.margins,
                                                       Descrambling::as_measured, made.services);
        take_kinds(measuring, made);
        if (!measurements.files.empty())
            measured =
                measuring_messages(measurements.files, made.services, measuring, extent_of(options.verbose));
    };
    ImportedChannels imported =
        import_channels(lists.channels, options.estimates,
                        options.keep_duplicates ? Duplicates::kept : Duplicates::passed_over, refine);
    const ReadFilter read = read_filter(options.filter, imported.services);
    Wishing wishing;
    if (wishes.empty())
        choose_services(imported, read.filter);
    else
        wishing = keep_wishes(wish_input, wishes, read.filter, imported);
    for (const std::string& message :
         import_messages(lists.lists, imported, read.missing, extent_of(options.verbose)))
        write_message(message);
    for (const std::string& message : measured)
        write_message(message);
    Headend headend = headend_of_import(std::move(planned), std::move(imported));
    take_wished_lcns(wish_input, wishes, wishing, headend);
    write_text(options.output, write_headend(headend));
}

} // namespace zarven::tool
