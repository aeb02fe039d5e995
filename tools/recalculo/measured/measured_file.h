// Files of measured rates of any form: which one a file has, and how it is read. Logs have up to some hundred
// megabytes, of which few lines are measurements.

#ifndef RECALCULO_MEASURED_FILE_H
#define RECALCULO_MEASURED_FILE_H

#include <string>

#include "measured/measurement.h"

namespace zarven::tool {

/// Reads a table of rates; an analysis; or a log, with an analysis a line where `analyze:` stands before it,
/// or nothing. Lines that are damaged are told and passed over. Throws `Failure` for an analysis alone that
/// is damaged, and where no measurement is found.
MeasuredFile read_measured_file(const std::string& file, const std::string& text);

} // namespace zarven::tool

#endif
