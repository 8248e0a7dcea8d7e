// Tests the distribution points of CRLs, and the access information of authorities.
#include <set>

#include "records.h"

namespace distribution_point_test {

namespace {

using namespace support;

constexpr RecordFamily<DistributionPointName> point_names{
    asn1_DistributionPointName_new, asn1_DistributionPointName_free, asn1_DistributionPointName_e,
    asn1_DistributionPointName_d, asn1_DistributionPointName_clone};
constexpr RecordFamily<DistributionPoint> points{
    asn1_DistributionPoint_new, asn1_DistributionPoint_free, asn1_DistributionPoint_e,
    asn1_DistributionPoint_d, asn1_DistributionPoint_clone};
constexpr RecordFamily<AccessDescription> descriptions{
    asn1_AccessDescription_new, asn1_AccessDescription_free, asn1_AccessDescription_e,
    asn1_AccessDescription_d, asn1_AccessDescription_clone};

using AccessInfo = Owned<AuthorityInfoAccessSyntax, asn1_AuthorityInfoAccessSyntax_free>;

const Bytes uri = element(0x86, text("u:v"));
const Bytes dns = element(0x82, text("a.b"));
const Bytes other_name = hex("A0 08 06 02 2A 03 A0 02 05 00");
const Bytes common_name_r = hex("30 08 06 03 55 04 03 0C 01 72");
const Bytes country_de = hex("30 09 06 03 55 04 06 13 02 44 45");

const Bytes full_name = element(0xA0, uri + dns);
const Bytes relative_name = element(0xA1, common_name_r + country_de);

const Bytes point_name = element(0xA0, full_name);
const Bytes reasons = hex("81 02 05 60");
const Bytes issuer_read = element(0x82, uri + dns);
const Bytes issuer_written = element(0xA2, uri + dns);

Held<DistributionPointName> made(uint8_t kind, void *content) {
  auto record = created(point_names);
  record->kind = kind;
  record->value = content;
  return record;
}

List *list_of(const Held<DistributionPointName> &record) {
  return static_cast<List *>(record->value);
}

const AttributeValueAssertion *assertion(const List *list, int32_t index) {
  return static_cast<const AttributeValueAssertion *>(List_get(list, index));
}

/// Returns a list of one name, of a kind that has no value.
List *list_with_an_unknown_name() {
  List *list = List_new(0);
  GeneralName *name = asn1_GeneralName_new();
  name->kind = 3;
  EXPECT_NE(0, List_append(list, name, 0));
  return list;
}

// ----------------------------------------------------------------------------- DistributionPointName

TEST(DistributionPointName, HoldsAFullName) {
  const auto record = decoded(point_names, full_name);
  EXPECT_EQ(0, record->kind);
  ASSERT_EQ(2, List_len(list_of(record)));
  EXPECT_EQ(uri,
            encode(asn1_GeneralName_e, static_cast<GeneralName *>(List_get(list_of(record), 0))));
  EXPECT_EQ(dns,
            encode(asn1_GeneralName_e, static_cast<GeneralName *>(List_get(list_of(record), 1))));
  EXPECT_EQ(full_name, encoded(point_names, record));
}

TEST(DistributionPointName, HoldsANameRelativeToTheIssuer) {
  const auto record = decoded(point_names, relative_name);
  EXPECT_EQ(1, record->kind);
  ASSERT_EQ(2, List_len(list_of(record)));
  EXPECT_EQ(12, assertion(list_of(record), 0)->valueTag);
  EXPECT_EQ(text("r"), value(assertion(list_of(record), 0)->value));
  EXPECT_EQ(19, assertion(list_of(record), 1)->valueTag);
  EXPECT_EQ(relative_name, encoded(point_names, record));
}

TEST(DistributionPointName, BeginsWithOneOfFourOctets) {
  const std::set<int> accepted = {0x80, 0xA0, 0x81, 0xA1};
  for (int first = 0; first < 256; ++first) {
    SCOPED_TRACE(first);
    const int kind = first & 0x1F;
    const Bytes octets = element(static_cast<uint8_t>(first), kind == 1 ? common_name_r : uri);
    if (accepted.count(first) == 0) {
      expect_refused(point_names, octets);
      continue;
    }
    // The primitive form is accepted, and not written.
    const auto record = decoded(point_names, octets);
    EXPECT_EQ(kind, record->kind);
    EXPECT_EQ(element(static_cast<uint8_t>(first | 0x20), kind == 1 ? common_name_r : uri),
              encoded(point_names, record));
  }
}

TEST(DistributionPointName, RefusesAnUnknownKind) {
  for (const char *octets : {"A2 00", "82 00", "A3 00", "BF 00", "30 00"}) {
    const Input input(hex(octets));
    expect_refused(point_names, hex(octets));
    expect_nothing_kept([&] {
      DistributionPointName *place = nullptr;
      asn1_DistributionPointName_d(input.z(), input.end(), 0, &place, 0);
    });
  }
}

TEST(DistributionPointName, RefusesAnEmptyRange) {
  expect_refused(point_names, {});
  DistributionPointName before = {};
  DistributionPointName *place = &before;
  EXPECT_EQ(nullptr, asn1_DistributionPointName_d(nullptr, nullptr, 0, &place, 0));
  EXPECT_EQ(nullptr, place);
  const Input input(full_name);
  EXPECT_EQ(nullptr, asn1_DistributionPointName_d(input.z(), input.end(), 0, nullptr, 0));
}

TEST(DistributionPointName, RefusesABadList) {
  for (const char *octets : {"A0", "A0 01", "A0 85", "A0 02 83 00", "A0 02 05 00", "A0 03 82 02 61",
                             "A0 80 82 00", "A0 80 82 00 00 00 05 00", "A1 02 05 00", "A1 02 30 00",
                             "A1 07 30 05 06 03 55 04 06", "A1 80 00"}) {
    SCOPED_TRACE(octets);
    const Input input(hex(octets));
    expect_refused(point_names, hex(octets));
    expect_nothing_kept([&] {
      DistributionPointName *place = nullptr;
      asn1_DistributionPointName_d(input.z(), input.end(), 0, &place, 0);
    });
  }
}

TEST(DistributionPointName, IsRefusedAtEveryCut) {
  for (const Bytes &octets : {full_name, relative_name}) {
    for (size_t size = 0; size < octets.size(); ++size) {
      expect_refused(point_names,
                     Bytes(octets.begin(), octets.begin() + static_cast<std::ptrdiff_t>(size)));
    }
  }
}

TEST(DistributionPointName, TakesEmptyListsAndThoseOfIndefiniteLength) {
  const struct {
    const char *read, *written;
  } rows[] = {
      {"A0 00", "A0 00"},
      {"A1 00", "A1 00"},
      {"A0 80 00 00", "A0 00"},
      {"A1 80 00 00", "A1 00"},
      {"A0 84 80 00 00 00", "A0 00"},  // a huge length: no octets in the limit
      {"A1 84 FF FF FF FF", "A1 00"},
      {"A0 80 86 01 75 00 00", "A0 03 86 01 75"},
  };
  for (const auto &row : rows) {
    const auto record = decoded(point_names, hex(row.read));
    EXPECT_NE(nullptr, record->value) << row.read;
    EXPECT_EQ(hex(row.written), encoded(point_names, record)) << row.read;
  }
}

TEST(DistributionPointName, LeavesWhatFollowsAndLooksAtTheLowOctetOfTheImplicitTagOnly) {
  decoded(point_names, full_name + reasons, reasons.size());
  decoded(point_names, relative_name + reasons, reasons.size());
  decoded(point_names, full_name, 0, 0x100);
}

TEST(DistributionPointName, IsNotEncodedWithAnUnknownKindOrANameThatFails) {
  const auto record = created(point_names);
  for (int kind = 2; kind < 256; ++kind) {
    record->kind = static_cast<uint8_t>(kind);
    expect_nothing_written(point_names, record.get());
  }
  expect_nothing_written(point_names, made(0, list_with_an_unknown_name()).get());

  List *rdn = List_new(0);
  ASSERT_NE(0, List_append(rdn, asn1_AttributeValueAssertion_new(), 0));
  expect_nothing_written(point_names, made(1, rdn).get());
}

TEST(DistributionPointName, WritesAFullNameWithoutAListAsTheListEncoderDoes) {
  EXPECT_EQ(hex("A0 00"), encode_with([](uint8_t **pp) {
              return asn1_List_e(pp, 0x80, nullptr, asn1_GeneralName_e);
            }));
  EXPECT_EQ(hex("A0 00"), encoded(point_names, made(0, nullptr)));
}

TEST(DistributionPointName, FreeReleasesTheValueOfAKnownKindOnly) {
  asn1_DistributionPointName_free(nullptr);
  for (const uint8_t kind : {uint8_t{0}, uint8_t{1}}) {
    made(kind, nullptr);
    expect_nothing_kept([&] {
      DistributionPointName *record = asn1_DistributionPointName_new();
      record->kind = kind;
      record->value = List_new(0);
      asn1_DistributionPointName_free(record);
    });
  }
  const std::unique_ptr<int> content(new int(5));
  for (const uint8_t kind : {uint8_t{2}, uint8_t{32}, uint8_t{255}}) made(kind, content.get());
  EXPECT_EQ(5, *content);
}

TEST(DistributionPointName, IsCopiedDeeply) {
  EXPECT_EQ(nullptr, asn1_DistributionPointName_clone(nullptr));
  auto record = decoded(point_names, full_name);
  const auto copy = cloned(point_names, record);
  EXPECT_NE(record->value, copy->value);
  record.reset();
  EXPECT_EQ(full_name, encoded(point_names, copy));
}

TEST(DistributionPointName, ACopyOfARelativeNameHasNoValueTags) {
  const auto copy = cloned(point_names, decoded(point_names, relative_name));
  EXPECT_EQ(1, copy->kind);
  ASSERT_EQ(2, List_len(list_of(copy)));
  EXPECT_EQ(0, assertion(list_of(copy), 0)->valueTag);
  EXPECT_EQ(0, assertion(list_of(copy), 1)->valueTag);
  EXPECT_EQ(hex("A1 15 30 08 06 03 55 04 03 00 01 72 30 09 06 03 55 04 06 00 02 44 45"),
            encoded(point_names, copy));
}

TEST(DistributionPointName, IsCopiedWithoutAValueAndWithAnUnknownKindAsTheKindAlone) {
  int content = 5;
  for (int kind = 0; kind < 256; ++kind) {
    const auto copy =
        cloned(point_names, made(static_cast<uint8_t>(kind), kind < 2 ? nullptr : &content));
    ASSERT_NE(nullptr, copy) << kind;
    EXPECT_EQ(kind, copy->kind);
    EXPECT_EQ(nullptr, copy->value);
  }
}

TEST(DistributionPointName, ThereIsNoCopyOfAFullNameWithAnOtherName) {
  const auto record = decoded(point_names, element(0xA0, uri + other_name));
  expect_nothing_kept([&] { EXPECT_EQ(nullptr, asn1_DistributionPointName_clone(record.get())); });
}

// --------------------------------------------------------------------------------- DistributionPoint

TEST(DistributionPoint, HoldsEachFieldAndEachMayBeMissing) {
  for (unsigned present = 0; present < 8; ++present) {
    SCOPED_TRACE(present);
    Bytes read, written;
    if ((present & 1) != 0) written = read = point_name;
    if ((present & 2) != 0) {
      read = read + reasons;
      written = written + reasons;
    }
    if ((present & 4) != 0) {
      read = read + issuer_read;
      written = written + issuer_written;
    }
    const auto record = decoded(points, sequence(read));
    ASSERT_EQ((present & 1) != 0, record->distributionPoint != nullptr);
    ASSERT_EQ((present & 2) != 0, record->reasons != nullptr);
    ASSERT_EQ((present & 4) != 0, record->cRLIssuer != nullptr);
    if ((present & 1) != 0) {
      EXPECT_EQ(full_name, encode(asn1_DistributionPointName_e, record->distributionPoint));
    }
    if ((present & 2) != 0) {
      EXPECT_EQ(3U, record->reasons->length);
      EXPECT_EQ(hex("60"), value(record->reasons));
    }
    if ((present & 4) != 0) {
      EXPECT_EQ(2, List_len(record->cRLIssuer));
    }
    EXPECT_EQ(sequence(written), encoded(points, record));
  }
}

TEST(DistributionPoint, OfAFullNameIsWrittenBackOctetForOctet) {
  const Bytes octets = hex("30 09 A0 07 A0 05 86 03 75 3A 76");
  const auto record = decoded(points, octets);
  EXPECT_EQ(0, record->distributionPoint->kind);
  EXPECT_EQ(1, List_len(static_cast<List *>(record->distributionPoint->value)));
  EXPECT_EQ(octets, encoded(points, record));
}

TEST(DistributionPoint, WithoutAFieldIsAnEmptySequence) {
  EXPECT_EQ(hex("30 00"), encoded(points, created(points)));
  const auto record = decoded(points, hex("30 00"));
  EXPECT_EQ(nullptr, record->distributionPoint);
  EXPECT_EQ(nullptr, record->reasons);
  EXPECT_EQ(nullptr, record->cRLIssuer);
}

TEST(DistributionPoint, IsASequenceOfDefiniteLength) {
  const Bytes content = point_name + reasons + issuer_read;
  expect_sequence_of_definite_length(points, content);
  expect_every_cut_refused(points, content, {0, point_name.size(), (point_name + reasons).size()});
}

TEST(DistributionPoint, TheIssuerIsWrittenUnderA2AndReadUnder82Only) {
  const auto record = decoded(points, sequence(point_name + reasons + issuer_read));
  ASSERT_EQ(2, List_len(record->cRLIssuer));
  const Bytes written = encoded(points, record);
  EXPECT_EQ(sequence(point_name + reasons + issuer_written), written);

  // The decoder does not read what the encoder writes, from the A2 on.
  const auto again = decoded(points, written, issuer_written.size());
  EXPECT_NE(nullptr, again->distributionPoint);
  EXPECT_NE(nullptr, again->reasons);
  EXPECT_EQ(nullptr, again->cRLIssuer);

  const auto alone = decoded(points, sequence(issuer_written), issuer_written.size());
  EXPECT_EQ(nullptr, alone->cRLIssuer);
}

TEST(DistributionPoint, TakesAnIssuerListOfAnyLengthForm) {
  const struct {
    const char *read;
    int32_t names;
  } rows[] = {{"82 00", 0},
              {"82 80 00 00", 0},
              {"82 80 86 01 75 00 00", 1},
              {"82 84 80 00 00 00", 0},
              {"82 81 03 86 01 75", 1}};
  for (const auto &row : rows) {
    const auto record = decoded(points, sequence(hex(row.read)));
    ASSERT_NE(nullptr, record->cRLIssuer) << row.read;
    EXPECT_EQ(row.names, List_len(record->cRLIssuer)) << row.read;
  }
  const auto empty = decoded(points, hex("30 02 82 00"));
  EXPECT_EQ(hex("30 02 A2 00"), encoded(points, empty));
}

TEST(DistributionPoint, LeavesUnreadWhatItDoesNotKnow) {
  const struct {
    Bytes known, rest;
  } rows[] = {
      {{}, hex("05 00")},
      {{}, hex("80 00")},              // the tag of the name in primitive form
      {{}, hex("A1 04 03 02 05 60")},  // that of the reasons, in constructed form
      {{}, issuer_written + point_name},
      {{}, hex("A3 00")},
      {{}, hex("00")},
      {point_name, point_name},
      {reasons, point_name},
      {reasons, reasons},
      {issuer_read, point_name},
      {issuer_read, reasons},
      {point_name + issuer_read, issuer_read},
      {point_name + reasons + issuer_read, hex("83 00")},
  };
  for (const auto &row : rows) {
    decoded(points, sequence(row.known + row.rest), row.rest.size());
  }
}

TEST(DistributionPoint, LooksForNoFieldBehindItsContent) {
  for (const Bytes &field : {point_name, reasons, issuer_read}) {
    const auto record = decoded(points, hex("30 00") + field, field.size());
    EXPECT_EQ(hex("30 00"), encoded(points, record));
  }
  for (const char *header : {"30 84 80 00 00 00", "30 84 FF FF FF FF"}) {
    EXPECT_EQ(hex("30 00"),
              encoded(points, decoded(points, hex(header) + reasons, reasons.size())));
  }
}

TEST(DistributionPoint, ReadsOnInsideAWrapperThatIsNotFilled) {
  const auto record = decoded(points, sequence(element(0xA0, full_name + reasons)));
  EXPECT_NE(nullptr, record->reasons);
  EXPECT_EQ(sequence(point_name + reasons), encoded(points, record));
}

TEST(DistributionPoint, IsRefusedWithABadField) {
  std::vector<Bytes> bad;
  for (const char *content :
       {"A0 00", "A0 02 A2 00", "A0 02 05 00", "A0 04 A0 02 83 00", "A0 80 A0 00 00 00",
        "A0 84 80 00 00 00 A0 00", "A0 03 A0 00", "81 00", "81 02 08 60", "81 01 01",
        "81 84 80 00 00 00", "81 03 05 60", "82 02 83 00", "82 80 86 00", "82 80 86 00 00 00 05 00",
        "82 02 86"}) {
    bad.push_back(hex(content));
  }
  bad.push_back(point_name + hex("81 00"));
  for (const char *issuer : {"82 02 05 00", "82"}) {
    bad.push_back(point_name + hex(issuer));
    bad.push_back(point_name + reasons + hex(issuer));
  }
  for (const Bytes &content : bad) {
    SCOPED_TRACE(testing::PrintToString(content));
    const Input input(sequence(content));
    expect_refused(points, sequence(content));
    expect_nothing_kept([&] {
      DistributionPoint *place = nullptr;
      asn1_DistributionPoint_d(input.z(), input.end(), 0, &place, 0);
    });
  }
}

TEST(DistributionPoint, WritesReasonsWithoutTheZeroBitsAtTheirEnd) {
  const struct {
    const char *read, *written;
  } rows[] = {
      {"81 02 05 60", "81 02 05 60"}, {"81 03 07 60 00", "81 02 05 60"},
      {"81 02 01 60", "81 02 05 60"}, {"81 02 00 00", "81 01 00"},
      {"81 01 00", "81 01 00"},       {"81 02 05 FF", "81 02 00 FF"},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(sequence(hex(row.written)), encoded(points, decoded(points, sequence(hex(row.read)))))
        << row.read;
  }
}

TEST(DistributionPoint, IsNotEncodedWhenANameFails) {
  const auto record = created(points);
  record->reasons = asn1_BitString_new(1);
  record->distributionPoint = asn1_DistributionPointName_new();
  record->distributionPoint->kind = 2;
  expect_nothing_written(points, record.get());
  clear(record->distributionPoint, asn1_DistributionPointName_free);
  record->cRLIssuer = list_with_an_unknown_name();
  expect_nothing_written(points, record.get());
}

TEST(DistributionPoint, IsCopiedDeeplyAndHalfFilled) {
  expect_deep_clone(points, sequence(point_name + reasons));

  auto record = decoded(points, sequence(issuer_read));
  const auto copy = cloned(points, record);
  EXPECT_EQ(nullptr, copy->distributionPoint);
  EXPECT_EQ(nullptr, copy->reasons);
  EXPECT_NE(record->cRLIssuer, copy->cRLIssuer);
  record.reset();
  EXPECT_EQ(sequence(issuer_written), encoded(points, copy));
}

TEST(DistributionPoint, ACopyOfOneWithARelativeNameHasNoValueTags) {
  const auto record = decoded(points, sequence(element(0xA0, relative_name)));
  EXPECT_EQ(sequence(element(0xA0, relative_name)), encoded(points, record));
  const auto copy = cloned(points, record);
  const auto *rdn = static_cast<const List *>(copy->distributionPoint->value);
  EXPECT_EQ(0, assertion(rdn, 0)->valueTag);
  EXPECT_EQ(text("r"), value(assertion(rdn, 0)->value));
}

TEST(DistributionPoint, ThereIsNoCopyOfOneWithAnOtherName) {
  for (const Bytes &content :
       {element(0xA0, element(0xA0, other_name)), reasons + element(0x82, uri + other_name)}) {
    const auto record = decoded(points, sequence(content));
    expect_nothing_kept([&] { EXPECT_EQ(nullptr, asn1_DistributionPoint_clone(record.get())); });
  }
}

TEST(DistributionPoint, NewIsZeroAndFreeIgnoresNull) { expect_new_record_is_zero(points); }

// Made by the openssl command: the first has a full name and reasons, the second a relative name and
// an issuer.
const char *const first_of_peer =
    "3020A01AA0188616687474703A2F2F632E6578616D706C652F782E63726C81020560";
const char *const second_of_peer =
    "3021A00CA10A300806035504030C0172A211A40F300D310B3009060355040613024445";

TEST(PeerDistributionPoint, WithoutAnIssuerIsReadAndWrittenBack) {
  const auto record = decoded(points, hex(first_of_peer));
  const auto *names = static_cast<const List *>(record->distributionPoint->value);
  ASSERT_EQ(1, List_len(names));
  const auto *location = static_cast<const GeneralName *>(List_get(names, 0));
  EXPECT_EQ(6, location->kind);
  EXPECT_EQ(text("http://c.example/x.crl"), value(static_cast<const IA5String *>(location->value)));
  EXPECT_EQ(1U, asn1_BitString_test(record->reasons, 1));
  EXPECT_EQ(1U, asn1_BitString_test(record->reasons, 2));
  EXPECT_EQ(hex(first_of_peer), encoded(points, record));
}

TEST(PeerDistributionPoint, WithAnIssuerIsReadUpToTheIssuer) {
  const auto record = decoded(points, hex(second_of_peer), 19);
  EXPECT_EQ(1, record->distributionPoint->kind);
  EXPECT_EQ(nullptr, record->cRLIssuer);
}

TEST(PeerDistributionPoint, WithAnIssuerMakesTheListOfAllFail) {
  const auto read_list = [](const Bytes &octets) {
    const Input input(octets);
    List *list = nullptr;
    const uint8_t *next = asn1_SeqOf_d(input.z(), input.end(), 0, asn1_DistributionPoint_d,
                                       asn1_DistributionPoint_free, &list, 0);
    EXPECT_EQ(next != nullptr, list != nullptr);
    const int32_t length = List_len(list);
    List_free(list, asn1_DistributionPoint_free);
    return next == nullptr ? -1 : length;
  };
  EXPECT_EQ(2, read_list(sequence(hex(first_of_peer) + hex(first_of_peer))));
  // The list continues at the A2 inside the second point, where no point begins.
  EXPECT_EQ(-1, read_list(sequence(hex(first_of_peer) + hex(second_of_peer))));
}

// --------------------------------------------------------------------------------- AccessDescription

const Bytes ocsp = hex("06 08 2B 06 01 05 05 07 30 01");
const Bytes ca_issuers = hex("06 08 2B 06 01 05 05 07 30 02");

TEST(AccessDescription, IsAnIdentifierAndAName) {
  const Bytes octets = hex("30 0F 06 08 2B 06 01 05 05 07 30 01 86 03 75 3A 76");
  const auto record = decoded(descriptions, octets);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_ad_ocsp(), record->accessMethod));
  EXPECT_EQ(6, record->accessLocation->kind);
  EXPECT_EQ(text("u:v"), value(static_cast<IA5String *>(record->accessLocation->value)));
  EXPECT_EQ(octets, encoded(descriptions, record));
}

