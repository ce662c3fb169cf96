# Configures the sources without any option, and looks at what was chosen.

file(REMOVE_RECURSE ${BUILD})
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} OUTPUT_VARIABLE output ERROR_VARIABLE output
                RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${output}")
endif()

load_cache(${BUILD} READ_WITH_PREFIX chosen_ CMAKE_BUILD_TYPE VELLOREADER_WARNINGS_AS_ERRORS VELLOREADER_BUILD_TESTS
           VELLOREADER_BUILD_BENCHMARKS VELLOREADER_BUILD_TOOLS)
set(expected_CMAKE_BUILD_TYPE Release)
set(expected_VELLOREADER_WARNINGS_AS_ERRORS OFF)
set(expected_VELLOREADER_BUILD_TESTS OFF)
set(expected_VELLOREADER_BUILD_BENCHMARKS OFF)
set(expected_VELLOREADER_BUILD_TOOLS ON)
foreach(choice CMAKE_BUILD_TYPE VELLOREADER_WARNINGS_AS_ERRORS VELLOREADER_BUILD_TESTS VELLOREADER_BUILD_BENCHMARKS
        VELLOREADER_BUILD_TOOLS)
  if(NOT chosen_${choice} STREQUAL expected_${choice})
    message(FATAL_ERROR "${choice} is ${chosen_${choice}}, not ${expected_${choice}}")
  endif()
endforeach()
