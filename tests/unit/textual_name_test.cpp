// Tests distinguished names as a text: what is written, what is read, and what the text loses.
#include <algorithm>
#include <csignal>
#include <optional>
#include <thread>

#include "allocator.h"
#include "support.h"

namespace textual_name_test {

namespace {

using support::Bytes;
using support::decode;
using support::element;
using support::encode;
using support::hex;
using support::text;
using support::trace_lines;
using support::value;
using support::operator+;

using Ava = support::Owned<AttributeValueAssertion, asn1_AttributeValueAssertion_free>;
using Sequence = support::Owned<RDNSequence, asn1_RDNSequence_free>;
using Text = support::Owned<Name, asn1_Name_free>;
using MaybeText = std::optional<std::string>;

struct Attribute {
  const char *short_name;
  const char *dotted;
  const char *octets;
};

// The rows are in the order in which the reader tries them.
const Attribute attributes[] = {
    {"gid", "1.3.6.1.4.1.53917.1.1.2.2.75", "06 0D 2B 06 01 04 01 83 A5 1D 01 01 02 02 4B"},
    {"cn", "2.5.4.3", "06 03 55 04 03"},
    {"gn", "2.5.4.42", "06 03 55 04 2A"},
    {"ou", "2.5.4.11", "06 03 55 04 0B"},
    {"sp", "2.5.4.8", "06 03 55 04 08"},
    {"c", "2.5.4.6", "06 03 55 04 06"},
    {"g", "2.5.4.44", "06 03 55 04 2C"},
    {"i", "2.5.4.43", "06 03 55 04 2B"},
    {"l", "2.5.4.7", "06 03 55 04 07"},
    {"m", "1.2.840.113549.1.9.1", "06 09 2A 86 48 86 F7 0D 01 09 01"},
    {"n", "2.5.4.41", "06 03 55 04 29"},
    {"o", "2.5.4.10", "06 03 55 04 0A"},
    {"s", "2.5.4.4", "06 03 55 04 04"},
    {"t", "2.5.4.12", "06 03 55 04 0C"},
    {"sn", "2.5.4.5", "06 03 55 04 05"},
};

const Bytes country = hex("06 03 55 04 06");
const Bytes common_name = hex("06 03 55 04 03");
const Bytes organisation = hex("06 03 55 04 0A");
const Bytes serial_number = hex("06 03 55 04 05");
const Bytes street = hex("06 03 55 04 09");

Bytes assertion(const Bytes &type, uint8_t tag, const Bytes &content) {
  return element(0x30, type + element(tag, content));
}
Bytes set(const Bytes &assertions) { return element(0x31, assertions); }
Bytes name(const Bytes &rdns) { return element(0x30, rdns); }

/// Returns a name of one assertion.
Bytes name(const Bytes &type, uint8_t tag, const Bytes &content) {
  return name(set(assertion(type, tag, content)));
}

MaybeText maybe(const Name *name) { return name ? MaybeText(name) : std::nullopt; }

/// Returns the text of an encoded name, from asn1_Name_d.
MaybeText text_of(const Bytes &octets) {
  const auto decoded = decode(asn1_Name_d, octets);
  const Text result(decoded.record);
  EXPECT_EQ(decoded.ok(), result != nullptr);
  if (decoded.ok()) {
    EXPECT_EQ(static_cast<long>(octets.size()), decoded.consumed);
  }
  return maybe(result.get());
}

/// Converts a text to a structure, and that to a text.
MaybeText rewritten(const char *name) {
  const Sequence sequence(asn1_Name_to_RDNSequence(name));
  return maybe(Text(asn1_RDNSequence_to_Name(sequence.get())).get());
}

/// Returns the octets of a text. They are empty where it is not a name.
Bytes octets_of(const char *name) { return encode(asn1_Name_e, name); }

/// An assertion that asn1_AttributeValueAssertion_parse must accept, and where it stops.
struct Parsed {
  explicit Parsed(const char *text)
      : cursor(text), record(asn1_AttributeValueAssertion_parse(&cursor)) {}
  const char *cursor;
  Ava record;
};

// ---------------------------------------------------------------------------------------- the table

TEST(NameText, WritesTheShortNameOfEachAttributeThatHasOne) {
  for (const Attribute &row : attributes) {
    EXPECT_EQ("/" + std::string(row.short_name) + "(12)=x",
              text_of(name(hex(row.octets), 12, text("x"))));
  }
}

TEST(NameText, ReadsEachShortNameButSerialNumberInAnyCase) {
  for (const Attribute &row : attributes) {
    const std::string lower = row.short_name;
    std::string upper, mixed;
    for (const char c : lower) {
      upper += static_cast<char>(c - 'a' + 'A');
      mixed += static_cast<char>(mixed.size() % 2 == 0 ? c : c - 'a' + 'A');
    }
    const Bytes expected = lower == "sn" ? Bytes() : name(hex(row.octets), 12, text("x"));
    for (const std::string &spelling : {lower, upper, mixed}) {
      EXPECT_EQ(expected, octets_of(("/" + spelling + "(12)=x").c_str())) << spelling;
    }
  }
}

TEST(NameText, ReadsEachAttributeByItsDottedFormAndWritesItsShortName) {
  for (const Attribute &row : attributes) {
    const std::string dotted = "/" + std::string(row.dotted) + "(19)=x";
    EXPECT_EQ(name(hex(row.octets), 19, text("x")), octets_of(dotted.c_str()));
    EXPECT_EQ("/" + std::string(row.short_name) + "(19)=x", rewritten(dotted.c_str()));
  }
}

TEST(NameText, TheReaderTakesTheFirstShortNameThatIsAPrefix) {
  const struct {
    const char *name;
    const char *type;  // NULL where the name is refused
  } rows[] = {
      {"/gid=x", "06 0D 2B 06 01 04 01 83 A5 1D 01 01 02 02 4B"},
      {"/gn=x", "06 03 55 04 2A"},
      {"/g=x", "06 03 55 04 2C"},
      {"/cn=x", "06 03 55 04 03"},
      {"/c=x", "06 03 55 04 06"},
      {"/ou=x", "06 03 55 04 0B"},
      {"/o=x", "06 03 55 04 0A"},
      {"/sp=x", "06 03 55 04 08"},
      {"/s=x", "06 03 55 04 04"},
      {"/sn=x", nullptr},    // "s", and "n" is not "="
      {"/st=x", nullptr},    // "s"
      {"/mail=x", nullptr},  // "m"
      {"/title=x", nullptr},
      {"/gi=x", nullptr},
      {"/gidx=x", nullptr},
      {"/cnx=x", nullptr},
      {"/dc=x", nullptr},  // no row
      {"/x=x", nullptr},
      {"/CommonName=x", nullptr},  // "c"; long names are not read
      {"/Korvane GID=x", nullptr},
      {"/E-MailAddress=x", nullptr},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(row.type ? name(hex(row.type), 19, text("x")) : Bytes(), octets_of(row.name))
        << row.name;
  }
}

TEST(NameText, ASerialNumberIsWrittenAndCannotBeReadBack) {
  EXPECT_EQ("/sn(19)=123", text_of(name(serial_number, 19, text("123"))));
  EXPECT_EQ(0U, asn1_Name_e(nullptr, "/sn(19)=123"));
  EXPECT_EQ(name(serial_number, 19, text("123")), octets_of("/2.5.4.5(19)=123"));
}

// --------------------------------------------------------------------------- both directions at once

TEST(NameText, IsTheSameInBothDirections) {
  const struct {
    const char *text;
    Bytes octets;
  } rows[] = {
      {"/c(19)=DE", hex("30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45")},
      {"/c(19)=DE/o(12)=A//B/,C/2.5.4.9(20)=Main St,cn(19)=Some One",
       name(set(assertion(country, 19, text("DE"))) +
            set(assertion(organisation, 12, text("A/B,C"))) +
            set(assertion(street, 20, text("Main St")) +
                assertion(common_name, 19, text("Some One"))))},
      {"/o(19)=x/c(19)=y/o(19)=x",  // order and duplicates are kept
       name(set(assertion(organisation, 19, text("x"))) + set(assertion(country, 19, text("y"))) +
            set(assertion(organisation, 19, text("x"))))},
      {"/o(19)=x,c(19)=y,o(19)=x",
       name(set(assertion(organisation, 19, text("x")) + assertion(country, 19, text("y")) +
                assertion(organisation, 19, text("x"))))},
      {"/cn(19)=", name(common_name, 19, {})},
      {"/cn(19)=,c(19)=/o(19)=",
       name(set(assertion(common_name, 19, {}) + assertion(country, 19, {})) +
            set(assertion(organisation, 19, {})))},
      {"/cn(12)=a//b", name(common_name, 12, text("a/b"))},
      {"/cn(12)=a/,b", name(common_name, 12, text("a,b"))},
      {"/cn(12)=a//", name(common_name, 12, text("a/"))},
      {"/cn(12)=a/,", name(common_name, 12, text("a,"))},
      {"/cn(12)=///,", name(common_name, 12, text("/,"))},
      {"/cn(12)=/,//", name(common_name, 12, text(",/"))},
      {"/cn(12)=////", name(common_name, 12, text("//"))},
      {"/cn(12)=a///c(12)=b",  // the value ends in a slash, then comes an RDN
       name(set(assertion(common_name, 12, text("a/"))) + set(assertion(country, 12, text("b"))))},
      {"/cn(12)=a//,c(12)=b",
       name(set(assertion(common_name, 12, text("a/")) + assertion(country, 12, text("b"))))},
      {"/cn(12)=a/,,c(12)=b",
       name(set(assertion(common_name, 12, text("a,")) + assertion(country, 12, text("b"))))},
      {"/cn(12)==()\\ \"+;<>#\n", name(common_name, 12, text("=()\\ \"+;<>#\n"))},
      {"/cn(12)=\xC3\xA9\x80\xFF", name(common_name, 12, hex("C3 A9 80 FF"))},
      {"/cn(0)=x", name(common_name, 0, text("x"))},
      {"/cn(1)=x", name(common_name, 1, text("x"))},
      {"/cn(9)=x", name(common_name, 9, text("x"))},
      {"/cn(10)=x", name(common_name, 10, text("x"))},
      {"/cn(95)=x", name(common_name, 95, text("x"))},
      {"/cn(99)=", name(common_name, 99, {})},
      {"/2.5.4.9(19)=x", name(street, 19, text("x"))},
      {"/2.5.4(19)=x", name(hex("06 02 55 04"), 19, text("x"))},
      {"/1.2(19)=x", name(hex("06 01 2A"), 19, text("x"))},
      {"/1.2.0(19)=x", name(hex("06 02 2A 00"), 19, text("x"))},
      {"/1.2.2147483647(19)=x", name(hex("06 06 2A 87 FF FF FF 7F"), 19, text("x"))},
      {"/1.2.-1(19)=x",  // arcs print as signed numbers
       name(hex("06 06 2A 8F FF FF FF 7F"), 19, text("x"))},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(row.text, text_of(row.octets));
    EXPECT_EQ(row.octets, octets_of(row.text)) << row.text;
    EXPECT_EQ(row.text, rewritten(row.text));
  }
}

TEST(NameText, IsNormalisedOnItsWayThroughTheStructure) {
  const struct {
    const char *read;
    const char *written;
  } rows[] = {
      {"/CN=x", "/cn(19)=x"},
      {"/cN(12)=x", "/cn(12)=x"},
      {"/cn=", "/cn(19)="},
      {"/2.5.4.3=x", "/cn(19)=x"},
      {"/2.5.4.3(19)=x", "/cn(19)=x"},
      {"/02.05.04.0x9=x", "/2.5.4.9(19)=x"},  // arcs are read as C reads integers
      {"/2.5..3==x", "/2.5.5.5(19)=x"},       // an arc without a number repeats the one before it
      {"/cn=a=b", "/cn(19)=a=b"},
      {"/cn=(12)", "/cn(19)=(12)"},
      {"/cn= x ", "/cn(19)= x "},
      {"/c=a,o=b/s=c,t=d", "/c(19)=a,o(19)=b/s(19)=c,t(19)=d"},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(row.written, rewritten(row.read)) << row.read;
  }
}

// ------------------------------------------------------------------------------------------ writing

TEST(NameWriter, GivesNothingForNoRdn) {
  const Sequence empty(List_new(0));
  EXPECT_EQ(nullptr, asn1_RDNSequence_to_Name(empty.get()));
}

TEST(NameWriter, WritesASlashForAnRdnWithoutAssertions) {
  EXPECT_EQ("/", text_of(name(set({}))));
  EXPECT_EQ("//", text_of(name(set({}) + set({}))));
  EXPECT_EQ("//c(19)=DE", text_of(name(set({}) + set(assertion(country, 19, text("DE"))))));
}

TEST(NameWriter, AnEmptyRdnDoesNotReadBack) {
  EXPECT_EQ(Bytes(), octets_of("/"));

  const Bytes de = set(assertion(country, 19, text("DE")));
  const Bytes a = set(assertion(organisation, 19, text("A")));
  EXPECT_EQ("/c(19)=DE/", text_of(name(de + set({}))));
  EXPECT_EQ(Bytes(), octets_of("/c(19)=DE/"));

  // In the middle, two slashes are an escaped one, and the next RDN is a part of the value.
  EXPECT_EQ("/c(19)=DE//o(19)=A", text_of(name(de + set({}) + a)));
  EXPECT_EQ(name(country, 19, text("DE/o(19)=A")), octets_of("/c(19)=DE//o(19)=A"));
}

TEST(NameWriter, CutsAValueAtItsFirstZeroOctet) {
  EXPECT_EQ("/cn(12)=ab", text_of(name(common_name, 12, hex("61 62 00 63 64"))));
  EXPECT_EQ("/cn(30)=", text_of(name(common_name, 30, hex("00 41 00 42"))));
  EXPECT_EQ("/cn(12)=a", text_of(name(common_name, 12, hex("61 00"))));
  EXPECT_EQ("/cn(12)=a//", text_of(name(common_name, 12, hex("61 2F 00 2F 2C"))));
  EXPECT_EQ(name(common_name, 12, text("ab")), octets_of("/cn(12)=ab"));
}

TEST(NameWriter, GoesOnWhereTheZeroOctetStood) {
  const Bytes cut = assertion(common_name, 12, hex("61 62 00 63 64 2C 2F"));
  const Bytes next = assertion(organisation, 19, text("A"));
  EXPECT_EQ("/cn(12)=ab,o(19)=A", text_of(name(set(cut + next))));
  EXPECT_EQ("/cn(12)=ab/o(19)=A", text_of(name(set(cut) + set(next))));
  EXPECT_EQ("/cn(12)=ab/", text_of(name(set(cut) + set({}))));
  EXPECT_EQ("/cn(12)=ab/cn(12)=ab,cn(12)=ab", text_of(name(set(cut) + set(cut + cut))));
}

/// Returns a value as it is in the text: cut at its first zero octet, a slash before "/" and ",".
std::string escaped(const Bytes &octets) {
  std::string out;
  for (const uint8_t octet : octets) {
    if (octet == 0) break;
    if (octet == '/' || octet == ',') out += '/';
    out += static_cast<char>(octet);
  }
  return out;
}

TEST(NameWriter, FindsASpecialOctetAtEachPlaceOfAValue) {
  // The special ones and their neighbours, with the top bit set as well.
  for (const uint8_t octet : hex("00 01 2B 2C 2D 2E 2F 30 7F 80 81 AC AF FF")) {
    for (size_t length = 1; length <= 20; ++length) {
      for (size_t place = 0; place < length; ++place) {
        Bytes octets(length, 'x');
        octets[place] = octet;
        EXPECT_EQ("/cn(12)=" + escaped(octets), text_of(name(common_name, 12, octets)));
      }
    }
  }
}

TEST(NameWriter, WritesNamesOfEveryLength) {
  const Bytes address = hex("31 2F 32 2C");
  for (size_t length = 0; length < 1100; ++length) {
    const Bytes octets =
        name(set(assertion(common_name, 12, Bytes(length, 'x'))) +
             set(assertion(street, 20, address) + assertion(country, 19, text("DE"))));
    EXPECT_EQ("/cn(12)=" + std::string(length, 'x') + "/2.5.4.9(20)=1//2/,,c(19)=DE",
              text_of(octets));
  }
}

TEST(NameWriter, WritesTheDottedFormOfEveryOtherAttribute) {
  std::vector<std::string> with_a_row;
  for (const Attribute &row : attributes) with_a_row.push_back(row.dotted);
  std::vector<std::string> types;
  for (unsigned last = 0; last < 300; ++last) types.push_back("2.5.4." + std::to_string(last));
  for (const char *near_miss :
       {"2.5.4", "2.5.4.3.0", "2.5.5.3", "2.4.4.3", "1.5.4.3", "2.5.4.65539", "2.5.4.2147483647",
        "1.2.840.113549.1.9", "1.2.840.113549.1.9.2", "1.2.840.113549.1.9.1.0",
        "1.3.6.1.4.1.53917.1.1.2.2.76", "1.3.6.1.4.1.53917.1.1.2.2"}) {
    types.push_back(near_miss);
  }
  for (const std::string &type : types) {
    if (std::find(with_a_row.begin(), with_a_row.end(), type) != with_a_row.end()) continue;
    EXPECT_EQ("/" + type + "(19)=x", rewritten(("/" + type + "=x").c_str()));
  }
}

TEST(NameWriter, WritesATypeOfOneArcThatCannotBeEncodedAgain) {
  EXPECT_EQ("/0(19)=x", text_of(name(hex("06 00"), 19, text("x"))));
  EXPECT_EQ("/0(19)=x", rewritten("/0(19)=x"));
  EXPECT_EQ(Bytes(), octets_of("/0(19)=x"));
}

TEST(NameWriter, WritesNothingForATypeWithoutArcs) {
  const Sequence sequence(asn1_Name_to_RDNSequence("/cn=x"));
  auto *rdn = static_cast<List *>(List_get(sequence.get(), 0));
  auto *assertion = static_cast<AttributeValueAssertion *>(List_get(rdn, 0));
  asn1_ObjId_free(assertion->type);
  assertion->type = asn1_ObjId_new(0);
  const Text written(asn1_RDNSequence_to_Name(sequence.get()));
  EXPECT_STREQ("/(19)=x", written.get());
}

TEST(NameWriter, WritesArcsAsSignedNumbers) {
  const Sequence sequence(asn1_Name_to_RDNSequence("/1.2.3.4=x"));
  auto *rdn = static_cast<List *>(List_get(sequence.get(), 0));
  auto *assertion = static_cast<AttributeValueAssertion *>(List_get(rdn, 0));
  const uint32_t arcs[] = {0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0};
  std::copy(std::begin(arcs), std::end(arcs), assertion->type->arcs);
  const Text written(asn1_RDNSequence_to_Name(sequence.get()));
  EXPECT_STREQ("/2147483647.-2147483648.-1.0(19)=x", written.get());
}

#if SIZE_MAX == UINT32_MAX
// One assertion in 256 places, and a text of a little more than 4 GiB.
TEST(NameWriter, RefusesATextThatIsLongerThanMemory) {
  const Sequence sequence(asn1_Name_to_RDNSequence("/cn=x"));
  auto *rdn = static_cast<List *>(List_get(sequence.get(), 0));
  auto *assertion = static_cast<AttributeValueAssertion *>(List_get(rdn, 0));
  const Bytes octets(size_t{1} << 24, 'x');
  asn1_ASN1String_free(assertion->value);
  assertion->value = asn1_ASN1String_new(static_cast<uint32_t>(octets.size()), octets.data());
  const std::unique_ptr<List, void (*)(List *)> many(List_new(0),
                                                     [](List *l) { List_free(l, nullptr); });
  for (int i = 0; i < 256; ++i) ASSERT_NE(0, List_append(many.get(), rdn, 0));
  EXPECT_EQ(nullptr, Text(asn1_RDNSequence_to_Name(many.get())));
}
#endif

TEST(NameWriter, WritesTagsThatTakeTwoCharacters) {
  const Sequence sequence(asn1_Name_to_RDNSequence("/cn=x"));
  auto *rdn = static_cast<List *>(List_get(sequence.get(), 0));
  auto *assertion = static_cast<AttributeValueAssertion *>(List_get(rdn, 0));
  for (int32_t tag = -9; tag <= 99; ++tag) {
    assertion->valueTag = tag;
    const Text written(asn1_RDNSequence_to_Name(sequence.get()));
    EXPECT_EQ("/cn(" + std::to_string(tag) + ")=x", maybe(written.get()));
  }
}

TEST(NameWriter, ShowsTheTagZeroOfAClone) {
  const Sequence sequence(asn1_Name_to_RDNSequence("/c(19)=DE/cn(12)=x"));
  const Sequence copy(asn1_RDNSequence_clone(sequence.get()));
  const Text written(asn1_RDNSequence_to_Name(copy.get()));
  EXPECT_STREQ("/c(0)=DE/cn(0)=x", written.get());
}

TEST(NameWriter, LosesLengthFormsAndSegments) {
  const Bytes constructed = name(set(element(0x30, common_name + hex("33 06 13 01 41 13 01 42"))));
  EXPECT_EQ("/cn(51)=AB", text_of(constructed));
  EXPECT_EQ(name(common_name, 0x33, text("AB")), octets_of("/cn(51)=AB"));

  EXPECT_EQ("/c(19)=DE", text_of(hex("30 82 00 0F 31 81 0C 30 81 09 06 03 55 04 06 13 02 44 45")));
}

// ------------------------------------------------------------------------------------------ reading

TEST(NameReader, RefusesWhatIsNoName) {
  const char *const rows[] = {
      "",
      "cn=x",
      ",cn=x",
      " /cn=x",
      "/",
      "//",
      "//cn=x",
      "/,cn=x",
      "/ cn=x",
      "/=x",
      "/(19)=x",
      "/.5=x",
      "/-1=x",
      "/\xC3\xA9=x",
      "/\xB2.5=x",
      "/cn",
      "/cn x",
      "/cn(19)",
      "/cn(19)x",
      "/cn(19) =x",
      "/cn =x",
      "/cn(",
      "/cn()=x",
      "/cn( )=x",
      "/cn(x)=x",
      "/cn(19",
      "/cn(19=x",
      "/cn(19 )=x",
      "/cn(19x)=x",
      "/cn(1.5)=x",
      "/cn(-)=x",
      "/cn(+)=x",
      "/cn(- 1)=x",
      "/cn(--1)=x",
      "/cn(08)=x",
      "/cn(0x1g)=x",
      "/cn(12)(19)=x",
      "/cn[19]=x",
      "/2.5.4.3",
      "/2.5.4.3x=x",
      "/2.5.4.3.(19)=x",  // the arc after the last dot skips as much as the one before it
      "/2.5..3=x",
      "/cn=x/",
      "/cn=x,",
      "/cn=a,b",
      "/cn=a,s",  // a row, but no "="
      "/cn=a,,cn=b",
      "/cn=a/ ",
      "/cn=a/x",
      "/cn=a/=",
      "/cn=a,o=b/",
      "/cn=a/o=b,",
      "/cn=a/o=b/c",
      "/cn=a,o=b,c",
      "/cn=a,o=b/c=d,e=f",
      "/sn(19)=123",
      "/c=DE/sn(19)=123",
      "/c=DE,sn(19)=123/o=x",
  };
  for (const char *row : rows) {
    EXPECT_EQ(nullptr, Sequence(asn1_Name_to_RDNSequence(row))) << row;
    EXPECT_EQ(0U, asn1_Name_e(nullptr, row)) << row;
  }
}

TEST(NameReader, TakesTheNumbersOfATagAsCReadsIntegers) {
  const struct {
    const char *number;
    int32_t tag;
  } rows[] = {
      {"19", 19},
      {"+19", 19},
      {" 19", 19},
      {"\t\n\v\f\r 19", 19},
      {"0", 0},
      {"00", 0},
      {"014", 12},
      {"0000000000014", 12},
      {"0x0c", 12},
      {"0x0C", 12},
      {"0X0C", 12},
      {"0xc", 12},
      {"-1", -1},
      {" -0x1", -1},
      {"+014", 12},
      {"-014", -12},
      {"100", 100},
      {"275", 275},
      {"0x113", 275},
      {"-2147483648", INT32_MIN},
      {"2147483647", INT32_MAX},
      {"0x7fffffff", INT32_MAX},
  };
  for (const auto &row : rows) {
    const Parsed parsed(("cn(" + std::string(row.number) + ")=x").c_str());
    ASSERT_NE(nullptr, parsed.record) << row.number;
    EXPECT_EQ(row.tag, parsed.record->valueTag) << row.number;
  }
}

TEST(NameReader, RefusesATagThatNoIntegerHolds) {
  for (const char *row :
       {"/cn(2147483648)=x", "/cn(-2147483649)=x", "/cn(0x80000000)=x", "/cn(040000000000)=x",
        "/cn(99999999999999999999999999)=x", "/cn(-99999999999999999999999999)=x"}) {
    EXPECT_EQ(nullptr, Sequence(asn1_Name_to_RDNSequence(row))) << row;
  }
}

TEST(NameReader, EncodesTheLowEightBitsOfATag) {
  EXPECT_EQ(name(common_name, 0x13, text("x")), octets_of("/cn(275)=x"));
  EXPECT_EQ(name(common_name, 0xFF, text("x")), octets_of("/cn(-1)=x"));
  EXPECT_EQ(name(common_name, 0x80, text("x")), octets_of("/cn(128)=x"));
}

TEST(NameReader, TakesPrintableStringForEveryAttributeWithoutATag) {
  for (const Attribute &row : attributes) {
    const std::string dotted = "/" + std::string(row.dotted) + "=x";
    EXPECT_EQ(name(hex(row.octets), 19, text("x")), octets_of(dotted.c_str())) << row.short_name;
  }
}

TEST(AssertionParser, StopsAtTheEndAtACommaOrAtASlash) {
  const struct {
    const char *read;
    const char *value;
    const char *rest;
  } rows[] = {
      {"cn=x", "x", ""},
      {"cn=", "", ""},
      {"cn=,c=y", "", ",c=y"},
      {"cn=/c=y", "", "/c=y"},
      {"cn=x,c=y", "x", ",c=y"},
      {"cn=x,", "x", ","},
      {"cn=x/c=y", "x", "/c=y"},
      {"cn=x/", "x", "/"},
      {"cn=x//", "x/", ""},
      {"cn=x///", "x/", "/"},
      {"cn=x//,c=y", "x/", ",c=y"},
      {"cn=x/,c=y", "x,c=y", ""},
      {"cn=x/,,c=y", "x,", ",c=y"},
      {"cn=x/,/c=y", "x,", "/c=y"},
      {"cn=/", "", "/"},
      {"cn=//", "/", ""},
      {"cn=/,", ",", ""},
      {"cn(12)=(12)=", "(12)=", ""},
  };
  for (const auto &row : rows) {
    const Parsed parsed(row.read);
    ASSERT_NE(nullptr, parsed.record) << row.read;
    EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_at_commonName(), parsed.record->type)) << row.read;
    EXPECT_EQ(text(row.value), value(parsed.record->value)) << row.read;
    EXPECT_STREQ(row.rest, parsed.cursor) << row.read;
  }
}

