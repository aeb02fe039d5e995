// The fields of what the four strategies leave out, which stand in a result where they are asked for.

#ifndef RECALCULO_STRATEGIES_FIELDS_H
#define RECALCULO_STRATEGIES_FIELDS_H

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "placement/result_fields.h"
#include "placement/strategies.h"

namespace zarven::tool {

struct StrategyName {
    std::string text;
};

template <> struct Words<StrategyName> {
    static constexpr const char* name = "strategy_name";
    static std::vector<std::string> all() { return {strategy_names.begin(), strategy_names.end()}; }
    static const std::string& of(const StrategyName& strategy) { return strategy.text; }
};

inline constexpr Word<Verdict> verdict_words[] = {{Verdict::kept, "kept"},
                                                  {Verdict::surpassed, "surpassed"},
                                                  {Verdict::tie, "tie"},
                                                  {Verdict::worse, "worse"},
                                                  {Verdict::not_tried, "not tried"}};

template <> struct Words<Verdict> : WordTable<Verdict, verdict_words> {};

/// A strategy with the name of its rival.
struct ToldStrategy {
    Strategy strategy;
    StrategyName rival;
};

template <> struct Fields<ToldStrategy> {
    static constexpr const char* name = "strategy";
    static constexpr const char* meaning = "One strategy alone on the head-end";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& told) {
        const Strategy& strategy = told.strategy;
        visit.required("name", StrategyName{strategy.name}, "Name of the strategy");
        visit_outcome(visit, strategy);
        visit.required("left_out_counted", count(strategy.left_out_counted),
                       "The engine's count, which it compares");
        visit.required("inputs_used", count(strategy.inputs_used), "Inputs in use");
        visit.required("inputs", count(strategy.inputs), "All inputs");
        visit_number_of_findings(visit, strategy);
        visit.required("verdict", strategy.verdict, "What the engine makes of it");
        visit.where(if_one_of("verdict", strategy.verdict, Verdict::surpassed, Verdict::tie, Verdict::worse,
                              Verdict::not_tried),
                    "rival", told.rival, "The strategy that the verdict is about; not there for `kept`");
    }
};

/// A contested service with the names of strategies.
struct ToldContested {
    ServiceResult service;
    std::vector<StrategyName> placed_by;
};

template <> struct Fields<ToldContested> {
    static constexpr const char* name = "contested";
    static constexpr const char* meaning = "A service that only some strategies place";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& contested) {
        visit_lcn_and_name(visit, contested.service);
        visit_stream_of(visit, contested.service);
        visit.required("placed_by", contested.placed_by, "The strategies that place it");
    }
};

/// A result as it is written.
struct ToldResult {
    Result result;
    std::vector<CauseCount> causes;
    std::vector<Caution> cautions;
    bool has_strategies = false;
    std::array<ToldStrategy, strategy_count> strategies;
    std::vector<ToldContested> contested;
};

template <> struct Fields<ToldResult> {
    static constexpr const char* name = Fields<Result>::name;
    static constexpr const char* meaning = Fields<Result>::meaning;

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& told) {
        const Condition with_strategies{told.has_strategies, nullptr, {}, "strategies"};
        visit_name(visit, told.result.name);
        visit.required("causes", told.causes, meaning_of_causes, Since::a_later_version);
        visit.where(with_strategies, "strategies", told.strategies,
                    "With `--strategies`: what each strategy of the engine alone leaves out, in the order of "
                    "their trial");
        visit.where(with_strategies, "contested", told.contested,
                    "With `--strategies`: services that only some of them place");
        visit_cautions(visit, told.cautions);
        visit_placement(visit, told.result);
    }
};

} // namespace zarven::tool

#endif
