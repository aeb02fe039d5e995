// The JSON form of a head-end: defaults, limits, every kind of complaint word for word, and writing.

#include "headend/headend_json.h"

#include <gtest/gtest.h>

#include "base/streams.h"
#include "failure_message.h"

namespace zarven::tool::headend_json_test {
namespace {

const std::string module_text = R"({"mac": "M", "inputs": 2, "outputs": [38000], "pids_max": 8})";
const std::string service_text = R"({"lcn": 5, "name": "Canal", "onid": 1, "tsid": 2, "sid": 3})";

/// A head-end of one module and the given members.
std::string headend_with(const std::string& members) {
    return "{\"modules\": [" + module_text + "], " + members + "}";
}

/// An object text with a member more.
std::string plus(const std::string& object, const std::string& member) {
    return object.substr(0, object.size() - 1) + ", " + member + "}";
}

Service read_service(const std::string& text) {
    return read_headend("f", headend_with("\"services\": [" + text + "]")).services.at(0);
}

std::string complaint(const std::string& text) {
    return failure_message([&] { read_headend("headend.json", text); });
}

std::string service_complaint(const std::string& text) {
    return complaint(headend_with("\"services\": [" + text + "]"));
}

TEST(ReadHeadend, AModuleWithItsDefaults) {
    const Headend headend = read_headend("f", "{\"modules\": [" + module_text + "]}");
    ASSERT_EQ(headend.modules.size(), 1u);
    const Module& module = headend.modules[0];
    EXPECT_EQ(module.mac, "M");
    EXPECT_EQ(module.model, 3);
    EXPECT_FALSE(module.controller);
    EXPECT_EQ(module.inputs, 2);
    EXPECT_EQ(module.outputs, std::vector<std::uint32_t>{38000});
    EXPECT_EQ(module.pids_max, 8);
    EXPECT_EQ(module.sd_transcoders, 0);
    EXPECT_EQ(module.hd_transcoders, 0);
    EXPECT_EQ(module.aux_transcoders, 0);
    EXPECT_TRUE(headend.services.empty());
}

TEST(ReadHeadend, AModuleWithEveryMember) {
    const Module module = read_headend("f", R"({"name": "Casa", "modules": [{"mac": "M", "model": 65535,
        "controller": true, "inputs": 65535, "outputs": [0, 4294967295], "pids_max": 65535, "sd_transcoders": 1,
        "hd_transcoders": 2, "aux_transcoders": 3}]})")
                              .modules.at(0);
    EXPECT_EQ(module.model, 65535);
    EXPECT_TRUE(module.controller);
    EXPECT_EQ(module.inputs, 65535);
    EXPECT_EQ(module.outputs, (std::vector<std::uint32_t>{0, 4294967295}));
    EXPECT_EQ(module.pids_max, 65535);
    EXPECT_EQ(module.sd_transcoders, 1);
    EXPECT_EQ(module.hd_transcoders, 2);
    EXPECT_EQ(module.aux_transcoders, 3);
}

TEST(ReadHeadend, AServiceWithItsDefaults) {
    const Service service = read_service(service_text);
    EXPECT_EQ(service.lcn, 5);
    EXPECT_EQ(service.name, "Canal");
    EXPECT_EQ(service.output_name, "Canal");
    EXPECT_EQ(service.onid, 1);
    EXPECT_EQ(service.tsid, 2);
    EXPECT_EQ(service.sid, 3);
    EXPECT_EQ(service.osid, 3);
    EXPECT_EQ(service.bitrate, 3500u);
    EXPECT_EQ(service.video_bitrate, 3500u);
    EXPECT_EQ(service.type, 1);
    EXPECT_EQ(service.ca_pids_max, 0);
    EXPECT_EQ(service.descramble, 0);
    EXPECT_EQ(service.value, 1);
    EXPECT_FALSE(service.must);
    EXPECT_FALSE(service.measured);
    EXPECT_EQ(service.mean_bitrate, 0u);
    EXPECT_TRUE(service.ask);
}

