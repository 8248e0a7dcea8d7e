// The syntaxes of certificate and CRL extensions (RFC 5280, 4.2, 5.2), and their identifiers.
//
// Several of them have explicit tags where the public definitions have implicit ones. An optional
// field is found by its exact identifier octet: a primitive one in the public form is none, and the
// cursor stays in front of it; a constructed one is taken for the explicit tag, and refused for
// what is in it.
#include "registry/identifiers.h"
#include "x509/codecs.h"
#include "x509/names.h"

using namespace asn1;

namespace {

constexpr const char *unit = "asn1_x509v3";

// A table has a line for each field.
// clang-format off

// AnotherName ::= SEQUENCE {
//   type-id      OBJECT IDENTIFIER,
//   value    [0] EXPLICIT ANY DEFINED BY type-id }
using OtherNameSyntax = Sequence<OtherName,
    Required<&OtherName::type, ObjIdCodec>,
    Required<&OtherName::value, Explicit<0, AnyCodec>>>;

// clang-format on

// The public encoder has a parameter more than the others.
uint32_t encode_other_name(uint8_t **pp, const OtherName *name) {
  return asn1_OtherName_e(pp, nullptr, name);
}

using OtherNameCodec =
    Family<0x30, encode_other_name, asn1_OtherName_d, asn1_OtherName_clone, asn1_OtherName_free>;

// A table has a line for each field.
// clang-format off

// GeneralName ::= CHOICE {
//   otherName      [0] IMPLICIT AnotherName,
//   rfc822Name     [1] IMPLICIT IA5String,
//   dNSName        [2] IMPLICIT IA5String,
//   directoryName  [4] IMPLICIT Name,
//   uniformResourceIdentifier
//                  [6] IMPLICIT IA5String,
//   iPAddress      [7] IMPLICIT OCTET STRING,
//   registeredID   [8] IMPLICIT OBJECT IDENTIFIER }
//
// The tag of a directory name takes the place of its SEQUENCE, where the public form has it around
// the SEQUENCE. X.400 addresses (3) and EDI party names (5) are refused.
using GeneralNameSyntax = Choice<GeneralName, UnknownKind::copies_kind,
    Alternative<0, Implicit<0, OtherNameCodec>>,
    Alternative<1, Implicit<1, IA5StringCodec>>,
    Alternative<2, Implicit<2, IA5StringCodec>>,
    Alternative<4, Implicit<4, NameCodec>>,
    Alternative<6, Implicit<6, IA5StringCodec>>,
    Alternative<7, Implicit<7, OctetStringCodec>>,
    Alternative<8, Implicit<8, ObjIdCodec>>>;

// AuthorityKeyIdentifier ::= SEQUENCE {
//   keyIdentifier              [0] EXPLICIT OCTET STRING OPTIONAL,
//   authorityCertIssuer        [1] EXPLICIT SEQUENCE OF GeneralName OPTIONAL,
//   authorityCertSerialNumber  [2] EXPLICIT INTEGER OPTIONAL }
using AuthorityKeyIdentifierSyntax = Sequence<AuthorityKeyIdentifier,
    Optional<&AuthorityKeyIdentifier::keyIdentifier, Explicit<0, OctetStringCodec>>,
    Optional<&AuthorityKeyIdentifier::authorityCertIssuer, Explicit<1, GeneralNamesCodec>>,
    Optional<&AuthorityKeyIdentifier::authorityCertSerialNumber, Explicit<2, IntegerCodec>>>;

// BasicConstraints ::= SEQUENCE {
//   cA                 BOOLEAN DEFAULT FALSE,
//   pathLenConstraint  INTEGER OPTIONAL }
using BasicConstraintsSyntax = Sequence<BasicConstraints,
    Optional<&BasicConstraints::cA, BooleanCodec>,
    Optional<&BasicConstraints::pathLenConstraint, IntegerCodec>>;

// GeneralSubtree ::= SEQUENCE {
//   base         GeneralName,
//   minimum  [0] EXPLICIT INTEGER OPTIONAL,
//   maximum  [1] EXPLICIT INTEGER OPTIONAL }
using GeneralSubtreeSyntax = Sequence<GeneralSubtree,
    Required<&GeneralSubtree::base, GeneralNameCodec>,
    Optional<&GeneralSubtree::minimum, Explicit<0, IntegerCodec>>,
    Optional<&GeneralSubtree::maximum, Explicit<1, IntegerCodec>>>;
using GeneralSubtreeCodec = Family<0x30, nullptr, asn1_GeneralSubtree_d, asn1_GeneralSubtree_clone,
                                   asn1_GeneralSubtree_free>;

// NameConstraints ::= SEQUENCE {
//   permittedSubtrees  [0] EXPLICIT SEQUENCE OF GeneralSubtree OPTIONAL,
//   excludedSubtrees   [1] EXPLICIT SEQUENCE OF GeneralSubtree OPTIONAL }
using NameConstraintsSyntax = Sequence<NameConstraints,
    Optional<&NameConstraints::permittedSubtrees, Explicit<0, SequenceOf<GeneralSubtreeCodec>>>,
    Optional<&NameConstraints::excludedSubtrees, Explicit<1, SequenceOf<GeneralSubtreeCodec>>>>;

// PolicyConstraints ::= SEQUENCE {
//   requireExplicitPolicy  [0] EXPLICIT INTEGER OPTIONAL,
//   inhibitPolicyMapping   [1] EXPLICIT INTEGER OPTIONAL }
using PolicyConstraintsSyntax = Sequence<PolicyConstraints,
    Optional<&PolicyConstraints::requireExplicitPolicy, Explicit<0, IntegerCodec>>,
    Optional<&PolicyConstraints::inhibitPolicyMapping, Explicit<1, IntegerCodec>>>;

// PolicyMapping ::= SEQUENCE {
//   issuerDomainPolicy   OBJECT IDENTIFIER,
//   subjectDomainPolicy  OBJECT IDENTIFIER }
using PolicyMappingSyntax = Sequence<PolicyMapping,
    Required<&PolicyMapping::issuerDomainPolicy, ObjIdCodec>,
    Required<&PolicyMapping::subjectDomainPolicy, ObjIdCodec>>;

// PrivateKeyUsagePeriod ::= SEQUENCE {
//   notBefore  [0] EXPLICIT UTCTime OPTIONAL,
//   notAfter   [1] EXPLICIT UTCTime OPTIONAL }
using PrivateKeyUsagePeriodSyntax = Sequence<PrivateKeyUsagePeriod,
    Optional<&PrivateKeyUsagePeriod::notBefore, Explicit<0, UTCTimeCodec>>,
    Optional<&PrivateKeyUsagePeriod::notAfter, Explicit<1, UTCTimeCodec>>>;

// A record without a list is written as one with an empty list.
struct FullNameCodec : Implicit<0, GeneralNamesCodec> {
  static uint32_t encode(uint8_t **pp, const List *names) {
    return encode_implicit(pp, identifier,
                           [&](uint8_t **to) { return GeneralNamesCodec::encode(to, names); });
  }
};

// DistributionPointName ::= CHOICE {
//   fullName                 [0] IMPLICIT SEQUENCE OF GeneralName,
//   nameRelativeToCRLIssuer  [1] IMPLICIT RelativeDistinguishedName }
using RdnCodec = ORVELASN1_FAMILY(0x31, RelativeDistinguishedName);
using DistributionPointNameSyntax = Choice<DistributionPointName, UnknownKind::copies_kind,
    Alternative<0, FullNameCodec>,
    Alternative<1, Implicit<1, RdnCodec>>>;
using DistributionPointNameCodec = ORVELASN1_FAMILY(0, DistributionPointName);

// clang-format on

// Written under A2, as the public form has it, but looked for under 82 only: what the encoder
// writes is left unread.
struct CrlIssuerCodec : Implicit<2, GeneralNamesCodec> {
  static bool starts(int octet) { return octet == 0x82; }
};

// A table has a line for each field.
// clang-format off

// DistributionPoint ::= SEQUENCE {
//   distributionPoint  [0] EXPLICIT DistributionPointName OPTIONAL,
//   reasons            [1] IMPLICIT BIT STRING OPTIONAL,
//   cRLIssuer          [2] IMPLICIT SEQUENCE OF GeneralName OPTIONAL }
using DistributionPointSyntax = Sequence<DistributionPoint,
    Optional<&DistributionPoint::distributionPoint, Explicit<0, DistributionPointNameCodec>>,
    Optional<&DistributionPoint::reasons, Implicit<1, BitStringCodec>>,
    Optional<&DistributionPoint::cRLIssuer, CrlIssuerCodec>>;

// AccessDescription ::= SEQUENCE {
//   accessMethod    OBJECT IDENTIFIER,
//   accessLocation  GeneralName }
using AccessDescriptionSyntax = Sequence<AccessDescription,
    Required<&AccessDescription::accessMethod, ObjIdCodec>,
    Required<&AccessDescription::accessLocation, GeneralNameCodec>>;

// clang-format on

// AuthorityInfoAccessSyntax ::= SEQUENCE OF AccessDescription
using AuthorityInfoAccessSyntaxSyntax = SequenceOf<ORVELASN1_FAMILY(0x30, AccessDescription)>;

}  // namespace

