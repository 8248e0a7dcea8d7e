// Written by tests/cpp/write_types.cpp from the types as data: do not edit.
// A class for each type: what rfcNNNN.h says of the type, orvel::pki has under the same name.
// clang-format off
#ifndef ORVELASN1_CPP_TYPES_H
#define ORVELASN1_CPP_TYPES_H

#include "../orvelasn1.h"
#include "records.hpp"

/// The universal types, and what has no form of an RFC: the types of liborvelasn1.
namespace orvel::asn1 {

/// ANY
class Any : public Element {
 public:
  using Element::Element;
  static constexpr Calls<Record> calls{"Any", nullptr, asn1_Any_d,
    asn1_Any_e, asn1_Any_clone, asn1_Any_free};
};

/// BIT STRING
class BitString : public Bits {
 public:
  using Bits::Bits;
  static constexpr Calls<Record> calls{"BitString", nullptr, asn1_BitString_d,
    asn1_BitString_e, asn1_BitString_clone, asn1_BitString_free};
};

/// GeneralString
class GeneralString : public Text {
 public:
  using Text::Text;
  static constexpr Calls<Record> calls{"GeneralString", nullptr, asn1_GeneralString_d,
    asn1_GeneralString_e, asn1_GeneralString_clone, asn1_GeneralString_free};
};

/// GeneralizedTime
class GeneralizedTime : public TimeText<24> {
 public:
  using TimeText::TimeText;
  static constexpr Calls<Record> calls{"GeneralizedTime", asn1_GeneralizedTime_new, asn1_GeneralizedTime_d,
    asn1_GeneralizedTime_e, asn1_GeneralizedTime_clone, asn1_GeneralizedTime_free};
};

/// GraphicString
class GraphicString : public Text {
 public:
  using Text::Text;
  static constexpr Calls<Record> calls{"GraphicString", nullptr, asn1_GraphicString_d,
    asn1_GraphicString_e, asn1_GraphicString_clone, asn1_GraphicString_free};
};

/// IA5String
class IA5String : public Text {
 public:
  using Text::Text;
  static constexpr Calls<Record> calls{"IA5String", nullptr, asn1_IA5String_d,
    asn1_IA5String_e, asn1_IA5String_clone, asn1_IA5String_free};
};

/// INTEGER
class Integer : public Number {
 public:
  using Number::Number;
  static constexpr Calls<Record> calls{"Integer", nullptr, asn1_Integer_d,
    asn1_Integer_e, asn1_Integer_clone, asn1_Integer_free};
};

/// NumericString
class NumericString : public Text {
 public:
  using Text::Text;
  static constexpr Calls<Record> calls{"NumericString", nullptr, asn1_NumericString_d,
    asn1_NumericString_e, asn1_NumericString_clone, asn1_NumericString_free};
};

/// OBJECT IDENTIFIER
class ObjId : public Identifier {
 public:
  using Identifier::Identifier;
  static constexpr Calls<Record> calls{"ObjId", nullptr, asn1_ObjId_d,
    asn1_ObjId_e, asn1_ObjId_clone, asn1_ObjId_free};
};

/// OCTET STRING
class OctetString : public OctetText {
 public:
  using OctetText::OctetText;
  static constexpr Calls<Record> calls{"OctetString", nullptr, asn1_OctetString_d,
    asn1_OctetString_e, asn1_OctetString_clone, asn1_OctetString_free};
};

/// PrintableString
class PrintableString : public Text {
 public:
  using Text::Text;
  static constexpr Calls<Record> calls{"PrintableString", nullptr, asn1_PrintableString_d,
    asn1_PrintableString_e, asn1_PrintableString_clone, asn1_PrintableString_free};
};

/// TeletexString
class TeletexString : public Text {
 public:
  using Text::Text;
  static constexpr Calls<Record> calls{"TeletexString", nullptr, asn1_TeletexString_d,
    asn1_TeletexString_e, asn1_TeletexString_clone, asn1_TeletexString_free};
};

/// UTCTime
class UTCTime : public TimeText<23> {
 public:
  using TimeText::TimeText;
  static constexpr Calls<Record> calls{"UTCTime", asn1_UTCTime_new, asn1_UTCTime_d,
    asn1_UTCTime_e, asn1_UTCTime_clone, asn1_UTCTime_free};
};

/// Time
class Time : public TimeChoice {
 public:
  using TimeChoice::TimeChoice;
  static constexpr Calls<Record> calls{"Time", asn1_Time_new, asn1_Time_d,
    asn1_Time_e, asn1_Time_clone, asn1_Time_free};
};

/// UTF8String
class UTF8String : public Text {
 public:
  using Text::Text;
  static constexpr Calls<Record> calls{"UTF8String", nullptr, asn1_UTF8String_d,
    asn1_UTF8String_e, asn1_UTF8String_clone, asn1_UTF8String_free};
};

/// UniversalString
class UniversalString : public Text {
 public:
  using Text::Text;
  static constexpr Calls<Record> calls{"UniversalString", nullptr, asn1_UniversalString_d,
    asn1_UniversalString_e, asn1_UniversalString_clone, asn1_UniversalString_free};
};

/// VideotextString
class VideotextString : public Text {
 public:
  using Text::Text;
  static constexpr Calls<Record> calls{"VideotextString", nullptr, asn1_VideotextString_d,
    asn1_VideotextString_e, asn1_VideotextString_clone, asn1_VideotextString_free};
};

/// VisibleString
class VisibleString : public Text {
 public:
  using Text::Text;
  static constexpr Calls<Record> calls{"VisibleString", nullptr, asn1_VisibleString_d,
    asn1_VisibleString_e, asn1_VisibleString_clone, asn1_VisibleString_free};
};

}  // namespace orvel::asn1

/// The forms of the RFCs.
namespace orvel::pki {

/// ASRange
class ASRange : public View<::pki_ASRange> {
 public:
  using View::View;
  Number min() const noexcept { return see<asn1::Integer>(&Record::min); }
  Number max() const noexcept { return see<asn1::Integer>(&Record::max); }
  using Fields = FieldList<
    Field<"min", asn1::Integer, &ASRange::min, &Record::min>,
    Field<"max", asn1::Integer, &ASRange::max, &Record::max>>;
  static constexpr Calls<Record> calls{"pki_ASRange", pki_ASRange_new, pki_ASRange_d,
    pki_ASRange_e, pki_ASRange_clone, pki_ASRange_free};
};

/// ASIdOrRange
class ASIdOrRange : public Choice<ASIdOrRange, ::pki_ASIdOrRange> {
 public:
  using Choice::Choice;
  struct id : Alternative<"id", ASIdOrRange, 2, asn1::Integer> {};
  struct range : Alternative<"range", ASIdOrRange, 16, pki::ASRange> {};
  using Alternatives = AlternativeList<id, range>;
  static constexpr Calls<Record> calls{"pki_ASIdOrRange", pki_ASIdOrRange_new, pki_ASIdOrRange_d,
    pki_ASIdOrRange_e, pki_ASIdOrRange_clone, pki_ASIdOrRange_free};
};

/// ASIdentifierChoice
class ASIdentifierChoice : public Choice<ASIdentifierChoice, ::pki_ASIdentifierChoice> {
 public:
  using Choice::Choice;
  struct inherit : Alternative<"inherit", ASIdentifierChoice, 5, Null> {};
  struct asIdsOrRanges : Alternative<"asIdsOrRanges", ASIdentifierChoice, 16, List<pki::ASIdOrRange>> {};
  using Alternatives = AlternativeList<inherit, asIdsOrRanges>;
  static constexpr Calls<Record> calls{"pki_ASIdentifierChoice", pki_ASIdentifierChoice_new, pki_ASIdentifierChoice_d,
    pki_ASIdentifierChoice_e, pki_ASIdentifierChoice_clone, pki_ASIdentifierChoice_free};
};

/// ASIdentifiers
class ASIdentifiers : public View<::pki_ASIdentifiers> {
 public:
  using View::View;
  std::optional<pki::ASIdentifierChoice> asnum() const noexcept { return see_optional<pki::ASIdentifierChoice>(&Record::asnum); }
  std::optional<pki::ASIdentifierChoice> rdi() const noexcept { return see_optional<pki::ASIdentifierChoice>(&Record::rdi); }
  using Fields = FieldList<
    Field<"asnum", pki::ASIdentifierChoice, &ASIdentifiers::asnum, &Record::asnum>,
    Field<"rdi", pki::ASIdentifierChoice, &ASIdentifiers::rdi, &Record::rdi>>;
  static constexpr Calls<Record> calls{"pki_ASIdentifiers", pki_ASIdentifiers_new, pki_ASIdentifiers_d,
    pki_ASIdentifiers_e, pki_ASIdentifiers_clone, pki_ASIdentifiers_free};
};

/// AcceptableResponses
class AcceptableResponses : public List<asn1::ObjId> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_AcceptableResponses", nullptr, pki_AcceptableResponses_d,
    pki_AcceptableResponses_e, pki_AcceptableResponses_clone, pki_AcceptableResponses_free};
};

/// AnotherName
class OtherName : public View<::OtherName> {
 public:
  using View::View;
  Identifier type() const noexcept { return see<asn1::ObjId>(&Record::type); }
  Octets value() const noexcept { return see<asn1::Any>(&Record::value); }
  using Fields = FieldList<
    Field<"type", asn1::ObjId, &OtherName::type, &Record::type>,
    Field<"value", asn1::Any, &OtherName::value, &Record::value>>;
  static constexpr Calls<Record> calls{"pki_OtherName", pki_OtherName_new, pki_OtherName_d,
    pki_OtherName_e, pki_OtherName_clone, pki_OtherName_free};
};

/// AttributeTypeAndValue
class AttributeValueAssertion : public View<::AttributeValueAssertion> {
 public:
  using View::View;
  Identifier type() const noexcept { return see<asn1::ObjId>(&Record::type); }
  Octets value() const noexcept { return see<OctetText>(&Record::value); }
  using Fields = FieldList<
    Field<"type", asn1::ObjId, &AttributeValueAssertion::type, &Record::type>,
    Field<"value", OctetText, &AttributeValueAssertion::value, &Record::value>>;
  static constexpr Calls<Record> calls{"pki_AttributeValueAssertion", pki_AttributeValueAssertion_new, pki_AttributeValueAssertion_d,
    pki_AttributeValueAssertion_e, pki_AttributeValueAssertion_clone, pki_AttributeValueAssertion_free};
};

/// RelativeDistinguishedName
class RelativeDistinguishedName : public List<pki::AttributeValueAssertion> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_RelativeDistinguishedName", nullptr, pki_RelativeDistinguishedName_d,
    pki_RelativeDistinguishedName_e, pki_RelativeDistinguishedName_clone, pki_RelativeDistinguishedName_free};
};

/// RDNSequence
class RDNSequence : public NameList<pki::RelativeDistinguishedName> {
 public:
  using NameList::NameList;
  static constexpr Calls<Record> calls{"pki_RDNSequence", nullptr, pki_RDNSequence_d,
    pki_RDNSequence_e, pki_RDNSequence_clone, pki_RDNSequence_free};
};

/// GeneralName
class GeneralName : public Choice<GeneralName, ::GeneralName> {
 public:
  using Choice::Choice;
  struct otherName : Alternative<"otherName", GeneralName, 0, pki::OtherName> {};
  struct rfc822Name : Alternative<"rfc822Name", GeneralName, 1, asn1::IA5String> {};
  struct dNSName : Alternative<"dNSName", GeneralName, 2, asn1::IA5String> {};
  struct x400Address : Alternative<"x400Address", GeneralName, 3, asn1::Any> {};
  struct directoryName : Alternative<"directoryName", GeneralName, 4, pki::RDNSequence> {};
  struct ediPartyName : Alternative<"ediPartyName", GeneralName, 5, asn1::Any> {};
  struct uniformResourceIdentifier : Alternative<"uniformResourceIdentifier", GeneralName, 6, asn1::IA5String> {};
  struct iPAddress : Alternative<"iPAddress", GeneralName, 7, asn1::OctetString> {};
  struct registeredID : Alternative<"registeredID", GeneralName, 8, asn1::ObjId> {};
  using Alternatives = AlternativeList<otherName, rfc822Name, dNSName, x400Address, directoryName, ediPartyName, uniformResourceIdentifier, iPAddress, registeredID>;
  static constexpr Calls<Record> calls{"pki_GeneralName", pki_GeneralName_new, pki_GeneralName_d,
    pki_GeneralName_e, pki_GeneralName_clone, pki_GeneralName_free};
};

/// AccessDescription
class AccessDescription : public View<::AccessDescription> {
 public:
  using View::View;
  Identifier accessMethod() const noexcept { return see<asn1::ObjId>(&Record::accessMethod); }
  pki::GeneralName accessLocation() const noexcept { return see<pki::GeneralName>(&Record::accessLocation); }
  using Fields = FieldList<
    Field<"accessMethod", asn1::ObjId, &AccessDescription::accessMethod, &Record::accessMethod>,
    Field<"accessLocation", pki::GeneralName, &AccessDescription::accessLocation, &Record::accessLocation>>;
  static constexpr Calls<Record> calls{"pki_AccessDescription", pki_AccessDescription_new, pki_AccessDescription_d,
    pki_AccessDescription_e, pki_AccessDescription_clone, pki_AccessDescription_free};
};

/// AlgorithmIdentifier
class AlgId : public View<::AlgId> {
 public:
  using View::View;
  Identifier algorithm() const noexcept { return see<asn1::ObjId>(&Record::algorithm); }
  std::optional<Octets> parameters() const noexcept { return see_optional<asn1::Any>(&Record::parameters); }
  using Fields = FieldList<
    Field<"algorithm", asn1::ObjId, &AlgId::algorithm, &Record::algorithm>,
    Field<"parameters", asn1::Any, &AlgId::parameters, &Record::parameters>>;
  static constexpr Calls<Record> calls{"pki_AlgId", pki_AlgId_new, pki_AlgId_d,
    pki_AlgId_e, pki_AlgId_clone, pki_AlgId_free};
};

/// ArchiveCutoff
class ArchiveCutoff : public TimeText<24> {
 public:
  using TimeText::TimeText;
  static constexpr Calls<Record> calls{"pki_ArchiveCutoff", nullptr, pki_ArchiveCutoff_d,
    pki_ArchiveCutoff_e, pki_ArchiveCutoff_clone, pki_ArchiveCutoff_free};
};

/// Attribute
class Attribute : public View<::Attribute> {
 public:
  using View::View;
  Identifier type() const noexcept { return see<asn1::ObjId>(&Record::type); }
  List<asn1::Any> values() const noexcept { return see<List<asn1::Any>>(&Record::values); }
  using Fields = FieldList<
    Field<"type", asn1::ObjId, &Attribute::type, &Record::type>,
    Field<"values", List<asn1::Any>, &Attribute::values, &Record::values>>;
  static constexpr Calls<Record> calls{"pki_Attribute", pki_Attribute_new, pki_Attribute_d,
    pki_Attribute_e, pki_Attribute_clone, pki_Attribute_free};
};

/// Attributes
class Attributes : public List<pki::Attribute> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_Attributes", nullptr, pki_Attributes_d,
    pki_Attributes_e, pki_Attributes_clone, pki_Attributes_free};
};

/// Validity
class Validity : public View<::Validity> {
 public:
  using View::View;
  Instant notBefore() const noexcept { return see<asn1::Time>(&Record::notBefore); }
  Instant notAfter() const noexcept { return see<asn1::Time>(&Record::notAfter); }
  using Fields = FieldList<
    Field<"notBefore", asn1::Time, &Validity::notBefore, &Record::notBefore>,
    Field<"notAfter", asn1::Time, &Validity::notAfter, &Record::notAfter>>;
  static constexpr Calls<Record> calls{"pki_Validity", pki_Validity_new, pki_Validity_d,
    pki_Validity_e, pki_Validity_clone, pki_Validity_free};
};

/// SubjectPublicKeyInfo
class SubjectPKI : public View<::SubjectPKI> {
 public:
  using View::View;
  pki::AlgId algorithm() const noexcept { return see<pki::AlgId>(&Record::algorithm); }
  Bits subjectPublicKey() const noexcept { return see<asn1::BitString>(&Record::subjectPublicKey); }
  using Fields = FieldList<
    Field<"algorithm", pki::AlgId, &SubjectPKI::algorithm, &Record::algorithm>,
    Field<"subjectPublicKey", asn1::BitString, &SubjectPKI::subjectPublicKey, &Record::subjectPublicKey>>;
  static constexpr Calls<Record> calls{"pki_SubjectPKI", pki_SubjectPKI_new, pki_SubjectPKI_d,
    pki_SubjectPKI_e, pki_SubjectPKI_clone, pki_SubjectPKI_free};
};

/// Extension
class Extension : public View<::Extension> {
 public:
  using View::View;
  Identifier extnID() const noexcept { return see<asn1::ObjId>(&Record::extnID); }
  bool critical() const noexcept { return at(&Record::critical) != 0; }
  Octets extnValue() const noexcept { return see<asn1::OctetString>(&Record::extnValue); }
  using Fields = FieldList<
    Field<"extnID", asn1::ObjId, &Extension::extnID, &Record::extnID>,
    Field<"critical", bool, &Extension::critical, &Record::critical>,
    Field<"extnValue", asn1::OctetString, &Extension::extnValue, &Record::extnValue>>;
  static constexpr Calls<Record> calls{"pki_Extension", pki_Extension_new, pki_Extension_d,
    pki_Extension_e, pki_Extension_clone, pki_Extension_free};
};

/// Extensions
class Extensions : public List<pki::Extension> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_Extensions", nullptr, pki_Extensions_d,
    pki_Extensions_e, pki_Extensions_clone, pki_Extensions_free};
};

