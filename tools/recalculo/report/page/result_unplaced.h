// The sections of the services without a place: left out, waiting, lost.

#ifndef RECALCULO_RESULT_UNPLACED_H
#define RECALCULO_RESULT_UNPLACED_H

#include <kainjow/mustache.hpp>

#include "placement/result.h"
#include "report/stream_marks.h"

namespace zarven::tool {

/// One for each kind of which there are any.
kainjow::mustache::list unplaced_sections(const Result& result, const StreamMarks& marks);

} // namespace zarven::tool

#endif
