// The JSON form of a head-end, as docs/headend.md describes it.

#ifndef RECALCULO_HEADEND_JSON_H
#define RECALCULO_HEADEND_JSON_H

#include <string>

#include "headend/headend.h"

namespace zarven::tool {

/// Reads a head-end from the text of a file; `file` is for messages. A file with modules alone is one, too.
/// Throws `Failure`.
Headend read_headend(const std::string& file, const std::string& text);

/// Writes a head-end: one line per module, service, clone, PID and home channel. Values that are the default
/// are left out; the bitrate is always told, because it may be an estimate to be corrected.
std::string write_headend(const Headend& headend);

} // namespace zarven::tool

#endif
