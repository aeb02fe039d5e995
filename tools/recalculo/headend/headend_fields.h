// The fields of a head-end file: docs/headend.md and docs/headend.schema.json have what stands here.

#ifndef RECALCULO_HEADEND_FIELDS_H
#define RECALCULO_HEADEND_FIELDS_H

#include <limits>

#include "headend/headend.h"
#include "headend/reception_fields.h"
#include "records/fields.h"

namespace zarven::tool {

/// What a service is taken to need where nobody knows.
inline std::uint32_t typical_bitrate(const Programme& programme) {
    return is_hd(programme) ? typical_hd_bitrate : typical_sd_bitrate;
}

inline constexpr const char* typical_bitrate_words = "3500, HD 8000";

inline constexpr const char* carried_along = "Carried along";

template <class Visitor, class Record> void visit_model(Visitor& visit, Record& module) {
    visit.optional("model", fixed(module.model, tRec_Modulo::MODELO_SOPORTADO), tRec_Modulo::MODELO_SOPORTADO,
                   "Model number; the engine supports 3 only");
}

/// What tells a kind of module from another, apart from the model.
template <class Visitor, class Record> void visit_limits(Visitor& visit, Record& module) {
    visit.required("inputs", module.inputs, "Number of inputs; each receives one stream");
    // As many as the engine can number with 16 bits.
    visit.required("outputs", limited(module.outputs, std::numeric_limits<std::uint16_t>::max()),
                   "For each output its maximum bitrate in kbit/s");
    visit.required("pids_max", module.pids_max, "PIDs that the module can descramble");
    visit.optional("sd_transcoders", module.sd_transcoders, 0,
                   "Transcoders for SD services; SD and HD share one pool");
    visit.optional("hd_transcoders", module.hd_transcoders, 0,
                   "Ceiling of that pool from the first HD service on");
    visit.optional("aux_transcoders", module.aux_transcoders, 0, "Transcoders for clones");
}

/// All of a module but its identity.
template <class Visitor, class Record> void visit_all_but_mac(Visitor& visit, Record& module) {
    visit_model(visit, module);
    visit.optional("controller", module.controller, false, "The module is the head-end controller");
    visit_limits(visit, module);
    visit.optional("label", module.label, "",
                   "Where it stands or what it is called, as \"Rack 1, slot 3\"; shown beside the MAC");
    visit.optional("price", module.price, 1,
                   "What one costs, in any unit: `size` looks for the cheapest mix of several kinds");
}

template <> struct Fields<Module> {
    static constexpr const char* name = "module";
    static constexpr const char* meaning = "A processing module";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& module) {
        visit.required(
            "mac", filled(module.mac),
            "Identity of the module; each may come once. Modules are filled in ascending order of it");
        visit_all_but_mac(visit, module);
    }
};

/// A module in a file of its own, where it stands for its kind.
struct SingleModule {
    Module module;
};

template <> struct Fields<SingleModule> {
    static constexpr const char* name = "module";
    static constexpr const char* meaning = "A module outside of a head-end";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& single) {
        visit.optional("mac", single.module.mac, "", "Identity of the module, which nobody asks for");
        visit_all_but_mac(visit, single.module);
    }
};

template <class Visitor, class Record> void visit_identity(Visitor& visit, Record& programme) {
    visit.required("lcn", programme.lcn,
                   "Logical channel number, and the engine's key of the service within its stream");
    visit.required("name", programme.name, "Name as received");
    visit.optional("output_name", programme.output_name, same_as("name", programme.name), "Name to transmit");
    visit.required("onid", programme.onid, "Original network id of its stream");
    visit.required(
        "tsid", programme.tsid,
        "Transport stream id of its stream; 0 and an `onid` of 0 together is what the engine takes "
        "for no stream");
    visit.required("sid", programme.sid, "Service id");
    visit.optional("osid", programme.osid, same_as("sid", programme.sid),
                   "Service id in the received stream");
    visit.optional("type", programme.type, type_television, "Service type: 1 television, 2 radio");
    visit.optional("video_format", programme.video_format, 0, "4 is HD, anything else counts as SD");
}

template <class Visitor, class Record, class Fallback>
void visit_video_bitrate(Visitor& visit, Record& programme, const Fallback& fallback) {
    visit.optional("video_bitrate", programme.video_bitrate, fallback,
                   "Peak bitrate of the picture in kbit/s");
}

template <class Visitor, class Record> void visit_treatment(Visitor& visit, Record& programme) {
    visit.flag("descramble", programme.descramble, "Other than 0 or false: the service must be descrambled");
    visit.flag(
        "transcoding", programme.transcoding,
        "1 or true: the service needs a transcoder; use no number but 0 and 1. The engine tunes no input "
        "for such services alone: they are placed where their stream is received for others, and, as long "
        "as inputs are free, mostly not even there");
    visit.flag("forced_name", programme.forced_name, "Forced-name flag");
    visit.optional("simulcast_lcn", programme.simulcast_lcn, 0, "Logical channel number of the simulcast");
    visit.optional("sat_id", programme.sat_id, 0, "Satellite it comes from");
    visit.optional("reserved1", programme.reserved1, 0, carried_along);
    visit.optional("reserved2", programme.reserved2, 0, carried_along);
    visit.optional("reserved3", programme.reserved3, 0, carried_along);
}

