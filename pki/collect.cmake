# Writes the list of all types, TYPE(Name) a line, from the lines in SOURCES that define them.
#
#   cmake -D SOURCES=file;file... -D OUTPUT=file -P collect.cmake
set(lines "")
foreach(source ${SOURCES})
  file(STRINGS ${source} definitions
       REGEX "^(EXPORT[A-Z_]*|UNIVERSAL_TYPE|STRING_TYPE|CHARACTER_STRING)\\([A-Za-z0-9_]+,|^constinit const Type ")
  foreach(definition ${definitions})
    string(REGEX REPLACE "^[A-Z_]+\\(([A-Za-z0-9_]+),.*" "\\1" name "${definition}")
    string(REGEX REPLACE "^constinit const Type ([A-Za-z0-9_]+)Type .*" "\\1" name "${name}")
    # BitStringAsStored is BIT STRING, written otherwise.
    if(NOT name STREQUAL "BitStringAsStored")
      string(APPEND lines "TYPE(${name})\n")
    endif()
  endforeach()
endforeach()
file(CONFIGURE OUTPUT ${OUTPUT} CONTENT "${lines}")
