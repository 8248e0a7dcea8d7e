// Tests the signed public key and challenge of browser key enrolment.
#include "records.h"

namespace spkac_test {

namespace {

using namespace support;

constexpr RecordFamily<PublicKeyAndChallenge> challenges = {
    asn1_PublicKeyAndChallenge_new, asn1_PublicKeyAndChallenge_free, asn1_PublicKeyAndChallenge_e,
    asn1_PublicKeyAndChallenge_d, asn1_PublicKeyAndChallenge_clone};
constexpr RecordFamily<SignedPublicKeyAndChallenge> signed_challenges = {
    asn1_SignedPublicKeyAndChallenge_new, asn1_SignedPublicKeyAndChallenge_free,
    asn1_SignedPublicKeyAndChallenge_e, asn1_SignedPublicKeyAndChallenge_d,
    asn1_SignedPublicKeyAndChallenge_clone};

const Bytes rsa = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 01 05 00");
const Bytes key = sequence(rsa + hex("03 03 00 AB CD"));
const Bytes challenge = hex("16 02 68 69");
const Bytes inner_content = key + challenge;
const Bytes inner = sequence(inner_content);
const Bytes algorithm = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00");
const Bytes signature = hex("03 03 00 C0 01");
const Bytes outer_content = inner + algorithm + signature;
const Bytes outer = sequence(outer_content);

// ----------------------------------------------------------------------------- PublicKeyAndChallenge

TEST(KeyAndChallenge, IsAKeyAndAString) {
  const auto record = decoded(challenges, inner);
  EXPECT_EQ(key, encode(asn1_SubjectPKI_e, record->spki));
  EXPECT_EQ(text("hi"), value(record->challenge));
  EXPECT_EQ(inner, encoded(challenges, record));

  expect_new_record_is_zero(challenges);
  expect_sequence_of_definite_length(challenges, inner_content);
  expect_every_cut_refused(challenges, inner_content);
  expect_huge_lengths_refused(challenges, inner_content);
  for (const Bytes &content : {challenge, key, challenge + key, key + hex("0C 02 68 69"),
                               hex("30 00") + challenge, key + hex("16 84 80 00 00 00")}) {
    expect_refused(challenges, sequence(content));
  }
}

TEST(KeyAndChallenge, TakesAnyChallenge) {
  const struct {
    const char *read;
    const char *written;
  } rows[] = {{"16 00", "16 00"},
              {"16 03 00 FF 80", "16 03 00 FF 80"},
              {"36 06 16 01 68 16 01 69", "16 02 68 69"},
              {"36 80 16 01 68 16 01 69 00 00", "16 02 68 69"}};
  for (const auto &row : rows) {
    const auto record = decoded(challenges, sequence(key + hex(row.read)));
    EXPECT_EQ(sequence(key + hex(row.written)), encoded(challenges, record)) << row.read;
  }
}

TEST(KeyAndChallenge, IsNotEncodedWhenAFieldFails) {
  const auto without_challenge = decoded(challenges, inner);
  clear(without_challenge->challenge, asn1_IA5String_free);
  expect_nothing_written(challenges, without_challenge.get());

  const auto without_bits = decoded(challenges, inner);
  clear(without_bits->spki->subjectPublicKey, asn1_BitString_free);
  expect_nothing_written(challenges, without_bits.get());
}

TEST(KeyAndChallenge, IsClonedDeeplyAndHalfFilled) {
  expect_deep_clone(challenges, inner);
  const auto half = created(challenges);
  half->challenge = asn1_IA5String_new(1);
  const auto copy = cloned(challenges, half);
  EXPECT_EQ(nullptr, copy->spki);
  EXPECT_EQ(hex("00"), value(copy->challenge));
}

// ----------------------------------------------------------------------- SignedPublicKeyAndChallenge

/// Returns the record of `outer`, with its stored octets cleared.
Held<SignedPublicKeyAndChallenge> cleared(const Bytes &octets = outer) {
  auto record = decoded(signed_challenges, octets);
  clear(record->tbsEncoded, asn1_OctetString_free);
  return record;
}

TEST(SignedChallenge, HoldsWhatEachFieldSays) {
  const auto record = decoded(signed_challenges, outer);
  EXPECT_EQ(text("hi"), value(record->publicKeyAndChallenge->challenge));
  EXPECT_EQ(algorithm, encode(asn1_AlgId_e, record->signatureAlgorithm));
  EXPECT_EQ(16U, record->signature->length);
  EXPECT_EQ(hex("C0 01"), value(record->signature));
}

TEST(SignedChallenge, KeepsTheSignedElementAsItCame) {
  EXPECT_EQ(inner, value(decoded(signed_challenges, outer)->tbsEncoded));

  const Bytes long_form =
      hex("30 82 00") + Bytes{static_cast<uint8_t>(inner_content.size())} + inner_content;
  const auto record = decoded(signed_challenges, sequence(long_form + algorithm + signature));
  EXPECT_EQ(long_form, value(record->tbsEncoded));
}

TEST(SignedChallenge, KeepsOnlyWhatWasReadOfTheSignedElement) {
  // Algorithm and signature are inside the signed element, after its last field.
  const Bytes octets = sequence(sequence(inner_content + algorithm + signature));
  const auto record = decoded(signed_challenges, octets);
  const auto rest = static_cast<std::ptrdiff_t>(algorithm.size() + signature.size());
  EXPECT_EQ(Bytes(octets.begin() + 2, octets.end() - rest), value(record->tbsEncoded));
  expect_refused(signed_challenges,
                 sequence(sequence(inner_content + hex("05 00")) + algorithm + signature));
}

TEST(SignedChallenge, IsASequenceOfDefiniteLength) {
  expect_new_record_is_zero(signed_challenges);
  expect_sequence_of_definite_length(signed_challenges, outer_content);
  expect_every_cut_refused(signed_challenges, outer_content);
  expect_huge_lengths_refused(signed_challenges, outer_content);
}

TEST(SignedChallenge, IsRefusedWithABadField) {
  for (const Bytes &content :
       {inner + signature, inner + signature + algorithm, algorithm + signature,
        inner + algorithm + hex("03 02 08 AB"), inner + algorithm + hex("03 00"),
        inner + algorithm + hex("04 01 AB"), sequence(key) + algorithm + signature,
        element(0x31, inner_content) + algorithm + signature,
        hex("30 80") + inner_content + hex("00 00") + algorithm + signature}) {
    expect_refused(signed_challenges, sequence(content));
  }
}

TEST(SignedChallenge, MeasuresToTheLengthOfItsInput) {
  const auto record = decoded(signed_challenges, outer);
  EXPECT_EQ(outer.size(), asn1_SignedPublicKeyAndChallenge_e(nullptr, record.get()));
}

TEST(SignedChallenge, MeasuresItsStoredOctetsWhateverTheyAre) {
  const auto record = decoded(signed_challenges, outer);
  clear(record->tbsEncoded, asn1_OctetString_free);
  record->tbsEncoded = asn1_OctetString_new(100);
  clear(record->publicKeyAndChallenge, asn1_PublicKeyAndChallenge_free);
  // A header of two octets: 100 and 20 octets of content are 120.
  EXPECT_EQ(122U, asn1_SignedPublicKeyAndChallenge_e(nullptr, record.get()));
}

TEST(SignedChallenge, IsNotMeasuredWithStoredOctetsThatAreNone) {
  const auto record = cleared();
  record->tbsEncoded = asn1_OctetString_new(0);
  expect_nothing_written(signed_challenges, record.get());
}

TEST(SignedChallenge, WithStoredOctetsGivesZeroAndWritesNothing) {
  const auto record = decoded(signed_challenges, outer);
  // The cursor has neighbours, which must not change, either.
  uint8_t buffer[256] = {};
  uint8_t *cursors[8];
  std::fill(std::begin(cursors), std::end(cursors), buffer + 7);
  EXPECT_EQ(0U, asn1_SignedPublicKeyAndChallenge_e(&cursors[0], record.get()));
  EXPECT_EQ(8, std::count(std::begin(cursors), std::end(cursors), buffer + 7));
  EXPECT_EQ(Bytes(sizeof buffer, 0), Bytes(std::begin(buffer), std::end(buffer)));
}

TEST(SignedChallenge, ClearedOfItsStoredOctetsIsWrittenAnew) {
  EXPECT_EQ(outer, encoded(signed_challenges, cleared()));

  const auto record = cleared();
  clear(record->publicKeyAndChallenge->challenge, asn1_IA5String_free);
  record->publicKeyAndChallenge->challenge = asn1_ASN1String_new(0, "x");
  EXPECT_EQ(sequence(sequence(key + hex("16 01 78")) + algorithm + signature),
            encoded(signed_challenges, record));

  // A form that is not DER is written as DER.
  const Bytes long_form =
      hex("30 82 00") + Bytes{static_cast<uint8_t>(inner_content.size())} + inner_content;
  EXPECT_EQ(outer,
            encoded(signed_challenges, cleared(sequence(long_form + algorithm + signature))));
}

TEST(SignedChallenge, MadeByHandIsWritten) {
  const auto record = created(signed_challenges);
  record->publicKeyAndChallenge = decode(asn1_PublicKeyAndChallenge_d, inner).record;
  record->signatureAlgorithm = decode(asn1_AlgId_d, algorithm).record;
  record->signature = decode(asn1_BitString_d, signature).record;
  EXPECT_EQ(outer, encoded(signed_challenges, record));
}

TEST(SignedChallenge, LosesZeroBitsAtTheEndOfItsSignature) {
  const struct {
    const char *read;
    const char *written;
  } rows[] = {{"03 03 00 C0 00", "03 02 06 C0"}, {"03 03 00 C0 10", "03 03 04 C0 10"}};
  for (const auto &row : rows) {
    const Bytes octets = sequence(inner + algorithm + hex(row.read));
    const Bytes written = sequence(inner + algorithm + hex(row.written));
    EXPECT_EQ(written, encoded(signed_challenges, cleared(octets))) << row.read;
    EXPECT_EQ(written.size(),
              asn1_SignedPublicKeyAndChallenge_e(nullptr, decoded(signed_challenges, octets).get()))
        << row.read;
  }
}

TEST(SignedChallenge, IsNotEncodedWhenAFieldFails) {
  const auto record = cleared();
  clear(record->signature, asn1_BitString_free);
  expect_nothing_written(signed_challenges, record.get());

  // It fails before the algorithm, which would end the process.
  clear(record->signatureAlgorithm, asn1_AlgId_free);
  clear(record->publicKeyAndChallenge->challenge, asn1_IA5String_free);
  expect_nothing_written(signed_challenges, record.get());
}

TEST(SignedChallenge, IsClonedWithItsOwnStoredOctets) {
  EXPECT_EQ(nullptr, asn1_SignedPublicKeyAndChallenge_clone(nullptr));
  auto record = decoded(signed_challenges, outer);
  const auto copy = cloned(signed_challenges, record);
  EXPECT_NE(record->tbsEncoded, copy->tbsEncoded);
  record.reset();
  EXPECT_EQ(inner, value(copy->tbsEncoded));
  clear(copy->tbsEncoded, asn1_OctetString_free);
  EXPECT_EQ(outer, encoded(signed_challenges, copy));
}

TEST(SignedChallenge, IsClonedHalfFilled) {
  const auto empty = cloned(signed_challenges, created(signed_challenges));
  EXPECT_EQ(nullptr, empty->publicKeyAndChallenge);
  EXPECT_EQ(nullptr, empty->tbsEncoded);

  const auto half = created(signed_challenges);
  half->tbsEncoded = asn1_OctetString_new(2);
  const auto copy = cloned(signed_challenges, half);
  EXPECT_EQ(nullptr, copy->publicKeyAndChallenge);
  EXPECT_EQ(hex("00 00"), value(copy->tbsEncoded));
  EXPECT_EQ(nullptr, copy->signature);
}

TEST(PeerSignedChallenge, OfOpensslIsReadAndWrittenBack) {
  const Bytes signed_part =
      hex("3065305c300d06092a864886f70d0101010500034b003048024100b349589512ed9149eec3ad98e81b7ffa"
          "121de2c6c3c5abd6f9e454fc00ec525ae146af3bfe4b863742035340a0914d7f71381809ab3500f32bf03c"
          "fece8d10f50203010001160568656c6c6f");
  // The signature ends in DA: the peer writes no unused bit, this encoder one.
  const Bytes start = hex("300d06092a864886f70d01010405000341");
  const Bytes bits =
      hex("832c406e6ff864f190884cad2170bbf03d35a4b2f3e8514f3a4d722130033097e30699e575860de8296372"
          "cf65ba0cd84f23288637c4d6585689088a955baeda");
  const Bytes octets = sequence(signed_part + start + hex("00") + bits);
  EXPECT_EQ(188U, octets.size());

  const auto record = decoded(signed_challenges, octets);
  EXPECT_EQ(signed_part, value(record->tbsEncoded));
  EXPECT_EQ(text("hello"), value(record->publicKeyAndChallenge->challenge));
  EXPECT_EQ(bits, value(record->signature));
  EXPECT_EQ(188U, asn1_SignedPublicKeyAndChallenge_e(nullptr, record.get()));

  clear(record->tbsEncoded, asn1_OctetString_free);
  EXPECT_EQ(sequence(signed_part + start + hex("01") + bits), encoded(signed_challenges, record));
}

// --------------------------------------------------------------------------------------------- trace

TEST(SignedChallengeTrace, ShowsEveryField) {
  const Lines expected = {
      "SEQUENCE {",
      ". SEQUENCE {",
      ". . SEQUENCE {",
      ". . . SEQUENCE {",
      ". . . . OBJECT IDENTIFIER ",
      ". . . .   1.2.840.113549.1.1.1",
      ". . . . [ANY]",
      ". . . . " + dump("05 00 ", ".."),
      ". . . }",
      ". . . BITSTRING",
      ". . .   (0 unused bits)",
      ". . . " + dump("AB CD ", ".."),
      ". . }",
      ". . IA5STRING ",
      ". . " + dump("68 69 ", "hi"),
      ". }",
      ". SEQUENCE {",
      ". . OBJECT IDENTIFIER ",
      ". .   1.2.840.113549.1.1.11",
      ". . [ANY]",
      ". . " + dump("05 00 ", ".."),
      ". }",
      ". BITSTRING",
      ".   (0 unused bits)",
      ". " + dump("C0 01 ", ".."),
      "}",
  };
  EXPECT_EQ(expected, traced(signed_challenges, outer));
  EXPECT_EQ(Lines{}, traced(signed_challenges, outer, 0));
}

// ------------------------------------------------------------------------------- ends of the process

TEST(SignedChallengeDeathTest, EncodersEndTheProcessWithoutARecord) {
  expect_encoder_ends_the_process(challenges, nullptr);
  expect_encoder_ends_the_process(signed_challenges, nullptr);
}

TEST(SignedChallengeDeathTest, EncodersEndTheProcessWithoutARequiredRecord) {
  expect_encoder_ends_the_process(challenges, created(challenges).get());
  expect_encoder_ends_the_process(signed_challenges, created(signed_challenges).get());
  const auto record = cleared();
  clear(record->signatureAlgorithm, asn1_AlgId_free);
  expect_encoder_ends_the_process(signed_challenges, record.get());
}

TEST(SignedChallengeDeathTest, DecodersAssertTheirCursors) {
  expect_decoder_asserts_its_cursors(challenges);
  expect_decoder_asserts_its_cursors(signed_challenges);
}

// --------------------------------------------------------------------------------- exhausted memory

TEST(SignedChallengeMemory, EachFailingAllocationIsAFailure) {
  expect_exhausted_memory_to_fail(challenges, inner);
  expect_exhausted_memory_to_fail(signed_challenges, outer);
}

}  // namespace

}  // namespace spkac_test
