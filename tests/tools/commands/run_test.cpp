// `recalculo run`: the report in its forms, the strategies, the log, the pauses.

#include "commands/command_line.h"

#include <chrono>
#include <map>
#include <sstream>
#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool::run_test {
namespace {

using nlohmann::json;

TEST_F(CommandLine, RunReportsAsText) {
    const Outcome outcome = run("run " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, read(RECALCULO_TOOL_TESTS "/report/small_result.txt"));
    EXPECT_EQ(outcome.err, "");
}

TEST_F(CommandLine, RunReportsTheSummaryAlone) {
    const std::string report = read(RECALCULO_TOOL_TESTS "/report/small_result.txt");
    const std::string summary = report.substr(report.rfind('\n', report.size() - 2) + 1);
    const Outcome outcome = run("run --summary " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, summary);
    EXPECT_EQ(outcome.err, "");
    // The page beside it is whole, with the reasons.
    run("run --html " + file("whole.html") + " " + small);
    EXPECT_EQ(run("run --summary --html " + file("page.html") + " " + small).out, summary);
    EXPECT_EQ(read(file("page.html")), read(file("whole.html")));
    const std::string strategies = run("run --summary --strategies " + small).out;
    EXPECT_EQ(strategies.find("Strategies, "), 0u);
    EXPECT_EQ(strategies.substr(strategies.size() - summary.size()), summary);
    EXPECT_EQ(strategies.find("Module "), std::string::npos);
    expect_refused(
        run("run --summary --json " + small),
        "--summary and --json are two reports; expected one of them: that of --json has the summary");
    expect_refused(run("run --summary --html - " + small),
                   "--summary and --html - both write to standard output; expected a file for --html");
}

TEST_F(CommandLine, RunReadsStandardInput) {
    const Outcome outcome = run("run -", read(small));
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, read(RECALCULO_TOOL_TESTS "/report/small_result.txt"));
}

TEST_F(CommandLine, RunAsksOnlyForTheServicesThatAreWanted) {
    const auto loaded = [this](const std::string& arguments) {
        const json summary = json::parse(run("run --json " + arguments).out).at("summary");
        return std::make_pair(summary.at("loaded").get<int>(), summary.value("not_asked_for", 0));
    };
    const std::string headend = write("headend.json", two_streams);
    EXPECT_EQ(loaded(headend), std::make_pair(2, 0));
    EXPECT_EQ(loaded(headend + " --only 1/2"), std::make_pair(1, 1));
    EXPECT_EQ(loaded(headend + " --exclude 2"), std::make_pair(1, 1));
    EXPECT_EQ(loaded(headend + " --set 'services[0].ask=false' --exclude 2"), std::make_pair(0, 2));
    const Outcome selected = run("run - --select " + write("wishes.txt", "B\nnobody\n"), two_streams);
    EXPECT_EQ(selected.code, 0);
    EXPECT_EQ(selected.err, file("wishes.txt") + ": line 2: no service has the name or LCN \"nobody\"\n");
    EXPECT_NE(selected.out.find("1 service loaded, 1 not asked for: 1 placed, 0 left out;"),
              std::string::npos)
        << selected.out;
}

TEST_F(CommandLine, RunRefusesWishesThatItCannotRead) {
    expect_refused(
        run("run " + small + " --only tele"),
        "--only: found \"tele\", expected tv, radio, hd, sd, scrambled, free, unknown, a stream as "
        "1/1002, LCNs as 12 or 100-199, name=PATTERN or group=PATTERN with * and ?");
    expect_refused(run("run - --select -", two_streams),
                   "standard input: found \"-\" for the head-end and for --select, expected it once");
    expect_refused(run("run " + small + " --select - --select -"),
                   "standard input: found \"-\" for two --select, expected it once");
}

