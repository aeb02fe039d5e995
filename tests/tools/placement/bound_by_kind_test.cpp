// Which modules have prices in common.

#include "placement/bound_by_kind.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace zarven::tool::bound_by_kind_test {
namespace {

TEST(BoundByKind, AsMuchBitrateForEachInputIsOneKind) {
    const std::vector<KindTotals> kinds = kinds_of({{2, 40}, {1, 30}, {3, 60}, {4, 40}});
    ASSERT_EQ(kinds.size(), 3u);
    EXPECT_EQ(kinds[0].inputs, 4u);
    EXPECT_EQ(kinds[0].bitrate, 40u);
    EXPECT_EQ(kinds[1].inputs, 5u);
    EXPECT_EQ(kinds[1].bitrate, 100u);
    EXPECT_EQ(kinds[2].inputs, 1u);
    EXPECT_EQ(kinds[2].bitrate, 30u);
}

TEST(BoundByKind, ThereAreTwelveKindsAtTheMost) {
    for (const std::size_t number : std::vector<std::size_t>{0, 12, 13, 300}) {
        std::vector<KindTotals> modules;
        for (std::size_t module = 0; module < number; ++module)
            modules.push_back({1, 10 * (module + 1)});
        const std::vector<KindTotals> kinds = kinds_of(modules);
        EXPECT_EQ(kinds.size(), std::min<std::size_t>(number, 12));
        KindTotals all;
        for (const KindTotals& kind : kinds) {
            EXPECT_GT(kind.inputs, 0u);
            all.inputs += kind.inputs;
            all.bitrate += kind.bitrate;
        }
        EXPECT_EQ(all.inputs, number);
        EXPECT_EQ(all.bitrate, 5 * number * (number + 1));
    }
}

TEST(BoundByKind, TheSameNumbersGiveTheSameBound) {
    std::vector<std::vector<Demand>> streams;
    for (std::uint32_t stream = 1; stream <= 20; ++stream)
        streams.emplace_back(stream % 7 + 1, Demand{stream * 37 % 11 + 1, stream % 3, 0, stream % 5 + 1});
    const std::vector<Demand> of_any = {{3, 1, 0, 9}};
    const PricedDemands demands{
        streams, of_any, kinds_of({{4, 40, {40, 9, 0}}, {2, 90, {90, 12, 0}}, {3, 60, {60, 9, 0}}}), 30, 0};
    const double bound = least_bound_by_kind(demands, {0.05, 0, 0});
    EXPECT_GT(bound, 0);
    EXPECT_EQ(least_bound_by_kind(demands, {0.05, 0, 0}), bound);
}

} // namespace
} // namespace zarven::tool::bound_by_kind_test
