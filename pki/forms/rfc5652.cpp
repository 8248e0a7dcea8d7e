// Cryptographic messages (RFC 5652).
#include "pki/forms/rfc5652.h"

using namespace pki;

// clang-format off

// Attributes ::= SET OF Attribute
using AttributesTable = SetOf<AttributeCodec>;
EXPORT_FORM_LIST(Attributes, List, "Attributes", AttributesTable)

// ContentInfo ::= SEQUENCE {
//   contentType      OBJECT IDENTIFIER,
//   content      [0] EXPLICIT ANY DEFINED BY contentType OPTIONAL }
//
// RFC 2315 lets the content be missing.
using ContentInfoTable = Sequence<pki_ContentInfo,
    Required<&pki_ContentInfo::contentType, ObjIdCodec>,
    Optional<&pki_ContentInfo::content, Explicit<0, AnyCodec>>>;
EXPORT_FORM(ContentInfo, pki_ContentInfo, "ContentInfo", ContentInfoTable)

// IssuerAndSerialNumber ::= SEQUENCE {
//   issuer        Name,
//   serialNumber  INTEGER }
using Issued = pki_IssuerAndSerialNumber;
using IssuerAndSerialNumberTable = Sequence<Issued,
    Required<&Issued::issuer, RDNSequenceCodec>,
    Required<&Issued::serialNumber, IntegerCodec>>;
EXPORT_FORM(IssuerAndSerialNumber, Issued, "IssuerAndSerialNumber", IssuerAndSerialNumberTable)

// ---------------------------------------------------------------------------------------------
// Certificates and revocation lists in messages
// ---------------------------------------------------------------------------------------------

// OtherCertificateFormat ::= SEQUENCE {
//   otherCertFormat  OBJECT IDENTIFIER,
//   otherCert        ANY DEFINED BY otherCertFormat }
using OtherCert = pki_OtherCertificateFormat;
using OtherCertificateFormatTable = Sequence<OtherCert,
    Required<&OtherCert::otherCertFormat, ObjIdCodec>,
    Required<&OtherCert::otherCert, AnyCodec>>;
EXPORT_FORM(OtherCertificateFormat, OtherCert, "OtherCertificateFormat", OtherCertificateFormatTable)

// CertificateChoices ::= CHOICE {
//   certificate              Certificate,
//   extendedCertificate  [0] IMPLICIT ExtendedCertificate,
//   v1AttrCert           [1] IMPLICIT AttributeCertificateV1,
//   v2AttrCert           [2] IMPLICIT AttributeCertificateV2,
//   other                [3] IMPLICIT OtherCertificateFormat }
using CertificateChoicesTable = Choice<pki_CertificateChoices,
    Alternative<16, "certificate", CertificateCodec>,
    Alternative<0, "extendedCertificate", TaggedAnyCodec<0>>,
    Alternative<1, "v1AttrCert", TaggedAnyCodec<1>>,
    Alternative<2, "v2AttrCert", TaggedAnyCodec<2>>,
    Alternative<3, "other", Implicit<3, OtherCertificateFormatCodec>>>;
EXPORT_FORM(CertificateChoices, pki_CertificateChoices, "CertificateChoices", CertificateChoicesTable)

// OtherRevocationInfoFormat ::= SEQUENCE {
//   otherRevInfoFormat  OBJECT IDENTIFIER,
//   otherRevInfo        ANY DEFINED BY otherRevInfoFormat }
using OtherRevInfo = pki_OtherRevocationInfoFormat;
using OtherRevocationInfoFormatTable = Sequence<OtherRevInfo,
    Required<&OtherRevInfo::otherRevInfoFormat, ObjIdCodec>,
    Required<&OtherRevInfo::otherRevInfo, AnyCodec>>;
EXPORT_FORM(OtherRevocationInfoFormat, OtherRevInfo, "OtherRevocationInfoFormat",
            OtherRevocationInfoFormatTable)

// RevocationInfoChoice ::= CHOICE {
//   crl        CertificateList,
//   other  [1] IMPLICIT OtherRevocationInfoFormat }
using RevocationInfoChoiceTable = Choice<pki_RevocationInfoChoice,
    Alternative<16, "crl", CertificateRevocationListCodec>,
    Alternative<1, "other", Implicit<1, OtherRevocationInfoFormatCodec>>>;
