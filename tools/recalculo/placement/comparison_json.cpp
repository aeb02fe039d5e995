#include "placement/comparison_json.h"

#include "placement/comparison_fields.h"
#include "records/describe.h"
#include "records/write.h"

namespace zarven::tool {

std::string comparison_json(const Comparison& comparison) {
    return document_text(comparison);
}

const RecordDescription& comparison_description() {
    return description_of<Comparison>();
}

} // namespace zarven::tool
