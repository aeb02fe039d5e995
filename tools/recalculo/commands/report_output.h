// The options --json and --html of a command, which say in what form it reports and where.

#ifndef RECALCULO_REPORT_OUTPUT_H
#define RECALCULO_REPORT_OUTPUT_H

#include <functional>
#include <string>

namespace zarven::tool {

struct ReportOutput {
    bool json = false;
    /// Empty for no page.
    std::string html;
};

/// Throws `Failure` if two reports would share standard output.
void check(const ReportOutput& output);

/// Writes the page and the report, each if it is wanted. The page goes first: when it cannot be written,
/// nothing is reported.
void write_reports(const ReportOutput& output, const std::function<std::string()>& page,
                   const std::function<std::string()>& report);

} // namespace zarven::tool

#endif
