// A choice with one of everything that a report shows.

#ifndef RECALCULO_CHOICE_FIXTURE_H
#define RECALCULO_CHOICE_FIXTURE_H

#include <string>

#include "placement/choosing/choice.h"
#include "report/comparison_fixture.h"

namespace zarven::tool {

inline ValuedService valued(std::uint16_t lcn, const std::string& name, std::uint16_t value, bool must) {
    return {change(lcn, name, {}, {}).service, value, must};
}

inline ChoiceReport choice_with_everything() {
    ChoiceReport report;
    report.name = "Casa";
    report.all.counts.loaded = 1234;
    report.all.counts.placed = 754;
    report.all.musts = 1;
    report.all.value = 1000;
    report.chosen.counts.loaded = 1231;
    report.chosen.counts.placed = 841;
    report.chosen.musts = 3;
    report.chosen.value = 2000;
    report.musts = {5, 4};
    report.value = {3000, 2500};
    report.withheld = {valued(1, "Uno", 1, false), valued(2, "Dos\x1B", 0, true),
                       valued(3, "Tres", 7, false)};
    report.gained = {{valued(4, "Cuatro", 3, true), {{"A", 1, {1, 2}}}, false}};
    report.lost = {{valued(1, "Uno", 1, false), {{"A", 1, {1}}, {"B", 0, {2}}}, true},
                   {valued(5, "Cinco", 1, false), {{"B", 2, {1}}}, false}};
    MissedMust missed{valued(6, "Seis", 1, true).service, false, false};
    missed.service.reason = "No input is free.";
    report.missed = {missed};
    report.moves = MovesAgainstKept{{change(7, "Siete", {{"A", 1, {1}}}, {{"B", 2, {1}}})}, 700, 2};
    report.states = 123456;
    report.engine_runs = 1;
    report.has_values = true;
    return report;
}

} // namespace zarven::tool

#endif
