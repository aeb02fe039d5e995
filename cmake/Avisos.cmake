# Our own targets build without a single warning; those who build from a tarball are not held to that.
function(recalculo_avisos target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
    # On ARM, g++ notes that it passes some arguments otherwise than version 6 did, which nobody here mixes.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_SYSTEM_PROCESSOR MATCHES "^arm")
        target_compile_options(${target} PRIVATE -Wno-psabi)
    endif()
endfunction()
