/**
 * @file rfc5280.h
 * Certificates, revocation lists, names and extensions in the forms of RFC 5280.
 *
 * Every type `T` here, and in the other headers of liborvelpki that are called after an RFC, has
 * functions of the shapes that asn1_x680.h describes: pki_T_new(), pki_T_free(), pki_T_e(),
 * pki_T_d() and pki_T_clone(). A type without a record of its own, such as a list, has no
 * pki_T_new(). They differ from those of liborvelasn1 in what they promise:
 *
 * - No input ends the process, and no argument does: a null pointer where a pointer is required
 *   fails.
 * - A decoder takes what its RFC allows, in DER and in BER (X.690). What is left over inside an
 *   element is refused. On failure it stores NULL. A length above 2^31 - 1 is refused, and so is
 *   one that is written in more than four octets after the first.
 * - An encoder writes DER. What was decoded from DER is written back octet for octet. An encoder
 *   returns 0 for a record that is not filled; pki_find_missing() says which field it is. Elements
 *   of a SET OF are written in the order of their list.
 * - A copy has all that its original has.
 *
 * The records are those of liborvelasn1 where these can hold every value. A record that was decoded
 * or filled for the functions here is released by them: pki_Certificate_free(), not
 * asn1_Certificate_free().
 */
#ifndef ORVELPKI_RFC5280_H
#define ORVELPKI_RFC5280_H

#include "asn1_x501.h"
#include "asn1_x509v3.h"
#include "certificate.h"
#include "crl.h"
#include "pkcs9.h"

#ifdef __cplusplus
extern "C" {
#endif

/* -------------------------------------------------------------------------------------------- */
/* Parts of certificates                                                                        */
/* -------------------------------------------------------------------------------------------- */

/**
 * AlgorithmIdentifier ::= SEQUENCE { algorithm OBJECT IDENTIFIER, parameters ANY DEFINED BY
 * algorithm OPTIONAL } (4.1.1.2). The parameters are one whole element, of any tag.
 */
AlgId *pki_AlgId_new(void);
void pki_AlgId_free(AlgId *pElement);
uint32_t pki_AlgId_e(uint8_t **pp, const AlgId *pElement);
const uint8_t *pki_AlgId_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                           AlgId **ppElement, uint32_t depth);
AlgId *pki_AlgId_clone(const AlgId *pElement);

/**
 * AttributeTypeAndValue ::= SEQUENCE { type AttributeType, value AttributeValue } (4.1.2.4).
 *
 * The record keeps the identifier octet of any value in `valueTag`, that of a constructed one too,
 * and the content as it stands in `value`. A type of more than 128 content octets is refused.
 */
AttributeValueAssertion *pki_AttributeValueAssertion_new(void);
void pki_AttributeValueAssertion_free(AttributeValueAssertion *pElement);
uint32_t pki_AttributeValueAssertion_e(uint8_t **pp, const AttributeValueAssertion *pElement);
const uint8_t *pki_AttributeValueAssertion_d(const uint8_t *z, const uint8_t *end,
                                             uint32_t impl_tag, AttributeValueAssertion **ppElement,
                                             uint32_t depth);
AttributeValueAssertion *pki_AttributeValueAssertion_clone(const AttributeValueAssertion *pElement);

/**
 * RelativeDistinguishedName ::= SET OF AttributeTypeAndValue (4.1.2.4): a List of
 * AttributeValueAssertion records.
 */
void pki_RelativeDistinguishedName_free(RelativeDistinguishedName *pElement);
uint32_t pki_RelativeDistinguishedName_e(uint8_t **pp, const RelativeDistinguishedName *pElement);
const uint8_t *pki_RelativeDistinguishedName_d(const uint8_t *z, const uint8_t *end,
                                               uint32_t impl_tag,
                                               RelativeDistinguishedName **ppElement,
                                               uint32_t depth);
RelativeDistinguishedName *pki_RelativeDistinguishedName_clone(
    const RelativeDistinguishedName *pElement);

/**
 * RDNSequence ::= SEQUENCE OF RelativeDistinguishedName (4.1.2.4): a List of
 * RelativeDistinguishedName lists, which may be empty. rfc4514.h makes its texts.
 */
