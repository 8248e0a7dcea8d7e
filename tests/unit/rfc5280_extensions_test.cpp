// Attributes and extensions in the forms of RFC 5280. The octets are made by hand from the ASN.1 of
// its Appendix A, in which the tags of the extensions are implicit.
#include "forms.h"

namespace rfc5280_extensions_test {

namespace {

using support::Bytes;
using support::created;
using support::decoded;
using support::dotted;
using support::element;
using support::element_of;
using support::encoded;
using support::expect_exact;
using support::expect_form_refused;
using support::expect_kept;
using support::expect_unfilled;
using support::expect_written;
using support::hex;
using support::sequence;
using support::text;
using support::value;
using support::operator+;

const Bytes policy = hex("06 03 2A 03 04");
const Bytes rdn_content = sequence(hex("06 03 55 04 03 0C 01 41"));
const Bytes directory_name = element(0xA4, sequence(element(0x31, rdn_content)));
const Bytes dns_name = element(0x82, text("example.org"));

// ---------------------------------------------------------------------------------------------
// Keys
// ---------------------------------------------------------------------------------------------

const auto authority_key = FORM(AuthorityKeyIdentifier, AuthorityKeyIdentifier);

TEST(AuthorityKeyIdentifierForm, HasEachOfItsFields) {
  const Bytes content =
      hex("80 04 01 02 03 04") + element(0xA1, directory_name + dns_name) + hex("82 03 00 FF 01");
  expect_exact(authority_key, 0x30, content);
  const auto record = expect_kept(authority_key, sequence(content));
  EXPECT_EQ(hex("01 02 03 04"), value(record->keyIdentifier));
  ASSERT_EQ(2, List_len(record->authorityCertIssuer));
  EXPECT_EQ(4, element_of<GeneralName>(record->authorityCertIssuer, 0).kind);
  EXPECT_EQ(2, element_of<GeneralName>(record->authorityCertIssuer, 1).kind);
  EXPECT_EQ(hex("FF 01"), value(record->authorityCertSerialNumber));
}

TEST(AuthorityKeyIdentifierForm, LacksAnyOfThem) {
  const auto key = expect_kept(authority_key, sequence(hex("80 01 AB")));
  EXPECT_EQ(nullptr, key->authorityCertIssuer);
  EXPECT_EQ(nullptr, key->authorityCertSerialNumber);
  const auto issuer = expect_kept(authority_key, sequence(element(0xA1, dns_name)));
  EXPECT_EQ(nullptr, issuer->keyIdentifier);
  expect_kept(authority_key, sequence(hex("82 01 05")));
  expect_unfilled(authority_key, hex("30 00"));
}

TEST(AuthorityKeyIdentifierForm, TakesImplicitTagsInTheirOrderOnly) {
  expect_form_refused(authority_key, sequence(hex("A0 03 02 01 AB")));
  // An explicit tag around an OCTET STRING is the constructed form of an implicit one (X.690, 8.7.3).
  expect_written(authority_key, sequence(hex("A0 03 04 01 AB")), sequence(hex("80 01 AB")));
  expect_form_refused(authority_key, sequence(element(0xA1, sequence(dns_name))));
  expect_form_refused(authority_key, sequence(element(0x81, dns_name)));
  expect_form_refused(authority_key, sequence(hex("82 01 05 80 01 AB")));
  expect_form_refused(authority_key, sequence(hex("82 02 00 05")));
}

TEST(SubjectKeyIdentifierForm, IsAnOctetString) {
  const auto family = FORM_LIST(SubjectKeyIdentifier, OctetString);
  expect_exact(family, 4, hex("01 02 03 04"));
  EXPECT_EQ(hex("01 02"), value(expect_kept(family, hex("04 02 01 02")).get()));
  expect_kept(family, hex("04 00"));
  // Segments (X.690, 8.7.3) are joined, and written as one.
  EXPECT_EQ(hex("04 02 01 02"), encoded(family, decoded(family, hex("24 06 04 01 01 04 01 02"))));
}

TEST(KeyUsageForm, IsWrittenWithoutTheZeroBitsAtItsEnd) {
  const auto family = FORM_LIST(KeyUsage, BitString);
  const auto usage = expect_kept(family, hex("03 03 07 06 80"));
  EXPECT_EQ(9U, usage->length);
  EXPECT_EQ(hex("06 80"), value(usage.get()));
  expect_kept(family, hex("03 01 00"));
  EXPECT_EQ(hex("03 02 05 A0"), encoded(family, decoded(family, hex("03 02 00 A0"))));
  for (const char *octets : {"03 00", "03 02 08 A0", "03 01 01", "04 02 05 A0", "03 02 05"}) {
    expect_form_refused(family, hex(octets));
  }
}

TEST(PrivateKeyUsagePeriodForm, HasTimesOfTheGeneralKind) {
  const auto family = FORM(PrivateKeyUsagePeriod, pki_PrivateKeyUsagePeriod);
  const Bytes from = element(0x80, text("20260101000000Z"));
  const Bytes to = element(0x81, text("20270101000000Z"));
  expect_exact(family, 0x30, from + to);
  const auto both = expect_kept(family, sequence(from + to));
  EXPECT_STREQ("20260101000000Z", both->notBefore);
  EXPECT_STREQ("20270101000000Z", both->notAfter);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(from))->notAfter);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(to))->notBefore);
  expect_unfilled(family, hex("30 00"));
  expect_form_refused(family, sequence(element(0xA0, element(24, text("20260101000000Z")))));
  expect_form_refused(family, sequence(to + from));
}