TEST(AccessDescription, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(descriptions, ocsp + uri);
  expect_every_cut_refused(descriptions, ocsp + uri);
  expect_huge_lengths_refused(descriptions, ocsp + uri);
}

TEST(AccessDescription, NeedsBothFields) {
  for (const Bytes &content :
       {Bytes(), ocsp, uri, uri + ocsp, ocsp + hex("83 00"), ocsp + hex("05 00"),
        ocsp + hex("16 01 61"), ocsp + hex("86 02 75"), hex("26 00") + uri, hex("05 00") + uri}) {
    expect_refused(descriptions, sequence(content));
  }
  expect_refused(descriptions, sequence(ocsp) + uri);
}

TEST(AccessDescription, IsNotEncodedWhenAFieldFails) {
  const auto record = created(descriptions);
  expect_nothing_written(descriptions, record.get());  // the missing name is not reached
  record->accessMethod = asn1_ObjId_clone(asn1_Get_id_ad_ocsp());
  record->accessLocation = asn1_GeneralName_new();
  for (const uint8_t kind : {uint8_t{3}, uint8_t{5}, uint8_t{9}}) {
    record->accessLocation->kind = kind;
    expect_nothing_written(descriptions, record.get());
  }
}

TEST(AccessDescription, IsCopiedDeeplyAndHalfFilled) {
  expect_deep_clone(descriptions, sequence(ocsp + uri));
  const auto half = created(descriptions);
  half->accessLocation = asn1_GeneralName_new();
  half->accessLocation->kind = 2;
  const auto copy = cloned(descriptions, half);
  EXPECT_EQ(nullptr, copy->accessMethod);
  EXPECT_EQ(2, copy->accessLocation->kind);
}