TEST(AssertionParser, GivesAnEmptyValueWithoutData) {
  const Parsed parsed("cn=");
  ASSERT_NE(nullptr, parsed.record);
  ASSERT_NE(nullptr, parsed.record->value);
  EXPECT_EQ(0U, parsed.record->value->length);
  EXPECT_EQ(nullptr, parsed.record->value->data);
}

TEST(AssertionParser, ReadsTagAndType) {
  const struct {
    const char *read;
    const char *type;
    int32_t tag;
  } rows[] = {
      {"CN=x", "2.5.4.3", 19},          {"cN(12)=x", "2.5.4.3", 12},
      {"cn(0x0c)=x", "2.5.4.3", 12},    {"cn(014)=x", "2.5.4.3", 12},
      {"2.5.4.3(19)=x", "2.5.4.3", 19}, {"5=x", "5", 19},
      {"1.2.3=x", "1.2.3", 19},         {"2. 5=x", "2.5", 19},
      {"1.0x10(1)=x", "1.16", 1},
  };
  for (const auto &row : rows) {
    const Parsed parsed(row.read);
    ASSERT_NE(nullptr, parsed.record) << row.read;
    const char *dotted = row.type;
    ObjId *type = asn1_ObjId_parse(&dotted);
    EXPECT_EQ(0, asn1_ObjId_cmp(type, parsed.record->type)) << row.read;
    EXPECT_EQ(row.tag, parsed.record->valueTag) << row.read;
    EXPECT_EQ(text("x"), value(parsed.record->value)) << row.read;
    asn1_ObjId_free(type);
  }
}