/// TBSCertificate
class Certificate_TBS : public View<::Certificate_TBS> {
 public:
  using View::View;
  std::optional<Number> version() const noexcept { return see_optional<asn1::Integer>(&Record::version); }
  Number serialNumber() const noexcept { return see<asn1::Integer>(&Record::serialNumber); }
  pki::AlgId signature() const noexcept { return see<pki::AlgId>(&Record::signature); }
  pki::RDNSequence issuer() const noexcept { return see<pki::RDNSequence>(&Record::issuerSequence); }
  std::string_view issuer_text() const noexcept { return see<Characters>(&Record::issuer); }
  Octets issuer_encoded() const noexcept { return see<Element>(&Record::issuerEncoded); }
  pki::Validity validity() const noexcept { return see<pki::Validity>(&Record::validity); }
  pki::RDNSequence subject() const noexcept { return see<pki::RDNSequence>(&Record::subjectSequence); }
  std::string_view subject_text() const noexcept { return see<Characters>(&Record::subject); }
  Octets subject_encoded() const noexcept { return see<Element>(&Record::subjectEncoded); }
  pki::SubjectPKI subjectPublicKeyInfo() const noexcept { return see<pki::SubjectPKI>(&Record::subjectPublicKeyInfo); }
  std::optional<Bits> issuerUniqueID() const noexcept { return see_optional<asn1::BitString>(&Record::issuerUniqueID); }
  std::optional<Bits> subjectUniqueID() const noexcept { return see_optional<asn1::BitString>(&Record::subjectUniqueID); }
  pki::Extensions extensions() const noexcept { return see<pki::Extensions>(&Record::extensions); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &Certificate_TBS::version, &Record::version>,
    Field<"serialNumber", asn1::Integer, &Certificate_TBS::serialNumber, &Record::serialNumber>,
    Field<"signature", pki::AlgId, &Certificate_TBS::signature, &Record::signature>,
    Field<"issuer", pki::RDNSequence, &Certificate_TBS::issuer, &Record::issuerSequence, &Record::issuer, &Record::issuerEncoded>,
    Field<"validity", pki::Validity, &Certificate_TBS::validity, &Record::validity>,
    Field<"subject", pki::RDNSequence, &Certificate_TBS::subject, &Record::subjectSequence, &Record::subject, &Record::subjectEncoded>,
    Field<"subjectPublicKeyInfo", pki::SubjectPKI, &Certificate_TBS::subjectPublicKeyInfo, &Record::subjectPublicKeyInfo>,
    Field<"issuerUniqueID", asn1::BitString, &Certificate_TBS::issuerUniqueID, &Record::issuerUniqueID>,
    Field<"subjectUniqueID", asn1::BitString, &Certificate_TBS::subjectUniqueID, &Record::subjectUniqueID>,
    Field<"extensions", pki::Extensions, &Certificate_TBS::extensions, &Record::extensions>>;
  static constexpr Calls<Record> calls{"pki_Certificate_TBS", pki_Certificate_TBS_new, pki_Certificate_TBS_d,
    pki_Certificate_TBS_e, pki_Certificate_TBS_clone, pki_Certificate_TBS_free};
};

/// Certificate
class Certificate : public View<::Certificate> {
 public:
  using View::View;
  pki::Certificate_TBS tbsCertificate() const noexcept { return see<pki::Certificate_TBS>(&Record::tbsCertificate); }
  Octets tbsCertificate_encoded() const noexcept { return see<Element>(&Record::tbsEncoded); }
  std::optional<Number> version() const noexcept { return tbsCertificate().version(); }
  Number serialNumber() const noexcept { return tbsCertificate().serialNumber(); }
  pki::RDNSequence issuer() const noexcept { return tbsCertificate().issuer(); }
  pki::Validity validity() const noexcept { return tbsCertificate().validity(); }
  pki::RDNSequence subject() const noexcept { return tbsCertificate().subject(); }
  pki::SubjectPKI subjectPublicKeyInfo() const noexcept { return tbsCertificate().subjectPublicKeyInfo(); }
  std::optional<Bits> issuerUniqueID() const noexcept { return tbsCertificate().issuerUniqueID(); }
  std::optional<Bits> subjectUniqueID() const noexcept { return tbsCertificate().subjectUniqueID(); }
  pki::Extensions extensions() const noexcept { return tbsCertificate().extensions(); }
  pki::AlgId signatureAlgorithm() const noexcept { return see<pki::AlgId>(&Record::signatureAlgorithm); }
  Bits signatureValue() const noexcept { return see<asn1::BitString>(&Record::signatureValue); }
  using Fields = FieldList<
    Field<"tbsCertificate", pki::Certificate_TBS, &Certificate::tbsCertificate, &Record::tbsCertificate, &Record::tbsEncoded>,
    Field<"signatureAlgorithm", pki::AlgId, &Certificate::signatureAlgorithm, &Record::signatureAlgorithm>,
    Field<"signatureValue", asn1::BitString, &Certificate::signatureValue, &Record::signatureValue>>;
  static constexpr Calls<Record> calls{"pki_Certificate", pki_Certificate_new, pki_Certificate_d,
    pki_Certificate_e, pki_Certificate_clone, pki_Certificate_free};
};

/// OtherCertificateFormat
class OtherCertificateFormat : public View<::pki_OtherCertificateFormat> {
 public:
  using View::View;
  Identifier otherCertFormat() const noexcept { return see<asn1::ObjId>(&Record::otherCertFormat); }
  Octets otherCert() const noexcept { return see<asn1::Any>(&Record::otherCert); }
  using Fields = FieldList<
    Field<"otherCertFormat", asn1::ObjId, &OtherCertificateFormat::otherCertFormat, &Record::otherCertFormat>,
    Field<"otherCert", asn1::Any, &OtherCertificateFormat::otherCert, &Record::otherCert>>;
  static constexpr Calls<Record> calls{"pki_OtherCertificateFormat", pki_OtherCertificateFormat_new, pki_OtherCertificateFormat_d,
    pki_OtherCertificateFormat_e, pki_OtherCertificateFormat_clone, pki_OtherCertificateFormat_free};
};

/// CertificateChoices
class CertificateChoices : public Choice<CertificateChoices, ::pki_CertificateChoices> {
 public:
  using Choice::Choice;
  struct certificate : Alternative<"certificate", CertificateChoices, 16, pki::Certificate> {};
  struct extendedCertificate : Alternative<"extendedCertificate", CertificateChoices, 0, asn1::Any> {};
  struct v1AttrCert : Alternative<"v1AttrCert", CertificateChoices, 1, asn1::Any> {};
  struct v2AttrCert : Alternative<"v2AttrCert", CertificateChoices, 2, asn1::Any> {};
  struct other : Alternative<"other", CertificateChoices, 3, pki::OtherCertificateFormat> {};
  using Alternatives = AlternativeList<certificate, extendedCertificate, v1AttrCert, v2AttrCert, other>;
  static constexpr Calls<Record> calls{"pki_CertificateChoices", pki_CertificateChoices_new, pki_CertificateChoices_d,
    pki_CertificateChoices_e, pki_CertificateChoices_clone, pki_CertificateChoices_free};
};

/// CRLEntry
class CRLEntry : public View<::CRLEntry> {
 public:
  using View::View;
  Number userCertificate() const noexcept { return see<asn1::Integer>(&Record::userCertificate); }
  Instant revocationDate() const noexcept { return see<asn1::Time>(&Record::revocationDate); }
  pki::Extensions crlEntryExtensions() const noexcept { return see<pki::Extensions>(&Record::crlEntryExtensions); }
  using Fields = FieldList<
    Field<"userCertificate", asn1::Integer, &CRLEntry::userCertificate, &Record::userCertificate>,
    Field<"revocationDate", asn1::Time, &CRLEntry::revocationDate, &Record::revocationDate>,
    Field<"crlEntryExtensions", pki::Extensions, &CRLEntry::crlEntryExtensions, &Record::crlEntryExtensions>>;
  static constexpr Calls<Record> calls{"pki_CRLEntry", pki_CRLEntry_new, pki_CRLEntry_d,
    pki_CRLEntry_e, pki_CRLEntry_clone, pki_CRLEntry_free};
};

/// TBSCertList
class CertificateList_TBS : public View<::CertificateList_TBS> {
 public:
  using View::View;
  std::optional<Number> version() const noexcept { return see_optional<asn1::Integer>(&Record::version); }
  pki::AlgId signature() const noexcept { return see<pki::AlgId>(&Record::signature); }
  pki::RDNSequence issuer() const noexcept { return see<pki::RDNSequence>(&Record::issuerSequence); }
  std::string_view issuer_text() const noexcept { return see<Characters>(&Record::issuer); }
  Octets issuer_encoded() const noexcept { return see<Element>(&Record::issuerEncoded); }
  Instant thisUpdate() const noexcept { return see<asn1::Time>(&Record::thisUpdate); }
  std::optional<Instant> nextUpdate() const noexcept { return see_optional<asn1::Time>(&Record::nextUpdate); }
  List<pki::CRLEntry> revokedCertificates() const noexcept { return see<List<pki::CRLEntry>>(&Record::revokedCertificates); }
  pki::Extensions crlExtensions() const noexcept { return see<pki::Extensions>(&Record::crlExtensions); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &CertificateList_TBS::version, &Record::version>,
    Field<"signature", pki::AlgId, &CertificateList_TBS::signature, &Record::signature>,
    Field<"issuer", pki::RDNSequence, &CertificateList_TBS::issuer, &Record::issuerSequence, &Record::issuer, &Record::issuerEncoded>,
    Field<"thisUpdate", asn1::Time, &CertificateList_TBS::thisUpdate, &Record::thisUpdate>,
    Field<"nextUpdate", asn1::Time, &CertificateList_TBS::nextUpdate, &Record::nextUpdate>,
    Field<"revokedCertificates", List<pki::CRLEntry>, &CertificateList_TBS::revokedCertificates, &Record::revokedCertificates>,
    Field<"crlExtensions", pki::Extensions, &CertificateList_TBS::crlExtensions, &Record::crlExtensions>>;
  static constexpr Calls<Record> calls{"pki_CertificateList_TBS", pki_CertificateList_TBS_new, pki_CertificateList_TBS_d,
    pki_CertificateList_TBS_e, pki_CertificateList_TBS_clone, pki_CertificateList_TBS_free};
};

/// CertificateList
class CertificateRevocationList : public View<::CertificateRevocationList> {
 public:
  using View::View;
  pki::CertificateList_TBS tbsCertList() const noexcept { return see<pki::CertificateList_TBS>(&Record::tbsCertList); }
  Octets tbsCertList_encoded() const noexcept { return see<Element>(&Record::tbsEncoded); }
  std::optional<Number> version() const noexcept { return tbsCertList().version(); }
  pki::RDNSequence issuer() const noexcept { return tbsCertList().issuer(); }
  Instant thisUpdate() const noexcept { return tbsCertList().thisUpdate(); }
  std::optional<Instant> nextUpdate() const noexcept { return tbsCertList().nextUpdate(); }
  List<pki::CRLEntry> revokedCertificates() const noexcept { return tbsCertList().revokedCertificates(); }
  pki::Extensions crlExtensions() const noexcept { return tbsCertList().crlExtensions(); }
  pki::AlgId signatureAlgorithm() const noexcept { return see<pki::AlgId>(&Record::signatureAlgorithm); }
  Bits signatureValue() const noexcept { return see<asn1::BitString>(&Record::signatureValue); }
  using Fields = FieldList<
    Field<"tbsCertList", pki::CertificateList_TBS, &CertificateRevocationList::tbsCertList, &Record::tbsCertList, &Record::tbsEncoded>,
    Field<"signatureAlgorithm", pki::AlgId, &CertificateRevocationList::signatureAlgorithm, &Record::signatureAlgorithm>,
    Field<"signatureValue", asn1::BitString, &CertificateRevocationList::signatureValue, &Record::signatureValue>>;
  static constexpr Calls<Record> calls{"pki_CertificateRevocationList", pki_CertificateRevocationList_new, pki_CertificateRevocationList_d,
    pki_CertificateRevocationList_e, pki_CertificateRevocationList_clone, pki_CertificateRevocationList_free};
};

/// OtherRevocationInfoFormat
class OtherRevocationInfoFormat : public View<::pki_OtherRevocationInfoFormat> {
 public:
  using View::View;
  Identifier otherRevInfoFormat() const noexcept { return see<asn1::ObjId>(&Record::otherRevInfoFormat); }
  Octets otherRevInfo() const noexcept { return see<asn1::Any>(&Record::otherRevInfo); }
  using Fields = FieldList<
    Field<"otherRevInfoFormat", asn1::ObjId, &OtherRevocationInfoFormat::otherRevInfoFormat, &Record::otherRevInfoFormat>,
    Field<"otherRevInfo", asn1::Any, &OtherRevocationInfoFormat::otherRevInfo, &Record::otherRevInfo>>;
  static constexpr Calls<Record> calls{"pki_OtherRevocationInfoFormat", pki_OtherRevocationInfoFormat_new, pki_OtherRevocationInfoFormat_d,
    pki_OtherRevocationInfoFormat_e, pki_OtherRevocationInfoFormat_clone, pki_OtherRevocationInfoFormat_free};
};

/// RevocationInfoChoice
class RevocationInfoChoice : public Choice<RevocationInfoChoice, ::pki_RevocationInfoChoice> {
 public:
  using Choice::Choice;
  struct crl : Alternative<"crl", RevocationInfoChoice, 16, pki::CertificateRevocationList> {};
  struct other : Alternative<"other", RevocationInfoChoice, 1, pki::OtherRevocationInfoFormat> {};
  using Alternatives = AlternativeList<crl, other>;
  static constexpr Calls<Record> calls{"pki_RevocationInfoChoice", pki_RevocationInfoChoice_new, pki_RevocationInfoChoice_d,
    pki_RevocationInfoChoice_e, pki_RevocationInfoChoice_clone, pki_RevocationInfoChoice_free};
};

/// OriginatorInfo
class OriginatorInfo : public View<::pki_OriginatorInfo> {
 public:
  using View::View;
  List<pki::CertificateChoices> certs() const noexcept { return see<List<pki::CertificateChoices>>(&Record::certs); }
  List<pki::RevocationInfoChoice> crls() const noexcept { return see<List<pki::RevocationInfoChoice>>(&Record::crls); }
  using Fields = FieldList<
    Field<"certs", List<pki::CertificateChoices>, &OriginatorInfo::certs, &Record::certs>,
    Field<"crls", List<pki::RevocationInfoChoice>, &OriginatorInfo::crls, &Record::crls>>;
  static constexpr Calls<Record> calls{"pki_OriginatorInfo", pki_OriginatorInfo_new, pki_OriginatorInfo_d,
    pki_OriginatorInfo_e, pki_OriginatorInfo_clone, pki_OriginatorInfo_free};
};

/// IssuerAndSerialNumber
class IssuerAndSerialNumber : public View<::pki_IssuerAndSerialNumber> {
 public:
  using View::View;
  pki::RDNSequence issuer() const noexcept { return see<pki::RDNSequence>(&Record::issuer); }
  Number serialNumber() const noexcept { return see<asn1::Integer>(&Record::serialNumber); }
  using Fields = FieldList<
    Field<"issuer", pki::RDNSequence, &IssuerAndSerialNumber::issuer, &Record::issuer>,
    Field<"serialNumber", asn1::Integer, &IssuerAndSerialNumber::serialNumber, &Record::serialNumber>>;
  static constexpr Calls<Record> calls{"pki_IssuerAndSerialNumber", pki_IssuerAndSerialNumber_new, pki_IssuerAndSerialNumber_d,
    pki_IssuerAndSerialNumber_e, pki_IssuerAndSerialNumber_clone, pki_IssuerAndSerialNumber_free};
};

/// SignerIdentifier
class SignerIdentifier : public Choice<SignerIdentifier, ::pki_SignerIdentifier> {
 public:
  using Choice::Choice;
  struct issuerAndSerialNumber : Alternative<"issuerAndSerialNumber", SignerIdentifier, 16, pki::IssuerAndSerialNumber> {};
  struct subjectKeyIdentifier : Alternative<"subjectKeyIdentifier", SignerIdentifier, 0, asn1::OctetString> {};
  using Alternatives = AlternativeList<issuerAndSerialNumber, subjectKeyIdentifier>;
  static constexpr Calls<Record> calls{"pki_SignerIdentifier", pki_SignerIdentifier_new, pki_SignerIdentifier_d,
    pki_SignerIdentifier_e, pki_SignerIdentifier_clone, pki_SignerIdentifier_free};
};

/// KeyTransRecipientInfo
class KeyTransRecipientInfo : public View<::pki_KeyTransRecipientInfo> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  pki::SignerIdentifier rid() const noexcept { return see<pki::SignerIdentifier>(&Record::rid); }
  pki::AlgId keyEncryptionAlgorithm() const noexcept { return see<pki::AlgId>(&Record::keyEncryptionAlgorithm); }
  Octets encryptedKey() const noexcept { return see<asn1::OctetString>(&Record::encryptedKey); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &KeyTransRecipientInfo::version, &Record::version>,
    Field<"rid", pki::SignerIdentifier, &KeyTransRecipientInfo::rid, &Record::rid>,
    Field<"keyEncryptionAlgorithm", pki::AlgId, &KeyTransRecipientInfo::keyEncryptionAlgorithm, &Record::keyEncryptionAlgorithm>,
    Field<"encryptedKey", asn1::OctetString, &KeyTransRecipientInfo::encryptedKey, &Record::encryptedKey>>;
  static constexpr Calls<Record> calls{"pki_KeyTransRecipientInfo", pki_KeyTransRecipientInfo_new, pki_KeyTransRecipientInfo_d,
    pki_KeyTransRecipientInfo_e, pki_KeyTransRecipientInfo_clone, pki_KeyTransRecipientInfo_free};
};

/// OriginatorPublicKey
class OriginatorPublicKey : public View<::pki_OriginatorPublicKey> {
 public:
  using View::View;
  pki::AlgId algorithm() const noexcept { return see<pki::AlgId>(&Record::algorithm); }
  Bits publicKey() const noexcept { return see<asn1::BitString>(&Record::publicKey); }
  using Fields = FieldList<
    Field<"algorithm", pki::AlgId, &OriginatorPublicKey::algorithm, &Record::algorithm>,
    Field<"publicKey", asn1::BitString, &OriginatorPublicKey::publicKey, &Record::publicKey>>;
  static constexpr Calls<Record> calls{"pki_OriginatorPublicKey", pki_OriginatorPublicKey_new, pki_OriginatorPublicKey_d,
    pki_OriginatorPublicKey_e, pki_OriginatorPublicKey_clone, pki_OriginatorPublicKey_free};
};

/// OriginatorIdentifierOrKey
class OriginatorIdentifierOrKey : public Choice<OriginatorIdentifierOrKey, ::pki_OriginatorIdentifierOrKey> {
 public:
  using Choice::Choice;
  struct issuerAndSerialNumber : Alternative<"issuerAndSerialNumber", OriginatorIdentifierOrKey, 16, pki::IssuerAndSerialNumber> {};
  struct subjectKeyIdentifier : Alternative<"subjectKeyIdentifier", OriginatorIdentifierOrKey, 0, asn1::OctetString> {};
  struct originatorKey : Alternative<"originatorKey", OriginatorIdentifierOrKey, 1, pki::OriginatorPublicKey> {};
  using Alternatives = AlternativeList<issuerAndSerialNumber, subjectKeyIdentifier, originatorKey>;
  static constexpr Calls<Record> calls{"pki_OriginatorIdentifierOrKey", pki_OriginatorIdentifierOrKey_new, pki_OriginatorIdentifierOrKey_d,
    pki_OriginatorIdentifierOrKey_e, pki_OriginatorIdentifierOrKey_clone, pki_OriginatorIdentifierOrKey_free};
};

/// OtherKeyAttribute
class OtherKeyAttribute : public View<::pki_OtherKeyAttribute> {
 public:
  using View::View;
  Identifier keyAttrId() const noexcept { return see<asn1::ObjId>(&Record::keyAttrId); }
  std::optional<Octets> keyAttr() const noexcept { return see_optional<asn1::Any>(&Record::keyAttr); }
  using Fields = FieldList<
    Field<"keyAttrId", asn1::ObjId, &OtherKeyAttribute::keyAttrId, &Record::keyAttrId>,
    Field<"keyAttr", asn1::Any, &OtherKeyAttribute::keyAttr, &Record::keyAttr>>;
  static constexpr Calls<Record> calls{"pki_OtherKeyAttribute", pki_OtherKeyAttribute_new, pki_OtherKeyAttribute_d,
    pki_OtherKeyAttribute_e, pki_OtherKeyAttribute_clone, pki_OtherKeyAttribute_free};
};

/// RecipientKeyIdentifier
class RecipientKeyIdentifier : public View<::pki_RecipientKeyIdentifier> {
 public:
  using View::View;
  Octets subjectKeyIdentifier() const noexcept { return see<asn1::OctetString>(&Record::subjectKeyIdentifier); }
  std::optional<Instant> date() const noexcept { return see_optional<asn1::GeneralizedTime>(&Record::date); }
  std::optional<pki::OtherKeyAttribute> other() const noexcept { return see_optional<pki::OtherKeyAttribute>(&Record::other); }
  using Fields = FieldList<
    Field<"subjectKeyIdentifier", asn1::OctetString, &RecipientKeyIdentifier::subjectKeyIdentifier, &Record::subjectKeyIdentifier>,
    Field<"date", asn1::GeneralizedTime, &RecipientKeyIdentifier::date, &Record::date>,
    Field<"other", pki::OtherKeyAttribute, &RecipientKeyIdentifier::other, &Record::other>>;
  static constexpr Calls<Record> calls{"pki_RecipientKeyIdentifier", pki_RecipientKeyIdentifier_new, pki_RecipientKeyIdentifier_d,
    pki_RecipientKeyIdentifier_e, pki_RecipientKeyIdentifier_clone, pki_RecipientKeyIdentifier_free};
};

/// KeyAgreeRecipientIdentifier
class KeyAgreeRecipientIdentifier : public Choice<KeyAgreeRecipientIdentifier, ::pki_KeyAgreeRecipientIdentifier> {
 public:
  using Choice::Choice;
  struct issuerAndSerialNumber : Alternative<"issuerAndSerialNumber", KeyAgreeRecipientIdentifier, 16, pki::IssuerAndSerialNumber> {};
  struct rKeyId : Alternative<"rKeyId", KeyAgreeRecipientIdentifier, 0, pki::RecipientKeyIdentifier> {};
  using Alternatives = AlternativeList<issuerAndSerialNumber, rKeyId>;
  static constexpr Calls<Record> calls{"pki_KeyAgreeRecipientIdentifier", pki_KeyAgreeRecipientIdentifier_new, pki_KeyAgreeRecipientIdentifier_d,
    pki_KeyAgreeRecipientIdentifier_e, pki_KeyAgreeRecipientIdentifier_clone, pki_KeyAgreeRecipientIdentifier_free};
};

/// RecipientEncryptedKey
class RecipientEncryptedKey : public View<::pki_RecipientEncryptedKey> {
 public:
  using View::View;
  pki::KeyAgreeRecipientIdentifier rid() const noexcept { return see<pki::KeyAgreeRecipientIdentifier>(&Record::rid); }
  Octets encryptedKey() const noexcept { return see<asn1::OctetString>(&Record::encryptedKey); }
  using Fields = FieldList<
    Field<"rid", pki::KeyAgreeRecipientIdentifier, &RecipientEncryptedKey::rid, &Record::rid>,
    Field<"encryptedKey", asn1::OctetString, &RecipientEncryptedKey::encryptedKey, &Record::encryptedKey>>;
  static constexpr Calls<Record> calls{"pki_RecipientEncryptedKey", pki_RecipientEncryptedKey_new, pki_RecipientEncryptedKey_d,
    pki_RecipientEncryptedKey_e, pki_RecipientEncryptedKey_clone, pki_RecipientEncryptedKey_free};
};

/// KeyAgreeRecipientInfo
class KeyAgreeRecipientInfo : public View<::pki_KeyAgreeRecipientInfo> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  pki::OriginatorIdentifierOrKey originator() const noexcept { return see<pki::OriginatorIdentifierOrKey>(&Record::originator); }
  std::optional<Octets> ukm() const noexcept { return see_optional<asn1::OctetString>(&Record::ukm); }
  pki::AlgId keyEncryptionAlgorithm() const noexcept { return see<pki::AlgId>(&Record::keyEncryptionAlgorithm); }
  List<pki::RecipientEncryptedKey> recipientEncryptedKeys() const noexcept { return see<List<pki::RecipientEncryptedKey>>(&Record::recipientEncryptedKeys); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &KeyAgreeRecipientInfo::version, &Record::version>,
    Field<"originator", pki::OriginatorIdentifierOrKey, &KeyAgreeRecipientInfo::originator, &Record::originator>,
    Field<"ukm", asn1::OctetString, &KeyAgreeRecipientInfo::ukm, &Record::ukm>,
    Field<"keyEncryptionAlgorithm", pki::AlgId, &KeyAgreeRecipientInfo::keyEncryptionAlgorithm, &Record::keyEncryptionAlgorithm>,
    Field<"recipientEncryptedKeys", List<pki::RecipientEncryptedKey>, &KeyAgreeRecipientInfo::recipientEncryptedKeys, &Record::recipientEncryptedKeys>>;
  static constexpr Calls<Record> calls{"pki_KeyAgreeRecipientInfo", pki_KeyAgreeRecipientInfo_new, pki_KeyAgreeRecipientInfo_d,
    pki_KeyAgreeRecipientInfo_e, pki_KeyAgreeRecipientInfo_clone, pki_KeyAgreeRecipientInfo_free};
};

/// KEKIdentifier
class KEKIdentifier : public View<::pki_KEKIdentifier> {
 public:
  using View::View;
  Octets keyIdentifier() const noexcept { return see<asn1::OctetString>(&Record::keyIdentifier); }
  std::optional<Instant> date() const noexcept { return see_optional<asn1::GeneralizedTime>(&Record::date); }
  std::optional<pki::OtherKeyAttribute> other() const noexcept { return see_optional<pki::OtherKeyAttribute>(&Record::other); }
  using Fields = FieldList<
    Field<"keyIdentifier", asn1::OctetString, &KEKIdentifier::keyIdentifier, &Record::keyIdentifier>,
    Field<"date", asn1::GeneralizedTime, &KEKIdentifier::date, &Record::date>,
    Field<"other", pki::OtherKeyAttribute, &KEKIdentifier::other, &Record::other>>;
  static constexpr Calls<Record> calls{"pki_KEKIdentifier", pki_KEKIdentifier_new, pki_KEKIdentifier_d,
    pki_KEKIdentifier_e, pki_KEKIdentifier_clone, pki_KEKIdentifier_free};
};

/// KEKRecipientInfo
class KEKRecipientInfo : public View<::pki_KEKRecipientInfo> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  pki::KEKIdentifier kekid() const noexcept { return see<pki::KEKIdentifier>(&Record::kekid); }
  pki::AlgId keyEncryptionAlgorithm() const noexcept { return see<pki::AlgId>(&Record::keyEncryptionAlgorithm); }
  Octets encryptedKey() const noexcept { return see<asn1::OctetString>(&Record::encryptedKey); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &KEKRecipientInfo::version, &Record::version>,
    Field<"kekid", pki::KEKIdentifier, &KEKRecipientInfo::kekid, &Record::kekid>,
    Field<"keyEncryptionAlgorithm", pki::AlgId, &KEKRecipientInfo::keyEncryptionAlgorithm, &Record::keyEncryptionAlgorithm>,
    Field<"encryptedKey", asn1::OctetString, &KEKRecipientInfo::encryptedKey, &Record::encryptedKey>>;
  static constexpr Calls<Record> calls{"pki_KEKRecipientInfo", pki_KEKRecipientInfo_new, pki_KEKRecipientInfo_d,
    pki_KEKRecipientInfo_e, pki_KEKRecipientInfo_clone, pki_KEKRecipientInfo_free};
};

/// PasswordRecipientInfo
class PasswordRecipientInfo : public View<::pki_PasswordRecipientInfo> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  std::optional<pki::AlgId> keyDerivationAlgorithm() const noexcept { return see_optional<pki::AlgId>(&Record::keyDerivationAlgorithm); }
  pki::AlgId keyEncryptionAlgorithm() const noexcept { return see<pki::AlgId>(&Record::keyEncryptionAlgorithm); }
  Octets encryptedKey() const noexcept { return see<asn1::OctetString>(&Record::encryptedKey); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &PasswordRecipientInfo::version, &Record::version>,
    Field<"keyDerivationAlgorithm", pki::AlgId, &PasswordRecipientInfo::keyDerivationAlgorithm, &Record::keyDerivationAlgorithm>,
    Field<"keyEncryptionAlgorithm", pki::AlgId, &PasswordRecipientInfo::keyEncryptionAlgorithm, &Record::keyEncryptionAlgorithm>,
    Field<"encryptedKey", asn1::OctetString, &PasswordRecipientInfo::encryptedKey, &Record::encryptedKey>>;
  static constexpr Calls<Record> calls{"pki_PasswordRecipientInfo", pki_PasswordRecipientInfo_new, pki_PasswordRecipientInfo_d,
    pki_PasswordRecipientInfo_e, pki_PasswordRecipientInfo_clone, pki_PasswordRecipientInfo_free};
};

/// OtherRecipientInfo
class OtherRecipientInfo : public View<::pki_OtherRecipientInfo> {
 public:
  using View::View;
  Identifier oriType() const noexcept { return see<asn1::ObjId>(&Record::oriType); }
  Octets oriValue() const noexcept { return see<asn1::Any>(&Record::oriValue); }
  using Fields = FieldList<
    Field<"oriType", asn1::ObjId, &OtherRecipientInfo::oriType, &Record::oriType>,
    Field<"oriValue", asn1::Any, &OtherRecipientInfo::oriValue, &Record::oriValue>>;
  static constexpr Calls<Record> calls{"pki_OtherRecipientInfo", pki_OtherRecipientInfo_new, pki_OtherRecipientInfo_d,
    pki_OtherRecipientInfo_e, pki_OtherRecipientInfo_clone, pki_OtherRecipientInfo_free};
};

/// RecipientInfo
class RecipientInfo : public Choice<RecipientInfo, ::pki_RecipientInfo> {
 public:
  using Choice::Choice;
  struct ktri : Alternative<"ktri", RecipientInfo, 16, pki::KeyTransRecipientInfo> {};
  struct kari : Alternative<"kari", RecipientInfo, 1, pki::KeyAgreeRecipientInfo> {};
  struct kekri : Alternative<"kekri", RecipientInfo, 2, pki::KEKRecipientInfo> {};
  struct pwri : Alternative<"pwri", RecipientInfo, 3, pki::PasswordRecipientInfo> {};
  struct ori : Alternative<"ori", RecipientInfo, 4, pki::OtherRecipientInfo> {};
  using Alternatives = AlternativeList<ktri, kari, kekri, pwri, ori>;
  static constexpr Calls<Record> calls{"pki_RecipientInfo", pki_RecipientInfo_new, pki_RecipientInfo_d,
    pki_RecipientInfo_e, pki_RecipientInfo_clone, pki_RecipientInfo_free};
};

/// EncapsulatedContent
class EncapsulatedContent : public Choice<EncapsulatedContent, ::pki_EncapsulatedContent> {
 public:
  using Choice::Choice;
  struct octets : Alternative<"octets", EncapsulatedContent, 4, asn1::OctetString> {};
  struct sequence : Alternative<"sequence", EncapsulatedContent, 16, asn1::Any> {};
  using Alternatives = AlternativeList<octets, sequence>;
  static constexpr Calls<Record> calls{"pki_EncapsulatedContent", pki_EncapsulatedContent_new, pki_EncapsulatedContent_d,
    pki_EncapsulatedContent_e, pki_EncapsulatedContent_clone, pki_EncapsulatedContent_free};
};

/// EncapsulatedContentInfo
class EncapsulatedContentInfo : public View<::pki_EncapsulatedContentInfo> {
 public:
  using View::View;
  Identifier eContentType() const noexcept { return see<asn1::ObjId>(&Record::eContentType); }
  std::optional<pki::EncapsulatedContent> eContent() const noexcept { return see_optional<pki::EncapsulatedContent>(&Record::eContent); }
  using Fields = FieldList<
    Field<"eContentType", asn1::ObjId, &EncapsulatedContentInfo::eContentType, &Record::eContentType>,
    Field<"eContent", pki::EncapsulatedContent, &EncapsulatedContentInfo::eContent, &Record::eContent>>;
  static constexpr Calls<Record> calls{"pki_EncapsulatedContentInfo", pki_EncapsulatedContentInfo_new, pki_EncapsulatedContentInfo_d,
    pki_EncapsulatedContentInfo_e, pki_EncapsulatedContentInfo_clone, pki_EncapsulatedContentInfo_free};
};

/// AuthenticatedData
class AuthenticatedData : public View<::pki_AuthenticatedData> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  std::optional<pki::OriginatorInfo> originatorInfo() const noexcept { return see_optional<pki::OriginatorInfo>(&Record::originatorInfo); }
  List<pki::RecipientInfo> recipientInfos() const noexcept { return see<List<pki::RecipientInfo>>(&Record::recipientInfos); }
  pki::AlgId macAlgorithm() const noexcept { return see<pki::AlgId>(&Record::macAlgorithm); }
  std::optional<pki::AlgId> digestAlgorithm() const noexcept { return see_optional<pki::AlgId>(&Record::digestAlgorithm); }
  pki::EncapsulatedContentInfo encapContentInfo() const noexcept { return see<pki::EncapsulatedContentInfo>(&Record::encapContentInfo); }
  pki::Attributes authAttrs() const noexcept { return see<pki::Attributes>(&Record::authAttrs); }
  Octets mac() const noexcept { return see<asn1::OctetString>(&Record::mac); }
  pki::Attributes unauthAttrs() const noexcept { return see<pki::Attributes>(&Record::unauthAttrs); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &AuthenticatedData::version, &Record::version>,
    Field<"originatorInfo", pki::OriginatorInfo, &AuthenticatedData::originatorInfo, &Record::originatorInfo>,
    Field<"recipientInfos", List<pki::RecipientInfo>, &AuthenticatedData::recipientInfos, &Record::recipientInfos>,
    Field<"macAlgorithm", pki::AlgId, &AuthenticatedData::macAlgorithm, &Record::macAlgorithm>,
    Field<"digestAlgorithm", pki::AlgId, &AuthenticatedData::digestAlgorithm, &Record::digestAlgorithm>,
    Field<"encapContentInfo", pki::EncapsulatedContentInfo, &AuthenticatedData::encapContentInfo, &Record::encapContentInfo>,
    Field<"authAttrs", pki::Attributes, &AuthenticatedData::authAttrs, &Record::authAttrs>,
    Field<"mac", asn1::OctetString, &AuthenticatedData::mac, &Record::mac>,
    Field<"unauthAttrs", pki::Attributes, &AuthenticatedData::unauthAttrs, &Record::unauthAttrs>>;
  static constexpr Calls<Record> calls{"pki_AuthenticatedData", pki_AuthenticatedData_new, pki_AuthenticatedData_d,
    pki_AuthenticatedData_e, pki_AuthenticatedData_clone, pki_AuthenticatedData_free};
};

/// ContentInfo
class ContentInfo : public View<::pki_ContentInfo> {
 public:
  using View::View;
  Identifier contentType() const noexcept { return see<asn1::ObjId>(&Record::contentType); }
  std::optional<Octets> content() const noexcept { return see_optional<asn1::Any>(&Record::content); }
  using Fields = FieldList<
    Field<"contentType", asn1::ObjId, &ContentInfo::contentType, &Record::contentType>,
    Field<"content", asn1::Any, &ContentInfo::content, &Record::content>>;
  static constexpr Calls<Record> calls{"pki_ContentInfo", pki_ContentInfo_new, pki_ContentInfo_d,
    pki_ContentInfo_e, pki_ContentInfo_clone, pki_ContentInfo_free};
};

/// AuthenticatedSafe
class AuthenticatedSafe : public List<pki::ContentInfo> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_AuthenticatedSafe", nullptr, pki_AuthenticatedSafe_d,
    pki_AuthenticatedSafe_e, pki_AuthenticatedSafe_clone, pki_AuthenticatedSafe_free};
};

