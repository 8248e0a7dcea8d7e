// Tests CRLs and the records in them. The inputs are put together from small pieces, so that each
// field can be left out, moved or spoilt.

#include "records.h"

namespace crl_test {

namespace {

using namespace support;

constexpr RecordFamily<CRLEntry> entries{asn1_CRLEntry_new, asn1_CRLEntry_free, asn1_CRLEntry_e,
                                         asn1_CRLEntry_d, asn1_CRLEntry_clone};
constexpr RecordFamily<CertificateList_TBS> tbs_lists{
    asn1_CertificateList_TBS_new, asn1_CertificateList_TBS_free, asn1_CertificateList_TBS_e,
    asn1_CertificateList_TBS_d, asn1_CertificateList_TBS_clone};
constexpr RecordFamily<CertificateRevocationList> crls{
    asn1_CertificateRevocationList_new, asn1_CertificateRevocationList_free,
    asn1_CertificateRevocationList_e, asn1_CertificateRevocationList_d,
    asn1_CertificateRevocationList_clone};

/// Returns a name of one attribute.
Bytes name(const Bytes &type, uint8_t tag, const Bytes &content) {
  return sequence(element(0x31, sequence(type + element(tag, content))));
}

const Bytes country = hex("06 03 55 04 06");
const Bytes common_name = hex("06 03 55 04 03");
const Bytes serial_number_attribute = hex("06 03 55 04 05");
const Bytes rsa_with_sha256 = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00");
const Bytes utc_2026 = element(23, text("260101000000Z"));
const Bytes utc_2027 = element(23, text("270101000000Z"));
const Bytes general_2050 = element(24, text("20500101000000Z"));

const Bytes key_compromise = sequence(hex("06 03 55 1D 15 04 03 0A 01 01"));
const Bytes crl_number = sequence(hex("06 03 55 1D 14 04 03 02 01 07"));

const Bytes serial_5 = hex("02 01 05");
const Bytes plain_entry = serial_5 + utc_2026;
const Bytes full_entry = plain_entry + sequence(key_compromise);

const Bytes version_2 = hex("02 01 01");
const Bytes two_entries = sequence(sequence(full_entry) + sequence(hex("02 01 06") + utc_2027));
const Bytes extensions = element(0xA0, sequence(crl_number));
const Bytes signature = hex("03 03 00 C0 00");

/// The fields of a TBSCertList, as octets of the input.
struct Parts {
  Bytes version;
  Bytes signature = rsa_with_sha256;
  Bytes issuer = name(country, 19, text("DE"));
  Bytes this_update = utc_2026;
  Bytes next_update;
  Bytes revoked;
  Bytes extensions;

