// What people and programs ask about a certificate, by the calls of pki_certificate.h: facts that
// its fields hold only in parts. A request has those of the certificate that it asks for.
#ifndef ORVELASN1_TOOL_RECORDS_CERTIFICATE_FACTS_H
#define ORVELASN1_TOOL_RECORDS_CERTIFICATE_FACTS_H

#include "records/describe.h"
#include "records/public_key.h"

namespace tool {

/// The digests of an encoding, in hexadecimal digits.
struct Fingerprints {
  std::string sha256;
  std::string sha1;
};

/// Returns the fingerprints of octets.
Fingerprints fingerprints_of(Octets octets);

/// Returns the fingerprints of a certificate: those of its encoding in DER, around the signed part
/// as it was read. That is the element itself where this is DER.
Fingerprints fingerprints_of(const Certificate *certificate);

/// A public key, and its digests.
struct KeyFacts {
  Key key;
  std::string sha256;      ///< of the SubjectPublicKeyInfo as it stands, in hexadecimal digits
  std::string pin;         ///< the same in base64 after "sha256//", as curl has it
  std::string identifier;  ///< SHA-1 of the key's bits (RFC 5280, 4.2.1.2, the first method)
};

KeyFacts key_facts(const Certificate *certificate);

/// The alternative names of a subject, by kind, as UTF-8.
struct AlternativeNames {
  std::vector<std::string> dns;
  std::vector<std::string> ip;
  std::vector<std::string> mail;
  std::vector<std::string> uri;
  std::vector<std::string> directory;  ///< as RFC 4514 has them
  std::vector<Json> other;             ///< as json_of() has general names
  uint32_t unreadable = 0;             ///< how many cannot be read
};

AlternativeNames alternative_names(const Certificate *certificate);

/// Returns the names of the uses, or of the purposes, of a key. Fails where the extension is not
/// there, which allows all of them, and where it cannot be read.
std::optional<std::vector<std::string>> key_usage_names(const Certificate *certificate);
std::optional<std::vector<std::string>> purpose_names(const Certificate *certificate);

/// Returns whether the subject may issue certificates. Fails where that cannot be read.
std::optional<bool> is_issuer(const Certificate *certificate);

/// Returns a name as RFC 4514 has it, in UTF-8. Fails for a name without such a text.
std::optional<std::string> rfc4514_text(const RDNSequence *name);

/// Returns the version as people count: 3 for the number 2. Fails for other numbers than 0 to 2.
std::optional<uint32_t> version_for_people(const Integer *version);

/// Add the facts to a description, for JSON only.
Description &add_facts(Description &fields, const Certificate *certificate);
Description &add_facts(Description &fields, const CertificationRequest *request);
Description &add_facts(Description &fields, const CertificateRevocationList *crl);

}  // namespace tool

#endif
