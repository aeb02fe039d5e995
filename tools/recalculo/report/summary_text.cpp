#include "report/summary_text.h"

#include <fmt/format.h>

#include "base/counted.h"

namespace zarven::tool {

std::string services_loaded(std::size_t loaded, std::size_t not_asked_for) {
    return counted(loaded, "service") + " loaded" +
           (not_asked_for == 0 ? "" : fmt::format(", {} not asked for", not_asked_for));
}

std::string services_in_figures(const Counts& counts) {
    return fmt::format("{}: {} placed, {} left out{}", services_loaded(counts.loaded, counts.not_asked_for),
                       counts.placed, counts.left_out,
                       counts.neither == 0 ? "" : fmt::format(", {} neither", counts.neither));
}

std::string audit_in_figures(std::size_t findings) {
    return findings == 0 ? "" : "; audit: " + counted(findings, "finding");
}

std::string warning_text(const std::string& warning, int indent, const TextStyle& style) {
    return paragraph_text("Warning: " + shown(warning, style), indent, Paint::yellow, style);
}

std::string audit_heading(std::size_t findings, const std::string& title) {
    return title + ": " + counted(findings, "finding");
}

std::string audit_text(const std::vector<std::string>& warnings, const TextStyle& style,
                       const std::string& title) {
    if (warnings.empty())
        return "";
    std::string text = paragraph_text(audit_heading(warnings.size(), title), 0, Paint::none, style);
    for (const std::string& warning : warnings)
        text += warning_text(warning, 0, style);
    return text;
}

std::string closing_audit_text(const std::vector<std::string>& warnings, const TextStyle& style,
                               const std::string& title) {
    return warnings.empty() ? "" : "\n" + audit_text(warnings, style, title);
}

} // namespace zarven::tool