  Bytes content() const {
    return version + signature + issuer + this_update + next_update + revoked + extensions;
  }
  Bytes tbs() const { return sequence(content()); }
};

/// Returns the fields of a version 2 list, with all that are optional.
Parts full() {
  Parts parts;
  parts.version = version_2;
  parts.next_update = utc_2027;
  parts.revoked = two_entries;
  parts.extensions = extensions;
  return parts;
}

Bytes crl(const Bytes &tbs) { return sequence(tbs + rsa_with_sha256 + signature); }

const CRLEntry *entry_of(const List *list, int32_t index) {
  return static_cast<const CRLEntry *>(List_get(list, index));
}

// ------------------------------------------------------------------------------------------ CRLEntry

TEST(CrlEntry, HoldsASerialNumberADateAndExtensions) {
  const auto record = decoded(entries, sequence(full_entry));
  EXPECT_EQ(5U, asn1_Integer_get(record->userCertificate));
  EXPECT_EQ(23, record->revocationDate->kind);
  EXPECT_STREQ("260101000000Z", record->revocationDate->value);
  EXPECT_EQ(sequence(key_compromise), encode(asn1_Extensions_e, record->crlEntryExtensions));
  EXPECT_EQ(sequence(full_entry), encoded(entries, record));
}

TEST(CrlEntry, TakesEitherKindOfTimeWithAndWithoutExtensions) {
  for (const Bytes &date : {utc_2026, general_2050}) {
    for (const Bytes &list : {Bytes(), hex("30 00"), sequence(key_compromise + crl_number)}) {
      const Bytes octets = sequence(serial_5 + date + list);
      const auto record = decoded(entries, octets);
      EXPECT_EQ(date[0], record->revocationDate->kind);
      EXPECT_EQ(list.empty(), record->crlEntryExtensions == nullptr);
      EXPECT_EQ(octets, encoded(entries, record));
    }
  }
}

TEST(CrlEntry, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(entries, plain_entry);
  expect_sequence_of_definite_length(entries, full_entry);
}

TEST(CrlEntry, NeedsASerialNumberAndADate) {
  for (const Bytes &content :
       {Bytes(), serial_5, utc_2026, utc_2026 + serial_5, hex("02 00") + utc_2026,
        hex("22 01 05") + utc_2026, hex("02 84 80 00 00 00") + utc_2026, serial_5 + hex("17"),
        serial_5 + element(0x37, text("260101000000Z")), serial_5 + hex("1E 00"),
        serial_5 + hex("17 84 80 00 00 00"), serial_5 + sequence(key_compromise)}) {
    expect_refused(entries, sequence(content));
  }
  // The date must be inside the SEQUENCE.
  expect_refused(entries, sequence(serial_5) + utc_2026);
  expect_huge_lengths_refused(entries, full_entry);
}

TEST(CrlEntry, IsRefusedAtEveryCutButInFrontOfItsExtensions) {
  expect_every_cut_refused(entries, full_entry, {plain_entry.size()});
}

TEST(CrlEntry, IsRefusedWithBadExtensions) {
  for (const char *list : {"30 02 05 00", "30 05 30 03 06 01 2A", "30 80 00", "30 85", "30"}) {
    expect_refused(entries, sequence(plain_entry + hex(list)));
  }
}

TEST(CrlEntry, TakesExtensionsOfIndefiniteLengthAtItsEndOnly) {
  const Bytes indefinite = hex("30 80") + key_compromise + hex("00 00");
  const auto record = decoded(entries, sequence(plain_entry + indefinite));
  EXPECT_EQ(sequence(full_entry), encoded(entries, record));
  expect_refused(entries, sequence(plain_entry + indefinite + hex("05 00")));
}

TEST(CrlEntry, TakesExtensionsOfAHugeLengthForAnEmptyList) {
  for (const char *list : {"30 84 80 00 00 00", "30 84 FF FF FF FF"}) {
    const auto record = decoded(entries, sequence(plain_entry + hex(list)));
    ASSERT_NE(nullptr, record->crlEntryExtensions);
    EXPECT_EQ(0, List_len(record->crlEntryExtensions));
    EXPECT_EQ(sequence(plain_entry + hex("30 00")), encoded(entries, record));
  }
}

TEST(CrlEntry, LeavesUnreadWhatDoesNotBeginLikeExtensions) {
  // 10 is the same tag in primitive form. A0 is the tag of the extensions of the whole list.
  for (const char *rest : {"05 00", "31 00", "10 00", "A0 02 30 00", "17 00", "00"}) {
    const Bytes octets = hex(rest);
    const auto record = decoded(entries, sequence(plain_entry + octets), octets.size());
    EXPECT_EQ(nullptr, record->crlEntryExtensions) << rest;
    EXPECT_EQ(sequence(plain_entry), encoded(entries, record)) << rest;
  }
}

TEST(CrlEntry, DoesNotLookForExtensionsBehindItsContent) {
  const auto record = decoded(entries, sequence(plain_entry) + sequence(key_compromise),
                              sequence(key_compromise).size());
  EXPECT_EQ(nullptr, record->crlEntryExtensions);
  decoded(entries, sequence(plain_entry));  // a sanitizer sees a read past the input
}

TEST(CrlEntry, IsNotEncodedWithoutItsRequiredFields) {
  const auto record = created(entries);
  expect_nothing_written(entries, record.get());
  record->userCertificate = asn1_Integer_set(5);
  expect_nothing_written(entries, record.get());
  record->revocationDate = asn1_Time_new();
  expect_nothing_written(entries, record.get());  // kind 0
  record->revocationDate->kind = 23;
  expect_nothing_written(entries, record.get());  // no text
  record->revocationDate->value = asn1_UTCTime_clone("260101000000Z");
  EXPECT_EQ(sequence(plain_entry), encoded(entries, record));

  record->crlEntryExtensions = List_new(0);
  EXPECT_EQ(sequence(plain_entry + hex("30 00")), encoded(entries, record));
  ASSERT_NE(0, List_append(record->crlEntryExtensions, asn1_Extension_new(), 0));
  expect_nothing_written(entries, record.get());  // an extension that fails

  clear(record->userCertificate, asn1_Integer_free);
  expect_nothing_written(entries, record.get());
}

TEST(CrlEntry, IsCopiedDeeplyAndHalfFilled) {
  expect_deep_clone(entries, sequence(full_entry));
  const auto record = created(entries);
  record->crlEntryExtensions = List_new(0);
  const auto copy = cloned(entries, record);
  EXPECT_EQ(nullptr, copy->userCertificate);
  EXPECT_EQ(nullptr, copy->revocationDate);
  ASSERT_NE(nullptr, copy->crlEntryExtensions);
  EXPECT_NE(record->crlEntryExtensions, copy->crlEntryExtensions);
}

TEST(CrlEntry, IsNotCopiedWithADateOfNoKind) {
  const auto record = decoded(entries, sequence(full_entry));
  record->revocationDate->kind = 0;
  EXPECT_EQ(nullptr, cloned(entries, record));
  record->revocationDate->kind = 23;
}

TEST(CrlEntry, NewIsZeroAndFreeIgnoresNull) { expect_new_record_is_zero(entries); }

// -------------------------------------------------------------------- CertificateList_TBS, its fields

TEST(TbsCrl, HoldsEachField) {
  const Parts parts = full();
  const auto record = decoded(tbs_lists, parts.tbs());
  EXPECT_EQ(1U, asn1_Integer_get(record->version));
  EXPECT_EQ(rsa_with_sha256, encode(asn1_AlgId_e, record->signature));
  EXPECT_EQ(parts.issuer, encode(asn1_RDNSequence_e, record->issuerSequence));
  EXPECT_STREQ("/c(19)=DE", record->issuer);
  EXPECT_EQ(parts.issuer, value(record->issuerEncoded));
  EXPECT_STREQ("260101000000Z", record->thisUpdate->value);
  EXPECT_STREQ("270101000000Z", record->nextUpdate->value);
  ASSERT_EQ(2, List_len(record->revokedCertificates));
  EXPECT_EQ(5U, asn1_Integer_get(entry_of(record->revokedCertificates, 0)->userCertificate));
  EXPECT_EQ(6U, asn1_Integer_get(entry_of(record->revokedCertificates, 1)->userCertificate));
  EXPECT_EQ(sequence(crl_number), encode(asn1_Extensions_e, record->crlExtensions));
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));
}

TEST(TbsCrl, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(tbs_lists, Parts().content());
  expect_sequence_of_definite_length(tbs_lists, full().content());
  expect_huge_lengths_refused(tbs_lists, full().content());
}

TEST(TbsCrl, EachOptionalFieldMayBeThereOrNot) {
  for (unsigned present = 0; present < 16; ++present) {
    Parts parts;
    if ((present & 1) != 0) parts.version = version_2;
    if ((present & 2) != 0) parts.next_update = utc_2027;
    if ((present & 4) != 0) parts.revoked = two_entries;
    if ((present & 8) != 0) parts.extensions = extensions;
    const auto record = decoded(tbs_lists, parts.tbs());
    EXPECT_EQ((present & 1) != 0, record->version != nullptr);
    EXPECT_EQ((present & 2) != 0, record->nextUpdate != nullptr);
    EXPECT_EQ((present & 4) != 0, record->revokedCertificates != nullptr);
    EXPECT_EQ((present & 8) != 0, record->crlExtensions != nullptr);
    EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));
  }
}

TEST(TbsCrl, NoVersionIsRefusedAndNoneIsNeededForExtensions) {
  for (const char *version : {"", "02 01 00", "02 01 01", "02 01 05", "02 01 FF", "02 02 01 00"}) {
    Parts parts = full();
    parts.version = hex(version);
    const auto record = decoded(tbs_lists, parts.tbs());
    EXPECT_NE(nullptr, record->crlExtensions) << version;
    EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record)) << version;
  }
}