void pki_RDNSequence_free(RDNSequence *pElement);
uint32_t pki_RDNSequence_e(uint8_t **pp, const RDNSequence *pElement);
const uint8_t *pki_RDNSequence_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 RDNSequence **ppElement, uint32_t depth);
RDNSequence *pki_RDNSequence_clone(const RDNSequence *pElement);

/** Validity ::= SEQUENCE { notBefore Time, notAfter Time } (4.1.2.5). */
Validity *pki_Validity_new(void);
void pki_Validity_free(Validity *pElement);
uint32_t pki_Validity_e(uint8_t **pp, const Validity *pElement);
const uint8_t *pki_Validity_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              Validity **ppElement, uint32_t depth);
Validity *pki_Validity_clone(const Validity *pElement);

/**
 * SubjectPublicKeyInfo ::= SEQUENCE { algorithm AlgorithmIdentifier, subjectPublicKey BIT STRING }
 * (4.1.2.7). The key is written as it stands, and wiped before it is released.
 */
SubjectPKI *pki_SubjectPKI_new(void);
void pki_SubjectPKI_free(SubjectPKI *pElement);
uint32_t pki_SubjectPKI_e(uint8_t **pp, const SubjectPKI *pElement);
const uint8_t *pki_SubjectPKI_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                SubjectPKI **ppElement, uint32_t depth);
SubjectPKI *pki_SubjectPKI_clone(const SubjectPKI *pElement);

/**
 * Extension ::= SEQUENCE { extnID OBJECT IDENTIFIER, critical BOOLEAN DEFAULT FALSE, extnValue
 * OCTET STRING } (4.1.2.9).
 */
Extension *pki_Extension_new(void);
void pki_Extension_free(Extension *pElement);
uint32_t pki_Extension_e(uint8_t **pp, const Extension *pElement);
const uint8_t *pki_Extension_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               Extension **ppElement, uint32_t depth);
Extension *pki_Extension_clone(const Extension *pElement);

/** Extensions ::= SEQUENCE OF Extension (4.1.2.9): a List of Extension records. */
void pki_Extensions_free(Extensions *pElement);
uint32_t pki_Extensions_e(uint8_t **pp, const Extensions *pElement);
const uint8_t *pki_Extensions_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                Extensions **ppElement, uint32_t depth);
Extensions *pki_Extensions_clone(const Extensions *pElement);

/**
 * TBSCertificate (4.1.2). Both names may be empty; the text of an empty name is "". Unique
 * identifiers and extensions are taken in every version.
 */
Certificate_TBS *pki_Certificate_TBS_new(void);
void pki_Certificate_TBS_free(Certificate_TBS *pElement);
uint32_t pki_Certificate_TBS_e(uint8_t **pp, const Certificate_TBS *pElement);
const uint8_t *pki_Certificate_TBS_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     Certificate_TBS **ppElement, uint32_t depth);
Certificate_TBS *pki_Certificate_TBS_clone(const Certificate_TBS *pElement);

/**
 * Certificate ::= SEQUENCE { tbsCertificate TBSCertificate, signatureAlgorithm
 * AlgorithmIdentifier, signatureValue BIT STRING } (4.1).
 */
Certificate *pki_Certificate_new(void);
void pki_Certificate_free(Certificate *pElement);
uint32_t pki_Certificate_e(uint8_t **pp, const Certificate *pElement);
const uint8_t *pki_Certificate_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 Certificate **ppElement, uint32_t depth);
Certificate *pki_Certificate_clone(const Certificate *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Certificate revocation lists                                                                 */
/* -------------------------------------------------------------------------------------------- */

/**
 * An element of revokedCertificates (5.1): SEQUENCE { userCertificate INTEGER, revocationDate
 * Time, crlEntryExtensions Extensions OPTIONAL }.
 */
CRLEntry *pki_CRLEntry_new(void);
void pki_CRLEntry_free(CRLEntry *pElement);
uint32_t pki_CRLEntry_e(uint8_t **pp, const CRLEntry *pElement);
const uint8_t *pki_CRLEntry_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              CRLEntry **ppElement, uint32_t depth);
CRLEntry *pki_CRLEntry_clone(const CRLEntry *pElement);

