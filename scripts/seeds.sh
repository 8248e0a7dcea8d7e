#!/bin/sh
# Makes seeds for the fuzz targets from the samples of the tests, from objects that openssl makes, and from
# real files where a folder of these is named.
#
#   sh scripts/seeds.sh FOLDER
#
# The seeds of each group of types go to FOLDER/GROUP. ORVELASN1_CORPUS may name a folder with DER
# files in the sub-folders certificates, crls, ocsp-requests, ocsp-responses, hostile-certificates
# and hostile-crls. The program build/fuzz/bin/fuzz_seeds, or the one that FUZZ_SEEDS names, must
# have been built.
set -eu
[ $# = 1 ] || { echo "seeds.sh FOLDER" >&2 && exit 1; }
mkdir -p "$1"
seeds=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
. scripts/lib.sh

provide want_openssl

program=${FUZZ_SEEDS:-$PWD/build/fuzz/bin/fuzz_seeds}
corpus=
if [ -n "${ORVELASN1_CORPUS-}" ]; then corpus=$(cd "$ORVELASN1_CORPUS" && pwd); fi
made=$(mktemp -d)
trap 'rm -rf "$made"' EXIT
cd "$made"

# ssl ARGUMENT...: runs openssl. Prints its output only where it fails.
ssl() {
  openssl "$@" >log 2>&1 </dev/null || { cat log >&2 && fail "failed: openssl $*"; }
}

# put FAMILY FILE...: makes seeds for the family from the files.
put() {
  "$program" "$seeds" "$@"
}

cat >ca.cnf <<'END'
[req]
distinguished_name = dn
string_mask = utf8only
prompt = no
[dn]
C = DE
O = Example / Co
CN = Jürgen
emailAddress = a@example.org
[v3]
basicConstraints = critical, CA:TRUE, pathlen:2
keyUsage = critical, keyCertSign, cRLSign, digitalSignature
extendedKeyUsage = serverAuth, OCSPSigning
subjectKeyIdentifier = hash
authorityKeyIdentifier = keyid, issuer
subjectAltName = DNS:example.org, email:a@example.org, URI:http://a/, IP:10.0.0.1, RID:1.2.3.4, otherName:1.2.3.4;UTF8:x, dirName:dn
issuerAltName = DNS:example.org
crlDistributionPoints = one
authorityInfoAccess = OCSP;URI:http://a/ocsp, caIssuers;URI:http://a/ca
certificatePolicies = 1.2.3.4, @policy
policyConstraints = requireExplicitPolicy:3, inhibitPolicyMapping:1
policyMappings = 1.2.3.4:1.2.3.5
nameConstraints = permitted;DNS:example.org, excluded;IP:10.0.0.0/255.0.0.0
inhibitAnyPolicy = 2
[one]
fullname = URI:http://a/crl
CRLissuer = dirName:dn
reasons = keyCompromise, CACompromise
[policy]
policyIdentifier = 1.2.3.6
CPS.1 = http://a/cps
userNotice.1 = @notice
[notice]
explicitText = UTF8:text
organization = Example
noticeNumbers = 1, 2
[request]
subjectAltName = DNS:example.org
[ca]
default_ca = authority
[authority]
database = index.txt
crlnumber = number
default_md = sha256
default_crl_days = 30
crl_extensions = crl
[crl]
authorityKeyIdentifier = keyid
END

# Keys, certificates, certification requests and challenges, for three kinds of keys.
ssl genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:1024 -out rsa.pem
ssl genpkey -algorithm EC -pkeyopt ec_paramgen_curve:P-256 -out ec.pem
ssl genpkey -algorithm ED25519 -out ed25519.pem
for key in rsa ec ed25519; do
  ssl req -x509 -config ca.cnf -utf8 -extensions v3 -key $key.pem -days 30 -out $key.crt
  ssl x509 -in $key.crt -outform DER -out $key.crt.der
  ssl req -new -config ca.cnf -utf8 -reqexts request -key $key.pem -outform DER -out $key.p10
  ssl pkcs8 -topk8 -nocrypt -in $key.pem -outform DER -out $key.p8
  ssl pkcs8 -topk8 -in $key.pem -passout pass:x -outform DER -out $key.p8e
  ssl pkcs8 -topk8 -v1 PBE-SHA1-3DES -in $key.pem -passout pass:x -outform DER -out $key.p8o
  ssl pkey -in $key.pem -pubout -outform DER -out $key.pub
  put Certificate $key.crt.der
  put CertificationRequest $key.p10
  put PrivateKeyInfo $key.p8
  put EncryptedPrivateKeyInfo $key.p8e $key.p8o
  put SubjectPublicKeyInfo $key.pub
done
ssl rsa -in rsa.pem -traditional -outform DER -out rsa.p1
ssl rsa -in rsa.pem -RSAPublicKey_out -outform DER -out rsa.p1p
put RSAPrivateKey rsa.p1
put RSAPublicKey rsa.p1p

# A challenge comes after "SPKAC=", in base 64.
ssl spkac -key rsa.pem -challenge secret -out rsa.spkac
sed 's/^SPKAC=//' rsa.spkac | openssl base64 -d -A >rsa.spkac.der
put SignedPublicKeyAndChallenge rsa.spkac.der

# Revocation lists: an empty one, and one with two entries.
: >index.txt
echo 01 >number
ssl ca -config ca.cnf -gencrl -keyfile rsa.pem -cert rsa.crt -out empty.crl
printf 'R\t300101000000Z\t260101000000Z,keyCompromise\t%s\tunknown\t/CN=x\n' 1267 80 >index.txt
ssl ca -config ca.cnf -gencrl -keyfile rsa.pem -cert rsa.crt -out two.crl
for list in empty two; do
  ssl crl -in $list.crl -outform DER -out $list.crl.der
  put CertificateList $list.crl.der
done

# OCSP requests and responses without certificates, with the responder's name or key.
ssl ocsp -issuer rsa.crt -cert rsa.crt -reqout plain.ocq
ssl ocsp -issuer rsa.crt -cert ec.crt -serial 0x1267 -no_nonce -signer rsa.crt -signkey rsa.pem \
  -no_certs -reqout signed.ocq
put OCSPRequest plain.ocq signed.ocq
for option in -resp_key_id -resp_no_certs; do
  ssl ocsp -index index.txt -CA rsa.crt -issuer rsa.crt -serial 0x1267 -serial 0x80 -serial 0x99 \
    -rsigner rsa.crt -rkey rsa.pem -resp_no_certs $option -ndays 30 -respout answer$option.ocr
  put OCSPResponse answer$option.ocr
done

# Messages and containers.
echo hello >text
ssl crl2pkcs7 -in two.crl -certfile rsa.crt -outform DER -out only.p7
for option in -nodetach -noattr; do
  ssl smime -sign -binary $option -in text -signer rsa.crt -inkey rsa.pem -outform DER \
    -out signed$option.p7
done
ssl cms -sign -binary -nodetach -keyid -in text -signer ec.crt -inkey ec.pem -outform DER \
  -out keyid.p7
ssl cms -sign -binary -nodetach -stream -in text -signer rsa.crt -inkey rsa.pem -outform DER \
  -out stream.p7
ssl cms -EncryptedData_encrypt -secretkey 00112233445566778899AABBCCDDEEFF -aes-128-cbc -in text \
  -outform DER -out encrypted.p7
ssl cms -data_create -in text -outform DER -out data.p7
put ContentInfo ./*.p7
ssl pkcs12 -export -in rsa.crt -inkey rsa.pem -name friendly -passout pass:x -out new.p12
ssl pkcs12 -export -in ec.crt -inkey ec.pem -keypbe NONE -certpbe NONE -nomac -passout pass: \
  -out plain.p12
put PFX new.p12 plain.p12

# Parameters.
ssl dsaparam -outform DER -out dsa.par 512
ssl genpkey -genparam -algorithm DH -pkeyopt group:dh_2048_256 -outform DER -out dhx.par
ssl genpkey -genparam -algorithm DH -pkeyopt group:ffdhe2048 -outform DER -out dh.par
put DssParms dsa.par
put DomainParameters dhx.par dh.par
ssl dgst -sha256 -sign ec.pem -out ec.sig text
put DssSigValue ec.sig

"$program" "$seeds"

# The targets of the tool take any octets.
mkdir -p "$seeds/outline" "$seeds/diff" "$seeds/json"
put_tool() {
  for target in outline diff json; do cp "$@" "$seeds/$target"; done
}
put_tool ./*.der ./*.p10 ./*.p8 ./*.p7 ./*.p12 ./*.ocq ./*.ocr ./*.p1
cp ./*.pem ./*.crt ./*.crl "$seeds/json"
# Two of a kind have something that differs.
cat rsa.crt.der ec.crt.der >"$seeds/diff/certificates"
cat empty.crl.der two.crl.der >"$seeds/diff/lists"
cat rsa.p10 ec.p10 >"$seeds/diff/requests"
cat rsa.p8 ed25519.p8 >"$seeds/diff/keys"
cat signed-nodetach.p7 signed-noattr.p7 >"$seeds/diff/messages"
cat answer-resp_key_id.ocr answer-resp_no_certs.ocr >"$seeds/diff/answers"

# put_folder FAMILY FOLDER: makes seeds for the family from a folder of the corpus.
put_folder() {
  if [ ! -d "$corpus/$2" ]; then return; fi
  find "$corpus/$2" -type f -exec "$program" "$seeds" "$1" {} +
  for target in outline diff json; do
    find "$corpus/$2" -type f -size -5k -exec cp -t "$seeds/$target" {} +
  done
}
if [ -n "$corpus" ]; then
  put_folder Certificate certificates
  put_folder Certificate hostile-certificates
  put_folder CertificateList crls
  put_folder CertificateList hostile-crls
  put_folder OCSPRequest ocsp-requests
  put_folder OCSPResponse ocsp-responses
fi
