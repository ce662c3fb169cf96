# What can be chosen when this project is built by itself, and where its results go.

option(VELLOREADER_BUILD_TOOLS "Build the programs that load the library" ON)
option(VELLOREADER_BUILD_VIEWER "Build the program with a window, if SoQt and Qt are installed" ON)
option(VELLOREADER_BUILD_TESTS "Build the tests" OFF)
option(VELLOREADER_BUILD_BENCHMARKS "Build the benchmarks" OFF)
option(VELLOREADER_BUILD_FUZZERS "Build the fuzzer, which takes clang" OFF)
option(VELLOREADER_WARNINGS_AS_ERRORS "Stop at the first compiler warning" OFF)
option(VELLOREADER_SANITIZE "Build with the address, undefined behaviour and leak sanitizers" OFF)
option(VELLOREADER_SANITIZE_THREADS "Build with the thread sanitizer" OFF)

get_property(many_configurations GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
if(NOT many_configurations AND NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Debug, Release, RelWithDebInfo or MinSizeRel" FORCE)
endif()

set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)

# Debian's loader looks below its own multiarch directory, in /usr and in /usr/local.
if(CMAKE_LIBRARY_ARCHITECTURE AND EXISTS /etc/debian_version)
  set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Where libraries go, below the prefix")
endif()
include(GNUInstallDirs)
