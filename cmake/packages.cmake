# The packages (cpack -G DEB, cpack -G TGZ): the program, its launcher, and the files that the launcher copies to the
# user's home. All belong to the component "package", which the install of install.cmake excludes.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(packaged COMPONENT package EXCLUDE_FROM_ALL)
install(TARGETS gaugewell RUNTIME DESTINATION lib/gaugewell ${packaged})
install(PROGRAMS desktop/updatehome DESTINATION lib/gaugewell ${packaged})
install(PROGRAMS desktop/gaugewell.sh DESTINATION bin RENAME gaugewell ${packaged})
install(FILES ${CMAKE_BINARY_DIR}/home/Tallywell.mdb ${CMAKE_BINARY_DIR}/home/server.sql
  DESTINATION share/gaugewell ${packaged})
install(PROGRAMS tools/makeserverstore.sh DESTINATION share/gaugewell ${packaged})
install(DIRECTORY home/ DESTINATION share/gaugewell ${packaged}
  FILES_MATCHING PATTERN *.rpt PATTERN template.xls PATTERN *.HLP PATTERN *.pps PATTERN slides/*.png)
install(FILES desktop/gaugewell.svg DESTINATION share/icons/hicolor/scalable/apps ${packaged})
install(FILES desktop/gaugewell.desktop DESTINATION share/applications ${packaged})
install(FILES desktop/io.github.gaugewell.Gaugewell.metainfo.xml DESTINATION share/metainfo ${packaged})
install(FILES LICENSE DESTINATION share/doc/gaugewell RENAME copyright ${packaged})
install(FILES docs/server.md docs/cluster.md DESTINATION share/doc/gaugewell ${packaged})

set(CPACK_GENERATOR DEB TGZ)
set(CPACK_COMPONENTS_ALL package)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_SOURCE_DIR}/cmake/archive.cmake)
set(CPACK_PACKAGE_FILE_NAME gaugewell-${PROJECT_VERSION}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_VENDOR Gaugewell)
set(CPACK_PACKAGE_CONTACT "Gaugewell developers <gaugewell@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "measure customer satisfaction and how it changes")
set(CPACK_COMPONENT_PACKAGE_DESCRIPTION
  "Gaugewell keeps customers and their respondents, composes questionnaires,
sends them as spreadsheet files, reads the answers, and shows the
Satisfaction Index of each parameter over the survey dates. It prints
reports and follows the actions of improvement.")
set(CPACK_DEBIAN_PACKAGE_PACKAGE_NAME gaugewell)
set(CPACK_DEBIAN_PACKAGE_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, fonts-dejavu-core, libsecret-1-0")
set(CPACK_ARCHIVE_PACKAGE_FILE_NAME ${CPACK_PACKAGE_FILE_NAME})
include(CPack)
