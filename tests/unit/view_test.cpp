// Views into certificates and revocation lists, and the walk over a list's entries.
#include <orvelpki.h>

#include "support.h"

namespace view_test {

namespace {

using support::Bytes;
using support::element;
using support::hex;
using support::Input;
using support::text;
using support::operator+;

Bytes sequence(const Bytes &content) { return element(0x30, content); }
Bytes set(const Bytes &content) { return element(0x31, content); }
Bytes octets(pki_Octets view) { return {view.data, view.data + view.length}; }

const Bytes algorithm = sequence(hex("06 03 2B 65 70"));
const Bytes version = hex("A0 03 02 01 02");
const Bytes serial = hex("02 02 12 67");
const Bytes issuer = sequence(set(sequence(hex("06 03 55 04 06 13 02 44 45"))));
const Bytes validity =
    sequence(element(23, text("260101000000Z")) + element(24, text("20560101000000Z")));
const Bytes subject = sequence({});
const Bytes key = sequence(algorithm + hex("03 03 00 01 02"));
const Bytes issuer_id = hex("81 02 00 AB");
const Bytes subject_id = hex("82 02 04 50");
const Bytes constraints = sequence(hex("06 03 55 1D 13 01 01 FF 04 02 30 00"));
const Bytes key_id = sequence(hex("06 03 55 1D 0E 04 02 01 02"));
const Bytes extension_list = sequence(constraints + key_id);
const Bytes extensions = element(0xA3, extension_list);
const Bytes tbs = sequence(version + serial + algorithm + issuer + validity + subject + key +
                           issuer_id + subject_id + extensions);
const Bytes signature = hex("03 03 00 AA BB");
const Bytes certificate = sequence(tbs + algorithm + signature);

TEST(CertificateView, HasEveryFieldAsItStands) {
  const Input input(certificate + hex("05 00"));
  pki_CertificateView view;
  ASSERT_EQ(input.z() + certificate.size(), pki_certificate_view(input.z(), input.end(), &view));
  EXPECT_EQ(tbs, octets(view.tbsCertificate));
  EXPECT_EQ(algorithm, octets(view.signatureAlgorithm));
  EXPECT_EQ(signature, octets(view.signatureValue));
  EXPECT_EQ(version, octets(view.version));
  EXPECT_EQ(serial, octets(view.serialNumber));
  EXPECT_EQ(algorithm, octets(view.signature));
  EXPECT_EQ(issuer, octets(view.issuer));
  EXPECT_EQ(validity, octets(view.validity));
  EXPECT_EQ(subject, octets(view.subject));
  EXPECT_EQ(key, octets(view.subjectPublicKeyInfo));
  EXPECT_EQ(issuer_id, octets(view.issuerUniqueID));
  EXPECT_EQ(subject_id, octets(view.subjectUniqueID));
  EXPECT_EQ(extensions, octets(view.extensions));
  // They are octets of the input.
  EXPECT_EQ(input.z() + 3, view.tbsCertificate.data);
}

TEST(CertificateView, HasNothingForWhatIsNotThere) {
  const Bytes first_version = sequence(
      sequence(serial + algorithm + issuer + validity + subject + key) + algorithm + signature);
  const Input input(first_version);
  pki_CertificateView view;
  ASSERT_EQ(input.end(), pki_certificate_view(input.z(), input.end(), &view));
  EXPECT_EQ(0U, view.version.length);
  EXPECT_EQ(nullptr, view.version.data);
  EXPECT_EQ(nullptr, view.issuerUniqueID.data);
  EXPECT_EQ(nullptr, view.subjectUniqueID.data);
  EXPECT_EQ(nullptr, view.extensions.data);
  EXPECT_EQ(key, octets(view.subjectPublicKeyInfo));
}

// X.690, 8.6.4: a BIT STRING may be constructed. An INTEGER never is (8.3.1).
TEST(CertificateView, TakesTheConstructedFormOfStringsOnly) {
  const Bytes in_pieces = element(0x23, hex("03 02 00 AA 03 02 00 BB"));
  const Input input(sequence(tbs + algorithm + in_pieces));
  pki_CertificateView view;
  ASSERT_EQ(input.end(), pki_certificate_view(input.z(), input.end(), &view));
  EXPECT_EQ(in_pieces, octets(view.signatureValue));

  const Bytes constructed_serial = element(0x22, hex("02 01 67"));
  const Input wrong(sequence(
      sequence(version + constructed_serial + algorithm + issuer + validity + subject + key) +
      algorithm + signature));
  EXPECT_EQ(nullptr, pki_certificate_view(wrong.z(), wrong.end(), &view));
}

TEST(CertificateView, RefusesWhatIsNoCertificate) {
  const Bytes left_over = sequence(tbs + algorithm + signature + hex("05 00"));
  const Bytes without_signature = sequence(tbs + algorithm);
  const Bytes in_the_wrong_order = sequence(algorithm + tbs + signature);
  const Bytes no_serial = sequence(sequence(version + algorithm) + algorithm + signature);
  for (const Bytes &wrong :
       {left_over, without_signature, in_the_wrong_order, no_serial, serial, Bytes()}) {
    const Input input(wrong);
    pki_CertificateView view;
    EXPECT_EQ(nullptr, pki_certificate_view(input.z(), input.end(), &view));
    EXPECT_EQ(nullptr, view.tbsCertificate.data);
  }
  pki_CertificateView view;
  EXPECT_EQ(nullptr, pki_certificate_view(nullptr, nullptr, &view));
  EXPECT_EQ(nullptr, pki_certificate_view(nullptr, certificate.data() + 1, &view));
  EXPECT_EQ(nullptr, pki_certificate_view(certificate.data(), nullptr, &view));
  EXPECT_EQ(nullptr, pki_certificate_view(certificate.data(), certificate.data() + 1, nullptr));
}

// Whatever the octets are, views lie in the input; and what is decoded has the view of its parts.
TEST(CertificateView, AgreesWithTheDecoder) {
  unsigned viewed = 0, decoded = 0;
  for (size_t at = 0; at < certificate.size(); ++at) {
    for (unsigned change = 0; change < 9; ++change) {
      Bytes changed = certificate;
      if (change < 8) changed[at] = static_cast<uint8_t>(changed[at] ^ (1U << change));
      if (change == 8) changed.resize(at);
      const Input input(changed);
      pki_CertificateView view;
      const uint8_t *const next = pki_certificate_view(input.z(), input.end(), &view);
      Certificate *record = nullptr;
      const uint8_t *const end = pki_Certificate_d(input.z(), input.end(), 0, &record, 0);
      viewed += next != nullptr;
      decoded += end != nullptr;
      if (end != nullptr) {
        ASSERT_EQ(end, next);
        const auto same = [](const OctetString *kept, pki_Octets octets_of_view) {
          return Bytes(kept->data, kept->data + kept->length) == octets(octets_of_view);
        };
        EXPECT_TRUE(same(record->tbsEncoded, view.tbsCertificate));
        EXPECT_TRUE(same(record->tbsCertificate->issuerEncoded, view.issuer));
        EXPECT_TRUE(same(record->tbsCertificate->subjectEncoded, view.subject));
      }
      if (next != nullptr) {
        pki_ExtensionView extension;
        const uint8_t unknown[] = {0x2A};
        pki_extension_view(view.extensions, unknown, sizeof unknown, &extension);
      }
      pki_Certificate_free(record);
    }
  }
  // Most of the bits are in values.
  EXPECT_GT(decoded, 100U);
  EXPECT_GE(viewed, decoded);
}

TEST(ExtensionView, IsFoundByItsIdentifier) {
  const Input input(certificate);
  pki_CertificateView view;
  ASSERT_NE(nullptr, pki_certificate_view(input.z(), input.end(), &view));
  const Bytes key_identifier = hex("55 1D 0E"), usage = hex("55 1D 0F"), basic = hex("55 1D 13");
  pki_ExtensionView extension;
  EXPECT_EQ(1, pki_extension_view(view.extensions, key_identifier.data(), 3, &extension));
  EXPECT_EQ(hex("06 03 55 1D 0E"), octets(extension.extnID));
  EXPECT_EQ(nullptr, extension.critical.data);
  EXPECT_EQ(hex("04 02 01 02"), octets(extension.extnValue));
  EXPECT_EQ(hex("01 02"), octets(pki_view_content(extension.extnValue)));
  EXPECT_EQ(1, pki_extension_view(view.extensions, basic.data(), 3, &extension));
  EXPECT_EQ(hex("01 01 FF"), octets(extension.critical));
  EXPECT_EQ(0, pki_extension_view(view.extensions, usage.data(), 3, &extension));
  EXPECT_EQ(0, pki_extension_view({}, usage.data(), 3, &extension));
  // A list without the tag around it, and one that is broken.
  EXPECT_EQ(1, pki_extension_view({extension_list.data(), uint32_t(extension_list.size())},
                                  basic.data(), 3, &extension));
  const Bytes broken = sequence(key_id + hex("30 02 05 00"));
  EXPECT_EQ(1, pki_extension_view({broken.data(), uint32_t(broken.size())}, key_identifier.data(),
                                  3, &extension));
  EXPECT_EQ(-1, pki_extension_view({broken.data(), uint32_t(broken.size())}, usage.data(), 3,
                                   &extension));
  EXPECT_EQ(-1, pki_extension_view({broken.data(), 3}, usage.data(), 3, &extension));
  EXPECT_EQ(-1, pki_extension_view({}, nullptr, 3, &extension));
  EXPECT_EQ(-1, pki_extension_view({}, usage.data(), 3, nullptr));
}

TEST(View, TakesFormsOfASequenceOnly) {
  const Input input(validity);
  pki_Octets times[2];
  const pki_Type *const form = pki_Type_find("pki_Validity");
  EXPECT_EQ(input.end(), pki_view(form, input.z(), input.end(), times, 2));
  EXPECT_EQ(element(23, text("260101000000Z")), octets(times[0]));
  EXPECT_EQ(text("20560101000000Z"), octets(pki_view_content(times[1])));
  EXPECT_EQ(nullptr, pki_view(form, input.z(), input.end(), times, 1));
  EXPECT_EQ(nullptr, pki_view(form, input.z(), input.end(), nullptr, 2));
  EXPECT_EQ(nullptr, pki_view(nullptr, input.z(), input.end(), times, 2));
  EXPECT_EQ(nullptr, pki_view(pki_Type_find("Validity"), input.z(), input.end(), times, 2));
  EXPECT_EQ(nullptr, pki_view(pki_Type_find("pki_RDNSequence"), input.z(), input.end(), times, 0));
}

TEST(View, GoesThroughTheElementsOfAContent) {
  const Bytes content = hex("02 01 05 1F 81 01 01 00 30 80 05 00 00 00");
  pki_Octets rest{content.data(), uint32_t(content.size())}, one;
  EXPECT_EQ(1, pki_view_next(&rest, &one));
  EXPECT_EQ(hex("02 01 05"), octets(one));
  EXPECT_EQ(1, pki_view_next(&rest, &one));
  EXPECT_EQ(hex("1F 81 01 01 00"), octets(one));
  EXPECT_EQ(hex("00"), octets(pki_view_content(one)));
  EXPECT_EQ(1, pki_view_next(&rest, &one));
  EXPECT_EQ(hex("30 80 05 00 00 00"), octets(one));
  EXPECT_EQ(hex("05 00"), octets(pki_view_content(one)));
  EXPECT_EQ(0, pki_view_next(&rest, &one));
  const Bytes broken = hex("02 02 05");
  rest = {broken.data(), 3};
  EXPECT_EQ(-1, pki_view_next(&rest, &one));
  EXPECT_EQ(broken.data(), rest.data);
  EXPECT_EQ(-1, pki_view_next(nullptr, &one));
  EXPECT_EQ(0U, pki_view_content({broken.data(), 3}).length);
  for (const uint32_t length : {0U, 1U, 5U}) {
    EXPECT_EQ(nullptr, pki_view_content({nullptr, length}).data) << length;
  }
  EXPECT_EQ(-1, pki_view_next(&rest, nullptr));
}

TEST(View, TakesTagNumbersOfAnySize) {
  // [UNIVERSAL 1] with one octet, [UNIVERSAL 127] without one, and 1 again in three octets.
  for (const Bytes &element : {hex("1F 01 01 AA"), hex("1F 7F 00"), hex("1F 80 80 01 01 AA")}) {
    pki_Octets rest{element.data(), uint32_t(element.size())}, one;
    EXPECT_EQ(1, pki_view_next(&rest, &one));
    EXPECT_EQ(element, octets(one));
  }
}

TEST(View, OpensAnElementWithoutContent) {
  const Bytes empty = hex("30 80 00 00");
  const pki_Octets content = pki_view_content({empty.data(), 4});
  EXPECT_EQ(empty.data() + 2, content.data);
  EXPECT_EQ(0U, content.length);
  for (uint32_t cut = 0; cut < 4; ++cut) {
    EXPECT_EQ(nullptr, pki_view_content({empty.data(), cut}).data) << cut;
  }
}

// ---------------------------------------------------------------------------------------------
// Revocation lists
// ---------------------------------------------------------------------------------------------

Bytes entry(std::string_view number, const Bytes &date, const Bytes &rest = {}) {
  return sequence(element(2, hex(number)) + date + rest);
}
Bytes utc(std::string_view characters) { return element(23, text(characters)); }
Bytes generalized(std::string_view characters) { return element(24, text(characters)); }

const Bytes key_compromise = sequence(sequence(hex("06 03 55 1D 15 04 03 0A 01 01")));
const Bytes entries =
    sequence(entry("05", utc("260201000000Z"), key_compromise) +
             entry("00 80", utc("000229123456Z")) + entry("05", generalized("20260101103000Z")));

Bytes list(const Bytes &revoked) {
  const Bytes tbs_list = sequence(hex("02 01 01") + algorithm + issuer + utc("260101000000Z") +
                                  utc("260301000000Z") + revoked + element(0xA0, extension_list));
  return sequence(tbs_list + algorithm + signature);
}

TEST(CrlReader, WalksTheEntries) {
  const Input input(list(entries));
  pki_CrlReader reader;
  ASSERT_EQ(1, pki_crl_open(&reader, input.z(), input.end()));
  EXPECT_EQ(issuer, octets(reader.issuer));
  EXPECT_EQ(utc("260301000000Z"), octets(reader.nextUpdate));
  EXPECT_EQ(entries, octets(reader.revokedCertificates));
  EXPECT_EQ(element(0xA0, extension_list), octets(reader.extensions));
  EXPECT_EQ(signature, octets(reader.signatureValue));

  pki_CrlEntry found;
  ASSERT_EQ(1, pki_crl_next(&reader, &found));
  EXPECT_EQ(hex("05"), octets(found.serialNumber));
  EXPECT_EQ(text("260201000000Z"), octets(found.revocationDate));
  EXPECT_EQ(1769904000, found.revoked);  // date -u -d 2026-02-01 +%s
  EXPECT_EQ(1, found.reason);
  EXPECT_EQ(key_compromise, octets(found.extensions));
  ASSERT_EQ(1, pki_crl_next(&reader, &found));
  EXPECT_EQ(hex("00 80"), octets(found.serialNumber));
  EXPECT_EQ(951827696, found.revoked);  // 2000-02-29 12:34:56
  EXPECT_EQ(PKI_NO_REASON, found.reason);
  EXPECT_EQ(nullptr, found.extensions.data);
  ASSERT_EQ(1, pki_crl_next(&reader, &found));
  EXPECT_EQ(1767263400, found.revoked);  // 2026-01-01 10:30:00
  EXPECT_EQ(0, pki_crl_next(&reader, &found));
  EXPECT_EQ(0, pki_crl_next(&reader, &found));
}

/// An element whose length stands in two octets more than it needs.
Bytes with_long_length(const Bytes &element) {
  Bytes longer = element;
  longer.insert(longer.begin() + 1, {0x82, 0x00});
  return longer;
}

TEST(CrlReader, ReadsAnEntryWithALongLengthAnywhere) {
  const Bytes number = hex("02 01 05"), date = utc("260201000000Z");
  const auto longer = with_long_length;
  for (const Bytes &one : {longer(sequence(number + date + key_compromise)),
                           sequence(longer(number) + date + key_compromise),
                           sequence(number + longer(date) + key_compromise),
                           sequence(number + date + longer(key_compromise))}) {
    const Input input(list(sequence(one + one)));
    pki_CrlReader reader;
    ASSERT_EQ(1, pki_crl_open(&reader, input.z(), input.end()));
    pki_CrlEntry found;
    for (int i = 0; i < 2; ++i) {
      ASSERT_EQ(1, pki_crl_next(&reader, &found));
      EXPECT_EQ(hex("05"), octets(found.serialNumber));
      EXPECT_EQ(text("260201000000Z"), octets(found.revocationDate));
      EXPECT_EQ(1769904000, found.revoked);
      EXPECT_EQ(1, found.reason);
    }
    EXPECT_EQ(0, pki_crl_next(&reader, &found));
  }
}

TEST(CrlReader, ReadsAReasonInAnyForm) {
  const Bytes other = hex("30 0A 06 03 55 1D 18 04 03 18 01 5A");
  struct Case {
    Bytes extensions;
    int32_t reason;
  };
  for (const Case &one : {Case{hex("30 0C 30 0A 06 03 55 1D 15 04 03 0A 01 06"), 6},
                          Case{hex("30 0C 30 0A 06 03 55 1D 15 04 03 0A 01 7F"), 0x7F},
                          Case{hex("30 0C 30 0A 06 03 55 1D 15 04 03 0A 01 80"), PKI_NO_REASON},
                          Case{hex("30 0C 30 0A 06 03 55 1D 18 04 03 0A 01 06"), PKI_NO_REASON},
                          Case{hex("30 0C 30 0A 06 03 55 1D 15 04 03 02 01 06"), PKI_NO_REASON},
                          Case{hex("30 0B 30 09 06 03 55 1D 15 04 02 0A 00"), PKI_NO_REASON},
                          Case{hex("30 0F 30 0D 06 03 55 1D 15 01 01 FF 04 03 0A 01 06"), 6},
                          Case{sequence(hex("30 0A 06 03 55 1D 15 04 03 0A 01 06") + other), 6},
                          Case{sequence(other + hex("30 0A 06 03 55 1D 15 04 03 0A 01 06")), 6}}) {
    const Input input(list(sequence(entry("05", utc("260201000000Z"), one.extensions))));
    pki_CrlReader reader;
    pki_CrlEntry found;
    ASSERT_EQ(1, pki_crl_open(&reader, input.z(), input.end()));
    ASSERT_EQ(1, pki_crl_next(&reader, &found)) << testing::PrintToString(one.extensions);
    EXPECT_EQ(one.reason, found.reason) << testing::PrintToString(one.extensions);
  }
}

TEST(CrlReader, FindsASerialNumberFromTheStart) {
  const Input input(list(entries));
  pki_CrlReader reader;
  ASSERT_EQ(1, pki_crl_open(&reader, input.z(), input.end()));
  pki_CrlEntry found;
  while (pki_crl_next(&reader, &found) == 1) {
  }
  const Bytes five = hex("05"), high = hex("00 80"), other = hex("06");
  EXPECT_EQ(1, pki_crl_find(&reader, five.data(), 1, &found));
  EXPECT_EQ(1, found.reason);
  EXPECT_EQ(1, pki_crl_find(&reader, high.data(), 2, &found));
  EXPECT_EQ(0, pki_crl_find(&reader, high.data() + 1, 1, &found));
  EXPECT_EQ(0, pki_crl_find(&reader, other.data(), 1, &found));
  EXPECT_EQ(0, pki_crl_find(&reader, nullptr, 0, &found));
}

TEST(CrlReader, TakesAListWithoutEntries) {
  for (const Bytes &revoked : {Bytes(), sequence({})}) {
    const Input input(list(revoked));
    pki_CrlReader reader;
    pki_CrlEntry found;
    ASSERT_EQ(1, pki_crl_open(&reader, input.z(), input.end()));
    EXPECT_EQ(0, pki_crl_next(&reader, &found));
  }
}

TEST(CrlReader, StopsAtWhatIsNoEntry) {
  const Bytes good = entry("05", utc("260201000000Z"));
  for (const Bytes &bad :
       {sequence(hex("02 01 05")), entry("00 05", utc("260201000000Z")), hex("05 00"),
        entry("05", hex("0C 01 41")), entry("05", utc("260201000000Z"), hex("05 00")),
        entry("05", utc("260201000000Z"), key_compromise + hex("05 00"))}) {
    const Input input(list(sequence(good + bad)));
    pki_CrlReader reader;
    pki_CrlEntry found;
    ASSERT_EQ(1, pki_crl_open(&reader, input.z(), input.end()));
    EXPECT_EQ(1, pki_crl_next(&reader, &found));
    EXPECT_EQ(-1, pki_crl_next(&reader, &found));
    EXPECT_EQ(-1, pki_crl_next(&reader, &found));
    const Bytes six = hex("06");
    EXPECT_EQ(-1, pki_crl_find(&reader, six.data(), 1, &found));
  }
  pki_CrlReader reader;
  EXPECT_EQ(0, pki_crl_open(&reader, nullptr, nullptr));
  EXPECT_EQ(0, pki_crl_open(&reader, certificate.data(), certificate.data() + certificate.size()));
  EXPECT_EQ(0, pki_crl_open(nullptr, certificate.data(), certificate.data()));
  EXPECT_EQ(-1, pki_crl_next(nullptr, nullptr));
  const Input input(list(entries));
  ASSERT_EQ(1, pki_crl_open(&reader, input.z(), input.end()));
  const Bytes five = hex("05");
  pki_CrlEntry found;
  EXPECT_EQ(-1, pki_crl_next(&reader, nullptr));
  EXPECT_EQ(-1, pki_crl_next(nullptr, &found));
  EXPECT_EQ(-1, pki_crl_find(nullptr, five.data(), 1, &found));
  EXPECT_EQ(-1, pki_crl_find(&reader, nullptr, 1, &found));
  EXPECT_EQ(-1, pki_crl_find(&reader, five.data(), 1, nullptr));
}

/// The seconds of a revocation date, or 0 where it is no time.
int64_t seconds(const Bytes &date) {
  const Input input(list(sequence(entry("05", date))));
  pki_CrlReader reader;
  pki_CrlEntry found;
  EXPECT_EQ(1, pki_crl_open(&reader, input.z(), input.end()));
  EXPECT_EQ(1, pki_crl_next(&reader, &found));
  return found.revoked;
}

// The numbers are those of `date -u -d … +%s`.
TEST(CrlReader, CountsTheSecondsOfItsDates) {
  EXPECT_EQ(-631152000, seconds(utc("500101000000Z")));
  EXPECT_EQ(2524607999, seconds(utc("491231235959Z")));
  EXPECT_EQ(2524607940, seconds(utc("4912312359Z")));
  EXPECT_EQ(253402300799, seconds(generalized("99991231235959Z")));
  EXPECT_EQ(-2203891200, seconds(generalized("19000301000000Z")));
  EXPECT_EQ(-62135596800, seconds(generalized("00010101000000Z")));
  EXPECT_EQ(1767263400, seconds(utc("260101123000+0200")));
  EXPECT_EQ(1767263400, seconds(utc("260101050000-0530")));
  EXPECT_EQ(1767263400, seconds(utc("260102102900+2359")));
  EXPECT_EQ(1767263400, seconds(generalized("20260101103000.25Z")));
  for (const char *const wrong :
       {"260101103000", "261301103000Z", "260001103000Z", "260100103000Z", "260229103000Z",
        "260101243000Z", "260101106000Z", "260101103061Z", "260101103000Zx", "260101103000.5Z",
        "2601011030 0Z", "260101103000+02", "260101103000+0260", "260101103000+2400", "Z"}) {
    EXPECT_EQ(0, seconds(utc(wrong))) << wrong;
  }
  EXPECT_EQ(0, seconds(generalized("19000229000000Z")));
  EXPECT_EQ(0, seconds(generalized("20260101103000.Z")));
}

// ---------------------------------------------------------------------------------------------
// Records that are not filled
// ---------------------------------------------------------------------------------------------

class Missing : public testing::Test {
 protected:
  std::string of(const char *name, const void *record) {
    const pki_Type *const type = pki_Type_find(name);
    pki_Fault fault{};
    const int32_t found = pki_find_missing(type, record, &fault);
    EXPECT_EQ(found != 0, pki_Type_functions(type)->encode(nullptr, record) == 0);
    return found == 0 ? "" : std::string(fault.path) + ": " + fault.sentence;
  }
};

TEST_F(Missing, NamesTheFirstFieldThatHasNoEncoding) {
  Certificate *record = nullptr;
  const Input input(certificate);
  ASSERT_EQ(input.end(), pki_Certificate_d(input.z(), input.end(), 0, &record, 0));
  EXPECT_EQ("", of("pki_Certificate", record));
  Certificate_TBS *const parts = record->tbsCertificate;

  Time *const after = parts->validity->notAfter;
  parts->validity->notAfter = nullptr;
  EXPECT_EQ("", of("pki_Certificate", record)) << "the kept octets are written";
  asn1_OctetString_free(record->tbsEncoded);
  record->tbsEncoded = nullptr;
  EXPECT_EQ("tbsCertificate.validity.notAfter: is missing", of("pki_Certificate", record));
  parts->validity->notAfter = after;
  EXPECT_EQ("", of("pki_Certificate", record));

  after->kind = 5;
  EXPECT_EQ("tbsCertificate.validity.notAfter: its kind is that of no alternative",
            of("pki_Certificate", record));
  after->kind = 24;

  asn1_OctetString_free(parts->issuerEncoded);
  parts->issuerEncoded = nullptr;
  auto *const rdn = static_cast<List *>(List_get(parts->issuerSequence, 0));
  auto *const assertion = static_cast<AttributeValueAssertion *>(List_get(rdn, 0));
  assertion->valueTag = 0;
  EXPECT_EQ("tbsCertificate.issuer[0][0].value: is missing, or has no encoding",
            of("pki_Certificate", record));
  assertion->valueTag = 19;
  assertion->type->arcs[1] = 5;
  assertion->type->arcs[0] = 9;
  EXPECT_EQ("", of("pki_Certificate", record));
  assertion->type->arcs[1] = 40;
  EXPECT_EQ("tbsCertificate.issuer[0][0].type: holds no value that can be encoded",
            of("pki_Certificate", record));
  pki_Certificate_free(record);
}

TEST_F(Missing, TakesAnythingForARecord) {
  EXPECT_EQ(": is missing", of("pki_Validity", nullptr));
  Validity *const empty = pki_Validity_new();
  EXPECT_EQ("notBefore: is missing", of("pki_Validity", empty));
  pki_Validity_free(empty);
  List *const list_of_nothing = List_new(1);
  EXPECT_EQ("", of("pki_GeneralNames", list_of_nothing));
  List_free(list_of_nothing, nullptr);
  pki_Fault fault;
  EXPECT_EQ(1, pki_find_missing(pki_Type_find("Validity"), nullptr, &fault));
  EXPECT_STREQ("its type is no form of an RFC", fault.sentence);
}

TEST_F(Missing, NamesTheElementOfAListThatHasNoEncoding) {
  uint8_t octet = 'a';
  ASN1String text{1, &octet};
  GeneralName good{6, &text}, bad{31, &text};
  List *const names = List_new(0);
  ASSERT_EQ(1, List_append(names, &good, 0));
  ASSERT_EQ(1, List_append(names, &bad, 0));
  EXPECT_EQ("[1]: its kind is that of no alternative", of("pki_GeneralNames", names));
  List_free(names, nullptr);
  List *const of_none = List_new(0);
  ASSERT_EQ(1, List_append(of_none, nullptr, 0));
  EXPECT_EQ("[0]: is missing", of("pki_GeneralNames", of_none));
  List_free(of_none, nullptr);
  Certificate_TBS *const empty = pki_Certificate_TBS_new();
  EXPECT_EQ("serialNumber: is missing", of("pki_Certificate_TBS", empty));
  pki_Certificate_TBS_free(empty);
}

// Their octets are not looked at while they are counted, and 32 bits count no more.
TEST_F(Missing, SaysThatTheWholeIsTooLargeWhereEachPartIsNot) {
  uint8_t octet = 1;
  uint32_t arcs[] = {1, 2};
  ObjId identifier{2, arcs};
  AlgId algorithm_id{&identifier, nullptr};
  OctetString large{0xC0000000, &octet}, other{0x40000000, &octet};
  Integer number{1, &octet, 0};
  CertID id{&algorithm_id, &large, &other, &number};
  EXPECT_EQ(": holds no value that can be encoded", of("pki_CertID", &id));
  GeneralName uri{6, &large};
  List *const names = List_new(0);
  ASSERT_EQ(1, List_append(names, &uri, 0));
  EXPECT_EQ("", of("pki_GeneralNames", names));
  ASSERT_EQ(1, List_append(names, &uri, 0));
  EXPECT_EQ(": holds no value that can be encoded", of("pki_GeneralNames", names));
  List_free(names, nullptr);
  ASN1String value{0xFFFFFFF1, &octet};
  AttributeValueAssertion assertion{&identifier, 19, &value};
  EXPECT_EQ(": holds no value that can be encoded", of("pki_AttributeValueAssertion", &assertion));
}

TEST_F(Missing, IsWhatARecordAnnouncesAndHasNot) {
  uint8_t octet = 1;
  uint32_t arcs[130] = {1, 2};
  ObjId identifier{2, arcs};
  AlgId algorithm_id{&identifier, nullptr};
  OctetString good{1, &octet}, none{1, nullptr};
  Integer number{1, &octet, 0}, no_number{1, nullptr, 0}, long_number{0x80000000, &octet, 0};
  CertID id{&algorithm_id, &none, &good, &number};
  EXPECT_EQ("issuerNameHash: holds no value that can be encoded", of("pki_CertID", &id));
  id = {&algorithm_id, &good, &good, &no_number};
  EXPECT_EQ("serialNumber: holds no value that can be encoded", of("pki_CertID", &id));
  id = {&algorithm_id, &good, &good, &long_number};
  EXPECT_EQ("serialNumber: holds no value that can be encoded", of("pki_CertID", &id));
  id = {&algorithm_id, &good, &good, &number};
  EXPECT_EQ("", of("pki_CertID", &id));

  Any no_element{1, nullptr};
  algorithm_id.parameters = &no_element;
  EXPECT_EQ("parameters: holds no value that can be encoded", of("pki_AlgId", &algorithm_id));
  algorithm_id.parameters = nullptr;
  ObjId no_arcs{2, nullptr};
  AlgId of_no_arcs{&no_arcs, nullptr};
  EXPECT_EQ("algorithm: holds no value that can be encoded", of("pki_AlgId", &of_no_arcs));
  BitString no_bits{8, nullptr};
  SubjectPKI key_of_none{&algorithm_id, &no_bits};
  EXPECT_EQ("subjectPublicKey: holds no value that can be encoded",
            of("pki_SubjectPKI", &key_of_none));

  // An attribute of a name: its value, its identifier octet, and a type of 129 octets.
  ASN1String empty{0, nullptr}, too_long{0xFFFFFFFC, &octet};
  AttributeValueAssertion assertion{&identifier, 19, &empty};
  EXPECT_EQ("", of("pki_AttributeValueAssertion", &assertion));
  assertion.value = &none;
  EXPECT_EQ("value: is missing, or has no encoding", of("pki_AttributeValueAssertion", &assertion));
  assertion.value = &too_long;
  EXPECT_EQ("value: is missing, or has no encoding", of("pki_AttributeValueAssertion", &assertion));
  assertion = {&identifier, 0x113, &good};
  EXPECT_EQ("value: is missing, or has no encoding", of("pki_AttributeValueAssertion", &assertion));
  assertion = {&identifier, 19, &good};
  identifier.count = 129;
  EXPECT_EQ("", of("pki_AttributeValueAssertion", &assertion));
  identifier.count = 130;
  EXPECT_EQ("type: holds no value that can be encoded",
            of("pki_AttributeValueAssertion", &assertion));

  // Characters that no time has, and none.
  char other[] = "\n", nothing[] = "", good_time[] = "260101000000Z";
  for (char *const characters : {other, nothing}) {
    Time from{23, good_time}, to{23, characters};
    Validity period{&from, &to};
    EXPECT_EQ("notAfter.utcTime: holds no value that can be encoded", of("pki_Validity", &period));
  }
}

// An identifier that is kept whole: the marker, the number of octets, and four octets a word.
TEST_F(Missing, IsAnIdentifierThatIsNotKeptAsItWouldBeRead) {
  const struct {
    std::vector<uint32_t> arcs;
    uint32_t octets;
  } rows[] = {{{PKI_LARGE_ARCS, 3, 0x2A030400}, 3},
              {{PKI_LARGE_ARCS, 0x80000000, 0x2A030400}, 0},
              {{PKI_LARGE_ARCS, 5, 0x2A030400}, 0},
              {{PKI_LARGE_ARCS, 3, 0x2A800400}, 0},
              {{PKI_LARGE_ARCS, 3, 0x2A038400}, 0},
              {{2, 0xFFFFFFFF}, 5},
              {{0x10000000, 5}, 0}};
  for (const auto &row : rows) {
    std::vector<uint32_t> arcs = row.arcs;
    ObjId identifier{static_cast<uint32_t>(arcs.size()), arcs.data()};
    const AlgId algorithm_id{&identifier, nullptr};
    EXPECT_EQ(row.octets == 0 ? 0 : 2 + 2 + row.octets, pki_AlgId_e(nullptr, &algorithm_id));
  }
}

TEST(View, TakesNoNullPointers) {
  const Bytes content = hex("02 01 05");
  pki_Octets rest{content.data(), 3}, none{nullptr, 5}, element;
  EXPECT_EQ(-1, pki_view_next(&rest, nullptr));
  EXPECT_EQ(0, pki_view_next(&none, &element));
  pki_CertificateView view;
  EXPECT_EQ(nullptr, pki_certificate_view(content.data(), nullptr, &view));
  pki_ExtensionView extension;
  const pki_Octets list_of_two{extension_list.data(), uint32_t(extension_list.size())};
  EXPECT_EQ(-1, pki_extension_view(list_of_two, content.data(), 1, nullptr));
  EXPECT_EQ(-1, pki_extension_view(list_of_two, nullptr, 1, &extension));
  EXPECT_EQ(0, pki_extension_view(list_of_two, nullptr, 0, &extension));
  EXPECT_EQ(0, pki_extension_view(none, content.data(), 1, &extension));
  EXPECT_EQ(0, pki_extension_view({content.data(), 0}, content.data(), 1, &extension));
  const Bytes no_tag = hex("A3 05 30");
  EXPECT_EQ(-1, pki_extension_view({no_tag.data(), 3}, content.data(), 1, &extension));
  pki_CrlReader reader;
  const Input input(list(entries));
  ASSERT_EQ(1, pki_crl_open(&reader, input.z(), input.end()));
  pki_CrlEntry found;
  EXPECT_EQ(-1, pki_crl_next(&reader, nullptr));
  EXPECT_EQ(-1, pki_crl_find(nullptr, content.data(), 1, &found));
  EXPECT_EQ(-1, pki_crl_find(&reader, content.data(), 1, nullptr));
  EXPECT_EQ(-1, pki_crl_find(&reader, nullptr, 1, &found));
}

TEST(View, OfARequiredFieldLooksAtItsIdentifierOctet) {
  pki_Octets fields[3];
  // mediaType IA5String, in segments of which there is none, and two lists.
  const Input details(hex("30 06 36 00 30 00 30 00"));
  EXPECT_EQ(details.end(),
            pki_view(pki_Type_find("pki_LogotypeDetails"), details.z(), details.end(), fields, 3));
  EXPECT_EQ(hex("36 00"), octets(fields[0]));
  // value [0] EXPLICIT ANY.
  const Input name(hex("30 05 06 01 2A 05 00"));
  EXPECT_EQ(nullptr, pki_view(pki_Type_find("pki_OtherName"), name.z(), name.end(), fields, 2));
  const Bytes cut = hex("30 80 00");
  EXPECT_EQ(nullptr, pki_view_content({cut.data(), 3}).data);
}

TEST(CrlReader, HasNoReasonWhereThatIsNoReason) {
  for (const char *const value : {"04 00", "04 01 0A", "04 03 02 01 01", "04 04 0A 02 01 01"}) {
    const Bytes extension = sequence(hex("06 03 55 1D 15") + hex(value));
    const Input input(list(sequence(entry("05", utc("260201000000Z"), sequence(extension)))));
    pki_CrlReader reader;
    pki_CrlEntry found;
    ASSERT_EQ(1, pki_crl_open(&reader, input.z(), input.end()));
    ASSERT_EQ(1, pki_crl_next(&reader, &found)) << value;
    EXPECT_EQ(PKI_NO_REASON, found.reason) << value;
  }
}

// 2024-02-29, and fractions after a comma (X.680, 46.3).
TEST(CrlReader, CountsTheSecondsOfLeapDaysAndOfFractions) {
  EXPECT_EQ(1709164800, seconds(utc("240229000000Z")));  // date -u -d 2024-02-29 +%s
  EXPECT_EQ(1767263400, seconds(generalized("20260101103000,5Z")));
}

}  // namespace

}  // namespace view_test
