// Tests messages against the openssl tool: the library reads those of the tool as the tool reports
// them, and the tool reads, verifies and decrypts those of the library.
#include <set>

#include "by_hand.h"

namespace pkcs7_test {

namespace {

using namespace support;

const auto messages = RECORD_FAMILY(ContentInfo);
const auto signed_messages = RECORD_FAMILY(SignedData);
const auto signers = RECORD_FAMILY(SignerInfo);
const auto issuers = RECORD_FAMILY(IssuerAndSerialNumber);
const auto encrypted_messages = RECORD_FAMILY(EncryptedData);
const auto encrypted_contents = RECORD_FAMILY(EncryptedContentInfo);

const Bytes content = text("Signed, and not encrypted.");

template <class T>
T *value_of(const ContentInfo *message) {
  return static_cast<T *>(message->content->value);
}

/// The elements of a message: the identifier in its SEQUENCE, and the element in its [0].
struct MessageParts {
  explicit MessageParts(const std::string &file) : whole(take_apart(file)) {}
  const Element whole;
  const Element &type() const { return whole.parts.at(0); }
  const Element &inner() const { return whole.parts.at(1).parts.at(0); }
};

/// Checks that the list holds these elements. Without elements it must be NULL.
void expect_elements(const std::vector<Bytes> &expected, const List *list) {
  ASSERT_EQ(expected.empty(), list == nullptr);
  std::vector<Bytes> found;
  for (const Any *any : elements_of<Any>(list)) found.push_back(value(any));
  EXPECT_EQ(expected, found);
}

/* ------------------------------------------------------------------------------------------- */
/* Signed messages of the tool                                                                   */
/* ------------------------------------------------------------------------------------------- */

void expect_attributes(const Element &element, const List *attributes) {
  const auto ours = elements_of<Attribute>(attributes);
  ASSERT_EQ(element.parts.size(), ours.size());
  for (size_t i = 0; i < ours.size(); ++i) {
    EXPECT_EQ(element.parts[i].whole, encode(asn1_Attribute_e, ours[i]));
    EXPECT_EQ(element.parts[i].parts.at(0).whole, encode(asn1_ObjId_e, ours[i]->type));
    const auto values = elements_of<Any>(ours[i]->values);
    const std::vector<Element> &expected = element.parts[i].parts.at(1).parts;
    ASSERT_EQ(expected.size(), values.size());
    for (size_t k = 0; k < values.size(); ++k) EXPECT_EQ(expected[k].whole, value(values[k]));
  }
}

/// Returns the only value of the attribute of a type.
Bytes attribute_value(const List *attributes, const ObjId *type) {
  const Attribute *found = asn1_Attributes_getAttribute(attributes, type);
  if (found == nullptr) throw std::runtime_error("no " + identifier_text(type));
  return value(elements_of<Any>(found->values).at(0));
}

/// Checks that every field has the octets that `openssl asn1parse` finds in its place.
void expect_signer(const Element &element, const SignerInfo *signer) {
  auto field = element.parts.begin();
  EXPECT_EQ(field++->whole, encode(asn1_Integer_e, signer->version));
  const IssuerAndSerialNumber *issuer = signer->issuerAndSerialNumber;
  EXPECT_EQ(field->whole, encode(asn1_IssuerAndSerialNumber_e, issuer));
  EXPECT_EQ(field->parts.at(0).whole, value(issuer->issuerEncoded));
  EXPECT_EQ(field->parts.at(0).whole, encode(asn1_Name_e, issuer->issuer));
  EXPECT_EQ(field++->parts.at(1).whole, encode(asn1_Integer_e, issuer->serialNumber));
  expect_algorithm(*field++, signer->digestAlgorithm);
  ASSERT_EQ(field->type == "cont [ 0 ]", signer->authenticatedAttributes != nullptr);
  if (signer->authenticatedAttributes != nullptr)
    expect_attributes(*field++, signer->authenticatedAttributes);
  expect_algorithm(*field++, signer->digestEncryptionAlgorithm);
  EXPECT_EQ(field++->content, value(signer->encryptedDigest));
  EXPECT_EQ(element.parts.end(), field);
  EXPECT_EQ(nullptr, signer->unauthenticatedAttributes);
  kept(signers, element.whole);
  kept(issuers, element.parts[1].whole);
}

/// Checks the values against the certificate, the content, and what `openssl pkcs7` prints for this
/// signer.
void expect_reported_signer(const std::string &report, const SignerInfo *signer,
                            const std::string &kind, const std::string &digest) {
  EXPECT_EQ(after("version: ", report), std::to_string(asn1_Integer_get(signer->version)));
  const std::string of_certificate =
      openssl("x509 -noout -issuer -serial -in " + certificate_file(kind) + as_encoded);
  const IssuerAndSerialNumber *issuer = signer->issuerAndSerialNumber;
  const std::string serial = serial_text(issuer->serialNumber);
  EXPECT_EQ(after("serial=", of_certificate), serial);
  EXPECT_EQ(after("serial: 0x", report), serial);
  const Owned<RDNSequence, asn1_RDNSequence_free> name(asn1_Name_to_RDNSequence(issuer->issuer));
  EXPECT_EQ(after("issuer=", of_certificate), name_text(name.get()));
  EXPECT_NE(std::string::npos,
            after("digest_alg: \n          algorithm: ", report)
                .find("(" + identifier_text(signer->digestAlgorithm->algorithm) + ")"));
  EXPECT_NE(std::string::npos,
            after("digest_enc_alg: \n          algorithm: ", report)
                .find("(" + identifier_text(signer->digestEncryptionAlgorithm->algorithm) + ")"));

  const List *attributes = signer->authenticatedAttributes;
  if (attributes == nullptr) return;
  EXPECT_EQ(encode(asn1_ObjId_e, asn1_Get_data()),
            attribute_value(attributes, asn1_Get_contentType()));
  EXPECT_EQ(element(4, digest_of(digest, content)),
            attribute_value(attributes, asn1_Get_messageDigest()));
  const auto time =
      record_of<asn1_Time_free>(asn1_Time_d, attribute_value(attributes, asn1_Get_signingTime()));
  EXPECT_EQ(after("UTCTIME:", report), gmt_text(full_year(time.get())));
}

/// Checks that the library writes the octets that the tool has signed.
void expect_verified(const SignerInfo *signer, const std::string &kind, const std::string &digest) {
  const List *attributes = signer->authenticatedAttributes;
  write_file("covered", attributes == nullptr ? content : encode_with([&](uint8_t **pp) {
               return asn1_SetOf_e(pp, attributes, asn1_Attribute_e);
             }));
  write_file("signature", value(signer->encryptedDigest));
  openssl("pkey -pubout -out public.pem -in " + key(kind));
  EXPECT_EQ("Verified OK\n",
            openssl("dgst -" + digest + " -verify public.pem -signature signature covered"));
}

struct Shape {
  const char *name;
  std::vector<const char *> kinds;  // of the signers
  const char *digest;
  const char *arguments;
  bool attached;
  bool with_certificates;
  bool with_attributes;
};
void PrintTo(const Shape &shape, std::ostream *out) { *out << shape.name; }

const Shape shapes[] = {
    {"Attached", {"rsa"}, "sha256", "-nodetach", true, true, true},
    {"Detached", {"rsa"}, "sha256", "", false, true, true},
    {"OfAnEcKey", {"ec"}, "sha384", "-nodetach", true, true, true},
    {"OfTwoSigners", {"rsa", "ec"}, "sha256", "-nodetach", true, true, true},
    {"OfTwoSignersDetached", {"ec", "rsa"}, "sha512", "", false, true, true},
    {"WithSha1", {"rsa"}, "sha1", "-nodetach", true, true, true},
    {"WithoutAttributes", {"rsa"}, "sha256", "-nodetach -noattr", true, true, false},
    {"WithoutCapabilities", {"ec"}, "sha256", "-nodetach -nosmimecap", true, true, true},
    {"WithoutCertificates", {"ec"}, "sha256", "-nodetach -nocerts", true, false, true},
    {"WithNothingButTheSignature", {"ec"}, "sha256", "-nocerts -noattr", false, false, false},
};

class MessagesSignedByOpenssl : public testing::TestWithParam<Shape> {
 protected:
  MessagesSignedByOpenssl() {
    write_file("message", content);
    std::string command = "smime -sign -binary -in message -outform DER -out signed.der -md ";
    command += std::string(shape.digest) + " " + shape.arguments;
    for (const char *kind : shape.kinds)
      command += " -signer " + certificate_file(kind) + " -inkey " + key(kind);
    openssl(command);
  }
  const Shape &shape = GetParam();
};

TEST_P(MessagesSignedByOpenssl, ReadAsTheyAreAndComeBack) {
  const MessageParts parts("signed.der");
  const auto message = kept(messages, parts.whole.whole);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_signedData(), message->contentType));
  kept(signed_messages, parts.inner().whole);
  const auto *data = value_of<SignedData>(message.get());
  auto field = parts.inner().parts.begin();

