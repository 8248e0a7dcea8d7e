#!/bin/sh
# Builds the libraries for aarch64 and runs the programs of the installed libraries under an emulator.
#
#   sh scripts/cross.sh
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

want_cross_tools() {
  want g++-aarch64-linux-gnu links aarch64-linux-gnu-g++ -std=c++20
  want qemu-user-static has qemu-aarch64-static
  want pkgconf has pkg-config
  want googletest test -e /usr/src/googletest/CMakeLists.txt # which the presets with tests look for
}

provide want_build_tools want_cross_tools
cmake --preset aarch64
cmake --build --preset aarch64 --target orvelutils_shared orvelutils_static orvelasn1_shared \
  orvelasn1_static orvelpki_shared orvelpki_static every_function_c every_function_cpp
ctest --preset aarch64 -R '^(install|every_function|abi)'
