// The options --json and --html of a command, which say in what form it reports and where.

#ifndef RECALCULO_REPORT_OUTPUT_H
#define RECALCULO_REPORT_OUTPUT_H

#include <functional>
#include <string>

#include <CLI/CLI.hpp>

namespace zarven::tool {

/// Refuses an empty name, which a shell makes of an unset variable: it must not pass for a file not wanted.
CLI::Validator named_file();

struct ReportOutput {
    bool json = false;
    /// Empty for no page.
    std::string html;
};

/// `what` is the thing that the command reports.
void add_report_output(CLI::App& command, ReportOutput& output, const std::string& what);

/// Throws `Failure` if two reports would share standard output.
void check(const ReportOutput& output);

/// Writes the page and the report, each if it is wanted. The page goes first: when it cannot be written,
/// nothing is reported.
void write_reports(const ReportOutput& output, const std::function<std::string()>& page,
                   const std::function<std::string()>& report);

} // namespace zarven::tool

#endif
