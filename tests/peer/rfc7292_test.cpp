// Stores in the form of RFC 7292, and keys in that of RFC 5958, against the openssl tool.
#include <forms.h>

#include <set>

#include "by_hand.h"

namespace rfc7292_test {

namespace {

using namespace support;

const auto stores = FORM(PFX, pki_PFX);
const auto keys = FORM(OneAsymmetricKey, pki_OneAsymmetricKey);
const auto encrypted_keys = FORM(EncryptedPrivateKeyInfo, EncryptedPrivateKeyInfo);
const auto curve_keys = FORM(ECPrivateKey, pki_ECPrivateKey);
const auto rsa_keys = FORM(RSAPrivateKey, pki_RSAPrivateKey);
const auto parameters = FORM(ECParameters, pki_ECParameters);
const auto signatures = FORM(ECDSA_Sig_Value, pki_ECDSA_Sig_Value);
const auto pss = FORM(RSASSA_PSS_params, pki_RSASSA_PSS_params);

// ---------------------------------------------------------------------------------------------
// The example of the header rfc7292.h
// ---------------------------------------------------------------------------------------------

// rfc7292_example.c
extern "C" void each_certificate(const pki_PFX *pfx, void (*f)(const Certificate *));

/// Returns what is not blank of the lines of a file that begin with `prefix`, without the prefix.
std::string characters_of(const std::string &file, const std::string &prefix) {
  std::ifstream in(std::filesystem::path(__FILE__).parent_path() / file);
  std::string out;
  for (std::string line; std::getline(in, line);)
    if (line.starts_with(prefix)) out += line.substr(prefix.size());
  std::erase_if(out, [](char c) { return c == ' '; });
  return out;
}

TEST(ExampleOfTheHeader, IsTheOneThatIsTested) {
  const std::string example = characters_of("../../include/rfc7292.h", " *     ");
  EXPECT_NE(std::string::npos, example.find("each_certificate"));
  EXPECT_NE(std::string::npos, characters_of("rfc7292_example.c", "").find(example));
}

std::multiset<Bytes> found_certificates;

std::multiset<Bytes> certificates_of(const pki_PFX *store) {
  found_certificates.clear();
  each_certificate(store, [](const Certificate *certificate) {
    found_certificates.insert(encode(pki_Certificate_e, certificate));
  });
  return found_certificates;
}

// ---------------------------------------------------------------------------------------------
// Stores
// ---------------------------------------------------------------------------------------------

TEST(StoreOfOpenssl, HasItsCertificates) {
  certificate_file("rsa");
  certificate_file("ec");
  openssl(
      "pkcs12 -export -keypbe NONE -certpbe NONE -passout pass:secret -name me -in rsa.crt -inkey "
      "rsa.pem -certfile ec.crt -out store.p12");
  const auto store = kept(stores, read_file("store.p12"));
  EXPECT_EQ(3U, asn1_Integer_get(store->version));
  EXPECT_EQ(2048U, asn1_Integer_get(store->macData->iterations));
  EXPECT_EQ((std::multiset<Bytes>{read_file("rsa.crt.der"), read_file("ec.crt.der")}),
            certificates_of(store.get()));
}

/// Returns the list in an OCTET STRING, which the caller owns.
template <auto Decode>
List *list_in(const Any *string) {
  const auto octets = record_of<asn1_OctetString_free>(asn1_OctetString_d, value(string));
  return decode(Decode, value(octets.get())).record;
}

TEST(StoreOfOpenssl, KeepsWhatIsEncrypted) {
  certificate_file("rsa");
  openssl("pkcs12 -export -passout pass:secret -in rsa.crt -inkey rsa.pem -out store.p12");
  const auto store = kept(stores, read_file("store.p12"));
  EXPECT_EQ(std::multiset<Bytes>(), certificates_of(store.get()));
  List *const safe = list_in<pki_AuthenticatedSafe_d>(store->authSafe->content);
  ASSERT_EQ(2, List_len(safe));
  const auto &first = element_of<const pki_ContentInfo>(safe, 0);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_encryptedData(), first.contentType));
  const auto message = record_of<pki_EncryptedData_free>(pki_EncryptedData_d, value(first.content));
  EXPECT_LT(0U, message->encryptedContentInfo->encryptedContent->length);
  List *const bags =
      list_in<pki_SafeContents_d>(element_of<const pki_ContentInfo>(safe, 1).content);
  ASSERT_EQ(1, List_len(bags));
  const auto &bag = element_of<const SafeBag>(bags, 0);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_pkcs_8ShroudedKeyBag(), bag.bagId));
  kept(encrypted_keys, value(bag.bagValue));
  pki_SafeContents_free(bags);
  pki_AuthenticatedSafe_free(safe);
}

