#!/bin/sh
# Prints the lines that include what their floor must not know, as file:line: text. Fails where it finds
# one, and where a source is on no floor.
#
#   sh scripts/includes.sh
#
# A floor of src/ knows itself, the floors before it in the list below, and the public headers. pki/ knows
# all of src/. The tool knows the library as any program does, by its public headers.
set -eu
cd "$(dirname "$0")/.."

files=$(mktemp)
trap 'rm -f "$files"' EXIT
find include utils src pki tool -type f \( -name '*.h' -o -name '*.c' -o -name '*.cpp' \) \
  2>/dev/null | LC_ALL=C sort >"$files" || true

# No name has a blank in it.
# shellcheck disable=SC2046
awk '
  BEGIN {
    know("include", "")
    know("utils", "include")
    known = "include"
    floors = split("core universal registry x509 pkcs card", floor, " ")
    for (i = 1; i <= floors; ++i) {
      know("src/" floor[i], known)
      known = known " src/" floor[i]
    }
    know("pki", known)
    know("tool", "include")
  }

  # Files in a folder may include those of the same folder and of the others.
  function know(folder, others, list, i) {
    is_floor[folder] = 1
    may[folder, folder] = 1
    for (i = split(others, list, " "); i > 0; --i) may[folder, list[i]] = 1
  }

  # Returns the folder of the table that a file is in, or "".
  function floor_of(file, parts) {
    split(file, parts, "/")
    if (parts[1] in is_floor) return parts[1]
    return (parts[1] "/" parts[2]) in is_floor ? parts[1] "/" parts[2] : ""
  }

  # Returns a path without "." and "..".
  function plain(path, parts, count, i, kept, out) {
    count = split(path, parts, "/")
    kept = 0
    for (i = 1; i <= count; ++i) {
      if (parts[i] == "..") --kept
      else if (parts[i] != ".") parts[++kept] = parts[i]
    }
    out = parts[1]
    for (i = 2; i <= kept; ++i) out = out "/" parts[i]
    return out
  }

  # Returns the file that a line includes: in the folder of the including file, in a folder that sources
  # are compiled with, or, in quotes, any whose path ends so. Returns "" for a file outside the project.
  function meant(by, name, quoted, folder, root, candidate, i) {
    folder = by
    sub("/[^/]*$", "/", folder)
    root = by
    sub("/.*", "/", root)
    if ((candidate = plain(folder name)) in is_file) return candidate
    if ((candidate = root name) in is_file) return candidate
    if ((candidate = "include/" name) in is_file) return candidate
    if ((candidate = "src/" name) in is_file) return candidate
    for (i = 1; i <= files && quoted; ++i)
      if (substr("/" file[i], length(file[i]) + 1 - length(name)) == "/" name) return file[i]
    return ""
  }

  FILENAME == ARGV[1] {
    file[++files] = $0
    is_file[$0] = 1
    if (floor_of($0) == "") {
      print $0 ": lies on no floor"
      ++faults
    }
    next
  }

  /^[ \t]*#[ \t]*include[ \t]*[<"]/ {
    match($0, /[<"][^>"]*[>"]/)
    target = meant(FILENAME, substr($0, RSTART + 1, RLENGTH - 2), substr($0, RSTART, 1) == "\"")
    if (target == "") next
    ++includes
    if ((floor_of(FILENAME), floor_of(target)) in may) next
    print FILENAME ":" FNR ": " $0
    ++faults
  }

  END {
    if (faults == 0 && includes > 0) {
      print files " files, " includes " includes of one by another: none knows a floor above its own"
      exit 0
    }
    exit 1
  }' "$files" $(cat "$files")
