// `recalculo choose`: what comes first, what is written, what is refused, and Ctrl-C.

#include "commands/on_a_terminal.h"

#include <algorithm>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace zarven::tool::choose_test {
namespace {

using nlohmann::json;

/// One input. The engine takes stream 1/20, which has two services.
const std::string one_input =
    R"({"name": "Casa", "modules": [{"mac": "02:00:00:00:00:01", "controller": true, "inputs": 1,
    "outputs": [50000], "pids_max": 9}], "services": [{"lcn": 1, "name": "a", "onid": 1, "tsid": 10, "sid": 1},
    {"lcn": 2, "name": "b", "onid": 1, "tsid": 20, "sid": 2}, {"lcn": 3, "name": "c", "onid": 1, "tsid": 20, "sid": 3},
    {"lcn": 4, "name": "d", "onid": 1, "tsid": 30, "sid": 4, "type": 2}]})";

constexpr const char* repeatable = " --runs 300 --seed 1 --jobs 1 ";

std::vector<int> lcns(const json& services) {
    std::vector<int> numbers;
    for (const json& service : services)
        numbers.push_back(service.at("lcn").get<int>());
    return numbers;
}

using Lcns = std::vector<int>;

/// LCNs that a result places.
Lcns placed_in(const json& result) {
    Lcns numbers;
    for (const json& module : result.at("modules"))
        for (const json& input : module.at("inputs"))
            for (const json& service : input.at("services"))
                numbers.push_back(service.at("lcn").get<int>());
    return numbers;
}

class ChooseCommand : public CommandLine {
protected:
    json chosen(const std::string& options, const std::string& input = one_input) const {
        const Outcome outcome = run("choose - --json" + (repeatable + options), input);
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        return json::parse(outcome.out);
    }
};

/// The first variant fits nowhere.
TEST_F(ChooseCommand, ComparesWithTheVariantsThatRunSettlesOn) {
    std::string input = one_input;
    const std::string first = R"("lcn": 2, )";
    input.replace(input.find(first), first.size(), R"("lcn": 2, "one_of": "X", "bitrate": 90000, )");
    const std::string second = R"("lcn": 3, )";
    input.replace(input.find(second), second.size(), R"("lcn": 3, "one_of": "X", )");
    const std::string inputs = R"("inputs": 1)";
    input.replace(input.find(inputs), inputs.size(), R"("inputs": 3)");
    EXPECT_EQ(json::parse(run("run - --json", input).out).at("summary").at("placed"), 3);
    EXPECT_EQ(chosen("", input).at("all").at("placed"), 3);
}

/// To the file it is worth nothing.
TEST_F(ChooseCommand, WhatIsChosenByTheCommandLineIsWhatRunPlaces) {
    std::string input = one_input;
    for (const char* lcn : {R"("lcn": 2, )", R"("lcn": 3, )"})
        input.replace(input.find(lcn), std::string(lcn).size(),
                      lcn + std::string(R"("one_of": "X", "value": 0, )"));
    const std::string written = run("choose - -o - --must 3" + std::string(repeatable), input).out;
    EXPECT_EQ(placed_in(json::parse(run("run - --json", written).out)), (Lcns{3}));
}

TEST_F(ChooseCommand, AsksForAllWhereNothingIsBetter) {
    const json report = chosen("");
    EXPECT_EQ(report.at("chosen").at("placed"), 2);
    EXPECT_EQ(report.at("gained").size() + report.at("lost").size() + report.at("withheld").size(), 0u);
    EXPECT_FALSE(report.contains("interrupted"));
    EXPECT_FALSE(report.contains("moves"));
}

TEST_F(ChooseCommand, WhereNothingIsAskedForNothingIsChosen) {
    json headend = json::parse(one_input);
    headend["services"].erase(1);
    headend["services"].erase(1);
    headend["services"][0]["ask"] = false;
    const std::string begin = "Casa\n\nNothing better than asking for all 1 service was found: 1 placed\n";
    EXPECT_EQ(run("choose -" + std::string(repeatable), headend.dump()).out.rfind(begin, 0), 0u);
    const std::string nothing = "Casa\n\nNothing is asked for, and so there is nothing to choose\n";
    headend["services"][1]["ask"] = false;
    EXPECT_EQ(run("choose -" + std::string(repeatable), headend.dump()).out.rfind(nothing, 0), 0u);
    headend.erase("services");
    EXPECT_EQ(run("choose -" + std::string(repeatable), headend.dump()).out.rfind(nothing, 0), 0u);
}

