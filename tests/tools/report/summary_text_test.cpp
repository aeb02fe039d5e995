// The sentences that reports share.

#include "report/summary_text.h"

#include <gtest/gtest.h>

#include "report/wish_text.h"

namespace zarven::tool::summary_text_test {
namespace {

TEST(SummaryText, RatesAreToldWhereAnyWasMeasured) {
    RateCounts rates;
    rates.estimated = 3;
    rates.bitrate = rates.estimated_bitrate = 9000;
    EXPECT_EQ(rates_in_figures(rates), "");
    rates.measured_loaded = 2;
    rates.measured = 1;
    rates.bitrate = 12000;
    EXPECT_EQ(rates_in_figures(rates),
              "Bitrates of 4 services placed: 1 measured, 3 estimated; estimates are "
              "9000 of 12000 kbit/s (75.0 %)");
    rates = {};
    rates.measured_loaded = 1;
    EXPECT_EQ(rates_in_figures(rates),
              "Bitrates of 0 services placed: 0 measured, 0 estimated; estimates are "
              "0 of 0 kbit/s (0.0 %)");
}

TEST(SummaryText, MustsAreToldWhereAnyAre) {
    EXPECT_EQ(musts_in_figures(0, 0), "");
    EXPECT_EQ(musts_in_figures(0, 1), "; 0 of 1 must placed");
    EXPECT_EQ(musts_in_figures(9, 10), "; 9 of 10 musts placed");
}

TEST(SummaryText, ServicesAreCountedByWhatBecameOfThem) {
    Counts counts;
    counts.loaded = 4;
    counts.placed = 3;
    counts.left_out = 1;
    EXPECT_EQ(services_in_figures(counts), "4 services loaded: 3 placed, 1 left out");
    counts.neither = 1;
    counts.not_asked_for = 2;
    EXPECT_EQ(services_in_figures(counts),
              "4 services loaded, 2 not asked for: 3 placed, 1 left out, 1 neither");
}

TEST(SummaryText, WhatIsBrokenIsCounted) {
    EXPECT_EQ(broken_in_figures({}), "");
    EXPECT_EQ(broken_in_figures({2, 0}), "; 2 limits broken");
    EXPECT_EQ(broken_in_figures({0, 1}), "; 1 service broken");
    EXPECT_EQ(broken_in_figures({1, 2}), "; 1 limit and 2 services broken");
}

TEST(WishText, NamesFileAndLine) {
    EXPECT_EQ(wish_text({"wishes.txt", {3, "Canal"}}),
              "wishes.txt: line 3: no service has the name or LCN \"Canal\"");
}

} // namespace
} // namespace zarven::tool::summary_text_test
