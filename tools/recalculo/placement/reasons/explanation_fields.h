// The fields of explanations. docs/explanation.schema.json and the tables in docs/tool.md have what stands
// here.

#ifndef RECALCULO_EXPLANATION_FIELDS_H
#define RECALCULO_EXPLANATION_FIELDS_H

#include <string>
#include <vector>

#include "placement/reasons/explanation.h"
#include "placement/remedy/remedy_fields.h"
#include "placement/result_fields.h"

namespace zarven::tool {

inline constexpr Word<Limit> limit_words[] = {{Limit::no_input, "no_input"},
                                              {Limit::no_output, "no_output"},
                                              {Limit::service_count, "service_count"},
                                              {Limit::bitrate, "bitrate"},
                                              {Limit::pids, "pids"},
                                              {Limit::transcoders, "transcoders"},
                                              {Limit::stream_not_chosen, "stream_not_chosen"},
                                              {Limit::none, "none"}};

template <> struct Words<Limit> : WordTable<Limit, limit_words> {};

inline constexpr Word<Standing> standing_words[] = {{Standing::placed, "placed"},
                                                    {Standing::left_out, "left_out"},
                                                    {Standing::placed_and_left_out, "placed_and_left_out"},
                                                    {Standing::neither, "neither"},
                                                    {Standing::attached, "attached"},
                                                    {Standing::waiting, "waiting"}};

template <> struct Words<Standing> : WordTable<Standing, standing_words> {};

template <> struct Fields<OutputRoom> {
    static constexpr const char* name = "output";
    static constexpr const char* meaning = "An output and what the service lacks on it";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& output) {
        visit_output_number(visit, output);
        visit.required("bitrate", output.bitrate, "In use in kbit/s");
        visit.required("bitrate_max", output.bitrate_max, "Maximum in kbit/s");
        visit.required("short_by", count(output.short_by), "To be freed in kbit/s; 0 if the service fits");
        visit.required("can_be_freed", output.can_be_freed,
                       "So much can be freed; false if the service is too large for the output");
    }
};

struct PidRoom {
    std::uint32_t used = 0;
    std::uint32_t max = 0;
    std::uint32_t short_by = 0;
};

template <> struct Fields<PidRoom> {
    static constexpr const char* name = "pids";
    static constexpr const char* meaning = "PIDs, by the engine's count";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& pids) {
        visit.required("used", pids.used, "In use");
        visit.required("max", pids.max, "The budget");
        visit.required("short_by", pids.short_by, "To be freed; 0 if the service fits");
    }
};

struct TranscoderRoom {
    std::uint32_t used = 0;
    std::uint32_t max = 0;
};

template <> struct Fields<TranscoderRoom> {
    static constexpr const char* name = "transcoders";
    static constexpr const char* meaning = "SD and HD transcoders, which share one pool";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& transcoders) {
        visit.required("used", transcoders.used, "In use");
        visit.required("max", transcoders.max, "All");
    }
};

template <> struct Fields<ModuleRefusal> {
    static constexpr const char* name = "module";
    static constexpr const char* meaning =
        "The answer of a module. If it carries the service, the limit and the figures are those for placing it "
        "once more";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& refusal) {
        const Room& room = refusal.room;
        visit_mac(visit, refusal);
        visit.unless_empty("label", refusal.label, meaning_of_label);
        visit.required("carried_on", refusal.carried_on, "Its outputs that carry the service");
        visit.required("limit", refusal.limit, "The first limit that is in the way");
        visit.required("inputs", count(refusal.inputs), "Number of inputs");
        visit.required("inputs_receiving", refusal.inputs_receiving,
                       "Inputs tuned to the stream of the service");
        visit.required("inputs_free", refusal.inputs_free, "Inputs that carry nothing");
        visit.required("outputs", room.outputs, "Number of outputs");
        visit.required("outputs_full", room.outputs_full, "Of these with as many services as they may have");
        visit.where(Condition{room.outputs_full < room.outputs}, "output", room.output,
                    "The output with room or the one that lacks least; not there if all are full");
        visit.required("pids", PidRoom{room.pids_used, room.pids_max, room.pids_short_by},
                       "Those in use and those to be freed");
        visit.required("transcoders", TranscoderRoom{room.transcoders_used, room.transcoders_max},
                       "Those in use and all");
        visit.required("could_ever", refusal.could_ever, "It would take the service if it were empty");
        visit.required("engine_has_room", refusal.engine_has_room(),
                       "The engine would place it, whatever the inputs receive");
    }
};

template <> struct Fields<Explanation> {
    static constexpr const char* name = "service";
    static constexpr const char* meaning = "What became of a service or a clone";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& explanation) {
        // Not the outputs: they may be on several modules, each of which tells them.
        visit_service(visit, explanation.service);
        visit.required("transcoding", explanation.transcoding,
                       "As in the head-end; 1: the service needs a transcoder");
        visit.required("standing", explanation.standing, "What became of it; the last two are for clones");
        visit.required("sentence", explanation.sentence, "The same and the reason, in words");
        visit_findings(visit, explanation.findings);
        visit.required("modules", explanation.modules, "What each module answers, by MAC; none for a clone");
        visit.required("modules_not_listed", count(explanation.unlisted),
                       "Modules without an input for it that are not listed");
        visit.where(Condition{explanation.remedies.has_value()}, "remedies",
                    explanation.remedies ? *explanation.remedies : Remedies(),
                    "With `--remedy`: what would place the service; not there for one that is placed");
    }
};

/// All that is told. A command writes it piece by piece, because in a large head-end it may not fit into
/// memory.
struct Explanations {
    std::string name;
    std::vector<CauseCount> causes;
    Advice advice;
    std::vector<Caution> cautions;
    std::vector<Explanation> services;
    std::vector<Finding> findings;
};

template <> struct Fields<Explanations> {
    static constexpr const char* name = "explanations";
    static constexpr const char* meaning = "Why services are left out, and what each module answers";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& explanations) {
        visit_name(visit, explanations.name);
        visit.required("causes", explanations.causes, meaning_of_causes);
        visit_advice(visit, explanations.advice);
        visit_cautions(visit, explanations.cautions);
        visit.required("services", explanations.services, "Those asked for, or all that are on no output");
        visit_findings(visit, explanations.findings);
    }
};

} // namespace zarven::tool

#endif
