// An argument and an option, read together.

#include "commands/headend_input.h"

#include "base/streams.h"
#include "headend/override.h"

namespace zarven::tool {

void add_headend_input(CLI::App& command, HeadendInput& input) {
    command.add_option("HEADEND", input.path, "The head-end, a JSON file; - for standard input")
        ->type_name("")
        ->required();
    // One value each, so that the head-end may follow.
    command
        .add_option("--set", input.settings,
                    "Change a value for this run, as in modules[2].pids_max=64, counted from 0, or "
                    "modules[MAC].pids_max=64; [*] for all of a list; may be given several times")
        ->type_name("PATH=VALUE")
        ->allow_extra_args(false);
}

Headend read_input(const HeadendInput& input) {
    return read_headend(input_name(input.path), read_text(input.path), input.settings);
}

} // namespace zarven::tool
