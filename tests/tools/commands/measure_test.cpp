// `recalculo measure`, and `--measured` of `recalculo import`.

#include "commands/command_line.h"

#include <string>

#include <nlohmann/json.hpp>

namespace zarven::tool::measure_test {
namespace {

using nlohmann::json;

const std::string headend =
    R"({"modules": [{"mac": "02:00:00:00:00:01", "controller": true, "inputs": 1, "outputs": [38000],
    "pids_max": 0}], "services": [{"lcn": 1, "name": "a", "onid": 1, "tsid": 7, "sid": 1},
    {"lcn": 2, "name": "b", "onid": 1, "tsid": 7, "sid": 2}]})";
const std::string table = "onid,tsid,sid,kbit_s\n1,7,1,4200\n1,7,1,4000\n";

TEST_F(CommandLine, MeasurePutsRatesIntoAHeadend) {
    const Outcome outcome =
        run("measure " + write("h.json", headend) + " " + write("rates.csv", table) + " " +
            write("more.csv", "tsid;sid;kbit_s\n7;1;4300\n") + " --margin measured=10%");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "2 files: 1 service measured; of 2 in the head-end, 1 estimated\n");
    const json services = json::parse(outcome.out).at("services");
    EXPECT_EQ(services.at(0).at("bitrate"), 4730);
    EXPECT_EQ(services.at(0).at("mean_bitrate"), 4167);
    EXPECT_EQ(services.at(0).at("measured"), true);
    EXPECT_EQ(services.at(1).at("bitrate"), 3500);
    EXPECT_EQ(services.at(1).count("measured"), 0u);
}

TEST_F(CommandLine, MeasureTellsWhatDidNotMatchByKind) {
    const std::string file_name = file("rates.csv");
    std::string rates = table;
    for (int stream = 11; stream <= 14; ++stream)
        rates += "1," + std::to_string(stream) + ",1,1000\n";
    rates += "1,7,9,1000\n1,7,2,0\n1,7,x,3\n";
    const std::string measure =
        "measure " + write("h.json", headend) + " " + write("rates.csv", rates) + " -o " + file("out.json");
    const auto told = [&](int stream) {
        return file_name + ": stream 1/" + std::to_string(stream) +
               ": the head-end does not have it: 1 service passed over\n";
    };
    const Outcome outcome = run(measure);
    EXPECT_EQ(outcome.code, 0);
    const std::string first =
        file_name + ": line 10: sid: found \"x\", expected a whole number from 0 to 65535\n";
    const std::string others =
        file_name + ": SID 9 of stream 1/7: the head-end does not have it: passed over\n" + file_name +
        ": \"b\" (SID 2 of stream 1/7): the rate is 0: what stood there is kept\n";
    const std::string sum = file_name + ": 1 service measured; of 2 in the head-end, 1 estimated\n";
    EXPECT_EQ(outcome.err, first + told(11) + told(12) + told(13) + others + file_name +
                               ": 1 more, which --verbose tells: streams that the head-end does not have\n" +
                               sum);
    EXPECT_EQ(run(measure + " --verbose").err,
              first + told(11) + told(12) + told(13) + told(14) + others + sum);
}

TEST_F(CommandLine, MeasureWritesNothingWhereNothingMatches) {
    const Outcome outcome = run("measure " + write("h.json", headend) + " - -o " + file("out.json"),
                                "tsid,sid,kbit_s\n8,1,4200\n");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err,
              "standard input: stream with TSID 8: the head-end does not have it: 1 service passed over\n"
              "standard input: 0 services measured; of 2 in the head-end, 2 estimated\n"
              "recalculo: no service was measured, and no head-end is written\n");
    EXPECT_FALSE(fs::exists(file("out.json")));
    expect_refused(run("measure - -", headend),
                   "standard input: found \"-\" for two files, expected it once");
    expect_refused(
        run("measure " + file("h.json") + " -", "hello"),
        "standard input: found no measurement, expected the analysis of a stream as JSON, a log with "
        "such, or a table with the heading onid,tsid,sid,kbit_s");
}

TEST_F(CommandLine, MeasureTellsAStreamThatWasLookedAtTooShortly) {
    const Outcome outcome = run(
        "measure " + write("h.json", headend) + " -",
        "* analyze: X{\"ts\": {\"duration\": 4.5, \"bitrate\": 9000000}, \"services\": [{\"id\": 1, \"tsid\": "
        "7, \"original-network-id\": 1, \"bitrate\": 4200000}]}\n");
    EXPECT_EQ(
        outcome.err,
        "standard input: stream 1/7: looked at for 4.5 s in all, which is too short for a peak: measure for "
        "10 s at least\n"
        "standard input: 1 service measured, 1 of them once, so that the mean stands for the peak; of 2 in "
        "the head-end, 1 estimated\n");
}