/// AuthorityInfoAccessSyntax
class AuthorityInfoAccessSyntax : public List<pki::AccessDescription> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_AuthorityInfoAccessSyntax", nullptr, pki_AuthorityInfoAccessSyntax_d,
    pki_AuthorityInfoAccessSyntax_e, pki_AuthorityInfoAccessSyntax_clone, pki_AuthorityInfoAccessSyntax_free};
};

/// GeneralNames
class GeneralNames : public List<pki::GeneralName> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_GeneralNames", nullptr, pki_GeneralNames_d,
    pki_GeneralNames_e, pki_GeneralNames_clone, pki_GeneralNames_free};
};

/// AuthorityKeyIdentifier
class AuthorityKeyIdentifier : public View<::AuthorityKeyIdentifier> {
 public:
  using View::View;
  std::optional<Octets> keyIdentifier() const noexcept { return see_optional<asn1::OctetString>(&Record::keyIdentifier); }
  pki::GeneralNames authorityCertIssuer() const noexcept { return see<pki::GeneralNames>(&Record::authorityCertIssuer); }
  std::optional<Number> authorityCertSerialNumber() const noexcept { return see_optional<asn1::Integer>(&Record::authorityCertSerialNumber); }
  using Fields = FieldList<
    Field<"keyIdentifier", asn1::OctetString, &AuthorityKeyIdentifier::keyIdentifier, &Record::keyIdentifier>,
    Field<"authorityCertIssuer", pki::GeneralNames, &AuthorityKeyIdentifier::authorityCertIssuer, &Record::authorityCertIssuer>,
    Field<"authorityCertSerialNumber", asn1::Integer, &AuthorityKeyIdentifier::authorityCertSerialNumber, &Record::authorityCertSerialNumber>>;
  static constexpr Calls<Record> calls{"pki_AuthorityKeyIdentifier", pki_AuthorityKeyIdentifier_new, pki_AuthorityKeyIdentifier_d,
    pki_AuthorityKeyIdentifier_e, pki_AuthorityKeyIdentifier_clone, pki_AuthorityKeyIdentifier_free};
};

/// BaseCRLNumber
class BaseCRLNumber : public Number {
 public:
  using Number::Number;
  static constexpr Calls<Record> calls{"pki_BaseCRLNumber", nullptr, pki_BaseCRLNumber_d,
    pki_BaseCRLNumber_e, pki_BaseCRLNumber_clone, pki_BaseCRLNumber_free};
};

/// BasicConstraints
class BasicConstraints : public View<::BasicConstraints> {
 public:
  using View::View;
  bool cA() const noexcept { return at(&Record::cA) != 0; }
  std::optional<Number> pathLenConstraint() const noexcept { return see_optional<asn1::Integer>(&Record::pathLenConstraint); }
  using Fields = FieldList<
    Field<"cA", bool, &BasicConstraints::cA, &Record::cA>,
    Field<"pathLenConstraint", asn1::Integer, &BasicConstraints::pathLenConstraint, &Record::pathLenConstraint>>;
  static constexpr Calls<Record> calls{"pki_BasicConstraints", pki_BasicConstraints_new, pki_BasicConstraints_d,
    pki_BasicConstraints_e, pki_BasicConstraints_clone, pki_BasicConstraints_free};
};

/// ResponderID
class ResponderID : public Choice<ResponderID, ::ResponderID> {
 public:
  using Choice::Choice;
  struct byName : Alternative<"byName", ResponderID, 1, pki::RDNSequence> {};
  struct byKey : Alternative<"byKey", ResponderID, 2, asn1::OctetString> {};
  using Alternatives = AlternativeList<byName, byKey>;
  static constexpr Calls<Record> calls{"pki_ResponderID", pki_ResponderID_new, pki_ResponderID_d,
    pki_ResponderID_e, pki_ResponderID_clone, pki_ResponderID_free};
};

/// CertID
class CertID : public View<::CertID> {
 public:
  using View::View;
  pki::AlgId hashAlgorithm() const noexcept { return see<pki::AlgId>(&Record::hashAlgorithm); }
  Octets issuerNameHash() const noexcept { return see<asn1::OctetString>(&Record::issuerNameHash); }
  Octets issuerKeyHash() const noexcept { return see<asn1::OctetString>(&Record::issuerKeyHash); }
  Number serialNumber() const noexcept { return see<asn1::Integer>(&Record::serialNumber); }
  using Fields = FieldList<
    Field<"hashAlgorithm", pki::AlgId, &CertID::hashAlgorithm, &Record::hashAlgorithm>,
    Field<"issuerNameHash", asn1::OctetString, &CertID::issuerNameHash, &Record::issuerNameHash>,
    Field<"issuerKeyHash", asn1::OctetString, &CertID::issuerKeyHash, &Record::issuerKeyHash>,
    Field<"serialNumber", asn1::Integer, &CertID::serialNumber, &Record::serialNumber>>;
  static constexpr Calls<Record> calls{"pki_CertID", pki_CertID_new, pki_CertID_d,
    pki_CertID_e, pki_CertID_clone, pki_CertID_free};
};