/// Returns a bag with a friendly name.
SafeBag *bag_by_hand(const ObjId *type, const Bytes &octets) {
  auto *bag = pki_SafeBag_new();
  bag->bagId = identifier(type);
  bag->bagValue = whole_element(octets);
  bag->bagAttributes = owning_list({attribute(asn1_Get_friendlyName(), hex("1E 04 00 4D 00 65"))});
  return bag;
}

/// Returns a content of the type data.
pki_ContentInfo *data_of(const Bytes &octets) {
  auto *info = pki_ContentInfo_new();
  info->contentType = identifier(asn1_Get_data());
  info->content = whole_element(element(0x04, octets));
  return info;
}

TEST(StoreByHand, IsOpenedByTheTool) {
  const Bytes certificate = read_file(certificate_file("ec") + ".der");
  auto *inner = pki_CertBag_new();
  inner->certId = identifier(asn1_Get_x509Certificate());
  inner->certValue = whole_element(element(0x04, certificate));
  const Bytes cert_bag = encode(pki_CertBag_e, inner);
  pki_CertBag_free(inner);
  openssl("pkcs8 -topk8 -nocrypt -in " + key("ec") + " -outform DER -out ec.p8");

  List *const bags = owning_list({bag_by_hand(asn1_Get_certBag(), cert_bag),
                                  bag_by_hand(asn1_Get_keyBag(), read_file("ec.p8"))});
  List *const safe = owning_list({data_of(encode(pki_SafeContents_e, bags))});
  const auto store = created(stores);
  store->version = asn1_Integer_set(3);
  store->authSafe = data_of(encode(pki_AuthenticatedSafe_e, safe));
  pki_SafeContents_free(bags);
  pki_AuthenticatedSafe_free(safe);

  const Bytes octets = encoded(stores, store);
  kept(stores, octets);
  EXPECT_EQ(std::multiset<Bytes>{certificate}, certificates_of(store.get()));
  write_file("by_hand.p12", octets);
  const std::string report =
      openssl("pkcs12 -in by_hand.p12 -info -noenc -nomacver -passin pass: -out opened.pem");
  EXPECT_NE(std::string::npos, report.find("Certificate bag"));
  EXPECT_NE(std::string::npos, report.find("Key bag"));
  openssl("x509 -in opened.pem -outform DER -out opened.der");
  EXPECT_EQ(certificate, read_file("opened.der"));
  openssl("pkcs8 -topk8 -nocrypt -in opened.pem -outform DER -out opened.p8");
  EXPECT_EQ(read_file("ec.p8"), read_file("opened.p8"));
  const Bytes opened = read_file("opened.pem");
  EXPECT_NE(std::string::npos, std::string(opened.begin(), opened.end()).find("friendlyName: Me"));
}

TEST(StoreOfIndefiniteLength, HasItsCertificates) {
  // The tool's store, with its outer SEQUENCEs and OCTET STRING in BER.
  certificate_file("rsa");
  openssl("pkcs12 -export -nokeys -certpbe NONE -nomac -passout pass: -in rsa.crt -out store.p12");
  const Element whole = take_apart("store.p12");
  const Element &info = whole.parts.at(1);
  const Bytes safe = info.parts.at(1).parts.at(0).content;
  const auto middle = safe.begin() + 10;
  const Bytes ber = hex("30 80") + whole.parts.at(0).whole + hex("30 80") + info.parts.at(0).whole +
                    hex("A0 80 24 80") + element(0x04, Bytes(safe.begin(), middle)) + hex("24 80") +
                    element(0x04, Bytes(middle, safe.end())) + hex("00 00 00 00 00 00 00 00 00 00");
  write_file("ber.p12", ber);
  openssl("pkcs12 -in ber.p12 -nokeys -nomacver -passin pass: -out opened.pem");
  const auto store = decoded(stores, ber);
  ASSERT_NE(nullptr, store);
  EXPECT_EQ(std::multiset<Bytes>{read_file("rsa.crt.der")}, certificates_of(store.get()));
  write_file("der.p12", encoded(stores, store));
  openssl("pkcs12 -in der.p12 -nokeys -nomacver -passin pass: -out opened.pem");
}

// ---------------------------------------------------------------------------------------------
// Keys
// ---------------------------------------------------------------------------------------------

