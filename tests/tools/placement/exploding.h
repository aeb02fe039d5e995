// A head-end that keeps the engine busy: two modules share a stream, and services of another stream find a
// transcoder nowhere. For each of them the engine tries every pair of the shared services.

#ifndef RECALCULO_EXPLODING_H
#define RECALCULO_EXPLODING_H

#include <cstdint>

#include "placement/made_services.h"

namespace zarven::tool {

inline Headend exploding(std::uint16_t shared, std::uint16_t pids, std::uint16_t impossible) {
    Headend headend;
    headend.modules.push_back({"A", 3, true, 2, {60000}, pids, 0, 0, 0});
    headend.modules.push_back({"B", 3, false, 2, {60000}, pids, 0, 0, 0});
    std::uint16_t lcn = 0;
    for (int index = 0; index < shared; ++index)
        headend.services.push_back(service(++lcn, 1, 100, 1));
    for (int index = 0; index < 20; ++index)
        headend.services.push_back(service(++lcn, 2, 100));
    for (int index = 0; index < impossible; ++index)
        headend.services.push_back(service(++lcn, 2, 100, 0, 1));
    return headend;
}

} // namespace zarven::tool

#endif