TEST(TbsCrl, TakesEitherKindOfTimeForEachUpdate) {
  for (const Bytes &this_update : {utc_2026, general_2050}) {
    for (const Bytes &next_update : {utc_2027, general_2050}) {
      Parts parts = full();
      parts.this_update = this_update;
      parts.next_update = next_update;
      const auto record = decoded(tbs_lists, parts.tbs());
      EXPECT_EQ(this_update[0], record->thisUpdate->kind);
      EXPECT_EQ(next_update[0], record->nextUpdate->kind);
      EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));
    }
  }
}

TEST(TbsCrl, NeedsEveryRequiredField) {
  for (Bytes Parts::*field : {&Parts::signature, &Parts::issuer, &Parts::this_update}) {
    for (const Parts &good : {Parts(), full()}) {
      for (const char *bad : {"05 00", "30 00"}) {
        Parts parts = good;
        parts.*field = hex(bad);
        expect_refused(tbs_lists, parts.tbs());
      }
    }
    Parts parts;
    parts.*field = {};
    expect_refused(tbs_lists, parts.tbs());
  }
  expect_refused(tbs_lists, hex("30 00"));
}

TEST(TbsCrl, IsRefusedWithABadField) {
  const struct {
    Bytes Parts::*field;
    const char *octets;
  } rows[] = {
      {&Parts::version, "A0 03 02 01 01"},  // tagged as in a certificate
      {&Parts::version, "22 01 01"},
      {&Parts::version, "02 00"},
      {&Parts::version, "02 84 80 00 00 00"},
      {&Parts::version, "02 01 01 02 01 01"},  // only once is accepted
      {&Parts::signature, "30 80 06 01 2A 00 00"},
      {&Parts::issuer, "31 00"},
      {&Parts::issuer, "30 02 30 00"},
      {&Parts::issuer, "30 09 31 07 30 05 06 03 55 04 06"},
      {&Parts::issuer, "30 80 31 00 00 00"},  // not the last thing in its range
      {&Parts::this_update, "37 00"},
      {&Parts::this_update, "17 84 80 00 00 00"},
      {&Parts::next_update, "17 84 80 00 00 00"},
      {&Parts::next_update, "18 80 00 00"},
      {&Parts::revoked, "30 02 05 00"},
      {&Parts::revoked, "30 02 30 00"},
      {&Parts::revoked, "30 05 30 03 02 01 05"},
      {&Parts::revoked, "30 80 00 00"},  // not the last thing in its range
      {&Parts::extensions, "A0 00"},
      {&Parts::extensions, "A0 02 31 00"},
      {&Parts::extensions, "A0 04 30 02 05 00"},
      {&Parts::extensions, "A0 80 30 00 00 00"},
      {&Parts::extensions, "A0 84 80 00 00 00"},
      {&Parts::extensions, "A0"},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.octets);
    Parts parts = full();
    parts.*row.field = hex(row.octets);
    expect_refused(tbs_lists, parts.tbs());
  }
}

TEST(TbsCrl, IsRefusedAtEveryCutButInFrontOfAnOptionalField) {
  Parts parts;
  parts.version = version_2;
  const size_t required = parts.content().size();
  parts.next_update = utc_2027;
  const size_t with_update = parts.content().size();
  parts.revoked = two_entries;
  const size_t with_entries = parts.content().size();
  expect_every_cut_refused(tbs_lists, full().content(), {required, with_update, with_entries});
}

TEST(TbsCrl, LooksForNoFieldBehindItsContent) {
  expect_refused(tbs_lists, hex("30 00") + full().content());
  expect_refused(tbs_lists, hex("30 00"));  // a sanitizer sees a read past the input

  for (const Bytes &field : {utc_2027, two_entries, extensions}) {
    const auto record = decoded(tbs_lists, Parts().tbs() + field, field.size());
    EXPECT_EQ(Parts().tbs(), encoded(tbs_lists, record));
  }
}

TEST(TbsCrl, StopsWithSuccessInFrontOfWhatItDoesNotKnow) {
  const struct {
    Bytes known, rest;
  } rows[] = {
      {{}, hex("05 00")},
      {{}, hex("A1 02 30 00")},
      {{}, hex("80 02 30 00")},           // the tag of extensions in primitive form
      {{}, element(0x10, {})},            // that of entries
      {{}, element(0x37, text("2601"))},  // that of a time, in constructed form
      {{}, version_2},
      {{}, hex("00")},
      {utc_2027, utc_2027},  // only once is accepted
      {two_entries, two_entries},
      {two_entries, utc_2027},  // out of order
      {extensions, extensions},
      {extensions, two_entries},
      {extensions, utc_2027 + two_entries},
      {utc_2027 + extensions, two_entries},
      {utc_2027 + two_entries + extensions, hex("A1 00")},
  };
  for (const auto &row : rows) {
    const Bytes prefix = Parts().content() + row.known;
    const Bytes octets = sequence(prefix + row.rest);
    const auto record = decoded(tbs_lists, octets, row.rest.size());
    EXPECT_EQ(sequence(prefix), encoded(tbs_lists, record));

    // In a CRL, the algorithm is expected at these octets.
    expect_refused(crls, crl(octets));
  }
}

TEST(TbsCrl, ReadsOnInsideAWrapperOfExtensionsThatIsNotFilled) {
  Parts parts;
  parts.extensions = element(0xA0, sequence(crl_number) + hex("05 00"));
  const auto record = decoded(tbs_lists, parts.tbs(), 2);
  EXPECT_EQ(sequence(crl_number), encode(asn1_Extensions_e, record->crlExtensions));
}

TEST(TbsCrl, TakesEmptyListsAsPresent) {
  Parts parts;
  parts.revoked = hex("30 00");
  parts.extensions = hex("A0 02 30 00");
  const auto record = decoded(tbs_lists, parts.tbs());
  ASSERT_NE(nullptr, record->revokedCertificates);
  EXPECT_EQ(0, List_len(record->revokedCertificates));
  ASSERT_NE(nullptr, record->crlExtensions);
  EXPECT_EQ(0, List_len(record->crlExtensions));
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));
}

TEST(TbsCrl, TakesAHugeLengthOfAListForAnEmptyOne) {
  Parts parts;
  parts.revoked = hex("30 84 80 00 00 00");
  parts.extensions = hex("A0 06 30 84 FF FF FF FF");
  const auto record = decoded(tbs_lists, parts.tbs());
  parts.revoked = hex("30 00");
  parts.extensions = hex("A0 02 30 00");
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));
}

