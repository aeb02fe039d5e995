// A file that takes its place when it is whole. It is written beside the one that it replaces, so that
// whoever opens the path finds the old file or the new one, and a failure leaves the old.

#ifndef RECALCULO_REPLACEMENT_H
#define RECALCULO_REPLACEMENT_H

#include <string>

#include "base/file_stream.h"

namespace zarven::tool {

class Replacement {
public:
    /// Opens a file beside the one at the path, or at the end of the links there. One that is there keeps
    /// its mode and its owner. `is_open` tells whether it could be done, and errno why not.
    explicit Replacement(const std::string& path);
    /// Removes what has not taken its place.
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    bool is_open() const { return file_ != nullptr; }
    /// Nothing is at fault but the place: the folder takes no further file, or the file must stay what it is.
    /// Then it can be written as it stands there.
    bool must_be_written_in_place() const { return must_be_written_in_place_; }
    std::FILE* stream() const { return file_.get(); }

    /// Puts the file into its place, on the disk for good. False with errno where it cannot be done.
    bool take_place();

private:
    void open(int mode);
    bool keep_owner_and_mode();

    std::string target_;
    std::string beside_;
    File file_;
    bool must_be_written_in_place_ = false;
};

/// The path itself, or what the links that it names lead to, whether that is there or not.
std::string end_of_links(const std::string& path);

} // namespace zarven::tool

#endif
