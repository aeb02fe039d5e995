// Files by the C library, because its errors come with their reason in errno.

#include "base/streams.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/failure.h"
#include "base/interruption.h"
#include "base/replacement.h"
#include "base/utf8.h"

namespace zarven::tool {

namespace {

[[noreturn]] void fail(const std::string& name, const char* what) {
    const int reason = errno;
    throw Failure(fmt::format("{}: {}: {}", name.empty() ? "\"\"" : name, what, std::strerror(reason)),
                  reason == ENOMEM ? ExitCode::engine_did_not_run : ExitCode::bad_input);
}

constexpr const char* cannot_be_written = "cannot be written";

/// What the system knows a file by, whatever names and links lead to it.
using FileNumber = std::pair<dev_t, ino_t>;

FileNumber number_of(const struct stat& status) {
    return {status.st_dev, status.st_ino};
}

std::optional<struct stat> status_of(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

std::optional<struct stat> status_of(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 ? std::optional(status) : std::nullopt;
}

/// What this program has read. A slip of the pen must not cost the planner a file. What is no file may be
/// read and written any number of times. The files stay open, so that no other gets their numbers.
std::map<FileNumber, File> files_read;

void note_read(File source) {
    const auto status = status_of(fileno(source.get()));
    if (status && S_ISREG(status->st_mode))
        files_read.emplace(number_of(*status), std::move(source));
}

void refuse_what_was_read(const std::optional<struct stat>& status, const std::string& name) {
    if (status && files_read.count(number_of(*status)) != 0)
        throw Failure(name + ": cannot be written: it was read by the same command; expected another file");
}

/// The stream that is open already on what the path names, as /dev/stdout does: opened a second time, a file
/// would be emptied, and what is written by the one would go over what the other wrote.
std::FILE* open_already(const std::string& path) {
    if (path == standard_stream)
        return stdout;
    const auto status = status_of(path);
    if (!status)
        return nullptr;
    for (std::FILE* stream : {stdout, stderr}) {
        const auto other = status_of(fileno(stream));
        if (other && number_of(*other) == number_of(*status))
            return stream;
    }
    return nullptr;
}

/// A file, which another can replace. What a path of /proc names is open in a program, and would be no longer
/// the file that is found there.
bool is_replaceable(const std::string& path) {
    const auto status = status_of(path);
    return (!status || S_ISREG(status->st_mode)) && end_of_links(path).rfind("/proc/", 0) != 0;
}

/// A full disk or a closed pipe may show itself only when the buffer is emptied.
bool put(const std::string& text, std::FILE* destination) {
    return std::fwrite(text.data(), 1, text.size(), destination) == text.size() &&
           std::fflush(destination) == 0;
}

/// Opens and closes: some file systems tell of a failure only at the very end.
void write_in_place(const std::string& path, const std::string& text) {
    File file = open_for_writing(path);
    const bool arrived = put(text, file.get());
    if (std::fclose(file.release()) != 0 || !arrived)
        fail(path, cannot_be_written);
}

void replace(const std::string& path, const std::string& text) {
    const interruption::Held whole;
    Replacement file(path);
    if (file.is_open() && put(text, file.stream()) && file.take_place())
        return;
    if (!file.must_be_written_in_place())
        fail(path, cannot_be_written);
    write_in_place(path, text);
}

/// What tells where an output goes from where others go: a file by its number, one that is not there yet by
/// its path. Empty for what others may write to, too.
std::string output_key(const std::string& path) {
    const auto status = path == standard_stream ? status_of(STDOUT_FILENO) : status_of(path);
    if (status)
        return S_ISCHR(status->st_mode) ? "" : fmt::format("{}:{}", status->st_dev, status->st_ino);
    const std::filesystem::path end = end_of_links(path);
    std::error_code none;
    return (std::filesystem::weakly_canonical(std::filesystem::absolute(end, none).parent_path(), none) /
            end.filename())
        .string();
}

} // namespace

std::string input_name(const std::string& path) {
    return path == standard_stream ? "standard input" : path;
}

void check_is_text(const std::string& name, std::string_view text) {
    if (is_utf16(text))
        throw Failure(name + ": the text is UTF-16, expected UTF-8");
    const std::size_t end = text.find('\0');
    if (end != text.npos)
        throw Failure(fmt::format("{}: line {}: found a NUL character, expected text", name,
                                  1 + std::count(text.begin(), text.begin() + static_cast<long>(end), '\n')));
}

std::string read_text(const std::string& path) {
    File source(path == standard_stream ? fdopen(dup(STDIN_FILENO), "rb") : std::fopen(path.c_str(), "rb"));
    if (!source)
        fail(input_name(path), "cannot be opened");
    std::string text;
    std::array<char, 65536> block;
    while (const std::size_t length = std::fread(block.data(), 1, block.size(), source.get())) {
        text.append(block.data(), length);
        // At once: a device may go on for ever.
        if (std::memchr(block.data(), '\0', length) != nullptr)
            check_is_text(input_name(path), text);
    }
    if (std::ferror(source.get()) != 0)
        fail(input_name(path), "cannot be read");
    note_read(std::move(source));
    check_is_text(input_name(path), text);
    return text;
}

File open_for_writing(const std::string& path) {
    refuse_what_was_read(status_of(path), path);
    std::FILE* stream = open_already(path);
    File file(stream == nullptr ? std::fopen(path.c_str(), "wb") : fdopen(dup(fileno(stream)), "wb"));
    if (!file)
        fail(path, cannot_be_written);
    return file;
}

void write_text(const std::string& path, const std::string& text) {
    const std::string name = path == standard_stream ? "standard output" : path;
    if (std::FILE* stream = open_already(path)) {
        refuse_what_was_read(status_of(fileno(stream)), name);
        if (!put(text, stream))
            fail(name, cannot_be_written);
    } else if (is_replaceable(path)) {
        refuse_what_was_read(status_of(path), name);
        replace(path, text);
    } else {
        write_in_place(path, text);
    }
}

void expect_writable(const std::string& path) {
    const std::string name = path == standard_stream ? "standard output" : path;
    if (std::FILE* stream = open_already(path))
        return refuse_what_was_read(status_of(fileno(stream)), name);
    const auto status = status_of(path);
    refuse_what_was_read(status, name);
    if (is_replaceable(path)) {
        const interruption::Held whole;
        const Replacement file(path);
        if (file.is_open())
            return;
        if (!file.must_be_written_in_place())
            fail(path, cannot_be_written);
    }
    // Without opening it: what is no file may wait for a reader, or take that for the end.
    if (status && S_ISDIR(status->st_mode))
        errno = EISDIR;
    else if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0)
        return;
    fail(path, cannot_be_written);
}

bool is_same_output(const std::string& one, const std::string& other) {
    const std::string key = output_key(one);
    return !key.empty() && key == output_key(other);
}

} // namespace zarven::tool
