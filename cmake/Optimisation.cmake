# Interprocedural optimisation for release builds, where the compiler can do it. What is built for
# another system is tried here, not shipped, and need not wait for it.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT VERDOLIN_SANITIZERS AND NOT CMAKE_CROSSCOMPILING)
  include(CheckIPOSupported)
  check_ipo_supported(RESULT verdolin_ipo_works OUTPUT verdolin_ipo_message LANGUAGES CXX)
  if(verdolin_ipo_works)
    set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
  else()
    message(STATUS "No interprocedural optimisation: ${verdolin_ipo_message}")
  endif()
endif()
