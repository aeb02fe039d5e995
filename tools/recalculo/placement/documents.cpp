#include "placement/documents.h"

#include "placement/bound_fields.h"
#include "placement/change/comparison_fields.h"
#include "placement/choosing/choice_fields.h"
#include "placement/failing/drill_fields.h"
#include "placement/sizing/sizing_fields.h"
#include "records/describe.h"
#include "records/write.h"

namespace zarven::tool {

std::string bound_json(const Bound& bound, const Result& result) {
    return document_text(ToldBound{result.name, bound, result.counts, result.findings});
}

const RecordDescription& bound_description() {
    return description_of<ToldBound>();
}

std::string choice_json(const ChoiceReport& report) {
    return document_text(report);
}

const RecordDescription& choice_description() {
    return description_of<ChoiceReport>();
}

std::string comparison_json(const Comparison& comparison) {
    return document_text(comparison);
}

const RecordDescription& comparison_description() {
    return description_of<Comparison>();
}

std::string drill_json(const Drill& drill) {
    return document_text(drill);
}

const RecordDescription& drill_description() {
    return description_of<Drill>();
}

std::string sizing_json(const Sizing& sizing) {
    return document_text(sizing);
}

const RecordDescription& sizing_description() {
    return description_of<Sizing>();
}

} // namespace zarven::tool
