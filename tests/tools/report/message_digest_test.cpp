// Which of many messages are told, and what counts as one kind.

#include "report/message_digest.h"

#include <gtest/gtest.h>

namespace zarven::tool::message_digest_test {
namespace {

using Lines = std::vector<std::string>;

Lines digest(std::size_t count, MessageDigest::Extent extent = MessageDigest::Extent::few_of_each) {
    MessageDigest made(extent);
    for (std::size_t number = 1; number <= count; ++number)
        made.add("f", "bad", "f: " + std::to_string(number));
    return made.lines();
}

TEST(MessageDigest, ThreeOfAKindAreTold) {
    EXPECT_EQ(digest(0), Lines{});
    EXPECT_EQ(digest(3), (Lines{"f: 1", "f: 2", "f: 3"}));
    EXPECT_EQ(digest(4), (Lines{"f: 1", "f: 2", "f: 3", "f: 1 more, which --verbose tells: bad"}));
    EXPECT_EQ(digest(1003).back(), "f: 1000 more, which --verbose tells: bad");
}

TEST(MessageDigest, OrAll) {
    EXPECT_EQ(digest(4, MessageDigest::Extent::all), (Lines{"f: 1", "f: 2", "f: 3", "f: 4"}));
}

TEST(MessageDigest, KindsAndFilesCountApart) {
    MessageDigest made(MessageDigest::Extent::few_of_each);
    for (int round = 0; round < 4; ++round) {
        made.add("f", "b", "1");
        made.add("g", "b", "2");
        made.add("f", "a", "3");
    }
    EXPECT_EQ(made.lines(),
              (Lines{"1", "2", "3", "1", "2", "3", "1", "2", "3", "f: 1 more, which --verbose tells: b",
                     "g: 1 more, which --verbose tells: b", "f: 1 more, which --verbose tells: a"}));
}

TEST(MessageDigest, AKindIsAComplaintWithoutItsFindings) {
    EXPECT_EQ(kind_of_complaint("VPID: found \"81\"92\", expected PIDs from 0 to 8191"),
              "VPID: found \"...\", expected PIDs from 0 to 8191");
    EXPECT_EQ(kind_of_complaint("channel number 7 stands in stream 1/1011 already, on line 9"),
              "channel number ... stands in stream .../... already, on line ...");
    EXPECT_EQ(
        kind_of_complaint("found no transponder 00c00000:0000:0000, expected it: the stream has no ids"),
        "found no transponder ...:...:..., expected it: the stream has no ids");
    EXPECT_EQ(kind_of_complaint("found \""), "found \"...\"");
    EXPECT_EQ(kind_of_complaint(""), "");
}

} // namespace
} // namespace zarven::tool::message_digest_test
