// What the JSON report tells comes back whole, and what is no report is refused with its place.

#include "placement/result_json.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "base/streams.h"
#include "failure_message.h"
#include "headend/headend_json.h"
#include "placement/audit/reserve.h"
#include "placement/running/engine_run.h"
#include "report/result_fixture.h"

namespace zarven::tool::result_reading_test {
namespace {

using nlohmann::json;

/// The report with one of everything, to be changed.
json report() {
    return json::parse(result_json(result_with_everything()));
}

Result read(const json& document) {
    return read_result("f", document.dump());
}

std::string complaint(const json& document) {
    return failure_message([&] { read(document); });
}

TEST(ResultReading, OneOfEverythingComesBack) {
    const std::string text = result_json(result_with_everything());
    EXPECT_EQ(result_json(read_result("f", text)), text);
}

TEST(ResultReading, AnEmptyResultComesBack) {
    const std::string text = result_json(Result());
    EXPECT_EQ(result_json(read_result("f", text)), text);
}

TEST(ResultReading, TheExamplesComeBack) {
    for (const std::string name : {"small", "medium"}) {
        const std::string file = RECALCULO_EXAMPLES "/" + name + ".json";
        const Headend headend = read_headend(file, read_text(file));
        EngineRun run = load_engine(headend, file);
        run_engine(run, file);
        const std::string text = result_json(result_of(run, headend.name));
        EXPECT_EQ(result_json(read_result(file, text)), text) << name;
    }
}

TEST(ResultReading, EveryMemberIsReadIntoItsPlace) {
    const Result result = read(report());
    EXPECT_EQ(result.name, "Casa");
    const ModuleResult& module = result.modules.at(0);
    EXPECT_EQ(module.mac, "M1");
    EXPECT_EQ(module.pids_counted, 5u);
    EXPECT_EQ(module.sd_transcoders.used, 1);
    EXPECT_EQ(module.sd_transcoders.max, 2);
    EXPECT_EQ(module.inputs.at(0).stream.tsid, 1001);
    EXPECT_EQ(module.outputs.at(1).bitrate, 40000u);
    const ServiceResult& service = module.outputs.at(1).services.at(0);
    EXPECT_EQ(service.lcn, 12);
    EXPECT_EQ(service.osid, 212);
    EXPECT_EQ(service.output_name, "Mar");
    EXPECT_EQ(service.outputs, (std::vector<std::uint32_t>{1, 10}));
    EXPECT_TRUE(service.is_hd && service.is_scrambled && service.is_transcoded);
    EXPECT_FALSE(service.is_clone);
    EXPECT_EQ(result.left_out.at(0).stream.tsid, 1002);
    EXPECT_EQ(result.clones_waiting.at(0).parent_sid, 105);
    EXPECT_EQ(result.counts.loaded, 6u);
    EXPECT_EQ(result.counts.placed, 4u);
    EXPECT_EQ(result.counts.neither, 1u);
    EXPECT_EQ(result.neither.at(0).lcn, 11);
    ASSERT_EQ(result.findings.size(), 3u);
    EXPECT_EQ(text_of(result.findings[0]), "LCN 9: on no input");
    EXPECT_TRUE(result.findings[0].is_broken);
    EXPECT_FALSE(result.findings[0].is_limit);
    EXPECT_TRUE(result.findings[1].is_limit);
    EXPECT_EQ(result.findings[1].macs, std::vector<std::string>{"M1"});
    EXPECT_FALSE(result.findings[2].is_broken);
}

TEST(ResultReading, AResultOfTheFirstVersionIsRead) {
    json document = report();
    document.erase("neither");
    document["summary"].erase("neither");
    const Result result = read(document);
    EXPECT_TRUE(result.neither.empty());
    EXPECT_EQ(result.counts.neither, 0u);
}

TEST(ResultReading, WhatAnEarlierVersionDidNotTellApartMayBeBroken) {
    json document = report();
    document.erase("findings");
    const Result result = read(document);
    ASSERT_EQ(result.findings.size(), 3u);
    EXPECT_EQ(texts_of(result.findings), document["warnings"].get<std::vector<std::string>>());
    EXPECT_EQ(broken_in(result).all(), 3u);
}

TEST(ResultReading, AReasonMayStandThere) {
    json document = report();
    document["left_out"][0]["services"][0].erase("reason");
    EXPECT_EQ(read(document).left_out.at(0).services.at(0).reason, "");
    document["left_out"][0]["services"][0]["reason"] = "no room";
    EXPECT_EQ(read(document).left_out.at(0).services.at(0).reason, "no room");
}

TEST(ResultReading, MustsAreToldWhereAnyAre) {
    Result result = result_with_everything();
    EXPECT_EQ(result_json(result).find("musts"), std::string::npos);
    EXPECT_EQ(read_result("f", result_json(result)).counts.musts, 0u);
    result.counts.musts = 3;
    result.counts.musts_placed = 2;
    const Result read = read_result("f", result_json(result));
    EXPECT_EQ(read.counts.musts, 3u);
    EXPECT_EQ(read.counts.musts_placed, 2u);
}

TEST(ResultReading, RadioIsToldWhereItIs) {
    Result result;
    result.clones_waiting.resize(2);
    result.clones_waiting[1].is_radio = true;
    const Result again = read_result("f", result_json(result));
    EXPECT_FALSE(again.clones_waiting.at(0).is_radio);
    EXPECT_TRUE(again.clones_waiting.at(1).is_radio);
}

TEST(ResultReading, UnknownMembersArePassedOver) {
    json document = report();
    const std::string before = result_json(read(document));
    document["strategies"] = {1, 2};
    document["modules"][0]["colour"] = "red";
    document["left_out"][0]["services"][0]["colour"] = nullptr;
    document["summary"]["colour"] = {};
    EXPECT_EQ(result_json(read(document)), before);
}

TEST(ResultReading, AHeadendIsRefusedByName) {
    const std::string expected = "f: top level: found a head-end, expected a result, which `recalculo run "
                                 "HEADEND --json` writes";
    EXPECT_EQ(complaint(json::parse(R"({"modules": [], "services": []})")), expected);
    EXPECT_EQ(complaint(json::parse(R"({"modules": []})")), expected);
}

TEST(ResultReading, WhatIsNoResultIsRefused) {
    EXPECT_EQ(complaint(json::array()), "f: top level: found a list of 0 entries, expected an object");
    EXPECT_EQ(complaint(json::object()), "f: top level: found no \"modules\", expected a list");
    EXPECT_EQ(complaint(nullptr), "f: top level: found null, expected an object");
}

TEST(ResultReading, EveryRequiredMemberIsMissed) {
    const json whole = report().flatten();
    for (const auto& member : whole.items()) {
        const json::json_pointer place(member.key());
        // What a result says of its causes and cautions is counted anew, and so is what its inputs carry.
        const bool follows =
            place == json::json_pointer("/cautions") ||
            (place.back() == "bitrate" && place.parent_pointer().parent_pointer().back() == "inputs");
        const bool may_be_absent = follows || place.back() == "parent_sid" || place.back() == "reason" ||
                                   place.back() == "cause" || place.back() == "nearest" ||
                                   place.back() == "label" || place.to_string().rfind("/causes/", 0) == 0 ||
                                   place == json::json_pointer("/name") || place.back() == "neither" ||
                                   place.back() == "limit" || place.back() == "subject" ||
                                   place.back().find_first_not_of("0123456789") == std::string::npos;
        json document = report();
        if (may_be_absent)
            continue;
        document.at(place.parent_pointer()).erase(place.back());
        EXPECT_NE(complaint(document).find("found no \"" + place.back() + "\""), std::string::npos)
            << member.key();
    }
}

TEST(ResultReading, AWrongValueIsToldWithItsPlace) {
    json document = report();
    document["modules"][0]["outputs"][1]["services"][0]["lcn"] = 65536;
    EXPECT_EQ(complaint(document), "f: /modules/0/outputs/1/services/0/lcn: found 65536, expected a whole "
                                   "number from 0 to 65535");
    document = report();
    document["summary"] = 3;
    EXPECT_EQ(complaint(document), "f: /summary: found 3, expected an object");
    document = report();
    document["modules"][1]["hd_transcoders"] = nullptr;
    EXPECT_EQ(complaint(document), "f: /modules/1/hd_transcoders: found null, expected an object");
}

TEST(ResultReading, LabelsAndPlacesComeBack) {
    Result result = with_labels(result_with_everything());
    result.streams[0].symbol_rate = 22'000'000;
    result.streams[0].net_rate = 33790;
    result.streams[0].delivery = "DVB-S";
    result.modules[0].inputs[0].net_rate = 33790;
    set_reserve(result, {250});
    const std::string text = result_json(result);
    const Result again = read_result("f", text);
    EXPECT_EQ(again.modules.at(0).label, "Rack 1, slot 3");
    EXPECT_EQ(again.modules.at(1).label, "");
    EXPECT_EQ(described({1, 1001}, by_stream(again.streams)), "1/1001 (19.2E 12187.5 MHz H 22000 kS/s)");
    EXPECT_EQ(again.streams.at(0).net_rate, 33790u);
    EXPECT_EQ(again.streams.at(0).delivery, "DVB-S");
    EXPECT_EQ(again.modules.at(0).inputs.at(0).net_rate, 33790u);
    EXPECT_EQ(again.modules.at(0).outputs.at(0).reserve, 950u);
    EXPECT_EQ(described({1, 1002}, by_stream(again.streams)), "1/1002 (514 MHz)");
    EXPECT_EQ(described({2, 7}, by_stream(again.streams)), "2/7");
    EXPECT_EQ(result_json(again), text);
}

} // namespace
} // namespace zarven::tool::result_reading_test
