// Groups without entries are left out; names share one column in all of them.

#include "report/comparison_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <fmt/format.h>

#include "base/utf8.h"
#include "report/service_list.h"

namespace zarven::tool {

namespace {

std::string place_text(const Place& place) {
    const std::string input = place.input == 0 ? "no input" : fmt::format("in {}", place.input);
    return fmt::format("{} {} out {}", printable(place.mac), input, fmt::join(place.outputs, "+"));
}

std::string places_text(const std::vector<Place>& places, bool is_there) {
    if (!is_there)
        return "not there";
    if (places.empty())
        return "left out";
    std::vector<std::string> texts;
    for (const Place& place : places)
        texts.push_back(place_text(place));
    return fmt::format("{}", fmt::join(texts, ", "));
}

std::string stream_text(bool is_tuned, Stream stream) {
    return is_tuned ? to_string(stream) : "free";
}

std::string limit_text(const TightLimit& limit) {
    const std::string used = fmt::format("{} of {}", limit.used, limit.max);
    switch (limit.kind) {
    case TightKind::inputs:
        return fmt::format("inputs: {} in use", used);
    case TightKind::pids:
        return fmt::format("PIDs: {}", used);
    case TightKind::bitrate:
        break;
    }
    return fmt::format("output {}: {} kbit/s", limit.output, used);
}

class ComparisonText {
public:
    ComparisonText(const Comparison& comparison, const ComparedFiles& files)
        : comparison_(comparison), files_(files) {
        for (const auto* changes : {&comparison.gained, &comparison.lost, &comparison.moved})
            for (const ServiceChange& change : *changes)
                name_width_ = std::max(name_width_, name_width({change.service}));
    }

    std::string text() && {
        write_summary();
        write("Gained", comparison_.gained);
        write("Lost", comparison_.lost);
        write("Moved", comparison_.moved);
        write("Modules gone", comparison_.modules_gone);
        write("Modules new", comparison_.modules_new);
        write("Inputs freed", comparison_.inputs_freed);
        write("Inputs taken", comparison_.inputs_taken);
        write("Inputs tuned to another stream", comparison_.inputs_retuned);
        write("Became tight", comparison_.became_tight);
        write("No longer tight", comparison_.relaxed);
        return std::move(text_);
    }

private:
    void write_summary();

    template <class Entry> void write(const char* title, const std::vector<Entry>& entries) {
        if (entries.empty())
            return;
        text_ += fmt::format("\n{}: {}\n", title, entries.size());
        for (const Entry& entry : entries)
            text_ += "  " + line(entry) + "\n";
    }

    std::string line(const ServiceChange& change) const {
        return fmt::format("{}  {} → {}", identity_columns(change.service, name_width_),
                           places_text(change.before, change.is_in_before),
                           places_text(change.after, change.is_in_after));
    }

    static std::string line(const std::string& mac) { return printable(mac); }

    static std::string line(const InputChange& change) {
        return fmt::format("{} in {}  {} → {}", printable(change.mac), change.number,
                           stream_text(change.was_tuned, change.before),
                           stream_text(change.is_tuned, change.after));
    }

    static std::string line(const TightLimit& limit) {
        return fmt::format("{}  {}", printable(limit.mac), limit_text(limit));
    }

    const Comparison& comparison_;
    const ComparedFiles& files_;
    int name_width_ = 0;
    std::string text_;
};

void ComparisonText::write_summary() {
    const auto side = [this](const char* which, const std::string& file, const std::string& name,
                             const Counts& counts) {
        text_ += fmt::format("{} {}{}: {} of {} placed\n", which, printable(file),
                             name.empty() ? "" : fmt::format(" ({})", printable(name)), counts.placed,
                             services_counted(counts.loaded));
    };
    text_ += fmt::format("{} gained, {} lost, {} moved, {} in the same place, {} left out by both\n\n",
                         comparison_.gained.size(), comparison_.lost.size(), comparison_.moved.size(),
                         comparison_.unmoved, comparison_.never_placed);
    side("Before", files_.before, comparison_.name_before, comparison_.before);
    side("After ", files_.after, comparison_.name_after, comparison_.after);
}

} // namespace

std::string comparison_text(const Comparison& comparison, const ComparedFiles& files) {
    return ComparisonText(comparison, files).text();
}

} // namespace zarven::tool
