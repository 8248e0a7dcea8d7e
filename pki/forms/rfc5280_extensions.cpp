// Attributes, and the extensions of certificates and revocation lists (RFC 5280, 4.2, 5.2, 5.3). The
// module has implicit tags (Appendix A.2), but for those of a CHOICE (X.680, 31.2.7).
#include "pki/forms/rfc5280_extensions.h"

#include "pki/export.h"
#include "pki/forms/renamed.h"

using namespace pki;

// clang-format off

// Attribute ::= SEQUENCE {
//   type    AttributeType,
//   values  SET OF AttributeValue }
using AttributeTable = Sequence<Attribute,
    Required<&Attribute::type, ObjIdCodec>,
    Required<&Attribute::values, SetOf<AnyCodec>>>;
EXPORT_FORM(Attribute, Attribute, "Attribute", AttributeTable)

// ---------------------------------------------------------------------------------------------
// Keys
// ---------------------------------------------------------------------------------------------

// AuthorityKeyIdentifier ::= SEQUENCE {
//   keyIdentifier              [0] IMPLICIT OCTET STRING OPTIONAL,
//   authorityCertIssuer        [1] IMPLICIT GeneralNames OPTIONAL,
//   authorityCertSerialNumber  [2] IMPLICIT INTEGER OPTIONAL }
using AKI = AuthorityKeyIdentifier;
using AuthorityKeyIdentifierTable = Sequence<AKI,
    Optional<&AKI::keyIdentifier, Implicit<0, OctetStringCodec>>,
    Optional<&AKI::authorityCertIssuer, Implicit<1, GeneralNamesCodec>>,
    Optional<&AKI::authorityCertSerialNumber, Implicit<2, IntegerCodec>>>;
EXPORT_FORM(AuthorityKeyIdentifier, AuthorityKeyIdentifier, "AuthorityKeyIdentifier",
            AuthorityKeyIdentifierTable)

// SubjectKeyIdentifier ::= OCTET STRING
using SubjectKeyIdentifierTable = Renamed<OctetStringCodec, Kind::octet_string>;
EXPORT_FORM_LIST(SubjectKeyIdentifier, OctetString, "SubjectKeyIdentifier",
                 SubjectKeyIdentifierTable)

// KeyUsage ::= BIT STRING, of named bits
using KeyUsageTable = Renamed<NamedBitsCodec, Kind::bit_string>;
EXPORT_FORM_LIST(KeyUsage, BitString, "KeyUsage", KeyUsageTable)

// PrivateKeyUsagePeriod ::= SEQUENCE {
//   notBefore  [0] IMPLICIT GeneralizedTime OPTIONAL,
//   notAfter   [1] IMPLICIT GeneralizedTime OPTIONAL }
using Period = pki_PrivateKeyUsagePeriod;
using PrivateKeyUsagePeriodTable = Sequence<Period,
    Optional<&Period::notBefore, Implicit<0, GeneralizedTimeCodec>>,
    Optional<&Period::notAfter, Implicit<1, GeneralizedTimeCodec>>>;
EXPORT_FORM(PrivateKeyUsagePeriod, pki_PrivateKeyUsagePeriod, "PrivateKeyUsagePeriod",
            PrivateKeyUsagePeriodTable)

// KeyPurposeId ::= OBJECT IDENTIFIER
// ExtKeyUsageSyntax ::= SEQUENCE OF KeyPurposeId
using ExtKeyUsageSyntaxTable = SequenceOf<ObjIdCodec>;
EXPORT_FORM_LIST(ExtKeyUsageSyntax, List, "ExtKeyUsageSyntax", ExtKeyUsageSyntaxTable)

// ---------------------------------------------------------------------------------------------
// Policies
// ---------------------------------------------------------------------------------------------

// PolicyQualifierInfo ::= SEQUENCE {
//   policyQualifierId  OBJECT IDENTIFIER,
//   qualifier          ANY DEFINED BY policyQualifierId }
using PolicyQualifierInfoTable = Sequence<pki_PolicyQualifierInfo,
    Required<&pki_PolicyQualifierInfo::policyQualifierId, ObjIdCodec>,
    Required<&pki_PolicyQualifierInfo::qualifier, AnyCodec>>;
