# What "cmake --install" puts where, and the packages made of it. Each path is relative to the prefix, so
# the whole can be moved: the tool finds the library, and the two package files find the header, from
# where they are themselves.
include(CMakePackageConfigHelpers)

# Installing and packaging take what is built, and build nothing.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Vek)
install(TARGETS Vek EXPORT VekTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES exports/vek.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT VekTargets NAMESPACE Vek:: FILE VekConfig.cmake DESTINATION ${package_folder})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/VekConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/VekConfigVersion.cmake DESTINATION ${package_folder})

file(RELATIVE_PATH VEK_PREFIX_FROM_PC /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" VEK_PREFIX_FROM_PC ${VEK_PREFIX_FROM_PC})
configure_file(cmake/vek.pc.in ${CMAKE_BINARY_DIR}/vek.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/vek.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(TARGET vek)
    install(TARGETS vek vek-validate RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(DIRECTORY ${CMAKE_BINARY_DIR}/apps demo DESTINATION ${CMAKE_INSTALL_DATADIR}/vek
        USE_SOURCE_PERMISSIONS)
    install(DIRECTORY apps/python/vek_exchange DESTINATION ${CMAKE_INSTALL_DATADIR}/vek/python
        PATTERN __pycache__ EXCLUDE)
    install(PROGRAMS scripts/private-view DESTINATION ${CMAKE_INSTALL_DATADIR}/vek)
endif()
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/vek)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/vek RENAME copyright)

set(CPACK_PACKAGE_NAME vek)
set(CPACK_PACKAGE_VENDOR "Vek")
set(CPACK_PACKAGE_CONTACT "Vek developers <vek@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Bridge between a sculpting host and other 3-D applications")
set(CPACK_PACKAGE_DESCRIPTION "The plug-in library that carries meshes between the sculpting \
application Dorvia and other 3-D applications, the tool vek, and the target applications that ship \
with them.")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
if(APPLE)
    set(CPACK_GENERATOR ZIP)
else()
    set(CPACK_GENERATOR DEB)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    # Where it is there, the demo needs no shared tree.
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS bubblewrap)
endif()
include(CPack)
