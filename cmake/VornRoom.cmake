# vorn_room(NAME SOURCES file... [LINKS room...] [TESTS file_test.cpp...])
#
# Makes the library vorn_NAME from the files of one room (a folder of src/) and, where the room has tests, the
# program NAME_test, known to CTest test by test. LINKS names every room that this one may include; what the
# links allow is checked once more, include by include, by tests/house_test.cpp.
function(vorn_room name)
  cmake_parse_arguments(room "" "" "SOURCES;LINKS;TESTS" ${ARGN})
  add_library(vorn_${name} STATIC ${room_SOURCES})
  target_include_directories(vorn_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(vorn_${name} PUBLIC vorn_settings)
  foreach(link IN LISTS room_LINKS)
    target_link_libraries(vorn_${name} PUBLIC vorn_${link})
  endforeach()
  if(room_TESTS AND BUILD_TESTING)
    vorn_test(${name}_test SOURCES ${room_TESTS} LINKS vorn_${name})
  endif()
endfunction()

# vorn_test(NAME SOURCES file... LINKS target...): a GoogleTest program, each test known to CTest.
# Tests get the place of the typed specimens and of the real files (which need not be there).
function(vorn_test name)
  cmake_parse_arguments(test "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${test_SOURCES})
  target_link_libraries(${name} PRIVATE ${test_LINKS} vorn_testing GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 600)
endfunction()
