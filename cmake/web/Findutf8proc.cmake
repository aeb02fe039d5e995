# What the tool asks of libutf8proc, answered by the browser: see web/unicode.
if(NOT TARGET utf8proc::utf8proc)
    add_library(utf8proc::utf8proc INTERFACE IMPORTED GLOBAL)
    set_target_properties(utf8proc::utf8proc PROPERTIES
        INTERFACE_INCLUDE_DIRECTORIES ${PROJECT_SOURCE_DIR}/web/unicode)
endif()
set(utf8proc_FOUND TRUE)
