// A JSON document and the name of its file: parsed once, then asked what it is and read as that.

#ifndef RECALCULO_DOCUMENT_H
#define RECALCULO_DOCUMENT_H

#include <memory>
#include <string>

#include <nlohmann/json_fwd.hpp>

namespace zarven::tool {

class Document {
public:
    /// Parses the text of a file; `file` is for messages. Throws `Failure`.
    Document(std::string file, const std::string& text);
    ~Document();

    const std::string& file() const { return file_; }
    nlohmann::json& value() { return *value_; }
    const nlohmann::json& value() const { return *value_; }

    bool is_object() const;
    /// It is an object with such a member.
    bool has(const char* key) const;
    /// Throws `Failure`: the document is not of the kind that was expected.
    [[noreturn]] void complain(const std::string& found, const std::string& expected) const;

private:
    std::string file_;
    std::unique_ptr<nlohmann::json> value_;
};

} // namespace zarven::tool

#endif
