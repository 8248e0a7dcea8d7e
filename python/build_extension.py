"""Builds the extension module orvelasn1._orvelpki, in cffi's API mode.

The compiler finds the headers and libraries of liborvelpki by ORVELASN1_INCLUDE and ORVELASN1_LIB, folders
separated as in PATH, where they are set; else by pkg-config; else where it looks by itself. ORVELASN1_RPATH is where the
extension looks for the libraries when it runs, such as "$ORIGIN/../../.."; by default, where the system does.
"""

import os
import re
import shlex
import subprocess
from pathlib import Path

import cffi

HERE = Path(__file__).resolve().parent


def flags():
    """Returns where the compiler and the linker find the library."""
    found = {
        "include_dirs": [],
        "library_dirs": [],
        "libraries": ["orvelpki", "orvelasn1", "orvelutils"],
    }
    include, library = (os.environ.get("ORVELASN1_" + name) for name in ("INCLUDE", "LIB"))
    if include or library:
        found["include_dirs"] = (include or "").split(os.pathsep)
        found["library_dirs"] = (library or "").split(os.pathsep)
        return found
    try:
        said = subprocess.run(
            ["pkg-config", "--cflags", "--libs", "orvelpki"], capture_output=True, check=True, text=True
        ).stdout
    except (OSError, subprocess.CalledProcessError):
        return found
    for word in shlex.split(said):
        if word.startswith("-I"):
            found["include_dirs"].append(word[2:])
        elif word.startswith("-L"):
            found["library_dirs"].append(word[2:])
    return found


def header_folders(found):
    """Returns the folders in which the headers of the library may be."""
    return [*found["include_dirs"], "/usr/local/include/orvelasn1", "/usr/include/orvelasn1"]


def declarations():
    """Returns what Python calls: src/values.h, and the parts of the library that it stands on."""
    text = (HERE / "src" / "values.h").read_text(encoding="utf-8")
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
    text = "\n".join(line for line in text.splitlines() if not line.startswith("#"))
    text = re.sub(r"static const (\w+) (\w+) = [^;]*;", r"static const \1 \2;", text)
    return """
typedef struct pki_Type pki_Type;
typedef enum pki_Kind {
  PKI_ANY, PKI_BOOLEAN, PKI_INTEGER, PKI_ENUMERATED, PKI_NULL, PKI_OBJECT_IDENTIFIER,
  PKI_BIT_STRING, PKI_OCTET_STRING, PKI_CHARACTER_STRING, PKI_UTC_TIME, PKI_GENERALIZED_TIME,
  PKI_SEQUENCE, PKI_SEQUENCE_OF, PKI_SET_OF, PKI_CHOICE, PKI_NAME, PKI_ATTRIBUTE_VALUE,
  PKI_TYPED_CONTENT, PKI_CARD_OBJECT, PKI_CARD_IDENTIFIER, PKI_TLS_LIST, ...
} pki_Kind;
typedef enum pki_Tagging { PKI_UNTAGGED, PKI_IMPLICIT, PKI_EXPLICIT, ... } pki_Tagging;
typedef enum pki_Presence { PKI_ALWAYS, ... } pki_Presence;
#define PKI_NO_MEMBER ...
typedef struct pki_Field {
  const char *name;
  const pki_Type *type;
  uint32_t offset, text_offset, encoded_offset;
  pki_Tagging tagging;
  uint8_t tag;
  pki_Presence presence;
  uint8_t found_by, kind;
  ...;
} pki_Field;
typedef struct pki_Fault { uint32_t offset; char path[256]; char sentence[256]; ...; } pki_Fault;
typedef struct List List;
typedef struct pki_Octets { const uint8_t *data; uint32_t length; ...; } pki_Octets;
uint32_t pki_Type_count(void);
const pki_Type *pki_Type_get(uint32_t index);
const pki_Type *pki_Type_find(const char *name);
const char *pki_Type_name(const pki_Type *type);
const char *pki_Type_record(const pki_Type *type);
pki_Kind pki_Type_kind(const pki_Type *type);
uint8_t pki_Type_identifier(const pki_Type *type);
const pki_Type *pki_Type_element(const pki_Type *type);
uint32_t pki_Type_field_count(const pki_Type *type);
int32_t pki_Type_field(const pki_Type *type, uint32_t index, pki_Field *field);
int32_t pki_explain(const pki_Type *type, const uint8_t *z, const uint8_t *end, pki_Fault *fault);
const char *pki_identifier_name(uint8_t octet, char *buffer, uint32_t size);
""" + text


def names(folders):
    """Returns the C source of the library's named identifiers, from the getters in its headers."""
    getters = []
    for folder in folders:
        for header in sorted(Path(HERE, folder).glob("*.h")):
            getters += re.findall(
                r"^const ObjId \*asn1_Get_(\w+)\(void\);", header.read_text(encoding="utf-8"), flags=re.M
            )
    rows = "".join(f'  {{"{name}", asn1_Get_{name}}},\n' for name in dict.fromkeys(getters))
    return f"""#include "values.h"

#include <orvelasn1.h>

static const struct {{
  const char *name;
  const ObjId *(*get)(void);
}} names[] = {{
{rows}  {{NULL, NULL}}
}};

uint32_t py_name_count(void) {{ return sizeof names / sizeof names[0] - 1; }}
const char *py_name(uint32_t index) {{ return index < py_name_count() ? names[index].name : NULL; }}
char *py_name_identifier(uint32_t index) {{
  return index < py_name_count() ? pki_ObjId_text(names[index].get()) : NULL;
}}
"""


found = flags()
ffibuilder = cffi.FFI()
ffibuilder.cdef(declarations())
ffibuilder.set_source(
    "orvelasn1._orvelpki",
    names(header_folders(found)),
    sources=["src/values.c"],
    depends=["src/values.h"],
    include_dirs=["src", *found["include_dirs"]],
    library_dirs=found["library_dirs"],
    libraries=found["libraries"],
    runtime_library_dirs=list(filter(None, [os.environ.get("ORVELASN1_RPATH")])),
    extra_compile_args=["-std=gnu11", "-fvisibility=hidden"],
)

if __name__ == "__main__":
    ffibuilder.compile(verbose=True)