  EXPECT_EQ(field++->whole, encode(asn1_Integer_e, data->version));
  const auto digest_algorithms = elements_of<AlgId>(data->digestAlgorithms);
  ASSERT_EQ(field->parts.size(), digest_algorithms.size());
  for (size_t i = 0; i < digest_algorithms.size(); ++i)
    expect_algorithm(field->parts[i], digest_algorithms[i]);
  ++field;

  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_data(), data->contentInfo->contentType));
  ASSERT_EQ(shape.attached, data->contentInfo->content->value != nullptr);
  if (shape.attached) {
    EXPECT_EQ(content, value(value_of<OctetString>(data->contentInfo)));
  }
  EXPECT_EQ(field++->whole, encode(asn1_ContentInfo_e, data->contentInfo));

  std::vector<Bytes> certificates;
  if (shape.with_certificates) {
    for (const char *kind : shape.kinds)
      certificates.push_back(read_file(std::string(kind) + ".crt.der"));
    ++field;
  }
  expect_elements(certificates, data->certificates);
  expect_elements({}, data->crls);

  const auto infos = elements_of<SignerInfo>(data->signerInfos);
  ASSERT_EQ(infos.size(), field->parts.size());
  for (size_t i = 0; i < infos.size(); ++i) expect_signer(field->parts[i], infos[i]);
}