/// RevokedInfo
class RevokedInfo : public View<::pki_RevokedInfo> {
 public:
  using View::View;
  Instant revocationTime() const noexcept { return see<asn1::GeneralizedTime>(&Record::revocationTime); }
  std::optional<Number> revocationReason() const noexcept { return see_optional<asn1::Integer>(&Record::revocationReason); }
  using Fields = FieldList<
    Field<"revocationTime", asn1::GeneralizedTime, &RevokedInfo::revocationTime, &Record::revocationTime>,
    Field<"revocationReason", asn1::Integer, &RevokedInfo::revocationReason, &Record::revocationReason>>;
  static constexpr Calls<Record> calls{"pki_RevokedInfo", pki_RevokedInfo_new, pki_RevokedInfo_d,
    pki_RevokedInfo_e, pki_RevokedInfo_clone, pki_RevokedInfo_free};
};

/// CertStatus
class OCSPCertStatus : public Choice<OCSPCertStatus, ::OCSPCertStatus> {
 public:
  using Choice::Choice;
  struct good : Alternative<"good", OCSPCertStatus, 0, Null> {};
  struct revoked : Alternative<"revoked", OCSPCertStatus, 1, pki::RevokedInfo> {};
  struct unknown : Alternative<"unknown", OCSPCertStatus, 2, Null> {};
  using Alternatives = AlternativeList<good, revoked, unknown>;
  static constexpr Calls<Record> calls{"pki_OCSPCertStatus", pki_OCSPCertStatus_new, pki_OCSPCertStatus_d,
    pki_OCSPCertStatus_e, pki_OCSPCertStatus_clone, pki_OCSPCertStatus_free};
};

/// SingleResponse
class SingleResponse : public View<::SingleResponse> {
 public:
  using View::View;
  pki::CertID certID() const noexcept { return see<pki::CertID>(&Record::certID); }
  pki::OCSPCertStatus certStatus() const noexcept { return see<pki::OCSPCertStatus>(&Record::certStatus); }
  Instant thisUpdate() const noexcept { return see<asn1::GeneralizedTime>(&Record::thisUpdate); }
  std::optional<Instant> nextUpdate() const noexcept { return see_optional<asn1::GeneralizedTime>(&Record::nextUpdate); }
  pki::Extensions singleExtensions() const noexcept { return see<pki::Extensions>(&Record::singleExtensions); }
  using Fields = FieldList<
    Field<"certID", pki::CertID, &SingleResponse::certID, &Record::certID>,
    Field<"certStatus", pki::OCSPCertStatus, &SingleResponse::certStatus, &Record::certStatus>,
    Field<"thisUpdate", asn1::GeneralizedTime, &SingleResponse::thisUpdate, &Record::thisUpdate>,
    Field<"nextUpdate", asn1::GeneralizedTime, &SingleResponse::nextUpdate, &Record::nextUpdate>,
    Field<"singleExtensions", pki::Extensions, &SingleResponse::singleExtensions, &Record::singleExtensions>>;
  static constexpr Calls<Record> calls{"pki_SingleResponse", pki_SingleResponse_new, pki_SingleResponse_d,
    pki_SingleResponse_e, pki_SingleResponse_clone, pki_SingleResponse_free};
};

/// ResponseData
class ResponseData : public View<::ResponseData> {
 public:
  using View::View;
  std::optional<Number> version() const noexcept { return see_optional<asn1::Integer>(&Record::version); }
  pki::ResponderID responderID() const noexcept { return see<pki::ResponderID>(&Record::responderID); }
  Instant producedAt() const noexcept { return see<asn1::GeneralizedTime>(&Record::producedAt); }
  List<pki::SingleResponse> responses() const noexcept { return see<List<pki::SingleResponse>>(&Record::responses); }
  pki::Extensions responseExtensions() const noexcept { return see<pki::Extensions>(&Record::responseExtensions); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &ResponseData::version, &Record::version>,
    Field<"responderID", pki::ResponderID, &ResponseData::responderID, &Record::responderID>,
    Field<"producedAt", asn1::GeneralizedTime, &ResponseData::producedAt, &Record::producedAt>,
    Field<"responses", List<pki::SingleResponse>, &ResponseData::responses, &Record::responses>,
    Field<"responseExtensions", pki::Extensions, &ResponseData::responseExtensions, &Record::responseExtensions>>;
  static constexpr Calls<Record> calls{"pki_ResponseData", pki_ResponseData_new, pki_ResponseData_d,
    pki_ResponseData_e, pki_ResponseData_clone, pki_ResponseData_free};
};

/// BasicOCSPResponse
class BasicOCSPResponse : public View<::BasicOCSPResponse> {
 public:
  using View::View;
  pki::ResponseData tbsResponseData() const noexcept { return see<pki::ResponseData>(&Record::tbsResponseData); }
  Octets tbsResponseData_encoded() const noexcept { return see<Element>(&Record::tbsResponseDataBytes); }
  std::optional<Number> version() const noexcept { return tbsResponseData().version(); }
  pki::ResponderID responderID() const noexcept { return tbsResponseData().responderID(); }
  Instant producedAt() const noexcept { return tbsResponseData().producedAt(); }
  List<pki::SingleResponse> responses() const noexcept { return tbsResponseData().responses(); }
  pki::Extensions responseExtensions() const noexcept { return tbsResponseData().responseExtensions(); }
  pki::AlgId signatureAlgorithm() const noexcept { return see<pki::AlgId>(&Record::signatureAlgorithm); }
  Bits signature() const noexcept { return see<asn1::BitString>(&Record::signature); }
  List<pki::Certificate> certs() const noexcept { return see<List<pki::Certificate>>(&Record::certs); }
  using Fields = FieldList<
    Field<"tbsResponseData", pki::ResponseData, &BasicOCSPResponse::tbsResponseData, &Record::tbsResponseData, &Record::tbsResponseDataBytes>,
    Field<"signatureAlgorithm", pki::AlgId, &BasicOCSPResponse::signatureAlgorithm, &Record::signatureAlgorithm>,
    Field<"signature", asn1::BitString, &BasicOCSPResponse::signature, &Record::signature>,
    Field<"certs", List<pki::Certificate>, &BasicOCSPResponse::certs, &Record::certs>>;
  static constexpr Calls<Record> calls{"pki_BasicOCSPResponse", pki_BasicOCSPResponse_new, pki_BasicOCSPResponse_d,
    pki_BasicOCSPResponse_e, pki_BasicOCSPResponse_clone, pki_BasicOCSPResponse_free};
};

/// CPSuri
class CPSuri : public asn1::IA5String {
 public:
  using IA5String::IA5String;
  static constexpr Calls<Record> calls{"pki_CPSuri", nullptr, pki_CPSuri_d,
    pki_CPSuri_e, pki_CPSuri_clone, pki_CPSuri_free};
};

/// CRLBag
class CRLBag : public View<::CRLBag> {
 public:
  using View::View;
  Identifier crlId() const noexcept { return see<asn1::ObjId>(&Record::crlId); }
  Octets crlValue() const noexcept { return see<asn1::Any>(&Record::crlValue); }
  using Fields = FieldList<
    Field<"crlId", asn1::ObjId, &CRLBag::crlId, &Record::crlId>,
    Field<"crlValue", asn1::Any, &CRLBag::crlValue, &Record::crlValue>>;
  static constexpr Calls<Record> calls{"pki_CRLBag", pki_CRLBag_new, pki_CRLBag_d,
    pki_CRLBag_e, pki_CRLBag_clone, pki_CRLBag_free};
};

/// DistributionPointName
class DistributionPointName : public Choice<DistributionPointName, ::DistributionPointName> {
 public:
  using Choice::Choice;
  struct fullName : Alternative<"fullName", DistributionPointName, 0, pki::GeneralNames> {};
  struct nameRelativeToCRLIssuer : Alternative<"nameRelativeToCRLIssuer", DistributionPointName, 1, pki::RelativeDistinguishedName> {};
  using Alternatives = AlternativeList<fullName, nameRelativeToCRLIssuer>;
  static constexpr Calls<Record> calls{"pki_DistributionPointName", pki_DistributionPointName_new, pki_DistributionPointName_d,
    pki_DistributionPointName_e, pki_DistributionPointName_clone, pki_DistributionPointName_free};
};

/// DistributionPoint
class DistributionPoint : public View<::DistributionPoint> {
 public:
  using View::View;
  std::optional<pki::DistributionPointName> distributionPoint() const noexcept { return see_optional<pki::DistributionPointName>(&Record::distributionPoint); }
  std::optional<Bits> reasons() const noexcept { return see_optional<asn1::BitString>(&Record::reasons); }
  pki::GeneralNames cRLIssuer() const noexcept { return see<pki::GeneralNames>(&Record::cRLIssuer); }
  using Fields = FieldList<
    Field<"distributionPoint", pki::DistributionPointName, &DistributionPoint::distributionPoint, &Record::distributionPoint>,
    Field<"reasons", asn1::BitString, &DistributionPoint::reasons, &Record::reasons>,
    Field<"cRLIssuer", pki::GeneralNames, &DistributionPoint::cRLIssuer, &Record::cRLIssuer>>;
  static constexpr Calls<Record> calls{"pki_DistributionPoint", pki_DistributionPoint_new, pki_DistributionPoint_d,
    pki_DistributionPoint_e, pki_DistributionPoint_clone, pki_DistributionPoint_free};
};

/// CRLDistributionPoints
class CRLDistributionPoints : public List<pki::DistributionPoint> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_CRLDistributionPoints", nullptr, pki_CRLDistributionPoints_d,
    pki_CRLDistributionPoints_e, pki_CRLDistributionPoints_clone, pki_CRLDistributionPoints_free};
};

/// CRLNumber
class CRLNumber : public Number {
 public:
  using Number::Number;
  static constexpr Calls<Record> calls{"pki_CRLNumber", nullptr, pki_CRLNumber_d,
    pki_CRLNumber_e, pki_CRLNumber_clone, pki_CRLNumber_free};
};

/// CRLReason
class CRLReason : public Number {
 public:
  using Number::Number;
  static constexpr Calls<Record> calls{"pki_CRLReason", nullptr, pki_CRLReason_d,
    pki_CRLReason_e, pki_CRLReason_clone, pki_CRLReason_free};
};

/// CertBag
class CertBag : public View<::CertBag> {
 public:
  using View::View;
  Identifier certId() const noexcept { return see<asn1::ObjId>(&Record::certId); }
  Octets certValue() const noexcept { return see<asn1::Any>(&Record::certValue); }
  using Fields = FieldList<
    Field<"certId", asn1::ObjId, &CertBag::certId, &Record::certId>,
    Field<"certValue", asn1::Any, &CertBag::certValue, &Record::certValue>>;
  static constexpr Calls<Record> calls{"pki_CertBag", pki_CertBag_new, pki_CertBag_d,
    pki_CertBag_e, pki_CertBag_clone, pki_CertBag_free};
};

/// CertificationRequestInfo
class CertRequestInfo : public View<::CertRequestInfo> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  pki::RDNSequence subject() const noexcept { return see<pki::RDNSequence>(&Record::subjectSequence); }
  std::string_view subject_text() const noexcept { return see<Characters>(&Record::subject); }
  Octets subject_encoded() const noexcept { return see<Element>(&Record::subjectEncoded); }
  pki::SubjectPKI subjectPKInfo() const noexcept { return see<pki::SubjectPKI>(&Record::subjectPKInfo); }
  pki::Attributes attributes() const noexcept { return see<pki::Attributes>(&Record::attributes); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &CertRequestInfo::version, &Record::version>,
    Field<"subject", pki::RDNSequence, &CertRequestInfo::subject, &Record::subjectSequence, &Record::subject, &Record::subjectEncoded>,
    Field<"subjectPKInfo", pki::SubjectPKI, &CertRequestInfo::subjectPKInfo, &Record::subjectPKInfo>,
    Field<"attributes", pki::Attributes, &CertRequestInfo::attributes, &Record::attributes>>;
  static constexpr Calls<Record> calls{"pki_CertRequestInfo", pki_CertRequestInfo_new, pki_CertRequestInfo_d,
    pki_CertRequestInfo_e, pki_CertRequestInfo_clone, pki_CertRequestInfo_free};
};

/// PolicyQualifierInfo
class PolicyQualifierInfo : public View<::pki_PolicyQualifierInfo> {
 public:
  using View::View;
  Identifier policyQualifierId() const noexcept { return see<asn1::ObjId>(&Record::policyQualifierId); }
  Octets qualifier() const noexcept { return see<asn1::Any>(&Record::qualifier); }
  using Fields = FieldList<
    Field<"policyQualifierId", asn1::ObjId, &PolicyQualifierInfo::policyQualifierId, &Record::policyQualifierId>,
    Field<"qualifier", asn1::Any, &PolicyQualifierInfo::qualifier, &Record::qualifier>>;
  static constexpr Calls<Record> calls{"pki_PolicyQualifierInfo", pki_PolicyQualifierInfo_new, pki_PolicyQualifierInfo_d,
    pki_PolicyQualifierInfo_e, pki_PolicyQualifierInfo_clone, pki_PolicyQualifierInfo_free};
};

/// PolicyInformation
class PolicyInformation : public View<::pki_PolicyInformation> {
 public:
  using View::View;
  Identifier policyIdentifier() const noexcept { return see<asn1::ObjId>(&Record::policyIdentifier); }
  List<pki::PolicyQualifierInfo> policyQualifiers() const noexcept { return see<List<pki::PolicyQualifierInfo>>(&Record::policyQualifiers); }
  using Fields = FieldList<
    Field<"policyIdentifier", asn1::ObjId, &PolicyInformation::policyIdentifier, &Record::policyIdentifier>,
    Field<"policyQualifiers", List<pki::PolicyQualifierInfo>, &PolicyInformation::policyQualifiers, &Record::policyQualifiers>>;
  static constexpr Calls<Record> calls{"pki_PolicyInformation", pki_PolicyInformation_new, pki_PolicyInformation_d,
    pki_PolicyInformation_e, pki_PolicyInformation_clone, pki_PolicyInformation_free};
};

/// CertificatePolicies
class CertificatePolicies : public List<pki::PolicyInformation> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_CertificatePolicies", nullptr, pki_CertificatePolicies_d,
    pki_CertificatePolicies_e, pki_CertificatePolicies_clone, pki_CertificatePolicies_free};
};

/// CertificationRequest
class CertificationRequest : public View<::CertificationRequest> {
 public:
  using View::View;
  pki::CertRequestInfo certificationRequestInfo() const noexcept { return see<pki::CertRequestInfo>(&Record::certificationRequestInfo); }
  Octets certificationRequestInfo_encoded() const noexcept { return see<Element>(&Record::tbsEncoded); }
  Number version() const noexcept { return certificationRequestInfo().version(); }
  pki::RDNSequence subject() const noexcept { return certificationRequestInfo().subject(); }
  pki::SubjectPKI subjectPKInfo() const noexcept { return certificationRequestInfo().subjectPKInfo(); }
  pki::Attributes attributes() const noexcept { return certificationRequestInfo().attributes(); }
  pki::AlgId signatureAlgorithm() const noexcept { return see<pki::AlgId>(&Record::signatureAlgorithm); }
  Bits signature() const noexcept { return see<asn1::BitString>(&Record::signature); }
  using Fields = FieldList<
    Field<"certificationRequestInfo", pki::CertRequestInfo, &CertificationRequest::certificationRequestInfo, &Record::certificationRequestInfo, &Record::tbsEncoded>,
    Field<"signatureAlgorithm", pki::AlgId, &CertificationRequest::signatureAlgorithm, &Record::signatureAlgorithm>,
    Field<"signature", asn1::BitString, &CertificationRequest::signature, &Record::signature>>;
  static constexpr Calls<Record> calls{"pki_CertificationRequest", pki_CertificationRequest_new, pki_CertificationRequest_d,
    pki_CertificationRequest_e, pki_CertificationRequest_clone, pki_CertificationRequest_free};
};

/// CrlID
class CrlID : public View<::pki_CrlID> {
 public:
  using View::View;
  std::optional<std::string_view> crlUrl() const noexcept { return see_optional<asn1::IA5String>(&Record::crlUrl); }
  std::optional<Number> crlNum() const noexcept { return see_optional<asn1::Integer>(&Record::crlNum); }
  std::optional<Instant> crlTime() const noexcept { return see_optional<asn1::GeneralizedTime>(&Record::crlTime); }
  using Fields = FieldList<
    Field<"crlUrl", asn1::IA5String, &CrlID::crlUrl, &Record::crlUrl>,
    Field<"crlNum", asn1::Integer, &CrlID::crlNum, &Record::crlNum>,
    Field<"crlTime", asn1::GeneralizedTime, &CrlID::crlTime, &Record::crlTime>>;
  static constexpr Calls<Record> calls{"pki_CrlID", pki_CrlID_new, pki_CrlID_d,
    pki_CrlID_e, pki_CrlID_clone, pki_CrlID_free};
};

/// DigestInfo
class DigestInfo : public View<::DigestInfo> {
 public:
  using View::View;
  pki::AlgId digestAlgorithm() const noexcept { return see<pki::AlgId>(&Record::digestAlgorithm); }
  Octets digest() const noexcept { return see<asn1::OctetString>(&Record::digest); }
  using Fields = FieldList<
    Field<"digestAlgorithm", pki::AlgId, &DigestInfo::digestAlgorithm, &Record::digestAlgorithm>,
    Field<"digest", asn1::OctetString, &DigestInfo::digest, &Record::digest>>;
  static constexpr Calls<Record> calls{"pki_DigestInfo", pki_DigestInfo_new, pki_DigestInfo_d,
    pki_DigestInfo_e, pki_DigestInfo_clone, pki_DigestInfo_free};
};

/// DigestedData
class DigestedData : public View<::pki_DigestedData> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  pki::AlgId digestAlgorithm() const noexcept { return see<pki::AlgId>(&Record::digestAlgorithm); }
  pki::EncapsulatedContentInfo encapContentInfo() const noexcept { return see<pki::EncapsulatedContentInfo>(&Record::encapContentInfo); }
  Octets digest() const noexcept { return see<asn1::OctetString>(&Record::digest); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &DigestedData::version, &Record::version>,
    Field<"digestAlgorithm", pki::AlgId, &DigestedData::digestAlgorithm, &Record::digestAlgorithm>,
    Field<"encapContentInfo", pki::EncapsulatedContentInfo, &DigestedData::encapContentInfo, &Record::encapContentInfo>,
    Field<"digest", asn1::OctetString, &DigestedData::digest, &Record::digest>>;
  static constexpr Calls<Record> calls{"pki_DigestedData", pki_DigestedData_new, pki_DigestedData_d,
    pki_DigestedData_e, pki_DigestedData_clone, pki_DigestedData_free};
};

/// DisplayText
class DisplayText : public Choice<DisplayText, ::pki_DisplayText> {
 public:
  using Choice::Choice;
  struct ia5String : Alternative<"ia5String", DisplayText, 22, asn1::IA5String> {};
  struct visibleString : Alternative<"visibleString", DisplayText, 26, asn1::VisibleString> {};
  struct bmpString : Alternative<"bmpString", DisplayText, 30, Text> {};
  struct utf8String : Alternative<"utf8String", DisplayText, 12, asn1::UTF8String> {};
  using Alternatives = AlternativeList<ia5String, visibleString, bmpString, utf8String>;
  static constexpr Calls<Record> calls{"pki_DisplayText", pki_DisplayText_new, pki_DisplayText_d,
    pki_DisplayText_e, pki_DisplayText_clone, pki_DisplayText_free};
};

/// ECDSA-Sig-Value
class ECDSA_Sig_Value : public View<::pki_ECDSA_Sig_Value> {
 public:
  using View::View;
  Number r() const noexcept { return see<asn1::Integer>(&Record::r); }
  Number s() const noexcept { return see<asn1::Integer>(&Record::s); }
  using Fields = FieldList<
    Field<"r", asn1::Integer, &ECDSA_Sig_Value::r, &Record::r>,
    Field<"s", asn1::Integer, &ECDSA_Sig_Value::s, &Record::s>>;
  static constexpr Calls<Record> calls{"pki_ECDSA_Sig_Value", pki_ECDSA_Sig_Value_new, pki_ECDSA_Sig_Value_d,
    pki_ECDSA_Sig_Value_e, pki_ECDSA_Sig_Value_clone, pki_ECDSA_Sig_Value_free};
};