TEST(ExtKeyUsageSyntaxForm, IsAListOfIdentifiers) {
  const auto family = FORM_LIST(ExtKeyUsageSyntax, List);
  const Bytes server = hex("06 08 2B 06 01 05 05 07 03 01");
  expect_exact(family, 0x30, server + hex("06 04 55 1D 25 00"));
  const auto purposes = expect_kept(family, sequence(server + hex("06 04 55 1D 25 00")));
  ASSERT_EQ(2, List_len(purposes.get()));
  EXPECT_EQ("1.3.6.1.5.5.7.3.1", dotted(&element_of<ObjId>(purposes.get(), 0)));
  EXPECT_EQ("2.5.29.37.0", dotted(&element_of<ObjId>(purposes.get(), 1)));
  expect_form_refused(family, sequence(server + hex("02 01 05")));
}

// ---------------------------------------------------------------------------------------------
// Policies
// ---------------------------------------------------------------------------------------------

const auto user_notice = FORM(UserNotice, pki_UserNotice);
const Bytes cps = sequence(hex("06 08 2B 06 01 05 05 07 02 01") + element(22, text("http://a/")));

TEST(CertificatePoliciesForm, HasIdentifiersOfAnySizeAndQualifiersWhole) {
  const auto family = FORM_LIST(CertificatePolicies, List);
  // The policy 2.25.n, whose n has 128 bits, all ones (X.667, 6).
  const Bytes large = hex("06 14 69 83 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF 7F");
  const Bytes content = sequence(policy + sequence(cps)) + sequence(large);
  expect_exact(family, 0x30, content);
  const auto policies = expect_kept(family, sequence(content));
  ASSERT_EQ(2, List_len(policies.get()));
  const auto *first = &element_of<pki_PolicyInformation>(policies.get(), 0);
  EXPECT_EQ("1.2.3.4", dotted(first->policyIdentifier));
  ASSERT_EQ(1, List_len(first->policyQualifiers));
  const auto *qualifier = &element_of<pki_PolicyQualifierInfo>(first->policyQualifiers, 0);
  EXPECT_EQ("1.3.6.1.5.5.7.2.1", dotted(qualifier->policyQualifierId));
  EXPECT_EQ(element(22, text("http://a/")), value(qualifier->qualifier));
  const auto *second = &element_of<pki_PolicyInformation>(policies.get(), 1);
  EXPECT_EQ(nullptr, second->policyQualifiers);
  EXPECT_EQ("2.25.340282366920938463463374607431768211455", dotted(second->policyIdentifier));
}

TEST(CertificatePoliciesForm, RefusesAPolicyWithoutIdentifierAndAQualifierWithoutValue) {
  const auto information = FORM(PolicyInformation, pki_PolicyInformation);
  const auto qualifier = FORM(PolicyQualifierInfo, pki_PolicyQualifierInfo);
  expect_exact(information, 0x30, policy + sequence(cps));
  expect_exact(qualifier, 0x30, policy + hex("05 00"));
  expect_unfilled(information);
  expect_unfilled(qualifier);
  expect_form_refused(information, sequence({}));
  expect_form_refused(information, sequence(sequence(cps)));
  expect_form_refused(qualifier, sequence(policy));
  expect_form_refused(qualifier, sequence(policy + hex("05 00 05 00")));
}