TEST_P(MessagesSignedByOpenssl, HoldWhatIsReportedAndVerified) {
  const auto message = decoded(messages, read_file("signed.der"));
  const auto infos = elements_of<SignerInfo>(value_of<SignedData>(message.get())->signerInfos);
  const std::string report = openssl("pkcs7 -inform DER -in signed.der -print -noout");
  size_t at = report.find("signer_info:");
  std::multiset<std::string> kinds;
  for (const SignerInfo *info : infos) {
    const std::string issuer = info->issuerAndSerialNumber->issuer;
    const std::string kind = issuer.substr(issuer.rfind('=') + 1);
    kinds.insert(kind);
    EXPECT_EQ(shape.with_attributes, info->authenticatedAttributes != nullptr);
    expect_reported_signer(report.substr(at), info, kind, shape.digest);
    expect_verified(info, kind, shape.digest);
    at = report.find("unauth_attr:", at) + 1;
  }
  // The tool sorts its signers.
  EXPECT_EQ(std::multiset<std::string>(shape.kinds.begin(), shape.kinds.end()), kinds);
}

INSTANTIATE_TEST_SUITE_P(Shapes, MessagesSignedByOpenssl, testing::ValuesIn(shapes),
                         [](const auto &shape) { return std::string(shape.param.name); });

TEST(MessageSignedByOpenssl, WithParametersOfItsSignatureAndAnotherContentComesBack) {
  write_file("message", content);
  openssl("cms -sign -binary -nodetach -in message -outform DER -out signed.der -signer " +
          certificate_file("rsa") + " -inkey " + key("rsa") +
          " -keyopt rsa_padding_mode:pss -econtent_type 1.2.3.4");
  const MessageParts parts("signed.der");
  const auto message = kept(messages, parts.whole.whole);
  const auto *data = value_of<SignedData>(message.get());
  EXPECT_EQ(3U, asn1_Integer_get(data->version));
  EXPECT_EQ("1.2.3.4", identifier_text(data->contentInfo->contentType));
  EXPECT_EQ(element(4, content), value(value_of<Any>(data->contentInfo)));
  const auto infos = elements_of<SignerInfo>(data->signerInfos);
  ASSERT_EQ(1U, infos.size());
  expect_signer(parts.inner().parts.back().parts.at(0), infos[0]);
  EXPECT_EQ("1.2.840.113549.1.1.10",
            identifier_text(infos[0]->digestEncryptionAlgorithm->algorithm));
}

