// What is read of the analysis of a stream.

#include "measured/analysis_json.h"

#include <gtest/gtest.h>

#include "failure_message.h"

namespace zarven::tool::analysis_json_test {
namespace {

/// Of one service, with what else the service and its PIDs have.
Measurement with_service(const std::string& members, const std::string& pids = "") {
    return read_analysis("x",
                         R"({"ts": {"id": 7, "bitrate": 10000, "duration": 12}, "services": [{"id": 5, )" +
                             members + R"(}], "pids": [)" + pids + "]}");
}

std::optional<ChannelKind> kind(const std::string& members, const std::string& pids = "") {
    return with_service(members, pids).services.at(0).kind;
}

std::string picture(const std::string& description) {
    return R"({"id": 9, "video": true, "services": [5], "description": ")" + description + "\"}";
}

TEST(AnalysisJson, TellsAServiceInAnyOrderOfKeys) {
    const Measurement look = read_analysis("x", R"({
        "unknown": [{"a": null}], "tables": [],
        "pids": [{"services": [5], "ecm": true, "bitrate": 3, "id": 90, "more": {}}],
        "services": [{"is-scrambled": true, "components": {"scrambled": 2, "clear": 1, "total": 3},
                      "bitrate": 4200500, "name": "Uno", "original-network-id": 1, "tsid": 8, "id": 5,
                      "further": 1}],
        "ts": {"pids": {"global": {"bitrate": 1000.5}}, "duration": 12.5, "bitrate": 38000000}})");
    ASSERT_EQ(look.services.size(), 1u);
    const MeasuredService& service = look.services[0];
    EXPECT_EQ(service.onid, 1);
    EXPECT_EQ(service.tsid, 8);
    EXPECT_EQ(service.sid, 5);
    EXPECT_EQ(service.rate, 4200500);
    EXPECT_EQ(service.name, "Uno");
    EXPECT_FALSE(service.is_name_unseen);
    EXPECT_TRUE(service.is_scrambled);
    EXPECT_TRUE(service.tells_scrambling);
    EXPECT_EQ(service.scrambled_pids, 2);
    EXPECT_TRUE(service.has_ecms);
    EXPECT_EQ(look.seconds, 12.5);
    EXPECT_EQ(look.room, 38000000 - 1000.5);
}

TEST(AnalysisJson, AServiceHasTheTsidOfItsStreamUnlessItTellsOne) {
    EXPECT_EQ(with_service(R"("bitrate": 1)").services.at(0).tsid, 7);
    EXPECT_EQ(with_service(R"("tsid": 8)").services.at(0).tsid, 8);
    EXPECT_EQ(with_service(R"("tsid": 8)").services.at(0).onid, std::nullopt);
    EXPECT_EQ(failure_message([] { read_analysis("x", R"({"ts": {}, "services": [{"id": 5}]})"); }),
              "x: /services/0: found no \"tsid\", expected a whole number from 0 to 65535");
}

TEST(AnalysisJson, ANameThatWasNotSeenIsNone) {
    const MeasuredService service = with_service("\"name\": \"(unknown)\"").services.at(0);
    EXPECT_EQ(service.name, "");
    EXPECT_TRUE(service.is_name_unseen);
    EXPECT_FALSE(with_service(R"("bitrate": 1)").services.at(0).is_name_unseen);
}

TEST(AnalysisJson, AStreamThatIsAllGlobalTellsNoRoom) {
    const auto room = [](const std::string& bitrate) {
        return read_analysis("x", R"({"services": [], "ts": {"bitrate": )" + bitrate +
                                      R"(, "pids": {"global": {"bitrate": 100}}}})")
            .room;
    };
    EXPECT_EQ(room("99"), std::nullopt);
    EXPECT_EQ(room("100"), std::nullopt);
    EXPECT_EQ(room("101"), 1);
}