/** TBSCertList (5.1.2). */
CertificateList_TBS *pki_CertificateList_TBS_new(void);
void pki_CertificateList_TBS_free(CertificateList_TBS *pElement);
uint32_t pki_CertificateList_TBS_e(uint8_t **pp, const CertificateList_TBS *pElement);
const uint8_t *pki_CertificateList_TBS_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                         CertificateList_TBS **ppElement, uint32_t depth);
CertificateList_TBS *pki_CertificateList_TBS_clone(const CertificateList_TBS *pElement);

/**
 * CertificateList ::= SEQUENCE { tbsCertList TBSCertList, signatureAlgorithm AlgorithmIdentifier,
 * signatureValue BIT STRING } (5.1).
 */
CertificateRevocationList *pki_CertificateRevocationList_new(void);
void pki_CertificateRevocationList_free(CertificateRevocationList *pElement);
uint32_t pki_CertificateRevocationList_e(uint8_t **pp, const CertificateRevocationList *pElement);
const uint8_t *pki_CertificateRevocationList_d(const uint8_t *z, const uint8_t *end,
                                               uint32_t impl_tag,
                                               CertificateRevocationList **ppElement,
                                               uint32_t depth);
CertificateRevocationList *pki_CertificateRevocationList_clone(
    const CertificateRevocationList *pElement);

/* -------------------------------------------------------------------------------------------- */
/* General names                                                                                */
/* -------------------------------------------------------------------------------------------- */

/**
 * AnotherName ::= SEQUENCE { type-id OBJECT IDENTIFIER, value [0] EXPLICIT ANY DEFINED BY type-id
 * } (4.2.1.6).
 */
OtherName *pki_OtherName_new(void);
void pki_OtherName_free(OtherName *pElement);
uint32_t pki_OtherName_e(uint8_t **pp, const OtherName *pElement);
const uint8_t *pki_OtherName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               OtherName **ppElement, uint32_t depth);
OtherName *pki_OtherName_clone(const OtherName *pElement);

/**
 * GeneralName ::= CHOICE (4.2.1.6) of all nine kinds. `kind` is the number of the tag, and says
 * what `value` points to:
 *
 * | kind | alternative | value |
 * |---|---|---|
 * | 0 | otherName | OtherName |
 * | 1 | rfc822Name | IA5String |
 * | 2 | dNSName | IA5String |
 * | 3 | x400Address | Any: the whole element, tag included |
 * | 4 | directoryName | RDNSequence, where liborvelasn1 has a text |
 * | 5 | ediPartyName | Any: the whole element, tag included |
 * | 6 | uniformResourceIdentifier | IA5String |
 * | 7 | iPAddress | OctetString |
 * | 8 | registeredID | ObjId |
 */
GeneralName *pki_GeneralName_new(void);
void pki_GeneralName_free(GeneralName *pElement);
uint32_t pki_GeneralName_e(uint8_t **pp, const GeneralName *pElement);
const uint8_t *pki_GeneralName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 GeneralName **ppElement, uint32_t depth);
GeneralName *pki_GeneralName_clone(const GeneralName *pElement);

/**
 * GeneralNames ::= SEQUENCE OF GeneralName (4.2.1.6): a List of GeneralName records.
 * SubjectAltName, IssuerAltName and CertificateIssuer (5.3.3) are of this type.
 */