TEST(MessageSignedByOpenssl, IsRefusedWhereItNamesItsSignerByAKey) {
  write_file("message", content);
  openssl("cms -sign -keyid -in message -outform DER -out signed.der -signer " +
          certificate_file("ec") + " -inkey " + key("ec"));
  const Element whole = take_apart("signed.der");
  EXPECT_EQ(-1, decode(asn1_ContentInfo_d, whole.whole).consumed);
}

TEST(MessageSignedByOpenssl, IsRefusedInIndefiniteForm) {
  write_file("message", content);
  openssl(
      "smime -sign -binary -stream -nodetach -in message -outform DER -out signed.der -signer " +
      certificate_file("ec") + " -inkey " + key("ec"));
  const Bytes octets = read_file("signed.der");
  // The message and its wrapper may have an indefinite length. The SignedData in it must not.
  ASSERT_EQ(hex("30 80 06 09 2A 86 48 86 F7 0D 01 07 02 A0 80 30 80"),
            Bytes(octets.begin(), octets.begin() + 17));
  EXPECT_EQ(-1, decode(asn1_ContentInfo_d, octets).consumed);
}

TEST(MessageSignedByOpenssl, IsWrittenInDefiniteFormWhereItsWrappersWereIndefinite) {
  write_file("message", content);
  openssl("smime -sign -binary -nodetach -in message -outform DER -out signed.der -signer " +
          certificate_file("ec") + " -inkey " + key("ec"));
  const MessageParts parts("signed.der");
  const Bytes indefinite =
      hex("30 80") + parts.type().whole + hex("A0 80") + parts.inner().whole + hex("00 00 00 00");
  write_file("indefinite.der", indefinite);
  openssl("smime -verify -noverify -inform DER -in indefinite.der -out read");
  EXPECT_EQ(parts.whole.whole, encoded(messages, decoded(messages, indefinite)));
}

/* ------------------------------------------------------------------------------------------- */
/* Messages without signers                                                                      */
/* ------------------------------------------------------------------------------------------- */

/// Returns the file of an empty CRL of a key.
std::string crl_file(const std::string &kind) {
  write_file("ca.cnf", text("[ca]\ndefault_ca=d\n[d]\ndatabase=empty_index.txt\ndefault_md=sha256\n"
                            "default_crl_days=30\n"));
  write_file("empty_index.txt", {});
  const std::string file = kind + ".crl";
  openssl("ca -config ca.cnf -gencrl -out " + file + " -cert " + certificate_file(kind) +
          " -keyfile " + key(kind));
  openssl("crl -in " + file + " -outform DER -out " + file + ".der");
  return file;
}

struct BundleShape {
  const char *name;
  std::vector<const char *> certificates;
  std::vector<const char *> crls;
};
void PrintTo(const BundleShape &shape, std::ostream *out) { *out << shape.name; }

const BundleShape bundle_shapes[] = {
    {"OfOneCertificate", {"ec"}, {}},
    {"OfCertificates", {"rsa", "ec", "ed25519"}, {}},
    {"OfCertificatesAndACrl", {"ed25519", "ec"}, {"ec"}},
    {"OfACrl", {}, {"ec"}},
};

class Bundles : public testing::TestWithParam<BundleShape> {
 protected:
  Bundles() {
    for (const char *kind : GetParam().crls) crls.push_back(read_file(crl_file(kind) + ".der"));
    for (const char *kind : GetParam().certificates)
      certificates.push_back(read_file(certificate_file(kind) + ".der"));
  }
  std::vector<Bytes> certificates;
  std::vector<Bytes> crls;
};

TEST_P(Bundles, OfTheToolReadAsTheyAreAndComeBack) {
  std::string command = "crl2pkcs7 -outform DER -out bundle.der";
  for (const char *kind : GetParam().certificates)
    command += " -certfile " + certificate_file(kind);
  openssl(command +
          (crls.empty() ? " -nocrl" : " -in " + std::string(GetParam().crls[0]) + ".crl"));
  const auto message = kept(messages, read_file("bundle.der"));
  const auto *data = value_of<SignedData>(message.get());
  EXPECT_EQ(1U, asn1_Integer_get(data->version));
  EXPECT_EQ(0, List_len(data->digestAlgorithms));
  EXPECT_EQ(nullptr, data->contentInfo->content->value);
  EXPECT_EQ(0, List_len(data->signerInfos));
  expect_elements(certificates, data->certificates);
  expect_elements(crls, data->crls);
}

