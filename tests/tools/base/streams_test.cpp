// Files that are there, are not, or cannot be written.

#include "base/streams.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include <sys/resource.h>
#include <sys/stat.h>
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
    const std::string text = std::string(200000, 'x') + "\n\x7F end";
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

/// All names in a folder.
std::set<std::string> names_in(const std::filesystem::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename());
    return names;
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
        ASSERT_EQ(names_in(folder), std::set<std::string>{"file"});
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

TEST_F(Streams, WhatHasBeenReadIsNotOverwrittenByAHardLink) {
    const std::string path = folder / "read";
    write_text(path, "kept");
    read_text(path);
    std::filesystem::create_hard_link(path, folder / "other");
    EXPECT_EQ(failure_message([&] { write_text(folder / "other", "lost"); }),
              (folder / "other").string() +
                  ": cannot be written: it was read by the same command; expected another file");
    EXPECT_EQ(read_text(path), "kept");
}

TEST_F(Streams, AFileKeepsItsModeAndANewOneHasTheUsualOne) {
    namespace fs = std::filesystem;
    const mode_t mask = umask(027);
    const std::string path = folder / "new";
    write_text(path, "text");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
    for (const int mode : {0600, 0755, 0666}) {
        fs::permissions(path, fs::perms(mode));
        write_text(path, "text");
        EXPECT_EQ(fs::status(path).permissions(), fs::perms(mode));
    }
    umask(mask);
}

TEST_F(Streams, ALinkStaysAndTheFileAtItsEndIsWritten) {
    namespace fs = std::filesystem;
    fs::create_directory(folder / "elsewhere");
    fs::create_symlink("elsewhere/second", folder / "first");
    fs::create_symlink("file", folder / "elsewhere" / "second");
    for (const std::string text : {"when it is not there yet", "when it is"}) {
        write_text(folder / "first", text);
        EXPECT_TRUE(fs::is_symlink(folder / "first"));
        EXPECT_TRUE(fs::is_symlink(folder / "elsewhere" / "second"));
        std::ifstream written(folder / "elsewhere" / "file");
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(written), {}), text);
    }
    fs::create_symlink("round", folder / "round");
    EXPECT_EQ(failure_message([&] { write_text(folder / "round", "text"); }),
              (folder / "round").string() + ": cannot be written: Too many levels of symbolic links");
}

/// For the life of the object no file becomes larger.
class SizeLimit {
public:
    explicit SizeLimit(rlim_t most) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{most, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

private:
    rlimit before_{};
};

TEST_F(Streams, WhatCannotBeWrittenWholeLeavesTheOldFileAndNothingElse) {
    const std::string path = folder / "file";
    write_text(path, "old");
    {
        const SizeLimit limit(10000);
        EXPECT_EQ(failure_message([&] { write_text(path, std::string(20000, 'x')); }),
                  path + ": cannot be written: File too large");
        EXPECT_EQ(failure_message([&] { write_text(folder / "new", std::string(20000, 'x')); }),
                  (folder / "new").string() + ": cannot be written: File too large");
    }
    EXPECT_EQ(read_text(path), "old");
    EXPECT_EQ(names_in(folder), std::set<std::string>{"file"});
}

TEST_F(Streams, WhatCannotBeWrittenIsKnownBeforeAndNothingIsChanged) {
    namespace fs = std::filesystem;
    const auto problem = [](const fs::path& path) { return failure_message([&] { expect_writable(path); }); };
    fs::create_directory(folder / "folder");
    fs::create_symlink("folder", folder / "link");
    write_text(folder / "read", "read");
    read_text(folder / "read");
    for (const char* bad : {"missing/file", "read/file", "missing/", "folder", "folder/", "link", "read"}) {
        const std::string path = folder / bad;
        const std::string told = problem(path);
        EXPECT_EQ(told.rfind(path + ": cannot be written: ", 0), 0u) << bad << told;
        EXPECT_EQ(told, failure_message([&] { write_text(path, "text"); })) << bad;
    }
    write_text(folder / "old", "old");
    fs::create_symlink("new", folder / "link to new");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto before = names_in(folder);
    for (const fs::path& good : {folder / "old", folder / "new", folder / "link to new", folder / "pipe",
                                 fs::path("/dev/full"), fs::path("-"), fs::path("/dev/stdout")})
        EXPECT_NO_THROW(expect_writable(good)) << good;
    EXPECT_EQ(names_in(folder), before);
    EXPECT_EQ(names_in(folder / "folder").size(), 0u);
    EXPECT_EQ(read_text(folder / "old"), "old");
}

TEST_F(Streams, WhoeverHasTheOldFileOpenReadsItToTheEnd) {
    const std::string path = folder / "file";
    write_text(path, "old");
    std::ifstream old(path);
    write_text(path, "new");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(old), {}), "old");
    EXPECT_EQ(read_text(path), "new");
}

TEST_F(Streams, TextBehindANulIsAnError) {
    const std::string path = folder / "file";
    write_text(path, std::string("{}\n\0 more", 9));
    EXPECT_EQ(failure_message([&] { read_text(path); }),
              path + ": line 2: found a NUL character, expected text");
    const std::string wide = folder / "wide";
    write_text(wide, std::string("{\0}\0", 4));
    EXPECT_EQ(failure_message([&] { read_text(wide); }), wide + ": the text is UTF-16, expected UTF-8");
    EXPECT_EQ(failure_message([&] { read_text("/dev/zero"); }),
              "/dev/zero: line 1: found a NUL character, expected text");
}

TEST_F(Streams, TwoOutputsAreOneByWhateverName) {
    const std::string path = folder / "file";
    EXPECT_TRUE(is_same_output(path, folder / "." / "file")); // neither is there yet
    EXPECT_TRUE(is_same_output(path, folder / "none" / ".." / "file"));
    std::filesystem::create_symlink("file", folder / "link");
    EXPECT_TRUE(is_same_output(path, folder / "link"));
    EXPECT_FALSE(is_same_output(path, folder / "other"));
    write_text(path, "text");
    std::filesystem::create_hard_link(path, folder / "hard");
    for (const char* name : {"file", "link", "hard"})
        EXPECT_TRUE(is_same_output(path, folder / name)) << name;
    write_text(folder / "other", "text");
    EXPECT_FALSE(is_same_output(path, folder / "other"));
    EXPECT_FALSE(is_same_output("/dev/null", "/dev/null"));
}

TEST(InputName, TheDashIsStandardInput) {
    EXPECT_EQ(input_name("-"), "standard input");
    EXPECT_EQ(input_name("headend.json"), "headend.json");
}

} // namespace
} // namespace zarven::tool::streams_test
