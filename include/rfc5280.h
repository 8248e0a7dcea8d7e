/**
 * @file rfc5280.h
 * Certificates, revocation lists, names and extensions in the forms of RFC 5280.
 *
 * Every type `T` here, and in the other headers of liborvelpki that are called after an RFC, has
 * functions of the shapes that asn1_x680.h describes: pki_T_new(), pki_T_free(), pki_T_e(),
 * pki_T_d()
 * and pki_T_clone(). A type without a record of its own, such as a list, has no pki_T_new().
 * They differ from those of liborvelasn1 in what they promise:
 *
 * - No input ends the process, and no argument does: a null pointer where a pointer is required
 * fails.
 * - A decoder takes what its RFC allows, in DER and in BER (X.690). What is left over inside an
 * element
 *   is refused. On failure it stores NULL. Lengths above 2^31 - 1 octets are refused.
 * - An encoder writes DER. What was decoded from DER is written back octet for octet. An encoder
 * returns
 *   0 for a record that is not filled; pki_find_missing() says which field it is. Elements of a SET OF are
 *   written in the order of their list.
 * - A copy has all that its original has.
 *
 * The records are those of liborvelasn1 where these can hold every value. A record that was decoded
 * or
 * filled for the functions here is released by them: pki_Certificate_free(), not
 * asn1_Certificate_free().
 */
#ifndef ORVELPKI_RFC5280_H
#define ORVELPKI_RFC5280_H

#include "asn1_x501.h"
#include "asn1_x509v3.h"
#include "certificate.h"
#include "crl.h"

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

#ifdef __cplusplus
}
#endif

#endif