TEST(AssertionParser, GivesATypeOfTheCallersOwn) {
  const Parsed parsed("cn=x");
  EXPECT_NE(asn1_Get_id_at_commonName(), parsed.record->type);
  EXPECT_NE(asn1_Get_id_at_commonName()->arcs, parsed.record->type->arcs);
}

TEST(AssertionParser, LeavesTheCursorAloneWhenItFails) {
  for (const char *row :
       {"", "=x", "(19)=x", "/cn=x", ",cn=x", " cn=x", "x=1", "cn", "cn(19)", "cn(19", "cn(",
        "cn()=x", "cn(a)=x", "sn=x", "mail=x", "2.5.4.3", "2.5.4.3.=x", "\xFF=x"}) {
    const Parsed parsed(row);
    EXPECT_EQ(nullptr, parsed.record) << row;
    EXPECT_EQ(row, parsed.cursor) << row;
  }
}

TEST(NameReader, ReadsOrRefusesEveryPrefixAndRestOfAName) {
  const std::string whole = "/c(19)=DE/o(0x0c)=A//B/,C/2.5.4.9(20)=Main St,cn(+19)=Some One//";
  for (size_t i = 0; i <= whole.size(); ++i) {
    // On the heap and of the right size, so that a read past the closing NUL is seen.
    const Text prefix(asn1_Name_clone(whole.substr(0, i).c_str()));
    const Sequence read(asn1_Name_to_RDNSequence(prefix.get()));
    if (read != nullptr) {
      // What was read survives being written and read again.
      const Text written(asn1_RDNSequence_to_Name(read.get()));
      const Sequence again(asn1_Name_to_RDNSequence(written.get()));
      ASSERT_NE(nullptr, again) << prefix.get();
      EXPECT_EQ(encode(asn1_RDNSequence_e, read.get()), encode(asn1_RDNSequence_e, again.get()));
    }
    const Text rest(asn1_Name_clone(whole.substr(i).c_str()));
    const Sequence rest_read(asn1_Name_to_RDNSequence(rest.get()));
    EXPECT_TRUE(rest_read == nullptr || rest.get()[0] == '/') << rest.get();
  }
}

