// The name beside is short and the program's own: what is left by a power cut is recognised, and a long name
// of the file leaves room for it.

#include "base/replacement.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/interruption.h"

namespace zarven::tool {

namespace {

namespace fs = std::filesystem;

/// As many as the system follows.
constexpr int most_links = 40;
constexpr int mode_of_a_new_file = 0666; // less what the user's mask takes
constexpr int mode_until_it_is_whole = 0600;

fs::path folder_of(const std::string& target) {
    const fs::path folder = fs::path(target).parent_path();
    return folder.empty() ? "." : folder;
}

/// After a power cut the folder, too, is to have the new file. Some file systems cannot be asked for it.
void store_folder(const fs::path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

} // namespace

std::string end_of_links(const std::string& path) {
    fs::path end = path;
    std::error_code none;
    for (int link = 0; link < most_links && fs::is_symlink(fs::symlink_status(end, none)); ++link) {
        const fs::path next = fs::read_symlink(end, none);
        end = next.is_absolute() ? next : end.parent_path() / next;
    }
    return end.string();
}

Replacement::Replacement(const std::string& path) : target_(end_of_links(path)) {
    struct stat status {};
    if (stat(target_.c_str(), &status) != 0) {
        if (errno == ENOENT)
            open(mode_of_a_new_file);
        return;
    }
    // To rename one over it asks for no right to write to it.
    if (faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) != 0)
        return;
    open(mode_until_it_is_whole);
    if (is_open() && !keep_owner_and_mode()) {
        must_be_written_in_place_ = true;
        file_.reset();
    } else if (!is_open()) {
        must_be_written_in_place_ = errno == EACCES || errno == EPERM || errno == EROFS;
    }
}

Replacement::~Replacement() {
    interruption::file_is_unfinished(nullptr);
    if (!beside_.empty())
        unlink(beside_.c_str());
}

void Replacement::open(int mode) {
    for (int number = 0;; ++number) {
        beside_ = (folder_of(target_) / fmt::format(".recalculo-{}-{}", getpid(), number)).string();
        const int descriptor = ::open(beside_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor >= 0) {
            interruption::file_is_unfinished(beside_.c_str());
            file_.reset(fdopen(descriptor, "wb"));
            return;
        }
        if (errno != EEXIST) {
            beside_.clear();
            return;
        }
    }
}

bool Replacement::keep_owner_and_mode() {
    const int descriptor = fileno(file_.get());
    struct stat status {};
    struct stat own {};
    if (stat(target_.c_str(), &status) != 0 || fstat(descriptor, &own) != 0)
        return false;
    const bool is_others = own.st_uid != status.st_uid || own.st_gid != status.st_gid;
    // Changing the owner takes some bits of the mode away.
    return (!is_others || fchown(descriptor, status.st_uid, status.st_gid) == 0) &&
           fchmod(descriptor, status.st_mode & 07777) == 0;
}

bool Replacement::take_place() {
    bool arrived = std::fflush(file_.get()) == 0 && fsync(fileno(file_.get())) == 0;
    // Some file systems tell of a failure only at the very end.
    if (std::fclose(file_.release()) != 0)
        arrived = false;
    if (!arrived)
        return false;
    if (rename(beside_.c_str(), target_.c_str()) != 0) {
        must_be_written_in_place_ = errno == EBUSY; // another file system begins right there
        return false;
    }
    interruption::file_is_unfinished(nullptr);
    beside_.clear();
    store_folder(folder_of(target_));
    return true;
}

} // namespace zarven::tool
