// The program from outside: what a shell sees of exit codes, standard streams and files.

#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const std::string program = RECALCULO_PROGRAM;
const std::string examples = RECALCULO_EXAMPLES;
const std::string small = examples + "/small.json";
const std::string medium = examples + "/medium.json";

struct Outcome {
    int code = -1;
    std::string out;
    std::string err;
};

class CommandLine : public testing::Test {
protected:
    CommandLine() {
        std::string pattern = (fs::temp_directory_path() / "recalculo-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        setenv("LC_ALL", "C.UTF-8", 1);
        setenv("TERM", "xterm", 1);
        unsetenv("NO_COLOR");
    }
    ~CommandLine() override { fs::remove_all(folder); }

    std::string file(const std::string& name) const { return (folder / name).string(); }

    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(file(name), std::ios::binary) << text;
        return file(name);
    }

    static std::string read(const std::string& path) {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }

    /// Runs a line of shell in a group with its streams in files.
    Outcome shell(const std::string& line, const std::string& input = "") const {
        const std::string command = "{ " + line + "\n} <'" + write("stdin", input) + "' >'" + file("stdout") +
                                    "' 2>'" + file("stderr") + "'";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read(file("stdout")), read(file("stderr"))};
    }

    Outcome run(const std::string& arguments, const std::string& input = "") const {
        return shell("'" + program + "' " + arguments, input);
    }

    /// The program refused its input: exit code 2, nothing on standard output, one message.
    void expect_refused(const Outcome& outcome, const std::string& message) const {
        EXPECT_EQ(outcome.code, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "recalculo: " + message + "\n");
    }

    fs::path folder;
};

const std::string modules_text =
    R"({"modules": [{"mac": "M", "controller": true, "inputs": 2, "outputs": [38000],
    "pids_max": 8}]})";
const std::string channel_line =
    "Canal;Marca:11362:HC23:S19.2E:22000:6110=27:6120=deu@3:6130:98C:11110:1:1011:0\n";

std::vector<std::string> with_each_command(std::vector<std::string> all, const std::string& option) {
    for (const char* command : {"run", "explain", "compare", "size", "bound", "import", "export"})
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
                                        "size x --add y --jobs 0"}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, 2) << arguments;
        EXPECT_EQ(outcome.out, "") << arguments;
        EXPECT_NE(outcome.err, "") << arguments;
    }
}

TEST_F(CommandLine, WrongUseIsNamed) {
    const std::string advice = "\nRun with --help for more information.";
    expect_refused(run(""),
                   "A command (run, explain, compare, size, bound, import, export) is required" + advice);
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

TEST_F(CommandLine, RunReportsAsText) {
    const Outcome outcome = run("run " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, read(RECALCULO_TOOL_TESTS "/report/small_report.txt"));
    EXPECT_EQ(outcome.err, "");
}

TEST_F(CommandLine, RunReadsStandardInput) {
    const Outcome outcome = run("run -", read(small));
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, read(RECALCULO_TOOL_TESTS "/report/small_report.txt"));
}

