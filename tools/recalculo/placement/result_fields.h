// The fields of a result. docs/result.schema.json and the tables in docs/tool.md have what stands here.

#ifndef RECALCULO_RESULT_FIELDS_H
#define RECALCULO_RESULT_FIELDS_H

#include "headend/reception_fields.h"
#include "placement/audit/caution_fields.h"
#include "placement/audit/finding_fields.h"
#include "placement/module_fields.h"
#include "placement/raise_fields.h"
#include "placement/result.h"
#include "records/fields.h"

namespace zarven::tool {

template <class Visitor, class Record> void visit_input_number(Visitor& visit, Record& input) {
    visit.required("number", input.number, "Number of the input, from 1");
}

template <class Visitor, class Record> void visit_output_number(Visitor& visit, Record& output) {
    visit.required("number", output.number, "Number of the output, from 1");
}

template <class Visitor, class Record> void visit_stream(Visitor& visit, Record& stream) {
    visit.required("onid", stream.onid, "Original network id");
    visit.required("tsid", stream.tsid, "Transport stream id");
}

template <> struct Fields<Stream> {
    static constexpr const char* name = "stream";
    static constexpr const char* meaning = "A stream";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& stream) {
        visit_stream(visit, stream);
    }
};

template <class Visitor, class Record> void visit_lcn_and_name(Visitor& visit, Record& service) {
    visit.required("lcn", service.lcn, "Logical channel number");
    visit.required("name", service.name, "Name as received");
}

template <class Visitor, class Record> void visit_stream_of(Visitor& visit, Record& service) {
    visit.required("onid", service.stream.onid, "Original network id of its stream");
    visit.required("tsid", service.stream.tsid, "Transport stream id of its stream");
}

template <class Visitor, class Record> void visit_sid(Visitor& visit, Record& service) {
    visit.required("sid", service.sid, "Service id");
}

template <class Visitor, class Record> void visit_output_name(Visitor& visit, Record& service) {
    visit.required("output_name", service.output_name, "Name to transmit");
}

/// What is known of a service, wherever it stands.
template <class Visitor, class Record> void visit_service(Visitor& visit, Record& service) {
    visit_lcn_and_name(visit, service);
    visit_output_name(visit, service);
    visit_stream_of(visit, service);
    visit_sid(visit, service);
    visit.required("osid", service.osid, "Service id in the received stream");
    visit.required("bitrate", service.bitrate, "Peak bitrate in kbit/s");
    visit.required("hd", service.is_hd, "HD, not SD");
    visit.required("scrambled", service.is_scrambled, "It must be descrambled");
    visit.required("ca_pids", service.ca_pids, "PIDs that count against the budget of its module");
    visit.required("transcoded", service.is_transcoded, "It needs transcoding");
    visit.required("clone", service.is_clone, "Second appearance of a service");
    visit.if_true("measured", service.is_measured, "Its bitrate was measured; not there for estimates");
    visit.where(Condition{service.mean_bitrate != 0}, "mean_bitrate", service.mean_bitrate,
                "Of a measured one: mean bitrate in kbit/s", Since::a_later_version);
    visit.unless_empty("group", service.group, "The heading that it stands under, if the head-end tells");
    visit.if_true("radio", service.is_radio, "Service of `type` 2; not there for others");
    visit.where(if_so("clone", service.is_clone), "parent_sid", service.parent_sid,
                "Of a clone: the `osid` of its parent", Since::a_later_version);
}

inline constexpr Word<Cause> cause_words[] = {{Cause::impossible, "impossible"},
                                              {Cause::no_input, "no_input"},
                                              {Cause::stream_not_chosen, "stream_not_chosen"},
                                              {Cause::places, "places"},
                                              {Cause::bitrate, "bitrate"},
                                              {Cause::pids, "pids"},
                                              {Cause::transcoders, "transcoders"},
                                              {Cause::unused_input, "unused_input"},
                                              {Cause::unused_room, "unused_room"},
                                              {Cause::contradictory, "contradictory"},
                                              {Cause::lost, "lost"}};

template <> struct Words<Cause> : WordTable<Cause, cause_words> {
    static constexpr const char* name = "cause";
};

template <> struct Fields<CauseCount> {
    static constexpr const char* name = "cause_count";
    static constexpr const char* meaning = "A cause, and what it keeps out; clones do not count";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& cause) {
        visit.required("kind", cause.cause, "Which it is");
        visit.required("services", count(cause.services), "Services that it keeps out");
        visit.required("streams", count(cause.streams), "The streams of these services");
        visit.required("sentence", cause.sentence, "The same in words, with figures");
    }
};

template <> struct Fields<ServiceResult> {
    static constexpr const char* name = "service";
    static constexpr const char* meaning = "A service or a clone";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& service) {
        visit_service(visit, service);
        visit.required("outputs", service.outputs, "Numbers of the outputs of its module that carry it");
        visit.unless_empty("reason", service.reason,
                           "Of a service on no output and of a clone that waits: why, in one sentence");
        visit.where(Condition{service.cause != Cause::none}, "cause", service.cause,
                    "Of a service that is not placed: what keeps it out", Since::a_later_version);
        visit.unless_empty("nearest", service.nearest,
                           "Of a service that is not placed: MAC of the module that is nearest to taking it, "
                           "where one is");
    }
};

