# Finds everything the build needs and says in plain words what is missing.

function(verdolin_missing what package)
  message(FATAL_ERROR "${what} was not found. On Debian it is in the package ${package}; "
                      "scripts/install-dependencies installs everything the build needs.")
endfunction()

# find_package() for an outside package of which the build takes the given target.
macro(verdolin_find name target package)
  find_package(${name} QUIET ${ARGN})
  if(NOT TARGET ${target})
    verdolin_missing("${name}" "${package}")
  endif()
endmacro()

# The same through pkg-config; gives the target PkgConfig::<module>.
macro(verdolin_find_module module package)
  pkg_check_modules(${module} QUIET IMPORTED_TARGET ${module})
  if(NOT TARGET PkgConfig::${module})
    verdolin_missing("lib${module}" "${package}")
  endif()
endmacro()

find_package(PkgConfig QUIET)
if(NOT PkgConfig_FOUND)
  verdolin_missing("pkg-config" "pkg-config")
endif()

verdolin_find(CLI11 CLI11::CLI11 libcli11-dev)
verdolin_find(ICU ICU::uc libicu-dev COMPONENTS uc)
verdolin_find_module(re2 libre2-dev)
verdolin_find(Qt6 Qt6::Core qt6-base-dev COMPONENTS Core)
verdolin_find(Qt6 Qt6::Widgets qt6-base-dev COMPONENTS Widgets)
verdolin_find(Qt6 Qt6::PrintSupport qt6-base-dev COMPONENTS PrintSupport)
verdolin_find(Qt6 Qt6::Svg qt6-svg-dev COMPONENTS Svg)
# The two movies need these; without them the program's movie areas stay empty.
pkg_check_modules(movies QUIET IMPORTED_TARGET libavformat libavcodec libswscale libavutil)
set(VERDOLIN_MOVIES ${movies_FOUND})
if(NOT VERDOLIN_MOVIES)
  message(STATUS "No movies: the development files of FFmpeg's libraries were not found")
endif()
if(UNIX AND NOT APPLE)
  verdolin_find_module(mount libmount-dev)
  verdolin_find_module(blkid libblkid-dev)
endif()
if(VERDOLIN_BUILD_TESTS)
  verdolin_find(GTest GTest::gtest_main libgtest-dev)
  verdolin_find(Qt6 Qt6::Test qt6-base-dev COMPONENTS Test)
endif()
if(VERDOLIN_BUILD_BENCHMARKS)
  verdolin_find(benchmark benchmark::benchmark libbenchmark-dev)
  verdolin_find(Qt6 Qt6::Test qt6-base-dev COMPONENTS Test)
  verdolin_find(SQLite3 SQLite::SQLite3 libsqlite3-dev)
endif()
