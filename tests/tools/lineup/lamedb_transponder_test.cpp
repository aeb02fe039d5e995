// Which number of a lamedb stands for what.

#include "lineup/lamedb_transponder.h"

#include <gtest/gtest.h>

#include "lineup/text_lines.h"

namespace zarven::tool::lamedb_transponder_test {
namespace {

LamedbTransponder read(const std::string& parameters) {
    return read_lamedb_transponder(parameters.at(0), parameters.substr(2));
}

std::uint32_t rate_of(const std::string& parameters) {
    return net_rate(read(parameters).parameters).value_or(0);
}

TEST(LamedbTransponder, RatesOfAllSystems) {
    EXPECT_EQ(rate_of("s:12187500:27500000:0:3:192:2:0"), 38014u);
    EXPECT_EQ(rate_of("s:12187500:27500000:0:3:192:2"), 38014u);
    EXPECT_EQ(rate_of("s:11493750:22000000:0:2:192:2:0:1:2:0:0"), 43573u);
    EXPECT_EQ(rate_of("s:11493750:22000000:0:2:192:2:0:1:2:0:1"), 42584u);
    EXPECT_EQ(rate_of("s:11493750:22000000:0:2:192:2:0:1:2:0:2"), 42584u);
    EXPECT_EQ(rate_of("s:11493750:27500000:0:9:192:2:0:1:1:0:0"), 49186u);
    EXPECT_EQ(rate_of("s:11493750:22000000:0:2:192:2:0:1:3:0:0"), 58018u);
    EXPECT_EQ(rate_of("c:346000:6900000:0:3:0:0:0"), 38152u);
    EXPECT_EQ(rate_of("c:346000:6900000:0:5"), 50870u);
    EXPECT_EQ(rate_of("t:514000000:0:1:5:2:1:0:0:2"), 24128u);
    EXPECT_EQ(rate_of("t:514000000:0:2:5:2:1:3:0:2:0:0"), 22394u);
}

TEST(LamedbTransponder, WithoutAKnownRate) {
    for (const std::string parameters :
         {"s:12187500", "c:346000", "t:514000000", "s:12187500:27500000:0:0:192:2:0",
          "s:12187500:x:0:3:192:2:0", "s:12187500:27500000:0:x:192:2:0", "s:11493750:22000000:0:2:192:2:0:1",
          "s:11493750:22000000:0:2:192:2:0:1:4:0:0", "c:346000:6900000:0:0", "c:346000:6900000:0:6",
          "t:514000000:0:1:5:2:1:0", "t:514000000:0:1:5:2:1:0:1:2", "t:514000000:3:1:5:2:1:0:0:2",
          "t:514000000:0:5:5:2:1:0:0:2", "t:514000000:0:1:5:3:1:0:0:2", "t:514000000:0:1:5:2:1:4:0:2",
          "t:514000000:0:1:5:2:1:0:0:2:0:1", "x:514000000:0:1:5:2:1:0:0:2"})
        EXPECT_EQ(rate_of(parameters), 0u) << parameters;
}

TEST(LamedbTransponder, CodeRatesOfASatellite) {
    const CodeRate rates[] = {{},     {1, 2}, {2, 3}, {3, 4},  {5, 6}, {7, 8},
                              {8, 9}, {3, 5}, {4, 5}, {9, 10}, {6, 7}, {}};
    for (std::size_t number = 0; number < std::size(rates); ++number)
        EXPECT_EQ(read("s:11493750:22000000:0:" + std::to_string(number) + ":192:2").parameters.fec,
                  rates[number])
            << number;
    EXPECT_EQ(read("s:11493750:22000000:0:15:192:2").parameters.fec, CodeRate());
}

TEST(LamedbTransponder, NumbersOfCableAndTerrestrial) {
    const auto cable_bits = [](int number) {
        return read("c:346000:6900000:0:" + std::to_string(number) + ":0").parameters.bits_per_symbol;
    };
    const auto terrestrial = [](const std::string& parameters) {
        return read("t:514000000:" + parameters + ":0:2").parameters;
    };
    const std::uint32_t bits[] = {0, 4, 5, 6, 7, 8, 0};
    for (int number = 0; number < 7; ++number)
        EXPECT_EQ(cable_bits(number), bits[number]) << number;
    const std::uint32_t bandwidths[] = {8'000'000, 7'000'000, 6'000'000, 0};
    const CodeRate rates[] = {{1, 2}, {2, 3}, {3, 4}, {5, 6}, {7, 8}, {}};
    const std::uint32_t constellations[] = {2, 4, 6, 0};
    const std::uint32_t guards[] = {32, 16, 8, 4, 0};
    for (std::size_t number = 0; number < std::size(bandwidths); ++number)
        EXPECT_EQ(terrestrial(std::to_string(number) + ":1:5:2:1:0").bandwidth, bandwidths[number]);
    for (std::size_t number = 0; number < std::size(rates); ++number)
        EXPECT_EQ(terrestrial("0:" + std::to_string(number) + ":5:2:1:0").fec, rates[number]);
    for (std::size_t number = 0; number < std::size(constellations); ++number)
        EXPECT_EQ(terrestrial("0:1:5:" + std::to_string(number) + ":1:0").bits_per_symbol,
                  constellations[number]);
    for (std::size_t number = 0; number < std::size(guards); ++number)
        EXPECT_EQ(terrestrial("0:1:5:2:1:" + std::to_string(number)).guard_interval, guards[number]);
}

TEST(LamedbTransponder, FrequencyAndPolarization) {
    for (const std::string polarization : {"H", "V", "L", "R"})
        EXPECT_EQ(read("s:11493750:22000000:" + std::to_string(std::string("HVLR").find(polarization)))
                      .polarization,
                  polarization.at(0));
    EXPECT_EQ(read("s:11493750:22000000:4").polarization, 0);
    EXPECT_EQ(read("c:346000:6900000:0").polarization, 0);
    EXPECT_EQ(read("c:346000:6900000:0").frequency, 346000u);
    EXPECT_THROW(read("s:x"), BadLine);
}

} // namespace
} // namespace zarven::tool::lamedb_transponder_test
