"""Writes, from the files of an interface, what a program is built against.

    oldest.py FOLDER OUT

FOLDER holds the files of one version, as `scripts/abi.sh --write` makes them. OUT gets, for each library,
a source with every function, a version script and the soname; and functions.c with a table of all
functions, and oldest.h with the size of each record and the place of each member.
"""

import pathlib
import sys
import xml.etree.ElementTree as xml

folder, out = map(pathlib.Path, sys.argv[1:])
functions, sizes, places = [], {}, {}
for file in sorted(folder.glob("*.abi")):
    corpus = xml.parse(file).getroot()
    versions = {}
    for symbol in corpus.iter("elf-symbol"):
        versions.setdefault(symbol.get("version"), []).append(symbol.get("name"))
    names = [name for node in versions.values() for name in node]
    functions += names
    (out / f"{file.stem}.c").write_text("".join(f"void {name}(void) {{}}\n" for name in names))
    (out / f"{file.stem}.map").write_text("".join(
        f"{version} {{\n  global: {'; '.join(node)};\n  local: *;\n}};\n"
        for version, node in versions.items()))
    (out / f"{file.stem}.soname").write_text(corpus.get("soname"))
    for record in corpus.iter("class-decl"):
        if record.get("size-in-bits") is None:
            continue  # an opaque one
        name = record.get("name")
        sizes[name] = int(record.get("size-in-bits")) // 8
        for member in record.findall("data-member"):
            places[name, member.find("var-decl").get("name")] = \
                int(member.get("layout-offset-in-bits")) // 8

declarations = "".join(f"extern void {name}(void);\n" for name in functions)
(out / "functions.c").write_text(
    f"{declarations}void (*const functions[])(void) = {{{', '.join(functions)}}};\n"
    f"const unsigned long function_count = {len(functions)};\n")
with open(out / "oldest.h", "w") as header:
    header.write("#define MEMBERS(m) \\\n" + "".join(
        f'  m("{record}", {sizes[record]}, "{member}", {place}) \\\n'
        for (record, member), place in places.items()) + "\n")
    for (record, member), place in places.items():
        header.write(f"#define {record}_{member}_PLACE {place}\n")
