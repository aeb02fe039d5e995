// The result is read and written elsewhere; here is told what the written form left out.

#include "commands/commands.h"

#include <string>

#include "base/streams.h"
#include "lineup/channels_conf.h"
#include "placement/result_json.h"
#include "report/page/result_page.h"
#include "report/result_channels.h"
#include "report/result_csv.h"
#include "report/terminal.h"

namespace zarven::tool {

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
    write_message(exported_message(file, exported));
}

} // namespace zarven::tool
