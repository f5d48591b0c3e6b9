# "cmake --build build/release --target package": a Debian package of the programs without their debug
# symbols, and one of these. "--target package-rpm": the programs for Fedora and its like, where
# rpmbuild is installed. The libraries are those of the system on which it is built.
set(contact "The Tarvex authors <${TARVEX_SUPPORT_ADDRESS}>")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarvex)
set(CPACK_PACKAGE_CONTACT ${contact})
set(CPACK_PACKAGE_VENDOR "The Tarvex authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "benchmark for every number of a machine's processors")
set(CPACK_PACKAGE_DESCRIPTION
"Tarvex measures graphics, strings, memory, arithmetic and the disk with all
processors and then with one fewer after the other: as root it really
switches them off meanwhile, and on again however it ends.
.
The program tarvex shows the rates in windows and compares machines in a
chart. The program tarvex-run does the same in a terminal, measures as often
as a figure needs, and says which differences between runs are real.")
execute_process(COMMAND dpkg --print-architecture
    OUTPUT_VARIABLE CPACK_DEBIAN_PACKAGE_ARCHITECTURE OUTPUT_STRIP_TRAILING_WHITESPACE)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_PACKAGE_HOMEPAGE_URL ${TARVEX_MAKER_PAGE})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# The libraries' packages are found by what the programs load. Beside them: the plugin that Qt shows
# windows with, the types of files, a typeface, and the tools that are started.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "qt6-qpa-plugins, shared-mime-info, hicolor-icon-theme, fonts-dejavu-core, zip, unzip, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "pci.ids")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "default-mta | mail-transport-agent, xwayland")

set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE none) # finish-packages packs them

# rpmbuild finds the libraries itself; the rest is the same as above, as Fedora calls it.
set(CPACK_RPM_FILE_NAME RPM-DEFAULT)
set(CPACK_RPM_PACKAGE_LICENSE "MIT AND BSD-3-Clause")
set(CPACK_RPM_PACKAGE_GROUP "Applications/System")
set(CPACK_RPM_PACKAGE_URL ${TARVEX_MAKER_PAGE})
string(REPLACE "\n.\n" "\n\n" CPACK_RPM_PACKAGE_DESCRIPTION "${CPACK_PACKAGE_DESCRIPTION}")
set(CPACK_RPM_PACKAGE_REQUIRES
    "qt6-qtbase-gui, shared-mime-info, hicolor-icon-theme, dejavu-sans-fonts, zip, unzip, xdg-utils")
set(CPACK_RPM_PACKAGE_SUMMARY "Benchmark for every number of a machine's processors")
set(CPACK_RPM_SPEC_MORE_DEFINE "%define _build_id_links none
%define packager ${contact}")
# Folders of others.
set(folders applications bash-completion bash-completion/completions doc fish
    fish/vendor_completions.d icons icons/hicolor man man/man1 man/man5 metainfo zsh
    zsh/vendor-completions)
foreach(size 16x16 22x22 24x24 32x32 48x48 64x64 128x128 256x256 scalable symbolic)
    list(APPEND folders icons/hicolor/${size} icons/hicolor/${size}/apps)
endforeach()
list(TRANSFORM folders PREPEND /usr/share/ OUTPUT_VARIABLE CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION)

set(changelog ${CMAKE_BINARY_DIR}/changelog)
add_custom_command(OUTPUT ${changelog}.gz
    COMMAND awk -v contact=${contact} -f ${CMAKE_CURRENT_LIST_DIR}/changelog.awk
        ${CMAKE_SOURCE_DIR}/CHANGELOG.md > ${changelog}
    COMMAND gzip -9nf ${changelog}
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/changelog.awk CHANGELOG.md VERBATIM)
add_custom_target(changelog DEPENDS ${changelog}.gz)
add_dependencies(tarvex changelog) # whoever has built the programs may install
install(FILES ${changelog}.gz DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tarvex)

# CPack's own target would build all tests before; it comes with the usual name of this file only.
set(CPACK_OUTPUT_CONFIG_FILE ${CMAKE_BINARY_DIR}/Package.cmake)
add_custom_target(package
    COMMAND ${CMAKE_CPACK_COMMAND} --config ${CPACK_OUTPUT_CONFIG_FILE}
    COMMAND ${CMAKE_CURRENT_LIST_DIR}/finish-packages ${CMAKE_BINARY_DIR}
    DEPENDS tarvex tarvex-run VERBATIM USES_TERMINAL)
add_custom_target(package-rpm
    COMMAND ${CMAKE_CPACK_COMMAND} --config ${CPACK_OUTPUT_CONFIG_FILE} -G RPM
        -D CPACK_STRIP_FILES=ON
    DEPENDS tarvex tarvex-run VERBATIM USES_TERMINAL)
include(CPack)
