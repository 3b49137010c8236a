# pagora_folder(<name> [<target it builds on>...]): one static library per source folder. Targets decide who may include
# whom: a controller's target never links the toolkit, so it cannot include it.
#
# pagora_toolkit_folder(<name> [<target>...]): the same for a folder's gtk/ part, which may use gtkmm and WebKitGTK.

function(pagora_folder name)
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp")
  list(FILTER sources EXCLUDE REGEX "/(main|pagora-defaults|pagora-inspect|pagora-picture)\\.cpp$")
  add_library(pagora_${name} STATIC ${sources})
  target_include_directories(pagora_${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(pagora_${name} PUBLIC ${ARGN})
endfunction()

function(pagora_toolkit_folder name)
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${name}/gtk/*.cpp")
  add_library(pagora_${name}_gtk STATIC ${sources})
  target_include_directories(pagora_${name}_gtk PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(pagora_${name}_gtk PUBLIC ${ARGN} PkgConfig::GTKMM PkgConfig::WEBKIT PkgConfig::FONTCONFIG)
  if(name STREQUAL "platform")
    target_precompile_headers(pagora_${name}_gtk PRIVATE <gtkmm.h> <webkit/webkit.h> <functional> <memory> <string>
                              <unordered_map> <vector>)
  else()
    target_precompile_headers(pagora_${name}_gtk REUSE_FROM pagora_platform_gtk)
  endif()
endfunction()
