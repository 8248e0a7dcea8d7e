#!/bin/sh
# Runs an example of the reference, and compares what it prints with what is known of its input by hand, or
# from openssl. The source of an example has fewer than 60 lines.
#
#   run.sh SOURCE PROGRAM
set -eu
source=$1 program=$2
test "$(wc -l <"$source")" -lt 60 || {
  echo "$source has 60 lines or more"
  exit 1
}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

# openssl WORD...: runs openssl, which says nothing where all is well.
openssl() {
  command openssl "$@" 2>errors || {
    cat errors
    exit 1
  }
}
octets() { # HEX...
  for octet in "$@"; do
    # shellcheck disable=SC2059
    printf "\\$(printf %03o "0x$octet")"
  done
}
# prints EXPECTED WORD...: the program succeeds with these words and prints this.
prints() {
  printf '%s\n' "$1" >expected
  shift
  "$program" "$@" >printed
  diff expected printed
}
# fails EXPECTED WORD...: the same, but it fails.
fails() {
  printf '%s' "${1:+$1
}" >expected
  shift
  status=0
  "$program" "$@" >printed || status=$?
  test $status = 1
  diff expected printed
}
# A certificate, and one that is not sound: its serial number is another type's.
certificate() { # SUBJECT NAMES
  openssl req -x509 -newkey ed25519 -nodes -keyout key.pem -subj "$1" -set_serial 0x0A1B2C \
    -addext "subjectAltName=$2" -days 365 -outform DER -out certificate.der
}
damaged() {
  octets 30 19 30 0D A0 03 02 01 02 30 00 02 01 01 02 01 01 30 08 06 03 55 04 03 05 00 00 >damaged.der
}

of_certificate() {
  certificate '/C=DE/CN=Some One' DNS:a.example
  prints "subject $(openssl x509 -inform DER -in certificate.der -noout -subject -nameopt RFC2253 |
    sed 's/subject=//')
issuer  CN=Some One,C=DE
serial  0A1B2C
until   $(date -u -d "$(openssl x509 -inform DER -in certificate.der -noout -enddate |
    sed 's/notAfter=//')" +%Y-%m-%d)" certificate.der
  cat certificate.der certificate.der >two.der
  "$program" two.der | head -n 1 | grep -q '^octets follow the certificate$'
  damaged
  fails '' damaged.der
}

of_explain() {
  certificate /CN=x DNS:a.example
  prints 'a Certificate' pki_Certificate certificate.der
  damaged
  fails 'offset 9, tbsCertificate.serialNumber: expected INTEGER (02), found SEQUENCE (30)' \
    pki_Certificate damaged.der
  octets 05 00 >>certificate.der
  fails "offset $(($(wc -c <certificate.der) - 2)): octets follow the Certificate" \
    pki_Certificate certificate.der
  fails '' no_type certificate.der
}

of_dns_names() {
  certificate /CN=x email:some@one.example,DNS:a.example,DNS:b.example
  prints '"a.example"
"b.example"' certificate.der
  # In place of the "b", a NUL octet.
  LC_ALL=C sed 's/b[.]example/\x00.example/' certificate.der >hostile.der
  fails '1 names cannot be read' hostile.der
  damaged
  fails '' damaged.der
}

of_crl() {
  certificate /CN=x DNS:a.example
  openssl x509 -inform DER -in certificate.der -out certificate.pem
  : >index.txt
  printf '[ca]\ndefault_ca=a\n[a]\ndatabase=index.txt\ndefault_md=null\ncrlnumber=number\n' >ca.cnf
  printf 'R\t300101000000Z\t260102030405Z,keyCompromise\t0A1B\tunknown\t/CN=a\n' >>index.txt
  printf 'R\t300101000000Z\t260203040506Z\t7F00000000000000000000000000000001\tunknown\t/CN=b\n' \
    >>index.txt
  echo 01 >number
  openssl ca -config ca.cnf -gencrl -crldays 30 -cert certificate.pem -keyfile key.pem -out crl.pem
  openssl crl -in crl.pem -outform DER -out crl.der
  prints '0A1B 260102030405Z reason 1
7F00000000000000000000000000000001 260203040506Z' crl.der
  fails 'octets that are no revocation list' certificate.der
}

