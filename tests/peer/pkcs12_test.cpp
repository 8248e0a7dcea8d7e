// Tests PKCS #12 files against the openssl tool: the library reads those of the tool down to their
// certificates and keys, and the tool opens those of the library.
#include "password.h"

namespace pkcs12_test {

namespace {

using namespace support;

const auto exchanges = RECORD_FAMILY(PFX);
const auto macs = RECORD_FAMILY(MacData);
const auto encrypted_messages = RECORD_FAMILY(EncryptedData);
const auto bags = RECORD_FAMILY(SafeBag);
const auto certificate_bags = RECORD_FAMILY(CertBag);
const auto crl_bags = RECORD_FAMILY(CRLBag);
const auto secret_bags = RECORD_FAMILY(SecretBag);
const auto key_infos = RECORD_FAMILY(PrivateKeyInfo);
const auto encrypted_key_infos = RECORD_FAMILY(EncryptedPrivateKeyInfo);

using HeldList = std::unique_ptr<List, void (*)(List *)>;

/// Decodes a SEQUENCE OF, and checks that it is written as it was read.
template <auto Encode, auto Decode, auto Free>
HeldList sequence_of(const Bytes &octets) {
  const Input input(octets);
  List *list = nullptr;
  EXPECT_EQ(input.end(), asn1_SeqOf_d(input.z(), input.end(), 0, Decode, Free, &list, 0));
  EXPECT_EQ(octets, encode_with([&](uint8_t **pp) { return asn1_SeqOf_e(pp, list, Encode); }));
  return {list, [](List *held) { List_free(held, Free); }};
}
constexpr auto safe_contents = sequence_of<asn1_SafeBag_e, asn1_SafeBag_d, asn1_SafeBag_free>;
constexpr auto authenticated_safe =
    sequence_of<asn1_ContentInfo_e, asn1_ContentInfo_d, asn1_ContentInfo_free>;

bool same(const ObjId *a, const ObjId *b) { return asn1_ObjId_cmp(a, b) == 0; }

/// Returns the MAC of RFC 7292 with the password.
Bytes mac_of(const std::string &digest, const Bytes &salt, uint32_t iterations,
             const Bytes &octets) {
  const size_t length = digest_of(digest, {}).size();
  const Bytes mac_key = derived_pkcs12('3', length, digest, salt, iterations);
  write_file("authenticated", octets);
  openssl("dgst -" + digest + " -mac HMAC -macopt hexkey:" + upper_hex(mac_key) +
          " -binary -out mac authenticated");
  return read_file("mac");
}

/* ------------------------------------------------------------------------------------------- */
/* Files of the tool                                                                             */
/* ------------------------------------------------------------------------------------------- */

/// Returns the tool's name for an identifier.
std::string name_of(const std::string &dotted) {
  static const std::map<std::string, const char *> names = {
      {triple_des, "pbeWithSHA1And3-KeyTripleDES-CBC"},
      {rc2_of_40_bits, "pbeWithSHA1And40BitRC2-CBC"},
      {hmac_with_sha256, "hmacWithSHA256"},
      {"2.16.840.1.101.3.4.1.2", "AES-128-CBC"},
      {aes_256_cbc, "AES-256-CBC"},
      {"1.2.840.113549.1.9.20", "friendlyName"},
      {"1.2.840.113549.1.9.21", "localKeyID"},
      {"1.3.6.1.4.1.311.17.1", "Microsoft CSP Name"},
      {"1.3.6.1.4.1.311.17.2", "Microsoft Local Key set"},
      {"2.5.29.15", "X509v3 Key Usage"}};
  for (const auto &[name, id] : digest_identifiers)
    if (id == dotted) return name;
  return names.at(dotted);
}

/// The contents of a file, in its order. Structure and attributes are printed as the tool prints
/// them.
class Contents {
 public:
  explicit Contents(const PFX *exchange) {
    EXPECT_EQ(3U, asn1_Integer_get(exchange->version));
    EXPECT_TRUE(same(asn1_Get_data(), exchange->authSafe->contentType));
    const Bytes safe = value(static_cast<const OctetString *>(exchange->authSafe->content->value));
    add_mac(exchange->macData, safe);
    const HeldList list = authenticated_safe(safe);
    for (const auto *message : elements_of<ContentInfo>(list.get())) add(message);
  }

