// The types that identifiers stand for in ANY DEFINED BY, and in what is an OCTET STRING around a value:
// extensions, contents of messages, bags, qualifiers, responses, attributes, parameters.
#include "core/type.h"
#include "pki/type.h"
#include "registry/identifiers.h"

#pragma GCC visibility push(default)
#include "pki_x680.h"
#pragma GCC visibility pop

namespace {

/// An identifier and the type of its values.
struct Row {
  const ObjId &identifier;
  const asn1::Type &type;
};

}  // namespace

namespace pki {
#define TYPE(T)
#define FORM(T) extern const asn1::Type T##Type;
#include "types.inc"
#undef FORM
#undef TYPE
}  // namespace pki

namespace {

// The arcs of the identifiers, by what they identify.
#define CE(n) 2, 5, 29, n                            // id-ce (RFC 5280)
#define PKIX(...) 1, 3, 6, 1, 5, 5, 7, __VA_ARGS__   // id-pkix
#define PKCS(...) 1, 2, 840, 113549, 1, __VA_ARGS__  // of RSA Laboratories
#define CT(n) 1, 3, 6, 1, 4, 1, 11129, 2, 4, n       // certificate transparency (RFC 6962)

// ROW(name, type, arcs...)
#define ROWS                                                            \
  ROW(subjectDirectoryAttributes, SubjectDirectoryAttributes, CE(9))    \
  ROW(subjectKeyIdentifier, SubjectKeyIdentifier, CE(14))               \
  ROW(keyUsage, KeyUsage, CE(15))                                       \
  ROW(privateKeyUsagePeriod, PrivateKeyUsagePeriod, CE(16))             \
  ROW(subjectAltName, GeneralNames, CE(17))                             \
  ROW(issuerAltName, GeneralNames, CE(18))                              \
  ROW(basicConstraints, BasicConstraints, CE(19))                       \
  ROW(cRLNumber, CRLNumber, CE(20))                                     \
  ROW(cRLReasons, CRLReason, CE(21))                                    \
  ROW(invalidityDate, InvalidityDate, CE(24))                           \
  ROW(deltaCRLIndicator, BaseCRLNumber, CE(27))                         \
  ROW(issuingDistributionPoint, IssuingDistributionPoint, CE(28))       \
  ROW(certificateIssuer, GeneralNames, CE(29))                          \
  ROW(nameConstraints, NameConstraints, CE(30))                         \
  ROW(cRLDistributionPoints, CRLDistributionPoints, CE(31))             \
  ROW(certificatePolicies, CertificatePolicies, CE(32))                 \
  ROW(policyMappings, PolicyMappings, CE(33))                           \
  ROW(authorityKeyIdentifier, AuthorityKeyIdentifier, CE(35))           \
  ROW(policyConstraints, PolicyConstraints, CE(36))                     \
  ROW(extKeyUsage, ExtKeyUsageSyntax, CE(37))                           \
  ROW(freshestCRL, CRLDistributionPoints, CE(46))                       \
  ROW(inhibitAnyPolicy, InhibitAnyPolicy, CE(54))                       \
  ROW(authorityInfoAccess, AuthorityInfoAccessSyntax, PKIX(1, 1))       \
  ROW(qcStatements, QCStatements, PKIX(1, 3))                           \
  ROW(ipAddrBlocks, IPAddrBlocks, PKIX(1, 7))                           \
  ROW(autonomousSysIds, ASIdentifiers, PKIX(1, 8))                      \
  ROW(subjectInfoAccess, AuthorityInfoAccessSyntax, PKIX(1, 11))        \
  ROW(logotype, LogotypeExtn, PKIX(1, 12))                              \
  ROW(tlsfeature, Features, PKIX(1, 24))                                \
  ROW(cps, CPSuri, PKIX(2, 1))                                          \
  ROW(unotice, UserNotice, PKIX(2, 2))                                  \
  ROW(ocspBasic, BasicOCSPResponse, PKIX(48, 1, 1))                     \
  ROW(ocspNonce, Nonce, PKIX(48, 1, 2))                                 \
  ROW(ocspCrl, CrlID, PKIX(48, 1, 3))                                   \
  ROW(ocspResponse, AcceptableResponses, PKIX(48, 1, 4))                \
  ROW(ocspArchiveCutoff, ArchiveCutoff, PKIX(48, 1, 6))                 \
  ROW(ocspServiceLocator, ServiceLocator, PKIX(48, 1, 7))               \
  ROW(ocspPrefSigAlgs, PreferredSignatureAlgorithms, PKIX(48, 1, 8))    \
  ROW(timestamps, SignedCertificateTimestampList, CT(2))                \
  ROW(ocspTimestamps, SignedCertificateTimestampList, CT(5))            \
  ROW(rsaEncryptionOAEP, RSAES_OAEP_params, PKCS(1, 7))                 \
  ROW(rsassaPss, RSASSA_PSS_params, PKCS(1, 10))                        \
  ROW(ecPublicKey, ECParameters, 1, 2, 840, 10045, 2, 1)                \
  ROW(signedData, SignedData, PKCS(7, 2))                               \
  ROW(envelopedData, EnvelopedData, PKCS(7, 3))                         \
  ROW(digestedData, DigestedData, PKCS(7, 5))                           \
  ROW(encryptedData, EncryptedData, PKCS(7, 6))                         \
  ROW(extensionRequest, Extensions, PKCS(9, 14))                        \
  ROW(authData, AuthenticatedData, PKCS(9, 16, 1, 2))                   \
  ROW(keyBag, OneAsymmetricKey, PKCS(12, 10, 1, 1))                     \
  ROW(pkcs8ShroudedKeyBag, EncryptedPrivateKeyInfo, PKCS(12, 10, 1, 2)) \
  ROW(certBag, CertBag, PKCS(12, 10, 1, 3))                             \
  ROW(crlBag, CRLBag, PKCS(12, 10, 1, 4))                               \
  ROW(secretBag, SecretBag, PKCS(12, 10, 1, 5))                         \
  ROW(safeContentsBag, SafeContents, PKCS(12, 10, 1, 6))

#define ROW(name, T, ...) OBJECT_IDENTIFIER_RECORD(id_##name, __VA_ARGS__)
ROWS
#undef ROW

    constexpr Row rows[] = {
#define ROW(name, T, ...) {id_##name, pki::T##Type},
        ROWS
#undef ROW
};

}  // namespace

const pki_Type *pki_Type_defined_by(const ObjId *identifier) {
  if (identifier == nullptr || identifier->arcs == nullptr) return nullptr;
  for (const Row &row : rows) {
    if (asn1_ObjId_cmp(&row.identifier, identifier) == 0) return asn1::handle_of(&row.type);
  }
  return nullptr;
}
