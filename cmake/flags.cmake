# Language level, warnings and Qt restrictions of all targets.
add_library(gaugewell_flags INTERFACE)
target_compile_features(gaugewell_flags INTERFACE cxx_std_20)
target_compile_options(gaugewell_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual
  $<$<BOOL:${GAUGEWELL_WERROR}>:-Werror>)
target_compile_definitions(gaugewell_flags INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_CONTEXTLESS_CONNECT QT_NO_KEYWORDS QT_USE_QSTRINGBUILDER
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(GAUGEWELL_SANITIZE)
  target_compile_options(gaugewell_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(gaugewell_flags INTERFACE -fsanitize=address,undefined)
  find_program(GAUGEWELL_MOLD mold) # links these large programs several times as fast
  if(GAUGEWELL_MOLD)
    target_link_options(gaugewell_flags INTERFACE -fuse-ld=mold)
  endif()
endif()

# gaugewell_platform_library(NAME): adds a static library of the sources in the current folder.
function(gaugewell_platform_library name)
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC gaugewell_flags)
endfunction()
