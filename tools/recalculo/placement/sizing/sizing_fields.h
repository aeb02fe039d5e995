// The fields of a sizing. docs/sizing.schema.json and the tables in docs/tool.md have what stands here.

#ifndef RECALCULO_SIZING_FIELDS_H
#define RECALCULO_SIZING_FIELDS_H

#include <utility>

#include "headend/headend_fields.h"
#include "placement/result_fields.h"
#include "placement/sizing/sizing.h"

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
        visit.required("missing", count(attempt.missing), "Services that are wanted and not placed");
        visit_number_of_findings(visit, attempt);
        visit.required("withheld", count(attempt.withheld), "Services that the search did not ask for");
        visit.if_true("stopped", attempt.is_stopped,
                      "The engine did not end within its limits, so that this is no answer; not there "
                      "otherwise");
    }
};

template <> struct Fields<Addition> {
    static constexpr const char* name = "addition";
    static constexpr const char* meaning = "Further modules of one kind";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& addition) {
        visit.required("module", ModuleKind{addition.kind}, "The kind");
        visit.required(
            "number", count(addition.number),
            "The smallest number with which everything is placed that is wanted and can be, and no limit "
            "is broken; null if none suffices");
        visit.required("musts", count(addition.musts),
                       "Services marked as `must`; where there are any, they alone are wanted");
        visit.required("at_least", count(addition.at_least),
                       "With fewer no arrangement could; if no number would help one above `most`");
        visit.required("tried", addition.attempts, "The runs, by number");
        visit.required(
            "one_more", addition.one_more,
            "The run with one module more than `number`; null if none was needed or none suffices");
        visit.required("withheld", told_as<ServiceIdentity>(addition.withheld),
                       "With `--choose`: what the run with `number` does not ask for");
        visit.required("impossible", told_as<ServiceWithReason>(addition.impossible),
                       "Placed by no number of modules");
        visit.required(
            "remaining", told_as<ServiceIdentity>(addition.remaining),
            "If no number suffices: wanted and left out by the best attempt, or by the head-end as it is if "
            "nothing was tried");
    }
};

template <> struct Fields<MixPart> {
    static constexpr const char* name = "mix_part";
    static constexpr const char* meaning = "So many modules of one kind";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& part) {
        visit.required("module", ModuleKind{part.module}, "The kind");
        visit.required("price", part.module.price, "What one costs");
        visit.required("number", count(part.number), "How many of it; null if no mix found suffices");
    }
};

template <> struct Fields<Mix> {
    static constexpr const char* name = "mix";
    static constexpr const char* meaning = "Further modules of several kinds";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& mix) {
        visit.required("kinds", mix.kinds, "The kinds, as they were given, and as the engine fills them");
        visit.required("price", count(mix.price), "What the mix costs; 0 if none suffices");
        visit.required("outcome", mix.outcome, "Its run; null if none suffices");
        visit.required("withheld", told_as<ServiceIdentity>(mix.withheld),
                       "With `--choose`: what that run does not ask for");
        visit.required("at_least", count(mix.at_least),
                       "No cheaper mix could; null if none could, or none was looked for");
        visit.required("tried", count(mix.tried), "Mixes that were run, from the cheapest on");
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
        visit.required("partial", sizing.is_partial, "It was interrupted: what was found until then");
        visit.required("choose", sizing.are_chosen,
                       "With `--choose`: the runs with further modules ask for what a search has chosen");
        visit.required("most", count(sizing.most), "The most modules to add");
        visit.required("add", sizing.addition,
                       "What further modules of one kind bring; where there are several, of the first");
        visit.required("mix", sizing.mix, "The cheapest mix found where there are several kinds, or null");
        visit.required(
            "raise", sizing.raises,
            "One limit of one module raised, with no further module and none broken; the best first");
    }
};

} // namespace zarven::tool

#endif