OtherName *asn1_OtherName_new() { return OtherNameSyntax::create(); }
void asn1_OtherName_free(OtherName *pElement) { OtherNameSyntax::free(pElement); }
const uint8_t *asn1_OtherName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                OtherName **ppElement, uint32_t depth) {
  return OtherNameSyntax::decode(z, end, impl_tag, ppElement, depth);
}

uint32_t asn1_OtherName_e(uint8_t **pp, const void *, const OtherName *pElement) {
  return OtherNameSyntax::encode(pp, pElement);
}

// A field that was copied ends the copy: one comes back only of a record without fields, or where
// the field could not be copied.
OtherName *asn1_OtherName_clone(const OtherName *pElement) {
  if (pElement == nullptr) return nullptr;
  OtherName *const copy = OtherNameSyntax::create();
  if (copy == nullptr) return nullptr;
  copy->type = asn1_ObjId_clone(pElement->type);
  if (copy->type == nullptr) copy->value = asn1_Any_clone(pElement->value);
  if (copy->type == nullptr && copy->value == nullptr) return copy;
  asn1_OtherName_free(copy);
  return nullptr;
}

GeneralName *asn1_GeneralName_new() { return GeneralNameSyntax::create(); }
void asn1_GeneralName_free(GeneralName *pElement) { GeneralNameSyntax::free(pElement); }
GeneralName *asn1_GeneralName_clone(const GeneralName *pElement) {
  return GeneralNameSyntax::clone(pElement);
}
uint32_t asn1_GeneralName_e(uint8_t **pp, const GeneralName *pElement) {
  return GeneralNameSyntax::encode(pp, pElement);
}
const uint8_t *asn1_GeneralName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  GeneralName **ppElement, uint32_t depth) {
  require((impl_tag & 0xFF) == 0, unit, __func__, "impl_tag == 0");
  return GeneralNameSyntax::decode(z, end, ppElement, depth);
}

