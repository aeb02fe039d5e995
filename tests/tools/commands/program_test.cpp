// The program as a whole: help, wrong use, exit codes, standard streams.

#include "commands/command_line.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace zarven::tool::program_test {
namespace {

using nlohmann::json;

std::vector<std::string> with_each_command(std::vector<std::string> all, const std::string& option) {
    for (const char* command : {"run", "explain", "compare", "size", "bound", "import", "measure", "export"})
        all.push_back(std::string(command) + " " + option);
    return all;
}

TEST_F(CommandLine, HelpIsEverywhere) {
    for (const std::string& arguments : with_each_command({"--help", "-h"}, "--help")) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, 0) << arguments;
        EXPECT_NE(outcome.out.find("Usage: recalculo"), std::string::npos) << outcome.out;
        EXPECT_EQ(outcome.err, "");
    }
}

TEST_F(CommandLine, HelpIsACommandToo) {
    EXPECT_EQ(run("help").out, run("--help").out);
    for (const std::string command : {"run", "explain", "compare", "size", "bound", "import", "export"}) {
        const Outcome outcome = run("help " + command);
        EXPECT_EQ(outcome.code, 0);
        EXPECT_EQ(outcome.out, run(command + " --help").out);
        EXPECT_EQ(outcome.err, "");
        EXPECT_NE(run("help").out.find("\n  " + command + " "), std::string::npos) << command;
    }
    const std::string advice = "\nRun with --help for more information.";
    expect_refused(
        run("help rum"),
        "COMMAND: found \"rum\", expected one of run, explain, compare, size, choose, drill, bound, "
        "import, measure, export; did you mean \"run\"?" +
            advice);
    expect_refused(run("help run size"), "The following argument was not expected: size" + advice);
}

TEST_F(CommandLine, VersionIsEverywhere) {
    for (const std::string& arguments : with_each_command({"--version"}, "--version")) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, 0) << arguments;
        EXPECT_EQ(outcome.out, "recalculo " RECALCULO_VERSION "\n");
        EXPECT_EQ(outcome.err, "");
    }
}

TEST_F(CommandLine, WrongUseIsExitCode2) {
    for (const std::string arguments : {"",
                                        "rum",
                                        "run",
                                        "run a b",
                                        "run --jsn x",
                                        "explain",
                                        "explain x --service",
                                        "explain x y",
                                        "import x",
                                        "import --modules x",
                                        "measure x",
                                        "export",
                                        "export x",
                                        "run x --log",
                                        "run x --html",
                                        "compare x y --html",
                                        "import x --modules y --sd-bitrate many",
                                        "import x --modules y --sd-bitrate -1",
                                        "import x --modules y --hd-bitrate 4294967296",
                                        "run --set",
                                        "compare",
                                        "compare x",
                                        "compare x y z",
                                        "bound",
                                        "size x",
                                        "size x --add",
                                        "size x --add y --most -1",
                                        "size x --add y --jobs 0",
                                        "drill",
                                        "drill x --most 1001",
                                        "drill x --jobs 0"}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, 2) << arguments;
        EXPECT_EQ(outcome.out, "") << arguments;
        EXPECT_NE(outcome.err, "") << arguments;
    }
}

TEST_F(CommandLine, WrongUseIsNamed) {
    const std::string advice = "\nRun with --help for more information.";
    expect_refused(
        run(""),
        "A command (run, explain, compare, size, choose, drill, bound, import, measure, export, help) is required" +
            advice);
    expect_refused(run("rum"),
                   "The following argument was not expected: rum; did you mean \"run\"?" + advice);
    expect_refused(run("run"), "HEADEND is required" + advice);
    expect_refused(run("run x --jsn"),
                   "The following argument was not expected: --jsn; did you mean \"--json\"?" + advice);
    expect_refused(run("rnu x"),
                   "The following argument was not expected: rnu; did you mean \"run\"?" + advice);
    expect_refused(run("run x --color alwas"),
                   "--color: found \"alwas\", expected one of auto, always, never; did you mean \"always\"?" +
                       advice);
    expect_refused(run("run x --qqqqqqq"), "The following argument was not expected: --qqqqqqq" + advice);
    expect_refused(run("import x --modules y --sd-bitrat=5"),
                   "The following argument was not expected: --sd-bitrat=5; did you mean \"--sd-bitrate\"?" +
                       advice);
    expect_refused(run("import x --modules y --sd-bitrate many"),
                   "Could not convert: --sd-bitrate = many" + advice);
}

