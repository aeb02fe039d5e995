#include "report/summary_text.h"

#include <fmt/format.h>

#include "base/counted.h"

namespace zarven::tool {

std::string services_in_figures(const Counts& counts) {
    return fmt::format("{} loaded: {} placed, {} left out{}", counted(counts.loaded, "service"),
                       counts.placed, counts.left_out,
                       counts.neither == 0 ? "" : fmt::format(", {} neither", counts.neither));
}

std::string audit_in_figures(std::size_t findings) {
    return findings == 0 ? "" : "; audit: " + counted(findings, "finding");
}

std::string audit_text(const std::vector<std::string>& warnings, const TextStyle& style,
                       const std::string& title) {
    if (warnings.empty())
        return "";
    std::string text =
        paragraph_text(title + ": " + counted(warnings.size(), "finding"), 0, Paint::none, style);
    for (const std::string& warning : warnings)
        text += paragraph_text("Warning: " + shown(warning, style), 0, Paint::yellow, style);
    return text;
}

} // namespace zarven::tool
