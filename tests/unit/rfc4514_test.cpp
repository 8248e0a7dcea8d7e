// Tests names as the strings of RFC 4514, and the text of a name that liborvelpki writes.
#include <orvelpki.h>

#include <cstdlib>
#include <optional>

#include "allocator.h"
#include "support.h"

namespace rfc4514_test {

namespace {

using support::Bytes;
using support::decode;
using support::element;
using support::encode;
using support::hex;
using support::text;
using support::operator+;

using Sequence = support::Owned<RDNSequence, asn1_RDNSequence_free>;
using Text = support::Owned<char, std::free>;
using MaybeText = std::optional<std::string>;

const Bytes common_name = hex("06 03 55 04 03");
const Bytes country = hex("06 03 55 04 06");
const Bytes organisation = hex("06 03 55 04 0A");
const Bytes unit = hex("06 03 55 04 0B");
const Bytes email = hex("06 09 2A 86 48 86 F7 0D 01 09 01");
const Bytes domain_component = hex("06 0A 09 92 26 89 93 F2 2C 64 01 19");
const Bytes user_id = hex("06 0A 09 92 26 89 93 F2 2C 64 01 01");

Bytes assertion(const Bytes &type, uint8_t tag, const Bytes &content) {
  return element(0x30, type + element(tag, content));
}
Bytes set(const Bytes &assertions) { return element(0x31, assertions); }
Bytes name(const Bytes &rdns) { return element(0x30, rdns); }

/// Returns a name of one assertion.
Bytes name(const Bytes &type, uint8_t tag, const Bytes &content) {
  return name(set(assertion(type, tag, content)));
}
Bytes common(uint8_t tag, const Bytes &content) { return name(common_name, tag, content); }

MaybeText maybe(const char *text) { return text != nullptr ? MaybeText(text) : std::nullopt; }

/// Returns the structure of octets.
Sequence decoded(const Bytes &octets) {
  const auto result = decode(asn1_RDNSequence_d, octets);
  EXPECT_EQ(static_cast<long>(octets.size()), result.consumed);
  return Sequence(result.record);
}

MaybeText string_of(const Sequence &sequence) {
  return maybe(Text(pki_name_rfc4514(sequence.get())).get());
}
MaybeText string_of(const Bytes &octets) { return string_of(decoded(octets)); }

MaybeText text_of(const Sequence &sequence) {
  return maybe(Text(pki_RDNSequence_text(sequence.get())).get());
}

Sequence parsed(const std::string &string) {
  return Sequence(pki_name_parse_rfc4514(string.c_str()));
}

/// Returns the octets of a string; none where it is refused.
Bytes octets_of(const std::string &string) {
  const Sequence sequence = parsed(string);
  return sequence != nullptr ? encode(asn1_RDNSequence_e, sequence.get()) : Bytes();
}

/// Returns the value of the only assertion.
AttributeValueAssertion *only(const Sequence &sequence) {
  EXPECT_EQ(1, List_len(sequence.get()));
  return static_cast<AttributeValueAssertion *>(
      List_get(static_cast<List *>(List_get(sequence.get(), 0)), 0));
}

// ---------------------------------------------------------------------------------------------
// Both directions
// ---------------------------------------------------------------------------------------------

TEST(Rfc4514, TheExamplesOfTheRfcAreTheSameBothWays) {
  const Bytes example_net = set(assertion(domain_component, 22, text("net"))) +
                            set(assertion(domain_component, 22, text("example")));
  const struct {
    const char *string;
    Bytes octets;
  } rows[] = {
      {"UID=jsmith,DC=example,DC=net",
       name(example_net + set(assertion(user_id, 12, text("jsmith"))))},
      {"OU=Sales+CN=J.  Smith,DC=example,DC=net",
       name(example_net + set(assertion(unit, 12, text("Sales")) +
                              assertion(common_name, 12, text("J.  Smith"))))},
      {R"(CN=James \"Jim\" Smith\, III,DC=example,DC=net)",
       name(example_net + set(assertion(common_name, 12, text("James \"Jim\" Smith, III"))))},
      {"1.3.6.1.4.1.1466.0=#04024869", name(hex("06 08 2B 06 01 04 01 8B 3A 00"), 4, text("Hi"))},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(row.octets, octets_of(row.string)) << row.string;
    EXPECT_EQ(row.string, string_of(row.octets));
  }
  // These two are written without the escapes that they do not need.
  EXPECT_EQ(common(12, text("Before\rAfter")), octets_of(R"(CN=Before\0dAfter)"));
  EXPECT_EQ("CN=Before\rAfter", string_of(common(12, text("Before\rAfter"))));
  EXPECT_EQ(common(12, text("Lu\xC4\x8Di\xC4\x87")), octets_of(R"(CN=Lu\C4\8Di\C4\87)"));
  EXPECT_EQ("CN=Lu\xC4\x8Di\xC4\x87", string_of(common(12, text("Lu\xC4\x8Di\xC4\x87"))));
}

TEST(Rfc4514, TheNamesOfTheTableAndNoOthers) {
  const struct {
    const char *name;
    Bytes type;
    uint8_t tag;
  } rows[] = {
      {"CN", hex("06 03 55 04 03"), 12},
      {"L", hex("06 03 55 04 07"), 12},
      {"ST", hex("06 03 55 04 08"), 12},
      {"O", hex("06 03 55 04 0A"), 12},
      {"OU", hex("06 03 55 04 0B"), 12},
      {"C", hex("06 03 55 04 06"), 19},
      {"STREET", hex("06 03 55 04 09"), 12},
      {"DC", domain_component, 22},
      {"UID", user_id, 12},
  };
  for (const auto &row : rows) {
    const Bytes octets = name(row.type, row.tag, text("x"));
    std::string upper = row.name, lower, mixed;
    for (const char c : upper) {
      lower += static_cast<char>(c + 0x20);
      mixed += static_cast<char>(mixed.size() % 2 == 0 ? c : c + 0x20);
    }
    EXPECT_EQ(upper + "=x", string_of(octets));
    for (const std::string &spelling : {upper, lower, mixed}) {
      EXPECT_EQ(octets, octets_of(spelling + "=x")) << spelling;
    }
  }
  for (const char *other : {"E=x", "emailAddress=x", "SN=x", "serialNumber=x", "S=x", "G=x", "T=x",
                            "CNx=x", "STREE=x", "STREETS=x", "D=x", "CN2=x", "C-N=x", "x=x",
                            "OID.2.5.4.3=x", "commonName=x", "[N=x", "@=x", "`=x"}) {
    EXPECT_EQ(Bytes(), octets_of(other)) << other;
  }
}

TEST(Rfc4514, OtherTypesAreDigitsWithTheirValuesInHex) {
  EXPECT_EQ("1.2.840.113549.1.9.1=#1603614062", string_of(name(email, 22, text("a@b"))));
  EXPECT_EQ("2.5.4.5=#130131", string_of(name(hex("06 03 55 04 05"), 19, text("1"))));
  // Such a value may be given by its characters.
  EXPECT_EQ(name(email, 22, text("a@b")), octets_of("1.2.840.113549.1.9.1=a@b"));
  EXPECT_EQ(name(email, 12, hex("C3 A9")), octets_of("1.2.840.113549.1.9.1=\xC3\xA9"));
  EXPECT_EQ(name(hex("06 03 55 04 05"), 12, text("1")), octets_of("2.5.4.5=1"));
  // A type of the table may be given by its digits.
  EXPECT_EQ(common(12, text("x")), octets_of("2.5.4.3=x"));
  EXPECT_EQ("CN=x", string_of(parsed("2.5.4.3=#130178")));
  // Digits of any size. 2^128 - 1 under 2.25 is a UUID.
  const std::string large = "2.25.340282366920938463463374607431768211455=#0500";
  EXPECT_EQ(large, string_of(parsed(large)));
}

TEST(Rfc4514, AnEmptyStringIsTheEmptySequence) {
  EXPECT_EQ("", string_of(hex("30 00")));
  const Sequence sequence = parsed("");
  ASSERT_NE(nullptr, sequence);
  EXPECT_EQ(0, List_len(sequence.get()));
  EXPECT_EQ(std::nullopt, string_of(Sequence()));
  EXPECT_EQ(nullptr, pki_name_parse_rfc4514(nullptr));
}

TEST(Rfc4514, TheLastRdnComesFirstAndAssertionsKeepTheirOrder) {
  const Bytes octets =
      name(set(assertion(country, 19, text("DE"))) +
           set(assertion(unit, 12, text("b")) + assertion(common_name, 12, text("a")) +
               assertion(unit, 12, text("c"))) +
           set(assertion(organisation, 12, text("x"))));
  EXPECT_EQ("O=x,OU=b+CN=a+OU=c,C=DE", string_of(octets));
  EXPECT_EQ(octets, octets_of("O=x,OU=b+CN=a+OU=c,C=DE"));
}

// The DER of this name, and its string, from a peer. The name is in a request; its DER was made with
// `openssl asn1parse -genconf`, and the string with
//   openssl req -inform DER -in r.der -noout -subject -nameopt rfc2253,-esc_msb,-esc_ctrl,utf8
TEST(Rfc4514, APeerWritesTheSameString) {
  EXPECT_EQ(
      "OU=Gr\xC3\xBCn,CN=\xC5\xBDlu\xC5\xA5ou\xC4\x8Dk\xC3\xBD,O=A\\, B\\; \\<C\\> D \\+ "
      "\\\\E,C=DE",
      string_of(hex("3054310b300906035504061302444531193017060355040a0c10412c20423b203c433e20"
                    "44202b205c45311b301906035504031e12017d006c00750165006f0075010d006b00fd31"
                    "0d300b060355040b14044772fc6e")));
}

// ---------------------------------------------------------------------------------------------
// Escapes
// ---------------------------------------------------------------------------------------------

TEST(Rfc4514, EscapesWhatTheRfcNamesAndNothingElse) {
  const struct {
    const char *value;
    const char *string;
  } rows[] = {
      {"", "CN="},           {"\"+,;<>\\", R"(CN=\"\+\,\;\<\>\\)"},
      {" ", "CN=\\ "},       {"  ", "CN=\\ \\ "},
      {"   ", "CN=\\  \\ "}, {" a b ", "CN=\\ a b\\ "},
      {"#", "CN=\\#"},       {"##a#", "CN=\\##a#"},
      {" #", "CN=\\ #"},     {"# ", "CN=\\#\\ "},
      {"a ", "CN=a\\ "},     {"a b#", "CN=a b#"},
      {"=a=", "CN==a="},     {"a\n\t\x7F'", "CN=a\n\t\x7F'"},
  };
  for (const auto &row : rows) {
    const Bytes octets = common(12, text(row.value));
    EXPECT_EQ(row.string, string_of(octets));
    EXPECT_EQ(octets, octets_of(row.string)) << row.string;
  }
  EXPECT_EQ(R"(CN=\00a\00\00)", string_of(common(12, hex("00 61 00 00"))));
  EXPECT_EQ(common(12, hex("00 61 00 00")), octets_of(R"(CN=\00a\00\00)"));
}

TEST(Rfc4514, EscapesACharacterOfOneOctetInEveryPlaceOrInNone) {
  const std::string separators = "\"+,;<>\\";
  for (const uint8_t tag : std::initializer_list<uint8_t>{12, 19, 20, 22, 26}) {
    for (char c = 1; c != '\x7F'; ++c) {
      if (c == ' ' || c == '#') continue;
      const std::string written = separators.find(c) == std::string::npos ? "" : "\\";
      for (const auto &[before, after] : {std::pair("", ""), {"", "b"}, {"a", ""}, {"a", "b"}}) {
        EXPECT_EQ(std::string("CN=") + before + written + c + after,
                  string_of(common(tag, text(std::string(before) + c + after))))
            << int{tag} << " " << int{c};
      }
    }
  }
}

TEST(Rfc4514, ATextMayBeOfAnyLength) {
  for (const size_t length :
       {0U, 1U, 251U, 252U, 253U, 254U, 508U, 509U, 510U, 1020U, 1021U, 1022U}) {
    const std::string value(length, 'v');
    const Bytes octets = common(12, text(value));
    EXPECT_EQ("CN=" + value, string_of(octets));
    EXPECT_EQ(octets, octets_of("CN=" + value));
    // The value comes to its end character by character.
    EXPECT_EQ("CN=\\ " + value + "\xC3\xA9", string_of(common(12, text(" " + value + "\xC3\xA9"))));
  }
}

TEST(Rfc4514, ReadsEscapesThatAreNotNeeded) {
  const struct {
    const char *string;
    Bytes value;
  } rows[] = {
      {R"(CN=a\ b\#c\=d)", text("a b#c=d")},
      {R"(CN=\61\2c\2C\20)", text("a,, ")},
      {R"(CN=\20)", text(" ")},
      {R"(CN=\23)", text("#")},
      {R"(CN=\5C\5c\\)", text("\\\\\\")},
      {R"(CN=\e2\82\AC)", hex("E2 82 AC")},
      {R"(CN=\abc)", {}},  // the octet AB alone is not UTF-8
  };
  for (const auto &row : rows) {
    EXPECT_EQ(row.value.empty() ? Bytes() : common(12, row.value), octets_of(row.string))
        << row.string;
  }
}

TEST(Rfc4514, RefusesWhatTheGrammarDoesNotHave) {
  const char *const refused[] = {
      ",",
      "=",
      "+",
      " ",
      "CN",
      "CN ",
      "CN=a,",
      ",CN=a",
      "CN=a+",
      "CN=a,,O=b",
      "CN=a+,O=b",
      "CN=a, O=b",
      "CN=a+ O=b",
      " CN=a",
      "CN =a",
      "CN= a",
      "CN=a ",
      "CN=a ,O=b",
      "CN=a +O=b",
      "CN= ",
      "CN=a\\  ",
      "CN=a;O=b",
      "CN=a;",
      "CN=\"a\"",
      "CN=a\"b",
      "CN=a<b",
      "CN=a>b",
      "CN=\\",
      "CN=a\\",
      "CN=\\a",
      "CN=\\0",
      "CN=\\0,",
      "CN=\\g0",
      "CN=\\0g",
      "CN=\\\n",
      "CN=\\'",
      "CN=\\-",
      "=a",
      "CN,O=a",
      "CN+O=a",
      "1=a",
      "3.1=a",
      "2.5.=a",
      "2.5.4.03=a",
      "2.5 .4=a",
      ".=a",
      "-1.2=a",
      "CN=a,\n",
      "CN=#",
      "CN=#0",
      "CN=#04",
      "CN=#0401",
      "CN=#04006",
      "CN=#040061",
      "CN=#040161 ",
      "CN=#04g0",
      "CN=# 0400",
      "CN=#0480",
      "CN=#24800000",
      "CN=#0481",
      "CN=#04850000000000",
      "CN=#0484FFFFFFFF",
      "CN=#04FF",
      "CN=#040161\\ ",
      "CN=#040161;",
      "CN=##0400",
      "CN=#04\\00",
  };
  for (const char *string : refused) EXPECT_EQ(nullptr, parsed(string)) << string;
}

TEST(Rfc4514, RefusesWhatIsNotUtf8) {
  // RFC 3629, 4: overlong forms, surrogates, numbers above 10FFFF, lone and missing octets.
  for (const char *octets : {"80",
                             "BF",
                             "C0 80",
                             "C1 BF",
                             "C3",
                             "C3 28",
                             "E0 80 80",
                             "E0 9F BF",
                             "ED A0 80",
                             "ED BF BF",
                             "E2 82",
                             "E2 28 A1",
                             "F0 80 80 80",
                             "F0 8F BF BF",
                             "F4 90 80 80",
                             "F5 80 80 80",
                             "F8 88 80 80 80",
                             "FC",
                             "FE",
                             "FF",
                             "F0 9F 98",
                             "61 C3",
                             "E2 C3 A9"}) {
    const Bytes value = hex(octets);
    EXPECT_EQ(nullptr, parsed("CN=" + std::string(value.begin(), value.end()))) << octets;
    EXPECT_EQ(nullptr, parsed("CN=" + std::string(value.begin(), value.end()) + ",O=a")) << octets;
    std::string escaped = "CN=";
    for (const uint8_t octet : value) {
      const char digits[] = "0123456789abcdef";
      escaped += {'\\', digits[octet >> 4], digits[octet & 15]};
    }
    EXPECT_EQ(nullptr, parsed(escaped)) << octets;
    // The other direction has such a value in hex.
    const MaybeText string = string_of(common(12, value));
    ASSERT_TRUE(string.has_value());
    EXPECT_EQ('#', string->at(3)) << octets;
    EXPECT_EQ(common(12, value), octets_of(*string));
  }
  for (const char *octets : {"C2 80", "DF BF", "E0 A0 80", "ED 9F BF", "EE 80 80", "EF BF BF",
                             "F0 90 80 80", "F4 8F BF BF", "7F"}) {
    const Bytes value = hex(octets);
    const std::string string = "CN=" + std::string(value.begin(), value.end());
    EXPECT_EQ(common(12, value), octets_of(string)) << octets;
    EXPECT_EQ(string, string_of(common(12, value)));
  }
  // A character is escaped as a whole or not at all.
  EXPECT_EQ(nullptr, parsed("CN=\xC3\\A9"));
  EXPECT_EQ(nullptr, parsed("CN=\\C3\xA9"));
}

// ---------------------------------------------------------------------------------------------
// Values
// ---------------------------------------------------------------------------------------------

TEST(Rfc4514, ValuesAreUtf8WhateverTheirType) {
  const struct {
    uint8_t tag;
    Bytes content;
    std::string string;
  } rows[] = {
      {18, text("1 2"), "1 2"},
      {19, text("a.b*@"), "a.b*@"},
      {22, text("a@b\x7F"), "a@b\x7F"},
      {26, text("a~"), "a~"},
      {20, hex("61 80 A0 E9 FF"), "a\xC2\x80\xC2\xA0\xC3\xA9\xC3\xBF"},
      {30, hex("0061 00E9 20AC FFFD"), "a\xC3\xA9\xE2\x82\xAC\xEF\xBF\xBD"},
      {30, hex("D83D DE00 0062"),
       "\xF0\x9F\x98\x80"
       "b"},
      {30, hex("D800 DC00"), "\xF0\x90\x80\x80"},
      {30, hex("DBFF DFFF"), "\xF4\x8F\xBF\xBF"},
      {30, hex("D7FF E000"), "\xED\x9F\xBF\xEE\x80\x80"},
      {30, hex("0020 002C 0000 0020"), "\\ \\,\\00\\ "},
      {30, {}, ""},
      {28, hex("00000061 0001F600 0010FFFF 0000D7FF"),
       "a\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF\xED\x9F\xBF"},
      {28, hex("00000023"), "\\#"},
      {28, {}, ""},
  };
  for (const auto &row : rows) {
    EXPECT_EQ("CN=" + row.string, string_of(common(row.tag, row.content))) << int{row.tag};
  }
}

TEST(Rfc4514, ValuesThatAreNotOfTheirTypeAreHex) {
  const struct {
    uint8_t tag;
    const char *content;
    const char *string;
  } rows[] = {
      {18, "80", "120180"},
      {19, "61 E9", "130261E9"},
      {22, "FF", "1601FF"},
      {26, "80", "1A0180"},
      {30, "61", "1E0161"},
      {30, "00 61 00", "1E03006100"},
      {30, "D8 3D", "1E02D83D"},            // the first half of a pair
      {30, "D8 3D 00 61", "1E04D83D0061"},  // without the second
      {30, "D8 3D D8 3D", "1E04D83DD83D"},
      {30, "D8 3D E0 00", "1E04D83DE000"},
      {30, "DE 00 D8 3D", "1E04DE00D83D"},  // the wrong way round
      {30, "DE 00 DE 00", "1E04DE00DE00"},  // the second half twice
      {30, "D8 3D DE", "1E03D83DDE"},
      {28, "00 00 61", "1C03000061"},
      {28, "00 00 00 61 00", "1C050000006100"},
      {28, "00 11 00 00", "1C0400110000"},
      {28, "00 00 D8 00", "1C040000D800"},
      {28, "80 00 00 61", "1C0480000061"},
      // Other types.
      {0, "61", "000161"},
      {3, "00 61", "03020061"},
      {4, "", "0400"},
      {5, "", "0500"},
      {21, "61", "150161"},
      {25, "61", "190161"},
      {27, "61", "1B0161"},
      {0x1F, "61", "1F0161"},
      {0x80, "61", "800161"},
      {0x8C, "61", "8C0161"},
      {0xFF, "61", "FF0161"},
  };
  for (const auto &row : rows) {
    // asn1_RDNSequence_d joins constructed strings, so that these octets are put into a record.
    const Sequence sequence = parsed("CN=");
    AttributeValueAssertion *const value = only(sequence);
    value->valueTag = row.tag;
    asn1_ASN1String_free(value->value);
    const Bytes content = hex(row.content);
    value->value = asn1_ASN1String_new(static_cast<uint32_t>(content.size()),
                                       content.empty() ? nullptr : content.data());
    const std::string string = "CN=#" + std::string(row.string);
    EXPECT_EQ(string, string_of(sequence));
    // And back.
    const Sequence back = parsed(string);
    ASSERT_NE(nullptr, back) << string;
    EXPECT_EQ(row.tag, only(back)->valueTag);
    EXPECT_EQ(content, support::value(only(back)->value));
  }
}

TEST(Rfc4514, AConstructedValueIsHex) {
  // The content of a UTF8String in two segments, as the record has it whole.
  const std::string string = "CN=#2C060C01610C0162";
  const Sequence sequence = parsed(string);
  ASSERT_NE(nullptr, sequence);
  EXPECT_EQ(0x2C, only(sequence)->valueTag);
  EXPECT_EQ(hex("0C 01 61 0C 01 62"), support::value(only(sequence)->value));
  EXPECT_EQ(string, string_of(sequence));
}

TEST(Rfc4514, HexHasLengthsOfAnySize) {
  const struct {
    size_t length;
    const char *header;
  } rows[] = {
      {127, "047F"}, {128, "048180"}, {255, "0481FF"}, {256, "04820100"}, {65536, "0483010000"}};
  for (const auto &row : rows) {
    std::string string = "CN=#" + std::string(row.header);
    for (size_t i = 0; i < row.length; ++i) string += "5A";
    EXPECT_EQ(string, string_of(common(4, Bytes(row.length, 0x5A))));
    EXPECT_EQ(common(4, Bytes(row.length, 0x5A)), octets_of(string));
  }
  // Digits in any case, lengths in any definite form.
  EXPECT_EQ(common(4, hex("AB CD")), octets_of("CN=#0402abCd"));
  EXPECT_EQ(common(4, hex("AB CD")), octets_of("CN=#048102ABCD"));
  EXPECT_EQ(common(4, hex("AB CD")), octets_of("CN=#048400000002ABCD"));
  EXPECT_EQ("CN=#0402ABCD", string_of(parsed("CN=#048400000002abcd")));
  // A string in hex is written by its characters.
  EXPECT_EQ("CN=a\\,b", string_of(parsed("CN=#1303612c62")));
}

TEST(Rfc4514, SomeTypesHaveStringsOfTheirOwn) {
  EXPECT_EQ(name(country, 19, text("DE")), octets_of("C=DE"));
  EXPECT_EQ(name(country, 19, text("aZ09 '()+,-./:=?")), octets_of("C=aZ09 '()\\+\\,-./:=?"));
  EXPECT_EQ(name(country, 19, {}), octets_of("C="));
  for (const char *other : {"*", "@", "_", "&", "!", "~", "\n"}) {
    EXPECT_EQ(name(country, 12, text(other)), octets_of("C=" + std::string(other))) << other;
  }
  EXPECT_EQ(name(country, 12, hex("00")), octets_of("C=\\00"));
  EXPECT_EQ(name(country, 12, hex("C3 A9")), octets_of("C=\xC3\xA9"));
  EXPECT_EQ(name(domain_component, 22, text("a_\x7F")), octets_of("DC=a_\x7F"));
  EXPECT_EQ(name(domain_component, 12, hex("C3 A9")), octets_of("DC=\xC3\xA9"));
}

TEST(Rfc4514, WhatIsWrittenIsReadAndWrittenAgainTheSame) {
  for (const char *string :
       {"cn=a,o=b", "CN=#0c0161", R"(CN=\61\,+2.5.4.6=D\45,C=\#)", "1.2.3=text,1.2.3=#0500,DC=\\20",
        "2.5.4.10=\\ ,STREET=\\00,UID=\xE2\x82\xAC", "2.99999999999999999999=a+O=", "C=*,C=DE"}) {
    const MaybeText first = string_of(parsed(string));
    ASSERT_TRUE(first.has_value()) << string;
    EXPECT_EQ(first, string_of(parsed(*first)));
    EXPECT_EQ(octets_of(*first), octets_of(*string_of(parsed(*first))));
  }
}

// ---------------------------------------------------------------------------------------------
// Records that are not filled
// ---------------------------------------------------------------------------------------------

TEST(Rfc4514, ARecordThatIsNotFilledHasNoText) {
  const auto expect_none = [](const Sequence &sequence) {
    EXPECT_EQ(std::nullopt, string_of(sequence));
    EXPECT_EQ(std::nullopt, text_of(sequence));
  };
  expect_none(nullptr);
  for (const bool in_first : {true, false}) {
    // Without an RDN, and without an assertion.
    Sequence sequence = in_first ? Sequence(List_new(0)) : parsed("CN=a");
    List_append(sequence.get(), nullptr, 0);
    expect_none(sequence);
    sequence = in_first ? Sequence(List_new(0)) : parsed("CN=a");
    List_append(sequence.get(), List_new(0), 0);
    List_append(static_cast<List *>(List_get(sequence.get(), in_first ? 0 : 1)), nullptr, 0);
    expect_none(sequence);
  }
  const auto expect_none_with = [&](auto change) {
    const Sequence sequence = parsed("1.2.3.4=a");
    change(*only(sequence));
    expect_none(sequence);
  };
  expect_none_with([](AttributeValueAssertion &a) {
    asn1_ObjId_free(a.type);
    a.type = nullptr;
  });
  expect_none_with([](AttributeValueAssertion &a) {
    asn1_ASN1String_free(a.value);
    a.value = nullptr;
  });
  expect_none_with([](AttributeValueAssertion &a) {
    std::free(a.value->data);
    a.value->data = nullptr;
  });
  expect_none_with([](AttributeValueAssertion &a) {
    std::free(a.type->arcs);
    a.type->arcs = nullptr;
  });
  expect_none_with([](AttributeValueAssertion &a) { a.type->count = 1; });
  expect_none_with([](AttributeValueAssertion &a) { a.type->count = 0; });
  expect_none_with([](AttributeValueAssertion &a) { a.type->arcs[1] = 40; });
  expect_none_with([](AttributeValueAssertion &a) { a.type->arcs[0] = PKI_LARGE_ARCS; });

  // An RDN without an assertion: the standard string has no form for it.
  const Sequence sequence(List_new(0));
  List_append(sequence.get(), List_new(0), 0);
  EXPECT_EQ(std::nullopt, string_of(sequence));
  EXPECT_EQ("/", text_of(sequence));
  for (const int32_t tag : {-1, 256, INT32_MAX, INT32_MIN}) {
    const Sequence one = parsed("CN=a");
    only(one)->valueTag = tag;
    EXPECT_EQ(std::nullopt, string_of(one));
    EXPECT_EQ("/cn(" + std::to_string(tag) + ")=a", text_of(one));
  }
}

// ---------------------------------------------------------------------------------------------
// This library's own text
// ---------------------------------------------------------------------------------------------

TEST(NameTextOfPki, IsThatOfTheOtherLibrary) {
  for (const char *text :
       {"/c(19)=DE", "/c(19)=DE/o(12)=A//B/,C/2.5.4.9(20)=Main St,cn(19)=Some One",
        "/cn(0)=x/cn(9)=x/cn(10)=x/cn(99)=", "/cn(-9)=x/cn(-1)=x", "/2.5.4(19)=x/1.2(19)=x",
        "/1.2.2147483647(19)=x", "/cn(12)=////,cn(12)=/,",
        "/m(22)=a@b/gid(12)=1/t(12)=t/i(12)=i"}) {
    const Sequence sequence(asn1_Name_to_RDNSequence(text));
    EXPECT_EQ(text, text_of(sequence));
    EXPECT_EQ(maybe(Text(asn1_RDNSequence_to_Name(sequence.get())).get()), text_of(sequence));
  }
  // "sn" is written, though it is not read; a value ends at its first NUL.
  EXPECT_EQ("/sn(19)=1", text_of(decoded(name(hex("06 03 55 04 05"), 19, text("1")))));
  EXPECT_EQ("/cn(12)=a", text_of(decoded(common(12, hex("61 00 62")))));
  // Around the size of the buffer of the first attempt.
  for (size_t length = 495; length < 520; ++length) {
    const std::string value(length, 'v');
    const Sequence sequence = parsed("CN=" + value);
    EXPECT_EQ("/cn(12)=" + value, text_of(sequence));
  }
}

TEST(NameTextOfPki, HasWhatTheOtherLibraryDoesNotWrite) {
  EXPECT_EQ("", text_of(decoded(hex("30 00"))));
  EXPECT_EQ("/cn(128)=x", text_of(decoded(common(128, text("x")))));
  EXPECT_EQ("/cn(223)=x", text_of(decoded(common(223, text("x")))));
  Sequence sequence = parsed("CN=x");
  for (const int32_t tag : {100, 255, 256, INT32_MAX, -10, INT32_MIN}) {
    only(sequence)->valueTag = tag;
    EXPECT_EQ("/cn(" + std::to_string(tag) + ")=x", text_of(sequence));
  }
  EXPECT_EQ("/1.2.4294967295(12)=x", text_of(parsed("1.2.4294967295=x")));
  EXPECT_EQ("/1.2.2147483648(12)=x", text_of(parsed("1.2.2147483648=x")));
  EXPECT_EQ("/2.25.340282366920938463463374607431768211455(5)=",
            text_of(parsed("2.25.340282366920938463463374607431768211455=#0500")));
  // The identifier is written twice, once to measure.
  const std::string value(600, 'v');
  EXPECT_EQ("/2.25.340282366920938463463374607431768211455(12)=" + value,
            text_of(parsed("2.25.340282366920938463463374607431768211455=" + value)));
}

// ---------------------------------------------------------------------------------------------
// Size and memory
// ---------------------------------------------------------------------------------------------

TEST(Rfc4514, ManyRdnsTakeLinearTime) {
  std::string string = "CN=a";
  for (int i = 0; i < 100'000; ++i) string += i % 2 == 0 ? ",O=b" : "+1.2.3=#0500";
  const Sequence sequence = parsed(string);
  EXPECT_EQ(50'001, List_len(sequence.get()));
  EXPECT_EQ(string, string_of(sequence));
  const MaybeText text = text_of(sequence);
  ASSERT_TRUE(text.has_value());
  EXPECT_EQ("/cn(12)=a", text->substr(text->size() - 9));
}

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(Rfc4514, FailsAtEachAllocation) {
  const std::string string =
      "CN=a\\,b+2.25.340282366920938463463374607431768211455=#0500,C=DE,O=,"
      "L=" +
      std::string(600, 'v') + ",OU=1,OU=2,OU=3,DC=x";
  EXPECT_EQ(2, support::expect_failure_at_each_allocation([] { return parsed("") != nullptr; }));
  EXPECT_LT(30,
            support::expect_failure_at_each_allocation([&] { return parsed(string) != nullptr; }));
  const Sequence sequence = parsed(string);
  EXPECT_LT(3, support::expect_failure_at_each_allocation([&] {
              const Text text(pki_name_rfc4514(sequence.get()));
              return text != nullptr;
            }));
  EXPECT_LT(3, support::expect_failure_at_each_allocation([&] {
              const Text text(pki_RDNSequence_text(sequence.get()));
              return text != nullptr;
            }));
  const Sequence empty = parsed("");
  EXPECT_EQ(1, support::expect_failure_at_each_allocation([&] {
              const Text text(pki_RDNSequence_text(empty.get()));
              return text != nullptr;
            }));
}

TEST(Rfc4514, FailsWhereTheFirstTypeOrALongElementHasNoMemory) {
  std::string string = "2.5.4.3=#0C46";
  for (int i = 0; i < 70; ++i) string += "61";
  EXPECT_LT(5,
            support::expect_failure_at_each_allocation([&] { return parsed(string) != nullptr; }));
}

#endif

}  // namespace

}  // namespace rfc4514_test
