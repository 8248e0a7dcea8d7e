// The syntaxes of certificate and CRL extensions (RFC 5280, 4.2, 5.2).
//
// Several of them have explicit tags where the public definitions have implicit ones. An optional
// field is found by its exact identifier octet: a primitive one in the public form does not count,
// and the cursor stays in front of it; a constructed one is taken for the explicit tag, and refused
// for what is in it.
#include "core/export.h"
#include "x509/x509.h"

using namespace asn1;

namespace {

[[maybe_unused]] constexpr const char *unit = "asn1_x509v3";

/// [0] IMPLICIT GeneralNames: a record without a list is written as one with an empty list.
struct FullNameCodec : Implicit<0, GeneralNamesCodec> {
  static constexpr bool may_be_null = true;
};

/// Written under A2, as the public form has it, but looked for under 82 only: what the encoder
/// writes is left unread.
struct CrlIssuerCodec : Implicit<2, GeneralNamesCodec> {
  static constexpr uint8_t found_by = tag::context | 2;
};

}  // namespace

// clang-format off

// AnotherName ::= SEQUENCE {
//   type-id      OBJECT IDENTIFIER,
//   value    [0] EXPLICIT ANY DEFINED BY type-id }
using OtherNameTable = Sequence<OtherName,
    Required<&OtherName::type, ObjIdCodec>,
    Required<&OtherName::value, Explicit<0, AnyCodec>>>;
EXPORT_NAMED(OtherName, "AnotherName", OtherNameTable, NEW, DECODER, OWN_CLONE, FREE)

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
using GeneralNameTable = Choice<GeneralName, UnknownKind::copies_kind,
    Alternative<0, "otherName", Implicit<0, OtherNameCodec>>,
    Alternative<1, "rfc822Name", Implicit<1, IA5StringCodec>>,
    Alternative<2, "dNSName", Implicit<2, IA5StringCodec>>,
    Alternative<4, "directoryName", Implicit<4, NameCodec>>,
    Alternative<6, "uniformResourceIdentifier", Implicit<6, IA5StringCodec>>,
    Alternative<7, "iPAddress", Implicit<7, OctetStringCodec>>,
    Alternative<8, "registeredID", Implicit<8, ObjIdCodec>>>;
EXPORT(GeneralName, GeneralNameTable, NEW, TAGLESS_DECODER, ENCODER, CLONE, FREE)

// AuthorityKeyIdentifier ::= SEQUENCE {
//   keyIdentifier              [0] EXPLICIT OCTET STRING OPTIONAL,
//   authorityCertIssuer        [1] EXPLICIT SEQUENCE OF GeneralName OPTIONAL,
//   authorityCertSerialNumber  [2] EXPLICIT INTEGER OPTIONAL }
using AuthorityKeyIdentifierTable = Sequence<AuthorityKeyIdentifier,
    Optional<&AuthorityKeyIdentifier::keyIdentifier, Explicit<0, OctetStringCodec>>,
    Optional<&AuthorityKeyIdentifier::authorityCertIssuer, Explicit<1, GeneralNamesCodec>>,
    Optional<&AuthorityKeyIdentifier::authorityCertSerialNumber, Explicit<2, IntegerCodec>>>;
EXPORT(AuthorityKeyIdentifier, AuthorityKeyIdentifierTable, NEW, DECODER, NO_CLONE, FREE)

// BasicConstraints ::= SEQUENCE {
//   cA                 BOOLEAN DEFAULT FALSE,
//   pathLenConstraint  INTEGER OPTIONAL }
using BasicConstraintsTable = Sequence<BasicConstraints,
    Optional<&BasicConstraints::cA, BooleanCodec>,
    Optional<&BasicConstraints::pathLenConstraint, IntegerCodec>>;
EXPORT_RECORD(BasicConstraints, BasicConstraintsTable)

// GeneralSubtree ::= SEQUENCE {
//   base         GeneralName,
//   minimum  [0] EXPLICIT INTEGER OPTIONAL,
//   maximum  [1] EXPLICIT INTEGER OPTIONAL }
using GeneralSubtreeTable = Sequence<GeneralSubtree,
    Required<&GeneralSubtree::base, GeneralNameCodec>,
    Optional<&GeneralSubtree::minimum, Explicit<0, IntegerCodec>>,
    Optional<&GeneralSubtree::maximum, Explicit<1, IntegerCodec>>>;
EXPORT(GeneralSubtree, GeneralSubtreeTable, NEW, DECODER, NO_CLONE, FREE)