of_request() {
  damaged
  openssl genpkey -algorithm ed25519 -out key.pem
  openssl pkey -in key.pem -pubout -outform DER -out key.der
  "$program" key.der 'CN=Some One,C=DE' >info.der
  openssl pkeyutl -sign -rawin -inkey key.pem -in info.der -out signature
  "$program" key.der 'CN=Some One,C=DE' signature >request.der
  command openssl req -inform DER -in request.der -verify -noout -subject -nameopt RFC2253 \
    >said 2>&1 || { cat said; exit 1; }
  grep -q 'verify OK' said
  grep -q 'subject=CN=Some One,C=DE' said
  command openssl req -inform DER -in request.der -noout -text | grep -q 'DNS:www.example'
  fails '' key.der 'no name' 2>fault
  grep -q 'subject: the text is no name of RFC 4514' fault
  fails '' damaged.der 'CN=Some One,C=DE' 2>fault
  grep -q 'subjectPKInfo.algorithm.algorithm: expected OBJECT IDENTIFIER (06)' fault
}

of_names() {
  # C=DE as a PrintableString, CN=a\,b as a UTF8String.
  prints '301B310B3009060355040613024445310C300A06035504030C03612C62
CN=a\,b,C=DE
/c(19)=DE/cn(12)=a/,b' 'cn=a\,b,c=DE'
  fails '' 'no name'
}

of_ocsp() {
  certificate /CN=x DNS:a.example
  openssl x509 -inform DER -in certificate.der -out certificate.pem
  openssl ocsp -issuer certificate.pem -cert certificate.pem -reqout request.der -no_nonce
  answer() {
    openssl ocsp -index index.txt -CA certificate.pem -rsigner certificate.pem -rkey key.pem \
      -reqin request.der -respout response.der -ndays 1 >/dev/null
  }
  printf 'V\t400101000000Z\t\t0A1B2C\tunknown\t/CN=x\n' >index.txt
  answer
  "$program" response.der certificate.der | grep -Eqx 'good, as of 20[0-9]{12}Z'
  printf 'R\t400101000000Z\t260102030405Z\t0A1B2C\tunknown\t/CN=x\n' >index.txt
  answer
  "$program" response.der certificate.der |
    grep -Eqx 'revoked, as of 20[0-9]{12}Z, on 20260102030405Z'
  openssl req -x509 -key key.pem -subj /CN=y -set_serial 7 -outform DER -out other.der
  fails 'not asked for' response.der other.der
  fails 'no response with a status, or no certificate' certificate.der certificate.der
}

of_pkcs12() {
  certificate /CN=x DNS:a.example
  openssl x509 -inform DER -in certificate.der -out certificate.pem
  store() { # OPTION...
    openssl pkcs12 -export -in certificate.pem -inkey key.pem -passout pass:secret -out store.p12 \
      "$@"
  }
  # A CertBag has 4 octets of header, an identifier of 12, a tag and a header of the OCTET STRING.
  size=$(wc -c <certificate.der)
  store -certpbe NONE -keypbe NONE -nomac -name some
  "$program" store.p12 >printed
  grep -Eq "^  CertBag of $((size + 24)) octets, with 2 attributes\$" printed
  grep -Eq '^  OneAsymmetricKey of [0-9]+ octets, with 2 attributes$' printed
  test "$(grep -c ': open$' printed)" = 2
  store
  "$program" store.p12 >printed
  head -n 1 printed | grep -qx 'content 1: encrypted'
  grep -Eq '^  EncryptedPrivateKeyInfo of [0-9]+ octets, with 1 attributes$' printed
  fails '' certificate.der
}

of_walk() {
  # An Extension, basicConstraints, critical.
  octets 30 0F 06 03 55 1D 13 01 01 FF 04 05 30 03 01 01 FF >extension.der
  prints 'Extension
  extnID 2.5.29.19
  critical 255
  extnValue 30 03 01 01 FF' pki_Extension extension.der
  # GeneralNames of a dNSName and a registeredID.
  octets 30 08 82 01 61 88 03 55 1D 13 >names.der
  prints 'GeneralNames
  -
    dNSName 61
  -
    registeredID 2.5.29.19' pki_GeneralNames names.der
  fails '' pki_Extension names.der
}

of_lists() {
  prints '1: blueberry
2 in the copy'
}

"of_$(basename "$program")"
