#include "forms.h"

namespace attack {

namespace {

using support::element;
using support::hex;
using support::text;
using support::operator+;

Bytes sequence(const Bytes &content) { return element(0x30, content); }

const Bytes rsa_with_sha256 = sequence(hex("06 09 2A 86 48 86 F7 0D 01 01 0B 05 00"));
const Bytes ed25519 = sequence(hex("06 03 2B 65 70"));
const Bytes country = sequence(hex("06 03 55 04 06 13 02 44 45"));
// A value in constructed form, and one under a large type.
const Bytes constructed = sequence(hex("06 02 2A 03 30 03 02 01 05"));
const Bytes large_type = sequence(hex("06 0B 69 83 E0 80 80 80 80 80 80 80 01 1E 02 00 41"));
const Bytes rdn = element(0x31, constructed + country);
const Bytes name = sequence(element(0x31, country) + rdn);
const Bytes no_name = sequence({});
const Bytes validity =
    sequence(element(23, text("260101000000Z")) + element(24, text("20560101000000Z")));
const Bytes public_key = sequence(ed25519 + element(3, hex("00 01 02 03 00")));
const Bytes critical = sequence(hex("06 03 55 1D 13 01 01 FF 04 02 30 00"));
const Bytes plain = sequence(hex("06 03 55 1D 0E 04 02 01 02"));
const Bytes extensions = sequence(critical + plain);

const Bytes tbs_certificate =
    sequence(hex("A0 03 02 01 02 02 02 12 67") + rsa_with_sha256 + no_name + validity + name +
             public_key + hex("81 02 00 AB 82 02 04 50") + element(0xA3, extensions));
const Bytes first_version =
    sequence(hex("02 01 80") + ed25519 + name + validity + no_name + public_key);
const Bytes signature = element(3, hex("00 8B 5A 11"));

const Bytes entry = sequence(hex("02 01 05") + element(23, text("260201000000Z")) +
                             sequence(sequence(hex("06 03 55 1D 15 04 03 0A 01 01"))));
const Bytes tbs_list = sequence(
    hex("02 01 01") + rsa_with_sha256 + no_name + element(23, text("260101000000Z")) +
    element(23, text("260301000000Z")) + sequence(entry + entry) + element(0xA0, extensions));
const Bytes first_list = sequence(ed25519 + name + element(24, text("20260101000000Z")));

const Bytes other_name = hex("06 03 2A 03 04 A0 03 0C 01 78");
const Bytes dns_name = element(0x82, text("example.org"));

}  // namespace

std::vector<Form> rfc5280_forms() {
  return {
      {"pki_AlgId", {rsa_with_sha256, ed25519, sequence(hex("06 03 2A 03 04 BF 81 00 01 00"))}},
      {"pki_AttributeValueAssertion", {country, constructed, large_type}},
      {"pki_RelativeDistinguishedName", {rdn}},
      {"pki_RDNSequence", {name, no_name}},
      {"pki_Validity", {validity}},
      {"pki_SubjectPKI", {public_key}},
      {"pki_Extension", {critical, plain}},
      {"pki_Extensions", {extensions}},
      {"pki_Certificate_TBS", {tbs_certificate, first_version}},
      {"pki_Certificate", {sequence(tbs_certificate + rsa_with_sha256 + signature)}},
      {"pki_CRLEntry", {entry}},
      {"pki_CertificateList_TBS", {tbs_list, first_list}},
      {"pki_CertificateRevocationList", {sequence(tbs_list + rsa_with_sha256 + signature)}},
      {"pki_OtherName", {sequence(other_name)}},
      {"pki_GeneralName",
       {element(0xA0, other_name), element(0x81, text("a@b.c")), dns_name, hex("A3 04 30 02 30 00"),
        element(0xA4, name), hex("A5 05 A1 03 0C 01 78"), element(0x86, text("http://a/")),
        hex("87 04 01 02 03 04"), hex("88 03 2A 03 04")}},
      {"pki_GeneralNames", {sequence(dns_name + element(0xA4, no_name))}},
  };
}

}  // namespace attack
