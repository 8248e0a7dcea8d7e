// Tests the two flat records of a smart card.
#include "records.h"

namespace card_test {

namespace {

using namespace support;

constexpr RecordFamily<CardInfo> card_infos = {asn1_CardInfo_new, asn1_CardInfo_free,
                                               asn1_CardInfo_e, asn1_CardInfo_d, nullptr};
constexpr RecordFamily<PublicKeyMAC> macs = {asn1_PublicKeyMAC_new, asn1_PublicKeyMAC_free,
                                             asn1_PublicKeyMAC_e, asn1_PublicKeyMAC_d,
                                             asn1_PublicKeyMAC_clone};

constexpr OctetString *CardInfo::*const fields[] = {&CardInfo::octets1, &CardInfo::octets2,
                                                    &CardInfo::octets3, &CardInfo::octets4,
                                                    &CardInfo::octets5, &CardInfo::octets6};

const Bytes card_content = hex("04 01 01 04 01 02 04 01 03 04 01 04 04 01 05 04 01 06");
const Bytes mac_content = hex("04 02 AB CD 04 01 EF");

TEST(CardInfo, IsSixStringsInOrder) {
  const auto record = decoded(card_infos, sequence(card_content));
  uint8_t expected = 0;
  for (const auto field : fields) EXPECT_EQ(Bytes{++expected}, value((*record).*field));
  EXPECT_EQ(sequence(card_content), encoded(card_infos, record));
}

TEST(CardInfo, IsASequenceOfDefiniteLength) {
  expect_new_record_is_zero(card_infos);
  expect_sequence_of_definite_length(card_infos, card_content);
  expect_huge_lengths_refused(card_infos, card_content);
}

TEST(CardInfo, IsRefusedAtEveryCutAndSoWithFiveStrings) {
  expect_every_cut_refused(card_infos, card_content);
  expect_refused(card_infos, hex("30 0A 04 00 04 00 04 00 04 00 04 00"));
  // The sixth field must be inside the SEQUENCE.
  expect_refused(card_infos, hex("30 0A 04 00 04 00 04 00 04 00 04 00 04 00"));
}

TEST(CardInfo, OfSixEmptyStringsHasTwelveOctets) {
  const Bytes empty = hex("30 0C 04 00 04 00 04 00 04 00 04 00 04 00");
  const auto made = created(card_infos);
  for (const auto field : fields) (*made).*field = asn1_OctetString_new(0);
  EXPECT_EQ(empty, encoded(card_infos, made));

  const auto record = decoded(card_infos, empty);
  for (const auto field : fields) {
    ASSERT_NE(nullptr, (*record).*field);
    EXPECT_EQ(0U, ((*record).*field)->length);
    EXPECT_EQ(nullptr, ((*record).*field)->data);
  }
}

TEST(CardInfo, IsNotEncodedWithoutAnyOfItsStrings) {
  for (const auto field : fields) {
    const auto record = decoded(card_infos, sequence(card_content));
    clear((*record).*field, asn1_OctetString_free);
    expect_nothing_written(card_infos, record.get());
  }
}

TEST(CardInfo, HasNothingButOctetStrings) {
  for (const char *other : {"02 01 05", "05 00", "30 00", "84 01 05", "03 02 00 05"}) {
    for (size_t place = 0; place < 6; ++place) {
      Bytes content;
      for (size_t i = 0; i < 6; ++i) content = content + hex(i == place ? other : "04 00");
      SCOPED_TRACE(other);
      expect_refused(card_infos, sequence(content));
    }
  }
}

TEST(CardInfo, JoinsStringsInSegments) {
  // An indefinite length ends at its end-of-contents, wherever that is.
  const auto record =
      decoded(card_infos, sequence(hex("24 03 04 01 01") + hex("24 80 04 01 02 00 00") +
                                   hex("04 80 03 00 00") + hex("24 05 24 03 04 01 04") +
                                   hex("24 08 04 00 24 80 04 00 00 00") + hex("04 01 06")));
  EXPECT_EQ(sequence(hex("04 01 01 04 01 02 04 01 03 04 01 04 04 00 04 01 06")),
            encoded(card_infos, record));
}

TEST(CardInfo, FailsWithALengthThatItsStringsCannotHave) {
  for (const char *bad : {"04 84 80 00 00 00", "04 84 FF FF FF FF", "04 85", "04 02 01"}) {
    SCOPED_TRACE(bad);
    expect_refused(card_infos, sequence(hex("04 00 04 00 04 00 04 00 04 00") + hex(bad)));
  }
}

TEST(CardInfo, IsReleasedHalfFilled) {
  for (const auto field : fields) (*created(card_infos)).*field = asn1_OctetString_new(3);
  asn1_CardInfo_free(nullptr);
}

// -------------------------------------------------------------------------------------- PublicKeyMAC

TEST(PublicKeyMac, IsTwoStringsInOrder) {
  const auto record = decoded(macs, sequence(mac_content));
  EXPECT_EQ(hex("AB CD"), value(record->octets1));
  EXPECT_EQ(hex("EF"), value(record->octets2));
  EXPECT_EQ(sequence(mac_content), encoded(macs, record));

  expect_new_record_is_zero(macs);
  expect_sequence_of_definite_length(macs, mac_content);
  expect_every_cut_refused(macs, mac_content);
  expect_huge_lengths_refused(macs, mac_content);
}

TEST(PublicKeyMac, LeavesAnExtraElementUnread) {
  for (const char *extra : {"04 01 05", "05 00", "00"}) {
    const auto record = decoded(macs, sequence(mac_content + hex(extra)), hex(extra).size());
    EXPECT_EQ(sequence(mac_content), encoded(macs, record)) << extra;
  }
}

TEST(PublicKeyMac, IsNotEncodedWithoutBothStrings) {
  for (OctetString *PublicKeyMAC::*field : {&PublicKeyMAC::octets1, &PublicKeyMAC::octets2}) {
    const auto record = decoded(macs, sequence(mac_content));
    clear((*record).*field, asn1_OctetString_free);
    expect_nothing_written(macs, record.get());
  }
}

TEST(PublicKeyMac, IsClonedDeeplyAndHalfFilled) {
  expect_deep_clone(macs, sequence(mac_content));
  // A copy whose fields are all NULL cannot be encoded, either.
  const auto empty = cloned(macs, created(macs));
  ASSERT_NE(nullptr, empty);
  expect_nothing_written(macs, empty.get());

  const auto half = created(macs);
  half->octets2 = asn1_OctetString_new(1);
  const auto copy = cloned(macs, half);
  EXPECT_EQ(nullptr, copy->octets1);
  EXPECT_NE(half->octets2, copy->octets2);
  EXPECT_EQ(hex("00"), value(copy->octets2));
}

// --------------------------------------------------------------------------------------------- trace

TEST(CardTrace, ShowsEachString) {
  const Lines expected = {
      "SEQUENCE {", ". OCTETSTRING", ". " + dump("AB CD ", ".."), ". OCTETSTRING", "}",
  };
  EXPECT_EQ(expected, traced(macs, hex("30 06 04 02 AB CD 04 00")));
  EXPECT_EQ(Lines{}, traced(macs, sequence(mac_content), 0));
  EXPECT_EQ(14U, traced(card_infos, sequence(card_content)).size());
}

TEST(CardTrace, HasNoClosingLineWhereAStringIsMissing) {
  const Lines expected = {"SEQUENCE {", ". OCTETSTRING", ". " + dump("41 ", "A")};
  EXPECT_EQ(expected, traced(macs, hex("30 03 04 01 41")));
}

TEST(CardTrace, TellsOfAStringThatIsTooLong) {
  const Lines expected = {"SEQUENCE {", ". OCTETSTRING", ". z larger than end!"};
  EXPECT_EQ(expected, traced(macs, hex("30 03 04 02 41 04 00")));
}

// ------------------------------------------------------------------------------- ends of the process

TEST(CardDeathTest, EncodersEndTheProcessWithoutARecord) {
  expect_encoder_ends_the_process(card_infos, nullptr);
  expect_encoder_ends_the_process(macs, nullptr);
}

TEST(CardDeathTest, DecodersAssertTheirCursors) {
  expect_decoder_asserts_its_cursors(card_infos);
  expect_decoder_asserts_its_cursors(macs);
}

// --------------------------------------------------------------------------------- exhausted memory

TEST(CardMemory, EachFailingAllocationIsAFailure) {
  expect_exhausted_memory_to_fail(card_infos, sequence(card_content));
  expect_exhausted_memory_to_fail(macs, sequence(mac_content));
}

}  // namespace

}  // namespace card_test
