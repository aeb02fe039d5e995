# What `cmake --install` puts in place: the library and its headers, what find_package and pkg-config need,
# and the tool if it was built.

# The headers include each other by plain name, so their folder is the one that callers get on their path.
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/recalculo FILES_MATCHING PATTERN "*.h")

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/recalculo)
install(TARGETS recalculo EXPORT recalculo)
install(EXPORT recalculo NAMESPACE zarven:: FILE recalculo-config.cmake DESTINATION ${package_dir})
configure_file(cmake/recalculo-config-version.cmake.in recalculo-config-version.cmake @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/recalculo-config-version.cmake DESTINATION ${package_dir})

file(RELATIVE_PATH to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
configure_file(cmake/recalculo.pc.in recalculo.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/recalculo.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(TARGET recalculo_cli)
    # So that the tool finds the library wherever the two are put together. It is linked with that path from the
    # start: one that is exchanged on installing leaves room behind it, as long as the name of the build folder is, and
    # an empty entry before it, for which the loader searches the current folder. In the build tree a link leads there.
    file(RELATIVE_PATH to_library /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
    set_target_properties(recalculo_cli PROPERTIES
        INSTALL_RPATH "$ORIGIN/${to_library}" BUILD_WITH_INSTALL_RPATH ON)
    get_target_property(beside recalculo_cli BINARY_DIR)
    get_filename_component(link ${beside}/${to_library} ABSOLUTE)
    get_filename_component(folder ${link} DIRECTORY)
    file(MAKE_DIRECTORY ${folder})
    file(CREATE_LINK ${PROJECT_BINARY_DIR} ${link} SYMBOLIC)
    install(TARGETS recalculo_cli)
    set(pages tools/recalculo/manual/pages)
    # The planner in the browser, if scripts/web.sh has built it.
    install(FILES build/web/recalculo.html DESTINATION ${CMAKE_INSTALL_DATADIR}/recalculo OPTIONAL)
    install(DIRECTORY ${pages}/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 FILES_MATCHING PATTERN "*.1")
    install(FILES ${pages}/recalculo.bash
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME recalculo)
    install(FILES ${pages}/recalculo.zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions RENAME _recalculo)
    install(FILES ${pages}/recalculo.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endif()