TEST_F(CommandLine, RunShowsTheStrategiesFirst) {
    const Outcome outcome = run("run --strategies " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
    const std::string report = read(RECALCULO_TOOL_TESTS "/report/small_result.txt");
    ASSERT_GT(outcome.out.size(), report.size());
    EXPECT_EQ(outcome.out.substr(outcome.out.size() - report.size()), report);
    EXPECT_EQ(outcome.out.find("Strategies, "), 0u);
    EXPECT_NE(outcome.out.find(
                  "\n  MAX           11         1       5 of 5       0  kept: leaves the fewest out\n"),
              std::string::npos);
}

TEST_F(CommandLine, RunReportsTheStrategiesAsJsonWhenAsked) {
    const json asked = json::parse(run("run --json --strategies " + small).out);
    EXPECT_EQ(asked.at("strategies").size(), 4u);
    EXPECT_EQ(asked.at("contested").size(), 6u);
    const json plain = json::parse(run("run --json " + small).out);
    EXPECT_EQ(plain.count("strategies") + plain.count("contested"), 0u);
    EXPECT_EQ(asked.at("modules"), plain.at("modules"));
    EXPECT_EQ(asked.at("summary"), plain.at("summary"));
}

TEST_F(CommandLine, WithoutControllerThereAreNoStrategies) {
    const Outcome outcome =
        run("run --strategies -",
            R"({"modules": [{"mac": "02:00:00:00:00:0A", "inputs": 1, "outputs": [1], "pids_max": 0}]})");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
}

/// Two modules share 60 services, and 10 of another stream find no transcoder.
std::string exploding_headend() {
    json headend = {{"modules", json::array()}, {"services", json::array()}};
    for (const char* mac : {"A", "B"})
        headend["modules"].push_back({{"mac", mac},
                                      {"controller", *mac == 'A'},
                                      {"inputs", 2},
                                      {"outputs", {60000}},
                                      {"pids_max", 40}});
    for (int lcn = 1; lcn <= 90; ++lcn)
        headend["services"].push_back({{"lcn", lcn},
                                       {"name", "S"},
                                       {"onid", 1},
                                       {"tsid", lcn <= 60 ? 1 : 2},
                                       {"sid", lcn},
                                       {"bitrate", 100},
                                       {"ca_pids", lcn <= 60 ? 1 : 0},
                                       {"transcoding", lcn > 80 ? 1 : 0}});
    return headend.dump();
}

TEST_F(CommandLine, ARunWhoseLogExplodesIsStopped) {
    const Outcome outcome = run("run - --max-log 3 --log '" + file("log") + "'", exploding_headend());
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(last_line(outcome.err)
                  .find("recalculo: standard input: the engine was stopped: its log is longer than 3 MB "
                        "(--max-log)"),
              0u)
        << outcome.err;
    const std::string log = read(file("log"));
    EXPECT_GT(log.size(), 3000000u);
    EXPECT_LT(log.size(), 3001000u);
    EXPECT_EQ(log.back(), '\n');
}

TEST_F(CommandLine, EveryCommandThatRunsTheEngineTakesALimitOfTime) {
    for (const std::string& command :
         {"run " + small, "explain " + small, "bound " + small, "compare " + small + " " + small,
          "size " + small + " --add " + examples + "/module.json"}) {
        EXPECT_EQ(run(command + " --max-seconds 0").out, run(command).out) << command;
        EXPECT_EQ(run(command + " --max-seconds one").code, 2);
    }
}

const std::string lost = RECALCULO_TOOL_TESTS "/placement/failed_exchange.json";
const std::string over_budget = RECALCULO_TOOL_TESTS "/placement/lagging_pids.json";

TEST_F(CommandLine, RunFailsOnWhatIsBrokenWhenAsked) {
    const Outcome unasked = run("run " + over_budget);
    EXPECT_EQ(unasked.code, 0);
    const Outcome asked = run("run --fail-on broken " + over_budget);
    EXPECT_EQ(asked.code, 3);
    EXPECT_EQ(asked.out, unasked.out);
    EXPECT_EQ(last_line(asked.err), "recalculo: " + over_budget + ": 1 limit broken\n");
    EXPECT_EQ(run("run --fail-on broken " + small).code, 0); // one is left out
    EXPECT_EQ(run("run --fail-on left-out " + over_budget).code, 0);
    // A count that is off is no failure.
    EXPECT_EQ(run("run --fail-on broken " RECALCULO_TOOL_TESTS "/placement/left_out_elsewhere.json").code, 0);
}

TEST_F(CommandLine, RunFailsOnServicesWithoutPlaceWhenAsked) {
    const Outcome asked = run("run --json --fail-on left-out " + small);
    EXPECT_EQ(asked.code, 4);
    EXPECT_EQ(asked.out, run("run --json " + small).out);
    EXPECT_EQ(asked.err, "recalculo: " + small + ": 1 service left out\n");
    EXPECT_EQ(run("run --fail-on left-out --set 'modules[2].inputs=2' " + small).code, 0);
    EXPECT_EQ(last_line(run("run --fail-on left-out " + lost).err),
              "recalculo: " + lost + ": 1 service left out, 1 service neither placed nor left out\n");
    const Outcome clone = run("run --fail-on left-out --set 'clones[0].transcoding=1' "
                              "--set 'modules[2].inputs=2' " +
                              small);
    EXPECT_EQ(clone.code, 4);
    EXPECT_EQ(clone.err, "recalculo: " + small + ": 1 clone waiting\n");
}

TEST_F(CommandLine, BrokenComesBeforeLeftOut) {
    EXPECT_EQ(run("run --fail-on left-out --fail-on broken " + lost).code, 3);
    EXPECT_EQ(run("run --fail-on left-out --fail-on broken " + small).code, 4);
    const Outcome unknown = run("run --fail-on brocken " + small);
    EXPECT_EQ(unknown.code, 2);
    EXPECT_NE(unknown.err.find("did you mean \"broken\""), std::string::npos) << unknown.err;
}

TEST_F(CommandLine, TheLogIsThatOfTheDriverAlone) {
    run("run " + small + " --log " + file("plain.log"));
    run("run " + small + " --strategies --log " + file("strategies.log"));
    EXPECT_FALSE(read(file("plain.log")).empty());
    EXPECT_EQ(read(file("strategies.log")), read(file("plain.log")));
    const Outcome outcome = run("run " + small + " --strategies --log -");
    EXPECT_EQ(outcome.err, read(file("plain.log")));
}

TEST_F(CommandLine, RunWritesAPageBesideTheReport) {
    const Outcome outcome = run("run --html '" + file("page.html") + "' " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, read(RECALCULO_TOOL_TESTS "/report/small_result.txt"));
    EXPECT_EQ(outcome.err, "");
    expect_page(read(file("page.html")));
}

TEST_F(CommandLine, RunWritesAPageBesideTheJsonReport) {
    const Outcome outcome = run("run --json --html '" + file("page.html") + "' " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, run("run --json " + small).out);
    expect_page(read(file("page.html")));
}

TEST_F(CommandLine, RunWritesThePageInPlaceOfTheReport) {
    const Outcome outcome = run("run --html - " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
    expect_page(outcome.out);
}

TEST_F(CommandLine, TwoReportsDoNotShareStandardOutput) {
    expect_refused(run("run --json --html - " + small),
                   "--json and --html - both write to standard output; expected a file for --html");
}

TEST_F(CommandLine, APageThatCannotBeWrittenLeavesNoReport) {
    expect_refused(run("run --html '" + file("none/page.html") + "' " + small),
                   file("none/page.html") + ": cannot be written: No such file or directory");
}

TEST_F(CommandLine, RunReportsAsJson) {
    const Outcome outcome = run("run --json " + small);
    EXPECT_EQ(outcome.code, 0);
    const json result = json::parse(outcome.out);
    EXPECT_EQ(result.at("name"), "Small head-end");
    EXPECT_EQ(result.at("summary").at("loaded"), 12);
    EXPECT_EQ(result.at("modules").size(), 3u);
}

TEST_F(CommandLine, TheLogGoesToAFile) {
    const Outcome outcome = run("run " + small + " --log " + file("log"));
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
    std::map<std::string, int> lines_of_level;
    std::istringstream log(read(file("log")));
    for (std::string line; std::getline(log, line);)
        ++lines_of_level[line.substr(0, 2)];
    EXPECT_EQ(lines_of_level.size(), 2u);
    EXPECT_GT(lines_of_level["5 "], 10);
    EXPECT_GT(lines_of_level["7 "], 100);
    EXPECT_NE(read(file("log")).find("\n5 HEADEND::: **************** START Service Recalculation"),
              std::string::npos);
}

TEST_F(CommandLine, TheLogGoesToStandardError) {
    const Outcome outcome = run("run " + small + " --log -");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, read(RECALCULO_TOOL_TESTS "/report/small_result.txt"));
    run("run " + small + " --log " + file("log"));
    EXPECT_EQ(outcome.err, read(file("log")));
}

TEST_F(CommandLine, ALogThatCannotBeWritten) {
    expect_refused(run("run " + small + " --log " + file("none/log")),
                   file("none/log") + ": cannot be written: No such file or directory");
    expect_refused(run("run " + small + " --log /dev/full"),
                   "/dev/full: the log cannot be written: No space left on device");
}

TEST_F(CommandLine, ThePausesArePassedOver) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(run("run " + small).code, 0);
    // Kept, they would take 14 seconds at least.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_F(CommandLine, ThePausesAreKeptOnDemand) {
    const int still_running = 124;
    EXPECT_EQ(shell("timeout 2 '" + program + "' run --pauses " + small).code, still_running);
}

} // namespace
} // namespace zarven::tool::run_test