/// Returns a new list of whole elements, or NULL without elements.
List *list_of_elements(const std::vector<Bytes> &elements) {
  if (elements.empty()) return nullptr;
  List *list = List_new(0);
  for (const Bytes &octets : elements) EXPECT_EQ(1, List_append(list, whole_element(octets), 0));
  return list;
}

/// Returns a message by hand, for the caller to complete.
Held<ContentInfo> message_of(const ObjId *type, void *held) {
  auto message = created(messages);
  message->contentType = identifier(type);
  message->content->value = held;
  return message;
}

TEST_P(Bundles, FilledByHandAreListedByTheTool) {
  auto *data = asn1_SignedData_new();
  const auto message = message_of(asn1_Get_signedData(), data);
  data->version = asn1_Integer_set(1);
  data->digestAlgorithms = List_new(0);
  data->contentInfo = message_of(asn1_Get_data(), nullptr).release();
  data->certificates = list_of_elements(certificates);
  data->crls = list_of_elements(crls);
  data->signerInfos = List_new(0);
  write_file("bundle.der", encoded(messages, message));

  std::string listed;
  for (const char *kind : GetParam().certificates) {
    const Bytes pem = read_file(certificate_file(kind));
    listed += std::string(pem.begin(), pem.end());
  }
  for (const char *kind : GetParam().crls) {
    const Bytes pem = read_file(std::string(kind) + ".crl");
    listed += std::string(pem.begin(), pem.end());
  }
  std::string found;
  std::istringstream report(openssl("pkcs7 -inform DER -in bundle.der -print_certs"));
  bool inside = false;
  for (std::string line; std::getline(report, line);) {
    inside = inside || line.rfind("-----BEGIN", 0) == 0;
    if (inside) found += line + "\n";
    inside = inside && line.rfind("-----END", 0) != 0;
  }
  EXPECT_EQ(listed, found);
}

INSTANTIATE_TEST_SUITE_P(Shapes, Bundles, testing::ValuesIn(bundle_shapes),
                         [](const auto &shape) { return std::string(shape.param.name); });

/* ------------------------------------------------------------------------------------------- */
/* Signed messages by hand                                                                       */
/* ------------------------------------------------------------------------------------------- */

struct SigningShape {
  const char *name;
  std::vector<const char *> kinds;
  bool attached;
  bool with_attributes;
  bool sorted;          // the attributes in the order of DER
  bool issuer_as_text;  // otherwise as octets
  bool with_unauthenticated_attributes;
};
void PrintTo(const SigningShape &shape, std::ostream *out) { *out << shape.name; }

const SigningShape signing_shapes[] = {
    {"Attached", {"ec"}, true, true, true, true, false},
    {"Detached", {"ec"}, false, true, true, true, false},
    {"OfTwoSigners", {"rsa", "ec"}, true, true, true, true, false},
    {"WithoutAttributes", {"rsa"}, true, false, true, true, false},
    {"WithAttributesOutOfOrder", {"ec"}, true, true, false, true, false},
    {"WithTheIssuerAsOctets", {"ec"}, true, true, true, false, false},
    {"WithUnauthenticatedAttributes", {"ec"}, true, true, true, true, true},
};

class MessagesSignedForOpenssl : public testing::TestWithParam<SigningShape> {
 protected:
  static List *authenticated_attributes(bool sorted) {
    // In the order of their octets the shortest comes first.
    Attribute *type = attribute(asn1_Get_contentType(), encode(asn1_ObjId_e, asn1_Get_data()));
    Attribute *time = attribute(asn1_Get_signingTime(), element(0x17, text("310203040506Z")));
    Attribute *digest =
        attribute(asn1_Get_messageDigest(), element(4, digest_of("sha256", content)));
    return sorted ? owning_list({type, time, digest}) : owning_list({digest, type, time});
  }

