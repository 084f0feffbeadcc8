# verdolin_warnings: linked by every target of our own, never by outside code.
add_library(verdolin_warnings INTERFACE)
target_compile_options(
  verdolin_warnings
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Wcast-align
            -Wextra-semi)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 warns of overlapping copies inside std::string where there are none.
  target_compile_options(verdolin_warnings INTERFACE -Wno-restrict)
endif()
if(VERDOLIN_WERROR)
  target_compile_options(verdolin_warnings INTERFACE -Werror)
endif()