TEST(CPSuriForm, IsAnIA5String) {
  const auto family = FORM_LIST(CPSuri, IA5String);
  expect_exact(family, 22, text("http://a/"));
  EXPECT_EQ(text("http://a/"), value(expect_kept(family, element(22, text("http://a/"))).get()));
  expect_form_refused(family, element(12, text("http://a/")));
}

TEST(DisplayTextForm, IsOneOfFourStrings) {
  const auto family = FORM(DisplayText, pki_DisplayText);
  for (const uint8_t tag : hex("16 1A 1E 0C")) {
    const auto read = expect_kept(family, element(tag, hex("00 41")));
    EXPECT_EQ(tag, read->kind);
    EXPECT_EQ(hex("00 41"), value(static_cast<const ASN1String *>(read->value)));
  }
  for (const uint8_t tag : hex("13 14 1C 04 96 56")) {
    expect_form_refused(family, element(tag, hex("00 41")));
  }
  expect_unfilled(family);
  const auto record = created(family);
  record->kind = 12;
  EXPECT_EQ(Bytes(), encoded(family, record));
}

TEST(UserNoticeForm, HasAReferenceATextBothOrNone) {
  const Bytes reference = sequence(hex("0C 03 41 42 43") + sequence(hex("02 01 01 02 02 01 00")));
  const Bytes shown = hex("1E 04 00 41 20 AC");
  expect_exact(user_notice, 0x30, reference + shown);
  const auto both = expect_kept(user_notice, sequence(reference + shown));
  EXPECT_EQ(12, both->noticeRef->organization->kind);
  ASSERT_EQ(2, List_len(both->noticeRef->noticeNumbers));
  EXPECT_EQ(256U, asn1_Integer_get(&element_of<Integer>(both->noticeRef->noticeNumbers, 1)));
  EXPECT_EQ(30, both->explicitText->kind);
  EXPECT_EQ(nullptr, expect_kept(user_notice, sequence(reference))->explicitText);
  EXPECT_EQ(nullptr, expect_kept(user_notice, sequence(shown))->noticeRef);
  expect_unfilled(user_notice, hex("30 00"));
  expect_form_refused(user_notice, sequence(shown + reference));
  expect_form_refused(user_notice, sequence(shown + shown));
  expect_form_refused(user_notice, sequence(hex("02 01 05")));
}

TEST(NoticeReferenceForm, HasBothOfItsFields) {
  const auto family = FORM(NoticeReference, pki_NoticeReference);
  expect_exact(family, 0x30, hex("1A 01 41 30 03 02 01 05"));
  expect_kept(family, sequence(hex("16 00 30 00")));
  expect_unfilled(family);
  expect_form_refused(family, sequence(hex("1A 01 41")));
  expect_form_refused(family, sequence(sequence(hex("02 01 05"))));
}

TEST(PolicyMappingsForm, HasPairs) {
  const auto family = FORM_LIST(PolicyMappings, List);
  const auto pair = FORM(PolicyMapping, PolicyMapping);
  const Bytes mapping = policy + hex("06 03 2A 03 05");
  expect_exact(pair, 0x30, mapping);
  expect_exact(family, 0x30, sequence(mapping) + sequence(policy + policy));
  const auto mappings = expect_kept(family, sequence(sequence(mapping)));
  EXPECT_EQ("1.2.3.4", dotted(element_of<PolicyMapping>(mappings.get(), 0).issuerDomainPolicy));
  EXPECT_EQ("1.2.3.5", dotted(element_of<PolicyMapping>(mappings.get(), 0).subjectDomainPolicy));
  expect_unfilled(pair);
  expect_form_refused(pair, sequence(policy));
}