  static SignerInfo *signer(const SigningShape &shape, const std::string &kind) {
    const std::string of_certificate = openssl("x509 -noout -serial -in " + certificate_file(kind));
    SignerInfo *info = asn1_SignerInfo_new();
    info->version = asn1_Integer_set(1);
    info->issuerAndSerialNumber = asn1_IssuerAndSerialNumber_new();
    info->issuerAndSerialNumber->serialNumber = number(hex(after("serial=", of_certificate)));
    if (shape.issuer_as_text) {
      const std::string name = "/c(19)=DE/o(12)=Example/cn(12)=" + kind;
      info->issuerAndSerialNumber->issuer = asn1_Name_clone(name.c_str());
    } else {
      const Element fields = take_apart(certificate_file(kind) + ".der").parts.at(0);
      info->issuerAndSerialNumber->issuerEncoded = octet_string(fields.parts.at(3).whole);
    }
    info->digestAlgorithm = digest_algorithm("sha256");
    Bytes covered = content;
    if (shape.with_attributes) {
      info->authenticatedAttributes = authenticated_attributes(shape.sorted);
      covered = encode_with([&](uint8_t **pp) {
        return asn1_SetOf_e(pp, info->authenticatedAttributes, asn1_Attribute_e);
      });
    }
    info->digestEncryptionAlgorithm = signature_algorithm(kind);
    info->encryptedDigest = octet_string(signature_over(covered, kind));
    if (shape.with_unauthenticated_attributes)
      info->unauthenticatedAttributes =
          owning_list({attribute(asn1_Get_unstructuredName(), element(0x16, text("a name")))});
    return info;
  }

  /// Writes the signed message of a shape, with other octets in place of its content.
  static void write_signed(const SigningShape &shape, const Bytes &octets) {
    auto *data = asn1_SignedData_new();
    const auto message = message_of(asn1_Get_signedData(), data);
    data->version = asn1_Integer_set(1);
    data->digestAlgorithms = owning_list({digest_algorithm("sha256")});
    data->contentInfo =
        message_of(asn1_Get_data(), shape.attached ? octet_string(octets) : nullptr).release();
    data->certificates = List_new(0);
    data->signerInfos = List_new(0);
    std::string authorities;
    for (const char *kind : shape.kinds) {
      List_append(data->signerInfos, signer(shape, kind), 0);
      List_append(data->certificates, whole_element(read_file(certificate_file(kind) + ".der")), 0);
      const Bytes pem = read_file(certificate_file(kind));
      authorities.append(pem.begin(), pem.end());
    }
    write_file("authorities.pem", text(authorities));
    write_file("signed.der", encoded(messages, message));
    write_file("message", octets);
  }

  const SigningShape &shape = GetParam();
  const std::string verify =
      std::string("smime -verify -binary -inform DER -in signed.der -out verified") +
      " -CAfile authorities.pem -purpose any" + (shape.attached ? "" : " -content message");
};

TEST_P(MessagesSignedForOpenssl, AreVerified) {
  write_signed(shape, content);
  EXPECT_EQ("Verification successful\n", openssl(verify));
  EXPECT_EQ(content, read_file("verified"));
}

TEST_P(MessagesSignedForOpenssl, AreNotVerifiedWithAnotherContent) {
  write_signed(shape, text("Another content."));
  EXPECT_TRUE(openssl_refuses(verify));
}

TEST_P(MessagesSignedForOpenssl, ArePrintedWithTheirValues) {
  write_signed(shape, content);
  const std::string report = openssl("pkcs7 -inform DER -in signed.der -print -noout");
  size_t at = report.find("signer_info:");
  for (const char *kind : shape.kinds) {
    const std::string of_signer = report.substr(at);
    EXPECT_EQ("C=DE, O=Example, CN=" + std::string(kind), after("issuer: ", of_signer));
    EXPECT_EQ("sha256 (2.16.840.1.101.3.4.2.1)",
              after("digest_alg: \n          algorithm: ", of_signer));
    if (shape.with_attributes) {
      EXPECT_EQ("Feb  3 04:05:06 2031 GMT", after("UTCTIME:", of_signer));
    }
    at = report.find("unauth_attr:", at) + 1;
    if (shape.with_unauthenticated_attributes) {
      EXPECT_EQ("unstructuredName (1.2.840.113549.1.9.2)", after("object: ", report.substr(at)));
      EXPECT_EQ("a name", after("IA5STRING:", report.substr(at)));
    } else {
      EXPECT_EQ("<ABSENT>", after("nauth_attr:\n          ", report.substr(at)));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Shapes, MessagesSignedForOpenssl, testing::ValuesIn(signing_shapes),
                         [](const auto &shape) { return std::string(shape.param.name); });

/* ------------------------------------------------------------------------------------------- */
/* Other messages                                                                                */
/* ------------------------------------------------------------------------------------------- */

const Bytes data_identifier = hex("06 09 2A 86 48 86 F7 0D 01 07 01");

/// Returns a message that holds the content, with definite lengths.
const Bytes data_message = sequence(data_identifier + element(0xA0, element(4, content)));

class DataMessages : public testing::TestWithParam<const char *> {};

TEST_P(DataMessages, OfTheToolReadAsTheyAreAndAreWrittenInDefiniteForm) {
  write_file("message", content);
  openssl(std::string("cms -data_create -binary -in message -outform DER -out data.der ") +
          GetParam());
  const Bytes octets = read_file("data.der");
  EXPECT_EQ(std::string_view(GetParam()) == "-stream", octets != data_message);
  const auto message = decoded(messages, octets);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_data(), message->contentType));
  EXPECT_EQ(content, value(value_of<OctetString>(message.get())));
  EXPECT_EQ(data_message, encoded(messages, message));
}