TEST(KeysOfOpenssl, ComeBack) {
  for (const char *kind : {"rsa", "ec", "ed25519"}) {
    SCOPED_TRACE(kind);
    openssl("pkcs8 -topk8 -nocrypt -in " + key(kind) + " -outform DER -out key.p8");
    kept(keys, read_file("key.p8"));
    openssl("pkcs8 -topk8 -passout pass:secret -in " + key(kind) + " -outform DER -out key.ep8");
    const auto encrypted = kept(encrypted_keys, read_file("key.ep8"));
    write_file("again.ep8", encoded(encrypted_keys, encrypted));
    openssl("pkcs8 -inform DER -in again.ep8 -passin pass:secret -out again.pem");
    openssl("pkcs8 -topk8 -nocrypt -in again.pem -outform DER -out again.p8");
    EXPECT_EQ(read_file("key.p8"), read_file("again.p8"));
  }
}

TEST(CurveKeysOfOpenssl, ComeBackInEachFormOfTheirParameters) {
  for (const char *encoding : {"named_curve", "explicit"}) {
    SCOPED_TRACE(encoding);
    const bool named = std::string(encoding) == "named_curve";
    openssl(std::string("ecparam -name secp384r1 -outform DER -out curve.der -param_enc ") +
            encoding);
    const auto curve = kept(parameters, read_file("curve.der"));
    EXPECT_EQ(named ? 6 : 16, curve->kind);
    openssl(std::string("ecparam -name secp384r1 -genkey -noout -outform DER -out key.der "
                        "-param_enc ") +
            encoding);
    const auto record = kept(curve_keys, read_file("key.der"));
    EXPECT_EQ(encoded(parameters, curve), encode(pki_ECParameters_e, record->parameters));
    EXPECT_EQ(48U, record->privateKey->length);
    const std::string report = openssl("ec -inform DER -in key.der -noout -text");
    EXPECT_EQ(printed_number("priv:", report), [&] {
      Bytes octets = value(record->privateKey);
      while (octets.front() == 0) octets.erase(octets.begin());
      return octets;
    }());
    EXPECT_EQ(printed_number("pub:", report), value(record->publicKey));
  }
}

TEST(RsaKeyOfOpenssl, MayHaveThreePrimes) {
  openssl(
      "genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:2048 -pkeyopt rsa_keygen_primes:3 -out "
      "three.pem");
  openssl("rsa -in three.pem -traditional -outform DER -out three.der");
  const auto record = kept(rsa_keys, read_file("three.der"));
  EXPECT_EQ(1U, asn1_Integer_get(record->version));
  ASSERT_EQ(1, List_len(record->otherPrimeInfos));
  const auto &other = element_of<const pki_OtherPrimeInfo>(record->otherPrimeInfos, 0);
  const std::string report = openssl("rsa -inform DER -in three.der -noout -text");
  EXPECT_EQ(printed_number("prime3:", report), value(other.prime));
  EXPECT_EQ(printed_number("exponent3:", report), value(other.exponent));
  EXPECT_EQ(printed_number("coefficient3:", report), value(other.coefficient));
  EXPECT_EQ(printed_number("modulus:", report), value(record->modulus));
}

TEST(CurveSignatureOfOpenssl, ComesBackAndIsVerifiedAfterwards) {
  const auto signature = kept(signatures, signature_over(text("x"), "ec"));
  auto rebuilt = created(signatures);
  rebuilt->r = number(value(signature->r));
  rebuilt->s = number(value(signature->s));
  write_file("signature", encoded(signatures, rebuilt));
  openssl("pkeyutl -verify -rawin -digest sha256 -in to_be_signed -sigfile signature -inkey " +
          key("ec"));
}

TEST(PssParametersOfOpenssl, AreOfTheCertificateThatItSigned) {
  openssl(
      "req -x509 -new -subj /CN=x -sha384 -sigopt rsa_padding_mode:pss -sigopt "
      "rsa_pss_saltlen:48 -outform DER -out pss.der -key " +
      key("rsa"));
  const auto certificate = record_of<pki_Certificate_free>(pki_Certificate_d, read_file("pss.der"));
  const auto record = kept(pss, value(certificate->signatureAlgorithm->parameters));
  EXPECT_EQ("2.16.840.1.101.3.4.2.2", identifier_text(record->hashAlgorithm->algorithm));
  EXPECT_EQ("1.2.840.113549.1.1.8", identifier_text(record->maskGenAlgorithm->algorithm));
  EXPECT_EQ(48U, asn1_Integer_get(record->saltLength));
  EXPECT_EQ(nullptr, record->trailerField);
}

}  // namespace

}  // namespace rfc7292_test