EXPORT_FORM(PolicyQualifierInfo, pki_PolicyQualifierInfo, "PolicyQualifierInfo",
            PolicyQualifierInfoTable)

// PolicyInformation ::= SEQUENCE {
//   policyIdentifier  OBJECT IDENTIFIER,
//   policyQualifiers  SEQUENCE OF PolicyQualifierInfo OPTIONAL }
using PolicyInformationTable = Sequence<pki_PolicyInformation,
    Required<&pki_PolicyInformation::policyIdentifier, ObjIdCodec>,
    Optional<&pki_PolicyInformation::policyQualifiers, SequenceOf<PolicyQualifierInfoCodec>>>;
EXPORT_FORM(PolicyInformation, pki_PolicyInformation, "PolicyInformation", PolicyInformationTable)

// CertificatePolicies ::= SEQUENCE OF PolicyInformation
using CertificatePoliciesTable = SequenceOf<PolicyInformationCodec>;
EXPORT_FORM_LIST(CertificatePolicies, List, "CertificatePolicies", CertificatePoliciesTable)

// CPSuri ::= IA5String
using CPSuriTable = Renamed<IA5StringCodec, Kind::character_string>;
EXPORT_FORM_LIST(CPSuri, IA5String, "CPSuri", CPSuriTable)

// DisplayText ::= CHOICE {
//   ia5String      IA5String,
//   visibleString  VisibleString,
//   bmpString      BMPString,
//   utf8String     UTF8String }
using DisplayTextTable = Choice<pki_DisplayText,
    Alternative<tag::ia5_string, "ia5String", IA5StringCodec>,
    Alternative<tag::visible_string, "visibleString", VisibleStringCodec>,
    Alternative<tag::bmp_string, "bmpString", BMPStringCodec>,
    Alternative<tag::utf8_string, "utf8String", UTF8StringCodec>>;
EXPORT_FORM(DisplayText, pki_DisplayText, "DisplayText", DisplayTextTable)

// NoticeReference ::= SEQUENCE {
//   organization   DisplayText,
//   noticeNumbers  SEQUENCE OF INTEGER }
using NoticeReferenceTable = Sequence<pki_NoticeReference,
    Required<&pki_NoticeReference::organization, DisplayTextCodec>,
    Required<&pki_NoticeReference::noticeNumbers, SequenceOf<IntegerCodec>>>;
EXPORT_FORM(NoticeReference, pki_NoticeReference, "NoticeReference", NoticeReferenceTable)

// UserNotice ::= SEQUENCE {
//   noticeRef     NoticeReference OPTIONAL,
//   explicitText  DisplayText OPTIONAL }
using UserNoticeTable = Sequence<pki_UserNotice,
    Optional<&pki_UserNotice::noticeRef, NoticeReferenceCodec>,
    Optional<&pki_UserNotice::explicitText, DisplayTextCodec>>;
EXPORT_FORM(UserNotice, pki_UserNotice, "UserNotice", UserNoticeTable)

// An element of PolicyMappings:
// SEQUENCE {
//   issuerDomainPolicy   OBJECT IDENTIFIER,
//   subjectDomainPolicy  OBJECT IDENTIFIER }
using PolicyMappingTable = Sequence<PolicyMapping,
    Required<&PolicyMapping::issuerDomainPolicy, ObjIdCodec>,
    Required<&PolicyMapping::subjectDomainPolicy, ObjIdCodec>>;
EXPORT_FORM(PolicyMapping, PolicyMapping, "PolicyMapping", PolicyMappingTable)

// PolicyMappings ::= SEQUENCE OF PolicyMapping
using PolicyMappingsTable = SequenceOf<PolicyMappingCodec>;
EXPORT_FORM_LIST(PolicyMappings, List, "PolicyMappings", PolicyMappingsTable)

// PolicyConstraints ::= SEQUENCE {
//   requireExplicitPolicy  [0] IMPLICIT INTEGER OPTIONAL,
//   inhibitPolicyMapping   [1] IMPLICIT INTEGER OPTIONAL }
using PolicyConstraintsTable = Sequence<PolicyConstraints,
    Optional<&PolicyConstraints::requireExplicitPolicy, Implicit<0, IntegerCodec>>,
    Optional<&PolicyConstraints::inhibitPolicyMapping, Implicit<1, IntegerCodec>>>;
