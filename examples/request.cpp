// Writes what is to be signed of a request for a certificate, or with its signature, the request.
//
//   request KEY NAME            a SubjectPublicKeyInfo in DER, a name as in RFC 4514
//   request KEY NAME SIGNATURE  the same with the signature, of Ed25519
#include <fstream>
#include <iostream>
#include <iterator>
#include <orvelasn1.hpp>

namespace {

namespace pki = orvel::pki;

std::string read(const char *path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Writes the octets of a record, or says why there are none. Returns what main() returns.
template <class T>
int write(const orvel::Result<orvel::Owned<T>> &made) {
  if (!made) return std::cerr << made.error() << '\n', 1;
  const auto octets = orvel::encode(*made).value();
  std::cout.write(reinterpret_cast<const char *>(octets.data()),
                  static_cast<std::streamsize>(octets.size()));
  return std::cout.flush() ? 0 : 1;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc < 3) return 2;
  using Info = pki::CertRequestInfo;
  auto info = orvel::Builder<Info>()
                  .set<&Info::version>(0)
                  .set<&Info::subject>(argv[2])
                  .set<&Info::subjectPKInfo>(orvel::decode<pki::SubjectPKI>(read(argv[1])))
                  .set<&Info::attributes>(orvel::attribute(
                      orvel::oid::extensionRequest,
                      orvel::make<pki::Extensions>(orvel::extension(
                          orvel::oid::id_ce_subjectAltName,
                          orvel::make<pki::GeneralNames>(
                              orvel::choose<pki::GeneralName::dNSName>("www.example"))))))
                  .build();
  if (argc == 3 || !info) return write(info);

  const auto algorithm = orvel::algorithm(orvel::Oid("1.3.101.112"));  // Ed25519
  return write(orvel::Builder<pki::CertificationRequest>()
                   .set<&pki::CertificationRequest::certificationRequestInfo>(std::move(info))
                   .set<&pki::CertificationRequest::signatureAlgorithm>(algorithm)
                   .set<&pki::CertificationRequest::signature>(orvel::Input(read(argv[3])))
                   .build());
}
