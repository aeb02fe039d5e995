// A comparison in parts: a service with its places on either side, and a head-end in which one thing of each
// kind has changed.

#ifndef RECALCULO_COMPARISON_FIXTURE_H
#define RECALCULO_COMPARISON_FIXTURE_H

#include <string>
#include <utility>
#include <vector>

#include "placement/change/comparison.h"

namespace zarven::tool {

inline ServiceChange change(std::uint16_t lcn, const std::string& name, std::vector<Place> before,
                            std::vector<Place> after) {
    ServiceChange made;
    made.service.stream = {1, 1001};
    made.service.lcn = lcn;
    made.service.sid = static_cast<std::uint16_t>(100 + lcn);
    made.service.name = name;
    made.service.bitrate = 4200;
    made.before = std::move(before);
    made.after = std::move(after);
    return made;
}

inline Comparison changed_headend() {
    Comparison comparison;
    comparison.modules_gone = {"X"};
    comparison.modules_new = {"Y"};
    comparison.inputs_freed = {{"A", 1, true, {1, 10}, false, {}}};
    comparison.inputs_taken = {{"A", 2, false, {}, true, {1, 20}}};
    comparison.inputs_retuned = {{"B", 1, true, {1, 30}, true, {1, 40}}};
    comparison.became_tight = {{TightKind::inputs, "A", 0, 2, 2}, {TightKind::pids, "A", 0, 15, 15}};
    comparison.renamed = {{change(4, "Cuatro", {}, {}).service, change(5, "Five", {}, {}).service}};
    comparison.renamed[0].after.output_name = "FIVE";
    ServiceResult three = change(3, "Tres", {}, {}).service;
    comparison.order.steps = {{comparison.inputs_taken[0], {}, {}, 0},
                              {comparison.inputs_retuned[0], {three}, {}, 1},
                              {comparison.inputs_freed[0], {}, {three}, 0}};
    comparison.order.most_off_air = 1;
    comparison.relaxed = {{TightKind::bitrate, "B", 1, 0, 38000}};
    return comparison;
}

} // namespace zarven::tool

#endif
