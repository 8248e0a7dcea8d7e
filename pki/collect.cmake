# Writes the list of all types, a line each, from the lines that define them: TYPE(Name) of those in
# TABLES, which are liborvelasn1's, and FORM(Name) of those in FORMS.
#
#   cmake -D TABLES=file;file... -D FORMS=file;file... -D OUTPUT=file -P collect.cmake
set(lines "")
foreach(source ${TABLES})
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
foreach(source ${FORMS})
  file(STRINGS ${source} definitions REGEX "^EXPORT_FORM[A-Z_]*\\(")
  foreach(definition ${definitions})
    string(REGEX REPLACE "^EXPORT_FORM[A-Z_]*\\(([A-Za-z0-9_]+),.*" "FORM(\\1)\n" line "${definition}")
    string(APPEND lines "${line}")
  endforeach()
endforeach()
file(CONFIGURE OUTPUT ${OUTPUT} CONTENT "${lines}")
