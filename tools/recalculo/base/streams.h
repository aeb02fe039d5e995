// Whole files in and out. "-" names the standard stream, in every place where the command line takes a file.
// Head-ends and results are some hundred kilobytes, so each is held in memory as one string.

#ifndef RECALCULO_STREAMS_H
#define RECALCULO_STREAMS_H

#include <string>
#include <string_view>

#include "base/file_stream.h"

namespace zarven::tool {

/// The path that stands for standard input or output.
inline constexpr const char* standard_stream = "-";

/// How messages name what `read_text` reads from.
std::string input_name(const std::string& path);

/// The whole contents of a file or of standard input. Throws `Failure`, also for what is no text.
std::string read_text(const std::string& path);

/// Throws `Failure` for what only looks like a text: behind a NUL most readers see nothing more. `name` is
/// for the message.
void check_is_text(const std::string& name, std::string_view text);

/// Opens a file for writing, empty, for what is to be seen while it grows. Throws `Failure`, also for a file
/// that has been read: it would be lost.
File open_for_writing(const std::string& path);

/// Writes a whole file or to standard output, and is sure that it arrived. A file is replaced when the new
/// one is whole, and one that has been read is refused. Ctrl-C leaves the old file or the new. Throws
/// `Failure`.
void write_text(const std::string& path, const std::string& text);

/// Throws the `Failure` that `write_text` would, where it is known before there is a text: for what takes
/// long to find. Changes nothing.
void expect_writable(const std::string& path);

/// Both lead to one file, by whatever name, or will when it is there. "-" is standard output. What is no file
/// and holds nothing, as a terminal, is never the same.
bool is_same_output(const std::string& one, const std::string& other);

} // namespace zarven::tool

#endif
