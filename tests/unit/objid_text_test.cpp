// Tests object identifiers as texts, with arcs of any size.
//
// The content octets of the table were written by a peer, openssl 3.0:
//
//   openssl asn1parse -genstr OID:2.999.3 -noout -out /dev/stdout | xxd -p
#include <orvelpki.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>

#include "allocator.h"
#include "support.h"

namespace objid_text_test {

namespace {

using support::Bytes;
using support::decode;
using support::element;
using support::hex;

using Identifier = support::Owned<ObjId, asn1_ObjId_free>;
using Text = support::Owned<char, std::free>;
using MaybeText = std::optional<std::string>;
using Words = std::vector<uint32_t>;

MaybeText text_of(const ObjId *oid) {
  const Text text(pki_ObjId_text(oid));
  return text != nullptr ? MaybeText(text.get()) : std::nullopt;
}

MaybeText text_of(Words words) {
  const ObjId oid = {static_cast<uint32_t>(words.size()), words.data()};
  return text_of(&oid);
}

/// Returns the words of a record that holds these content octets.
Words large(Bytes octets) {
  Words words = {PKI_LARGE_ARCS, static_cast<uint32_t>(octets.size())};
  while (octets.size() % 4 != 0) octets.push_back(0);
  for (size_t i = 0; i < octets.size(); i += 4) {
    words.push_back(uint32_t{octets[i]} << 24 | uint32_t{octets[i + 1]} << 16 |
                    uint32_t{octets[i + 2]} << 8 | octets[i + 3]);
  }
  return words;
}

/// Returns the words of the record of a text; none where the text is refused.
Words parsed(const std::string &text) {
  const Identifier oid(pki_ObjId_parse(text.c_str()));
  return oid != nullptr ? Words(oid->arcs, oid->arcs + oid->count) : Words();
}

void expect_same_both_ways(const std::string &text, const Words &words) {
  EXPECT_EQ(text, text_of(words));
  EXPECT_EQ(words, parsed(text)) << text;
}

TEST(ObjIdText, ArcsOf32BitsAreTheOrdinaryRecord) {
  const std::pair<const char *, Words> rows[] = {
      {"0.0", {0, 0}},
      {"0.39", {0, 39}},
      {"1.0", {1, 0}},
      {"1.39", {1, 39}},
      {"2.0", {2, 0}},
      {"2.40", {2, 40}},
      {"2.5.4.3", {2, 5, 4, 3}},
      {"2.999.3", {2, 999, 3}},
      {"1.2.840.113549.1.9.1", {1, 2, 840, 113549, 1, 9, 1}},
      {"1.2.0.10.100", {1, 2, 0, 10, 100}},
      {"1.2.2147483647", {1, 2, 0x7FFFFFFF}},
      {"1.2.2147483648", {1, 2, 0x80000000}},  // arcs have no sign
      {"1.2.4294967295", {1, 2, 0xFFFFFFFF}},
      {"2.4294967215", {2, 4294967215}},  // 2^32 - 1 on the wire
      {"2.4294967295.1", {2, 0xFFFFFFFF, 1}},
      {"0.1.4294967295.4294967295", {0, 1, PKI_LARGE_ARCS, PKI_LARGE_ARCS}},
  };
  for (const auto &[text, words] : rows) expect_same_both_ways(text, words);
}

TEST(ObjIdText, LargerArcsAreContentOctets) {
  const std::pair<const char *, const char *> rows[] = {
      {"2.4294967296", "90 80 80 80 50"},
      {"1.2.4294967296", "2A 90 80 80 80 00"},
      {"0.39.18446744073709551615", "27 81 FF FF FF FF FF FF FF FF 7F"},
      {"2.25.340282366920938463463374607431768211455",
       "69 83 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF 7F"},
      {"2.340282366920938463463374607431768211455.4294967296",
       "84 80 80 80 80 80 80 80 80 80 80 80 80 80 80 80 80 80 4F 90 80 80 80 00"},
      // By hand: 2^70 is a one and ten groups of seven zeros. 80 less for the second arc.
      {"1.3.1180591620717411303424.0", "2B 81 80 80 80 80 80 80 80 80 80 00 00"},
      {"2.1180591620717411303344", "81 80 80 80 80 80 80 80 80 80 00"},
      {"2.1180591620717411303343.127", "FF FF FF FF FF FF FF FF FF 7F 7F"},
  };
  for (const auto &[text, octets] : rows) expect_same_both_ways(text, large(hex(octets)));
}

TEST(ObjIdText, ZerosInsideAnArcAreWritten) {
  const std::string text = "1.2.1000000000000000000000000000";
  const Words words = large(hex("2A B3 D9 B8 F9 9F E8 A0 87 CE C0 80 80 00"));
  expect_same_both_ways(text, words);
  // 10^9, the smallest number of two groups of nine digits, beside an arc that is larger.
  expect_same_both_ways("1.2.1000000000.4294967296",
                        large(hex("2A 83 DC EB 94 00 90 80 80 80 00")));
}

TEST(ObjIdText, EveryLengthOfAnArcComesBack) {
  for (size_t octets = 5; octets < 200; ++octets) {
    for (const uint8_t last : Bytes{0x00, 0x01, 0x7F}) {
      for (const uint8_t middle : Bytes{0x80, 0xAA, 0xFF}) {
        Bytes content = {0x2A, 0x90};
        content.insert(content.end(), octets - 2, middle);
        content.push_back(last);
        const Words words = large(content);
        const MaybeText text = text_of(words);
        ASSERT_TRUE(text.has_value());
        EXPECT_EQ(words, parsed(*text)) << *text;
      }
    }
  }
  // Decimal numbers of every length, and the carry out of a number of nines into the next digit.
  for (size_t digits = 1; digits < 200; ++digits) {
    for (const std::string &number :
         {std::string(digits, '9'), "1" + std::string(digits - 1, '0'), std::string(digits, '7')}) {
      for (const std::string &text : {"1.2." + number, "2." + number + ".5"}) {
        const Identifier oid(pki_ObjId_parse(text.c_str()));
        EXPECT_EQ(text, text_of(oid.get()));
      }
    }
  }
}

TEST(ObjIdText, AnIdentifierOfTheOtherLibraryHasItsOwnText) {
  // asn1_ObjId_d makes {26, 39, 3} of 2.999.3.
  const auto decoded = decode(asn1_ObjId_d, element(6, hex("88 37 03")));
  const Identifier oid(decoded.record);
  ASSERT_NE(nullptr, oid);
  EXPECT_EQ(26U, oid->arcs[0]);
  EXPECT_EQ("2.999.3", text_of(oid.get()));
  EXPECT_EQ("2.40", text_of({3, 0}));
  // The largest that it reads: 2^32 - 1 on the wire.
  const auto largest = decode(asn1_ObjId_d, element(6, hex("8F FF FF FF 7F")));
  EXPECT_EQ("2.4294967215", text_of(Identifier(largest.record).get()));
}

TEST(ObjIdText, WhatIsNoIdentifierHasNoText) {
  EXPECT_EQ(std::nullopt, text_of(nullptr));
  const ObjId without_arcs = {2, nullptr};
  EXPECT_EQ(std::nullopt, text_of(&without_arcs));
  const Words refused[] = {{},
                           {1},
                           {PKI_LARGE_ARCS},
                           {0, 40},
                           {1, 40},
                           {1, 0xFFFFFFFF},
                           {3, 40},
                           {0xFFFFFFFE, 40},
                           {PKI_LARGE_ARCS, 0},
                           {PKI_LARGE_ARCS, 0, 0},
                           {PKI_LARGE_ARCS, 1},
                           {PKI_LARGE_ARCS, 5, 0x90808080},
                           {PKI_LARGE_ARCS, 4, 0x90808000, 0},
                           {PKI_LARGE_ARCS, 0xFFFFFFFF, 0x90808000},
                           {PKI_LARGE_ARCS, 0xFFFFFFFD, 0x90808000},
                           {PKI_LARGE_ARCS, 5, 0x90808080, 0x50000001},  // not filled with zeros
                           {PKI_LARGE_ARCS, 5, 0x90808080, 0x50010000},
                           {PKI_LARGE_ARCS, 5, 0x90808080, 0x80000000},  // the last goes on
                           {PKI_LARGE_ARCS, 5, 0x80908080, 0x00000000},  // begins with 80
                           {PKI_LARGE_ARCS, 8, 0x2A809080, 0x80808000}};
  for (const Words &words : refused) EXPECT_EQ(std::nullopt, text_of(words));
  EXPECT_EQ("2.4294967296", text_of({PKI_LARGE_ARCS, 5, 0x90808080, 0x50000000}));
}

TEST(ObjIdParse, RefusesEverythingElse) {
  const char *const refused[] = {
      "",
      ".",
      "1",
      "1.",
      ".1",
      "1..2",
      "1.2.",
      "1.2..3",
      " 1.2",
      "1.2 ",
      "1 .2",
      "1. 2",
      "+1.2",
      "1.+2",
      "1.-2",
      "-1.2",
      "01.2",
      "1.02",
      "1.00",
      "1.2.007",
      "0x1.2",
      "3.1",
      "10.1",
      "0.40",
      "1.40",
      "1.100",
      "1.4294967296",
      "0.4294967296",
      "4294967296.1",
      "4294967298.1",
      "1.2a",
      "a1.2",
      "1,2",
      "1.2\n",
      "1.2.18446744073709551616.x",
      "1.2.018446744073709551616",
      "\xB1.2",
      "2.5.4.3=",
  };
  for (const char *text : refused) EXPECT_EQ(Words(), parsed(text)) << text;
  EXPECT_EQ(nullptr, pki_ObjId_parse(nullptr));
}

TEST(ObjIdText, TheOrdinaryFunctionsTakeLargeArcs) {
  const Identifier a(pki_ObjId_parse("2.25.340282366920938463463374607431768211455"));
  const Identifier b(pki_ObjId_parse("2.25.340282366920938463463374607431768211454"));
  ASSERT_NE(nullptr, a);
  ASSERT_NE(nullptr, b);
  const Identifier copy(asn1_ObjId_clone(a.get()));
  EXPECT_EQ(0, asn1_ObjId_cmp(a.get(), copy.get()));
  EXPECT_NE(0, asn1_ObjId_cmp(a.get(), b.get()));
  EXPECT_EQ("2.25.340282366920938463463374607431768211455", text_of(copy.get()));
}

TEST(ObjIdText, AnArcOfTenThousandOctetsHasItsDigits) {
  Bytes content(10'000, 0x80);
  content.insert(content.begin(), {0x2A, 0x81});
  content.push_back(0);
  const MaybeText text = text_of(large(content));
  ASSERT_TRUE(text.has_value());
  // 2^70007 has 1 + floor(70007 * log10(2)) digits, and ends as 2^7 does: 70007 = 7 modulo 20.
  EXPECT_EQ(4 + 21'075U, text->size());
  EXPECT_EQ("28", text->substr(text->size() - 2));
  EXPECT_EQ(large(content), parsed(*text));
}

// The first number is what the root arc alone makes of it.
TEST(ObjIdText, HasAZeroAfterEachRootArc) {
  for (const char *const name : {"0.0.4294967296", "1.0.4294967296", "2.0.4294967296"}) {
    EXPECT_EQ(name, text_of(parsed(name)));
  }
}

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(ObjIdText, FailsAtEachAllocation) {
  for (const char *name :
       {"2.5.4.3", "2.25.340282366920938463463374607431768211455.1",
        "1.2.3.4.5.6.7.8.9.1000000000.1000000000.1000000000.1000000000.1000000000"
        ".100000000000"}) {
    EXPECT_LT(1, support::expect_failure_at_each_allocation([name] {
                const Identifier oid(pki_ObjId_parse(name));
                return oid != nullptr;
              }));
    const Identifier oid(pki_ObjId_parse(name));
    EXPECT_LT(0, support::expect_failure_at_each_allocation([&oid] {
                const Text text(pki_ObjId_text(oid.get()));
                return text != nullptr;
              }));
  }
}

#endif

}  // namespace

}  // namespace objid_text_test
