#include "records/whole_documents.h"

#include "made_cautions.h"
#include "made_findings.h"
#include "placement/bound.h"
#include "placement/change/comparison.h"
#include "placement/documents.h"
#include "placement/reasons/explanation_json.h"
#include "placement/result_fields.h"
#include "placement/result_json.h"
#include "placement/sizing/sizing.h"
#include "report/comparison_fixture.h"
#include "report/drill_fixture.h"
#include "report/explanation_fixture.h"
#include "report/result_fixture.h"
#include "report/strategies_fixture.h"

namespace zarven::tool::whole_documents {

using nlohmann::json;

namespace {

/// A raise of each kind.
std::vector<Raise> every_raise() {
    std::vector<Raise> raises;
    for (const LimitKind kind :
         {LimitKind::pids, LimitKind::bitrate, LimitKind::inputs, LimitKind::sd_transcoders,
          LimitKind::hd_transcoders, LimitKind::one_more_output}) {
        const bool has_output = kind == LimitKind::bitrate || kind == LimitKind::one_more_output;
        raises.push_back({kind, "A", has_output ? 2u : 0u, 1, 2, 2, 3, 1, 1, "modules[0].inputs=2"});
    }
    raises[0].label = "Rack 1";
    return raises;
}

Remedies every_remedy() {
    Remedies remedies;
    for (const RemedyKind kind :
         {RemedyKind::raised_limit, RemedyKind::withheld_service, RemedyKind::further_module}) {
        Remedy remedy;
        remedy.kind = kind;
        remedy.raise = every_raise()[0];
        remedy.like = "A";
        if (kind == RemedyKind::further_module)
            remedy.label = "Rack 1";
        else
            remedy.setting = "modules[0].inputs=2";
        remedy.lost = {ServiceResult()};
        remedies.found.push_back(remedy);
    }
    return remedies;
}

ServiceResult a_service() {
    return result_with_everything().left_out.at(0).services.at(0);
}

} // namespace

Result result_with_every_cause() {
    Result result = with_labels(result_with_everything());
    result.groups = {{"Sport", 3, 2}};
    result.variants = {{"Deportes", result.left_out[0].services[0], true, 2, 3}};
    std::vector<ServiceResult>& services = result.left_out[0].services;
    for (const Word<Cause>& cause : cause_words) {
        services.push_back(services.front());
        services.back().cause = cause.value;
    }
    result.advice.raises = every_raise();
    add_every_caution(result);
    result.modules[0].inputs[0].net_rate = 33790;
    result.streams[0].symbol_rate = 22'000'000;
    result.streams[0].net_rate = 33790;
    result.streams[0].delivery = "DVB-S";
    return result;
}

json explanations(const std::vector<Explanation>& list, const Result& result) {
    std::string text = explanations_json_begin(result);
    for (std::size_t index = 0; index < list.size(); ++index)
        text += (index == 0 ? "" : ",") + explanation_json(list[index]);
    return json::parse(text + explanations_json_end({broken_limit("what the audit found", "A")}));
}

json whole_result() {
    Result result = result_with_every_cause();
    result.left_out[0].services[0].is_radio = true;
    result.left_out[0].services[0].is_measured = true;
    result.left_out[0].services[0].mean_bitrate = 2890;
    result.left_out[0].services[0].group = "Sport";
    result.counts.not_asked_for = 2;
    result.counts.musts = 3;
    result.counts.musts_placed = 2;
    result.counts.rates = {4, 3, 2, 7700, 3500};
    const Strategies strategies = strategies_with_everything();
    return json::parse(result_json(result, &strategies));
}

json result_with_strategies_not_tried() {
    Strategies strategies = strategies_with_everything();
    strategies.list[0].left_out_counted = 0;
    strategies.list[0].places_everything = true;
    judge(strategies.list);
    return json::parse(result_json(result_with_everything(), &strategies));
}

json whole_explanation() {
    std::vector<Explanation> list;
    for (const Standing standing : {Standing::placed, Standing::left_out, Standing::placed_and_left_out,
                                    Standing::neither, Standing::attached, Standing::waiting}) {
        list.push_back(explanation_with_everything());
        if (list.size() > 1)
            list.back().modules.clear();
        else
            list.back().modules.at(0).label = "Rack 1";
        list.back().standing = standing;
        list.back().service.is_radio = standing == Standing::placed;
        list.back().service.is_measured = standing == Standing::placed;
        list.back().service.mean_bitrate = standing == Standing::placed ? 2890 : 0;
        list.back().service.group = standing == Standing::placed ? "Sport" : "";
        list.back().service.is_clone = standing == Standing::attached;
    }
    list.back().remedies = every_remedy();
    Result result = result_with_every_cause();
    result.advice.raises.resize(1);
    return explanations(list, result);
}

json whole_comparison() {
    Comparison comparison = changed_headend();
    ServiceChange change;
    change.service = a_service();
    change.before = {{"A", 1, {1}}, {"B", 0, {2, 3}}};
    comparison.moved = {change};
    comparison.gained = {change};
    comparison.gained[0].absence_before = Absence::not_there;
    comparison.lost = {change};
    comparison.lost[0].absence_after = Absence::not_there;
    comparison.before.counts.not_asked_for = 2;
    comparison.after.counts.not_asked_for = 2;
    comparison.after.findings = {broken_limit("what the audit found", "A"), note("what is counted")};
    comparison.labels = {{"A", "Rack 1"}};
    comparison.after.cautions = every_caution();
    return json::parse(comparison_json(comparison));
}

json whole_sizing() {
    Sizing sizing;
    sizing.name = "Casa";
    sizing.now.not_asked_for = 2;
    sizing.findings = {broken_limit("what the audit found", "A")};
    sizing.addition.kind = {"", 3, false, 2, {38000}, 15, 1, 2, 3};
    sizing.addition.number = 5;
    sizing.addition.attempts = {{2, 14, 6, 3, 1, 1, 1, true}};
    sizing.addition.one_more = sizing.addition.attempts[0];
    sizing.addition.impossible = sizing.addition.remaining = sizing.addition.withheld = {a_service()};
    sizing.raises = every_raise();
    sizing.mix =
        Mix{{{sizing.addition.kind, 2}, {sizing.addition.kind, {}}}, 20, sizing.addition.attempts[0], 10, 3};
    sizing.mix->withheld = {a_service()};
    return json::parse(sizing_json(sizing));
}

json whole_choice() {
    ChoiceReport report;
    report.name = "Casa";
    report.labels = {{"A", "Rack 1"}};
    report.chosen.findings = {broken_limit("what the audit found", "A")};
    report.chosen.cautions = every_caution();
    report.all.counts.not_asked_for = report.chosen.counts.not_asked_for = 1;
    const ValuedService service{a_service(), 3, true};
    report.withheld = {service, {a_service(), 0, false}};
    report.variants = {{"Deportes", a_service(), true, 2, 3}};
    report.gained = report.lost = {{service, {{"A", 1, {1}}}, true}};
    report.missed = {{a_service(), true, true}};
    report.is_interrupted = true;
    report.is_given_back = false;
    report.chosen.is_stopped = true;
    ServiceChange change;
    change.service = a_service();
    change.before = change.after = {{"A", 1, {1}}};
    report.moves = MovesAgainstKept{{change}, 1, 2};
    return json::parse(choice_json(report));
}

json whole_drill() {
    Drill drill = drill_with_everything();
    drill.now.not_asked_for = 2;
    drill.failures.emplace_back();
    drill.failures.back().run = NewRun::impossible;
    return json::parse(drill_json(drill));
}

json whole_bound() {
    Bound bound;
    bound.impossible = {a_service()};
    Result result = result_with_everything();
    result.counts.not_asked_for = 2;
    return json::parse(bound_json(bound, result));
}

} // namespace zarven::tool::whole_documents