TEST_F(ChooseCommand, TheGreaterValueComesBeforeTheNumber) {
    const json report = chosen("--value 1=3");
    EXPECT_EQ(report.at("chosen").at("value"), 3);
    EXPECT_EQ(report.at("chosen").at("placed"), 1);
    EXPECT_EQ(lcns(report.at("gained")), (Lcns{1}));
    EXPECT_EQ(lcns(report.at("lost")), (Lcns{2, 3}));
    EXPECT_EQ(report.at("value"), json::parse(R"({"wanted": 6, "bound": 3})"));
    EXPECT_EQ(chosen("--value 1=2").at("withheld"), json::array()) << "as much as the two";
}

TEST_F(ChooseCommand, AMustComesBeforeAllValues) {
    const json report = chosen("--must 4 --value 1/20=1000");
    EXPECT_EQ(lcns(report.at("gained")), (Lcns{4}));
    EXPECT_EQ(report.at("chosen").at("musts"), 1);
    EXPECT_EQ(report.at("musts"), json::parse(R"({"wanted": 1, "bound": 1})"));
    EXPECT_EQ(report.at("chosen").at("value"), 1);
    // As the file says it.
    json headend = json::parse(one_input);
    headend["services"][3]["must"] = true;
    headend["services"][1]["value"] = 1000;
    EXPECT_EQ(lcns(chosen("", headend.dump()).at("gained")), (Lcns{4}));
}

TEST_F(ChooseCommand, MoreMustsComeBeforeOne) {
    const json report = chosen("--must 1 --must 2 --must 3 --value 1=1000");
    EXPECT_EQ(report.at("chosen").at("musts"), 2);
    EXPECT_EQ(report.at("musts_proven"), true);
    ASSERT_EQ(lcns(report.at("missed")), (Lcns{1}));
    EXPECT_EQ(report.at("missed")[0].at("impossible"), false);
    EXPECT_NE(report.at("missed")[0].at("reason").get<std::string>().find("No input is free for stream 1/10"),
              std::string::npos);
}

TEST_F(ChooseCommand, NeitherValueNothingNorAskFalseIsAskedFor) {
    const json report = chosen("--value 1/20=0");
    EXPECT_EQ(report.at("chosen").at("placed"), 1);
    EXPECT_EQ(report.at("chosen").at("not_asked_for").get<int>(),
              static_cast<int>(report.at("withheld").size()));
    const Lcns withheld = lcns(report.at("withheld"));
    EXPECT_TRUE(std::count(withheld.begin(), withheld.end(), 2) == 1 &&
                std::count(withheld.begin(), withheld.end(), 3) == 1);
    const json demanded = chosen("--value 1/20=0 --must 2");
    EXPECT_EQ(demanded.at("chosen").at("musts"), 1) << "what must be placed may be worth nothing";
    EXPECT_EQ(demanded.at("chosen").at("placed"), 1);
    const json asked = chosen("--set 'services[2].ask=false' --set 'services[2].value=1000'");
    EXPECT_EQ(asked.at("value").at("wanted"), 3);
    EXPECT_EQ(asked.at("all").at("not_asked_for"), 1);
    EXPECT_EQ(asked.at("withheld"), json::array());
}

TEST_F(ChooseCommand, RunGivesWhatIsTold) {
    const std::string headend = write("headend.json", one_input);
    const std::string path = file("chosen.json");
    const Outcome outcome = run("choose " + headend + " --value 1=3 -o " + path + repeatable);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_NE(outcome.out.find("1 of 4 services withheld: 1 placed in the place of 2, 1 gained, 2 lost\n"),
              std::string::npos)
        << outcome.out;
    EXPECT_EQ(placed_in(json::parse(run("run --json " + headend).out)), (Lcns{2, 3}));
    EXPECT_EQ(placed_in(json::parse(run("run --json " + path).out)), (Lcns{1}));
    // Nothing else is changed, not even by the values of the command line.
    json written = json::parse(read(path));
    int withheld = 0;
    for (json& service : written.at("services")) {
        EXPECT_TRUE(service.value("ask", true) || service.at("tsid") == 20);
        withheld += service.contains("ask") ? 1 : 0;
        service.erase("ask");
        service.erase("bitrate");
    }
    EXPECT_EQ(withheld, 1) << "of two it is enough to withhold one";
    EXPECT_EQ(written, json::parse(one_input));
}