// ----------------------------------------------------------------------------- records of the family

TEST(NameNew, IsZero) {
  const Text empty(asn1_Name_new(0));
  ASSERT_NE(nullptr, empty);
  EXPECT_STREQ("", empty.get());
  EXPECT_EQ(0U, asn1_Name_e(nullptr, empty.get()));

  const Text five(asn1_Name_new(5));
  EXPECT_EQ(std::string(6, '\0'), std::string(five.get(), 6));
}

TEST(NameFree, IgnoresNull) { asn1_Name_free(nullptr); }

TEST(NameClone, IsACopyOfTheText) {
  EXPECT_EQ(nullptr, asn1_Name_clone(nullptr));

  const Text source(asn1_Name_clone("/cn(19)=x"));
  const Text copy(asn1_Name_clone(source.get()));
  EXPECT_NE(source.get(), copy.get());
  EXPECT_STREQ("/cn(19)=x", copy.get());

  const Text empty(asn1_Name_clone(""));
  EXPECT_STREQ("", empty.get());
}

TEST(NameEncoder, GivesNothingForNull) { EXPECT_EQ(0U, asn1_Name_e(nullptr, nullptr)); }

TEST(NameEncoder, WritesNothingWhenItFails) {
  for (const char *row : {"", "/", "/cn=x/", "/cn=x/5=y"}) {
    uint8_t buffer[32] = {};
    uint8_t *cursor = buffer;
    EXPECT_EQ(0U, asn1_Name_e(&cursor, row)) << row;
    EXPECT_EQ(buffer, cursor) << row;
    EXPECT_EQ(Bytes(32, 0), Bytes(std::begin(buffer), std::end(buffer))) << row;
  }
}

