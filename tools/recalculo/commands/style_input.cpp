#include "commands/style_input.h"

#include <unistd.h>

namespace zarven::tool {

void add_style_input(CLI::App& command, StyleInput& input) {
    command.add_option("--color", input.colour, "Colour the report: auto (on a terminal), always or never")
        ->check(CLI::IsMember(colour_choices()).description(""))
        ->type_name("WHEN");
}

TextStyle style_of(const StyleInput& input) {
    return style_for(surroundings_of(STDOUT_FILENO), colour_choice(input.colour));
}

} // namespace zarven::tool
