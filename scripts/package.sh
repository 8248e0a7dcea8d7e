#!/bin/sh
# Makes the Debian packages of what is committed, in build/packages: in a clean folder, twice, and the two
# builds must come out the same. Then lintian reads them, and a new chroot of Debian 12 installs them, runs
# the programs of debian/tests, and removes them. As root.
#
#   sh scripts/package.sh
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

want_packaging_tools() {
  want git has git
  want dpkg-dev has dpkg-buildpackage
  want lintian has lintian
  want mmdebstrap has mmdebstrap
}
provide want_packaging_tools

# The packages are built with the programs of Debian alone.
export PATH=/usr/sbin:/usr/bin:/sbin:/bin

packages=build/packages
mkdir -p "$packages"
find "$packages" -mindepth 1 -delete
packages=$(cd "$packages" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf --one-file-system "$scratch"' EXIT

# What is committed while this runs is in neither build.
commit=$(git -c safe.directory="$PWD" rev-parse HEAD)
source=orvelasn1-$(dpkg-parsechangelog --show-field Version)

build() { # FOLDER
  mkdir -p "$1/$source"
  git -c safe.directory="$PWD" archive "$commit" | tar -x -C "$1/$source"
  (
    cd "$1/$source"
    if ! dpkg-checkbuilddeps; then apt-get build-dep -q -y --no-install-recommends ./; fi
    dpkg-buildpackage -us -uc
  ) >"$1/log" 2>&1 || fail "$(tail -n 40 "$1/log")"
  rm -rf "${1:?}/$source"
}

say "=== The packages"
build "$scratch/a"
say "=== The packages once more, in another folder and time zone"
(umask 077 && mkdir -p "$scratch/another/deeper_folder")
TZ=Pacific/Kiritimati build "$scratch/another/deeper_folder"
# Where they differ, both are left to be looked at.
mv "$scratch"/a/*.* "$packages"
mkdir "$packages/again"
mv "$scratch"/another/deeper_folder/*.* "$packages/again"
for package in "$packages"/*.deb "$packages"/*.dsc "$packages"/*.tar.xz; do
  cmp "$package" "$packages/again/${package##*/}"
done
find "$packages/again" -delete
for package in "$packages"/*.deb; do
  say "$(stat -c %s "$package") octets, twice the same: ${package##*/}"
done

say "=== lintian"
lintian --allow-root --fail-on error,warning --tag-display-limit 0 "$packages"/*.changes

say "=== A new Debian 12"
chroot=$scratch/chroot
mmdebstrap --quiet --variant=apt \
  --include=cmake,g++,make,openssl,pkgconf,python3,python3-cffi-backend bookworm "$chroot"
inside() {
  env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
    PYTHONDONTWRITEBYTECODE=1 chroot "$chroot" "$@"
}
files() {
  inside find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp -o -path /packages \
    -o -path /var/cache -o -path /var/lib/apt -o -path /var/lib/dpkg -o -path /var/log \) -prune \
    -o ! -name __pycache__ -printf '%p %y\n' | sort
}
inside apt-get update -q >"$scratch/log" 2>&1 || fail "$(cat "$scratch/log")"
files >"$scratch/before"
mkdir "$chroot/packages"
cp "$packages"/*.deb "$chroot/packages"
rm -f "$chroot"/packages/*-dbgsym_*.deb
inside sh -c 'apt-get install -q -y --no-install-recommends /packages/*.deb' >"$scratch/log" 2>&1 ||
  fail "$(cat "$scratch/log")"
cp -r debian/tests "$chroot/packages"
for test in c cpp python tool; do
  say "=== debian/tests/$test"
  mkdir "$chroot/tmp/$test"
  inside env AUTOPKGTEST_TMP="/tmp/$test" "/packages/tests/$test"
done

say "=== Removing the packages"
names=$(for package in "$chroot"/packages/*.deb; do dpkg-deb --field "$package" Package; done)
# The names must be split.
# shellcheck disable=SC2086
inside apt-get purge -q -y --auto-remove $names >"$scratch/log" 2>&1 || fail "$(cat "$scratch/log")"
files | diff "$scratch/before" - || fail "files that were there before (<) and after (>) differ"
say "Nothing is left of them."
