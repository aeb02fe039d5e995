# Our own targets build without a single warning; those who build from a tarball are not held to that.
option(RECALCULO_WARNINGS "Build with our own choice of warnings" ${RECALCULO_DEVELOPER})
option(RECALCULO_WERROR "Make warnings errors, as the presets do" OFF)

set(RECALCULO_AVISOS -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(RECALCULO_WERROR)
    list(APPEND RECALCULO_AVISOS -Werror)
endif()
# On ARM, g++ notes that it passes some arguments otherwise than version 6 did, which nobody here mixes.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_SYSTEM_PROCESSOR MATCHES "^arm")
    list(APPEND RECALCULO_AVISOS -Wno-psabi)
endif()

function(recalculo_avisos target)
    if(RECALCULO_WARNINGS)
        target_compile_options(${target} PRIVATE ${RECALCULO_AVISOS})
    endif()
endfunction()
