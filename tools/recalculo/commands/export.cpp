// The result is read and written elsewhere; here is told what the written form left out.

#include "commands/commands.h"

#include <string>
#include <vector>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/streams.h"
#include "lineup/channels_conf.h"
#include "placement/result_json.h"
#include "report/page/result_page.h"
#include "report/result_channels.h"
#include "report/result_csv.h"
#include "report/terminal.h"

namespace zarven::tool {

namespace {

void tell_exported(const std::string& file, const ChannelExport& exported) {
    std::vector<std::string> parts;
    const auto add = [&parts](std::size_t number, const char* what) {
        if (number != 0)
            parts.push_back(fmt::format("{} {}", number, what));
    };
    add(exported.left_out, "left out");
    add(exported.neither, "neither placed nor left out");
    add(exported.without_lcn, "with LCN 0");
    add(exported.clones, "that are clones");
    write_message(fmt::format("{}: {} written, {} of them renamed; not written: {}", file,
                              counted(exported.channels.size(), "channel"), exported.renamed,
                              parts.empty() ? "none" : fmt::format("{}", fmt::join(parts, ", "))));
}

} // namespace

void export_command(const ExportOptions& options) {
    const std::string file = input_name(options.result);
    const Result result =
        read_json_file(options.result, [](const std::string& name, const std::string& text) {
            return read_result(name, text);
        });
    if (options.format == format_csv)
        return write_text(options.output, result_csv(result));
    if (options.format == format_html)
        return write_text(options.output, result_page(result));
    const ChannelExport exported = result_channels(result);
    write_text(options.output, write_channels_conf(exported.channels));
    tell_exported(file, exported);
}

} // namespace zarven::tool
