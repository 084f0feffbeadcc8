# What a build for another system takes from the one that it runs on: libraries that are nothing but
# headers, and those that come as sources. Gives the targets that find_package() would give.

find_path(VERDOLIN_CLI11_HEADERS CLI/CLI.hpp NO_CMAKE_FIND_ROOT_PATH)
if(VERDOLIN_CLI11_HEADERS)
  # A folder with these headers alone: the others beside them are those of the wrong system.
  set(header_folder "${PROJECT_BINARY_DIR}/outside/include")
  file(MAKE_DIRECTORY "${header_folder}")
  file(CREATE_LINK "${VERDOLIN_CLI11_HEADERS}/CLI" "${header_folder}/CLI" SYMBOLIC)
  add_library(CLI11::CLI11 INTERFACE IMPORTED)
  target_include_directories(CLI11::CLI11 SYSTEM INTERFACE "${header_folder}")
endif()

set(VERDOLIN_GTEST_SOURCES /usr/src/googletest CACHE PATH "Folder of GoogleTest's sources")
if(VERDOLIN_BUILD_TESTS AND EXISTS "${VERDOLIN_GTEST_SOURCES}/CMakeLists.txt")
  set(BUILD_GMOCK OFF)
  set(INSTALL_GTEST OFF)
  add_subdirectory("${VERDOLIN_GTEST_SOURCES}" "${PROJECT_BINARY_DIR}/outside/googletest"
                   EXCLUDE_FROM_ALL)
endif()
