# WebAssembly, by Debian's emscripten. Its headers must not be mixed with this machine's, so the libraries that are
# headers alone are linked into a folder of their own.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)

set(RECALCULO_WEB_HEADERS ${CMAKE_BINARY_DIR}/headers)
if(NOT CMAKE_BINARY_DIR MATCHES "/CMakeFiles/")
    file(MAKE_DIRECTORY ${RECALCULO_WEB_HEADERS})
    foreach(library fmt kainjow nlohmann)
        if(NOT EXISTS /usr/include/${library})
            message(FATAL_ERROR "/usr/include/${library} is missing; scripts/web.sh installs it")
        endif()
        file(CREATE_LINK /usr/include/${library} ${RECALCULO_WEB_HEADERS}/${library} SYMBOLIC)
    endforeach()
endif()
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES RECALCULO_WEB_HEADERS)
include_directories(SYSTEM ${RECALCULO_WEB_HEADERS})
list(APPEND CMAKE_REQUIRED_INCLUDES ${RECALCULO_WEB_HEADERS})
