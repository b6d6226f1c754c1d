# Read by cpack for each kind of package: the archive unpacks into one folder, a .deb has no such folder.
if(CPACK_GENERATOR STREQUAL TGZ)
  set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
endif()