TEST(TbsCrl, TakesAListOfIndefiniteLengthAtTheEndOfItsRangeOnly) {
  Parts parts;
  parts.revoked = hex("30 80") + sequence(full_entry) + hex("00 00");
  const auto last = decoded(tbs_lists, parts.tbs());
  EXPECT_EQ(1, List_len(last->revokedCertificates));

  parts.extensions = extensions;
  expect_refused(tbs_lists, parts.tbs());

  // A wrapper has a range of its own.
  parts.revoked = two_entries;
  parts.extensions = element(0xA0, hex("30 80") + crl_number + hex("00 00"));
  const auto wrapped = decoded(tbs_lists, parts.tbs());
  parts.extensions = extensions;
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, wrapped));
}

TEST(TbsCrl, AnEntryThatStopsShortMakesTheListFail) {
  Parts parts;
  parts.revoked = sequence(sequence(plain_entry + hex("05 00")));
  expect_refused(tbs_lists, parts.tbs());
}

TEST(TbsCrl, AnEntryThatStopsShortMakesTheListMisreadWhatLooksLikeAnEntry) {
  // 10 does not begin extensions, but the entry decoder takes it for a SEQUENCE.
  Parts parts;
  parts.revoked = sequence(sequence(plain_entry + element(0x10, hex("02 01 09") + utc_2027)));
  const auto record = decoded(tbs_lists, parts.tbs());
  ASSERT_EQ(2, List_len(record->revokedCertificates));
  EXPECT_EQ(nullptr, entry_of(record->revokedCertificates, 0)->crlEntryExtensions);
  EXPECT_EQ(9U, asn1_Integer_get(entry_of(record->revokedCertificates, 1)->userCertificate));
}

TEST(TbsCrl, KeepsEntriesInOrderWithDuplicates) {
  Parts parts;
  const Bytes other = sequence(hex("02 01 03") + utc_2027);
  parts.revoked = sequence(sequence(plain_entry) + other + sequence(plain_entry));
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, decoded(tbs_lists, parts.tbs())));
}

TEST(TbsCrl, RefusesAnEmptyIssuer) {
  for (Parts parts : {Parts(), full()}) {
    parts.issuer = hex("30 00");
    expect_refused(tbs_lists, parts.tbs());
    expect_refused(crls, crl(parts.tbs()));
    parts.issuer = hex("30 84 80 00 00 00");
    expect_refused(tbs_lists, parts.tbs());
  }
}

TEST(TbsCrl, TakesAnIssuerOfOneEmptyRdn) {
  Parts parts;
  parts.issuer = hex("30 02 31 00");
  const auto record = decoded(tbs_lists, parts.tbs());
  EXPECT_STREQ("/", record->issuer);
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));
}

// --------------------------------------------------- CertificateList_TBS, what the encoder writes

TEST(TbsCrl, KeepsTheOctetsOfTheIssuerAsTheyCame) {
  Parts parts;
  parts.issuer = hex("30 81 0F 31 82 00 0B 30 09 06 03 55 04 06 13 02 44 45");
  const auto record = decoded(tbs_lists, parts.tbs());
  EXPECT_EQ(parts.issuer, value(record->issuerEncoded));
  EXPECT_STREQ("/c(19)=DE", record->issuer);
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));
}

TEST(TbsCrl, WritesTheIssuerFromItsOctetsElseItsSequenceElseItsText) {
  Parts parts;
  const auto record = decoded(tbs_lists, parts.tbs());
  clear(record->issuerSequence, asn1_RDNSequence_free);
  record->issuerSequence = asn1_Name_to_RDNSequence("/cn(12)=sequence");
  clear(record->issuer, asn1_Name_free);
  record->issuer = asn1_Name_clone("/cn(12)=text");
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));

  clear(record->issuerEncoded, asn1_OctetString_free);
  record->issuerEncoded = asn1_ASN1String_new(2, "\xDE\xAD");  // nothing checks what it holds
  parts.issuer = hex("DE AD");
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));

  clear(record->issuerEncoded, asn1_OctetString_free);
  parts.issuer = name(common_name, 12, text("sequence"));
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));

  clear(record->issuerSequence, asn1_RDNSequence_free);
  parts.issuer = name(common_name, 12, text("text"));
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));

  clear(record->issuer, asn1_Name_free);
  expect_nothing_written(tbs_lists, record.get());

  record->issuerSequence = List_new(0);
  parts.issuer = hex("30 00");
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));
}

TEST(TbsCrl, AStoredIssuerOfNoOctetsIsAFailedField) {
  const auto record = decoded(tbs_lists, Parts().tbs());
  clear(record->issuerEncoded, asn1_OctetString_free);
  record->issuerEncoded = asn1_OctetString_new(0);
  expect_nothing_written(tbs_lists, record.get());
}

TEST(TbsCrl, ASerialNumberInTheIssuerStopsOnlyTheText) {
  Parts parts;
  parts.issuer = name(serial_number_attribute, 19, text("123"));
  const auto record = decoded(tbs_lists, parts.tbs());
  EXPECT_STREQ("/sn(19)=123", record->issuer);
  clear(record->issuerEncoded, asn1_OctetString_free);
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));
  clear(record->issuerSequence, asn1_RDNSequence_free);
  expect_nothing_written(tbs_lists, record.get());
}

TEST(TbsCrl, WritesAVersionWhateverItsValue) {
  const auto record = decoded(tbs_lists, Parts().tbs());
  Parts parts;
  parts.version = hex("02 01 00");
  record->version = asn1_Integer_set(0);
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, record));
}

TEST(TbsCrl, CanBeBuiltFromNothing) {
  const auto record = created(tbs_lists);
  const char *oid = "1.2.840.113549.1.1.11";
  record->signature = asn1_AlgId_new();
  expect_nothing_written(tbs_lists, record.get());
  record->signature->algorithm = asn1_ObjId_parse(&oid);
  record->signature->parameters = asn1_Any_clone(asn1_Any_NULL());
  expect_nothing_written(tbs_lists, record.get());
  record->issuer = asn1_Name_clone("/C=DE");
  expect_nothing_written(tbs_lists, record.get());
  record->thisUpdate = asn1_Time_new();
  record->thisUpdate->kind = 23;
  record->thisUpdate->value = asn1_UTCTime_clone("260101000000Z");
  EXPECT_EQ(Parts().tbs(), encoded(tbs_lists, record));
}

