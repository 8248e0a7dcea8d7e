# Writes the table of the registry's names from the declarations of its getters.
#
#   cmake -D HEADERS=<folder> -D OUTPUT=<file> -P registry.cmake
file(GLOB headers ${HEADERS}/*.h)
set(rows "")
foreach(header IN LISTS headers)
  file(STRINGS ${header} getters REGEX "^const ObjId \\*asn1_Get_[A-Za-z0-9_]+\\(void\\);")
  foreach(getter IN LISTS getters)
    string(REGEX REPLACE "^.*asn1_Get_([A-Za-z0-9_]+)\\(.*$" "\\1" name "${getter}")
    string(APPEND rows "{\"${name}\", asn1_Get_${name}},\n")
  endforeach()
endforeach()
if(rows STREQUAL "")
  message(FATAL_ERROR "${HEADERS} declares no getter of an object identifier")
endif()
file(WRITE ${OUTPUT} "${rows}")