TEST(PolicyConstraintsForm, HasNumbersUnderImplicitTags) {
  const auto family = FORM(PolicyConstraints, PolicyConstraints);
  expect_exact(family, 0x30, hex("80 01 03 81 01 00"));
  const auto both = expect_kept(family, sequence(hex("80 01 03 81 01 00")));
  EXPECT_EQ(3U, asn1_Integer_get(both->requireExplicitPolicy));
  EXPECT_EQ(0U, asn1_Integer_get(both->inhibitPolicyMapping));
  EXPECT_EQ(nullptr, expect_kept(family, sequence(hex("80 01 03")))->inhibitPolicyMapping);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(hex("81 01 03")))->requireExplicitPolicy);
  expect_unfilled(family, hex("30 00"));
  expect_form_refused(family, sequence(hex("A0 03 02 01 03")));
  expect_form_refused(family, sequence(hex("81 01 03 80 01 03")));
}

TEST(NumberForms, AreIntegers) {
  for (const auto &family : {FORM_LIST(InhibitAnyPolicy, Integer), FORM_LIST(CRLNumber, Integer),
                             FORM_LIST(BaseCRLNumber, Integer)}) {
    expect_exact(family, 2, hex("01 00"));
    const auto number = expect_kept(family, hex("02 02 01 00"));
    EXPECT_EQ(256U, asn1_Integer_get(number.get()));
    expect_kept(family,
                element(2, hex("00 FF EE DD CC BB AA 99 88 77 66 55 44 33 22 11 00 FF EE DD CC")));
    expect_form_refused(family, hex("02 00"));
    expect_form_refused(family, hex("02 02 00 01"));
    expect_form_refused(family, hex("0A 01 01"));
  }
}

// ---------------------------------------------------------------------------------------------
// Subjects
// ---------------------------------------------------------------------------------------------

TEST(SubjectDirectoryAttributesForm, HasValuesOfAnyType) {
  const auto family = FORM_LIST(SubjectDirectoryAttributes, List);
  const auto one = FORM(Attribute, Attribute);
  const Bytes content = policy + element(0x31, hex("13 02 44 45 30 03 02 01 05"));
  expect_exact(one, 0x30, content);
  expect_exact(family, 0x30, sequence(content) + sequence(policy + hex("31 00")));
  const auto attributes = expect_kept(family, sequence(sequence(content)));
  const auto *attribute = &element_of<Attribute>(attributes.get(), 0);
  EXPECT_EQ("1.2.3.4", dotted(attribute->type));
  ASSERT_EQ(2, List_len(attribute->values));
  EXPECT_EQ(hex("13 02 44 45"), value(&element_of<Any>(attribute->values, 0)));
  EXPECT_EQ(hex("30 03 02 01 05"), value(&element_of<Any>(attribute->values, 1)));
  expect_unfilled(one);
  expect_form_refused(one, sequence(policy));
  expect_form_refused(one, sequence(policy + hex("30 00")));
}

TEST(BasicConstraintsForm, HasANumberBesideTheFlagOrWithoutIt) {
  const auto family = FORM(BasicConstraints, BasicConstraints);
  expect_exact(family, 0x30, hex("01 01 FF 02 01 03"));
  const auto both = expect_kept(family, sequence(hex("01 01 FF 02 01 03")));
  EXPECT_NE(0U, both->cA);
  EXPECT_EQ(3U, asn1_Integer_get(both->pathLenConstraint));
  EXPECT_EQ(nullptr, expect_kept(family, sequence(hex("01 01 FF")))->pathLenConstraint);
  EXPECT_EQ(0U, expect_kept(family, sequence(hex("02 01 00")))->cA);
  expect_unfilled(family, hex("30 00"));
  // In BER any octet but 0 is TRUE (X.690, 8.2.2); in DER only FF is, and FALSE is left out.
  EXPECT_EQ(hex("30 03 01 01 FF"), encoded(family, decoded(family, hex("30 03 01 01 01"))));
  EXPECT_EQ(hex("30 00"), encoded(family, decoded(family, hex("30 03 01 01 00"))));
  expect_form_refused(family, sequence(hex("02 01 00 01 01 FF")));
  expect_form_refused(family, sequence(hex("01 00")));
}

