// Characters, colour, width and progress, on a terminal and elsewhere.

#include "commands/on_a_terminal.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool::terminal_test {
namespace {

using nlohmann::json;

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
        EXPECT_EQ(run("run " + choice + small).out, read(RECALCULO_TOOL_TESTS "/report/small_result.txt"));
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

} // namespace
} // namespace zarven::tool::terminal_test
