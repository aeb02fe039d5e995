// What several sections of the page of a result show: services in rows, streams with their marks, modules
// with their anchors and loads.

#ifndef RECALCULO_RESULT_PARTS_H
#define RECALCULO_RESULT_PARTS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <kainjow/mustache.hpp>

#include "placement/result.h"
#include "report/stream_marks.h"

namespace zarven::tool {

std::string services_counted(std::size_t number);

/// The rows of services that stand under a stream, or under none. A stream that is not the one above is told.
kainjow::mustache::list service_rows(const std::vector<ServiceResult>& services, const Stream* listed_under);

/// Tells letters, colour and pattern of a stream.
void set_mark(kainjow::mustache::data& object, const StreamMark& mark);

/// Tells where a stream is received.
void set_reception(kainjow::mustache::data& object, Stream stream, const Receptions& receptions);

/// What leads to a module, by its place in the result.
std::string module_anchor(std::size_t index);

/// Used and most of all outputs of a module.
struct Load {
    std::uint64_t used = 0;
    std::uint64_t max = 0;
};

Load load_of(const ModuleResult& module);

} // namespace zarven::tool

#endif