TEST(NameConstraintsForm, HasSubtreesUnderImplicitTags) {
  const auto family = FORM(NameConstraints, NameConstraints);
  const auto tree = FORM(GeneralSubtree, GeneralSubtree);
  const Bytes whole = directory_name + hex("80 01 01 81 01 05");
  expect_exact(tree, 0x30, whole);
  expect_exact(
      family, 0x30,
      element(0xA0, sequence(dns_name) + sequence(whole)) + element(0xA1, sequence(whole)));
  const auto both = expect_kept(
      family, sequence(element(0xA0, sequence(dns_name)) + element(0xA1, sequence(whole))));
  const auto *permitted = &element_of<GeneralSubtree>(both->permittedSubtrees, 0);
  EXPECT_EQ(2, permitted->base->kind);
  EXPECT_EQ(nullptr, permitted->minimum);
  EXPECT_EQ(nullptr, permitted->maximum);
  const auto *excluded = &element_of<GeneralSubtree>(both->excludedSubtrees, 0);
  EXPECT_EQ(4, excluded->base->kind);
  EXPECT_EQ(1U, asn1_Integer_get(excluded->minimum));
  EXPECT_EQ(5U, asn1_Integer_get(excluded->maximum));
  EXPECT_EQ(nullptr,
            expect_kept(family, sequence(element(0xA0, sequence(whole))))->excludedSubtrees);
  EXPECT_EQ(nullptr,
            expect_kept(family, sequence(element(0xA1, sequence(whole))))->permittedSubtrees);
  expect_kept(tree, sequence(dns_name + hex("81 01 05")));
  // A default that was written out stays, so that what was signed comes back.
  expect_kept(tree, sequence(dns_name + hex("80 01 00")));
  expect_unfilled(family, hex("30 00"));
  expect_unfilled(tree);
  expect_form_refused(family, sequence(element(0xA0, sequence(sequence(dns_name)))));
  expect_form_refused(family, sequence(element(0xA0, dns_name)));
  expect_form_refused(tree, sequence(dns_name + hex("A0 03 02 01 01")));
  expect_form_refused(tree, sequence(hex("80 01 01")));
}

// ---------------------------------------------------------------------------------------------
// Places
// ---------------------------------------------------------------------------------------------

TEST(DistributionPointForm, HasATagAroundItsChoiceOfNames) {
  const auto family = FORM(DistributionPoint, DistributionPoint);
  const Bytes full = element(0xA0, element(0xA0, element(0x86, text("http://a/"))));
  const Bytes relative = element(0xA0, element(0xA1, rdn_content));
  const Bytes rest = hex("81 02 01 06") + element(0xA2, directory_name);
  expect_exact(family, 0x30, full + rest);
  const auto first = expect_kept(family, sequence(full + rest));
  EXPECT_EQ(0, first->distributionPoint->kind);
  EXPECT_EQ(6,
            element_of<GeneralName>(static_cast<List *>(first->distributionPoint->value), 0).kind);
  EXPECT_EQ(7U, first->reasons->length);
  EXPECT_EQ(4, element_of<GeneralName>(first->cRLIssuer, 0).kind);
  const auto second = expect_kept(family, sequence(relative));
  EXPECT_EQ(1, second->distributionPoint->kind);
  EXPECT_EQ(1, List_len(static_cast<List *>(second->distributionPoint->value)));
  EXPECT_EQ(nullptr, second->reasons);
  EXPECT_EQ(nullptr, second->cRLIssuer);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(rest))->distributionPoint);
  expect_unfilled(family, hex("30 00"));
  expect_form_refused(family, sequence(element(0xA0, element(0x86, text("http://a/")))));
  expect_form_refused(family, sequence(element(0xA0, element(0xA2, dns_name))));
  expect_form_refused(family, sequence(element(0x82, directory_name)));
  expect_form_refused(family, sequence(element(0xA0, element(0xA0, dns_name) + hex("05 00"))));
}

TEST(DistributionPointNameForm, IsFullOrRelative) {
  const auto family = FORM(DistributionPointName, DistributionPointName);
  EXPECT_EQ(0, expect_kept(family, element(0xA0, dns_name + directory_name))->kind);
  EXPECT_EQ(1, expect_kept(family, element(0xA1, rdn_content))->kind);
  expect_form_refused(family, element(0xA2, dns_name));
  expect_form_refused(family, element(0xA1, element(0x31, rdn_content)));
  expect_form_refused(family, element(0x30, dns_name));
  const auto record = created(family);
  EXPECT_EQ(Bytes(), encoded(family, record));
  record->kind = 7;
  EXPECT_EQ(Bytes(), encoded(family, record));
}

