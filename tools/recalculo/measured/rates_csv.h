// Rates from any meter, as a table: a heading with the columns tsid, sid and kbit_s, and onid if it is known,
// in any order and with others between them; then a service a line, which may come several times.

#ifndef RECALCULO_RATES_CSV_H
#define RECALCULO_RATES_CSV_H

#include <string>
#include <string_view>

#include "measured/measurement.h"

namespace zarven::tool {

/// The first line that has something on it is such a heading, or the attempt at one.
bool is_rates_csv(std::string_view text);

/// Reads a table, without the lines that cannot be read. Throws `Failure` if a column is missing.
MeasuredFile read_rates_csv(const std::string& file, std::string_view text);

} // namespace zarven::tool

#endif
