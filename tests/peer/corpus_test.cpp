// Tests the decoders on real files: the certificates of this system, those of a folder of good
// ones, and inputs made to break a decoder. Each decoder runs in a child process, so that one that
// ends the process does not end the test.
#include <pem.h>
#include <support.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#if defined(__SANITIZE_ADDRESS__)
#define HAS_LEAK_CHECK 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HAS_LEAK_CHECK 1
#endif
#endif
#ifdef HAS_LEAK_CHECK
#include <sanitizer/lsan_interface.h>
#endif

namespace corpus_test {

namespace {

using namespace support;

/* ------------------------------------------------------------------------------------------- */
/* One decoder on one input                                                                      */
/* ------------------------------------------------------------------------------------------- */

/// The result of a decoder for an input. It is plain memory, which a child process shares.
struct Outcome {
  enum State : uint32_t { NotRun, Started, Finished, EndedAsRequired, Crashed };
  State state;
  uint32_t comes_back;  ///< 1: accepted, and encoded to the octets that were consumed
  int64_t consumed;     ///< octets, or -1 where the input was refused
  uint64_t encoding;    ///< a hash of what the encoder wrote

  bool operator==(const Outcome &other) const {
    return state == other.state && comes_back == other.comes_back && consumed == other.consumed &&
           encoding == other.encoding;
  }
};

uint64_t hash(const Bytes &octets) {
  uint64_t h = 0xCBF29CE484222325;
  for (const uint8_t octet : octets) h = (h ^ octet) * 0x100000001B3;
  return h;
}

/// Decodes, encodes, copies and releases.
template <class T>
void attempt(const uint8_t *(*element_d)(const uint8_t *, const uint8_t *, uint32_t, T **,
                                         uint32_t),
             uint32_t (*element_e)(uint8_t **, const T *), T *(*element_clone)(const T *),
             void (*element_free)(T *), const Bytes &input, uint32_t depth, Outcome &outcome) {
  const Decoded<T> result = decode(element_d, input, 0, depth);
  outcome.consumed = result.consumed;
  if (result.ok()) {
    const Bytes encoded = encode(element_e, result.record);
    outcome.encoding = hash(encoded);
    outcome.comes_back = encoded == Bytes(input.begin(), input.begin() + result.consumed) ? 1 : 0;
    element_free(element_clone(result.record));
  }
  element_free(result.record);
}

struct Decoder {
  const char *name;
  void (*run)(const Bytes &input, uint32_t depth, Outcome &outcome);
};

// A row of the table below, from the functions of a type.
#define DECODER(T)                                                                         \
  {                                                                                        \
    "asn1_" #T "_d", [](const Bytes &input, uint32_t depth, Outcome &outcome) {            \
      attempt(asn1_##T##_d, asn1_##T##_e, asn1_##T##_clone, asn1_##T##_free, input, depth, \
              outcome);                                                                    \
    }                                                                                      \
  }

const Decoder certificate_decoder = DECODER(Certificate);
const Decoder revocation_list_decoder = DECODER(CertificateRevocationList);
const Decoder name_decoder = DECODER(Name);
const Decoder request_decoder = DECODER(OCSPRequest);

// A response has no encoder. Its fields are written by the encoders of their types.
uint32_t response_e(uint8_t **pp, const OCSPResponse *response) {
  Bytes fields = {0x0A, 1, static_cast<uint8_t>(response->responseStatus)};
  if (const ResponseBytes *bytes = response->responseBytes)
    fields = fields + element(0xA0, element(0x30, encode(asn1_ObjId_e, bytes->responseType) +
                                                      encode(asn1_OctetString_e, bytes->response)));
  const Bytes octets = element(0x30, fields);
  if (pp != nullptr) *pp = std::copy(octets.begin(), octets.end(), *pp);
  return static_cast<uint32_t>(octets.size());
}

const Decoder response_decoder = {
    "asn1_OCSPResponse_d", [](const Bytes &input, uint32_t depth, Outcome &outcome) {
      attempt(asn1_OCSPResponse_d, response_e, asn1_OCSPResponse_clone, asn1_OCSPResponse_free,
              input, depth, outcome);
    }};

void basic_response_free(BasicOCSPResponse *response) {
  if (response != nullptr) asn1_OctetString_free(response->tbsResponseDataBytes);
  asn1_BasicOCSPResponse_free(response);
}

// A response has no certificates here: with them it is refused. A copy has no signed octets.
uint32_t basic_response_e(uint8_t **pp, const BasicOCSPResponse *response) {
  const Bytes octets = element(0x30, value(response->tbsResponseDataBytes) +
                                         encode(asn1_AlgId_e, response->signatureAlgorithm) +
                                         encode(asn1_BitString_BER_e, response->signature));
  if (pp != nullptr) *pp = std::copy(octets.begin(), octets.end(), *pp);
  return static_cast<uint32_t>(octets.size());
}

const Decoder basic_response_decoder = {
    "asn1_BasicOCSPResponse_d", [](const Bytes &input, uint32_t depth, Outcome &outcome) {
      attempt(asn1_BasicOCSPResponse_d, basic_response_e, asn1_BasicOCSPResponse_clone,
              basic_response_free, input, depth, outcome);
    }};

const Decoder all_decoders[] = {
    certificate_decoder, revocation_list_decoder, name_decoder,        DECODER(RDNSequence),
    DECODER(Any),        DECODER(AlgId),          DECODER(Extensions), request_decoder,
    response_decoder,    basic_response_decoder,
};

/* ------------------------------------------------------------------------------------------- */
/* Many decoders on many inputs                                                                  */
/* ------------------------------------------------------------------------------------------- */

struct File {
  std::string name;
  Bytes octets;
};

struct Job {
  const File *file;
  const Decoder *decoder;
  bool traced;
};

/// Ends the process where it has lost memory. The blocks of a decoder that is interrupted are not
/// lost: its stack still refers to them.
void check_for_leaks(int /*signal*/) {
#ifdef HAS_LEAK_CHECK
  if (__lsan_do_recoverable_leak_check() != 0) _exit(1);
#endif
}

/// Runs the jobs from `first` on, in a child process. Does not return.
[[noreturn]] void run_in_child(const std::vector<Job> &jobs, Outcome *outcomes, size_t first,
                               FILE *errors) {
  const rlimit no_core_file = {0, 0};
  setrlimit(RLIMIT_CORE, &no_core_file);
  dup2(fileno(errors), STDERR_FILENO);
  std::signal(SIGABRT, check_for_leaks);
  FILE *trace = std::fopen("/dev/null", "w");
  const bool failed_before = testing::Test::HasFailure();
  for (size_t i = first; i < jobs.size(); ++i) {
    alarm(60);
    outcomes[i].state = Outcome::Started;
    asn1_LogStart(jobs[i].traced ? trace : nullptr);
    jobs[i].decoder->run(jobs[i].file->octets, jobs[i].traced ? 1 : 0, outcomes[i]);
    if (!failed_before && testing::Test::HasFailure()) _exit(1);
    outcomes[i].state = Outcome::Finished;
  }
  check_for_leaks(0);
  _exit(0);
}

std::string contents(FILE *file) {
  std::string text;
  std::rewind(file);
  for (int c = getc(file); c != EOF; c = getc(file)) text += static_cast<char>(c);
  return text;
}

/// The one line with which an input may end the process: a value in a name has an identifier octet
/// of 100 or more.
bool ended_as_required(int status, const std::string &errors) {
  const bool one_line = errors.find('\n') == errors.size() - 1;
  return WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT && one_line &&
         errors.rfind("asn1_x501: asn1_RDNSequence_to_Name: ", 0) == 0;
}

/// Runs every job, in as many child processes as needed. A crash fails the test.
std::vector<Outcome> run(const std::vector<Job> &jobs) {
  const size_t size = std::max<size_t>(jobs.size(), 1) * sizeof(Outcome);
  void *shared = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) throw std::bad_alloc();
  Outcome *outcomes = static_cast<Outcome *>(shared);
  size_t next = 0;
  for (bool done = false; !done;) {
    std::fflush(nullptr);
    FILE *errors = std::tmpfile();
    const pid_t child = fork();
    if (child == 0) run_in_child(jobs, outcomes, next, errors);
    int status = 0;
    waitpid(child, &status, 0);
    while (next < jobs.size() && outcomes[next].state == Outcome::Finished) ++next;
    done = next == jobs.size();
    if (done) {
      EXPECT_EQ(0, status) << contents(errors);
    } else if (ended_as_required(status, contents(errors))) {
      outcomes[next++].state = Outcome::EndedAsRequired;
    } else {
      ADD_FAILURE() << jobs[next].decoder->name << " on " << jobs[next].file->name
                    << (jobs[next].traced ? " with the trace on" : "") << "\n"
                    << contents(errors);
      outcomes[next++].state = Outcome::Crashed;
    }
    std::fclose(errors);
  }
  std::vector<Outcome> result(outcomes, outcomes + jobs.size());
  munmap(shared, size);
  return result;
}