TEST(NameDecoder, RefusesTheEmptyNameThatTheStructureTakes) {
  Name before[] = "before";
  EXPECT_EQ(nullptr, support::left_by_refusal<Name>(asn1_Name_d, hex("30 00"), before));

  const auto structure = decode(asn1_RDNSequence_d, hex("30 00"));
  const Sequence sequence(structure.record);
  EXPECT_EQ(2, structure.consumed);
  ASSERT_NE(nullptr, sequence);
  EXPECT_EQ(0, List_len(sequence.get()));
}

TEST(NameDecoder, ClearsThePlaceWheneverItFails) {
  const Bytes rows[] = {
      {},
      hex("31 00"),                           // another tag: its empty list is not lost
      hex("30"),                              // no length
      hex("30 01"),                           // the content lies past the end
      hex("30 02 30 00"),                     // no RDN
      hex("30 80 00 00 00"),                  // something past the end-of-contents
      name(set(element(0x30, common_name))),  // no value
      name(set(assertion(country, 19, text("DE"))) + hex("31 02 30 00")),
  };
  for (const Bytes &octets : rows) {
    Name before[] = "before";
    EXPECT_EQ(nullptr, support::left_by_refusal<Name>(asn1_Name_d, octets, before));
  }
}

TEST(NameDecoder, FailsWhenTheEndLiesBelowOrAtTheInput) {
  const support::Input input(name(country, 19, text("DE")));
  Name before[] = "before";
  Name *place = before;
  EXPECT_EQ(nullptr, asn1_Name_d(input.z() + 1, input.z(), 0, &place, 0));
  EXPECT_EQ(nullptr, place);
  place = before;
  EXPECT_EQ(nullptr, asn1_Name_d(input.z(), input.z(), 0, &place, 0));
  EXPECT_EQ(nullptr, place);
}

