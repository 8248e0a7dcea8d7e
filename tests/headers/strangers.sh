#!/bin/sh
# The example PROGRAM prints the DNS names of every certificate in a bundle of strangers: one without a
# subject, with a directory name among its DNS names; one by hand, all names of which are hostile; and
# octets that are no certificate. The block without a language in DOCUMENT is what it prints.
#
#   strangers.sh PROGRAM DOCUMENT
set -eu
program=$1 document=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

request() { # FILE SUBJECT NAMES
  cat >request.cnf <<END
[req]
prompt = no
distinguished_name = name
x509_extensions = extensions
[name]
[extensions]
subjectAltName = $3
[directory]
C = DE
CN = Some Directory
END
  openssl req -x509 -new -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout key.pem \
    -config request.cnf -subj "$2" -days 20000 -out "$1.pem" 2>errors || {
    cat errors
    exit 1
  }
  openssl x509 -in "$1.pem" -outform DER -out "$1.der"
}
request nobody / DNS:first.example,dirName:directory,DNS:second.example
request someone '/C=DE/CN=Some One' email:some@one.example,DNS:third.example,IP:127.0.0.1

element() { # TAG HEX...
  tag=$1
  shift
  content=$(echo "$*" | tr -d ' ')
  length=$((${#content} / 2))
  if [ $length -ge 256 ]; then
    printf '%s82%04X%s' "$tag" $length "$content"
  elif [ $length -ge 128 ]; then
    printf '%s81%02X%s' "$tag" $length "$content"
  else
    printf '%s%02X%s' "$tag" $length "$content"
  fi
}
octets() { # HEX
  echo "$1" | sed 's/../& /g' | tr ' ' '\n' | while read -r octet; do
    # shellcheck disable=SC2059
    if [ -n "$octet" ]; then printf "\\$(printf %03o "0x$octet")"; fi
  done
}

# The value in its subject has the identifier octet 80. Its DNS names: one that is good; one after a
# directory name that has no SEQUENCE; one with a NUL octet, "good.example" up to there; one with
# octets above 7F; one that clears a terminal; one with quotation marks.
cn=0603550403
algorithm=$(element 30 06032B6570)
name=$(element 30 "$(element 31 "$(element 30 $cn 800178)")")
time=$(element 17 3236303130313030303030305A)
names=$(
  element 82 676F6F642E6578616D706C65
  element A4 "$(element 31 "$(element 30 $cn 0C0178)")"
  element 82 676F6F642E6578616D706C65002E6576696C
  element 82 676FC3B6642E6578616D706C65
  element 82 1B5B324A
  element 82 6122202262
)
extension=$(element 30 0603551D11 "$(element 04 "$(element 30 "$names")")")
tbs=$(element 30 A003020102 020105 "$algorithm" "$name" "$(element 30 "$time$time")" "$name" \
  "$(element 30 "$algorithm" 03020001)" "$(element A3 "$(element 30 "$extension")")")
octets "$(element 30 "$tbs$algorithm" 030200AA)" >hostile.der
octets 3003020105 >number.der
for file in hostile number; do
  {
    echo '-----BEGIN CERTIFICATE-----'
    openssl base64 -in $file.der
    echo '-----END CERTIFICATE-----'
  } >$file.pem
done

cat >expected.good <<'END'
subject ""
  "first.example"
  "second.example"
subject "CN=Some One,C=DE"
  "third.example"
END
cat expected.good - >expected.all <<'END'
subject "CN=#800178"
  "good.example"
  "\x1B[2J"
  "a\x22 \x22b"
  and 3 that cannot be read
no certificate: offset 2, tbsCertificate: expected SEQUENCE (30), found INTEGER (02)
END
for form in pem der; do
  cat nobody.$form someone.$form >good
  "$program" good >printed
  diff expected.good printed
  cat good hostile.$form number.$form >all
  status=0
  "$program" all >printed || status=$?
  diff expected.all printed
  test $status = 1
done

awk '/^```/ { inside = !inside; printed = $0 == "```"; next }
  inside && printed' "$document" >shown
cat nobody.pem hostile.pem number.pem >all
"$program" all >printed || :
diff shown printed

: >empty
printf '\060\005\002' >short
printf -- '-----BEGIN CERTIFICATE-----\nMAMC' >open
for bad in missing empty short open; do
  if "$program" $bad; then
    echo "$bad was accepted"
    exit 1
  fi
done
if "$program"; then
  echo "no argument was accepted"
  exit 1
fi
