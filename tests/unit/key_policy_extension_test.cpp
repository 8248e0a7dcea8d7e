// Tests the values of the key and policy extensions. Most of them are in a form of this library's
// own, with explicit tags, and have no encoder.
#include "records.h"

namespace key_policy_extension_test {

namespace {

using namespace support;

constexpr RecordFamily<AuthorityKeyIdentifier> key_identifiers{
    asn1_AuthorityKeyIdentifier_new, asn1_AuthorityKeyIdentifier_free, nullptr,
    asn1_AuthorityKeyIdentifier_d, asn1_AuthorityKeyIdentifier_clone};
constexpr RecordFamily<BasicConstraints> basic_constraints{
    asn1_BasicConstraints_new, asn1_BasicConstraints_free, asn1_BasicConstraints_e,
    asn1_BasicConstraints_d, asn1_BasicConstraints_clone};
constexpr RecordFamily<GeneralSubtree> subtrees{asn1_GeneralSubtree_new, asn1_GeneralSubtree_free,
                                                nullptr, asn1_GeneralSubtree_d,
                                                asn1_GeneralSubtree_clone};
constexpr RecordFamily<NameConstraints> name_constraints{
    asn1_NameConstraints_new, asn1_NameConstraints_free, nullptr, asn1_NameConstraints_d,
    asn1_NameConstraints_clone};
constexpr RecordFamily<PolicyConstraints> policy_constraints{
    asn1_PolicyConstraints_new, asn1_PolicyConstraints_free, nullptr, asn1_PolicyConstraints_d,
    asn1_PolicyConstraints_clone};
constexpr RecordFamily<PolicyMapping> mappings{asn1_PolicyMapping_new, asn1_PolicyMapping_free,
                                               nullptr, asn1_PolicyMapping_d,
                                               asn1_PolicyMapping_clone};
constexpr RecordFamily<PrivateKeyUsagePeriod> periods{
    asn1_PrivateKeyUsagePeriod_new, asn1_PrivateKeyUsagePeriod_free, nullptr,
    asn1_PrivateKeyUsagePeriod_d, asn1_PrivateKeyUsagePeriod_clone};

const Bytes dns = hex("82 03 61 2E 62");
const Bytes integer_5 = hex("02 01 05");
const Bytes utc_2026 = element(23, text("260101000000Z"));
const Bytes utc_2027 = element(23, text("270101000000Z"));
const Bytes general_2026 = element(24, text("20260101000000Z"));

/// Returns a field under an explicit tag.
Bytes tagged(uint8_t number, const Bytes &content) {
  return element(static_cast<uint8_t>(0xA0 | number), content);
}

/// Returns whether no field of the record is set. Does not compare octets, as some are padding.
template <class T, class... Members>
bool is_empty(const Held<T> &record, Members... members) {
  return record != nullptr && (!(record.get()->*members) && ...);
}
bool is_empty(const Held<AuthorityKeyIdentifier> &record) {
  return is_empty(record, &AuthorityKeyIdentifier::keyIdentifier,
                  &AuthorityKeyIdentifier::authorityCertIssuer,
                  &AuthorityKeyIdentifier::authorityCertSerialNumber);
}
bool is_empty(const Held<BasicConstraints> &record) {
  return is_empty(record, &BasicConstraints::cA, &BasicConstraints::pathLenConstraint);
}
bool is_empty(const Held<NameConstraints> &record) {
  return is_empty(record, &NameConstraints::permittedSubtrees, &NameConstraints::excludedSubtrees);
}
bool is_empty(const Held<PolicyConstraints> &record) {
  return is_empty(record, &PolicyConstraints::requireExplicitPolicy,
                  &PolicyConstraints::inhibitPolicyMapping);
}
bool is_empty(const Held<PrivateKeyUsagePeriod> &record) {
  return is_empty(record, &PrivateKeyUsagePeriod::notBefore, &PrivateKeyUsagePeriod::notAfter);
}

/// Checks that a record of optional fields is empty for contents without one of these fields.
template <class T>
void expect_optional_fields(const RecordFamily<T> &family) {
  EXPECT_TRUE(is_empty(decoded(family, hex("30 00"))));
  // The decoder does not look past the content. A sanitizer would see a look past the input.
  for (const char *behind : {"A0 03 02 01 05", "01 01 FF", "A1 00", "A2 00"}) {
    const Bytes rest = hex(behind);
    EXPECT_TRUE(is_empty(decoded(family, hex("30 00") + rest, rest.size()))) << behind;
  }
  // A huge length puts the limit below the cursor.
  for (const char *header : {"30 84 80 00 00 00", "30 84 FF FF FF FF"}) {
    EXPECT_TRUE(is_empty(decoded(family, hex(header)))) << header;
    EXPECT_TRUE(is_empty(decoded(family, hex(header) + hex("A0 03 02 01 05"), 5))) << header;
  }
  // An unknown field is not read, and neither are those after it.
  for (const char *unknown : {"05 00", "80 01 05", "81 01 05", "82 01 05", "A3 03 02 01 05", "00",
                              "30 03 02 01 05", "21 01 FF", "22 01 05", "E0 03 02 01 05"}) {
    const Bytes content = hex(unknown);
    EXPECT_TRUE(is_empty(decoded(family, sequence(content), content.size()))) << unknown;
    const Bytes more = content + hex("A0 03 02 01 05");
    EXPECT_TRUE(is_empty(decoded(family, sequence(more), more.size()))) << unknown;
  }
}

/// Checks that each of these contents is refused, and that nothing stays allocated.
template <class T>
void expect_contents_refused(const RecordFamily<T> &family, const std::vector<Bytes> &contents) {
  for (const Bytes &content : contents) {
    SCOPED_TRACE(testing::PrintToString(content));
    const Bytes octets = sequence(content);
    expect_refused(family, octets);
    const Input input(octets);
    expect_nothing_kept([&] {
      T *place = nullptr;
      family.decode(input.z(), input.end(), 0, &place, 0);
    });
  }
}

/// Returns contents that are refused where an explicitly tagged INTEGER is expected.
std::vector<Bytes> bad_integers(uint8_t number, const Bytes &before) {
  std::vector<Bytes> contents;
  for (const char *bad :
       {"", "02 00", "02 02 05", "22 01 05", "05 00", "02 84 80 00 00 00", "02"}) {
    contents.push_back(before + tagged(number, hex(bad)));
  }
  const auto tag = static_cast<uint8_t>(0xA0 | number);
  contents.push_back(before + Bytes{tag});
  contents.push_back(before + Bytes{tag, 0x80} + integer_5 + hex("00 00"));
  contents.push_back(before + Bytes{tag, 0x84, 0x80, 0, 0, 0} + integer_5);
  contents.push_back(before + Bytes{tag, 4} + integer_5);
  return contents;
}

/// Checks that a copy is NULL, whatever is in the record, and that nothing stays allocated.
template <class T>
void expect_no_copy(const RecordFamily<T> &family, const T *record) {
  expect_nothing_kept([&] { EXPECT_EQ(nullptr, family.clone(record)); });
}

/// Returns the family without its clone function, for checks that would copy.
template <class T>
RecordFamily<T> without_copies(RecordFamily<T> family) {
  family.clone = nullptr;
  return family;
}

// ---------------------------------------------------------------------------- AuthorityKeyIdentifier

const Bytes key_id = tagged(0, hex("04 02 AB CD"));
const Bytes key_issuer = tagged(1, sequence(dns));
const Bytes key_serial = tagged(2, integer_5);
const Bytes full_key_identifier = key_id + key_issuer + key_serial;

TEST(AuthorityKeyIdentifier, HasThreeExplicitlyTaggedFieldsEachOfWhichMayBeMissing) {
  for (unsigned present = 0; present < 8; ++present) {
    SCOPED_TRACE(present);
    Bytes content;
    if ((present & 1) != 0) content = content + key_id;
    if ((present & 2) != 0) content = content + key_issuer;
    if ((present & 4) != 0) content = content + key_serial;
    const auto record = decoded(key_identifiers, sequence(content));
    ASSERT_EQ((present & 1) != 0, record->keyIdentifier != nullptr);
    ASSERT_EQ((present & 2) != 0, record->authorityCertIssuer != nullptr);
    ASSERT_EQ((present & 4) != 0, record->authorityCertSerialNumber != nullptr);
    if ((present & 1) != 0) {
      EXPECT_EQ(hex("AB CD"), value(record->keyIdentifier));
    }
    if ((present & 2) != 0) {
      ASSERT_EQ(1, List_len(record->authorityCertIssuer));
      EXPECT_EQ(dns, encode(asn1_GeneralName_e,
                            static_cast<GeneralName *>(List_get(record->authorityCertIssuer, 0))));
    }
    if ((present & 4) != 0) {
      EXPECT_EQ(5U, asn1_Integer_get(record->authorityCertSerialNumber));
    }
  }
}

TEST(AuthorityKeyIdentifier, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(key_identifiers, full_key_identifier);
  expect_every_cut_refused(key_identifiers, full_key_identifier,
                           {0, key_id.size(), (key_id + key_issuer).size()});
}

TEST(AuthorityKeyIdentifier, LeavesUnreadWhatItDoesNotKnow) {
  expect_optional_fields(key_identifiers);
}

// Made by the openssl command: a key identifier, and all three fields.
const char *const public_key_identifier = "3016801432A6171ECB219BCE347DFAF023DA31CAB09E6E48";
const char *const public_key_identifier_with_issuer =
    "302B801432A6171ECB219BCE347DFAF023DA31CAB09E6E48A110A40E300C310A300806035504030C0178820105";

TEST(AuthorityKeyIdentifier, InThePublicFormIsEmptyWithTheCursorAtItsFirstContentOctet) {
  for (const char *octets : {public_key_identifier, public_key_identifier_with_issuer}) {
    const Bytes all = hex(octets);
    EXPECT_TRUE(is_empty(decoded(key_identifiers, all, all.size() - 2)));
  }
}

TEST(AuthorityKeyIdentifier, InThePublicFormIsRefusedWhereItBeginsWithTheIssuer) {
  expect_refused(key_identifiers, hex("30 08 A1 03 82 01 61 82 01 05"));
}

TEST(AuthorityKeyIdentifier, LeavesUnreadWhatIsOutOfOrder) {
  const struct {
    Bytes known, rest;
  } rows[] = {
      {key_id, key_id},
      {key_issuer, key_id + key_serial},
      {key_serial, key_id},
      {key_serial, key_issuer},
      {key_id + key_serial, key_issuer},
      {full_key_identifier, key_serial},
      {key_id, hex("82 01 05")},
  };
  for (const auto &row : rows) {
    decoded(key_identifiers, sequence(row.known + row.rest), row.rest.size());
  }
}

TEST(AuthorityKeyIdentifier, IsRefusedWithABadField) {
  std::vector<Bytes> bad = bad_integers(2, key_id + key_issuer);
  for (const char *content : {"A0 00", "A0 02 05 00", "A0 80 04 00 00 00", "A0 84 80 00 00 00",
                              "A0 03 04 02 AB", "A0 06 04 84 80 00 00 00", "A0"}) {
    bad.push_back(hex(content));
  }
  for (const char *content : {"A1 00", "A1 02 31 00", "A1 04 30 02 83 00", "A1 05 82 03 61 2E 62",
                              "A1 80 30 00 00 00", "A1 84 80 00 00 00", "A1 04 30 80 82 00"}) {
    bad.push_back(key_id + hex(content));
  }
  expect_contents_refused(key_identifiers, bad);
}

TEST(AuthorityKeyIdentifier, TakesEmptyListsAndThoseOfIndefiniteLengthInTheirWrapper) {
  for (const char *list : {"A1 02 30 00", "A1 04 30 80 00 00", "A1 06 30 84 80 00 00 00"}) {
    const auto record = decoded(key_identifiers, sequence(hex(list) + key_serial));
    ASSERT_NE(nullptr, record->authorityCertIssuer) << list;
    EXPECT_EQ(0, List_len(record->authorityCertIssuer)) << list;
    EXPECT_NE(nullptr, record->authorityCertSerialNumber) << list;
  }
}

TEST(AuthorityKeyIdentifier, ReadsOnInsideAWrapperThatIsNotFilled) {
  // The serial number lies inside the wrapper of the key identifier.
  const auto record =
      decoded(key_identifiers, sequence(tagged(0, hex("04 02 AB CD") + key_serial)));
  EXPECT_EQ(hex("AB CD"), value(record->keyIdentifier));
  EXPECT_EQ(5U, asn1_Integer_get(record->authorityCertSerialNumber));
}

TEST(AuthorityKeyIdentifier, JoinsAConstructedKeyIdentifier) {
  const auto record =
      decoded(key_identifiers, sequence(tagged(0, hex("24 80 04 01 AB 04 01 CD 00 00"))));
  EXPECT_EQ(hex("AB CD"), value(record->keyIdentifier));
}

TEST(AuthorityKeyIdentifier, ACloneIsAlwaysNull) {
  expect_no_copy<AuthorityKeyIdentifier>(key_identifiers, nullptr);
  for (const Bytes &content :
       {Bytes(), key_id, key_issuer, key_serial, key_issuer + key_serial, full_key_identifier,
        tagged(1, sequence(hex("A0 0A") + hex("06 02 2A 03 A0 04 0C 02 68 69")))}) {
    expect_no_copy(key_identifiers, decoded(key_identifiers, sequence(content)).get());
  }
}

TEST(AuthorityKeyIdentifier, NewIsZeroAndFreeIgnoresNull) {
  expect_new_record_is_zero(key_identifiers);
}

// ---------------------------------------------------------------------------------- BasicConstraints

TEST(BasicConstraints, KeepsTheOctetOfTheBooleanAndWritesItBack) {
  const Bytes octets = hex("30 06 01 01 FF 02 01 03");
  const auto record = decoded(basic_constraints, octets);
  EXPECT_EQ(255U, record->cA);
  EXPECT_EQ(3U, asn1_Integer_get(record->pathLenConstraint));
  EXPECT_EQ(octets, encoded(basic_constraints, record));
}

TEST(BasicConstraints, HasTwoFieldsEachOfWhichMayBeMissing) {
  const struct {
    const char *read;
    uint32_t ca;
    bool has_length;
    const char *written;
  } rows[] = {
      {"", 0, false, ""},
      {"01 01 FF", 255, false, "01 01 FF"},
      {"01 01 01", 1, false, "01 01 01"},
      {"01 01 00", 0, false, ""},  // an explicit FALSE is dropped
      {"01 81 01 7F", 127, false, "01 01 7F"},
      {"02 01 00", 0, true, "02 01 00"},
      {"01 01 00 02 01 03", 0, true, "02 01 03"},
      {"01 01 80 02 02 00 FF", 128, true, "01 01 80 02 02 00 FF"},
      {"01 01 FF 02 01 FF", 255, true, "01 01 FF 02 01 FF"},  // a negative length is kept
  };
  for (const auto &row : rows) {
    const auto record = decoded(basic_constraints, sequence(hex(row.read)));
    EXPECT_EQ(row.ca, record->cA) << row.read;
    EXPECT_EQ(row.has_length, record->pathLenConstraint != nullptr) << row.read;
    EXPECT_EQ(sequence(hex(row.written)), encoded(basic_constraints, record)) << row.read;
  }
}

TEST(BasicConstraints, EmptyIsWrittenAsAnEmptySequence) {
  EXPECT_EQ(hex("30 00"), encoded(basic_constraints, created(basic_constraints)));
  EXPECT_EQ(2U, asn1_BasicConstraints_e(nullptr, created(basic_constraints).get()));
}

TEST(BasicConstraints, WritesTheLowEightBitsOfTheBoolean) {
  const auto record = created(basic_constraints);
  const struct {
    uint32_t ca;
    const char *written;
  } rows[] = {
      {0x1FF, "01 01 FF"}, {0x101, "01 01 01"}, {0x100, "01 01 00"}, {0xFFFFFF80, "01 01 80"}};
  for (const auto &row : rows) {
    record->cA = row.ca;
    EXPECT_EQ(sequence(hex(row.written)), encoded(basic_constraints, record)) << row.ca;
  }
}

TEST(BasicConstraints, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(basic_constraints, hex("01 01 FF 02 01 03"));
  expect_every_cut_refused(basic_constraints, hex("01 01 FF 02 01 03"), {0, 3});
}

TEST(BasicConstraints, LeavesUnreadWhatItDoesNotKnow) {
  expect_optional_fields(basic_constraints);
  const struct {
    const char *known, *rest;
  } rows[] = {
      {"02 01 03", "01 01 FF"},  // out of order
      {"01 01 FF", "01 01 FF"}, {"01 01 FF", "05 00"},
      {"01 01 FF", "22 01 03"}, {"01 01 FF 02 01 03", "02 01 03"},
  };
  for (const auto &row : rows) {
    const Bytes rest = hex(row.rest);
    const auto record = decoded(basic_constraints, sequence(hex(row.known) + rest), rest.size());
    EXPECT_EQ(sequence(hex(row.known)), encoded(basic_constraints, record));
  }
}

TEST(BasicConstraints, IsRefusedWithABadField) {
  std::vector<Bytes> bad;
  for (const char *content :
       {"01 00", "01 02 FF FF", "01 80 FF 00 00", "01", "01 01", "01 84 80 00 00 00", "02 00",
        "01 01 FF 02 00", "01 01 FF 02", "02 80 03 00 00", "02 84 80 00 00 00", "02 02 03"}) {
    bad.push_back(hex(content));
  }
  expect_contents_refused(basic_constraints, bad);
}

TEST(BasicConstraints, IsCopiedDeeplyAndHalfFilled) {
  EXPECT_EQ(nullptr, asn1_BasicConstraints_clone(nullptr));
  EXPECT_TRUE(is_empty(cloned(basic_constraints, created(basic_constraints))));

  auto record = decoded(basic_constraints, hex("30 06 01 01 7F 02 01 03"));
  const auto copy = cloned(basic_constraints, record);
  EXPECT_NE(record->pathLenConstraint, copy->pathLenConstraint);
  record.reset();
  EXPECT_EQ(hex("30 06 01 01 7F 02 01 03"), encoded(basic_constraints, copy));

  const auto half = created(basic_constraints);
  half->cA = 300;
  const auto copy_of_half = cloned(basic_constraints, half);
  EXPECT_EQ(300U, copy_of_half->cA);
  EXPECT_EQ(nullptr, copy_of_half->pathLenConstraint);
}

TEST(BasicConstraints, NewIsEmptyAndFreeIgnoresNull) {
  EXPECT_TRUE(is_empty(created(basic_constraints)));
  asn1_BasicConstraints_free(nullptr);
}

// ------------------------------------------------------------------------------------ GeneralSubtree

const Bytes minimum = tagged(0, integer_5);
const Bytes maximum = tagged(1, hex("02 01 09"));

TEST(GeneralSubtree, HasANameAndTwoExplicitlyTaggedNumbersWhichMayBeMissing) {
  for (unsigned present = 0; present < 4; ++present) {
    SCOPED_TRACE(present);
    Bytes content = dns;
    if ((present & 1) != 0) content = content + minimum;
    if ((present & 2) != 0) content = content + maximum;
    const auto record = decoded(subtrees, sequence(content));
    EXPECT_EQ(dns, encode(asn1_GeneralName_e, record->base));
    ASSERT_EQ((present & 1) != 0, record->minimum != nullptr);  // no default is filled in
    ASSERT_EQ((present & 2) != 0, record->maximum != nullptr);
    if ((present & 1) != 0) {
      EXPECT_EQ(5U, asn1_Integer_get(record->minimum));
    }
    if ((present & 2) != 0) {
      EXPECT_EQ(9U, asn1_Integer_get(record->maximum));
    }
  }
}

TEST(GeneralSubtree, TakesAnOtherNameWhoseTagIsThatOfTheMinimum) {
  const Bytes other = hex("A0 08 06 02 2A 03 A0 02 05 00");
  const auto record = decoded(subtrees, sequence(other + minimum));
  EXPECT_EQ(other, encode(asn1_GeneralName_e, record->base));
  EXPECT_EQ(5U, asn1_Integer_get(record->minimum));
}

TEST(GeneralSubtree, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(subtrees, dns + minimum + maximum);
  expect_every_cut_refused(subtrees, dns + minimum + maximum, {dns.size(), (dns + minimum).size()});
  expect_huge_lengths_refused(subtrees, dns);
}

TEST(GeneralSubtree, NeedsAName) {
  expect_refused(subtrees, hex("30 00"));  // a sanitizer sees a read past the input
  expect_refused(subtrees, hex("30 00") + dns);
  expect_contents_refused(subtrees, {minimum, maximum, hex("83 00"), hex("05 00"), hex("A4 00")});
}

TEST(GeneralSubtree, IsRefusedWithABadNumber) {
  expect_contents_refused(subtrees, bad_integers(0, dns));
  expect_contents_refused(subtrees, bad_integers(1, dns + minimum));
}

TEST(GeneralSubtree, LeavesUnreadWhatItDoesNotKnow) {
  const struct {
    Bytes known, rest;
  } rows[] = {
      {dns, hex("80 01 05")},  // the public form
      {dns, hex("A2 03 02 01 05")}, {dns, dns},
      {dns + minimum, minimum},     {dns + maximum, minimum},
      {dns + maximum, maximum},     {dns + minimum, hex("81 01 05")},
  };
  for (const auto &row : rows) {
    decoded(subtrees, sequence(row.known + row.rest), row.rest.size());
  }
  const auto record = decoded(subtrees, sequence(dns) + minimum, minimum.size());
  EXPECT_EQ(nullptr, record->minimum);
}

TEST(GeneralSubtree, InThePublicFormHasItsBaseOnly) {
  const auto record = decoded(subtrees, hex("30 06 82 01 61 80 01 05"), 3);
  EXPECT_EQ(2, record->base->kind);
  EXPECT_EQ(nullptr, record->minimum);
  EXPECT_EQ(nullptr, record->maximum);
}

TEST(GeneralSubtree, ACloneIsAlwaysNull) {
  expect_no_copy<GeneralSubtree>(subtrees, nullptr);
  expect_no_copy(subtrees, created(subtrees).get());
  for (const Bytes &content : {dns, dns + minimum, dns + maximum, dns + minimum + maximum,
                               hex("A0 08 06 02 2A 03 A0 02 05 00") + minimum}) {
    expect_no_copy(subtrees, decoded(subtrees, sequence(content)).get());
  }
}

TEST(GeneralSubtree, NewIsZeroAndFreeIgnoresNull) { expect_new_record_is_zero(subtrees); }

// ----------------------------------------------------------------------------------- NameConstraints

const Bytes permitted = tagged(0, sequence(sequence(dns) + sequence(dns + minimum)));
const Bytes excluded = tagged(1, sequence(sequence(dns)));

TEST(NameConstraints, HasTwoExplicitlyTaggedListsEachOfWhichMayBeMissing) {
  for (unsigned present = 0; present < 4; ++present) {
    SCOPED_TRACE(present);
    Bytes content;
    if ((present & 1) != 0) content = content + permitted;
    if ((present & 2) != 0) content = content + excluded;
    const auto record = decoded(name_constraints, sequence(content));
    ASSERT_EQ((present & 1) != 0, record->permittedSubtrees != nullptr);
    ASSERT_EQ((present & 2) != 0, record->excludedSubtrees != nullptr);
    if ((present & 1) != 0) {
      ASSERT_EQ(2, List_len(record->permittedSubtrees));
      const auto *second = static_cast<GeneralSubtree *>(List_get(record->permittedSubtrees, 1));
      EXPECT_EQ(dns, encode(asn1_GeneralName_e, second->base));
      EXPECT_EQ(5U, asn1_Integer_get(second->minimum));
    }
    if ((present & 2) != 0) {
      ASSERT_EQ(1, List_len(record->excludedSubtrees));
    }
  }
}

TEST(NameConstraints, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(name_constraints, permitted + excluded);
  expect_every_cut_refused(name_constraints, permitted + excluded, {0, permitted.size()});
}

TEST(NameConstraints, LeavesUnreadWhatItDoesNotKnow) {
  expect_optional_fields(name_constraints);
  decoded(name_constraints, sequence(permitted + permitted), permitted.size());
  decoded(name_constraints, sequence(excluded + permitted), permitted.size());
}

// Made by the openssl command: a permitted DNS name and an excluded range of addresses.
const char *const public_name_constraints = "3017A00730058203612E62A10C300A87080A000000FF000000";

TEST(NameConstraints, InThePublicFormAreRefusedForTheFirstSubtreeIsTakenForTheListsHeader) {
  expect_refused(name_constraints, hex(public_name_constraints));
  expect_contents_refused(name_constraints, {tagged(0, sequence(dns)), tagged(1, sequence(dns)),
                                             permitted + tagged(1, sequence(dns) + sequence(dns))});
}

TEST(NameConstraints, AreRefusedWithABadList) {
  std::vector<Bytes> bad;
  for (const char *list : {"", "31 00", "30 02 30 00", "30 02 05 00", "30 04 30 02 83 00",
                           "30 80 30 02 82 00", "30", "30 01", "05 00"}) {
    bad.push_back(tagged(0, hex(list)));
    bad.push_back(tagged(1, hex(list)));
    bad.push_back(permitted + tagged(1, hex(list)));
  }
  bad.push_back(hex("A0 80 30 00 00 00"));
  bad.push_back(hex("A0 84 80 00 00 00"));
  // After a subtree that stops short, the list reads on at what was left.
  bad.push_back(tagged(0, sequence(sequence(dns + hex("80 01 05")))));
  expect_contents_refused(name_constraints, bad);
}

TEST(NameConstraints, TakeEmptyListsAndThoseOfIndefiniteLengthInTheirWrapper) {
  for (const char *list : {"30 00", "30 80 00 00", "30 84 FF FF FF FF"}) {
    const auto record =
        decoded(name_constraints, sequence(tagged(0, hex(list)) + tagged(1, hex(list))));
    ASSERT_NE(nullptr, record->permittedSubtrees) << list;
    EXPECT_EQ(0, List_len(record->permittedSubtrees)) << list;
    ASSERT_NE(nullptr, record->excludedSubtrees) << list;
    EXPECT_EQ(0, List_len(record->excludedSubtrees)) << list;
  }
  const auto record =
      decoded(name_constraints, sequence(tagged(0, hex("30 80") + sequence(dns) + hex("00 00"))));
  EXPECT_EQ(1, List_len(record->permittedSubtrees));
}

TEST(NameConstraints, ACloneIsNullWhereThereIsASubtree) {
  expect_no_copy<NameConstraints>(name_constraints, nullptr);
  for (const Bytes &content :
       {permitted, excluded, permitted + excluded, tagged(0, hex("30 00")) + excluded,
        permitted + tagged(1, hex("30 00"))}) {
    expect_no_copy(name_constraints, decoded(name_constraints, sequence(content)).get());
  }
}

TEST(NameConstraints, AreCopiedWithoutListsAndWithEmptyOnes) {
  EXPECT_TRUE(is_empty(cloned(name_constraints, created(name_constraints))));
  for (const Bytes &content : {tagged(0, hex("30 00")), tagged(1, hex("30 00")),
                               tagged(0, hex("30 00")) + tagged(1, hex("30 00"))}) {
    const auto record = decoded(name_constraints, sequence(content));
    const auto copy = cloned(name_constraints, record);
    ASSERT_NE(nullptr, copy);
    for (List *NameConstraints::*list :
         {&NameConstraints::permittedSubtrees, &NameConstraints::excludedSubtrees}) {
      EXPECT_EQ(record.get()->*list == nullptr, copy.get()->*list == nullptr);
      EXPECT_EQ(0, List_len(copy.get()->*list));
    }
  }
}

TEST(NameConstraints, NewIsZeroAndFreeIgnoresNull) { expect_new_record_is_zero(name_constraints); }

// --------------------------------------------------------------------------------- PolicyConstraints

const Bytes explicit_policy = tagged(0, integer_5);
const Bytes no_mapping = tagged(1, hex("02 02 00 FF"));

TEST(PolicyConstraints, HasTwoExplicitlyTaggedNumbersEachOfWhichMayBeMissing) {
  for (unsigned present = 0; present < 4; ++present) {
    SCOPED_TRACE(present);
    Bytes content;
    if ((present & 1) != 0) content = content + explicit_policy;
    if ((present & 2) != 0) content = content + no_mapping;
    const auto record = decoded(policy_constraints, sequence(content));
    ASSERT_EQ((present & 1) != 0, record->requireExplicitPolicy != nullptr);
    ASSERT_EQ((present & 2) != 0, record->inhibitPolicyMapping != nullptr);
    if ((present & 1) != 0) {
      EXPECT_EQ(5U, asn1_Integer_get(record->requireExplicitPolicy));
    }
    if ((present & 2) != 0) {
      EXPECT_EQ(255U, asn1_Integer_get(record->inhibitPolicyMapping));
    }
  }
}

TEST(PolicyConstraints, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(policy_constraints, explicit_policy + no_mapping);
  expect_every_cut_refused(policy_constraints, explicit_policy + no_mapping,
                           {0, explicit_policy.size()});
}

TEST(PolicyConstraints, LeavesUnreadWhatItDoesNotKnow) {
  expect_optional_fields(policy_constraints);
  decoded(policy_constraints, sequence(explicit_policy + explicit_policy), explicit_policy.size());
  decoded(policy_constraints, sequence(no_mapping + explicit_policy), explicit_policy.size());
}

TEST(PolicyConstraints, InThePublicFormIsEmptyWithTheCursorAtItsFirstContentOctet) {
  // Made by the openssl command: no more certificates without a policy, none with a mapping.
  EXPECT_TRUE(is_empty(decoded(policy_constraints, hex("3006800101810102"), 6)));
}

TEST(PolicyConstraints, IsRefusedWithABadNumber) {
  expect_contents_refused(policy_constraints, bad_integers(0, {}));
  expect_contents_refused(policy_constraints, bad_integers(1, {}));
  expect_contents_refused(policy_constraints, bad_integers(1, explicit_policy));
}

TEST(PolicyConstraints, ReadsOnInsideAWrapperThatIsNotFilled) {
  const auto record = decoded(policy_constraints, sequence(tagged(0, integer_5 + no_mapping)));
  EXPECT_EQ(5U, asn1_Integer_get(record->requireExplicitPolicy));
  EXPECT_EQ(255U, asn1_Integer_get(record->inhibitPolicyMapping));
}

TEST(PolicyConstraints, IsCopiedDeeplyAndHalfFilled) {
  EXPECT_EQ(nullptr, asn1_PolicyConstraints_clone(nullptr));
  EXPECT_TRUE(is_empty(cloned(policy_constraints, created(policy_constraints))));

  auto record = decoded(policy_constraints, sequence(explicit_policy + no_mapping));
  const auto copy = cloned(policy_constraints, record);
  record.reset();
  EXPECT_EQ(5U, asn1_Integer_get(copy->requireExplicitPolicy));
  EXPECT_EQ(255U, asn1_Integer_get(copy->inhibitPolicyMapping));

  const auto first =
      cloned(policy_constraints, decoded(policy_constraints, sequence(explicit_policy)));
  EXPECT_EQ(5U, asn1_Integer_get(first->requireExplicitPolicy));
  EXPECT_EQ(nullptr, first->inhibitPolicyMapping);
  const auto second = cloned(policy_constraints, decoded(policy_constraints, sequence(no_mapping)));
  EXPECT_EQ(nullptr, second->requireExplicitPolicy);
  EXPECT_EQ(255U, asn1_Integer_get(second->inhibitPolicyMapping));
}

TEST(PolicyConstraints, NewIsZeroAndFreeIgnoresNull) {
  expect_new_record_is_zero(policy_constraints);
}

// ------------------------------------------------------------------------------------- PolicyMapping

const Bytes policy_1_2_3_4 = hex("06 03 2A 03 04");
const Bytes policy_2_5_6 = hex("06 02 55 06");

TEST(PolicyMapping, IsTwoIdentifiers) {
  const auto record = decoded(mappings, sequence(policy_1_2_3_4 + policy_2_5_6));
  EXPECT_EQ(policy_1_2_3_4, encode(asn1_ObjId_e, record->issuerDomainPolicy));
  EXPECT_EQ(policy_2_5_6, encode(asn1_ObjId_e, record->subjectDomainPolicy));
}

TEST(PolicyMapping, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(mappings, policy_1_2_3_4 + policy_2_5_6);
  expect_every_cut_refused(mappings, policy_1_2_3_4 + policy_2_5_6);
  expect_huge_lengths_refused(mappings, policy_1_2_3_4 + policy_2_5_6);
}

TEST(PolicyMapping, NeedsBothIdentifiers) {
  expect_contents_refused(
      mappings, {Bytes(), policy_1_2_3_4, policy_1_2_3_4 + hex("05 00"),
                 hex("05 00") + policy_1_2_3_4 + policy_2_5_6, policy_1_2_3_4 + hex("26 02 55 06"),
                 policy_1_2_3_4 + hex("06 05 FF FF FF FF 7F"),
                 policy_1_2_3_4 + hex("06 80 55 00 00"), policy_1_2_3_4 + hex("06 03 55 06")});
  expect_refused(mappings, sequence(policy_1_2_3_4) + policy_2_5_6);
}

TEST(PolicyMapping, MakesTheListOfTheExtensionThroughTheListFunctions) {
  // The first was made by the openssl command.
  for (const char *octets : {"300B300906032A030406025506",
                             "30 16 30 09 06 03 2A 03 04 06 02 55 06 30 09 06 03 2A 03 04 "
                             "06 02 55 06",
                             "30 00", "30 80 00 00"}) {
    const Input input(hex(octets));
    List *list = nullptr;
    EXPECT_EQ(input.end(), asn1_SeqOf_d(input.z(), input.end(), 0, asn1_PolicyMapping_d,
                                        asn1_PolicyMapping_free, &list, 0));
    const auto length = static_cast<int32_t>((input.end() - input.z()) / 11);
    EXPECT_EQ(length, List_len(list)) << octets;
    List_free(list, asn1_PolicyMapping_free);
  }
}

TEST(PolicyMapping, IsCopiedDeeplyAndHalfFilled) {
  EXPECT_EQ(nullptr, asn1_PolicyMapping_clone(nullptr));
  auto record = decoded(mappings, sequence(policy_1_2_3_4 + policy_2_5_6));
  const auto copy = cloned(mappings, record);
  record.reset();
  EXPECT_EQ(policy_1_2_3_4, encode(asn1_ObjId_e, copy->issuerDomainPolicy));
  EXPECT_EQ(policy_2_5_6, encode(asn1_ObjId_e, copy->subjectDomainPolicy));

  const auto half = created(mappings);
  const auto copy_of_empty = cloned(mappings, half);
  EXPECT_EQ(nullptr, copy_of_empty->issuerDomainPolicy);
  half->subjectDomainPolicy = asn1_ObjId_new(2);
  const auto copy_of_half = cloned(mappings, half);
  EXPECT_EQ(nullptr, copy_of_half->issuerDomainPolicy);
  EXPECT_EQ(2U, copy_of_half->subjectDomainPolicy->count);
}

TEST(PolicyMapping, NewIsZeroAndFreeIgnoresNull) { expect_new_record_is_zero(mappings); }

// ----------------------------------------------------------------------------- PrivateKeyUsagePeriod

const Bytes not_before = tagged(0, utc_2026);
const Bytes not_after = tagged(1, utc_2027);

TEST(PrivateKeyUsagePeriod, HasTwoExplicitlyTaggedTimesEachOfWhichMayBeMissing) {
  for (unsigned present = 0; present < 4; ++present) {
    SCOPED_TRACE(present);
    Bytes content;
    if ((present & 1) != 0) content = content + not_before;
    if ((present & 2) != 0) content = content + not_after;
    const auto record = decoded(periods, sequence(content));
    EXPECT_STREQ((present & 1) != 0 ? "260101000000Z" : nullptr, record->notBefore);
    EXPECT_STREQ((present & 2) != 0 ? "270101000000Z" : nullptr, record->notAfter);
  }
}

TEST(PrivateKeyUsagePeriod, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(periods, not_before + not_after);
  expect_every_cut_refused(periods, not_before + not_after, {0, not_before.size()});
}

TEST(PrivateKeyUsagePeriod, LeavesUnreadWhatItDoesNotKnow) {
  expect_optional_fields(periods);
  decoded(periods, sequence(not_before + not_before), not_before.size());
  decoded(periods, sequence(not_after + not_before), not_before.size());
}

TEST(PrivateKeyUsagePeriod, InThePublicFormIsEmptyWithTheCursorAtItsFirstContentOctet) {
  const Bytes content =
      element(0x80, text("20260101000000Z")) + element(0x81, text("20270101000000Z"));
  EXPECT_TRUE(is_empty(decoded(periods, sequence(content), content.size())));
}

TEST(PrivateKeyUsagePeriod, IsRefusedWithAGeneralizedTime) {
  expect_contents_refused(periods, {tagged(0, general_2026), tagged(1, general_2026),
                                    not_before + tagged(1, general_2026)});
}

TEST(PrivateKeyUsagePeriod, IsRefusedWithABadTime) {
  std::vector<Bytes> bad;
  for (const char *time : {"", "17", "17 01", "17 84 80 00 00 00", "17 80 32 00 00", "37 00"}) {
    bad.push_back(tagged(0, hex(time)));
    bad.push_back(tagged(1, hex(time)));
    bad.push_back(not_before + tagged(1, hex(time)));
  }
  bad.push_back(hex("A0 80") + utc_2026 + hex("00 00"));
  bad.push_back(hex("A0 84 80 00 00 00") + utc_2026);
  expect_contents_refused(periods, bad);
}

TEST(PrivateKeyUsagePeriod, KeepsWhateverTextATimeHas) {
  // The text is longer than any time, and is not checked.
  const std::string words(40, 'x');
  const auto record =
      decoded(periods, sequence(tagged(0, element(23, text(words))) + tagged(1, hex("17 00"))));
  EXPECT_EQ(words, record->notBefore);
  EXPECT_STREQ("", record->notAfter);
}

TEST(PrivateKeyUsagePeriod, ACloneIsAlwaysNull) {
  expect_no_copy<PrivateKeyUsagePeriod>(periods, nullptr);
  for (const Bytes &content : {Bytes(), not_before, not_after, not_before + not_after}) {
    expect_no_copy(periods, decoded(periods, sequence(content)).get());
  }
}

TEST(PrivateKeyUsagePeriod, NewIsZeroAndFreeIgnoresNull) { expect_new_record_is_zero(periods); }

// --------------------------------------------------------------------------------------------- trace

TEST(KeyPolicyExtensionTrace, ShowsAnAuthorityKeyIdentifier) {
  const Lines expected = {
      "SEQUENCE {",
      ". CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". OCTETSTRING",
      ". " + dump("AB CD ", ".."),
      ". CONTEXT-SPECIFIC CONSTRUCTED [1] {",
      ". SEQUENCE {",
      ". . . CONTEXT-SPECIFIC PRIMITIVE [2] IA5STRING ",
      ". . . " + dump("61 2E 62 ", "a.b"),
      ". . }",
      ". }",
      ". CONTEXT-SPECIFIC CONSTRUCTED [2] {",
      ". INTEGER",
      ".  5",
      "}",
  };
  EXPECT_EQ(expected, traced(key_identifiers, sequence(full_key_identifier)));
}

TEST(KeyPolicyExtensionTrace, ShowsBasicConstraints) {
  const Lines expected = {"SEQUENCE {", ". BOOLEAN ", ".   TRUE (ff)", ". INTEGER", ".  3", "}"};
  EXPECT_EQ(expected, traced(basic_constraints, hex("30 06 01 01 FF 02 01 03")));
}

TEST(KeyPolicyExtensionTrace, ShowsNameConstraints) {
  const Lines expected = {
      "SEQUENCE {",
      ". CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". SEQUENCE {",
      ". . SEQUENCE {",
      ". . . . CONTEXT-SPECIFIC PRIMITIVE [2] IA5STRING ",
      ". . . . " + dump("61 2E 62 ", "a.b"),
      ". . . }",
      ". . . CONTEXT-SPECIFIC CONSTRUCTED [1] {",
      ". . . INTEGER",
      ". . .  9",
      ". . }",
      ". }",
      "}",
  };
  EXPECT_EQ(expected,
            traced(name_constraints, sequence(tagged(0, sequence(sequence(dns + maximum))))));
}

TEST(KeyPolicyExtensionTrace, ShowsPolicyConstraintsAndAMapping) {
  const Lines constraints = {"SEQUENCE {",
                             ". CONTEXT-SPECIFIC CONSTRUCTED [0] {",
                             ". INTEGER",
                             ".  5",
                             ". CONTEXT-SPECIFIC CONSTRUCTED [1] {",
                             ". INTEGER",
                             ".  255",
                             "}"};
  EXPECT_EQ(constraints, traced(policy_constraints, sequence(explicit_policy + no_mapping)));

  const Lines mapping = {"SEQUENCE {",  ". OBJECT IDENTIFIER ",
                         ".   1.2.3.4", ". OBJECT IDENTIFIER ",
                         ".   2.5.6",   "}"};
  EXPECT_EQ(mapping, traced(mappings, sequence(policy_1_2_3_4 + policy_2_5_6)));
}

TEST(KeyPolicyExtensionTrace, ShowsAPeriod) {
  const Lines expected = {"SEQUENCE {",
                          ". CONTEXT-SPECIFIC CONSTRUCTED [0] {",
                          ". UTCTIME ",
                          ".   \"260101000000Z\"",
                          ". CONTEXT-SPECIFIC CONSTRUCTED [1] {",
                          ". UTCTIME ",
                          ".   \"270101000000Z\"",
                          "}"};
  EXPECT_EQ(expected, traced(periods, sequence(not_before + not_after)));
}

TEST(KeyPolicyExtensionTrace, ClosesARecordInFrontOfWhatItLeavesUnread) {
  const Lines expected = {"SEQUENCE {", "}"};
  EXPECT_EQ(expected, traced(key_identifiers, hex(public_key_identifier)));
  EXPECT_EQ(expected, traced(policy_constraints, hex("3006800101810102")));
  EXPECT_EQ(expected, traced(basic_constraints, hex("30 00")));
  EXPECT_EQ(expected, traced(basic_constraints, hex("30 00 01 01 FF")));  // past the content
}

TEST(KeyPolicyExtensionTrace, IsSilentAtDepthZero) {
  EXPECT_EQ(Lines{}, traced(key_identifiers, sequence(full_key_identifier), 0));
  EXPECT_EQ(Lines{}, traced(basic_constraints, hex("30 06 01 01 FF 02 01 03"), 0));
  EXPECT_EQ(Lines{}, traced(name_constraints, sequence(permitted + excluded), 0));
}

TEST(KeyPolicyExtensionTrace, HasNoClosingLineOfWhatFailed) {
  const Lines expected = {"SEQUENCE {", ". CONTEXT-SPECIFIC CONSTRUCTED [0] {"};
  EXPECT_EQ(expected, traced(periods, sequence(tagged(0, general_2026))));
  // The public form has no list inside the tag: its first element is read as the list, and fails.
  const Lines public_form = {"SEQUENCE {", ". CONTEXT-SPECIFIC CONSTRUCTED [0] {", ". SEQUENCE {"};
  EXPECT_EQ(public_form, traced(name_constraints, hex(public_name_constraints)));
}

// ------------------------------------------------------------------------------ ends of the process

TEST(KeyPolicyExtensionDeathTest, DecodersAssertTheirCursors) {
  expect_decoder_asserts_its_cursors(key_identifiers);
  expect_decoder_asserts_its_cursors(basic_constraints);
  expect_decoder_asserts_its_cursors(subtrees);
  expect_decoder_asserts_its_cursors(name_constraints);
  expect_decoder_asserts_its_cursors(policy_constraints);
  expect_decoder_asserts_its_cursors(mappings);
  expect_decoder_asserts_its_cursors(periods);
}

TEST(KeyPolicyExtensionDeathTest, TheEncoderEndsTheProcessWithoutARecord) {
  expect_encoder_ends_the_process<BasicConstraints>(basic_constraints, nullptr);
}

// --------------------------------------------------------------------------------- exhausted memory

TEST(KeyPolicyExtensionMemory, EachFailingAllocationIsAFailure) {
  expect_exhausted_memory_to_fail(without_copies(key_identifiers), sequence(full_key_identifier));
  expect_exhausted_memory_to_fail(basic_constraints, hex("30 06 01 01 FF 02 01 03"));
  expect_exhausted_memory_to_fail(without_copies(subtrees), sequence(dns + minimum + maximum));
  expect_exhausted_memory_to_fail(without_copies(name_constraints), sequence(permitted + excluded));
  expect_exhausted_memory_to_fail(name_constraints,
                                  sequence(tagged(0, hex("30 00")) + tagged(1, hex("30 00"))));
  expect_exhausted_memory_to_fail(policy_constraints, sequence(explicit_policy + no_mapping));
  expect_exhausted_memory_to_fail(mappings, sequence(policy_1_2_3_4 + policy_2_5_6));
  expect_exhausted_memory_to_fail(without_copies(periods), sequence(not_before + not_after));
}

}  // namespace

}  // namespace key_policy_extension_test