  Lines structure;
  Lines attributes;
  std::vector<Bytes> certificates;
  std::vector<Bytes> keys;

 private:
  void add_mac(const MacData *data, const Bytes &safe) {
    if (data == nullptr) {
      structure.push_back("Warning: MAC is absent!");
      return;
    }
    const uint32_t iterations =
        data->iterations == nullptr ? 1 : asn1_Integer_get(data->iterations);
    const std::string digest = name_of(identifier_text(data->mac->digestAlgorithm->algorithm));
    const Bytes salt = value(data->macSalt), mac = value(data->mac->digest);
    structure.push_back("MAC: " + digest + ", Iteration " + std::to_string(iterations));
    structure.push_back("MAC length: " + std::to_string(mac.size()) +
                        ", salt length: " + std::to_string(salt.size()));
    EXPECT_EQ(mac_of(digest, salt, iterations, safe), mac);
  }

  void add(const ContentInfo *message) {
    Bytes octets;
    if (same(asn1_Get_data(), message->contentType)) {
      structure.push_back("PKCS7 Data");
      octets = value(static_cast<const OctetString *>(message->content->value));
    } else {
      EXPECT_TRUE(same(asn1_Get_encryptedData(), message->contentType));
      const auto *encrypted = static_cast<const EncryptedData *>(message->content->value);
      kept(encrypted_messages, encode(asn1_EncryptedData_e, encrypted));
      const EncryptedContentInfo *info = encrypted->encryptedContentInfo;
      EXPECT_EQ(0U, asn1_Integer_get(encrypted->version));
      EXPECT_TRUE(same(asn1_Get_data(), info->contentType));
      structure.push_back("PKCS7 Encrypted data: " + scheme_text(info->contentEncryptionAlgorithm));
      octets =
          through_cipher("-d", info->contentEncryptionAlgorithm, value(info->encryptedContent));
    }
    const HeldList list = safe_contents(octets);
    for (const auto *bag : elements_of<SafeBag>(list.get())) add(bag);
  }

  void add(const SafeBag *bag) {
    kept(bags, encode(asn1_SafeBag_e, bag));
    const Bytes octets = value(bag->bagValue);
    add_attributes("Bag Attributes", bag->bagAttributes);
    if (same(asn1_Get_certBag(), bag->bagId)) {
      structure.push_back("Certificate bag");
      const auto inner = kept(certificate_bags, octets);
      EXPECT_TRUE(same(asn1_Get_x509Certificate(), inner->certId));
      certificates.push_back(value(
          record_of<asn1_OctetString_free>(asn1_OctetString_d, value(inner->certValue)).get()));
    } else if (same(asn1_Get_keyBag(), bag->bagId)) {
      structure.push_back("Key bag");
      add_key(octets);
    } else {
      EXPECT_TRUE(same(asn1_Get_pkcs_8ShroudedKeyBag(), bag->bagId));
      const auto inner = kept(encrypted_key_infos, octets);
      structure.push_back("Shrouded Keybag: " + scheme_text(inner->encryptionAlgorithm));
      add_key(through_cipher("-d", inner->encryptionAlgorithm, value(inner->encryptedData)));
    }
  }

  void add_key(const Bytes &octets) {
    const auto info = kept(key_infos, octets);
    add_attributes("Key Attributes", info->attributes);
    List_free(info->attributes, asn1_Attribute_free);
    info->attributes = nullptr;
    keys.push_back(encoded(key_infos, info));
  }

