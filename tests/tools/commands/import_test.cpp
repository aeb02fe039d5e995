// `recalculo import`.

#include "commands/command_line.h"

#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool {
namespace {

using nlohmann::json;

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

} // namespace
} // namespace zarven::tool
