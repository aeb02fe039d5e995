// The JSON form of a head-end, as docs/headend.md describes it.

#ifndef RECALCULO_HEADEND_JSON_H
#define RECALCULO_HEADEND_JSON_H

#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "headend/headend.h"

namespace zarven::tool {

/// Reads a head-end from the text of a file; `file` is for messages. A file with modules alone is one, too.
/// Throws `Failure`.
Headend read_headend(const std::string& file, const std::string& text);

/// The same from a document that has been parsed.
Headend headend_of(const std::string& file, const nlohmann::json& document);

/// Complains of a document of another kind that is easily taken for a head-end, as `headend_of` does first.
/// Throws `Failure`.
void check_kind(const std::string& file, const nlohmann::json& document);

/// Reads the text of a file that tells one module: a head-end with just one, or the object of a module, which
/// may do without MAC. Throws `Failure`.
Module read_module(const std::string& file, const std::string& text);

/// The keys of the top level.
std::vector<std::string> headend_keys();

/// The keys of the records in one of its lists; none for a key that names no such list.
std::vector<std::string> record_keys(const std::string& list);

/// Writes a head-end: one line per module, service, clone, PID and home channel. Values that are the default
/// are left out; the bitrate is always told, because it may be an estimate to be corrected.
std::string write_headend(const Headend& headend);

} // namespace zarven::tool

#endif
