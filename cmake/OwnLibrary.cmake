# add_own_library(NAME USER SOURCES... LIBRARIES...): libtarvex-NAME.so, which holds what few runs of a
# program need and much stands behind: its functions are called by OwnFunction(), and every start is
# spared the libraries. It is built with USER, whose programs call them.
function(add_own_library name user)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    set(library tarvex-${name})
    add_library(${library} MODULE ${ARG_SOURCES})
    set_target_properties(${library} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
    target_link_libraries(${library} PRIVATE tarvex_warnings ${ARG_LIBRARIES}
        -Wl,--push-state,--no-as-needed -l:libc.so.6 -Wl,--pop-state) # as any library, though one may call nothing there
    add_dependencies(${user} ${library})
    install(TARGETS ${library} DESTINATION ${CMAKE_INSTALL_LIBDIR}/tarvex)
endfunction()