TEST(TbsCrl, IsNotEncodedWhenAFieldFails) {
  const auto record = decoded(tbs_lists, full().tbs());
  const auto without = [&](auto *part, auto member) {
    auto *kept = part->*member;
    part->*member = nullptr;
    expect_nothing_written(tbs_lists, record.get());
    part->*member = kept;
  };
  without(record.get(), &CertificateList_TBS::thisUpdate);
  without(record->signature, &AlgId::algorithm);
  without(record->thisUpdate, &Time::value);
  without(record->nextUpdate, &Time::value);
  auto *entry = static_cast<CRLEntry *>(List_get(record->revokedCertificates, 1));
  without(entry, &CRLEntry::userCertificate);
  without(entry, &CRLEntry::revocationDate);
  auto *extension = static_cast<Extension *>(List_get(record->crlExtensions, 0));
  without(extension, &Extension::extnValue);
  EXPECT_EQ(full().tbs(), encoded(tbs_lists, record));
}

TEST(TbsCrl, IsNotEncodedWhenTheSumDoesNotFit32Bits) {
  const auto record = decoded(tbs_lists, Parts().tbs());
  const uint32_t length = record->issuerEncoded->length;
  const auto others = static_cast<uint32_t>(Parts().content().size()) - length;
  // The last content fits, but not with its header.
  for (const uint32_t huge : {0xFFFFFFFFU, 0xFFFFFFF0U, 0xFFFFFFFFU - others}) {
    record->issuerEncoded->length = huge;
    expect_nothing_written(tbs_lists, record.get());
  }
  record->issuerEncoded->length = length;
}

// --------------------------------------------------------------------- CertificateList_TBS, its copies

TEST(TbsCrl, NewIsZeroAndFreeIgnoresNull) { expect_new_record_is_zero(tbs_lists); }

TEST(TbsCrl, IsCopiedDeeply) {
  expect_deep_clone(tbs_lists, Parts().tbs());
  expect_deep_clone(tbs_lists, full().tbs());
}

TEST(TbsCrl, IsCopiedWithEachFieldAlone) {
  const auto record = decoded(tbs_lists, full().tbs());
  const auto alone = [&](auto member) {
    CertificateList_TBS half = {};
    half.*member = record.get()->*member;
    const Held<CertificateList_TBS> copy(tbs_lists.clone(&half), tbs_lists.free);
    ASSERT_NE(nullptr, copy);
    EXPECT_NE(nullptr, copy.get()->*member);
    EXPECT_NE(record.get()->*member, copy.get()->*member);
    CertificateList_TBS rest = *copy;
    rest.*member = nullptr;
    const auto *octets = reinterpret_cast<const uint8_t *>(&rest);
    EXPECT_EQ(Bytes(sizeof rest, 0), Bytes(octets, octets + sizeof rest));
  };
  alone(&CertificateList_TBS::version);
  alone(&CertificateList_TBS::signature);
  alone(&CertificateList_TBS::issuerSequence);
  alone(&CertificateList_TBS::issuer);
  alone(&CertificateList_TBS::issuerEncoded);
  alone(&CertificateList_TBS::thisUpdate);
  alone(&CertificateList_TBS::nextUpdate);
  alone(&CertificateList_TBS::revokedCertificates);
  alone(&CertificateList_TBS::crlExtensions);
}

TEST(TbsCrl, ACopyHasAnIssuerSequenceWithoutTags) {
  const Parts parts = full();
  const auto copy = cloned(tbs_lists, decoded(tbs_lists, parts.tbs()));
  EXPECT_EQ(parts.issuer, value(copy->issuerEncoded));
  clear(copy->issuerEncoded, asn1_OctetString_free);
  Parts untagged = parts;
  untagged.issuer = name(country, 0, text("DE"));
  EXPECT_EQ(untagged.tbs(), encoded(tbs_lists, copy));

  clear(copy->issuerSequence, asn1_RDNSequence_free);
  EXPECT_EQ(parts.tbs(), encoded(tbs_lists, copy));  // the text has them
}

TEST(TbsCrl, IsNotCopiedWithATimeOfNoKind) {
  const auto record = decoded(tbs_lists, full().tbs());
  for (Time *time : {record->thisUpdate, record->nextUpdate,
                     entry_of(record->revokedCertificates, 1)->revocationDate}) {
    time->kind = 0;
    EXPECT_EQ(nullptr, cloned(tbs_lists, record));
    time->kind = 23;
  }
}

// ------------------------------------------------------------------------- CertificateRevocationList

TEST(Crl, HoldsEachFieldAndTheSignedOctets) {
  const Bytes octets = crl(full().tbs());
  const auto record = decoded(crls, octets);
  EXPECT_EQ(full().tbs(), value(record->tbsEncoded));
  EXPECT_EQ(full().tbs(), encode(asn1_CertificateList_TBS_e, record->tbsCertList));
  EXPECT_EQ(rsa_with_sha256, encode(asn1_AlgId_e, record->signatureAlgorithm));
  EXPECT_EQ(16U, record->signatureValue->length);
  EXPECT_EQ(hex("C0 00"), value(record->signatureValue));
  EXPECT_EQ(octets, encoded(crls, record));
}

TEST(Crl, IsASequenceOfDefiniteLength) {
  const Bytes content = full().tbs() + rsa_with_sha256 + signature;
  expect_sequence_of_definite_length(crls, content);
  expect_huge_lengths_refused(crls, content);
}

TEST(Crl, WithoutAnyOptionalFieldIsWrittenBack) {
  const auto record = decoded(crls, crl(Parts().tbs()));
  const CertificateList_TBS *fields = record->tbsCertList;
  EXPECT_EQ(nullptr, fields->version);
  EXPECT_EQ(nullptr, fields->nextUpdate);
  EXPECT_EQ(nullptr, fields->revokedCertificates);
  EXPECT_EQ(nullptr, fields->crlExtensions);
  EXPECT_EQ(crl(Parts().tbs()), encoded(crls, record));

  clear(record->tbsEncoded, asn1_OctetString_free);
  EXPECT_EQ(crl(Parts().tbs()), encoded(crls, record));
}