TEST(NameDecoder, FailsWithoutInputOrPlace) {
  const support::Input input(name(country, 19, text("DE")));
  Name before[] = "before";
  Name *place = before;
  EXPECT_EQ(nullptr, asn1_Name_d(nullptr, input.end(), 0, &place, 0));
  EXPECT_EQ(nullptr, place);
  EXPECT_EQ(nullptr, asn1_Name_d(input.z(), input.end(), 0, nullptr, 0));
}

TEST(NameDecoder, GivesTheCursorBehindTheName) {
  const auto decoded = decode(asn1_Name_d, name(country, 19, text("DE")) + hex("05 00"));
  const Text result(decoded.record);
  EXPECT_EQ(15, decoded.consumed);
  EXPECT_STREQ("/c(19)=DE", result.get());
}

TEST(NameDecoder, TakesImplicitTagsAndIndefiniteLength) {
  const Bytes rdn = set(assertion(country, 19, text("DE")));
  for (const uint32_t impl_tag : {0x84U, 0xA4U}) {
    const auto decoded = decode(asn1_Name_d, element(0xA4, rdn), impl_tag);
    const Text result(decoded.record);
    EXPECT_TRUE(decoded.ok());
    EXPECT_STREQ("/c(19)=DE", result.get());
  }
  EXPECT_EQ("/c(19)=DE", text_of(hex("30 80") + rdn + hex("00 00")));
}

