// Tests RSA keys, digests and private keys.
#include "records.h"

namespace pkcs1_pkcs8_test {

namespace {

using namespace support;

constexpr RecordFamily<DigestInfo> digests = {asn1_DigestInfo_new, asn1_DigestInfo_free,
                                              asn1_DigestInfo_e, asn1_DigestInfo_d,
                                              asn1_DigestInfo_clone};
constexpr RecordFamily<RSAPublicKey> public_keys = {asn1_RSAPublicKey_new, asn1_RSAPublicKey_free,
                                                    asn1_RSAPublicKey_e, asn1_RSAPublicKey_d,
                                                    asn1_RSAPublicKey_clone};
constexpr RecordFamily<RSAPrivateKey> private_keys = {
    asn1_RSAPrivateKey_new, asn1_RSAPrivateKey_free, asn1_RSAPrivateKey_e, asn1_RSAPrivateKey_d,
    asn1_RSAPrivateKey_clone};
constexpr RecordFamily<PrivateKeyInfo> key_infos = {
    asn1_PrivateKeyInfo_new, asn1_PrivateKeyInfo_free, asn1_PrivateKeyInfo_e, asn1_PrivateKeyInfo_d,
    asn1_PrivateKeyInfo_clone};
constexpr RecordFamily<EncryptedPrivateKeyInfo> encrypted_key_infos = {
    asn1_EncryptedPrivateKeyInfo_new, asn1_EncryptedPrivateKeyInfo_free,
    asn1_EncryptedPrivateKeyInfo_e, asn1_EncryptedPrivateKeyInfo_d,
    asn1_EncryptedPrivateKeyInfo_clone};

const Bytes sha1 = hex("30 09 06 05 2B 0E 03 02 1A 05 00");
const Bytes sha1_without_parameters = hex("30 07 06 05 2B 0E 03 02 1A");
const Bytes digest_content = sha1 + hex("04 02 AB CD");
const Bytes public_content = hex("02 02 00 C1 02 01 03");

// Nine different numbers.
const Bytes private_content =
    hex("02 01 00 02 01 11 02 01 12 02 01 13 02 01 14 02 01 15 02 01 16 02 01 17 02 01 18");

const Bytes rsa = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 01 05 00");
const Bytes version_0 = hex("02 01 00");
const Bytes key = hex("04 02 AB CD");
const Bytes friendly_name =
    hex("30 14 06 09 2A 86 48 86 F7 0D 01 09 14 31 07 1E 05 00 6B 00 65 79");
const Bytes attributes = element(0xA0, friendly_name);
const Bytes info_content = version_0 + rsa + key + attributes;
const Bytes encrypted_content = rsa + hex("04 03 01 02 03");

// ---------------------------------------------------------------------------------------- DigestInfo

TEST(DigestInfoRecord, IsAnAlgorithmAndADigest) {
  const auto record = decoded(digests, sequence(digest_content));
  EXPECT_EQ(sha1, encode(asn1_AlgId_e, record->digestAlgorithm));
  EXPECT_EQ(hex("AB CD"), value(record->digest));
  EXPECT_EQ(sequence(digest_content), encoded(digests, record));

  expect_new_record_is_zero(digests);
  expect_sequence_of_definite_length(digests, digest_content);
  expect_every_cut_refused(digests, digest_content);
  expect_huge_lengths_refused(digests, digest_content);
  for (const Bytes &content : {hex("04 02 AB CD"), sha1, hex("30 00 04 00"),
                               sha1 + hex("03 02 00 AB"), sha1 + hex("04 84 80 00 00 00")}) {
    expect_refused(digests, sequence(content));
  }
}

TEST(DigestInfoRecord, KeepsAnAlgorithmWithoutParametersAsItIs) {
  const Bytes octets = sequence(sha1_without_parameters + hex("04 02 AB CD"));
  const auto record = decoded(digests, octets);
  EXPECT_EQ(nullptr, record->digestAlgorithm->parameters);
  EXPECT_EQ(octets, encoded(digests, record));
}

TEST(DigestInfoRecord, ComparesNoAlgorithm) {
  const Bytes octets = hex("30 07 30 03 06 01 2A 04 00");
  EXPECT_EQ(octets, encoded(digests, decoded(digests, octets)));
}

TEST(DigestInfoRecord, JoinsADigestInSegments) {
  for (const char *digest : {"24 06 04 01 AB 04 01 CD", "24 80 04 01 AB 04 01 CD 00 00"}) {
    const auto record = decoded(digests, sequence(sha1 + hex(digest)));
    EXPECT_EQ(sequence(digest_content), encoded(digests, record)) << digest;
  }
}

TEST(DigestInfoRecord, IsNotEncodedWithoutADigest) {
  const auto record = decoded(digests, sequence(digest_content));
  clear(record->digest, asn1_OctetString_free);
  expect_nothing_written(digests, record.get());
}

TEST(DigestInfoRecord, IsClonedDeeplyAndHalfFilled) {
  expect_deep_clone(digests, sequence(digest_content));
  const auto half = created(digests);
  half->digest = asn1_OctetString_new(1);
  const auto copy = cloned(digests, half);
  EXPECT_EQ(nullptr, copy->digestAlgorithm);
  EXPECT_EQ(hex("00"), value(copy->digest));
}

// ------------------------------------------------------------------------------------- RSAPublicKey

TEST(RsaPublicKey, IsTwoNumbers) {
  const auto record = decoded(public_keys, sequence(public_content));
  EXPECT_EQ(hex("C1"), value(record->modulus));
  EXPECT_EQ(hex("03"), value(record->publicExponent));
  EXPECT_EQ(sequence(public_content), encoded(public_keys, record));

  expect_new_record_is_zero(public_keys);
  expect_sequence_of_definite_length(public_keys, public_content);
  expect_every_cut_refused(public_keys, public_content);
  expect_huge_lengths_refused(public_keys, public_content);
  expect_deep_clone(public_keys, sequence(public_content));
}

TEST(RsaPublicKey, IsNotEncodedWithoutBothNumbers) {
  for (Integer *RSAPublicKey::*number : {&RSAPublicKey::modulus, &RSAPublicKey::publicExponent}) {
    const auto record = decoded(public_keys, sequence(public_content));
    clear((*record).*number, asn1_Integer_free);
    expect_nothing_written(public_keys, record.get());
  }
}

// ------------------------------------------------------------------------------------ RSAPrivateKey

constexpr Integer *RSAPrivateKey::*const numbers[] = {
    &RSAPrivateKey::version,         &RSAPrivateKey::modulus,   &RSAPrivateKey::publicExponent,
    &RSAPrivateKey::privateExponent, &RSAPrivateKey::prime1,    &RSAPrivateKey::prime2,
    &RSAPrivateKey::exponent1,       &RSAPrivateKey::exponent2, &RSAPrivateKey::coefficient};

TEST(RsaPrivateKey, IsNineNumbersInOrder) {
  const auto record = decoded(private_keys, sequence(private_content));
  uint32_t expected = 0x10;
  for (const auto number : numbers) {
    EXPECT_EQ(number == &RSAPrivateKey::version ? 0 : expected,
              asn1_Integer_get((*record).*number));
    ++expected;
  }
  EXPECT_EQ(sequence(private_content), encoded(private_keys, record));

  expect_new_record_is_zero(private_keys);
  expect_sequence_of_definite_length(private_keys, private_content);
  expect_every_cut_refused(private_keys, private_content);  // with eight numbers, too
  expect_huge_lengths_refused(private_keys, private_content);
}

TEST(RsaPrivateKey, StopsBehindTheNinthElement) {
  for (const char *tenth : {"02 01 19", "30 03 02 01 19"}) {
    const auto record =
        decoded(private_keys, sequence(private_content + hex(tenth)), hex(tenth).size());
    EXPECT_EQ(sequence(private_content), encoded(private_keys, record)) << tenth;
  }
}

TEST(RsaPrivateKey, TakesAnyVersion) {
  for (const char *version : {"02 01 01", "02 02 00 FF", "02 01 FF", "02 02 12 34"}) {
    const Bytes octets =
        sequence(hex(version) + Bytes(private_content.begin() + 3, private_content.end()));
    EXPECT_EQ(octets, encoded(private_keys, decoded(private_keys, octets))) << version;
  }
}

TEST(RsaPrivateKey, IsNotEncodedWithoutAnyOfItsNumbers) {
  for (const auto number : numbers) {
    const auto record = decoded(private_keys, sequence(private_content));
    clear((*record).*number, asn1_Integer_free);
    expect_nothing_written(private_keys, record.get());
  }
}

TEST(RsaPrivateKey, IsClonedDeeplyAndHalfFilled) {
  expect_deep_clone(private_keys, sequence(private_content));
  for (const auto number : numbers) {
    const auto half = created(private_keys);
    (*half).*number = asn1_Integer_set(5);
    const auto copy = cloned(private_keys, half);
    for (const auto other : numbers) {
      EXPECT_EQ(other == number, (*copy).*other != nullptr);
    }
  }
}

TEST(RsaPrivateKey, IsReleasedWithoutWiping) {
  for (const auto number : numbers) {
    auto record = created(private_keys);
    (*record).*number = asn1_Integer_set(0x12345678);
    const ReleaseWatch watch(((*record).*number)->data, 4);
    record.reset();
    EXPECT_TRUE(watch.released());
    EXPECT_EQ(hex("12 34 56 78"), watch.octets());
  }
}

// ------------------------------------------------------------------------------------ PrivateKeyInfo

TEST(PrivateKey, HoldsWhatEachFieldSays) {
  const auto record = decoded(key_infos, sequence(info_content));
  EXPECT_EQ(0U, asn1_Integer_get(record->version));
  EXPECT_EQ(rsa, encode(asn1_AlgId_e, record->privateKeyAlgorithm));
  EXPECT_EQ(hex("AB CD"), value(record->privateKey));
  ASSERT_EQ(1, List_len(record->attributes));
  EXPECT_EQ(friendly_name,
            encode(asn1_Attribute_e, static_cast<Attribute *>(List_get(record->attributes, 0))));
  EXPECT_EQ(sequence(info_content), encoded(key_infos, record));
}

TEST(PrivateKey, IsASequenceOfDefiniteLength) {
  expect_new_record_is_zero(key_infos);
  expect_sequence_of_definite_length(key_infos, info_content);
  expect_every_cut_refused(key_infos, info_content, {info_content.size() - attributes.size()});
  expect_huge_lengths_refused(key_infos, info_content);
}

TEST(PrivateKey, KeepsAnAbsentAndAnEmptyListOfAttributesApart) {
  const Bytes without = sequence(version_0 + rsa + key);
  const auto absent = decoded(key_infos, without);
  EXPECT_EQ(nullptr, absent->attributes);
  EXPECT_EQ(without, encoded(key_infos, absent));

  const Bytes with = sequence(version_0 + rsa + key + hex("A0 00"));
  const auto empty = decoded(key_infos, with);
  ASSERT_NE(nullptr, empty->attributes);
  EXPECT_EQ(0, List_len(empty->attributes));
  EXPECT_EQ(with, encoded(key_infos, empty));
}

TEST(PrivateKey, KeepsTheOrderOfItsAttributes) {
  const Bytes other = hex("30 05 06 01 2A 31 00");
  for (const Bytes &list : {friendly_name + other, other + friendly_name + other}) {
    const Bytes octets = sequence(version_0 + rsa + key + element(0xA0, list));
    EXPECT_EQ(octets, encoded(key_infos, decoded(key_infos, octets)));
  }
}

TEST(PrivateKey, MayEndWithAttributesOfIndefiniteLength) {
  const Bytes open = hex("A0 80") + friendly_name + hex("00 00");
  EXPECT_EQ(sequence(info_content),
            encoded(key_infos, decoded(key_infos, sequence(version_0 + rsa + key + open))));
  expect_refused(key_infos, sequence(version_0 + rsa + key + open + hex("05 00")));
}

TEST(PrivateKey, TakesAnyVersionAndAlgorithm) {
  for (const char *start : {"02 01 01 30 03 06 01 2A", "02 02 00 FF 30 03 06 01 2A"}) {
    const Bytes octets = sequence(hex(start) + key);
    EXPECT_EQ(octets, encoded(key_infos, decoded(key_infos, octets))) << start;
  }
}

TEST(PrivateKey, LooksForAttributesUnderA0Only) {
  for (const Bytes &rest : {element(0x80, friendly_name), element(0xA1, friendly_name),
                            element(0x31, friendly_name), hex("00"), hex("81 02 00 AB")}) {
    const auto record = decoded(key_infos, sequence(version_0 + rsa + key + rest), rest.size());
    EXPECT_EQ(nullptr, record->attributes);
  }
  decoded(key_infos, sequence(version_0 + rsa + key) + attributes, attributes.size());
}

TEST(PrivateKey, IsRefusedWithABadField) {
  for (const Bytes &content :
       {rsa + key, version_0 + key, version_0 + rsa, version_0 + rsa + hex("03 02 00 AB"),
        version_0 + rsa + hex("04 84 80 00 00 00"), version_0 + rsa + key + hex("A0"),
        version_0 + rsa + key + hex("A0 01"), version_0 + rsa + key + hex("A0 02 05 00"),
        version_0 + rsa + key + hex("A0 02 30 00"), version_0 + rsa + key + hex("A0 80 00")}) {
    expect_refused(key_infos, sequence(content));
  }
}

TEST(PrivateKey, KeepsAnEncodedKeyAsOneString) {
  const Bytes octets = sequence(version_0 + rsa + element(0x04, sequence(private_content)));
  const auto record = decoded(key_infos, octets);
  EXPECT_EQ(sequence(private_content), value(record->privateKey));
  EXPECT_EQ(octets, encoded(key_infos, record));

  const auto inner = decoded(private_keys, value(record->privateKey));
  EXPECT_EQ(0x11U, asn1_Integer_get(inner->modulus));
}

TEST(PrivateKey, JoinsAKeyInSegments) {
  for (const char *segments : {"24 06 04 01 AB 04 01 CD", "24 80 04 01 AB 04 01 CD 00 00"}) {
    const auto record = decoded(key_infos, sequence(version_0 + rsa + hex(segments) + attributes));
    EXPECT_EQ(sequence(info_content), encoded(key_infos, record)) << segments;
  }
}

TEST(PrivateKey, IsNotEncodedWhenAFieldFails) {
  const auto record = decoded(key_infos, sequence(info_content));
  List_append(record->attributes, asn1_Attribute_new(), 0);
  expect_nothing_written(key_infos, record.get());
  clear(record->attributes, [](List *list) { List_free(list, asn1_Attribute_free); });
  clear(record->privateKey, asn1_OctetString_free);
  expect_nothing_written(key_infos, record.get());
}

TEST(PrivateKey, FailsWithoutAVersionBeforeTheAlgorithmIsLookedAt) {
  expect_nothing_written(key_infos, created(key_infos).get());
}

TEST(PrivateKey, IsClonedDeeplyAndHalfFilled) {
  expect_deep_clone(key_infos, sequence(info_content));

  const auto half = created(key_infos);
  half->attributes = List_new(0);
  const auto copy = cloned(key_infos, half);
  EXPECT_EQ(nullptr, copy->version);
  EXPECT_EQ(nullptr, copy->privateKey);
  ASSERT_NE(nullptr, copy->attributes);
  EXPECT_EQ(0, List_len(copy->attributes));
}

TEST(PrivateKey, IsReleasedWithoutWiping) {
  auto record = decoded(key_infos, sequence(version_0 + rsa + hex("04 04 12 34 56 78")));
  const ReleaseWatch watch(record->privateKey->data, 4);
  record.reset();
  EXPECT_TRUE(watch.released());
  EXPECT_EQ(hex("12 34 56 78"), watch.octets());
}

// --------------------------------------------------------------------------- EncryptedPrivateKeyInfo

TEST(EncryptedPrivateKey, IsAnAlgorithmAndOctets) {
  const auto record = decoded(encrypted_key_infos, sequence(encrypted_content));
  EXPECT_EQ(rsa, encode(asn1_AlgId_e, record->encryptionAlgorithm));
  EXPECT_EQ(hex("01 02 03"), value(record->encryptedData));
  EXPECT_EQ(sequence(encrypted_content), encoded(encrypted_key_infos, record));

  expect_new_record_is_zero(encrypted_key_infos);
  expect_sequence_of_definite_length(encrypted_key_infos, encrypted_content);
  expect_every_cut_refused(encrypted_key_infos, encrypted_content);
  expect_huge_lengths_refused(encrypted_key_infos, encrypted_content);
  expect_deep_clone(encrypted_key_infos, sequence(encrypted_content));
}

TEST(EncryptedPrivateKey, JoinsDataInSegments) {
  const auto record =
      decoded(encrypted_key_infos, sequence(rsa + hex("24 07 04 02 01 02 04 01 03")));
  EXPECT_EQ(sequence(encrypted_content), encoded(encrypted_key_infos, record));
}

TEST(EncryptedPrivateKey, IsNotEncodedWithoutData) {
  const auto record = decoded(encrypted_key_infos, sequence(encrypted_content));
  clear(record->encryptedData, asn1_OctetString_free);
  expect_nothing_written(encrypted_key_infos, record.get());
}

// ------------------------------------------------------------------------------------ keys of a peer

// A throw-away key of 512 bits, made by the openssl command.
const Bytes key_of_openssl = hex(
    "3082013d020100024100b349589512ed9149eec3ad98e81b7ffa121de2c6c3c5abd6f9e454fc00ec525ae146af3b"
    "fe4b863742035340a0914d7f71381809ab3500f32bf03cfece8d10f502030100010241008379ba18383537627c51"
    "cb3062a628077ed9a3c01739127727f225d057ecf5c6ad15ef636aec1d25cce45bc30ff47e2d925809b1a665178b"
    "e867c521da5d6c81022100de671173248588136f20bcc83b5c370a223368894da7e0a0d48ae9ade163baa9022100"
    "ce5edb80bc8b0966a6eafaa850cc44ca105e37529921aa8ddf607b0b624f3f6d0221009f25a00e06176bbd846b27"
    "cc1cf62b089c5aaf367994652091976a0a9c5bd229022100818b13f8dce1de35dce3b612c01d69b4f9cf5aa4f3d1"
    "2951c37db9df6c87d8850221008988842cdf4c32e114a59b1674457304547c56891a14e7c6b896a51cf6d95171");

TEST(PeerRsaKey, OfOpensslIsWrittenBackAsItCame) {
  const auto record = decoded(private_keys, key_of_openssl);
  EXPECT_EQ(65537U, asn1_Integer_get(record->publicExponent));
  EXPECT_EQ(64U, record->modulus->length);
  EXPECT_EQ(hex("8988842CDF4C32E114A59B1674457304547C56891A14E7C6B896A51CF6D95171"),
            value(record->coefficient));
  EXPECT_EQ(key_of_openssl, encoded(private_keys, record));
}

TEST(PeerRsaKey, GivesThePublicKeyOfOpenssl) {
  const auto from = decoded(private_keys, key_of_openssl);
  const auto record = created(public_keys);
  record->modulus = asn1_Integer_clone(from->modulus);
  record->publicExponent = asn1_Integer_clone(from->publicExponent);
  EXPECT_EQ(hex("3048024100b349589512ed9149eec3ad98e81b7ffa121de2c6c3c5abd6f9e454fc00ec525ae146af"
                "3bfe4b863742035340a0914d7f71381809ab3500f32bf03cfece8d10f50203010001"),
            encoded(public_keys, record));
}

TEST(PeerPrivateKey, OfOpensslHoldsTheRsaKey) {
  const Bytes octets = hex("30820157020100300d06092a864886f70d010101050004820141") + key_of_openssl;
  const auto record = decoded(key_infos, octets);
  EXPECT_EQ(key_of_openssl, value(record->privateKey));
  EXPECT_EQ(octets, encoded(key_infos, record));
}

TEST(PeerPrivateKey, OfOpensslEncryptedIsWrittenBackAsItCame) {
  const Bytes octets = hex(
      "30819b305706092a864886f70d01050d304a302906092a864886f70d01050c301c040804373e13f6e7487c02020"
      "800300c06082a864886f70d02090500301d060960864801650304012a0410024cb19b94110a6bce0a3088885"
      "2eaea04407dbeacc59de2b8d635a091a485a22b0b10eae6d11615883c83782e58f560e09b39ab457052373e71"
      "5f4d925308103167a9cb2679b9fbef8ca46a0a640a21e601");
  const auto record = decoded(encrypted_key_infos, octets);
  EXPECT_EQ(64U, record->encryptedData->length);
  EXPECT_EQ(octets, encoded(encrypted_key_infos, record));
}

// --------------------------------------------------------------------------------------------- trace

TEST(PrivateKeyTrace, ShowsEveryField) {
  const Lines expected = {
      "SEQUENCE {",
      ". INTEGER",
      ".  0",
      ". SEQUENCE {",
      ". . OBJECT IDENTIFIER ",
      ". .   1.2.840.113549.1.1.1",
      ". . [ANY]",
      ". . " + dump("05 00 ", ".."),
      ". }",
      ". OCTETSTRING",
      ". " + dump("AB CD ", ".."),
      ". CONTEXT-SPECIFIC CONSTRUCTED [0] {",
      ". . SEQUENCE {",
      ". . . OBJECT IDENTIFIER ",
      ". . .   1.2.840.113549.1.9.20",
      ". . . SET {",
      ". . . . [ANY]",
      ". . . . " + dump("1E 05 00 6B 00 65 79 ", "...k.ey"),
      ". . . }",
      ". . }",
      ". }",
      "}",
  };
  EXPECT_EQ(expected, traced(key_infos, sequence(info_content)));
  EXPECT_EQ(Lines{}, traced(key_infos, sequence(info_content), 0));
}

TEST(RsaKeyTrace, ShowsANumberOfMoreThanFourOctetsAsADump) {
  const Lines expected = {
      "SEQUENCE {", ". INTEGER", ". " + dump("01 02 03 04 05 ", "....."), ". INTEGER", ".  3", "}",
  };
  EXPECT_EQ(expected, traced(public_keys, hex("30 0A 02 05 01 02 03 04 05 02 01 03")));
}

TEST(DigestInfoTrace, ShowsBothFields) {
  const Lines expected = {
      "SEQUENCE {",
      ". SEQUENCE {",
      ". . OBJECT IDENTIFIER ",
      ". .   1.3.14.3.2.26",
      ". . [ANY]",
      ". . " + dump("05 00 ", ".."),
      ". }",
      ". OCTETSTRING",
      ". " + dump("AB CD ", ".."),
      "}",
  };
  EXPECT_EQ(expected, traced(digests, sequence(digest_content)));
}

// ------------------------------------------------------------------------------- ends of the process

TEST(PrivateKeyDeathTest, EncodersEndTheProcessWithoutARecord) {
  expect_encoder_ends_the_process(digests, nullptr);
  expect_encoder_ends_the_process(public_keys, nullptr);
  expect_encoder_ends_the_process(private_keys, nullptr);
  expect_encoder_ends_the_process(key_infos, nullptr);
  expect_encoder_ends_the_process(encrypted_key_infos, nullptr);
}

TEST(PrivateKeyDeathTest, EncodersEndTheProcessWithoutAnAlgorithm) {
  expect_encoder_ends_the_process(digests, created(digests).get());
  expect_encoder_ends_the_process(encrypted_key_infos, created(encrypted_key_infos).get());
  const auto info = created(key_infos);
  info->version = asn1_Integer_set(0);
  expect_encoder_ends_the_process(key_infos, info.get());
}

TEST(PrivateKeyDeathTest, DecodersAssertTheirCursors) {
  expect_decoder_asserts_its_cursors(digests);
  expect_decoder_asserts_its_cursors(public_keys);
  expect_decoder_asserts_its_cursors(private_keys);
  expect_decoder_asserts_its_cursors(key_infos);
  expect_decoder_asserts_its_cursors(encrypted_key_infos);
}

// --------------------------------------------------------------------------------- exhausted memory

TEST(PrivateKeyMemory, EachFailingAllocationIsAFailure) {
  expect_exhausted_memory_to_fail(digests, sequence(digest_content));
  expect_exhausted_memory_to_fail(public_keys, sequence(public_content));
  expect_exhausted_memory_to_fail(private_keys, sequence(private_content));
  expect_exhausted_memory_to_fail(key_infos, sequence(info_content));
  expect_exhausted_memory_to_fail(encrypted_key_infos, sequence(encrypted_content));
}

}  // namespace

}  // namespace pkcs1_pkcs8_test