TEST(Crl, WithExtensionsNeedsNoVersion) {
  Parts parts;
  parts.extensions = extensions;
  const auto record = decoded(crls, crl(parts.tbs()));
  EXPECT_EQ(nullptr, record->tbsCertList->version);
  EXPECT_EQ(1, List_len(record->tbsCertList->crlExtensions));
}

TEST(Crl, IsRefusedWithoutItsFields) {
  const Bytes tbs = full().tbs();
  for (const Bytes &content :
       {Bytes(), tbs, tbs + rsa_with_sha256, tbs + signature, rsa_with_sha256 + signature,
        tbs + rsa_with_sha256 + hex("04 01 00"), tbs + rsa_with_sha256 + hex("03 00"),
        tbs + rsa_with_sha256 + hex("03 02 08 FF"),
        tbs + rsa_with_sha256 + hex("03 84 80 00 00 00"), tbs + hex("30 00") + signature,
        hex("30 00") + rsa_with_sha256 + signature,
        tbs + hex("05 00") + rsa_with_sha256 + signature}) {
    expect_refused(crls, sequence(content));
  }
  // The signature must be inside the SEQUENCE.
  expect_refused(crls, sequence(tbs + rsa_with_sha256) + signature);
}

TEST(Crl, IsRefusedAtEveryCut) {
  expect_every_cut_refused(crls, full().tbs() + rsa_with_sha256 + signature);
}

TEST(Crl, TakesWhatTheSignedPartLeavesForItsOwn) {
  // The algorithm and the signature lie inside the TBSCertList. The algorithm begins like the
  // revoked entries, so these must be there.
  const Bytes inner = sequence(full().content() + rsa_with_sha256 + signature);
  const auto record = decoded(crls, sequence(inner));
  const Bytes stored(inner.begin(), inner.end() - static_cast<std::ptrdiff_t>(
                                                      (rsa_with_sha256 + signature).size()));
  EXPECT_EQ(stored, value(record->tbsEncoded));
  EXPECT_EQ(sequence(inner), encoded(crls, record));
}

TEST(Crl, KeepsTheSignedOctetsAsTheyCameAndNormalisesTheRest) {
  const Bytes fields = Parts().content();
  const Bytes signed_part =
      hex("30 83 00 00") + Bytes{static_cast<uint8_t>(fields.size())} + fields;
  const Bytes content =
      signed_part +
      hex("30 81 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00 23 08 03 02 00 C0 03 02 00 01");
  const auto record =
      decoded(crls, hex("30 82 00") + Bytes{static_cast<uint8_t>(content.size())} + content);
  EXPECT_EQ(signed_part, value(record->tbsEncoded));
  EXPECT_EQ(sequence(signed_part + rsa_with_sha256 + hex("03 03 00 C0 01")), encoded(crls, record));
}

TEST(Crl, WritesTheSignatureAsItStands) {
  for (const char *bits :
       {"03 01 00", "03 02 00 00", "03 03 00 80 00", "03 02 05 FF", "03 03 07 80 00"}) {
    const Bytes octets = sequence(Parts().tbs() + rsa_with_sha256 + hex(bits));
    EXPECT_EQ(octets, encoded(crls, decoded(crls, octets))) << bits;
  }
}

TEST(Crl, BeginsWithItsStoredOctetsWhateverTheFieldsSay) {
  const auto record = decoded(crls, crl(full().tbs()));
  auto *revoked = static_cast<CRLEntry *>(List_get(record->tbsCertList->revokedCertificates, 1));
  clear(revoked->userCertificate, asn1_Integer_free);
  revoked->userCertificate = asn1_Integer_set(9);
  EXPECT_EQ(crl(full().tbs()), encoded(crls, record));

  // Once the stored octets are released and cleared, the fields are written.
  clear(record->tbsEncoded, asn1_OctetString_free);
  Parts changed = full();
  changed.revoked = sequence(sequence(full_entry) + sequence(hex("02 01 09") + utc_2027));
  EXPECT_EQ(crl(changed.tbs()), encoded(crls, record));
}

TEST(Crl, NothingChecksTheStoredOctets) {
  const auto record = decoded(crls, crl(full().tbs()));
  clear(record->tbsEncoded, asn1_OctetString_free);
  record->tbsEncoded = asn1_ASN1String_new(3, "\xDE\xAD\x00");
  EXPECT_EQ(sequence(hex("DE AD 00") + rsa_with_sha256 + signature), encoded(crls, record));
}

TEST(Crl, StoredOctetsAreEnoughWithoutTheFields) {
  const auto record = decoded(crls, crl(full().tbs()));
  clear(record->tbsCertList, asn1_CertificateList_TBS_free);
  EXPECT_EQ(crl(full().tbs()), encoded(crls, record));
}

TEST(Crl, AStoredPartOfNoOctetsIsAFailedField) {
  const auto record = decoded(crls, crl(full().tbs()));
  clear(record->tbsEncoded, asn1_OctetString_free);
  record->tbsEncoded = asn1_OctetString_new(0);
  expect_nothing_written(crls, record.get());
}

TEST(Crl, IsNotEncodedWhenAFieldFails) {
  const auto record = decoded(crls, crl(full().tbs()));
  clear(record->signatureValue, asn1_BitString_free);
  expect_nothing_written(crls, record.get());
  record->signatureValue = asn1_BitString_new(1);
  clear(record->signatureAlgorithm->algorithm, asn1_ObjId_free);
  expect_nothing_written(crls, record.get());

  // The signed part fails before the encoder reaches the algorithm that is missing after it.
  const auto half = created(crls);
  half->tbsCertList = asn1_CertificateList_TBS_new();
  half->tbsCertList->signature = asn1_AlgId_new();
  expect_nothing_written(crls, half.get());
}

TEST(Crl, IsNotEncodedWhenTheSumDoesNotFit32Bits) {
  const auto record = decoded(crls, crl(full().tbs()));
  const uint32_t length = record->tbsEncoded->length;
  for (const uint32_t huge : {0xFFFFFFFFU, 0xFFFFFFF0U, 0xFFFFFFE8U}) {
    record->tbsEncoded->length = huge;
    expect_nothing_written(crls, record.get());
  }
  record->tbsEncoded->length = length;
}

