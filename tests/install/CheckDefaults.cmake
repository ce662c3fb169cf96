# Configures the sources without any option, on a machine that lacks the viewer's toolkit, and looks at what was chosen.

file(REMOVE_RECURSE ${BUILD})
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} -DCMAKE_DISABLE_FIND_PACKAGE_SoQt=ON OUTPUT_VARIABLE output ERROR_VARIABLE output
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

# A build says what isn't part of it.
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target fltview_left_out OUTPUT_VARIABLE output
                ERROR_VARIABLE output RESULT_VARIABLE result)
if(NOT result EQUAL 0 OR NOT output MATCHES "fltview is left out: it needs libsoqt520-dev")
  message(FATAL_ERROR "the build doesn't say that it lacks fltview: ${output}")
endif()