TEST(AnalysisJson, TheSizeCountsMoreThanTheType) {
    EXPECT_EQ(kind(R"("type": 1)", picture("AVC video (1920x1080, high profile)")), ChannelKind::hd);
    EXPECT_EQ(kind(R"("type": 25)", picture("AVC video (720x576)")), ChannelKind::sd);
    EXPECT_EQ(kind(R"("type": 31)", picture("HEVC video (3840x2160)")), ChannelKind::uhd);
    EXPECT_EQ(kind(R"("type": 1)", picture("HEVC video (main 10 profile)")), ChannelKind::hd);
}

TEST(AnalysisJson, OfSeveralPicturesTheGreatestCounts) {
    const std::string hd = picture("AVC video (1920x1080)");
    const std::string sd = picture("AVC video (720x576)");
    const std::string unknown = picture("AVC video");
    EXPECT_EQ(kind(R"("type": 1)", hd + "," + sd), ChannelKind::hd);
    EXPECT_EQ(kind(R"("type": 1)", sd + "," + hd), ChannelKind::hd);
    EXPECT_EQ(kind(R"("type": 1)", hd + "," + unknown), ChannelKind::hd);
}

TEST(AnalysisJson, WhatIsNotToldIsNothing) {
    const Measurement look = read_analysis("x", R"({"ts": {"id": 7}, "services": [{"id": 5}]})");
    EXPECT_EQ(look.seconds, 0);
    EXPECT_EQ(look.room, std::nullopt);
    EXPECT_EQ(look.services.at(0).rate, 0);
    EXPECT_FALSE(look.services.at(0).tells_scrambling);
}

TEST(AnalysisJson, EitherOfTwoMembersTellsScrambling) {
    EXPECT_TRUE(with_service(R"("is-scrambled": false)").services.at(0).tells_scrambling);
    EXPECT_TRUE(with_service(R"("components": {"scrambled": 0})").services.at(0).tells_scrambling);
}

TEST(AnalysisJson, TheTypeTellsHdAndRadioButNotSd) {
    for (const int type : {0, 1, 3, 6, 8, 9, 11, 16, 18, 22, 24, 33})
        EXPECT_EQ(kind("\"type\": " + std::to_string(type)), std::nullopt) << type;
    for (const int type : {17, 25, 26, 32})
        EXPECT_EQ(kind("\"type\": " + std::to_string(type)), ChannelKind::hd) << type;
    for (const int type : {2, 7, 10})
        EXPECT_EQ(kind("\"type\": " + std::to_string(type)), ChannelKind::radio) << type;
}

TEST(AnalysisJson, APidIsOfItsServiceWhicheverTellsIt) {
    const std::string size = "AVC video (1280x720)";
    const std::string pid = R"({"id": 9, "video": true, "description": ")" + size + "\"}";
    EXPECT_EQ(kind("\"type\": 1, \"pids\": [9]", pid), ChannelKind::hd);
    EXPECT_EQ(kind("\"type\": 1, \"pids\": [8]", pid), std::nullopt);
    const std::string of_another =
        R"({"id": 9, "video": true, "services": [6], "description": ")" + size + "\"}";
    EXPECT_EQ(kind("\"type\": 1", of_another), std::nullopt);
}

TEST(AnalysisJson, DamageIsToldWithItsPlace) {
    EXPECT_EQ(failure_message([] { with_service(R"("bitrate": "fast")"); }),
              "x: /services/0/bitrate: found \"fast\", expected a number from 0 to 1000000000000");
    EXPECT_EQ(failure_message([] { with_service(R"("bitrate": -1)"); }),
              "x: /services/0/bitrate: found -1, expected a number from 0 to 1000000000000");
    EXPECT_EQ(failure_message([] { read_analysis("x", R"({"ts": [], "services": []})"); }),
              "x: /ts: found a list of 0 entries, expected an object");
    EXPECT_EQ(failure_message([] { read_analysis("x", R"({"modules": []})"); }),
              "x: top level: found no \"ts\" and \"services\", expected the analysis of a stream");
    EXPECT_NE(failure_message([] { read_analysis("x", R"({"ts": {)"); }).find("x: line 1"),
              std::string::npos);
}

} // namespace
} // namespace zarven::tool::analysis_json_test
