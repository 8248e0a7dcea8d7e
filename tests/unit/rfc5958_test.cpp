// Private keys in the form of RFC 5958, and those of elliptic curves in the forms of RFC 5480 and
// RFC 5915. The octets are made by hand.
#include <forms.h>

namespace rfc5958_test {

namespace {

using namespace support;

const auto parameters = FORM(ECParameters, pki_ECParameters);
const auto signatures = FORM(ECDSA_Sig_Value, pki_ECDSA_Sig_Value);
const auto curve_keys = FORM(ECPrivateKey, pki_ECPrivateKey);
const auto keys = FORM(OneAsymmetricKey, pki_OneAsymmetricKey);
const auto encrypted_keys = FORM(EncryptedPrivateKeyInfo, EncryptedPrivateKeyInfo);

const Bytes p256 = hex("06 08 2A 86 48 CE 3D 03 01 07");

// ---------------------------------------------------------------------------------------------
// Parameters and signatures
// ---------------------------------------------------------------------------------------------

TEST(CurveParameters, AreANamedCurve) {
  const auto curve = expect_kept(parameters, p256);
  ASSERT_EQ(6, curve->kind);
  const char *dotted = "1.2.840.10045.3.1.7";
  const Owned<ObjId, asn1_ObjId_free> expected(asn1_ObjId_parse(&dotted));
  EXPECT_EQ(0, asn1_ObjId_cmp(expected.get(), static_cast<const ObjId *>(curve->value)));
}

TEST(CurveParameters, AreNull) {
  const auto curve = expect_kept(parameters, hex("05 00"));
  EXPECT_EQ(5, curve->kind);
  EXPECT_EQ(nullptr, curve->value);
  expect_form_refused(parameters, hex("05 01 00"));
}

TEST(CurveParameters, AreADomainOfTheirOwn) {
  const Bytes domain = sequence(hex("02 01 01 30 03 06 01 2A 05 00"));
  const auto curve = expect_kept(parameters, domain);
  ASSERT_EQ(16, curve->kind);
  EXPECT_EQ(domain, value(static_cast<const Any *>(curve->value)));
}

TEST(CurveParameters, OfAnotherTypeAreRefused) {
  for (const char *octets : {"", "02 01 05", "86 08 2A 86 48 CE 3D 03 01 07", "31 00", "06 00",
                             "06 01 80", "06 02 2A 81"}) {
    expect_form_refused(parameters, hex(octets));
  }
  // A CHOICE has no tag that another one could replace.
  pki_ECParameters before = {};
  EXPECT_EQ(nullptr, left_by_refusal(parameters.decode, hex("80 01 2A"), &before, 0x80));
}

TEST(CurveParameters, WithoutAValueHaveNoEncoding) {
  const auto empty = created(parameters);
  expect_nothing_written(parameters, empty.get());
  empty->kind = 6;
  expect_nothing_written(parameters, empty.get());
  empty->kind = 5;
  EXPECT_EQ(hex("05 00"), encoded(parameters, empty));
}

TEST(CurveSignature, IsTwoNumbers) {
  const Bytes octets = sequence(hex("02 03 00 80 01 02 01 7F"));
  const auto signature = expect_kept(signatures, octets);
  EXPECT_EQ(0x8001U, asn1_Integer_get(signature->r));
  EXPECT_EQ(0x7FU, asn1_Integer_get(signature->s));
  expect_form_refused(signatures, sequence(hex("02 01 01")));
  expect_form_refused(signatures, sequence(hex("02 01 01 02 01 01 02 01 01")));
  expect_form_refused(signatures, sequence(hex("02 01 01 02 00")));
}

// ---------------------------------------------------------------------------------------------
// Keys of elliptic curves
// ---------------------------------------------------------------------------------------------

// A secret whose first octet is 0, and a public key that ends in one.
const Bytes secret = hex("04 04 00 AB CD EF");
const Bytes public_key = hex("03 04 00 04 80 00");

TEST(CurveKey, HasItsParametersAndPublicKeyUnderExplicitTags) {
  const auto key = expect_kept(curve_keys, sequence(hex("02 01 01") + secret + element(0xA0, p256) +
                                                    element(0xA1, public_key)));
  EXPECT_EQ(1U, asn1_Integer_get(key->version));
  EXPECT_EQ(hex("00 AB CD EF"), value(key->privateKey));
  EXPECT_EQ(6, key->parameters->kind);
  EXPECT_EQ(24U, key->publicKey->length);
  EXPECT_EQ(hex("04 80 00"), value(key->publicKey));
}

TEST(CurveKey, MayBeTheSecretAlone) {
  const auto key = expect_kept(curve_keys, sequence(hex("02 01 01") + secret));
  EXPECT_EQ(nullptr, key->parameters);
  EXPECT_EQ(nullptr, key->publicKey);
  expect_kept(curve_keys, sequence(hex("02 01 01") + secret + element(0xA1, public_key)));
}

TEST(CurveKey, IsRefused) {
  const Bytes start = hex("02 01 01") + secret;
  for (const Bytes &content :
       {hex("02 01 01"), secret, start + p256, start + element(0xA0, p256 + p256),
        start + element(0xA0, {}), start + element(0xA1, public_key) + element(0xA0, p256),
        start + hex("81 04 00 04 80 00"), start + hex("05 00")}) {
    expect_form_refused(curve_keys, sequence(content));
  }
}

TEST(CurveKey, IsWiped) {
  auto key = decoded(curve_keys, sequence(hex("02 01 01") + secret));
  const ReleaseWatch watch(key->privateKey->data, 4);
  key.reset();
  EXPECT_TRUE(watch.released());
  EXPECT_EQ(hex("00 00 00 00"), watch.octets());
}

// ---------------------------------------------------------------------------------------------
// Private keys
// ---------------------------------------------------------------------------------------------

const Bytes ed25519 = sequence(hex("06 03 2B 65 70"));
const Bytes friendly_name =
    sequence(hex("06 09 2A 86 48 86 F7 0D 01 09 14") + element(0x31, hex("1E 02 00 41")));

TEST(PrivateKey, HasAttributesAndAPublicKey) {
  const auto key =
      expect_kept(keys, sequence(hex("02 01 01") + ed25519 + hex("04 04 04 02 AB CD") +
                                 element(0xA0, friendly_name) + hex("81 03 00 AB 00")));
  EXPECT_EQ(1U, asn1_Integer_get(key->version));
  EXPECT_EQ(ed25519, encode(pki_AlgId_e, key->privateKeyAlgorithm));
  EXPECT_EQ(hex("04 02 AB CD"), value(key->privateKey));
  ASSERT_EQ(1, List_len(key->attributes));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_friendlyName(),
                              element_of<const Attribute>(key->attributes, 0).type));
  EXPECT_EQ(hex("AB 00"), value(key->publicKey));
}

