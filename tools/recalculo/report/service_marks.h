// What sets a service apart, in the words that all reports use.

#ifndef RECALCULO_SERVICE_MARKS_H
#define RECALCULO_SERVICE_MARKS_H

#include <string>
#include <vector>

#include "placement/result.h"

namespace zarven::tool {

/// What sets a service apart from a free SD programme: "HD", "3 CA PIDs". Plain ASCII.
std::vector<std::string> marks_of(const ServiceResult& service);

} // namespace zarven::tool

#endif