template <> struct Fields<Service> {
    static constexpr const char* name = "service";
    static constexpr const char* meaning = "A service that is received and wished for";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& service) {
        visit_identity(visit, service);
        visit.estimated("bitrate", service.bitrate, derived(typical_bitrate_words, typical_bitrate(service)),
                        "Peak bitrate of the whole service in kbit/s");
        visit.optional("measured", service.measured, false,
                       "`bitrate` was measured; else it is an estimate. `measure` and `import` write it");
        visit.optional("mean_bitrate", service.mean_bitrate, 0,
                       "Mean of what was measured in kbit/s, for the planner to see; 0: not known");
        visit_video_bitrate(visit, service, same_as("bitrate", service.bitrate));
        visit_treatment(visit, service);
        visit.optional("ca_pids", service.ca_pids, 0, "PIDs that count against `pids_max` of its module");
        visit.optional(
            "ca_pids_max", service.ca_pids_max, same_as("ca_pids", service.ca_pids),
            "Ceiling of `ca_pids` once the service has a clone without `parent_sid`: those of a clone among "
            "`services` are added to it. Of the clone itself it means nothing");
        visit.optional(
            "kind_unknown", service.kind_unknown, false,
            "It is not known whether this is television or radio, SD or HD: `type`, `video_format` "
            "and `bitrate` are estimates. `import` writes it");
        visit.optional(
            "value", up_to(service.value, most_value), 1,
            "What it is worth to `choose`, which asks for none of 0; one of 3 is worth three of 1");
        visit.optional("must", service.must, false, "To `choose` it comes before all that have a value only");
        visit.optional(
            "ask", service.ask, true,
            "false: the engine is not asked for it, nor for its clones and PIDs. `choose` writes it");
        visit.optional("group", service.group, "",
                       "A heading of its planner's, for reports and selections; `--wish` writes it");
        visit.optional("one_of", service.one_of, "",
                       "What one of is wanted, as \"Das Erste\": of the services that have the same here and "
                       "may be asked for, exactly one is");
    }
};

template <> struct Fields<Clone> {
    static constexpr const char* name = "clone";
    static constexpr const char* meaning = "A second appearance of a service of the same stream and `lcn`";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& clone) {
        visit_identity(visit, clone);
        visit_video_bitrate(visit, clone, derived(typical_bitrate_words, typical_bitrate(clone)));
        visit_treatment(visit, clone);
        visit.optional(
            "parent_sid", clone.parent_sid, 0,
            "The `osid` of the parent; 0: the service of the same stream and `lcn` is the parent, and "
            "its `sid` is used");
    }
};

template <> struct Fields<Pid> {
    static constexpr const char* name = "pid";
    static constexpr const char* meaning = "An elementary stream that the log lists with its service";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& pid) {
        visit.required("id", pid.id, "Key of the PID within its service");
        visit.required("sid", pid.sid, "`sid` of its service; of several, clones come first");
        visit.optional("audio", pid.audio, "", "Audio language");
        visit.optional("order", pid.order, 0, "Order of the component within the service");
        visit.optional("reserved1", pid.reserved1, 0, carried_along);
        visit.optional("reserved2", pid.reserved2, 0, carried_along);
        visit.optional("reserved3", pid.reserved3, 0, carried_along);
    }
};

template <> struct Fields<HomeChannel> {
    static constexpr const char* name = "home_channel";
    static constexpr const char* meaning = "A stream noted as home channel; each may come once";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& channel) {
        visit.required("onid", channel.onid, "Original network id");
        visit.required("tsid", channel.tsid, "Transport stream id");
    }
};

template <> struct Fields<Headend> {
    static constexpr const char* name = "headend";
    static constexpr const char* meaning = "What the head-end has and what it is to carry";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& headend) {
        visit.optional("name", headend.name, "", "Title of the reports");
        visit.required("modules", headend.modules,
                       "The modules; at least one must be the controller for the engine to run");
        visit.unless_empty("services", headend.services, "What is received and wished for");
        visit.unless_empty("clones", headend.clones, "Second appearances of services");
        visit.unless_empty("pids", headend.pids, "Elementary streams that the log lists with their service");
        visit.unless_empty("home_channels", headend.home_channels,
                           "Streams noted as home channels; they do not influence the placement");
        visit.unless_empty("streams", headend.streams,
                           "Where streams are received; `import` writes it. For the reports: it does not "
                           "influence the placement");
    }
};

} // namespace zarven::tool

#endif
