// Tests keys, digests, DSA and Diffie-Hellman parameters and key challenges against the openssl
// tool: the library reads those of the tool as the tool reports them, and the tool reads and uses
// those of the library.
#include <pem.h>

#include <bit>

#include "password.h"

namespace keys_test {

namespace {

using namespace support;

const auto private_keys = RECORD_FAMILY(RSAPrivateKey);
const auto public_keys = RECORD_FAMILY(RSAPublicKey);
const auto digests = RECORD_FAMILY(DigestInfo);
const auto key_infos = RECORD_FAMILY(PrivateKeyInfo);
const auto encrypted_key_infos = RECORD_FAMILY(EncryptedPrivateKeyInfo);
const auto pbe_parameters = RECORD_FAMILY(PbeParams);
const auto dsa_parameters = RECORD_FAMILY(DssParms);
const auto dsa_signatures = RECORD_FAMILY(DssSigValue);
const auto dh_parameters = RECORD_FAMILY(DomainParameters);
const auto seeds = RECORD_FAMILY(ValidationParms);
const auto key_challenges = RECORD_FAMILY(PublicKeyAndChallenge);
const auto signed_key_challenges = RECORD_FAMILY(SignedPublicKeyAndChallenge);

constexpr const char *rsa_encryption = "1.2.840.113549.1.1.1";

struct Named {
  template <class Row>
  std::string operator()(const testing::TestParamInfo<Row> &row) const {
    return row.param.name;
  }
};

/* ------------------------------------------------------------------------------------------- */
/* RSA keys                                                                                      */
/* ------------------------------------------------------------------------------------------- */

constexpr std::pair<const char *, Integer * RSAPrivateKey::*> rsa_numbers[] = {
    {"modulus:", &RSAPrivateKey::modulus},
    {"publicExponent:", &RSAPrivateKey::publicExponent},
    {"privateExponent:", &RSAPrivateKey::privateExponent},
    {"prime1:", &RSAPrivateKey::prime1},
    {"prime2:", &RSAPrivateKey::prime2},
    {"exponent1:", &RSAPrivateKey::exponent1},
    {"exponent2:", &RSAPrivateKey::exponent2},
    {"coefficient:", &RSAPrivateKey::coefficient}};

struct RsaShape {
  const char *name;
  const char *options;
};
void PrintTo(const RsaShape &shape, std::ostream *out) { *out << shape.name; }

const RsaShape rsa_shapes[] = {
    {"Of512Bits", "rsa_keygen_bits:512"},
    {"Of1023BitsWithoutAZeroOctetInFront", "rsa_keygen_bits:1023"},
    {"Of2048Bits", "rsa_keygen_bits:2048"},
    {"OfASmallPublicExponent", "rsa_keygen_bits:1024 -pkeyopt rsa_keygen_pubexp:3"},
    {"OfALargePublicExponent", "rsa_keygen_bits:1024 -pkeyopt rsa_keygen_pubexp:4294967297"},
};

class RsaKeys : public testing::TestWithParam<RsaShape> {
 protected:
  RsaKeys() {
    openssl(std::string("genpkey -algorithm RSA -out key.pem -pkeyopt ") + GetParam().options);
    openssl("pkey -in key.pem -pubout -out public.pem");
    report = openssl("rsa -in key.pem -noout -text");
  }
  std::string report;
};

TEST_P(RsaKeys, OfTheToolReadAsReportedAndComeBack) {
  openssl("rsa -in key.pem -traditional -outform DER -out key.der");
  const auto record = kept(private_keys, read_file("key.der"));
  EXPECT_EQ(0U, asn1_Integer_get(record->version));
  for (const auto &[label, field] : rsa_numbers) {
    const Integer *integer = record.get()->*field;
    EXPECT_EQ(printed_number(label, report), value(integer)) << label;
    EXPECT_EQ(0U, integer->negative);
  }

  openssl("rsa -in key.pem -RSAPublicKey_out -outform DER -out public.der");
  const Bytes octets = read_file("public.der");
  const auto public_record = kept(public_keys, octets);
  EXPECT_EQ(0, asn1_Integer_cmp(record->modulus, public_record->modulus));
  EXPECT_EQ(0, asn1_Integer_cmp(record->publicExponent, public_record->publicExponent));

  openssl("pkey -in key.pem -pubout -outform DER -out subject.der");
  const auto subject = record_of<asn1_SubjectPKI_free>(asn1_SubjectPKI_d, read_file("subject.der"));
  EXPECT_EQ(octets, value(subject->subjectPublicKey));
  EXPECT_EQ(rsa_encryption, identifier_text(subject->algorithm->algorithm));
}

TEST_P(RsaKeys, FilledByHandAreCheckedAndUsedByTheTool) {
  const auto record = created(private_keys);
  record->version = asn1_Integer_set(0);
  // Leading zero octets do not change a number, and are not written.
  for (const auto &[label, field] : rsa_numbers)
    record.get()->*field = number(hex("00 00") + printed_number(label, report));
  write_file("made.der", encoded(private_keys, record));
  EXPECT_NE(std::string::npos,
            openssl("rsa -inform DER -in made.der -check -noout").find("RSA key ok"));
  EXPECT_EQ(report, openssl("rsa -inform DER -in made.der -noout -text"));

  const auto public_record = created(public_keys);
  public_record->modulus = asn1_Integer_clone(record->modulus);
  public_record->publicExponent = asn1_Integer_clone(record->publicExponent);
  write_file("made_public.der", encoded(public_keys, public_record));
  openssl("rsa -RSAPublicKey_in -inform DER -in made_public.der -pubout -out made_public.pem");
  EXPECT_EQ(read_file("public.pem"), read_file("made_public.pem"));

  write_file("message", text("signed"));
  openssl("dgst -sha1 -sign made.der -keyform DER -out signature message");
  EXPECT_EQ("Verified OK\n",
            openssl("dgst -sha1 -verify made_public.pem -signature signature message"));
}

INSTANTIATE_TEST_SUITE_P(Keys, RsaKeys, testing::ValuesIn(rsa_shapes), Named());

TEST(RsaKeyOfThreePrimes, ComesBackWithoutItsThirdPrime) {
  openssl(
      "genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:1024 -pkeyopt rsa_keygen_primes:3"
      " -out three.pem");
  openssl("rsa -in three.pem -traditional -outform DER -out three.der");
  const Element whole = take_apart("three.der");
  ASSERT_EQ(10U, whole.parts.size());
  Bytes nine;
  for (size_t i = 0; i < 9; ++i) nine = nine + whole.parts[i].whole;

  const auto record = decoded(private_keys, whole.whole, whole.parts[9].whole.size());
  EXPECT_EQ(1U, asn1_Integer_get(record->version));
  EXPECT_EQ(element(0x30, nine), encoded(private_keys, record));
}

/* ------------------------------------------------------------------------------------------- */
/* Digests                                                                                       */
/* ------------------------------------------------------------------------------------------- */

class Digests : public testing::TestWithParam<std::pair<const std::string, const char *>> {
 protected:
  const std::string name = GetParam().first;
  const char *dotted = GetParam().second;
  const Bytes message = text("the message");
  const Bytes digest = digest_of(name, message);
};

TEST_P(Digests, InASignatureOfTheToolReadAsReportedAndComeBack) {
  openssl("pkeyutl -sign -in digest -out signature -pkeyopt digest:" + name + " -inkey " +
          key("rsa"));
  openssl("pkeyutl -verifyrecover -in signature -out recovered.der -inkey " + key("rsa"));
  const Element whole = take_apart("recovered.der");
  const auto record = kept(digests, whole.whole);
  expect_algorithm(whole.parts.at(0), record->digestAlgorithm);
  EXPECT_EQ(dotted, identifier_text(record->digestAlgorithm->algorithm));
  EXPECT_EQ(digest, value(record->digest));
}

TEST_P(Digests, FilledByHandMakeASignatureThatTheToolVerifies) {
  const auto sign_as = [&](AlgId *named) {
    const auto record = created(digests);
    record->digestAlgorithm = named;
    record->digest = octet_string(digest);
    const Bytes info = encoded(digests, record);
    // It is put into the block of PKCS #1, for the bare operation of a key of 2048 bits.
    write_file("block", hex("00 01") + Bytes(253 - info.size(), 0xFF) + Bytes{0} + info);
    openssl("pkeyutl -decrypt -pkeyopt rsa_padding_mode:none -in block -out signature -inkey " +
            key("rsa"));
  };
  write_file("message", message);
  openssl("pkey -pubout -out public.pem -in " + key("rsa"));
  const std::string verify = "dgst -" + name + " -verify public.pem -signature signature message";
  sign_as(digest_algorithm(name));
  EXPECT_EQ("Verified OK\n", openssl(verify));
  // Absent parameters are another encoding, which the tool refuses.
  sign_as(algorithm(identifier(dotted), nullptr));
  EXPECT_TRUE(openssl_refuses(verify));
}

INSTANTIATE_TEST_SUITE_P(Algorithms, Digests, testing::ValuesIn(digest_identifiers),
                         [](const auto &row) { return row.param.first; });

/* ------------------------------------------------------------------------------------------- */
/* Private keys                                                                                  */
/* ------------------------------------------------------------------------------------------- */

/// What the tool makes a key from. DSA and Diffie-Hellman need parameters first.
struct KeyShape {
  const char *name;
  const char *parameters;
  const char *options;
  const char *dotted;
};
void PrintTo(const KeyShape &shape, std::ostream *out) { *out << shape.name; }

const KeyShape key_shapes[] = {
    {"Rsa", "", "-algorithm RSA -pkeyopt rsa_keygen_bits:1024", rsa_encryption},
    {"RsaPss", "",
     "-algorithm RSA-PSS -pkeyopt rsa_keygen_bits:1024 -pkeyopt rsa_pss_keygen_md:sha256"
     " -pkeyopt rsa_pss_keygen_saltlen:20",
     "1.2.840.113549.1.1.10"},
    {"Ec", "", "-algorithm EC -pkeyopt ec_paramgen_curve:P-384", "1.2.840.10045.2.1"},
    {"EcWithItsCurveInFull", "",
     "-algorithm EC -pkeyopt ec_paramgen_curve:P-256 -pkeyopt ec_param_enc:explicit",
     "1.2.840.10045.2.1"},
    {"Ed25519", "", "-algorithm ED25519", "1.3.101.112"},
    {"Ed448", "", "-algorithm ED448", "1.3.101.113"},
    {"X25519", "", "-algorithm X25519", "1.3.101.110"},
    {"Dsa", "-algorithm DSA -pkeyopt dsa_paramgen_bits:1024", "-paramfile parameters.pem",
     "1.2.840.10040.4.1"},
    {"Dh", "", "-algorithm DH -pkeyopt group:ffdhe2048", "1.2.840.113549.1.3.1"},
    {"DhOfX942", "", "-algorithm DHX -pkeyopt dh_rfc5114:2", "1.2.840.10046.2.1"},
};

class PrivateKeysOfOpenssl : public testing::TestWithParam<KeyShape> {};

TEST_P(PrivateKeysOfOpenssl, ReadAsTheyAreAndComeBack) {
  const KeyShape &shape = GetParam();
  if (*shape.parameters != '\0')
    openssl(std::string("genpkey -genparam -out parameters.pem ") + shape.parameters);
  openssl(std::string("genpkey -out key.pem ") + shape.options);
  openssl("pkcs8 -topk8 -nocrypt -in key.pem -outform DER -out key.der");

  const Element whole = take_apart("key.der");
  const auto record = kept(key_infos, whole.whole);
  EXPECT_EQ(0U, asn1_Integer_get(record->version));
  expect_algorithm(whole.parts.at(1), record->privateKeyAlgorithm);
  EXPECT_EQ(shape.dotted, identifier_text(record->privateKeyAlgorithm->algorithm));
  EXPECT_EQ(whole.parts.at(2).content, value(record->privateKey));
  EXPECT_EQ(nullptr, record->attributes);
}

INSTANTIATE_TEST_SUITE_P(Kinds, PrivateKeysOfOpenssl, testing::ValuesIn(key_shapes), Named());

TEST(RsaPrivateKeyInfoOfOpenssl, HoldsAnRsaPrivateKey) {
  openssl("pkcs8 -topk8 -nocrypt -outform DER -out rsa.p8 -in " + key("rsa"));
  openssl("rsa -traditional -outform DER -out rsa.p1 -in " + key("rsa"));
  const auto outer = kept(key_infos, read_file("rsa.p8"));
  EXPECT_EQ(read_file("rsa.p1"), value(outer->privateKey));
  kept(private_keys, value(outer->privateKey));
}

/// Keys that the documents of their algorithms list.
struct KnownKey {
  const char *name;
  const char *dotted;
  const char *parameters;
  const char *private_key;
  const char *public_key;
};
void PrintTo(const KnownKey &known, std::ostream *out) { *out << known.name; }

const KnownKey known_keys[] = {
    // RFC 8032, 7.1, test 1.
    {"Ed25519", "1.3.101.112", "",
     "04 20 9D61B19DEFFD5A60BA844AF492EC2CC44449C5697B326919703BAC031CAE7F60",
     "D75A980182B10AB7D54BFED3C964073A0EE172F3DAA62325AF021A68F707511A"},
    // The private key 1 of P-256, whose public key is the generator (FIPS 186-4, D.1.2.3).
    {"Ec", "1.2.840.10045.2.1", "06 08 2A 86 48 CE 3D 03 01 07",
     "30 25 02 01 01 04 20 0000000000000000000000000000000000000000000000000000000000000001",
     "046B17D1F2E12C4247F8BCE6E563A440F277037D812DEB33A0F4A13945D898C296"
     "4FE342E2FE1A7F9B8EE7EB4A7C0F9E162BCE33576B315ECECBB6406837BF51F5"},
};

class PrivateKeysForOpenssl : public testing::TestWithParam<KnownKey> {};

TEST_P(PrivateKeysForOpenssl, AreReadWithTheirValues) {
  const KnownKey &known = GetParam();
  constexpr int absent = -1;
  for (const int attributes : {absent, 0, 1, 2}) {
    SCOPED_TRACE(attributes);
    const auto record = created(key_infos);
    record->version = asn1_Integer_set(0);
    record->privateKeyAlgorithm =
        algorithm(identifier(known.dotted),
                  *known.parameters == '\0' ? nullptr : whole_element(hex(known.parameters)));
    record->privateKey = octet_string(hex(known.private_key));
    if (attributes != absent) record->attributes = List_new(0);
    for (int i = 0; i < attributes; ++i)
      List_append(record->attributes,
                  attribute(asn1_Get_friendlyName(), element(0x1E, hex("00 41 00 42"))), 0);
    write_file("made.der", encoded(key_infos, record));

    const std::string report = openssl("pkey -inform DER -in made.der -noout -text");
    EXPECT_EQ(hex(known.public_key), printed_number("pub:", report));
    const Element whole = take_apart("made.der");
    ASSERT_EQ(attributes == absent ? 3U : 4U, whole.parts.size());
    if (attributes != absent) {
      EXPECT_EQ("cont [ 0 ]", whole.parts[3].type);
      EXPECT_EQ(static_cast<size_t>(attributes), whole.parts[3].parts.size());
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, PrivateKeysForOpenssl, testing::ValuesIn(known_keys), Named());

/* ------------------------------------------------------------------------------------------- */
/* Encrypted private keys                                                                        */
/* ------------------------------------------------------------------------------------------- */

struct EncryptionShape {
  const char *name;
  const char *options;
  const char *dotted;
  uint32_t iterations;  // of a scheme whose parameters are PbeParams; 0 for others
  bool decrypts;        // also without the tool's own reader
};
void PrintTo(const EncryptionShape &shape, std::ostream *out) { *out << shape.name; }

const EncryptionShape encryption_shapes[] = {
    {"Aes256", "-v2 aes-256-cbc", pbes2, 0, true},
    {"Aes128AndAnotherDigest", "-v2 aes-128-cbc -v2prf hmacWithSHA512 -iter 4711", pbes2, 0, true},
    {"TripleDes", "-v2 des3", pbes2, 0, true},
    {"Scrypt", "-scrypt -scrypt_N 16", pbes2, 0, false},
    {"LegacyTripleDes", "-v1 PBE-SHA1-3DES", triple_des, 2048, true},
    {"LegacyTripleDesOfTwoKeys", "-v1 PBE-SHA1-2DES -iter 3", triple_des_of_two_keys, 3, true},
    {"LegacyRc2", "-v1 PBE-SHA1-RC2-40 -iter 65536 -provider legacy -provider default",
     rc2_of_40_bits, 65536, true},
    {"LegacyDesWithMd5", "-v1 PBE-MD5-DES -provider legacy -provider default",
     "1.2.840.113549.1.5.3", 2048, false},
};

class EncryptedKeysOfOpenssl : public testing::TestWithParam<EncryptionShape> {};

TEST_P(EncryptedKeysOfOpenssl, ReadAsTheyAreAndDecrypt) {
  const EncryptionShape &shape = GetParam();
  openssl("pkcs8 -topk8 -nocrypt -outform DER -out plain.der -in " + key("ec"));
  openssl(std::string("pkcs8 -topk8 -outform DER -out encrypted.der -passout pass:") + password +
          " " + shape.options + " -in " + key("ec"));

  const Element whole = take_apart("encrypted.der");
  const auto record = kept(encrypted_key_infos, whole.whole);
  const AlgId *scheme = record->encryptionAlgorithm;
  expect_algorithm(whole.parts.at(0), scheme);
  EXPECT_EQ(shape.dotted, identifier_text(scheme->algorithm));
  EXPECT_EQ(whole.parts.at(1).content, value(record->encryptedData));
  if (shape.iterations != 0) {
    const auto parameters = kept(pbe_parameters, value(scheme->parameters));
    EXPECT_EQ(whole.parts[0].parts.at(1).parts.at(0).content, value(parameters->salt));
    EXPECT_EQ(shape.iterations, asn1_Integer_get(parameters->iterations));
  }
  if (shape.decrypts) {
    EXPECT_EQ(read_file("plain.der"), through_cipher("-d", scheme, value(record->encryptedData)));
  }
}

INSTANTIATE_TEST_SUITE_P(Schemes, EncryptedKeysOfOpenssl, testing::ValuesIn(encryption_shapes),
                         Named());

class EncryptedKeysForOpenssl : public testing::TestWithParam<SchemeShape> {};

TEST_P(EncryptedKeysForOpenssl, AreDecrypted) {
  openssl("pkcs8 -topk8 -nocrypt -outform DER -out plain.der -in " + key("ec"));
  const auto record = created(encrypted_key_infos);
  record->encryptionAlgorithm = GetParam().made();
  record->encryptedData =
      octet_string(through_cipher("-e", record->encryptionAlgorithm, read_file("plain.der")));
  write_file("made.der", encoded(encrypted_key_infos, record));
  const std::string decrypt =
      "pkcs8 -topk8 -nocrypt -inform DER -in made.der -outform DER -out decrypted.der -passin "
      "pass:";
  openssl(decrypt + password);
  EXPECT_EQ(read_file("plain.der"), read_file("decrypted.der"));
  EXPECT_TRUE(openssl_refuses(decrypt + "wrong"));
}

INSTANTIATE_TEST_SUITE_P(Schemes, EncryptedKeysForOpenssl, testing::ValuesIn(scheme_shapes),
                         Named());

/* ------------------------------------------------------------------------------------------- */
/* DSA                                                                                           */
/* ------------------------------------------------------------------------------------------- */

constexpr std::pair<const char *, Integer * DssParms::*> dsa_numbers[] = {
    {"P:", &DssParms::p}, {"Q:", &DssParms::q}, {"G:", &DssParms::g}};

struct DsaShape {
  const char *name;
  const char *options;
};
void PrintTo(const DsaShape &shape, std::ostream *out) { *out << shape.name; }

const DsaShape dsa_shapes[] = {
    {"Of1024And160Bits", "-pkeyopt dsa_paramgen_bits:1024 -pkeyopt dsa_paramgen_q_bits:160"},
    {"Of1024And256Bits", "-pkeyopt dsa_paramgen_bits:1024 -pkeyopt dsa_paramgen_q_bits:256"},
};

class DsaKeys : public testing::TestWithParam<DsaShape> {
 protected:
  DsaKeys() {
    openssl(std::string("genpkey -genparam -algorithm DSA -out parameters.pem ") +
            GetParam().options);
    openssl("asn1parse -in parameters.pem -noout -out parameters.der");
    report = openssl("dsaparam -in parameters.pem -noout -text");
  }
  std::string report;
};

TEST_P(DsaKeys, OfTheToolReadAsReportedAndComeBack) {
  const Bytes octets = read_file("parameters.der");
  const auto record = kept(dsa_parameters, octets);
  for (const auto &[label, field] : dsa_numbers)
    EXPECT_EQ(printed_number(label, report), value(record.get()->*field)) << label;

  openssl("genpkey -paramfile parameters.pem -out key.pem");
  openssl("pkey -in key.pem -pubout -outform DER -out public.der");
  const auto subject = record_of<asn1_SubjectPKI_free>(asn1_SubjectPKI_d, read_file("public.der"));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_dsa(), subject->algorithm->algorithm));
  EXPECT_EQ(octets, value(subject->algorithm->parameters));
  const auto y = record_of<asn1_Integer_free>(asn1_Integer_d, value(subject->subjectPublicKey));
  EXPECT_EQ(printed_number("pub:", openssl("pkey -in key.pem -noout -text")), value(y.get()));
}

TEST_P(DsaKeys, FilledByHandAreReadWithTheirNumbers) {
  const auto record = created(dsa_parameters);
  for (const auto &[label, field] : dsa_numbers)
    record.get()->*field = number(printed_number(label, report));
  write_pem("made.pem", "DSA PARAMETERS", encoded(dsa_parameters, record));
  EXPECT_EQ(report, openssl("dsaparam -in made.pem -noout -text"));
  EXPECT_EQ("Parameters are valid\n", openssl("pkeyparam -in made.pem -noout -check"));
}

INSTANTIATE_TEST_SUITE_P(Parameters, DsaKeys, testing::ValuesIn(dsa_shapes), Named());

class DsaSignatures : public testing::TestWithParam<const char *> {
 protected:
  DsaSignatures() {
    if (kind == "ec") {
      openssl("pkey -out key.pem -in " + key("ec"));
    } else {
      openssl("genpkey -genparam -algorithm DSA -pkeyopt dsa_paramgen_bits:1024 -out dsa.params");
      openssl("genpkey -paramfile dsa.params -out key.pem");
    }
    openssl("pkey -in key.pem -pubout -out public.pem");
    write_file("message", text("signed"));
  }
  /// Returns the two numbers of a new signature, as the tool finds them.
  std::pair<Bytes, Bytes> sign() const {
    openssl("dgst -sha256 -sign key.pem -out signature message");
    const Element whole = take_apart("signature");
    const auto magnitude = [](const Bytes &octets) {
      return octets.at(0) == 0 ? Bytes(octets.begin() + 1, octets.end()) : octets;
    };
    return {magnitude(whole.parts.at(0).content), magnitude(whole.parts.at(1).content)};
  }
  const std::string kind = GetParam();
  const std::string verify = "dgst -sha256 -verify public.pem -signature signature message";
};

TEST_P(DsaSignatures, OfTheToolReadAsTheyAreAndComeBack) {
  for (int i = 0; i < 8; ++i) {
    const auto [r, s] = sign();
    const auto record = kept(dsa_signatures, read_file("signature"));
    EXPECT_EQ(r, value(record->r));
    EXPECT_EQ(s, value(record->s));
  }
}

TEST_P(DsaSignatures, FilledByHandAreVerified) {
  const auto [r, s] = sign();
  const auto record = created(dsa_signatures);
  record->r = number(r);
  record->s = number(s);
  write_file("signature", encoded(dsa_signatures, record));
  EXPECT_EQ("Verified OK\n", openssl(verify));
  std::swap(record->r, record->s);
  write_file("signature", encoded(dsa_signatures, record));
  EXPECT_TRUE(openssl_refuses(verify));
}

INSTANTIATE_TEST_SUITE_P(Keys, DsaSignatures, testing::Values("dsa", "ec"),
                         [](const auto &kind) { return std::string(kind.param); });

/* ------------------------------------------------------------------------------------------- */
/* Diffie-Hellman                                                                                */
/* ------------------------------------------------------------------------------------------- */

/// Makes the tool make parameters. Returns the elements that it finds in them.
Element generated_parameters(const std::string &options) {
  openssl("genpkey -genparam -out parameters.pem " + options);
  openssl("asn1parse -in parameters.pem -noout -out parameters.der");
  return take_apart("parameters.der");
}

constexpr Integer *DomainParameters::*dh_numbers[] = {&DomainParameters::p, &DomainParameters::g,
                                                      &DomainParameters::q, &DomainParameters::j};

struct DhShape {
  const char *name;
  const char *options;
  size_t numbers;
};
void PrintTo(const DhShape &shape, std::ostream *out) { *out << shape.name; }

const DhShape dh_shapes[] = {
    {"OfPrimeAndGenerator", "-algorithm DH -pkeyopt group:ffdhe2048", 2},
    {"OfRfc5114Of1024And160Bits", "-algorithm DHX -pkeyopt dh_rfc5114:1", 3},
    {"OfRfc5114Of2048And224Bits", "-algorithm DHX -pkeyopt dh_rfc5114:2", 3},
    {"OfRfc5114Of2048And256Bits", "-algorithm DHX -pkeyopt dh_rfc5114:3", 3},
};

class DhParametersOfOpenssl : public testing::TestWithParam<DhShape> {};

TEST_P(DhParametersOfOpenssl, ReadAsTheyAreAndComeBack) {
  const Element whole = generated_parameters(GetParam().options);
  ASSERT_EQ(GetParam().numbers, whole.parts.size());
  const auto record = kept(dh_parameters, whole.whole);
  for (size_t i = 0; i < std::size(dh_numbers); ++i) {
    const Integer *integer = record.get()->*dh_numbers[i];
    ASSERT_EQ(i < whole.parts.size(), integer != nullptr);
    if (integer != nullptr) {
      EXPECT_EQ(whole.parts[i].whole, encode(asn1_Integer_e, integer));
    }
  }
  EXPECT_EQ(nullptr, record->validationParms);
}

INSTANTIATE_TEST_SUITE_P(Shapes, DhParametersOfOpenssl, testing::ValuesIn(dh_shapes), Named());

/// Returns the octets of a BIT STRING as this library writes it, without the zero bits at its end.
Bytes trimmed_bit_string(Bytes bits) {
  while (!bits.empty() && bits.back() == 0) bits.pop_back();
  const auto unused = bits.empty() ? 0 : std::countr_zero(bits.back());
  return element(3, Bytes{static_cast<uint8_t>(unused)} + bits);
}

constexpr const char *generate_with_seed =
    "-algorithm DHX -pkeyopt dh_paramgen_type:1 -pkeyopt dh_paramgen_prime_len:1024"
    " -pkeyopt dh_paramgen_subprime_len:160";

// The tool leaves out the cofactor, which the decoder requires before the seed.
TEST(DhParametersWithASeed, OfTheToolAreRefusedAndYetWrittenInTheSameForm) {
  const Element whole = generated_parameters(generate_with_seed);
  ASSERT_EQ(4U, whole.parts.size());
  expect_refused(dh_parameters, whole.whole);

  const std::string report = openssl("dhparam -in parameters.pem -noout -text");
  const Element &validation = whole.parts[3];
  const Bytes &seed_content = validation.parts.at(0).content;  // after the count of unused bits
  const Bytes seed(seed_content.begin() + 1, seed_content.end());
  const auto parms = decoded(seeds, validation.whole);
  EXPECT_EQ(seed, value(parms->seed));
  EXPECT_EQ(after("pcounter: ", report), std::to_string(asn1_Integer_get(parms->pgenCounter)));
  EXPECT_EQ(sequence(trimmed_bit_string(seed) + validation.parts.at(1).whole),
            encoded(seeds, parms));

  const auto record = created(dh_parameters);
  record->p = number(printed_number("P:", report));
  record->g = number(printed_number("G:", report));
  record->q = number(printed_number("Q:", report));
  record->validationParms = asn1_ValidationParms_clone(parms.get());
  EXPECT_EQ(sequence(whole.parts[0].whole + whole.parts[1].whole + whole.parts[2].whole +
                     encoded(seeds, parms)),
            encoded(dh_parameters, record));
  expect_refused(dh_parameters, encoded(dh_parameters, record));
}

/// Numbers of a group whose prime is small, and a seed.
struct SeedShape {
  const char *name;
  const char *seed;
  uint32_t counter;
};
void PrintTo(const SeedShape &shape, std::ostream *out) { *out << shape.name; }

const SeedShape seed_shapes[] = {
    {"EndingInASetBit", "C157F2EA08E2885D3373AB286F9A91442B9C58E9", 53},
    {"EndingInZeroBits", "C157F2EA08E2885D3373AB286F9A91442B9C58E0", 0},
    {"EndingInZeroOctets", "C157F2EA08E2885D3373AB286F9A91442B9C0000", 0x12345},
};

class DhParametersForOpenssl : public testing::TestWithParam<SeedShape> {};

TEST_P(DhParametersForOpenssl, AreReadWithTheirNumbersAndComeBackFromTheTool) {
  // A prime of the form 2q + 1. The tool knows neither its q nor its j.
  const Element group = generated_parameters("-algorithm DH -pkeyopt dh_paramgen_prime_len:512");
  const Bytes &prime_content = group.parts.at(0).content;
  const Bytes p(prime_content.begin() + 1, prime_content.end());
  Bytes q = p;
  for (size_t i = q.size(); i-- > 0;)
    q[i] = static_cast<uint8_t>(p[i] >> 1 | (i == 0 ? 0 : p[i - 1] << 7));

  const Bytes seed = hex(GetParam().seed);
  const auto record = created(dh_parameters);
  record->p = number(p);
  record->g = asn1_Integer_set(4);
  record->q = number(q);
  record->j = asn1_Integer_set(2);
  record->validationParms = asn1_ValidationParms_new();
  record->validationParms->seed = bit_string(seed);
  record->validationParms->pgenCounter = asn1_Integer_set(GetParam().counter);
  const Bytes octets = encoded(dh_parameters, record);

  write_pem("made.pem", "X9.42 DH PARAMETERS", octets);
  const Element made = take_apart("pem.der");
  EXPECT_EQ(trimmed_bit_string(seed), made.parts.at(4).parts.at(0).whole);
  const std::string report = openssl("dhparam -in made.pem -noout -text");
  EXPECT_EQ(p, printed_number("P:", report));
  EXPECT_EQ(q, printed_number("Q:", report));
  EXPECT_EQ("    4 (0x4)", after("G:", report));
  EXPECT_EQ("    2 (0x2)", after("J:", report));
  EXPECT_EQ(std::to_string(GetParam().counter), after("pcounter: ", report));
  Bytes kept_seed = seed;
  while (kept_seed.back() == 0) kept_seed.pop_back();
  EXPECT_EQ(kept_seed, printed_number("SEED:", report));

  // The tool drops the unused bits, and then writes what the library reads.
  openssl("dhparam -in made.pem -outform DER -out again.der");
  const auto again = decoded(dh_parameters, read_file("again.der"));
  EXPECT_EQ(kept_seed, value(again->validationParms->seed));
  EXPECT_EQ(octets, encoded(dh_parameters, again));
}

INSTANTIATE_TEST_SUITE_P(Seeds, DhParametersForOpenssl, testing::ValuesIn(seed_shapes), Named());

/* ------------------------------------------------------------------------------------------- */
/* Key challenges                                                                                */
/* ------------------------------------------------------------------------------------------- */

class KeyChallenges : public testing::TestWithParam<const char *> {
 protected:
  /// Writes a signed challenge in the form that the tool reads.
  static void write_challenge(const Bytes &octets) {
    write_file("challenge.der", octets);
    write_file("challenge.txt", text("SPKAC=" + openssl("base64 -A -in challenge.der") + "\n"));
  }
  const std::string verify = "spkac -in challenge.txt -verify";
  const std::string kind = GetParam();
};

TEST_P(KeyChallenges, OfTheToolReadAsTheyAreAndAreMeasuredAndWrittenAnew) {
  bool seen[2] = {false, false};
  for (int i = 0; (!seen[0] || !seen[1]) && i < 100; ++i) {
    const std::string challenge = "challenge " + std::to_string(i);
    const Bytes octets =
        from_base64(after("SPKAC=", openssl("spkac -key " + key(kind) +
                                            " -digest sha256 -challenge '" + challenge + "'")));
    write_file("challenge.der", octets);
    const Element whole = take_apart("challenge.der");
    const Bytes &bits = whole.parts.at(2).content;
    const Bytes signature(bits.begin() + 1, bits.end());
    const bool ends_in_a_set_bit = signature.back() % 2 != 0;
    if (std::exchange(seen[ends_in_a_set_bit], true)) continue;

    const auto record = decoded(signed_key_challenges, octets);
    EXPECT_EQ(whole.parts[0].whole, value(record->tbsEncoded));
    EXPECT_EQ(read_file(kind + ".spki"),
              encode(asn1_SubjectPKI_e, record->publicKeyAndChallenge->spki));
    EXPECT_EQ(text(challenge), value(record->publicKeyAndChallenge->challenge));
    expect_algorithm(whole.parts.at(1), record->signatureAlgorithm);
    EXPECT_EQ(signature, value(record->signature));
    kept(key_challenges, whole.parts[0].whole);

    // While the record has its signed octets, it can only be measured.
    const Bytes written =
        sequence(whole.parts[0].whole + whole.parts[1].whole + trimmed_bit_string(signature));
    EXPECT_EQ(written.size(), asn1_SignedPublicKeyAndChallenge_e(nullptr, record.get()));
    Bytes buffer(octets.size(), 0xEE);
    uint8_t *cursor = buffer.data();
    EXPECT_EQ(0U, asn1_SignedPublicKeyAndChallenge_e(&cursor, record.get()));
    EXPECT_EQ(buffer.data(), cursor);
    EXPECT_EQ(Bytes(octets.size(), 0xEE), buffer);

    release(asn1_OctetString_free, record->tbsEncoded);
    EXPECT_EQ(written, encoded(signed_key_challenges, record));
    EXPECT_EQ(ends_in_a_set_bit, written == octets);
    write_challenge(written);
    EXPECT_EQ(ends_in_a_set_bit, !openssl_refuses(verify));
  }
  EXPECT_TRUE(seen[0] && seen[1]);
}

TEST_P(KeyChallenges, FilledByHandAreVerified) {
  const auto record = created(signed_key_challenges);
  key(kind);
  record->publicKeyAndChallenge = asn1_PublicKeyAndChallenge_new();
  record->publicKeyAndChallenge->spki =
      record_of<asn1_SubjectPKI_free>(asn1_SubjectPKI_d, read_file(kind + ".spki")).release();
  record->signatureAlgorithm = signature_algorithm(kind);
  // Repeats until the signature ends in a set bit, because zero bits at its end would be left out.
  for (int i = 0; i < 100; ++i) {
    release(asn1_IA5String_free, record->publicKeyAndChallenge->challenge);
    record->publicKeyAndChallenge->challenge = octet_string(text("by hand " + std::to_string(i)));
    const Bytes signature =
        signature_over(encode(asn1_PublicKeyAndChallenge_e, record->publicKeyAndChallenge), kind);
    if (signature.back() % 2 == 0) continue;
    record->signature = bit_string(signature);
    break;
  }
  write_challenge(encoded(signed_key_challenges, record));
  const std::string report = openssl(verify);
  EXPECT_NE(std::string::npos, report.find("Signature OK"));
  const Bytes challenge = value(record->publicKeyAndChallenge->challenge);
  EXPECT_EQ(std::string(challenge.begin(), challenge.end()), after("Challenge String: ", report));
  openssl("spkac -in challenge.txt -noout -pubkey -out public.pem");
  openssl("pkey -pubin -in public.pem -outform DER -out public.der");
  EXPECT_EQ(read_file(kind + ".spki"), read_file("public.der"));
}

INSTANTIATE_TEST_SUITE_P(Keys, KeyChallenges, testing::Values("rsa", "ec"),
                         [](const auto &kind) { return std::string(kind.param); });

}  // namespace

}  // namespace keys_test
