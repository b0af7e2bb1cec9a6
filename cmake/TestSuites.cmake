# The tests of a program as entries of ctest, a suite each: one process for all of a suite. Under the sanitizers a start
# takes as long as ten short tests.
#
#   quillon_discover_suites(TARGET ENVIRONMENT TEXT TIMEOUT SECONDS)
#
# asks the built program for its suites. Included by a test tree: the function; run as a script (-P): the asking.

if(CMAKE_SCRIPT_MODE_FILE)
  execute_process(COMMAND ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE lines COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "[[#;][^\n]*" "" lines "${lines}") # remarks on parameters
  string(REPLACE "\n" ";" lines "${lines}")
  set(entries "")
  foreach(line ${lines})
    if(line MATCHES "^([^ ]+\\.) *$")
      set(suite ${CMAKE_MATCH_1})
      string(REGEX REPLACE "\\.$" "" name ${suite})
      string(APPEND entries "add_test([=[${name}]=] [=[${PROGRAM}]=] [=[--gtest_filter=${suite}*]=])\n"
             "set_tests_properties([=[${name}]=] PROPERTIES TIMEOUT ${TIMEOUT} ENVIRONMENT [=[${ENVIRONMENT}]=]"
             " WORKING_DIRECTORY [=[${FOLDER}]=])\n")
    endif()
  endforeach()
  file(WRITE ${OUTPUT} "${entries}")
  return()
endif()

function(quillon_discover_suites target)
  cmake_parse_arguments(ARG "" "ENVIRONMENT;TIMEOUT" "" ${ARGN})
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake)
  add_custom_command(TARGET ${target} POST_BUILD BYPRODUCTS ${list} VERBATIM
                     COMMAND ${CMAKE_COMMAND} -D PROGRAM=$<TARGET_FILE:${target}> -D OUTPUT=${list}
                             -D ENVIRONMENT=${ARG_ENVIRONMENT} -D TIMEOUT=${ARG_TIMEOUT} -D FOLDER=${CMAKE_CURRENT_BINARY_DIR}
                             -P ${PROJECT_SOURCE_DIR}/cmake/TestSuites.cmake)
  set(entry ${CMAKE_CURRENT_BINARY_DIR}/${target}_entry.cmake)
  file(CONFIGURE OUTPUT ${entry} @ONLY
       CONTENT "if(EXISTS \"@list@\")\n  include(\"@list@\")\nelse()\n  add_test(@target@_NOT_BUILT @target@_NOT_BUILT)\nendif()\n")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${entry})
endfunction()
