// The files that a page is made of, which the build puts into the program (page_files.cpp.in).

#ifndef RECALCULO_PAGE_FILES_H
#define RECALCULO_PAGE_FILES_H

namespace zarven::tool {

extern const char* const page_template;
extern const char* const page_style;
extern const char* const page_script;
/// What the page's security policy lets pass: SHA-256 of the two above, in base 64.
extern const char* const page_style_hash;
extern const char* const page_script_hash;

} // namespace zarven::tool

#endif