/// ECParameters
class ECParameters : public Choice<ECParameters, ::pki_ECParameters> {
 public:
  using Choice::Choice;
  struct namedCurve : Alternative<"namedCurve", ECParameters, 6, asn1::ObjId> {};
  struct implicitCurve : Alternative<"implicitCurve", ECParameters, 5, Null> {};
  struct specifiedCurve : Alternative<"specifiedCurve", ECParameters, 16, asn1::Any> {};
  using Alternatives = AlternativeList<namedCurve, implicitCurve, specifiedCurve>;
  static constexpr Calls<Record> calls{"pki_ECParameters", pki_ECParameters_new, pki_ECParameters_d,
    pki_ECParameters_e, pki_ECParameters_clone, pki_ECParameters_free};
};

/// ECPrivateKey
class ECPrivateKey : public View<::pki_ECPrivateKey> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  Octets privateKey() const noexcept { return see<asn1::OctetString>(&Record::privateKey); }
  std::optional<pki::ECParameters> parameters() const noexcept { return see_optional<pki::ECParameters>(&Record::parameters); }
  std::optional<Bits> publicKey() const noexcept { return see_optional<asn1::BitString>(&Record::publicKey); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &ECPrivateKey::version, &Record::version>,
    Field<"privateKey", asn1::OctetString, &ECPrivateKey::privateKey, &Record::privateKey>,
    Field<"parameters", pki::ECParameters, &ECPrivateKey::parameters, &Record::parameters>,
    Field<"publicKey", asn1::BitString, &ECPrivateKey::publicKey, &Record::publicKey>>;
  static constexpr Calls<Record> calls{"pki_ECPrivateKey", pki_ECPrivateKey_new, pki_ECPrivateKey_d,
    pki_ECPrivateKey_e, pki_ECPrivateKey_clone, pki_ECPrivateKey_free};
};

/// EncryptedContentInfo
class EncryptedContentInfo : public View<::EncryptedContentInfo> {
 public:
  using View::View;
  Identifier contentType() const noexcept { return see<asn1::ObjId>(&Record::contentType); }
  pki::AlgId contentEncryptionAlgorithm() const noexcept { return see<pki::AlgId>(&Record::contentEncryptionAlgorithm); }
  std::optional<Octets> encryptedContent() const noexcept { return see_optional<asn1::OctetString>(&Record::encryptedContent); }
  using Fields = FieldList<
    Field<"contentType", asn1::ObjId, &EncryptedContentInfo::contentType, &Record::contentType>,
    Field<"contentEncryptionAlgorithm", pki::AlgId, &EncryptedContentInfo::contentEncryptionAlgorithm, &Record::contentEncryptionAlgorithm>,
    Field<"encryptedContent", asn1::OctetString, &EncryptedContentInfo::encryptedContent, &Record::encryptedContent>>;
  static constexpr Calls<Record> calls{"pki_EncryptedContentInfo", pki_EncryptedContentInfo_new, pki_EncryptedContentInfo_d,
    pki_EncryptedContentInfo_e, pki_EncryptedContentInfo_clone, pki_EncryptedContentInfo_free};
};

/// EncryptedData
class EncryptedData : public View<::pki_EncryptedData> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  pki::EncryptedContentInfo encryptedContentInfo() const noexcept { return see<pki::EncryptedContentInfo>(&Record::encryptedContentInfo); }
  pki::Attributes unprotectedAttrs() const noexcept { return see<pki::Attributes>(&Record::unprotectedAttrs); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &EncryptedData::version, &Record::version>,
    Field<"encryptedContentInfo", pki::EncryptedContentInfo, &EncryptedData::encryptedContentInfo, &Record::encryptedContentInfo>,
    Field<"unprotectedAttrs", pki::Attributes, &EncryptedData::unprotectedAttrs, &Record::unprotectedAttrs>>;
  static constexpr Calls<Record> calls{"pki_EncryptedData", pki_EncryptedData_new, pki_EncryptedData_d,
    pki_EncryptedData_e, pki_EncryptedData_clone, pki_EncryptedData_free};
};

/// EncryptedPrivateKeyInfo
class EncryptedPrivateKeyInfo : public View<::EncryptedPrivateKeyInfo> {
 public:
  using View::View;
  pki::AlgId encryptionAlgorithm() const noexcept { return see<pki::AlgId>(&Record::encryptionAlgorithm); }
  Octets encryptedData() const noexcept { return see<asn1::OctetString>(&Record::encryptedData); }
  using Fields = FieldList<
    Field<"encryptionAlgorithm", pki::AlgId, &EncryptedPrivateKeyInfo::encryptionAlgorithm, &Record::encryptionAlgorithm>,
    Field<"encryptedData", asn1::OctetString, &EncryptedPrivateKeyInfo::encryptedData, &Record::encryptedData>>;
  static constexpr Calls<Record> calls{"pki_EncryptedPrivateKeyInfo", pki_EncryptedPrivateKeyInfo_new, pki_EncryptedPrivateKeyInfo_d,
    pki_EncryptedPrivateKeyInfo_e, pki_EncryptedPrivateKeyInfo_clone, pki_EncryptedPrivateKeyInfo_free};
};

/// EnvelopedData
class EnvelopedData : public View<::pki_EnvelopedData> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  std::optional<pki::OriginatorInfo> originatorInfo() const noexcept { return see_optional<pki::OriginatorInfo>(&Record::originatorInfo); }
  List<pki::RecipientInfo> recipientInfos() const noexcept { return see<List<pki::RecipientInfo>>(&Record::recipientInfos); }
  pki::EncryptedContentInfo encryptedContentInfo() const noexcept { return see<pki::EncryptedContentInfo>(&Record::encryptedContentInfo); }
  pki::Attributes unprotectedAttrs() const noexcept { return see<pki::Attributes>(&Record::unprotectedAttrs); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &EnvelopedData::version, &Record::version>,
    Field<"originatorInfo", pki::OriginatorInfo, &EnvelopedData::originatorInfo, &Record::originatorInfo>,
    Field<"recipientInfos", List<pki::RecipientInfo>, &EnvelopedData::recipientInfos, &Record::recipientInfos>,
    Field<"encryptedContentInfo", pki::EncryptedContentInfo, &EnvelopedData::encryptedContentInfo, &Record::encryptedContentInfo>,
    Field<"unprotectedAttrs", pki::Attributes, &EnvelopedData::unprotectedAttrs, &Record::unprotectedAttrs>>;
  static constexpr Calls<Record> calls{"pki_EnvelopedData", pki_EnvelopedData_new, pki_EnvelopedData_d,
    pki_EnvelopedData_e, pki_EnvelopedData_clone, pki_EnvelopedData_free};
};

/// ExtKeyUsageSyntax
class ExtKeyUsageSyntax : public List<asn1::ObjId> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_ExtKeyUsageSyntax", nullptr, pki_ExtKeyUsageSyntax_d,
    pki_ExtKeyUsageSyntax_e, pki_ExtKeyUsageSyntax_clone, pki_ExtKeyUsageSyntax_free};
};

/// Features
class Features : public List<asn1::Integer> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_Features", nullptr, pki_Features_d,
    pki_Features_e, pki_Features_clone, pki_Features_free};
};

/// GeneralSubtree
class GeneralSubtree : public View<::GeneralSubtree> {
 public:
  using View::View;
  pki::GeneralName base() const noexcept { return see<pki::GeneralName>(&Record::base); }
  std::optional<Number> minimum() const noexcept { return see_optional<asn1::Integer>(&Record::minimum); }
  std::optional<Number> maximum() const noexcept { return see_optional<asn1::Integer>(&Record::maximum); }
  using Fields = FieldList<
    Field<"base", pki::GeneralName, &GeneralSubtree::base, &Record::base>,
    Field<"minimum", asn1::Integer, &GeneralSubtree::minimum, &Record::minimum>,
    Field<"maximum", asn1::Integer, &GeneralSubtree::maximum, &Record::maximum>>;
  static constexpr Calls<Record> calls{"pki_GeneralSubtree", pki_GeneralSubtree_new, pki_GeneralSubtree_d,
    pki_GeneralSubtree_e, pki_GeneralSubtree_clone, pki_GeneralSubtree_free};
};

/// HashAlgAndValue
class HashAlgAndValue : public View<::HashAlgAndValue> {
 public:
  using View::View;
  pki::AlgId hashAlg() const noexcept { return see<pki::AlgId>(&Record::hashAlg); }
  Octets hashValue() const noexcept { return see<asn1::OctetString>(&Record::hashValue); }
  using Fields = FieldList<
    Field<"hashAlg", pki::AlgId, &HashAlgAndValue::hashAlg, &Record::hashAlg>,
    Field<"hashValue", asn1::OctetString, &HashAlgAndValue::hashValue, &Record::hashValue>>;
  static constexpr Calls<Record> calls{"pki_HashAlgAndValue", pki_HashAlgAndValue_new, pki_HashAlgAndValue_d,
    pki_HashAlgAndValue_e, pki_HashAlgAndValue_clone, pki_HashAlgAndValue_free};
};

/// IPAddressRange
class IPAddressRange : public View<::pki_IPAddressRange> {
 public:
  using View::View;
  Bits min() const noexcept { return see<asn1::BitString>(&Record::min); }
  Bits max() const noexcept { return see<asn1::BitString>(&Record::max); }
  using Fields = FieldList<
    Field<"min", asn1::BitString, &IPAddressRange::min, &Record::min>,
    Field<"max", asn1::BitString, &IPAddressRange::max, &Record::max>>;
  static constexpr Calls<Record> calls{"pki_IPAddressRange", pki_IPAddressRange_new, pki_IPAddressRange_d,
    pki_IPAddressRange_e, pki_IPAddressRange_clone, pki_IPAddressRange_free};
};

/// IPAddressOrRange
class IPAddressOrRange : public Choice<IPAddressOrRange, ::pki_IPAddressOrRange> {
 public:
  using Choice::Choice;
  struct addressPrefix : Alternative<"addressPrefix", IPAddressOrRange, 3, asn1::BitString> {};
  struct addressRange : Alternative<"addressRange", IPAddressOrRange, 16, pki::IPAddressRange> {};
  using Alternatives = AlternativeList<addressPrefix, addressRange>;
  static constexpr Calls<Record> calls{"pki_IPAddressOrRange", pki_IPAddressOrRange_new, pki_IPAddressOrRange_d,
    pki_IPAddressOrRange_e, pki_IPAddressOrRange_clone, pki_IPAddressOrRange_free};
};

/// IPAddressChoice
class IPAddressChoice : public Choice<IPAddressChoice, ::pki_IPAddressChoice> {
 public:
  using Choice::Choice;
  struct inherit : Alternative<"inherit", IPAddressChoice, 5, Null> {};
  struct addressesOrRanges : Alternative<"addressesOrRanges", IPAddressChoice, 16, List<pki::IPAddressOrRange>> {};
  using Alternatives = AlternativeList<inherit, addressesOrRanges>;
  static constexpr Calls<Record> calls{"pki_IPAddressChoice", pki_IPAddressChoice_new, pki_IPAddressChoice_d,
    pki_IPAddressChoice_e, pki_IPAddressChoice_clone, pki_IPAddressChoice_free};
};

/// IPAddressFamily
class IPAddressFamily : public View<::pki_IPAddressFamily> {
 public:
  using View::View;
  Octets addressFamily() const noexcept { return see<asn1::OctetString>(&Record::addressFamily); }
  pki::IPAddressChoice ipAddressChoice() const noexcept { return see<pki::IPAddressChoice>(&Record::ipAddressChoice); }
  using Fields = FieldList<
    Field<"addressFamily", asn1::OctetString, &IPAddressFamily::addressFamily, &Record::addressFamily>,
    Field<"ipAddressChoice", pki::IPAddressChoice, &IPAddressFamily::ipAddressChoice, &Record::ipAddressChoice>>;
  static constexpr Calls<Record> calls{"pki_IPAddressFamily", pki_IPAddressFamily_new, pki_IPAddressFamily_d,
    pki_IPAddressFamily_e, pki_IPAddressFamily_clone, pki_IPAddressFamily_free};
};

/// IPAddrBlocks
class IPAddrBlocks : public List<pki::IPAddressFamily> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_IPAddrBlocks", nullptr, pki_IPAddrBlocks_d,
    pki_IPAddrBlocks_e, pki_IPAddrBlocks_clone, pki_IPAddrBlocks_free};
};

/// InhibitAnyPolicy
class InhibitAnyPolicy : public Number {
 public:
  using Number::Number;
  static constexpr Calls<Record> calls{"pki_InhibitAnyPolicy", nullptr, pki_InhibitAnyPolicy_d,
    pki_InhibitAnyPolicy_e, pki_InhibitAnyPolicy_clone, pki_InhibitAnyPolicy_free};
};

/// InvalidityDate
class InvalidityDate : public TimeText<24> {
 public:
  using TimeText::TimeText;
  static constexpr Calls<Record> calls{"pki_InvalidityDate", nullptr, pki_InvalidityDate_d,
    pki_InvalidityDate_e, pki_InvalidityDate_clone, pki_InvalidityDate_free};
};

/// Iso4217CurrencyCode
class Iso4217CurrencyCode : public Choice<Iso4217CurrencyCode, ::pki_Iso4217CurrencyCode> {
 public:
  using Choice::Choice;
  struct alphabetic : Alternative<"alphabetic", Iso4217CurrencyCode, 19, asn1::PrintableString> {};
  struct numeric : Alternative<"numeric", Iso4217CurrencyCode, 2, asn1::Integer> {};
  using Alternatives = AlternativeList<alphabetic, numeric>;
  static constexpr Calls<Record> calls{"pki_Iso4217CurrencyCode", pki_Iso4217CurrencyCode_new, pki_Iso4217CurrencyCode_d,
    pki_Iso4217CurrencyCode_e, pki_Iso4217CurrencyCode_clone, pki_Iso4217CurrencyCode_free};
};

/// IssuingDistributionPoint
class IssuingDistributionPoint : public View<::pki_IssuingDistributionPoint> {
 public:
  using View::View;
  std::optional<pki::DistributionPointName> distributionPoint() const noexcept { return see_optional<pki::DistributionPointName>(&Record::distributionPoint); }
  bool onlyContainsUserCerts() const noexcept { return at(&Record::onlyContainsUserCerts) != 0; }
  bool onlyContainsCACerts() const noexcept { return at(&Record::onlyContainsCACerts) != 0; }
  std::optional<Bits> onlySomeReasons() const noexcept { return see_optional<asn1::BitString>(&Record::onlySomeReasons); }
  bool indirectCRL() const noexcept { return at(&Record::indirectCRL) != 0; }
  bool onlyContainsAttributeCerts() const noexcept { return at(&Record::onlyContainsAttributeCerts) != 0; }
  using Fields = FieldList<
    Field<"distributionPoint", pki::DistributionPointName, &IssuingDistributionPoint::distributionPoint, &Record::distributionPoint>,
    Field<"onlyContainsUserCerts", bool, &IssuingDistributionPoint::onlyContainsUserCerts, &Record::onlyContainsUserCerts>,
    Field<"onlyContainsCACerts", bool, &IssuingDistributionPoint::onlyContainsCACerts, &Record::onlyContainsCACerts>,
    Field<"onlySomeReasons", asn1::BitString, &IssuingDistributionPoint::onlySomeReasons, &Record::onlySomeReasons>,
    Field<"indirectCRL", bool, &IssuingDistributionPoint::indirectCRL, &Record::indirectCRL>,
    Field<"onlyContainsAttributeCerts", bool, &IssuingDistributionPoint::onlyContainsAttributeCerts, &Record::onlyContainsAttributeCerts>>;
  static constexpr Calls<Record> calls{"pki_IssuingDistributionPoint", pki_IssuingDistributionPoint_new, pki_IssuingDistributionPoint_d,
    pki_IssuingDistributionPoint_e, pki_IssuingDistributionPoint_clone, pki_IssuingDistributionPoint_free};
};

/// KeyUsage
class KeyUsage : public Bits {
 public:
  using Bits::Bits;
  static constexpr Calls<Record> calls{"pki_KeyUsage", nullptr, pki_KeyUsage_d,
    pki_KeyUsage_e, pki_KeyUsage_clone, pki_KeyUsage_free};
};

/// LogotypeDetails
class LogotypeDetails : public View<::LogotypeDetails> {
 public:
  using View::View;
  std::string_view mediaType() const noexcept { return see<asn1::IA5String>(&Record::mediaType); }
  List<pki::HashAlgAndValue> logotypeHash() const noexcept { return see<List<pki::HashAlgAndValue>>(&Record::logotypeHash); }
  List<asn1::IA5String> logotypeURI() const noexcept { return see<List<asn1::IA5String>>(&Record::logotypeURI); }
  using Fields = FieldList<
    Field<"mediaType", asn1::IA5String, &LogotypeDetails::mediaType, &Record::mediaType>,
    Field<"logotypeHash", List<pki::HashAlgAndValue>, &LogotypeDetails::logotypeHash, &Record::logotypeHash>,
    Field<"logotypeURI", List<asn1::IA5String>, &LogotypeDetails::logotypeURI, &Record::logotypeURI>>;
  static constexpr Calls<Record> calls{"pki_LogotypeDetails", pki_LogotypeDetails_new, pki_LogotypeDetails_d,
    pki_LogotypeDetails_e, pki_LogotypeDetails_clone, pki_LogotypeDetails_free};
};

/// LogotypeAudioInfo
class LogotypeAudioInfo : public View<::LogotypeAudioInfo> {
 public:
  using View::View;
  Number fileSize() const noexcept { return see<asn1::Integer>(&Record::fileSize); }
  Number playTime() const noexcept { return see<asn1::Integer>(&Record::playTime); }
  Number channels() const noexcept { return see<asn1::Integer>(&Record::channels); }
  std::optional<Number> sampleRate() const noexcept { return see_optional<asn1::Integer>(&Record::sampleRate); }
  std::optional<std::string_view> language() const noexcept { return see_optional<asn1::IA5String>(&Record::language); }
  using Fields = FieldList<
    Field<"fileSize", asn1::Integer, &LogotypeAudioInfo::fileSize, &Record::fileSize>,
    Field<"playTime", asn1::Integer, &LogotypeAudioInfo::playTime, &Record::playTime>,
    Field<"channels", asn1::Integer, &LogotypeAudioInfo::channels, &Record::channels>,
    Field<"sampleRate", asn1::Integer, &LogotypeAudioInfo::sampleRate, &Record::sampleRate>,
    Field<"language", asn1::IA5String, &LogotypeAudioInfo::language, &Record::language>>;
  static constexpr Calls<Record> calls{"pki_LogotypeAudioInfo", pki_LogotypeAudioInfo_new, pki_LogotypeAudioInfo_d,
    pki_LogotypeAudioInfo_e, pki_LogotypeAudioInfo_clone, pki_LogotypeAudioInfo_free};
};

/// LogotypeAudio
class LogotypeAudio : public View<::LogotypeAudio> {
 public:
  using View::View;
  pki::LogotypeDetails audioDetails() const noexcept { return see<pki::LogotypeDetails>(&Record::audioDetails); }
  std::optional<pki::LogotypeAudioInfo> audioInfo() const noexcept { return see_optional<pki::LogotypeAudioInfo>(&Record::audioInfo); }
  using Fields = FieldList<
    Field<"audioDetails", pki::LogotypeDetails, &LogotypeAudio::audioDetails, &Record::audioDetails>,
    Field<"audioInfo", pki::LogotypeAudioInfo, &LogotypeAudio::audioInfo, &Record::audioInfo>>;
  static constexpr Calls<Record> calls{"pki_LogotypeAudio", pki_LogotypeAudio_new, pki_LogotypeAudio_d,
    pki_LogotypeAudio_e, pki_LogotypeAudio_clone, pki_LogotypeAudio_free};
};