TEST_F(CommandLine, AnInputIsNotOverwritten) {
    const std::string headend = write("headend.json", read(small));
    const std::string text = read(headend);
    for (const std::string& arguments :
         {"run " + headend + " --html " + headend, "run " + headend + " --log " + headend,
          "import - --modules " + headend + " -o " + headend})
        EXPECT_EQ(run(arguments, channel_line).code, 2) << arguments;
    EXPECT_EQ(read(headend), text);
    expect_refused(run("run " + headend + " --html - --strategies"),
                   "--strategies shows nothing on the page that --html - writes in the place of the report; "
                   "expected a file for --html");
    expect_refused(run("run " + headend + " --html both --log both"),
                   "--html and --log both write to both; expected two files");
}

TEST_F(CommandLine, ServicesLeftOutAreNoFailure) {
    EXPECT_EQ(run("run -",
                  R"({"modules": [{"mac": "02:00:00:00:00:0A", "controller": true, "inputs": 0, "outputs": [],
        "pids_max": 0}], "services": [{"lcn": 1, "name": "a", "onid": 1, "tsid": 1, "sid": 1}]})")
                  .code,
              0);
}

TEST_F(CommandLine, AMissingFile) {
    expect_refused(run("run " + file("none.json")),
                   file("none.json") + ": cannot be opened: No such file or directory");
}

TEST_F(CommandLine, AFileThatIsNotJson) {
    expect_refused(run("run " + write("bad.json", "{\n  oops")),
                   file("bad.json") + ": line 2, column 3: found \"oops\", expected a key in double quotes");
}

TEST_F(CommandLine, AChannelListIsToldFromAHeadend) {
    const std::string lamedb = examples + "/sample.lamedb";
    const std::string dvbv5 = examples + "/sample.dvbv5.conf";
    const std::string list = write("list", channel_line);
    const auto told = [](const std::string& path, const std::string& format) {
        return path + ": this is a channel list (" + format +
               "); use `recalculo import` to make a head-end of it";
    };
    for (const std::string& command :
         {std::string("run "), std::string("explain "), std::string("bound "),
          std::string("export --format csv "), "compare " + small + " ", "size --add " + small + " ",
          "size " + small + " --add ", "import " + list + " --modules "})
        expect_refused(run(command + lamedb), told(lamedb, "lamedb"));
    expect_refused(run("run " + dvbv5), told(dvbv5, "dvbv5"));
    expect_refused(run("run " + list), told(list, "channels.conf"));
    // No list, whatever its lines look like.
    expect_refused(run("run -", "[]"),
                   "standard input: top level: found a list of 0 entries, expected an object");
    expect_refused(run("run -", "{\n[a]\n"),
                   "standard input: line 2, column 1: found '[', expected a key in double quotes");
}

TEST_F(CommandLine, AFileOfTheWrongShape) {
    expect_refused(run("run -", R"({"modules": [{"mac": 5}]})"),
                   "standard input: /modules/0/mac: found 5, expected text");
}

TEST_F(CommandLine, ARefusalOfTheEngine) {
    const Outcome outcome = run("run -", R"({"modules": [
        {"mac": "M\u001b\n", "controller": true, "inputs": 0, "outputs": [], "pids_max": 0},
        {"mac": "M\u001b\n", "inputs": 0, "outputs": [], "pids_max": 0}]})");
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.out, "");
    const std::string oddity =
        "/mac: \"M\uFFFD\uFFFD\" is no MAC, which is six bytes as in 02:00:00:00:00:01\n";
    EXPECT_EQ(outcome.err, "standard input: /modules/0" + oddity + "standard input: /modules/1" + oddity +
                               "recalculo: standard input: /modules/1: module \"M\uFFFD\uFFFD\": the engine "
                               "refuses it: a module with this MAC is already loaded (-102)\n");
}

