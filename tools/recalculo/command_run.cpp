// Reading, running and reporting, in that order; each is done elsewhere.

#include "command_run.h"

#include "engine_run.h"
#include "headend_json.h"
#include "host.h"
#include "report_json.h"
#include "report_text.h"
#include "result.h"
#include "streams.h"

namespace zarven::tool {

void run_command(const RunOptions& options) {
    const std::string file = input_name(options.headend);
    const Headend headend = read_headend(file, read_text(options.headend));

    host::Log log(options.log);
    host::keep_pauses(options.pauses);
    EngineRun run = load_engine(headend, file);
    run_engine(run, file);
    log.finish();

    const Result result = result_of(run, headend.name);
    write_text(standard_stream, options.json ? json_report(result) : text_report(result));
}

} // namespace zarven::tool
