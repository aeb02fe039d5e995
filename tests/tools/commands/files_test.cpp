// What a command does to files: none that was read is lost, none is left half written, no two outputs go into
// one, and memory that ends is told.

#include "commands/command_line.h"

#include <string>

#include <nlohmann/json.hpp>

#include "sanitized.h"

namespace zarven::tool {
namespace {

using nlohmann::json;

/// Begins with the text.
bool begins_with(const std::string& text, const std::string& beginning) {
    return text.compare(0, beginning.size(), beginning) == 0;
}

TEST_F(CommandLine, WhatStandardInputWasReadFromIsNotOverwritten) {
    const std::string list = write("list", channel_line);
    const std::string modules = write("modules.json", modules_text);
    const std::string headend = write("headend.json", read(small));
    const std::string problem =
        ": cannot be written: it was read by the same command; expected another file\n";
    const auto expect_kept = [&](const std::string& command, const std::string& path) {
        const std::string text = read(path);
        const Outcome outcome = shell(command);
        EXPECT_EQ(outcome.code, 2) << command;
        EXPECT_NE(outcome.err.find(problem), std::string::npos) << command << outcome.err;
        EXPECT_EQ(read(path), text) << command;
    };
    const std::string import = "'" + program + "' import --modules " + modules;
    const std::string run = "'" + program + "' run ";
    expect_kept(import + " - <" + list + " -o " + list, list);
    expect_kept(import + " /dev/stdin <" + list + " -o " + list, list);
    expect_kept("cat " + list + " | " + import + " - -o " + modules, modules);
    expect_kept(run + "- <" + headend + " --html " + headend, headend);
    expect_kept(run + "/dev/fd/3 3<" + headend + " --log " + headend, headend);
    expect_kept(run + headend + " >>" + headend, headend);
    fs::create_hard_link(headend, file("hard"));
    expect_kept(run + headend + " --html " + file("hard"), headend);
}

TEST_F(CommandLine, TwoOutputsIntoOneFileAreRefused) {
    fs::create_symlink("page", file("link"));
    const std::string page = file("page");
    const auto expect_two = [&](const std::string& arguments, const std::string& problem) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, 2) << arguments;
        EXPECT_EQ(outcome.err, "recalculo: " + problem + "; expected two files\n");
        EXPECT_TRUE(read(page).empty()) << arguments;
    };
    expect_two("run " + small + " --html " + page + " --log " + file("./page"),
               "--html and --log both write to " + file("./page"));
    expect_two("run " + small + " --html " + page + " --log " + file("link"),
               "--html and --log both write to " + file("link"));
    expect_two("run --json " + small + " --html " + page + " >" + page,
               "the report and --html both write to " + page);
    expect_two("run " + small + " --log " + page + " >" + page, "the report and --log both write to " + page);
    expect_two("compare " + small + " " + small + " --html " + page + " >" + page,
               "the report and --html both write to " + page);
    expect_two("run --html - " + small + " --log /dev/stdout >" + page,
               "the report and --log both write to /dev/stdout");
    const std::string choose = "choose --runs 1 --jobs 1 " + small;
    expect_two(choose + " --html " + page + " -o " + file("./page"),
               "--html and -o both write to " + file("./page"));
    expect_two(choose + " --html " + page + " -o " + file("link"),
               "--html and -o both write to " + file("link"));
    for (const std::string form : {"", " --json", " --html -"})
        expect_two(choose + form + " -o " + page + " >" + page, "the report and -o both write to " + page);
    expect_two(choose + " -o - --html " + page + " >" + page, "the report and --html both write to " + page);
    EXPECT_EQ(run(choose + " --html /dev/null -o /dev/null >/dev/null").code, 0);
    EXPECT_EQ(run("run " + small + " --html /dev/null --log /dev/null >/dev/null").code, 0);
}

TEST_F(CommandLine, StandardOutputByAnotherNameIsNotReplaced) {
    const std::string out = file("out");
    const std::string modules = write("modules.json", modules_text);
    // What stands there already stays.
    const Outcome outcome = shell("echo before >" + out + "; '" + program + "' import - --modules " +
                                      modules + " -o /dev/stdout >>" + out + "; echo after >>" + out,
                                  channel_line);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    const std::string text = read(out);
    ASSERT_TRUE(begins_with(text, "before\n{")) << text;
    EXPECT_EQ(text.substr(text.size() - 6), "after\n");
    EXPECT_TRUE(begins_with(shell("'" + program + "' run " + small + " --html /dev/fd/3 3>" + file("third") +
                                  " >/dev/null; cat " + file("third"))
                                .out,
                            "<!doctype html>"));
}