TEST_F(CommandLine, RunShowsTheStrategiesFirst) {
    const Outcome outcome = run("run --strategies " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
    const std::string report = read(RECALCULO_TOOL_TESTS "/report/small_report.txt");
    ASSERT_GT(outcome.out.size(), report.size());
    EXPECT_EQ(outcome.out.substr(outcome.out.size() - report.size()), report);
    EXPECT_EQ(outcome.out.find("Strategies, "), 0u);
    EXPECT_NE(
        outcome.out.find("\n  MAX           11         1       5 of 5      0  kept: leaves the fewest out\n"),
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
    const Outcome outcome = run("run --strategies -",
                                R"({"modules": [{"mac": "M", "inputs": 1, "outputs": [1], "pids_max": 0}]})");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
}

TEST_F(CommandLine, TheLogIsThatOfTheDriverAlone) {
    run("run " + small + " --log " + file("plain.log"));
    run("run " + small + " --strategies --log " + file("strategies.log"));
    EXPECT_FALSE(read(file("plain.log")).empty());
    EXPECT_EQ(read(file("strategies.log")), read(file("plain.log")));
    const Outcome outcome = run("run " + small + " --strategies --log -");
    EXPECT_EQ(outcome.err, read(file("plain.log")));
}

/// A whole page, from its first line to its last.
void expect_page(const std::string& text) {
    EXPECT_EQ(text.rfind("<!doctype html>\n", 0), 0u);
    EXPECT_NE(text.find("<h1><bdi>Small head-end</bdi></h1>"), std::string::npos);
    EXPECT_EQ(text.substr(text.size() - 8), "</html>\n");
}

TEST_F(CommandLine, RunWritesAPageBesideTheReport) {
    const Outcome outcome = run("run --html '" + file("page.html") + "' " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, read(RECALCULO_TOOL_TESTS "/report/small_report.txt"));
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

TEST_F(CommandLine, AnInputIsNotOverwritten) {
    const std::string headend = write("headend.json", read(small));
    const std::string text = read(headend);
    for (const std::string& arguments :
         {"run " + headend + " --html " + headend, "run " + headend + " --log " + headend,
          "import - --modules " + headend + " -o " + headend})
        EXPECT_EQ(run(arguments, ":@1\n").code, 2) << arguments;
    EXPECT_EQ(read(headend), text);
    expect_refused(run("run " + headend + " --html - --strategies"),
                   "--strategies shows nothing on the page that --html - writes in the place of the report; "
                   "expected a file for --html");
    expect_refused(run("run " + headend + " --html both --log both"),
                   "--html and --log both write to both; expected two files");
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

TEST_F(CommandLine, ServicesLeftOutAreNoFailure) {
    EXPECT_EQ(run("run -", R"({"modules": [{"mac": "M", "controller": true, "inputs": 0, "outputs": [],
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
                   file("bad.json") +
                       ": line 2, column 3: not JSON: syntax error while parsing object key - invalid "
                       "literal; last read: '{<U+000A>  o'; expected string literal");
}

TEST_F(CommandLine, AFileOfTheWrongShape) {
    expect_refused(run("run -", R"({"modules": [{"mac": 5}]})"),
                   "standard input: /modules/0/mac: found 5, expected text");
}

TEST_F(CommandLine, ARefusalOfTheEngine) {
    const Outcome outcome = run("run -", R"({"modules": [
        {"mac": "M\u001b\n", "controller": true, "inputs": 0, "outputs": [], "pids_max": 0},
        {"mac": "M\u001b\n", "inputs": 0, "outputs": [], "pids_max": 0}]})");
    expect_refused(outcome,
                   "standard input: /modules/1: module \"M\uFFFD\uFFFD\": the engine refuses it: a module "
                   "with this MAC is already loaded (-102)");
}

TEST_F(CommandLine, WithoutControllerTheExitCodeIs1) {
    const Outcome outcome = run("run -", R"({"modules": []})");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err,
              "recalculo: standard input: the engine could not run: no module is the controller; give "
              "one of /modules the member \"controller\": true\n");
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
    EXPECT_EQ(outcome.out, read(RECALCULO_TOOL_TESTS "/report/small_report.txt"));
    run("run " + small + " --log " + file("log"));
    EXPECT_EQ(outcome.err, read(file("log")));
}

TEST_F(CommandLine, ALogThatCannotBeWritten) {
    expect_refused(run("run " + small + " --log " + file("none/log")),
                   file("none/log") + ": cannot be written: No such file or directory");
    expect_refused(run("run " + small + " --log /dev/full"),
                   "/dev/full: the log cannot be written: No space left on device");
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

TEST_F(CommandLine, AReaderThatGoesAwayEndsItWithoutAWord) {
    const int broken_pipe = 141;
    const Outcome outcome =
        shell("{ sleep 0.5; '" + program + "' run " + small + "; echo $? >'" + file("code") + "'; } | true");
    EXPECT_EQ(read(file("code")), std::to_string(broken_pipe) + "\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(CommandLine, AFullDiskIsTold) {
    const Outcome outcome = run("run " + small + " >/dev/full");
    expect_refused(outcome, "standard output: cannot be written: No space left on device");
}

const std::string lejano_explained =
    "LCN 41 \"Canal Lejano\" · stream 3/5 · 3500 kbit/s\n"
    "  No input is free for stream 3/5: all 5 inputs on 3 modules receive other streams.\n";

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

TEST_F(CommandLine, ExplainTellsWhyAServiceIsLeftOut) {
    const Outcome outcome = run("explain " + small + " --service 41");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(
        outcome.out,
        lejano_explained +
            "    Module             Answer         Inputs       Output                 kbit/s        PIDs\n"
            "    02:00:00:00:00:01  no input free  0 of 2 free       1  33600 + 3500 of 38000  3 + 0 of 8\n"
            "    02:00:00:00:00:02  no input free  0 of 2 free       1  14000 + 3500 of 38000  4 + 0 of 8\n"
            "    02:00:00:00:00:03  no input free  0 of 1 free       1    400 + 3500 of 20000  0 + 0 of 0\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(CommandLine, ExplainWithoutAServiceExplainsAllThatAreLeftOut) {
    EXPECT_EQ(run("explain -", read(small)).out, lejano_explained + "    3 modules have no input free\n");
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

TEST_F(CommandLine, ExplainAgreesWithTheEngineAndTheReport) {
    const json left_out = json::parse(run("run --json " + medium).out).at("left_out");
    const json explained = json::parse(run("explain --json " + medium).out).at("services");
    EXPECT_EQ(explained.at(0).at("sentence"), left_out.at(0).at("services").at(0).at("reason"));
    for (const json& service : explained)
        for (const json& module : service.at("modules"))
            EXPECT_TRUE(module.at("engine_agrees"));
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
    EXPECT_NE(outcome.out.find("\n  Warning: neither placed nor left out\n"), std::string::npos)
        << outcome.out;
}

TEST_F(CommandLine, ExplainTellsTheAudit) {
    const Outcome all = run("explain " + medium);
    EXPECT_NE(all.out.find("\n\nAudit: 2 findings\nWarning: module 02:48:4D:00:00:06: "), std::string::npos)
        << all.out;
    const Outcome one = run("explain --service 203 " + medium);
    EXPECT_NE(one.out.find("\n\nAudit: 2 findings in the whole head-end; recalculo run lists them\n"),
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

TEST_F(CommandLine, ExplainWithoutController) {
    EXPECT_EQ(run("explain -", R"({"modules": []})").code, 1);
}

TEST_F(CommandLine, ImportWritesAHeadend) {
    const Outcome outcome =
        run("import " + write("list", channel_line) + " --modules " + write("modules.json", modules_text));
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, R"({
  "modules": [
    { "mac": "M", "controller": true, "inputs": 2, "outputs": [38000], "pids_max": 8 }
  ],
  "services": [
    { "lcn": 1, "name": "Canal", "onid": 1, "tsid": 1011, "sid": 11110, "video_format": 4, "bitrate": 8000, "descramble": 1, "ca_pids": 2 }
  ]
}
)");
    EXPECT_EQ(outcome.err, file("list") +
                               ": 1 service in 1 stream imported: 0 SD, 1 HD, 0 radio; 1 of them "
                               "scrambled; no line left aside\n" +
                               file("list") + ": read as channels.conf; estimated: bitrates by kind\n");
}

TEST_F(CommandLine, ImportTakesModulesOnly) {
    const Outcome outcome = run("import - --modules " + small, channel_line);
    EXPECT_EQ(outcome.code, 0);
    const json headend = json::parse(outcome.out);
    EXPECT_EQ(headend.at("modules").size(), 3u);
    EXPECT_EQ(headend.at("services").size(), 1u);
    EXPECT_EQ(headend.count("clones") + headend.count("home_channels"), 0u);
}

TEST_F(CommandLine, ImportTellsTheLinesLeftAsideAndGoesOn) {
    const Outcome outcome =
        run("import - -o " + file("out.json") + " --modules " + write("m.json", modules_text),
            "broken\n" + channel_line + ":@2\n" + channel_line + ":@70000\n" + channel_line);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(
        outcome.err,
        "standard input: line 1: found 1 field, expected 13 with colons between them\n"
        "standard input: line 4: channel number 2 stands in stream 1/1011 already, on line 2\n"
        "standard input: line 6: channel number 70000 is too large, expected at most 65535\n"
        "standard input: 1 service in 1 stream imported: 0 SD, 1 HD, 0 radio; 1 of them scrambled; 3 lines left "
        "aside\n"
        "standard input: read as channels.conf; estimated: bitrates by kind\n");
    EXPECT_EQ(json::parse(read(file("out.json"))).at("services").size(), 1u);
}

TEST_F(CommandLine, ImportTakesEstimates) {
    const std::string line = "Canal:11362:HC23:S19.2E:22000:0:6120:0:0:1:1:1011:0\n";
    const Outcome outcome =
        run("import - --radio-bitrate 320 --modules " + write("modules.json", modules_text), line);
    EXPECT_EQ(json::parse(outcome.out).at("services").at(0).at("bitrate"), 320);
}

TEST_F(CommandLine, ImportReadsEveryFormat) {
    for (const auto& [name, format] :
         {std::pair("sample.dvbv5.conf", "dvbv5"), std::pair("sample.lamedb", "lamedb")}) {
        const std::string list = examples + "/" + name;
        const Outcome shown = run("import " + list + " --modules " + small);
        EXPECT_EQ(shown.code, 0);
        EXPECT_EQ(json::parse(shown.out).at("services").size(), 4u);
        EXPECT_NE(shown.err.find(list + ": read as " + format + "; estimated: bitrates by kind, "),
                  std::string::npos)
            << shown.err;
        const Outcome said = run("import " + list + " --format " + format + " --modules " + small);
        EXPECT_EQ(said.out, shown.out);
    }
}

TEST_F(CommandLine, ImportTellsWhatItEstimates) {
    EXPECT_NE(
        run("import " + examples + "/sample.dvbv5.conf --modules " + small)
            .err.find("estimated: bitrates by kind, every service free to air, LCN of 1 channel by place in "
                      "the file, TSID of 1 stream by frequency\n"),
        std::string::npos);
    EXPECT_NE(
        run("import " + examples + "/sample.lamedb --modules " + small)
            .err.find("estimated: bitrates by kind, LCN of 4 channels by place in the file, TSID of 1 stream "
                      "by frequency, CA PIDs of 1 scrambled service by kind\n"),
        std::string::npos);
}

TEST_F(CommandLine, ImportRefusesWhatIsNoList) {
    const Outcome outcome = run("import - --modules " + small, "no list\n");
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.err.find("recalculo: standard input: found no line of a channel list"), 0u);
    expect_refused(
        run("import - --format dvb --modules " + small),
        "--format: found \"dvb\", expected one of channels.conf, dvbv5, lamedb; did you mean \"dvbv5\"?\nRun with --help for more information.");
}

TEST_F(CommandLine, ImportCannotReadBothFromStandardInput) {
    expect_refused(run("import - --modules -"),
                   "standard input: found \"-\" for the channel list and for --modules, expected it once");
}

TEST_F(CommandLine, ImportOfAMissingFile) {
    expect_refused(run("import " + file("none") + " --modules " + small),
                   file("none") + ": cannot be opened: No such file or directory");
}

TEST_F(CommandLine, WhatIsImportedRuns) {
    const Outcome outcome = shell("'" + program + "' import - -o - --modules " + examples +
                                      "/modules-16.json | '" + program + "' run - --json",
                                  channel_line);
    EXPECT_EQ(outcome.code, 0);
    const json summary = json::parse(outcome.out).at("summary");
    EXPECT_EQ(summary.at("loaded"), 1);
    EXPECT_EQ(summary.at("placed"), 1);
}

TEST_F(CommandLine, TheReportIsAsciiWhereTheLocaleIs) {
    const Outcome outcome = shell("LC_ALL=C '" + program + "' run " + small);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_NE(outcome.out.find("22  Cine Clasico        3500 kbit/s  -> output 1"), std::string::npos);
    EXPECT_NE(outcome.out.find("Output 1  ########................  14000 of"), std::string::npos);
    EXPECT_TRUE(std::all_of(outcome.out.begin(), outcome.out.end(),
                            [](char byte) { return static_cast<unsigned char>(byte) < 0x80; }));
    EXPECT_EQ(shell("LC_ALL=C '" + program + "' run --json " + small).out, run("run --json " + small).out);
    EXPECT_EQ(shell("LC_ALL=C '" + program + "' run " + file("ñ")).err,
              "recalculo: " + file("n") + ": cannot be opened: No such file or directory\n");
}

TEST_F(CommandLine, ColourIsAChoice) {
    EXPECT_NE(run("run --color always " + small).out.find("\x1B[1mModule"), std::string::npos);
    for (const std::string choice : {"", "--color auto ", "--color=never "})
        EXPECT_EQ(run("run " + choice + small).out, read(RECALCULO_TOOL_TESTS "/report/small_report.txt"));
    expect_refused(
        run("run --color blue " + small),
        "--color: found \"blue\", expected one of auto, always, never\nRun with --help for more information.");
}

TEST_F(CommandLine, EveryTextReportHasItsStyleFromTheSurroundings) {
    const std::string kind = write("kind.json", R"({"inputs": 1, "outputs": [5000], "pids_max": 0})");
    const std::string named = "--set 'name=Ñandú' " + small;
    const std::string poorer =
        write("poorer.json", run("run --json --set 'modules[0].inputs=0' " + named).out);
    for (const std::string& arguments :
         {"run --strategies " + named, "explain --service 41 " + named, "compare " + small + " " + poorer,
          "bound " + named, "size --most 1 " + named + " --add " + kind}) {
        const Outcome plain = shell("LC_ALL=C '" + program + "' " + arguments);
        EXPECT_EQ(plain.code, 0) << plain.err;
        EXPECT_TRUE(std::all_of(plain.out.begin(), plain.out.end(), [](char byte) {
            return byte == '\n' || (byte >= ' ' && byte <= '~');
        })) << plain.out;
        EXPECT_NE(run(arguments).out, plain.out) << arguments;
        EXPECT_EQ(run(arguments + " --color auto").out, run(arguments).out);
        EXPECT_NE(run(arguments + " --color always").out.find("\x1B[1m"), std::string::npos) << arguments;
    }
}

TEST_F(CommandLine, MessagesOfFilesAreAsciiWhereTheLocaleIs) {
    const std::string result = write("ñ.json", run("run --json " + small).out);
    const Outcome outcome =
        shell("LC_ALL=C '" + program + "' export --format channels.conf -o /dev/null '" + result + "'");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err.find(file("n.json") + ": 11 channels written"), 0u) << outcome.err;
    const std::string list = write("ñ.conf", channel_line);
    const std::string modules = write("modules.json", modules_text);
    const Outcome imported =
        shell("LC_ALL=C '" + program + "' import -o /dev/null --modules " + modules + " '" + list + "'");
    EXPECT_EQ(imported.err.find(file("n.conf") + ": 1 service in 1 stream imported"), 0u) << imported.err;
    EXPECT_NE(imported.err.find("\n" + file("n.conf") + ": read as"), std::string::npos) << imported.err;
}

/// The program on a terminal of 72 columns, watched.
class OnATerminal : public CommandLine {
protected:
    ~OnATerminal() override {
        if (screen_ >= 0)
            close(screen_);
        if (child_ > 0) {
            kill(child_, SIGKILL);
            waitpid(child_, nullptr, 0);
        }
    }

    void start(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), program);
        std::vector<char*> words;
        for (std::string& argument : arguments)
            words.push_back(argument.data());
        words.push_back(nullptr);
        winsize size{};
        size.ws_row = 24;
        size.ws_col = 72;
        child_ = forkpty(&screen_, nullptr, nullptr, &size);
        if (child_ == 0) {
            // The terminal would throw away what the program writes at the very moment of Ctrl-C.
            termios settings{};
            tcgetattr(STDIN_FILENO, &settings);
            settings.c_lflag |= NOFLSH;
            tcsetattr(STDIN_FILENO, TCSANOW, &settings);
            // The test may have been started with it ignored.
            std::signal(SIGINT, SIG_DFL);
            execv(words[0], words.data());
            std::_Exit(127);
        }
    }

    /// Reads on until the text is on the screen, or, without one, to the end.
    bool shows(const std::string& text) {
        std::array<char, 4096> block;
        while (text.empty() || shown_.find(text) == std::string::npos) {
            const ssize_t length = read_block(block);
            if (length <= 0)
                return false;
            shown_.append(block.data(), static_cast<std::size_t>(length));
        }
        return true;
    }

    void press_control_c() { ASSERT_EQ(::write(screen_, "\x03", 1), 1); }

    int exit_code() {
        shows("");
        int status = 0;
        waitpid(child_, &status, 0);
        child_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    bool ends_with(const std::string& end) const {
        return shown_.size() >= end.size() && shown_.compare(shown_.size() - end.size(), end.npos, end) == 0;
    }

    pid_t child_ = -1;
    std::string shown_;

private:
    ssize_t read_block(std::array<char, 4096>& block) const {
        return ::read(screen_, block.data(), block.size());
    }

    int screen_ = -1;
};

TEST_F(OnATerminal, TheReportIsInColourAndFits) {
    start({"run", small});
    EXPECT_EQ(exit_code(), 0);
    EXPECT_NE(shown_.find("\x1B[1mModule"), std::string::npos);
    EXPECT_NE(shown_.find("1 clone attached, 0\r\n  waiting; 5 of 5 inputs"), std::string::npos);
}

TEST_F(OnATerminal, NoColorIsObeyed) {
    setenv("NO_COLOR", "1", 1);
    start({"run", small});
    EXPECT_EQ(exit_code(), 0);
    EXPECT_EQ(shown_.find('\x1B'), std::string::npos);
    unsetenv("NO_COLOR");
}

TEST_F(OnATerminal, ALongRunShowsItsProgressAndCtrlCEndsIt) {
    start({"run", "--pauses", "--log", file("log"), small});
    EXPECT_TRUE(shows("strategy 1 of 4, MAX: "));
    press_control_c();
    EXPECT_EQ(exit_code(), 130);
    EXPECT_TRUE(ends_with("\r\x1B[Krecalculo: interrupted\r\n")) << shown_;
    EXPECT_EQ(shown_.find("Small head-end"), std::string::npos);
    const std::string log = read(file("log"));
    ASSERT_FALSE(log.empty());
    EXPECT_EQ(log.back(), '\n');
    EXPECT_NE(log.find("BEGIN OPTION: MAX --"), std::string::npos);
}

TEST_F(OnATerminal, CtrlCEndsARunWithoutLogAtOnce) {
    start({"run", "--pauses", small});
    EXPECT_TRUE(shows("prepare"));
    press_control_c();
    EXPECT_EQ(exit_code(), 130);
    EXPECT_TRUE(ends_with("\r\x1B[Krecalculo: interrupted\r\n")) << shown_;
}

TEST_F(OnATerminal, TheSignalToTerminateIsExitCode143) {
    start({"run", "--pauses", small});
    EXPECT_TRUE(shows("prepare"));
    kill(child_, SIGTERM);
    EXPECT_EQ(exit_code(), 143);
}

TEST_F(OnATerminal, ExplainShowsTheProgressOfItsRun) {
    // More services than fit, so that the engine has seconds of exchanges before it.
    json headend = json::parse(R"({"modules": [], "services": []})");
    for (int module = 0; module < 500; ++module)
        headend["modules"].push_back({{"mac", "M" + std::to_string(module)},
                                      {"controller", module == 0},
                                      {"inputs", 40},
                                      {"outputs", {1000, 1000}},
                                      {"pids_max", 100}});
    for (int lcn = 1; lcn <= 30000; ++lcn)
        headend["services"].push_back({{"lcn", lcn},
                                       {"name", "s"},
                                       {"onid", 1},
                                       {"tsid", lcn % 40 + 1},
                                       {"sid", lcn},
                                       {"bitrate", 50 + lcn % 37}});
    start({"explain", write("crowded.json", headend.dump())});
    EXPECT_TRUE(shows(" services left · "));
    press_control_c();
    EXPECT_EQ(exit_code(), 130);
    EXPECT_TRUE(ends_with("\r\x1B[Krecalculo: interrupted\r\n")) << shown_.substr(0, 2000);
}

TEST_F(OnATerminal, ALogOnStandardErrorIsProgressEnough) {
    start({"run", "--pauses", "--log", "-", small});
    EXPECT_TRUE(shows("BEGIN OPTION: MAX --"));
    press_control_c();
    EXPECT_EQ(exit_code(), 130);
    EXPECT_EQ(shown_.find("prepare"), std::string::npos);
    EXPECT_EQ(shown_.find("strategy 1"), std::string::npos);
}

TEST_F(CommandLine, ElsewhereThereIsNoProgress) {
    const int terminated = 143;
    const Outcome outcome = shell("timeout --preserve-status 3 '" + program + "' run --pauses " + small);
    EXPECT_EQ(outcome.code, terminated);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "recalculo: interrupted\n");
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
        "--format: found \"pdf\", expected one of channels.conf, csv\nRun with --help for more information.");
    expect_refused(run("export " + small), "--format is required\nRun with --help for more information.");
}

TEST_F(CommandLine, ExportToAFullDisk) {
    const std::string result = run("run " + small + " --json").out;
    expect_refused(run("export - --format channels.conf >/dev/full", result),
                   "standard output: cannot be written: No space left on device");
}

const std::string without_services =
    R"({"modules": [{"mac": "M", "controller": true, "inputs": 1, "outputs": [5000], "pids_max": 0}]})";
const std::string two_streams =
    R"({"modules": [{"mac": "M", "controller": true, "inputs": 1, "outputs": [5000],
    "pids_max": 0}], "services": [{"lcn": 1, "name": "a", "onid": 1, "tsid": 1, "sid": 1},
    {"lcn": 2, "name": "b", "onid": 1, "tsid": 2, "sid": 2}]})";

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