/// Returns the outcomes of every decoder on every input, decoder after decoder for each input. Each
/// runs with the trace off and on, and the trace must change nothing.
template <class Decoders>
std::vector<Outcome> run_all(const std::vector<File> &files, const Decoders &decoders) {
  std::vector<Job> jobs;
  for (const File &file : files)
    for (const Decoder &decoder : decoders)
      for (const bool traced : {false, true}) jobs.push_back({&file, &decoder, traced});
  const std::vector<Outcome> outcomes = run(jobs);
  std::vector<Outcome> untraced;
  for (size_t i = 0; i < jobs.size(); i += 2) {
    EXPECT_TRUE(outcomes[i] == outcomes[i + 1])
        << "the trace changes what " << jobs[i].decoder->name << " makes of " << jobs[i].file->name;
    untraced.push_back(outcomes[i]);
  }
  return untraced;
}

/* ------------------------------------------------------------------------------------------- */
/* Inputs that are written as they were read                                                     */
/* ------------------------------------------------------------------------------------------- */

/// Returns the elements of definite length, which follow each other.
std::vector<Bytes> elements(const Bytes &octets) {
  std::vector<Bytes> found;
  for (size_t at = 0; at + 2 <= octets.size();) {
    size_t stop = at + 2, length = octets[at + 1];
    if (length > 0x80) {
      const size_t count = length & 0x7F;
      length = 0;
      for (size_t i = 0; i < count && stop < octets.size(); ++i)
        length = length << 8 | octets[stop++];
    }
    stop = std::min(stop + length, octets.size());
    found.emplace_back(octets.begin() + static_cast<std::ptrdiff_t>(at),
                       octets.begin() + static_cast<std::ptrdiff_t>(stop));
    at = stop;
  }
  return found;
}

