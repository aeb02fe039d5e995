#include "records/document.h"

#include <utility>

#include <nlohmann/json.hpp>

#include "records/document_failure.h"
#include "records/json_text.h"

namespace zarven::tool {

Document::Document(std::string file, const std::string& text)
    : file_(std::move(file)), value_(std::make_unique<nlohmann::json>(parse_json(file_, text))) {}

Document::~Document() = default;

bool Document::is_object() const {
    return value_->is_object();
}

bool Document::has(const char* key) const {
    return is_object() && value_->contains(key);
}

void Document::complain(const std::string& found, const std::string& expected) const {
    throw DocumentFailure({file_, "", found, expected});
}

} // namespace zarven::tool
