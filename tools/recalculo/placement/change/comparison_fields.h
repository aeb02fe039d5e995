// The fields of a comparison. docs/comparison.schema.json and the tables in docs/tool.md have what stands
// here.

#ifndef RECALCULO_COMPARISON_FIELDS_H
#define RECALCULO_COMPARISON_FIELDS_H

#include <optional>
#include <vector>

#include "placement/change/comparison.h"
#include "placement/result_fields.h"

namespace zarven::tool {

template <> struct Fields<Place> {
    static constexpr const char* name = "place";
    static constexpr const char* meaning = "Where a service comes in and goes out on one module";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& place) {
        visit_mac(visit, place);
        visit.required("input", place.input, "Number of the input; 0 if none has it");
        visit.required("outputs", filled(place.outputs), "Numbers of the outputs");
    }
};

/// None for a side that does not have the service.
inline std::optional<std::vector<Place>> places_if_there(const std::vector<Place>& places, Absence absence) {
    if (places.empty() && absence == Absence::not_there)
        return std::nullopt;
    return places;
}

template <> struct Fields<ServiceChange> {
    static constexpr const char* name = "service_change";
    static constexpr const char* meaning = "A service, as it is after if it is there";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& change) {
        visit_identity_of(visit, change.service);
        visit.required("before", places_if_there(change.before, change.absence_before),
                       "Where it was; empty for a service on no output, null if the side does not have it");
        visit.required("after", places_if_there(change.after, change.absence_after),
                       "Where it is, in the same way");
    }
};

inline std::optional<Stream> stream_if(bool is_tuned, Stream stream) {
    return is_tuned ? std::optional(stream) : std::nullopt;
}

template <> struct Fields<InputChange> {
    static constexpr const char* name = "input";
    static constexpr const char* meaning = "An input that is not tuned as before";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& change) {
        visit_mac(visit, change);
        visit_input_number(visit, change);
        visit.required("before", stream_if(change.was_tuned, change.before),
                       "What it received; null for a free input");
        visit.required("after", stream_if(change.is_tuned, change.after),
                       "What it receives; null for a free input");
    }
};

inline constexpr Word<TightKind> tight_kind_words[] = {
    {TightKind::inputs, "inputs"}, {TightKind::pids, "pids"}, {TightKind::bitrate, "bitrate"}};

template <> struct Words<TightKind> : WordTable<TightKind, tight_kind_words> {};

template <> struct Fields<TightLimit> {
    static constexpr const char* name = "limit";
    static constexpr const char* meaning = "A limit, with the figures after";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& limit) {
        visit.required("limit", limit.kind, "Inputs and PIDs of a module, bitrate of an output in kbit/s");
        visit_mac(visit, limit);
        visit.where(if_one_of("limit", limit.kind, TightKind::bitrate), "output", limit.output,
                    "Of a bitrate: number of the output");
        visit.required("used", count(limit.used), "In use");
        visit.required("max", count(limit.max), "All");
    }
};

struct ServiceName {
    ServiceResult service;
};

template <> struct Fields<ServiceName> {
    static constexpr const char* name = "service_name";
    static constexpr const char* meaning = "How a service is called and found";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& named) {
        visit_identity_of(visit, named.service);
        visit_output_name(visit, named.service);
    }
};

template <> struct Fields<ServiceRename> {
    static constexpr const char* name = "rename";
    static constexpr const char* meaning = "A service in the same place under other names or numbers";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& rename) {
        visit.required("before", ServiceName{rename.before}, "What it was called");
        visit.required("after", ServiceName{rename.after}, "What it is called");
    }
};

template <> struct Fields<ChangeStep> {
    static constexpr const char* name = "step";
    static constexpr const char* meaning =
        "One input that is tuned anew, tuned for the first time, or given up";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& step) {
        visit.required("input", step.input, "What is done");
        visit.required("goes_off", told_as<ServiceIdentity>(step.goes_off),
                       "Services that go off the air until a later step");
        visit.required("comes_back", told_as<ServiceIdentity>(step.comes_back),
                       "Services that come on the air again");
        visit.required("off_air", count(step.off_air), "Services off the air after the step");
    }
};

template <> struct Fields<ChangeOrder> {
    static constexpr const char* name = "order";
    static constexpr const char* meaning = "How the first placement becomes the second, input by input";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& order) {
        visit.required("steps", order.steps, "One for each input that changes");
        visit.required("most_off_air", count(order.most_off_air),
                       "Services placed on both sides that are off the air at a time, at most");
        visit.required("is_least", order.is_least, "Whether it is proven that no other order has fewer");
    }
};