/// A service in the lists of the smaller documents.
struct ServiceIdentity {
    ServiceResult service;
};

template <class Visitor, class Record> void visit_identity_of(Visitor& visit, Record& service) {
    visit_lcn_and_name(visit, service);
    visit_stream_of(visit, service);
    visit_sid(visit, service);
}

template <> struct Fields<ServiceIdentity> {
    static constexpr const char* name = "service";
    static constexpr const char* meaning = "A service";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& identity) {
        visit_identity_of(visit, identity.service);
    }
};

struct ServiceWithReason {
    ServiceResult service;
};

template <> struct Fields<ServiceWithReason> {
    static constexpr const char* name = "service_with_reason";
    static constexpr const char* meaning = "A service and why";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& told) {
        visit_identity_of(visit, told.service);
        visit.required("reason", told.service.reason, "Why, in one sentence");
    }
};

/// Services as one of these.
template <class Told> std::vector<Told> told_as(const std::vector<ServiceResult>& services) {
    std::vector<Told> told;
    for (const ServiceResult& service : services)
        told.push_back({service});
    return told;
}

template <> struct Fields<InputResult> {
    static constexpr const char* name = "input";
    static constexpr const char* meaning = "An input; it receives one stream";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& input) {
        visit_input_number(visit, input);
        visit.required("tuned", input.is_tuned, "It receives a stream");
        visit.where(if_so("tuned", input.is_tuned), "onid", input.stream.onid,
                    "If it is tuned: original network id of the stream");
        visit.where(if_so("tuned", input.is_tuned), "tsid", input.stream.tsid,
                    "If it is tuned: transport stream id of the stream");
        visit.made("bitrate", count(carried_from(input)),
                   "What the head-end carries from here in kbit/s: services of the stream that stand on an "
                   "output of the module, each once; clones do not count");
        visit.where(Condition{input.net_rate != 0}, "net_rate", input.net_rate,
                    "What the transponder of the stream carries in kbit/s, if the head-end tells it",
                    Since::a_later_version);
        visit.required("services", input.services, "Taken from this input");
    }
};

template <> struct Fields<OutputResult> {
    static constexpr const char* name = "output";
    static constexpr const char* meaning = "An output";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& output) {
        visit_output_number(visit, output);
        visit.required("bitrate", output.bitrate, "In use in kbit/s, by the engine's count");
        visit.required("bitrate_max", output.bitrate_max, "Maximum in kbit/s; what is in use stays below");
        visit.where(Condition{output.reserve != 0}, "reserve", output.reserve,
                    "What is to stay free for tables in kbit/s, if anything (`--reserve`)",
                    Since::a_later_version);
        visit.required("service_count", output.service_count,
                       "Services, by the engine's count; clones do not count");
        visit.required("service_max", output.service_max, "The most services");
        visit.required("services", output.services, "Carried by this output");
    }
};

template <> struct Fields<Usage> {
    static constexpr const char* name = "usage";
    static constexpr const char* meaning = "Transcoders of one kind";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& usage) {
        visit.required("used", usage.used, "In use");
        visit.required("max", usage.max, "All");
    }
};

template <> struct Fields<ModuleResult> {
    static constexpr const char* name = "module";
    static constexpr const char* meaning = "A processing module";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& module) {
        visit_mac(visit, module);
        visit.unless_empty("label", module.label, meaning_of_label);
        visit.required("model", module.model, "Model number");
        visit.required("controller", module.is_controller, "The module is the head-end controller");
        visit.required("pids", module.pids, "PIDs that the services on the outputs need");
        visit.required("pids_max", module.pids_max, "PIDs that the module can descramble");
        visit.required("pids_counted", module.pids_counted,
                       "The engine's own count of PIDs in use, by which it decides");
        visit.required("sd_transcoders", module.sd_transcoders,
                       "Transcoders for SD services; SD and HD share one pool");
        visit.required("hd_transcoders", module.hd_transcoders, "Transcoders for HD services");
        visit.required("aux_transcoders", module.aux_transcoders, "Transcoders for clones");
        visit.required("inputs", module.inputs, "By number");
        visit.required("outputs", module.outputs, "By number");
        visit.required(
            "without_input", module.without_input,
            "On an output of the module and on none of its inputs, so not placed; empty as a rule");
    }
};

template <> struct Fields<StreamResult> {
    static constexpr const char* name = "stream";
    static constexpr const char* meaning = "Services of one stream";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& stream) {
        visit_stream(visit, stream.stream);
        visit.required("services", stream.services, "By LCN");
    }
};

template <class Visitor, class Record> void visit_loaded(Visitor& visit, Record& counts) {
    visit.required("loaded", count(counts.loaded), "All services");
}

template <class Visitor, class Record> void visit_placed_and_left_out(Visitor& visit, Record& counts) {
    visit.required("placed", count(counts.placed),
                   "Services on an output of a module that receives them on an input");
    visit.required("left_out", count(counts.left_out), "Services left out");
}