TEST(NameDecoder, TracesTheStructure) {
  const Bytes octets = name(country, 19, text("DE"));
  const std::vector<std::string> expected = {
      ". SEQUENCE {",
      ". . SET {",
      ". . . SEQUENCE {",
      ". . . . OBJECT IDENTIFIER ",
      ". . . .   2.5.4.6",
      ". . . . PRINTABLESTRING ",
      ". . . .   0x00000000 44 45 " + std::string(14 * 3, ' ') + "DE",
      ". . . }",
      ". . }",
      ". }",
  };
  EXPECT_EQ(expected, trace_lines([&] { Text(decode(asn1_Name_d, octets, 0, 2).record); }));
  EXPECT_EQ(0U, trace_lines([&] { Text(decode(asn1_Name_d, octets).record); }).size());
}

// ----------------------------------------------------------------------------------- one attribute

TEST(NameAttribute, IsTheFirstOfItsType) {
  const Sequence sequence(asn1_Name_to_RDNSequence("/c=a,cn=b/cn=c/o=d"));
  auto *first_rdn = static_cast<List *>(List_get(sequence.get(), 0));
  auto *last_rdn = static_cast<List *>(List_get(sequence.get(), 2));
  const struct {
    const ObjId *type;
    void *expected;
  } rows[] = {
      {asn1_Get_id_at_countryName(), List_get(first_rdn, 0)},
      {asn1_Get_id_at_commonName(), List_get(first_rdn, 1)},
      {asn1_Get_id_at_organizationName(), List_get(last_rdn, 0)},
      {asn1_Get_id_at_title(), nullptr},
      {asn1_Get_id_at(), nullptr},
  };
  for (const auto &row : rows) {
    AttributeValueAssertion before = {};
    AttributeValueAssertion *place = &before;
    EXPECT_EQ(row.expected, asn1_RDNSequence_getAttr(sequence.get(), row.type, &place));
    EXPECT_EQ(row.expected, place);
  }
}

TEST(NameAttribute, IsNullInANameWithoutAssertions) {
  const Sequence empty(List_new(0));
  const Sequence of_empty_rdn(decode(asn1_RDNSequence_d, hex("30 02 31 00")).record);
  for (const RDNSequence *sequence : {empty.get(), of_empty_rdn.get()}) {
    AttributeValueAssertion before = {};
    AttributeValueAssertion *place = &before;
    EXPECT_EQ(nullptr, asn1_RDNSequence_getAttr(sequence, asn1_Get_id_at_commonName(), &place));
    EXPECT_EQ(nullptr, place);
  }
}

// --------------------------------------------------------------------------------------- long names

Bytes repeated(size_t times, const Bytes &octets) {
  Bytes out;
  out.reserve(times * octets.size());
  for (size_t i = 0; i < times; ++i) out.insert(out.end(), octets.begin(), octets.end());
  return out;
}

std::string repeated(size_t times, const char *text) {
  const Bytes octets = repeated(times, support::text(text));
  return std::string(octets.begin(), octets.end());
}

/// Converts to the text and back, and compares each result with what it must be.
void expect_both_directions(const Bytes &octets, const std::string &text) {
  const support::Input input(octets);
  Name *place = nullptr;
  ASSERT_EQ(input.end(), asn1_Name_d(input.z(), input.end(), 0, &place, 0));
  const Text result(place);
  EXPECT_TRUE(text == result.get());
  EXPECT_TRUE(octets == octets_of(result.get()));
}

TEST(LongName, HasAValueOfAMebibyte) {
  constexpr size_t size = 1 << 20;
  expect_both_directions(name(common_name, 12, Bytes(size, 'x')),
                         "/cn(12)=" + std::string(size, 'x'));
  expect_both_directions(name(common_name, 12, Bytes(size, '/')),
                         "/cn(12)=" + std::string(2 * size, '/'));
}

TEST(LongName, HasAHundredThousandRdns) {
  expect_both_directions(name(repeated(100000, set(assertion(country, 19, text("DE"))))),
                         repeated(100000, "/c(19)=DE"));
  expect_both_directions(name(repeated(100000, set(assertion(street, 12, text("a,"))))),
                         repeated(100000, "/2.5.4.9(12)=a/,"));
}

TEST(LongName, HasAHundredThousandAssertionsInOneRdn) {
  expect_both_directions(name(set(repeated(100000, assertion(country, 19, text("DE"))))),
                         "/" + repeated(100000, ",c(19)=DE").substr(1));
}

TEST(LongName, IsCutByZeroOctets) {
  const Bytes octets = name(repeated(100000, set(assertion(country, 30, hex("00 44 00 45")))));
  EXPECT_TRUE(repeated(100000, "/c(30)=") == text_of(octets));
}

TEST(LongName, ThatFailsAtItsEndIsReleasedWhole) {
  const std::string good = repeated(100000, "/c(19)=DE");
  for (const char *bad : {"/", "/x", ",", "/sn=x", "/c=x,", "/5=x"}) {
    EXPECT_EQ(0U, asn1_Name_e(nullptr, (good + bad).c_str())) << bad;
  }
  Bytes octets = repeated(100000, set(assertion(country, 19, text("DE"))));
  EXPECT_EQ(std::nullopt, text_of(name(octets + hex("31 02 30 00"))));
}

// ------------------------------------------------------------------------------ ends of the process

TEST(TextualNameDeathTest, ATagThatTakesThreeCharactersEndsTheProcess) {
  const Sequence sequence(asn1_Name_to_RDNSequence("/cn=x"));
  auto *rdn = static_cast<List *>(List_get(sequence.get(), 0));
  auto *assertion = static_cast<AttributeValueAssertion *>(List_get(rdn, 0));
  for (const int32_t tag : {100, 128, 255, 1000, -10, -99, INT32_MAX, INT32_MIN}) {
    assertion->valueTag = tag;
    EXPECT_VALUE_TAG_ENDS_THE_PROCESS(asn1_RDNSequence_to_Name(sequence.get())) << tag;
  }
}

TEST(TextualNameDeathTest, TheDecoderEndsTheProcessOnSuchATag) {
  for (const uint8_t tag : {uint8_t{0x64}, uint8_t{0x80}, uint8_t{0xA0}, uint8_t{0xFF}}) {
    const Bytes octets =
        name(set(assertion(country, 19, text("DE"))) + set(assertion(common_name, tag, {})));
    EXPECT_VALUE_TAG_ENDS_THE_PROCESS(decode(asn1_Name_d, octets));
  }
}

