// The RFCs' forms on real files: the certificates of this system, and those, the revocation lists and the
// status messages of a folder that OpenSSL reads. All come back octet for octet, with and without the
// stored encodings, and so does every extension that has a form; what does not is named here, with the
// reason.
#include <orvelpki.h>
#include <pem.h>
#include <support.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

namespace forms_corpus_test {

namespace {

using namespace support;

struct File {
  std::string name;
  Bytes octets;
};

/// The files of a folder of the corpus; empty where there is none.
std::vector<File> files_of(const char *folder) {
  std::vector<File> found;
  const char *const corpus = std::getenv("ORVELASN1_CORPUS");
  if (corpus == nullptr) return found;
  for (const auto &file :
       std::filesystem::directory_iterator(std::filesystem::path(corpus) / folder)) {
    std::ifstream in(file.path(), std::ios::binary);
    found.push_back({file.path().filename(), Bytes(std::istreambuf_iterator<char>(in), {})});
  }
  return found;
}

std::string dotted(const ObjId *identifier) {
  char *const text = pki_ObjId_text(identifier);
  std::string copy = text == nullptr ? "" : text;
  std::free(text);
  return copy;
}

/// What became of the extensions with an identifier.
struct Count {
  unsigned decoded = 0, otherwise = 0, refused = 0, without_form = 0;
};
using Counts = std::map<std::string, Count>;

/// What is wrong with values that were refused: the identifier and the fault, and how often.
using Faults = std::map<std::string, unsigned>;

/// Whether a value that is taken is not DER: named bits with zero bits at their end
/// (X.690, 11.2.2), or an element that has its default, FALSE (X.690, 11.5).
bool is_not_der(const std::string &identifier, const Bytes &octets) {
  if (identifier == "2.5.29.15") {
    const unsigned unused = octets[2];
    return (octets.back() >> unused & 1) == 0;
  }
  return identifier == "2.5.29.19" && octets[2] == 1 && octets[4] != 0xFF;
}

/// Decodes the extensions whose forms there are, and encodes them again.
void expect_extensions(const Extensions *extensions, Counts &counts, Faults &faults) {
  for (int32_t i = 0; i < List_len(extensions); ++i) {
    const auto *const extension = static_cast<const Extension *>(List_get(extensions, i));
    const std::string identifier = dotted(extension->extnID);
    const pki_Type *const form = pki_Type_defined_by(extension->extnID);
    if (form == nullptr) {
      ++counts[identifier].without_form;
      continue;
    }
    const Input input(value(extension->extnValue));
    const pki_Functions *const functions = pki_Type_functions(form);
    void *record = nullptr;
    pki_Fault fault;
    const int32_t explained = pki_explain(form, input.z(), input.end(), &fault);
    const uint8_t *const next = functions->decode(input.z(), input.end(), 0, &record, 0);
    EXPECT_EQ(next == nullptr, explained != 0);
    if (next == nullptr) {
      ++counts[identifier].refused;
      ++faults[identifier + " " + fault.path + ": " + fault.sentence];
    } else {
      ++counts[identifier].decoded;
      Bytes written(functions->encode(nullptr, record));
      uint8_t *cursor = written.data();
      functions->encode(&cursor, record);
      if (written != Bytes(input.z(), next)) {
        EXPECT_TRUE(is_not_der(identifier, value(extension->extnValue))) << identifier;
        ++counts[identifier].otherwise;
      }
    }
    functions->free(record);
  }
}

void print(const char *what, const Counts &counts) {
  for (const auto &[identifier, count] : counts) {
    std::printf("%s %s: %u decoded, %u of them not DER, %u refused, %u without a form\n", what,
                identifier.c_str(), count.decoded, count.otherwise, count.refused,
                count.without_form);
  }
}

void drop(OctetString *&kept) {
  asn1_OctetString_free(kept);
  kept = nullptr;
}

/// Decodes a certificate, encodes it with and without the stored encodings, and reads its
/// extensions. Gives whether it comes back without them.
bool expect_certificate(const File &file, Counts &counts, Faults &faults) {
  const Decoded<Certificate> result = decode(pki_Certificate_d, file.octets);
  if (!result.ok()) return false;
  Certificate *const certificate = result.record;
  const Bytes taken(file.octets.begin(), file.octets.begin() + result.consumed);
  EXPECT_EQ(taken, encode(pki_Certificate_e, certificate));
  expect_extensions(certificate->tbsCertificate->extensions, counts, faults);
  drop(certificate->tbsEncoded);
  drop(certificate->tbsCertificate->issuerEncoded);
  drop(certificate->tbsCertificate->subjectEncoded);
  const bool comes_back = taken == encode(pki_Certificate_e, certificate);
  pki_Certificate_free(certificate);
  return comes_back;
}

TEST(FormsOfThisSystem, ReadEveryCertificate) {
  Counts counts;
  Faults faults;
  unsigned read = 0;
  std::ifstream in(trust_store);
  const std::string pem(std::istreambuf_iterator<char>(in), {});
  for (const Bytes &octets : certificates_of_pem(pem)) {
    EXPECT_TRUE(expect_certificate({"trusted", octets}, counts, faults));
    ++read;
  }
  EXPECT_LT(0U, read);
  EXPECT_EQ(Faults(), faults);
  print("trusted", counts);
}

class FormsOfTheCorpus : public testing::Test {
 protected:
  void SetUp() override {
    if (std::getenv("ORVELASN1_CORPUS") == nullptr)
      GTEST_SKIP() << "set ORVELASN1_CORPUS to a folder with certificates and hostile inputs";
  }
};

TEST_F(FormsOfTheCorpus, ReadEveryCertificate) {
  // These are not DER.
  const std::map<std::string, std::string> other = {
      {"e561b6aadefdf374503d.der", "an extension has FALSE for `critical` (X.690, 11.5)"}};
  Counts counts;
  Faults faults;
  unsigned files = 0;
  for (const File &file : files_of("certificates")) {
    EXPECT_EQ(!other.contains(file.name), expect_certificate(file, counts, faults)) << file.name;
    ++files;
  }
  std::printf("%u certificates\n", files);
  print("certificate", counts);
  // Each is malformed; OpenSSL, which reads the certificates, shows the octets of these extensions.
  const Faults expected = {
      {"1.3.6.1.5.5.7.1.1 : expected SEQUENCE (30), but the enclosing element ends", 1},
      {"1.3.6.1.5.5.7.1.1 [0].accessLocation.otherName: expected [0] (A0), found end-of-contents "
       "(00)",
       1},
      {"1.3.6.1.5.5.7.1.1 [0].accessLocation.uniformResourceIdentifier: the header 86 2A promises "
       "42 octets, but only 22 are left",
       1},
      {"1.3.6.1.5.5.7.1.11 : expected SEQUENCE (30), found INTEGER (02)", 24},
      {"1.3.6.1.5.5.7.1.7 [0].ipAddressChoice.inherit: a NULL with content", 1},
      {"2.5.29.17 [3]: expected one of [0] (A0), [1] (81), [2] (82), [3] (A3), [4] (A4), [5] (A5), "
       "[6] (86), [7] (87), [8] (88), found [APPLICATION 24] (78)",
       1},
      {"2.5.29.30 : found [1] (A1), where the value ends", 1},
      {"2.5.29.30 excludedSubtrees[0].base.x400Address: expected [3] (A3), found [3] (83)", 9},
      {"2.5.29.30 permittedSubtrees[0].base.x400Address: expected [3] (A3), found [3] (83)", 1},
      {"2.5.29.30 permittedSubtrees[7]: expected SEQUENCE (30), found constructed VideotexString "
       "(35)",
       1},
      {"2.5.29.30 permittedSubtrees[8].base.otherName.type: expected OBJECT IDENTIFIER (06), found "
       "SEQUENCE (30)",
       1},
      {"2.5.29.31 : expected SEQUENCE (30), but the enclosing element ends", 1},
      {"2.5.29.31 [0]: found [APPLICATION 0] (60), where the value ends", 1},
      {"2.5.29.32 [0].policyQualifiers[0].policyQualifierId: an OBJECT IDENTIFIER that does not "
       "end with its element",
       1},
      {"2.5.29.33 [5].subjectDomainPolicy: an OBJECT IDENTIFIER without content", 1},
      {"2.5.29.36 : found [0] (A0), where the value ends", 2},
      {"2.5.29.37 [5]: expected OBJECT IDENTIFIER (06), found [APPLICATION 31] (7F)", 2},
      {"2.5.29.46 : expected SEQUENCE (30), found INTEGER (02)", 1},
      {"2.5.29.54 : the header 02 01 promises 1 octets, but only 0 are left", 28}};
  EXPECT_EQ(expected, faults);
}

TEST_F(FormsOfTheCorpus, ReadEveryRevocationList) {
  // OpenSSL reads these: it takes a SET in primitive form, and a time with control characters.
  const std::map<std::string, std::string> expected = {
      {"2354ed09b97ef3c2c303.der", "tbsCertList.nextUpdate.utcTime: a time with other characters"},
      {"3b2fff98694d1770218b.der", "tbsCertList.issuer[6]: expected SET (31), found SET (11)"},
      {"f777b1e7a63d009471b1.der", "tbsCertList.nextUpdate.utcTime: a time with other characters"}};
  std::map<std::string, std::string> refused;
  Counts counts;
  Faults faults;
  for (const File &file : files_of("crls")) {
    const Input input(file.octets);
    pki_Fault fault;
    if (pki_explain(pki_Type_find("pki_CertificateRevocationList"), input.z(), input.end(),
                    &fault) != 0) {
      refused[file.name] = std::string(fault.path) + ": " + fault.sentence;
      continue;
    }
    const Decoded<CertificateRevocationList> result =
        decode(pki_CertificateRevocationList_d, file.octets);
    ASSERT_TRUE(result.ok()) << file.name;
    CertificateRevocationList *const list = result.record;
    const Bytes taken(file.octets.begin(), file.octets.begin() + result.consumed);
    EXPECT_EQ(taken, encode(pki_CertificateRevocationList_e, list));
    expect_extensions(list->tbsCertList->crlExtensions, counts, faults);
    // The reader counts the same entries.
    pki_CrlReader reader;
    pki_CrlEntry entry;
    ASSERT_EQ(1, pki_crl_open(&reader, input.z(), input.end()));
    for (int32_t i = 0; i < List_len(list->tbsCertList->revokedCertificates); ++i) {
      const auto *const revoked =
          static_cast<const CRLEntry *>(List_get(list->tbsCertList->revokedCertificates, i));
      expect_extensions(revoked->crlEntryExtensions, counts, faults);
      ASSERT_EQ(1, pki_crl_next(&reader, &entry)) << file.name << " " << i;
    }
    EXPECT_EQ(0, pki_crl_next(&reader, &entry)) << file.name;
    drop(list->tbsEncoded);
    drop(list->tbsCertList->issuerEncoded);
    EXPECT_EQ(taken, encode(pki_CertificateRevocationList_e, list)) << file.name;
    pki_CertificateRevocationList_free(list);
  }
  EXPECT_EQ(expected, refused);
  print("crl", counts);
  // Each is malformed.
  const Faults values = {
      {"2.5.29.20 : the header 02 3A promises 58 octets, but only 2 are left", 1},
      {"2.5.29.21 : expected ENUMERATED (0A), found INTEGER (02)", 1},
      {"2.5.29.35 : found [1] (81), where the value ends", 1},
      {"2.5.29.35 : found [APPLICATION 3] (43), where the value ends", 1},
      {"2.5.29.35 : the header 30 73 promises 115 octets, but only 22 are left", 1}};
  EXPECT_EQ(values, faults);
}

TEST_F(FormsOfTheCorpus, ReadEveryStatusMessage) {
  for (const File &file : files_of("ocsp-requests")) {
    const Decoded<OCSPRequest> result = decode(pki_OCSPRequest_d, file.octets);
    ASSERT_TRUE(result.ok()) << file.name;
    EXPECT_EQ(file.octets, encode(pki_OCSPRequest_e, result.record)) << file.name;
    pki_OCSPRequest_free(result.record);
  }
  for (const File &file : files_of("ocsp-responses")) {
    // Its status has no content.
    const bool malformed = file.name == "04ec8d87621c32560d50.der";
    const Input input(file.octets);
    OCSPResponse *response = nullptr;
    EXPECT_EQ(malformed ? nullptr : input.end(),
              pki_OCSPResponse_d(input.z(), input.end(), 0, &response, 0));
    if (response == nullptr) continue;
    EXPECT_EQ(file.octets, encode(pki_OCSPResponse_e, response)) << file.name;
    BasicOCSPResponse *const basic = pki_OCSPResponse_basic(response);
    ASSERT_NE(nullptr, basic) << file.name;
    EXPECT_LT(0, List_len(basic->certs)) << file.name;
    drop(basic->tbsResponseDataBytes);
    EXPECT_EQ(value(response->responseBytes->response), encode(pki_BasicOCSPResponse_e, basic))
        << file.name;
    pki_BasicOCSPResponse_free(basic);
    pki_OCSPResponse_free(response);
  }
}

}  // namespace

}  // namespace forms_corpus_test
