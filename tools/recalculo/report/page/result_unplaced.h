// The sections of the services without a place: left out, waiting, lost.

#ifndef RECALCULO_RESULT_UNPLACED_H
#define RECALCULO_RESULT_UNPLACED_H

#include <kainjow/mustache.hpp>

#include "placement/result.h"
#include "report/stream_marks.h"

namespace zarven::tool {

/// What a link names and what leads to it.
struct UnplacedSection {
    const char* anchor;
    const char* title;
};

inline constexpr UnplacedSection left_out_section{"left-out", "Left out"};
inline constexpr UnplacedSection waiting_section{"waiting", "Clones waiting"};
inline constexpr UnplacedSection neither_section{"neither", "Neither placed nor left out"};

/// One for each kind of which there are any.
kainjow::mustache::list unplaced_sections(const Result& result, const StreamMarks& marks);

} // namespace zarven::tool

#endif
