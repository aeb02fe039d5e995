// Files that are there, are not, or cannot be written.

#include "base/streams.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "base/interruption.h"
#include "failure_message.h"

namespace zarven::tool::streams_test {
namespace {

class Streams : public testing::Test {
protected:
    Streams() {
        std::string pattern = (std::filesystem::temp_directory_path() / "recalculo-XXXXXX").string();
        folder = mkdtemp(pattern.data());
    }
    ~Streams() override { std::filesystem::remove_all(folder); }

    std::filesystem::path folder;
};

TEST_F(Streams, WhatIsWrittenIsRead) {
    const std::string path = folder / "file";
    const std::string text = std::string(200000, 'x') + std::string("\n\0 end", 6);
    write_text(path, text);
    EXPECT_EQ(read_text(path), text);
    const std::string other = folder / "other";
    write_text(other, text);
    write_text(other, "short");
    EXPECT_EQ(read_text(other), "short");
}

TEST_F(Streams, AMissingFileIsNamed) {
    const std::string path = folder / "missing.json";
    EXPECT_EQ(failure_message([&] { read_text(path); }),
              path + ": cannot be opened: No such file or directory");
}

TEST_F(Streams, AFolderCannotBeRead) {
    const std::string path = folder;
    EXPECT_EQ(failure_message([&] { read_text(path); }), path + ": cannot be read: Is a directory");
}

TEST_F(Streams, AFileInAMissingFolderCannotBeWritten) {
    const std::string path = folder / "missing" / "file";
    EXPECT_EQ(failure_message([&] { write_text(path, "text"); }),
              path + ": cannot be written: No such file or directory");
}

TEST_F(Streams, AFullDiskIsSeen) {
    EXPECT_EQ(failure_message([] { write_text("/dev/full", "text"); }),
              "/dev/full: cannot be written: No space left on device");
}

/// A child that writes the file over and over; gives its process id once the first one is there.
pid_t write_forever(const std::string& path, const std::string& text) {
    std::filesystem::remove(path);
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGINT, SIG_DFL);
        interruption::install();
        for (;;)
            write_text(path, text);
    }
    while (!std::filesystem::exists(path) || std::filesystem::file_size(path) == 0)
        usleep(100);
    return child;
}

TEST_F(Streams, AnInterruptionLeavesAWholeFile) {
    const std::string path = folder / "file";
    const std::string text(8 * 1024 * 1024, 'x');
    // Some of the signals arrive when the file has been emptied and not yet written.
    for (unsigned round = 0; round < 20; ++round) {
        const pid_t child = write_forever(path, text);
        usleep(round * 500);
        kill(child, SIGINT);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 130) << status;
        ASSERT_EQ(std::filesystem::file_size(path), text.size());
    }
}

TEST_F(Streams, WhatHasBeenReadIsNotOverwritten) {
    const std::string path = folder / "read";
    write_text(path, "kept");
    EXPECT_EQ(read_text(path), "kept");
    std::filesystem::create_symlink("read", folder / "link");
    const std::string problem = ": cannot be written: it was read by the same command; expected another file";
    EXPECT_EQ(failure_message([&] { write_text(path, "lost"); }), path + problem);
    EXPECT_EQ(failure_message([&] { open_for_writing(folder / "link"); }),
              (folder / "link").string() + problem);
    EXPECT_EQ(read_text(path), "kept");
    EXPECT_EQ(read_text("/dev/null"), "");
    write_text("/dev/null", "a device may be read and written");
}

TEST(InputName, TheDashIsStandardInput) {
    EXPECT_EQ(input_name("-"), "standard input");
    EXPECT_EQ(input_name("headend.json"), "headend.json");
}

} // namespace
} // namespace zarven::tool::streams_test
