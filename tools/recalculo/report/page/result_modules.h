// The section of the modules: meters, a bar for each output, and the services of each input.

#ifndef RECALCULO_RESULT_MODULES_H
#define RECALCULO_RESULT_MODULES_H

#include <kainjow/mustache.hpp>

#include "placement/result.h"
#include "report/stream_marks.h"

namespace zarven::tool {

kainjow::mustache::list module_entries(const Result& result, const StreamMarks& marks);

} // namespace zarven::tool

#endif