// NameConstraints ::= SEQUENCE {
//   permittedSubtrees  [0] EXPLICIT SEQUENCE OF GeneralSubtree OPTIONAL,
//   excludedSubtrees   [1] EXPLICIT SEQUENCE OF GeneralSubtree OPTIONAL }
using NameConstraintsTable = Sequence<NameConstraints,
    Optional<&NameConstraints::permittedSubtrees, Explicit<0, SequenceOf<GeneralSubtreeCodec>>>,
    Optional<&NameConstraints::excludedSubtrees, Explicit<1, SequenceOf<GeneralSubtreeCodec>>>>;
EXPORT(NameConstraints, NameConstraintsTable, NEW, DECODER, CLONE, FREE)

// PolicyConstraints ::= SEQUENCE {
//   requireExplicitPolicy  [0] EXPLICIT INTEGER OPTIONAL,
//   inhibitPolicyMapping   [1] EXPLICIT INTEGER OPTIONAL }
using PolicyConstraintsTable = Sequence<PolicyConstraints,
    Optional<&PolicyConstraints::requireExplicitPolicy, Explicit<0, IntegerCodec>>,
    Optional<&PolicyConstraints::inhibitPolicyMapping, Explicit<1, IntegerCodec>>>;
EXPORT(PolicyConstraints, PolicyConstraintsTable, NEW, DECODER, CLONE, FREE)

// PolicyMapping ::= SEQUENCE {
//   issuerDomainPolicy   OBJECT IDENTIFIER,
//   subjectDomainPolicy  OBJECT IDENTIFIER }
using PolicyMappingTable = Sequence<PolicyMapping,
    Required<&PolicyMapping::issuerDomainPolicy, ObjIdCodec>,
    Required<&PolicyMapping::subjectDomainPolicy, ObjIdCodec>>;
EXPORT(PolicyMapping, PolicyMappingTable, NEW, DECODER, CLONE, FREE)

// PrivateKeyUsagePeriod ::= SEQUENCE {
//   notBefore  [0] EXPLICIT UTCTime OPTIONAL,
//   notAfter   [1] EXPLICIT UTCTime OPTIONAL }
using PrivateKeyUsagePeriodTable = Sequence<PrivateKeyUsagePeriod,
    Optional<&PrivateKeyUsagePeriod::notBefore, Explicit<0, UTCTimeCodec>>,
    Optional<&PrivateKeyUsagePeriod::notAfter, Explicit<1, UTCTimeCodec>>>;
EXPORT(PrivateKeyUsagePeriod, PrivateKeyUsagePeriodTable, NEW, DECODER, NO_CLONE, FREE)

// DistributionPointName ::= CHOICE {
//   fullName                 [0] IMPLICIT SEQUENCE OF GeneralName,
//   nameRelativeToCRLIssuer  [1] IMPLICIT RelativeDistinguishedName }
using DistributionPointNameTable = Choice<DistributionPointName, UnknownKind::copies_kind,
    Alternative<0, "fullName", FullNameCodec>,
    Alternative<1, "nameRelativeToCRLIssuer", Implicit<1, RelativeDistinguishedNameCodec>>>;
EXPORT(DistributionPointName, DistributionPointNameTable, NEW, TAGLESS_DECODER, ENCODER, CLONE, FREE)

// DistributionPoint ::= SEQUENCE {
//   distributionPoint  [0] EXPLICIT DistributionPointName OPTIONAL,
//   reasons            [1] IMPLICIT BIT STRING OPTIONAL,
//   cRLIssuer          [2] IMPLICIT SEQUENCE OF GeneralName OPTIONAL }
using DistributionPointTable = Sequence<DistributionPoint,
    Optional<&DistributionPoint::distributionPoint, Explicit<0, DistributionPointNameCodec>>,
    Optional<&DistributionPoint::reasons, Implicit<1, BitStringCodec>>,
    Optional<&DistributionPoint::cRLIssuer, CrlIssuerCodec>>;
EXPORT_RECORD(DistributionPoint, DistributionPointTable)

// AccessDescription ::= SEQUENCE {
//   accessMethod    OBJECT IDENTIFIER,
//   accessLocation  GeneralName }
using AccessDescriptionTable = Sequence<AccessDescription,
    Required<&AccessDescription::accessMethod, ObjIdCodec>,
    Required<&AccessDescription::accessLocation, GeneralNameCodec>>;
EXPORT_RECORD(AccessDescription, AccessDescriptionTable)

// AuthorityInfoAccessSyntax ::= SEQUENCE OF AccessDescription
using AuthorityInfoAccessSyntaxTable = SequenceOf<AccessDescriptionCodec>;
EXPORT(AuthorityInfoAccessSyntax, AuthorityInfoAccessSyntaxTable, DECODER, ENCODER, FREE)
