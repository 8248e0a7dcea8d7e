// Fresh keys, each in a request that is built field by field, and that the openssl tool signs and
// verifies. ORVELASN1_KEYS is the number of keys of each kind.
#include <forms.h>
#include <pem.h>

#include "by_hand.h"

namespace fresh_keys_test {

namespace {

using namespace support;

const auto keys = FORM(OneAsymmetricKey, pki_OneAsymmetricKey);
const auto curve_keys = FORM(ECPrivateKey, pki_ECPrivateKey);
const auto rsa_keys = FORM(RSAPrivateKey, pki_RSAPrivateKey);
const auto requests = FORM(CertificationRequest, CertificationRequest);

uint32_t number_of_keys() {
  const char *const number = std::getenv("ORVELASN1_KEYS");
  return number == nullptr ? 4 : static_cast<uint32_t>(std::stoul(number));
}

struct KeyKind {
  const char *name;
  const char *options;    // of genpkey
  const char *signature;  // the identifier of the algorithm
  const char *signing;    // options of pkeyutl
};
void PrintTo(const KeyKind &kind, std::ostream *out) { *out << kind.name; }

const KeyKind kinds[] = {
    {"P256", "-algorithm EC -pkeyopt ec_paramgen_curve:P-256", "1.2.840.10045.4.3.2",
     "-digest sha256"},
    {"P384", "-algorithm EC -pkeyopt ec_paramgen_curve:P-384", "1.2.840.10045.4.3.3",
     "-digest sha384"},
    {"Ed25519", "-algorithm ED25519", "1.3.101.112", ""},
    {"Rsa", "-algorithm RSA -pkeyopt rsa_keygen_bits:1024", "1.2.840.113549.1.1.11",
     "-digest sha256"},
};

class FreshKeys : public testing::TestWithParam<KeyKind> {
 protected:
  /// Makes the next key. Checks that it, and the key in it, are written as they were read.
  void make_key() {
    openssl(std::string("genpkey ") + GetParam().options + " -out fresh.pem");
    const Bytes pem = read_file("fresh.pem");
    const std::string lines(pem.begin(), pem.end());
    const size_t start = lines.find('\n'), end = lines.rfind("-----END PRIVATE KEY-----");
    key = kept(keys, from_base64(lines.substr(start, end - start)));
    inner = value(key->privateKey);
  }

  /// Returns the public key, from the fields of the private one.
  BitString *public_key() {
    const std::string name = GetParam().name;
    if (name == "Rsa") {
      const auto numbers = kept(rsa_keys, inner);
      const RSAPublicKey record{numbers->modulus, numbers->publicExponent};
      return bit_string(encode(pki_RSAPublicKey_e, &record));
    }
    if (name != "Ed25519") return asn1_BitString_clone(kept(curve_keys, inner)->publicKey);
    // The private key does not have it.
    openssl("pkey -in fresh.pem -pubout -outform DER -out fresh.spki");
    const auto info = record_of<pki_SubjectPKI_free>(pki_SubjectPKI_d, read_file("fresh.spki"));
    return asn1_BitString_clone(info->subjectPublicKey);
  }

  /// Returns a request for the key, for the caller to sign.
  Held<CertificationRequest> request_for(const Bytes &name, const std::string &host) {
    auto request = created(requests);
    auto *info = pki_CertRequestInfo_new();
    request->certificationRequestInfo = info;
    info->version = asn1_Integer_set(0);
    info->subjectSequence = decode(pki_RDNSequence_d, name).record;
    info->subjectPKInfo = pki_SubjectPKI_new();
    info->subjectPKInfo->algorithm = pki_AlgId_clone(key->privateKeyAlgorithm);
    info->subjectPKInfo->subjectPublicKey = public_key();

    auto *names = owning_list({pki_GeneralName_new()});
    auto &only = element_of<GeneralName>(names, 0);
    only.kind = 2;
    only.value = octet_string(text(host));
    const Bytes content = encode(pki_GeneralNames_e, names);
    pki_GeneralNames_free(names);
    auto *extensions = owning_list({extension(asn1_Get_id_ce_subjectAltName(), 0, content)});
    info->attributes =
        owning_list({attribute(asn1_Get_extensionRequest(), encode(pki_Extensions_e, extensions))});
    pki_Extensions_free(extensions);

    request->signatureAlgorithm =
        algorithm(identifier(GetParam().signature),
                  std::string(GetParam().name) == "Rsa" ? null_element() : nullptr);
    return request;
  }

  void sign(const Held<CertificationRequest> &request) {
    write_file("to_be_signed", encode(pki_CertRequestInfo_e, request->certificationRequestInfo));
    openssl(std::string("pkeyutl -sign -rawin -in to_be_signed -out signature -inkey fresh.pem ") +
            GetParam().signing);
    request->signature = bit_string(read_file("signature"));
  }

  Held<pki_OneAsymmetricKey> key{nullptr, pki_OneAsymmetricKey_free};
  Bytes inner;
};

TEST_P(FreshKeys, InRequestsAreSignedAndVerifiedByTheTool) {
  for (uint32_t i = 0; i < number_of_keys(); ++i) {
    SCOPED_TRACE(i);
    make_key();
    // Every other subject is empty.
    const std::string host = "host" + std::to_string(i) + ".example";
    const Bytes common_name = hex("06 03 55 04 03") + element(0x0C, text(host));
    const Bytes rdn = element(0x31, sequence(common_name));
    const auto request = request_for(sequence(i % 2 == 0 ? Bytes() : rdn), host);
    sign(request);
    const Bytes octets = encoded(requests, request);
    write_file("fresh.req", octets);

    const std::string report =
        openssl("req -inform DER -in fresh.req -verify -noout -subject -text -nameopt RFC2253");
    ASSERT_NE(std::string::npos, report.find("verify OK\n")) << report;
    EXPECT_EQ(i % 2 == 0 ? "" : "CN=" + host, after("subject=", report));
    EXPECT_NE(std::string::npos, report.find("DNS:" + host + "\n"));
    kept(requests, octets);
    if (HasFailure()) return;
  }
}

TEST_P(FreshKeys, InRequestsThatWereChangedAreNotVerified) {
  make_key();
  const auto request = request_for(hex("30 00"), "a.example");
  sign(request);
  request->signature->data[request->signature->length / 8 - 1] ^= 1;
  write_file("fresh.req", encoded(requests, request));
  const std::string verify = "req -inform DER -in fresh.req -verify -noout";
  if (!openssl_refuses(verify)) {
    EXPECT_EQ(std::string::npos, openssl(verify).find("verify OK"));
  }
}

INSTANTIATE_TEST_SUITE_P(Of, FreshKeys, testing::ValuesIn(kinds),
                         [](const auto &kind) { return std::string(kind.param.name); });

}  // namespace

}  // namespace fresh_keys_test
