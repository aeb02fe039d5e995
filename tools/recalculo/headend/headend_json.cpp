// Each record's keys stand in one function, `visit_fields`, with what is required and what is the default.
// Three visitors walk it: one reads, one writes, one lists the keys. A default may depend on the fields
// before it.

#include "headend/headend_json.h"

#include <functional>
#include <string_view>
#include <type_traits>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/json_cursor.h"
#include "base/json_text.h"

namespace zarven::tool {

namespace {

using nlohmann::ordered_json;

/// The same type, where a template argument must not be deduced from it.
template <class Type> using Exactly = std::enable_if_t<true, Type>;

template <class Visitor> void visit_fields(Visitor& visit, Module& module) {
    visit.required("mac", module.mac);
    visit.optional("model", module.model, tRec_Modulo::MODELO_SOPORTADO);
    visit.optional("controller", module.controller, false);
    visit.required("inputs", module.inputs);
    visit.required("outputs", module.outputs);
    visit.required("pids_max", module.pids_max);
    visit.optional("sd_transcoders", module.sd_transcoders, 0);
    visit.optional("hd_transcoders", module.hd_transcoders, 0);
    visit.optional("aux_transcoders", module.aux_transcoders, 0);
}

template <class Visitor> void visit_identity(Visitor& visit, Programme& programme) {
    visit.required("lcn", programme.lcn);
    visit.required("name", programme.name);
    visit.optional("output_name", programme.output_name, programme.name);
    visit.required("onid", programme.onid);
    visit.required("tsid", programme.tsid);
    visit.required("sid", programme.sid);
    visit.optional("osid", programme.osid, programme.sid);
    visit.optional("type", programme.type, type_television);
    visit.optional("video_format", programme.video_format, 0);
}

template <class Visitor> void visit_treatment(Visitor& visit, Programme& programme) {
    visit.flag("descramble", programme.descramble);
    visit.flag("transcoding", programme.transcoding);
    visit.flag("forced_name", programme.forced_name);
    visit.optional("simulcast_lcn", programme.simulcast_lcn, 0);
    visit.optional("sat_id", programme.sat_id, 0);
    visit.optional("reserved1", programme.reserved1, 0);
    visit.optional("reserved2", programme.reserved2, 0);
    visit.optional("reserved3", programme.reserved3, 0);
}

std::uint32_t typical_bitrate(const Programme& programme) {
    return programme.video_format == tRec_Servicio::VIDEO_HD ? typical_hd_bitrate : typical_sd_bitrate;
}

template <class Visitor> void visit_fields(Visitor& visit, Service& service) {
    visit_identity(visit, service);
    visit.estimated("bitrate", service.bitrate, typical_bitrate(service));
    visit.optional("video_bitrate", service.video_bitrate, service.bitrate);
    visit_treatment(visit, service);
    visit.optional("ca_pids", service.ca_pids, 0);
    visit.optional("ca_pids_max", service.ca_pids_max, service.ca_pids);
}

template <class Visitor> void visit_fields(Visitor& visit, Clone& clone) {
    visit_identity(visit, clone);
    visit.optional("video_bitrate", clone.video_bitrate, typical_bitrate(clone));
    visit_treatment(visit, clone);
    visit.optional("parent_sid", clone.parent_sid, 0);
}

template <class Visitor> void visit_fields(Visitor& visit, Pid& pid) {
    visit.required("id", pid.id);
    visit.required("sid", pid.sid);
    visit.optional("audio", pid.audio, "");
    visit.optional("order", pid.order, 0);
    visit.optional("reserved1", pid.reserved1, 0);
    visit.optional("reserved2", pid.reserved2, 0);
    visit.optional("reserved3", pid.reserved3, 0);
}

template <class Visitor> void visit_fields(Visitor& visit, HomeChannel& channel) {
    visit.required("onid", channel.onid);
    visit.required("tsid", channel.tsid);
}

template <class Visitor> void visit_fields(Visitor& visit, Headend& headend) {
    visit.optional("name", headend.name, "");
    visit.list("modules", headend.modules, true);
    visit.list("services", headend.services, false);
    visit.list("clones", headend.clones, false);
    visit.list("pids", headend.pids, false);
    visit.list("home_channels", headend.home_channels, false);
}

/// Collects the keys that a record knows.
class KeyLister {
public:
    template <class Field> void required(const char* key, Field&) { keys.emplace_back(key); }
    template <class Field> void optional(const char* key, Field&, const Exactly<Field>&) {
        keys.emplace_back(key);
    }
    void estimated(const char* key, std::uint32_t&, std::uint32_t) { keys.emplace_back(key); }
    void flag(const char* key, std::uint16_t&) { keys.emplace_back(key); }
    template <class Record> void list(const char* key, std::vector<Record>&, bool) { keys.emplace_back(key); }

    std::vector<std::string> keys;
};

template <class Record> std::vector<std::string> keys_of() {
    Record record;
    KeyLister known;
    visit_fields(known, record);
    return known.keys;
}

/// Finds the list with a name, and collects the keys of its records.
class RecordLister {
public:
    explicit RecordLister(const std::string& name) : name_(name) {}

    void optional(const char*, std::string&, const std::string&) {}
    template <class Record> void list(const char* key, std::vector<Record>&, bool) {
        if (key == name_)
            keys = keys_of<Record>();
    }

    std::vector<std::string> keys;

private:
    const std::string& name_;
};

template <class Record> Record read_record(const JsonCursor& place);

/// Fills a record from an object.
class FieldReader {
public:
    explicit FieldReader(const JsonCursor& object) : object_(object) {}

