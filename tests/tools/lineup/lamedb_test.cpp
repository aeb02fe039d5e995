// Both versions, every part of a service, and every way one can be damaged.

#include "lineup/lamedb.h"

#include <gtest/gtest.h>

#include "base/streams.h"
#include "lineup/text_lines.h"

namespace zarven::tool::lamedb_test {
namespace {

using Pids = std::set<std::uint16_t>;

const std::string head = "0065:00c00000:03e9:0001:1:0";
const std::string details = "p:Media,c:000200,c:01028a";

/// A file of version 4 with these lines as its services.
std::string version_4(const std::string& services) {
    return "eDVB services /4/\ntransponders\n00c00000:03e9:0001\n\ts 11362000:22000000:1:4:192:2:0\n/\nend\n"
           "services\n" +
           services + "end\nthe end\n";
}

std::string service(const std::string& first = head, const std::string& name = "Canal",
                    const std::string& last = details) {
    return first + "\n" + name + "\n" + last + "\n";
}

std::string version_5(const std::string& line) {
    return "eDVB services /5/\n# comment\nt:00c00000:03e9:0001,s:11362000:22000000:1:4:192:2:0\n" + line +
           "\n";
}

Channel only(const ChannelList& list) {
    EXPECT_TRUE(list.unreadable.empty()) << list.unreadable.at(0).reason;
    return list.channels.empty() ? Channel() : list.channels.front();
}

Channel with_details(const std::string& text, const std::string& first = head) {
    return only(read_lamedb(version_4(service(first, "Canal", text))));
}

std::string complaint_of(const std::string& text) {
    const ChannelList list = read_lamedb(text);
    if (list.unreadable.size() != 1)
        return std::to_string(list.unreadable.size()) + " complaints";
    return std::to_string(list.unreadable[0].line) + ": " + list.unreadable[0].reason;
}

std::string header_complaint(const std::string& text) {
    try {
        read_lamedb(text);
    } catch (const BadLine& bad) {
        return bad.what();
    }
    return "(none)";
}

void expect_whole(const Channel& channel) {
    EXPECT_EQ(channel.number, 1u);
    EXPECT_EQ(channel.name, "Canal");
    EXPECT_EQ(channel.sid, 0x65);
    EXPECT_EQ(channel.tid, 0x3e9);
    EXPECT_EQ(channel.nid, 1);
    EXPECT_EQ(channel.kind, ChannelKind::sd);
    EXPECT_EQ(channel.video_pid, 0x200);
    EXPECT_EQ(channel.audio_pids, Pids{0x28a});
    EXPECT_FALSE(channel.scrambled);
    EXPECT_EQ(channel.frequency, 11362000u);
    EXPECT_EQ(channel.polarization, 'V');
    EXPECT_EQ(channel.source, "S19.2E");
}

TEST(Lamedb, AWholeServiceOfVersion4) {
    const Channel channel = only(read_lamedb(version_4(service())));
    expect_whole(channel);
    EXPECT_EQ(channel.line, 8u);
}

TEST(Lamedb, AWholeServiceOfVersion5) {
    const Channel channel = only(read_lamedb(version_5("s:" + head + ":0,\"Canal\"," + details)));
    expect_whole(channel);
    EXPECT_EQ(channel.line, 4u);
}

TEST(Lamedb, TheSample) {
    const ChannelList list = read_lamedb(read_text(RECALCULO_EXAMPLES "/sample.lamedb"));
    EXPECT_TRUE(list.unreadable.empty());
    ASSERT_EQ(list.channels.size(), 4u);
    EXPECT_EQ(list.numbered_by_place, 4u);
    EXPECT_EQ(list.channels[1].kind, ChannelKind::hd);
    EXPECT_EQ(list.channels[1].audio_pids, (Pids{0x29a, 0x29b}));
    EXPECT_TRUE(list.channels[1].scrambled);
    EXPECT_EQ(list.channels[2].name, "Ría Cultura UHD");
    EXPECT_EQ(list.channels[3].kind, ChannelKind::radio);
    EXPECT_EQ(list.channels[3].frequency, 12188000u);
    EXPECT_EQ(list.channels[3].number, 4u);
}

TEST(Lamedb, TheHeaderNamesTheVersion) {
    for (const std::string bad : {"", "eDVB services /3/", "eDVB services /4", "eDVB services /45/", "[a]"})
        EXPECT_EQ(header_complaint(bad),
                  "header: found \"" + bad + "\", expected \"eDVB services /4/\" or \"eDVB services /5/\"");
    EXPECT_EQ(header_complaint("\xEF\xBB\xBF\n \neDVB services /5/ \r\n"), "(none)");
}

TEST(Lamedb, ServiceTypes) {
    for (const std::string sd : {"1", "4", "5", "22", "23", "24"})
        EXPECT_EQ(with_details("p:", "1:1:1:1:" + sd + ":0").kind, ChannelKind::sd) << sd;
    for (const std::string radio : {"2", "7", "10"})
        EXPECT_EQ(with_details("p:", "1:1:1:1:" + radio + ":0").kind, ChannelKind::radio) << radio;
    for (const std::string hd : {"17", "25", "26", "27", "28", "29", "30"})
        EXPECT_EQ(with_details("p:", "1:1:1:1:" + hd + ":0").kind, ChannelKind::hd) << hd;
    for (const std::string uhd : {"31", "32"})
        EXPECT_EQ(with_details("p:", "1:1:1:1:" + uhd + ":0").kind, ChannelKind::uhd) << uhd;
}

TEST(Lamedb, OtherTypesAreJudgedByTheirPids) {
    for (const std::string other : {"0", "3", "6", "8", "9", "11", "16", "18", "21", "33", "195", "65535"}) {
        const std::string first = "1:1:1:1:" + other + ":0";
        EXPECT_FALSE(with_details("c:000200", first).kind.has_value()) << other;
        EXPECT_EQ(with_details("c:010200", first).video_pid, 0);
        EXPECT_EQ(complaint_of(version_4(service(first, "Datos", "p:"))),
                  "8: service type " + other +
                      " is neither television nor radio, and no PID of picture or sound is known");
    }
    EXPECT_EQ(with_details("c:000200,c:050001", "1:1:1:1:195:0").video_mode, video_h264);
    EXPECT_EQ(with_details("c:000200,c:050007", "1:1:1:1:195:0").video_mode, video_hevc);
    EXPECT_EQ(with_details("c:000200,c:050000", "1:1:1:1:195:0").video_mode, 0);
}

TEST(Lamedb, CachedPids) {
    EXPECT_EQ(with_details("c:001fff").video_pid, 8191);
    EXPECT_EQ(with_details("c:010001,c:040002,c:120003,c:130004,c:140005,c:170006,c:180007").audio_pids,
              (Pids{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(with_details("c:020001,c:030002,c:090003,c:160004,c:07ffffff38").audio_pids, Pids{});
    EXPECT_EQ(with_details("c:010000").audio_pids, Pids{});
}

TEST(Lamedb, CachedPidsNeedNoZerosBeforeThem) {
    EXPECT_EQ(with_details("c:0065").video_pid, 0x65);
    EXPECT_EQ(with_details("c:000").video_pid, 0);
    EXPECT_EQ(with_details("c:0000065").video_pid, 0x65);
    EXPECT_EQ(with_details("c:001fff").video_pid, 8191);
    EXPECT_EQ(with_details("c:041fff").audio_pids, Pids{8191});
    EXPECT_EQ(with_details("c:017,c:04101,c:1700102").audio_pids, (Pids{7, 0x101, 0x102}));
    EXPECT_EQ(with_details("c:0065,c:051").video_mode, video_h264);
    EXPECT_EQ(with_details("c:0065,c:0500007").video_mode, video_hevc);
}

TEST(Lamedb, APieceThatCannotBeReadCostsNoMoreThanItself) {
    const auto remark_on = [](const std::string& bad) {
        const ChannelList list =
            read_lamedb(version_4(service(head, "Canal", "c:000200," + bad + ",c:01028a")));
        EXPECT_EQ(only(list).video_pid, 0x200) << bad;
        EXPECT_EQ(only(list).audio_pids, Pids{0x28a}) << bad;
        if (list.remarks.size() != 1)
            return std::to_string(list.remarks.size()) + " remarks";
        return std::to_string(list.remarks[0].line) + ": " + list.remarks[0].reason;
    };
    for (const std::string bad : {"042000", "04xxxx", "04", "04100000200"})
        EXPECT_EQ(remark_on("c:" + bad),
                  "8: c: found \"" + bad +
                      "\", expected two decimal digits, then a hexadecimal PID from 0 to 1FFF");
    for (const std::string bad : {"", "0", "x", "0x0200", "-10200"})
        EXPECT_EQ(remark_on("c:" + bad),
                  "8: c: found \"" + bad + "\", expected two decimal digits, then hexadecimal ones");
    EXPECT_EQ(remark_on("C:12345"), "8: C: found \"12345\", expected a hexadecimal number from 0 to FFFF");
}

TEST(Lamedb, AnUnreadablePidIsAPidOfAServiceOfAnyType) {
    EXPECT_EQ(read_lamedb(version_4(service("1:1:1:1:195:0", "Datos", "c:002000"))).channels.size(), 1u);
}

TEST(Lamedb, ConditionalAccess) {
    EXPECT_TRUE(with_details("C:098c").scrambled);
    EXPECT_TRUE(with_details("C:0000,C:0500").scrambled);
    EXPECT_TRUE(with_details("C:0500,C:0000").scrambled);
    EXPECT_FALSE(with_details("C:0000").scrambled);
    EXPECT_FALSE(with_details("").scrambled);
    EXPECT_TRUE(with_details("C:12345").scrambled);
    EXPECT_TRUE(with_details("C:12345,C:0").scrambled);
}

TEST(Lamedb, WhatElseADetailLineHasIsPassedOver) {
    const Channel channel = with_details("f:40,p:Uno, dos, S.A.,c:000200,x:y");
    EXPECT_EQ(channel.video_pid, 0x200);
}

TEST(Lamedb, Names) {
    EXPECT_EQ(only(read_lamedb(version_4(service(head, "end")))).name, "end");
    EXPECT_EQ(only(read_lamedb(version_4(service(head, "services")))).name, "services");
    EXPECT_EQ(only(read_lamedb(version_4(service(head, " M\xFCnchen ")))).name, "München");
    EXPECT_EQ(only(read_lamedb(version_4(service(head, "")))).name, "");
    const auto name_of = [](const std::string& quoted) {
        return only(read_lamedb(version_5("s:" + head + "," + quoted))).name;
    };
    EXPECT_EQ(name_of("\"Canal\""), "Canal");
    EXPECT_EQ(name_of("\"\""), "");
    EXPECT_EQ(name_of("\"\",p:x"), "");
    EXPECT_EQ(name_of("\"Canal \"Uno\", dos\",p:x"), "Canal \"Uno\", dos");
    EXPECT_EQ(name_of("\"a,c:b\""), "a,c:b");
    EXPECT_EQ(name_of("\"a\"bc:d\""), "a\"bc:d");
    EXPECT_EQ(name_of("\"\"\""), "\"");
}

TEST(Lamedb, AServiceLineOfVersion5HasItsParts) {
    for (const std::string bad : {"s:", "s:1:1:1:1:1:0", "s:1:1:1:1,\"Canal\"", "s:1:1:1:1:1:0,\"Canal",
                                  "s:1:1:1:1:1:0,Canal\"", "s:1:1:1:1:1:0,\"Canal\"x"})
        EXPECT_EQ(complaint_of(version_5(bad)),
                  "4: service: found \"" + bad +
                      "\", expected s:SID:namespace:TSID:ONID:type:number,\"Name\",...");
    EXPECT_EQ(complaint_of(version_5("x")), "4: found \"x\", expected a line that begins with t:, s: or #");
}

TEST(Lamedb, IdsAtTheirLimits) {
    EXPECT_EQ(with_details("p:", "ffff:ffffffff:FFFF:ffff:1:0").tid, 65535);
    EXPECT_EQ(complaint_of(version_4(service("10000:1:1:1:1:0"))),
              "8: SID: found \"10000\", expected a hexadecimal number from 0 to FFFF");
    EXPECT_EQ(complaint_of(version_4(service("1:1:10000:1:1:0"))),
              "8: TSID: found \"10000\", expected a hexadecimal number from 0 to FFFF");
    EXPECT_EQ(complaint_of(version_4(service("1:1:1:1:1a:0"))),
              "8: service type: found \"1a\", expected a whole number from 0 to 65535");
    EXPECT_EQ(complaint_of(version_5("s:1:100000000:1:1:1:0,\"a\"")),
              "4: namespace: found \"100000000\", expected a hexadecimal number from 0 to FFFFFFFF");
}

TEST(Lamedb, AStreamWithoutIdsNeedsItsTransponder) {
    EXPECT_EQ(complaint_of(version_4(service("1:00c00000:0:0:1:0"))),
              "8: found no transponder 00c00000:0000:0000, expected it: the stream has no ids");
    const std::string known = "t:00c00000:0000:0000,c:346000:6900000:0:3:0:0:0\ns:1:00c00000:0:0:1:0,\"a\"";
    const Channel channel = only(read_lamedb(version_5(known)));
    EXPECT_EQ(channel.frequency, 346000u);
    EXPECT_EQ(channel.polarization, 0);
}

TEST(Lamedb, ANamespaceTellsTheSource) {
    const auto source_of = [](const std::string& name_space) {
        return with_details("p:", "1:" + name_space + ":1:1:1:0").source;
    };
    EXPECT_EQ(source_of("00c02b66"), "S19.2E");
    EXPECT_EQ(source_of("0"), "S0.0E");
    EXPECT_EQ(source_of("07080000"), "S180.0E");
    EXPECT_EQ(source_of("07090000"), "S179.9W");
    EXPECT_EQ(source_of("0e0f0000"), "S0.1W");
    EXPECT_EQ(source_of("0e100000"), "0e100000");
    EXPECT_EQ(source_of("eeee0000"), "T");
    EXPECT_EQ(source_of("ffff0000"), "C");
}

TEST(Lamedb, DamagedTranspondersCostNoService) {
    const std::string text =
        "eDVB services /4/\ntransponders\nx\n1:2\n1:2:3\n\ts x:1\n/\nend\nservices\n" + service() + "end\n";
    const ChannelList list = read_lamedb(text);
    EXPECT_EQ(list.channels.size(), 1u);
    ASSERT_EQ(list.unreadable.size(), 3u);
    EXPECT_EQ(list.unreadable[0].reason, "transponder: found \"x\", expected namespace:TSID:ONID");
    EXPECT_EQ(list.unreadable[2].line, 6u);
    EXPECT_EQ(list.unreadable[2].reason, "frequency: found \"x\", expected a whole number from 1");
    for (const std::string bad : {"t:", "t:1:2:3", "t:1:2,s:1", "t:1:2:3,s", "t:1:2:3,11362000"})
        EXPECT_EQ(complaint_of(version_5(bad)),
                  "4: transponder: found \"" + bad + "\", expected t:namespace:TSID:ONID,s:frequency:...");
}

TEST(Lamedb, ReadingGoesOnAtTheNextService) {
    const std::string other = service("0066:00c00000:03e9:0001:1:0", "Otro");
    const auto names = [](const std::string& services) {
        const ChannelList list = read_lamedb(version_4(services));
        EXPECT_EQ(list.unreadable.size(), 1u);
        std::string all;
        for (const Channel& channel : list.channels)
            all += channel.name + "@" + std::to_string(channel.number) + " ";
        return all;
    };
    EXPECT_EQ(names("broken\nCanal\n" + details + "\n" + other), "Otro@2 ");
    EXPECT_EQ(names(head + "\nCanal\n" + other), "Otro@2 ");
    EXPECT_EQ(names(head + "\n" + other), "Otro@2 ");
    EXPECT_EQ(names(other + head + "\nCanal\n"), "Otro@1 ");
    EXPECT_EQ(names(other + "broken\n"), "Otro@1 ");
}

TEST(Lamedb, AFileCutShortIsTold) {
    const std::string whole = version_4(service());
    const std::string cut = whole.substr(0, whole.find("end\nthe end"));
    EXPECT_EQ(complaint_of(cut), "10: the file ends before the \"end\" of its services");
    const std::string damaged = version_4("broken\n");
    EXPECT_EQ(read_lamedb(damaged.substr(0, damaged.find("end\nthe end"))).unreadable.size(), 2u);
    EXPECT_EQ(complaint_of("eDVB services /4/"), "1: the file ends before the \"end\" of its services");
    EXPECT_EQ(read_lamedb("eDVB services /5/").unreadable.size(), 0u);
}

TEST(Lamedb, ServicesWithoutTheirHeadingAreStillRead) {
    std::string text = version_4(service());
    text.erase(text.find("services\n0065"), 9);
    const ChannelList list = read_lamedb(text);
    EXPECT_EQ(list.channels.size(), 1u);
    ASSERT_EQ(list.unreadable.size(), 1u);
    EXPECT_EQ(list.unreadable[0].line, 7u);
    EXPECT_EQ(list.unreadable[0].reason, "found a service, expected \"services\" before the first");
}

TEST(Lamedb, LineEnds) {
    std::string text = version_4(service());
    for (std::size_t at = 0; (at = text.find('\n', at)) != text.npos; at += 2)
        text.insert(at, "\r");
    expect_whole(only(read_lamedb(text)));
    text = version_5("s:" + head + ":0,\"Canal\"," + details);
    text.pop_back();
    expect_whole(only(read_lamedb(text)));
}

} // namespace
} // namespace zarven::tool::lamedb_test
