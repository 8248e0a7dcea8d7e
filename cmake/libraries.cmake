# add_libraries(), which builds and installs a library of the project: shared and static, or static alone
# where BUILD_SHARED_LIBS is set and off.
include_guard()
include(GNUInstallDirs)

set(orvelasn1_kinds SHARED STATIC)
if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
  set(orvelasn1_kinds STATIC)
endif()

# The libraries find each other beside themselves, wherever they stand. A build in another folder comes
# out the same.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

set(folder_of_libraries_cmake ${CMAKE_CURRENT_LIST_DIR})

# add_libraries(NAME EXPORTED [NEEDED])
#
# Makes libNAME of the objects in NAME_objects, with the symbols of NAME.map in the current folder. The
# targets are NAME_shared and NAME_static. A program names them orvelasn1::EXPORTED and
# orvelasn1::EXPORTED_static, by find_package as by add_subdirectory; without shared libraries the first
# is the second. NEEDED is the library of the project whose functions libNAME calls.
function(add_libraries name exported)
  set(needed ${ARGN})
  foreach(kind IN LISTS orvelasn1_kinds)
    string(TOLOWER ${name}_${kind} target)
    add_library(${target} ${kind} $<TARGET_OBJECTS:${name}_objects>)
    set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name} VERSION ${PROJECT_VERSION}
                          SOVERSION ${PROJECT_VERSION_MAJOR})
    target_include_directories(
      ${target} PUBLIC $<BUILD_INTERFACE:${folder_of_libraries_cmake}/../include>
                       $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/orvelasn1>)
    if(needed)
      string(TOLOWER ${needed}_${kind} needed_target)
      target_link_libraries(${target} PUBLIC ${needed_target})
      set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
    endif()
  endforeach()

  set_target_properties(${name}_static PROPERTIES EXPORT_NAME ${exported}_static)
  add_library(orvelasn1::${exported}_static ALIAS ${name}_static)
  if(TARGET ${name}_shared)
    set(map ${CMAKE_CURRENT_SOURCE_DIR}/${name}.map)
    target_link_libraries(${name}_shared PRIVATE orvelasn1_hardening)
    target_link_options(${name}_shared PRIVATE -Wl,--version-script=${map})
    set_target_properties(${name}_shared PROPERTIES LINK_DEPENDS ${map} EXPORT_NAME ${exported})
    add_library(orvelasn1::${exported} ALIAS ${name}_shared)
    install(TARGETS ${name}_shared EXPORT orvelasn1
            LIBRARY COMPONENT runtime NAMELINK_COMPONENT development)
  else()
    add_library(orvelasn1::${exported} ALIAS ${name}_static)
  endif()
  install(TARGETS ${name}_static EXPORT orvelasn1 ARCHIVE COMPONENT development)

  # The paths are told from the file itself, so that the prefix may be moved.
  set(pkgconfig ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
  file(RELATIVE_PATH to_libraries ${pkgconfig} ${CMAKE_INSTALL_FULL_LIBDIR})
  file(RELATIVE_PATH to_headers ${pkgconfig} ${CMAKE_INSTALL_FULL_INCLUDEDIR}/orvelasn1)
  configure_file(${folder_of_libraries_cmake}/library.pc.in ${name}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
          COMPONENT development)
endfunction()