TEST(Crl, IsCopiedDeeply) {
  expect_deep_clone(crls, crl(Parts().tbs()));
  expect_deep_clone(crls, crl(full().tbs()));
}

TEST(Crl, IsCopiedHalfFilled) {
  const auto half = created(crls);
  half->tbsCertList = asn1_CertificateList_TBS_new();
  half->signatureValue = asn1_BitString_new(3);
  const auto copy = cloned(crls, half);
  EXPECT_EQ(nullptr, copy->tbsEncoded);
  EXPECT_NE(nullptr, copy->tbsCertList);
  EXPECT_NE(half->tbsCertList, copy->tbsCertList);
  EXPECT_EQ(nullptr, copy->signatureAlgorithm);
  EXPECT_EQ(3U, copy->signatureValue->length);
}

TEST(Crl, NewIsZeroAndFreeIgnoresNull) { expect_new_record_is_zero(crls); }

// ------------------------------------------------------------------------------------ a long list

/// Returns a CRL of `count` entries with the serial numbers from 0x01000000 on.
Bytes long_crl(uint32_t count) {
  Bytes list;
  list.reserve(count * size_t{23});
  for (uint32_t i = 0; i < count; ++i) {
    const Bytes serial = {0x30,
                          21,
                          2,
                          4,
                          1,
                          static_cast<uint8_t>(i >> 16),
                          static_cast<uint8_t>(i >> 8),
                          static_cast<uint8_t>(i)};
    list.insert(list.end(), serial.begin(), serial.end());
    list.insert(list.end(), utc_2026.begin(), utc_2026.end());
  }
  Parts parts = full();
  parts.revoked = sequence(list);
  return crl(parts.tbs());
}

TEST(LongCrl, HoldsAHundredThousandEntriesAndWritesThemBack) {
  const Bytes octets = long_crl(100'000);
  const auto record = decoded(crls, octets);
  const List *list = record->tbsCertList->revokedCertificates;
  ASSERT_EQ(100'000, List_len(list));
  EXPECT_EQ(0x01000000U, asn1_Integer_get(entry_of(list, 0)->userCertificate));
  EXPECT_EQ(0x01000000U + 99'999, asn1_Integer_get(entry_of(list, 99'999)->userCertificate));
  EXPECT_TRUE(octets == encoded(crls, record));

  const auto copy = cloned(crls, record);
  clear(copy->tbsEncoded, asn1_OctetString_free);
  EXPECT_TRUE(octets == encoded(crls, copy));
}

// -------------------------------------------------------------------------------- a CRL of a peer

// Made by the openssl command: two entries, one with a reason, and two extensions.
const char *const made_by_openssl =
    "3082011a3081c0020101300a06082a8648ce3d040302301f310b300906035504"
    "06130244453110300e06035504030c07536f6d65204341170d32363131323131"
    "39353832335a170d3236313232313139353832335a303f3012020105170d3236"
    "303230333034303530365a3029020a008123456789abcdef01170d3236303130"
    "313030303030305a300c300a0603551d1504030a0101a02f302d301f0603551d"
    "2304183016801432a6171ecb219bce347dfaf023da31cab09e6e48300a060355"
    "1d140403020107300a06082a8648ce3d0403020349003046022100ee6c5a619e"
    "be2a0b2a5572a7a892d4b7b0a3f4eaf4f8fddb4bcd29246d8feee9022100cca6"
    "7b93cc27c6dbcbb702c4ab058783ce9884a22d615d1af7ea3f17d70f3578";

TEST(PeerCrl, HoldsWhatItsMakerPutIn) {
  const auto record = decoded(crls, hex(made_by_openssl));
  const CertificateList_TBS *fields = record->tbsCertList;
  EXPECT_EQ(1U, asn1_Integer_get(fields->version));
  EXPECT_EQ(nullptr, fields->signature->parameters);
  EXPECT_STREQ("/c(19)=DE/cn(12)=Some CA", fields->issuer);
  EXPECT_STREQ("261121195823Z", fields->thisUpdate->value);
  EXPECT_STREQ("261221195823Z", fields->nextUpdate->value);

  ASSERT_EQ(2, List_len(fields->revokedCertificates));
  const CRLEntry *first = entry_of(fields->revokedCertificates, 0);
  EXPECT_EQ(hex("05"), value(first->userCertificate));
  EXPECT_STREQ("260203040506Z", first->revocationDate->value);
  EXPECT_EQ(nullptr, first->crlEntryExtensions);
  const CRLEntry *second = entry_of(fields->revokedCertificates, 1);
  EXPECT_EQ(hex("81 23 45 67 89 AB CD EF 01"), value(second->userCertificate));
  EXPECT_STREQ("260101000000Z", second->revocationDate->value);
  ASSERT_EQ(1, List_len(second->crlEntryExtensions));
  const auto *reason = static_cast<const Extension *>(List_get(second->crlEntryExtensions, 0));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_ce_cRLReason(), reason->extnID));
  EXPECT_EQ(hex("0A 01 01"), value(reason->extnValue));

  ASSERT_EQ(2, List_len(fields->crlExtensions));
  const auto *number = static_cast<const Extension *>(List_get(fields->crlExtensions, 1));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_ce_cRLNumber(), number->extnID));
  EXPECT_EQ(hex("02 01 07"), value(number->extnValue));
}

TEST(PeerCrl, IsWrittenBackFromItsOctetsFromItsStructureAndFromItsText) {
  const Bytes octets = hex(made_by_openssl);
  const auto record = decoded(crls, octets);
  CertificateList_TBS *fields = record->tbsCertList;
  // The signed part comes after the outer header of four octets, and has 195 octets.
  EXPECT_EQ(Bytes(octets.begin() + 4, octets.begin() + 4 + 195), value(record->tbsEncoded));
  EXPECT_EQ(octets, encoded(crls, record));
  clear(record->tbsEncoded, asn1_OctetString_free);
  EXPECT_EQ(octets, encoded(crls, record));
  clear(fields->issuerEncoded, asn1_OctetString_free);
  EXPECT_EQ(octets, encoded(crls, record));
  clear(fields->issuerSequence, asn1_RDNSequence_free);
  EXPECT_EQ(octets, encoded(crls, record));
}

