# GoogleTest, and add_test_program() for the programs that use it.
include_guard()

# GoogleTest is built from the sources of the Debian package googletest, so that it has the word
# width and the sanitizers of the build that uses it.
set(ORVELASN1_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "Sources of GoogleTest")
set(source ${ORVELASN1_GOOGLETEST_SOURCE}/googletest)
if(NOT EXISTS ${source}/src/gtest-all.cc)
  message(FATAL_ERROR "GoogleTest's sources are not in ${ORVELASN1_GOOGLETEST_SOURCE}: "
                      "apt-get install googletest")
endif()
find_package(Threads REQUIRED)
option(ORVELASN1_UNITY_TESTS
       "Compile several files of tests as one: all take half of the time, and one alone takes longer" ON)

set(sources ${source}/src/gtest-all.cc ${source}/src/gtest_main.cc)
add_library(gtest_main STATIC EXCLUDE_FROM_ALL ${sources})
target_compile_features(gtest_main PUBLIC cxx_std_20)
target_include_directories(gtest_main SYSTEM PUBLIC ${source}/include PRIVATE ${source})
target_link_libraries(gtest_main PUBLIC Threads::Threads PRIVATE orvelasn1_test_warnings)
# Optimisation makes neither GoogleTest nor the tests faster: their time is spent elsewhere. GCC spends a
# fifth of its time on the collection of garbage in large files, unless it may hold 1 GiB (in KiB here).
set(test_options -O0 $<$<CXX_COMPILER_ID:GNU>:--param=ggc-min-heapsize=1048576>)
target_compile_options(gtest_main PRIVATE ${test_options})
# The headers that the tests include are compiled once for all programs, with the warnings of the tests.
set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
target_precompile_headers(
  gtest_main PRIVATE <gtest/gtest.h> <algorithm> <csignal> <filesystem> <fstream> <functional> <map>
  <memory> <sstream> <string> <vector>)

# add_test_program(TARGET SOURCE... [ALONE SUITES] [ENVIRONMENT VARIABLE] [OWN_HEADERS])
#
# Builds a program from the sources, and adds a test of CTest for each of its suites: a process for each
# suite takes half of the time of a process for each test. Where the name of a suite matches the regular
# expression SUITES, each of its tests has a process of its own. VARIABLE, such as A=B, is set in all of
# them. With OWN_HEADERS, the program has precompiled headers of its own.
function(add_test_program target)
  cmake_parse_arguments(PARSE_ARGV 1 arg OWN_HEADERS "ALONE;ENVIRONMENT" "")
  add_executable(${target} ${arg_UNPARSED_ARGUMENTS})
  target_compile_options(${target} PRIVATE ${test_options})
  target_link_libraries(${target} PRIVATE orvelasn1_test_warnings gtest_main)
  # Half of the time of compiling a file goes to templates, which the files of a batch make only once. That
  # is why each file has a namespace of its own.
  set_target_properties(${target} PROPERTIES UNITY_BUILD ${ORVELASN1_UNITY_TESTS} UNITY_BUILD_BATCH_SIZE 8)
  if(NOT arg_OWN_HEADERS)
    target_precompile_headers(${target} REUSE_FROM gtest_main)
  endif()
  set(tests ${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake)
  file(GENERATE OUTPUT ${tests} CONTENT "\
set(program $<TARGET_FILE:${target}>)
set(emulator ${CMAKE_CROSSCOMPILING_EMULATOR})
set(alone [[${arg_ALONE}]])
set(environment ${arg_ENVIRONMENT})
set(results ${CMAKE_BINARY_DIR}/suites)
include(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/suites.cmake)
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${tests})
endfunction()
