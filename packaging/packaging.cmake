# Install layout and the Debian package: the game in games/ of the prefix, its
# desktop entry, icons, AppStream metadata, manual page and documents, all named
# by one application id; `cpack` (make package) turns that tree into a .deb.
include(GNUInstallDirs)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(TALVEN_APP_ID io.github.talven.talven)
set(TALVEN_INSTALL_GAMESDIR games CACHE PATH "Where the game's executable goes, under the prefix")
set(TALVEN_MAINTAINER "The TALVEN authors <talven@example.org>" CACHE STRING "The package's maintainer")
set(TALVEN_ICON_SIZES 16 32 48 64 128 256)
set(TALVEN_PKG_DIR ${PROJECT_SOURCE_DIR}/packaging)
set(TALVEN_GEN_DIR ${PROJECT_BINARY_DIR}/packaging)

# The icon is the game's own art, drawn by the game's drawing code at build time.
find_package(PNG REQUIRED)
add_executable(talven_make_icons ${PROJECT_SOURCE_DIR}/tools/icons/make_icons.cpp)
target_link_libraries(talven_make_icons PRIVATE talven_lib PNG::PNG)
set(TALVEN_ICONS)
foreach(size IN LISTS TALVEN_ICON_SIZES)
  list(APPEND TALVEN_ICONS ${TALVEN_GEN_DIR}/icons/${size}x${size}/apps/${TALVEN_APP_ID}.png)
endforeach()
add_custom_command(OUTPUT ${TALVEN_ICONS}
  COMMAND talven_make_icons ${TALVEN_GEN_DIR}/icons ${TALVEN_APP_ID} ${TALVEN_ICON_SIZES}
  DEPENDS talven_make_icons
  COMMENT "Drawing the application icon")

# Texts that carry the id, the version or the release date.
execute_process(COMMAND date -u -R -d ${TALVEN_RELEASE_DATE}
  OUTPUT_VARIABLE TALVEN_RELEASE_DATE_RFC2822 OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file(${TALVEN_PKG_DIR}/talven.desktop.in ${TALVEN_GEN_DIR}/${TALVEN_APP_ID}.desktop @ONLY)
configure_file(${TALVEN_PKG_DIR}/talven.metainfo.xml.in ${TALVEN_GEN_DIR}/${TALVEN_APP_ID}.metainfo.xml @ONLY)
configure_file(${TALVEN_PKG_DIR}/talven.6.in ${TALVEN_GEN_DIR}/talven.6 @ONLY)
configure_file(${TALVEN_PKG_DIR}/changelog.in ${TALVEN_GEN_DIR}/changelog @ONLY)

# Debian ships manual pages and changelogs compressed, without a time stamp.
find_program(GZIP gzip REQUIRED)
set(TALVEN_GZIPPED)
foreach(name talven.6 changelog)
  add_custom_command(OUTPUT ${TALVEN_GEN_DIR}/${name}.gz
    COMMAND ${GZIP} -9 -n -c ${TALVEN_GEN_DIR}/${name} > ${TALVEN_GEN_DIR}/${name}.gz
    DEPENDS ${TALVEN_GEN_DIR}/${name})
  list(APPEND TALVEN_GZIPPED ${TALVEN_GEN_DIR}/${name}.gz)
endforeach()
add_custom_target(talven_install_files ALL DEPENDS ${TALVEN_ICONS} ${TALVEN_GZIPPED})
add_dependencies(talven_tests talven_install_files)
target_link_libraries(talven_tests PRIVATE PNG::PNG)
target_compile_definitions(talven_tests PRIVATE
  TALVEN_ICONS_DIR="${TALVEN_GEN_DIR}/icons" TALVEN_APP_ID="${TALVEN_APP_ID}")

install(TARGETS talven RUNTIME DESTINATION ${TALVEN_INSTALL_GAMESDIR})
install(FILES ${TALVEN_GEN_DIR}/${TALVEN_APP_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${TALVEN_GEN_DIR}/${TALVEN_APP_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(DIRECTORY ${TALVEN_GEN_DIR}/icons/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${TALVEN_GEN_DIR}/talven.6.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/LICENSE ${TALVEN_PKG_DIR}/copyright
              ${TALVEN_GEN_DIR}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/talven)

# The install tree against its expected file list, and each validator (skipped when
# it is not installed).
set(TALVEN_CHECK ${TALVEN_PKG_DIR}/check.sh)
add_test(NAME install_tree
  COMMAND ${TALVEN_CHECK} tree ${PROJECT_BINARY_DIR} ${TALVEN_PKG_DIR}/installed-files.txt ${PROJECT_VERSION})
add_test(NAME validate_desktop_entry COMMAND ${TALVEN_CHECK} desktop ${TALVEN_GEN_DIR}/${TALVEN_APP_ID}.desktop)
add_test(NAME validate_metainfo COMMAND ${TALVEN_CHECK} metainfo ${TALVEN_GEN_DIR}/${TALVEN_APP_ID}.metainfo.xml)
add_test(NAME validate_manual_page COMMAND ${TALVEN_CHECK} manpage ${TALVEN_GEN_DIR}/talven.6)
set_tests_properties(validate_desktop_entry validate_metainfo validate_manual_page PROPERTIES SKIP_RETURN_CODE 77)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME talven)
set(CPACK_PACKAGE_VENDOR "The TALVEN authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "2D sandbox game: dig, build, craft and survive underground")
set(CPACK_PACKAGE_DESCRIPTION [[
A small single-player side-view sandbox game. Dig through a seeded
underground world of 512 by 160 tiles, collect blocks and ores, craft tools
and building blocks, build, and fight the creatures that come out at night.
The world is kept in one save file.]])
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${TALVEN_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
