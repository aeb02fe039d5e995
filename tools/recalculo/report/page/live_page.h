// The planner in the browser with a head-end inside: one file to send to somebody who has nothing installed.
// The page itself is built apart (web/); it has an empty place for the head-end.

#ifndef RECALCULO_LIVE_PAGE_H
#define RECALCULO_LIVE_PAGE_H

#include <string>

namespace zarven::tool {

/// Puts a head-end, as its file has it, into the page; `file` is for messages. Throws `Failure` if this is no
/// page of the planner, or one that has a head-end already.
std::string live_page(const std::string& file, const std::string& page, const std::string& headend);

} // namespace zarven::tool

#endif
