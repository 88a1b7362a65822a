# What an installation holds besides the programs, the manual and the template: the menu
# entry, the icon, the race log file type, the software centre entry, the manual pages and
# the Debian documents; and the Debian package CPack makes of it all.
#   cmake --install <build> --prefix /usr/local
#   cpack -G DEB          (in the build folder)
# One reverse-DNS name ties the desktop file, the icon, the file type and the metainfo
# together; the software centre and the desktop find each by it.
set(TARNWICK_APP_ID org.tarnwick.Tarnwick)
set(TARNWICK_CONTACT "Tarnwick Developers <developers@tarnwick.example.org>")
set(TARNWICK_HOMEPAGE "https://tarnwick.example.org")

# Debian keeps a package's documents under the package's own name, which is lower case.
set(TARNWICK_DOCDIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/tarnwick)

set(packaging_source ${PROJECT_SOURCE_DIR}/packaging)
set(packaging_build ${PROJECT_BINARY_DIR}/packaging)

install(FILES ${packaging_source}/${TARNWICK_APP_ID}.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging_source}/${TARNWICK_APP_ID}.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${packaging_source}/${TARNWICK_APP_ID}.mime.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME ${TARNWICK_APP_ID}.xml)
configure_file(${packaging_source}/${TARNWICK_APP_ID}.metainfo.xml
               ${packaging_build}/${TARNWICK_APP_ID}.metainfo.xml @ONLY)
install(FILES ${packaging_build}/${TARNWICK_APP_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${packaging_source}/copyright DESTINATION ${TARNWICK_DOCDIR})
# What lintian notes about the package on purpose, each with its reason.
install(FILES ${packaging_source}/lintian-overrides
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME tarnwick)

# The manual pages and the changelog go in compressed, the way Debian keeps them: gzip -9n,
# so the same sources always give the same bytes (no name or time stamp inside).
set(compressed "")
foreach(page tarnwick oskerby pellamor-sim)
    configure_file(${packaging_source}/man/${page}.1 ${packaging_build}/${page}.1 @ONLY)
    list(APPEND compressed ${page}.1)
endforeach()
configure_file(${packaging_source}/changelog ${packaging_build}/changelog @ONLY)
list(APPEND compressed changelog)
set(compressed_outputs "")
foreach(name IN LISTS compressed)
    add_custom_command(
        OUTPUT ${packaging_build}/${name}.gz
        COMMAND sh -c "gzip -9n -c '${name}' > '${name}.gz'"
        DEPENDS ${packaging_build}/${name}
        WORKING_DIRECTORY ${packaging_build}
        VERBATIM)
    list(APPEND compressed_outputs ${packaging_build}/${name}.gz)
endforeach()
add_custom_target(tarnwick_package_files ALL DEPENDS ${compressed_outputs})
foreach(page tarnwick oskerby pellamor-sim)
    install(FILES ${packaging_build}/${page}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
install(FILES ${packaging_build}/changelog.gz DESTINATION ${TARNWICK_DOCDIR})

# Where people look for documentation; the program itself reads the manual from its data
# folder, which stays whole even when a system leaves out /usr/share/doc.
file(RELATIVE_PATH manual_from_doc ${CMAKE_INSTALL_PREFIX}/${TARNWICK_DOCDIR}
     ${CMAKE_INSTALL_FULL_DATADIR}/tarnwick/manual)
file(CREATE_LINK ${manual_from_doc} ${packaging_build}/manual SYMBOLIC)
install(FILES ${packaging_build}/manual DESTINATION ${TARNWICK_DOCDIR})

# The Debian package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarnwick)
set(CPACK_PACKAGE_VENDOR "Tarnwick Developers")
set(CPACK_PACKAGE_CONTACT "${TARNWICK_CONTACT}")
set(CPACK_PACKAGE_HOMEPAGE_URL "${TARNWICK_HOMEPAGE}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "track weather, race logs and ET predictions for drag racing")
# CPack puts the summary first and indents the rest; an empty line becomes a paragraph break.
set(CPACK_PACKAGE_DESCRIPTION
    "Tarnwick shows the live weather a Pellamor instrument sends over a serial
port or over the network, and writes a daily weather log. Its race logs keep
one car at one event, one row per run with its timing marks and weather.
From a reference run and the live adjusted altitude every open race log
predicts the elapsed time the car should run now and the throttle-stop
setting for a target time, and pages it to the team.

The package also holds the relay oskerby, which shares the live weather with
display instances, and the instrument simulator pellamor-sim.")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# The libraries come from dpkg-shlibdeps; race logs need the SQLite driver and the tools'
# pictures the SVG plug-in, both of which Qt loads as plug-ins, and printed pages use the
# Liberation fonts.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, libqt6svg6, fonts-liberation")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core")
# Folders 0755 whatever the umask of whoever builds the package.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
