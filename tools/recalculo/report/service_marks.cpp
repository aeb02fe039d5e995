#include "report/service_marks.h"

#include <fmt/format.h>

#include "base/counted.h"

namespace zarven::tool {

std::vector<std::string> marks_of(const ServiceResult& service) {
    std::vector<std::string> marks;
    if (service.is_clone)
        marks.push_back(fmt::format("clone of SID {}", service.parent_sid));
    if (service.is_hd)
        marks.emplace_back("HD");
    if (service.is_scrambled)
        marks.emplace_back("scrambled");
    if (service.ca_pids != 0)
        marks.push_back(counted(service.ca_pids, "CA PID"));
    if (service.is_transcoded)
        marks.emplace_back("transcoded");
    if (service.is_measured)
        marks.push_back(service.mean_bitrate == 0 ? "measured"
                                                  : fmt::format("measured, mean {}", service.mean_bitrate));
    return marks;
}

} // namespace zarven::tool
