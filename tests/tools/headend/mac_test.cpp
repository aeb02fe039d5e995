// MACs in all their spellings, and what only looks like one.

#include "headend/mac.h"

#include <gtest/gtest.h>

namespace zarven::tool {
namespace {

TEST(Mac, HasOneSpelling) {
    for (const char* mac : {"02:48:4d:00:00:0a", "02-48-4D-00-00-0A", "0248.4d00.000a", "02484D00000a"})
        EXPECT_EQ(canonical_mac(mac), "02:48:4D:00:00:0A");
    EXPECT_NE(canonical_mac("02:48:4D:00:00:0A"), canonical_mac("02:48:4D:00:00:0B"));
}

TEST(Mac, WhatIsNoneIsItsOwnAndOdd) {
    for (const char* text :
         {"", "M1", "02:48:4D:00:00", "02:48:4D:00:00:0A:0B", "02:48:4D:00:00:0", "2:48:4D:00:00:0A",
          "02:48-4D:00:00:0A", "02:48:4D:00:00:0G", "0248:4D00:000A", "02.48.4D.00.00.0A",
          ":02:48:4D:00:00:0A", "02:48:4D:00:00:0A:", "02484D:00000A", "02:48:4D:00:00:0A\n"}) {
        EXPECT_EQ(canonical_mac(text), text);
        EXPECT_EQ(oddity_of_mac(text), "is no MAC, which is six bytes as in 02:00:00:00:00:01") << text;
    }
}

TEST(Mac, OfAGroupOrOfNobodyIsOdd) {
    EXPECT_EQ(oddity_of_mac("00:00:00:00:00:00"), "is all zeros, which no module has");
    for (const char* mac : {"01:00:5e:00:00:01", "FF:FF:FF:FF:FF:FF", "03:00:00:00:00:00"})
        EXPECT_EQ(oddity_of_mac(mac),
                  "is the address of a group: the first byte of that of a module is even");
    for (const char* mac :
         {"02:48:4D:00:00:0A", "00-1c-42-00-00-01", "fe:00:00:00:00:00", "00:00:00:00:00:01"})
        EXPECT_EQ(oddity_of_mac(mac), "") << mac;
}

} // namespace
} // namespace zarven::tool
