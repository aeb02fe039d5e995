// The files that the pages are made of, which the build puts into the program (page_files.cpp.in).

#ifndef RECALCULO_PAGE_FILES_H
#define RECALCULO_PAGE_FILES_H

namespace zarven::tool {

/// What stands around the content of every page, and the contents.
extern const char* const page_frame_template;
extern const char* const result_page_template;
/// A part of the page of a result.
extern const char* const service_lists_template;
extern const char* const comparison_page_template;
extern const char* const choice_page_template;
extern const char* const drill_page_template;
extern const char* const page_style;
extern const char* const page_script;
/// What the page's security policy lets pass: SHA-256 of the two above, in base 64.
extern const char* const page_style_hash;
extern const char* const page_script_hash;

} // namespace zarven::tool

#endif