AuthorityKeyIdentifier *asn1_AuthorityKeyIdentifier_new() {
  return AuthorityKeyIdentifierSyntax::create();
}
void asn1_AuthorityKeyIdentifier_free(AuthorityKeyIdentifier *pElement) {
  AuthorityKeyIdentifierSyntax::free(pElement);
}
const uint8_t *asn1_AuthorityKeyIdentifier_d(const uint8_t *z, const uint8_t *end,
                                             uint32_t impl_tag, AuthorityKeyIdentifier **ppElement,
                                             uint32_t depth) {
  return AuthorityKeyIdentifierSyntax::decode(z, end, impl_tag, ppElement, depth);
}

// There are no copies of this type.
AuthorityKeyIdentifier *asn1_AuthorityKeyIdentifier_clone(const AuthorityKeyIdentifier *) {
  return nullptr;
}

GeneralSubtree *asn1_GeneralSubtree_new() { return GeneralSubtreeSyntax::create(); }
void asn1_GeneralSubtree_free(GeneralSubtree *pElement) { GeneralSubtreeSyntax::free(pElement); }
const uint8_t *asn1_GeneralSubtree_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     GeneralSubtree **ppElement, uint32_t depth) {
  return GeneralSubtreeSyntax::decode(z, end, impl_tag, ppElement, depth);
}

