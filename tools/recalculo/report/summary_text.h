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

/// For the end of a summary: "; audit: 2 findings", or nothing without findings.
std::string audit_in_figures(std::size_t findings);

/// One finding, after `indent` blanks.
std::string warning_text(const std::string& warning, int indent, const TextStyle& style);

inline constexpr const char* audit_title = "Audit";

/// "Audit: 2 findings".
std::string audit_heading(std::size_t findings, const std::string& title = audit_title);

/// The heading, and a line for each finding; empty without findings.
std::string audit_text(const std::vector<std::string>& warnings, const TextStyle& style,
                       const std::string& title = audit_title);

/// The same for the end of a report, after an empty line.
std::string closing_audit_text(const std::vector<std::string>& warnings, const TextStyle& style,
                               const std::string& title = audit_title);

} // namespace zarven::tool

#endif