/// LogotypeImageResolution
class LogotypeImageResolution : public Choice<LogotypeImageResolution, ::LogotypeImageResolution> {
 public:
  using Choice::Choice;
  struct numBits : Alternative<"numBits", LogotypeImageResolution, 1, asn1::Integer> {};
  struct tableSize : Alternative<"tableSize", LogotypeImageResolution, 2, asn1::Integer> {};
  using Alternatives = AlternativeList<numBits, tableSize>;
  static constexpr Calls<Record> calls{"pki_LogotypeImageResolution", pki_LogotypeImageResolution_new, pki_LogotypeImageResolution_d,
    pki_LogotypeImageResolution_e, pki_LogotypeImageResolution_clone, pki_LogotypeImageResolution_free};
};

/// LogotypeImageInfo
class LogotypeImageInfo : public View<::LogotypeImageInfo> {
 public:
  using View::View;
  std::optional<Number> type() const noexcept { return see_optional<asn1::Integer>(&Record::type); }
  Number fileSize() const noexcept { return see<asn1::Integer>(&Record::fileSize); }
  Number xSize() const noexcept { return see<asn1::Integer>(&Record::xSize); }
  Number ySize() const noexcept { return see<asn1::Integer>(&Record::ySize); }
  std::optional<pki::LogotypeImageResolution> resolution() const noexcept { return see_optional<pki::LogotypeImageResolution>(&Record::resolution); }
  std::optional<std::string_view> language() const noexcept { return see_optional<asn1::IA5String>(&Record::language); }
  using Fields = FieldList<
    Field<"type", asn1::Integer, &LogotypeImageInfo::type, &Record::type>,
    Field<"fileSize", asn1::Integer, &LogotypeImageInfo::fileSize, &Record::fileSize>,
    Field<"xSize", asn1::Integer, &LogotypeImageInfo::xSize, &Record::xSize>,
    Field<"ySize", asn1::Integer, &LogotypeImageInfo::ySize, &Record::ySize>,
    Field<"resolution", pki::LogotypeImageResolution, &LogotypeImageInfo::resolution, &Record::resolution>,
    Field<"language", asn1::IA5String, &LogotypeImageInfo::language, &Record::language>>;
  static constexpr Calls<Record> calls{"pki_LogotypeImageInfo", pki_LogotypeImageInfo_new, pki_LogotypeImageInfo_d,
    pki_LogotypeImageInfo_e, pki_LogotypeImageInfo_clone, pki_LogotypeImageInfo_free};
};

/// LogotypeImage
class LogotypeImage : public View<::LogotypeImage> {
 public:
  using View::View;
  pki::LogotypeDetails imageDetails() const noexcept { return see<pki::LogotypeDetails>(&Record::imageDetails); }
  std::optional<pki::LogotypeImageInfo> imageInfo() const noexcept { return see_optional<pki::LogotypeImageInfo>(&Record::imageInfo); }
  using Fields = FieldList<
    Field<"imageDetails", pki::LogotypeDetails, &LogotypeImage::imageDetails, &Record::imageDetails>,
    Field<"imageInfo", pki::LogotypeImageInfo, &LogotypeImage::imageInfo, &Record::imageInfo>>;
  static constexpr Calls<Record> calls{"pki_LogotypeImage", pki_LogotypeImage_new, pki_LogotypeImage_d,
    pki_LogotypeImage_e, pki_LogotypeImage_clone, pki_LogotypeImage_free};
};

/// LogotypeData
class LogotypeData : public View<::LogotypeData> {
 public:
  using View::View;
  List<pki::LogotypeImage> image() const noexcept { return see<List<pki::LogotypeImage>>(&Record::image); }
  List<pki::LogotypeAudio> audio() const noexcept { return see<List<pki::LogotypeAudio>>(&Record::audio); }
  using Fields = FieldList<
    Field<"image", List<pki::LogotypeImage>, &LogotypeData::image, &Record::image>,
    Field<"audio", List<pki::LogotypeAudio>, &LogotypeData::audio, &Record::audio>>;
  static constexpr Calls<Record> calls{"pki_LogotypeData", pki_LogotypeData_new, pki_LogotypeData_d,
    pki_LogotypeData_e, pki_LogotypeData_clone, pki_LogotypeData_free};
};

/// LogotypeReference
class LogotypeReference : public View<::LogotypeReference> {
 public:
  using View::View;
  List<pki::HashAlgAndValue> refStructHash() const noexcept { return see<List<pki::HashAlgAndValue>>(&Record::refStructHash); }
  List<asn1::IA5String> refStructURI() const noexcept { return see<List<asn1::IA5String>>(&Record::refStructURI); }
  using Fields = FieldList<
    Field<"refStructHash", List<pki::HashAlgAndValue>, &LogotypeReference::refStructHash, &Record::refStructHash>,
    Field<"refStructURI", List<asn1::IA5String>, &LogotypeReference::refStructURI, &Record::refStructURI>>;
  static constexpr Calls<Record> calls{"pki_LogotypeReference", pki_LogotypeReference_new, pki_LogotypeReference_d,
    pki_LogotypeReference_e, pki_LogotypeReference_clone, pki_LogotypeReference_free};
};

/// LogotypeInfo
class LogotypeInfo : public Choice<LogotypeInfo, ::LogotypeInfo> {
 public:
  using Choice::Choice;
  struct direct : Alternative<"direct", LogotypeInfo, 0, pki::LogotypeData> {};
  struct indirect : Alternative<"indirect", LogotypeInfo, 1, pki::LogotypeReference> {};
  using Alternatives = AlternativeList<direct, indirect>;
  static constexpr Calls<Record> calls{"pki_LogotypeInfo", pki_LogotypeInfo_new, pki_LogotypeInfo_d,
    pki_LogotypeInfo_e, pki_LogotypeInfo_clone, pki_LogotypeInfo_free};
};

/// OtherLogotypeInfo
class OtherLogotypeInfo : public View<::OtherLogotypeInfo> {
 public:
  using View::View;
  Identifier logotypeType() const noexcept { return see<asn1::ObjId>(&Record::logotypeType); }
  pki::LogotypeInfo info() const noexcept { return see<pki::LogotypeInfo>(&Record::info); }
  using Fields = FieldList<
    Field<"logotypeType", asn1::ObjId, &OtherLogotypeInfo::logotypeType, &Record::logotypeType>,
    Field<"info", pki::LogotypeInfo, &OtherLogotypeInfo::info, &Record::info>>;
  static constexpr Calls<Record> calls{"pki_OtherLogotypeInfo", pki_OtherLogotypeInfo_new, pki_OtherLogotypeInfo_d,
    pki_OtherLogotypeInfo_e, pki_OtherLogotypeInfo_clone, pki_OtherLogotypeInfo_free};
};

/// LogotypeExtn
class LogotypeExtn : public View<::LogotypeExtn> {
 public:
  using View::View;
  List<pki::LogotypeInfo> communityLogos() const noexcept { return see<List<pki::LogotypeInfo>>(&Record::communityLogos); }
  std::optional<pki::LogotypeInfo> issuerLogo() const noexcept { return see_optional<pki::LogotypeInfo>(&Record::issuerLogo); }
  std::optional<pki::LogotypeInfo> subjectLogo() const noexcept { return see_optional<pki::LogotypeInfo>(&Record::subjectLogo); }
  List<pki::OtherLogotypeInfo> otherLogos() const noexcept { return see<List<pki::OtherLogotypeInfo>>(&Record::otherLogos); }
  using Fields = FieldList<
    Field<"communityLogos", List<pki::LogotypeInfo>, &LogotypeExtn::communityLogos, &Record::communityLogos>,
    Field<"issuerLogo", pki::LogotypeInfo, &LogotypeExtn::issuerLogo, &Record::issuerLogo>,
    Field<"subjectLogo", pki::LogotypeInfo, &LogotypeExtn::subjectLogo, &Record::subjectLogo>,
    Field<"otherLogos", List<pki::OtherLogotypeInfo>, &LogotypeExtn::otherLogos, &Record::otherLogos>>;
  static constexpr Calls<Record> calls{"pki_LogotypeExtn", pki_LogotypeExtn_new, pki_LogotypeExtn_d,
    pki_LogotypeExtn_e, pki_LogotypeExtn_clone, pki_LogotypeExtn_free};
};

/// MacData
class MacData : public View<::MacData> {
 public:
  using View::View;
  pki::DigestInfo mac() const noexcept { return see<pki::DigestInfo>(&Record::mac); }
  Octets macSalt() const noexcept { return see<asn1::OctetString>(&Record::macSalt); }
  std::optional<Number> iterations() const noexcept { return see_optional<asn1::Integer>(&Record::iterations); }
  using Fields = FieldList<
    Field<"mac", pki::DigestInfo, &MacData::mac, &Record::mac>,
    Field<"macSalt", asn1::OctetString, &MacData::macSalt, &Record::macSalt>,
    Field<"iterations", asn1::Integer, &MacData::iterations, &Record::iterations>>;
  static constexpr Calls<Record> calls{"pki_MacData", pki_MacData_new, pki_MacData_d,
    pki_MacData_e, pki_MacData_clone, pki_MacData_free};
};

/// MonetaryValue
class MonetaryValue : public View<::pki_MonetaryValue> {
 public:
  using View::View;
  pki::Iso4217CurrencyCode currency() const noexcept { return see<pki::Iso4217CurrencyCode>(&Record::currency); }
  Number amount() const noexcept { return see<asn1::Integer>(&Record::amount); }
  Number exponent() const noexcept { return see<asn1::Integer>(&Record::exponent); }
  using Fields = FieldList<
    Field<"currency", pki::Iso4217CurrencyCode, &MonetaryValue::currency, &Record::currency>,
    Field<"amount", asn1::Integer, &MonetaryValue::amount, &Record::amount>,
    Field<"exponent", asn1::Integer, &MonetaryValue::exponent, &Record::exponent>>;
  static constexpr Calls<Record> calls{"pki_MonetaryValue", pki_MonetaryValue_new, pki_MonetaryValue_d,
    pki_MonetaryValue_e, pki_MonetaryValue_clone, pki_MonetaryValue_free};
};

/// NameConstraints
class NameConstraints : public View<::NameConstraints> {
 public:
  using View::View;
  List<pki::GeneralSubtree> permittedSubtrees() const noexcept { return see<List<pki::GeneralSubtree>>(&Record::permittedSubtrees); }
  List<pki::GeneralSubtree> excludedSubtrees() const noexcept { return see<List<pki::GeneralSubtree>>(&Record::excludedSubtrees); }
  using Fields = FieldList<
    Field<"permittedSubtrees", List<pki::GeneralSubtree>, &NameConstraints::permittedSubtrees, &Record::permittedSubtrees>,
    Field<"excludedSubtrees", List<pki::GeneralSubtree>, &NameConstraints::excludedSubtrees, &Record::excludedSubtrees>>;
  static constexpr Calls<Record> calls{"pki_NameConstraints", pki_NameConstraints_new, pki_NameConstraints_d,
    pki_NameConstraints_e, pki_NameConstraints_clone, pki_NameConstraints_free};
};

/// Nonce
class Nonce : public OctetText {
 public:
  using OctetText::OctetText;
  static constexpr Calls<Record> calls{"pki_Nonce", nullptr, pki_Nonce_d,
    pki_Nonce_e, pki_Nonce_clone, pki_Nonce_free};
};

/// NoticeReference
class NoticeReference : public View<::pki_NoticeReference> {
 public:
  using View::View;
  pki::DisplayText organization() const noexcept { return see<pki::DisplayText>(&Record::organization); }
  List<asn1::Integer> noticeNumbers() const noexcept { return see<List<asn1::Integer>>(&Record::noticeNumbers); }
  using Fields = FieldList<
    Field<"organization", pki::DisplayText, &NoticeReference::organization, &Record::organization>,
    Field<"noticeNumbers", List<asn1::Integer>, &NoticeReference::noticeNumbers, &Record::noticeNumbers>>;
  static constexpr Calls<Record> calls{"pki_NoticeReference", pki_NoticeReference_new, pki_NoticeReference_d,
    pki_NoticeReference_e, pki_NoticeReference_clone, pki_NoticeReference_free};
};

/// Request
class Request : public View<::Request> {
 public:
  using View::View;
  pki::CertID reqCert() const noexcept { return see<pki::CertID>(&Record::reqCert); }
  pki::Extensions singleRequestExtensions() const noexcept { return see<pki::Extensions>(&Record::singleRequestExtensions); }
  using Fields = FieldList<
    Field<"reqCert", pki::CertID, &Request::reqCert, &Record::reqCert>,
    Field<"singleRequestExtensions", pki::Extensions, &Request::singleRequestExtensions, &Record::singleRequestExtensions>>;
  static constexpr Calls<Record> calls{"pki_Request", pki_Request_new, pki_Request_d,
    pki_Request_e, pki_Request_clone, pki_Request_free};
};

/// TBSRequest
class TBSRequest : public View<::TBSRequest> {
 public:
  using View::View;
  std::optional<Number> version() const noexcept { return see_optional<asn1::Integer>(&Record::version); }
  std::optional<pki::GeneralName> requestorName() const noexcept { return see_optional<pki::GeneralName>(&Record::requestorName); }
  List<pki::Request> requestList() const noexcept { return see<List<pki::Request>>(&Record::requestList); }
  pki::Extensions requestExtensions() const noexcept { return see<pki::Extensions>(&Record::requestExtensions); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &TBSRequest::version, &Record::version>,
    Field<"requestorName", pki::GeneralName, &TBSRequest::requestorName, &Record::requestorName>,
    Field<"requestList", List<pki::Request>, &TBSRequest::requestList, &Record::requestList>,
    Field<"requestExtensions", pki::Extensions, &TBSRequest::requestExtensions, &Record::requestExtensions>>;
  static constexpr Calls<Record> calls{"pki_TBSRequest", pki_TBSRequest_new, pki_TBSRequest_d,
    pki_TBSRequest_e, pki_TBSRequest_clone, pki_TBSRequest_free};
};

/// Signature
class OCSPSignature : public View<::OCSPSignature> {
 public:
  using View::View;
  pki::AlgId signatureAlgorithm() const noexcept { return see<pki::AlgId>(&Record::signatureAlgorithm); }
  Bits signature() const noexcept { return see<asn1::BitString>(&Record::signature); }
  List<pki::Certificate> certs() const noexcept { return see<List<pki::Certificate>>(&Record::certs); }
  using Fields = FieldList<
    Field<"signatureAlgorithm", pki::AlgId, &OCSPSignature::signatureAlgorithm, &Record::signatureAlgorithm>,
    Field<"signature", asn1::BitString, &OCSPSignature::signature, &Record::signature>,
    Field<"certs", List<pki::Certificate>, &OCSPSignature::certs, &Record::certs>>;
  static constexpr Calls<Record> calls{"pki_OCSPSignature", pki_OCSPSignature_new, pki_OCSPSignature_d,
    pki_OCSPSignature_e, pki_OCSPSignature_clone, pki_OCSPSignature_free};
};

/// OCSPRequest
class OCSPRequest : public View<::OCSPRequest> {
 public:
  using View::View;
  pki::TBSRequest tbsRequest() const noexcept { return see<pki::TBSRequest>(&Record::tbsRequest); }
  std::optional<pki::OCSPSignature> optionalSignature() const noexcept { return see_optional<pki::OCSPSignature>(&Record::optionalSignature); }
  using Fields = FieldList<
    Field<"tbsRequest", pki::TBSRequest, &OCSPRequest::tbsRequest, &Record::tbsRequest>,
    Field<"optionalSignature", pki::OCSPSignature, &OCSPRequest::optionalSignature, &Record::optionalSignature>>;
  static constexpr Calls<Record> calls{"pki_OCSPRequest", pki_OCSPRequest_new, pki_OCSPRequest_d,
    pki_OCSPRequest_e, pki_OCSPRequest_clone, pki_OCSPRequest_free};
};

/// ResponseBytes
class ResponseBytes : public View<::ResponseBytes> {
 public:
  using View::View;
  Identifier responseType() const noexcept { return see<asn1::ObjId>(&Record::responseType); }
  Octets response() const noexcept { return see<asn1::OctetString>(&Record::response); }
  using Fields = FieldList<
    Field<"responseType", asn1::ObjId, &ResponseBytes::responseType, &Record::responseType>,
    Field<"response", asn1::OctetString, &ResponseBytes::response, &Record::response>>;
  static constexpr Calls<Record> calls{"pki_ResponseBytes", pki_ResponseBytes_new, pki_ResponseBytes_d,
    pki_ResponseBytes_e, pki_ResponseBytes_clone, pki_ResponseBytes_free};
};

/// OCSPResponse
class OCSPResponse : public View<::OCSPResponse> {
 public:
  using View::View;
  std::uint32_t responseStatus() const noexcept { return at(&Record::responseStatus); }
  std::optional<pki::ResponseBytes> responseBytes() const noexcept { return see_optional<pki::ResponseBytes>(&Record::responseBytes); }
  using Fields = FieldList<
    Field<"responseStatus", std::uint32_t, &OCSPResponse::responseStatus, &Record::responseStatus>,
    Field<"responseBytes", pki::ResponseBytes, &OCSPResponse::responseBytes, &Record::responseBytes>>;
  static constexpr Calls<Record> calls{"pki_OCSPResponse", pki_OCSPResponse_new, pki_OCSPResponse_d,
    pki_OCSPResponse_e, pki_OCSPResponse_clone, pki_OCSPResponse_free};
};

/// OneAsymmetricKey
class OneAsymmetricKey : public View<::pki_OneAsymmetricKey> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  pki::AlgId privateKeyAlgorithm() const noexcept { return see<pki::AlgId>(&Record::privateKeyAlgorithm); }
  Octets privateKey() const noexcept { return see<asn1::OctetString>(&Record::privateKey); }
  pki::Attributes attributes() const noexcept { return see<pki::Attributes>(&Record::attributes); }
  std::optional<Bits> publicKey() const noexcept { return see_optional<asn1::BitString>(&Record::publicKey); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &OneAsymmetricKey::version, &Record::version>,
    Field<"privateKeyAlgorithm", pki::AlgId, &OneAsymmetricKey::privateKeyAlgorithm, &Record::privateKeyAlgorithm>,
    Field<"privateKey", asn1::OctetString, &OneAsymmetricKey::privateKey, &Record::privateKey>,
    Field<"attributes", pki::Attributes, &OneAsymmetricKey::attributes, &Record::attributes>,
    Field<"publicKey", asn1::BitString, &OneAsymmetricKey::publicKey, &Record::publicKey>>;
  static constexpr Calls<Record> calls{"pki_OneAsymmetricKey", pki_OneAsymmetricKey_new, pki_OneAsymmetricKey_d,
    pki_OneAsymmetricKey_e, pki_OneAsymmetricKey_clone, pki_OneAsymmetricKey_free};
};

/// OtherPrimeInfo
class OtherPrimeInfo : public View<::pki_OtherPrimeInfo> {
 public:
  using View::View;
  Number prime() const noexcept { return see<asn1::Integer>(&Record::prime); }
  Number exponent() const noexcept { return see<asn1::Integer>(&Record::exponent); }
  Number coefficient() const noexcept { return see<asn1::Integer>(&Record::coefficient); }
  using Fields = FieldList<
    Field<"prime", asn1::Integer, &OtherPrimeInfo::prime, &Record::prime>,
    Field<"exponent", asn1::Integer, &OtherPrimeInfo::exponent, &Record::exponent>,
    Field<"coefficient", asn1::Integer, &OtherPrimeInfo::coefficient, &Record::coefficient>>;
  static constexpr Calls<Record> calls{"pki_OtherPrimeInfo", pki_OtherPrimeInfo_new, pki_OtherPrimeInfo_d,
    pki_OtherPrimeInfo_e, pki_OtherPrimeInfo_clone, pki_OtherPrimeInfo_free};
};

/// PFX
class PFX : public View<::pki_PFX> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  pki::ContentInfo authSafe() const noexcept { return see<pki::ContentInfo>(&Record::authSafe); }
  std::optional<pki::MacData> macData() const noexcept { return see_optional<pki::MacData>(&Record::macData); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &PFX::version, &Record::version>,
    Field<"authSafe", pki::ContentInfo, &PFX::authSafe, &Record::authSafe>,
    Field<"macData", pki::MacData, &PFX::macData, &Record::macData>>;
  static constexpr Calls<Record> calls{"pki_PFX", pki_PFX_new, pki_PFX_d,
    pki_PFX_e, pki_PFX_clone, pki_PFX_free};
};

/// pkcs-12PbeParams
class PbeParams : public View<::PbeParams> {
 public:
  using View::View;
  Octets salt() const noexcept { return see<asn1::OctetString>(&Record::salt); }
  Number iterations() const noexcept { return see<asn1::Integer>(&Record::iterations); }
  using Fields = FieldList<
    Field<"salt", asn1::OctetString, &PbeParams::salt, &Record::salt>,
    Field<"iterations", asn1::Integer, &PbeParams::iterations, &Record::iterations>>;
  static constexpr Calls<Record> calls{"pki_PbeParams", pki_PbeParams_new, pki_PbeParams_d,
    pki_PbeParams_e, pki_PbeParams_clone, pki_PbeParams_free};
};

/// PdsLocation
class PdsLocation : public View<::pki_PdsLocation> {
 public:
  using View::View;
  std::string_view url() const noexcept { return see<asn1::IA5String>(&Record::url); }
  std::string_view language() const noexcept { return see<asn1::PrintableString>(&Record::language); }
  using Fields = FieldList<
    Field<"url", asn1::IA5String, &PdsLocation::url, &Record::url>,
    Field<"language", asn1::PrintableString, &PdsLocation::language, &Record::language>>;
  static constexpr Calls<Record> calls{"pki_PdsLocation", pki_PdsLocation_new, pki_PdsLocation_d,
    pki_PdsLocation_e, pki_PdsLocation_clone, pki_PdsLocation_free};
};

/// PdsLocations
class PdsLocations : public List<pki::PdsLocation> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_PdsLocations", nullptr, pki_PdsLocations_d,
    pki_PdsLocations_e, pki_PdsLocations_clone, pki_PdsLocations_free};
};