void pki_GeneralNames_free(List *pElement);
uint32_t pki_GeneralNames_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_GeneralNames_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  List **ppElement, uint32_t depth);
List *pki_GeneralNames_clone(const List *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Attributes                                                                                   */
/* -------------------------------------------------------------------------------------------- */

/**
 * Attribute ::= SEQUENCE { type AttributeType, values SET OF AttributeValue } (Appendix A.1). The
 * record is that of pkcs9.h: each value is one whole element, in an Any record.
 */
Attribute *pki_Attribute_new(void);
void pki_Attribute_free(Attribute *pElement);
uint32_t pki_Attribute_e(uint8_t **pp, const Attribute *pElement);
const uint8_t *pki_Attribute_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               Attribute **ppElement, uint32_t depth);
Attribute *pki_Attribute_clone(const Attribute *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Extensions of certificates                                                                   */
/* -------------------------------------------------------------------------------------------- */

/**
 * PolicyQualifierInfo ::= SEQUENCE { policyQualifierId OBJECT IDENTIFIER, qualifier ANY DEFINED BY
 * policyQualifierId } (4.2.1.4).
 */
typedef struct pki_PolicyQualifierInfo {
  ObjId *policyQualifierId; /**< owned */
  Any *qualifier;           /**< one whole element, owned */
} pki_PolicyQualifierInfo;

/**
 * PolicyInformation ::= SEQUENCE { policyIdentifier OBJECT IDENTIFIER, policyQualifiers SEQUENCE OF
 * PolicyQualifierInfo OPTIONAL } (4.2.1.4).
 */
typedef struct pki_PolicyInformation {
  ObjId *policyIdentifier; /**< owned */
  List *policyQualifiers;  /**< pki_PolicyQualifierInfo records, owned, or NULL */
} pki_PolicyInformation;

/**
 * DisplayText ::= CHOICE (4.2.1.4). `kind` is the number of the string's tag: 22 IA5String, 26
 * VisibleString, 30 BMPString, 12 UTF8String.
 */
typedef struct pki_DisplayText {
  uint8_t kind; /**< 22, 26, 30 or 12 */
  void *value;  /**< an ASN1String with the content as it stands, owned */
} pki_DisplayText;

/**
 * NoticeReference ::= SEQUENCE { organization DisplayText, noticeNumbers SEQUENCE OF INTEGER }
 * (4.2.1.4).
 */
typedef struct pki_NoticeReference {
  pki_DisplayText *organization; /**< owned */
  List *noticeNumbers;           /**< Integer records, owned */
} pki_NoticeReference;

/**
 * UserNotice ::= SEQUENCE { noticeRef NoticeReference OPTIONAL, explicitText DisplayText OPTIONAL }
 * (4.2.1.4).
 */
typedef struct pki_UserNotice {
  pki_NoticeReference *noticeRef; /**< owned, or NULL */
  pki_DisplayText *explicitText;  /**< owned, or NULL */
} pki_UserNotice;

/**
 * PrivateKeyUsagePeriod ::= SEQUENCE { notBefore [0] GeneralizedTime OPTIONAL, notAfter [1]
 * GeneralizedTime OPTIONAL } (RFC 3280, 4.2.1.4).
 */
typedef struct pki_PrivateKeyUsagePeriod {
  GeneralizedTime *notBefore; /**< owned, or NULL */
  GeneralizedTime *notAfter;  /**< owned, or NULL */
} pki_PrivateKeyUsagePeriod;

/**
 * AuthorityKeyIdentifier ::= SEQUENCE { keyIdentifier [0] KeyIdentifier OPTIONAL,
 * authorityCertIssuer [1] GeneralNames OPTIONAL, authorityCertSerialNumber [2]
 * CertificateSerialNumber OPTIONAL }, with implicit tags (4.2.1.1).
 */
AuthorityKeyIdentifier *pki_AuthorityKeyIdentifier_new(void);
void pki_AuthorityKeyIdentifier_free(AuthorityKeyIdentifier *pElement);
uint32_t pki_AuthorityKeyIdentifier_e(uint8_t **pp, const AuthorityKeyIdentifier *pElement);
const uint8_t *pki_AuthorityKeyIdentifier_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            AuthorityKeyIdentifier **ppElement, uint32_t depth);
AuthorityKeyIdentifier *pki_AuthorityKeyIdentifier_clone(const AuthorityKeyIdentifier *pElement);

/** SubjectKeyIdentifier ::= OCTET STRING (4.2.1.2). */
void pki_SubjectKeyIdentifier_free(OctetString *pElement);
uint32_t pki_SubjectKeyIdentifier_e(uint8_t **pp, const OctetString *pElement);
const uint8_t *pki_SubjectKeyIdentifier_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          OctetString **ppElement, uint32_t depth);
OctetString *pki_SubjectKeyIdentifier_clone(const OctetString *pElement);

/**
 * KeyUsage ::= BIT STRING of named bits (4.2.1.3), digitalSignature first. It is written without
 * the zero bits at its end.
 */
