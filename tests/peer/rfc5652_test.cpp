// Messages in the form of RFC 5652 against the openssl tool: the library reads what the tool makes, in
// DER and in BER, and the tool verifies, decrypts and prints what the library writes.
#include <forms.h>

#include <set>

#include "by_hand.h"

namespace rfc5652_test {

namespace {

using namespace support;

const auto messages = FORM(ContentInfo, pki_ContentInfo);
const auto signed_messages = FORM(SignedData, pki_SignedData);
const auto enveloped_messages = FORM(EnvelopedData, pki_EnvelopedData);
const auto encrypted_messages = FORM(EncryptedData, pki_EncryptedData);
const auto digested_messages = FORM(DigestedData, pki_DigestedData);

const Bytes content = text("Signed, sealed and delivered.");

bool same(const ObjId *a, const ObjId *b) { return asn1_ObjId_cmp(a, b) == 0; }

/// Returns the record of octets, which come back where they are DER. Otherwise what is written
/// comes back.
template <class T>
Held<T> kept_or_written(const RecordFamily<T> &family, const Bytes &octets, bool der) {
  Held<T> record = decoded(family, octets);
  if (record == nullptr) throw std::runtime_error("refused: " + upper_hex(octets));
  const Bytes written = encoded(family, record);
  EXPECT_EQ(der, written == octets);
  kept(family, written);
  return record;
}

/// Writes a file of the message of this type and content.
void write_message(const std::string &file, const ObjId *type, const Bytes &octets) {
  const auto message = created(messages);
  message->contentType = identifier(type);
  message->content = whole_element(octets);
  write_file(file, encoded(messages, message));
}

/// Returns the content of the message in a file, whose type must be `type`.
Bytes content_of(const std::string &file, const ObjId *type) {
  const Bytes octets = read_file(file);
  const auto message = decoded(messages, octets);
  if (message == nullptr) throw std::runtime_error("refused: " + upper_hex(octets));
  EXPECT_TRUE(same(type, message->contentType));
  return value(message->content);
}

// ---------------------------------------------------------------------------------------------
// Signed messages of the tool
// ---------------------------------------------------------------------------------------------

struct Signing {
  const char *name;
  const char *arguments;
  std::vector<const char *> kinds;  // of the signers
  bool der;
  bool attached;
  bool with_attributes;
  uint8_t sid;  // the kind of the identifiers
};
void PrintTo(const Signing &shape, std::ostream *out) { *out << shape.name; }

const Signing signings[] = {
    {"Attached", "cms -nodetach", {"rsa"}, true, true, true, 16},
    {"Detached", "cms", {"ec"}, true, false, true, 16},
    {"ByKey", "cms -nodetach -keyid", {"ec"}, true, true, true, 0},
    {"OfTwoSigners", "cms -nodetach -keyid", {"rsa", "ec"}, true, true, true, 0},
    {"WithoutAttributes", "cms -nodetach -noattr", {"rsa"}, true, true, false, 16},
    {"WithoutCertificates", "cms -nodetach -nocerts", {"ec"}, true, true, true, 16},
    {"InAStream", "cms -nodetach -stream", {"ec"}, false, true, true, 16},
    {"InAStreamOfTwoSigners", "cms -nodetach -stream -keyid", {"rsa", "ec"}, false, true, true, 0},
    {"OfPkcs7", "smime -nodetach", {"rsa"}, true, true, true, 16},
    {"OfPkcs7InAStream", "smime -nodetach -stream", {"rsa"}, false, true, true, 16},
};

class SignedByOpenssl : public testing::TestWithParam<Signing> {
 protected:
  SignedByOpenssl() {
    write_file("message", content);
    std::string command = shape.arguments;
    command.insert(command.find(' ') == std::string::npos ? command.size() : command.find(' '),
                   " -sign -binary -in message -outform DER -out signed.der");
    for (const char *kind : shape.kinds)
      command += " -signer " + certificate_file(kind) + " -inkey " + key(kind);
    openssl(command);
    message = kept_or_written(signed_messages, content_of("signed.der", asn1_Get_signedData()),
                              shape.der);
  }

