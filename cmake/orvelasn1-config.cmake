include(${CMAKE_CURRENT_LIST_DIR}/orvelasn1-targets.cmake)

# Where only the static libraries were built, a program that names the others has these.
foreach(name orvelasn1 pki utils)
  if(NOT TARGET orvelasn1::${name})
    add_library(orvelasn1::${name} INTERFACE IMPORTED)
    set_target_properties(orvelasn1::${name} PROPERTIES INTERFACE_LINK_LIBRARIES orvelasn1::${name}_static)
  endif()
endforeach()
