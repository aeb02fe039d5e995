// `recalculo compare`.

#include "commands/command_line.h"

#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool::compare_test {
namespace {

using nlohmann::json;

TEST_F(CommandLine, CompareTakesHeadendsAndResults) {
    const std::string headend = write("headend.json", two_streams);
    const std::string result = write("result.json", run("run --json " + headend).out);
    const std::string richer =
        write("richer.json",
              run("run --json --set 'services[*].bitrate=1' --set 'modules[0].inputs=2' " + headend).out);
    for (const std::string& before : {headend, result}) {
        const Outcome outcome = run("compare " + before + " " + richer);
        EXPECT_EQ(outcome.code, 0);
        EXPECT_EQ(outcome.err, "");
        EXPECT_EQ(outcome.out.substr(0, outcome.out.find('\n')),
                  "1 gained, 0 lost, 0 moved, 1 in the same place, 0 placed in neither");
    }
    EXPECT_EQ(run("compare " + headend + " -", read(richer)).out.substr(0, 8), "1 gained");
    const json report = json::parse(run("compare --json " + richer + " " + headend).out);
    EXPECT_EQ(report.at("summary").at("lost"), 1);
    EXPECT_EQ(report.at("lost").at(0).at("after"), json::array());
}

TEST_F(CommandLine, CompareChangesItsSecondSide) {
    const std::string headend = write("headend.json", two_streams);
    const std::string changes = " --set 'services[*].bitrate=1' --set 'modules[0].inputs=2'";
    const Outcome outcome = run("compare " + headend + " " + headend + changes);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(outcome.out.substr(0, 8), "1 gained");
    EXPECT_NE(outcome.out.find("\nAfter  " + headend + changes + ": 2 of 2 services placed"),
              std::string::npos)
        << outcome.out;
    EXPECT_EQ(run("compare " + headend + changes + " " + headend).out, outcome.out);
    const std::string result = write("result.json", run("run --json " + headend).out);
    EXPECT_EQ(run("compare " + result + " " + headend + changes).code, 0);
    expect_refused(run("compare " + headend + " " + result + changes),
                   result + ": top level: found a result, expected a head-end, which alone --set can change");
}

TEST_F(CommandLine, CompareTellsRemovedFromLost) {
    const std::string headend = write("headend.json", two_streams);
    json without = json::parse(two_streams);
    without["services"].erase(0);
    const std::string smaller = write("smaller.json", without.dump());
    const Outcome outcome = run("compare " + headend + " " + smaller);
    EXPECT_EQ(outcome.out.substr(0, outcome.out.find('\n')),
              "1 gained, 0 lost, 0 added, 1 removed, 0 moved, 0 in the same place, 0 placed in neither");
}

TEST_F(CommandLine, CompareWritesAPageBesideTheReport) {
    const std::string sides = "compare " + small + " " + small;
    for (const std::string form : {"", " --json"}) {
        const Outcome outcome = run(sides + form + " --html '" + file("compared.html") + "'");
        EXPECT_EQ(outcome.code, 0);
        EXPECT_EQ(outcome.out, run(sides + form).out);
        EXPECT_EQ(outcome.err, "");
        expect_page(read(file("compared.html")));
    }
    const Outcome alone = run(sides + " --html -");
    EXPECT_EQ(alone.code, 0);
    EXPECT_EQ(alone.out, read(file("compared.html")));
    expect_refused(run(sides + " --json --html -"),
                   "--json and --html - both write to standard output; expected a file for --html");
    expect_refused(run(sides + " --html '" + file("none/page.html") + "'"),
                   file("none/page.html") + ": cannot be written: No such file or directory");
}

TEST_F(CommandLine, CompareFailsOnTheSecondPlacementWhenAsked) {
    const std::string over_budget = RECALCULO_TOOL_TESTS "/placement/lagging_pids.json";
    const std::string sides = "compare --fail-on broken " + over_budget + " ";
    EXPECT_EQ(run(sides + small).code, 0);
    const Outcome broken = run(sides + over_budget);
    EXPECT_EQ(broken.code, 3);
    EXPECT_NE(broken.out.find("\nAfter  "), std::string::npos);
    EXPECT_EQ(last_line(broken.err), "recalculo: " + over_budget + ": 1 limit broken\n");
    EXPECT_EQ(run("compare --fail-on left-out " + over_budget + " " + small).code, 4);
    EXPECT_EQ(run("compare --fail-on left-out " + small + " " + over_budget).code, 0);
}

TEST_F(CommandLine, CompareRefuses) {
    expect_refused(run("compare - -"), "standard input: found \"-\" for both, expected it once");
    expect_refused(run("compare " + small + " -", "[]"),
                   "standard input: top level: found a list of 0 entries, expected an object");
    EXPECT_EQ(run("compare " + small + " -", R"({"modules": []})").code, 1);
}

} // namespace
} // namespace zarven::tool::compare_test
