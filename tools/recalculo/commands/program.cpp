#include "commands/program.h"

#include "commands/bound.h"
#include "commands/compare.h"
#include "commands/explain.h"
#include "commands/export.h"
#include "commands/import.h"
#include "commands/run.h"
#include "commands/size.h"

namespace zarven::tool {

void describe_program(CLI::App& program) {
    program.name("recalculo");
    program.description("Places the television services of a head-end onto its modules.");
    // A second one would run after the first, and take a file of its name for a command.
    program.require_subcommand(0, 1);
    for (const auto add : {add_run, add_explain, add_compare, add_size, add_bound, add_import, add_export})
        add(program);

    const std::string version = "recalculo " RECALCULO_VERSION;
    program.set_version_flag("--version", version);
    for (CLI::App* command : program.get_subcommands({}))
        command->set_version_flag("--version", version);
}

} // namespace zarven::tool
