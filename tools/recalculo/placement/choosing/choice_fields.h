// The fields of a choice. docs/choice.schema.json and the tables in docs/tool.md have what stands here.

#ifndef RECALCULO_CHOICE_FIELDS_H
#define RECALCULO_CHOICE_FIELDS_H

#include <string>
#include <vector>

#include "placement/change/comparison_fields.h"
#include "placement/choosing/choice.h"
#include "placement/result_fields.h"

namespace zarven::tool {

template <> struct Fields<ChoiceSide> {
    static constexpr const char* name = "side";
    static constexpr const char* meaning = "A run of the engine";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& side) {
        visit_counts(visit, side.counts);
        visit.required("musts", count(side.musts), "Services that must be placed, and are");
        visit.required("value", count(side.value), "Sum of the values of the services that are placed");
        visit_findings(visit, side.findings);
        visit_cautions(visit, side.cautions);
        visit.required("sound", is_sound(side), "Nothing is broken; else it is no placement that counts");
        visit.if_true("stopped", side.is_stopped,
                      "The engine did not end within its limits, so that nothing is placed; not there "
                      "otherwise");
    }
};

template <> struct Fields<Reach> {
    static constexpr const char* name = "reach";
    static constexpr const char* meaning = "How much there is, and how much can be reached";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& reach) {
        visit.required("wanted", count(reach.wanted), "All that the head-end asks for");
        visit.required("bound", count(reach.most), "No arrangement reaches more, whatever is asked for");
    }
};

template <class Visitor, class Record> void visit_worth(Visitor& visit, Record& service) {
    visit_identity_of(visit, service.service);
    visit.required("value", service.value, "What it is worth");
    visit.required("must", service.must, "It must be placed");
}

template <> struct Fields<ValuedService> {
    static constexpr const char* name = "valued_service";
    static constexpr const char* meaning = "A service and what it is worth";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& service) {
        visit_worth(visit, service);
    }
};

/// A change of the list of those gained.
struct Gain {
    ValuedChange change;
};

template <> struct Fields<Gain> {
    static constexpr const char* name = "gain";
    static constexpr const char* meaning = "A service that is placed with the choice only";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& gain) {
        visit_worth(visit, gain.change.service);
        visit.required("places", gain.change.places, "Where it is");
    }
};

struct Loss {
    ValuedChange change;
};

template <> struct Fields<Loss> {
    static constexpr const char* name = "loss";
    static constexpr const char* meaning = "A service that is placed with everything asked for only";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& loss) {
        visit_worth(visit, loss.change.service);
        visit.required("places", loss.change.places, "Where it was");
        visit.required("withheld", loss.change.is_withheld, "It is not asked for; else it is left out");
    }
};

template <class Told> std::vector<Told> told_as(const std::vector<ValuedChange>& changes) {
    std::vector<Told> told;
    for (const ValuedChange& change : changes)
        told.push_back({change});
    return told;
}

template <> struct Fields<MissedMust> {
    static constexpr const char* name = "missed_must";
    static constexpr const char* meaning = "A service that must be placed and is not";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& missed) {
        visit_identity_of(visit, missed.service);
        visit.required("withheld", missed.is_withheld, "It is not asked for; else it is left out");
        visit.required("impossible", missed.is_impossible, "No module could take it, even if it were empty");
        visit.required("reason", missed.service.reason, "Why, in one sentence");
    }
};

template <> struct Fields<MovesAgainstKept> {
    static constexpr const char* name = "moves";
    static constexpr const char* meaning = "The choice against the placement that is to be kept";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& moves) {
        visit.required("moved", moves.moved, meaning_of_moved);
        visit.required("unmoved", count(moves.unmoved), "Placed in both, in the same places");
        visit.required("gone", count(moves.gone), "Placed there, and not by the choice");
    }
};

template <> struct Fields<ChoiceReport> {
    static constexpr const char* name = "choice";
    static constexpr const char* meaning = "Which services to ask for, and what that brings";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& report) {
        visit_name(visit, report.name);
        visit.required("all", report.all, "With everything asked for");
        visit.required("chosen", report.chosen, "As chosen");
        visit.required("musts", report.musts, "Services that must be placed");
        visit.required("value", report.value, "Sum of the values");
        visit.required("musts_proven", report.chosen.musts >= report.musts.most,
                       "No arrangement places more of those that must be placed");
        visit.if_true(
            "less_than_all", is_less_than_all(report),
            "With everything asked for more is reached, or nothing broken: that asks for services of "
            "value 0, too, which no choice does; not there otherwise");
        visit.required("missed", report.missed, "Those that must be placed and are not");
        visit.required("withheld", report.withheld, "Services not to ask for");
        visit.unless_empty("one_of", report.variants, meaning_of_variants);
        visit.required("gained", told_as<Gain>(report.gained), "Placed with the choice only");
        visit.required("lost", told_as<Loss>(report.lost), "Placed with everything asked for only");
        visit.where(Condition{report.moves.has_value()}, "moves", report.moves.value_or(MovesAgainstKept()),
                    "With `--keep`: the choice against that placement");
        visit.if_true("not_given_back", is_to_be_given_back(report),
                      "The search ended before each service withheld was tried to be given back: some may be "
                      "asked for without loss; not there otherwise");
        visit.required("states", count(report.states), "States that the search has tried");
        visit.required("engine_runs", count(report.engine_runs), "Runs of the engine that it has made");
        visit.if_true("interrupted", report.is_interrupted,
                      "The search was ended by an interruption; not there otherwise");
        visit.unless_empty("labels", told_labels(report.labels), meaning_of_labels);
    }
};

} // namespace zarven::tool

#endif
