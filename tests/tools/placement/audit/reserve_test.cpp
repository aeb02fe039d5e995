// How a reserve is written, and how much it is.

#include "placement/audit/reserve.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "placement/audit/caution.h"
#include "placement/result.h"

namespace zarven::tool::reserve_test {
namespace {

std::uint32_t hundredths(const std::string& text) {
    return read_reserve(text).hundredths;
}

TEST(Reserve, IsReadInHundredthsOfAPercent) {
    EXPECT_EQ(Reserve().hundredths, hundredths("2.5%"));
    EXPECT_EQ(hundredths("0"), 0u);
    EXPECT_EQ(hundredths("0.01%"), 1u);
    EXPECT_EQ(hundredths("2.50"), 250u);
    EXPECT_EQ(hundredths("3%"), 300u);
    EXPECT_EQ(hundredths("50%"), 5000u);
    EXPECT_EQ(hundredths("50.00%"), 5000u);
}

TEST(Reserve, WhatIsNoneIsRefused) {
    for (const char* text : {"", "%", "x", "-1%", "2.", "2.x", ".5", "2.555%", "2,5%", "50.01%", "51",
                             "2.5%%", "1e1", "4294967297"})
        try {
            read_reserve(text);
            ADD_FAILURE() << text;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.what(),
                      "--reserve: found \"" + std::string(text) +
                          "\", expected percent from 0 to 50 with at most two decimals, as 2.5%");
        }
}

TEST(Reserve, IsRoundedUp) {
    EXPECT_EQ(reserve_of(38000, {250}), 950u);
    EXPECT_EQ(reserve_of(40000, {1}), 4u);
    EXPECT_EQ(reserve_of(40001, {1}), 5u);
    EXPECT_EQ(reserve_of(1, {1}), 1u);
    EXPECT_EQ(reserve_of(38000, {0}), 0u);
    EXPECT_EQ(reserve_of(0, {250}), 0u);
    EXPECT_EQ(reserve_of(4294967295, {5000}), 2147483648u);
}

TEST(Reserve, IsThatOfEveryOutput) {
    Result result;
    result.modules.resize(2);
    result.modules[0].outputs = {{1, 0, 38000, 0, 512, {}}, {2, 0, 40000, 0, 512, {}}};
    result.modules[1].outputs = {{1, 0, 0, 0, 512, {}}};
    set_reserve(result, {100});
    EXPECT_EQ(result.modules[0].outputs[0].reserve, 380u);
    EXPECT_EQ(result.modules[0].outputs[1].reserve, 400u);
    EXPECT_EQ(result.modules[1].outputs[0].reserve, 0u);
}

/// What an output of 10000 kbit/s lacks with services that take this.
std::uint64_t lacking(std::vector<std::uint32_t> bitrates, std::uint32_t reserve) {
    OutputResult output{1, 0, 10000, 0, 512, {}, reserve};
    for (const std::uint32_t bitrate : bitrates) {
        output.services.emplace_back();
        output.services.back().bitrate = bitrate;
    }
    return lacking_for_tables(output);
}

TEST(Reserve, LacksWhatIsBeyondTheMaximum) {
    EXPECT_EQ(lacking({4000, 5749}, 250), 0u);
    EXPECT_EQ(lacking({4000, 5750}, 250), 0u);
    EXPECT_EQ(lacking({4000, 5751}, 250), 1u);
    EXPECT_EQ(lacking({4294967295, 4294967295}, 250), 8589934590u - 10000 + 250);
}

TEST(Reserve, LacksNothingWithoutServicesOrWithoutReserve) {
    EXPECT_EQ(lacking({}, 10001), 0u);
    EXPECT_EQ(lacking({0}, 10001), 0u);
    EXPECT_EQ(lacking({20000}, 0), 0u);
    OutputResult output{1, 0, 10000, 0, 512, {ServiceResult()}, 250};
    output.services[0].bitrate = 20000;
    EXPECT_EQ(lacking_for_tables(output), 10250u);
    output.services[0].is_clone = true; // which costs nothing
    EXPECT_EQ(lacking_for_tables(output), 0u);
}

} // namespace
} // namespace zarven::tool::reserve_test
