// From channels to services: kinds, estimates, descrambling, numbers, duplicates.

#include "lineup/channel_import.h"

#include <gtest/gtest.h>

#include "channel_fixture.h"
#include "headend/headend_json.h"
#include "placement/running/engine_run.h"

namespace zarven::tool::channel_import_test {
namespace {

using Numbers = std::vector<std::uint16_t>;

TEST(ImportChannels, CopiesWhatTheLineTells) {
    const Service service = import({channel(17)}).services.at(0);
    EXPECT_EQ(service.lcn, 17);
    EXPECT_EQ(service.name, "Canal");
    EXPECT_EQ(service.output_name, "Canal");
    EXPECT_EQ(service.onid, 1);
    EXPECT_EQ(service.tsid, 1011);
    EXPECT_EQ(service.sid, 11127);
    EXPECT_EQ(service.osid, 11127);
    EXPECT_EQ(service.transcoding, 0);
}

TEST(ImportChannels, AServiceWithoutANameIsCalledByItsSid) {
    Channel without_name = channel(17);
    without_name.name.clear();
    const Service service = import({without_name}).services.at(0);
    EXPECT_EQ(service.name, "SID 11127");
    EXPECT_EQ(service.output_name, "SID 11127");
}

TEST(ImportChannels, EstimatesByKind) {
    const ImportedChannels imported = import({channel(1, 0), channel(2, 6110, 2), channel(3, 6110, 0),
                                              channel(4, 6110, 27), channel(5, 6110, 36)});
    ASSERT_EQ(imported.services.size(), 5u);
    const Service& radio = imported.services[0];
    EXPECT_EQ(radio.bitrate, 220u);
    EXPECT_EQ(radio.video_bitrate, 0u);
    EXPECT_EQ(radio.type, 2);
    EXPECT_EQ(radio.video_format, 0);
    for (const std::size_t sd : {1u, 2u}) {
        EXPECT_EQ(imported.services[sd].bitrate, 3500u);
        EXPECT_EQ(imported.services[sd].video_bitrate, 3500u);
        EXPECT_EQ(imported.services[sd].type, 1);
        EXPECT_EQ(imported.services[sd].video_format, 0);
    }
    EXPECT_EQ(imported.services[3].bitrate, 8000u);
    EXPECT_EQ(imported.services[4].bitrate, 20000u);
    for (const std::size_t hd : {3u, 4u}) {
        EXPECT_EQ(imported.services[hd].video_bitrate, imported.services[hd].bitrate);
        EXPECT_EQ(imported.services[hd].video_format, 4);
    }
    EXPECT_EQ(imported.radio, 1u);
    EXPECT_EQ(imported.sd, 2u);
    EXPECT_EQ(imported.hd, 1u);
    EXPECT_EQ(imported.uhd, 1u);
    EXPECT_EQ(imported.unknown, 0u);
}

TEST(ImportChannels, AnUnknownKindIsCountedApart) {
    std::vector<Channel> channels;
    std::uint32_t number = 0;
    for (const std::string name : {"Canal", "Canal HD", "Canal 4K", "Radio Faro"}) {
        channels.push_back(channel(++number, 0));
        channels.back().audio_pids = {};
        channels.back().name = name;
    }
    const ImportedChannels imported = import(channels);
    EXPECT_EQ(imported.unknown, 4u);
    EXPECT_EQ(imported.radio + imported.sd + imported.hd + imported.uhd + imported.kinds_by_name, 0u);
    std::vector<std::uint32_t> bitrates;
    for (const Service& service : imported.services) {
        EXPECT_TRUE(service.kind_unknown);
        bitrates.push_back(service.bitrate);
    }
    EXPECT_EQ(bitrates, (std::vector<std::uint32_t>{3500, 8000, 20000, 220}));
    EXPECT_EQ(imported.services[0].type, type_television);
    EXPECT_EQ(imported.services[1].video_format, 4);
    EXPECT_EQ(imported.services[2].video_format, 4);
    EXPECT_EQ(imported.services[3].type, type_radio);
    EXPECT_EQ(imported.services[3].video_bitrate, 0u);
    EXPECT_FALSE(import({channel(1)}).services.at(0).kind_unknown);
}

TEST(ImportChannels, APictureWithoutModeIsJudgedByTheName) {
    Channel named = channel(1, 6110, 0);
    named.name = "Canal HD";
    const ImportedChannels imported = import({named, channel(2, 6110, 0)});
    EXPECT_EQ(imported.services.at(0).video_format, 4);
    EXPECT_EQ(imported.hd, 1u);
    EXPECT_EQ(imported.sd, 1u);
    EXPECT_EQ(imported.kinds_by_name, 1u);
}

TEST(ImportChannels, EstimatesStayWithinTheTransponder) {
    std::vector<Channel> channels;
    for (std::uint32_t number = 1; number <= 5; ++number) {
        channels.push_back(channel(number, 6110, video_h264));
        channels.back().transponder = {Delivery::dvb_s, 27'500'000, 2, {3, 4}};
    }
    channels.push_back(channel(6, 0));
    channels.push_back(channel(7));
    channels.back().tid = 1012;
    const ImportedChannels imported = import(channels);
    for (std::size_t index = 0; index < 5; ++index)
        EXPECT_EQ(imported.services.at(index).bitrate, (38014u - 220) / 5);
    EXPECT_EQ(imported.services.at(5).bitrate, 220u);
    EXPECT_EQ(imported.services.at(6).bitrate, 3500u);
    ASSERT_EQ(imported.shared_out.size(), 1u);
    EXPECT_EQ(imported.shared_out[0].estimated, 40220u);
    EXPECT_EQ(imported.unchecked_streams, 1u);
}

TEST(ImportChannels, EstimatesAreOptions) {
    const ImportedChannels imported =
        import({channel(1, 0), channel(2), channel(3, 6110, 27), channel(4, 6110, 36)}, {1, 2, 3, 4});
    EXPECT_EQ(imported.services.at(0).bitrate, 1u);
    EXPECT_EQ(imported.services.at(1).bitrate, 2u);
    EXPECT_EQ(imported.services.at(2).bitrate, 3u);
    EXPECT_EQ(imported.services.at(3).bitrate, 4u);
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
    radio.sid = 2;
    // Without a word on the kind it is unknown, and so are the PIDs.
    EXPECT_EQ(import({television}).services.at(0).ca_pids, 2);
    EXPECT_EQ(import({television}).without_pids, 1u);
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
    again.sid = 1;
    Channel elsewhere = channel(7);
    elsewhere.tid = 1012;
    const ImportedChannels imported = import({channel(7), again, elsewhere});
    EXPECT_EQ(imported.services.size(), 2u);
    ASSERT_EQ(imported.unreadable.size(), 1u);
    EXPECT_EQ(imported.unreadable[0].line, 9u);
    EXPECT_EQ(imported.unreadable[0].reason, "channel number 7 stands in stream 1/1011 already, on line 7");
}

TEST(ImportChannels, AServiceIsImportedOnce) {
    Channel again = channel(9);
    again.sid = channel(7).sid;
    Channel elsewhere = again;
    elsewhere.tid = 1012;
    const ImportedChannels imported = import({channel(7), again, elsewhere});
    EXPECT_EQ(imported.services.size(), 2u);
    EXPECT_EQ(imported.services.at(0).lcn, 7);
    EXPECT_EQ(imported.duplicates, 1u);
    EXPECT_TRUE(imported.unreadable.empty());
    ASSERT_EQ(imported.remarks.size(), 1u);
    EXPECT_EQ(imported.remarks[0].line, 9u);
    EXPECT_EQ(imported.remarks[0].reason, "SID 11117 of stream 1/1011 stands on line 7 already");
}

TEST(ImportChannels, WhatWasLeftAsideHasNoDuplicates) {
    Channel same_number = channel(7);
    same_number.sid = 200;
    Channel again = channel(9);
    again.sid = 200;
    const ImportedChannels imported = import({channel(7), same_number, again});
    ASSERT_EQ(imported.services.size(), 2u);
    EXPECT_EQ(imported.services[1].sid, 200);
    EXPECT_EQ(imported.unreadable.size(), 1u);
    EXPECT_EQ(imported.duplicates, 0u);
}

TEST(ImportChannels, DuplicatesMayBeKept) {
    Channel again = channel(9);
    again.sid = channel(7).sid;
    ChannelList list;
    list.channels = {channel(7), again};
    const ImportedChannels imported = import_channels(list, {}, Duplicates::kept);
    EXPECT_EQ(imported.services.size(), 2u);
    EXPECT_EQ(imported.duplicates, 0u);
}

TEST(ImportChannels, EqualSidsOfTwoTranspondersAreTwoServices) {
    Channel other = shared_ids(2, 11493);
    other.sid = shared_ids(1, 11362).sid;
    EXPECT_EQ(import({shared_ids(1, 11362), other}).services.size(), 2u);
    EXPECT_EQ(import({shared_ids(1, 11362), other}).duplicates, 0u);
}

TEST(ImportChannels, OfSeveralListsEachNumberIsTakenOnce) {
    Channel same = channel(3); // of the same service, passed over
    same.list = 1;
    Channel other = channel(1);
    other.list = 1;
    other.sid = 7;
    Channel elsewhere = other;
    elsewhere.tid = 1012;
    Channel free = channel(9);
    free.list = 1;
    const ImportedChannels imported = import({channel(1), channel(3), same, other, elsewhere, free});
    Numbers numbers;
    for (const Service& service : imported.services)
        numbers.push_back(service.lcn);
    EXPECT_EQ(numbers, (Numbers{1, 3, 2, 4, 9}));
    EXPECT_EQ(imported.renumbered, 2u);
    ASSERT_EQ(imported.remarks.size(), 1u);
    EXPECT_EQ(imported.remarks[0].list, 1u);
    EXPECT_EQ(imported.remarks[0].reason,
              "SID 11113 of stream 1/1011 stands on line 3 of an earlier list already");
}

TEST(ImportChannels, ANumberOfAnotherListMayLeaveNone) {
    std::vector<Channel> channels;
    for (std::uint32_t number = 1; number <= 65535; ++number) {
        channels.push_back(channel(number));
        channels.back().sid = 0;
    }
    channels.push_back(channel(5));
    channels.back().list = 1;
    const ImportedChannels imported = import(channels);
    EXPECT_EQ(imported.services.size(), 65535u);
    ASSERT_EQ(imported.unreadable.size(), 1u);
    EXPECT_EQ(imported.unreadable[0].list, 1u);
    EXPECT_EQ(imported.unreadable[0].reason, "no number is left for a channel whose number another list has");
}

TEST(ImportChannels, WhatIsNotWantedCountsForTheTransponderOnly) {
    std::vector<Channel> channels;
    for (std::uint32_t number = 1; number <= 5; ++number) {
        channels.push_back(channel(number, 6110, video_h264));
        channels.back().transponder = {Delivery::dvb_s, 27'500'000, 2, {3, 4}};
    }
    channels.push_back(channel(6, 0));
    ImportedChannels imported = import(channels);
    ServiceFilter filter;
    filter.only = {{"--only", "3-6"}};
    filter.exclude = {{"--exclude", "5"}};
    choose_services(imported, filter);
    Numbers numbers;
    for (const Service& service : imported.services)
        numbers.push_back(service.lcn);
    EXPECT_EQ(numbers, (Numbers{3, 4, 6}));
    EXPECT_EQ(imported.services.at(0).bitrate, (38014u - 220) / 5);
    EXPECT_EQ(imported.not_wanted, 3u);
    EXPECT_EQ(imported.hd, 2u);
    EXPECT_EQ(imported.radio, 1u);
}

TEST(ImportChannels, WithoutSidNothingIsADuplicate) {
    Channel one = channel(1);
    Channel other = channel(2);
    one.sid = other.sid = 0;
    EXPECT_EQ(import({one, other}).services.size(), 2u);
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
} // namespace zarven::tool::channel_import_test
