# discover_suites(PROGRAM LABEL label TIMEOUT seconds)
#
# Makes every suite of a GoogleTest program a test of CTest, by the suite's name; the tests of a suite share a
# process. Its output names the test that fails, crashes or hangs. What suites there are the program itself
# tells when CTest starts, so that none can be forgotten; a program that can't tell is a failed test.
function(discover_suites program)
  cmake_parse_arguments(PARSE_ARGV 1 suites "" "LABEL;TIMEOUT" "")
  set(include_file ${CMAKE_CURRENT_BINARY_DIR}/${program}_suites.cmake)
  file(GENERATE OUTPUT ${include_file} CONTENT "
set(program \"$<TARGET_FILE:${program}>\")
set(properties LABELS ${suites_LABEL} TIMEOUT ${suites_TIMEOUT})
include(\"${CMAKE_CURRENT_FUNCTION_LIST_DIR}/AddSuites.cmake\")
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${include_file})
endfunction()