EXPORT_FORM(RevocationInfoChoice, pki_RevocationInfoChoice, "RevocationInfoChoice",
            RevocationInfoChoiceTable)

using CertificateSet = SetOf<CertificateChoicesCodec>;
using RevocationInfoChoices = SetOf<RevocationInfoChoiceCodec>;

// ---------------------------------------------------------------------------------------------
// Signed and digested messages
// ---------------------------------------------------------------------------------------------

// CHOICE {
//   octets    OCTET STRING,
//   sequence  SEQUENCE }
//
// The content of RFC 5652 is an OCTET STRING. That of PKCS #7 is what its type says: an OCTET STRING
// or, of every other type of RFC 2315 and of signed code, a SEQUENCE (RFC 5652, 5.2.1).
using EncapsulatedContentTable = Choice<pki_EncapsulatedContent,
    Alternative<4, "octets", OctetStringCodec>,
    Alternative<16, "sequence", AnyCodec>>;
EXPORT_FORM(EncapsulatedContent, pki_EncapsulatedContent, "EncapsulatedContent",
            EncapsulatedContentTable)

// EncapsulatedContentInfo ::= SEQUENCE {
//   eContentType      OBJECT IDENTIFIER,
//   eContent      [0] EXPLICIT OCTET STRING OPTIONAL }
using Encapsulated = pki_EncapsulatedContentInfo;
using EncapsulatedContentInfoTable = Sequence<Encapsulated,
    Required<&Encapsulated::eContentType, ObjIdCodec>,
    Optional<&Encapsulated::eContent, Explicit<0, EncapsulatedContentCodec>>>;
EXPORT_FORM(EncapsulatedContentInfo, Encapsulated, "EncapsulatedContentInfo",
            EncapsulatedContentInfoTable)

// SignerIdentifier ::= CHOICE {
//   issuerAndSerialNumber      IssuerAndSerialNumber,
//   subjectKeyIdentifier   [0] IMPLICIT OCTET STRING }
using SignerIdentifierTable = Choice<pki_SignerIdentifier,
    Alternative<16, "issuerAndSerialNumber", IssuerAndSerialNumberCodec>,
    Alternative<0, "subjectKeyIdentifier", Implicit<0, OctetStringCodec>>>;
EXPORT_FORM(SignerIdentifier, pki_SignerIdentifier, "SignerIdentifier", SignerIdentifierTable)

// SignerInfo ::= SEQUENCE {
//   version                 INTEGER,
//   sid                     SignerIdentifier,
//   digestAlgorithm         AlgorithmIdentifier,
//   signedAttrs         [0] IMPLICIT SET OF Attribute OPTIONAL,
//   signatureAlgorithm      AlgorithmIdentifier,
//   signature               OCTET STRING,
//   unsignedAttrs       [1] IMPLICIT SET OF Attribute OPTIONAL }
using Signer = pki_SignerInfo;
using SignerInfoTable = Sequence<Signer,
    Required<&Signer::version, IntegerCodec>,
    Required<&Signer::sid, SignerIdentifierCodec>,
    Required<&Signer::digestAlgorithm, AlgIdCodec>,
    Stored<&Signer::signedAttrsEncoded, Optional<&Signer::signedAttrs, Implicit<0, AttributesCodec>>>,
    Required<&Signer::signatureAlgorithm, AlgIdCodec>,
    Required<&Signer::signature, OctetStringCodec>,
    Optional<&Signer::unsignedAttrs, Implicit<1, AttributesCodec>>>;
EXPORT_FORM(SignerInfo, Signer, "SignerInfo", SignerInfoTable)

// SignedData ::= SEQUENCE {
//   version               INTEGER,
//   digestAlgorithms      SET OF AlgorithmIdentifier,
//   encapContentInfo      EncapsulatedContentInfo,
//   certificates      [0] IMPLICIT SET OF CertificateChoices OPTIONAL,
//   crls              [1] IMPLICIT SET OF RevocationInfoChoice OPTIONAL,
//   signerInfos           SET OF SignerInfo }
using SignedDataTable = Sequence<pki_SignedData,
    Required<&pki_SignedData::version, IntegerCodec>,
    Required<&pki_SignedData::digestAlgorithms, SetOf<AlgIdCodec>>,
    Required<&pki_SignedData::encapContentInfo, EncapsulatedContentInfoCodec>,
    Optional<&pki_SignedData::certificates, Implicit<0, CertificateSet>>,
    Optional<&pki_SignedData::crls, Implicit<1, RevocationInfoChoices>>,
    Required<&pki_SignedData::signerInfos, SetOf<SignerInfoCodec>>>;
