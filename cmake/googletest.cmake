# GoogleTest is built from the sources of the Debian package googletest, so that it has the word
# width and the sanitizers of the build that uses it.
set(ORVELASN1_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "Sources of GoogleTest")
if(NOT EXISTS ${ORVELASN1_GOOGLETEST_SOURCE}/CMakeLists.txt)
  message(FATAL_ERROR "GoogleTest's sources are not in ${ORVELASN1_GOOGLETEST_SOURCE}: "
                      "apt-get install googletest")
endif()
set(INSTALL_GTEST OFF)
add_subdirectory(${ORVELASN1_GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL
                 SYSTEM)
include(GoogleTest)
