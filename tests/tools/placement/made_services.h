// Services and clones as tests need them.

#ifndef RECALCULO_MADE_SERVICES_H
#define RECALCULO_MADE_SERVICES_H

#include <cstdint>
#include <string>

#include "headend/headend.h"

namespace zarven::tool {

/// A service of stream 1/`tsid` with numbers of its own, made of its LCN.
inline Service service(std::uint16_t lcn, std::uint16_t tsid, std::uint32_t bitrate = 4000,
                       std::uint16_t ca_pids = 0, std::uint16_t transcoding = 0) {
    Service made;
    made.lcn = lcn;
    made.name = "S" + std::to_string(lcn);
    made.output_name = made.name;
    made.onid = 1;
    made.tsid = tsid;
    made.sid = static_cast<std::uint16_t>(100 + lcn);
    made.osid = made.sid;
    made.bitrate = bitrate;
    made.ca_pids = ca_pids;
    made.ca_pids_max = ca_pids;
    made.transcoding = transcoding;
    return made;
}

/// One of a group of which exactly one is asked for.
inline Service variant(std::uint16_t lcn, std::uint16_t tsid, const std::string& one_of,
                       std::uint32_t bitrate = 4000) {
    Service made = service(lcn, tsid, bitrate);
    made.one_of = one_of;
    return made;
}

inline Clone clone_of(const Service& parent, std::uint16_t transcoding = 0) {
    Clone made;
    static_cast<Programme&>(made) = parent;
    made.output_name = "copy";
    made.transcoding = transcoding;
    return made;
}

} // namespace zarven::tool

#endif
