// An argument and an option, read together.

#include "commands/headend_input.h"

#include "base/streams.h"
#include "headend/override.h"

namespace zarven::tool {

Headend read_input(const HeadendInput& input) {
    return read_headend(input_name(input.path), read_text(input.path), input.settings);
}

} // namespace zarven::tool
