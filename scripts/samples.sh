#!/bin/sh
# Makes small sample objects: a CRL, an OCSP response, a certification request, a PKCS #12 file and
# the objects of a smart card.
#
#   sh scripts/samples.sh FOLDER
set -eu
[ $# = 1 ] || { echo "sh scripts/samples.sh FOLDER" >&2 && exit 1; }
mkdir -p "$1"
folder=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
. scripts/lib.sh

provide want_openssl

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# ssl ARGUMENT...: runs openssl. Prints its output only where it fails.
ssl() {
  openssl "$@" >log 2>&1 </dev/null || { cat log >&2 && fail "failed: openssl $*"; }
}

# An authority, a card's certificate, and the request that it was made from.
ssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 3650 \
  -subj "/C=DE/O=Example Trust/CN=Example CA" -keyout ca.key -out ca.pem
ssl req -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj "/C=DE/O=Example/CN=Some One" \
  -addext "subjectAltName=email:some.one@example.org" -addext "keyUsage=digitalSignature" \
  -keyout card.key -out "$folder/request.pem"
ssl x509 -req -in "$folder/request.pem" -CA ca.pem -CAkey ca.key -set_serial 0x1267 -days 365 \
  -out card.pem

# The authority's index: one certificate is good, one is revoked.
printf 'V\t350101000000Z\t\t1267\tunknown\t/C=DE/O=Example/CN=Some One\n' >index
printf 'R\t350101000000Z\t260101000000Z,keyCompromise\t1268\tunknown\t/CN=Lost\n' >>index
cat >ca.cnf <<'END'
[ca]
default_ca = authority
[authority]
database = index
default_md = sha256
crlnumber = number
crl_extensions = extensions
[extensions]
authorityKeyIdentifier = keyid
END
echo 1000 >number
ssl ca -config ca.cnf -gencrl -cert ca.pem -keyfile ca.key -crldays 30 -out "$folder/crl.pem"

ssl ocsp -issuer ca.pem -serial 0x1267 -serial 0x1268 -no_nonce -reqout request.der
ssl ocsp -index index -CA ca.pem -rsigner ca.pem -rkey ca.key -resp_no_certs -ndays 7 \
  -reqin request.der -respout "$folder/ocsp-response.der"

ssl pkcs12 -export -in card.pem -inkey card.key -certfile ca.pem -name "Some One" \
  -certpbe NONE -passout pass:secret -out "$folder/exchange.p12"

# The identifier of a card object is one octet, that of an attribute is four. openssl writes them as the
# content of OBJECT IDENTIFIERs: 0.16 is the octet 10.
cat >card.cnf <<'END'
asn1 = SEQUENCE:card
[card]
root = SEQUENCE:directory
set1 = SEQUENCE:keys
set2 = SEQUENCE:certificates
set3 = SEQUENCE:holder
[directory]
id = OBJECT:0.16
objects = OCTWRAP,SET:files
[files]
label = SEQUENCE:label
serial = SEQUENCE:serial
[label]
id = OBJECT:0.1
value = FORMAT:ASCII,OCTETSTRING:Example card
[serial]
id = OBJECT:0.2
value = FORMAT:HEX,OCTETSTRING:4711
[keys]
id = OBJECT:0.17
sets = OCTWRAP,SET:key_sets
[key_sets]
signing = SET:signing
deciphering = SET:deciphering
[signing]
file = SEQUENCE:label
inner = SEQUENCE:directory
[deciphering]
file = SEQUENCE:serial
[certificates]
id = OBJECT:0.18
sets = OCTWRAP,SET:certificate_sets
[certificate_sets]
own = SET:deciphering
[holder]
id = OBJECT:0.32
attributes = OCTWRAP,SET:attributes
[attributes]
pin = SEQUENCE:pin
[pin]
id = OBJECT:0.16.0.0.0
value = FORMAT:ASCII,OCTETSTRING:PIN 1
END
ssl asn1parse -genconf card.cnf -noout -out "$folder/card-object.der"
