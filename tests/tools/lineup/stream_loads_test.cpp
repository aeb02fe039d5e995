// What the services of a stream are estimated at never exceeds what its transponder carries.

#include "lineup/stream_loads.h"

#include <gtest/gtest.h>

namespace zarven::tool::stream_loads_test {
namespace {

using Bitrates = std::vector<std::uint32_t>;

constexpr Stream stream{1, 1011};

/// 27500 kS/s, QPSK 3/4: 38014 kbit/s.
Transponder transponder() {
    Transponder made;
    made.delivery = Delivery::dvb_s;
    made.symbol_rate = 27'500'000;
    made.bits_per_symbol = 2;
    made.fec = {3, 4};
    return made;
}

Service television(std::uint32_t bitrate) {
    Service made;
    made.bitrate = made.video_bitrate = bitrate;
    return made;
}

Service radio(std::uint32_t bitrate) {
    Service made;
    made.type = type_radio;
    made.bitrate = bitrate;
    return made;
}

struct Outcome {
    Bitrates bitrates;
    std::vector<SharedOut> shared;
};

Outcome shared_out(std::vector<Service> services, const Transponder& received = transponder()) {
    StreamLoads loads;
    for (std::size_t index = 0; index < services.size(); ++index)
        loads.add(stream, index, received);
    Outcome outcome;
    outcome.shared = loads.share_out(services);
    for (const Service& service : services) {
        outcome.bitrates.push_back(service.bitrate);
        EXPECT_EQ(service.video_bitrate, service.type == type_radio ? 0 : service.bitrate);
    }
    return outcome;
}

TEST(StreamLoads, UpToTheRateNothingChanges) {
    EXPECT_EQ(shared_out({television(30000), television(8013)}).bitrates, (Bitrates{30000, 8013}));
    EXPECT_EQ(shared_out({television(30000), television(8014)}).bitrates, (Bitrates{30000, 8014}));
    EXPECT_TRUE(shared_out({television(30000), television(8014)}).shared.empty());
}

TEST(StreamLoads, AboveTheRateItIsSharedOut) {
    const Outcome outcome = shared_out({television(30000), television(8015)});
    EXPECT_EQ(outcome.bitrates, (Bitrates{29999, 8014}));
    ASSERT_EQ(outcome.shared.size(), 1u);
    EXPECT_EQ(outcome.shared[0].stream, stream);
    EXPECT_EQ(outcome.shared[0].estimated, 38015u);
    EXPECT_EQ(outcome.shared[0].carried, 38014u);
    EXPECT_EQ(shared_out({television(40000), television(40000)}).bitrates, (Bitrates{19007, 19007}));
    EXPECT_EQ(shared_out({television(4294967295), television(4294967295)}).bitrates,
              (Bitrates{19007, 19007}));
    EXPECT_EQ(shared_out({television(40000)}).bitrates, Bitrates{38014});
}

TEST(StreamLoads, RadiosKeepTheirsWhileTheyCan) {
    EXPECT_EQ(shared_out({television(40000), radio(14)}).bitrates, (Bitrates{38000, 14}));
    EXPECT_EQ(shared_out({television(40000), radio(38013)}).bitrates, (Bitrates{1, 38013}));
    EXPECT_EQ(shared_out({television(38014), radio(38014)}).bitrates, (Bitrates{19007, 19007}));
    EXPECT_EQ(shared_out({radio(40000), radio(40000)}).bitrates, (Bitrates{19007, 19007}));
}

TEST(StreamLoads, WithoutAKnownRateNothingIsChecked) {
    EXPECT_EQ(shared_out({television(100000)}, {}).bitrates, Bitrates{100000});
    StreamLoads loads;
    EXPECT_EQ(loads.unchecked(), 0u);
    loads.add(stream, 0, {});
    loads.add({1, 1012}, 1, transponder());
    EXPECT_EQ(loads.unchecked(), 1u);
    // One channel of the stream that tells the rate suffices.
    loads.add(stream, 2, transponder());
    EXPECT_EQ(loads.unchecked(), 0u);
}

TEST(StreamLoads, TellsWhatTheTransponderIs) {
    StreamLoads loads;
    loads.add(stream, 0, {});
    loads.add(stream, 1, transponder());
    Transponder other = transponder();
    other.symbol_rate *= 2;
    loads.add(stream, 2, other);
    loads.add({1, 1012}, 3, {});
    std::map<Stream, Reception> receptions = {{stream, {}}, {{1, 1012}, {}}, {{1, 1013}, {}}};
    loads.describe(receptions);
    EXPECT_EQ(receptions.at(stream).net_rate, 38014u);
    EXPECT_EQ(receptions.at(stream).symbol_rate, transponder().symbol_rate)
        << "the first that tells a net rate";
    EXPECT_EQ(receptions.at(stream).delivery, to_string(transponder().delivery));
    for (const std::uint16_t unknown : {std::uint16_t{1012}, std::uint16_t{1013}}) {
        EXPECT_EQ(receptions.at({1, unknown}).net_rate, 0u);
        EXPECT_EQ(receptions.at({1, unknown}).symbol_rate, 0u);
        EXPECT_EQ(receptions.at({1, unknown}).delivery, "");
    }
}

TEST(StreamLoads, WithoutANetRateTheFirstTransponderIsTold) {
    StreamLoads loads;
    Transponder first = transponder();
    first.fec = {};
    Transponder second = first;
    second.symbol_rate *= 2;
    loads.add(stream, 0, first);
    loads.add(stream, 1, second);
    std::map<Stream, Reception> receptions = {{stream, {}}};
    loads.describe(receptions);
    EXPECT_EQ(receptions.at(stream).symbol_rate, first.symbol_rate);
    EXPECT_EQ(receptions.at(stream).net_rate, 0u);
    EXPECT_NE(receptions.at(stream).delivery, "");
}

} // namespace
} // namespace zarven::tool::stream_loads_test
