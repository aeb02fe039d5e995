// Net rates of transponders as they are on the air, and parameters that give none.

#include "lineup/transponder.h"

#include <gtest/gtest.h>

namespace zarven::tool::transponder_test {
namespace {

Transponder satellite(Delivery delivery, std::uint32_t symbol_rate, std::uint32_t bits, CodeRate fec,
                      bool pilots = false) {
    Transponder made;
    made.delivery = delivery;
    made.symbol_rate = symbol_rate;
    made.bits_per_symbol = bits;
    made.fec = fec;
    made.has_pilots = pilots;
    return made;
}

Transponder cable(std::uint32_t bits) {
    return satellite(Delivery::dvb_c, 6'900'000, bits, {});
}

Transponder terrestrial(std::uint32_t bits, CodeRate fec, std::uint32_t guard,
                        std::uint32_t bandwidth = 8'000'000) {
    Transponder made;
    made.delivery = Delivery::dvb_t;
    made.bits_per_symbol = bits;
    made.fec = fec;
    made.guard_interval = guard;
    made.bandwidth = bandwidth;
    return made;
}

TEST(NetRate, DvbS) {
    EXPECT_EQ(net_rate(satellite(Delivery::dvb_s, 27'500'000, 2, {3, 4})), 38014u);
    EXPECT_EQ(net_rate(satellite(Delivery::dvb_s, 22'000'000, 2, {5, 6})), 33790u);
    EXPECT_EQ(net_rate(satellite(Delivery::dvb_s, 22'000'000, 2, {7, 8})), 35480u);
}

TEST(NetRate, DvbS2WithAndWithoutPilots) {
    EXPECT_EQ(net_rate(satellite(Delivery::dvb_s2, 22'000'000, 3, {2, 3})), 43573u);
    EXPECT_EQ(net_rate(satellite(Delivery::dvb_s2, 22'000'000, 3, {2, 3}, true)), 42584u);
    EXPECT_EQ(net_rate(satellite(Delivery::dvb_s2, 29'700'000, 3, {2, 3})), 58824u);
    EXPECT_EQ(net_rate(satellite(Delivery::dvb_s2, 29'700'000, 3, {2, 3}, true)), 57489u);
    EXPECT_EQ(net_rate(satellite(Delivery::dvb_s2, 27'500'000, 2, {9, 10})), 49186u);
    EXPECT_EQ(net_rate(satellite(Delivery::dvb_s2, 27'500'000, 3, {3, 4})), 61273u);
    EXPECT_EQ(net_rate(satellite(Delivery::dvb_s2, 27'500'000, 2, {5, 6})), 45503u);
    EXPECT_EQ(net_rate(satellite(Delivery::dvb_s2, 27'500'000, 2, {8, 9})), 48577u);
}

TEST(NetRate, DvbC) {
    EXPECT_EQ(net_rate(cable(6)), 38152u);
    EXPECT_EQ(net_rate(cable(8)), 50870u);
}

TEST(NetRate, DvbT) {
    EXPECT_EQ(net_rate(terrestrial(6, {2, 3}, 32)), 24128u);
    EXPECT_EQ(net_rate(terrestrial(6, {3, 4}, 4)), 22394u);
    EXPECT_EQ(net_rate(terrestrial(2, {1, 2}, 4)), 4976u);
    EXPECT_EQ(net_rate(terrestrial(4, {1, 2}, 4, 7'000'000)), 8708u);
}

TEST(NetRate, WhatIsNotToldGivesNone) {
    EXPECT_FALSE(net_rate({}));
    EXPECT_FALSE(net_rate(satellite(Delivery::unknown, 27'500'000, 2, {3, 4})));
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s, 0, 2, {3, 4})));
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s, 27'500'000, 2, {})));
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s2, 27'500'000, 0, {3, 4})));
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s2, 27'500'000, 3, {})));
    EXPECT_FALSE(net_rate(cable(0)));
    EXPECT_FALSE(net_rate(terrestrial(6, {2, 3}, 0)));
    EXPECT_FALSE(net_rate(terrestrial(6, {}, 32)));
    EXPECT_FALSE(net_rate(terrestrial(6, {2, 3}, 32, 0)));
}

