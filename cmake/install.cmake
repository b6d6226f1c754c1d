# The home directory is the directory of the program: everything stands side by side in the prefix.
install(TARGETS gaugewell RUNTIME DESTINATION .)
install(CODE "
  set(built_home \"${CMAKE_BINARY_DIR}/home\")
  set(source_home \"${CMAKE_SOURCE_DIR}/home\")
  include(\"${CMAKE_SOURCE_DIR}/cmake/install_home.cmake\")")