    template <class Field> void required(const char* key, Field& field) { read(object_.member(key), field); }

    template <class Field> void optional(const char* key, Field& field, const Exactly<Field>& fallback) {
        const JsonCursor place = object_.member(key);
        if (place.present())
            read(place, field);
        else
            field = fallback;
    }

    void estimated(const char* key, std::uint32_t& field, std::uint32_t estimate) {
        optional(key, field, estimate);
    }

    void flag(const char* key, std::uint16_t& field) {
        const JsonCursor place = object_.member(key);
        field = place.present() ? place.flag() : std::uint16_t{0};
    }

    template <class Record> void list(const char* key, std::vector<Record>& records, bool is_required) {
        const JsonCursor place = object_.member(key);
        if (!is_required && !place.present())
            return;
        for (const JsonCursor& element : place.elements())
            records.push_back(read_record<Record>(element));
    }

private:
    static void read(const JsonCursor& place, std::string& field) { field = place.text(); }
    static void read(const JsonCursor& place, bool& field) { field = place.boolean(); }
    template <class Number> static void read(const JsonCursor& place, Number& field) {
        field = place.whole<Number>();
    }
    /// As many entries as the engine can number with 16 bits.
    static void read(const JsonCursor& place, std::vector<std::uint32_t>& field) {
        for (const JsonCursor& element : place.elements(std::numeric_limits<std::uint16_t>::max()))
            field.push_back(element.whole<std::uint32_t>());
    }

    const JsonCursor& object_;
};

template <class Record> Record read_record(const JsonCursor& place) {
    Record record;
    place.check_keys(keys_of<Record>());
    FieldReader reader(place);
    visit_fields(reader, record);
    return record;
}

/// A text, a number, true or false, or a list of such with a blank after each comma.
std::string spaced(const ordered_json& value) {
    if (!value.is_array())
        return value.dump();
    std::string entries;
    for (const ordered_json& entry : value)
        entries += (entries.empty() ? "" : ", ") + entry.dump();
    return "[" + entries + "]";
}

/// `{ "key": value, ... }` on one line.
std::string on_one_line(const ordered_json& object) {
    std::string line;
    for (const auto& member : object.items())
        line += fmt::format("{}{}: {}", line.empty() ? "" : ", ", ordered_json(member.key()).dump(),
                            spaced(member.value()));
    return "{ " + line + " }";
}

/// Collects what a record has to tell.
class FieldWriter {
public:
    template <class Field> void required(const char* key, Field& field) { object[key] = field; }
    template <class Field> void optional(const char* key, Field& field, const Exactly<Field>& fallback) {
        if (field != fallback)
            object[key] = field;
    }
    void estimated(const char* key, std::uint32_t& field, std::uint32_t) { object[key] = field; }
    void flag(const char* key, std::uint16_t& field) { optional(key, field, 0); }

    ordered_json object;
};

/// Writes the top level, each record of its lists on a line of its own.
class HeadendWriter {
public:
    void optional(const char* key, std::string& field, const std::string& fallback) {
        if (field != fallback)
            member(key, ordered_json(field).dump());
    }

    template <class Record> void list(const char* key, std::vector<Record>& records, bool is_required) {
        if (records.empty() && !is_required)
            return;
        std::string lines;
        for (Record& record : records) {
            FieldWriter writer;
            visit_fields(writer, record);
            lines += (lines.empty() ? "\n    " : ",\n    ") + on_one_line(writer.object);
        }
        member(key, "[" + lines + (lines.empty() ? "]" : "\n  ]"));
    }

    std::string text() const { return "{" + members_ + "\n}\n"; }

private:
    void member(const char* key, const std::string& value) {
        members_ += fmt::format("{}\n  \"{}\": {}", members_.empty() ? "" : ",", key, value);
    }

    std::string members_;
};

} // namespace

Headend read_headend(const std::string& file, const std::string& text) {
    return headend_of(file, parse_json(file, text));
}

void check_kind(const std::string& file, const nlohmann::json& document) {
    const char* kind = nullptr;
    if (document.is_object() && document.count("summary") != 0)
        kind = "a result, which `recalculo run --json` writes";
    else if (document.is_object() && document.count("modules") == 0 && document.count("inputs") != 0)
        kind = "a single module";
    if (kind != nullptr)
        throw Failure(fmt::format("{}: top level: found {}, expected a head-end", file, kind));
}

Headend headend_of(const std::string& file, const nlohmann::json& document) {
    check_kind(file, document);
    return read_record<Headend>(JsonCursor(file, document));
}

Module read_module(const std::string& file, const std::string& text) {
    nlohmann::json document = parse_json(file, text);
    if (document.is_object() && document.count("modules") == 0) {
        document.emplace("mac", "");
        return read_record<Module>(JsonCursor(file, document));
    }
    const Headend headend = headend_of(file, document);
    if (headend.modules.size() != 1)
        JsonCursor(file, document).member("modules").complain("just one module");
    return headend.modules.front();
}

std::vector<std::string> headend_keys() {
    return keys_of<Headend>();
}

std::vector<std::string> record_keys(const std::string& list) {
    RecordLister lister(list);
    Headend headend;
    visit_fields(lister, headend);
    return lister.keys;
}

std::string write_headend(const Headend& headend) {
    Headend written = headend; // the visitors take what they may change
    HeadendWriter writer;
    visit_fields(writer, written);
    return writer.text();
}

} // namespace zarven::tool