TEST(PrivateKey, MayHaveNeither) {
  const auto key = expect_kept(keys, sequence(hex("02 01 00") + ed25519 + hex("04 02 05 00")));
  EXPECT_EQ(nullptr, key->attributes);
  EXPECT_EQ(nullptr, key->publicKey);
  expect_kept(keys, sequence(hex("02 01 00") + ed25519 + hex("04 02 05 00 A0 00")));
}

TEST(PrivateKey, OfSegmentsIsWrittenInOnePiece) {
  expect_written(keys,
                 hex("30 80 02 01 01") + ed25519 +
                     hex("24 80 04 01 AB 04 01 CD 00 00 A1 06 03 01 00 03 01 00 00 00"),
                 sequence(hex("02 01 01") + ed25519 + hex("04 02 AB CD 81 01 00")));
}

TEST(PrivateKey, IsRefused) {
  const Bytes start = hex("02 01 01") + ed25519 + hex("04 02 05 00");
  for (const Bytes &content :
       {hex("02 01 01") + ed25519, start + hex("81 01 00 A0 00"), start + hex("A2 00"),
        start + hex("A0 02 05 00"), start + hex("81 00"), start + hex("A0 00 A0 00")}) {
    expect_form_refused(keys, sequence(content));
  }
}

TEST(PrivateKey, IsWiped) {
  auto key = decoded(keys, sequence(hex("02 01 01") + ed25519 + hex("04 04 04 02 AB CD")));
  const ReleaseWatch watch(key->privateKey->data, 4);
  key.reset();
  EXPECT_TRUE(watch.released());
  EXPECT_EQ(hex("00 00 00 00"), watch.octets());
}

TEST(EncryptedPrivateKey, IsAnAlgorithmAndOctets) {
  const auto key = expect_kept(encrypted_keys, sequence(ed25519 + hex("04 02 AB CD")));
  EXPECT_EQ(ed25519, encode(pki_AlgId_e, key->encryptionAlgorithm));
  EXPECT_EQ(hex("AB CD"), value(key->encryptedData));
  expect_form_refused(encrypted_keys, sequence(ed25519));
  expect_form_refused(encrypted_keys, sequence(ed25519 + hex("04 00 05 00")));
}

}  // namespace

}  // namespace rfc5958_test