TEST(AccessDescription, ThereIsNoCopyOfOneWithAnOtherName) {
  const auto record = decoded(descriptions, sequence(ocsp + other_name));
  EXPECT_EQ(sequence(ocsp + other_name), encoded(descriptions, record));
  expect_nothing_kept([&] { EXPECT_EQ(nullptr, asn1_AccessDescription_clone(record.get())); });
}

TEST(AccessDescription, NewIsZeroAndFreeIgnoresNull) { expect_new_record_is_zero(descriptions); }

// ------------------------------------------------------------------------- AuthorityInfoAccessSyntax

/// Decodes access information that must be consumed as a whole.
AccessInfo access_info(const Bytes &octets, uint32_t impl_tag = 0) {
  const auto result = decode(asn1_AuthorityInfoAccessSyntax_d, octets, impl_tag);
  EXPECT_EQ(static_cast<long>(octets.size()), result.consumed);
  return AccessInfo(result.record);
}

Bytes written(const AccessInfo &list) {
  return encode(asn1_AuthorityInfoAccessSyntax_e, list.get());
}

TEST(AuthorityInfoAccess, KeepsOrderAndDuplicates) {
  const Bytes octets =
      sequence(sequence(ca_issuers + dns) + sequence(ocsp + uri) + sequence(ca_issuers + dns));
  const AccessInfo list = access_info(octets);
  ASSERT_EQ(3, List_len(list.get()));
  EXPECT_EQ(
      0, asn1_ObjId_cmp(asn1_Get_id_ad_ocsp(),
                        static_cast<AccessDescription *>(List_get(list.get(), 1))->accessMethod));
  EXPECT_EQ(octets, written(list));
}