// There are no copies of this type.
GeneralSubtree *asn1_GeneralSubtree_clone(const GeneralSubtree *) { return nullptr; }

PrivateKeyUsagePeriod *asn1_PrivateKeyUsagePeriod_new() {
  return PrivateKeyUsagePeriodSyntax::create();
}
void asn1_PrivateKeyUsagePeriod_free(PrivateKeyUsagePeriod *pElement) {
  PrivateKeyUsagePeriodSyntax::free(pElement);
}
const uint8_t *asn1_PrivateKeyUsagePeriod_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            PrivateKeyUsagePeriod **ppElement, uint32_t depth) {
  return PrivateKeyUsagePeriodSyntax::decode(z, end, impl_tag, ppElement, depth);
}

// There are no copies of this type.
PrivateKeyUsagePeriod *asn1_PrivateKeyUsagePeriod_clone(const PrivateKeyUsagePeriod *) {
  return nullptr;
}

BasicConstraints *asn1_BasicConstraints_new() { return BasicConstraintsSyntax::create(); }
void asn1_BasicConstraints_free(BasicConstraints *pElement) {
  BasicConstraintsSyntax::free(pElement);
}
BasicConstraints *asn1_BasicConstraints_clone(const BasicConstraints *pElement) {
  return BasicConstraintsSyntax::clone(pElement);
}
uint32_t asn1_BasicConstraints_e(uint8_t **pp, const BasicConstraints *pElement) {
  return BasicConstraintsSyntax::encode(pp, pElement);
}
const uint8_t *asn1_BasicConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       BasicConstraints **ppElement, uint32_t depth) {
  return BasicConstraintsSyntax::decode(z, end, impl_tag, ppElement, depth);
}

NameConstraints *asn1_NameConstraints_new() { return NameConstraintsSyntax::create(); }
void asn1_NameConstraints_free(NameConstraints *pElement) { NameConstraintsSyntax::free(pElement); }
NameConstraints *asn1_NameConstraints_clone(const NameConstraints *pElement) {
  return NameConstraintsSyntax::clone(pElement);
}
const uint8_t *asn1_NameConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      NameConstraints **ppElement, uint32_t depth) {
  return NameConstraintsSyntax::decode(z, end, impl_tag, ppElement, depth);
}

PolicyConstraints *asn1_PolicyConstraints_new() { return PolicyConstraintsSyntax::create(); }
void asn1_PolicyConstraints_free(PolicyConstraints *pElement) {
  PolicyConstraintsSyntax::free(pElement);
}
PolicyConstraints *asn1_PolicyConstraints_clone(const PolicyConstraints *pElement) {
  return PolicyConstraintsSyntax::clone(pElement);
}
const uint8_t *asn1_PolicyConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        PolicyConstraints **ppElement, uint32_t depth) {
  return PolicyConstraintsSyntax::decode(z, end, impl_tag, ppElement, depth);
}

PolicyMapping *asn1_PolicyMapping_new() { return PolicyMappingSyntax::create(); }
void asn1_PolicyMapping_free(PolicyMapping *pElement) { PolicyMappingSyntax::free(pElement); }
PolicyMapping *asn1_PolicyMapping_clone(const PolicyMapping *pElement) {
  return PolicyMappingSyntax::clone(pElement);
}
const uint8_t *asn1_PolicyMapping_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    PolicyMapping **ppElement, uint32_t depth) {
  return PolicyMappingSyntax::decode(z, end, impl_tag, ppElement, depth);
}

