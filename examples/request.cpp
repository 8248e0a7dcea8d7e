// Writes what is to be signed of a request for a certificate, or with its signature, the request.
//
//   request KEY NAME            a SubjectPublicKeyInfo in DER, a name as in RFC 4514
//   request KEY NAME SIGNATURE  the same with the signature, of Ed25519
#include <orvelpki.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <vector>

namespace {

std::vector<uint8_t> read(const char *path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Measures, allocates and writes. Says which field is missing where the record has no encoding.
template <class Record>
bool write(const char *type, uint32_t (*encode)(uint8_t **, const Record *), const Record *record) {
  std::vector<char> out(encode(nullptr, record));
  auto *cursor = reinterpret_cast<uint8_t *>(out.data());
  pki_Fault fault;
  if (pki_find_missing(pki_Type_find(type), record, &fault) != 0) {
    std::cerr << fault.path << ": " << fault.sentence << '\n';
    return false;
  }
  return encode(&cursor, record) != 0 &&
         std::cout.write(out.data(), static_cast<std::streamsize>(out.size())).good();
}

}  // namespace

int main(int argc, char **argv) {
  if (argc < 3) return 2;
  const std::unique_ptr<CertificationRequest, void (*)(CertificationRequest *)> request(
      pki_CertificationRequest_new(), pki_CertificationRequest_free);
  CertRequestInfo *const info = pki_CertRequestInfo_new();
  if (request == nullptr || info == nullptr) return 1;
  request->certificationRequestInfo = info;  // which is the request's from here on
  const std::vector<uint8_t> key = read(argv[1]);
  info->version = asn1_Integer_set(0);
  info->subjectSequence = pki_name_parse_rfc4514(argv[2]);
  pki_SubjectPKI_d(key.data(), key.data() + key.size(), 0, &info->subjectPKInfo, 0);
  info->attributes = List_new(0);
  if (argc == 3) return write("pki_CertRequestInfo", pki_CertRequestInfo_e, info) ? 0 : 1;

  const std::vector<uint8_t> signature = read(argv[3]);
  if (info->subjectPKInfo != nullptr)  // Ed25519 has one identifier for keys and signatures
    request->signatureAlgorithm = pki_AlgId_clone(info->subjectPKInfo->algorithm);
  request->signature = asn1_BitString_new(0);
  if (request->signature != nullptr)
    asn1_BitString_append(request->signature, static_cast<uint32_t>(signature.size()),
                          signature.data());
  return write("pki_CertificationRequest", pki_CertificationRequest_e, request.get()) ? 0 : 1;
}
