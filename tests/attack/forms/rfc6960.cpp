#include "forms.h"

namespace attack {

namespace {

using support::element;
using support::hex;
using support::text;
using support::operator+;

Bytes sequence(const Bytes &content) { return element(0x30, content); }

const Bytes sha1 = sequence(hex("06 05 2B 0E 03 02 1A 05 00"));
const Bytes ed25519 = sequence(hex("06 03 2B 65 70"));
const Bytes in_2026 = element(0x18, text("20260131120000Z"));
const Bytes in_2027 = element(0x18, text("20270131120000.5Z"));
const Bytes no_name = sequence({});
const Bytes name = sequence(element(0x31, sequence(hex("06 03 55 04 06 13 02 44 45"))));
const Bytes signature = hex("03 03 00 8B 10");

const Bytes nonce = sequence(hex("06 09 2B 06 01 05 05 07 30 01 02 04 04 04 02 AB CD"));
const Bytes critical = sequence(hex("06 03 55 1D 15 01 01 FF 04 03 0A 01 00"));
const Bytes extensions = sequence(nonce + critical);

const Bytes validity = sequence(element(23, text("260101000000Z")) + in_2027);
const Bytes public_key = sequence(ed25519 + hex("03 03 00 01 00"));
const Bytes certificate =
    sequence(sequence(hex("02 01 05") + ed25519 + no_name + validity + name + public_key) +
             ed25519 + signature);
const Bytes certificates = element(0xA0, sequence(certificate + certificate));

const Bytes id = sequence(sha1 + hex("04 02 01 02 04 02 03 04 02 02 12 67"));
const Bytes other_id = sequence(ed25519 + hex("04 00 04 01 00 02 01 80"));
const Bytes request = sequence(id + element(0xA0, extensions));
const Bytes plain_request = sequence(other_id);
const Bytes version = hex("A0 03 02 01 00");
const Bytes tbs_request = sequence(version + element(0xA1, element(0xA4, name)) +
                                   sequence(request + plain_request) + element(0xA2, extensions));
const Bytes plain_tbs_request = sequence(element(0xA1, hex("82 01 61")) + sequence(plain_request));
const Bytes signed_with = sequence(ed25519 + signature + certificates);
const Bytes plainly_signed_with = sequence(sha1 + hex("03 02 04 50"));

const Bytes by_name = element(0xA1, name);
const Bytes by_key = hex("A2 05 04 03 01 02 03");
const Bytes revoked = in_2026 + hex("A0 03 0A 01 00");
const Bytes single = sequence(id + element(0xA1, revoked) + in_2026 + element(0xA0, in_2027) +
                              element(0xA1, extensions));
const Bytes good = sequence(other_id + hex("80 00") + in_2026);
const Bytes unknown = sequence(other_id + hex("82 00") + in_2026 + element(0xA1, extensions));
const Bytes response_data = sequence(version + by_name + in_2026 +
                                     sequence(single + good + unknown) + element(0xA1, extensions));
const Bytes plain_response_data = sequence(by_key + in_2026 + no_name);
const Bytes basic = sequence(response_data + ed25519 + signature + certificates);
const Bytes plain_basic = sequence(plain_response_data + sha1 + signature);
const Bytes response_bytes =
    sequence(hex("06 09 2B 06 01 05 05 07 30 01 01") + element(4, plain_basic));
const Bytes other_bytes = sequence(hex("06 02 2A 03 04 00"));

const Bytes access =
    sequence(hex("06 08 2B 06 01 05 05 07 30 01") + element(0x86, text("http://a/")));
const Bytes preferred = sequence(ed25519 + sha1);
const Bytes plainly_preferred = sequence(sha1);

}  // namespace

std::vector<Form> rfc6960_forms() {
  return {
      {"pki_CertID", {id, other_id}},
      {"pki_Request", {request, plain_request}},
      {"pki_TBSRequest", {tbs_request, plain_tbs_request}},
      {"pki_OCSPSignature", {signed_with, plainly_signed_with}},
      {"pki_OCSPRequest",
       {sequence(tbs_request + element(0xA0, signed_with)), sequence(plain_tbs_request)}},
      {"pki_ResponseBytes", {response_bytes, other_bytes}},
      {"pki_OCSPResponse",
       {sequence(hex("0A 01 00") + element(0xA0, response_bytes)), sequence(hex("0A 01 06"))}},
      {"pki_ResponderID", {by_name, by_key}},
      {"pki_RevokedInfo", {sequence(revoked), sequence(in_2027)}},
      {"pki_OCSPCertStatus",
       {hex("80 00"), element(0xA1, revoked), element(0xA1, in_2026), hex("82 00")}},
      {"pki_SingleResponse", {single, good, unknown}},
      {"pki_ResponseData", {response_data, plain_response_data}},
      {"pki_BasicOCSPResponse", {basic, plain_basic}},
      {"pki_Nonce", {hex("04 02 AB CD"), hex("04 00")}},
      {"pki_CrlID",
       {sequence(element(0xA0, element(0x16, text("http://a/"))) + hex("A1 03 02 01 05") +
                 element(0xA2, in_2026)),
        sequence(hex("A1 04 02 02 00 80")), sequence({})}},
      {"pki_AcceptableResponses",
       {sequence(hex("06 09 2B 06 01 05 05 07 30 01 01 06 02 2A 03")), sequence({})}},
      {"pki_ArchiveCutoff", {in_2026, in_2027}},
      {"pki_ServiceLocator", {sequence(name + sequence(access + access)), sequence(no_name)}},
      {"pki_PreferredSignatureAlgorithm", {preferred, plainly_preferred}},
      {"pki_PreferredSignatureAlgorithms", {sequence(preferred + plainly_preferred), sequence({})}},
  };
}

}  // namespace attack
