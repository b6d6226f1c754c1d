# Installs the program and its home into the same folder, the prefix.
install(TARGETS gaugewell RUNTIME DESTINATION .)
install(CODE "
  execute_process(
    COMMAND \"${CMAKE_SOURCE_DIR}/desktop/updatehome\" \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\"
      \"${CMAKE_BINARY_DIR}/home\" \"${CMAKE_SOURCE_DIR}/home\"
    COMMAND_ERROR_IS_FATAL ANY)")
