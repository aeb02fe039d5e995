#include "placement/result_json.h"

#include "placement/strategies_fields.h"
#include "records/read.h"
#include "records/write.h"

namespace zarven::tool {

static std::array<ToldStrategy, strategy_count> told_strategies(const Strategies& strategies) {
    std::array<ToldStrategy, strategy_count> told;
    for (std::size_t index = 0; index < strategy_count; ++index) {
        const Strategy& strategy = strategies.list[index];
        told[index] = {strategy, {strategies.list[strategy.rival].name}};
    }
    return told;
}

static std::vector<ToldContested> told_contested(const Strategies& strategies) {
    std::vector<ToldContested> told;
    for (const Contested& contested : strategies.contested) {
        told.push_back({contested.service, {}});
        for (std::size_t index = 0; index < strategy_count; ++index)
            if (contested.is_placed_by[index])
                told.back().placed_by.push_back({strategies.list[index].name});
    }
    return told;
}

static ToldResult told_of(const Result& result) {
    ToldResult told;
    told.result = result;
    told.causes = causes_of(result);
    told.cautions = cautions_of(result);
    return told;
}

std::string result_json_on_one_line(const Result& result) {
    return text_on_one_line(told_of(result));
}

std::string result_json(const Result& result, const Strategies* strategies) {
    ToldResult told = told_of(result);
    if (strategies != nullptr) {
        told.has_strategies = true;
        told.strategies = told_strategies(*strategies);
        told.contested = told_contested(*strategies);
    }
    return document_text(told);
}

bool is_result(const Document& document) {
    return document.has("summary");
}

Result read_result(const Document& document) {
    // Both begin with a name and modules, so that the first thing missing would say little.
    if (document.has("modules") && !is_result(document))
        document.complain("a head-end", "a result, which `recalculo run HEADEND --json` writes");
    return read_record<Result, UnknownKeys::passed_over>(document);
}

Result read_result(const std::string& file, const std::string& text) {
    return read_result(Document(file, text));
}

const RecordDescription& result_description() {
    return description_of<ToldResult>();
}

} // namespace zarven::tool
