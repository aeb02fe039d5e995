#include "placement/explanation_json.h"

#include "placement/explanation_fields.h"
#include "records/describe.h"
#include "records/json_layout.h"
#include "records/write.h"

namespace zarven::tool {

/// The document around the services.
static OpenedList opened_services(const std::string& name, const std::vector<Finding>& findings) {
    return opened_at("services", json_of(Explanations{name, {}, findings}));
}

std::string explanations_json_begin(const std::string& name) {
    return opened_services(name, {}).begin;
}

std::string explanation_json(const Explanation& explanation) {
    return entry_of_opened(json_of(explanation));
}

std::string explanations_json_end(const std::vector<Finding>& findings) {
    return opened_services("", findings).end;
}

const RecordDescription& explanations_description() {
    return description_of<Explanations>();
}

} // namespace zarven::tool
