// Tests general names, and the other name, which is one of their alternatives.
#include <set>

#include "records.h"

namespace general_name_test {

namespace {

using namespace support;

constexpr RecordFamily<GeneralName> names{asn1_GeneralName_new, asn1_GeneralName_free,
                                          asn1_GeneralName_e, asn1_GeneralName_d,
                                          asn1_GeneralName_clone};

/// Calls the encoder of other names, with a second argument that is not a record.
uint32_t encode_other_name(uint8_t **pp, const OtherName *record) {
  return asn1_OtherName_e(pp, "not read", record);
}

constexpr RecordFamily<OtherName> other_names{asn1_OtherName_new, asn1_OtherName_free,
                                              encode_other_name, asn1_OtherName_d,
                                              asn1_OtherName_clone};

const Bytes type_1_2_3 = hex("06 02 2A 03");
const Bytes other_content = type_1_2_3 + hex("A0 04 0C 02 68 69");
const Bytes rdn_de = hex("31 0B 30 09 06 03 55 04 06 13 02 44 45");

const Bytes other = element(0xA0, other_content);
const Bytes mail = element(0x81, text("a/b@c.d"));
const Bytes dns = element(0x82, text("a/bcd"));
const Bytes directory = element(0xA4, rdn_de);
const Bytes uri = element(0x86, text("u:/v,w"));
const Bytes address = hex("87 04 0A 00 00 01");
const Bytes identifier = hex("88 03 2A 03 04");
const Bytes all_names[] = {other, mail, dns, directory, uri, address, identifier};

constexpr bool has_value(int kind) {
  return kind == 0 || kind == 1 || kind == 2 || kind == 4 || (kind >= 6 && kind <= 8);
}

const uint8_t kinds_without_value[] = {3, 5, 9, 32, 255};  // some of them

Held<GeneralName> made(uint8_t kind, void *content) {
  auto record = created(names);
  record->kind = kind;
  record->value = content;
  return record;
}

/// Checks that octets are refused, with NULL in the place for the record and nothing allocated.
void expect_name_refused(const Bytes &octets) {
  expect_refused(names, octets);
  const Input input(octets);
  expect_nothing_kept([&] {
    GeneralName *place = nullptr;
    asn1_GeneralName_d(input.z(), input.end(), 0, &place, 0);
  });
}

// ------------------------------------------------------------------------------------ the kinds

TEST(GeneralName, KeepsMailDnsAndUriAsTheyStand) {
  const struct {
    const Bytes *octets;
    uint8_t kind;
    const char *content;
  } rows[] = {{&mail, 1, "a/b@c.d"}, {&dns, 2, "a/bcd"}, {&uri, 6, "u:/v,w"}};
  for (const auto &row : rows) {
    const auto record = decoded(names, *row.octets);
    EXPECT_EQ(row.kind, record->kind);
    EXPECT_EQ(text(row.content), value(static_cast<IA5String *>(record->value)));
    EXPECT_EQ(*row.octets, encoded(names, record));
  }
}

TEST(GeneralName, HoldsAnOtherName) {
  const auto record = decoded(names, other);
  EXPECT_EQ(0, record->kind);
  const auto *content = static_cast<OtherName *>(record->value);
  EXPECT_EQ(type_1_2_3, encode(asn1_ObjId_e, content->type));
  EXPECT_EQ(hex("0C 02 68 69"), value(content->value));
  EXPECT_EQ(other, encoded(names, record));
}

TEST(GeneralName, HoldsADirectoryNameAsText) {
  const auto record = decoded(names, directory);
  EXPECT_EQ(4, record->kind);
  EXPECT_STREQ("/c(19)=DE", static_cast<Name *>(record->value));
  EXPECT_EQ(directory, encoded(names, record));
}

TEST(GeneralName, HoldsAnAddress) {
  const auto record = decoded(names, address);
  EXPECT_EQ(7, record->kind);
  EXPECT_EQ(hex("0A 00 00 01"), value(static_cast<OctetString *>(record->value)));
  EXPECT_EQ(address, encoded(names, record));
}

TEST(GeneralName, HoldsARegisteredIdentifier) {
  const auto record = decoded(names, identifier);
  EXPECT_EQ(8, record->kind);
  EXPECT_EQ(hex("06 03 2A 03 04"), encode(asn1_ObjId_e, static_cast<ObjId *>(record->value)));
  EXPECT_EQ(identifier, encoded(names, record));
}

TEST(GeneralName, BeginsWithOneOfThirteenOctets) {
  // Both forms of each tag, except for the identifier, which has no constructed form.
  const std::set<int> accepted = {0x80, 0xA0, 0x81, 0xA1, 0x82, 0xA2, 0x84,
                                  0xA4, 0x86, 0xA6, 0x87, 0xA7, 0x88};
  for (int first = 0; first < 256; ++first) {
    SCOPED_TRACE(first);
    const int kind = first & 0x1F;
    // A content that the kind accepts in either form.
    const Bytes content = kind == 0   ? other_content
                          : kind == 4 ? rdn_de
                          : kind == 7 ? hex("04 01 41")
                                      : hex("16 01 41");
    const Bytes octets = element(static_cast<uint8_t>(first), content);
    if (accepted.count(first) == 0) {
      expect_name_refused(octets);
      continue;
    }
    EXPECT_EQ(kind, decoded(names, octets)->kind);
  }
}

TEST(GeneralName, RefusesX400AddressesAndEdiPartyNames) {
  for (const char *octets :
       {"83 00", "A3 00", "A3 02 30 00", "85 00", "A5 00", "A5 04 81 02 61 62"})
    expect_name_refused(hex(octets));
}

TEST(GeneralName, RefusesTheNumberOfAKindInAnotherClass) {
  // C2 has the number of a DNS name, 02 and 16 are universal types, 42 is of the application.
  for (const char *octets :
       {"C2 01 61", "E2 01 61", "02 01 61", "42 01 61", "16 01 61", "04 01 61"})
    expect_name_refused(hex(octets));
}

TEST(GeneralName, RefusesAnEmptyRange) {
  expect_name_refused({});
  GeneralName before = {};
  GeneralName *place = &before;
  EXPECT_EQ(nullptr, asn1_GeneralName_d(nullptr, nullptr, 0, &place, 0));
  EXPECT_EQ(nullptr, place);
}

TEST(GeneralName, IsRefusedAtEveryCut) {
  for (const Bytes &octets : all_names) {
    for (size_t size = 0; size < octets.size(); ++size) {
      expect_name_refused(
          Bytes(octets.begin(), octets.begin() + static_cast<std::ptrdiff_t>(size)));
    }
  }
}

TEST(GeneralName, LeavesWhatFollows) {
  for (const Bytes &octets : all_names) decoded(names, octets + hex("82 01 61"), 3);
}

TEST(GeneralName, NeedsAPlaceForTheRecord) {
  const Input input(dns);
  expect_nothing_kept(
      [&] { EXPECT_EQ(nullptr, asn1_GeneralName_d(input.z(), input.end(), 0, nullptr, 0)); });
}

TEST(GeneralName, LooksAtTheLowOctetOfTheImplicitTagOnly) {
  EXPECT_EQ(2, decoded(names, dns, 0, 0x100)->kind);
  EXPECT_EQ(2, decoded(names, dns, 0, 0xFFFFFF00)->kind);
}

TEST(GeneralName, TakesEveryFormOfAStringAndWritesThePrimitiveOne) {
  const struct {
    const char *read, *written;
  } rows[] = {
      {"82 00", "82 00"},
      {"82 81 02 61 62", "82 02 61 62"},
      {"82 80 61 62 00 00", "82 02 61 62"},
      {"A2 00", "82 00"},
      {"A2 06 16 01 61 16 01 62", "82 02 61 62"},
      {"A2 80 16 01 61 36 03 16 01 62 00 00", "82 02 61 62"},
      {"A2 84 80 00 00 00", "82 00"},  // a huge length: no octets in the limit
      {"A7 06 04 01 0A 04 01 01", "87 02 0A 01"},
      {"87 03 0A 00 00", "87 03 0A 00 00"},  // any number of octets is accepted
      {"86 02 C3 A4", "86 02 C3 A4"},        // and any octets as characters
  };
  for (const auto &row : rows) {
    EXPECT_EQ(hex(row.written), encoded(names, decoded(names, hex(row.read)))) << row.read;
  }
}

TEST(GeneralName, RefusesBadStringsAndIdentifiers) {
  for (const char *octets :
       {"82 02 61", "82 84 80 00 00 00", "82 84 FF FF FF FF", "82 80 61 62", "A2 03 04 01 61",
        "A2 03 82 01 61", "A2 80 16 01 61", "87 84 80 00 00 00", "A7 03 16 01 61",
        "88 05 FF FF FF FF 7F", "88 80 2A 00 00", "A8 03 06 01 2A"})
    expect_name_refused(hex(octets));
}

TEST(GeneralName, TakesAnIdentifierOfAnEmptyContentThatCannotBeWritten) {
  for (const char *octets : {"88 00", "88 84 80 00 00 00"}) {
    const auto record = decoded(names, hex(octets));
    const auto *content = static_cast<ObjId *>(record->value);
    ASSERT_EQ(1U, content->count) << octets;
    EXPECT_EQ(0U, content->arcs[0]) << octets;
    expect_nothing_written(names, record.get());
  }
}

TEST(GeneralName, RefusesAnOtherNameWithoutItsFields) {
  for (const char *octets :
       {"A0 00", "A0 04 06 02 2A 03", "A0 04 A0 02 05 00", "A0 06 06 02 2A 03 A0 00",
        "A0 06 06 02 2A 03 05 00", "A0 80 06 02 2A 03 A0 02 05 00 00 00", "A0 84 80 00 00 00"})
    expect_name_refused(hex(octets));
}

// ----------------------------------------------------------------------------- directory names

TEST(GeneralName, TakesTheTagOfADirectoryNameForThatOfItsSequence) {
  // Two RDNs, one with two assertions.
  const Bytes octets = element(
      0xA4,
      rdn_de + element(0x31, hex("30 08 06 03 55 04 03 0C 01 78 30 08 06 03 55 04 0A 0C 01 79")));
  const auto record = decoded(names, octets);
  EXPECT_STREQ("/c(19)=DE/cn(12)=x,o(12)=y", static_cast<Name *>(record->value));
  EXPECT_EQ(octets, encoded(names, record));

  // The primitive form of the tag is accepted, too, and not written.
  EXPECT_EQ(directory, encoded(names, decoded(names, element(0x84, rdn_de))));
}

TEST(GeneralName, RefusesADirectoryNameWithItsTagAroundTheSequence) {
  expect_name_refused(element(0xA4, sequence(rdn_de)));
}

TEST(GeneralName, RefusesADirectoryNameWithoutAnRdn) {
  for (const char *octets : {"A4 00", "84 00", "A4 80 00 00", "A4 84 80 00 00 00"})
    expect_name_refused(hex(octets));
}

TEST(GeneralName, TakesADirectoryNameOfIndefiniteLengthAtTheEndOfItsRangeOnly) {
  const Bytes indefinite = hex("A4 80") + rdn_de + hex("00 00");
  EXPECT_EQ(directory, encoded(names, decoded(names, indefinite)));
  expect_name_refused(indefinite + hex("82 00"));
  expect_name_refused(hex("A4 80") + rdn_de);
}

TEST(GeneralName, ADirectoryNameThatCannotBeReadBackIsDecodedAndNotEncoded) {
  const struct {
    Bytes octets;
    const char *text;
  } rows[] = {
      {hex("A4 0E 31 0C 30 0A 06 03 55 04 05 13 03 31 32 33"), "/sn(19)=123"},
      {hex("A4 02 31 00"), "/"},
  };
  for (const auto &row : rows) {
    const auto record = decoded(names, row.octets);
    EXPECT_STREQ(row.text, static_cast<Name *>(record->value));
    expect_nothing_written(names, record.get());
  }
}

// -------------------------------------------------------------------------------------- encoder

TEST(GeneralName, MeasuresWithoutWriting) {
  const auto record = made(2, asn1_ASN1String_new(5, "a/bcd"));
  EXPECT_EQ(7U, asn1_GeneralName_e(nullptr, record.get()));
  EXPECT_EQ(dns, encoded(names, record));
}

TEST(GeneralName, IsNotEncodedWithAKindWithoutAValue) {
  const auto record = created(names);
  for (int kind = 0; kind < 256; ++kind) {
    if (has_value(kind)) continue;
    SCOPED_TRACE(kind);
    record->kind = static_cast<uint8_t>(kind);
    expect_nothing_written(names, record.get());
  }
}

TEST(GeneralName, IsNotEncodedWithAValueThatFails) {
  expect_nothing_written(names, made(0, asn1_OtherName_new()).get());
  expect_nothing_written(names, made(4, asn1_Name_new(0)).get());
  expect_nothing_written(names, made(4, asn1_Name_clone("no name")).get());
  expect_nothing_written(names, made(8, asn1_ObjId_new(0)).get());
  expect_nothing_written(names, made(8, asn1_ObjId_new(1)).get());
}

TEST(GeneralName, IsEncodedByItsKind) {
  const auto record = decoded(names, dns);
  const struct { uint8_t kind, octet; } rows[] = {{1, 0x81}, {2, 0x82}, {6, 0x86}, {7, 0x87}};
  for (const auto &row : rows) {
    record->kind = row.kind;
    EXPECT_EQ(element(row.octet, text("a/bcd")), encoded(names, record));
  }
}

TEST(GeneralName, IsEncodedEmptyWhereTheKindTakesIt) {
  EXPECT_EQ(hex("81 00"), encoded(names, made(1, asn1_IA5String_new(0))));
  EXPECT_EQ(hex("87 00"), encoded(names, made(7, asn1_OctetString_new(0))));
}

// --------------------------------------------------------------------------- release and copies

TEST(GeneralName, NewHasNoKindAndNoValue) {
  const auto record = created(names);
  EXPECT_EQ(0, record->kind);
  EXPECT_EQ(nullptr, record->value);
}

TEST(GeneralName, FreeIgnoresNullAndMissingValues) {
  asn1_GeneralName_free(nullptr);
  for (int kind = 0; kind < 256; ++kind) made(static_cast<uint8_t>(kind), nullptr);
}

TEST(GeneralName, FreeReleasesTheValueOfAKnownKindOnly) {
  for (const Bytes &octets : all_names) {
    const Input input(octets);
    expect_nothing_kept([&] {
      GeneralName *record = nullptr;
      asn1_GeneralName_d(input.z(), input.end(), 0, &record, 0);
      asn1_GeneralName_free(record);
    });
  }
  const std::unique_ptr<int> content(new int(5));
  for (const uint8_t kind : kinds_without_value) made(kind, content.get());
  EXPECT_EQ(5, *content);
}

TEST(GeneralName, IsCopiedDeeply) {
  EXPECT_EQ(nullptr, asn1_GeneralName_clone(nullptr));
  for (const Bytes &octets : {mail, dns, directory, uri, address, identifier}) {
    auto record = decoded(names, octets);
    const auto copy = cloned(names, record);
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(record->kind, copy->kind);
    EXPECT_NE(record->value, copy->value);
    record.reset();
    EXPECT_EQ(octets, encoded(names, copy));
  }
}

TEST(GeneralName, IsCopiedWithoutAValue) {
  for (int kind = 0; kind < 256; ++kind) {
    const auto copy = cloned(names, made(static_cast<uint8_t>(kind), nullptr));
    ASSERT_NE(nullptr, copy) << kind;
    EXPECT_EQ(kind, copy->kind);
    EXPECT_EQ(nullptr, copy->value);
  }
}

TEST(GeneralName, ACopyOfAKindWithoutAValueHasTheKindAlone) {
  int content = 5;
  for (const uint8_t kind : kinds_without_value) {
    const auto copy = cloned(names, made(kind, &content));
    EXPECT_EQ(kind, copy->kind);
    EXPECT_EQ(nullptr, copy->value);
  }
}

TEST(GeneralName, ThereIsNoCopyOfAnOtherNameWithContent) {
  const auto record = decoded(names, other);
  expect_nothing_kept([&] { EXPECT_EQ(nullptr, asn1_GeneralName_clone(record.get())); });
}

TEST(GeneralName, ACopyOfAnEmptyOtherNameHasOneOfItsOwn) {
  const auto record = made(0, asn1_OtherName_new());
  const auto copy = cloned(names, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(0, copy->kind);
  EXPECT_NE(nullptr, copy->value);
  EXPECT_NE(record->value, copy->value);
}

// ------------------------------------------------------------------------------------- OtherName

TEST(OtherName, HoldsATypeAndOneWholeElement) {
  for (const char *any : {"05 00", "0C 02 68 69", "30 03 02 01 05", "A0 00", "04 00"}) {
    const Bytes octets = sequence(type_1_2_3 + element(0xA0, hex(any)));
    const auto record = decoded(other_names, octets);
    EXPECT_EQ(type_1_2_3, encode(asn1_ObjId_e, record->type)) << any;
    EXPECT_EQ(hex(any), value(record->value)) << any;
    EXPECT_EQ(octets, encoded(other_names, record)) << any;
  }
}

TEST(OtherName, IsASequenceOfDefiniteLength) {
  expect_sequence_of_definite_length(other_names, other_content);
  expect_every_cut_refused(other_names, other_content);
  expect_huge_lengths_refused(other_names, other_content);
}

TEST(OtherName, NeedsBothFields) {
  for (const char *content :
       {"", "06 02 2A 03", "A0 02 05 00", "A0 02 05 00 06 02 2A 03", "06 02 2A 03 05 00",
        "06 02 2A 03 A0 00", "06 02 2A 03 A1 02 05 00", "06 02 2A 03 A0 80 05 00 00 00",
        "06 02 2A 03 A0 04 30 80 00 00", "06 02 2A 03 A0 84 80 00 00 00",
        "26 04 06 02 2A 03 A0 02 05 00", "06 05 FF FF FF FF 7F A0 02 05 00"}) {
    SCOPED_TRACE(content);
    expect_refused(other_names, sequence(hex(content)));
  }
  // The value must be inside the SEQUENCE.
  expect_refused(other_names, sequence(type_1_2_3) + hex("A0 02 05 00"));
}

TEST(OtherName, TakesAWrapperInPrimitiveFormAndOneThatIsNotFilled) {
  const auto primitive = decoded(other_names, sequence(type_1_2_3 + hex("80 02 05 00")));
  EXPECT_EQ(sequence(type_1_2_3 + hex("A0 02 05 00")), encoded(other_names, primitive));

  const auto first = decoded(other_names, sequence(type_1_2_3 + hex("A0 04 05 00 04 00")), 2);
  EXPECT_EQ(hex("05 00"), value(first->value));
}

TEST(OtherName, TheSecondArgumentOfTheEncoderIsNotRead) {
  const auto record = decoded(other_names, sequence(other_content));
  const auto empty = created(other_names);
  const void *const unread[] = {nullptr, record.get(), empty.get(), "x"};
  for (const void *argument : unread) {
    EXPECT_EQ(sequence(other_content), encode_with([&](uint8_t **pp) {
                return asn1_OtherName_e(pp, argument, record.get());
              }));
  }
}

TEST(OtherName, IsNotEncodedWithoutATypeOrWithAnEmptyValue) {
  const auto record = created(other_names);
  expect_nothing_written(other_names, record.get());  // the missing value is not reached
  record->type = asn1_ObjId_new(1);
  expect_nothing_written(other_names, record.get());
  record->value = asn1_Any_new(0);
  expect_nothing_written(other_names, record.get());
  clear(record->type, asn1_ObjId_free);
  record->type = asn1_ObjId_new(2);
  expect_nothing_written(other_names, record.get());
  clear(record->value, asn1_Any_free);
  record->value = asn1_Any_clone(asn1_Any_NULL());
  EXPECT_EQ(hex("30 07 06 01 00 A0 02 05 00"), encoded(other_names, record));
}

TEST(OtherName, ThereIsACopyOfAnEmptyRecordOnly) {
  EXPECT_EQ(nullptr, asn1_OtherName_clone(nullptr));

  const auto record = created(other_names);
  const auto copy = cloned(other_names, record);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(nullptr, copy->type);
  EXPECT_EQ(nullptr, copy->value);

  const auto expect_no_copy = [&] {
    expect_nothing_kept([&] { EXPECT_EQ(nullptr, asn1_OtherName_clone(record.get())); });
  };
  record->value = asn1_Any_clone(asn1_Any_NULL());
  expect_no_copy();
  record->type = asn1_ObjId_new(2);
  expect_no_copy();
  clear(record->value, asn1_Any_free);
  expect_no_copy();
}

TEST(OtherName, NewIsZeroAndFreeIgnoresNull) { expect_new_record_is_zero(other_names); }

TEST(OtherName, IsReleasedHalfFilled) {
  expect_nothing_kept([] {
    OtherName *record = asn1_OtherName_new();
    record->type = asn1_ObjId_new(2);
    asn1_OtherName_free(record);
    record = asn1_OtherName_new();
    record->value = asn1_Any_new(2);
    asn1_OtherName_free(record);
  });
}

// --------------------------------------------------------------------------------- lists of names

/// Decodes a SEQUENCE OF GeneralName and leaves its last `unread` octets. Returns NULL if refused.
using NameList = std::unique_ptr<List, void (*)(List *)>;
NameList name_list(const Bytes &octets) {
  const Input input(octets);
  List *list = nullptr;
  const uint8_t *next =
      asn1_SeqOf_d(input.z(), input.end(), 0, asn1_GeneralName_d, asn1_GeneralName_free, &list, 0);
  EXPECT_EQ(list == nullptr ? nullptr : input.end(), next);
  return {list, [](List *all) { List_free(all, asn1_GeneralName_free); }};
}

// Made by the openssl command, as a subjectAltName: mail, DNS, URI, address, identifier, other name.
const char *const made_by_openssl =
    "8107612F6240632E648203612E628603753A7687040A00000188032A0304A00A06022A03A0040C026869";
// The directory name that the same command wrote after them.
const char *const directory_made_by_openssl = "A40F300D310B3009060355040613024445";

TEST(PeerGeneralNames, AreReadAndWrittenBack) {
  const Bytes octets = sequence(hex(made_by_openssl));
  const NameList list = name_list(octets);
  ASSERT_EQ(6, List_len(list.get()));
  const int kinds[] = {1, 2, 6, 7, 8, 0};
  for (int32_t i = 0; i < 6; ++i) {
    EXPECT_EQ(kinds[i], static_cast<GeneralName *>(List_get(list.get(), i))->kind);
  }
  EXPECT_EQ(octets, encode_with([&](uint8_t **pp) {
              return asn1_SeqOf_e(pp, list.get(), asn1_GeneralName_e);
            }));
}

TEST(PeerGeneralNames, AreRefusedWithADirectoryName) {
  expect_name_refused(hex(directory_made_by_openssl));
  EXPECT_EQ(nullptr, name_list(sequence(hex(made_by_openssl) + hex(directory_made_by_openssl))));
}

// ------------------------------------------------------------------------------------------- trace

TEST(GeneralNameTrace, HasAClosingLineOneLevelAboveTheAlternativeAndNoOpeningOne) {
  const Lines expected = {". CONTEXT-SPECIFIC PRIMITIVE [2] IA5STRING ",
                          ". " + dump("61 2F 62 63 64 ", "a/bcd"), "}"};
  EXPECT_EQ(expected, traced(names, dns));
}

TEST(GeneralNameTrace, StandsAtItsDepth) {
  const Lines expected = {". . . CONTEXT-SPECIFIC PRIMITIVE [2] IA5STRING ",
                          ". . . " + dump("61 2F 62 63 64 ", "a/bcd"), ". . }"};
  EXPECT_EQ(expected, traced(names, dns, 3));
}

TEST(GeneralNameTrace, ShowsEachAlternative) {
  const struct {
    Bytes octets;
    Lines lines;
  } rows[] = {
      {other,
       {". CONTEXT-SPECIFIC CONSTRUCTED [0] {", ". . OBJECT IDENTIFIER ", ". .   1.2.3",
        ". . CONTEXT-SPECIFIC CONSTRUCTED [0] {", ". . [ANY]",
        ". . " + dump("0C 02 68 69 ", "..hi"), ". }", "}"}},
      {element(0x81, text("a@b")),
       {". CONTEXT-SPECIFIC PRIMITIVE [1] IA5STRING ", ". " + dump("61 40 62 ", "a@b"), "}"}},
      {directory,
       {". CONTEXT-SPECIFIC CONSTRUCTED [4] {", ". . SET {", ". . . SEQUENCE {",
        ". . . . OBJECT IDENTIFIER ", ". . . .   2.5.4.6", ". . . . PRINTABLESTRING ",
        ". . . . " + dump("44 45 ", "DE"), ". . . }", ". . }", ". }", "}"}},
      {element(0x86, text("u:v")),
       {". CONTEXT-SPECIFIC PRIMITIVE [6] IA5STRING ", ". " + dump("75 3A 76 ", "u:v"), "}"}},
      {address,
       {". CONTEXT-SPECIFIC PRIMITIVE [7] OCTETSTRING", ". " + dump("0A 00 00 01 ", "...."), "}"}},
      {identifier, {". CONTEXT-SPECIFIC PRIMITIVE [8] OBJECT IDENTIFIER ", ".   1.2.3.4", "}"}},
      // The closing line of a constructed string is one level above its segments, too.
      {hex("A2 06 16 01 61 16 01 62"),
       {". CONTEXT-SPECIFIC CONSTRUCTED [2] IA5STRING ", ". IA5STRING ", ". " + dump("61 ", "a"),
        ". IA5STRING ", ". " + dump("62 ", "b"), "}", "}"}},
  };
  for (const auto &row : rows) EXPECT_EQ(row.lines, traced(names, row.octets));
}

TEST(GeneralNameTrace, IsSilentAtDepthZeroAndForARefusedKind) {
  for (const Bytes &octets : all_names) EXPECT_EQ(Lines{}, traced(names, octets, 0));
  for (const char *octets : {"83 00", "A5 00", "C2 01 61", "02 01 61", "A9 00"})
    EXPECT_EQ(Lines{}, traced(names, hex(octets))) << octets;
}

TEST(GeneralNameTrace, HasNoClosingLineOfWhatFailed) {
  const Lines cut = {". CONTEXT-SPECIFIC PRIMITIVE [2] IA5STRING ", ". z larger than end!"};
  EXPECT_EQ(cut, traced(names, hex("82 02 61")));
  const Lines public_form = {". CONTEXT-SPECIFIC CONSTRUCTED [4] {"};
  EXPECT_EQ(public_form, traced(names, element(0xA4, sequence(rdn_de))));
}

TEST(OtherNameTrace, ShowsTheWrapperAtTheLevelOfItsElement) {
  const Lines expected = {"SEQUENCE {", ". OBJECT IDENTIFIER ",
                          ".   1.2.3",  ". CONTEXT-SPECIFIC CONSTRUCTED [0] {",
                          ". [ANY]",    ". " + dump("0C 02 68 69 ", "..hi"),
                          "}"};
  EXPECT_EQ(expected, traced(other_names, sequence(other_content)));
}

// ----------------------------------------------------------------------------- ends of the process

TEST(GeneralNameDeathTest, TheDecoderAssertsThatThereIsNoImplicitTag) {
  const Input input(dns);
  GeneralName *place = nullptr;
  for (const uint32_t impl_tag : {1U, 0x20U, 0x82U, 0xFFU, 0x101U}) {
    EXPECT_EXIT(asn1_GeneralName_d(input.z(), input.end(), impl_tag, &place, 0),
                testing::KilledBySignal(SIGABRT),
                assert_line("asn1_GeneralName_d", "impl_tag == 0", "asn1_x509v3"));
  }
}

TEST(GeneralNameDeathTest, TheEncoderAssertsThatThereIsAValue) {
  for (int kind = 0; kind < 9; ++kind) {
    if (!has_value(kind)) continue;
    const auto record = made(static_cast<uint8_t>(kind), nullptr);
    EXPECT_ASSERT(asn1_GeneralName_e(nullptr, record.get()), "asn1_implicit_e", "pElement");
  }
}

TEST(GeneralNameDeathTest, TheEncoderEndsTheProcessWithoutARecord) {
  expect_encoder_ends_the_process<GeneralName>(names, nullptr);
}

TEST(GeneralNameDeathTest, ADirectoryNameWithATagOfThreeDigitsEndsTheProcess) {
  EXPECT_VALUE_TAG_ENDS_THE_PROCESS(
      decoded(names, hex("A4 0C 31 0A 30 08 06 03 55 04 06 80 01 44")));
}

TEST(OtherNameDeathTest, TheDecoderAssertsItsCursors) {
  expect_decoder_asserts_its_cursors(other_names);
}

TEST(OtherNameDeathTest, TheEncoderAssertsThatThereIsAValueBehindTheType) {
  const auto record = created(other_names);
  record->type = asn1_ObjId_new(2);
  EXPECT_ASSERT(asn1_OtherName_e(nullptr, nullptr, record.get()), "asn1_explicit_e", "pElement");
}

TEST(OtherNameDeathTest, TheEncoderEndsTheProcessWithoutARecord) {
  expect_encoder_ends_the_process<OtherName>(other_names, nullptr);
}

// ------------------------------------------------------------------------------- exhausted memory

TEST(GeneralNameMemory, EachFailingAllocationIsAFailure) {
  for (const Bytes &octets : {mail, dns, directory, uri, address, identifier}) {
    expect_exhausted_memory_to_fail(names, octets);
  }
  // The others cannot be copied.
  RecordFamily<GeneralName> without_copies = names;
  without_copies.clone = nullptr;
  expect_exhausted_memory_to_fail(without_copies, other);
  RecordFamily<OtherName> others_without_copies = other_names;
  others_without_copies.clone = nullptr;
  expect_exhausted_memory_to_fail(others_without_copies, sequence(other_content));
}

#ifndef ORVELASN1_TESTS_SANITIZED

/// Copies a record while the allocation number `successes`, counted from 0, fails.
Held<OtherName> copy_without(long successes, const Held<OtherName> &record) {
  const FailingAllocation failing(successes);
  return cloned(other_names, record);
}

TEST(OtherNameMemory, AFieldThatCannotBeCopiedLetsTheEmptyCopyThrough) {
  // The result is inverted: a field that is copied ends in NULL, one that cannot be does not. The
  // first allocation is for the record, the second for its first field.
  const auto type_alone = created(other_names);
  type_alone->type = asn1_ObjId_new(2);
  const auto value_alone = created(other_names);
  value_alone->value = asn1_Any_new(2);
  for (const auto *record : {&type_alone, &value_alone}) {
    EXPECT_EQ(nullptr, copy_without(0, *record));
    const auto copy = copy_without(1, *record);
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(nullptr, copy->type);
    EXPECT_EQ(nullptr, copy->value);
  }
  // Where the other field can be copied, the copy ends in NULL.
  const auto both = decoded(other_names, sequence(other_content));
  EXPECT_EQ(nullptr, copy_without(1, both));
}

#endif

}  // namespace

}  // namespace general_name_test