TEST(AuthorityInfoAccess, TakesAnyLengthFormAndAnImplicitTag) {
  const Bytes one = sequence(ocsp + uri);
  for (const Bytes &octets : {sequence(one), hex("30 80") + one + hex("00 00"),
                              hex("30 81 11") + one, element(0x10, one)}) {
    EXPECT_EQ(sequence(one), written(access_info(octets)));
  }
  EXPECT_EQ(sequence(one), written(access_info(element(0xA3, one), 0x83)));
  for (const char *octets : {"30 00", "30 80 00 00", "30 84 80 00 00 00"}) {
    EXPECT_EQ(hex("30 00"), written(access_info(hex(octets)))) << octets;
  }
}

TEST(AuthorityInfoAccess, IsRefusedWithABadElementOrWithoutItsEnd) {
  for (const Bytes &octets :
       {sequence(sequence(ocsp)), sequence(sequence(ocsp + uri) + hex("05 00")),
        sequence(sequence(ocsp + uri + hex("05 00"))), hex("30 80") + sequence(ocsp + uri),
        hex("30 80") + sequence(ocsp + uri) + hex("00 00 05 00")}) {
    EXPECT_EQ(nullptr, left_by_refusal<List>(asn1_AuthorityInfoAccessSyntax_d, octets, nullptr));
  }
}

