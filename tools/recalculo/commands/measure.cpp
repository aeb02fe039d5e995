// The planner's head-end is written with what was measured; what is not about rates stays as it was planned.

#include "commands/commands.h"

#include <algorithm>

#include "base/failure.h"
#include "base/streams.h"
#include "headend/headend_json.h"
#include "measured/measuring.h"
#include "report/measuring_text.h"
#include "report/terminal.h"

namespace zarven::tool {

void measure_command(const MeasureOptions& options) {
    const auto& files = options.measured.files;
    const auto from_standard_input = std::count(files.begin(), files.end(), standard_stream);
    if (from_standard_input + (options.headend.path == standard_stream ? 1 : 0) > 1)
        throw Failure("standard input: found \"-\" for two files, expected it once");
    Headend headend = read_input(options.headend);
    const ReadMeasurements read = read_measurements(options.measured);
    const Measuring measuring =
        apply_measurements(read.files, read.margins, Descrambling::as_planned, headend.services);
    for (const std::string& message : measuring_messages(
             read.files, headend.services, measuring,
             options.verbose ? MessageDigest::Extent::all : MessageDigest::Extent::few_of_each))
        write_message(message);
    if (measuring.measured.empty())
        throw Failure("no service was measured, and no head-end is written", ExitCode::engine_did_not_run);
    write_text(options.output, write_headend(headend));
}

} // namespace zarven::tool
