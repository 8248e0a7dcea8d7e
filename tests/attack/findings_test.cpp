// What runs of the fuzz targets came upon: inputs whose results surprise and are as documented.
#include <gtest/gtest.h>
#include <octets.h>

#include <algorithm>

#include "laws.h"

namespace findings_test {

namespace {

using support::Bytes;
using support::hex;

template <class Record>
Bytes encoded(uint32_t (*encode)(uint8_t **, const Record *), const Record *record) {
  Bytes out(encode(nullptr, record));
  uint8_t *cursor = out.data();
  encode(&cursor, record);
  return out;
}

Bytes octets_of(const ASN1String *string) { return {string->data, string->data + string->length}; }

// The arc 67 ends, A8 does not: the decoder of the identifier stops in front of A8, which begins the
// parameters then, with a needless octet in their length.
TEST(Findings, AnIdentifierThatDoesNotEndLeavesItsLastOctetToWhatFollows) {
  const Bytes input = hex("30 06 06 02 67 A8 81 00");
  AlgId *algorithm = nullptr;
  ASSERT_EQ(input.data() + input.size(),
            asn1_AlgId_d(input.data(), input.data() + input.size(), 0, &algorithm, 0));
  ASSERT_EQ(2U, algorithm->algorithm->count);
  EXPECT_EQ(2U, algorithm->algorithm->arcs[0]);
  EXPECT_EQ(23U, algorithm->algorithm->arcs[1]);
  EXPECT_EQ(hex("A8 81"), octets_of(algorithm->parameters));
  EXPECT_EQ(hex("30 05 06 01 67 A8 81"), encoded(asn1_AlgId_e, algorithm));
  asn1_AlgId_free(algorithm);
}

TEST(Findings, AConstructedValueIsJoinedUnderItsConstructedIdentifierAndNotReadAgain) {
  const Bytes input = hex("30 10 31 0E 30 0C 06 03 55 04 03 33 05 13 03 61 62 63");
  const Bytes joined = hex("30 0E 31 0C 30 0A 06 03 55 04 03 33 03 61 62 63");
  Name *name = nullptr;
  ASSERT_EQ(input.data() + input.size(),
            asn1_Name_d(input.data(), input.data() + input.size(), 0, &name, 0));
  EXPECT_STREQ("/cn(51)=abc", name);
  EXPECT_EQ(joined, encoded(asn1_Name_e, name));
  asn1_Name_free(name);
  name = nullptr;
  EXPECT_EQ(nullptr, asn1_Name_d(joined.data(), joined.data() + joined.size(), 0, &name, 0));
  EXPECT_EQ(nullptr, name);
}

TEST(Findings, AnArcAbove31BitsIsWrittenNegativeAndEndsTheCountingOfArcs) {
  uint32_t arcs[] = {1, 2, 0xFFFFFFFF, 5};
  const ObjId identifier{4, arcs};
  char text[16] = "";
  uint32_t size = sizeof text;
  ASSERT_EQ(0, asn1_ObjId_sprint(&identifier, text, &size));
  ASSERT_STREQ("1.2.-1.5", text);
  const char *cursor = text;
  ObjId *const read = asn1_ObjId_parse(&cursor);
  ASSERT_NE(nullptr, read);
  ASSERT_EQ(3U, read->count);
  EXPECT_EQ(0xFFFFFFFF, read->arcs[2]);
  EXPECT_STREQ(".5", cursor);
  asn1_ObjId_free(read);
}

// The laws know where the departures of the library begin, also where the input hides it.
TEST(Findings, AreNoBrokenLaws) {
  const struct {
    const char *family, *input;
  } found[] = {
      {"Signature", "30 0A 30 06 06 02 67 A8 81 00 23 00"},
      {"Name", "30 0D 31 07 30 05 06 01 2A 31 00 31 00 31 00"},
      {"Name", "30 10 31 0E 30 0C 06 03 55 04 03 33 05 13 03 61 62 63"},
      {"DistributionPointName",
       "80 17 A0 14 06 0A 2B 06 01 88 84 FF 01 81 00 A0 06 0C 84 00 00 00 00 81 00"},
      {"dotted identifier", "31 33 31 34 2E 2E 35 34 30 2E 2D 31 34 48 48 48 48 48 39"},
  };
  for (const auto &[name, input] : found) {
    const auto &all = attack::families();
    const auto family = std::ranges::find(all, std::string_view(name), &attack::Family::name);
    ASSERT_NE(all.end(), family) << name;
    EXPECT_EQ("", attack::broken_law(*family, hex(input))) << name << ": " << input;
  }
}

}  // namespace

}  // namespace findings_test