EXPORT_FORM(SignedData, pki_SignedData, "SignedData", SignedDataTable)

// DigestedData ::= SEQUENCE {
//   version           INTEGER,
//   digestAlgorithm   AlgorithmIdentifier,
//   encapContentInfo  EncapsulatedContentInfo,
//   digest            OCTET STRING }
using Digested = pki_DigestedData;
using DigestedDataTable = Sequence<Digested,
    Required<&Digested::version, IntegerCodec>,
    Required<&Digested::digestAlgorithm, AlgIdCodec>,
    Required<&Digested::encapContentInfo, EncapsulatedContentInfoCodec>,
    Required<&Digested::digest, OctetStringCodec>>;
EXPORT_FORM(DigestedData, Digested, "DigestedData", DigestedDataTable)

// ---------------------------------------------------------------------------------------------
// Recipients
// ---------------------------------------------------------------------------------------------

// KeyTransRecipientInfo ::= SEQUENCE {
//   version                 INTEGER,
//   rid                     RecipientIdentifier,
//   keyEncryptionAlgorithm  AlgorithmIdentifier,
//   encryptedKey            OCTET STRING }
//
// A RecipientIdentifier has the alternatives of a SignerIdentifier.
using KeyTrans = pki_KeyTransRecipientInfo;
using KeyTransRecipientInfoTable = Sequence<KeyTrans,
    Required<&KeyTrans::version, IntegerCodec>,
    Required<&KeyTrans::rid, SignerIdentifierCodec>,
    Required<&KeyTrans::keyEncryptionAlgorithm, AlgIdCodec>,
    Required<&KeyTrans::encryptedKey, OctetStringCodec>>;
EXPORT_FORM(KeyTransRecipientInfo, KeyTrans, "KeyTransRecipientInfo", KeyTransRecipientInfoTable)

// OriginatorPublicKey ::= SEQUENCE {
//   algorithm  AlgorithmIdentifier,
//   publicKey  BIT STRING }
using OriginatorKey = pki_OriginatorPublicKey;
using OriginatorPublicKeyTable = Sequence<OriginatorKey,
    Required<&OriginatorKey::algorithm, AlgIdCodec>,
    Required<&OriginatorKey::publicKey, BitStringCodec>>;
EXPORT_FORM(OriginatorPublicKey, OriginatorKey, "OriginatorPublicKey", OriginatorPublicKeyTable)

// OriginatorIdentifierOrKey ::= CHOICE {
//   issuerAndSerialNumber      IssuerAndSerialNumber,
//   subjectKeyIdentifier   [0] IMPLICIT OCTET STRING,
//   originatorKey          [1] IMPLICIT OriginatorPublicKey }
using OriginatorIdentifierOrKeyTable = Choice<pki_OriginatorIdentifierOrKey,
    Alternative<16, "issuerAndSerialNumber", IssuerAndSerialNumberCodec>,
    Alternative<0, "subjectKeyIdentifier", Implicit<0, OctetStringCodec>>,
    Alternative<1, "originatorKey", Implicit<1, OriginatorPublicKeyCodec>>>;
EXPORT_FORM(OriginatorIdentifierOrKey, pki_OriginatorIdentifierOrKey, "OriginatorIdentifierOrKey",
            OriginatorIdentifierOrKeyTable)

// OtherKeyAttribute ::= SEQUENCE {
//   keyAttrId  OBJECT IDENTIFIER,
//   keyAttr    ANY DEFINED BY keyAttrId OPTIONAL }
using OtherKey = pki_OtherKeyAttribute;
using OtherKeyAttributeTable = Sequence<OtherKey,
    Required<&OtherKey::keyAttrId, ObjIdCodec>,
    Optional<&OtherKey::keyAttr, AnyCodec>>;
EXPORT_FORM(OtherKeyAttribute, OtherKey, "OtherKeyAttribute", OtherKeyAttributeTable)

