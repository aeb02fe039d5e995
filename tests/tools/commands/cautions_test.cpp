// The options --reserve and --verbose, as each command that reports a placement takes them.

#include "commands/command_line.h"

#include <vector>

#include <nlohmann/json.hpp>

namespace zarven::tool::cautions_test {
namespace {

using nlohmann::json;

/// A module with one output of 10000 kbit/s, on which this many services of 1000 with one LCN stand, each of
/// a stream of its own.
std::string twins(int services) {
    json headend;
    headend["modules"] = {{{"mac", "02:00:00:00:00:0A"},
                           {"controller", true},
                           {"inputs", services},
                           {"outputs", {10000}},
                           {"pids_max", 0}}};
    for (int number = 1; number <= services; ++number)
        headend["services"].push_back({{"lcn", 5},
                                       {"name", "S" + std::to_string(number)},
                                       {"onid", 1},
                                       {"tsid", number},
                                       {"sid", number},
                                       {"bitrate", 1000}});
    return headend.dump();
}

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

const std::string no_room = "no room for tables on output 1: its services take 9000 of 10000 kbit/s and ";

TEST_F(CommandLine, TheReserveIsThatOfTheCommandLine) {
    const std::string headend = write("headend.json", twins(9));
    EXPECT_FALSE(has(run("run " + headend).out, no_room));
    EXPECT_FALSE(has(run("run --reserve 10% " + headend).out, no_room));
    EXPECT_TRUE(has(run("run --reserve 10.01% " + headend).out,
                    no_room + "1001 are to stay free, which is 1 too much"));
    EXPECT_TRUE(has(run("choose --runs 1 --jobs 1 --reserve 11 " + headend).out, no_room + "1100"));
    EXPECT_TRUE(has(run("explain --reserve 11 " + headend).out, no_room + "1100"));
    EXPECT_FALSE(has(run("explain --reserve 11 --service S1 " + headend).out, no_room));
    EXPECT_TRUE(has(run("compare --reserve 11 " + headend + " " + headend).out, no_room + "1100"));
    for (const std::string& command :
         std::vector<std::string>{"run", "explain", "choose", "compare " + headend})
        for (const std::string percent : {"half", ""})
            expect_refused(run(command + " --reserve '" + percent + "' " + headend),
                           "--reserve: found \"" + percent +
                               "\", expected percent from 0 to 50 with at most two decimals, as 2.5%");
}

TEST_F(CommandLine, AResultKeepsItsReserve) {
    const std::string headend = write("headend.json", twins(9));
    const std::string result = write("result.json", run("run --json --reserve 11% " + headend).out);
    const json document = json::parse(read(result));
    EXPECT_EQ(document.at("modules").at(0).at("outputs").at(0).at("reserve"), 1100);
    EXPECT_EQ(document.at("cautions").at(0).at("kind"), "no_room_for_tables");
    EXPECT_TRUE(has(run("export --format html " + result).out, ">100 too much<"));
    EXPECT_TRUE(has(run("compare " + headend + " " + result).out, no_room + "1100"));
    EXPECT_FALSE(has(run("compare " + result + " " + headend).out, no_room)) << "what is before is not told";
    EXPECT_FALSE(has(run("compare --reserve 0 " + headend + " " + result).out, no_room));
    EXPECT_FALSE(json::parse(run("run --json --reserve 0 " + headend).out)
                     .at("modules")
                     .at(0)
                     .at("outputs")
                     .at(0)
                     .contains("reserve"));
}

/// A caution for each of so many LCNs.
std::string pairs(int number) {
    json headend = json::parse(twins(2));
    for (int lcn = 6; lcn < 5 + number; ++lcn)
        for (int stream = 1; stream <= 2; ++stream)
            headend["services"].push_back({{"lcn", lcn},
                                           {"name", "S" + std::to_string(10 * lcn + stream)},
                                           {"onid", 1},
                                           {"tsid", stream},
                                           {"sid", 10 * lcn + stream},
                                           {"bitrate", 100}});
    return headend.dump();
}

TEST_F(CommandLine, ThreeCautionsOfAKindAreToldOrAll) {
    const std::string headend = write("headend.json", pairs(5));
    const std::string more = "  2 more, which --verbose tells: LCNs of several services on an output\n";
    for (const std::string& command :
         std::vector<std::string>{"run", "explain", "choose --runs 1 --jobs 1", "compare " + headend}) {
        const std::string few = run(command + " " + headend).out;
        EXPECT_TRUE(has(few, "\nCautions: 5\n") || has(few, "\nCautions after: 5\n")) << few;
        EXPECT_TRUE(has(few, "  LCN 7: 2 services on output 1")) << command;
        EXPECT_FALSE(has(few, "  LCN 8: 2 services on output 1")) << command;
        EXPECT_TRUE(has(few, more)) << command;
        const std::string all = run(command + " --verbose " + headend).out;
        EXPECT_TRUE(has(all, "  LCN 9: 2 services on output 1")) << command;
        EXPECT_FALSE(has(all, more)) << command;
    }
    EXPECT_FALSE(has(run("run " + write("three.json", pairs(3))).out, "more, which --verbose tells"));
    EXPECT_EQ(json::parse(run("run --json " + headend).out).at("cautions").size(), 5u);
    // On the page all are there, two of them folded.
    const std::string page = run("run --html - " + headend).out;
    EXPECT_TRUE(
        has(page, "<summary>2 more: LCNs of several services on an output</summary><ul><li><bdi>LCN 8: "));
    EXPECT_TRUE(has(page, "<a href=\"#cautions\">Cautions <span class=\"note\">5</span></a>"));
    EXPECT_TRUE(
        has(run("compare --html - " + headend + " " + headend).out, "<h2 id=\"cautions-after-title\">"));
    EXPECT_TRUE(has(run("choose --runs 1 --jobs 1 --html - " + headend).out, "<h2 id=\"cautions-title\">"));
    EXPECT_EQ(run("run --fail-on broken " + headend).code, 0) << "nothing of it is broken";
}

TEST_F(CommandLine, AnInputTellsHowMuchOfItsStreamIsCarried) {
    const std::string headend = write(
        "headend.json", run("import - --modules " + write("modules.json", modules_text), channel_line).out);
    EXPECT_TRUE(
        has(run("run " + headend).out,
            "  Input 1 · stream 1/1011 (19.2E 11362 MHz H 22000 kS/s) · 1 service · 8000 of 27032 kbit/s "
            "(29.6 %)\n"));
    const json result = json::parse(run("run --json " + headend).out);
    EXPECT_EQ(result.at("modules").at(0).at("inputs").at(0).at("bitrate"), 8000);
    EXPECT_EQ(result.at("modules").at(0).at("inputs").at(0).at("net_rate"), 27032);
    EXPECT_EQ(result.at("modules").at(0).at("inputs").at(1).at("bitrate"), 0);
    EXPECT_TRUE(has(run("run --html - " + headend).out,
                    "<span class=\"note\">1 service, 8,000 of 27,032 kbit/s, 29.6 %</span>"));
    EXPECT_TRUE(has(run("run --set 'streams[0].net_rate=0' " + headend).out, " kS/s) · 1 service\n"));
}

} // namespace
} // namespace zarven::tool::cautions_test
