// What a name says of a channel, and what counts more than it.

#include "lineup/channel_kind.h"

#include <gtest/gtest.h>

namespace zarven::tool::channel_kind_test {
namespace {

Channel channel(const std::string& name, std::uint16_t video_pid, std::uint16_t video_mode,
                const std::set<std::uint16_t>& audio_pids = {}) {
    Channel made;
    made.name = name;
    made.video_pid = video_pid;
    made.video_mode = video_mode;
    made.audio_pids = audio_pids;
    return made;
}

void expect_finding(const Channel& channel, ChannelKind kind, bool is_unknown, bool is_by_name) {
    const KindFinding finding = find_kind(channel);
    EXPECT_EQ(finding.kind, kind) << channel.name;
    EXPECT_EQ(finding.is_unknown, is_unknown) << channel.name;
    EXPECT_EQ(finding.is_by_name, is_by_name) << channel.name;
}

TEST(ChannelKind, NamesOfHd) {
    for (const std::string hd : {"HD", "Canal HD", "canal hd", "HD Suisse", "arteHD", "Canal-HD", "HD1",
                                 "Cine (HD)", "HD+ Info", "Canal 1HD", "HD Radio"})
        EXPECT_EQ(kind_by_name(hd), ChannelKind::hd) << hd;
}

TEST(ChannelKind, NamesOfUhd) {
    for (const std::string uhd :
         {"UHD", "UHD1", "Canal UHD", "RedUHD", "4K", "Canal 4K", "4K-Test", "Canal HD 4k"})
        EXPECT_EQ(kind_by_name(uhd), ChannelKind::uhd) << uhd;
}

TEST(ChannelKind, NamesOfRadio) {
    for (const std::string radio : {"Radio", "Radio Faro", "Kiss RADIO", "Radio 4"})
        EXPECT_EQ(kind_by_name(radio), ChannelKind::radio) << radio;
}

TEST(ChannelKind, NamesThatSayNothing) {
    for (const std::string other : {"", "H", "Canal", "HDD", "HDé", "éhd", "schahd", "14K", "4Kids", "M4K",
                                    "Radiotelevisión", "Euroradio", "U HDx"})
        EXPECT_FALSE(kind_by_name(other)) << other;
}

TEST(ChannelKind, WithoutPidsTheKindIsUnknown) {
    expect_finding(channel("Canal", 0, 0), ChannelKind::sd, true, false);
    expect_finding(channel("Canal HD", 0, 0), ChannelKind::hd, true, false);
    expect_finding(channel("Canal 4K", 0, 0), ChannelKind::uhd, true, false);
    expect_finding(channel("Radio", 0, 0), ChannelKind::radio, true, false);
}

TEST(ChannelKind, SoundAloneIsRadio) {
    expect_finding(channel("Canal HD", 0, 0, {1}), ChannelKind::radio, false, false);
}

TEST(ChannelKind, APictureSpeaksForItself) {
    expect_finding(channel("Canal HD", 1, video_mpeg2), ChannelKind::sd, false, false);
    expect_finding(channel("Canal", 1, video_h264), ChannelKind::hd, false, false);
    expect_finding(channel("Canal UHD", 1, video_h264), ChannelKind::uhd, false, false);
    expect_finding(channel("Canal HD", 1, video_hevc), ChannelKind::uhd, false, false);
}

TEST(ChannelKind, APictureWithoutModeIsJudgedByTheName) {
    expect_finding(channel("Canal", 1, 0), ChannelKind::sd, false, false);
    expect_finding(channel("Canal HD", 1, 0), ChannelKind::hd, false, true);
    expect_finding(channel("Canal UHD", 1, 0), ChannelKind::uhd, false, true);
    expect_finding(channel("Radio", 1, 0), ChannelKind::sd, false, false);
}

TEST(ChannelKind, WhatTheListTellsCountsMost) {
    Channel told = channel("Canal UHD", 0, 0);
    told.kind = ChannelKind::sd;
    expect_finding(told, ChannelKind::sd, false, false);
    told.kind = ChannelKind::hd;
    expect_finding(told, ChannelKind::uhd, false, false);
    told.name = "Canal";
    expect_finding(told, ChannelKind::hd, false, false);
}

TEST(ChannelKind, APictureInHevcIsUhdWhateverTheServiceType) {
    Channel told = channel("Canal", 1, video_hevc);
    for (const ChannelKind television : {ChannelKind::sd, ChannelKind::hd, ChannelKind::uhd}) {
        told.kind = television;
        expect_finding(told, ChannelKind::uhd, false, false);
    }
    told.kind = ChannelKind::radio;
    expect_finding(told, ChannelKind::radio, false, false);
}

} // namespace
} // namespace zarven::tool::channel_kind_test
