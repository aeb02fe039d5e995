#include "commands/report_output.h"

#include "base/failure.h"
#include "base/streams.h"

namespace zarven::tool {

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
