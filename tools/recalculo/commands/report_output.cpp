#include "commands/report_output.h"

#include <optional>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/interruption.h"
#include "base/streams.h"
#include "report/terminal.h"

namespace zarven::tool {

void check_apart(const std::vector<NamedOutput>& outputs) {
    for (auto one = outputs.begin(); one != outputs.end(); ++one)
        for (auto other = outputs.begin(); other != one; ++other)
            if (!one->path.empty() && !other->path.empty() && is_same_output(one->path, other->path))
                throw Failure(fmt::format("{} and {} both write to {}; expected two files", other->option,
                                          one->option, one->path));
}

void check(const ReportOutput& output, const std::vector<NamedOutput>& others) {
    if (output.json && output.html == standard_stream)
        throw Failure("--json and --html - both write to standard output; expected a file for --html");
    // With the page on standard output there is no other report.
    std::vector<NamedOutput> outputs{{"the report", standard_stream}};
    if (output.html != standard_stream)
        outputs.push_back({"--html", output.html});
    outputs.insert(outputs.end(), others.begin(), others.end());
    check_apart(outputs);
    expect_writable(output);
}

void expect_writable(const ReportOutput& output) {
    if (!output.html.empty())
        expect_writable(output.html);
}

void write_each(const std::vector<std::function<void()>>& writings) {
    std::optional<Failure> failure;
    const auto tell = [&failure] { write_message(fmt::format("recalculo: {}", failure->what())); };
    for (const auto& write : writings)
        try {
            write();
        } catch (const Failure& another) {
            if (failure)
                tell();
            failure.emplace(another);
        }
    if (!failure)
        return;
    if (!interruption::is_pending())
        throw Failure(*failure);
    // The program ends before anybody would catch it.
    tell();
}

void write_reports(const ReportOutput& output, const std::function<std::string()>& page,
                   const std::function<std::string()>& report) {
    write_each({[&] {
                    if (!output.html.empty())
                        write_text(output.html, page());
                },
                [&] {
                    if (output.html != standard_stream)
                        write_text(standard_stream, report());
                }});
}

} // namespace zarven::tool