void pki_KeyUsage_free(BitString *pElement);
uint32_t pki_KeyUsage_e(uint8_t **pp, const BitString *pElement);
const uint8_t *pki_KeyUsage_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              BitString **ppElement, uint32_t depth);
BitString *pki_KeyUsage_clone(const BitString *pElement);

/**
 * PrivateKeyUsagePeriod (RFC 3280, 4.2.1.4). The texts are those of the content, such as
 * "20260101000000Z".
 */
pki_PrivateKeyUsagePeriod *pki_PrivateKeyUsagePeriod_new(void);
void pki_PrivateKeyUsagePeriod_free(pki_PrivateKeyUsagePeriod *pElement);
uint32_t pki_PrivateKeyUsagePeriod_e(uint8_t **pp, const pki_PrivateKeyUsagePeriod *pElement);
const uint8_t *pki_PrivateKeyUsagePeriod_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           pki_PrivateKeyUsagePeriod **ppElement, uint32_t depth);
pki_PrivateKeyUsagePeriod *pki_PrivateKeyUsagePeriod_clone(
    const pki_PrivateKeyUsagePeriod *pElement);

/**
 * CertificatePolicies ::= SEQUENCE OF PolicyInformation (4.2.1.4): a List of pki_PolicyInformation
 * records.
 */
void pki_CertificatePolicies_free(List *pElement);
uint32_t pki_CertificatePolicies_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_CertificatePolicies_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                         List **ppElement, uint32_t depth);
List *pki_CertificatePolicies_clone(const List *pElement);

/** An element of CertificatePolicies (4.2.1.4). */
pki_PolicyInformation *pki_PolicyInformation_new(void);
void pki_PolicyInformation_free(pki_PolicyInformation *pElement);
uint32_t pki_PolicyInformation_e(uint8_t **pp, const pki_PolicyInformation *pElement);
const uint8_t *pki_PolicyInformation_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       pki_PolicyInformation **ppElement, uint32_t depth);
pki_PolicyInformation *pki_PolicyInformation_clone(const pki_PolicyInformation *pElement);

/**
 * A qualifier of a policy (4.2.1.4). The identifier says which type reads `qualifier`: CPSuri for
 * 1.3.6.1.5.5.7.2.1, UserNotice for 1.3.6.1.5.5.7.2.2.
 */
pki_PolicyQualifierInfo *pki_PolicyQualifierInfo_new(void);
void pki_PolicyQualifierInfo_free(pki_PolicyQualifierInfo *pElement);
uint32_t pki_PolicyQualifierInfo_e(uint8_t **pp, const pki_PolicyQualifierInfo *pElement);
const uint8_t *pki_PolicyQualifierInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                         pki_PolicyQualifierInfo **ppElement, uint32_t depth);
pki_PolicyQualifierInfo *pki_PolicyQualifierInfo_clone(const pki_PolicyQualifierInfo *pElement);

/** CPSuri ::= IA5String (4.2.1.4). */
void pki_CPSuri_free(IA5String *pElement);
uint32_t pki_CPSuri_e(uint8_t **pp, const IA5String *pElement);
const uint8_t *pki_CPSuri_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            IA5String **ppElement, uint32_t depth);
IA5String *pki_CPSuri_clone(const IA5String *pElement);

/** UserNotice (4.2.1.4). */
pki_UserNotice *pki_UserNotice_new(void);
void pki_UserNotice_free(pki_UserNotice *pElement);
uint32_t pki_UserNotice_e(uint8_t **pp, const pki_UserNotice *pElement);
const uint8_t *pki_UserNotice_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                pki_UserNotice **ppElement, uint32_t depth);
pki_UserNotice *pki_UserNotice_clone(const pki_UserNotice *pElement);

/** NoticeReference (4.2.1.4). */
pki_NoticeReference *pki_NoticeReference_new(void);
void pki_NoticeReference_free(pki_NoticeReference *pElement);
uint32_t pki_NoticeReference_e(uint8_t **pp, const pki_NoticeReference *pElement);
const uint8_t *pki_NoticeReference_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     pki_NoticeReference **ppElement, uint32_t depth);
pki_NoticeReference *pki_NoticeReference_clone(const pki_NoticeReference *pElement);

/**
 * DisplayText ::= CHOICE { ia5String IA5String, visibleString VisibleString, bmpString BMPString,
 * utf8String UTF8String } (4.2.1.4), of any length.
 */
