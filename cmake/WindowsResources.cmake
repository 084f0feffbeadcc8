# verdolin_windows_resources(<program> <description>)
#
# Gives a program its icon, its version and its manifest where it is built for Windows; does nothing
# elsewhere.
if(WIN32)
  enable_language(RC)
  set(verdolin_manifest "${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest")
  set(verdolin_icon "${PROJECT_BINARY_DIR}/verdolin.ico")
  set(verdolin_has_icon 0)
  find_program(BASH_PROGRAM bash)
  find_program(CONVERT_PROGRAM convert)
  find_program(RSVG_CONVERT_PROGRAM rsvg-convert)
  if(BASH_PROGRAM AND CONVERT_PROGRAM AND RSVG_CONVERT_PROGRAM)
    set(verdolin_has_icon 1)
    set(verdolin_icon_parts "${PROJECT_SOURCE_DIR}/packaging/windows/make-icon"
                            "${PROJECT_SOURCE_DIR}/assets/verdolin.svg")
    add_custom_command(
      OUTPUT "${verdolin_icon}"
      COMMAND "${BASH_PROGRAM}" ${verdolin_icon_parts} "${verdolin_icon}"
      DEPENDS ${verdolin_icon_parts}
      COMMENT "Drawing the icon")
    add_custom_target(verdolin_windows_icon DEPENDS "${verdolin_icon}")
  else()
    message(STATUS "No icon: drawing it takes bash, rsvg-convert and ImageMagick's convert")
  endif()
endif()

function(verdolin_windows_resources target description)
  if(NOT WIN32)
    return()
  endif()
  set(resources "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
  configure_file("${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in" "${resources}" @ONLY)
  target_sources(${target} PRIVATE "${resources}")
  set(parts "${verdolin_manifest}")
  if(verdolin_has_icon)
    list(APPEND parts "${verdolin_icon}")
    add_dependencies(${target} verdolin_windows_icon)
  endif()
  set_source_files_properties("${resources}" PROPERTIES OBJECT_DEPENDS "${parts}")
endfunction()
