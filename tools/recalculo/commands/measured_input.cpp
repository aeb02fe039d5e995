// The margins first, because files may be large.

#include "commands/measured_input.h"

#include "base/streams.h"
#include "measured/measured_file.h"

namespace zarven::tool {

ReadMeasurements read_measurements(const MeasuredInput& input) {
    ReadMeasurements read;
    read.margins = read_margins(input.margins);
    for (const std::string& path : input.files)
        read.files.push_back(read_measured_file(input_name(path), read_text(path)));
    return read;
}

} // namespace zarven::tool
