// A service with its places on either side, for the reports of a comparison.

#ifndef RECALCULO_COMPARISON_FIXTURE_H
#define RECALCULO_COMPARISON_FIXTURE_H

#include <string>
#include <utility>
#include <vector>

#include "placement/comparison.h"

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

} // namespace zarven::tool

#endif
