// The fields of a raised limit, in several documents.

#ifndef RECALCULO_RAISE_FIELDS_H
#define RECALCULO_RAISE_FIELDS_H

#include "placement/advice.h"
#include "placement/audit/finding_fields.h"
#include "placement/module_fields.h"
#include "placement/raise.h"
#include "records/fields.h"

namespace zarven::tool {

inline constexpr Word<LimitKind> limit_kind_words[] = {{LimitKind::pids, "pids_max"},
                                                       {LimitKind::bitrate, "output_bitrate"},
                                                       {LimitKind::inputs, "inputs"},
                                                       {LimitKind::sd_transcoders, "sd_transcoders"},
                                                       {LimitKind::hd_transcoders, "hd_transcoders"},
                                                       {LimitKind::one_more_output, "one_more_output"}};

template <> struct Words<LimitKind> : WordTable<LimitKind, limit_kind_words> {};

template <> struct Fields<Raise> {
    static constexpr const char* name = "raise";
    static constexpr const char* meaning = "A limit raised";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& raise) {
        visit.required("limit", raise.kind, "Kind of limit");
        visit_mac(visit, raise);
        visit.unless_empty("label", raise.label, meaning_of_label);
        visit.where(if_one_of("limit", raise.kind, LimitKind::bitrate, LimitKind::one_more_output), "output",
                    count(raise.output), "Number of the output, from 1, where it is about one");
        visit.required("from", raise.from, "What it is; 0 for one more output");
        visit.required(
            "to", raise.to,
            "What it is raised to: what modules are sold with, if that will do; the bitrate of one "
            "more output");
        visit.required("enough", raise.enough, "The smallest value found that places as many");
        visit.required("placed", count(raise.placed), "Services then placed");
        visit_number_of_findings(visit, raise);
        visit.required("set", raise.setting, "The change as `--set` takes it");
    }
};

template <> struct Fields<Advice> {
    static constexpr const char* name = "advice";
    static constexpr const char* meaning = "One limit of one module raised, found by running the engine";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& advice) {
        visit.required("limits", count(advice.limits), "Limits of all modules that could be raised");
        visit.required("limits_tried", count(advice.limits_tried), "Those of them that were");
        visit.required(
            "raise", advice.raises,
            "For each kind of limit that helps, the module on which it helps most; the best first");
    }
};

} // namespace zarven::tool

#endif
