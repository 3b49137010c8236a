# pagora_room(<name> [<target that it uses>...]): a library for a folder of src/. The linked targets decide what a room can
# include: a controller's target does not link the toolkit, so it cannot include its headers.
#
# pagora_toolkit_room(<name> [<target>...]): a library for a room's gtk/ folder, which may use gtkmm and WebKitGTK.

function(pagora_room name)
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp")
  list(FILTER sources EXCLUDE REGEX "/(main|pagora-defaults|pagora-inspect|pagora-picture)\\.cpp$")
  if(sources)
    add_library(pagora_${name} STATIC ${sources})
    set(reach PUBLIC)
  else()
    add_library(pagora_${name} INTERFACE)
    set(reach INTERFACE)
  endif()
  target_include_directories(pagora_${name} ${reach} "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(pagora_${name} ${reach} ${ARGN})
endfunction()

function(pagora_toolkit_room name)
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${name}/gtk/*.cpp")
  add_library(pagora_${name}_gtk STATIC ${sources})
  target_include_directories(pagora_${name}_gtk PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(pagora_${name}_gtk PUBLIC ${ARGN} PkgConfig::GTKMM PkgConfig::WEBKIT PkgConfig::FONTCONFIG)
  if(name STREQUAL "desktop")
    target_precompile_headers(pagora_${name}_gtk PRIVATE <gtkmm.h> <webkit/webkit.h> <functional> <memory> <string>
                              <unordered_map> <vector>)
  else()
    target_precompile_headers(pagora_${name}_gtk REUSE_FROM pagora_desktop_gtk)
  endif()
endfunction()
