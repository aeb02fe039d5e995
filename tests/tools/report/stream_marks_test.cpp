// The marks by which a page tells streams apart.

#include "report/stream_marks.h"

#include <set>
#include <tuple>

#include <gtest/gtest.h>

#include "report/result_fixture.h"

namespace zarven::tool::stream_marks_test {
namespace {

std::string code(std::size_t place) {
    return stream_mark({}, place).code;
}

TEST(StreamMarks, CodesCountInLetters) {
    EXPECT_EQ(code(0), "A");
    EXPECT_EQ(code(25), "Z");
    EXPECT_EQ(code(26), "AA");
    EXPECT_EQ(code(27), "AB");
    EXPECT_EQ(code(51), "AZ");
    EXPECT_EQ(code(52), "BA");
    EXPECT_EQ(code(701), "ZZ");
    EXPECT_EQ(code(702), "AAA");
}

TEST(StreamMarks, LooksComeAgainWhenAllAreUsedUp) {
    std::set<std::tuple<std::size_t, std::size_t>> looks;
    const std::size_t different = stream_colours * stream_patterns;
    for (std::size_t place = 0; place < different; ++place) {
        const StreamMark mark = stream_mark({}, place);
        EXPECT_LT(mark.colour, stream_colours);
        EXPECT_LT(mark.pattern, stream_patterns);
        EXPECT_EQ(mark.pattern == 0, place < stream_colours);
        looks.insert({mark.colour, mark.pattern});
    }
    EXPECT_EQ(looks.size(), different);
    EXPECT_EQ(stream_mark({}, different).colour, 0u);
    EXPECT_EQ(stream_mark({}, different).pattern, 0u);
}

TEST(StreamMarks, WhatIsReceivedComesFirst) {
    Result result = result_with_everything();
    ServiceResult elsewhere;
    elsewhere.stream = {0, 9};
    result.left_out.push_back({{0, 9}, {elsewhere}});
    elsewhere.stream = {0, 8};
    result.modules.at(1).without_input.push_back(elsewhere);
    const StreamMarks marks(result);
    std::vector<std::string> streams;
    for (const StreamMark& mark : marks.in_order())
        streams.push_back(mark.code + " " + to_string(mark.stream));
    EXPECT_EQ(streams, (std::vector<std::string>{"A 0/8", "B 1/1001", "C 2/7", "D 0/9", "E 1/1002"}));
    EXPECT_EQ(marks.received(), 3u);
    EXPECT_EQ(marks.of({2, 7}).code, "C");
}

TEST(StreamMarks, AFreeInputReceivesNothing) {
    Result result;
    result.modules.emplace_back();
    result.modules.back().inputs = {{1, false, {}, {}}};
    EXPECT_TRUE(StreamMarks(result).in_order().empty());
}

} // namespace
} // namespace zarven::tool::stream_marks_test
