// What every text report says in the same words: the services in figures, and what the audit found.

#ifndef RECALCULO_SUMMARY_TEXT_H
#define RECALCULO_SUMMARY_TEXT_H

#include <cstddef>
#include <string>
#include <vector>

#include "placement/result.h"
#include "report/terminal.h"

namespace zarven::tool {

/// "12 services loaded", and ", 3 not asked for" if there are any.
std::string services_loaded(std::size_t loaded, std::size_t not_asked_for);

/// "12 services loaded: 10 placed, 1 left out, 1 neither"; without the last as a rule.
std::string services_in_figures(const Counts& counts);

/// For a summary: "; 9 of 10 musts placed"; empty where no service is one.
std::string musts_in_figures(std::size_t placed, std::size_t musts);

/// "Bitrates of 10 services placed: 8 measured, 2 estimated; estimates are 7000 of 38000 kbit/s (18.4 %)";
/// empty where the head-end has no measured service.
std::string rates_in_figures(const RateCounts& rates);

/// "2 limits and 1 service broken"; empty where nothing is.
std::string to_string(const Broken& broken);

/// For the end of a summary: the same after a semicolon.
std::string broken_in_figures(const Broken& broken);

/// What a report says that was interrupted.
inline constexpr const char* interrupted_note = "Interrupted: this is what was found until then.";

/// As a paragraph.
std::string interrupted_text(const TextStyle& style);

/// A finding below what it is about.
std::string problem_text(const Finding& finding, const TextStyle& style);

/// What is broken, in red: a heading, a line for each, and an empty line; empty where nothing is. `where`
/// ends the heading.
std::string broken_text(const std::vector<Finding>& findings, const TextStyle& style,
                        const std::string& where = "");

/// What is only counted: a heading, and a line for each; empty if nothing is.
std::string notes_text(const std::vector<Finding>& findings, const TextStyle& style,
                       const std::string& where = "");

/// The same for the end of a report, after an empty line.
std::string closing_notes_text(const std::vector<Finding>& findings, const TextStyle& style,
                               const std::string& where = "");

} // namespace zarven::tool

#endif