// RecipientKeyIdentifier ::= SEQUENCE {
//   subjectKeyIdentifier  OCTET STRING,
//   date                  GeneralizedTime OPTIONAL,
//   other                 OtherKeyAttribute OPTIONAL }
using RecipientKey = pki_RecipientKeyIdentifier;
using RecipientKeyIdentifierTable = Sequence<RecipientKey,
    Required<&RecipientKey::subjectKeyIdentifier, OctetStringCodec>,
    Optional<&RecipientKey::date, GeneralizedTimeCodec>,
    Optional<&RecipientKey::other, OtherKeyAttributeCodec>>;
EXPORT_FORM(RecipientKeyIdentifier, RecipientKey, "RecipientKeyIdentifier",
            RecipientKeyIdentifierTable)

// KeyAgreeRecipientIdentifier ::= CHOICE {
//   issuerAndSerialNumber      IssuerAndSerialNumber,
//   rKeyId                 [0] IMPLICIT RecipientKeyIdentifier }
using KeyAgreeRecipientIdentifierTable = Choice<pki_KeyAgreeRecipientIdentifier,
    Alternative<16, "issuerAndSerialNumber", IssuerAndSerialNumberCodec>,
    Alternative<0, "rKeyId", Implicit<0, RecipientKeyIdentifierCodec>>>;
EXPORT_FORM(KeyAgreeRecipientIdentifier, pki_KeyAgreeRecipientIdentifier,
            "KeyAgreeRecipientIdentifier", KeyAgreeRecipientIdentifierTable)

// RecipientEncryptedKey ::= SEQUENCE {
//   rid           KeyAgreeRecipientIdentifier,
//   encryptedKey  OCTET STRING }
using EncryptedKey = pki_RecipientEncryptedKey;
using RecipientEncryptedKeyTable = Sequence<EncryptedKey,
    Required<&EncryptedKey::rid, KeyAgreeRecipientIdentifierCodec>,
    Required<&EncryptedKey::encryptedKey, OctetStringCodec>>;
EXPORT_FORM(RecipientEncryptedKey, EncryptedKey, "RecipientEncryptedKey",
            RecipientEncryptedKeyTable)

// KeyAgreeRecipientInfo ::= SEQUENCE {
//   version                     INTEGER,
//   originator              [0] EXPLICIT OriginatorIdentifierOrKey,
//   ukm                     [1] EXPLICIT OCTET STRING OPTIONAL,
//   keyEncryptionAlgorithm      AlgorithmIdentifier,
//   recipientEncryptedKeys      SEQUENCE OF RecipientEncryptedKey }
using KeyAgree = pki_KeyAgreeRecipientInfo;
using KeyAgreeRecipientInfoTable = Sequence<KeyAgree,
    Required<&KeyAgree::version, IntegerCodec>,
    Required<&KeyAgree::originator, Explicit<0, OriginatorIdentifierOrKeyCodec>>,
    Optional<&KeyAgree::ukm, Explicit<1, OctetStringCodec>>,
    Required<&KeyAgree::keyEncryptionAlgorithm, AlgIdCodec>,
    Required<&KeyAgree::recipientEncryptedKeys, SequenceOf<RecipientEncryptedKeyCodec>>>;
EXPORT_FORM(KeyAgreeRecipientInfo, KeyAgree, "KeyAgreeRecipientInfo", KeyAgreeRecipientInfoTable)

// KEKIdentifier ::= SEQUENCE {
//   keyIdentifier  OCTET STRING,
//   date           GeneralizedTime OPTIONAL,
//   other          OtherKeyAttribute OPTIONAL }
using KEKIdentifierTable = Sequence<pki_KEKIdentifier,
    Required<&pki_KEKIdentifier::keyIdentifier, OctetStringCodec>,
    Optional<&pki_KEKIdentifier::date, GeneralizedTimeCodec>,
    Optional<&pki_KEKIdentifier::other, OtherKeyAttributeCodec>>;
EXPORT_FORM(KEKIdentifier, pki_KEKIdentifier, "KEKIdentifier", KEKIdentifierTable)

// KEKRecipientInfo ::= SEQUENCE {
//   version                 INTEGER,
//   kekid                   KEKIdentifier,
//   keyEncryptionAlgorithm  AlgorithmIdentifier,
//   encryptedKey            OCTET STRING }
using KEK = pki_KEKRecipientInfo;
using KEKRecipientInfoTable = Sequence<KEK,
    Required<&KEK::version, IntegerCodec>,
    Required<&KEK::kekid, KEKIdentifierCodec>,
    Required<&KEK::keyEncryptionAlgorithm, AlgIdCodec>,
    Required<&KEK::encryptedKey, OctetStringCodec>>;
