// Streams by their numbers.

#include "headend/receptions.h"

#include <gtest/gtest.h>

namespace zarven::tool::receptions_test {
namespace {

Reception at(std::uint16_t onid, std::uint16_t tsid, std::uint32_t frequency) {
    Reception reception;
    reception.onid = onid;
    reception.tsid = tsid;
    reception.frequency = frequency;
    return reception;
}

TEST(Receptions, AreFoundByStream) {
    const Receptions receptions = by_stream({at(1, 2, 514000), at(2, 1, 522000)});
    EXPECT_EQ(reception_of({1, 2}, receptions).frequency, 514000u);
    EXPECT_EQ(reception_of({2, 1}, receptions).frequency, 522000u);
}

TEST(Receptions, OfAStreamThatStandsTwiceTheFirstCounts) {
    const Receptions receptions = by_stream({at(1, 2, 514000), at(1, 2, 522000)});
    EXPECT_EQ(receptions.size(), 1u);
    EXPECT_EQ(reception_of({1, 2}, receptions).frequency, 514000u);
}

TEST(Receptions, OfAnUnknownStreamNothingIsTold) {
    const Receptions receptions = by_stream({at(1, 2, 514000)});
    EXPECT_EQ(tuning_of(reception_of({1, 3}, receptions)), "");
    EXPECT_EQ(tuning_of(reception_of({2, 2}, receptions)), "");
}

TEST(Receptions, TheStreamsOfServicesStandOnceEach) {
    std::vector<Service> services(3);
    services[0].onid = services[2].onid = 1;
    services[0].tsid = services[2].tsid = services[1].tsid = 7;
    EXPECT_EQ(streams_of(services), (std::set<Stream>{{0, 7}, {1, 7}}));
    EXPECT_EQ(streams_of({}).size(), 0u);
}

} // namespace
} // namespace zarven::tool::receptions_test
