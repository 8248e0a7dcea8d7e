#include "forms.h"

namespace attack {

namespace {

using support::element;
using support::hex;
using support::text;
using support::operator+;

Bytes sequence(const Bytes &content) { return element(0x30, content); }
Bytes set(const Bytes &content) { return element(0x31, content); }

const Bytes policy = hex("06 03 2A 03 04");
const Bytes any_policy = hex("06 04 55 1D 20 00");
// An arc of 128 bits, all set.
const Bytes large_policy =
    hex("06 15 69 83 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF 7F");
const Bytes uri = text("http://example.org/a");
const Bytes name = sequence(set(sequence(hex("06 03 55 04 03 0C 01 41"))));

const Bytes attribute = sequence(hex("06 03 55 1D 09") + set(hex("13 02 44 45 30 00")));
const Bytes empty_attribute = sequence(hex("06 03 2A 03 04") + set({}));

const Bytes authority_key =
    sequence(hex("80 04 01 02 03 04") + element(0xA1, element(0xA4, name)) + hex("82 02 12 67"));

const Bytes cps = sequence(hex("06 08 2B 06 01 05 05 07 02 01") + element(22, uri));
const Bytes notice_reference = sequence(hex("16 03 41 42 43") + sequence(hex("02 01 01 02 01 80")));
const Bytes notice = sequence(notice_reference + hex("1E 04 00 41 20 AC"));
const Bytes notice_qualifier = sequence(hex("06 08 2B 06 01 05 05 07 02 02") + notice);
const Bytes qualified = sequence(policy + sequence(cps + notice_qualifier));
const Bytes mapping = sequence(policy + large_policy);

const Bytes dns_subtree = sequence(element(0x82, text("example.org")));
const Bytes name_subtree = sequence(element(0xA4, name) + hex("80 01 01 81 01 05"));

const Bytes full_name = element(0xA0, element(0x86, uri));
const Bytes relative_name = element(0xA1, sequence(hex("06 03 55 04 03 0C 01 41")));
const Bytes full_point =
    sequence(element(0xA0, full_name) + hex("81 02 01 06") + element(0xA2, element(0xA4, name)));
const Bytes relative_point = sequence(element(0xA0, relative_name) + hex("81 01 00"));

const Bytes ocsp = sequence(hex("06 08 2B 06 01 05 05 07 30 01") + element(0x86, uri));
const Bytes issuers = sequence(hex("06 08 2B 06 01 05 05 07 30 02") + element(0xA4, name));

}  // namespace

std::vector<Form> rfc5280_extension_forms() {
  return {
      {"pki_Attribute", {attribute, empty_attribute}},
      {"pki_AuthorityKeyIdentifier",
       {authority_key, sequence(hex("80 01 AB")), sequence(hex("82 01 00")), sequence({})}},
      {"pki_SubjectKeyIdentifier", {hex("04 04 01 02 03 04"), hex("04 00")}},
      {"pki_KeyUsage", {hex("03 02 05 A0"), hex("03 03 07 80 80"), hex("03 01 00")}},
      {"pki_PrivateKeyUsagePeriod",
       {sequence(element(0x80, text("20260101000000Z")) + element(0x81, text("20270101000000Z"))),
        sequence(element(0x81, text("20270101000000Z")))}},
      {"pki_ExtKeyUsageSyntax", {sequence(hex("06 08 2B 06 01 05 05 07 03 01") + large_policy)}},
      {"pki_PolicyQualifierInfo", {cps, notice_qualifier}},
      {"pki_PolicyInformation", {qualified, sequence(any_policy)}},
      {"pki_CertificatePolicies", {sequence(qualified + sequence(large_policy)), sequence({})}},
      {"pki_CPSuri", {element(22, uri), hex("16 00")}},
      {"pki_DisplayText",
       {hex("16 01 41"), hex("1A 01 41"), hex("1E 02 00 41"), hex("0C 03 E2 82 AC")}},
      {"pki_NoticeReference", {notice_reference, sequence(hex("0C 00 30 00"))}},
      {"pki_UserNotice",
       {notice, sequence(notice_reference), sequence(hex("1A 01 41")), sequence({})}},
      {"pki_PolicyMapping", {mapping}},
      {"pki_PolicyMappings", {sequence(mapping + sequence(policy + policy))}},
      {"pki_PolicyConstraints", {sequence(hex("80 01 00 81 01 05")), sequence(hex("81 01 05"))}},
      {"pki_InhibitAnyPolicy", {hex("02 01 00"), hex("02 02 01 00")}},
      {"pki_SubjectDirectoryAttributes", {sequence(attribute + empty_attribute)}},
      {"pki_BasicConstraints",
       {sequence(hex("01 01 FF 02 01 03")), sequence(hex("02 01 00")), sequence({})}},
      {"pki_GeneralSubtree", {dns_subtree, name_subtree}},
      {"pki_NameConstraints",
       {sequence(element(0xA0, dns_subtree + name_subtree) + element(0xA1, name_subtree)),
        sequence(element(0xA1, dns_subtree))}},
      {"pki_DistributionPointName", {full_name, relative_name}},
      {"pki_DistributionPoint",
       {full_point, relative_point, sequence(element(0xA2, element(0xA4, name)))}},
      {"pki_CRLDistributionPoints", {sequence(full_point + relative_point)}},
      {"pki_AccessDescription", {ocsp, issuers}},
      {"pki_AuthorityInfoAccessSyntax", {sequence(ocsp + issuers)}},
      {"pki_CRLNumber", {hex("02 01 01"), hex("02 09 00 FF FF FF FF FF FF FF FF")}},
      {"pki_BaseCRLNumber", {hex("02 01 00"), hex("02 01 80")}},
      {"pki_IssuingDistributionPoint",
       {sequence(element(0xA0, full_name) + hex("81 01 FF 83 02 01 06 84 01 FF")),
        sequence(element(0xA0, relative_name) + hex("82 01 FF 85 01 FF")), sequence({})}},
      {"pki_CRLReason", {hex("0A 01 00"), hex("0A 01 0A")}},
      {"pki_InvalidityDate", {element(24, text("20260101000000Z"))}},
  };
}

}  // namespace attack
