# shellcheck shell=sh
# Sourced by the scripts of this folder. Looks for the programs and libraries that they need, and installs
# what is missing, as root on a system with apt-get. POSIX sh.

say() {
  printf '%s\n' "$*"
}

fail() {
  printf '%s\n' "$*" >&2
  exit 1
}

# Print the folders of the libraries, and the files that these are compiled from. No name has a blank.
library_folders() {
  for folder in src pki utils; do
    if [ -d $folder ]; then echo $folder; fi
  done
}

library_sources() {
  # The names must be split.
  # shellcheck disable=SC2046
  find $(library_folders) -name '*.cpp' ! -name '*_test.cpp' | LC_ALL=C sort
}

missing=

# want PACKAGE COMMAND...: adds PACKAGE to what is missing where COMMAND fails.
want() {
  package=$1
  shift
  if ! "$@" >/dev/null 2>&1; then
    missing="$missing $package"
  fi
}

has() {
  command -v "$1"
}

has_recent_cmake() {
  has cmake && cmake --version | awk 'NR == 1 {
    split($3, version, ".")
    exit !(version[1] > 3 || version[1] == 3 && version[2] >= 25) }'
}

has_header() {
  printf '#include <%s>\n' "$1" | g++ -std=c++20 -x c++ -fsyntax-only -
}

# links COMPILER OPTION...: succeeds where the compiler links a program with these options.
links() {
  scratch=$(mktemp -d)
  echo 'int main() { return 0; }' >"$scratch/main.cpp"
  result=0
  "$@" "$scratch/main.cpp" -o "$scratch/main" || result=1
  rm -rf "$scratch"
  return $result
}

want_build_tools() {
  want cmake has_recent_cmake
  want ninja-build has ninja
  want g++ links g++ -std=c++20
}

want_tool_libraries() {
  want libcli11-dev has_header CLI/CLI.hpp
  want nlohmann-json3-dev has_header nlohmann/json.hpp
  want nettle-dev has_header nettle/sha2.h
  want libmimalloc-dev has_header mimalloc.h
}

want_openssl() {
  want openssl has openssl
}

want_certificates() {
  want ca-certificates test -s /etc/ssl/certs/ca-certificates.crt
}

# provide FUNCTION...: calls each FUNCTION, which calls `want` for what it needs. Installs what is
# missing, or ends the script where it cannot.
provide() {
  missing=
  for function in "$@"; do "$function"; done
  if [ -z "$missing" ]; then
    return
  fi
  if ! has apt-get >/dev/null || [ "$(id -u)" != 0 ]; then
    say "These are missing, by the names of their Debian packages:" >&2
    for package in $missing; do say "  $package" >&2; done
    if has apt-get >/dev/null; then
      fail "Run this once as root, or install them: sudo apt-get install$missing"
    fi
    fail "Install what your system has in their place, then run this again."
  fi
  say "Installing$missing"
  export DEBIAN_FRONTEND=noninteractive
  # The names must be split.
  # shellcheck disable=SC2086
  { apt-get update -q && apt-get install -q -y --no-install-recommends $missing; } ||
    fail "apt-get could not install$missing"
  missing=
  for function in "$@"; do "$function"; done
  if [ -n "$missing" ]; then
    fail "Still missing after their packages were installed:$missing"
  fi
}

want_mmdebstrap() {
  want mmdebstrap has mmdebstrap
}

# A Debian 12 of its own for what is built for other processors: Debian's cross compilers and gcc-multilib,
# which the tests in 32 bits need, cannot be on one system.
machines=$PWD/build/machines
machine_packages=binutils,ca-certificates,cmake,g++,g++-aarch64-linux-gnu,g++-arm-linux-gnueabihf
machine_packages=$machine_packages,g++-riscv64-linux-gnu,g++-s390x-linux-gnu,googletest,locales
machine_packages=$machine_packages,ninja-build,openssl,pkgconf,python3,qemu-user-static,tzdata

# provide_machines: makes that system where it is not there yet, and copies the sources to its /source. As
# root. What was built there before stays.
provide_machines() {
  if [ "$(cat "$machines/packages" 2>/dev/null)" != "$machine_packages" ]; then
    provide want_mmdebstrap
    say "A new Debian 12 with cross compilers"
    rm -rf --one-file-system "$machines"
    mkdir -p "$machines"
    mmdebstrap --quiet --variant=apt --include=$machine_packages bookworm "$machines" ||
      fail "mmdebstrap could not make $machines"
    printf '%s\n' "$machine_packages" >"$machines/packages"
  fi
  mkdir -p "$machines/source"
  find "$machines/source" -mindepth 1 -maxdepth 1 ! -name build -exec rm -rf {} +
  tar --exclude=./build --exclude=./.git -cf - . | tar -xf - -C "$machines/source"
}

# in_machines COMMAND...: runs it among the sources there. Of the attacks' inputs, one of 16 is tried, or one
# of ORVELASN1_ATTACK_SHARE: an emulator takes ten times the time.
in_machines() {
  # The arguments are those of the inner shell.
  # shellcheck disable=SC2016
  env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
    ORVELASN1_ATTACK_SHARE="${ORVELASN1_ATTACK_SHARE:-16}" chroot "$machines" \
    sh -c 'cd /source && exec "$@"' - "$@"
}
