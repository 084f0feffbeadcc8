# Outside headers that are read once for many targets instead of once a source. A source still includes
# what it uses: a build with CMAKE_DISABLE_PRECOMPILE_HEADERS, as clang-tidy gets it, fails otherwise.

# verdolin_precompiled_headers(<name> LIBS <target>... HEADERS <header>...)
#
# Precompiles the headers under a name, for targets that are compiled with the same options.
function(verdolin_precompiled_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "LIBS;HEADERS")
  set(source "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
  file(CONFIGURE OUTPUT "${source}" CONTENT "")
  add_library(${name} OBJECT EXCLUDE_FROM_ALL "${source}")
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} verdolin_warnings)
  list(TRANSFORM ARG_HEADERS REPLACE "^(.+)$" "<\\1>")
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
  verdolin_name_precompiled(${name})
endfunction()

# verdolin_use_precompiled(<target> <name>)
function(verdolin_use_precompiled target name)
  target_precompile_headers(${target} REUSE_FROM ${name})
  verdolin_name_precompiled(${target})
endfunction()

# Has the compiler tell ccache which precompiled header it took.
function(verdolin_name_precompiled target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE -fpch-preprocess)
  endif()
endfunction()
