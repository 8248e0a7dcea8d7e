#!/bin/sh
# Builds and runs all tests with one preset or more.
#
#   sh scripts/check.sh [PRESET...]
#
# The presets are release (the default), debug, asan, tsan, m32, clang, clang16, clang16m32, libcxx and
# unsigned; and s390x, armhf, aarch64 and riscv64, which run under an emulator, in a Debian of their own in
# build/machines, as root. The last lines name the tests that failed or were skipped, and count those of all
# presets.
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

if [ $# = 0 ]; then set -- release; fi

want_test_tools() {
  want googletest test -e /usr/src/googletest/CMakeLists.txt
  want openssl has openssl
  want gnutls-bin has certtool
  want jq has jq
  want python3-cryptography /usr/bin/python3 -c "import cryptography"
  want binutils has readelf
  want pkgconf has pkg-config
  want zsh has zsh
  want fish has fish
  want scdoc has scdoc
  want mandoc has mandoc
  want man-db has man
  want locales test -e /usr/share/i18n/locales/C
  want libc6-dev links gcc
}

want_what_presets_need() {
  for preset in $presets; do
    case $preset in
      m32) want g++-multilib links g++ -m32 -include errno.h ;;
      clang)
        want clang has clang++
        want libclang-rt-dev links clang++ -fsanitize=address,undefined
        ;;
      clang16) want clang-16 has clang++-16 ;;
      clang16m32)
        want clang-16 has clang++-16
        want g++-multilib links g++ -m32 -include errno.h
        ;;
      libcxx)
        want clang-16 has clang++-16
        want libc++-16-dev links clang++-16 -stdlib=libc++
        want libc++abi-16-dev links clang++-16 -stdlib=libc++
        ;;
      asan) want g++ links g++ -fsanitize=address,undefined ;;
      tsan) want g++ links g++ -fsanitize=thread ;;
    esac
  done
}

is_machine() {
  case $1 in s390x | armhf | aarch64 | riscv64) ;; *) return 1 ;; esac
}

presets=$*
native=
for preset in $presets; do
  is_machine "$preset" || native="$native $preset"
done
if [ -n "$native" ]; then
  provide want_build_tools want_tool_libraries want_certificates want_test_tools want_what_presets_need
fi

outcomes=$(mktemp) unpassed=$(mktemp)
trap 'rm -f "$outcomes" "$unpassed"' EXIT

# run PRESET: builds and tests it. Writes the outcomes to a file, also where the build or CTest fails.
run() {
  if is_machine "$1"; then
    build=$machines/source/build/$1 within=in_machines
    provide_machines
  else
    build=build/$1 within=
  fi
  rm -rf "$build/results.xml" "$build/suites"
  : >"$outcomes"
  if ! { $within cmake --preset "$1" && $within cmake --build --preset "$1"; }; then
    echo "failed the build" >"$outcomes"
    return
  fi
  status=0
  $within ctest --preset "$1" --output-junit results.xml || status=1
  if ! { [ -s "$build/results.xml" ] && sh scripts/outcomes.sh "$build" >"$outcomes"; }; then
    echo "failed the results" >"$outcomes"
  fi
  # A test that ctest could not start is a failure, too.
  if [ $status != 0 ] && [ "$(count failed)" = 0 ]; then echo "failed ctest" >>"$outcomes"; fi
}

count() {
  grep -c "^$1 " "$outcomes" || true
}

passed=0 failed=0 skipped=0
for preset in $presets; do
  say "=== $preset"
  run "$preset"
  passed=$((passed + $(count passed)))
  failed=$((failed + $(count failed)))
  skipped=$((skipped + $(count skipped)))
  grep -v '^passed ' "$outcomes" | sed "s/ / in $preset: /" >>"$unpassed" || true
done

# The name of each test that did not pass.
cat "$unpassed"
closing="$passed passed, $failed failed"
if [ $skipped != 0 ]; then closing="$closing, $skipped skipped"; fi
say "$closing"
[ $failed = 0 ]