pki_DisplayText *pki_DisplayText_new(void);
void pki_DisplayText_free(pki_DisplayText *pElement);
uint32_t pki_DisplayText_e(uint8_t **pp, const pki_DisplayText *pElement);
const uint8_t *pki_DisplayText_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 pki_DisplayText **ppElement, uint32_t depth);
pki_DisplayText *pki_DisplayText_clone(const pki_DisplayText *pElement);

/** PolicyMappings ::= SEQUENCE OF PolicyMapping (4.2.1.5): a List of PolicyMapping records. */
void pki_PolicyMappings_free(List *pElement);
uint32_t pki_PolicyMappings_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_PolicyMappings_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    List **ppElement, uint32_t depth);
List *pki_PolicyMappings_clone(const List *pElement);

/**
 * An element of PolicyMappings: SEQUENCE { issuerDomainPolicy CertPolicyId, subjectDomainPolicy
 * CertPolicyId } (4.2.1.5).
 */
PolicyMapping *pki_PolicyMapping_new(void);
void pki_PolicyMapping_free(PolicyMapping *pElement);
uint32_t pki_PolicyMapping_e(uint8_t **pp, const PolicyMapping *pElement);
const uint8_t *pki_PolicyMapping_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   PolicyMapping **ppElement, uint32_t depth);
PolicyMapping *pki_PolicyMapping_clone(const PolicyMapping *pElement);

/** SubjectDirectoryAttributes ::= SEQUENCE OF Attribute (4.2.1.8): a List of Attribute records. */
void pki_SubjectDirectoryAttributes_free(List *pElement);
uint32_t pki_SubjectDirectoryAttributes_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_SubjectDirectoryAttributes_d(const uint8_t *z, const uint8_t *end,
                                                uint32_t impl_tag, List **ppElement,
                                                uint32_t depth);
List *pki_SubjectDirectoryAttributes_clone(const List *pElement);

/**
 * BasicConstraints ::= SEQUENCE { cA BOOLEAN DEFAULT FALSE, pathLenConstraint INTEGER OPTIONAL }
 * (4.2.1.9).
 */
BasicConstraints *pki_BasicConstraints_new(void);
void pki_BasicConstraints_free(BasicConstraints *pElement);
uint32_t pki_BasicConstraints_e(uint8_t **pp, const BasicConstraints *pElement);
const uint8_t *pki_BasicConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      BasicConstraints **ppElement, uint32_t depth);
BasicConstraints *pki_BasicConstraints_clone(const BasicConstraints *pElement);

/**
 * GeneralSubtree ::= SEQUENCE { base GeneralName, minimum [0] BaseDistance DEFAULT 0, maximum [1]
 * BaseDistance OPTIONAL }, with implicit tags (4.2.1.10).
 */
GeneralSubtree *pki_GeneralSubtree_new(void);
void pki_GeneralSubtree_free(GeneralSubtree *pElement);
uint32_t pki_GeneralSubtree_e(uint8_t **pp, const GeneralSubtree *pElement);
const uint8_t *pki_GeneralSubtree_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    GeneralSubtree **ppElement, uint32_t depth);
GeneralSubtree *pki_GeneralSubtree_clone(const GeneralSubtree *pElement);

/**
 * NameConstraints ::= SEQUENCE { permittedSubtrees [0] GeneralSubtrees OPTIONAL, excludedSubtrees
 * [1] GeneralSubtrees OPTIONAL }, with implicit tags (4.2.1.10).
 */
NameConstraints *pki_NameConstraints_new(void);
void pki_NameConstraints_free(NameConstraints *pElement);
uint32_t pki_NameConstraints_e(uint8_t **pp, const NameConstraints *pElement);
const uint8_t *pki_NameConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     NameConstraints **ppElement, uint32_t depth);
NameConstraints *pki_NameConstraints_clone(const NameConstraints *pElement);

/**
 * PolicyConstraints ::= SEQUENCE { requireExplicitPolicy [0] SkipCerts OPTIONAL,
 * inhibitPolicyMapping [1] SkipCerts OPTIONAL }, with implicit tags (4.2.1.11).
 */