/// Returns the elements inside an element.
std::vector<Bytes> parts(const Bytes &octets) {
  const std::ptrdiff_t header = octets.at(1) < 0x80 ? 2 : 2 + (octets[1] & 0x7F);
  return elements(Bytes(octets.begin() + header, octets.end()));
}

/// Returns the fields of the signed part of a certificate or CRL.
std::vector<Bytes> signed_fields(const Bytes &octets) {
  return parts(parts(elements(octets).at(0)).at(0));
}

const Bytes empty_name = {0x30, 0x00};

/// version [0] OPTIONAL, serialNumber, signature, issuer, validity, subject
bool has_an_empty_issuer(const Bytes &certificate) {
  const std::vector<Bytes> fields = signed_fields(certificate);
  return fields.at(fields.at(0).at(0) == 0xA0 ? 3 : 2) == empty_name;
}

bool has_an_empty_subject(const Bytes &certificate) {
  const std::vector<Bytes> fields = signed_fields(certificate);
  return fields.at(fields.at(0).at(0) == 0xA0 ? 5 : 4) == empty_name;
}

/// version OPTIONAL, signature, issuer
bool has_an_empty_list_issuer(const Bytes &list) {
  const std::vector<Bytes> fields = signed_fields(list);
  return fields.at(fields.at(0).at(0) == 0x02 ? 2 : 1) == empty_name;
}

/// responseStatus, responseBytes [0] OPTIONAL
bool has_an_empty_status(const Bytes &response) {
  const Bytes status = parts(elements(response).at(0)).at(0);
  return status == hex("0A 81 00");
}

/// tbsResponseData, signatureAlgorithm, signature, certs [0] OPTIONAL
bool has_certificates(const Bytes &basic_response) {
  return parts(elements(basic_response).at(0)).size() == 4;
}

