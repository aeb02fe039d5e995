// recalculo: places the services of a head-end onto its modules, from the command line. What ends a command
// is told here.

#include <exception>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/interruption.h"
#include "commands/command_line.h"
#include "commands/program.h"
#include "report/terminal.h"

namespace {

using namespace zarven::tool;

int status(ExitCode code) {
    return static_cast<int>(code);
}

} // namespace

int main(int argc, char** argv) {
    interruption::install();
    try {
        return status(perform(describe_program(), argc, argv));
    } catch (const Failure& failure) {
        write_message(fmt::format("recalculo: {}", failure.what()));
        return status(failure.code);
    } catch (const std::exception& error) {
        write_message(fmt::format("recalculo: the engine could not run: {}", error.what()));
        return status(ExitCode::engine_did_not_run);
    }
}
