# Our own targets build without a single warning; those who build from a tarball are not held to that.
option(RECALCULO_WERROR "Make warnings errors, as the presets do" OFF)

function(recalculo_avisos target)
    if(NOT RECALCULO_DEVELOPER)
        return()
    endif()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(RECALCULO_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    # On ARM, g++ notes that it passes some arguments otherwise than version 6 did, which nobody here mixes.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_SYSTEM_PROCESSOR MATCHES "^arm")
        target_compile_options(${target} PRIVATE -Wno-psabi)
    endif()
endfunction()
