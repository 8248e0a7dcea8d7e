#!/bin/sh
# Checks what is installed.
#
#   install.sh SETTINGS WHAT
#
# SETTINGS is a file that sets the variables of the build. WHAT is one of the functions below; `prefix`
# installs to the prefix that the others use.
# The variables are those of the settings.
# shellcheck disable=SC1090,SC2154,SC2015
set -eu
. "$1"
here=$(cd "$(dirname "$0")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export LC_ALL=C
unset LD_LIBRARY_PATH

fail() { # LINE
  echo "$1" >&2
  exit 1
}

# The prefix is moved once it is there: nothing in it may know where it was.
prefix() {
  rm -rf "$prefix" "$prefix.first"
  "$cmake" --install "$build" --prefix "$prefix.first" >"$folder/log" || fail "$(cat "$folder/log")"
  mv "$prefix.first" "$prefix"
}

# The tool starts, and nothing has a path of the machine on which it was built.
tool() {
  "$prefix/bin/orvelasn1" --version
  "$prefix/bin/orvelasn1" oid id_ce_keyUsage | grep -q '2\.5\.29\.15'
}

files() { # FOLDER
  (cd "$1" && find . ! -type d) | sort
}

# Each file belongs to one component.
components() {
  for component in runtime development tool python; do
    "$cmake" --install "$build" --prefix "$folder/$component" --component $component >/dev/null
    mkdir -p "$folder/$component"
    files "$folder/$component" >>"$folder/parts"
  done
  files "$prefix" >"$folder/whole"
  sort "$folder/parts" | diff "$folder/whole" - || fail "the whole (<) and its components (>) differ"
  ! (cd "$folder/runtime" && find . ! -type d) | grep -v "/liborvel[a-z0-9]*\.so\.[0-9.]*$" ||
    fail "more than libraries in the component runtime"
  for library in "$folder"/runtime/"$lib"/*.so.*.*.*; do
    "$readelf" -d "$library" | sed -n 's/.*(R[A-Z]*PATH).*\[\(.*\)\]/\1/p' >"$folder/rpath"
    case $library in
      *utils*) test ! -s "$folder/rpath" ;;
      *) test "$(cat "$folder/rpath")" = "\$ORIGIN" ;;
    esac || fail "$library looks for libraries in \"$(cat "$folder/rpath")\""
  done
  if grep -rlF -e "$source/" -e "$build" "$folder/runtime" "$folder/development" "$folder/tool"; then
    fail "these files know where they were built"
  fi
}

build_user() { # NAME TARGET OPTION...
  user=$folder/$1 target=$2
  shift 2
  # The options must be split.
  # shellcheck disable=SC2086
  "$cmake" -S "$here/user" -B "$user" -G "$generator" $system -DPROGRAM="$here/program.c" \
    -DCMAKE_CROSSCOMPILING_EMULATOR="$(echo "$emulator" | tr ' ' ';')" "$@" >"$folder/log" &&
    "$cmake" --build "$user" --target "$target" >>"$folder/log" && (cd "$user" && ctest) \
    >>"$folder/log" || fail "$(cat "$folder/log")"
  cat "$folder/log"
}

cmake() {
  build_user cmake all -DCMAKE_PREFIX_PATH="$prefix"
}

# The same names, by FetchContent and add_subdirectory.
subproject() {
  build_user subproject users -DSUBPROJECT="$source"
  for name in orvelasn1 pki utils orvelasn1_static pki_static utils_static; do
    grep -q "orvelasn1::$name is orvel[a-z0-9]*_" "$folder/log" || fail "no orvelasn1::$name"
  done
}

# Without shared libraries, as BUILD_SHARED_LIBS says.
static_only() {
  # The options must be split.
  # shellcheck disable=SC2086
  "$cmake" -S "$source" -B "$folder/all" -G "$generator" $system -DBUILD_SHARED_LIBS=OFF -DORVELASN1_TOOL=OFF \
    >"$folder/log" || fail "$(cat "$folder/log")"
  "$cmake" --build "$folder/all" --target help >"$folder/targets"
  grep -q orvelpki_static "$folder/targets"
  ! grep _shared "$folder/targets" || fail "builds shared libraries"
  # shellcheck disable=SC2086
  "$cmake" -S "$source/utils" -B "$folder/utils" -G "$generator" $system -DBUILD_SHARED_LIBS=OFF \
    >"$folder/log" && "$cmake" --build "$folder/utils" >>"$folder/log" &&
    "$cmake" --install "$folder/utils" --prefix "$folder/prefix" >>"$folder/log" ||
    fail "$(cat "$folder/log")"
  files "$folder/prefix" >"$folder/files"
  grep -q '/liborvelutils\.a$' "$folder/files"
  ! grep '\.so' "$folder/files" || fail "installs shared libraries"
}

# Starts a program that was built, under the emulator where it is one for another processor.
start() { # PROGRAM ARGUMENT...
  # The emulator and its options must be split.
  # shellcheck disable=SC2086
  $emulator "$@"
}

# Compiles a program without a warning, and starts it.
run() { # COMPILER SOURCE OPTION...
  compiler=$1 text=$2
  shift 2
  # The compiler and its options must be split.
  # shellcheck disable=SC2086
  $compiler -Wall -Wextra -Wpedantic -Werror "$text" -o "$folder/program" "$@"
  start "$folder/program"
}

flags() { # OPTION...
  PKG_CONFIG_LIBDIR="$prefix/$lib/pkgconfig" pkg-config "$@"
}

pkgconfig() {
  for library in orvelutils orvelasn1 orvelpki; do
    test "$(flags --modversion $library)" = "$version"
  done
  test "$(flags --variable=includedir orvelpki)" != "" && test -e "$(flags --variable=includedir orvelpki)/orvelpki.h"
  # The options must be split.
  # shellcheck disable=SC2046
  {
    run "$cc -std=c11" "$here/program.c" $(flags --cflags --libs orvelpki) -Wl,-rpath,"$prefix/$lib"
    run "$cc -std=c11 -static" "$here/program.c" $(flags --cflags --libs --static orvelpki)
    printf '#include <orvelutils.h>\nint main(void) { List_free(List_new(0), 0); return 0; }\n' \
      >"$folder/list.c"
    run "$cc -std=c11 -static" "$folder/list.c" $(flags --cflags --libs --static orvelutils)
  }
}

# The standards that the build's compilers know, with nothing but an -I and three -l.
compilers() {
  cp "$here/program.c" "$folder/program.cpp"
  for standard in c11 c17 c2x; do
    run "$cc -std=$standard" "$here/program.c" -I"$prefix/include/orvelasn1" -L"$prefix/$lib" \
      -Wl,-rpath,"$prefix/$lib" -lorvelpki -lorvelasn1 -lorvelutils
  done
  for standard in c++17 c++20 c++2b; do
    run "$cxx -std=$standard" "$folder/program.cpp" -I"$prefix/include/orvelasn1" -L"$prefix/$lib" \
      -Wl,-rpath,"$prefix/$lib" -lorvelpki -lorvelasn1 -lorvelutils
  done
}

# One program of C and of C++, both of which see all headers and all functions, linked as one.
lto() {
  set -- -flto=auto -Wall -Wextra -Werror
  $cc -std=c11 "$@" -I"$prefix/include/orvelasn1" -c "$source/tests/headers/every_function.c" \
    -o "$folder/c.o"
  $cxx -std=c++17 "$@" -I"$prefix/include/orvelasn1" -Dmain=main_of_cpp \
    -c "$source/tests/headers/every_function.cpp" -o "$folder/cpp.o"
  for suffix in so a; do
    $cxx "$@" "$folder/c.o" "$folder/cpp.o" "$prefix/$lib/liborvelpki.$suffix" \
      "$prefix/$lib/liborvelasn1.$suffix" "$prefix/$lib/liborvelutils.$suffix" \
      -Wl,-rpath,"$prefix/$lib" -o "$folder/program"
    start "$folder/program"
  done
}

backtrace() {
  run "$cc -O2" "$here/backtrace.c" -I"$prefix/include/orvelasn1" -L"$prefix/$lib" \
    -Wl,-rpath,"$prefix/$lib" -lorvelpki -lorvelasn1 -lorvelutils
}

# A plugin over the static libraries leaves memory, and shows no symbol of the C++ runtime.
dlclose() {
  # The compiler and its options must be split.
  # shellcheck disable=SC2086
  $cc -DPLUGIN -shared -fPIC "$here/plugin.c" -o "$folder/plugin.so" -I"$prefix/include/orvelasn1" \
    -Wl,--whole-archive "$prefix/$lib"/liborvel*.a -Wl,--no-whole-archive
  "$nm" -D --defined-only "$folder/plugin.so" | awk '{ print $NF }' |
    grep -vxE 'parse|(asn1|List|pki)_[A-Za-z0-9_]+' >"$folder/strangers" &&
    fail "the static libraries show $(cat "$folder/strangers")"
  # shellcheck disable=SC2086
  $cc "$here/plugin.c" -o "$folder/program" -I"$prefix/include/orvelasn1" -ldl
  start "$folder/program" "$folder/plugin.so"
}

# The C library checks sizes in optimised builds, and as the user says where they say it.
fortify() {
  for row in '-O2 2' '-Os 2' '-O0' '-O2_-D_FORTIFY_SOURCE=1 1' '-O2_-D_FORTIFY_SOURCE=0 0'; do
    options=$(echo "${row%% *}" | tr _ ' ' | sed 's/-D FORTIFY SOURCE/-D_FORTIFY_SOURCE/')
    expected=${row#"${row%% *}"}
    # shellcheck disable=SC2086
    found=$($cc -U_FORTIFY_SOURCE $options -include "$source/cmake/fortify.h" -x c -dM -E /dev/null |
      sed -n 's/#define _FORTIFY_SOURCE//p')
    test "$found" = "$expected" || fail "$options: _FORTIFY_SOURCE is \"$found\""
  done
}

# A program that was linked before the symbols had versions goes on to work.
unversioned() {
  printf '#include <orvelutils.h>\nint main(void) { List_free(List_new(0), 0); return 0; }\n' \
    >"$folder/list.c"
  # The compilers and their options must be split.
  # shellcheck disable=SC2086
  {
    $cxx -std=c++20 -shared -fPIC -I"$prefix/include/orvelasn1" "$source/utils/list.cpp" \
      -Wl,-soname,liborvelutils.so.1 -o "$folder/liborvelutils.so"
    $cc -I"$prefix/include/orvelasn1" "$folder/list.c" "$folder/liborvelutils.so" -o "$folder/program"
  }
  "$readelf" -V "$folder/program" >"$folder/needed"
  ! grep ORVELASN1 "$folder/needed" || fail "the program needs a version"
  export LD_LIBRARY_PATH="$prefix/$lib"
  start "$folder/program"
}

# The Python package beside the libraries: it finds them without being told where, also after a move.
python() {
  for component in runtime python; do
    "$cmake" --install "$build" --prefix "$folder/first" --component $component >/dev/null
  done
  mv "$folder/first" "$folder/moved"
  # That of the system, as the package was built with.
  if [ -x /usr/bin/python3 ]; then interpreter=/usr/bin/python3; else interpreter=python3; fi
  cd /
  PYTHONPATH=$(dirname "$(find "$folder/moved" -type d -name orvelasn1 -path '*python*')") \
    PYTHONDONTWRITEBYTECODE=1 $interpreter - "$folder/moved" <<'END'
import sys

import orvelasn1

assert orvelasn1.__file__.startswith(sys.argv[1]), orvelasn1.__file__
number = orvelasn1.decode("CRLNumber", bytes([2, 1, 5]))
assert number == 5, number
loaded = {line.split()[-1] for line in open("/proc/self/maps") if "/liborvel" in line}
assert len(loaded) == 3 and all(name.startswith(sys.argv[1]) for name in loaded), loaded
END
}

# Everything that says a version says the same.
versions() {
  # The numbers are the arithmetic of a shell.
  IFS=. read -r major minor patch <<END
$version
END
  printf '#include <orvelasn1_version.h>\nORVELASN1_VERSION ORVELASN1_VERSION_NUMBER\n' |
    $cc -I"$prefix/include/orvelasn1" -E -P -x c - >"$folder/header"
  echo "\"$version\" $((major * 10000 + minor * 100 + patch))" | diff - "$folder/header"
  grep -q "PACKAGE_VERSION \"$version\"" "$prefix/$lib"/cmake/orvelasn1/orvelasn1-config-version.cmake
  for library in orvelutils orvelasn1 orvelpki; do
    test -e "$prefix/$lib/lib$library.so.$version" || fail "no lib$library.so.$version"
    grep -qx "Version: $version" "$prefix/$lib/pkgconfig/$library.pc"
  done
  head -n 1 "$source/debian/changelog" | grep -q "^orvelasn1 ($version) "
  if [ "$tool" = ON ]; then
    "$prefix/bin/orvelasn1" --version | grep -qx "orvelasn1 $version"
  fi
}

"$2"