TEST(CRLDistributionPointsForm, IsAListOfPoints) {
  const auto family = FORM_LIST(CRLDistributionPoints, List);
  const Bytes point = sequence(element(0xA2, directory_name));
  expect_exact(family, 0x30, point + sequence({}));
  EXPECT_EQ(2, List_len(expect_kept(family, sequence(point + point)).get()));
}

TEST(AuthorityInfoAccessSyntaxForm, HasMethodsAndPlaces) {
  const auto family = FORM_LIST(AuthorityInfoAccessSyntax, AuthorityInfoAccessSyntax);
  const auto description = FORM(AccessDescription, AccessDescription);
  const Bytes ocsp = hex("06 08 2B 06 01 05 05 07 30 01") + element(0x86, text("http://a/"));
  expect_exact(description, 0x30, ocsp);
  expect_exact(family, 0x30, sequence(ocsp) + sequence(policy + directory_name));
  const auto list = expect_kept(family, sequence(sequence(ocsp)));
  EXPECT_EQ("1.3.6.1.5.5.7.48.1",
            dotted(element_of<AccessDescription>(list.get(), 0).accessMethod));
  EXPECT_EQ(6, element_of<AccessDescription>(list.get(), 0).accessLocation->kind);
  expect_unfilled(description);
  expect_form_refused(description, sequence(policy));
}

// ---------------------------------------------------------------------------------------------
// Revocation lists
// ---------------------------------------------------------------------------------------------

const auto issuing_point = FORM(IssuingDistributionPoint, pki_IssuingDistributionPoint);

TEST(IssuingDistributionPointForm, HasEachOfItsFields) {
  const Bytes content = element(0xA0, element(0xA0, dns_name)) +
                        hex("81 01 FF 82 01 FF 83 02 01 06 84 01 FF 85 01 FF");
  expect_exact(issuing_point, 0x30, content);
  const auto all = expect_kept(issuing_point, sequence(content));
  EXPECT_EQ(0, all->distributionPoint->kind);
  EXPECT_NE(0U, all->onlyContainsUserCerts);
  EXPECT_NE(0U, all->onlyContainsCACerts);
  EXPECT_EQ(7U, all->onlySomeReasons->length);
  EXPECT_NE(0U, all->indirectCRL);
  EXPECT_NE(0U, all->onlyContainsAttributeCerts);
}

TEST(IssuingDistributionPointForm, IsMadeOfASingleField) {
  expect_unfilled(issuing_point, hex("30 00"));
  const auto name = expect_kept(issuing_point, sequence(element(0xA0, element(0xA1, rdn_content))));
  EXPECT_EQ(1, name->distributionPoint->kind);
  EXPECT_EQ(0U, name->indirectCRL);
  const auto record = created(issuing_point);
  record->onlyContainsUserCerts = 1;
  EXPECT_EQ(hex("30 03 81 01 FF"), encoded(issuing_point, record));
  record->onlyContainsUserCerts = 0;
  record->onlyContainsCACerts = 1;
  EXPECT_EQ(hex("30 03 82 01 FF"), encoded(issuing_point, record));
  record->onlyContainsCACerts = 0;
  record->indirectCRL = 255;
  EXPECT_EQ(hex("30 03 84 01 FF"), encoded(issuing_point, record));
  record->indirectCRL = 0;
  record->onlyContainsAttributeCerts = 1;
  EXPECT_EQ(hex("30 03 85 01 FF"), encoded(issuing_point, record));
  EXPECT_EQ(nullptr, expect_kept(issuing_point, hex("30 03 85 01 FF"))->onlySomeReasons);
  expect_kept(issuing_point, hex("30 04 83 02 00 FF"));
}

TEST(IssuingDistributionPointForm, TakesImplicitTagsInTheirOrderOnly) {
  expect_form_refused(issuing_point, sequence(hex("A1 03 01 01 FF")));
  expect_form_refused(issuing_point, sequence(hex("82 01 FF 81 01 FF")));
  expect_form_refused(issuing_point, sequence(hex("84 02 FF FF")));
  expect_form_refused(issuing_point, sequence(element(0xA0, dns_name)));
  expect_form_refused(issuing_point, sequence(hex("86 01 FF")));
}