TEST(ReadHeadend, AServiceWithEveryMember) {
    const Service service = read_service(R"({"lcn": 1, "name": "a", "output_name": "b", "onid": 2, "tsid": 3,
        "sid": 4, "osid": 5, "type": 6, "video_format": 7, "bitrate": 4294967295, "video_bitrate": 9,
        "descramble": 10, "transcoding": 11, "forced_name": 12, "simulcast_lcn": 13, "sat_id": 14, "reserved1": 15,
        "reserved2": 16, "reserved3": 17, "ca_pids": 18, "ca_pids_max": 19, "value": 1000, "must": true, "ask": false,
        "measured": true, "mean_bitrate": 4294967295})");
    EXPECT_EQ(service.lcn, 1);
    EXPECT_EQ(service.name, "a");
    EXPECT_EQ(service.output_name, "b");
    EXPECT_EQ(service.onid, 2);
    EXPECT_EQ(service.tsid, 3);
    EXPECT_EQ(service.sid, 4);
    EXPECT_EQ(service.osid, 5);
    EXPECT_EQ(service.type, 6);
    EXPECT_EQ(service.video_format, 7);
    EXPECT_EQ(service.bitrate, 4294967295u);
    EXPECT_EQ(service.video_bitrate, 9u);
    EXPECT_EQ(service.descramble, 10);
    EXPECT_EQ(service.transcoding, 11);
    EXPECT_EQ(service.forced_name, 12);
    EXPECT_EQ(service.simulcast_lcn, 13);
    EXPECT_EQ(service.sat_id, 14);
    EXPECT_EQ(service.reserved1, 15);
    EXPECT_EQ(service.reserved2, 16);
    EXPECT_EQ(service.reserved3, 17);
    EXPECT_EQ(service.ca_pids, 18);
    EXPECT_EQ(service.ca_pids_max, 19);
    EXPECT_EQ(service.value, 1000);
    EXPECT_TRUE(service.must);
    EXPECT_TRUE(service.measured);
    EXPECT_EQ(service.mean_bitrate, 4294967295u);
    EXPECT_FALSE(service.ask);
}

TEST(ReadHeadend, AValueHasALimit) {
    EXPECT_EQ(read_service(plus(service_text, R"("value": 0)")).value, 0);
    for (const char* value : {"1001", "-1", "65537", "0.5"})
        EXPECT_EQ(service_complaint(plus(service_text, std::string(R"("value": )") + value)),
                  std::string("headend.json: /services/0/value: found ") + value +
                      ", expected a whole number from 0 to 1000");
    EXPECT_EQ(service_complaint(plus(service_text, R"("ask": 0)")),
              "headend.json: /services/0/ask: found 0, expected true or false");
}

TEST(ReadHeadend, DefaultsFollowOtherMembers) {
    const Service hd = read_service(plus(service_text, R"("video_format": 4, "ca_pids": 3)"));
    EXPECT_EQ(hd.bitrate, 8000u);
    EXPECT_EQ(hd.video_bitrate, 8000u);
    EXPECT_EQ(hd.ca_pids_max, 3);
    EXPECT_EQ(read_service(plus(service_text, R"("bitrate": 100)")).video_bitrate, 100u);
}

TEST(ReadHeadend, FlagsAreNumbersOrTrueAndFalse) {
    EXPECT_EQ(read_service(plus(service_text, R"("descramble": true)")).descramble, 1);
    EXPECT_EQ(read_service(plus(service_text, R"("descramble": false)")).descramble, 0);
    EXPECT_EQ(read_service(plus(service_text, R"("transcoding": true)")).transcoding, 1);
    EXPECT_EQ(read_service(plus(service_text, R"("forced_name": true)")).forced_name, 1);
    EXPECT_EQ(
        service_complaint(plus(service_text, R"("descramble": "yes")")),
        "headend.json: /services/0/descramble: found \"yes\", expected true, false or a whole number from 0 to "
        "65535");
    EXPECT_EQ(
        service_complaint(plus(service_text, R"("descramble": 65536)")),
        "headend.json: /services/0/descramble: found 65536, expected true, false or a whole number from 0 to "
        "65535");
}

