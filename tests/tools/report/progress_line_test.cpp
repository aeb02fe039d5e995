// What the line writes and when, by a clock that the test turns.

#include "report/progress_line.h"

#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace zarven::tool::progress_line_test {
namespace {

using std::chrono::milliseconds;

class Line : public testing::Test {
protected:
    Line() { show(TextStyle()); }

    void show(const TextStyle& style) {
        line.reset();
        line = std::make_unique<ProgressLine>(
            DrawnLine::Means{style, [this](std::string_view text) { written.emplace_back(text); },
                             [this] { return now; }},
            [this] { return left; });
    }

    /// What was written since the last time.
    std::string fresh() {
        std::string text;
        for (const std::string& part : written)
            text += part;
        written.clear();
        return text;
    }

    DrawnLine::Clock::time_point now{};
    std::size_t left = 82;
    std::vector<std::string> written;
    std::unique_ptr<ProgressLine> line;
    const char* const max_min = "BEGIN OPTION: MAX MIN --------------->";
};

TEST_F(Line, AShortRunShowsNothing) {
    line->hear(max_min);
    now += milliseconds(499);
    line->wait();
    line.reset();
    EXPECT_EQ(fresh(), "");
}

TEST_F(Line, ALongerOneShowsALineAndErasesIt) {
    line->hear(max_min);
    now += milliseconds(500);
    line->wait();
    EXPECT_EQ(fresh(), "\rstrategy 2 of 4, MAX MIN: fill · 82 services left · 0 s\x1B[K");
    line.reset();
    EXPECT_EQ(fresh(), "\r\x1B[K");
}

TEST_F(Line, IsDrawnTenTimesASecondAtMost) {
    now += milliseconds(500);
    line->wait();
    fresh();
    now += milliseconds(99);
    line->hear(max_min);
    EXPECT_EQ(fresh(), "");
    now += milliseconds(1);
    line->hear("any line");
    EXPECT_EQ(fresh(), "\rstrategy 2 of 4, MAX MIN: fill · 82 services left · 0 s\x1B[K");
}

TEST_F(Line, IsNotDrawnAgainWithoutChange) {
    now += milliseconds(500);
    line->wait();
    EXPECT_EQ(fresh(), "\rprepare · 0 s\x1B[K");
    now += milliseconds(499);
    line->wait();
    EXPECT_EQ(fresh(), "");
    now += milliseconds(101);
    line->wait();
    EXPECT_EQ(fresh(), "\rprepare · 1 s\x1B[K");
}

TEST_F(Line, CountsOneServiceAsOne) {
    left = 1;
    line->hear(max_min);
    now += milliseconds(61000);
    line->wait();
    EXPECT_EQ(fresh(), "\rstrategy 2 of 4, MAX MIN: fill · 1 service left · 61 s\x1B[K");
}

TEST_F(Line, LeavesTheLastColumnFree) {
    TextStyle style;
    style.width = 14;
    style.utf8 = false;
    show(style);
    now += milliseconds(500);
    line->wait();
    EXPECT_EQ(fresh(), "\rprepare - 0 s\x1B[K");
    style.width = 13;
    show(style);
    fresh();
    now += milliseconds(500);
    line->wait();
    EXPECT_EQ(fresh(), "\rprepare -...\x1B[K");
}

} // namespace
} // namespace zarven::tool::progress_line_test
