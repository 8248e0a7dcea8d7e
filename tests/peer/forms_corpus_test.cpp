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

}  // namespace