PolicyConstraints *pki_PolicyConstraints_new(void);
void pki_PolicyConstraints_free(PolicyConstraints *pElement);
uint32_t pki_PolicyConstraints_e(uint8_t **pp, const PolicyConstraints *pElement);
const uint8_t *pki_PolicyConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       PolicyConstraints **ppElement, uint32_t depth);
PolicyConstraints *pki_PolicyConstraints_clone(const PolicyConstraints *pElement);

/** ExtKeyUsageSyntax ::= SEQUENCE OF KeyPurposeId (4.2.1.12): a List of ObjId records. */
void pki_ExtKeyUsageSyntax_free(List *pElement);
uint32_t pki_ExtKeyUsageSyntax_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_ExtKeyUsageSyntax_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       List **ppElement, uint32_t depth);
List *pki_ExtKeyUsageSyntax_clone(const List *pElement);

/**
 * CRLDistributionPoints ::= SEQUENCE OF DistributionPoint (4.2.1.13): a List of DistributionPoint
 * records. FreshestCRL (4.2.1.15, 5.2.6) is of this type.
 */
void pki_CRLDistributionPoints_free(List *pElement);
uint32_t pki_CRLDistributionPoints_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_CRLDistributionPoints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           List **ppElement, uint32_t depth);
List *pki_CRLDistributionPoints_clone(const List *pElement);

/**
 * DistributionPoint ::= SEQUENCE { distributionPoint [0] EXPLICIT DistributionPointName OPTIONAL,
 * reasons [1] IMPLICIT ReasonFlags OPTIONAL, cRLIssuer [2] IMPLICIT GeneralNames OPTIONAL }
 * (4.2.1.13). The reasons are written without the zero bits at their end.
 */
DistributionPoint *pki_DistributionPoint_new(void);
void pki_DistributionPoint_free(DistributionPoint *pElement);
uint32_t pki_DistributionPoint_e(uint8_t **pp, const DistributionPoint *pElement);
const uint8_t *pki_DistributionPoint_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       DistributionPoint **ppElement, uint32_t depth);
DistributionPoint *pki_DistributionPoint_clone(const DistributionPoint *pElement);

/**
 * DistributionPointName ::= CHOICE { fullName [0] IMPLICIT GeneralNames, nameRelativeToCRLIssuer
 * [1] IMPLICIT RelativeDistinguishedName } (4.2.1.13).
 */
DistributionPointName *pki_DistributionPointName_new(void);
void pki_DistributionPointName_free(DistributionPointName *pElement);
uint32_t pki_DistributionPointName_e(uint8_t **pp, const DistributionPointName *pElement);
const uint8_t *pki_DistributionPointName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           DistributionPointName **ppElement, uint32_t depth);
DistributionPointName *pki_DistributionPointName_clone(const DistributionPointName *pElement);

/** InhibitAnyPolicy ::= SkipCerts, an INTEGER (4.2.1.14). */
void pki_InhibitAnyPolicy_free(Integer *pElement);
uint32_t pki_InhibitAnyPolicy_e(uint8_t **pp, const Integer *pElement);
const uint8_t *pki_InhibitAnyPolicy_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      Integer **ppElement, uint32_t depth);
Integer *pki_InhibitAnyPolicy_clone(const Integer *pElement);

/**
 * AuthorityInfoAccessSyntax ::= SEQUENCE OF AccessDescription (4.2.2.1): a List of
 * AccessDescription records. SubjectInfoAccessSyntax (4.2.2.2) is of this type.
 */
void pki_AuthorityInfoAccessSyntax_free(AuthorityInfoAccessSyntax *pElement);
uint32_t pki_AuthorityInfoAccessSyntax_e(uint8_t **pp, const AuthorityInfoAccessSyntax *pElement);
const uint8_t *pki_AuthorityInfoAccessSyntax_d(const uint8_t *z, const uint8_t *end,
                                               uint32_t impl_tag,
                                               AuthorityInfoAccessSyntax **ppElement,
                                               uint32_t depth);
AuthorityInfoAccessSyntax *pki_AuthorityInfoAccessSyntax_clone(
    const AuthorityInfoAccessSyntax *pElement);

/**
 * AccessDescription ::= SEQUENCE { accessMethod OBJECT IDENTIFIER, accessLocation GeneralName }
 * (4.2.2.1).
 */