/// PolicyConstraints
class PolicyConstraints : public View<::PolicyConstraints> {
 public:
  using View::View;
  std::optional<Number> requireExplicitPolicy() const noexcept { return see_optional<asn1::Integer>(&Record::requireExplicitPolicy); }
  std::optional<Number> inhibitPolicyMapping() const noexcept { return see_optional<asn1::Integer>(&Record::inhibitPolicyMapping); }
  using Fields = FieldList<
    Field<"requireExplicitPolicy", asn1::Integer, &PolicyConstraints::requireExplicitPolicy, &Record::requireExplicitPolicy>,
    Field<"inhibitPolicyMapping", asn1::Integer, &PolicyConstraints::inhibitPolicyMapping, &Record::inhibitPolicyMapping>>;
  static constexpr Calls<Record> calls{"pki_PolicyConstraints", pki_PolicyConstraints_new, pki_PolicyConstraints_d,
    pki_PolicyConstraints_e, pki_PolicyConstraints_clone, pki_PolicyConstraints_free};
};

/// PolicyMapping
class PolicyMapping : public View<::PolicyMapping> {
 public:
  using View::View;
  Identifier issuerDomainPolicy() const noexcept { return see<asn1::ObjId>(&Record::issuerDomainPolicy); }
  Identifier subjectDomainPolicy() const noexcept { return see<asn1::ObjId>(&Record::subjectDomainPolicy); }
  using Fields = FieldList<
    Field<"issuerDomainPolicy", asn1::ObjId, &PolicyMapping::issuerDomainPolicy, &Record::issuerDomainPolicy>,
    Field<"subjectDomainPolicy", asn1::ObjId, &PolicyMapping::subjectDomainPolicy, &Record::subjectDomainPolicy>>;
  static constexpr Calls<Record> calls{"pki_PolicyMapping", pki_PolicyMapping_new, pki_PolicyMapping_d,
    pki_PolicyMapping_e, pki_PolicyMapping_clone, pki_PolicyMapping_free};
};

/// PolicyMappings
class PolicyMappings : public List<pki::PolicyMapping> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_PolicyMappings", nullptr, pki_PolicyMappings_d,
    pki_PolicyMappings_e, pki_PolicyMappings_clone, pki_PolicyMappings_free};
};

/// PreferredSignatureAlgorithm
class PreferredSignatureAlgorithm : public View<::pki_PreferredSignatureAlgorithm> {
 public:
  using View::View;
  pki::AlgId sigIdentifier() const noexcept { return see<pki::AlgId>(&Record::sigIdentifier); }
  std::optional<pki::AlgId> pubKeyAlgIdentifier() const noexcept { return see_optional<pki::AlgId>(&Record::pubKeyAlgIdentifier); }
  using Fields = FieldList<
    Field<"sigIdentifier", pki::AlgId, &PreferredSignatureAlgorithm::sigIdentifier, &Record::sigIdentifier>,
    Field<"pubKeyAlgIdentifier", pki::AlgId, &PreferredSignatureAlgorithm::pubKeyAlgIdentifier, &Record::pubKeyAlgIdentifier>>;
  static constexpr Calls<Record> calls{"pki_PreferredSignatureAlgorithm", pki_PreferredSignatureAlgorithm_new, pki_PreferredSignatureAlgorithm_d,
    pki_PreferredSignatureAlgorithm_e, pki_PreferredSignatureAlgorithm_clone, pki_PreferredSignatureAlgorithm_free};
};

/// PreferredSignatureAlgorithms
class PreferredSignatureAlgorithms : public List<pki::PreferredSignatureAlgorithm> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_PreferredSignatureAlgorithms", nullptr, pki_PreferredSignatureAlgorithms_d,
    pki_PreferredSignatureAlgorithms_e, pki_PreferredSignatureAlgorithms_clone, pki_PreferredSignatureAlgorithms_free};
};

/// PrivateKeyUsagePeriod
class PrivateKeyUsagePeriod : public View<::pki_PrivateKeyUsagePeriod> {
 public:
  using View::View;
  std::optional<Instant> notBefore() const noexcept { return see_optional<asn1::GeneralizedTime>(&Record::notBefore); }
  std::optional<Instant> notAfter() const noexcept { return see_optional<asn1::GeneralizedTime>(&Record::notAfter); }
  using Fields = FieldList<
    Field<"notBefore", asn1::GeneralizedTime, &PrivateKeyUsagePeriod::notBefore, &Record::notBefore>,
    Field<"notAfter", asn1::GeneralizedTime, &PrivateKeyUsagePeriod::notAfter, &Record::notAfter>>;
  static constexpr Calls<Record> calls{"pki_PrivateKeyUsagePeriod", pki_PrivateKeyUsagePeriod_new, pki_PrivateKeyUsagePeriod_d,
    pki_PrivateKeyUsagePeriod_e, pki_PrivateKeyUsagePeriod_clone, pki_PrivateKeyUsagePeriod_free};
};

/// QCStatement
class QCStatement : public View<::pki_QCStatement> {
 public:
  using View::View;
  Identifier statementId() const noexcept { return see<asn1::ObjId>(&Record::statementId); }
  std::optional<Octets> statementInfo() const noexcept { return see_optional<asn1::Any>(&Record::statementInfo); }
  using Fields = FieldList<
    Field<"statementId", asn1::ObjId, &QCStatement::statementId, &Record::statementId>,
    Field<"statementInfo", asn1::Any, &QCStatement::statementInfo, &Record::statementInfo>>;
  static constexpr Calls<Record> calls{"pki_QCStatement", pki_QCStatement_new, pki_QCStatement_d,
    pki_QCStatement_e, pki_QCStatement_clone, pki_QCStatement_free};
};

/// QCStatements
class QCStatements : public List<pki::QCStatement> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_QCStatements", nullptr, pki_QCStatements_d,
    pki_QCStatements_e, pki_QCStatements_clone, pki_QCStatements_free};
};

/// QcCClegislation
class QcCClegislation : public List<asn1::PrintableString> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_QcCClegislation", nullptr, pki_QcCClegislation_d,
    pki_QcCClegislation_e, pki_QcCClegislation_clone, pki_QcCClegislation_free};
};

/// QcEuRetentionPeriod
class QcEuRetentionPeriod : public Number {
 public:
  using Number::Number;
  static constexpr Calls<Record> calls{"pki_QcEuRetentionPeriod", nullptr, pki_QcEuRetentionPeriod_d,
    pki_QcEuRetentionPeriod_e, pki_QcEuRetentionPeriod_clone, pki_QcEuRetentionPeriod_free};
};

/// QcType
class QcType : public List<asn1::ObjId> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_QcType", nullptr, pki_QcType_d,
    pki_QcType_e, pki_QcType_clone, pki_QcType_free};
};

/// RSAES-OAEP-params
class RSAES_OAEP_params : public View<::pki_RSAES_OAEP_params> {
 public:
  using View::View;
  std::optional<pki::AlgId> hashFunc() const noexcept { return see_optional<pki::AlgId>(&Record::hashFunc); }
  std::optional<pki::AlgId> maskGenFunc() const noexcept { return see_optional<pki::AlgId>(&Record::maskGenFunc); }
  std::optional<pki::AlgId> pSourceFunc() const noexcept { return see_optional<pki::AlgId>(&Record::pSourceFunc); }
  using Fields = FieldList<
    Field<"hashFunc", pki::AlgId, &RSAES_OAEP_params::hashFunc, &Record::hashFunc>,
    Field<"maskGenFunc", pki::AlgId, &RSAES_OAEP_params::maskGenFunc, &Record::maskGenFunc>,
    Field<"pSourceFunc", pki::AlgId, &RSAES_OAEP_params::pSourceFunc, &Record::pSourceFunc>>;
  static constexpr Calls<Record> calls{"pki_RSAES_OAEP_params", pki_RSAES_OAEP_params_new, pki_RSAES_OAEP_params_d,
    pki_RSAES_OAEP_params_e, pki_RSAES_OAEP_params_clone, pki_RSAES_OAEP_params_free};
};

/// RSAPrivateKey
class RSAPrivateKey : public View<::pki_RSAPrivateKey> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  Number modulus() const noexcept { return see<asn1::Integer>(&Record::modulus); }
  Number publicExponent() const noexcept { return see<asn1::Integer>(&Record::publicExponent); }
  Number privateExponent() const noexcept { return see<asn1::Integer>(&Record::privateExponent); }
  Number prime1() const noexcept { return see<asn1::Integer>(&Record::prime1); }
  Number prime2() const noexcept { return see<asn1::Integer>(&Record::prime2); }
  Number exponent1() const noexcept { return see<asn1::Integer>(&Record::exponent1); }
  Number exponent2() const noexcept { return see<asn1::Integer>(&Record::exponent2); }
  Number coefficient() const noexcept { return see<asn1::Integer>(&Record::coefficient); }
  List<pki::OtherPrimeInfo> otherPrimeInfos() const noexcept { return see<List<pki::OtherPrimeInfo>>(&Record::otherPrimeInfos); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &RSAPrivateKey::version, &Record::version>,
    Field<"modulus", asn1::Integer, &RSAPrivateKey::modulus, &Record::modulus>,
    Field<"publicExponent", asn1::Integer, &RSAPrivateKey::publicExponent, &Record::publicExponent>,
    Field<"privateExponent", asn1::Integer, &RSAPrivateKey::privateExponent, &Record::privateExponent>,
    Field<"prime1", asn1::Integer, &RSAPrivateKey::prime1, &Record::prime1>,
    Field<"prime2", asn1::Integer, &RSAPrivateKey::prime2, &Record::prime2>,
    Field<"exponent1", asn1::Integer, &RSAPrivateKey::exponent1, &Record::exponent1>,
    Field<"exponent2", asn1::Integer, &RSAPrivateKey::exponent2, &Record::exponent2>,
    Field<"coefficient", asn1::Integer, &RSAPrivateKey::coefficient, &Record::coefficient>,
    Field<"otherPrimeInfos", List<pki::OtherPrimeInfo>, &RSAPrivateKey::otherPrimeInfos, &Record::otherPrimeInfos>>;
  static constexpr Calls<Record> calls{"pki_RSAPrivateKey", pki_RSAPrivateKey_new, pki_RSAPrivateKey_d,
    pki_RSAPrivateKey_e, pki_RSAPrivateKey_clone, pki_RSAPrivateKey_free};
};

/// RSAPublicKey
class RSAPublicKey : public View<::RSAPublicKey> {
 public:
  using View::View;
  Number modulus() const noexcept { return see<asn1::Integer>(&Record::modulus); }
  Number publicExponent() const noexcept { return see<asn1::Integer>(&Record::publicExponent); }
  using Fields = FieldList<
    Field<"modulus", asn1::Integer, &RSAPublicKey::modulus, &Record::modulus>,
    Field<"publicExponent", asn1::Integer, &RSAPublicKey::publicExponent, &Record::publicExponent>>;
  static constexpr Calls<Record> calls{"pki_RSAPublicKey", pki_RSAPublicKey_new, pki_RSAPublicKey_d,
    pki_RSAPublicKey_e, pki_RSAPublicKey_clone, pki_RSAPublicKey_free};
};

/// RSASSA-PSS-params
class RSASSA_PSS_params : public View<::pki_RSASSA_PSS_params> {
 public:
  using View::View;
  std::optional<pki::AlgId> hashAlgorithm() const noexcept { return see_optional<pki::AlgId>(&Record::hashAlgorithm); }
  std::optional<pki::AlgId> maskGenAlgorithm() const noexcept { return see_optional<pki::AlgId>(&Record::maskGenAlgorithm); }
  std::optional<Number> saltLength() const noexcept { return see_optional<asn1::Integer>(&Record::saltLength); }
  std::optional<Number> trailerField() const noexcept { return see_optional<asn1::Integer>(&Record::trailerField); }
  using Fields = FieldList<
    Field<"hashAlgorithm", pki::AlgId, &RSASSA_PSS_params::hashAlgorithm, &Record::hashAlgorithm>,
    Field<"maskGenAlgorithm", pki::AlgId, &RSASSA_PSS_params::maskGenAlgorithm, &Record::maskGenAlgorithm>,
    Field<"saltLength", asn1::Integer, &RSASSA_PSS_params::saltLength, &Record::saltLength>,
    Field<"trailerField", asn1::Integer, &RSASSA_PSS_params::trailerField, &Record::trailerField>>;
  static constexpr Calls<Record> calls{"pki_RSASSA_PSS_params", pki_RSASSA_PSS_params_new, pki_RSASSA_PSS_params_d,
    pki_RSASSA_PSS_params_e, pki_RSASSA_PSS_params_clone, pki_RSASSA_PSS_params_free};
};

/// SafeBag
class SafeBag : public View<::SafeBag> {
 public:
  using View::View;
  Identifier bagId() const noexcept { return see<asn1::ObjId>(&Record::bagId); }
  Octets bagValue() const noexcept { return see<asn1::Any>(&Record::bagValue); }
  pki::Attributes bagAttributes() const noexcept { return see<pki::Attributes>(&Record::bagAttributes); }
  using Fields = FieldList<
    Field<"bagId", asn1::ObjId, &SafeBag::bagId, &Record::bagId>,
    Field<"bagValue", asn1::Any, &SafeBag::bagValue, &Record::bagValue>,
    Field<"bagAttributes", pki::Attributes, &SafeBag::bagAttributes, &Record::bagAttributes>>;
  static constexpr Calls<Record> calls{"pki_SafeBag", pki_SafeBag_new, pki_SafeBag_d,
    pki_SafeBag_e, pki_SafeBag_clone, pki_SafeBag_free};
};

/// SafeContents
class SafeContents : public List<pki::SafeBag> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_SafeContents", nullptr, pki_SafeContents_d,
    pki_SafeContents_e, pki_SafeContents_clone, pki_SafeContents_free};
};

/// SecretBag
class SecretBag : public View<::SecretBag> {
 public:
  using View::View;
  Identifier secretTypeId() const noexcept { return see<asn1::ObjId>(&Record::secretTypeId); }
  Octets secretValue() const noexcept { return see<asn1::Any>(&Record::secretValue); }
  using Fields = FieldList<
    Field<"secretTypeId", asn1::ObjId, &SecretBag::secretTypeId, &Record::secretTypeId>,
    Field<"secretValue", asn1::Any, &SecretBag::secretValue, &Record::secretValue>>;
  static constexpr Calls<Record> calls{"pki_SecretBag", pki_SecretBag_new, pki_SecretBag_d,
    pki_SecretBag_e, pki_SecretBag_clone, pki_SecretBag_free};
};

/// SemanticsInformation
class SemanticsInformation : public View<::pki_SemanticsInformation> {
 public:
  using View::View;
  std::optional<Identifier> semanticsIdentifier() const noexcept { return see_optional<asn1::ObjId>(&Record::semanticsIdentifier); }
  pki::GeneralNames nameRegistrationAuthorities() const noexcept { return see<pki::GeneralNames>(&Record::nameRegistrationAuthorities); }
  using Fields = FieldList<
    Field<"semanticsIdentifier", asn1::ObjId, &SemanticsInformation::semanticsIdentifier, &Record::semanticsIdentifier>,
    Field<"nameRegistrationAuthorities", pki::GeneralNames, &SemanticsInformation::nameRegistrationAuthorities, &Record::nameRegistrationAuthorities>>;
  static constexpr Calls<Record> calls{"pki_SemanticsInformation", pki_SemanticsInformation_new, pki_SemanticsInformation_d,
    pki_SemanticsInformation_e, pki_SemanticsInformation_clone, pki_SemanticsInformation_free};
};

/// ServiceLocator
class ServiceLocator : public View<::pki_ServiceLocator> {
 public:
  using View::View;
  pki::RDNSequence issuer() const noexcept { return see<pki::RDNSequence>(&Record::issuer); }
  pki::AuthorityInfoAccessSyntax locator() const noexcept { return see<pki::AuthorityInfoAccessSyntax>(&Record::locator); }
  using Fields = FieldList<
    Field<"issuer", pki::RDNSequence, &ServiceLocator::issuer, &Record::issuer>,
    Field<"locator", pki::AuthorityInfoAccessSyntax, &ServiceLocator::locator, &Record::locator>>;
  static constexpr Calls<Record> calls{"pki_ServiceLocator", pki_ServiceLocator_new, pki_ServiceLocator_d,
    pki_ServiceLocator_e, pki_ServiceLocator_clone, pki_ServiceLocator_free};
};