TEST(AuthorityInfoAccess, LeavesAnEmptyListWhenItsHeaderIsRefused) {
  for (const char *octets : {"31 00", "30", "30 01", "A3 00"}) {
    const AccessInfo left(
        left_by_refusal<List>(asn1_AuthorityInfoAccessSyntax_d, hex(octets), nullptr));
    ASSERT_NE(nullptr, left) << octets;
    EXPECT_EQ(0, List_len(left.get())) << octets;
  }
}

TEST(AuthorityInfoAccess, IsNotReadWithoutACursor) {
  AuthorityInfoAccessSyntax *place = nullptr;
  EXPECT_EQ(nullptr, asn1_AuthorityInfoAccessSyntax_d(nullptr, nullptr, 0, &place, 0));
  EXPECT_EQ(nullptr, place);
}

TEST(AuthorityInfoAccess, IsNotEncodedWhenOneOfItIsNot) {
  const AccessInfo list = access_info(sequence(sequence(ocsp + uri) + sequence(ocsp + uri)));
  auto *last = static_cast<AccessDescription *>(List_get(list.get(), 1));
  clear(last->accessMethod, asn1_ObjId_free);
  EXPECT_EQ(Bytes{}, written(list));
  uint8_t buffer[4] = {};
  uint8_t *cursor = buffer;
  EXPECT_EQ(0U, asn1_AuthorityInfoAccessSyntax_e(&cursor, list.get()));
  EXPECT_EQ(buffer, cursor);
  EXPECT_EQ(0, buffer[0]);
}