TEST(CRLReasonForm, IsANumberThatIsEnumerated) {
  const auto family = FORM_LIST(CRLReason, Integer);
  EXPECT_EQ(1U, asn1_Integer_get(expect_kept(family, hex("0A 01 01")).get()));
  EXPECT_EQ(0U, asn1_Integer_get(expect_kept(family, hex("0A 01 00")).get()));
  for (const char *octets : {"0A 00", "0A", "02 01 01", "0A 02 00 01", "0A 02 01"}) {
    expect_form_refused(family, hex(octets));
  }
}

TEST(InvalidityDateForm, IsATimeOfTheGeneralKind) {
  const auto family = FORM_LIST(InvalidityDate, GeneralizedTime);
  expect_exact(family, 24, text("20260101000000Z"));
  EXPECT_STREQ("20260101000000Z", expect_kept(family, element(24, text("20260101000000Z"))).get());
  expect_form_refused(family, element(23, text("260101000000Z")));
  expect_form_refused(family, element(24, hex("32 00 33")));
}

// ---------------------------------------------------------------------------------------------
// Filled by hand
// ---------------------------------------------------------------------------------------------

TEST(ExtensionForms, AreWrittenFromTheirFields) {
  const auto family = FORM(AuthorityKeyIdentifier, AuthorityKeyIdentifier);
  const auto record = created(family);
  const uint8_t octets[] = {1, 2, 3, 4};
  record->keyIdentifier = asn1_ASN1String_new(4, octets);
  EXPECT_EQ(hex("30 06 80 04 01 02 03 04"), encoded(family, record));
  record->authorityCertIssuer = List_new(0);
  GeneralName *const name = pki_GeneralName_new();
  List_append(record->authorityCertIssuer, name, 0);
  EXPECT_EQ(Bytes(), encoded(family, record));  // the name lacks its value
  name->kind = 2;
  name->value = asn1_ASN1String_new(4, octets);
  EXPECT_EQ(hex("30 0E 80 04 01 02 03 04 A1 06 82 04 01 02 03 04"), encoded(family, record));
}

TEST(ExtensionForms, TakeNoPlaceThatIsNotThere) {
  const Bytes octets = sequence(dns_name);
  EXPECT_EQ(nullptr,
            pki_GeneralNames_d(octets.data(), octets.data() + octets.size(), 0, nullptr, 0));
}

TEST(ExtensionForms, OfStringsInSegments) {
  const auto family = FORM_LIST(SubjectKeyIdentifier, OctetString);
  EXPECT_EQ(hex("61 62"), value(decoded(family, hex("24 80 04 01 61 04 01 62 00 00")).get()));
  expect_form_refused(family, hex("04 80 61 00 00"));
}

// A text that is longer than any that the library makes keeps its octets.
TEST(ExtensionForms, OfLongTimes) {
  const auto family = FORM_LIST(InvalidityDate, GeneralizedTime);
  for (const size_t digits : {1U, 40U}) {
    expect_kept(family, element(24, text("20260101103000." + std::string(digits, '5') + "Z")));
  }
}

// x400Address [3] keeps its element whole, and so has the identifier octet A3.
TEST(ExtensionForms, OfNamesThatAreKeptWhole) {
  const auto family = FORM(GeneralName, GeneralName);
  const auto name = decoded(family, hex("A3 02 05 00"));
  EXPECT_EQ(hex("A3 02 05 00"), encoded(family, name));
  static_cast<Any *>(name->value)->data[0] = 0xA4;
  EXPECT_EQ(Bytes(), encoded(family, name));
}

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(ExtensionForms, OfStringsInSegmentsFailAtEachAllocation) {
  const Bytes octets = hex("24 80 04 01 61 04 01 62 00 00");
  EXPECT_EQ(2, support::expect_failure_at_each_allocation([&] {
              OctetString *made = nullptr;
              const uint8_t *const end = octets.data() + octets.size();
              const bool read = pki_SubjectKeyIdentifier_d(octets.data(), end, 0, &made, 0) == end;
              EXPECT_EQ(read, made != nullptr);
              pki_SubjectKeyIdentifier_free(made);
              return read;
            }));
}

#endif

// ---------------------------------------------------------------------------------------------
// Universal types
// ---------------------------------------------------------------------------------------------