TEST_F(CommandLine, ReportsTellHowMuchRestsOnEstimates) {
    const std::string measured = file("out.json");
    run("measure " + write("h.json", headend) + " - -o " + measured, table);
    const std::string sentence =
        "Bitrates of 2 services placed: 1 measured, 1 estimated; estimates are 3500 of 7700 "
        "kbit/s (45.5 %)";
    EXPECT_NE(run("run " + measured).out.find("\n" + sentence + "\n"), std::string::npos);
    EXPECT_NE(run("run " + measured + " --html -").out.find("<p class=\"note\">" + sentence + "</p>"),
              std::string::npos);
    const json result = json::parse(run("run " + measured + " --json").out);
    EXPECT_EQ(result.at("summary").at("rates"), json::parse(R"({"measured_loaded": 1, "measured_placed": 1,
        "estimated_placed": 1, "bitrate": 7700, "estimated_bitrate": 3500})"));
    const json services = result.at("modules").at(0).at("inputs").at(0).at("services");
    EXPECT_EQ(services.at(0).at("measured"), true);
    EXPECT_EQ(services.at(1).count("measured"), 0u);
    const json explained = json::parse(run("explain " + measured + " --service 1 --json").out);
    EXPECT_EQ(explained.at("services").at(0).at("measured"), true);
    const Outcome without = run("run " + file("h.json") + " --json");
    EXPECT_EQ(json::parse(without.out).at("summary").count("rates"), 0u);
    EXPECT_EQ(run("run " + file("h.json")).out.find("Bitrates of"), std::string::npos);
}

TEST_F(CommandLine, ImportTakesMeasuredRatesInThePlaceOfEstimates) {
    const std::string import = "import " + examples + "/sample.lamedb --modules " + examples +
                               "/modules-16.json --measured " + examples +
                               "/sample.analysis.json --measured " + examples + "/sample.rates.csv";
    const Outcome outcome = run(import);
    EXPECT_EQ(outcome.code, 0);
    const json services = json::parse(outcome.out).at("services");
    EXPECT_EQ(services.at(0).at("bitrate"), 3121);
    EXPECT_EQ(services.at(1).at("bitrate"), 5241);
    EXPECT_EQ(services.at(1).at("ca_pids"), 3);
    EXPECT_EQ(services.at(2).at("bitrate"), 21040);
    EXPECT_EQ(services.at(2).at("mean_bitrate"), 19846);
    EXPECT_EQ(services.at(3).count("measured"), 0u);
    EXPECT_NE(outcome.err.find("estimated: bitrates of 1 service by kind"), std::string::npos);
    EXPECT_NE(
        outcome.err.find("\n2 files: 3 services measured, 2 of them once, so that the mean stands for the "
                         "peak; of 4 in the head-end, 1 estimated\n"),
        std::string::npos);
    EXPECT_EQ(outcome.err.find("ECMs"), std::string::npos);
    const json wider = json::parse(run(import + " --margin estimated=50%").out).at("services");
    EXPECT_EQ(wider.at(0).at("bitrate"), 3121);
    EXPECT_EQ(wider.at(3).at("bitrate"), 330);
}

TEST_F(CommandLine, ImportHoldsEstimatesAndMeasuredRatesToTheTransponder) {
    const std::string parameters = ":11362:HC34M2S0:S19.2E:27500:1=27:2:0:0:";
    std::string list;
    for (int sid = 1; sid <= 5; ++sid)
        list += "Canal" + parameters + std::to_string(sid) + ":1:1011:0\n";
    const Outcome outcome =
        run("import " + write("list", list) + " --modules " + write("m.json", modules_text) + " --measured -",
            "onid,tsid,sid,kbit_s\n1,1011,1,14014\n");
    const json services = json::parse(outcome.out).at("services");
    EXPECT_EQ(services.at(0).at("bitrate"), 14014);
    for (std::size_t place = 1; place < 5; ++place)
        EXPECT_EQ(services.at(place).at("bitrate"), 6000);
    expect_refused(run("import - --measured - --modules " + file("m.json"), list),
                   "standard input: found \"-\" for --measured and for something else, expected it once");
}

} // namespace
} // namespace zarven::tool::measure_test
