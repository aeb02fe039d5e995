// Tables for the manual, in Markdown, of what records tell of themselves.

#ifndef RECALCULO_KEY_TABLES_H
#define RECALCULO_KEY_TABLES_H

#include <string>

#include "records/description.h"

namespace zarven::tool {

/// For a record that people write: key, default and meaning of each field. Numbers that are not from 0 to
/// 65535 tell their range.
std::string key_table(const RecordDescription& record);

/// The same of the fields that another record does not have, or not with this default.
std::string key_table_of_others(const RecordDescription& record, const RecordDescription& known);

/// For a document that programs read: a table of its members, and one for each record within.
std::string member_tables(const RecordDescription& document);

} // namespace zarven::tool

#endif
