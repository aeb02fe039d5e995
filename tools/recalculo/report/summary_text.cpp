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

std::string musts_in_figures(std::size_t placed, std::size_t musts) {
    return musts == 0 ? "" : fmt::format("; {} of {} placed", placed, counted(musts, "must"));
}

std::string rates_in_figures(const RateCounts& rates) {
    if (rates.measured_loaded == 0)
        return "";
    const std::size_t placed = rates.measured + rates.estimated;
    const double share = rates.bitrate == 0 ? 0.0
                                            : 100.0 * static_cast<double>(rates.estimated_bitrate) /
                                                  static_cast<double>(rates.bitrate);
    return fmt::format("Bitrates of {} placed: {} measured, {} estimated; estimates are {} of {} kbit/s "
                       "({:.1f} %)",
                       counted(placed, "service"), rates.measured, rates.estimated, rates.estimated_bitrate,
                       rates.bitrate, share);
}

std::string to_string(const Broken& broken) {
    std::vector<std::string> kinds;
    if (broken.limits != 0)
        kinds.push_back(counted(broken.limits, "limit"));
    if (broken.services != 0)
        kinds.push_back(counted(broken.services, "service"));
    return kinds.empty() ? "" : fmt::format("{} broken", fmt::join(kinds, " and "));
}

std::string broken_in_figures(const Broken& broken) {
    return broken.all() == 0 ? "" : "; " + to_string(broken);
}

std::string interrupted_text(const TextStyle& style) {
    return paragraph_text(interrupted_note, 0, Paint::bold, style);
}

std::string problem_text(const Finding& finding, const TextStyle& style) {
    const char* kind = finding.is_broken ? "Broken: " : "Note: ";
    return paragraph_text(kind + shown(finding.problem, style), body_indent,
                          finding.is_broken ? Paint::red : Paint::none, style);
}

static std::string findings_text(const char* title, const std::string& where,
                                 const std::vector<Finding>& findings, Paint paint, const TextStyle& style) {
    if (findings.empty())
        return "";
    std::string text = paragraph_text(
        fmt::format("{}{}: {}", title, where, counted(findings.size(), "finding")), 0, paint, style);
    for (const Finding& finding : findings)
        text += paragraph_text(shown(text_of(finding), style), body_indent, paint, style);
    return text;
}

std::string broken_text(const std::vector<Finding>& findings, const TextStyle& style,
                        const std::string& where) {
    const std::string text = findings_text("Broken", where, only(true, findings), Paint::red, style);
    return text.empty() ? "" : text + "\n";
}

std::string notes_text(const std::vector<Finding>& findings, const TextStyle& style,
                       const std::string& where) {
    return findings_text("Notes", where, only(false, findings), Paint::none, style);
}

std::string closing_notes_text(const std::vector<Finding>& findings, const TextStyle& style,
                               const std::string& where) {
    const std::string text = notes_text(findings, style, where);
    return text.empty() ? "" : "\n" + text;
}

} // namespace zarven::tool
