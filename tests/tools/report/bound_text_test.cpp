// Whole reports, character by character, and the same facts as JSON.

#include "report/bound_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "made_findings.h"
#include "placement/documents.h"
#include "report/fitting.h"

namespace zarven::tool::bound_text_test {
namespace {

Bound a_bound() {
    Bound bound;
    bound.loaded = 12;
    ServiceResult impossible;
    impossible.stream = {1, 1001};
    impossible.lcn = 7;
    impossible.sid = 107;
    impossible.name = "Música\x1B";
    impossible.reason = "it is too large";
    bound.impossible = {impossible};
    bound.inputs = {5, 6, 11};
    bound.bitrate = {95997, 51500, 11};
    bound.pids = {16, 7, 11};
    bound.transcoders = {0, 0, 11};
    bound.places = {2048, 11, 11};
    bound.most = 10;
    return bound;
}

Result placed(std::size_t number, const std::string& name = "") {
    Result result;
    result.name = name;
    result.counts.placed = number;
    return result;
}

TEST(BoundText, OneOfEverything) {
    EXPECT_EQ(bound_text(a_bound(), placed(8, "Casa")), R"(Casa

12 services loaded: no arrangement places more than 10, the engine placed 8: at most 2 more

  Limit                             usable      wanted    allows
  Inputs                                 5           6        11
  Bitrate of outputs, kbit/s         95997       51500        11
  PIDs                                  16           7        11
  Transcoders                            0           0        11
  Places on outputs                   2048          11        11
  All together                                                10

No module can take: 1 service
      7  Música)"
                                                        "\uFFFD"
                                                        R"(  1/1001       it is too large
)");
}

TEST(BoundText, WhereEveryServiceIsPossibleNoneIsListed) {
    Bound bound = a_bound();
    bound.impossible.clear();
    EXPECT_EQ(bound_text(bound, placed(8)).find("No module can take"), std::string::npos);
}

TEST(BoundText, WhatWasNotAskedFor) {
    Result result = placed(8);
    result.counts.not_asked_for = 3;
    EXPECT_EQ(bound_text(a_bound(), result).find("12 services loaded, 3 not asked for: no arrangement"), 0u);
}

std::string verdict(std::size_t number) {
    const std::string text = bound_text(a_bound(), placed(number));
    const std::size_t begin = text.find("the engine placed");
    return text.substr(begin, text.find('\n', begin) - begin);
}

TEST(BoundText, UnderAtAndAboveTheBound) {
    EXPECT_EQ(verdict(9), "the engine placed 9: at most 1 more");
    EXPECT_EQ(verdict(10), "the engine placed 10: none can do better");
    EXPECT_EQ(verdict(11), "the engine placed 11: its result breaks a limit");
}

TEST(BoundText, TheAuditOfThePlacement) {
    Result result = placed(11);
    result.findings = {broken("one"), note("another \x1B")};
    const std::string text = bound_text(a_bound(), result);
    EXPECT_NE(text.find("its result breaks a limit; 1 service broken\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("Broken: 1 finding\n  one\n\n"), 0u) << text;
    EXPECT_EQ(text.substr(text.find("\n\nNotes")), "\n\nNotes: 1 finding\n  another \uFFFD\n");
    EXPECT_EQ(nlohmann::json::parse(bound_json(a_bound(), result)).at("warnings").size(), 2u);
}

std::string everything(const TextStyle& style) {
    Result result = placed(8, "Casa\xC3\xB1");
    result.findings = {broken_limit("something does not add up", "módulo"), note("so it is")};
    return bound_text(a_bound(), result, style);
}

TEST(BoundText, NoLineIsLongerThanTheTerminal) {
    expect_to_fit(everything);
}

TEST(BoundText, PlainCharactersWhereThereAreNoOthers) {
    expect_plain_characters(everything);
    EXPECT_EQ(everything({false, false, 0}).find("Casan\n"), 0u);
}

TEST(BoundText, WhatEachLimitAllowsStaysLongest) {
    const std::string text = everything({false, true, 40});
    EXPECT_NE(text.find("  Limit                   wanted  allows\n"), std::string::npos) << text;
    EXPECT_NE(text.find("  7  Música\uFFFD  1/1001  it is too large\n"), std::string::npos) << text;
}

TEST(BoundJson, TheSameFacts) {
    const auto json = nlohmann::ordered_json::parse(bound_json(a_bound(), placed(8, "Casa")));
    EXPECT_EQ(json.dump(),
              R"({"name":"Casa","loaded":12,"placed":8,"left_out":0,"neither":0,"bound":10,"limits":[)"
              R"({"limit":"inputs","capacity":5,"wanted":6,"allows":11},)"
              R"({"limit":"bitrate","capacity":95997,"wanted":51500,"allows":11},)"
              R"({"limit":"pids","capacity":16,"wanted":7,"allows":11},)"
              R"({"limit":"transcoders","capacity":0,"wanted":0,"allows":11},)"
              R"({"limit":"places","capacity":2048,"wanted":11,"allows":11}],)"
              R"("impossible":[{"lcn":7,"name":"Música\u001b","onid":1,"tsid":1001,"sid":107,)"
              R"("reason":"it is too large"}],"warnings":[],"findings":[]})");
    EXPECT_EQ(nlohmann::json::parse(bound_json(Bound(), placed(0))).count("name"), 0u);
}

} // namespace
} // namespace zarven::tool::bound_text_test
