#include "placement/bound_json.h"

#include "placement/bound_fields.h"
#include "records/describe.h"
#include "records/write.h"

namespace zarven::tool {

std::string bound_json(const Bound& bound, const Result& result) {
    return document_text(ToldBound{result.name, bound, result.counts, result.warnings});
}

const RecordDescription& bound_description() {
    return description_of<ToldBound>();
}

} // namespace zarven::tool
