# Headers that are compiled beforehand: most of the time that a file takes goes into those of the C++ library. Each file
# names what it uses nevertheless: the browser edition, the analysis and the thread sanitizer do without.
#
# vorn_precompile(TARGET HEADERS): TARGET is compiled with those of HEADERS, vorn_headers or vorn_test_headers, with whose options
# it has to be compiled.
# vorn_precompile_own(TARGET header...): for a TARGET with options of its own, those headers and the C++ library's.
if(NOT VORN_PRECOMPILE)
  function(vorn_precompile)
  endfunction()
  function(vorn_precompile_own)
  endfunction()
  return()
endif()

file(WRITE ${PROJECT_BINARY_DIR}/headers.cpp "")
add_library(vorn_headers OBJECT ${PROJECT_BINARY_DIR}/headers.cpp)
target_link_libraries(vorn_headers PRIVATE vorn_settings)
set(VORN_LIBRARY_HEADERS
  <algorithm> <array> <cmath> <cstdint> <functional> <map> <memory> <optional> <ranges> <set> <span> <sstream> <string>
  <string_view> <tuple> <variant> <vector>)
target_precompile_headers(vorn_headers PRIVATE ${VORN_LIBRARY_HEADERS})
# GCC 12 forgets what it was told of the headers' own warnings (GCC bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(vorn_settings INTERFACE -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
endif()

if(BUILD_TESTING)
  add_library(vorn_test_headers OBJECT ${PROJECT_BINARY_DIR}/headers.cpp)
  target_link_libraries(vorn_test_headers PRIVATE vorn_settings GTest::gtest)
  vorn_plain(vorn_test_headers)
  target_precompile_headers(vorn_test_headers PRIVATE ${VORN_LIBRARY_HEADERS} <filesystem> <gtest/gtest.h>)
endif()

function(vorn_precompile target headers)
  target_precompile_headers(${target} REUSE_FROM ${headers})
endfunction()
function(vorn_precompile_own target)
  target_precompile_headers(${target} PRIVATE ${VORN_LIBRARY_HEADERS} ${ARGN})
endfunction()
