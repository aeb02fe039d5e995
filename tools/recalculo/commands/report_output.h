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

/// Throws `Failure` if two reports, or a report and what else is written, would share a file, or if the page
/// cannot be written.
void check(const ReportOutput& output, const std::vector<NamedOutput>& others = {});

/// Throws the `Failure` of a page that could not be written, now that the files that are read are known.
void expect_writable(const ReportOutput& output);

/// Makes one after the other, whatever the others throw: what took long to find is not lost for a disk that
/// is full. Then throws the last `Failure`; those before it are told on standard error.
void write_each(const std::vector<std::function<void()>>& writings);

/// Writes the page and the report, each if it is wanted, as `write_each` does.
void write_reports(const ReportOutput& output, const std::function<std::string()>& page,
                   const std::function<std::string()>& report);

} // namespace zarven::tool

#endif
