// Files by the C library, because its errors come with their reason in errno.

#include "base/streams.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <set>
#include <system_error>

#include <fmt/format.h>
#include <sys/stat.h>

#include "base/failure.h"
#include "base/interruption.h"

namespace zarven::tool {

namespace {

[[noreturn]] void fail(const std::string& name, const char* what) {
    throw Failure(fmt::format("{}: {}: {}", name.empty() ? "\"\"" : name, what, std::strerror(errno)));
}

/// Writing it takes no longer than it takes: nobody must read at the other end.
bool is_file_or_new(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) != 0 || S_ISREG(status.st_mode);
}

/// The one path of a regular file, whatever links lead to it. Empty for what may be used any number of times.
std::string real_path(const std::string& path) {
    std::error_code none;
    if (!std::filesystem::is_regular_file(path, none))
        return "";
    return std::filesystem::canonical(path, none).string();
}

/// What this program has read, by its one path. A slip of the pen must not cost the planner a file.
std::set<std::string> files_read;

} // namespace

std::string input_name(const std::string& path) {
    return path == standard_stream ? "standard input" : path;
}

std::string read_text(const std::string& path) {
    File opened;
    std::FILE* source = stdin;
    if (path != standard_stream) {
        opened.reset(std::fopen(path.c_str(), "rb"));
        if (!opened)
            fail(path, "cannot be opened");
        source = opened.get();
        files_read.insert(real_path(path));
    }
    std::string text;
    std::array<char, 65536> block;
    while (const std::size_t length = std::fread(block.data(), 1, block.size(), source))
        text.append(block.data(), length);
    if (std::ferror(source) != 0)
        fail(input_name(path), "cannot be read");
    return text;
}

File open_for_writing(const std::string& path) {
    const std::string real = real_path(path);
    if (!real.empty() && files_read.count(real) != 0)
        throw Failure(path + ": cannot be written: it was read by the same command; expected another file");
    File file(std::fopen(path.c_str(), "wb"));
    if (!file)
        fail(path, "cannot be written");
    return file;
}

void write_text(const std::string& path, const std::string& text) {
    const bool to_standard = path == standard_stream;
    std::optional<interruption::Held> whole;
    if (!to_standard && is_file_or_new(path))
        whole.emplace();
    File opened;
    if (!to_standard)
        opened = open_for_writing(path);
    std::FILE* destination = to_standard ? stdout : opened.get();
    // A full disk or a closed pipe may show itself only when the buffer is emptied.
    bool arrived =
        std::fwrite(text.data(), 1, text.size(), destination) == text.size() && std::fflush(destination) == 0;
    // Some file systems tell of a failure only at the very end.
    if (opened && std::fclose(opened.release()) != 0)
        arrived = false;
    if (!arrived)
        fail(to_standard ? "standard output" : path, "cannot be written");
}

} // namespace zarven::tool