TEST_F(CommandLine, OddMacsAreWarnedOfAndTheWorkGoesOn) {
    json headend = json::parse(two_streams);
    headend["modules"] = json::array();
    for (const char* mac : {"01:00:5E:00:00:01", "00:00:00:00:00:00", "one", "two", "02:00:00:00:00:01"})
        headend["modules"].push_back(
            {{"mac", mac}, {"controller", true}, {"inputs", 1}, {"outputs", {9000}}, {"pids_max", 0}});
    const std::string odd = write("odd.json", headend.dump());
    const Outcome outcome = run("run " + odd);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(
        outcome.err,
        odd +
            ": /modules/0/mac: \"01:00:5E:00:00:01\" is the address of a group: the first byte of that of "
            "a module is even\n" +
            odd + ": /modules/1/mac: \"00:00:00:00:00:00\" is all zeros, which no module has\n" + odd +
            ": /modules/2/mac: \"one\" is no MAC, which is six bytes as in 02:00:00:00:00:01\n" + odd +
            ": 1 further module with an odd MAC\n");
    EXPECT_EQ(run("compare " + odd + " " + odd).err, outcome.err + outcome.err);
}

TEST_F(CommandLine, TwoSpellingsOfAMacAreOne) {
    const std::string headend = write("headend.json", two_streams);
    EXPECT_EQ(run("run " + headend + " --set 'modules[02-00-00-00-00-0a].inputs=2'").out,
              run("run " + headend + " --set 'modules[0].inputs=2'").out);
    json twice = json::parse(two_streams);
    twice["modules"].push_back(twice["modules"][0]);
    twice["modules"][1]["mac"] = "02-00-00-00-00-0a";
    expect_refused(
        run("run -", twice.dump()),
        "standard input: /modules/1: module \"02-00-00-00-00-0a\": a module with this MAC is already "
        "loaded, as \"02:00:00:00:00:0A\"");
}

TEST_F(CommandLine, WithoutControllerTheExitCodeIs1) {
    const Outcome outcome = run("run -", R"({"modules": []})");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err,
              "recalculo: standard input: the engine could not run: no module is the controller; give "
              "one of /modules the member \"controller\": true\n");
}

/// Some line of the text has all the parts.
bool some_line_has(const std::string& text, const std::vector<std::string>& parts) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (std::all_of(parts.begin(), parts.end(),
                        [&line](const std::string& part) { return line.find(part) != line.npos; }))
            return true;
    return false;
}

TEST_F(CommandLine, TheLibraryFindsOurLogAndSleep) {
    const Outcome outcome = shell("LD_DEBUG=bindings '" + program + "' run " + small);
    for (const std::string name : {"syslog", "sleep"})
        EXPECT_TRUE(
            some_line_has(outcome.err, {"/librecalculo.so", "/recalculo [0]: normal symbol `" + name + "'"}))
            << name;
}

