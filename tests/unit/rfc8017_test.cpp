// RSA keys, digests and parameters in the forms of RFC 8017 and RFC 4055. The octets are made by hand.
#include <forms.h>

namespace rfc8017_test {

namespace {

using namespace support;

const auto private_keys = FORM(RSAPrivateKey, pki_RSAPrivateKey);
const auto public_keys = FORM(RSAPublicKey, RSAPublicKey);
const auto digests = FORM(DigestInfo, DigestInfo);
const auto pss = FORM(RSASSA_PSS_params, pki_RSASSA_PSS_params);
const auto oaep = FORM(RSAES_OAEP_params, pki_RSAES_OAEP_params);

Integer *number(const char *digits) {
  const Bytes octets = hex(digits);
  Integer *result = asn1_Integer_new(static_cast<uint32_t>(octets.size()));
  std::copy(octets.begin(), octets.end(), result->data);
  return result;
}

// The key of 3 and 11, and numbers of another prime.
const Bytes of_two_primes =
    hex("02 01 00 02 01 21 02 01 03 02 01 07 02 01 03 02 01 0B 02 01 01 02 01 07 02 01 02");
const Bytes third_prime = hex("30 09 02 01 0D 02 01 07 02 01 02");

TEST(RsaPrivateKey, HasItsNumbersInTheirPlaces) {
  const auto key = decoded(private_keys, sequence(of_two_primes));
  EXPECT_EQ(0U, asn1_Integer_get(key->version));
  EXPECT_EQ(33U, asn1_Integer_get(key->modulus));
  EXPECT_EQ(3U, asn1_Integer_get(key->publicExponent));
  EXPECT_EQ(7U, asn1_Integer_get(key->privateExponent));
  EXPECT_EQ(3U, asn1_Integer_get(key->prime1));
  EXPECT_EQ(11U, asn1_Integer_get(key->prime2));
  EXPECT_EQ(1U, asn1_Integer_get(key->exponent1));
  EXPECT_EQ(7U, asn1_Integer_get(key->exponent2));
  EXPECT_EQ(2U, asn1_Integer_get(key->coefficient));
  EXPECT_EQ(nullptr, key->otherPrimeInfos);
  EXPECT_EQ(sequence(of_two_primes), encoded(private_keys, key));
}

TEST(RsaPrivateKey, HasOtherPrimes) {
  const Bytes octets = sequence(of_two_primes + sequence(third_prime));
  const auto key = decoded(private_keys, octets);
  ASSERT_EQ(1, List_len(key->otherPrimeInfos));
  const auto *other = static_cast<const pki_OtherPrimeInfo *>(List_get(key->otherPrimeInfos, 0));
  EXPECT_EQ(13U, asn1_Integer_get(other->prime));
  EXPECT_EQ(7U, asn1_Integer_get(other->exponent));
  EXPECT_EQ(2U, asn1_Integer_get(other->coefficient));
  EXPECT_EQ(octets, encoded(private_keys, cloned(private_keys, key)));
}

TEST(RsaPrivateKey, IsWiped) {
  const auto secrets_of = [](const pki_RSAPrivateKey &key) {
    const auto *other = static_cast<const pki_OtherPrimeInfo *>(List_get(key.otherPrimeInfos, 0));
    return std::vector<const Integer *>{key.privateExponent, key.prime1,      key.prime2,
                                        key.exponent1,       key.exponent2,   key.coefficient,
                                        other->prime,        other->exponent, other->coefficient};
  };
  for (size_t i = 0; i < 9; ++i) {
    auto key = decoded(private_keys, sequence(of_two_primes + sequence(third_prime)));
    const Integer *const secret = secrets_of(*key).at(i);
    ASSERT_EQ(1U, secret->length);
    EXPECT_NE(0, secret->data[0]);
    const ReleaseWatch watch(secret->data, secret->length);
    key.reset();
    EXPECT_TRUE(watch.released());
    EXPECT_EQ(hex("00"), watch.octets()) << i;
  }
}

TEST(RsaPrivateKey, WithLeftOversIsRefused) {
  expect_form_refused(private_keys, sequence(of_two_primes + hex("02 01 00")));
  expect_form_refused(private_keys, sequence(of_two_primes + sequence(hex("02 01 0D"))));
  expect_form_refused(private_keys,
                      sequence(of_two_primes + sequence(sequence(hex("02 01 0D 02 01 07")))));
  expect_form_refused(private_keys, sequence(hex("02 01 00 02 01 21")));
}

TEST(RsaPublicKey, IsWrittenFromItsNumbers) {
  const auto key = created(public_keys);
  expect_nothing_written(public_keys, key.get());
  key->modulus = number("80 01");
  expect_nothing_written(public_keys, key.get());
  key->publicExponent = number("01 00 01");
  EXPECT_EQ(sequence(hex("02 03 00 80 01 02 03 01 00 01")), encoded(public_keys, key));
}

TEST(RsaPublicKey, WithLeftOversIsRefused) {
  expect_form_refused(public_keys, sequence(hex("02 01 21 02 01 03 02 01 07")));
  expect_form_refused(public_keys, sequence(hex("02 02 00 21 02 01 03")));  // a needless octet
  expect_form_refused(public_keys, {});
}

const Bytes sha256 = sequence(hex("06 09 60 86 48 01 65 03 04 02 01 05 00"));
const Bytes mgf1_sha256 = sequence(hex("06 09 2A 86 48 86 F7 0D 01 01 08") + sha256);

TEST(Digest, HasItsAlgorithm) {
  const Bytes octets = sequence(sha256 + hex("04 02 AB CD"));
  const auto digest = decoded(digests, octets);
  EXPECT_EQ(hex("AB CD"), value(digest->digest));
  EXPECT_EQ(hex("05 00"), value(digest->digestAlgorithm->parameters));
  EXPECT_EQ(octets, encoded(digests, digest));
}

TEST(PssParameters, AreTaggedExplicitly) {
  const Bytes octets = sequence(element(0xA0, sha256) + element(0xA1, mgf1_sha256) +
                                hex("A2 03 02 01 20 A3 03 02 01 01"));
  const auto parameters = decoded(pss, octets);
  EXPECT_EQ(sha256, encode(pki_AlgId_e, parameters->hashAlgorithm));
  EXPECT_EQ(sha256, value(parameters->maskGenAlgorithm->parameters));
  EXPECT_EQ(32U, asn1_Integer_get(parameters->saltLength));
  EXPECT_EQ(1U, asn1_Integer_get(parameters->trailerField));
  EXPECT_EQ(octets, encoded(pss, cloned(pss, parameters)));
}

TEST(PssParameters, AreAllOptional) {
  const auto parameters = decoded(pss, hex("30 00"));
  EXPECT_EQ(nullptr, parameters->hashAlgorithm);
  EXPECT_EQ(nullptr, parameters->maskGenAlgorithm);
  EXPECT_EQ(nullptr, parameters->saltLength);
  EXPECT_EQ(nullptr, parameters->trailerField);
  EXPECT_EQ(hex("30 00"), encoded(pss, created(pss)));
}

TEST(PssParameters, AreRefused) {
  for (const char *octets : {"30 03 82 01 20",                       // an implicit tag
                             "30 0A A3 03 02 01 01 A2 03 02 01 20",  // the wrong order
                             "30 08 A2 06 02 01 20 02 01 20",        // two values in a tag
                             "30 02 A2 00", "30 05 A4 03 02 01 01",  // no value; another tag
                             "30 05 02 01 20", "31 05 A2 03 02 01 20"}) {
    expect_form_refused(pss, hex(octets));
  }
}

TEST(PssParameters, OfIndefiniteLengthAreWrittenInDer) {
  const auto parameters = decoded(pss, hex("30 80 A2 80 02 01 20 00 00 00 00"));
  EXPECT_EQ(hex("30 05 A2 03 02 01 20"), encoded(pss, parameters));
}

TEST(OaepParameters, AreTaggedExplicitly) {
  const Bytes label = sequence(hex("06 09 2A 86 48 86 F7 0D 01 01 09 04 02 01 02"));
  const Bytes octets =
      sequence(element(0xA0, sha256) + element(0xA1, mgf1_sha256) + element(0xA2, label));
  const auto parameters = decoded(oaep, octets);
  EXPECT_EQ(sha256, encode(pki_AlgId_e, parameters->hashFunc));
  EXPECT_EQ(mgf1_sha256, encode(pki_AlgId_e, parameters->maskGenFunc));
  EXPECT_EQ(hex("04 02 01 02"), value(parameters->pSourceFunc->parameters));
  EXPECT_EQ(octets, encoded(oaep, cloned(oaep, parameters)));
  EXPECT_EQ(hex("30 00"), encoded(oaep, created(oaep)));
  expect_form_refused(oaep, sequence(element(0xA1, mgf1_sha256) + element(0xA0, sha256)));
  expect_form_refused(oaep, sequence(element(0xA3, sha256)));
}

}  // namespace

}  // namespace rfc8017_test
