// Tells the page how far the work is, in the words of the tool's line of progress.

#ifndef RECALCULO_WEB_PROGRESS_H
#define RECALCULO_WEB_PROGRESS_H

#include "report/progress_line.h"

namespace zarven::web {

/// A line that the page shows. As on a terminal it begins after half a second and changes ten times a second.
tool::DrawnLine::Means means_of_page();

} // namespace zarven::web

#endif