  /// Checks that the tool verifies the message in a file.
  static void expect_verified(const std::string &file, bool attached) {
    std::string command = "cms -verify -noverify -binary -inform DER -out verified -in " + file;
    for (const char *kind : GetParam().kinds) command += " -certfile " + certificate_file(kind);
    openssl(command + (attached ? "" : " -content message"));
    EXPECT_EQ(content, read_file("verified"));
  }

  const Signing &shape = GetParam();
  Held<pki_SignedData> message{nullptr, pki_SignedData_free};
};

TEST_P(SignedByOpenssl, HasTheContentCertificatesAndSigners) {
  const pki_EncapsulatedContentInfo *info = message->encapContentInfo;
  EXPECT_TRUE(same(asn1_Get_data(), info->eContentType));
  ASSERT_EQ(shape.attached, info->eContent != nullptr);
  if (shape.attached) {
    ASSERT_EQ(4, info->eContent->kind);
    EXPECT_EQ(content, value(static_cast<const OctetString *>(info->eContent->value)));
  }
  std::multiset<Bytes> certificates, expected;
  for (const auto *choice : elements_of<pki_CertificateChoices>(message->certificates)) {
    ASSERT_EQ(16, choice->kind);
    certificates.insert(encode(pki_Certificate_e, static_cast<const Certificate *>(choice->value)));
  }
  if (std::string(shape.name) == "WithoutCertificates") {
    EXPECT_EQ(nullptr, message->certificates);
  } else {
    for (const char *kind : shape.kinds) expected.insert(read_file(std::string(kind) + ".crt.der"));
  }
  EXPECT_EQ(expected, certificates);
  const auto infos = elements_of<pki_SignerInfo>(message->signerInfos);
  ASSERT_EQ(shape.kinds.size(), infos.size());
  for (const pki_SignerInfo *signer : infos) {
    EXPECT_EQ(shape.sid, signer->sid->kind);
    EXPECT_EQ(shape.sid == 0 ? 3U : 1U, asn1_Integer_get(signer->version));
    EXPECT_EQ(shape.with_attributes, signer->signedAttrs != nullptr);
    EXPECT_EQ(nullptr, signer->unsignedAttrs);
  }
}

TEST_P(SignedByOpenssl, IsVerifiedWithTheOctetsThatAreSigned) {
  size_t verified = 0;
  for (const pki_SignerInfo *signer : elements_of<pki_SignerInfo>(message->signerInfos)) {
    write_file("covered",
               shape.with_attributes ? encode(pki_SignerInfo_signed_octets, signer) : content);
    write_file("signature", value(signer->signature));
    for (const char *kind : shape.kinds) {
      openssl("pkey -pubout -out public.pem -in " + key(kind));
      const std::string verify =
          "pkeyutl -verify -rawin -digest sha256 -pubin -inkey public.pem -sigfile signature "
          "-in covered";
      if (!openssl_refuses(verify)) ++verified;
    }
  }
  EXPECT_EQ(shape.kinds.size(), verified);
}

TEST_P(SignedByOpenssl, IsVerifiedByTheToolAsTheLibraryWritesIt) {
  write_message("written.der", asn1_Get_signedData(), encoded(signed_messages, message));
  expect_verified("written.der", shape.attached);
  // The tool prints the same values, whatever the form of the lengths.
  const std::string print = "cms -cmsout -print -noout -inform DER -in ";
  EXPECT_EQ(openssl(print + "signed.der"), openssl(print + "written.der"));
  for (int32_t i = 0; i < List_len(message->signerInfos); ++i) {
    clear(element_of<pki_SignerInfo>(message->signerInfos, i).signedAttrsEncoded,
          asn1_OctetString_free);
  }
  write_message("written.der", asn1_Get_signedData(), encoded(signed_messages, message));
  expect_verified("written.der", shape.attached);
}

INSTANTIATE_TEST_SUITE_P(As, SignedByOpenssl, testing::ValuesIn(signings),
                         [](const auto &shape) { return std::string(shape.param.name); });

// ---------------------------------------------------------------------------------------------
// Signed messages that are filled by hand
// ---------------------------------------------------------------------------------------------

/// Fills a SignerInfo without a signature.
pki_SignerInfo *signer_by_hand(const std::string &kind, bool by_key, bool with_attributes) {
  const auto certificate = record_of<pki_Certificate_free>(
      pki_Certificate_d, read_file(certificate_file(kind) + ".der"));
  auto *signer = pki_SignerInfo_new();
  signer->version = asn1_Integer_set(by_key ? 3 : 1);
  signer->sid = pki_SignerIdentifier_new();
  if (by_key) {
    const Extension *found = nullptr;
    for (const auto *one : elements_of<Extension>(certificate->tbsCertificate->extensions))
      if (same(asn1_Get_id_ce_subjectKeyIdentifier(), one->extnID)) found = one;
    signer->sid->kind = 0;
    signer->sid->value = decode(asn1_OctetString_d, value(found->extnValue)).record;
  } else {
    auto *issued = pki_IssuerAndSerialNumber_new();
    issued->issuer = pki_RDNSequence_clone(certificate->tbsCertificate->issuerSequence);
    issued->serialNumber = asn1_Integer_clone(certificate->tbsCertificate->serialNumber);
    signer->sid->kind = 16;
    signer->sid->value = issued;
  }
  signer->digestAlgorithm = digest_algorithm("sha256");
  signer->signatureAlgorithm = signature_algorithm(kind);
  if (with_attributes) {
    signer->signedAttrs = owning_list(
        {attribute(asn1_Get_contentType(), encode(asn1_ObjId_e, asn1_Get_data())),
         attribute(asn1_Get_messageDigest(), element(4, digest_of("sha256", content)))});
    signer->unsignedAttrs =
        owning_list({attribute(asn1_Get_unstructuredName(), element(0x0C, text("unsigned")))});
  }
  return signer;
}

class SignedByHand : public testing::TestWithParam<std::tuple<const char *, bool, bool>> {};

TEST_P(SignedByHand, IsVerifiedAndPrintedByTheTool) {
  const auto &[kind, by_key, with_attributes] = GetParam();
  pki_SignerInfo *const signer = signer_by_hand(kind, by_key, with_attributes);
  const auto message = created(signed_messages);
  message->version = asn1_Integer_set(by_key ? 3 : 1);
  message->digestAlgorithms = owning_list({digest_algorithm("sha256")});
  message->encapContentInfo = pki_EncapsulatedContentInfo_new();
  message->encapContentInfo->eContentType = identifier(asn1_Get_data());
  message->encapContentInfo->eContent = pki_EncapsulatedContent_new();
  message->encapContentInfo->eContent->kind = 4;
  message->encapContentInfo->eContent->value = octet_string(content);
  auto *choice = pki_CertificateChoices_new();
  choice->kind = 16;
  choice->value = decode(pki_Certificate_d, read_file(certificate_file(kind) + ".der")).record;
  message->certificates = owning_list({choice});
  message->signerInfos = owning_list({signer});
  expect_nothing_written(signed_messages, message.get());  // no signature yet

  signer->signature = octet_string(signature_over(
      with_attributes ? encode(pki_SignerInfo_signed_octets, signer) : content, kind));
  const Bytes octets = encoded(signed_messages, message);
  kept(signed_messages, octets);
  write_message("by_hand.der", asn1_Get_signedData(), octets);
  openssl(std::string("cms -verify -binary -inform DER -in by_hand.der -out verified -CAfile ") +
          certificate_file(kind));
  EXPECT_EQ(content, read_file("verified"));
  const std::string report = openssl("cms -cmsout -print -noout -inform DER -in by_hand.der");
  EXPECT_NE(std::string::npos,
            report.find(by_key ? "d.subjectKeyIdentifier" : "d.issuerAndSerial"));
  EXPECT_EQ(with_attributes, report.find("UTF8STRING:unsigned") != std::string::npos);

  // One octet more in the content, and the tool refuses it.
  auto *changed = static_cast<OctetString *>(message->encapContentInfo->eContent->value);
  asn1_ASN1String_append(changed, 1, "!");
  write_message("by_hand.der", asn1_Get_signedData(), encoded(signed_messages, message));
  EXPECT_TRUE(openssl_refuses("cms -verify -noverify -binary -inform DER -in by_hand.der"));
}

std::string title_by_hand(const testing::TestParamInfo<SignedByHand::ParamType> &info) {
  const auto &[kind, by_key, with_attributes] = info.param;
  return std::string(kind) + (by_key ? "ByKey" : "ByIssuer") +
         (with_attributes ? "WithAttributes" : "");
}

INSTANTIATE_TEST_SUITE_P(With, SignedByHand,
                         testing::Combine(testing::Values("rsa", "ec"), testing::Bool(),
                                          testing::Bool()),
                         title_by_hand);

TEST(SignedMessageOfPkcs7, WithASequenceAsContentIsReadByTheTool) {
  // A message inside a message: its content is no OCTET STRING.
  write_file("message", content);
  openssl("smime -sign -binary -nodetach -in message -outform DER -out inner.der -signer " +
          certificate_file("ec") + " -inkey " + key("ec"));
  const Bytes inner = content_of("inner.der", asn1_Get_signedData());
  const auto message = decoded(signed_messages, inner);
  pki_EncapsulatedContentInfo *info = message->encapContentInfo;
  clear(info->eContentType, asn1_ObjId_free);
  clear(info->eContent, pki_EncapsulatedContent_free);
  info->eContentType = identifier(asn1_Get_signedData());
  info->eContent = pki_EncapsulatedContent_new();
  info->eContent->kind = 16;
  info->eContent->value = whole_element(inner);
  const Bytes outer = encoded(signed_messages, message);
  kept(signed_messages, outer);
  write_message("outer.der", asn1_Get_signedData(), outer);
  const std::string report = openssl("pkcs7 -print -noout -inform DER -in outer.der");
  EXPECT_NE(std::string::npos, report.find("type: pkcs7-signedData", report.find("contents:")));
  // The tool writes it as it stands.
  openssl("pkcs7 -inform DER -in outer.der -outform DER -out outer_again.der");
  EXPECT_EQ(read_file("outer.der"), read_file("outer_again.der"));
}

// ---------------------------------------------------------------------------------------------
// Bundles
// ---------------------------------------------------------------------------------------------

TEST(BundleOfOpenssl, HasCertificatesAndRevocationLists) {
  write_file("ca.cnf", text("[ca]\ndefault_ca=d\n[d]\ndatabase=empty_index.txt\n"
                            "default_md=sha256\ndefault_crl_days=30\n"));
  write_file("empty_index.txt", {});
  openssl("ca -config ca.cnf -gencrl -out ec.crl -cert " + certificate_file("ec") + " -keyfile " +
          key("ec"));
  openssl("crl -in ec.crl -outform DER -out ec.crl.der");
  openssl("crl2pkcs7 -outform DER -out bundle.der -in ec.crl -certfile " + certificate_file("rsa") +
          " -certfile " + certificate_file("ed25519"));
  const auto message = kept(signed_messages, content_of("bundle.der", asn1_Get_signedData()));
  const auto certificates = elements_of<pki_CertificateChoices>(message->certificates);
  ASSERT_EQ(2U, certificates.size());
  EXPECT_EQ(read_file("rsa.crt.der"),
            encode(pki_Certificate_e, static_cast<const Certificate *>(certificates[0]->value)));
  const auto lists = elements_of<pki_RevocationInfoChoice>(message->crls);
  ASSERT_EQ(1U, lists.size());
  ASSERT_EQ(16, lists[0]->kind);
  EXPECT_EQ(read_file("ec.crl.der"),
            encode(pki_CertificateRevocationList_e,
                   static_cast<const CertificateRevocationList *>(lists[0]->value)));
}

// ---------------------------------------------------------------------------------------------
// Encrypted and digested messages of the tool
// ---------------------------------------------------------------------------------------------

struct Sealing {
  const char *name;
  const char *arguments;
  bool der;
  std::vector<uint8_t> recipients;  // their kinds
  const char *opening;
};
void PrintTo(const Sealing &shape, std::ostream *out) { *out << shape.name; }

const Sealing sealings[] = {
    {"ForAnRsaKey", "-aes128 -recip rsa.crt", true, {16}, "-recip rsa.crt -inkey rsa.pem"},
    {"ForAnRsaKeyByKey",
     "-aes128 -keyid -recip rsa.crt",
     true,
     {16},
     "-recip rsa.crt -inkey rsa.pem"},
    {"ForAnEcKey", "-aes128 -recip ec.crt", true, {1}, "-recip ec.crt -inkey ec.pem"},
    {"ForAnEcKeyByKey", "-aes128 -keyid -recip ec.crt", true, {1}, "-recip ec.crt -inkey ec.pem"},
    {"ForASecretKey",
     "-aes128 -secretkey 000102030405060708090A0B0C0D0E0F -secretkeyid AB01",
     true,
     {2},
     "-secretkey 000102030405060708090A0B0C0D0E0F -secretkeyid AB01"},
    {"ForAPassword", "-aes128 -pwri_password secret", true, {3}, "-pwri_password secret"},
    {"ForAll",
     "-aes128 -pwri_password secret -recip ec.crt -recip rsa.crt",
     true,
     {16, 1, 3},
     "-pwri_password secret"},
    {"InAStream",
     "-aes128 -stream -recip rsa.crt -recip ec.crt",
     false,
     {16, 1},
     "-recip ec.crt -inkey ec.pem"},
};

class SealedByOpenssl : public testing::TestWithParam<Sealing> {};

TEST_P(SealedByOpenssl, HasItsRecipientsAndIsOpenedByTheToolAsTheLibraryWritesIt) {
  const Sealing &shape = GetParam();
  certificate_file("rsa");
  certificate_file("ec");
  write_file("message", content);
  openssl(std::string("cms -encrypt -binary -in message -outform DER -out sealed.der ") +
          shape.arguments);
  const auto message = kept_or_written(
      enveloped_messages, content_of("sealed.der", asn1_Get_envelopedData()), shape.der);
  std::vector<uint8_t> recipients, expected = shape.recipients;
  for (const auto *info : elements_of<pki_RecipientInfo>(message->recipientInfos))
    recipients.push_back(info->kind);
  std::sort(recipients.begin(), recipients.end());
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(expected, recipients);
  EXPECT_TRUE(same(asn1_Get_data(), message->encryptedContentInfo->contentType));

  write_message("written.der", asn1_Get_envelopedData(), encoded(enveloped_messages, message));
  openssl(std::string("cms -decrypt -binary -inform DER -in written.der -out opened ") +
          shape.opening);
  EXPECT_EQ(content, read_file("opened"));
  const std::string print = "cms -cmsout -print -noout -inform DER -in ";
  EXPECT_EQ(openssl(print + "sealed.der"), openssl(print + "written.der"));
}

INSTANTIATE_TEST_SUITE_P(As, SealedByOpenssl, testing::ValuesIn(sealings),
                         [](const auto &shape) { return std::string(shape.param.name); });

TEST(EncryptedMessageOfOpenssl, IsOpenedByTheToolAsTheLibraryWritesIt) {
  write_file("message", content);
  const std::string secret_key = " -secretkey 000102030405060708090A0B0C0D0E0F";
  for (const bool der : {true, false}) {
    openssl("cms -EncryptedData_encrypt -aes128 -binary -in message -outform DER -out secret.der" +
            secret_key + (der ? "" : " -stream"));
    const auto message = kept_or_written(encrypted_messages,
                                         content_of("secret.der", asn1_Get_encryptedData()), der);
    write_message("written.der", asn1_Get_encryptedData(), encoded(encrypted_messages, message));
    openssl("cms -EncryptedData_decrypt -binary -inform DER -in written.der -out opened" +
            secret_key);
    EXPECT_EQ(content, read_file("opened"));
  }
}

TEST(DigestedMessageOfOpenssl, IsVerifiedByTheToolAsTheLibraryWritesIt) {
  write_file("message", content);
  openssl(
      "cms -digest_create -md sha256 -nodetach -binary -in message -outform DER -out digest.der");
  const auto message =
      kept_or_written(digested_messages, content_of("digest.der", asn1_Get_digestedData()), true);
  EXPECT_EQ(digest_of("sha256", content), value(message->digest));
  write_message("written.der", asn1_Get_digestedData(), encoded(digested_messages, message));
  openssl("cms -digest_verify -binary -inform DER -in written.der -out verified");
  EXPECT_EQ(content, read_file("verified"));
}

}  // namespace

}  // namespace rfc5652_test
