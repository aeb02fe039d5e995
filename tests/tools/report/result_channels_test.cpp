// What is exported as channels.conf and imported again are the same services, and what a list cannot hold is
// counted.

#include "report/result_channels.h"

#include <gtest/gtest.h>

#include "base/streams.h"
#include "headend/headend_json.h"
#include "lineup/channel_import.h"
#include "lineup/channels_conf.h"
#include "placement/running/engine_run.h"

namespace zarven::tool::result_channels_test {
namespace {

using Numbers = std::vector<std::uint16_t>;

ServiceResult service(std::uint16_t lcn, const std::string& name = "Canal") {
    ServiceResult made;
    made.stream = {1, 1001};
    made.lcn = lcn;
    made.sid = 105;
    made.osid = 105;
    made.name = name;
    made.output_name = name;
    made.bitrate = typical_sd_bitrate;
    made.outputs = {1};
    return made;
}

/// A result with the services on one output.
Result placed(const std::vector<ServiceResult>& services) {
    Result result;
    result.modules.emplace_back();
    result.modules.back().outputs.emplace_back();
    result.modules.back().outputs.back().services = services;
    return result;
}

ImportedChannels exported_and_imported(const Result& result) {
    const ChannelList list = read_channels_conf(write_channels_conf(result_channels(result).channels));
    EXPECT_TRUE(list.unreadable.empty()) << list.unreadable.at(0).reason;
    return import_channels(list, {});
}

Service round_trip(const ServiceResult& service) {
    return exported_and_imported(placed({service})).services.at(0);
}

/// What must survive of a service.
void expect_same(const Service& imported, const ServiceResult& exported) {
    EXPECT_EQ(imported.lcn, exported.lcn);
    EXPECT_EQ(imported.name, exported.name);
    EXPECT_EQ(imported.onid, exported.stream.onid);
    EXPECT_EQ(imported.tsid, exported.stream.tsid);
    EXPECT_EQ(imported.sid, exported.sid);
    EXPECT_EQ(imported.video_format == tRec_Servicio::VIDEO_HD, exported.is_hd && !exported.is_radio);
    EXPECT_EQ(imported.type == type_radio, exported.is_radio);
    EXPECT_EQ(imported.descramble != 0, exported.is_scrambled);
    EXPECT_EQ(imported.ca_pids, exported.is_scrambled ? exported.ca_pids : 0);
}

Result result_of_example(const std::string& name) {
    const std::string file = RECALCULO_EXAMPLES "/" + name;
    const Headend headend = read_headend(file, read_text(file));
    EngineRun run = load_engine(headend, file);
    run_engine(run, file);
    return result_of(run, headend.name);
}

TEST(ResultChannels, TheExamplesComeBack) {
    for (const std::string name : {"small.json", "medium.json"}) {
        const Result result = result_of_example(name);
        std::map<ServiceKey, ServiceResult> expected;
        for (const ModuleResult& module : result.modules)
            for (const OutputResult& output : module.outputs)
                for (const ServiceResult& placed_one : output.services)
                    if (!placed_one.is_clone)
                        expected.emplace(key_of(placed_one), placed_one);
        const ImportedChannels imported = exported_and_imported(result);
        EXPECT_TRUE(imported.unreadable.empty());
        ASSERT_EQ(imported.services.size(), expected.size());
        auto next = expected.begin();
        for (const Service& each : imported.services)
            expect_same(each, (next++)->second);
    }
}

TEST(ResultChannels, AnExampleComesBackByKind) {
    const ImportedChannels imported = exported_and_imported(result_of_example("small.json"));
    EXPECT_EQ(imported.radio, 2u);
    EXPECT_EQ(imported.hd, 3u);
    EXPECT_EQ(imported.sd, 6u);
    EXPECT_EQ(imported.scrambled, 3u);
}

TEST(ResultChannels, EveryKindAndNumberOfCaPidsComesBack) {
    for (const bool is_radio : {false, true})
        for (const bool is_hd : {false, true})
            for (const std::uint16_t ca_pids : Numbers{0, 1, 2, 3, 50, 8160}) {
                ServiceResult made = service(7);
                made.is_radio = is_radio;
                made.is_hd = is_hd;
                expect_same(round_trip(made), made);
                made.is_scrambled = true;
                made.ca_pids = ca_pids;
                if (ca_pids != 0)
                    expect_same(round_trip(made), made);
            }
}

TEST(ResultChannels, CaPidsThatCannotComeBack) {
    ServiceResult made = service(7);
    made.ca_pids = 3;
    EXPECT_EQ(round_trip(made).ca_pids, 0); // free to air
    made.is_scrambled = true;
    made.ca_pids = 0;
    EXPECT_EQ(round_trip(made).ca_pids, 1);
    made.is_radio = true;
    EXPECT_EQ(round_trip(made).ca_pids, 1);
    EXPECT_EQ(round_trip(made).type, type_radio);
    made.is_radio = false;
    made.ca_pids = 65535;
    EXPECT_EQ(round_trip(made).ca_pids, 8160);
    made.is_radio = true;
    EXPECT_EQ(round_trip(made).ca_pids, 8160);
}

TEST(ResultChannels, NumbersAtTheirLimits) {
    for (const std::uint16_t number : Numbers{1, 2, 65535}) {
        ServiceResult made = service(number);
        made.sid = number;
        made.stream = {number, number};
        expect_same(round_trip(made), made);
    }
    ServiceResult made = service(1);
    made.sid = 0;
    made.stream.onid = 0;
    expect_same(round_trip(made), made);
    made.stream = {1, 0};
    expect_same(round_trip(made), made);
}

TEST(ResultChannels, OddNamesComeBack) {
    for (const std::string name : {"Cine: Acción", ":@7", ":", ",", "a,b", "a,b,", ",a", "海景 Música 📺",
                                   "[Canal]", "#1", " ", "\" ' \\", "eDVB services /4/", "=1", "@5"}) {
        const ServiceResult made = service(7, name);
        EXPECT_EQ(result_channels(placed({made})).renamed, 0u) << name;
        expect_same(round_trip(made), made);
    }
}

TEST(ResultChannels, NamesThatCannotComeBackAreChangedAndCounted) {
    for (const auto& [name, changed] :
         {std::pair("Uno; dos", "Uno, dos"), std::pair(";", ","), std::pair("16|9", "16:9"),
          std::pair("a\nb\rc", "a b c"), std::pair("a\x1B[2J", "a\uFFFD[2J"), std::pair("", "Service 105")}) {
        EXPECT_EQ(round_trip(service(7, name)).name, changed);
        EXPECT_EQ(result_channels(placed({service(7, name)})).renamed, 1u);
    }
}

TEST(ResultChannels, EqualNumbersInDifferentStreams) {
    ServiceResult other = service(7, "Otro");
    other.stream = {1, 1002};
    ServiceResult next = service(8);
    next.sid = 106;
    const ImportedChannels imported = exported_and_imported(placed({other, next, service(7)}));
    ASSERT_EQ(imported.services.size(), 3u);
    EXPECT_EQ(imported.services[0].tsid, 1001);
    expect_same(imported.services[1], other);
    EXPECT_EQ(imported.services[2].lcn, 8);
}

TEST(ResultChannels, AServiceOnSeveralOutputsIsOneChannel) {
    EXPECT_EQ(result_channels(placed({service(7), service(7)})).channels.size(), 1u);
}

TEST(ResultChannels, WhatIsNoChannelIsCounted) {
    ServiceResult clone = service(7);
    clone.is_clone = true;
    Result result = placed({service(7), clone, clone, service(0)});
    result.clones_waiting = {clone};
    // One of the two stands on an output, too.
    result.left_out = {{{1, 1}, {service(7), service(8)}}};
    clone.lcn = 9;
    result.neither = {service(10), service(11), clone};
    const ChannelExport exported = result_channels(result);
    EXPECT_EQ(exported.channels.size(), 1u);
    EXPECT_EQ(exported.clones, 3u);
    EXPECT_EQ(exported.neither, 2u);
    EXPECT_EQ(exported.without_lcn, 1u);
    EXPECT_EQ(exported.left_out, 1u);
}

TEST(ResultChannels, TheLinesOfAList) {
    ServiceResult scrambled = service(12, "Uno, dos: tres");
    scrambled.stream = {1, 1002};
    scrambled.is_hd = true;
    scrambled.is_scrambled = true;
    scrambled.ca_pids = 3;
    ServiceResult radio = service(8);
    radio.is_radio = true;
    EXPECT_EQ(write_channels_conf(result_channels(placed({scrambled, service(7), radio})).channels),
              ":@7\n"
              "Canal:114:M999:C:6900:32=2:33:0:0:105:1:1001:0\n"
              "Canal:114:M999:C:6900:0:32:0:0:105:1:1001:0\n"
              ":@12\n"
              "Uno, dos| tres,:122:M999:C:6900:32=27:33,34:0:FFFF:105:1:1002:0\n");
    EXPECT_EQ(write_channels_conf({}), "");
}

} // namespace
} // namespace zarven::tool::result_channels_test