DistributionPointName *asn1_DistributionPointName_new() {
  return DistributionPointNameSyntax::create();
}
void asn1_DistributionPointName_free(DistributionPointName *pElement) {
  DistributionPointNameSyntax::free(pElement);
}
DistributionPointName *asn1_DistributionPointName_clone(const DistributionPointName *pElement) {
  return DistributionPointNameSyntax::clone(pElement);
}
uint32_t asn1_DistributionPointName_e(uint8_t **pp, const DistributionPointName *pElement) {
  return DistributionPointNameSyntax::encode(pp, pElement);
}
const uint8_t *asn1_DistributionPointName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            DistributionPointName **ppElement, uint32_t depth) {
  require((impl_tag & 0xFF) == 0, unit, __func__, "impl_tag == 0");
  return DistributionPointNameSyntax::decode(z, end, ppElement, depth);
}

DistributionPoint *asn1_DistributionPoint_new() { return DistributionPointSyntax::create(); }
void asn1_DistributionPoint_free(DistributionPoint *pElement) {
  DistributionPointSyntax::free(pElement);
}
DistributionPoint *asn1_DistributionPoint_clone(const DistributionPoint *pElement) {
  return DistributionPointSyntax::clone(pElement);
}
uint32_t asn1_DistributionPoint_e(uint8_t **pp, const DistributionPoint *pElement) {
  return DistributionPointSyntax::encode(pp, pElement);
}
const uint8_t *asn1_DistributionPoint_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        DistributionPoint **ppElement, uint32_t depth) {
  return DistributionPointSyntax::decode(z, end, impl_tag, ppElement, depth);
}

AccessDescription *asn1_AccessDescription_new() { return AccessDescriptionSyntax::create(); }
void asn1_AccessDescription_free(AccessDescription *pElement) {
  AccessDescriptionSyntax::free(pElement);
}
AccessDescription *asn1_AccessDescription_clone(const AccessDescription *pElement) {
  return AccessDescriptionSyntax::clone(pElement);
}
uint32_t asn1_AccessDescription_e(uint8_t **pp, const AccessDescription *pElement) {
  return AccessDescriptionSyntax::encode(pp, pElement);
}
const uint8_t *asn1_AccessDescription_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        AccessDescription **ppElement, uint32_t depth) {
  return AccessDescriptionSyntax::decode(z, end, impl_tag, ppElement, depth);
}

void asn1_AuthorityInfoAccessSyntax_free(AuthorityInfoAccessSyntax *pElement) {
  AuthorityInfoAccessSyntaxSyntax::free(pElement);
}
uint32_t asn1_AuthorityInfoAccessSyntax_e(uint8_t **pp, const AuthorityInfoAccessSyntax *pElement) {
  return AuthorityInfoAccessSyntaxSyntax::encode(pp, pElement);
}
const uint8_t *asn1_AuthorityInfoAccessSyntax_d(const uint8_t *z, const uint8_t *end,
                                                uint32_t impl_tag,
                                                AuthorityInfoAccessSyntax **ppElement,
                                                uint32_t depth) {
  return AuthorityInfoAccessSyntaxSyntax::decode(z, end, impl_tag, ppElement, depth);
}

