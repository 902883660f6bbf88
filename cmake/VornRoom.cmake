# The list of rooms: src/rooms.txt.
set(VORN_ROOMS_FILE ${PROJECT_SOURCE_DIR}/src/rooms.txt)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${VORN_ROOMS_FILE})
file(STRINGS ${VORN_ROOMS_FILE} lines REGEX "^[a-z/_]+ *\\|")
foreach(line IN LISTS lines)
  string(REGEX MATCH "^([a-z/_]+) *\\|([^|]*)\\|" row "${line}")
  set(room ${CMAKE_MATCH_1})
  separate_arguments(links UNIX_COMMAND "${CMAKE_MATCH_2}")
  list(APPEND VORN_ROOMS ${room})
  set(VORN_LINKS_OF_${room} ${links})
endforeach()

# vorn_room(NAME SOURCES file... [TESTS file_test.cpp...] [NOT_LINKED room...])
#
# Makes the library vorn_NAME from the files of one room (a folder of src/), linked with every room that the list
# allows it to include but those NOT_LINKED, and, where the room has tests, the program NAME_test, known to CTest test
# by test. In the names of targets "_" stands for the "/" of a room in a folder.
function(vorn_room name)
  cmake_parse_arguments(room "" "" "SOURCES;TESTS;NOT_LINKED" ${ARGN})
  if(NOT name IN_LIST VORN_ROOMS)
    message(FATAL_ERROR "${name} is no room of ${VORN_ROOMS_FILE}")
  endif()
  string(REPLACE / _ target ${name})
  add_library(vorn_${target} STATIC ${room_SOURCES})
  target_include_directories(vorn_${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(vorn_${target} PUBLIC vorn_settings)
  if(NOT name MATCHES "^(platform/qt|plot)$")  # these have options of their own
    vorn_precompile(vorn_${target} vorn_headers)
  endif()
  set(links ${VORN_LINKS_OF_${name}})
  list(REMOVE_ITEM links "" ${room_NOT_LINKED})
  list(TRANSFORM links REPLACE / _)
  foreach(link IN LISTS links)
    target_link_libraries(vorn_${target} PUBLIC vorn_${link})
  endforeach()
  if(room_TESTS AND BUILD_TESTING)
    vorn_test(${target}_test SOURCES ${room_TESTS} LINKS vorn_${target})
  endif()
endfunction()

# Files of tests that are compiled by themselves where others are compiled together: they have helpers of the same names as
# their neighbours.
function(vorn_alone)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# vorn_test(NAME SOURCES file... LINKS target...): a GoogleTest program, each test known to CTest. Most of the time that a
# file of tests takes goes into the headers that it has in common with its neighbours: eight are compiled together. The
# program's own files are not: there a name that means something else beside a neighbour's would change what users get. With
# VORN_TOGETHER=OFF each file of tests is compiled alone, as it is written.
# Where nothing is measured tests need no optimisation, which takes longer to compile than they to run: most of all what the
# sanitizers add to it. With these the start of a process takes longer than most tests: there each program runs as a few
# parts of its tests.
set(VORN_TEST_PARTS 4)
function(vorn_plain target)
  target_compile_options(${target} PRIVATE -O0)
  set_target_properties(${target} PROPERTIES VORN_PLAIN ON)
endfunction()
function(vorn_test name)
  cmake_parse_arguments(test "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${test_SOURCES})
  target_link_libraries(${name} PRIVATE ${test_LINKS} vorn_settings vorn_testing GTest::gtest_main)
  vorn_plain(${name})
  if(NOT test_LINKS MATCHES "Qt6|vorn_painters|vorn_platform_qt")
    vorn_precompile(${name} vorn_test_headers)
  endif()
  if(VORN_TOGETHER)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
  endif()
  if(NOT VORN_SANITIZE)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 600)
    return()
  endif()
  math(EXPR last "${VORN_TEST_PARTS} - 1")
  foreach(part RANGE ${last})
    add_test(NAME ${name}.${part} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name}.${part} PROPERTIES TIMEOUT 1800
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${VORN_TEST_PARTS};GTEST_SHARD_INDEX=${part}")
  endforeach()
endfunction()
