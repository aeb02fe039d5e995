#include "commands/style_input.h"

#include <unistd.h>

#include "commands/choice.h"

namespace zarven::tool {

void add_style_input(CLI::App& command, StyleInput& input) {
    one_of(command.add_option("--color", input.colour, "Colour the report; auto is on a terminal"),
           colour_choices());
}

TextStyle style_of(const StyleInput& input) {
    return style_for(surroundings_of(STDOUT_FILENO), colour_choice(input.colour));
}

} // namespace zarven::tool