TEST(TextualNameDeathTest, TheTextOfAReadNameEndsTheProcessOnSuchATag) {
  for (const char *row : {"/cn(100)=x", "/cn(-10)=x", "/cn(0x80)=x"}) {
    EXPECT_VALUE_TAG_ENDS_THE_PROCESS(rewritten(row)) << row;
  }
}

TEST(TextualNameDeathTest, TheWriterAndTheSearchAssertTheTypes) {
  const Sequence sequence(asn1_Name_to_RDNSequence("/cn=x"));
  AttributeValueAssertion *place = nullptr;
  EXPECT_ASSERT(asn1_RDNSequence_getAttr(sequence.get(), nullptr, &place), "asn1_ObjId_cmp",
                "oid[12] != NULL");

  auto *rdn = static_cast<List *>(List_get(sequence.get(), 0));
  auto *assertion = static_cast<AttributeValueAssertion *>(List_get(rdn, 0));
  asn1_ObjId_free(assertion->type);
  assertion->type = nullptr;
  EXPECT_ASSERT(asn1_RDNSequence_to_Name(sequence.get()), "asn1_ObjId_cmp", "oid[12] != NULL");
}

// ---------------------------------------------------------------------------- threads and allocation

TEST(TextualName, IsReadByThreadsTogether) {
  const Text shared(asn1_Name_clone("/c(19)=DE/o(12)=A//B/,C"));
  const Bytes expected = octets_of(shared.get());
  std::vector<std::thread> threads;
  std::vector<int> alike(4, 0);
  for (int &count : alike) {
    threads.emplace_back([&] {
      for (int i = 0; i < 100; ++i) count += octets_of(shared.get()) == expected;
    });
  }
  for (std::thread &thread : threads) thread.join();
  EXPECT_EQ(std::vector<int>(4, 100), alike);
}

TEST(NameText, OfNothingAndOfTypesThatBeginWithNoLetter) {
  for (const char *const name :
       {static_cast<const char *>(nullptr), "/{=x", "/[=x", "/@=x", "/`=x"}) {
    EXPECT_EQ(nullptr, asn1_Name_to_RDNSequence(name));
  }
}

TEST(NameText, OfAnAttributeWithoutValueIsNone) {
  const Sequence sequence(asn1_Name_to_RDNSequence("/cn=x"));
  ASSERT_NE(nullptr, sequence);
  auto *const rdn = static_cast<List *>(List_get(sequence.get(), 0));
  auto *const attribute = static_cast<AttributeValueAssertion *>(List_get(rdn, 0));
  asn1_ASN1String_free(attribute->value);
  attribute->value = nullptr;
  EXPECT_EQ(nullptr, asn1_RDNSequence_to_Name(sequence.get()));
}

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(TextualNameMemory, EachFailingAllocationFailsTheWriter) {
  const Sequence sequence(
      asn1_Name_to_RDNSequence("/c(19)=DE/o(12)=A//B/,C/2.5.4.9(20)=Main St,cn(19)=Some One"));
  support::expect_failure_at_each_allocation([&] {
    Name *text = asn1_RDNSequence_to_Name(sequence.get());
    const bool succeeded = text != nullptr;
    asn1_Name_free(text);
    return succeeded;
  });
}

// Shorter and longer than what the writer puts on the stack.
TEST(TextualNameMemory, TheTextIsTheOneAllocationOfTheWriter) {
  for (const size_t length : {1U, 600U}) {
    const std::string name = "/2.5.4.9(20)=" + std::string(length, 'a') + ",1.2.3(19)=b/cn(12)=c";
    const Sequence sequence(asn1_Name_to_RDNSequence(name.c_str()));
    EXPECT_EQ(1, support::expect_failure_at_each_allocation([&] {
                const Text text(asn1_RDNSequence_to_Name(sequence.get()));
                if (text != nullptr) {
                  EXPECT_EQ(name, text.get());
                }
                return text != nullptr;
              }));
  }
}

TEST(TextualNameMemory, EachFailingAllocationFailsTheReader) {
  support::expect_failure_at_each_allocation([] {
    RDNSequence *sequence =
        asn1_Name_to_RDNSequence("/c(19)=DE/o(12)=A//B/,C/2.5.4.9(20)=Main St,cn(19)=Some One");
    const bool succeeded = sequence != nullptr;
    asn1_RDNSequence_free(sequence);
    return succeeded;
  });
}

TEST(TextualNameMemory, EachFailingAllocationFailsTheParserAndLeavesItsCursor) {
  for (const char *text : {"cn=x", "2.5.4.3=x"}) {
    support::expect_failure_at_each_allocation([&] {
      const char *cursor = text;
      AttributeValueAssertion *record = asn1_AttributeValueAssertion_parse(&cursor);
      const bool succeeded = record != nullptr;
      EXPECT_EQ(succeeded, cursor != text);
      asn1_AttributeValueAssertion_free(record);
      return succeeded;
    });
  }
}

TEST(TextualNameMemory, EachFailingAllocationFailsTheCodec) {
  const support::Input input(
      name(set(assertion(country, 19, text("DE"))) + set(assertion(street, 12, text("a,")))));
  support::expect_failure_at_each_allocation([&] {
    Name *place = nullptr;
    const bool succeeded = asn1_Name_d(input.z(), input.end(), 0, &place, 0) != nullptr;
    EXPECT_EQ(succeeded, place != nullptr);
    asn1_Name_free(place);
    return succeeded;
  });
  support::expect_failure_at_each_allocation(
      [] { return asn1_Name_e(nullptr, "/c(19)=DE/2.5.4.9(12)=a/,") != 0; });
}

TEST(TextualNameMemory, EachFailingAllocationFailsNewAndClone) {
  for (const auto &make :
       {+[] { return asn1_Name_new(7); }, +[] { return asn1_Name_clone("/"); }}) {
    EXPECT_LT(0, support::expect_failure_at_each_allocation([&] {
                Name *text = make();
                const bool succeeded = text != nullptr;
                asn1_Name_free(text);
                return succeeded;
              }));
  }
}

#endif

}  // namespace

}  // namespace textual_name_test
