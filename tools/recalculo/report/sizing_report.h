// What to change so that everything fits, for a person and for a program.

#ifndef RECALCULO_SIZING_REPORT_H
#define RECALCULO_SIZING_REPORT_H

#include <string>

#include "placement/sizing.h"
#include "report/terminal.h"

namespace zarven::tool {

/// A summary line, the answer for further modules with all that was tried, and the limits worth raising; by
/// default as for a file, in UTF-8.
std::string sizing_text(const Sizing& sizing, const TextStyle& style = {});

/// The same facts as indented JSON, described in docs/tool.md.
std::string sizing_json(const Sizing& sizing);

} // namespace zarven::tool

#endif