TEST(NetRate, WhatTheSystemDoesNotHaveGivesNone) {
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s, 27'500'000, 3, {3, 4})));
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s, 27'500'000, 2, {9, 10})));
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s, 27'500'000, 2, {1, 3}))) << "as many parts as 2/3";
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s, 27'500'000, 2, {2, 9}))) << "as many as of 2/3";
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s2, 27'500'000, 2, {7, 8})));
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s2, 27'500'000, 1, {3, 4})));
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s2, 27'500'000, 6, {3, 4})));
    EXPECT_FALSE(net_rate(cable(3)));
    EXPECT_FALSE(net_rate(cable(9)));
    EXPECT_FALSE(net_rate(terrestrial(3, {2, 3}, 32)));
    EXPECT_FALSE(net_rate(terrestrial(6, {9, 10}, 32)));
    EXPECT_FALSE(net_rate(terrestrial(6, {2, 3}, 128)));
}

TEST(NetRate, FewSymbolsAreASlip) {
    EXPECT_FALSE(net_rate(satellite(Delivery::dvb_s, 99'999, 2, {3, 4})));
    EXPECT_TRUE(net_rate(satellite(Delivery::dvb_s, 100'000, 2, {3, 4})));
}

TEST(NetRate, LessThanAKilobitIsNone) {
    EXPECT_FALSE(net_rate(terrestrial(2, {1, 2}, 4, 1607)));
    EXPECT_EQ(net_rate(terrestrial(2, {1, 2}, 4, 1608)), 1u);
}

TEST(NetRate, SymbolsOfSatelliteAndCableAreTold) {
    EXPECT_EQ(symbol_rate(satellite(Delivery::dvb_s, 99'999, 2, {3, 4})), 0u);
    EXPECT_EQ(symbol_rate(satellite(Delivery::dvb_s, 100'000, 2, {3, 4})), 100'000u);
    EXPECT_EQ(symbol_rate(satellite(Delivery::dvb_s2, 22'000'000, 0, {})), 22'000'000u);
    EXPECT_EQ(symbol_rate(satellite(Delivery::dvb_c, 6'900'000, 6, {})), 6'900'000u);
    EXPECT_EQ(symbol_rate(satellite(Delivery::dvb_t, 27'500'000, 6, {})), 0u)
        << "a column that means nothing";
    EXPECT_EQ(symbol_rate(satellite(Delivery::unknown, 27'500'000, 6, {})), 0u);
}

TEST(NetRate, SystemsByTheirNames) {
    EXPECT_EQ(std::string(to_string(Delivery::dvb_s)), "DVB-S");
    EXPECT_EQ(std::string(to_string(Delivery::dvb_s2)), "DVB-S2");
    EXPECT_EQ(std::string(to_string(Delivery::dvb_c)), "DVB-C");
    EXPECT_EQ(std::string(to_string(Delivery::dvb_t)), "DVB-T");
    EXPECT_EQ(std::string(to_string(Delivery::unknown)), "");
}

TEST(NetRate, UnitsShowThemselves) {
    EXPECT_EQ(in_symbols(27500), 27'500'000u);
    EXPECT_EQ(in_symbols(99'999), 99'999'000u);
    EXPECT_EQ(in_symbols(6'900'000), 6'900'000u);
    EXPECT_EQ(in_khz(39'999), 39'999'000u);
    EXPECT_EQ(in_khz(40'000), 40'000u);
    EXPECT_EQ(in_khz(12'187'500), 12'187'500u);
    EXPECT_EQ(in_khz(39'999'999), 39'999'999u);
    EXPECT_EQ(in_khz(40'000'000), 40'000u);
    EXPECT_EQ(in_khz(514'000'000), 514'000u);
}

TEST(NetRate, BitsOfConstellations) {
    EXPECT_EQ(bits_of_points(4), 2u);
    EXPECT_EQ(bits_of_points(64), 6u);
    EXPECT_EQ(bits_of_points(256), 8u);
    for (const std::uint32_t other : {0u, 2u, 3u, 65u, 512u})
        EXPECT_EQ(bits_of_points(other), 0u) << other;
}

} // namespace
} // namespace zarven::tool::transponder_test
