#include "commands/report_output.h"

#include "base/failure.h"
#include "base/streams.h"

namespace zarven::tool {

CLI::Validator named_file() {
    return {[](const std::string& path) -> std::string {
                return path.empty() ? "found an empty name, expected that of a file" : "";
            },
            ""};
}

void add_report_output(CLI::App& command, ReportOutput& output, const std::string& what) {
    command.add_flag("--json", output.json, "Report as JSON");
    command
        .add_option("--html", output.html,
                    "Write the " + what +
                        " as a page for a browser; - for standard output in the place of the report")
        ->check(named_file())
        ->type_name("FILE");
}

void check(const ReportOutput& output) {
    if (output.json && output.html == standard_stream)
        throw Failure("--json and --html - both write to standard output; expected a file for --html");
}

void write_reports(const ReportOutput& output, const std::function<std::string()>& page,
                   const std::function<std::string()>& report) {
    if (!output.html.empty())
        write_text(output.html, page());
    if (output.html != standard_stream)
        write_text(standard_stream, report());
}

} // namespace zarven::tool
