// recalculo_documents DOCS OUTPUT: writes into the folder OUTPUT the JSON Schemas of what the tool reads and
// writes, and the documents of the folder DOCS that have tables of keys, with these as the records tell them.
// In a document a table stands between the lines `<!-- keys NAME -->` and `<!-- end -->`.

#include <exception>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "base/streams.h"
#include "headend/headend_json.h"
#include "placement/documents.h"
#include "placement/reasons/explanation_json.h"
#include "placement/result_json.h"
#include "records/key_tables.h"
#include "records/schema.h"

namespace {

using namespace zarven::tool;

/// A document of JSON that the tool reads or writes.
struct Kind {
    const char* name;
    const char* title;
    const RecordDescription& description;
};

std::vector<Kind> kinds() {
    return {
        {"headend", "A head-end, the input of recalculo", headend_description()},
        {"result", "A result, as recalculo run --json writes it", result_description()},
        {"explanation", "Explanations, as recalculo explain --json writes them", explanations_description()},
        {"comparison", "A comparison, as recalculo compare --json writes it", comparison_description()},
        {"choice", "A choice, as recalculo choose --json writes it", choice_description()},
        {"sizing", "A sizing, as recalculo size --json writes it", sizing_description()},
        {"drill", "A drill, as recalculo drill --json writes it", drill_description()},
        {"bound", "A bound, as recalculo bound --json writes it", bound_description()}};
}

using Tables = std::map<std::string, std::string>;

const RecordDescription& record_of_list(const RecordDescription& record, const char* list) {
    return *record.field(list)->value.entry.front().record;
}

/// Of the file that people write.
Tables headend_tables() {
    const RecordDescription& headend = headend_description();
    Tables tables = {{"headend", key_table(headend)},
                     {"clones", key_table_of_others(record_of_list(headend, "clones"),
                                                    record_of_list(headend, "services"))}};
    for (const char* list : {"modules", "services", "pids", "home_channels", "streams"})
        tables[list] = key_table(record_of_list(headend, list));
    return tables;
}

/// Of the documents that programs read.
Tables report_tables() {
    Tables tables;
    for (const Kind& kind : kinds())
        if (&kind.description != &headend_description())
            tables[kind.name] = member_tables(kind.description);
    return tables;
}

std::string with_tables(std::string text, const std::string& file, const Tables& tables) {
    const std::string end_mark = "<!-- end -->\n";
    for (const auto& [name, table] : tables) {
        const std::string mark = fmt::format("<!-- keys {} -->\n", name);
        const std::size_t begin = text.find(mark);
        const std::size_t end = begin == text.npos ? begin : text.find(end_mark, begin);
        if (end == text.npos)
            throw std::runtime_error(fmt::format("{} has no place for the keys of {}", file, name));
        text.replace(begin + mark.size(), end - begin - mark.size(), table);
    }
    return text;
}

void write_documents(const std::filesystem::path& docs, const std::filesystem::path& output) {
    std::filesystem::create_directories(output);
    for (const Kind& kind : kinds())
        write_text((output / kind.name).string() + ".schema.json", schema_text(kind.description, kind.title));
    const auto write = [&](const char* file, const Tables& tables) {
        write_text((output / file).string(), with_tables(read_text((docs / file).string()), file, tables));
    };
    write("headend.md", headend_tables());
    write("tool.md", report_tables());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        fmt::print(stderr, "usage: recalculo_documents DOCS OUTPUT\n");
        return 2;
    }
    try {
        write_documents(argv[1], argv[2]);
    } catch (const std::exception& error) {
        fmt::print(stderr, "recalculo_documents: {}\n", error.what());
        return 1;
    }
    return 0;
}
