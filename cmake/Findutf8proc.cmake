# libutf8proc, of which Debian has no CMake package: gives utf8proc::utf8proc.
if(NOT TARGET utf8proc::utf8proc)
    find_path(utf8proc_INCLUDE_DIR utf8proc.h)
    find_library(utf8proc_LIBRARY utf8proc)
    mark_as_advanced(utf8proc_INCLUDE_DIR utf8proc_LIBRARY)
    include(FindPackageHandleStandardArgs)
    find_package_handle_standard_args(utf8proc REQUIRED_VARS utf8proc_LIBRARY utf8proc_INCLUDE_DIR)
    if(utf8proc_FOUND)
        add_library(utf8proc::utf8proc UNKNOWN IMPORTED)
        set_target_properties(utf8proc::utf8proc PROPERTIES
            IMPORTED_LOCATION ${utf8proc_LIBRARY}
            INTERFACE_INCLUDE_DIRECTORIES ${utf8proc_INCLUDE_DIR})
    endif()
endif()