EXPORT_FORM(PolicyConstraints, PolicyConstraints, "PolicyConstraints", PolicyConstraintsTable)

// InhibitAnyPolicy ::= INTEGER
using InhibitAnyPolicyTable = Renamed<IntegerCodec, Kind::integer>;
EXPORT_FORM_LIST(InhibitAnyPolicy, Integer, "InhibitAnyPolicy", InhibitAnyPolicyTable)

// ---------------------------------------------------------------------------------------------
// Subjects
// ---------------------------------------------------------------------------------------------

// SubjectDirectoryAttributes ::= SEQUENCE OF Attribute
using SubjectDirectoryAttributesTable = SequenceOf<AttributeCodec>;
EXPORT_FORM_LIST(SubjectDirectoryAttributes, List, "SubjectDirectoryAttributes",
                 SubjectDirectoryAttributesTable)

// BasicConstraints ::= SEQUENCE {
//   cA                 BOOLEAN DEFAULT FALSE,
//   pathLenConstraint  INTEGER OPTIONAL }
using BasicConstraintsTable = Sequence<BasicConstraints,
    Optional<&BasicConstraints::cA, BooleanCodec>,
    Optional<&BasicConstraints::pathLenConstraint, IntegerCodec>>;
EXPORT_FORM(BasicConstraints, BasicConstraints, "BasicConstraints", BasicConstraintsTable)

// GeneralSubtree ::= SEQUENCE {
//   base         GeneralName,
//   minimum  [0] IMPLICIT INTEGER DEFAULT 0,
//   maximum  [1] IMPLICIT INTEGER OPTIONAL }
using GeneralSubtreeTable = Sequence<GeneralSubtree,
    Required<&GeneralSubtree::base, GeneralNameCodec>,
    Optional<&GeneralSubtree::minimum, Implicit<0, IntegerCodec>>,
    Optional<&GeneralSubtree::maximum, Implicit<1, IntegerCodec>>>;
EXPORT_FORM(GeneralSubtree, GeneralSubtree, "GeneralSubtree", GeneralSubtreeTable)

// GeneralSubtrees ::= SEQUENCE OF GeneralSubtree
// NameConstraints ::= SEQUENCE {
//   permittedSubtrees  [0] IMPLICIT GeneralSubtrees OPTIONAL,
//   excludedSubtrees   [1] IMPLICIT GeneralSubtrees OPTIONAL }
using GeneralSubtrees = SequenceOf<GeneralSubtreeCodec>;
using NameConstraintsTable = Sequence<NameConstraints,
    Optional<&NameConstraints::permittedSubtrees, Implicit<0, GeneralSubtrees>>,
    Optional<&NameConstraints::excludedSubtrees, Implicit<1, GeneralSubtrees>>>;
EXPORT_FORM(NameConstraints, NameConstraints, "NameConstraints", NameConstraintsTable)

// ---------------------------------------------------------------------------------------------
// Places
// ---------------------------------------------------------------------------------------------

// DistributionPointName ::= CHOICE {
//   fullName                 [0] IMPLICIT GeneralNames,
//   nameRelativeToCRLIssuer  [1] IMPLICIT RelativeDistinguishedName }
using DistributionPointNameTable = Choice<DistributionPointName,
    Alternative<0, "fullName", Implicit<0, GeneralNamesCodec>>,
    Alternative<1, "nameRelativeToCRLIssuer", Implicit<1, RelativeDistinguishedNameCodec>>>;
EXPORT_FORM(DistributionPointName, DistributionPointName, "DistributionPointName",
            DistributionPointNameTable)

// ReasonFlags ::= BIT STRING, of named bits
// DistributionPoint ::= SEQUENCE {
//   distributionPoint  [0] EXPLICIT DistributionPointName OPTIONAL,
//   reasons            [1] IMPLICIT ReasonFlags OPTIONAL,
//   cRLIssuer          [2] IMPLICIT GeneralNames OPTIONAL }
using DistributionPointTable = Sequence<DistributionPoint,
    Optional<&DistributionPoint::distributionPoint, Explicit<0, DistributionPointNameCodec>>,
    Optional<&DistributionPoint::reasons, Implicit<1, NamedBitsCodec>>,
    Optional<&DistributionPoint::cRLIssuer, Implicit<2, GeneralNamesCodec>>>;
