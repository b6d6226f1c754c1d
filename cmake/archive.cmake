# Read by cpack for each generator: only the archive has a top-level folder.
if(CPACK_GENERATOR STREQUAL TGZ)
  set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
endif()
