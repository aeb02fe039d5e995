# The JSON library for the page: headers alone, which cmake/toolchains/web.cmake has put where they are found.
if(NOT TARGET nlohmann_json::nlohmann_json)
    add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED GLOBAL)
endif()
set(nlohmann_json_FOUND TRUE)
