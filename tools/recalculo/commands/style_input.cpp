#include "commands/style_input.h"

#include <unistd.h>

namespace zarven::tool {

TextStyle style_of(const StyleInput& input) {
    return style_for(surroundings_of(STDOUT_FILENO), colour_choice(input.colour));
}

} // namespace zarven::tool
