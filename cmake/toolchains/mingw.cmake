# Builds for Windows on another system, by Debian's packages g++-mingw-w64-x86-64-posix and, for running
# what was built, wine64. Everything is linked statically: a program is one file.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(verdolin_target x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${verdolin_target}-gcc-posix)
set(CMAKE_CXX_COMPILER ${verdolin_target}-g++-posix)
set(CMAKE_RC_COMPILER ${verdolin_target}-windres)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

set(CMAKE_FIND_ROOT_PATH /usr/${verdolin_target})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(WINE_PROGRAM NAMES wine64-stable wine64 wine HINTS /usr/lib/wine)
if(WINE_PROGRAM)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${WINE_PROGRAM}")
endif()