EXPORT_FORM(KEKRecipientInfo, KEK, "KEKRecipientInfo", KEKRecipientInfoTable)

// PasswordRecipientInfo ::= SEQUENCE {
//   version                     INTEGER,
//   keyDerivationAlgorithm  [0] IMPLICIT AlgorithmIdentifier OPTIONAL,
//   keyEncryptionAlgorithm      AlgorithmIdentifier,
//   encryptedKey                OCTET STRING }
using Password = pki_PasswordRecipientInfo;
using PasswordRecipientInfoTable = Sequence<Password,
    Required<&Password::version, IntegerCodec>,
    Optional<&Password::keyDerivationAlgorithm, Implicit<0, AlgIdCodec>>,
    Required<&Password::keyEncryptionAlgorithm, AlgIdCodec>,
    Required<&Password::encryptedKey, OctetStringCodec>>;
EXPORT_FORM(PasswordRecipientInfo, Password, "PasswordRecipientInfo", PasswordRecipientInfoTable)

// OtherRecipientInfo ::= SEQUENCE {
//   oriType   OBJECT IDENTIFIER,
//   oriValue  ANY DEFINED BY oriType }
using OtherRecipient = pki_OtherRecipientInfo;
using OtherRecipientInfoTable = Sequence<OtherRecipient,
    Required<&OtherRecipient::oriType, ObjIdCodec>,
    Required<&OtherRecipient::oriValue, AnyCodec>>;
EXPORT_FORM(OtherRecipientInfo, OtherRecipient, "OtherRecipientInfo", OtherRecipientInfoTable)

// RecipientInfo ::= CHOICE {
//   ktri      KeyTransRecipientInfo,
//   kari  [1] IMPLICIT KeyAgreeRecipientInfo,
//   kekri [2] IMPLICIT KEKRecipientInfo,
//   pwri  [3] IMPLICIT PasswordRecipientInfo,
//   ori   [4] IMPLICIT OtherRecipientInfo }
using RecipientInfoTable = Choice<pki_RecipientInfo,
    Alternative<16, "ktri", KeyTransRecipientInfoCodec>,
    Alternative<1, "kari", Implicit<1, KeyAgreeRecipientInfoCodec>>,
    Alternative<2, "kekri", Implicit<2, KEKRecipientInfoCodec>>,
    Alternative<3, "pwri", Implicit<3, PasswordRecipientInfoCodec>>,
    Alternative<4, "ori", Implicit<4, OtherRecipientInfoCodec>>>;
EXPORT_FORM(RecipientInfo, pki_RecipientInfo, "RecipientInfo", RecipientInfoTable)

// OriginatorInfo ::= SEQUENCE {
//   certs [0] IMPLICIT SET OF CertificateChoices OPTIONAL,
//   crls  [1] IMPLICIT SET OF RevocationInfoChoice OPTIONAL }
using OriginatorInfoTable = Sequence<pki_OriginatorInfo,
    Optional<&pki_OriginatorInfo::certs, Implicit<0, CertificateSet>>,
    Optional<&pki_OriginatorInfo::crls, Implicit<1, RevocationInfoChoices>>>;
EXPORT_FORM(OriginatorInfo, pki_OriginatorInfo, "OriginatorInfo", OriginatorInfoTable)

// ---------------------------------------------------------------------------------------------
// Encrypted and authenticated messages
// ---------------------------------------------------------------------------------------------

// EncryptedContentInfo ::= SEQUENCE {
//   contentType                     OBJECT IDENTIFIER,
//   contentEncryptionAlgorithm      AlgorithmIdentifier,
//   encryptedContent            [0] IMPLICIT OCTET STRING OPTIONAL }
using EncryptedContentInfoTable = Sequence<EncryptedContentInfo,
    Required<&EncryptedContentInfo::contentType, ObjIdCodec>,
    Required<&EncryptedContentInfo::contentEncryptionAlgorithm, AlgIdCodec>,
    Optional<&EncryptedContentInfo::encryptedContent, Implicit<0, OctetStringCodec>>>;
