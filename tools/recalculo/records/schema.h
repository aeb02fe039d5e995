// JSON Schemas (draft 7) of what records tell of themselves.

#ifndef RECALCULO_SCHEMA_H
#define RECALCULO_SCHEMA_H

#include <string>

#include "records/description.h"

namespace zarven::tool {

/// The schema of documents that hold one such record, as the text of a file. Throws `std::logic_error` if two
/// of the records within have the same name.
std::string schema_text(const RecordDescription& document, const std::string& title);

} // namespace zarven::tool

#endif