TEST(AuthorityInfoAccess, FreeIgnoresNull) { asn1_AuthorityInfoAccessSyntax_free(nullptr); }

TEST(PeerAuthorityInfoAccess, IsReadAndWrittenBack) {
  // Made by the openssl command: a responder by its URI, an issuer by a DNS name.
  const Bytes octets =
      hex("3037301D06082B060105050730018611687474703A2F2F6F2E6578616D706C652F"
          "301606082B06010505073002820A63612E6578616D706C65");
  const AccessInfo list = access_info(octets);
  ASSERT_EQ(2, List_len(list.get()));
  const auto *second = static_cast<AccessDescription *>(List_get(list.get(), 1));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_ad_caIssuers(), second->accessMethod));
  EXPECT_EQ(2, second->accessLocation->kind);
  EXPECT_EQ(text("ca.example"), value(static_cast<IA5String *>(second->accessLocation->value)));
  EXPECT_EQ(octets, written(list));
}

// --------------------------------------------------------------------------------------------- trace

TEST(DistributionPointTrace, ShowsTheAlternativesOfANameAtTheChildDepth) {
  const Lines full = {
      ". CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". . . CONTEXT-SPECIFIC PRIMITIVE [6] IA5STRING ",
      ". . . " + dump("75 3A 76 ", "u:v"),
      ". . }",
      ". }",
      "}",
  };
  EXPECT_EQ(full, traced(point_names, element(0xA0, uri)));

  const Lines relative = {
      ". CONTEXT-SPECIFIC CONSTRUCTED [1] {",
      ". . SEQUENCE {",
      ". . . OBJECT IDENTIFIER ",
      ". . .   2.5.4.3",
      ". . . UTF8STRING",
      ". . . " + dump("72 ", "r"),
      ". . }",
      ". }",
      "}",
  };
  EXPECT_EQ(relative, traced(point_names, element(0xA1, common_name_r)));
  EXPECT_EQ(Lines{}, traced(point_names, hex("A2 00")));
}