using support::dump;
using support::Lines;
using support::traced;

const auto identifiers = FORM_LIST(ExtKeyUsageSyntax, List);
const auto date = FORM_LIST(InvalidityDate, GeneralizedTime);

TEST(UniversalForms, AreTracedWithTheirOctets) {
  EXPECT_EQ((Lines{"OCTETSTRING", dump("41 ", "A")}),
            traced(FORM_LIST(SubjectKeyIdentifier, OctetString), hex("04 01 41")));
  EXPECT_EQ((Lines{"BITSTRING", dump("42 ", "B")}),
            traced(FORM_LIST(KeyUsage, BitString), hex("03 02 01 42")));
  EXPECT_EQ((Lines{"GENERALIZEDTIME ",
                   dump("32 30 32 36 30 31 30 31 30 30 30 30 30 30 5A ", "20260101000000Z")}),
            traced(date, element(24, text("20260101000000Z"))));
  EXPECT_EQ((Lines{"ENUMERATED ", dump("43 ", "C")}),
            traced(FORM_LIST(CRLReason, Integer), hex("0A 01 43")));
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ". " + dump("55 1D 25 00 ", "U.%."), "}"}),
            traced(identifiers, hex("30 06 06 04 55 1D 25 00")));
  EXPECT_EQ((Lines{"SEQUENCE {", ". BOOLEAN ", ". " + dump("45 ", "E"), ". INTEGER",
                   ". " + dump("46 ", "F"), "}"}),
            traced(FORM(BasicConstraints, BasicConstraints), hex("30 06 01 01 45 02 01 46")));
  EXPECT_EQ((Lines{"SEQUENCE {", ". OBJECT IDENTIFIER ", ". " + dump("2B ", "+"),
                   ". " + dump("0C 01 47 ", "..G"), "}"}),
            traced(FORM(AlgId, AlgId), hex("30 06 06 01 2B 0C 01 47")));
}

// X.690, 8.19.2: the first and the last number of so many octets.
TEST(UniversalForms, HaveArcsOfAnyNumberOfOctets) {
  for (const char *content : {"2A 7F", "2A 81 00", "2A FF 7F", "2A 81 80 00", "2A FF FF 7F",
                              "2A 81 80 80 00", "7F", "81 00", "FF 7F", "81 80 00"}) {
    expect_kept(identifiers, sequence(element(6, hex(content))));
  }
  const struct {
    uint32_t octets, word;
    const char *encoding;
  } rows[] = {{1, 0x7F000000, "30 03 06 01 7F"},
              {1, 0x81000000, ""},  // goes on and has no end
              {2, 0x81010000, "30 04 06 02 81 01"},
              {2, 0x80010000, ""}};  // begins with a needless octet
  for (const auto &row : rows) {
    uint32_t words[] = {PKI_LARGE_ARCS, row.octets, row.word};
    ObjId identifier{3, words};
    List *const list = support::list_of({&identifier});
    EXPECT_EQ(hex(row.encoding), support::encode(pki_ExtKeyUsageSyntax_e, list));
    List_free(list, nullptr);
  }
}

TEST(UniversalForms, HaveTimesOfVisibleCharacters) {
  expect_kept(date, element(24, text(" ~")));
  expect_form_refused(date, element(24, text("2\x1F")));
  expect_form_refused(date, element(24, text("2\x7F")));
}

TEST(UniversalForms, HoldABooleanOfAnyUse) {
  expect_kept(FORM(AlgId, AlgId), hex("30 06 06 01 2B 01 01 FF"));
  expect_kept(FORM_LIST(RDNSequence, RDNSequence),
              sequence(element(0x31, sequence(hex("06 03 55 04 03 01 01 FF")))));
}

TEST(UniversalForms, HaveNoEncodingWithoutOctets) {
  const auto record = created(FORM(AlgId, AlgId));
  record->algorithm = asn1_ObjId_clone(asn1_Get_id_ce_keyUsage());
  EXPECT_EQ(hex("30 05 06 03 55 1D 0F"), encoded(FORM(AlgId, AlgId), record));
  record->parameters = asn1_Any_new(0);
  EXPECT_EQ(0U, pki_AlgId_e(nullptr, record.get()));
}

}  // namespace

}  // namespace rfc5280_extensions_test
