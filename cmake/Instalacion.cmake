# What `cmake --install` puts in place: the library and its headers, what find_package and pkg-config need,
# and the tool if it was built.
include(CMakePackageConfigHelpers)

# The headers include each other by plain name, so their folder is the one that callers get on their path.
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/recalculo FILES_MATCHING PATTERN "*.h")

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/recalculo)
install(TARGETS recalculo EXPORT recalculo)
install(EXPORT recalculo NAMESPACE zarven:: FILE recalculo-config.cmake DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/recalculo-config-version.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/recalculo-config-version.cmake DESTINATION ${package_dir})

# Written on installing, because `cmake --install --prefix` may name another prefix than the configuration did.
foreach(name IN ITEMS
        CMAKE_CURRENT_SOURCE_DIR CMAKE_CURRENT_BINARY_DIR CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_INCLUDEDIR
        PROJECT_VERSION PROJECT_DESCRIPTION)
    install(CODE "set(${name} [[${${name}}]])")
endforeach()
install(CODE [[
    configure_file(${CMAKE_CURRENT_SOURCE_DIR}/cmake/recalculo.pc.in ${CMAKE_CURRENT_BINARY_DIR}/recalculo.pc @ONLY)
]])
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/recalculo.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(TARGET recalculo_cli)
    # So that the tool finds the library wherever the two are put together.
    file(RELATIVE_PATH to_library /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
    set_target_properties(recalculo_cli PROPERTIES INSTALL_RPATH "$ORIGIN/${to_library}")
    install(TARGETS recalculo_cli)
    set(pages tools/recalculo/manual/pages)
    install(DIRECTORY ${pages}/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 FILES_MATCHING PATTERN "*.1")
    install(FILES ${pages}/recalculo.bash
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME recalculo)
endif()
