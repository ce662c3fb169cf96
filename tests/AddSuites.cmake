# Run by CTest when it starts: adds the suites of one program, as discover_suites() says.
#   program     its path
#   properties  of each test

execute_process(COMMAND ${program} --gtest_list_tests OUTPUT_VARIABLE list ERROR_VARIABLE problem
                RESULT_VARIABLE result)
string(REGEX MATCHALL "\n[^ \n]+\\.[^\n]*" lines "\n${list}")
if(NOT result EQUAL 0 OR NOT lines)
  message("${program} doesn't tell its tests: ${result} ${problem}")
  add_test(${program}_tells_its_tests false)
  set_tests_properties(${program}_tells_its_tests PROPERTIES ${properties})
  return()
endif()
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^\n([^ ]+)\\..*" "\\1" suite "${line}")
  add_test(${suite} ${program} "--gtest_filter=${suite}.*")
  set_tests_properties(${suite} PROPERTIES ${properties})
endforeach()
