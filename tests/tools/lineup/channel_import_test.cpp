// From channels to services: kinds, estimates, descrambling, streams without ids, numbers.

#include "lineup/channel_import.h"

#include <gtest/gtest.h>

#include "headend/headend_json.h"
#include "placement/engine_run.h"

namespace zarven::tool {
namespace {

/// A television channel of stream 1/1011; the fields that the tests vary come first.
Channel channel(std::uint32_t number, std::uint16_t video_pid = 6110, std::uint16_t video_mode = 2) {
    Channel made;
    made.line = number;
    made.number = number;
    made.name = "Canal";
    made.frequency = 11362;
    made.source = "S19.2E";
    made.polarization = 'H';
    made.video_pid = video_pid;
    made.video_mode = video_mode;
    made.audio_pids = {6120, 6121};
    made.sid = 11110;
    made.nid = 1;
    made.tid = 1011;
    return made;
}

Channel nameless(std::uint32_t number, std::uint32_t frequency, char polarization = 'H',
                 const std::string& source = "S19.2E") {
    Channel made = channel(number);
    made.nid = 0;
    made.tid = 0;
    made.frequency = frequency;
    made.polarization = polarization;
    made.source = source;
    return made;
}

ImportedChannels import(std::vector<Channel> channels, const BitrateEstimates& estimates = {}) {
    ChannelList list;
    list.channels = std::move(channels);
    return import_channels(list, estimates);
}

std::vector<std::uint16_t> tsids(const ImportedChannels& imported) {
    std::vector<std::uint16_t> all;
    for (const Service& service : imported.services) {
        EXPECT_EQ(service.onid, 0);
        all.push_back(service.tsid);
    }
    return all;
}

TEST(ImportChannels, CopiesWhatTheLineTells) {
    const Service service = import({channel(17)}).services.at(0);
    EXPECT_EQ(service.lcn, 17);
    EXPECT_EQ(service.name, "Canal");
    EXPECT_EQ(service.output_name, "Canal");
    EXPECT_EQ(service.onid, 1);
    EXPECT_EQ(service.tsid, 1011);
    EXPECT_EQ(service.sid, 11110);
    EXPECT_EQ(service.osid, 11110);
    EXPECT_EQ(service.transcoding, 0);
}

TEST(ImportChannels, EstimatesByKind) {
    const ImportedChannels imported = import({channel(1, 0), channel(2, 6110, 2), channel(3, 6110, 0),
                                              channel(4, 6110, 27), channel(5, 6110, 36)});
    ASSERT_EQ(imported.services.size(), 5u);
    const Service& radio = imported.services[0];
    EXPECT_EQ(radio.bitrate, 200u);
    EXPECT_EQ(radio.video_bitrate, 0u);
    EXPECT_EQ(radio.type, 2);
    EXPECT_EQ(radio.video_format, 0);
    for (const std::size_t sd : {1u, 2u}) {
        EXPECT_EQ(imported.services[sd].bitrate, 3500u);
        EXPECT_EQ(imported.services[sd].video_bitrate, 3500u);
        EXPECT_EQ(imported.services[sd].type, 1);
        EXPECT_EQ(imported.services[sd].video_format, 0);
    }
    for (const std::size_t hd : {3u, 4u}) {
        EXPECT_EQ(imported.services[hd].bitrate, 8000u);
        EXPECT_EQ(imported.services[hd].video_format, 4);
    }
    EXPECT_EQ(imported.radio, 1u);
    EXPECT_EQ(imported.sd, 2u);
    EXPECT_EQ(imported.hd, 2u);
}

TEST(ImportChannels, EstimatesAreOptions) {
    const ImportedChannels imported = import({channel(1, 0), channel(2), channel(3, 6110, 27)}, {1, 2, 3});
    EXPECT_EQ(imported.services.at(0).bitrate, 1u);
    EXPECT_EQ(imported.services.at(1).bitrate, 2u);
    EXPECT_EQ(imported.services.at(2).bitrate, 3u);
}

TEST(ImportChannels, AScrambledServiceNeedsAllItsPids) {
    Channel television = channel(1);
    television.scrambled = true;
    Channel radio = channel(2, 0);
    radio.scrambled = true;
    Channel shared = channel(3, 6120);
    shared.scrambled = true;
    const ImportedChannels imported = import({television, radio, shared, channel(4)});
    ASSERT_EQ(imported.services.size(), 4u);
    EXPECT_EQ(imported.services[0].descramble, 1);
    EXPECT_EQ(imported.services[0].ca_pids, 3);
    EXPECT_EQ(imported.services[0].ca_pids_max, 3);
    EXPECT_EQ(imported.services[1].ca_pids, 2);
    EXPECT_EQ(imported.services[2].ca_pids, 2);
    EXPECT_EQ(imported.services[3].descramble, 0);
    EXPECT_EQ(imported.services[3].ca_pids, 0);
    EXPECT_EQ(imported.scrambled, 3u);
}

TEST(ImportChannels, AKindThatIsToldCountsMoreThanThePicture) {
    Channel told = channel(1, 6110, video_h264);
    told.kind = ChannelKind::sd;
    EXPECT_EQ(import({told}).services.at(0).video_format, 0);
    told.kind = ChannelKind::radio;
    EXPECT_EQ(import({told}).services.at(0).type, 2);
    told = channel(1, 0);
    told.kind = ChannelKind::hd;
    EXPECT_EQ(import({told}).services.at(0).video_format, 4);
}

TEST(ImportChannels, PidsThatAreNotKnownAreEstimated) {
    Channel television = channel(1, 0);
    television.scrambled = true;
    television.audio_pids = {};
    Channel radio = television;
    radio.number = 2;
    // Without a word on the kind this is a radio without sound.
    EXPECT_EQ(import({television}).services.at(0).ca_pids, 0);
    EXPECT_EQ(import({television}).without_pids, 0u);
    television.kind = ChannelKind::hd;
    radio.kind = ChannelKind::radio;
    const ImportedChannels imported = import({television, radio});
    EXPECT_EQ(imported.services.at(0).ca_pids, 2);
    EXPECT_EQ(imported.services.at(0).ca_pids_max, 2);
    EXPECT_EQ(imported.services.at(1).ca_pids, 1);
    EXPECT_EQ(imported.without_pids, 2u);
    television.audio_pids = {1};
    EXPECT_EQ(import({television}).services.at(0).ca_pids, 1);
    EXPECT_EQ(import({television}).without_pids, 0u);
}

TEST(ImportChannels, StreamsWithoutIdsAreCounted) {
    EXPECT_EQ(
        import({nameless(1, 11362), nameless(2, 11493), nameless(3, 11362), channel(4)}).nameless_streams,
        2u);
}

TEST(ImportChannels, StreamsWithoutIdsAreToldApartByFrequency) {
    EXPECT_EQ(tsids(import({nameless(1, 11362), nameless(2, 11493), nameless(3, 11362)})),
              (std::vector<std::uint16_t>{11362, 11493, 11362}));
}

TEST(ImportChannels, StreamsWithoutIdsAreToldApartByPolarizationAndSource) {
    EXPECT_EQ(tsids(import({nameless(1, 11362, 'H'), nameless(2, 11362, 'V'),
                            nameless(3, 11362, 'V', "S13.0E"), nameless(4, 11362, 'V')})),
              (std::vector<std::uint16_t>{11362, 11363, 11364, 11363}));
}

TEST(ImportChannels, LargeFrequenciesAreTakenInALargerUnit) {
    EXPECT_EQ(
        tsids(import({nameless(1, 65535), nameless(2, 65536), nameless(3, 474000000), nameless(4, 474166)})),
        (std::vector<std::uint16_t>{65535, 65, 474, 475}));
}

TEST(ImportChannels, StreamsWithoutIdsKeepClearOfRealOnes) {
    Channel real = channel(2);
    real.nid = 0;
    real.tid = 11362;
    EXPECT_EQ(tsids(import({nameless(1, 11362), real})), (std::vector<std::uint16_t>{11363, 11362}));
    Channel other_network = channel(2);
    other_network.tid = 11362;
    EXPECT_EQ(import({nameless(1, 11362), other_network}).services.at(0).tsid, 11362);
}

TEST(ImportChannels, AfterTheLastIdComesTheFirstAndNeverZero) {
    EXPECT_EQ(tsids(import({nameless(1, 65535, 'H'), nameless(2, 65535, 'V')})),
              (std::vector<std::uint16_t>{65535, 1}));
}

// Stepping over the numbers taken, one by one, would need minutes here.
TEST(ImportChannels, EveryIdIsGivenAndThenNoneIsLeft) {
    std::vector<Channel> channels;
    for (std::uint32_t number = 1; number <= 100000; ++number)
        channels.push_back(nameless(1, 11362, 'H', std::to_string(number)));
    const ImportedChannels imported = import(channels);
    EXPECT_EQ(imported.services.size(), 65535u);
    EXPECT_EQ(imported.services.back().tsid, 11361);
    ASSERT_EQ(imported.unreadable.size(), 100000u - 65535);
    EXPECT_EQ(imported.unreadable.front().reason, "no id is left for a stream without NID and TID");
}

TEST(ImportChannels, ChannelNumbersHave16Bits) {
    const ImportedChannels imported = import({channel(65535), channel(65536)});
    ASSERT_EQ(imported.services.size(), 1u);
    EXPECT_EQ(imported.services[0].lcn, 65535);
    ASSERT_EQ(imported.unreadable.size(), 1u);
    EXPECT_EQ(imported.unreadable[0].line, 65536u);
    EXPECT_EQ(imported.unreadable[0].reason, "channel number 65536 is too large, expected at most 65535");
}

TEST(ImportChannels, ANumberStandsOnceInAStream) {
    Channel again = channel(7);
    again.line = 9;
    Channel elsewhere = channel(7);
    elsewhere.tid = 1012;
    const ImportedChannels imported = import({channel(7), again, elsewhere});
    EXPECT_EQ(imported.services.size(), 2u);
    ASSERT_EQ(imported.unreadable.size(), 1u);
    EXPECT_EQ(imported.unreadable[0].line, 9u);
    EXPECT_EQ(imported.unreadable[0].reason, "channel number 7 stands in stream 1/1011 already, on line 7");
}

TEST(ImportChannels, LinesLeftAsideComeInTheOrderOfTheFile) {
    ChannelList list;
    list.channels = {channel(70000), channel(3)};
    list.channels[0].line = 2;
    list.unreadable = {{1, "first"}, {3, "third"}};
    const ImportedChannels imported = import_channels(list, {});
    ASSERT_EQ(imported.unreadable.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(imported.unreadable[i].line, i + 1);
}

TEST(ImportChannels, WhatIsImportedLoadsAsItWasWritten) {
    Channel scrambled = channel(2, 6110, 27);
    scrambled.scrambled = true;
    Headend headend;
    headend.modules.push_back({"M", 3, true, 2, {38000}, 8, 0, 0, 0});
    headend.services = import({channel(1), scrambled, channel(3, 0), nameless(4, 11362)}).services;
    const std::string written = write_headend(headend);
    const Headend again = read_headend("f", written);
    EXPECT_EQ(write_headend(again), written);

    EngineRun run = load_engine(again, "f");
    ASSERT_EQ(run.engine.listaServicios.size(), 4u);
    EXPECT_TRUE(run.clones.empty());
    EXPECT_EQ(run.engine.listaServicios[1]->number_PIDs_CA, 3);
    EXPECT_EQ(run.engine.listaServicios[1]->number_PIDs_CA_Max, 3);
    EXPECT_EQ(run.engine.listaServicios[1]->VideoFormatE, tRec_Servicio::VIDEO_HD);
    EXPECT_EQ(run.engine.listaServicios[2]->videoPeakBitRate, 0u);
    run_engine(run, "f");
    EXPECT_TRUE(run.engine.Mapa_ONIDs_Final.count(0) + run.engine.Mapa_ONIDs_Final.count(1) < 2);
}

} // namespace
} // namespace zarven::tool
