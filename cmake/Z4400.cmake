# Shared build settings and helpers for the z4400 libraries.

set(CMAKE_COMPILE_WARNING_AS_ERROR ON)
add_compile_options(-Wall -Wextra -Wshadow -Wno-missing-field-initializers)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 reports false overlaps in std::string concatenation at -O3.
  add_compile_options(-Wno-restrict)
endif()

if(Z4400_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # With the sanitizers GCC reports false "may be used uninitialized" in
    # its own <regex> and <functional> headers.
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
endif()

# z4400_library(NAME SOURCES... [DEPS...]): a static library of the listed
# sources of the folder, which every folder above it includes from the root.
function(z4400_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  if(NOT ARG_SOURCES)
    message(FATAL_ERROR "z4400_library(${name}): no SOURCES")
  endif()
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_DEPS})
endfunction()

# z4400_tests(NAME SOURCES... [DEPS...] [ENVIRONMENT VAR=VALUE]): one
# GoogleTest program of the listed *_test.cc, registered with CTest test by
# test. Every test program has the test helpers and the instrument-file
# generator of testing/.
function(z4400_tests name)
  if(NOT Z4400_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS;ENVIRONMENT" ${ARGN})
  if(NOT ARG_SOURCES)
    message(FATAL_ERROR "z4400_tests(${name}): no SOURCES")
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} z4400_testing GTest::gmock GTest::gtest_main)
  # Only one variable can be handed through test discovery (its list
  # separators do not survive), so the shared folders are compiled into the
  # test helpers instead (testing/test_files.cc) and this names one extra.
  if(NOT ARG_ENVIRONMENT)
    set(ARG_ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
  endif()
  gtest_discover_tests(${name}
    DISCOVERY_TIMEOUT 120
    PROPERTIES ENVIRONMENT "${ARG_ENVIRONMENT}")
endfunction()

if(Z4400_FUZZ)
  # Coverage instrumentation for every library the fuzz targets link.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