OBJECT_IDENTIFIER(id_ce, 2, 5, 29)
OBJECT_IDENTIFIER(id_ce_authorityKeyIdentifier, 2, 5, 29, 35)
OBJECT_IDENTIFIER(id_ce_subjectKeyIdentifier, 2, 5, 29, 14)
OBJECT_IDENTIFIER(id_ce_keyUsage, 2, 5, 29, 15)
OBJECT_IDENTIFIER(id_ce_privateKeyUsagePeriod, 2, 5, 29, 16)
OBJECT_IDENTIFIER(id_qt, 1, 3, 6, 1, 5, 5, 7, 2)
OBJECT_IDENTIFIER(id_ce_certificatePolicies, 2, 5, 29, 32)
OBJECT_IDENTIFIER(anyPolicy, 2, 5, 29, 32, 0)
OBJECT_IDENTIFIER(id_qt_cps, 1, 3, 6, 1, 5, 5, 7, 2, 1)
OBJECT_IDENTIFIER(id_qt_unotice, 1, 3, 6, 1, 5, 5, 7, 2, 1)
OBJECT_IDENTIFIER(id_ce_policyMappings, 2, 5, 29, 33)
OBJECT_IDENTIFIER(id_ce_subjectAltName, 2, 5, 29, 17)
OBJECT_IDENTIFIER(id_ce_issuerAltName, 2, 5, 29, 18)
OBJECT_IDENTIFIER(id_ce_subjectDirectoryAttributes, 2, 5, 29, 9)
OBJECT_IDENTIFIER(id_ce_basicConstraints, 2, 5, 29, 19)
OBJECT_IDENTIFIER(id_ce_nameConstraints, 2, 5, 29, 30)
OBJECT_IDENTIFIER(id_ce_policyConstraints, 2, 5, 29, 36)
OBJECT_IDENTIFIER(id_ce_extKeyUsage, 2, 5, 29, 37)
OBJECT_IDENTIFIER(anyExtendedKeyUsage, 2, 5, 29, 37, 0)
OBJECT_IDENTIFIER(id_kp, 1, 3, 6, 1, 5, 5, 7, 3)
OBJECT_IDENTIFIER(id_kp_serverAuth, 1, 3, 6, 1, 5, 5, 7, 3, 1)
OBJECT_IDENTIFIER(id_kp_clientAuth, 1, 3, 6, 1, 5, 5, 7, 3, 2)
OBJECT_IDENTIFIER(id_kp_codeSigning, 1, 3, 6, 1, 5, 5, 7, 3, 3)
OBJECT_IDENTIFIER(id_kp_emailProtection, 1, 3, 6, 1, 5, 5, 7, 3, 4)
OBJECT_IDENTIFIER(id_kp_timeStamping, 1, 3, 6, 1, 5, 5, 7, 3, 8)
OBJECT_IDENTIFIER(id_kp_OCSPSigning, 1, 3, 6, 1, 5, 5, 7, 3, 9)
OBJECT_IDENTIFIER(id_ce_cRLDistributionPoints, 2, 5, 29, 31)
OBJECT_IDENTIFIER(id_pkix, 1, 3, 6, 1, 5, 5, 7)
OBJECT_IDENTIFIER(id_pe, 1, 3, 6, 1, 5, 5, 7, 1)
OBJECT_IDENTIFIER(id_pe_authorityInfoAccess, 1, 3, 6, 1, 5, 5, 7, 1, 1)
OBJECT_IDENTIFIER(id_ad, 1, 3, 6, 1, 5, 5, 7, 48)
OBJECT_IDENTIFIER(id_ad_ocsp, 1, 3, 6, 1, 5, 5, 7, 48, 1)
OBJECT_IDENTIFIER(id_ad_caIssuers, 1, 3, 6, 1, 5, 5, 7, 48, 2)
OBJECT_IDENTIFIER(id_ce_cRLNumber, 2, 5, 29, 20)
OBJECT_IDENTIFIER(id_ce_deltaCRLIndicator, 2, 5, 29, 27)
OBJECT_IDENTIFIER(id_ce_issuingDistributionPoint, 2, 5, 29, 28)
OBJECT_IDENTIFIER(id_ce_freshestCRL, 2, 5, 29, 46)
OBJECT_IDENTIFIER(id_ce_cRLReason, 2, 5, 29, 21)
OBJECT_IDENTIFIER(id_ce_holdInstructionCode, 2, 5, 29, 23)
OBJECT_IDENTIFIER(id_ce_invalidityDate, 2, 5, 29, 24)
OBJECT_IDENTIFIER(id_ce_certificateIssuer, 2, 5, 29, 29)
