// Every form a field of a channel list may have, and every way a line can be unreadable.

#include "lineup/channels_conf.h"

#include <gtest/gtest.h>

namespace zarven::tool::channels_conf_test {
namespace {

using Pids = std::set<std::uint16_t>;

/// A good line with one of its 13 fields replaced.
std::string line_with(std::size_t field, const std::string& value) {
    std::vector<std::string> fields = {
        "Canal,C;Marca", "11362", "HC23M5O35P0S1", "S19.2E", "22000", "6110=27", "6120=deu@3",
        "6130",          "0",     "11110",         "1",      "1011",  "0"};
    fields.at(field) = value;
    std::string line = fields.front();
    for (std::size_t i = 1; i < fields.size(); ++i)
        line += ":" + fields[i];
    return line;
}

enum Field { name, frequency, parameters, source, symbol_rate, vpid, apid, tpid, caid, sid, nid, tid, rid };

Channel channel_with(Field field, const std::string& value) {
    const ChannelList list = read_channels_conf(line_with(field, value));
    EXPECT_TRUE(list.unreadable.empty()) << list.unreadable.at(0).reason;
    return list.channels.at(0);
}

std::string complaint_of(const std::string& line) {
    const ChannelList list = read_channels_conf(line);
    EXPECT_TRUE(list.channels.empty());
    return list.unreadable.empty() ? "(readable)" : list.unreadable[0].reason;
}

std::string complaint_with(Field field, const std::string& value) {
    return complaint_of(line_with(field, value));
}

TEST(ChannelsConf, AWholeLine) {
    const Channel channel = channel_with(rid, "0");
    EXPECT_EQ(channel.line, 1u);
    EXPECT_EQ(channel.number, 1u);
    EXPECT_EQ(channel.name, "Canal");
    EXPECT_EQ(channel.frequency, 11362u);
    EXPECT_EQ(channel.source, "S19.2E");
    EXPECT_EQ(channel.polarization, 'H');
    EXPECT_EQ(channel.video_pid, 6110);
    EXPECT_EQ(channel.video_mode, 27);
    EXPECT_EQ(channel.audio_pids, Pids{6120});
    EXPECT_FALSE(channel.scrambled);
    EXPECT_EQ(channel.sid, 11110);
    EXPECT_EQ(channel.nid, 1);
    EXPECT_EQ(channel.tid, 1011);
}

TEST(ChannelsConf, NameForms) {
    EXPECT_EQ(channel_with(name, "Canal").name, "Canal");
    EXPECT_EQ(channel_with(name, "Canal;Marca").name, "Canal");
    EXPECT_EQ(channel_with(name, "Canal,C").name, "Canal");
    EXPECT_EQ(channel_with(name, "Uno, dos, tres,UDT;Marca, S.A.").name, "Uno, dos, tres");
    EXPECT_EQ(channel_with(name, "Cine 16|9").name, "Cine 16:9");
    EXPECT_EQ(channel_with(name, "").name, "");
    EXPECT_EQ(channel_with(name, ";Marca").name, "");
}

TEST(ChannelsConf, FrequencyForms) {
    EXPECT_EQ(channel_with(frequency, "4294967295").frequency, 4294967295u);
    for (const std::string bad : {"", "0", "-1", "11362x", "1.5", "4294967296"})
        EXPECT_EQ(complaint_with(frequency, bad),
                  "Frequency: found \"" + bad + "\", expected a whole number from 1");
}

TEST(ChannelsConf, PolarizationIsOfSatellitesOnly) {
    EXPECT_EQ(channel_with(parameters, "VC34M2S0").polarization, 'V');
    EXPECT_EQ(channel_with(parameters, "C34M2v").polarization, 'V');
    EXPECT_EQ(channel_with(parameters, "LC34").polarization, 'L');
    EXPECT_EQ(channel_with(parameters, "").polarization, 0);
    const ChannelList cable = read_channels_conf(line_with(source, "C"));
    EXPECT_EQ(cable.channels.at(0).polarization, 0);
}

/// What the transponder of a line carries; 0 where it is not told.
std::uint32_t rate_of(const std::string& parameters, const std::string& source,
                      const std::string& symbol_rate) {
    const ChannelList list = read_channels_conf("Canal:11362:" + parameters + ":" + source + ":" +
                                                symbol_rate + ":1:2:0:0:1:1:1011:0");
    EXPECT_EQ(list.channels.size(), 1u);
    return net_rate(list.channels.at(0).transponder).value_or(0);
}

TEST(ChannelsConf, TheTransponderOfASatellite) {
    EXPECT_EQ(rate_of("HC34M2S0", "S19.2E", "27500"), 38014u);
    EXPECT_EQ(rate_of("hc34m2s0", "S19.2E", "27500"), 38014u);
    EXPECT_EQ(rate_of("C34H", "S19.2E", "27500"), 38014u);
    EXPECT_EQ(rate_of("HC23M5O35P0S1", "S19.2E", "22000"), 43573u);
    EXPECT_EQ(rate_of("HC23M5O35P1S1", "S19.2E", "22000"), 42584u);
    EXPECT_EQ(rate_of("HC23M5O35S1", "S19.2E", "22000"), 42584u);
    EXPECT_EQ(rate_of("HC23M5O35P999S1", "S19.2E", "22000"), 42584u);
    EXPECT_EQ(rate_of("HC910M2O35P0S1", "S19.2E", "27500"), 49186u);
    EXPECT_GT(rate_of("HC34M6P0S1", "S19.2E", "27500"), rate_of("HC34M5P0S1", "S19.2E", "27500"));
    EXPECT_GT(rate_of("HC34M7P0S1", "S19.2E", "27500"), rate_of("HC34M6P0S1", "S19.2E", "27500"));
}

TEST(ChannelsConf, TheTransponderOfACable) {
    EXPECT_EQ(rate_of("C0M64", "C", "6900"), 38152u);
    EXPECT_EQ(rate_of("M256S0", "C", "6900"), 50870u);
    EXPECT_EQ(rate_of("M256S1", "C", "6900"), 0u);
}

TEST(ChannelsConf, TheTransponderOfATerrestrialNetwork) {
    EXPECT_EQ(rate_of("B8C23D0G32I999M64S0T8Y0", "T", "0"), 24128u);
    EXPECT_EQ(rate_of("B8C34G4M64T8Y0", "T", "27500"), 22394u);
    EXPECT_EQ(rate_of("B8C12G4M2T8Y0", "T", "27500"), 4976u);
    EXPECT_EQ(rate_of("B8C34G4M64T8Y1", "T", "0"), 0u);
    EXPECT_EQ(rate_of("B8C34G4M64S1T8Y0", "T", "0"), 0u);
    EXPECT_EQ(rate_of("B1712C34G4M64T8Y0", "T", "0"), 0u);
}

TEST(ChannelsConf, AFaultInTheParametersCostsTheRateOnly) {
    for (const std::string bad :
         {"", "H", "HC", "HC999M2", "HC34M999S1", "?!", "34", "HC99999999999M2", "HC1M2"})
        EXPECT_EQ(rate_of(bad, "S19.2E", "27500"), 0u) << bad;
    for (const std::string bad : {"", "?", "0", "-27500", "99999999999"})
        EXPECT_EQ(rate_of("HC34M2S0", "S19.2E", bad), 0u) << bad;
    EXPECT_EQ(rate_of("M64", "X", "6900"), 0u);
}

TEST(ChannelsConf, SourceMustBeThere) {
    EXPECT_EQ(complaint_with(source, ""), "Source: found \"\", expected a source such as S19.2E, T or C");
}

TEST(ChannelsConf, VideoForms) {
    const Channel plain = channel_with(vpid, "163");
    EXPECT_EQ(plain.video_pid, 163);
    EXPECT_EQ(plain.video_mode, 0);
    const Channel with_clock = channel_with(vpid, "163+8190=2");
    EXPECT_EQ(with_clock.video_pid, 163);
    EXPECT_EQ(with_clock.video_mode, 2);
    EXPECT_EQ(channel_with(vpid, "0").video_pid, 0);
    EXPECT_EQ(channel_with(vpid, "0+255").video_pid, 0);
    EXPECT_EQ(channel_with(vpid, "8191=36").video_mode, 36);
    for (const std::string bad : {"", "8192", "x", "1+", "1+x", "1=", "1=x", "1+8192", "-1", "1 "})
        EXPECT_EQ(complaint_with(vpid, bad),
                  "VPID: found \"" + bad +
                      "\", expected PID, PID+PCR or either with =mode, each PID from 0 to "
                      "8191");
}

TEST(ChannelsConf, AudioForms) {
    EXPECT_EQ(channel_with(apid, "0").audio_pids, Pids{});
    EXPECT_EQ(channel_with(apid, "104").audio_pids, Pids{104});
    EXPECT_EQ(channel_with(apid, "104=deu").audio_pids, Pids{104});
    EXPECT_EQ(channel_with(apid, "4062=@4").audio_pids, Pids{4062});
    EXPECT_EQ(channel_with(apid, "104@4").audio_pids, Pids{104});
    EXPECT_EQ(channel_with(apid, "5102=deu+eng@3,5103=mis@3;5106=deu@106").audio_pids,
              (Pids{5102, 5103, 5106}));
    EXPECT_EQ(channel_with(apid, "0;1921=deu@106,1922=mis@106").audio_pids, (Pids{1921, 1922}));
    EXPECT_EQ(channel_with(apid, "104,104").audio_pids, Pids{104});
    for (const std::string bad : {"", "x", "1,", "1;", "1,,2", "8192", "=deu", "1;x=deu"})
        EXPECT_EQ(complaint_with(apid, bad),
                  "APID: found \"" + bad +
                      "\", expected a list of PID[=language[@type]], each PID from 0 to 8191");
}

TEST(ChannelsConf, ScramblingForms) {
    EXPECT_FALSE(channel_with(caid, "0").scrambled);
    EXPECT_FALSE(channel_with(caid, "0000").scrambled);
    EXPECT_TRUE(channel_with(caid, "98C,9C4,9af").scrambled);
    EXPECT_TRUE(channel_with(caid, "0,500").scrambled);
    EXPECT_TRUE(channel_with(caid, "2").scrambled);
    EXPECT_TRUE(channel_with(caid, "FFFF").scrambled);
    for (const std::string bad : {"", "98C,", "G", "10000", "0x500"})
        EXPECT_EQ(complaint_with(caid, bad),
                  "CAID: found \"" + bad + "\", expected a list of hexadecimal numbers from 0 to FFFF");
}

TEST(ChannelsConf, IdForms) {
    EXPECT_EQ(channel_with(sid, "65535").sid, 65535);
    EXPECT_EQ(channel_with(nid, "0").nid, 0);
    EXPECT_EQ(complaint_with(sid, "65536"), "SID: found \"65536\", expected a whole number from 0 to 65535");
    EXPECT_EQ(complaint_with(nid, "1F"), "NID: found \"1F\", expected a whole number from 0 to 65535");
    EXPECT_EQ(complaint_with(tid, ""), "TID: found \"\", expected a whole number from 0 to 65535");
}

TEST(ChannelsConf, FieldsWithoutUseAreNotLookedAt) {
    EXPECT_EQ(channel_with(symbol_rate, "?").name, "Canal");
    EXPECT_EQ(channel_with(tpid, "5104;5105=deu").name, "Canal");
    EXPECT_EQ(channel_with(rid, "").name, "Canal");
}

TEST(ChannelsConf, ALineHasThirteenFields) {
    EXPECT_EQ(complaint_of("Canal"), "found 1 field, expected 13 with colons between them");
    EXPECT_EQ(complaint_of("a:b:c"), "found 3 fields, expected 13 with colons between them");
    EXPECT_EQ(complaint_of(line_with(rid, "0:0")), "found 14 fields, expected 13 with colons between them");
}

TEST(ChannelsConf, HeadingsAndNumbers) {
    const std::string line = line_with(rid, "0") + "\n";
    const ChannelList list = read_channels_conf(":Grupo\n" + line + ":@100\n" + line + line +
                                                ":@7 Otro grupo\n" + line + ":\n" + line);
    EXPECT_TRUE(list.unreadable.empty());
    std::vector<std::uint32_t> numbers;
    for (const Channel& channel : list.channels)
        numbers.push_back(channel.number);
    EXPECT_EQ(numbers, (std::vector<std::uint32_t>{1, 100, 101, 7, 8}));
    EXPECT_EQ(list.channels[1].line, 4u);
}

TEST(ChannelsConf, AHeadingMayHaveColons) {
    EXPECT_EQ(complaint_of(":Cine: Acción: HD"), "(readable)");
}

TEST(ChannelsConf, HeadingsThatSetNoNumber) {
    const std::string expected =
        "\", expected \":@N\" or \":@N Title\", N a whole number from 1 to 1000000000";
    for (const std::string bad : {":@", ":@casa", ":@0", ":@-1", ":@12x", ":@1000000001"})
        EXPECT_EQ(complaint_of(bad), "heading: found \"" + bad + expected);
}

TEST(ChannelsConf, AnUnreadableLineKeepsItsNumber) {
    const std::string good = line_with(rid, "0");
    const ChannelList list = read_channels_conf(good + "\nbroken\n\n" + good);
    ASSERT_EQ(list.channels.size(), 2u);
    EXPECT_EQ(list.channels[1].number, 3u);
    EXPECT_EQ(list.channels[1].line, 4u);
    ASSERT_EQ(list.unreadable.size(), 1u);
    EXPECT_EQ(list.unreadable[0].line, 2u);
}

TEST(ChannelsConf, Latin1AndUtf8EvenInOneFile) {
    const ChannelList list =
        read_channels_conf(line_with(name, "M\xFCnchen") + "\n" + line_with(name, "Música 海景") + "\n");
    ASSERT_EQ(list.channels.size(), 2u);
    EXPECT_EQ(list.channels[0].name, "München");
    EXPECT_EQ(list.channels[1].name, "Música 海景");
}

TEST(ChannelsConf, LineEndsAndByteOrderMarkAreNoPartOfALine) {
    const ChannelList list = read_channels_conf("\xEF\xBB\xBF" + line_with(name, "Canal") + "\r\n \t\r\n" +
                                                line_with(rid, "0") + "\r\n");
    EXPECT_TRUE(list.unreadable.empty());
    ASSERT_EQ(list.channels.size(), 2u);
    EXPECT_EQ(list.channels[0].name, "Canal");
    EXPECT_EQ(list.channels[1].number, 2u);
}

TEST(ChannelsConf, AnEmptyFileIsAnEmptyList) {
    EXPECT_TRUE(read_channels_conf("").channels.empty());
    EXPECT_TRUE(read_channels_conf("\n\n").unreadable.empty());
}

} // namespace
} // namespace zarven::tool::channels_conf_test
