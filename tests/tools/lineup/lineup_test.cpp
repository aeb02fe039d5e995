// Which format a text shows, and that no damage to a file of any format is too much.

#include "lineup/lineup.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "base/streams.h"
#include "failure_message.h"
#include "lineup/channel_import.h"

namespace zarven::tool::lineup_test {
namespace {

using namespace std::string_literals;

const std::string conf_line = "Canal:11362:HC23:S19.2E:22000:6110=27:6120=deu@3:0:98C:11110:1:1011:0\n";

const std::string lamedb_5 =
    "eDVB services /5/\n# comment\nt:00c00000:0000:0000,s:11362000:22000000:0:4:192:2:0\n"
    "s:0065:00c00000:0000:0000:25:0,\"Canal \"Uno\"\",p:Media,c:000200,C:098c,f:40\n";

TEST(FormatOf, TheFirstLineThatShowsOne) {
    EXPECT_EQ(format_of(conf_line), LineupFormat::channels_conf);
    EXPECT_EQ(format_of("broken\n\n" + conf_line), LineupFormat::channels_conf);
    EXPECT_EQ(format_of(":@5 Grupo"), LineupFormat::channels_conf);
    EXPECT_EQ(format_of("# comment\r\n\r\n[Canal]\r\n"), LineupFormat::dvbv5);
    EXPECT_EQ(format_of("KEY = VALUE\n  [Canal]\n" + conf_line), LineupFormat::dvbv5);
    EXPECT_EQ(format_of("\xEF\xBB\xBF"
                        "eDVB services /4/"),
              LineupFormat::lamedb);
    EXPECT_EQ(format_of("eDVB services /9/"), LineupFormat::lamedb);
    EXPECT_EQ(format_of("[1]" + conf_line), LineupFormat::channels_conf);
    EXPECT_EQ(format_of("#" + conf_line + "[Canal]"), LineupFormat::dvbv5);
}

TEST(FormatOf, NoneAtAll) {
    for (const std::string none :
         {"", "\n \n", "text", "# only\n# comments", "[Canal", "{\n\"modules\": []}"})
        EXPECT_FALSE(format_of(none).has_value()) << none;
}

TEST(ReadLineup, EveryFormatIsReadByItsReader) {
    for (const auto& [text, format] :
         {std::pair(conf_line, LineupFormat::channels_conf),
          std::pair(read_text(RECALCULO_EXAMPLES "/sample.dvbv5.conf"), LineupFormat::dvbv5),
          std::pair(read_text(RECALCULO_EXAMPLES "/sample.lamedb"), LineupFormat::lamedb)}) {
        const Lineup lineup = read_lineup("f", text, std::nullopt);
        EXPECT_EQ(lineup.format, format);
        EXPECT_FALSE(lineup.list.channels.empty());
        EXPECT_TRUE(lineup.list.unreadable.empty());
    }
}

TEST(ReadLineup, AGivenFormatIsNotDoubted) {
    const Lineup lineup = read_lineup("f", conf_line, LineupFormat::dvbv5);
    EXPECT_EQ(lineup.format, LineupFormat::dvbv5);
    EXPECT_EQ(lineup.list.unreadable.size(), 1u);
    EXPECT_TRUE(read_lineup("f", "", LineupFormat::channels_conf).list.channels.empty());
    EXPECT_EQ(failure_message([] { read_lineup("f", conf_line, LineupFormat::lamedb); }).substr(0, 25),
              "f: header: found \"Canal:1");
}

TEST(ReadLineup, WhatIsNoListIsRefused) {
    EXPECT_EQ(
        failure_message([] { read_lineup("f", "text", std::nullopt); }),
        "f: found no line of a channel list, expected channels.conf (13 fields with colons between them), "
        "dvbv5 ([Name] and KEY = VALUE) or lamedb (eDVB services /4/ or 5/)");
}

TEST(LineupFormat, NamesAndBack) {
    for (const std::string& name : lineup_format_names())
        EXPECT_EQ(to_string(lineup_format(name)), name);
}

/// Reads a text as every format, and expects that each line is complained of at most once or twice: a damaged
/// record may be told with its line and the end of the file.
void read_anyhow(const std::string& text) {
    const auto most = 2 + static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    for (const LineupFormat format :
         {LineupFormat::channels_conf, LineupFormat::dvbv5, LineupFormat::lamedb}) {
        try {
            const Lineup lineup = read_lineup("f", text, format);
            const ImportedChannels imported = import_channels(lineup.list, {});
            EXPECT_LE(imported.services.size() + imported.unreadable.size(), most);
            for (const Service& service : imported.services)
                EXPECT_FALSE(service.name.empty());
            for (const Remark& line : imported.unreadable) {
                EXPECT_TRUE(line.line >= 1 && line.line <= most);
                EXPECT_LT(line.reason.size(), 300u);
            }
        } catch (const Failure& failure) {
            EXPECT_EQ(std::string(failure.what()).substr(0, 10), "f: header:");
        }
    }
}

std::vector<std::string> samples() {
    // Of every delivery, with equal ids, without ids, names and PIDs, and twice.
    const std::string conf = ":Varios\n"
                             "Uno:12187:HC34M2S0:S19.2E:27500:163=2:104=deu:105:0:12003:65535:1:0\n"
                             "Uno HD:11493:VC23M5O35P0S1:S28.2E:22000:163:104:0:1830:12004:65535:1:0\n"
                             ":498000000:B8C23G32M64S0T8Y0:T:0:0:0:0:0:7:65535:1:0\n"
                             "Uno:12187:HC34M2S0:S19.2E:27500:163=36:104=deu:105:0:12003:65535:1:0\n"
                             "Radio:346:M256:C:6900:0:104:0:0:9:0:0:0\n";
    const std::string lamedb = "eDVB services /5/\n"
                               "t:00820000:0001:ffff,s:11200000:27500000:0:3:130:2:0\n"
                               "t:00c02b66:0001:ffff,s:12187500:27500000:0:3:192:2:0:1:2:0:2\n"
                               "t:eeee0000:0001:ffff,t:498000000:0:1:5:2:1:0:0:2\n"
                               "t:ffff0000:0001:ffff,c:346000:6900000:0:5:0:0:0\n"
                               "s:65:00820000:0001:ffff:1:0,\"\",c:0065,c:0166,c:051,C:98c\n"
                               "s:66:00c02b66:0001:ffff:25:0,\"HD\",c:00xx,c:0500001,C:zz\n"
                               "s:67:eeee0000:0001:ffff:195:0,\"T\",c:0000165\n"
                               "s:68:ffff0000:0001:ffff:2:0,\"C\",c:0166\n";
    return {":@3\n" + conf_line + conf_line,
            lamedb_5,
            conf,
            lamedb,
            read_text(RECALCULO_EXAMPLES "/sample.dvbv5.conf"),
            read_text(RECALCULO_EXAMPLES "/sample.lamedb")};
}

TEST(Damage, CutAtEveryByte) {
    for (const std::string& sample : samples())
        for (std::size_t length = 0; length < sample.size(); ++length)
            read_anyhow(sample.substr(0, length));
}

TEST(Damage, EveryByteChanged) {
    for (const std::string& sample : samples())
        for (std::size_t at = 0; at < sample.size(); ++at)
            for (const char byte : {'\0', '\n', ':', '"', '\xFF'}) {
                std::string damaged = sample;
                damaged[at] = byte;
                read_anyhow(damaged);
            }
}

TEST(Damage, EveryByteLost) {
    for (const std::string& sample : samples())
        for (std::size_t at = 0; at < sample.size(); ++at)
            read_anyhow(sample.substr(0, at) + sample.substr(at + 1));
}

TEST(Damage, ALostLineCostsNoOtherChannel) {
    for (const std::string& sample : samples()) {
        const Lineup whole = read_lineup("f", sample, std::nullopt);
        const bool is_lamedb = whole.format == LineupFormat::lamedb;
        // A dvbv5 heading parts two channels; the first line of a lamedb cannot be spared.
        const std::size_t most_lost = whole.format == LineupFormat::dvbv5 ? 2 : 1;
        for (std::size_t begin = is_lamedb ? sample.find('\n') + 1 : 0; begin < sample.size();) {
            const std::size_t end = sample.find('\n', begin) + 1;
            const std::string lost = sample.substr(begin, end - begin);
            const ChannelList list =
                read_lineup("f", sample.substr(0, begin) + sample.substr(end), whole.format).list;
            EXPECT_GE(list.channels.size() + most_lost, whole.list.channels.size()) << lost;
            begin = end;
        }
    }
}

TEST(Damage, VeryLongLines) {
    const std::string many(100'000, ':');
    const std::string name(100'000, 'x');
    for (const std::string& text :
         {many, "eDVB services /5/\ns:" + many, "eDVB services /4/\nservices\n" + many + "\n",
          "[" + name + "]\n" + name, "[a]\nAUDIO_PID = " + name,
          "eDVB services /5/\ns:1:1:1:1:1:0,\"" + std::string(100'000, '"')})
        read_anyhow(text);
    EXPECT_EQ(read_lineup("f", name + conf_line, std::nullopt).list.channels.at(0).name.size(), 100'005u);
}

TEST(Damage, NulInANameIsKept) {
    const Lineup lineup = read_lineup("f", "[a\0b]\nSERVICE_ID=1\nTRANSPORT_ID=1"s, std::nullopt);
    EXPECT_EQ(lineup.list.channels.at(0).name, "a\0b"s);
}

} // namespace
} // namespace zarven::tool::lineup_test