EXPORT_FORM(EncryptedContentInfo, EncryptedContentInfo, "EncryptedContentInfo",
            EncryptedContentInfoTable)

// EncryptedData ::= SEQUENCE {
//   version                   INTEGER,
//   encryptedContentInfo      EncryptedContentInfo,
//   unprotectedAttrs      [1] IMPLICIT SET OF Attribute OPTIONAL }
using Encrypted = pki_EncryptedData;
using EncryptedDataTable = Sequence<Encrypted,
    Required<&Encrypted::version, IntegerCodec>,
    Required<&Encrypted::encryptedContentInfo, EncryptedContentInfoCodec>,
    Optional<&Encrypted::unprotectedAttrs, Implicit<1, AttributesCodec>>>;
EXPORT_FORM(EncryptedData, Encrypted, "EncryptedData", EncryptedDataTable)

// EnvelopedData ::= SEQUENCE {
//   version                   INTEGER,
//   originatorInfo        [0] IMPLICIT OriginatorInfo OPTIONAL,
//   recipientInfos            SET OF RecipientInfo,
//   encryptedContentInfo      EncryptedContentInfo,
//   unprotectedAttrs      [1] IMPLICIT SET OF Attribute OPTIONAL }
using Enveloped = pki_EnvelopedData;
using EnvelopedDataTable = Sequence<Enveloped,
    Required<&Enveloped::version, IntegerCodec>,
    Optional<&Enveloped::originatorInfo, Implicit<0, OriginatorInfoCodec>>,
    Required<&Enveloped::recipientInfos, SetOf<RecipientInfoCodec>>,
    Required<&Enveloped::encryptedContentInfo, EncryptedContentInfoCodec>,
    Optional<&Enveloped::unprotectedAttrs, Implicit<1, AttributesCodec>>>;
EXPORT_FORM(EnvelopedData, Enveloped, "EnvelopedData", EnvelopedDataTable)

// AuthenticatedData ::= SEQUENCE {
//   version               INTEGER,
//   originatorInfo    [0] IMPLICIT OriginatorInfo OPTIONAL,
//   recipientInfos        SET OF RecipientInfo,
//   macAlgorithm          AlgorithmIdentifier,
//   digestAlgorithm   [1] IMPLICIT AlgorithmIdentifier OPTIONAL,
//   encapContentInfo      EncapsulatedContentInfo,
//   authAttrs         [2] IMPLICIT SET OF Attribute OPTIONAL,
//   mac                   OCTET STRING,
//   unauthAttrs       [3] IMPLICIT SET OF Attribute OPTIONAL }
using Authenticated = pki_AuthenticatedData;
using AuthenticatedDataTable = Sequence<Authenticated,
    Required<&Authenticated::version, IntegerCodec>,
    Optional<&Authenticated::originatorInfo, Implicit<0, OriginatorInfoCodec>>,
    Required<&Authenticated::recipientInfos, SetOf<RecipientInfoCodec>>,
    Required<&Authenticated::macAlgorithm, AlgIdCodec>,
    Optional<&Authenticated::digestAlgorithm, Implicit<1, AlgIdCodec>>,
    Required<&Authenticated::encapContentInfo, EncapsulatedContentInfoCodec>,
    Optional<&Authenticated::authAttrs, Implicit<2, AttributesCodec>>,
    Required<&Authenticated::mac, OctetStringCodec>,
    Optional<&Authenticated::unauthAttrs, Implicit<3, AttributesCodec>>>;
EXPORT_FORM(AuthenticatedData, Authenticated, "AuthenticatedData", AuthenticatedDataTable)

// clang-format on

uint32_t pki_SignerInfo_signed_octets(uint8_t **pp, const pki_SignerInfo *pElement) {
  if (pElement == nullptr) return 0;
  const OctetString *const kept = pElement->signedAttrsEncoded;
  constexpr uint8_t indefinite = 0x80;
  if (kept == nullptr || kept->length < 2 || kept->data == nullptr || kept->data[1] == indefinite) {
    return pki_Attributes_e(pp, pElement->signedAttrs);
  }
  if (pp != nullptr) {
    **pp = tag::set;
    std::memcpy(*pp + 1, kept->data + 1, kept->length - 1);
    *pp += kept->length;
  }
  return kept->length;
}
