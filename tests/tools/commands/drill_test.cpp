// `recalculo drill`.

#include "commands/on_a_terminal.h"

#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool::drill_test {
namespace {

using nlohmann::json;

TEST_F(CommandLine, DrillTellsWhatEachFailureTakes) {
    const Outcome outcome = run("drill " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "") << "progress is for terminals";
    EXPECT_NE(outcome.out.find("\nWhat fails, the worst first\n"), std::string::npos) << outcome.out;
    json report = json::parse(run("drill --json --jobs 3 " + small).out);
    EXPECT_EQ(report.at("taken_out").at("modules"), 3);
    EXPECT_EQ(report.at("taken_out").at("inputs"), 5);
    EXPECT_EQ(report.at("taken_out").at("streams"), 0);
    EXPECT_TRUE(report.at("spare").is_null());
    EXPECT_EQ(report, json::parse(run("drill --json --jobs 1 " + small).out));
    const std::string kind =
        write("kind.json", R"({"inputs": 2, "outputs": [38000, 38000], "pids_max": 20})");
    report = json::parse(run("drill --json --streams --most 1 --spare " + kind + " " + small).out);
    EXPECT_GT(report.at("taken_out").at("streams"), 0);
    EXPECT_EQ(report.at("spare").at("most"), 1);
}

TEST_F(CommandLine, DrillWritesAPage) {
    const std::string page = run("drill --html - " + small).out;
    EXPECT_EQ(page.substr(0, 15), "<!doctype html>");
    EXPECT_NE(page.find("What if a part fails"), std::string::npos);
}

TEST_F(CommandLine, DrillRefuses) {
    expect_refused(run("drill - --spare -", two_streams),
                   "standard input: found \"-\" for the head-end and for --spare, expected it once");
    expect_refused(run("drill - --spare " + small, two_streams),
                   small + ": /modules: found a list of 3 entries, expected just one module");
    EXPECT_EQ(run("drill --json --html - " + small).code, 2);
}

TEST_F(OnATerminal, DrillTellsItsRuns) {
    // Spares that take nothing do not help, and so the search has much to try.
    const std::string kind = write("kind.json", R"({"inputs": 1, "outputs": [1], "pids_max": 0})");
    start({"drill", "--most", "1000", "--jobs", "1", small, "--spare", kind});
    expect_runs_until_control_c();
}

} // namespace
} // namespace zarven::tool::drill_test