template <> struct Fields<Side> {
    static constexpr const char* name = "side";
    static constexpr const char* meaning = "One placement";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& side) {
        visit.required("name", side.name, "Name of the head-end; may be empty");
        visit_counts(visit, side.counts);
        visit_findings(visit, side.findings);
        visit_cautions(visit, side.cautions);
    }
};

inline constexpr const char* meaning_of_gained = "In both line-ups, placed after and not before";
inline constexpr const char* meaning_of_lost = "In both line-ups, placed before and not after";
inline constexpr const char* meaning_of_moved = "Placed in both, in other places";

inline constexpr const char* meaning_of_added = "Placed after; the line-up before does not have them";
inline constexpr const char* meaning_of_removed = "Placed before; the line-up after does not have them";

/// The label of a module.
struct ModuleLabel {
    std::string mac;
    std::string label;
};

template <> struct Fields<ModuleLabel> {
    static constexpr const char* name = "module_label";
    static constexpr const char* meaning = "What a module is called";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& label) {
        visit_mac(visit, label);
        visit.required("label", label.label, meaning_of_label);
    }
};

inline constexpr const char* meaning_of_labels = "What the modules are called that have a label";

inline std::vector<ModuleLabel> told_labels(const Labels& labels) {
    std::vector<ModuleLabel> told;
    for (const auto& [mac, label] : labels)
        told.push_back({mac, label});
    return told;
}

/// The numbers of services in a comparison.
struct ComparisonCounts {
    std::size_t gained = 0;
    std::size_t lost = 0;
    std::size_t moved = 0;
    std::size_t unmoved = 0;
    std::size_t renamed = 0;
    std::size_t never_placed = 0;
    std::size_t added = 0;
    std::size_t removed = 0;
};

template <> struct Fields<ComparisonCounts> {
    static constexpr const char* name = "summary";
    static constexpr const char* meaning = "Numbers of services";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& counts) {
        visit.required("gained", count(counts.gained), meaning_of_gained);
        visit.required("lost", count(counts.lost), meaning_of_lost);
        visit.required("moved", count(counts.moved), meaning_of_moved);
        visit.required("unmoved", count(counts.unmoved), "Placed in both, in the same places");
        visit.required("renamed", count(counts.renamed),
                       "Of these with another name, output name, LCN or SID");
        visit.required("never_placed", count(counts.never_placed), "Placed in neither");
        visit.required("added", count(counts.added), meaning_of_added);
        visit.required("removed", count(counts.removed), meaning_of_removed);
    }
};

template <> struct Fields<Comparison> {
    static constexpr const char* name = "comparison";
    static constexpr const char* meaning = "Two placements side by side";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& comparison) {
        visit.required("summary",
                       ComparisonCounts{comparison.gained.size(), comparison.lost.size(),
                                        comparison.moved.size(), comparison.unmoved,
                                        comparison.renamed.size(), comparison.never_placed,
                                        comparison.added.size(), comparison.removed.size()},
                       "The numbers of services");
        visit.required("before", comparison.before, "The first placement");
        visit.required("after", comparison.after, "The second placement");
        visit.required("gained", comparison.gained, meaning_of_gained);
        visit.required("lost", comparison.lost, meaning_of_lost);
        visit.required("moved", comparison.moved, meaning_of_moved);
        visit.required("renamed", comparison.renamed,
                       "Placed in both, in the same places, under another name");
        visit.required("modules_gone", comparison.modules_gone, "MACs");
        visit.required("modules_new", comparison.modules_new, "MACs");
        visit.required("inputs_freed", comparison.inputs_freed, "Tuned before and not after");
        visit.required("inputs_taken", comparison.inputs_taken, "Tuned after and not before");
        visit.required("inputs_retuned", comparison.inputs_retuned, "Tuned to another stream");
        visit.required("became_tight", comparison.became_tight, "With little left after and not before");
        visit.required("relaxed", comparison.relaxed, "With little left before and not after");
        visit.required("order", comparison.order, "In which order the inputs change with least off the air");
        visit.required("added", comparison.added, meaning_of_added);
        visit.required("removed", comparison.removed, meaning_of_removed);
        visit.required("labels", told_labels(comparison.labels), meaning_of_labels);
    }
};

} // namespace zarven::tool

#endif