/// Returns the BasicOCSPResponse inside a response, which must have one.
Bytes basic_response(const Bytes &response) {
  const Bytes bytes = parts(parts(elements(response).at(0)).at(1)).at(0);
  return parts(parts(bytes).at(1)).at(0);
}

/// Files that are not written as they were read, and why.
struct Exceptions {
  const char *reason;
  bool (*holds)(const Bytes &octets);
  bool refused;
  const char *names;  ///< the first eight characters of each file name
};

const Exceptions exceptions[] = {
    {"the issuer is an empty name, which has no text", has_an_empty_issuer, true,
     "0ad5da5b 0d673be7 11d3f4c8 128e8dd2 1a0020d5 1c1d9139 1dd41e57 1eabe7a0 200505d7 "
     "2515bed7 26d0522c 297e2228 3585bff8 3e428e7b 5073758d 55baa168 6066fead 64092798 "
     "6426bb21 70bb3ffb 7ef98d3b 8dd13f46 91588139 937551d0 94327b17 9c1981ab ab1a047e "
     "afb90a4d b34d7258 b6cde89a c0260c24 d42f199a d8eaef95 df79a0ab e12be59f e2626a63 "
     "e8c8375e ef11b161 f071f141 f47c9b07 f7433d7f f74b4678 fbcc7de5 fdfbf395 feacc303"},
    {"the subject is an empty name, which has no text", has_an_empty_subject, true,
     "0307ade6 1bf54f88 35a685bb 41f1b77a 78bde13a 88a57e16 89abe6fa 8d8557fb 902a2745 "
     "c308f5a4 c92057f2 cb14248b e98ec427 ea738837 f8e46b72"},
    {"issuer and subject are empty names",
     [](const Bytes &certificate) {
       return has_an_empty_issuer(certificate) && has_an_empty_subject(certificate);
     },
     true,
     "0262e226 06456cac 0b0432c4 0cf105f7 194e5e0b 23db35c8 25f91597 26d8fefb 27b58b9b "
     "2f862c75 337ceb1f 3817c1e5 38949304 3b505eec 3fa7ff5d 40878f93 481e5a4d 4cc2be28 "
     "4df72aec 575b8221 5f842d5a 638f0053 6834f326 6f8b30b4 7d843f24 7ef2922f 83ec6fcb "
     "864dc034 93ade879 9d540168 9fbc5615 a5f7373a a7ccc0ae b40df4b7 b4ab2ada b6c1c7b0 "
     "b89e4c58 b9e21dd0 bc60e5d9 bf00dd33 bf14fe5f c12ff534 d1f22a0d d645c1f5 dd6a4026 "
     "ddc65352 e1c892ba e5e29b7b f2d280b8 f37f0a87 f60d8a0a"},
    {"the issuer of the list is an empty name", has_an_empty_list_issuer, true,
     "19b2e191 333adcef 66d86d93 738b9fee aa38bc48 bbb87472"},
    {"the status of the response has no octet", has_an_empty_status, true, "04ec8d87"},
    {"the response has certificates, which cannot be read", has_certificates, true,
     "basic_3a basic_b0"},
    {"the certificate ends in front of the end of the file",
     [](const Bytes &certificate) { return elements(certificate).at(0) != certificate; }, false,
     "3df5958c c0ca7adf"},
};

const Exceptions *exception_for(const std::string &name) {
  for (const Exceptions &candidate : exceptions)
    if (std::string(candidate.names).find(name.substr(0, 8)) != std::string::npos)
      return &candidate;
  return nullptr;
}

/// Checks that each file is written as it was read, octet for octet, and that each of the
/// exceptions really has the form that it is listed for.
void expect_to_come_back(const std::vector<File> &files, const Decoder &decoder) {
  const std::vector<Outcome> outcomes = run_all(files, std::vector{decoder});
  for (size_t i = 0; i < files.size(); ++i) {
    const Bytes &octets = files[i].octets;
    const Exceptions *exception = exception_for(files[i].name);
    if (exception != nullptr) {
      EXPECT_TRUE(exception->holds(octets)) << files[i].name << ": " << exception->reason;
    }
    if (exception != nullptr && exception->refused) {
      EXPECT_EQ(-1, outcomes[i].consumed) << files[i].name << ": " << exception->reason;
    } else {
      const size_t size = exception == nullptr ? octets.size() : elements(octets).at(0).size();
      EXPECT_EQ(static_cast<int64_t>(size), outcomes[i].consumed) << files[i].name;
      EXPECT_EQ(1U, outcomes[i].comes_back) << files[i].name;
    }
  }
}

