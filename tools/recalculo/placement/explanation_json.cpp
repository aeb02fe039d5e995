// The pieces are cut from a document without services.

#include "placement/explanation_json.h"

#include "placement/explanation_fields.h"
#include "records/describe.h"
#include "records/write.h"

namespace zarven::tool {

namespace {

/// A line end within a text is escaped, so that this stands nowhere else.
constexpr const char* before_services = "\n  \"services\": [";

/// The document around the services: what stands before the first, and after the last.
struct Frame {
    std::string begin;
    std::string end;
};

Frame frame_of(const std::string& name, const std::vector<std::string>& warnings) {
    const std::string text = document_text(Explanations{name, {}, warnings});
    const std::size_t first = text.find(before_services) + std::string(before_services).size();
    return {text.substr(0, first), text.substr(first)};
}

} // namespace

std::string explanations_json_begin(const std::string& name) {
    return frame_of(name, {}).begin;
}

std::string explanation_json(const Explanation& explanation) {
    const std::string indent(4, ' ');
    std::string text = "\n" + indent;
    for (const char character : json_of(explanation).dump(2)) {
        text += character;
        if (character == '\n')
            text += indent;
    }
    return text;
}

std::string explanations_json_end(const std::vector<std::string>& warnings) {
    return "\n  " + frame_of("", warnings).end;
}

const RecordDescription& explanations_description() {
    return description_of<Explanations>();
}

} // namespace zarven::tool
