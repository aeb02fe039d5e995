// Whole files in and out. "-" names the standard stream, in every place where the command line takes a file.
// Head-ends and results are some hundred kilobytes, so each is held in memory as one string.

#ifndef RECALCULO_STREAMS_H
#define RECALCULO_STREAMS_H

#include <cstdio>
#include <memory>
#include <string>

namespace zarven::tool {

/// The path that stands for standard input or output.
inline constexpr const char* standard_stream = "-";

/// A C stream that closes itself.
struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// How messages name what `read_text` reads from.
std::string input_name(const std::string& path);

/// The whole contents of a file or of standard input. Throws `Failure`.
std::string read_text(const std::string& path);

/// Opens a file for writing, empty. Throws `Failure`, also for a file that has been read: it would be lost.
File open_for_writing(const std::string& path);

/// Writes a whole file or to standard output, and is sure that it arrived. Ctrl-C does not leave half a file.
/// Throws `Failure`.
void write_text(const std::string& path, const std::string& text);

} // namespace zarven::tool

#endif
