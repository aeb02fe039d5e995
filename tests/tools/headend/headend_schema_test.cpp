// docs/headend.schema.json against the reader, the writer and the examples.

#include <algorithm>
#include <fstream>

#include <gtest/gtest.h>

#include "headend/headend_json.h"
#include "schema.h"

namespace headend_schema_test {

using namespace zarven::tool;
using nlohmann::json;

namespace {

constexpr const char* schema = "headend.schema.json";

json example(const std::string& name) {
    std::ifstream file(RECALCULO_EXAMPLES "/" + name);
    return json::parse(file);
}

/// One of each record, no field of which has its default.
Headend headend_with_everything() {
    Service service;
    service.lcn = 2;
    service.name = "Canal";
    service.output_name = "Otro";
    service.onid = service.tsid = service.sid = 3;
    service.osid = 4;
    service.type = 2;
    service.video_format = 4;
    service.bitrate = 5;
    service.video_bitrate = 6;
    service.descramble = service.transcoding = service.forced_name = 1;
    service.simulcast_lcn = service.sat_id = 7;
    service.reserved1 = service.reserved2 = service.reserved3 = 8;
    service.ca_pids = 9;
    service.ca_pids_max = 10;
    service.measured = true;
    service.mean_bitrate = 4;
    service.kind_unknown = true;
    service.value = 1000;
    service.must = true;
    service.ask = false;
    Clone clone;
    static_cast<Programme&>(clone) = service;
    clone.parent_sid = 4;

    Headend headend;
    headend.name = "Casa";
    headend.modules = {{"M1", 3, true, 2, {38000}, 40, 1, 1, 1, "Rack 1"}};
    service.group = "Sport";
    service.one_of = "Deportes";
    headend.services = {service};
    headend.clones = {clone};
    headend.pids = {{-1, 3, "spa", 1, 2, 3, 4}};
    headend.home_channels = {{1, 2}};
    headend.streams = {{1, 2, 12187500, "H", "19.2E", 22000000, 33790, "DVB-S"}};
    return headend;
}

std::vector<std::string> keys_of(const json& object) {
    std::vector<std::string> keys;
    for (const auto& member : object.items())
        keys.push_back(member.key());
    return keys;
}

TEST(HeadendSchema, AcceptsTheExamples) {
    for (const char* name :
         {"small.json", "medium.json", "modules-10.json", "modules-16.json", "modules-8-tight.json"})
        EXPECT_EQ(schema_errors(schema, example(name)), "") << name;
}

TEST(HeadendSchema, AcceptsWhatTheToolWrites) {
    EXPECT_EQ(schema_errors(schema, json::parse(write_headend(headend_with_everything()))), "");
    EXPECT_EQ(schema_errors(schema, json::parse(write_headend({}))), "");
}

TEST(HeadendSchema, HasTheKeysOfTheReaderAndNoOthers) {
    // A model is written only where it is not the one that is supported.
    Headend headend = headend_with_everything();
    headend.modules[0].model = 1;
    headend.modules[0].price = 2;
    const json written = json::parse(write_headend(headend));
    const std::pair<const char*, const char*> records[] = {
        {"module", "modules"}, {"service", "services"},           {"clone", "clones"},
        {"pid", "pids"},       {"home_channel", "home_channels"}, {"reception", "streams"}};
    EXPECT_EQ(schema_keys(schema, ""), keys_of(written));
    for (const auto& [definition, list] : records)
        EXPECT_EQ(schema_keys(schema, definition), keys_of(written.at(list).at(0))) << list;
}

TEST(HeadendSchema, DrawsTheLinesOfTheReader) {
    struct Case {
        const char* place;
        json just_right;
        json wrong;
    };
    const Case cases[] = {{"/modules/0/inputs", 65535, 65536},
                          {"/modules/0/inputs", 0, -1},
                          {"/modules/0/outputs/0", 4294967295, 4294967296},
                          {"/modules/0/controller", false, 0},
                          {"/services/0/bitrate", 4294967295, 4294967296},
                          {"/services/0/lcn", 65535, 65536},
                          {"/services/0/descramble", true, "true"},
                          {"/services/0/name", "", 1},
                          {"/pids/0/id", -2147483648, -2147483649},
                          {"/pids/0/id", 2147483647, 2147483648},
                          {"/home_channels/0/onid", 0, 0.5},
                          {"/streams/0/frequency", 4294967295, 4294967296},
                          {"/streams/0/symbol_rate", 4294967295, 4294967296},
                          {"/streams/0/net_rate", 4294967295, 4294967296},
                          {"/streams/0/delivery", "", 1},
                          {"/streams/0/polarization", "", 1},
                          {"/modules/0/label", "", 1}};
    for (const Case& one : cases) {
        json document = json::parse(write_headend(headend_with_everything()));
        document[json::json_pointer(one.place)] = one.just_right;
        EXPECT_EQ(schema_errors(schema, document), "") << one.place;
        EXPECT_NO_THROW(read_headend("a", document.dump())) << one.place;
        document[json::json_pointer(one.place)] = one.wrong;
        EXPECT_NE(schema_errors(schema, document), "") << one.place;
        EXPECT_ANY_THROW(read_headend("a", document.dump())) << one.place;
    }
}

TEST(HeadendSchema, RefusesUnknownAndMissingKeys) {
    for (const char* record :
         {"", "/modules/0", "/services/0", "/clones/0", "/pids/0", "/home_channels/0", "/streams/0"}) {
        json document = json::parse(write_headend(headend_with_everything()));
        document[json::json_pointer(record)]["unknown"] = 1;
        EXPECT_NE(schema_errors(schema, document), "") << record;
    }
    for (const char* key : {"/modules", "/modules/0/mac", "/services/0/sid", "/clones/0/lcn", "/pids/0/id",
                            "/home_channels/0/tsid", "/streams/0/onid"}) {
        const json::json_pointer place(key);
        json document = json::parse(write_headend(headend_with_everything()));
        document[place.parent_pointer()].erase(place.back());
        EXPECT_NE(schema_errors(schema, document), "") << key;
        EXPECT_ANY_THROW(read_headend("a", document.dump())) << key;
    }
}

} // namespace

} // namespace headend_schema_test
