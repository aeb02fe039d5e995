// `recalculo import`.

#include "commands/command_line.h"

#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool::import_test {
namespace {

using nlohmann::json;

TEST_F(CommandLine, ImportWritesAHeadend) {
    const Outcome outcome =
        run("import " + write("list", channel_line) + " --modules " + write("modules.json", modules_text));
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, R"({
  "modules": [
    { "mac": "02:00:00:00:00:0A", "controller": true, "inputs": 2, "outputs": [38000], "pids_max": 8 }
  ],
  "services": [
    { "lcn": 1, "name": "Canal", "onid": 1, "tsid": 1011, "sid": 11110, "video_format": 4, "bitrate": 8000, "descramble": 1, "ca_pids": 2 }
  ],
  "streams": [
    { "onid": 1, "tsid": 1011, "frequency": 11362000, "polarization": "H", "satellite": "19.2E", "symbol_rate": 22000000, "net_rate": 27032, "delivery": "DVB-S" }
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
        "standard input: line 6: channel number 70000 is too large, expected at most 65535\n"
        "standard input: line 4: SID 11110 of stream 1/1011 stands on line 2 already\n"
        "standard input: 1 service in 1 stream imported: 0 SD, 1 HD, 0 radio; 1 of them scrambled; 2 lines left "
        "aside; 1 duplicate passed over\n"
        "standard input: read as channels.conf; estimated: bitrates by kind\n");
    EXPECT_EQ(json::parse(read(file("out.json"))).at("services").size(), 1u);
}

TEST_F(CommandLine, ImportTakesEstimates) {
    const std::string line = "Canal:11362:HC23:S19.2E:22000:0:6120:0:0:1:1:1011:0\n";
    const Outcome outcome =
        run("import - --radio-bitrate 320 --modules " + write("modules.json", modules_text), line);
    EXPECT_EQ(json::parse(outcome.out).at("services").at(0).at("bitrate"), 320);
}

TEST_F(CommandLine, ImportTellsKindsThatTheListDoesNotTell) {
    const std::string list = "Datos:11362:HC34:S19.2E:27500:0:0:0:0:1:1:1011:0\n"
                             "Canal HD:11362:HC34:S19.2E:27500:1:2:0:0:2:1:1011:0\n"
                             "Canal UHD:11362:HC34:S19.2E:27500:1=27:2:0:0:3:1:1011:0\n";
    const Outcome outcome =
        run("import - -o /dev/null --modules " + write("modules.json", modules_text), list);
    EXPECT_EQ(
        outcome.err,
        "standard input: 3 services in 1 stream imported: 0 SD, 1 HD, 1 UHD, 0 radio, 1 of unknown kind; 0 of "
        "them scrambled; no line left aside\n"
        "standard input: read as channels.conf; estimated: bitrates by kind, 1 service of unknown kind by "
        "name or as SD, 1 picture without kind by name\n");
}

TEST_F(CommandLine, ImportTellsTranspondersApart) {
    const std::string list = "Uno:11362:HC23:S19.2E:22000:1=2:2:0:0:1:65535:1:0\n"
                             "Dos:11362:VC23:S19.2E:22000:1=2:2:0:0:1:65535:1:0\n"
                             "Tres:514000:B8C23G32M64:T:0:1=2:2:0:0:1:65535:1:0\n";
    const Outcome outcome = run("import - --modules " + write("modules.json", modules_text), list);
    EXPECT_EQ(
        outcome.err,
        "standard input: 3 transponders have the ids 65535/1, and are told apart: 19.2E 11362 MHz H as "
        "65535/1, 19.2E 11362 MHz V as 65535/11362, 514 MHz as 65535/514\n"
        "standard input: 3 services in 3 streams imported: 3 SD, 0 HD, 0 radio; 0 of them scrambled; no line "
        "left aside\n"
        "standard input: read as channels.conf; estimated: bitrates by kind, TSID of 2 streams by frequency\n");
    EXPECT_EQ(json::parse(outcome.out).at("streams").size(), 3u);
}

TEST_F(CommandLine, ImportKeepsDuplicatesIfAsked) {
    const std::string import = "import - --modules " + write("modules.json", modules_text);
    const std::string list = channel_line + channel_line;
    EXPECT_EQ(json::parse(run(import, list).out).at("services").size(), 1u);
    EXPECT_EQ(json::parse(run(import + " --keep-duplicates", list).out).at("services").size(), 2u);
}

TEST_F(CommandLine, ImportKeepsToWhatTheTransponderCarries) {
    const std::string parameters = ":11362:HC34M2S0:S19.2E:27500:1=27:2:0:0:";
    std::string list;
    for (int sid = 1; sid <= 5; ++sid)
        list += "Canal" + parameters + std::to_string(sid) + ":1:1011:0\n";
    const Outcome outcome = run("import - --modules " + write("modules.json", modules_text), list);
    EXPECT_EQ(
        outcome.err,
        "standard input: stream 1/1011: its services by kind take 40000 kbit/s, its transponder carries 38014: "
        "shared out\n"
        "standard input: 5 services in 1 stream imported: 0 SD, 5 HD, 0 radio; 0 of them scrambled; no line "
        "left aside\n"
        "standard input: read as channels.conf; estimated: bitrates by kind (shared out in 1 stream of which "
        "the transponder carries less)\n");
    const json headend = json::parse(outcome.out);
    for (const json& service : headend.at("services"))
        EXPECT_EQ(service.at("bitrate"), 38014 / 5);
}

TEST_F(CommandLine, ImportTellsThreeMessagesOfAKindOrAll) {
    const std::string import =
        "import - -o " + file("out.json") + " --modules " + write("m.json", modules_text);
    const std::string list = "a\nb:c\nd\ne\n" + channel_line;
    const auto told = [](int line, const char* fields) {
        return "standard input: line " + std::to_string(line) + ": found " + fields +
               ", expected 13 with colons between them\n";
    };
    const std::string end =
        "standard input: 1 service in 1 stream imported: 0 SD, 1 HD, 0 radio; 1 of them scrambled; 4 "
        "lines left aside\n"
        "standard input: read as channels.conf; estimated: bitrates by kind\n";
    EXPECT_EQ(run(import, list).err,
              told(1, "1 field") + told(2, "2 fields") + told(3, "1 field") + told(4, "1 field") + end);
    EXPECT_EQ(
        run(import, "f\n" + list).err,
        told(1, "1 field") + told(2, "1 field") + told(3, "2 fields") + told(4, "1 field") +
            "standard input: 1 more, which --verbose tells: found ... field, expected 13 with colons between them\n" +
            end.substr(0, end.find("4 lines")) + "5 lines" + end.substr(end.find("4 lines") + 7));
    EXPECT_EQ(run(import + " --verbose", list).err, run(import, list).err);
    EXPECT_EQ(run(import + " --verbose", "f\n" + list).err.find("more, which"), std::string::npos);
}

TEST_F(CommandLine, ImportOfNothingFails) {
    const Outcome outcome =
        run("import - -o " + file("out.json") + " --modules " + write("m.json", modules_text),
            "broken\n:heading\n");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(
        outcome.err,
        "standard input: line 1: found 1 field, expected 13 with colons between them\n"
        "standard input: 0 services in 0 streams imported: 0 SD, 0 HD, 0 radio; 0 of them scrambled; 1 line left "
        "aside\n"
        "standard input: read as channels.conf; estimated: bitrates by kind\n"
        "recalculo: nothing is imported, and no head-end is written\n");
    EXPECT_FALSE(fs::exists(file("out.json")));
}

TEST_F(CommandLine, ImportMergesLists) {
    const std::string one = write("one.conf", channel_line);
    const std::string other =
        write("other.lamedb", "eDVB services /5/\nt:00c00000:03f3:0001,s:11362000:22000000:0:2:192:2:0\n"
                              "s:2b66:00c00000:03f3:0001:25:0,\"Canal\",c:0065\n"
                              "s:2b67:00c00000:03f3:0001:25:0,\"Otro\",c:0065\n"
                              "s:2b68:00c00000:03f3:0001:25:0,\"Tercero\",c:00xx\n");
    const Outcome outcome =
        run("import " + one + " " + other + " --modules " + write("m.json", modules_text));
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(
        outcome.err,
        other + ": line 3: SID 11110 of stream 1/1011 stands on line 1 of an earlier list already\n" + other +
            ": line 5: c: found \"00xx\", expected two decimal digits, then a hexadecimal PID from 0 to 1FFF\n" +
            one + ": read as channels.conf: 1 channel\n" + other +
            ": read as lamedb: 3 channels\n"
            "2 lists: 3 services in 1 stream imported: 0 SD, 3 HD, 0 radio; 1 of them scrambled; no line left aside; "
            "1 duplicate passed over\n"
            "2 lists: estimated: bitrates by kind, LCN of 3 channels by place in the file\n");
    const json headend = json::parse(outcome.out);
    std::vector<int> numbers;
    for (const json& service : headend.at("services"))
        numbers.push_back(service.at("lcn"));
    EXPECT_EQ(numbers, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(headend.at("streams").size(), 1u);
    expect_refused(run("import - - --modules " + small),
                   "standard input: found \"-\" for two channel lists, expected it once");
}

TEST_F(CommandLine, ImportTakesWhatIsWanted) {
    const std::string wishes = write("wishes", "canal norte\n7\nNadie\n");
    const std::string import = "import " + examples + "/sample.dvbv5.conf --modules " + small;
    const auto names = [](const Outcome& outcome) {
        std::vector<std::string> all;
        const json headend = json::parse(outcome.out);
        for (const json& service : headend.at("services"))
            all.push_back(service.at("name"));
        return all;
    };
    using Names = std::vector<std::string>;
    const Outcome selected = run(import + " --select " + wishes);
    EXPECT_EQ(names(selected), (Names{"Canal Norte", "Ría Cultura"}));
    EXPECT_EQ(selected.err.find(wishes + ": line 3: no service has the name or LCN \"Nadie\"\n"), 0u);
    EXPECT_NE(selected.err.find("; no line left aside; 2 services not wanted\n"), std::string::npos)
        << selected.err;
    EXPECT_EQ(json::parse(selected.out).at("streams").size(), 2u);
    EXPECT_EQ(names(run(import + " --only hd,radio")),
              (Names{"Canal Norte HD", "Ría Cultura", "Radio Faro"}));
    EXPECT_EQ(names(run(import + " --only hd --only 'name=*norte*'")), (Names{"Canal Norte HD"}));
    EXPECT_EQ(names(run(import + " --exclude hd --exclude radio")), (Names{"Canal Norte"}));
    EXPECT_EQ(run(import + " --only scrambled").code, 1);
    expect_refused(
        run(import + " --exclude hdd"),
        "--exclude: found \"hdd\", expected tv, radio, hd, sd, scrambled, free, unknown, a stream as 1/1002, "
        "LCNs as 12 or 100-199, name=PATTERN or group=PATTERN with * and ?");
}

TEST_F(CommandLine, ImportReadsEveryFormat) {
    for (const auto& [name, format] :
         {std::pair("sample.dvbv5.conf", "dvbv5"), std::pair("sample.lamedb", "lamedb")}) {
        const std::string list = examples + "/" + name;
        const Outcome shown = run("import " + list + " --modules " + small);
        EXPECT_EQ(shown.code, 0);
        EXPECT_EQ(json::parse(shown.out).at("services").size(), 4u);
        EXPECT_NE(shown.err.find(list + ": read as " + format + "; estimated: bitrates by kind"),
                  std::string::npos)
            << shown.err;
        const Outcome said = run("import " + list + " --format " + format + " --modules " + small);
        EXPECT_EQ(said.out, shown.out);
    }
}

TEST_F(CommandLine, ImportTellsWhatItEstimates) {
    EXPECT_NE(
        run("import " + examples + "/sample.dvbv5.conf --modules " + small)
            .err.find(
                "estimated: bitrates by kind (not limited in 3 streams of which the list does not tell the "
                "rate), every service free to air, LCN of 1 channel by place in the file, TSID of 1 stream by "
                "frequency\n"),
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
    const std::string list = write("list", channel_line);
    const std::string modules = write("modules.json", modules_text);
    const std::string select =
        "standard input: found \"-\" for --select and for something else, expected it once";
    for (const std::string& others :
         {"- --modules " + modules, list + " --modules -", list + " --measured - --modules " + modules})
        expect_refused(run("import --select - " + others, channel_line), select);
    expect_refused(run("import " + list + " --select - --wish - --modules " + modules, "Canal\n"),
                   "standard input: found \"-\" for --wish and for something else, expected it once");
    expect_refused(run("import " + list + " --select - --select - --modules " + modules, "Canal\n"),
                   "standard input: found \"-\" for two --select, expected it once");
    EXPECT_EQ(run("import " + list + " --select - --modules " + modules, "Canal\n").code, 0);
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
} // namespace zarven::tool::import_test
