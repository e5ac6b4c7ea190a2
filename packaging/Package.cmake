# Where everything goes on the user's machine, and the Debian package made of it.
# Program, libraries, plug-in and report file stay together in a folder of their own, as they lie when they are built:
# the host looks for its plug-ins beside itself.
include(GNUInstallDirs)
set(OWN_FOLDER ${CMAKE_INSTALL_LIBDIR}/corvane)
set(DOC_FOLDER ${CMAKE_INSTALL_DATADIR}/doc/modulo-magazzino)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)

set_target_properties(corvane platform host Magazzino PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS corvane platform host Magazzino
    RUNTIME DESTINATION ${OWN_FOLDER}
    LIBRARY DESTINATION ${OWN_FOLDER}
    PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
install(FILES magazzino/reports/Magazzino.rav DESTINATION ${OWN_FOLDER})
install(CODE "
    file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(CREATE_LINK ../${OWN_FOLDER}/corvane
         \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/corvane\" SYMBOLIC)")

set(APP it.corvane.Corvane)
configure_file(packaging/${APP}.metainfo.xml.in packaging/${APP}.metainfo.xml @ONLY)
install(FILES packaging/${APP}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_BINARY_DIR}/packaging/${APP}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES packaging/${APP}.mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME ${APP}.xml)
install(FILES packaging/corvane.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
    RENAME ${APP}.svg)
install(FILES docs/manuale.md DESTINATION ${CMAKE_INSTALL_DATADIR}/corvane/manuale)
install(DIRECTORY docs/images DESTINATION ${CMAKE_INSTALL_DATADIR}/corvane/manuale)
install(FILES packaging/copyright DESTINATION ${DOC_FOLDER})

# Debian wants these compressed, and without a time inside, so that a build can be repeated to the bit.
add_custom_target(packed_texts ALL)
function(install_compressed source folder name)
    set(packed ${CMAKE_BINARY_DIR}/packaging/${folder}/${name}.gz)
    add_custom_command(TARGET packed_texts
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/packaging/${folder}
        COMMAND gzip -9nc ${CMAKE_SOURCE_DIR}/${source} > ${packed} VERBATIM)
    install(FILES ${packed} DESTINATION ${folder})
endfunction()
install_compressed(packaging/corvane.1 ${CMAKE_INSTALL_MANDIR}/man1 corvane.1)
install_compressed(packaging/corvane.it.1 ${CMAKE_INSTALL_MANDIR}/it/man1 corvane.1)
install_compressed(packaging/changelog ${DOC_FOLDER} changelog)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME modulo-magazzino)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Corvane <assistenza@corvane.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "warehouse, delivery notes and invoices of a small firm")
set(CPACK_PACKAGE_DESCRIPTION "Goods receipts, delivery notes, accompanying invoices and stock movements
valued at average cost, with inventories, reorder lists, print and PDF.
The database is a file, or lies on a Firebird server that several
workstations share. The interface is Italian.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/bin)
# What is loaded or started by name, which linking does not tell: the embedded engine, gbak, the ODBC driver, the way to
# the keyring, the style of icons, Qt's Italian texts, the fonts of the prints.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "firebird3.0-server-core, firebird3.0-utils, libqt6sql6-odbc, libqt6svg6, \
libsecret-1-0, breeze-icon-theme, qt6-translations-l10n, fonts-dejavu-core, fonts-liberation2, xdg-utils")
include(CPack)
