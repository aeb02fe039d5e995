// `recalculo export`.

#include "commands/command_line.h"

#include <algorithm>
#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool::export_test {
namespace {

using nlohmann::json;

TEST_F(CommandLine, ExportWritesThePageOfTheRun) {
    for (const std::string& headend : {small, medium}) {
        run("run " + headend + " --html " + file("run.html"));
        const Outcome outcome =
            shell("'" + program + "' run --json " + headend + " | '" + program + "' export - --format html");
        EXPECT_EQ(outcome.code, 0);
        EXPECT_EQ(outcome.err, "");
        EXPECT_EQ(outcome.out, read(file("run.html")));
    }
}

TEST_F(CommandLine, ExportWritesAChannelList) {
    const std::string result = write("result.json", run("run " + small + " --json").out);
    const Outcome outcome = run("export " + result + " --format channels.conf");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out.substr(0, outcome.out.find('\n')), ":@1");
    EXPECT_EQ(outcome.err,
              result +
                  ": 11 channels written, 0 of them renamed; not written: 1 left out, 1 that are clones\n");
    const Outcome again = run("import - --modules " + small, outcome.out);
    EXPECT_EQ(json::parse(again.out).at("services").size(), 11u);
    EXPECT_EQ(json::parse(again.out).at("services").at(0).at("name"), "Canal Uno");
}

TEST_F(CommandLine, ExportTellsWhatIsNeitherPlacedNorLeftOut) {
    const std::string result = run("run --json " RECALCULO_TOOL_TESTS "/placement/failed_exchange.json").out;
    EXPECT_EQ(
        run("export - --format channels.conf", result).err,
        "standard input: 5 channels written, 0 of them renamed; not written: 1 left out, 1 neither placed nor "
        "left out\n");
}

TEST_F(CommandLine, ExportWritesATable) {
    const std::string result = run("run " + small + " --json").out;
    const Outcome outcome = run("export - --format csv -o " + file("table.csv"), result);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out + outcome.err, "");
    const std::string table = read(file("table.csv"));
    EXPECT_EQ(table.substr(0, 14), "placed,module,");
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 14);
    EXPECT_NE(table.find("\r\nno,,,,41,Canal Lejano,"), std::string::npos);
}

TEST_F(CommandLine, ExportOfWhatIsNoResult) {
    expect_refused(run("export " + small + " --format csv"),
                   small + ": top level: found a head-end, expected a result, which `recalculo run HEADEND "
                           "--json` writes");
    expect_refused(
        run("export x --format pdf"),
        "--format: found \"pdf\", expected one of channels.conf, csv, html\nRun with --help for more information.");
    expect_refused(run("export " + small), "--format is required\nRun with --help for more information.");
}

TEST_F(CommandLine, ExportToAFullDisk) {
    const std::string result = run("run " + small + " --json").out;
    expect_refused(run("export - --format channels.conf >/dev/full", result),
                   "standard output: cannot be written: No space left on device");
}

} // namespace
} // namespace zarven::tool::export_test