INSTANTIATE_TEST_SUITE_P(Forms, DataMessages, testing::Values("", "-stream"), [](const auto &form) {
  return std::string(*form.param == '\0' ? "Definite" : "Indefinite");
});

TEST(DataMessageByHand, IsReadByTheTool) {
  const auto message = message_of(asn1_Get_data(), octet_string(content));
  write_file("data.der", encoded(messages, message));
  openssl("cms -data_out -inform DER -in data.der -out read");
  EXPECT_EQ(content, read_file("read"));
}

/// Types of content that are kept as whole elements.
struct OpaqueShape {
  const char *name;
  const char *arguments;
  const ObjId *(*type)();
};
void PrintTo(const OpaqueShape &shape, std::ostream *out) { *out << shape.name; }

const OpaqueShape opaque_shapes[] = {
    {"Enveloped", "smime -encrypt -aes256", asn1_Get_envelopedData},
    {"EnvelopedForAnEcKey", "cms -encrypt -aes256", asn1_Get_envelopedData},
    {"Digested", "cms -digest_create -binary -md sha256", asn1_Get_digestedData},
};

class OpaqueMessagesOfOpenssl : public testing::TestWithParam<OpaqueShape> {};

TEST_P(OpaqueMessagesOfOpenssl, KeepTheirContentAsOneElement) {
  const std::string name = GetParam().name, arguments = GetParam().arguments;
  const std::string kind = name == "EnvelopedForAnEcKey" ? "ec" : "rsa";
  const std::string recipient = name == "Digested" ? "" : " " + certificate_file(kind);
  write_file("message", content);
  openssl(arguments + " -in message -outform DER -out message.der" + recipient);
  const MessageParts parts("message.der");
  const auto message = kept(messages, parts.whole.whole);
  EXPECT_EQ(0, asn1_ObjId_cmp(GetParam().type(), message->contentType));
  EXPECT_EQ(parts.type().whole, encode(asn1_ObjId_e, message->contentType));
  EXPECT_EQ(parts.inner().whole, value(value_of<Any>(message.get())));

  if (name == "Digested") return;
  openssl(arguments + " -stream -in message -outform DER -out message.der" + recipient);
  EXPECT_EQ(-1, decode(asn1_ContentInfo_d, read_file("message.der")).consumed)
      << "an element of any type must have a definite length";
}

INSTANTIATE_TEST_SUITE_P(Types, OpaqueMessagesOfOpenssl, testing::ValuesIn(opaque_shapes),
                         [](const auto &shape) { return std::string(shape.param.name); });

TEST(DigestedMessageByHand, IsVerified) {
  const auto digested = [](const Bytes &digest) {
    const Bytes named = sequence(hex("06 09 60 86 48 01 65 03 04 02 01"));
    const auto message = message_of(
        asn1_Get_digestedData(),
        whole_element(sequence(hex("02 01 00") + named + data_message + element(4, digest))));
    write_file("digested.der", encoded(messages, message));
    return openssl_refuses("cms -digest_verify -inform DER -in digested.der -out read");
  };
  EXPECT_FALSE(digested(digest_of("sha256", content)));
  EXPECT_EQ(content, read_file("read"));
  EXPECT_TRUE(digested(digest_of("sha256", text("Another content."))));
}

/* ------------------------------------------------------------------------------------------- */
/* Encrypted messages                                                                            */
/* ------------------------------------------------------------------------------------------- */

const std::string secret_key(64, '7');  // of AES-256, in hex digits
const Bytes initial_vector = hex("000102030405060708090A0B0C0D0E0F");