TEST_F(CommandLine, AReaderThatGoesAwayEndsItWithoutAWord) {
    const int broken_pipe = 141;
    const Outcome outcome =
        shell("{ sleep 0.5; '" + program + "' run " + small + "; echo $? >'" + file("code") + "'; } | true");
    EXPECT_EQ(read(file("code")), std::to_string(broken_pipe) + "\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(CommandLine, AFullDiskIsTold) {
    for (const std::string& arguments :
         {"run " + small, std::string("--help"), std::string("run --help"), std::string("--version")})
        expect_refused(run(arguments + " >/dev/full"),
                       "standard output: cannot be written: No space left on device");
}

TEST_F(CommandLine, AFileOfAnotherKindIsNamed) {
    const std::string result = write("result.json", run("run --json " + small).out);
    const std::string module = examples + "/module.json";
    for (const std::string command : {"run ", "explain ", "bound "}) {
        expect_refused(
            run(command + result),
            result + ": top level: found a result, which `recalculo run --json` writes, expected a head-end");
        expect_refused(
            run(command + "--set 'services[0].lcn=1' " + result),
            result + ": top level: found a result, which `recalculo run --json` writes, expected a head-end");
        expect_refused(run(command + module),
                       module + ": top level: found a single module, expected a head-end");
    }
}

TEST_F(CommandLine, MessagesThatNobodyCanReadChangeNothing) {
    const std::string list = examples + "/sample.lamedb";
    for (const std::string where : {"2>&-", "2>/dev/full"}) {
        EXPECT_EQ(run("run /nonexistent " + where).code, 2) << where;
        EXPECT_EQ(run("run '" + small + "' --log - " + where).code, 2) << where;
        const Outcome outcome = run("import '" + list + "' --modules '" + small + "' " + where);
        EXPECT_EQ(outcome.code, 0) << where;
        EXPECT_EQ(json::parse(outcome.out).at("services").size(), 4u) << where;
    }
}

TEST_F(CommandLine, AFileMayHaveTheNameOfACommand) {
    write("bound", read(small));
    EXPECT_EQ(shell("cd '" + folder.string() + "' && '" + program + "' run bound").out,
              run("run '" + small + "'").out);
    const Outcome two = run("run '" + small + "' bound '" + small + "'");
    EXPECT_EQ(two.code, 2);
    EXPECT_EQ(two.out, "");
}

TEST_F(CommandLine, AFileWithoutNameIsRefused) {
    for (const std::string option : {"--html", "--log"}) {
        const Outcome outcome = run("run '" + small + "' " + option + " ''");
        EXPECT_EQ(outcome.code, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "recalculo: " + option +
                                   ": found an empty name, expected that of a file\n"
                                   "Run with --help for more information.\n");
    }
    expect_refused(run("run ''"), "\"\": cannot be opened: No such file or directory");
}

/// As of an unset variable of a shell.
TEST_F(CommandLine, AnEmptyNumberIsRefused) {
    const auto expect_number = [this](const std::string& command, const std::string& option,
                                      const std::string& range = "") {
        expect_refused(run(command + " '" + small + "' " + option + " ''"),
                       option + ": found \"\", expected a whole number" + range +
                           "\nRun with --help for more information.");
    };
    expect_number("run", "--max-log");
    for (const std::string command : {"run", "explain", "compare", "size", "choose", "drill", "bound"})
        expect_number(command, "--max-seconds");
    for (const std::string kind : {"radio", "sd", "hd", "uhd"})
        expect_number("import", "--" + kind + "-bitrate");
    for (const std::string command : {"run", "explain"})
        expect_number(command, "--trials", " from 0 to 1000000");
    for (const std::string command : {"size", "choose", "drill"})
        expect_number(command, "--jobs", " from 1 to 256");
    expect_number("size", "--most", " from 0 to 10000");
    expect_number("drill", "--most", " from 0 to 1000");
    expect_number("choose", "--seconds", " from 1 to 86400");
    expect_number("choose", "--runs", " from 1 to 2147483647");
    expect_number("choose", "--seed", " from 0 to 2147483647");
}

TEST_F(CommandLine, ValuesAreChangedForOneRun) {
    const std::string headend = write("headend.json", two_streams);
    const auto placed = [this](const std::string& arguments) {
        const Outcome outcome = run("run --json " + arguments);
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        return json::parse(outcome.out).at("summary").at("placed").get<int>();
    };
    EXPECT_EQ(placed(headend), 1);
    EXPECT_EQ(placed("--set 'modules[0].inputs=2' " + headend), 1);
    EXPECT_EQ(placed("--set 'modules[0].inputs=2' --set 'services[*].bitrate=2000' " + headend), 2);
    EXPECT_EQ(placed(headend + " --set 'services[*].bitrate=2000' --set 'modules[0].inputs=2'"), 2);
    EXPECT_EQ(read(headend), two_streams);
}

TEST_F(CommandLine, AChangeThatCannotBeMade) {
    const std::string headend = write("headend.json", two_streams);
    expect_refused(run("run --set 'modules[1].inputs=2' " + headend),
                   "--set 'modules[1].inputs=2': " + headend +
                       ": /modules: found a list of 1 entry, expected an entry [1]; the last one is [0]");
    expect_refused(run("bound --set 'modules[0].inputs=many' " + headend),
                   "--set 'modules[0].inputs=many': " + headend +
                       ": /modules/0/inputs: found \"many\", expected a whole number from 0 to 65535");
    expect_refused(run("explain --set 'modules[0].outputs=1' " + headend),
                   "--set 'modules[0].outputs=1': " + headend +
                       ": /modules/0/outputs: found 1, expected a list");
    expect_refused(run("size --add x --set name " + headend),
                   "--set 'name': found no \"=\", expected PATH=VALUE");
}

} // namespace
} // namespace zarven::tool::program_test
