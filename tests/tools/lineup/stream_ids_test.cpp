// Which stream a channel belongs to: streams without ids, and transponders with equal ones.

#include "lineup/stream_ids.h"

#include <gtest/gtest.h>

#include "channel_fixture.h"

namespace zarven::tool::stream_ids_test {
namespace {

std::vector<std::uint16_t> tsids(const ImportedChannels& imported) {
    std::vector<std::uint16_t> all;
    for (const Service& service : imported.services) {
        EXPECT_EQ(service.onid, 0);
        all.push_back(service.tsid);
    }
    return all;
}

TEST(StreamIds, StreamsWithoutIdsAreCounted) {
    EXPECT_EQ(
        import({nameless(1, 11362), nameless(2, 11493), nameless(3, 11362), channel(4)}).nameless_streams,
        2u);
}

TEST(StreamIds, StreamsWithoutIdsAreToldApartByFrequency) {
    EXPECT_EQ(tsids(import({nameless(1, 11362), nameless(2, 11493), nameless(3, 11362)})),
              (std::vector<std::uint16_t>{11362, 11493, 11362}));
}

TEST(StreamIds, StreamsWithoutIdsAreToldApartByPolarizationAndSource) {
    EXPECT_EQ(tsids(import({nameless(1, 11362, 'H'), nameless(2, 11362, 'V'),
                            nameless(3, 11362, 'V', "S13.0E"), nameless(4, 11362, 'V')})),
              (std::vector<std::uint16_t>{11362, 11363, 11364, 11363}));
}

TEST(StreamIds, LargeFrequenciesAreTakenInALargerUnit) {
    EXPECT_EQ(tsids(import({nameless(1, 65535), nameless(2, 474000000), nameless(3, 477001)})),
              (std::vector<std::uint16_t>{65535, 474, 477}));
    EXPECT_EQ(tsids(import({nameless(1, 65536)})), (std::vector<std::uint16_t>{65}));
}

TEST(StreamIds, FrequenciesWithin3MHzAreOneTransponder) {
    EXPECT_EQ(tsids(import({nameless(1, 11362), nameless(2, 11364), nameless(3, 11365), nameless(4, 11366)})),
              (std::vector<std::uint16_t>{11362, 11362, 11362, 11366}));
    EXPECT_EQ(tsids(import({nameless(1, 11362), nameless(2, 11359), nameless(3, 11358)})),
              (std::vector<std::uint16_t>{11362, 11362, 11358}));
    // Of two in reach the nearer one.
    EXPECT_EQ(tsids(import({nameless(1, 11362), nameless(2, 11366), nameless(3, 11365)})),
              (std::vector<std::uint16_t>{11362, 11366, 11366}));
    EXPECT_EQ(tsids(import({nameless(1, 11362), nameless(2, 11365001), nameless(3, 11365000)})),
              (std::vector<std::uint16_t>{11362, 11365, 11365}));
}

TEST(StreamIds, TranspondersWithEqualIdsAreToldApart) {
    const ImportedChannels imported =
        import({shared_ids(1, 11362), shared_ids(2, 11493), shared_ids(3, 11362, 'V'),
                shared_ids(4, 11362, 'H', "S13.0E"), shared_ids(5, 11363), shared_ids(6, 11493), channel(7)});
    std::vector<std::string> streams;
    for (const Service& service : imported.services)
        streams.push_back(to_string(Stream{service.onid, service.tsid}));
    EXPECT_EQ(streams, (std::vector<std::string>{"65535/1", "65535/11493", "65535/11362", "65535/11363",
                                                 "65535/1", "65535/11493", "1/1011"}));
    ASSERT_EQ(imported.shared_ids.size(), 1u);
    EXPECT_EQ(imported.shared_ids.at({65535, 1}),
              (std::vector<Stream>{{65535, 1}, {65535, 11493}, {65535, 11362}, {65535, 11363}}));
    EXPECT_EQ(imported.nameless_streams, 0u);
}

TEST(StreamIds, IdsOfOneTransponderAreNotShared) {
    Channel unknown_polarization = shared_ids(2, 11364, '\0');
    EXPECT_TRUE(
        import({shared_ids(1, 11362), unknown_polarization, shared_ids(3, 11365)}).shared_ids.empty());
    // Where a frequency is not known, nothing tells it apart.
    EXPECT_TRUE(import({shared_ids(1, 11362), shared_ids(2, 0)}).shared_ids.empty());
    EXPECT_TRUE(import({shared_ids(1, 0), shared_ids(2, 11362)}).shared_ids.empty());
    EXPECT_EQ(import({shared_ids(1, 0), shared_ids(2, 11362, 'V', "S13.0E")}).shared_ids.size(), 1u);
}

TEST(StreamIds, TwoOfUnknownFrequencyAreOneBeforeAnyOther) {
    const ImportedChannels imported =
        import({shared_ids(1, 0, 'H'), shared_ids(2, 11362, 'V'), shared_ids(3, 0, '\0')});
    EXPECT_NE(imported.services.at(1).tsid, imported.services.at(0).tsid);
    EXPECT_EQ(imported.services.at(2).tsid, imported.services.at(0).tsid);
}

TEST(StreamIds, TellsWhereStreamsAreReceived) {
    const ImportedChannels imported =
        import({channel(1), nameless(2, 514000000, '\0', "T"), shared_ids(3, 12187500, 'V')});
    EXPECT_EQ(to_string(imported.receptions.at({1, 1011})), "19.2E 11362 MHz H");
    EXPECT_EQ(to_string(imported.receptions.at({0, 514})), "514 MHz");
    EXPECT_EQ(to_string(imported.receptions.at({65535, 1})), "19.2E 12187.5 MHz V");
}

TEST(StreamIds, TellsWhatAReceiverIsTunedBy) {
    Reception reception{1, 1011, 12187500, "V", "19.2E"};
    EXPECT_EQ(tuning_of(reception), "19.2E 12187.5 MHz V");
    reception.symbol_rate = 27'500'000;
    EXPECT_EQ(tuning_of(reception), "19.2E 12187.5 MHz V 27500 kS/s");
    EXPECT_EQ(to_string(reception), "19.2E 12187.5 MHz V") << "that tells transponders apart";
    Reception bare;
    EXPECT_EQ(tuning_of(bare), "");
    bare.symbol_rate = 1'999'500;
    EXPECT_EQ(tuning_of(bare), "1999.5 kS/s");
}

TEST(StreamIds, StreamsWithoutIdsKeepClearOfRealOnes) {
    Channel real = channel(2);
    real.nid = 0;
    real.tid = 11362;
    EXPECT_EQ(tsids(import({nameless(1, 11362), real})), (std::vector<std::uint16_t>{11363, 11362}));
    Channel other_network = channel(2);
    other_network.tid = 11362;
    EXPECT_EQ(import({nameless(1, 11362), other_network}).services.at(0).tsid, 11362);
}

TEST(StreamIds, AfterTheLastIdComesTheFirstAndNeverZero) {
    EXPECT_EQ(tsids(import({nameless(1, 65535, 'H'), nameless(2, 65535, 'V')})),
              (std::vector<std::uint16_t>{65535, 1}));
}

// Stepping over the numbers taken, one by one, would need minutes here.
TEST(StreamIds, EveryIdIsGivenAndThenNoneIsLeft) {
    std::vector<Channel> channels;
    for (std::uint32_t number = 1; number <= 100000; ++number)
        channels.push_back(nameless(1, 11362, 'H', std::to_string(number)));
    const ImportedChannels imported = import(channels);
    EXPECT_EQ(imported.services.size(), 65535u);
    EXPECT_EQ(imported.services.back().tsid, 11361);
    ASSERT_EQ(imported.unreadable.size(), 100000u - 65535);
    EXPECT_EQ(imported.unreadable.front().reason,
              "no id is left for a stream without NID and TID of its own");
}

} // namespace
} // namespace zarven::tool::stream_ids_test
