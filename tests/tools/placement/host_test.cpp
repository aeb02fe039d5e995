// The tool's syslog and sleep, called as the library calls them.

#include "placement/running/host.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <syslog.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "base/interruption.h"
#include "failure_message.h"

namespace zarven::tool::host_test {
namespace {

using Clock = std::chrono::steady_clock;

/// The host's switches are global; each test leaves them as they were at first.
class Host : public testing::Test {
protected:
    ~Host() override {
        host::keep_pauses(false);
        std::filesystem::remove(path);
    }

    const std::string path =
        std::filesystem::temp_directory_path() / ("recalculo-log-" + std::to_string(getpid()));
};

TEST_F(Host, PausesArePassedOver) {
    const auto start = Clock::now();
    EXPECT_EQ(sleep(10), 0u);
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(1));
}

TEST_F(Host, PausesAreKeptOnDemand) {
    host::keep_pauses(true);
    const auto start = Clock::now();
    EXPECT_EQ(sleep(1), 0u);
    EXPECT_GE(Clock::now() - start, std::chrono::seconds(1));
}

TEST_F(Host, EachLogLineComesAfterItsLevel) {
    const std::string long_text(5000, 'x');
    host::Log log(path);
    syslog(7, "Servicio %d: %s", -12, "Música");
    syslog(5, "%s", "");
    syslog(3, "%s", long_text.c_str());
    for (const std::size_t length : {1022u, 1023u, 1024u, 1025u}) // about the size of a buffer
        syslog(3, "%s", long_text.substr(0, length).c_str());
    log.finish();
    std::string expected = "7 Servicio -12: Música\n5 \n3 " + long_text + "\n";
    for (const std::size_t length : {1022u, 1023u, 1024u, 1025u})
        expected += "3 " + long_text.substr(0, length) + "\n";
    EXPECT_EQ(read_text(path), expected);
}

TEST_F(Host, ANameInALogLineNeitherEndsItNorCommandsTheTerminal) {
    host::Log log(path);
    syslog(7, "a\tb %s c", "x\n3 y\r\x1B[2J\u009B\x7F\u202E\xFF é");
    log.finish();
    EXPECT_EQ(read_text(path), "7 a\tb x\uFFFD3 y\uFFFD\uFFFD[2J\uFFFD\uFFFD\uFFFD\uFFFD é c\n");
}

TEST_F(Host, WithoutALogFileTheLinesAreDropped) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    { host::Log log(path); }
    syslog(3, "nobody listens");
    EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(read_text(path), "");
}

TEST_F(Host, TheEngineIsToldWhetherThereIsALog) {
    const int before = setlogmask(0);
    {
        host::Log log("");
        EXPECT_EQ(setlogmask(0) & (LOG_MASK(LOG_DEBUG) | LOG_MASK(LOG_NOTICE) | LOG_MASK(LOG_ERR)), 0);
        EXPECT_NO_THROW(log.finish());
    }
    EXPECT_EQ(setlogmask(0), before);
    host::Log log(path);
    EXPECT_NE(setlogmask(0) & LOG_MASK(LOG_DEBUG), 0);
}

TEST_F(Host, TheDashIsStandardError) {
    testing::internal::CaptureStderr();
    {
        host::Log log("-");
        syslog(5, "heard");
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "5 heard\n");
}

TEST_F(Host, AFullDiskIsSeen) {
    host::Log log("/dev/full");
    syslog(7, "lost");
    EXPECT_EQ(failure_message([&] { log.finish(); }),
              "/dev/full: the log cannot be written: No space left on device");
}

/// Writes down what it is told.
struct Note : host::Watcher {
    void hear(std::string_view line) override { lines.emplace_back(line); }
    void wait() override { ++waits; }

    std::vector<std::string> lines;
    int waits = 0;
};

TEST_F(Host, AWatcherHearsTheLinesWithoutALog) {
    Note note;
    {
        const host::Watching watching(&note);
        const host::Log none("");
        syslog(7, "%s", "a constant");
        syslog(5, "with %d values, %s", 2, "like this");
        sleep(10);
    }
    syslog(7, "%s", "too late");
    EXPECT_EQ(note.lines, (std::vector<std::string>{"a constant", "with %d values, %s"}));
    EXPECT_EQ(note.waits, 0);
}

TEST_F(Host, AWatcherHearsTheLinesBesideALog) {
    Note note;
    const host::Watching watching(&note);
    host::Log log(path);
    syslog(7, "%s", "a constant");
    log.finish();
    EXPECT_EQ(note.lines, std::vector<std::string>{"a constant"});
    EXPECT_EQ(read_text(path), "7 a constant\n");
}

TEST_F(Host, AWatcherIsToldThatTimeGoesByInAPause) {
    host::keep_pauses(true);
    Note note;
    const host::Watching watching(&note);
    sleep(1);
    EXPECT_GE(note.waits, 2);
}

TEST_F(Host, AnInterruptionLeavesAWholeLog) {
    const auto in_child = [this] {
        std::signal(SIGINT, SIG_DFL);
        interruption::install();
        const host::Log log(path);
        syslog(7, "first");
        std::raise(SIGINT);
        syslog(7, "second");
        std::_Exit(0);
    };
    EXPECT_EXIT(in_child(), testing::ExitedWithCode(130), "^recalculo: interrupted\n$");
    EXPECT_EQ(read_text(path), "7 first\n7 second\n");
}

TEST_F(Host, AnInterruptionEndsAPause) {
    const auto in_child = [this] {
        std::signal(SIGINT, SIG_DFL);
        interruption::install();
        host::keep_pauses(true);
        const host::Log log(path);
        syslog(7, "first");
        std::raise(SIGINT);
        sleep(1000);
        std::_Exit(0);
    };
    EXPECT_EXIT(in_child(), testing::ExitedWithCode(130), "^recalculo: interrupted\n$");
    EXPECT_EQ(read_text(path), "7 first\n");
}

TEST_F(Host, AfterTheLogNothingWaits) {
    const auto in_child = [this] {
        std::signal(SIGINT, SIG_DFL);
        interruption::install();
        host::Log log(path);
        log.finish();
        std::raise(SIGINT);
        std::_Exit(0);
    };
    EXPECT_EXIT(in_child(), testing::ExitedWithCode(130), "^recalculo: interrupted\n$");
}

} // namespace
} // namespace zarven::tool::host_test