TEST_F(ChooseCommand, TheHeadendMayGoToStandardOutput) {
    const Outcome outcome =
        run("choose - -o - --value 1=3 --set 'modules[0].mac=N'" + std::string(repeatable), one_input);
    EXPECT_EQ(outcome.code, 0);
    const json written = json::parse(outcome.out);
    EXPECT_NE(written.at("services")[1].contains("ask"), written.at("services")[2].contains("ask"));
    EXPECT_EQ(written.at("modules")[0].at("mac"), "N") << "or run would give another placement";
}

TEST_F(ChooseCommand, TheSameSeedGivesTheSameAnswer) {
    const std::string command = "choose " + medium + " --json --runs 40 --seed 3 --jobs 1";
    EXPECT_EQ(run(command).out, run(command).out);
    const std::string of_two = "choose " + medium + " --json --runs 40 --seed 3 --jobs 2";
    EXPECT_EQ(run(of_two).out, run(of_two).out);
}

TEST_F(ChooseCommand, TimeEndsIt) {
    const Outcome outcome = run("choose - --seconds 1 --jobs 1", one_input);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "") << "progress is for terminals";
}

TEST_F(ChooseCommand, TellsWhatMovesAgainstAResult) {
    const std::string today = write("today.json", run("run --json -", one_input).out);
    EXPECT_EQ(chosen("--keep " + today).at("moves"),
              json::parse(R"({"moved": [], "unmoved": 2, "gone": 0})"));
    EXPECT_EQ(chosen("--must 1 --keep " + today).at("moves"),
              json::parse(R"({"moved": [], "unmoved": 0, "gone": 2})"));
    const Outcome outcome = run("choose - --keep " + today + repeatable, one_input);
    EXPECT_NE(outcome.out.find("Against " + today +
                               ": 0 services in another place, 2 where they were, 0 no longer "
                               "placed\n"),
              std::string::npos)
        << outcome.out;
}

TEST_F(ChooseCommand, TellsOfAResultOfAnotherHeadend) {
    // Streams 2/10 to 2/30 in the place of 1/10 to 1/30, with other names; but for the first so many.
    const auto told = [this](std::size_t common, std::size_t outputs) {
        json headend = json::parse(one_input);
        headend["modules"][0]["outputs"] = json(outputs, 50000);
        headend["modules"][0]["inputs"] = 3;
        for (std::size_t service = common; service < 4; ++service) {
            headend["services"][service]["onid"] = 2;
            headend["services"][service]["lcn"] = 100 + service;
            headend["services"][service]["sid"] = 100 + service;
            headend["services"][service]["name"] = "other " + std::to_string(service);
        }
        const std::string kept = write("kept.json", run("run --json -", headend.dump()).out);
        const Outcome outcome = run("choose - --keep " + kept + repeatable, one_input);
        EXPECT_EQ(outcome.code, 0);
        return outcome.err;
    };
    EXPECT_EQ(told(0, 1),
              file("kept.json") +
                  ": 4 services placed, and none of them is in standard input: nothing is kept\n");
    EXPECT_EQ(told(1, 1), "") << "one is there";
    EXPECT_EQ(told(0, 0), "") << "there is nothing to keep";
}

TEST_F(ChooseCommand, WritesAPage) {
    const std::string page = file("page.html");
    EXPECT_EQ(run("choose - --html " + page + repeatable, one_input).code, 0);
    EXPECT_NE(read(page).find("<h1><bdi>Casa</bdi></h1>"), std::string::npos);
    EXPECT_EQ(run("choose - --html -" + std::string(repeatable), one_input).out, read(page));
}

TEST_F(ChooseCommand, TellsOfValuesForNoService) {
    const Outcome outcome = run("choose - --value scrambled=3" + std::string(repeatable), one_input);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "--value 'scrambled=3': no service of standard input is meant\n");
}

