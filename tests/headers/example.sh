#!/bin/sh
# The example PROGRAM prints the fields of a certificate, and fails without one. In C names and times are as
# the record has them, and in C++ as RFC 4514 and ISO 8601 write them.
#
#   example.sh PROGRAM LANGUAGE
set -eu
program=$1 language=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

cat >root.cnf <<END
[req]
prompt = no
distinguished_name = name
string_mask = utf8only
[name]
C = DE
O = A/B
+CN = Some One
END
openssl req -x509 -new -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout key.pem \
  -config root.cnf -days 20000 -outform DER -out root.der 2>errors || {
  cat errors
  exit 1
}
date=$(openssl x509 -inform DER -in root.der -noout -enddate -dateopt iso_8601)
date=${date#notAfter=}
case $language in
  c) name='/c(19)=DE/o(12)=A//B,cn(12)=Some One' date=$(echo "$date" | tr -cd '0-9Z') ;;
  cpp) name='O=A/B+CN=Some One,C=DE' date="${date%Z} UTC" ;;
esac
cat >expected <<END
subject  $name
issuer   $name
notAfter $date
encodes to the same octets
END
"$program" root.der >printed
diff expected printed

: >empty.der
dd if=root.der of=cut.der bs=64 count=1 2>/dev/null
for bad in missing.der empty.der cut.der; do
  if "$program" $bad 2>errors; then
    echo "$bad was accepted"
    exit 1
  fi
done
if "$program"; then
  echo "no argument was accepted"
  exit 1
fi