  void add_attributes(const std::string &title, const List *list) {
    if (list == nullptr) {
      attributes.push_back(title + ": <No Attributes>");
      return;
    }
    attributes.push_back(title);
    for (const auto *one : elements_of<Attribute>(list)) {
      const auto values = elements_of<Any>(one->values);
      attributes.push_back("    " + name_of(identifier_text(one->type)) + ": " +
                           (values.empty() ? "<No Values>" : value_text(value(values.at(0)))));
    }
  }

  /// Prints an element with one length octet: characters of a BMPString, otherwise octets.
  static std::string value_text(const Bytes &element) {
    const size_t start = element.at(0) == 3 ? 3 : 2;  // a BIT STRING has the unused-bits octet
    EXPECT_EQ(element.size() - 2, element.at(1));
    std::string out;
    for (size_t i = start; i < element.size(); ++i) {
      if (element[0] != 0x1E) {
        out += upper_hex({element[i]}) + " ";
      } else if (i % 2 != 0) {
        out += static_cast<char>(element[i]);
      }
    }
    return out;
  }

  static std::string scheme_text(const AlgId *algorithm) {
    const Scheme scheme(algorithm);
    const std::string iterations = ", Iteration " + std::to_string(scheme.iterations);
    if (scheme.name != pbes2) return name_of(scheme.name) + iterations;
    return "PBES2, PBKDF2, " + name_of(scheme.cipher) + iterations + ", PRF " +
           name_of(scheme.function);
  }
};

Lines lines_of(const std::string &report) {
  Lines lines;
  std::istringstream all(report);
  for (std::string line; std::getline(all, line);) lines.push_back(line);
  return lines;
}

/// Returns what the tool prints for a file.
struct Report {
  explicit Report(const std::string &file) {
    structure = lines_of(openssl("pkcs12 -legacy -info -nodes -out report -in " + file +
                                 " -passin pass:" + password));
    const Bytes output = read_file("report");
    attributes = lines_of(std::string(output.begin(), output.end()));
    std::erase_if(attributes, [](const std::string &line) {
      return line.find(" Attributes") == std::string::npos && line.rfind("    ", 0) != 0;
    });
  }
  Lines structure;
  Lines attributes;
};

Bytes plain_key(const std::string &kind) {
  openssl("pkcs8 -topk8 -nocrypt -outform DER -out plain.der -in " + key(kind));
  return read_file("plain.der");
}

struct Shape {
  const char *name;
  const char *options;
  size_t certificates;
  size_t keys;
};
void PrintTo(const Shape &shape, std::ostream *out) { *out << shape.name; }

const Shape shapes[] = {
    {"AsTheToolHasIt", "", 1, 1},
    {"LegacyTripleDes", "-keypbe PBE-SHA1-3DES -certpbe PBE-SHA1-3DES -macalg sha1", 1, 1},
    {"LegacyRc2", "-legacy", 1, 1},
    {"OfOtherAlgorithms", "-keypbe aes-128-cbc -certpbe aes-128-cbc -macalg sha512", 1, 1},
    {"OfAnotherNumberOfIterations", "-iter 300", 1, 1},
    {"OfOneIteration", "-noiter -nomaciter", 1, 1},
    {"InTheClear", "-keypbe NONE -certpbe NONE", 1, 1},
    {"InTheClearWithoutAMac", "-keypbe NONE -certpbe NONE -nomac", 1, 1},
    {"WithAKeyInTheClear", "-keypbe NONE", 1, 1},
    {"WithCertificatesInTheClear", "-certpbe NONE", 1, 1},
    {"WithoutAMac", "-nomac", 1, 1},
    {"WithTwoCertificates", "-certfile ed25519.crt -caname 'an authority'", 2, 1},
    {"WithACertificateWithoutAttributes", "-certfile ed25519.crt", 2, 1},
    {"WithoutAKey", "-nokeys -caname 'no key'", 1, 0},
    {"WithAttributesOfTheKey", "-keypbe NONE -keysig -CSP provider -LMK", 1, 1},
    {"WithAttributesOfAnEncryptedKey", "-keyex -CSP provider", 1, 1},
};

class ExchangesOfOpenssl : public testing::TestWithParam<Shape> {};

TEST_P(ExchangesOfOpenssl, ReadAsReportedAndComeBack) {
  const Shape &shape = GetParam();
  certificate_file("ed25519");
  openssl("pkcs12 -export -out file.p12 -name 'a name' -in " + certificate_file("ec") + " -inkey " +
          key("ec") + " -passout pass:" + password + " " + shape.options);

  const Element whole = take_apart("file.p12");
  const auto exchange = kept(exchanges, whole.whole);
  ASSERT_EQ(whole.parts.size() == 3, exchange->macData != nullptr);
  if (exchange->macData != nullptr) {
    const auto mac = kept(macs, whole.parts[2].whole);
    EXPECT_EQ(whole.parts[2].parts.size() == 3, mac->iterations != nullptr);
  }

  const Contents contents(exchange.get());
  const Report report("file.p12");
  EXPECT_EQ(report.structure, contents.structure);
  EXPECT_EQ(report.attributes, contents.attributes);
  std::vector<Bytes> certificates;
  for (const char *kind : {"ec", "ed25519"})
    certificates.push_back(read_file(std::string(kind) + ".crt.der"));
  certificates.resize(shape.certificates);
  EXPECT_EQ(certificates, contents.certificates);
  EXPECT_EQ(std::vector<Bytes>(shape.keys, plain_key("ec")), contents.keys);
}

INSTANTIATE_TEST_SUITE_P(Shapes, ExchangesOfOpenssl, testing::ValuesIn(shapes),
                         [](const auto &shape) { return std::string(shape.param.name); });

/* ------------------------------------------------------------------------------------------- */
/* Files for the tool                                                                            */
/* ------------------------------------------------------------------------------------------- */

/// Returns the octets of a small bag.
template <class T>
Bytes small_bag(const RecordFamily<T> &family, ObjId *T::*id, const ObjId *type, Any *T::*held,
                const Bytes &octets) {
  const auto bag = created(family);
  bag.get()->*id = identifier(type);
  bag.get()->*held = whole_element(octets);
  return encoded(family, bag);
}

Bytes certificate_bag(const Bytes &certificate) {
  return small_bag(certificate_bags, &CertBag::certId, asn1_Get_x509Certificate(),
                   &CertBag::certValue, element(4, certificate));
}

/// Returns a bag with the attributes that a key and its certificate share.
SafeBag *safe_bag(const ObjId *type, const Bytes &octets) {
  SafeBag *bag = asn1_SafeBag_new();
  bag->bagId = identifier(type);
  bag->bagValue = whole_element(octets);
  bag->bagAttributes =
      owning_list({attribute(asn1_Get_friendlyName(), element(0x1E, bmp_octets("by hand"))),
                   attribute(asn1_Get_localKeyId(), element(4, hex("17 4F")))});
  return bag;
}
constexpr const char *friendly_name = "    friendlyName: by hand";
constexpr const char *local_key_id = "    localKeyID: 17 4F ";

Bytes safe_of(SafeBag *bag) {
  const HeldList list(owning_list({bag}), [](List *held) { List_free(held, asn1_SafeBag_free); });
  return encode_with([&](uint8_t **pp) { return asn1_SeqOf_e(pp, list.get(), asn1_SafeBag_e); });
}

ContentInfo *data_message(const Bytes &octets) {
  ContentInfo *message = asn1_ContentInfo_new();
  message->contentType = identifier(asn1_Get_data());
  message->content->value = octet_string(octets);
  return message;
}

ContentInfo *encrypted_message(AlgId *scheme, const Bytes &octets) {
  auto *data = asn1_EncryptedData_new();
  data->version = asn1_Integer_set(0);
  data->encryptedContentInfo = asn1_EncryptedContentInfo_new();
  data->encryptedContentInfo->contentType = identifier(asn1_Get_data());
  data->encryptedContentInfo->contentEncryptionAlgorithm = scheme;
  data->encryptedContentInfo->encryptedContent = octet_string(through_cipher("-e", scheme, octets));
  ContentInfo *message = asn1_ContentInfo_new();
  message->contentType = identifier(asn1_Get_encryptedData());
  message->content->value = data;
  return message;
}

MacData *mac_over(const Bytes &safe, const std::string &digest, uint32_t iterations) {
  const Bytes salt = hex("00 4D 41 43");
  MacData *data = asn1_MacData_new();
  data->mac = asn1_DigestInfo_new();
  data->mac->digestAlgorithm = digest_algorithm(digest);
  data->mac->digest = octet_string(mac_of(digest, salt, iterations, safe));
  data->macSalt = octet_string(salt);
  if (iterations != 1) data->iterations = asn1_Integer_set(iterations);
  return data;
}

/// Returns a file of the messages, which it then owns. It has a MAC unless `digest` is empty.
Held<PFX> exchange_of(std::initializer_list<void *> safes, const std::string &digest,
                      uint32_t iterations) {
  const HeldList list(owning_list(safes),
                      [](List *held) { List_free(held, asn1_ContentInfo_free); });
  const Bytes safe =
      encode_with([&](uint8_t **pp) { return asn1_SeqOf_e(pp, list.get(), asn1_ContentInfo_e); });
  auto exchange = created(exchanges);
  exchange->version = asn1_Integer_set(3);
  exchange->authSafe = data_message(safe);
  if (!digest.empty()) exchange->macData = mac_over(safe, digest, iterations);
  return exchange;
}

struct MadeShape {
  const char *name;
  const SchemeShape *scheme;  // of certificate and key; null without encryption
  const char *digest;         // of the MAC; empty without one
  uint32_t iterations;        // of the MAC; 1 is not written
};
void PrintTo(const MadeShape &shape, std::ostream *out) { *out << shape.name; }

const MadeShape made_shapes[] = {
    {"InTheClear", nullptr, "sha256", 2048},
    {"InTheClearWithoutAMac", nullptr, "", 0},
    {"InTheClearWithAMacOfOneIteration", nullptr, "sha256", 1},
    {"Pbes2", &scheme_shapes[0], "sha256", 2048},
    {"Pbes2WithoutAMac", &scheme_shapes[0], "", 0},
    {"LegacyTripleDes", &scheme_shapes[1], "sha1", 1024},
    {"LegacyTripleDesOfTwoKeys", &scheme_shapes[2], "sha512", 1},
};

class ExchangesForOpenssl : public testing::TestWithParam<MadeShape> {};

TEST_P(ExchangesForOpenssl, AreOpened) {
  const MadeShape &shape = GetParam();
  const Bytes plain = plain_key("ec");
  certificate_file("ec");
  const Bytes certificate = read_file("ec.crt.der");
  const Bytes certificate_safe =
      safe_of(safe_bag(asn1_Get_certBag(), certificate_bag(certificate)));
  ContentInfo *certificates = nullptr, *keys = nullptr;
  if (shape.scheme == nullptr) {
    certificates = data_message(certificate_safe);
    keys = data_message(safe_of(safe_bag(asn1_Get_keyBag(), plain)));
  } else {
    certificates = encrypted_message(shape.scheme->made(), certificate_safe);
    const auto shrouded = created(encrypted_key_infos);
    shrouded->encryptionAlgorithm = shape.scheme->made();
    shrouded->encryptedData =
        octet_string(through_cipher("-e", shrouded->encryptionAlgorithm, plain));
    keys = data_message(
        safe_of(safe_bag(asn1_Get_pkcs_8ShroudedKeyBag(), encoded(encrypted_key_infos, shrouded))));
  }
  const auto exchange = exchange_of({certificates, keys}, shape.digest, shape.iterations);
  write_file("made.p12", encoded(exchanges, exchange));

  const std::string open = std::string("pkcs12 -in made.p12 -passin pass:") + password;
  openssl(open + " -nokeys -out certificate.pem");
  openssl("x509 -in certificate.pem -outform DER -out certificate.der");
  EXPECT_EQ(certificate, read_file("certificate.der"));
  openssl(open + " -nocerts -nodes -out key.pem");
  openssl("pkcs8 -topk8 -nocrypt -in key.pem -outform DER -out key.der");
  EXPECT_EQ(plain, read_file("key.der"));
  const Lines attributes = {"Bag Attributes",
                            friendly_name,
                            local_key_id,
                            "Bag Attributes",
                            friendly_name,
                            local_key_id,
                            "Key Attributes: <No Attributes>"};
  EXPECT_EQ(attributes, Report("made.p12").attributes);

  const bool protects = shape.scheme != nullptr || *shape.digest != '\0';
  EXPECT_EQ(protects, openssl_refuses("pkcs12 -in made.p12 -noout -passin pass:wrong"));
  if (exchange->macData != nullptr) {
    exchange->macData->macSalt->data[0] ^= 1;
    write_file("made.p12", encoded(exchanges, exchange));
    EXPECT_TRUE(openssl_refuses(open + " -noout"));
  }
}

INSTANTIATE_TEST_SUITE_P(Shapes, ExchangesForOpenssl, testing::ValuesIn(made_shapes),
                         [](const auto &shape) { return std::string(shape.param.name); });

TEST(ExchangeForOpenssl, HoldsBagsOfAllTypes) {
  certificate_file("ec");
  const Bytes certificate = certificate_bag(read_file("ec.crt.der"));
  const Bytes crl = small_bag(crl_bags, &CRLBag::crlId, asn1_Get_x509Crl(), &CRLBag::crlValue,
                              element(4, hex("30 00")));
  const Bytes secret = small_bag(secret_bags, &SecretBag::secretTypeId, asn1_Get_pkcs15Token(),
                                 &SecretBag::secretValue, element(0xC, text("a secret")));
  const auto exchange = exchange_of(
      {data_message(safe_of(safe_bag(asn1_Get_crlBag(), crl))),
       data_message(safe_of(safe_bag(asn1_Get_safeContentBag(),
                                     safe_of(safe_bag(asn1_Get_certBag(), certificate))))),
       data_message(safe_of(safe_bag(asn1_Get_secretBag(), secret)))},
      "sha256", 100);
  write_file("made.p12", encoded(exchanges, exchange));

  const Lines structure = {"MAC: sha256, Iteration 100",
                           "MAC length: 32, salt length: 4",
                           "PKCS7 Data",
                           "Warning unsupported bag type: crlBag",
                           "PKCS7 Data",
                           "Safe Contents bag",
                           "Certificate bag",
                           "PKCS7 Data",
                           "Secret bag",
                           "Bag Type: 1.2.840.113549.1.9.25.1",
                           "Bag Value: "};
  EXPECT_EQ(structure, Report("made.p12").structure);
  const Bytes output = read_file("report");
  EXPECT_EQ("a secret", lines_of(std::string(output.begin(), output.end())).back());
  openssl("x509 -in report -outform DER -out certificate.der");
  EXPECT_EQ(read_file("ec.crt.der"), read_file("certificate.der"));

  write_file("crl.der", crl);
  const Element parts = take_apart("crl.der");
  EXPECT_EQ("OBJECT", parts.parts.at(0).type);
  EXPECT_EQ("cont [ 0 ]", parts.parts.at(1).type);
  EXPECT_EQ(hex("30 00"), parts.parts[1].parts.at(0).content);
}

}  // namespace

}  // namespace pkcs12_test
