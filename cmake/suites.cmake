# CTest reads this file whenever it runs. Adds a test for each suite of a program of GoogleTest, or for
# each test of the suites whose names match `alone`. Where there is an `emulator`, the program runs under
# it. The file `results`/NAME.tests, where NAME is the program's, lists all tests, one a line: the test of
# CTest, a blank, the test of GoogleTest. Each process writes the outcomes of its tests to the folder
# `results`/NAME, as XML.
get_filename_component(name ${program} NAME)
if(NOT EXISTS ${program})
  add_test(${name} ${program}) # which fails
  return()
endif()
execute_process(COMMAND ${emulator} ${program} --gtest_list_tests OUTPUT_VARIABLE list
                RESULT_VARIABLE status)
if(NOT status STREQUAL 0)
  message(FATAL_ERROR "${program} does not list its tests: ${status}\n${list}")
endif()

# The parameters after the names may hold any characters.
string(REGEX REPLACE "  # [^\n]*" "" list "${list}")
string(REGEX MATCHALL "[^\n]+" list "${list}")
set(lines)
foreach(line IN LISTS list)
  if(line MATCHES "^([^ ]+)[.]$")
    set(suite ${CMAKE_MATCH_1})
    set(entry ${suite})
    set(filter ${suite}.*)
  elseif(line MATCHES "^  ([^ ]+)$")
    set(test ${suite}.${CMAKE_MATCH_1})
    if(alone AND suite MATCHES "${alone}")
      set(entry ${test})
      set(filter ${test})
    endif()
    string(APPEND lines "${entry} ${test}\n")
    if(NOT entry STREQUAL last)
      set(last ${entry})
      string(REPLACE "/" "-" file ${entry})
      add_test(${entry} ${emulator} ${program} --gtest_filter=${filter}
               --gtest_output=xml:${results}/${name}/${file}.xml)
      set_tests_properties(${entry} PROPERTIES ENVIRONMENT "${environment}")
    endif()
  endif()
endforeach()
file(WRITE ${results}/${name}.tests "${lines}")