TEST_F(CommandLine, BoundTellsWhatAnyArrangementCouldPlace) {
    const Outcome outcome = run("bound -", two_streams);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_NE(
        outcome.out.find("2 services loaded: no arrangement places more than 1, the engine placed 1: none "
                         "can do better\n"),
        std::string::npos)
        << outcome.out;
    const json report = json::parse(run("bound --json - --set 'modules[0].inputs=2'", two_streams).out);
    EXPECT_EQ(report.at("bound"), 1);
    EXPECT_EQ(report.at("placed"), 1);
    EXPECT_EQ(report.at("limits").at(0).at("allows"), 2);
}

TEST_F(CommandLine, SizeTellsHowManyModulesAreNeeded) {
    const std::string kind = write("kind.json", R"({"inputs": 1, "outputs": [5000], "pids_max": 0})");
    const Outcome outcome = run("size - --add " + kind, two_streams);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "") << "progress is for terminals";
    EXPECT_NE(outcome.out.find("  1 more module: the engine then places everything.\n"), std::string::npos)
        << outcome.out;
    const json report = json::parse(run("size - --json --jobs 3 --add " + kind, two_streams).out);
    EXPECT_EQ(report.at("add").at("number"), 1);
    EXPECT_TRUE(json::parse(run("size - --json --most 0 --add " + kind, two_streams).out)
                    .at("add")
                    .at("number")
                    .is_null());
    const std::string whole = write("whole.json", without_services);
    EXPECT_EQ(json::parse(run("size - --json --add " + whole, two_streams).out).at("add").at("number"), 1);
}

