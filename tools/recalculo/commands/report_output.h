// The options --json and --html of a command, which say in what form it reports and where.

#ifndef RECALCULO_REPORT_OUTPUT_H
#define RECALCULO_REPORT_OUTPUT_H

#include <functional>
#include <string>
#include <vector>

namespace zarven::tool {

struct ReportOutput {
    bool json = false;
    /// Empty for no page.
    std::string html;
};

/// A file that a command writes, by the option that names it.
struct NamedOutput {
    std::string option;
    /// Empty for none.
    std::string path;
};

/// Throws `Failure` if two of these, or one of them and standard output, are one file by whatever name: one
/// would go over the other.
void check_apart(const std::vector<NamedOutput>& outputs);

/// Throws `Failure` if two reports, or a report and what else is written, would share a file.
void check(const ReportOutput& output, const std::vector<NamedOutput>& others = {});

/// Writes the page and the report, each if it is wanted. The page goes first: when it cannot be written,
/// nothing is reported.
void write_reports(const ReportOutput& output, const std::function<std::string()>& page,
                   const std::function<std::string()>& report);

} // namespace zarven::tool

#endif
