#include "placement/sizing_json.h"

#include "placement/sizing_fields.h"
#include "records/describe.h"
#include "records/write.h"

namespace zarven::tool {

std::string sizing_json(const Sizing& sizing) {
    return document_text(sizing);
}

const RecordDescription& sizing_description() {
    return description_of<Sizing>();
}

} // namespace zarven::tool
