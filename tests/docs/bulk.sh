#!/bin/sh
# docs/bulk.md: each recipe that is marked as tested writes what one process writes, and the tool answers to
# lines as they come.
#
#   bulk.sh TOOL SOURCE
#
# SOURCE is the top folder of the sources.
set -eu
tool=$1 source=$2
folder=$(mktemp -d)
server=
# The traps call it.
# shellcheck disable=SC2317
end() {
  status=$?
  trap - EXIT
  if [ -n "$server" ]; then kill "$server" 2>/dev/null || :; fi
  wait
  rm -rf "$folder"
  exit "$status"
}
trap end EXIT
trap 'exit 1' INT TERM HUP PIPE
cd "$folder"
mkdir bin inputs inputs/folder recipes
ln -s "$tool" bin/orvelasn1
PATH=$folder/bin:$PATH
export PATH

# Certificates, of which two are broken: they have something else where the serial number is due.
printf '[req]\ndistinguished_name = dn\n[dn]\n' >openssl.cnf
openssl genpkey -algorithm EC -pkeyopt ec_paramgen_curve:P-256 -out key.pem
number=100
while [ $number -lt 150 ]; do
  openssl req -x509 -config openssl.cnf -key key.pem -subj "/O=Example/CN=$number" -outform DER \
    -addext "subjectAltName=DNS:$number.example" -out inputs/folder/$number.der
  number=$((number + 1))
done
for number in 120 121; do
  printf '\005' | dd of=inputs/folder/$number.der bs=1 seek=13 conv=notrunc 2>dd.log
done
for file in inputs/folder/*.der; do
  openssl base64 -A -in "$file"
  echo
done >inputs/certificates.txt
zstd -q -k inputs/certificates.txt
/usr/bin/python3 "$source/tests/docs/bulk.py" inputs port &
server=$!
left=100
until [ -s port ]; do
  left=$((left - 1))
  if [ $left = 0 ]; then
    echo "the log does not listen"
    exit 1
  fi
  sleep 0.1
done

# The recipes are in the blocks that come after their marks. Their sizes are made small.
awk -v folder=recipes '
  /^\*\*/ { tested = $0 == "**Tested**" }
  tested && /^```[a-z]/ {
    file = sprintf("%s/%02d.%s", folder, ++count, substr($0, 4))
    tested = 0
    next
  }
  /^```$/ { file = "" }
  file != "" { print >file }' "$source/docs/bulk.md"
sed -i "s|https://ct.example.org|http://127.0.0.1:$(cat port)|; s/1000000/10/; s/64M/4k/" recipes/*
marks=$(grep -cx '\*\*Tested\*\*' "$source/docs/bulk.md")
found=$(find recipes -type f | grep -c .)
if [ "$marks" != "$found" ] || [ "$found" -lt 10 ]; then
  echo "$marks recipes are marked as tested, and $found are found"
  exit 1
fi

orvelasn1 map --jobs 1 --in base64 --fields subject,san.dns inputs/certificates.txt >expected 2>map.log
[ "$(grep -c . expected)" = 50 ]
[ "$(grep -c '^CN=1[0-9][0-9],O=Example	1[0-9][0-9].example	$' expected)" = 48 ]

failed=0
for recipe in recipes/*; do
  run=run-$(basename "$recipe")
  cp -r inputs "$run"
  case $recipe in
    *.sh) program='sh -e' ;;
    *.python) program=/usr/bin/python3 ;;
  esac
  # The program must be split.
  # shellcheck disable=SC2086
  (cd "$run" && $program "../$recipe") >log 2>&1 || echo "status $?" >>log
  if [ ! -e "$run/names.tsv" ]; then cat "$run"/names-*.txt >"$run/names.tsv" 2>>log || :; fi
  if ! diff expected "$run/names.tsv" >difference || grep '^status ' log; then
    echo "This writes other lines (>) than one process (<):"
    cat "$recipe" difference log
    failed=1
  fi
done

/usr/bin/python3 - "$tool" inputs/certificates.txt <<'END' || failed=1
import subprocess
import sys

tool, file = sys.argv[1:]
# An engine may wait for an answer before it writes the next line.
command = [tool, "map", "--in", "base64", "--fields", "subject"]
with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as run:
    for number, line in enumerate(open(file, "rb").readlines()[:20]):
        run.stdin.write(line)
        run.stdin.flush()
        assert run.stdout.readline() == b"CN=%d,O=Example\t\n" % (100 + number)
    run.stdin.close()
    assert run.stdout.read() == b"" and run.wait() == 0
END
exit $failed
