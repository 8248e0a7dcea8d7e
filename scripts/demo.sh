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
cmake --build $build >>$build.log 2>&1 || { cat $build.log; fail "the build failed"; }
tool=$build/bin/orvelasn1

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
awk -v folder="$folder" '
  /-----BEGIN CERTIFICATE-----/ { file = sprintf("%s/%04d.pem", folder, ++count) }
  file != "" { print >file }
  /-----END CERTIFICATE-----/ { close(file); file = "" }' /etc/ssl/certs/ca-certificates.crt

all=0 decoded=0 same=0
for certificate in "$folder"/*.pem; do
  all=$((all + 1))
  if "$tool" show --short "$certificate" >/dev/null; then decoded=$((decoded + 1)); fi
  if "$tool" recode "$certificate" >/dev/null; then same=$((same + 1)); fi
done

sh scripts/samples.sh "$folder/samples"
for object in "$folder/0001.pem" "$folder/samples"/*; do
  say
  say "\$ $tool show $object"
  "$tool" show "$object"
done
say "Of $all certificates that this system trusts, $decoded decoded and $same came back octet for octet."
[ "$decoded" = "$all" ] && [ "$same" = "$all" ]