TEST(NameOfARareType, EndsTheProcessWithOneLine) {
  const Bytes assertion = element(0x30, hex("06 03 55 04 03 C8 01 78"));
  const std::vector<File> files = {{"a name", element(0x30, element(0x31, assertion))}};
  EXPECT_EQ(Outcome::EndedAsRequired, run_all(files, std::vector{name_decoder}).at(0).state);
}

/* ------------------------------------------------------------------------------------------- */
/* The certificates of this system                                                               */
/* ------------------------------------------------------------------------------------------- */

TEST(TrustStore, CertificatesComeBackOctetForOctet) {
  std::ifstream in(trust_store, std::ios::binary);
  if (!in) GTEST_SKIP() << "there is no " << trust_store << " here";
  std::vector<File> files;
  for (const Bytes &certificate :
       certificates_of_pem(std::string(std::istreambuf_iterator<char>(in), {})))
    files.push_back({"certificate number " + std::to_string(files.size() + 1), certificate});
  ASSERT_FALSE(files.empty());
  expect_to_come_back(files, certificate_decoder);
}

/* ------------------------------------------------------------------------------------------- */
/* A folder of files from elsewhere                                                              */
/* ------------------------------------------------------------------------------------------- */

class Corpus : public testing::Test {
 protected:
  void SetUp() override {
    const char *folder = std::getenv("ORVELASN1_CORPUS");
    if (folder == nullptr)
      GTEST_SKIP() << "set ORVELASN1_CORPUS to a folder with certificates and hostile inputs";
    folder_ = folder;
  }

  /// Returns every file of the folder `name`, in the order of their names.
  std::vector<File> files(const std::string &name) const {
    std::vector<File> found;
    for (const auto &file : std::filesystem::directory_iterator(folder_ / name)) {
      std::ifstream in(file.path(), std::ios::binary);
      found.push_back(
          {file.path().filename().string(), Bytes(std::istreambuf_iterator<char>(in), {})});
    }
    std::sort(found.begin(), found.end(),
              [](const File &a, const File &b) { return a.name < b.name; });
    EXPECT_FALSE(found.empty()) << name;
    return found;
  }

  void expect_no_crash(const std::string &name) const {
    const std::vector<File> found = files(name);
    for (const Outcome &outcome : run_all(found, all_decoders))
      EXPECT_NE(Outcome::Crashed, outcome.state);
  }

 private:
  std::filesystem::path folder_;
};

TEST_F(Corpus, CertificatesComeBackOctetForOctet) {
  expect_to_come_back(files("certificates"), certificate_decoder);
}

TEST_F(Corpus, RevocationListsComeBackOctetForOctet) {
  expect_to_come_back(files("crls"), revocation_list_decoder);
}

TEST_F(Corpus, StatusRequestsComeBackOctetForOctet) {
  expect_to_come_back(files("ocsp-requests"), request_decoder);
}

TEST_F(Corpus, StatusResponsesComeBackOctetForOctet) {
  const std::vector<File> responses = files("ocsp-responses");
  expect_to_come_back(responses, response_decoder);
  std::vector<File> basic;
  for (const File &file : responses)
    if (!has_an_empty_status(file.octets))
      basic.push_back({"basic_" + file.name, basic_response(file.octets)});
  ASSERT_FALSE(basic.empty());
  expect_to_come_back(basic, basic_response_decoder);
}

TEST_F(Corpus, HostileCertificatesDoNotCrash) { expect_no_crash("hostile-certificates"); }

TEST_F(Corpus, HostileRevocationListsDoNotCrash) { expect_no_crash("hostile-crls"); }

TEST_F(Corpus, OtherDecodersDoNotCrashOnGoodInputs) {
  for (const char *name : {"certificates", "crls", "ocsp-requests", "ocsp-responses"})
    expect_no_crash(name);
}

}  // namespace

}  // namespace corpus_test