TEST(ReadHeadend, ClonesPidsAndHomeChannels) {
    const Headend headend = read_headend("f", headend_with("\"clones\": [" + service_text + ", " +
                                                           plus(service_text, R"("parent_sid": 9)") + R"(],
            "pids": [{"id": -2147483648, "sid": 3}, {"id": 2147483647, "sid": 3, "audio": "spa", "order": 1,
            "reserved1": 2, "reserved2": 3, "reserved3": 4}], "home_channels": [{"onid": 1, "tsid": 2}])"));
    ASSERT_EQ(headend.clones.size(), 2u);
    EXPECT_EQ(headend.clones[0].lcn, 5);
    EXPECT_EQ(headend.clones[0].video_bitrate, 3500u);
    EXPECT_EQ(headend.clones[0].parent_sid, 0);
    EXPECT_EQ(headend.clones[1].parent_sid, 9);
    ASSERT_EQ(headend.pids.size(), 2u);
    EXPECT_EQ(headend.pids[0].id, -2147483647 - 1);
    EXPECT_EQ(headend.pids[1].id, 2147483647);
    EXPECT_EQ(headend.pids[1].audio, "spa");
    EXPECT_EQ(headend.pids[1].order, 1);
    EXPECT_EQ(headend.pids[1].reserved3, 4);
    ASSERT_EQ(headend.home_channels.size(), 1u);
    EXPECT_EQ(headend.home_channels[0].tsid, 2);
}

TEST(ReadHeadend, ClonesTakeNoBitrateOfTheirOwn) {
    EXPECT_EQ(complaint(headend_with("\"clones\": [" + plus(service_text, R"("bitrate": 1)") + "]")),
              "headend.json: /clones/0: found the unknown key \"bitrate\", expected a known one, such as "
              "\"video_bitrate\"");
}

TEST(ReadHeadend, TheTopLevelIsAnObject) {
    EXPECT_EQ(complaint("[]"), "headend.json: top level: found a list of 0 entries, expected an object");
    EXPECT_EQ(complaint("null"), "headend.json: top level: found null, expected an object");
}

TEST(ReadHeadend, ModulesAreRequired) {
    EXPECT_EQ(complaint("{}"), "headend.json: top level: found no \"modules\", expected a list");
    EXPECT_EQ(complaint(R"({"modules": {}})"), "headend.json: /modules: found an object, expected a list");
    EXPECT_EQ(complaint(R"({"modules": [7]})"), "headend.json: /modules/0: found 7, expected an object");
}

TEST(ReadHeadend, ARequiredMemberThatIsMissing) {
    EXPECT_EQ(service_complaint(R"({"name": "a", "onid": 1, "tsid": 2, "sid": 3})"),
              "headend.json: /services/0: found no \"lcn\", expected a whole number from 0 to 65535");
    EXPECT_EQ(service_complaint(R"({"lcn": 1, "onid": 1, "tsid": 2, "sid": 3})"),
              "headend.json: /services/0: found no \"name\", expected text");
    EXPECT_EQ(complaint(R"({"modules": [{"mac": "M", "inputs": 1, "pids_max": 1}]})"),
              "headend.json: /modules/0: found no \"outputs\", expected a list");
}

TEST(ReadHeadend, AnUnknownKeyComesWithTheNearestKnownOne) {
    EXPECT_EQ(
        service_complaint(R"({"lnc": 1, "name": "a", "onid": 1, "tsid": 2, "sid": 3})"),
        "headend.json: /services/0: found the unknown key \"lnc\", expected a known one, such as \"lcn\"");
    EXPECT_EQ(
        complaint(R"({"module": []})"),
        "headend.json: top level: found the unknown key \"module\", expected a known one, such as \"modules\"");
    const std::string shortened = "\"n\uFFFD" + std::string(58, 'k') + "…\", expected";
    EXPECT_NE(complaint("{\"n\\u0000" + std::string(60, 'k') + "\": 1}").find(shortened), std::string::npos);
}

TEST(ReadHeadend, NumbersHaveTheirLimits) {
    const auto with_lcn = [](const std::string& lcn) {
        return R"({"name": "a", "onid": 1, "tsid": 2, "sid": 3, "lcn": )" + lcn + "}";
    };
    EXPECT_EQ(read_service(with_lcn("0")).lcn, 0);
    EXPECT_EQ(read_service(with_lcn("65535")).lcn, 65535);
    // Whole numbers to the schema, too.
    EXPECT_EQ(read_service(with_lcn("1.0")).lcn, 1);
    EXPECT_EQ(read_service(with_lcn("65535.0")).lcn, 65535);
    EXPECT_EQ(read_service(with_lcn("1e3")).lcn, 1000);
    EXPECT_EQ(read_service(with_lcn("-0.0")).lcn, 0);
    const std::string expected = ", expected a whole number from 0 to 65535";
    for (const std::string found :
         {"65536", "-1", "1.5", "65536.0", "-1.0", "1e+300", "true", "null", "\"1\"", "18446744073709551615"})
        EXPECT_EQ(service_complaint(with_lcn(found)),
                  "headend.json: /services/0/lcn: found " + found + expected);
}

TEST(ReadHeadend, WideNumbersHaveTheirLimits) {
    EXPECT_EQ(
        service_complaint(plus(service_text, "\"bitrate\": 4294967296")),
        "headend.json: /services/0/bitrate: found 4294967296, expected a whole number from 0 to 4294967295");
    EXPECT_EQ(
        complaint(headend_with(R"("pids": [{"id": -2147483649, "sid": 3}])")),
        "headend.json: /pids/0/id: found -2147483649, expected a whole number from -2147483648 to 2147483647");
    EXPECT_EQ(
        complaint(R"({"modules": [{"mac": "M", "inputs": 1, "outputs": [1, "abc"], "pids_max": 1}]})"),
        "headend.json: /modules/0/outputs/1: found \"abc\", expected a whole number from 0 to 4294967295");
}

TEST(ReadHeadend, AModuleHasAtMostAsManyOutputsAsCanBeNumbered) {
    const auto with_outputs = [](std::size_t number) {
        std::string list = "1";
        for (std::size_t i = 1; i < number; ++i)
            list += ",1";
        return R"({"modules": [{"mac": "M", "inputs": 1, "pids_max": 1, "outputs": [)" + list + "]}]}";
    };
    EXPECT_EQ(complaint(with_outputs(65535)), "(no failure)");
    EXPECT_EQ(
        complaint(with_outputs(65536)),
        "headend.json: /modules/0/outputs: found a list of 65536 entries, expected a list of at most 65535");
}

TEST(ReadHeadend, OtherTypes) {
    EXPECT_EQ(service_complaint(plus(service_text, "\"output_name\": 5")),
              "headend.json: /services/0/output_name: found 5, expected text");
    EXPECT_EQ(
        complaint(
            R"({"modules": [{"mac": "M", "controller": 1, "inputs": 1, "outputs": [], "pids_max": 1}]})"),
        "headend.json: /modules/0/controller: found 1, expected true or false");
}

TEST(ReadHeadend, LongFindingsAreCutBetweenCharacters) {
    std::string name = "a";
    for (int i = 0; i < 100; ++i)
        name += "ñ";
    EXPECT_EQ(service_complaint("\"" + name + "\""),
              "headend.json: /services/0: found \"" + name.substr(0, 59) + "…, expected an object");
}

TEST(WriteHeadend, OneLinePerRecordWithoutDefaults) {
    const std::string text = R"({
  "name": "Casa \"Música\"",
  "modules": [
    { "mac": "M1", "controller": true, "inputs": 2, "outputs": [38000, 24000], "pids_max": 8, "aux_transcoders": 1 },
    { "mac": "M2", "model": 5, "inputs": 0, "outputs": [], "pids_max": 0 }
  ],
  "services": [
    { "lcn": 5, "name": "Canal", "onid": 1, "tsid": 2, "sid": 3, "bitrate": 3500 },
    { "lcn": 6, "name": "Canal HD", "output_name": "Canal", "onid": 1, "tsid": 2, "sid": 4, "video_format": 4, "bitrate": 8000, "descramble": 1, "ca_pids": 3 }
  ],
  "clones": [
    { "lcn": 5, "name": "Canal", "onid": 1, "tsid": 2, "sid": 3, "parent_sid": 7 }
  ],
  "pids": [
    { "id": -1, "sid": 3, "audio": "spa" }
  ],
  "home_channels": [
    { "onid": 1, "tsid": 2 }
  ]
}
)";
    EXPECT_EQ(write_headend(read_headend("f", text)), text);
}

TEST(WriteHeadend, EmptyListsStayAwaySaveTheModules) {
    EXPECT_EQ(write_headend(Headend()), "{\n  \"modules\": []\n}\n");
}

TEST(Examples, AllAreHeadendsAndSurviveWriting) {
    for (const char* name : {"small", "medium", "modules-10", "modules-16", "modules-8-tight"}) {
        const std::string path = std::string(RECALCULO_EXAMPLES) + "/" + name + ".json";
        const std::string written = write_headend(read_headend(path, read_text(path)));
        EXPECT_EQ(write_headend(read_headend(path, written)), written);
    }
}

} // namespace
} // namespace zarven::tool::headend_json_test
