#!/bin/sh
# Builds the release, shows an object of each kind, and runs the tool over every certificate that this
# system trusts.
#
#   sh scripts/demo.sh
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh
provide want_build_tools want_tool_libraries want_certificates want_openssl

build=build/demo
mkdir -p build
say "Building in $build"
cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=Release -DORVELASN1_TOOL=ON >$build.log 2>&1 ||
  { cat $build.log; fail "cmake failed"; }
cmake --build $build --target orvelasn1_tool >>$build.log 2>&1 ||
  { cat $build.log; fail "the build failed"; }
tool=$build/bin/orvelasn1

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
trusted=/etc/ssl/certs/ca-certificates.crt
all=$(grep -c -e '-----BEGIN CERTIFICATE-----' $trusted)
status=0
"$tool" show --json $trusted >"$folder/shown" || status=1
"$tool" recode $trusted >"$folder/recoded" || status=1
decoded=$(grep -c '^{"type":"certificate",' "$folder/shown") || true
same=$(grep -c ': same, [0-9]* octets$' "$folder/recoded") || true

sed '/-----END CERTIFICATE-----/q' $trusted >"$folder/certificate.pem"
sh scripts/samples.sh "$folder/samples"
for object in "$folder/certificate.pem" "$folder/samples"/*; do
  say
  say "\$ $tool show $object"
  "$tool" show "$object"
done
say "Of $all certificates that this system trusts, $decoded decoded and $same came back octet for octet."
[ $status = 0 ] && [ "$decoded" = "$all" ] && [ "$same" = "$all" ]
