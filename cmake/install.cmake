# The home directory is the directory of the program: everything stands side by side in the prefix.
install(TARGETS gaugewell RUNTIME DESTINATION .)
install(CODE "
  execute_process(
    COMMAND \"${CMAKE_SOURCE_DIR}/desktop/updatehome\" \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\"
      \"${CMAKE_BINARY_DIR}/home\" \"${CMAKE_SOURCE_DIR}/home\"
    COMMAND_ERROR_IS_FATAL ANY)")
