// The fields of a drill. docs/drill.schema.json and the tables in docs/tool.md have what stands here.

#ifndef RECALCULO_DRILL_FIELDS_H
#define RECALCULO_DRILL_FIELDS_H

#include "placement/change/comparison_fields.h"
#include "placement/failing/drill.h"
#include "placement/result_fields.h"
#include "placement/sizing/sizing_fields.h"

namespace zarven::tool {

inline constexpr Word<PartKind> part_kind_words[] = {
    {PartKind::module, "module"}, {PartKind::input, "input"}, {PartKind::stream, "stream"}};

template <> struct Words<PartKind> : WordTable<PartKind, part_kind_words> {};

inline constexpr Word<NewRun> new_run_words[] = {{NewRun::usable, "usable"},
                                                 {NewRun::broken, "broken"},
                                                 {NewRun::stopped, "stopped"},
                                                 {NewRun::impossible, "impossible"}};

template <> struct Words<NewRun> : WordTable<NewRun, new_run_words> {};

template <> struct Fields<DrilledService> {
    static constexpr const char* name = "drilled_service";
    static constexpr const char* meaning = "A service that a failure concerns";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& service) {
        visit_identity_of(visit, service.service);
        visit.required("must", service.must, "It must be placed");
    }
};

template <> struct Fields<FailedPart> {
    static constexpr const char* name = "part";
    static constexpr const char* meaning = "What is taken out";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& part) {
        visit.required("kind", part.kind, "What it is");
        visit.required("mac", part.mac,
                       "Identity of the module, or of that of the input; empty for a stream");
        visit.unless_empty("label", part.label, meaning_of_label);
        visit.required("input", part.input, "Number of the input, from 1; 0 for others");
        visit.required("onid", part.stream.onid,
                       "Original network id of the stream, or of that of the input; 0 for a module");
        visit.required("tsid", part.stream.tsid, "Transport stream id, in the same way");
        visit.required("controller", part.is_controller,
                       "It is the only controller: another module is taken for it");
    }
};

template <> struct Fields<DrilledFailure> {
    static constexpr const char* name = "failure";
    static constexpr const char* meaning = "A failure that takes services off the air";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& failure) {
        visit.required("part", failure.part, "What fails");
        visit.required("run", failure.run,
                       "Whether the new run counts: it does not where its placement is broken, where it "
                       "exploded and was stopped, or where no module is left; what is on the air then stays "
                       "where it is");
        visit.unless_empty("problem", failure.problem, "Why it was stopped");
        visit.required("off_air", count(failure.off_air()),
                       "Services that stand on the part and nowhere else: off the air at once");
        visit.required("all_lost", count(failure.all_lost()), "Services of `lost` and `lost_besides`");
        visit.required("musts_lost", count(failure.musts_lost()), "Those of them that must be placed");
        visit.required("moved", count(failure.moved),
                       "Services not among these that stand elsewhere after the new run");
        visit.required("saved", failure.saved, "Off the air at once, and placed by the new run");
        visit.required("lost", failure.lost, "Off the air at once, and not placed by it");
        visit.required("lost_besides", failure.lost_besides,
                       "Not off the air at once, and not placed by the new run");
        visit.required("gained", failure.gained, "Not placed before, and placed by the new run");
    }
};

template <> struct Fields<PartCounts> {
    static constexpr const char* name = "parts";
    static constexpr const char* meaning = "Numbers of parts";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& parts) {
        visit.required("modules", count(parts.modules), "Modules");
        visit.required("inputs", count(parts.inputs), "Inputs");
        visit.required("streams", count(parts.streams), "Streams");
    }
};

template <> struct Fields<SpareAttempt> {
    static constexpr const char* name = "spare_attempt";
    static constexpr const char* meaning = "The head-end drilled with a number of spare modules";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& attempt) {
        visit.required("number", count(attempt.number), "Spare modules");
        visit.required("missing", count(attempt.missing),
                       "Services to be kept that are not placed while nothing has failed");
        visit.required("failures", count(attempt.failures),
                       "Modules and inputs whose failure loses services to be kept");
        visit.required("worst", count(attempt.worst), "Services to be kept that the worst of them loses");
        visit.required("broken", attempt.is_broken,
                       "Without any failure the engine places nothing that works, so nothing more is tried");
    }
};

template <> struct Fields<Spare> {
    static constexpr const char* name = "spare";
    static constexpr const char* meaning = "How many spare modules are enough";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& spare) {
        visit.required("module", ModuleKind{spare.kind}, "The kind");
        visit.required("most", count(spare.most), "The most spares to try");
        visit.required("kept", count(spare.kept),
                       "Services to be kept: those placed now, of those marked as `must` if any are");
        visit.required("number", count(spare.number),
                       "The smallest number with which no module or input that fails loses one of them; null "
                       "if none suffices");
        visit.required("tried", spare.attempts, "By number");
    }
};

template <> struct Fields<Drill> {
    static constexpr const char* name = "drill";
    static constexpr const char* meaning =
        "What fails with each part of a head-end; the members up to `findings` are about the head-end as it "
        "is";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& drill) {
        visit_name(visit, drill.name);
        visit_counts(visit, drill.now);
        visit.required("musts", count(drill.musts), "Services that must be placed");
        visit.required("musts_placed", count(drill.musts_placed), "Those of them that are placed");
        visit_findings(visit, drill.findings);
        visit.required("partial", drill.is_partial, "It was interrupted: what was found until then");
        visit.required("taken_out", drill.taken_out, "All that fail in turn");
        visit.required("harmless", drill.harmless, "Those without which nothing goes off the air");
        visit.required("failures", drill.failures,
                       "The others, the worst first: the most musts lost, then services lost, then off the "
                       "air, then moved");
        visit.required("worst_moved", drill.worst_moved, "The services that the first of them moves");
        visit.required("labels", told_labels(drill.labels), meaning_of_labels);
        visit.required("spare", drill.spare, "With `--spare`: what spare modules bring; else null");
    }
};

} // namespace zarven::tool

#endif
