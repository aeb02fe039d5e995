// What a limit that is raised is called.

#include "report/raise_text.h"

#include <gtest/gtest.h>

namespace zarven::tool::raise_text_test {
namespace {

std::string text_of(LimitKind kind, std::size_t output = 0) {
    Raise raise;
    raise.kind = kind;
    raise.output = output;
    raise.from = 2;
    raise.to = raise.enough = 4;
    return change_of(raise);
}

TEST(RaiseText, EachLimitHasItsName) {
    EXPECT_EQ(text_of(LimitKind::pids), "PID budget from 2 to 4");
    EXPECT_EQ(text_of(LimitKind::bitrate, 3), "bitrate of output 3 from 2 to 4");
    EXPECT_EQ(text_of(LimitKind::inputs), "number of inputs from 2 to 4");
    EXPECT_EQ(text_of(LimitKind::sd_transcoders), "SD transcoders from 2 to 4");
    EXPECT_EQ(text_of(LimitKind::hd_transcoders), "HD transcoders from 2 to 4");
    EXPECT_EQ(text_of(LimitKind::one_more_output, 3), "one more output of 4 kbit/s");
}

TEST(RaiseText, WhatIsEnoughIsToldWhereItIsLess) {
    Raise raise;
    raise.from = 2;
    raise.to = 8;
    raise.enough = 7;
    EXPECT_EQ(change_of(raise), "PID budget from 2 to 8 (7 is enough)");
    raise.enough = 8;
    EXPECT_EQ(change_of(raise), "PID budget from 2 to 8");
}

} // namespace
} // namespace zarven::tool::raise_text_test
