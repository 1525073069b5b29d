# What "cmake --install" puts where, and the packages made of it. Each path is relative to the prefix, so
# the whole can be moved: the tool finds the library, and the two package files find the header, from
# where they are themselves.
include(CMakePackageConfigHelpers)

# Installing and packaging take what is built, and build nothing. Everybody can read the files that are
# installed, whoever may read the sources, and whatever the mask of who installs.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
set(readable OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
set(executable ${readable} OWNER_EXECUTE GROUP_EXECUTE WORLD_EXECUTE)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Vek)
set(docs_folder ${CMAKE_INSTALL_DATAROOTDIR}/doc/vek)

# Folders on the way to a file are made with the mask. Those that are not there yet are noted before
# anything is installed, and opened at the end; a folder that was there keeps what its owner gave it.
install(CODE "
    set(vek_made)
    foreach(folder ${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_INCLUDEDIR} ${package_folder}
            ${CMAKE_INSTALL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_DATADIR}/vek/python ${docs_folder})
        set(folder \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/\${folder}\")
        while(NOT IS_DIRECTORY \${folder})
            list(APPEND vek_made \${folder})
            get_filename_component(folder \${folder} DIRECTORY)
        endwhile()
    endforeach()")
install(TARGETS Vek EXPORT VekTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES exports/vek.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT VekTargets NAMESPACE Vek:: FILE VekConfig.cmake DESTINATION ${package_folder})
# A library for both word sizes serves projects of either.
list(LENGTH vek_families families)
set(for_both)
if(families GREATER 1 OR VEK_I386_LIBRARY)
    set(for_both ARCH_INDEPENDENT)
endif()
write_basic_package_version_file(${CMAKE_BINARY_DIR}/VekConfigVersion.cmake
    COMPATIBILITY SameMinorVersion ${for_both})
install(FILES ${CMAKE_BINARY_DIR}/VekConfigVersion.cmake DESTINATION ${package_folder})

file(RELATIVE_PATH VEK_PREFIX_FROM_PC /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" VEK_PREFIX_FROM_PC ${VEK_PREFIX_FROM_PC})
configure_file(cmake/vek.pc.in ${CMAKE_BINARY_DIR}/vek.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/vek.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(TARGET vek)
    install(TARGETS vek vek-validate RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(DIRECTORY ${CMAKE_BINARY_DIR}/apps demo DESTINATION ${CMAKE_INSTALL_DATADIR}/vek
        FILE_PERMISSIONS ${readable} DIRECTORY_PERMISSIONS ${executable}
        REGEX "/(MacOS|stand-ins)/[^/]+$|\\.sh$" PERMISSIONS ${executable})
    install(DIRECTORY apps/python/vek_exchange DESTINATION ${CMAKE_INSTALL_DATADIR}/vek/python
        FILE_PERMISSIONS ${readable} DIRECTORY_PERMISSIONS ${executable}
        PATTERN __pycache__ EXCLUDE)
    install(PROGRAMS scripts/private-view DESTINATION ${CMAKE_INSTALL_DATADIR}/vek)
endif()
install(FILES README.md CHANGELOG.md SECURITY.md DESTINATION ${docs_folder})
install(DIRECTORY docs DESTINATION ${docs_folder}
    FILE_PERMISSIONS ${readable} DIRECTORY_PERMISSIONS ${executable})
install(FILES LICENSE DESTINATION ${docs_folder} RENAME copyright)
install(CODE "
    foreach(folder \${vek_made})
        if(IS_DIRECTORY \${folder})
            file(CHMOD \${folder} PERMISSIONS ${executable})
        endif()
    endforeach()")

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