AccessDescription *pki_AccessDescription_new(void);
void pki_AccessDescription_free(AccessDescription *pElement);
uint32_t pki_AccessDescription_e(uint8_t **pp, const AccessDescription *pElement);
const uint8_t *pki_AccessDescription_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       AccessDescription **ppElement, uint32_t depth);
AccessDescription *pki_AccessDescription_clone(const AccessDescription *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Extensions of revocation lists and their entries                                             */
/* -------------------------------------------------------------------------------------------- */

/**
 * IssuingDistributionPoint ::= SEQUENCE { distributionPoint [0] EXPLICIT DistributionPointName
 * OPTIONAL, onlyContainsUserCerts [1] BOOLEAN DEFAULT FALSE, onlyContainsCACerts [2] BOOLEAN
 * DEFAULT FALSE, onlySomeReasons [3] ReasonFlags OPTIONAL, indirectCRL [4] BOOLEAN DEFAULT FALSE,
 * onlyContainsAttributeCerts [5] BOOLEAN DEFAULT FALSE }, but for the first with implicit tags
 * (5.2.5). A number is 0 for FALSE.
 */
typedef struct pki_IssuingDistributionPoint {
  DistributionPointName *distributionPoint; /**< owned, or NULL */
  uint32_t onlyContainsUserCerts;           /**< 0 where absent */
  uint32_t onlyContainsCACerts;             /**< 0 where absent */
  BitString *onlySomeReasons;               /**< owned, or NULL */
  uint32_t indirectCRL;                     /**< 0 where absent */
  uint32_t onlyContainsAttributeCerts;      /**< 0 where absent */
} pki_IssuingDistributionPoint;

/** CRLNumber ::= INTEGER (5.2.3). */
void pki_CRLNumber_free(Integer *pElement);
uint32_t pki_CRLNumber_e(uint8_t **pp, const Integer *pElement);
const uint8_t *pki_CRLNumber_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               Integer **ppElement, uint32_t depth);
Integer *pki_CRLNumber_clone(const Integer *pElement);

/** BaseCRLNumber ::= CRLNumber (5.2.4), the value of the delta CRL indicator. */
void pki_BaseCRLNumber_free(Integer *pElement);
uint32_t pki_BaseCRLNumber_e(uint8_t **pp, const Integer *pElement);
const uint8_t *pki_BaseCRLNumber_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   Integer **ppElement, uint32_t depth);
Integer *pki_BaseCRLNumber_clone(const Integer *pElement);

/**
 * IssuingDistributionPoint (5.2.5). The reasons are written without the zero bits at their end.
 */
pki_IssuingDistributionPoint *pki_IssuingDistributionPoint_new(void);
void pki_IssuingDistributionPoint_free(pki_IssuingDistributionPoint *pElement);
uint32_t pki_IssuingDistributionPoint_e(uint8_t **pp, const pki_IssuingDistributionPoint *pElement);
const uint8_t *pki_IssuingDistributionPoint_d(const uint8_t *z, const uint8_t *end,
                                              uint32_t impl_tag,
                                              pki_IssuingDistributionPoint **ppElement,
                                              uint32_t depth);
pki_IssuingDistributionPoint *pki_IssuingDistributionPoint_clone(
    const pki_IssuingDistributionPoint *pElement);

/** CRLReason ::= ENUMERATED (5.3.1). */
void pki_CRLReason_free(Integer *pElement);
uint32_t pki_CRLReason_e(uint8_t **pp, const Integer *pElement);
const uint8_t *pki_CRLReason_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               Integer **ppElement, uint32_t depth);
Integer *pki_CRLReason_clone(const Integer *pElement);

/** InvalidityDate ::= GeneralizedTime (5.3.2). */
void pki_InvalidityDate_free(GeneralizedTime *pElement);
uint32_t pki_InvalidityDate_e(uint8_t **pp, const GeneralizedTime *pElement);
const uint8_t *pki_InvalidityDate_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    GeneralizedTime **ppElement, uint32_t depth);
GeneralizedTime *pki_InvalidityDate_clone(const GeneralizedTime *pElement);

#ifdef __cplusplus
}
#endif

#endif