TEST_F(OnATerminal, SizeTellsItsRuns) {
    // Each module has room for one of them, while by the total of bitrates fewer modules would do. So the
    // search has much to try.
    json headend = json::parse(R"({"modules": [{"mac": "M", "controller": true, "inputs": 1, "outputs": [100],
        "pids_max": 0}], "services": []})");
    for (int lcn = 1; lcn <= 300; ++lcn)
        headend["services"].push_back({{"lcn", lcn},
                                       {"name", "s"},
                                       {"onid", 1},
                                       {"tsid", 10},
                                       {"sid", lcn},
                                       {"bitrate", lcn == 1 ? 1 : 60}});
    const std::string crowded = write("crowded.json", headend.dump());
    const std::string kind = write("kind.json", R"({"inputs": 1, "outputs": [100], "pids_max": 0})");
    start({"size", "--most", "10000", "--jobs", "1", crowded, "--add", kind});
    EXPECT_TRUE(shows(" runs · "));
    press_control_c();
    EXPECT_EQ(exit_code(), 130);
    EXPECT_TRUE(ends_with("\r\x1B[Krecalculo: interrupted\r\n")) << shown_;
}

TEST_F(CommandLine, SizeRefuses) {
    const std::string headend = write("headend.json", two_streams);
    expect_refused(run("size - --add -", two_streams),
                   "standard input: found \"-\" for the head-end and for --add, expected it once");
    expect_refused(run("size " + headend + " --add " + small),
                   small + ": /modules: found a list of 3 entries, expected just one module");
    expect_refused(
        run("size " + headend + " --add -", R"({"model": 2, "inputs": 1, "outputs": [], "pids_max": 0})"),
        "standard input: /modules/0: module \":01\": found model 2, expected 3, the one that the engine "
        "supports");
}

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
                  "1 gained, 0 lost, 0 moved, 1 in the same place, 0 left out by both");
    }
    EXPECT_EQ(run("compare " + headend + " -", read(richer)).out.substr(0, 8), "1 gained");
    const json report = json::parse(run("compare --json " + richer + " " + headend).out);
    EXPECT_EQ(report.at("summary").at("lost"), 1);
    EXPECT_EQ(report.at("lost").at(0).at("after"), json::array());
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

TEST_F(CommandLine, CompareRefuses) {
    expect_refused(run("compare - -"), "standard input: found \"-\" for both, expected it once");
    expect_refused(run("compare " + small + " -", "[]"),
                   "standard input: top level: found a list of 0 entries, expected an object");
    EXPECT_EQ(run("compare " + small + " -", R"({"modules": []})").code, 1);
}

} // namespace