TEST_F(ChooseCommand, TellsOfMustsThatTheFileWithholds) {
    const auto told = [this](std::size_t withheld) {
        json headend = json::parse(one_input);
        for (std::size_t service = 0; service < 4; ++service) {
            headend["services"][service]["must"] = true;
            headend["services"][service]["ask"] = service >= withheld;
        }
        const Outcome outcome = run("choose -" + std::string(repeatable), headend.dump());
        EXPECT_EQ(outcome.code, 0);
        return outcome.err;
    };
    const auto message = [](const std::string& services, const std::string& names) {
        return "standard input: " + services +
               " with \"must\": true and \"ask\": false, which no choice asks for: " + names + "\n";
    };
    EXPECT_EQ(told(0), "");
    EXPECT_EQ(told(1), message("1 service", "LCN 1 \"a\""));
    EXPECT_EQ(told(3), message("3 services", "LCN 1 \"a\", LCN 2 \"b\", LCN 3 \"c\""));
    EXPECT_EQ(told(4), message("4 services", "LCN 1 \"a\", LCN 2 \"b\", LCN 3 \"c\", 1 more"));
    // A service that is no must, or that the wishes leave aside, is the planner's own choice.
    EXPECT_EQ(run("choose - --set 'services[0].ask=false'" + std::string(repeatable), one_input).err, "");
    const std::string wishes = write("wishes", "b\n");
    EXPECT_EQ(run("choose - --set 'services[0].must=true' --wish " + wishes + repeatable, one_input)
                  .err.find("which no choice asks for"),
              std::string::npos);
}

TEST_F(ChooseCommand, Refuses) {
    const std::string headend = write("headend.json", one_input);
    expect_refused(run("choose " + headend + " --must 9"),
                   headend + ": --must 9: no service has the LCN 9; the nearest is 4");
    expect_refused(run("choose " + headend + " --value hd"),
                   "--value 'hd': found no \"=\", expected SELECTION=N, as in hd=3");
    expect_refused(run("choose " + headend + " --value hd=1001"),
                   "--value 'hd=1001': found \"1001\", expected a whole number from 0 to 1000");
    expect_refused(run("choose " + headend + " --set 'services[0].value=1001'"),
                   "--set 'services[0].value=1001': " + headend +
                       ": /services/0/value: found 1001, expected a whole number from 0 to 1000");
    expect_refused(run("choose - --keep -", one_input),
                   "standard input: found \"-\" for the head-end and for --keep, expected it once");
    expect_refused(run("choose " + headend + " --wish - --keep -", "a\n"),
                   "standard input: found \"-\" for --wish and for --keep, expected it once");
    expect_refused(run("choose " + headend + " --json -o -"),
                   "--json and -o - both write to standard output; expected a file for -o");
    expect_refused(run("choose " + headend + " --html - -o -"),
                   "--html - and -o - both write to standard output; expected a file for -o");
    expect_refused(run("choose " + headend + " --html x -o x"),
                   "--html and -o both write to x; expected two files");
    expect_refused(
        run("choose " + headend + " --keep " + headend),
        headend +
            ": top level: found a head-end, expected a result, which `recalculo run HEADEND --json` writes");
    expect_refused(run("choose " + headend + " -o " + headend + repeatable),
                   headend + ": cannot be written: it was read by the same command; expected another file");
    for (const std::string option : {"--seconds 0", "--runs 0", "--jobs 0", "--jobs 257", "--seconds 86401"})
        EXPECT_EQ(run("choose " + headend + " " + option).code, 2) << option;
    EXPECT_EQ(
        run("choose -", R"({"modules": [{"mac": "M", "inputs": 1, "outputs": [1], "pids_max": 0}]})").code,
        1);
}

