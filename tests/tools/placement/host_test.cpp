// The tool's syslog and sleep, called as the library calls them.

#include "placement/host.h"

#include <chrono>
#include <cstdio>
#include <filesystem>

#include <syslog.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "failure_message.h"

namespace zarven::tool {
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
    log.finish();
    EXPECT_EQ(read_text(path), "7 Servicio -12: Música\n5 \n3 " + long_text + "\n");
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

} // namespace
} // namespace zarven::tool
