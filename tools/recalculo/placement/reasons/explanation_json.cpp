#include "placement/reasons/explanation_json.h"

#include "placement/reasons/explanation_fields.h"
#include "records/describe.h"
#include "records/write.h"

namespace zarven::tool {

/// The document around the services.
static OpenedList opened_services(const Result& result, const std::vector<Finding>& findings) {
    return opened_at(
        "services",
        Explanations{result.name, causes_of(result), result.advice, cautions_of(result), {}, findings});
}

std::string explanations_json_begin(const Result& result) {
    return opened_services(result, {}).begin;
}

std::string explanation_json(const Explanation& explanation) {
    return entry_of_opened(explanation);
}

std::string explanations_json_end(const std::vector<Finding>& findings) {
    return opened_services({}, findings).end;
}

const RecordDescription& explanations_description() {
    return description_of<Explanations>();
}

} // namespace zarven::tool
