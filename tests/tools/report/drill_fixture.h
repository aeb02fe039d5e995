// A drill with something of everything.

#ifndef RECALCULO_DRILL_FIXTURE_H
#define RECALCULO_DRILL_FIXTURE_H

#include <cstdint>
#include <string>

#include "made_findings.h"
#include "placement/failing/drill.h"

namespace zarven::tool {

inline DrilledService drilled(std::uint16_t lcn, const std::string& name, bool must = false) {
    DrilledService made;
    made.service.stream = {1, 1001};
    made.service.lcn = lcn;
    made.service.name = name;
    made.must = must;
    return made;
}

inline Drill drill_with_everything() {
    Drill drill;
    drill.name = "Casa";
    drill.now.loaded = 20;
    drill.now.placed = 18;
    drill.now.left_out = 2;
    drill.findings = {broken_limit("one", "A"), note("two")};
    drill.musts = 3;
    drill.musts_placed = 2;
    drill.taken_out = {2, 3, 1};
    drill.harmless = {1, 2, 0};
    DrilledFailure module{{PartKind::module, "A", "Rack 1", 0, {}, true}};
    module.lost = {drilled(1, "Uno\x1B", true)};
    module.lost_besides = {drilled(2, "Dos"), drilled(3, "Tres")};
    module.saved = {drilled(4, "Cuatro")};
    module.gained = {drilled(5, "Cinco")};
    module.moved = 1;
    DrilledFailure input{{PartKind::input, "A", "Rack 1", 2, {1, 1001}, false}, NewRun::stopped, "too long"};
    input.lost = {drilled(1, "Uno", true), drilled(4, "Cuatro")};
    DrilledFailure stream{{PartKind::stream, "", "", 0, {1, 7}, false}, NewRun::broken};
    stream.lost = {drilled(6, "Seis")};
    drill.failures = {module, input, stream};
    ServiceChange change;
    change.service = drilled(7, "Siete").service;
    change.before = {{"B", 1, {1}}};
    change.after = {{"B", 2, {3}}};
    drill.worst_moved = {change};
    drill.labels = {{"A", "Rack 1"}, {"B", "Rack 2"}};
    drill.spare = Spare{{"", 3, false, 2, {38000}, 15, 0, 0, 0},
                        8,
                        2,
                        2,
                        {{0, 0, 2, 1, false}, {1, 0, 0, 0, true}, {2, 0, 0, 0, false}}};
    return drill;
}

} // namespace zarven::tool

#endif