TEST(DistributionPointTrace, ShowsEveryField) {
  const Lines expected = {
      "SEQUENCE {",
      ". CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". . . . CONTEXT-SPECIFIC PRIMITIVE [6] IA5STRING ",
      ". . . . " + dump("75 3A 76 ", "u:v"),
      ". . . }",
      ". . }",
      ". }",
      ". CONTEXT-SPECIFIC PRIMITIVE [1] BITSTRING",
      ".   (5 unused bits)",
      ". " + dump("60 ", "`"),
      ". CONTEXT-SPECIFIC PRIMITIVE [2] {",
      ". . . CONTEXT-SPECIFIC PRIMITIVE [2] IA5STRING ",
      ". . . " + dump("61 2E 62 ", "a.b"),
      ". . }",
      ". }",
      "}",
  };
  const Bytes octets = sequence(element(0xA0, element(0xA0, uri)) + reasons + element(0x82, dns));
  EXPECT_EQ(expected, traced(points, octets));
  EXPECT_EQ(Lines{}, traced(points, octets, 0));
}

TEST(DistributionPointTrace, ClosesAPointInFrontOfAnIssuerThatItLeavesUnread) {
  const Lines expected = {"SEQUENCE {", "}"};
  EXPECT_EQ(expected, traced(points, sequence(issuer_written)));
  EXPECT_EQ(expected, traced(points, hex("30 00")));
}

