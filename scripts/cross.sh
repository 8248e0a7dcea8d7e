#!/bin/sh
# Builds the libraries of what is committed for aarch64, and runs the programs of the installed libraries
# under an emulator. All of it happens in a new chroot of Debian 12: Debian's cross compilers and
# gcc-multilib, which the tests in 32 bits need, cannot be on one system. As root.
#
#   sh scripts/cross.sh
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

want_chroot_tools() {
  want git has git
  want mmdebstrap has mmdebstrap
}
provide want_chroot_tools

scratch=$(mktemp -d)
trap 'rm -rf --one-file-system "$scratch"' EXIT
chroot=$scratch/chroot

say "=== A new Debian 12 with cross compilers"
mmdebstrap --quiet --variant=apt --include=binutils,cmake,g++-aarch64-linux-gnu,googletest,ninja-build,pkgconf,python3,qemu-user-static \
  bookworm "$chroot"
mkdir "$chroot/source"
git -c safe.directory="$PWD" archive HEAD | tar -x -C "$chroot/source"

say "=== The libraries for aarch64, and programs over them"
env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 chroot "$chroot" sh -eu -c '
  cd /source
  cmake --preset aarch64
  cmake --build --preset aarch64 --target orvelutils_shared orvelutils_static orvelasn1_shared \
    orvelasn1_static orvelpki_shared orvelpki_static every_function_c every_function_cpp
  ctest --preset aarch64 -R "^(install|every_function|abi)"'
