// Sizes of pictures in descriptions.

#include "measured/picture_size.h"

#include <gtest/gtest.h>

namespace zarven::tool::picture_size_test {
namespace {

TEST(PictureSize, SaysWhatAPictureIs) {
    EXPECT_EQ(kind_by_size("1279x719"), ChannelKind::sd);
    EXPECT_EQ(kind_by_size("1280x719"), ChannelKind::hd);
    EXPECT_EQ(kind_by_size("1279x720"), ChannelKind::hd);
    EXPECT_EQ(kind_by_size("3839x2159"), ChannelKind::hd);
    EXPECT_EQ(kind_by_size("3840x2159"), ChannelKind::uhd);
    EXPECT_EQ(kind_by_size("3839x2160"), ChannelKind::uhd);
}

TEST(PictureSize, StandsAnywhere) {
    EXPECT_EQ(kind_by_size("box 2x, AVC video (1440x1080, 25Hz)"), ChannelKind::hd);
    EXPECT_EQ(kind_by_size("AVC video (high profile)"), std::nullopt);
    EXPECT_EQ(kind_by_size("x"), std::nullopt);
    EXPECT_EQ(kind_by_size("12x"), std::nullopt);
    EXPECT_EQ(kind_by_size("x12"), std::nullopt);
    EXPECT_EQ(kind_by_size(""), std::nullopt);
    EXPECT_EQ(kind_by_size("100001x5"), std::nullopt);
    EXPECT_EQ(kind_by_size("100000x5"), ChannelKind::uhd);
}

} // namespace
} // namespace zarven::tool::picture_size_test
