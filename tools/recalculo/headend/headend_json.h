// The JSON form of a head-end, as docs/headend.md describes it.

#ifndef RECALCULO_HEADEND_JSON_H
#define RECALCULO_HEADEND_JSON_H

#include <string>

#include "headend/headend.h"
#include "records/description.h"
#include "records/document.h"

namespace zarven::tool {

/// Reads a head-end from the text of a file; `file` is for messages. A file with modules alone is one, too.
/// Throws `Failure`.
Headend read_headend(const std::string& file, const std::string& text);

/// The same from a document that has been parsed.
Headend read_headend(const Document& document);

/// The two steps of it: complains of a document of another kind that is easily taken for a head-end; reads
/// one that is not. Throw `Failure`.
void check_kind(const Document& document);
Headend headend_of(const Document& document);

/// Reads the text of a file that tells one module: a head-end with just one, or the object of a module, which
/// may do without MAC. Throws `Failure`.
Module read_module(const std::string& file, const std::string& text);

/// Whether the module that `read_module` reads has a price, and not that of one that tells none.
bool tells_price(const std::string& file, const std::string& text);

/// Writes a head-end: one line per module, service, clone, PID and home channel. Values that are the default
/// are left out; the bitrate is always told, because it may be an estimate to be corrected.
std::string write_headend(const Headend& headend);

const RecordDescription& headend_description();

} // namespace zarven::tool

#endif
