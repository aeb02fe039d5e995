// The head-end of a command line: the file, and what is changed in it for one run. Every command that takes a
// head-end takes it this way.

#ifndef RECALCULO_COMMANDS_HEADEND_INPUT_H
#define RECALCULO_COMMANDS_HEADEND_INPUT_H

#include <string>
#include <vector>

#include "base/failure.h"
#include "base/streams.h"
#include "headend/headend.h"
#include "records/document_failure.h"

namespace zarven::tool {

struct HeadendInput {
    std::string path;
    /// Each PATH=VALUE.
    std::vector<std::string> settings;
};

/// Reads the head-end with its changes, and warns of what is odd in it. Throws `Failure`.
Headend read_input(const HeadendInput& input);

/// A kind of module that may be added.
struct KindInput {
    Module module;
    /// The file has it.
    bool has_price = false;
};

/// Reads a kind of module that may be added. Throws `Failure`, also for what the engine refuses of it, so
/// that that is told under the name of its own file.
KindInput read_kind(const std::string& path);

/// Warns on standard error of MACs that look like a slip of the pen.
void warn_of_odd_macs(const std::string& name, const Headend& headend);

/// Throws `Failure` for a text that is a channel list and was taken for JSON.
void complain_of_channel_list(const std::string& name, const std::string& text);

/// What `read` makes of the name and the text of a JSON file. Throws `Failure`.
template <class Read> auto read_json_file(const std::string& path, const Read& read) {
    const std::string name = input_name(path);
    const std::string text = read_text(path);
    try {
        return read(name, text);
    } catch (const DocumentFailure&) { // it is JSON
        throw;
    } catch (const Failure&) {
        complain_of_channel_list(name, text);
        throw;
    }
}

} // namespace zarven::tool

#endif
