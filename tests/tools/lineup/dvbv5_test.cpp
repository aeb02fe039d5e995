// Every key that is read, numbering, and every way a channel can be left aside.

#include "lineup/dvbv5.h"

#include <gtest/gtest.h>

#include "base/streams.h"

namespace zarven::tool::dvbv5_test {
namespace {

using Pids = std::set<std::uint16_t>;

/// A good channel and one more line.
std::string entry_with(const std::string& line) {
    return "[Canal]\nSERVICE_ID = 101\nNETWORK_ID = 1\nTRANSPORT_ID = 1001\nVIDEO_PID = 512\nAUDIO_PID = 650\n"
           "FREQUENCY = 514000000\n" +
           line + "\n";
}

Channel channel_with(const std::string& line) {
    const ChannelList list = read_dvbv5(entry_with(line));
    EXPECT_TRUE(list.unreadable.empty()) << list.unreadable.at(0).reason;
    return list.channels.at(0);
}

/// The one complaint of a text, as "line: reason".
std::string complaint_of(const std::string& text) {
    const ChannelList list = read_dvbv5(text);
    if (list.unreadable.size() != 1)
        return std::to_string(list.unreadable.size()) + " complaints";
    return std::to_string(list.unreadable[0].line) + ": " + list.unreadable[0].reason;
}

std::vector<std::uint32_t> numbers(const ChannelList& list) {
    std::vector<std::uint32_t> all;
    for (const Channel& channel : list.channels)
        all.push_back(channel.number);
    return all;
}

TEST(Dvbv5, AWholeChannel) {
    const Channel channel = channel_with("DELIVERY_SYSTEM = DVBT");
    EXPECT_EQ(channel.line, 1u);
    EXPECT_EQ(channel.number, 1u);
    EXPECT_EQ(channel.name, "Canal");
    EXPECT_EQ(channel.sid, 101);
    EXPECT_EQ(channel.nid, 1);
    EXPECT_EQ(channel.tid, 1001);
    EXPECT_EQ(channel.video_pid, 512);
    EXPECT_EQ(channel.video_mode, 0);
    EXPECT_EQ(channel.audio_pids, Pids{650});
    EXPECT_EQ(channel.frequency, 514000000u);
    EXPECT_EQ(channel.source, "T");
    EXPECT_EQ(channel.polarization, 0);
    EXPECT_FALSE(channel.scrambled);
    EXPECT_FALSE(channel.kind.has_value());
}

TEST(Dvbv5, Sources) {
    EXPECT_EQ(channel_with("delivery_system = dvbt2").source, "T");
    EXPECT_EQ(channel_with("DELIVERY_SYSTEM = DVBC/ANNEX_A").source, "C");
    EXPECT_EQ(channel_with("DELIVERY_SYSTEM = DVBS2").source, "S");
    EXPECT_EQ(channel_with("SAT_NUMBER = 2\nDELIVERY_SYSTEM = DVBS").source, "S#2");
    EXPECT_EQ(channel_with("SAT_NUMBER = 2\nDELIVERY_SYSTEM = DVBT").source, "T");
    EXPECT_EQ(channel_with("DELIVERY_SYSTEM = ISDBT").source, "ISDBT");
}

std::uint32_t rate_with(const std::string& lines) {
    return net_rate(channel_with(lines).transponder).value_or(0);
}

TEST(Dvbv5, Transponders) {
    const std::string satellite = "SYMBOL_RATE = 27500000\nINNER_FEC = 3/4\nDELIVERY_SYSTEM = DVBS";
    EXPECT_EQ(rate_with(satellite), 38014u);
    EXPECT_EQ(rate_with(satellite + "\nMODULATION = QPSK"), 38014u);
    EXPECT_EQ(rate_with(satellite + "\nINNER_FEC = AUTO"), 0u);
    EXPECT_EQ(rate_with(satellite + "\nSYMBOL_RATE = x"), 0u);
    const std::string second =
        "SYMBOL_RATE = 22000000\nINNER_FEC = 2/3\nDELIVERY_SYSTEM = dvbs2\nMODULATION = PSK/8\nPILOT = ";
    EXPECT_EQ(rate_with(second + "off"), 43573u);
    EXPECT_EQ(rate_with(second + "ON"), 42584u);
    EXPECT_EQ(rate_with(second + "AUTO"), 42584u);
    EXPECT_EQ(rate_with(second + "OFF\nMODULATION = PSK/"), 0u);
    EXPECT_EQ(rate_with("SYMBOL_RATE = 6900000\nMODULATION = QAM/256\nDELIVERY_SYSTEM = DVBC/ANNEX_A"),
              50870u);
    EXPECT_EQ(rate_with("SYMBOL_RATE = 6900000\nMODULATION = QAM/AUTO\nDELIVERY_SYSTEM = DVBC/ANNEX_A"), 0u);
    const std::string terrestrial =
        "BANDWIDTH_HZ = 8000000\nCODE_RATE_HP = 2/3\nCODE_RATE_LP = 1/2\nGUARD_INTERVAL = 1/32"
        "\nMODULATION = QAM/64\nDELIVERY_SYSTEM = DVBT";
    EXPECT_EQ(rate_with(terrestrial), 24128u);
    EXPECT_EQ(rate_with(terrestrial + "\nHIERARCHY = NONE"), 24128u);
    EXPECT_EQ(rate_with(terrestrial + "\nHIERARCHY = 1"), 0u);
    EXPECT_EQ(rate_with(terrestrial + "2"), 0u);
    EXPECT_EQ(rate_with(terrestrial + "\nMODULATION ="), 0u);
    EXPECT_EQ(rate_with(terrestrial + "\nGUARD_INTERVAL = AUTO"), 0u);
}

TEST(Dvbv5, TheSample) {
    const ChannelList list = read_dvbv5(read_text(RECALCULO_EXAMPLES "/sample.dvbv5.conf"));
    EXPECT_TRUE(list.unreadable.empty());
    ASSERT_EQ(list.channels.size(), 4u);
    EXPECT_EQ(numbers(list), (std::vector<std::uint32_t>{1, 2, 7, 4}));
    EXPECT_EQ(list.numbered_by_place, 1u);
    EXPECT_EQ(list.channels[1].video_pid, 528);
    EXPECT_EQ(list.channels[1].video_mode, video_h264);
    EXPECT_EQ(list.channels[2].name, "Ría Cultura");
    EXPECT_EQ(list.channels[2].video_mode, video_hevc);
    EXPECT_EQ(list.channels[3].video_pid, 0);
    EXPECT_EQ(list.channels[3].polarization, 'H');
}

TEST(Dvbv5, KeysInAnyCaseWithAnyBlanks) {
    EXPECT_EQ(channel_with("transport_id=7").tid, 7);
    EXPECT_EQ(channel_with(" \tTransport_Id \t=\t 8 \t").tid, 8);
    EXPECT_EQ(channel_with("TRANSPORT_ID = 9\r").tid, 9);
}

TEST(Dvbv5, CommentsBlankLinesAndUnknownKeysArePassedOver) {
    const ChannelList list = read_dvbv5("# a\n\n" + entry_with("\n  # [b]\nNEW_KEY = = x\nPID_06 = text"));
    EXPECT_TRUE(list.unreadable.empty());
    EXPECT_EQ(list.channels.size(), 1u);
}

TEST(Dvbv5, PidForms) {
    EXPECT_EQ(channel_with("AUDIO_PID = 651  652\t653").audio_pids, (Pids{650, 651, 652, 653}));
    EXPECT_EQ(channel_with("AUDIO_PID =").audio_pids, Pids{650});
    EXPECT_EQ(channel_with("AUDIO_PID = 0 8191").audio_pids, (Pids{650, 8191}));
    EXPECT_EQ(channel_with("VIDEO_PID = 700 701").video_pid, 512);
    EXPECT_EQ(complaint_of(entry_with("AUDIO_PID = 8192")),
              "8: AUDIO_PID: found \"8192\", expected PIDs from 0 to 8191 with blanks between them");
    EXPECT_EQ(complaint_of(entry_with("VIDEO_PID = 0x200")),
              "8: VIDEO_PID: found \"0x200\", expected PIDs from 0 to 8191 with blanks between them");
}

TEST(Dvbv5, OtherStreamsAreToldByTheirKind) {
    EXPECT_EQ(channel_with("PID_1b = 700").video_mode, 27);
    EXPECT_EQ(channel_with("PID_1b = 700").video_pid, 512);
    EXPECT_EQ(channel_with("pid_24 = 700").video_mode, 36);
    EXPECT_EQ(channel_with("PID_02 = 700").video_mode, 2);
    EXPECT_EQ(channel_with("PID_1b = 0").video_mode, 0);
    for (const std::string sound : {"03", "04", "0f", "11", "81", "87"})
        EXPECT_EQ(channel_with("PID_" + sound + " = 700").audio_pids, (Pids{650, 700})) << sound;
    for (const std::string other : {"06", "05", "0b", "zz", "", "100"})
        EXPECT_EQ(channel_with("PID_" + other + " = 700").audio_pids, Pids{650}) << other;
}

TEST(Dvbv5, PolarizationIsALetter) {
    EXPECT_EQ(channel_with("POLARIZATION = VERTICAL").polarization, 'V');
    EXPECT_EQ(channel_with("POLARIZATION = left").polarization, 'L');
    EXPECT_EQ(channel_with("POLARIZATION = OFF").polarization, 0);
    EXPECT_EQ(channel_with("POLARIZATION =").polarization, 0);
}

TEST(Dvbv5, ChannelsOfTheirOwnNumberAndOthers) {
    const std::string end = "\n";
    EXPECT_EQ(numbers(read_dvbv5(entry_with("VCHANNEL = 3") + entry_with("") + entry_with("") +
                                 entry_with("VCHANNEL = 65536") + entry_with("VCHANNEL = 5"))),
              (std::vector<std::uint32_t>{3, 2, 4, 65536, 5}));
    for (const std::string none : {"0", "7.1", "", "x", "-1", "1000000001"}) {
        const ChannelList list = read_dvbv5(entry_with("VCHANNEL = " + none));
        EXPECT_EQ(numbers(list), std::vector<std::uint32_t>{1}) << none;
        EXPECT_EQ(list.numbered_by_place, 1u) << none;
    }
    EXPECT_EQ(read_dvbv5(entry_with("VCHANNEL = 1")).numbered_by_place, 0u);
}

TEST(Dvbv5, AChannelLeftAsideKeepsItsPlace) {
    const ChannelList list = read_dvbv5(entry_with("") + entry_with("broken") + entry_with(""));
    EXPECT_EQ(numbers(list), (std::vector<std::uint32_t>{1, 3}));
    ASSERT_EQ(list.unreadable.size(), 1u);
    EXPECT_EQ(list.unreadable[0].line, 16u);
    EXPECT_EQ(list.unreadable[0].reason, "found \"broken\", expected KEY = VALUE");
}

TEST(Dvbv5, AChannelIsComplainedOfOnce) {
    EXPECT_EQ(complaint_of(entry_with("broken\nbroken\nSERVICE_ID = x")),
              "8: found \"broken\", expected KEY = VALUE");
}

TEST(Dvbv5, HeadingForms) {
    EXPECT_EQ(read_dvbv5("\xEF\xBB\xBF"
                         "[ a]b ]\r\nSERVICE_ID=1\r\nTRANSPORT_ID=1")
                  .channels.at(0)
                  .name,
              "a]b");
    EXPECT_EQ(read_dvbv5("[M\xFCnchen]\nSERVICE_ID=1\nTRANSPORT_ID=1").channels.at(0).name, "München");
    for (const std::string without_name : {"[]", "[ ]"})
        EXPECT_EQ(read_dvbv5(without_name + "\nSERVICE_ID=1\nTRANSPORT_ID=1").channels.at(0).name, "");
    for (const std::string bad : {"[", "[Canal"})
        EXPECT_EQ(complaint_of(bad + "\nSERVICE_ID = x\nTRANSPORT_ID = 1"),
                  "1: heading: found \"" + bad + "\", expected [Name]");
}

TEST(Dvbv5, ALostHeadingDoesNotMixTwoChannels) {
    const std::string second = entry_with("");
    EXPECT_EQ(complaint_of(entry_with("") + second.substr(second.find('\n') + 1)),
              "9: found SERVICE_ID a second time, expected the next [Name] before it");
}

TEST(Dvbv5, LinesBeforeTheFirstHeading) {
    EXPECT_EQ(complaint_of("SERVICE_ID = 1\n" + entry_with("")),
              "1: found \"SERVICE_ID = 1\", expected [Name], which begins a channel");
}

TEST(Dvbv5, ATransponderIsNoChannel) {
    EXPECT_EQ(complaint_of("\n[CHANNEL]\nDELIVERY_SYSTEM = DVBT\nFREQUENCY = 514000000\n"),
              "2: found no SERVICE_ID, expected one: without it this is no channel");
}

TEST(Dvbv5, AStreamMustBeTold) {
    EXPECT_EQ(complaint_of("[a]\nSERVICE_ID = 1"),
              "1: found no NETWORK_ID, TRANSPORT_ID or FREQUENCY, expected one of them: they tell in which "
              "stream the channel is");
    for (const std::string told : {"NETWORK_ID = 1", "TRANSPORT_ID = 1", "FREQUENCY = 1"})
        EXPECT_EQ(read_dvbv5("[a]\nSERVICE_ID = 0\n" + told).channels.size(), 1u) << told;
}

TEST(Dvbv5, NumbersAtTheirLimits) {
    EXPECT_EQ(channel_with("TRANSPORT_ID = 65535").tid, 65535);
    EXPECT_EQ(complaint_of(entry_with("TRANSPORT_ID = 65536")),
              "8: TRANSPORT_ID: found \"65536\", expected a whole number from 0 to 65535");
    EXPECT_EQ(complaint_of(entry_with("FREQUENCY = 0")),
              "8: FREQUENCY: found \"0\", expected a whole number from 1");
    EXPECT_EQ(channel_with("FREQUENCY = 4294967295").frequency, 4294967295u);
    EXPECT_EQ(complaint_of(entry_with("FREQUENCY = 4294967296")),
              "8: FREQUENCY: found \"4294967296\", expected a whole number from 1");
}

} // namespace
} // namespace zarven::tool::dvbv5_test