TEST_F(ChooseCommand, RefusesWhatCannotBeWrittenBeforeItSearches) {
    // No search is made of it, nor could be: that would be the complaint.
    json cannot_run = json::parse(one_input);
    cannot_run["modules"][0]["controller"] = false;
    const std::string headend = write("headend.json", cannot_run.dump());
    const std::string command = "choose " + headend + repeatable;
    EXPECT_EQ(run(command).code, 1);
    for (const std::string option : {"-o ", "--html "}) {
        expect_refused(run(command + option + file("none/x")),
                       file("none/x") + ": cannot be written: No such file or directory");
        expect_refused(run(command + option + folder.string()),
                       folder.string() + ": cannot be written: Is a directory");
        expect_refused(run(command + option + headend),
                       headend +
                           ": cannot be written: it was read by the same command; expected another file");
    }
    write("old", "old");
    EXPECT_EQ(run(command + "-o " + file("old") + " --html " + file("new")).code, 1);
    EXPECT_EQ(read(file("old")), "old");
    EXPECT_FALSE(fs::exists(file("new")));
}

TEST_F(ChooseCommand, ReportsEvenWhereAFileCannotBeWrittenInTheEnd) {
    const std::string command = "choose -" + std::string(repeatable);
    const std::string report = run(command, one_input).out;
    const std::string full = "recalculo: /dev/full: cannot be written: No space left on device\n";
    for (const std::string option : {"-o /dev/full", "--html /dev/full"}) {
        const Outcome outcome = run(command + option, one_input);
        EXPECT_EQ(outcome.code, 2) << option;
        EXPECT_EQ(outcome.out, report) << option;
        EXPECT_EQ(outcome.err, full) << option;
    }
    fs::create_symlink("/dev/full", file("link"));
    const Outcome outcome = run(command + "-o /dev/full --html " + file("link"), one_input);
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.out, report);
    EXPECT_EQ(outcome.err,
              full + "recalculo: " + file("link") + ": cannot be written: No space left on device\n");
    const std::string path = file("chosen.json");
    EXPECT_EQ(run(command + "--html /dev/full -o " + path, one_input).code, 2);
    EXPECT_EQ(placed_in(json::parse(run("run --json " + path).out)), (Lcns{2, 3}));
}

TEST_F(ChooseCommand, NamesTheFileOfWhatTheEngineRefuses) {
    for (const std::string name : {"Casa", ""}) {
        json headend = json::parse(one_input);
        headend["name"] = name;
        headend["clones"] = json::parse(R"([{"lcn": 9, "name": "k", "onid": 1, "tsid": 10, "sid": 9}])");
        const std::string clone = write("clone.json", headend.dump());
        EXPECT_EQ(run("choose " + clone + repeatable).err, run("run " + clone).err);
        headend.erase("clones");
        headend["modules"][0]["controller"] = false;
        const std::string controller = write("controller.json", headend.dump());
        const Outcome outcome = run("choose " + controller + repeatable);
        EXPECT_EQ(outcome.err, run("run " + controller).err);
        EXPECT_EQ(outcome.err.rfind("recalculo: " + controller + ": the engine could not run", 0), 0u);
    }
}

TEST_F(OnATerminal, AnInterruptedChoiceTellsWhatCouldNotBeWritten) {
    const std::string headend = write("headend.json", one_input);
    start({"choose", headend, "--seconds", "600", "--jobs", "1", "-o", "/dev/full"});
    EXPECT_TRUE(shows(" placed · ")) << shown_;
    press_control_c();
    EXPECT_EQ(exit_code(), 130);
    EXPECT_NE(shown_.find("Nothing better than asking for all"), std::string::npos) << shown_;
    EXPECT_TRUE(ends_with("recalculo: /dev/full: cannot be written: No space left on device\r\n"
                          "recalculo: interrupted\r\n"))
        << shown_;
}

TEST_F(OnATerminal, ChooseTellsTheBestAndEndsWithIt) {
    const std::string headend = write("headend.json", one_input);
    const std::string path = file("chosen.json");
    start(
        {"choose", headend, "--seconds", "600", "--value", "1=3", "--must", "1", "--jobs", "1", "-o", path});
    EXPECT_TRUE(shows("1 of 1 musts · value 3 · 1 placed · ")) << shown_;
    press_control_c();
    EXPECT_EQ(exit_code(), 130);
    EXPECT_NE(shown_.find("1 of 4 services withheld, when it was interrupted: 1 placed"), std::string::npos)
        << shown_;
    EXPECT_TRUE(ends_with("recalculo: interrupted\r\n")) << shown_;
    EXPECT_EQ(placed_in(json::parse(run("run --json " + path).out)), (Lcns{1}));
}

} // namespace
} // namespace zarven::tool::choose_test
