// The planner's head-end is written with what was measured; what is not about rates stays as it was planned.

#include "commands/commands.h"

#include "base/failure.h"
#include "base/streams.h"
#include "commands/standard_input.h"
#include "headend/headend_json.h"
#include "measured/measuring.h"
#include "report/measuring_text.h"
#include "report/terminal.h"

namespace zarven::tool {

void measure_command(const MeasureOptions& options) {
    expect_one_standard_input(standard_inputs(options.headend.path) + standard_inputs(options.measured.files),
                              "two files");
    Headend headend = read_input(options.headend);
    const ReadMeasurements read = read_measurements(options.measured);
    const Measuring measuring =
        apply_measurements(read.files, read.margins, Descrambling::as_planned, headend.services);
    for (const std::string& message :
         measuring_messages(read.files, headend.services, measuring, extent_of(options.verbose)))
        write_message(message);
    if (measuring.measured.empty())
        throw Failure("no service was measured, and no head-end is written", ExitCode::engine_did_not_run);
    write_text(options.output, write_headend(headend));
}

} // namespace zarven::tool
