# verdolin_library(<folder> SOURCES <file>... DEPENDS <target>... PRIVATE_DEPENDS <target>...)
#
# The static library verdolin_<folder> of the folder src/<folder>. DEPENDS are what its headers show,
# PRIVATE_DEPENDS what only its sources use. A folder that holds nothing but headers so far gives an
# interface library, so that others can link it by the same name.
function(verdolin_library folder)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;DEPENDS;PRIVATE_DEPENDS")
  set(target verdolin_${folder})
  if(ARG_SOURCES)
    add_library(${target} STATIC ${ARG_SOURCES})
    target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(
      ${target}
      PUBLIC ${ARG_DEPENDS}
      PRIVATE ${ARG_PRIVATE_DEPENDS} verdolin_warnings)
  else()
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${target} INTERFACE ${ARG_DEPENDS} ${ARG_PRIVATE_DEPENDS})
  endif()
endfunction()

# verdolin_window_library(<folder> SOURCES <file>... DEPENDS <target>... PRIVATE_DEPENDS <target>...)
#
# The same for the windows of a folder: the static library verdolin_<folder>_window, with Qt Widgets.
# There is none where the desktop program is not built.
function(verdolin_window_library folder)
  if(NOT VERDOLIN_DESKTOP)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;DEPENDS;PRIVATE_DEPENDS")
  verdolin_library(
    ${folder}_window
    SOURCES ${ARG_SOURCES}
    DEPENDS ${ARG_DEPENDS} Qt6::Widgets
    PRIVATE_DEPENDS ${ARG_PRIVATE_DEPENDS})
  set_target_properties(verdolin_${folder}_window PROPERTIES AUTOMOC ON AUTORCC ON)
  verdolin_use_precompiled(verdolin_${folder}_window verdolin_window_headers)
endfunction()