/// What became of the services.
template <class Visitor, class Record> void visit_outcome(Visitor& visit, Record& counts) {
    visit_placed_and_left_out(visit, counts);
    visit.required("neither", count(counts.neither), "Services neither placed nor left out",
                   Since::a_later_version);
}

template <class Visitor, class Record> void visit_not_asked_for(Visitor& visit, Record& counts) {
    visit.where(Condition{counts.not_asked_for != 0}, "not_asked_for", count(counts.not_asked_for),
                "Services of the head-end with `ask` false, if there are any; no other number counts them",
                Since::a_later_version);
}

/// Those of all services.
template <class Visitor, class Record> void visit_counts(Visitor& visit, Record& counts) {
    visit_loaded(visit, counts);
    visit_outcome(visit, counts);
    visit_not_asked_for(visit, counts);
}

template <> struct Fields<RateCounts> {
    static constexpr const char* name = "rates";
    static constexpr const char* meaning =
        "On what the bitrates of placed services rest; clones do not count";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& rates) {
        visit.required("measured_loaded", count(rates.measured_loaded),
                       "Services whose bitrate was measured, placed or not");
        visit.required("measured_placed", count(rates.measured),
                       "Placed services whose bitrate was measured");
        visit.required("estimated_placed", count(rates.estimated),
                       "Placed services whose bitrate is an estimate");
        visit.required("bitrate", count(rates.bitrate), "Of all placed services together, in kbit/s");
        visit.required("estimated_bitrate", count(rates.estimated_bitrate),
                       "Of those together whose bitrate is an estimate, in kbit/s");
    }
};

template <> struct Fields<Counts> {
    static constexpr const char* name = "summary";
    static constexpr const char* meaning = "Numbers of services, each counted once; clones are counted apart";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& counts) {
        visit_counts(visit, counts);
        visit.required("clones_attached", count(counts.clones_attached), "Clones beside their parent");
        visit.required("clones_waiting", count(counts.clones_waiting), "Clones that found no place");
        visit.where(Condition{counts.musts != 0}, "musts", count(counts.musts),
                    "Services marked as `must`, if any are; of one of several one counts",
                    Since::a_later_version);
        visit.where(Condition{counts.musts != 0}, "musts_placed", count(counts.musts_placed),
                    "Those of them that are placed", Since::a_later_version);
        visit.where(Condition{counts.rates.measured_loaded != 0}, "rates", counts.rates,
                    "If the head-end has a measured service: how much rests on estimates",
                    Since::a_later_version);
    }
};

template <class Visitor, class Record> void visit_name(Visitor& visit, Record& name) {
    visit.unless_empty("name", name, "Name of the head-end, if it has one");
}

template <> struct Fields<GroupResult> {
    static constexpr const char* name = "group";
    static constexpr const char* meaning = "A group of services; clones do not count";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& group) {
        visit.required("name", group.name, "The `group` of its services");
        visit.required("loaded", count(group.loaded), "Services that the engine is asked for");
        visit.required("placed", count(group.placed), "Those of them that are placed");
    }
};

template <> struct Fields<VariantResult> {
    static constexpr const char* name = "variant";
    static constexpr const char* meaning = "What is asked for of a one-of group";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& variant) {
        visit.required("one_of", variant.one_of, "The `one_of` of the group");
        visit_identity_of(visit, variant.service);
        visit.required("placed", variant.is_placed, "It is placed");
        visit.required("place", count(variant.place), "Which of the variants it is, from 1, the best");
        visit.required("variants", count(variant.variants), "How many the group has that may be asked for");
    }
};

inline constexpr const char* meaning_of_variants = "Of which services one of several is asked for, and which";

inline constexpr const char* meaning_of_causes =
    "Why services are not placed, the cause of most of them first";

template <class Visitor, class Record> void visit_advice(Visitor& visit, Record& advice) {
    visit.where(Condition{advice.limits != 0}, "advice", advice,
                "If services are left out and it was looked for: which limit to raise",
                Since::a_later_version);
}

/// All but the name.
template <class Visitor, class Record> void visit_placement(Visitor& visit, Record& result) {
    visit.required("modules", result.modules, "By MAC");
    visit.required("left_out", result.left_out, "Services on no output, by stream");
    visit.required("clones_waiting", result.clones_waiting, "Clones that found no place");
    visit.required(
        "neither", result.neither,
        "Services neither placed nor left out, and clones neither attached nor waiting; empty as a rule",
        Since::a_later_version);
    visit_advice(visit, result.advice);
    visit.unless_empty("groups", result.groups, "What became of groups, if services are in some");
    visit.unless_empty("one_of", result.variants, meaning_of_variants);
    visit.unless_empty("streams", result.streams, "Where streams are received, if the head-end tells");
    visit_findings(visit, result.findings);
    visit.required("summary", result.counts, "The numbers of services");
}

template <> struct Fields<Result> {
    static constexpr const char* name = "result";
    static constexpr const char* meaning = "Where the services of a head-end went";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& result) {
        visit_name(visit, result.name);
        visit_placement(visit, result);
    }
};

} // namespace zarven::tool

#endif
