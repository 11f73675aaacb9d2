# One helper per kind of target, so every target gets the same language level, warnings and visibility.
include_guard(GLOBAL)

function(_tarnwick_common target)
  set_target_properties(${target} PROPERTIES
    CXX_STANDARD 20
    CXX_STANDARD_REQUIRED ON
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra)
  if(TARNWICK_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

# tarnwick_library(name [SHARED|STATIC] SOURCES ... DEPENDS ...)
function(tarnwick_library name kind)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS;PRIVATE_DEPENDS" ${ARGN})
  add_library(${name} ${kind} ${ARG_SOURCES})
  _tarnwick_common(${name})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE_DEPENDS})
  if(kind STREQUAL "SHARED")
    target_link_options(${name} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()

# tarnwick_module(name SOURCES ... DEPENDS ...): a library the host loads with dlopen.
function(tarnwick_module name)
  cmake_parse_arguments(ARG "" "OUTPUT_NAME" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} MODULE ${ARG_SOURCES})
  _tarnwick_common(${name})
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS})
  target_link_options(${name} PRIVATE -Wl,--no-undefined)
  set_target_properties(${name} PROPERTIES PREFIX "" SUFFIX ".arx" OUTPUT_NAME ${ARG_OUTPUT_NAME})
endfunction()

# tarnwick_executable(name SOURCES ... DEPENDS ...)
function(tarnwick_executable name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  _tarnwick_common(${name})
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS})
endfunction()

# tarnwick_test(name SOURCES ... DEPENDS ...): one GoogleTest executable, its cases registered with CTest.
function(tarnwick_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  _tarnwick_common(${name})
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS} GTest::gtest GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_compile_definitions(${name} PRIVATE
    TARNWICK_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data"
    TARNWICK_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  include(GoogleTest)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES)
endfunction()