EXPORT_FORM(DistributionPoint, DistributionPoint, "DistributionPoint", DistributionPointTable)

// CRLDistributionPoints ::= SEQUENCE OF DistributionPoint
using CRLDistributionPointsTable = SequenceOf<DistributionPointCodec>;
EXPORT_FORM_LIST(CRLDistributionPoints, List, "CRLDistributionPoints", CRLDistributionPointsTable)

// AccessDescription ::= SEQUENCE {
//   accessMethod    OBJECT IDENTIFIER,
//   accessLocation  GeneralName }
using AccessDescriptionTable = Sequence<AccessDescription,
    Required<&AccessDescription::accessMethod, ObjIdCodec>,
    Required<&AccessDescription::accessLocation, GeneralNameCodec>>;
EXPORT_FORM(AccessDescription, AccessDescription, "AccessDescription", AccessDescriptionTable)

// AuthorityInfoAccessSyntax ::= SEQUENCE OF AccessDescription
using AuthorityInfoAccessSyntaxTable = SequenceOf<AccessDescriptionCodec>;
EXPORT_FORM_LIST(AuthorityInfoAccessSyntax, AuthorityInfoAccessSyntax, "AuthorityInfoAccessSyntax",
                 AuthorityInfoAccessSyntaxTable)

// ---------------------------------------------------------------------------------------------
// Revocation lists and their entries
// ---------------------------------------------------------------------------------------------

// CRLNumber ::= INTEGER
using CRLNumberTable = Renamed<IntegerCodec, Kind::integer>;
EXPORT_FORM_LIST(CRLNumber, Integer, "CRLNumber", CRLNumberTable)

// BaseCRLNumber ::= CRLNumber
EXPORT_FORM_LIST(BaseCRLNumber, Integer, "BaseCRLNumber", CRLNumberTable)

// IssuingDistributionPoint ::= SEQUENCE {
//   distributionPoint           [0] EXPLICIT DistributionPointName OPTIONAL,
//   onlyContainsUserCerts       [1] IMPLICIT BOOLEAN DEFAULT FALSE,
//   onlyContainsCACerts         [2] IMPLICIT BOOLEAN DEFAULT FALSE,
//   onlySomeReasons             [3] IMPLICIT ReasonFlags OPTIONAL,
//   indirectCRL                 [4] IMPLICIT BOOLEAN DEFAULT FALSE,
//   onlyContainsAttributeCerts  [5] IMPLICIT BOOLEAN DEFAULT FALSE }
using IDP = pki_IssuingDistributionPoint;
using IssuingDistributionPointTable = Sequence<IDP,
    Optional<&IDP::distributionPoint, Explicit<0, DistributionPointNameCodec>>,
    Optional<&IDP::onlyContainsUserCerts, Implicit<1, BooleanCodec>>,
    Optional<&IDP::onlyContainsCACerts, Implicit<2, BooleanCodec>>,
    Optional<&IDP::onlySomeReasons, Implicit<3, NamedBitsCodec>>,
    Optional<&IDP::indirectCRL, Implicit<4, BooleanCodec>>,
    Optional<&IDP::onlyContainsAttributeCerts, Implicit<5, BooleanCodec>>>;
EXPORT_FORM(IssuingDistributionPoint, pki_IssuingDistributionPoint, "IssuingDistributionPoint",
            IssuingDistributionPointTable)

// CRLReason ::= ENUMERATED
using CRLReasonTable = Renamed<OptionalEnumeratedCodec, Kind::integer>;
EXPORT_FORM_LIST(CRLReason, Integer, "CRLReason", CRLReasonTable)

// InvalidityDate ::= GeneralizedTime
using InvalidityDateTable = Renamed<GeneralizedTimeCodec, Kind::generalized_time>;
EXPORT_FORM_LIST(InvalidityDate, GeneralizedTime, "InvalidityDate", InvalidityDateTable)
