// The checker is worth something only if it sees faults: each is put into a sound result by hand.

#include "placement/result_invariants.h"

#include <functional>

#include <gtest/gtest.h>

#include "headend/headend_json.h"
#include "placement/result.h"
#include "placement/result_json.h"
#include "placement/running/engine_run.h"

namespace zarven::tool::result_invariants_test {
namespace {

using nlohmann::json;

const char* const headend_text = R"({
  "modules": [
    { "mac": "A", "controller": true, "inputs": 1, "outputs": [5000, 5000], "pids_max": 0 },
    { "mac": "B", "inputs": 1, "outputs": [5000], "pids_max": 0 }
  ],
  "services": [
    { "lcn": 1, "name": "a", "onid": 1, "tsid": 1, "sid": 1, "bitrate": 3000 },
    { "lcn": 2, "name": "b", "onid": 1, "tsid": 1, "sid": 2, "bitrate": 3000 },
    { "lcn": 3, "name": "c", "onid": 1, "tsid": 2, "sid": 3, "bitrate": 3000 },
    { "lcn": 4, "name": "d", "onid": 1, "tsid": 3, "sid": 4, "bitrate": 3000 }
  ],
  "clones": [
    { "lcn": 1, "name": "a", "onid": 1, "tsid": 1, "sid": 1 }
  ]
})";

json sound_result() {
    const Headend headend = read_headend("f", headend_text);
    EngineRun run = load_engine(headend, "f");
    run_engine(run, "f");
    return json::parse(result_json(result_of(run, "")));
}

using Faults = std::vector<std::string>;

Faults faults_after(const std::function<void(json&)>& damage) {
    json result = sound_result();
    damage(result);
    return faults_of(result, json::parse(headend_text));
}

json& at(json& result, const std::string& place) {
    return result.at(json::json_pointer(place));
}

TEST(ResultInvariants, ASoundResultHasNoFaults) {
    EXPECT_EQ(faults_after([](json&) {}), Faults{});
}

TEST(ResultInvariants, TheSoundResultIsWorthDamaging) {
    json result = sound_result();
    EXPECT_EQ(at(result, "/summary/placed"), 3);
    EXPECT_EQ(at(result, "/summary/left_out"), 1);
    EXPECT_EQ(at(result, "/modules/0/outputs/0/services").size(), 2u); // one with its clone
    EXPECT_EQ(at(result, "/modules/0/outputs/1/services").size(), 1u);
    EXPECT_EQ(at(result, "/modules/1/outputs/0/services").size(), 1u);
}

TEST(ResultInvariants, AnOutputOverItsBitrate) {
    EXPECT_EQ(faults_after([](json& result) { at(result, "/modules/0/outputs/1/bitrate_max") = 2999; }),
              Faults{"A: output 2 carries 3000 kbit/s"});
}

TEST(ResultInvariants, AnOutputWithTooManyServices) {
    EXPECT_EQ(faults_after([](json& result) { at(result, "/modules/0/outputs/1/service_max") = 0; }),
              Faults{"A: output 2 carries 1 services"});
}

TEST(ResultInvariants, AnOutputThatTellsOtherFigures) {
    EXPECT_EQ(faults_after([](json& result) {
                  at(result, "/modules/0/outputs/1/bitrate") = 0;
                  at(result, "/modules/0/outputs/1/service_count") = 2;
              }),
              (Faults{"A: output 2 carries 3000 kbit/s and says otherwise",
                      "A: output 2 carries 1 services and says otherwise"}));
}

TEST(ResultInvariants, AnInputTunedToAnotherStream) {
    EXPECT_EQ(faults_after([](json& result) { at(result, "/modules/1/inputs/0/tsid") = 9; }),
              Faults{"B: service 1/2 LCN 3 is on an input that is tuned to another stream"});
}

TEST(ResultInvariants, AServiceOnNoInput) {
    EXPECT_EQ(faults_after([](json& result) { at(result, "/modules/1/inputs/0/services").clear(); }),
              Faults{"B: service 1/2 LCN 3 is on an output and on no input"});
}

TEST(ResultInvariants, AServiceOnNoOutput) {
    EXPECT_EQ(faults_after([](json& result) {
                  json& input = at(result, "/modules/1/inputs/0/services");
                  input.push_back(input[0]);
                  input[1]["lcn"] = 77;
              }),
              Faults{"B: service 1/2 LCN 77 is on an input and on no output"});
}

TEST(ResultInvariants, AServiceOnTwoOutputsOfItsModule) {
    const Faults faults = faults_after([](json& result) {
        json& to = at(result, "/modules/0/outputs/0");
        to.at("services").push_back(at(result, "/modules/0/outputs/1/services/0"));
        to["bitrate"] = 6000;
        to["bitrate_max"] = 6000;
        to["service_count"] = 2;
    });
    EXPECT_EQ(faults, Faults{"A: service 1/1 LCN 2 is on its outputs 2 times"});
}

TEST(ResultInvariants, AServiceOnTwoModules) {
    const Faults faults = faults_after([](json& result) {
        json copy = at(result, "/modules/1");
        copy["mac"] = "C";
        at(result, "/modules").push_back(copy);
    });
    EXPECT_EQ(faults, Faults{"C: service 1/2 LCN 3 is on another module, too"});
}

TEST(ResultInvariants, AServiceThatIsNowhere) {
    EXPECT_EQ(faults_after([](json& result) {
                  at(result, "/left_out").clear();
                  at(result, "/summary/left_out") = 0;
              }),
              (Faults{"3 placed and 0 left out do not make 4 loaded", "service 1/3 LCN 4 is nowhere"}));
}

TEST(ResultInvariants, AServiceThatIsPlacedAndLeftOut) {
    EXPECT_EQ(
        faults_after([](json& result) {
            at(result, "/left_out/0/services").push_back(at(result, "/modules/1/outputs/0/services/0"));
            at(result, "/summary/left_out") = 2;
        }),
        (Faults{"3 placed and 2 left out do not make 4 loaded", "service 1/2 LCN 3 is placed and left out"}));
}

TEST(ResultInvariants, ASummaryThatTellsOtherFigures) {
    EXPECT_EQ(faults_after([](json& result) {
                  at(result, "/summary/placed") = 2;
                  at(result, "/summary/left_out") = 2;
              }),
              (Faults{"3 services are placed and the summary says otherwise",
                      "1 services are left out and the summary says otherwise"}));
}

} // namespace
} // namespace zarven::tool::result_invariants_test