// --------------------------------------------------------------------------------------------- trace

TEST(CrlTrace, ShowsEveryField) {
  Parts parts = full();
  parts.next_update = general_2050;
  parts.revoked = sequence(sequence(full_entry));
  const Lines expected = {
      "SEQUENCE {",
      ". SEQUENCE {",
      ". . INTEGER",
      ". .  1",
      ". . SEQUENCE {",
      ". . . OBJECT IDENTIFIER ",
      ". . .   1.2.840.113549.1.1.11",
      ". . . [ANY]",
      ". . . " + dump("05 00 ", ".."),
      ". . }",
      ". . SEQUENCE {",
      ". . . SET {",
      ". . . . SEQUENCE {",
      ". . . . . OBJECT IDENTIFIER ",
      ". . . . .   2.5.4.6",
      ". . . . . PRINTABLESTRING ",
      ". . . . . " + dump("44 45 ", "DE"),
      ". . . . }",
      ". . . }",
      ". . }",
      ". . UTCTIME ",
      ". .   \"260101000000Z\"",
      ". . GENERALIZEDTIME ",
      ". .   \"20500101000000Z\"",
      ". . SEQUENCE {",
      ". . . SEQUENCE {",
      ". . . . INTEGER",
      ". . . .  5",
      ". . . . UTCTIME ",
      ". . . .   \"260101000000Z\"",
      ". . . . SEQUENCE {",
      ". . . . . SEQUENCE {",
      ". . . . . . OBJECT IDENTIFIER ",
      ". . . . . .   2.5.29.21",
      ". . . . . . OCTETSTRING",
      ". . . . . . " + dump("0A 01 01 ", "..."),
      ". . . . . }",
      ". . . . }",
      ". . . }",
      ". . }",
      ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". . SEQUENCE {",
      ". . . SEQUENCE {",
      ". . . . OBJECT IDENTIFIER ",
      ". . . .   2.5.29.20",
      ". . . . OCTETSTRING",
      ". . . . " + dump("02 01 07 ", "..."),
      ". . . }",
      ". . }",
      ". }",
      ". SEQUENCE {",
      ". . OBJECT IDENTIFIER ",
      ". .   1.2.840.113549.1.1.11",
      ". . [ANY]",
      ". . " + dump("05 00 ", ".."),
      ". }",
      ". BITSTRING",
      ".   (0 unused bits)",
      ". " + dump("C0 00 ", ".."),
      "}",
  };
  EXPECT_EQ(expected, traced(crls, crl(parts.tbs())));
}

TEST(CrlTrace, IsSilentAtDepthZero) { EXPECT_EQ(Lines{}, traced(crls, crl(full().tbs()), 0)); }

TEST(CrlTrace, HasNoClosingLineOfWhatFailed) {
  const Lines expected = {"SEQUENCE {", ". INTEGER", ".  5"};
  EXPECT_EQ(expected, traced(entries, sequence(serial_5 + hex("05 00"))));
}

TEST(CrlTrace, ClosesAnEntryInFrontOfWhatItLeavesUnread) {
  const Lines expected = {"SEQUENCE {", ". SEQUENCE {", ". . INTEGER",
                          ". .  5",     ". . UTCTIME ", ". .   \"260101000000Z\"",
                          ". }"};
  const Bytes octets = sequence(sequence(plain_entry + hex("05 00")));
  const Input input(octets);
  EXPECT_EQ(expected, trace_lines([&] {
              List *list = nullptr;
              EXPECT_EQ(nullptr, asn1_SeqOf_d(input.z(), input.end(), 0, asn1_CRLEntry_d,
                                              asn1_CRLEntry_free, &list, 1));
              EXPECT_EQ(nullptr, list);
            }));
}

TEST(CrlTrace, TellsOfALengthBehindTheEnd) {
  Bytes octets = crl(full().tbs());
  octets.pop_back();
  const Lines outer = {"SEQUENCE {", "z larger than end!"};
  EXPECT_EQ(outer, traced(crls, octets));

  const Lines inner = {"SEQUENCE {", ". INTEGER", ".  5", ". UTCTIME ", ". z larger than end!"};
  EXPECT_EQ(inner, traced(entries, sequence(serial_5 + hex("17 02 41"))));
}

// ------------------------------------------------------------------------------ ends of the process

TEST(CrlDeathTest, AnIssuerWithATagOfThreeDigitsEndsTheProcess) {
  Parts parts;
  parts.issuer = name(country, 0x80, text("DE"));
  EXPECT_VALUE_TAG_ENDS_THE_PROCESS(decoded(tbs_lists, parts.tbs()));
  EXPECT_VALUE_TAG_ENDS_THE_PROCESS(decoded(crls, crl(parts.tbs())));
}

TEST(CrlDeathTest, DecodersAssertTheirCursors) {
  expect_decoder_asserts_its_cursors(entries);
  expect_decoder_asserts_its_cursors(tbs_lists);
  expect_decoder_asserts_its_cursors(crls);
}

TEST(CrlDeathTest, EncodersEndTheProcessWithoutARecord) {
  expect_encoder_ends_the_process<CRLEntry>(entries, nullptr);
  expect_encoder_ends_the_process<CertificateList_TBS>(tbs_lists, nullptr);
  expect_encoder_ends_the_process<CertificateRevocationList>(crls, nullptr);
}

TEST(CrlDeathTest, EncodersEndTheProcessWithoutARequiredRecordInside) {
  // The first required field is the algorithm in the one, and the signed part in the other.
  expect_encoder_ends_the_process<CertificateList_TBS>(tbs_lists, created(tbs_lists).get());
  expect_encoder_ends_the_process<CertificateRevocationList>(crls, created(crls).get());

  const auto record = decoded(crls, crl(Parts().tbs()));
  clear(record->signatureAlgorithm, asn1_AlgId_free);
  expect_encoder_ends_the_process<CertificateRevocationList>(crls, record.get());
}

// --------------------------------------------------------------------------------- exhausted memory

TEST(CrlMemory, EachFailingAllocationIsAFailure) {
  expect_exhausted_memory_to_fail(entries, sequence(full_entry));
  expect_exhausted_memory_to_fail(tbs_lists, full().tbs());
  expect_exhausted_memory_to_fail(crls, crl(full().tbs()));
}

}  // namespace

}  // namespace crl_test
