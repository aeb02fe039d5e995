// `recalculo explain`.

#include "commands/command_line.h"

#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool::explain_test {
namespace {

using nlohmann::json;

const std::string what_if =
    "\nThese are the figures of the placement as it is. With a limit changed the engine places all anew: try it with --set.\n";
const std::string lejano_explained =
    "LCN 41 \"Canal Lejano\" · stream 3/5 · 3500 kbit/s\n"
    "  No input is free for stream 3/5: all 5 inputs on 3 modules receive other streams.\n";

TEST_F(CommandLine, ExplainTellsWhyAServiceIsLeftOut) {
    const Outcome outcome = run("explain " + small + " --service 41");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(
        outcome.out,
        lejano_explained +
            "    Module             Answer         Inputs       Output                 kbit/s        PIDs\n"
            "    02:00:00:00:00:01  no input free  0 of 2 free       1  33600 + 3500 of 38000  3 + 0 of 8\n"
            "    02:00:00:00:00:02  no input free  0 of 2 free       1  14000 + 3500 of 38000  4 + 0 of 8\n"
            "    02:00:00:00:00:03  no input free  0 of 1 free       1    400 + 3500 of 20000  0 + 0 of 0\n" +
            what_if);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(CommandLine, ExplainWithoutAServiceExplainsAllThatAreLeftOut) {
    EXPECT_EQ(run("explain -", read(small)).out,
              "Why 1 of 12 services is not placed\n"
              "     1  no input is free: all 5 inputs on 3 modules carry other streams\n"
              "  Of the limits, this one raised alone helps most: number of inputs from 1 to 2 on module "
              "02:00:00:00:00:03, 1 more placed; --set 'modules[2].inputs=2' (8 limits tried).\n\n" +
                  lejano_explained + "    3 modules have no input free\n" + what_if);
    EXPECT_EQ(run("explain -", modules_text).out, "No service is left out.\n");
}

TEST_F(CommandLine, ExplainTakesSeveralServicesEachOnce) {
    const Outcome outcome = run("explain --service 41 --service 11@1/1002 --service 41@3/5 " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out.substr(0, lejano_explained.size()), lejano_explained);
    const std::size_t second = outcome.out.find("\n\nLCN 11 \"Canal Uno HD\"");
    EXPECT_NE(second, std::string::npos);
    EXPECT_EQ(outcome.out.find("\nLCN ", second + 2), std::string::npos);
}

TEST_F(CommandLine, ExplainAnswersAsJson) {
    const Outcome outcome = run("explain --json " + small + " --service 41 --service 11");
    EXPECT_EQ(outcome.code, 0);
    const json answer = json::parse(outcome.out);
    EXPECT_EQ(answer.at("name"), "Small head-end");
    ASSERT_EQ(answer.at("services").size(), 2u);
    EXPECT_EQ(answer.at("services").at(0).at("standing"), "left_out");
    EXPECT_EQ(answer.at("services").at(0).at("modules").size(), 3u);
    EXPECT_EQ(answer.at("services").at(1).at("standing"), "placed");
}

TEST_F(CommandLine, ExplainAgreesWithTheReport) {
    const json left_out = json::parse(run("run --json " + medium).out).at("left_out");
    const json explained = json::parse(run("explain --json " + medium).out).at("services");
    EXPECT_EQ(explained.at(0).at("sentence"), left_out.at(0).at("services").at(0).at("reason"));
}

TEST_F(CommandLine, ExplainOfAServiceThatIsNotThere) {
    expect_refused(run("explain " + small + " --service 26"),
                   small + ": --service 26: no service has the LCN 26; the nearest are 22 and 31");
    expect_refused(run("explain - --service 41@1/2", read(small)),
                   "standard input: --service 41@1/2: no service of stream 1/2 has the LCN 41; it is in "
                   "stream 3/5");
    expect_refused(run("explain none --service ''"),
                   "--service \"\": found no LCN and no name, expected one, as in 25 or 25@1/1007");
    expect_refused(run("explain " + small + " --service lejano"),
                   small +
                       ": --service lejano: no service is called \"lejano\"; did you mean \"Canal Lejano\"?");
}

TEST_F(CommandLine, ExplainOfAName) {
    const Outcome by_name = run("explain --service 'Canal Lejano' " + small);
    EXPECT_EQ(by_name.code, 0) << by_name.err;
    EXPECT_EQ(by_name.out, run("explain --service 41 " + small).out);
}

TEST_F(CommandLine, ExplainListsWhatIsNeitherPlacedNorLeftOut) {
    const Outcome outcome = run("explain " RECALCULO_TOOL_TESTS "/placement/failed_exchange.json");
    EXPECT_NE(outcome.out.find("\nLCN 5 \"S5\" · stream 1/2 · "), std::string::npos) << outcome.out;
    EXPECT_NE(
        outcome.out.find("\n  It is neither placed nor left out: the engine's exchanges have lost it.\n"),
        std::string::npos)
        << outcome.out;
    EXPECT_NE(outcome.out.find("\n  Broken: neither placed nor left out\n"), std::string::npos)
        << outcome.out;
}

TEST_F(CommandLine, ExplainTellsTheAudit) {
    const Outcome all = run("explain " + medium);
    EXPECT_NE(all.out.find("\n\nNotes: 2 findings\n  module 02:48:4D:00:00:06: "), std::string::npos)
        << all.out;
    EXPECT_EQ(run("explain --service 203 " + medium).out.find("broken"), std::string::npos);
    const std::string lost = RECALCULO_TOOL_TESTS "/placement/failed_exchange.json";
    EXPECT_EQ(run("explain " + lost).out.find("Broken: 3 findings\n  LCN 5 \"S5\""), 0u);
    const Outcome one = run("explain --service 2 " + lost);
    EXPECT_NE(one.out.find("\n\n2 services broken in the whole head-end; recalculo run lists them\n"),
              std::string::npos)
        << one.out;
    EXPECT_EQ(json::parse(run("explain --json " + medium).out).at("warnings").size(), 2u);
}

TEST_F(CommandLine, ExplainTakesChanges) {
    const Outcome outcome = run("explain --service 41 --set 'modules[2].inputs=2' " + small);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_NE(outcome.out.find("\n  It is placed on module 02:00:00:00:00:03, output 1.\n"),
              std::string::npos)
        << outcome.out;
}

TEST_F(CommandLine, ExplainLooksForRemedies) {
    const Outcome outcome = run("explain --service 41 --service 11 --remedy " + small);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_NE(outcome.out.find("\n  Remedies, the smallest first ("), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find(
                  "number of inputs from 2 to 3 on module 02:00:00:00:00:01: it is placed, 12 services in "
                  "all; no other service is lost; --set 'modules[0].inputs=3'.\n"),
              std::string::npos)
        << outcome.out;
    EXPECT_EQ(outcome.out.find("Remed"), outcome.out.rfind("Remed")) << "none for what is placed";
    const json services =
        json::parse(run("explain --service 41 --service 11 --remedy --json " + small).out).at("services");
    EXPECT_EQ(services.at(0).at("remedies").at("found").at(0).at("raise").at("limit"), "inputs");
    EXPECT_FALSE(services.at(1).contains("remedies"));
    EXPECT_FALSE(json::parse(run("explain --service 41 --json " + small).out)
                     .at("services")
                     .at(0)
                     .contains("remedies"));
    expect_refused(run("explain --remedy " + small),
                   "--remedy looks for what would place single services; expected --service for each");
}

TEST_F(CommandLine, ExplainWithoutController) {
    EXPECT_EQ(run("explain -", R"({"modules": []})").code, 1);
}

} // namespace
} // namespace zarven::tool::explain_test
