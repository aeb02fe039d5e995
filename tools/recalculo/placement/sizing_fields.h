// The fields of a sizing. docs/sizing.schema.json and the tables in docs/tool.md have what stands here.

#ifndef RECALCULO_SIZING_FIELDS_H
#define RECALCULO_SIZING_FIELDS_H

#include <utility>

#include "headend/headend_fields.h"
#include "placement/result_fields.h"
#include "placement/sizing.h"

namespace zarven::tool {

/// Lets a visitor take what people may leave away for what is always there.
template <class Visitor> class AlwaysTold {
public:
    explicit AlwaysTold(Visitor& visit) : visit_(visit) {}

    template <class Value> void required(const char* key, const Value& value, const char* meaning) {
        visit_.required(key, value, meaning);
    }
    template <class Value>
    void optional(const char* key, const Value& value, const Bare<Value>&, const char* meaning) {
        visit_.required(key, value, meaning);
    }

private:
    Visitor& visit_;
};

/// A module without what makes it one of a head-end.
struct ModuleKind {
    Module module;
};

template <> struct Fields<ModuleKind> {
    static constexpr const char* name = "module";
    static constexpr const char* meaning = "A kind of module";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& kind) {
        AlwaysTold told(visit);
        visit_model(told, kind.module);
        visit_limits(told, kind.module);
    }
};

template <> struct Fields<Attempt> {
    static constexpr const char* name = "attempt";
    static constexpr const char* meaning = "A run with a number of further modules";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& attempt) {
        visit.required("number", count(attempt.number), "Further modules");
        visit_placed_and_left_out(visit, attempt);
        visit_number_of_findings(visit, attempt);
    }
};

template <> struct Fields<Addition> {
    static constexpr const char* name = "addition";
    static constexpr const char* meaning = "Further modules of one kind";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& addition) {
        visit.required("module", ModuleKind{addition.kind}, "The kind");
        visit.required(
            "number", count(addition.number),
            "The smallest number with which everything is placed that can be; null if none suffices");
        visit.required("at_least", count(addition.at_least),
                       "With fewer no arrangement could; one above `most` if that is too few");
        visit.required("tried", addition.attempts, "The runs, by number");
        visit.required("impossible", told_as<ServiceWithReason>(addition.impossible),
                       "Placed by no number of modules");
        visit.required(
            "remaining", told_as<ServiceIdentity>(addition.remaining),
            "If no number suffices: left out by the best attempt, or by the head-end as it is if no "
            "number would help");
    }
};

template <> struct Fields<Sizing> {
    static constexpr const char* name = "sizing";
    static constexpr const char* meaning =
        "What to change so that everything is placed; the members up to `findings` are about the head-end "
        "as it is";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& sizing) {
        visit_name(visit, sizing.name);
        visit_counts(visit, sizing.now);
        visit_findings(visit, sizing.findings);
        visit.required("most", count(sizing.most), "The most modules to add");
        visit.required("add", sizing.addition, "What further modules of one kind bring");
        visit.required("raise", sizing.raises,
                       "One limit of one module raised, with no further module; the best first");
    }
};

} // namespace zarven::tool

#endif
