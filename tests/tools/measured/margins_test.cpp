// Margins on rates.

#include "measured/margins.h"

#include <gtest/gtest.h>

#include "failure_message.h"

namespace zarven::tool::margins_test {
namespace {

TEST(Margins, AreOfEitherKindOrOfBoth) {
    EXPECT_EQ(read_margins({}).measured, 0u);
    EXPECT_EQ(read_margins({"10%"}).measured, 10u);
    EXPECT_EQ(read_margins({"10"}).estimated, 10u);
    EXPECT_EQ(read_margins({"measured=10%"}).measured, 10u);
    EXPECT_EQ(read_margins({"measured=10%"}).estimated, 0u);
    EXPECT_EQ(read_margins({"estimated=20"}).estimated, 20u);
    EXPECT_EQ(read_margins({"estimated=20"}).measured, 0u);
    EXPECT_EQ(read_margins({"10%", "estimated=20%"}).measured, 10u);
    EXPECT_EQ(read_margins({"10%", "estimated=20%"}).estimated, 20u);
}

TEST(Margins, AreWholeNumbersOfPercentUpToAThousand) {
    EXPECT_EQ(read_margins({"1000%"}).measured, 1000u);
    for (const char* text : {"1001%", "", "%", "-1%", "1.5%", "10%%", "mean=10%", "measured="})
        EXPECT_EQ(
            failure_message([&] { read_margins({text}); }),
            "--margin: found \"" + std::string(text) +
                "\", expected a whole number of percent up to 1000 as 10%, measured=10% or estimated=10%");
}

TEST(Margins, AreRoundedUp) {
    EXPECT_EQ(with_margin(1000, 0), 1000u);
    EXPECT_EQ(with_margin(1000, 10), 1100u);
    EXPECT_EQ(with_margin(1001, 10), 1102u);
    EXPECT_EQ(with_margin(1, 1), 2u) << "by a hundredth";
    EXPECT_EQ(with_margin(0, 10), 0u);
    EXPECT_EQ(with_margin(4294967295u, 0), 4294967295u);
    EXPECT_EQ(with_margin(4294967295u, 1), 4294967295u);
}

} // namespace
} // namespace zarven::tool::margins_test