TEST_F(CommandLine, APipeWithANameIsWrittenTo) {
    const std::string pipe = file("pipe");
    const Outcome outcome = shell("mkfifo " + pipe + "; cat " + pipe + " & '" + program + "' run " + small +
                                  " --html " + pipe + " >/dev/null; wait");
    EXPECT_EQ(outcome.code, 0);
    expect_page(outcome.out);
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(CommandLine, TextBehindANulIsAnError) {
    const auto with_nul = [](std::string text) { return text + std::string("\0\n", 2) + text; };
    expect_refused(run("run -", with_nul(modules_text)),
                   "standard input: line 2: found a NUL character, expected text");
    write("modules.json", modules_text);
    expect_refused(run("import - --modules " + file("modules.json"), with_nul(channel_line)),
                   "standard input: line 2: found a NUL character, expected text");
}

TEST_F(CommandLine, ALineOfTheLogStaysALineAndCommandsNoTerminal) {
    const std::string headend =
        write("headend.json", R"({"modules": [{"mac": "02:00:00:00:00:0A", "controller": true,
        "inputs": 1, "outputs": [9000], "pids_max": 0}], "services": [{"lcn": 1,
        "name": "a\n3 forged\u001b[2J\u009b\u202e", "onid": 1, "tsid": 1, "sid": 1}]})");
    run("run " + headend + " --log " + file("log"));
    const std::string log = read(file("log"));
    EXPECT_NE(log.find("a\uFFFD3 forged\uFFFD[2J\uFFFD\uFFFD"), std::string::npos);
    EXPECT_EQ(log.find("\n3 forged"), std::string::npos);
    for (const char* bad : {"\x1B", "\u009B", "\u202E"})
        EXPECT_EQ(log.find(bad), std::string::npos) << bad;
    EXPECT_NE(log.find('\t'), std::string::npos); // the engine's own
}

TEST_F(CommandLine, JsonCommandsNoTerminalAndTellsTheNameAllTheSame) {
    const std::string headend = write("headend.json", R"({"name": "\u001b[2J\u007f\u009b31m\u202eé",
        "modules": [{"mac": "02:00:00:00:00:0A", "controller": true, "inputs": 1, "outputs": [9000], "pids_max": 0}]})");
    const Outcome outcome = run("run --json " + headend);
    for (const char* bad : {"\x1B", "\x7F", "\u009B", "\u202E"})
        EXPECT_EQ(outcome.out.find(bad), std::string::npos) << bad;
    EXPECT_NE(outcome.out.find("é"), std::string::npos);
    EXPECT_EQ(json::parse(outcome.out).at("name"), "\u001B[2J\u007F\u009B31m\u202Eé");
}

TEST_F(CommandLine, WrongUseCommandsNoTerminal) {
    const Outcome outcome = run("run x \"$(printf -- '--\\033[2J')\"");
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.err.find('\x1B'), std::string::npos) << outcome.err;
}

#ifndef RECALCULO_SANITIZED

/// A head-end of so many services, and a channel list of so many.
std::string large_headend(int services) {
    std::string text =
        R"({"modules": [{"mac": "02:00:00:00:00:0A", "controller": true, "inputs": 1, "outputs": [9000],
        "pids_max": 0}], "services": [)";
    for (int number = 0; number < services; ++number)
        text += (number == 0 ? "" : ",") + std::string(R"({"lcn": )") + std::to_string(number % 60000 + 1) +
                R"(, "name": "a name that needs memory of its own", "onid": 1, "tsid": )" +
                std::to_string(number / 60000 + 1) + R"(, "sid": 1})";
    return text + "]}";
}

TEST_F(CommandLine, MemoryThatEndsIsToldWhereverItEnds) {
    const std::string headend = write("headend.json", large_headend(5000));
    std::string lines;
    for (int line = 0; line < 20000; ++line)
        lines += channel_line;
    const std::string list = write("list", lines);
    int ended = 0;
    for (int megabytes = 12; megabytes <= 36; megabytes += 3)
        for (const std::string& arguments :
             {"explain --service 7 " + headend,
              "import " + list + " --modules " + headend + " -o " + file("out")}) {
            const Outcome outcome =
                shell("ulimit -v " + std::to_string(megabytes * 1024) + "; '" + program + "' " + arguments);
            if (outcome.code == 0 || outcome.code == 127) // enough; or not even for the program's libraries
                continue;
            if (outcome.err.rfind("qemu", 0) == 0)
                GTEST_SKIP() << "the emulator takes more for itself";
            EXPECT_EQ(outcome.code, 1) << megabytes << ' ' << arguments << outcome.err;
            EXPECT_EQ(outcome.err, "recalculo: memory ran out\n") << megabytes << ' ' << arguments;
            ++ended;
        }
    EXPECT_GT(ended, 5);
}

#endif

} // namespace
} // namespace zarven::tool