/// SignedCertificateTimestamp (RFC 6962, 3.2)
class SignedCertificateTimestamp : public View<::pki_SignedCertificateTimestamp> {
 public:
  using View::View;
  std::uint8_t version() const noexcept { return at(&Record::version); }
  std::uint8_t hashAlgorithm() const noexcept { return at(&Record::hashAlgorithm); }
  std::uint8_t signatureAlgorithm() const noexcept { return at(&Record::signatureAlgorithm); }
  Octets logID() const noexcept { return *this ? detail::octets_at(c()->logID, sizeof c()->logID) : Octets(); }
  std::uint64_t timestamp() const noexcept { return at(&Record::timestamp); }
  Octets extensions() const noexcept { return see<OctetText>(&Record::extensions); }
  Octets signature() const noexcept { return see<OctetText>(&Record::signature); }
  Octets opaque() const noexcept { return see<OctetText>(&Record::opaque); }
  using Fields = FieldList<
    Field<"version", std::uint8_t, &SignedCertificateTimestamp::version, &Record::version>,
    Field<"hashAlgorithm", std::uint8_t, &SignedCertificateTimestamp::hashAlgorithm, &Record::hashAlgorithm>,
    Field<"signatureAlgorithm", std::uint8_t, &SignedCertificateTimestamp::signatureAlgorithm, &Record::signatureAlgorithm>,
    Field<"timestamp", std::uint64_t, &SignedCertificateTimestamp::timestamp, &Record::timestamp>,
    Field<"extensions", OctetText, &SignedCertificateTimestamp::extensions, &Record::extensions>,
    Field<"signature", OctetText, &SignedCertificateTimestamp::signature, &Record::signature>,
    Field<"opaque", OctetText, &SignedCertificateTimestamp::opaque, &Record::opaque>,
    Field<"logID", Octets, &SignedCertificateTimestamp::logID, &Record::logID>>;
  static constexpr Calls<Record> calls{"", pki_SignedCertificateTimestamp_new, nullptr, nullptr,
    pki_SignedCertificateTimestamp_clone, pki_SignedCertificateTimestamp_free};
};

/// SignedCertificateTimestampList
class SignedCertificateTimestampList : public List<SignedCertificateTimestamp> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_SignedCertificateTimestampList", nullptr, pki_SignedCertificateTimestampList_d,
    pki_SignedCertificateTimestampList_e, pki_SignedCertificateTimestampList_clone, pki_SignedCertificateTimestampList_free};
};

/// SignerInfo
class SignerInfo : public View<::pki_SignerInfo> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  pki::SignerIdentifier sid() const noexcept { return see<pki::SignerIdentifier>(&Record::sid); }
  pki::AlgId digestAlgorithm() const noexcept { return see<pki::AlgId>(&Record::digestAlgorithm); }
  pki::Attributes signedAttrs() const noexcept { return see<pki::Attributes>(&Record::signedAttrs); }
  Octets signedAttrs_encoded() const noexcept { return see<Element>(&Record::signedAttrsEncoded); }
  pki::AlgId signatureAlgorithm() const noexcept { return see<pki::AlgId>(&Record::signatureAlgorithm); }
  Octets signature() const noexcept { return see<asn1::OctetString>(&Record::signature); }
  pki::Attributes unsignedAttrs() const noexcept { return see<pki::Attributes>(&Record::unsignedAttrs); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &SignerInfo::version, &Record::version>,
    Field<"sid", pki::SignerIdentifier, &SignerInfo::sid, &Record::sid>,
    Field<"digestAlgorithm", pki::AlgId, &SignerInfo::digestAlgorithm, &Record::digestAlgorithm>,
    Field<"signedAttrs", pki::Attributes, &SignerInfo::signedAttrs, &Record::signedAttrs, &Record::signedAttrsEncoded>,
    Field<"signatureAlgorithm", pki::AlgId, &SignerInfo::signatureAlgorithm, &Record::signatureAlgorithm>,
    Field<"signature", asn1::OctetString, &SignerInfo::signature, &Record::signature>,
    Field<"unsignedAttrs", pki::Attributes, &SignerInfo::unsignedAttrs, &Record::unsignedAttrs>>;
  static constexpr Calls<Record> calls{"pki_SignerInfo", pki_SignerInfo_new, pki_SignerInfo_d,
    pki_SignerInfo_e, pki_SignerInfo_clone, pki_SignerInfo_free};
};

/// SignedData
class SignedData : public View<::pki_SignedData> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  List<pki::AlgId> digestAlgorithms() const noexcept { return see<List<pki::AlgId>>(&Record::digestAlgorithms); }
  pki::EncapsulatedContentInfo encapContentInfo() const noexcept { return see<pki::EncapsulatedContentInfo>(&Record::encapContentInfo); }
  List<pki::CertificateChoices> certificates() const noexcept { return see<List<pki::CertificateChoices>>(&Record::certificates); }
  List<pki::RevocationInfoChoice> crls() const noexcept { return see<List<pki::RevocationInfoChoice>>(&Record::crls); }
  List<pki::SignerInfo> signerInfos() const noexcept { return see<List<pki::SignerInfo>>(&Record::signerInfos); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &SignedData::version, &Record::version>,
    Field<"digestAlgorithms", List<pki::AlgId>, &SignedData::digestAlgorithms, &Record::digestAlgorithms>,
    Field<"encapContentInfo", pki::EncapsulatedContentInfo, &SignedData::encapContentInfo, &Record::encapContentInfo>,
    Field<"certificates", List<pki::CertificateChoices>, &SignedData::certificates, &Record::certificates>,
    Field<"crls", List<pki::RevocationInfoChoice>, &SignedData::crls, &Record::crls>,
    Field<"signerInfos", List<pki::SignerInfo>, &SignedData::signerInfos, &Record::signerInfos>>;
  static constexpr Calls<Record> calls{"pki_SignedData", pki_SignedData_new, pki_SignedData_d,
    pki_SignedData_e, pki_SignedData_clone, pki_SignedData_free};
};

/// SubjectDirectoryAttributes
class SubjectDirectoryAttributes : public List<pki::Attribute> {
 public:
  using List::List;
  static constexpr Calls<Record> calls{"pki_SubjectDirectoryAttributes", nullptr, pki_SubjectDirectoryAttributes_d,
    pki_SubjectDirectoryAttributes_e, pki_SubjectDirectoryAttributes_clone, pki_SubjectDirectoryAttributes_free};
};

/// SubjectKeyIdentifier
class SubjectKeyIdentifier : public OctetText {
 public:
  using OctetText::OctetText;
  static constexpr Calls<Record> calls{"pki_SubjectKeyIdentifier", nullptr, pki_SubjectKeyIdentifier_d,
    pki_SubjectKeyIdentifier_e, pki_SubjectKeyIdentifier_clone, pki_SubjectKeyIdentifier_free};
};

/// UserNotice
class UserNotice : public View<::pki_UserNotice> {
 public:
  using View::View;
  std::optional<pki::NoticeReference> noticeRef() const noexcept { return see_optional<pki::NoticeReference>(&Record::noticeRef); }
  std::optional<pki::DisplayText> explicitText() const noexcept { return see_optional<pki::DisplayText>(&Record::explicitText); }
  using Fields = FieldList<
    Field<"noticeRef", pki::NoticeReference, &UserNotice::noticeRef, &Record::noticeRef>,
    Field<"explicitText", pki::DisplayText, &UserNotice::explicitText, &Record::explicitText>>;
  static constexpr Calls<Record> calls{"pki_UserNotice", pki_UserNotice_new, pki_UserNotice_d,
    pki_UserNotice_e, pki_UserNotice_clone, pki_UserNotice_free};
};

}  // namespace orvel::pki

namespace orvel::asn1 {

/// CardInfo
class CardInfo : public View<::CardInfo> {
 public:
  using View::View;
  Octets octets1() const noexcept { return see<asn1::OctetString>(&Record::octets1); }
  Octets octets2() const noexcept { return see<asn1::OctetString>(&Record::octets2); }
  Octets octets3() const noexcept { return see<asn1::OctetString>(&Record::octets3); }
  Octets octets4() const noexcept { return see<asn1::OctetString>(&Record::octets4); }
  Octets octets5() const noexcept { return see<asn1::OctetString>(&Record::octets5); }
  Octets octets6() const noexcept { return see<asn1::OctetString>(&Record::octets6); }
  using Fields = FieldList<
    Field<"octets1", asn1::OctetString, &CardInfo::octets1, &Record::octets1>,
    Field<"octets2", asn1::OctetString, &CardInfo::octets2, &Record::octets2>,
    Field<"octets3", asn1::OctetString, &CardInfo::octets3, &Record::octets3>,
    Field<"octets4", asn1::OctetString, &CardInfo::octets4, &Record::octets4>,
    Field<"octets5", asn1::OctetString, &CardInfo::octets5, &Record::octets5>,
    Field<"octets6", asn1::OctetString, &CardInfo::octets6, &Record::octets6>>;
  static constexpr Calls<Record> calls{"CardInfo", asn1_CardInfo_new, asn1_CardInfo_d,
    asn1_CardInfo_e, nullptr, asn1_CardInfo_free};
};

/// ValidationParms
class ValidationParms : public View<::ValidationParms> {
 public:
  using View::View;
  Bits seed() const noexcept { return see<asn1::BitString>(&Record::seed); }
  Number pgenCounter() const noexcept { return see<asn1::Integer>(&Record::pgenCounter); }
  using Fields = FieldList<
    Field<"seed", asn1::BitString, &ValidationParms::seed, &Record::seed>,
    Field<"pgenCounter", asn1::Integer, &ValidationParms::pgenCounter, &Record::pgenCounter>>;
  static constexpr Calls<Record> calls{"ValidationParms", asn1_ValidationParms_new, asn1_ValidationParms_d,
    asn1_ValidationParms_e, asn1_ValidationParms_clone, asn1_ValidationParms_free};
};

/// DomainParameters
class DomainParameters : public View<::DomainParameters> {
 public:
  using View::View;
  Number p() const noexcept { return see<asn1::Integer>(&Record::p); }
  Number g() const noexcept { return see<asn1::Integer>(&Record::g); }
  std::optional<Number> q() const noexcept { return see_optional<asn1::Integer>(&Record::q); }
  std::optional<Number> j() const noexcept { return see_optional<asn1::Integer>(&Record::j); }
  std::optional<asn1::ValidationParms> validationParms() const noexcept { return see_optional<asn1::ValidationParms>(&Record::validationParms); }
  using Fields = FieldList<
    Field<"p", asn1::Integer, &DomainParameters::p, &Record::p>,
    Field<"g", asn1::Integer, &DomainParameters::g, &Record::g>,
    Field<"q", asn1::Integer, &DomainParameters::q, &Record::q>,
    Field<"j", asn1::Integer, &DomainParameters::j, &Record::j>,
    Field<"validationParms", asn1::ValidationParms, &DomainParameters::validationParms, &Record::validationParms>>;
  static constexpr Calls<Record> calls{"DomainParameters", asn1_DomainParameters_new, asn1_DomainParameters_d,
    asn1_DomainParameters_e, asn1_DomainParameters_clone, asn1_DomainParameters_free};
};

/// DssParms
class DssParms : public View<::DssParms> {
 public:
  using View::View;
  Number p() const noexcept { return see<asn1::Integer>(&Record::p); }
  Number q() const noexcept { return see<asn1::Integer>(&Record::q); }
  Number g() const noexcept { return see<asn1::Integer>(&Record::g); }
  using Fields = FieldList<
    Field<"p", asn1::Integer, &DssParms::p, &Record::p>,
    Field<"q", asn1::Integer, &DssParms::q, &Record::q>,
    Field<"g", asn1::Integer, &DssParms::g, &Record::g>>;
  static constexpr Calls<Record> calls{"DssParms", asn1_DssParms_new, asn1_DssParms_d,
    asn1_DssParms_e, asn1_DssParms_clone, asn1_DssParms_free};
};

/// DssSigValue
class DssSigValue : public View<::DssSigValue> {
 public:
  using View::View;
  Number r() const noexcept { return see<asn1::Integer>(&Record::r); }
  Number s() const noexcept { return see<asn1::Integer>(&Record::s); }
  using Fields = FieldList<
    Field<"r", asn1::Integer, &DssSigValue::r, &Record::r>,
    Field<"s", asn1::Integer, &DssSigValue::s, &Record::s>>;
  static constexpr Calls<Record> calls{"DssSigValue", asn1_DssSigValue_new, asn1_DssSigValue_d,
    asn1_DssSigValue_e, asn1_DssSigValue_clone, asn1_DssSigValue_free};
};

/// GDOObject
class GDOObjectSetOf : public CardObject {
 public:
  using CardObject::CardObject;
  /// The objects of a container, or the attributes of their holder.
  List<GDOObjectSetOf> children() const noexcept { return see<List<GDOObjectSetOf>>(&Record::children); }
  static constexpr Calls<Record> calls{"GDOObjectSetOf", nullptr, asn1_GDOObjectSetOf_d,
    asn1_GDOObjectSetOf_e, nullptr, asn1_GDOObjectSetOf_free};
};

/// GDOObject
class GDOObjectSetOfSetOf : public CardObject {
 public:
  using CardObject::CardObject;
  /// The attributes, where the object holds some.
  List<GDOObjectSetOf> attributes() const noexcept { return List<GDOObjectSetOf>(holds_attributes() ? at(&Record::children) : nullptr); }
  /// The sets of objects of a container.
  List<List<GDOObjectSetOf>> sets() const noexcept { return List<List<GDOObjectSetOf>>(holds_attributes() ? nullptr : at(&Record::children)); }
  static constexpr Calls<Record> calls{"GDOObjectSetOfSetOf", nullptr, asn1_GDOObjectSetOfSetOf_d,
    asn1_GDOObjectSetOfSetOf_e, nullptr, asn1_GDOObjectSetOfSetOf_free};
};

/// GDO
class GDO : public View<::GDO> {
 public:
  using View::View;
  asn1::GDOObjectSetOf root() const noexcept { return see<asn1::GDOObjectSetOf>(&Record::root); }
  asn1::GDOObjectSetOfSetOf set1() const noexcept { return see<asn1::GDOObjectSetOfSetOf>(&Record::set1); }
  asn1::GDOObjectSetOfSetOf set2() const noexcept { return see<asn1::GDOObjectSetOfSetOf>(&Record::set2); }
  asn1::GDOObjectSetOfSetOf set3() const noexcept { return see<asn1::GDOObjectSetOfSetOf>(&Record::set3); }
  std::optional<asn1::GDOObjectSetOfSetOf> set4() const noexcept { return see_optional<asn1::GDOObjectSetOfSetOf>(&Record::set4); }
  using Fields = FieldList<
    Field<"root", asn1::GDOObjectSetOf, &GDO::root, &Record::root>,
    Field<"set1", asn1::GDOObjectSetOfSetOf, &GDO::set1, &Record::set1>,
    Field<"set2", asn1::GDOObjectSetOfSetOf, &GDO::set2, &Record::set2>,
    Field<"set3", asn1::GDOObjectSetOfSetOf, &GDO::set3, &Record::set3>,
    Field<"set4", asn1::GDOObjectSetOfSetOf, &GDO::set4, &Record::set4>>;
  static constexpr Calls<Record> calls{"GDO", asn1_GDO_new, asn1_GDO_d,
    asn1_GDO_e, nullptr, asn1_GDO_free};
};

/// Name
class Name : public Characters {
 public:
  using Characters::Characters;
  /// There are octets for which the decoder ends the process: ask first.
  static constexpr bool may_end_the_process = true;
  static constexpr Calls<Record> calls{"Name", nullptr, asn1_Name_d,
    asn1_Name_e, asn1_Name_clone, asn1_Name_free};
};

/// PrivateKeyInfo
class PrivateKeyInfo : public View<::PrivateKeyInfo> {
 public:
  using View::View;
  Number version() const noexcept { return see<asn1::Integer>(&Record::version); }
  pki::AlgId privateKeyAlgorithm() const noexcept { return see<pki::AlgId>(&Record::privateKeyAlgorithm); }
  Octets privateKey() const noexcept { return see<asn1::OctetString>(&Record::privateKey); }
  List<pki::Attribute> attributes() const noexcept { return see<List<pki::Attribute>>(&Record::attributes); }
  using Fields = FieldList<
    Field<"version", asn1::Integer, &PrivateKeyInfo::version, &Record::version>,
    Field<"privateKeyAlgorithm", pki::AlgId, &PrivateKeyInfo::privateKeyAlgorithm, &Record::privateKeyAlgorithm>,
    Field<"privateKey", asn1::OctetString, &PrivateKeyInfo::privateKey, &Record::privateKey>,
    Field<"attributes", List<pki::Attribute>, &PrivateKeyInfo::attributes, &Record::attributes>>;
  static constexpr Calls<Record> calls{"PrivateKeyInfo", asn1_PrivateKeyInfo_new, asn1_PrivateKeyInfo_d,
    asn1_PrivateKeyInfo_e, asn1_PrivateKeyInfo_clone, asn1_PrivateKeyInfo_free};
};

/// PublicKeyAndChallenge
class PublicKeyAndChallenge : public View<::PublicKeyAndChallenge> {
 public:
  using View::View;
  pki::SubjectPKI spki() const noexcept { return see<pki::SubjectPKI>(&Record::spki); }
  std::string_view challenge() const noexcept { return see<asn1::IA5String>(&Record::challenge); }
  using Fields = FieldList<
    Field<"spki", pki::SubjectPKI, &PublicKeyAndChallenge::spki, &Record::spki>,
    Field<"challenge", asn1::IA5String, &PublicKeyAndChallenge::challenge, &Record::challenge>>;
  static constexpr Calls<Record> calls{"PublicKeyAndChallenge", asn1_PublicKeyAndChallenge_new, asn1_PublicKeyAndChallenge_d,
    asn1_PublicKeyAndChallenge_e, asn1_PublicKeyAndChallenge_clone, asn1_PublicKeyAndChallenge_free};
};

/// PublicKeyMAC
class PublicKeyMAC : public View<::PublicKeyMAC> {
 public:
  using View::View;
  Octets octets1() const noexcept { return see<asn1::OctetString>(&Record::octets1); }
  Octets octets2() const noexcept { return see<asn1::OctetString>(&Record::octets2); }
  using Fields = FieldList<
    Field<"octets1", asn1::OctetString, &PublicKeyMAC::octets1, &Record::octets1>,
    Field<"octets2", asn1::OctetString, &PublicKeyMAC::octets2, &Record::octets2>>;
  static constexpr Calls<Record> calls{"PublicKeyMAC", asn1_PublicKeyMAC_new, asn1_PublicKeyMAC_d,
    asn1_PublicKeyMAC_e, asn1_PublicKeyMAC_clone, asn1_PublicKeyMAC_free};
};

/// SignedPublicKeyAndChallenge
class SignedPublicKeyAndChallenge : public View<::SignedPublicKeyAndChallenge> {
 public:
  using View::View;
  asn1::PublicKeyAndChallenge publicKeyAndChallenge() const noexcept { return see<asn1::PublicKeyAndChallenge>(&Record::publicKeyAndChallenge); }
  Octets publicKeyAndChallenge_encoded() const noexcept { return see<Element>(&Record::tbsEncoded); }
  pki::SubjectPKI spki() const noexcept { return publicKeyAndChallenge().spki(); }
  std::string_view challenge() const noexcept { return publicKeyAndChallenge().challenge(); }
  /// The encoder only measures while these octets are kept.
  static constexpr auto kept = &Record::tbsEncoded;
  pki::AlgId signatureAlgorithm() const noexcept { return see<pki::AlgId>(&Record::signatureAlgorithm); }
  Bits signature() const noexcept { return see<asn1::BitString>(&Record::signature); }
  using Fields = FieldList<
    Field<"publicKeyAndChallenge", asn1::PublicKeyAndChallenge, &SignedPublicKeyAndChallenge::publicKeyAndChallenge, &Record::publicKeyAndChallenge, &Record::tbsEncoded>,
    Field<"signatureAlgorithm", pki::AlgId, &SignedPublicKeyAndChallenge::signatureAlgorithm, &Record::signatureAlgorithm>,
    Field<"signature", asn1::BitString, &SignedPublicKeyAndChallenge::signature, &Record::signature>>;
  static constexpr Calls<Record> calls{"SignedPublicKeyAndChallenge", asn1_SignedPublicKeyAndChallenge_new, asn1_SignedPublicKeyAndChallenge_d,
    asn1_SignedPublicKeyAndChallenge_e, asn1_SignedPublicKeyAndChallenge_clone, asn1_SignedPublicKeyAndChallenge_free};
};

}  // namespace orvel::asn1

#endif