TEST(DistributionPointTrace, HasNoClosingLineOfWhatFailed) {
  const Lines expected = {"SEQUENCE {", ". CONTEXT-SPECIFIC CONSTRUCTED [0] {",
                          ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {"};
  EXPECT_EQ(expected, traced(points, sequence(hex("A0 04 A0 02 83 00"))));
}

TEST(AuthorityInfoAccessTrace, ShowsEveryField) {
  const Lines expected = {
      "SEQUENCE {",
      ". SEQUENCE {",
      ". . OBJECT IDENTIFIER ",
      ". .   1.3.6.1.5.5.7.48.1",
      ". . . CONTEXT-SPECIFIC PRIMITIVE [6] IA5STRING ",
      ". . . " + dump("75 3A 76 ", "u:v"),
      ". . }",
      ". }",
      "}",
  };
  EXPECT_EQ(
      expected, trace_lines([] {
        AccessInfo(
            decode(asn1_AuthorityInfoAccessSyntax_d, sequence(sequence(ocsp + uri)), 0, 1).record);
      }));
}

// ------------------------------------------------------------------------------ ends of the process

TEST(DistributionPointDeathTest, TheDecoderOfANameAssertsThatThereIsNoImplicitTag) {
  const Input input(full_name);
  DistributionPointName *place = nullptr;
  for (const uint32_t impl_tag : {1U, 0x20U, 0xA0U, 0xFFU, 0x101U}) {
    EXPECT_EXIT(asn1_DistributionPointName_d(input.z(), input.end(), impl_tag, &place, 0),
                testing::KilledBySignal(SIGABRT),
                assert_line("asn1_DistributionPointName_d", "impl_tag == 0", "asn1_x509v3"));
  }
}

TEST(DistributionPointDeathTest, TheEncoderOfARelativeNameAssertsThatThereIsAValue) {
  const auto record = made(1, nullptr);
  EXPECT_ASSERT(asn1_DistributionPointName_e(nullptr, record.get()), "asn1_implicit_e", "pElement");
}

TEST(DistributionPointDeathTest, DecodersAssertTheirCursorsAndPlaces) {
  expect_decoder_asserts_its_cursors(points);
  expect_decoder_asserts_its_cursors(descriptions);
  const uint8_t octets[] = {0x30, 0x00};
  EXPECT_ASSERT(asn1_AuthorityInfoAccessSyntax_d(octets, octets + 2, 0, nullptr, 0), "asn1_List_d",
                "ppList != NULL");
}

TEST(DistributionPointDeathTest, EncodersEndTheProcessWithoutARecord) {
  expect_encoder_ends_the_process<DistributionPointName>(point_names, nullptr);
  expect_encoder_ends_the_process<DistributionPoint>(points, nullptr);
  expect_encoder_ends_the_process<AccessDescription>(descriptions, nullptr);
}

TEST(DistributionPointDeathTest, TheEncoderEndsTheProcessWithoutALocationBehindTheMethod) {
  const auto record = created(descriptions);
  record->accessMethod = asn1_ObjId_new(2);
  expect_encoder_ends_the_process<AccessDescription>(descriptions, record.get());
}

// --------------------------------------------------------------------------------- exhausted memory

TEST(DistributionPointMemory, EachFailingAllocationIsAFailure) {
  expect_exhausted_memory_to_fail(point_names, full_name);
  expect_exhausted_memory_to_fail(point_names, relative_name);
  expect_exhausted_memory_to_fail(points, sequence(point_name + reasons + issuer_read));
  expect_exhausted_memory_to_fail(descriptions, sequence(ocsp + uri));
}

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(AuthorityInfoAccessMemory, EachFailingAllocationFailsTheDecoder) {
  const Input input(sequence(sequence(ocsp + uri) + sequence(ca_issuers + dns)));
  EXPECT_LT(0, expect_failure_at_each_allocation([&] {
              List *list = nullptr;
              const bool succeeded =
                  asn1_AuthorityInfoAccessSyntax_d(input.z(), input.end(), 0, &list, 0) != nullptr;
              EXPECT_EQ(succeeded, list != nullptr);
              asn1_AuthorityInfoAccessSyntax_free(list);
              return succeeded;
            }));
}

#endif

}  // namespace

}  // namespace distribution_point_test
