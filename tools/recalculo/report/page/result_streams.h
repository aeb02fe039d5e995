// The section of the streams, and the legend of the bars.

#ifndef RECALCULO_RESULT_STREAMS_H
#define RECALCULO_RESULT_STREAMS_H

#include <kainjow/mustache.hpp>

#include "placement/result.h"
#include "report/stream_marks.h"

namespace zarven::tool {

/// Each with what is placed of it and left out, and where it is received.
kainjow::mustache::list stream_entries(const Result& result, const StreamMarks& marks);

/// The streams that the bars can show.
kainjow::mustache::list legend_entries(const StreamMarks& marks);

} // namespace zarven::tool

#endif