Bytes through_aes(const std::string &direction, const Bytes &octets, const Bytes &iv) {
  write_file("cipher.in", octets);
  openssl("enc " + direction + " -aes-256-cbc -in cipher.in -out cipher.out -K " + secret_key +
          " -iv " + upper_hex(iv));
  return read_file("cipher.out");
}

const Bytes aes_256 = hex("06 09 60 86 48 01 65 03 04 01 2A");

TEST(MessageEncryptedByOpenssl, ReadsAsItIsDecryptsAndComesBack) {
  write_file("message", content);
  openssl(
      "cms -EncryptedData_encrypt -binary -aes-256-cbc -in message -outform DER"
      " -out encrypted.der -secretkey " +
      secret_key);
  const MessageParts parts("encrypted.der");
  const auto message = kept(messages, parts.whole.whole);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_encryptedData(), message->contentType));
  kept(encrypted_messages, parts.inner().whole);
  const Element &info = parts.inner().parts.at(1);
  kept(encrypted_contents, info.whole);

  const auto *data = value_of<EncryptedData>(message.get());
  EXPECT_EQ(0U, asn1_Integer_get(data->version));
  const EncryptedContentInfo *inner = data->encryptedContentInfo;
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_data(), inner->contentType));
  expect_algorithm(info.parts.at(1), inner->contentEncryptionAlgorithm);
  EXPECT_EQ(info.parts.at(2).content, value(inner->encryptedContent));
  EXPECT_EQ(content,
            through_aes("-d", value(inner->encryptedContent), info.parts[1].parts.at(1).content));
}

TEST(MessageEncryptedByOpenssl, IsWrittenInDefiniteFormWhereItWasIndefinite) {
  write_file("message", content);
  openssl(
      "cms -EncryptedData_encrypt -binary -stream -aes-256-cbc -in message -outform DER"
      " -out encrypted.der -secretkey " +
      secret_key);
  const Bytes octets = read_file("encrypted.der");
  const Bytes encrypted_identifier = hex("06 09 2A 86 48 86 F7 0D 01 07 06");
  const Bytes ahead_of_the_vector = hex("30 80") + encrypted_identifier +
                                    hex("A0 80 30 80 02 01 00 30 80") + data_identifier +
                                    hex("30 1D") + aes_256 + hex("04 10");
  const auto iv = octets.begin() + static_cast<std::ptrdiff_t>(ahead_of_the_vector.size());
  ASSERT_EQ(ahead_of_the_vector, Bytes(octets.begin(), iv));
  const Bytes named = sequence(aes_256 + element(4, Bytes(iv, iv + 16)));
  const Bytes ciphertext = through_aes("-e", content, Bytes(iv, iv + 16));

  const auto message = decoded(messages, octets);
  EXPECT_EQ(ciphertext,
            value(value_of<EncryptedData>(message.get())->encryptedContentInfo->encryptedContent));
  const Bytes info = sequence(data_identifier + named + element(0x80, ciphertext));
  EXPECT_EQ(sequence(encrypted_identifier + element(0xA0, sequence(hex("02 01 00") + info))),
            encoded(messages, message));

  write_file("definite.der", encoded(messages, message));
  openssl("cms -EncryptedData_decrypt -inform DER -in definite.der -out read -secretkey " +
          secret_key);
  EXPECT_EQ(content, read_file("read"));
}

TEST(MessageEncryptedForOpenssl, IsDecrypted) {
  auto *data = asn1_EncryptedData_new();
  const auto message = message_of(asn1_Get_encryptedData(), data);
  data->version = asn1_Integer_set(0);
  data->encryptedContentInfo = asn1_EncryptedContentInfo_new();
  data->encryptedContentInfo->contentType = identifier(asn1_Get_data());
  data->encryptedContentInfo->contentEncryptionAlgorithm =
      algorithm(identifier("2.16.840.1.101.3.4.1.42"), whole_element(element(4, initial_vector)));
  data->encryptedContentInfo->encryptedContent =
      octet_string(through_aes("-e", content, initial_vector));
  write_file("encrypted.der", encoded(messages, message));
  const std::string decrypt =
      "cms -EncryptedData_decrypt -inform DER -in encrypted.der -out read -secretkey ";
  openssl(decrypt + secret_key);
  EXPECT_EQ(content, read_file("read"));
  EXPECT_TRUE(openssl_refuses(decrypt + std::string(64, '8')) || read_file("read") != content);
}

}  // namespace

}  // namespace pkcs7_test
