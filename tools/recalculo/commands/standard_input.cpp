#include "commands/standard_input.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/streams.h"

namespace zarven::tool {

std::size_t standard_inputs(const std::string& path) {
    return path == standard_stream ? 1 : 0;
}

std::size_t standard_inputs(const std::vector<std::string>& paths) {
    return static_cast<std::size_t>(std::count(paths.begin(), paths.end(), standard_stream));
}

bool is_standard_input_in(const std::vector<std::string>& paths) {
    return standard_inputs(paths) != 0;
}

void expect_one_standard_input(std::size_t found, const std::string& readers) {
    if (found > 1)
        throw Failure(fmt::format("standard input: found \"-\" for {}, expected it once", readers));
}

} // namespace zarven::tool
