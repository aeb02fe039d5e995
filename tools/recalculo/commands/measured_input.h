// The measured rates of a command line: the files, and the option --margin. Every command that takes rates
// takes them this way.

#ifndef RECALCULO_COMMANDS_MEASURED_INPUT_H
#define RECALCULO_COMMANDS_MEASURED_INPUT_H

#include <string>
#include <vector>

#include "measured/margins.h"
#include "measured/measurement.h"

namespace zarven::tool {

struct MeasuredInput {
    std::vector<std::string> files;
    /// Each [KIND=]N%.
    std::vector<std::string> margins;
};

struct ReadMeasurements {
    std::vector<MeasuredFile> files;
    Margins margins;
};

/// Throws `Failure`.
ReadMeasurements read_measurements(const MeasuredInput& input);

} // namespace zarven::tool

#endif
