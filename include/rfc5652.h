/**
 * @file rfc5652.h
 * Cryptographic messages (CMS, RFC 5652), and those of PKCS #7 (RFC 2315). rfc5280.h says what the
 * functions promise.
 *
 * Nothing is signed, verified, encrypted or decrypted. A decoder takes messages of any version, in
 * DER and in BER. What was of indefinite length is written with definite lengths, and strings in
 * one piece; but an Any is written as it was read.
 */
#ifndef ORVELPKI_RFC5652_H
#define ORVELPKI_RFC5652_H

#include "pkcs7.h"
#include "rfc5280.h"

#ifdef __cplusplus
extern "C" {
#endif

/** ContentInfo. */
typedef struct pki_ContentInfo {
  ObjId *contentType; /**< owned */
  Any *content;       /**< one whole element, owned; NULL where absent, as PKCS #7 allows */
} pki_ContentInfo;

/** IssuerAndSerialNumber. */
typedef struct pki_IssuerAndSerialNumber {
  RDNSequence *issuer;   /**< owned; pki_RDNSequence_text() makes the text */
  Integer *serialNumber; /**< owned */
} pki_IssuerAndSerialNumber;

/** OtherCertificateFormat. */
typedef struct pki_OtherCertificateFormat {
  ObjId *otherCertFormat; /**< owned */
  Any *otherCert;         /**< one whole element, owned */
} pki_OtherCertificateFormat;

/** CertificateChoices. */
typedef struct pki_CertificateChoices {
  uint8_t kind; /**< 16 or 0 to 3 */
  void *value;  /**< owned */
} pki_CertificateChoices;

/** OtherRevocationInfoFormat. */
typedef struct pki_OtherRevocationInfoFormat {
  ObjId *otherRevInfoFormat; /**< owned */
  Any *otherRevInfo;         /**< one whole element, owned */
} pki_OtherRevocationInfoFormat;

/** RevocationInfoChoice. */
typedef struct pki_RevocationInfoChoice {
  uint8_t kind; /**< 16 or 1 */
  void *value;  /**< owned */
} pki_RevocationInfoChoice;

/** The content of a signed or digested message. */
typedef struct pki_EncapsulatedContent {
  uint8_t kind; /**< 4 or 16 */
  void *value;  /**< owned */
} pki_EncapsulatedContent;

/** EncapsulatedContentInfo. */
typedef struct pki_EncapsulatedContentInfo {
  ObjId *eContentType;               /**< owned */
  pki_EncapsulatedContent *eContent; /**< owned; NULL where the content stands elsewhere */
} pki_EncapsulatedContentInfo;

/** SignerIdentifier and RecipientIdentifier. */
typedef struct pki_SignerIdentifier {
  uint8_t kind; /**< 16 or 0 */
  void *value;  /**< owned */
} pki_SignerIdentifier;

/** SignerInfo. */
typedef struct pki_SignerInfo {
  Integer *version;                /**< owned */
  pki_SignerIdentifier *sid;       /**< owned */
  AlgId *digestAlgorithm;          /**< owned */
  List *signedAttrs;               /**< Attribute records, owned; NULL where absent */
  OctetString *signedAttrsEncoded; /**< the element as read, header included; owned, or NULL */
  AlgId *signatureAlgorithm;       /**< owned */
  OctetString *signature;          /**< owned */
  List *unsignedAttrs;             /**< Attribute records, owned; NULL where absent */
} pki_SignerInfo;

/** SignedData. */
typedef struct pki_SignedData {
  Integer *version;                              /**< owned */
  List *digestAlgorithms;                        /**< AlgId records, owned */
  pki_EncapsulatedContentInfo *encapContentInfo; /**< owned */
  List *certificates; /**< pki_CertificateChoices records, owned; NULL where absent */
  List *crls;         /**< pki_RevocationInfoChoice records, owned; NULL where absent */
  List *signerInfos;  /**< pki_SignerInfo records, owned */
} pki_SignedData;

/** DigestedData. */
typedef struct pki_DigestedData {
  Integer *version;                              /**< owned */
  AlgId *digestAlgorithm;                        /**< owned */
  pki_EncapsulatedContentInfo *encapContentInfo; /**< owned */
  OctetString *digest;                           /**< owned */
} pki_DigestedData;

/** KeyTransRecipientInfo. */
typedef struct pki_KeyTransRecipientInfo {
  Integer *version;              /**< owned */
  pki_SignerIdentifier *rid;     /**< owned */
  AlgId *keyEncryptionAlgorithm; /**< owned */
  OctetString *encryptedKey;     /**< owned */
} pki_KeyTransRecipientInfo;

/** OriginatorPublicKey. */
typedef struct pki_OriginatorPublicKey {
  AlgId *algorithm;     /**< owned */
  BitString *publicKey; /**< owned */
} pki_OriginatorPublicKey;

/** OriginatorIdentifierOrKey. */
typedef struct pki_OriginatorIdentifierOrKey {
  uint8_t kind; /**< 16, 0 or 1 */
  void *value;  /**< owned */
} pki_OriginatorIdentifierOrKey;

/** OtherKeyAttribute. */
typedef struct pki_OtherKeyAttribute {
  ObjId *keyAttrId; /**< owned */
  Any *keyAttr;     /**< one whole element, owned; NULL where absent */
} pki_OtherKeyAttribute;

/** RecipientKeyIdentifier. */
typedef struct pki_RecipientKeyIdentifier {
  OctetString *subjectKeyIdentifier; /**< owned */
  GeneralizedTime *date;             /**< a text, owned; NULL where absent */
  pki_OtherKeyAttribute *other;      /**< owned; NULL where absent */
} pki_RecipientKeyIdentifier;

/** KeyAgreeRecipientIdentifier. */
typedef struct pki_KeyAgreeRecipientIdentifier {
  uint8_t kind; /**< 16 or 0 */
  void *value;  /**< owned */
} pki_KeyAgreeRecipientIdentifier;

/** RecipientEncryptedKey. */
typedef struct pki_RecipientEncryptedKey {
  pki_KeyAgreeRecipientIdentifier *rid; /**< owned */
  OctetString *encryptedKey;            /**< owned */
} pki_RecipientEncryptedKey;

/** KeyAgreeRecipientInfo. */
typedef struct pki_KeyAgreeRecipientInfo {
  Integer *version;                          /**< owned */
  pki_OriginatorIdentifierOrKey *originator; /**< owned */
  OctetString *ukm;                          /**< owned; NULL where absent */
  AlgId *keyEncryptionAlgorithm;             /**< owned */
  List *recipientEncryptedKeys;              /**< pki_RecipientEncryptedKey records, owned */
} pki_KeyAgreeRecipientInfo;

/** KEKIdentifier. */
typedef struct pki_KEKIdentifier {
  OctetString *keyIdentifier;   /**< owned */
  GeneralizedTime *date;        /**< a text, owned; NULL where absent */
  pki_OtherKeyAttribute *other; /**< owned; NULL where absent */
} pki_KEKIdentifier;

/** KEKRecipientInfo. */
typedef struct pki_KEKRecipientInfo {
  Integer *version;              /**< owned */
  pki_KEKIdentifier *kekid;      /**< owned */
  AlgId *keyEncryptionAlgorithm; /**< owned */
  OctetString *encryptedKey;     /**< owned */
} pki_KEKRecipientInfo;

/** PasswordRecipientInfo. */
typedef struct pki_PasswordRecipientInfo {
  Integer *version;              /**< owned */
  AlgId *keyDerivationAlgorithm; /**< owned; NULL where absent */
  AlgId *keyEncryptionAlgorithm; /**< owned */
  OctetString *encryptedKey;     /**< owned */
} pki_PasswordRecipientInfo;

/** OtherRecipientInfo. */
typedef struct pki_OtherRecipientInfo {
  ObjId *oriType; /**< owned */
  Any *oriValue;  /**< one whole element, owned */
} pki_OtherRecipientInfo;

/** RecipientInfo. */
typedef struct pki_RecipientInfo {
  uint8_t kind; /**< 16 or 1 to 4 */
  void *value;  /**< owned */
} pki_RecipientInfo;

/** OriginatorInfo. */
typedef struct pki_OriginatorInfo {
  List *certs; /**< pki_CertificateChoices records, owned; NULL where absent */
  List *crls;  /**< pki_RevocationInfoChoice records, owned; NULL where absent */
} pki_OriginatorInfo;

/** EncryptedData. */
typedef struct pki_EncryptedData {
  Integer *version;                           /**< owned */
  EncryptedContentInfo *encryptedContentInfo; /**< owned */
  List *unprotectedAttrs;                     /**< Attribute records, owned; NULL where absent */
} pki_EncryptedData;

/** EnvelopedData. */
typedef struct pki_EnvelopedData {
  Integer *version;                           /**< owned */
  pki_OriginatorInfo *originatorInfo;         /**< owned; NULL where absent */
  List *recipientInfos;                       /**< pki_RecipientInfo records, owned */
  EncryptedContentInfo *encryptedContentInfo; /**< owned */
  List *unprotectedAttrs;                     /**< Attribute records, owned; NULL where absent */
} pki_EnvelopedData;

/** AuthenticatedData. */
typedef struct pki_AuthenticatedData {
  Integer *version;                              /**< owned */
  pki_OriginatorInfo *originatorInfo;            /**< owned; NULL where absent */
  List *recipientInfos;                          /**< pki_RecipientInfo records, owned */
  AlgId *macAlgorithm;                           /**< owned */
  AlgId *digestAlgorithm;                        /**< owned; NULL where absent */
  pki_EncapsulatedContentInfo *encapContentInfo; /**< owned */
  List *authAttrs;                               /**< Attribute records, owned; NULL where absent */
  OctetString *mac;                              /**< owned */
  List *unauthAttrs;                             /**< Attribute records, owned; NULL where absent */
} pki_AuthenticatedData;

/* -------------------------------------------------------------------------------------------- */
/* Attributes                                                                                   */
/* -------------------------------------------------------------------------------------------- */

/**
 * SignedAttributes, UnsignedAttributes and the like ::= SET OF Attribute (5.3): a List of
 * Attribute records. Fields of this type stand under a tag of their own. This is the type under
 * the tag of SET OF, whose encoding is what a digest is made of (5.4, 9.2).
 */
void pki_Attributes_free(List *pElement);
uint32_t pki_Attributes_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_Attributes_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                List **ppElement, uint32_t depth);
List *pki_Attributes_clone(const List *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Messages                                                                                     */
/* -------------------------------------------------------------------------------------------- */

/**
 * ContentInfo ::= SEQUENCE { contentType OBJECT IDENTIFIER, content [0] EXPLICIT ANY DEFINED BY
 * contentType } (3). The content is one whole element, whatever the type. Decode it with the
 * function of the type:
 *
 * | contentType | function |
 * |---|---|
 * | asn1_Get_data(), 1.2.840.113549.1.7.1 | asn1_OctetString_d() |
 * | asn1_Get_signedData(), 1.2.840.113549.1.7.2 | pki_SignedData_d() |
 * | asn1_Get_envelopedData(), 1.2.840.113549.1.7.3 | pki_EnvelopedData_d() |
 * | asn1_Get_digestedData(), 1.2.840.113549.1.7.5 | pki_DigestedData_d() |
 * | asn1_Get_encryptedData(), 1.2.840.113549.1.7.6 | pki_EncryptedData_d() |
 * | 1.2.840.113549.1.9.16.1.2 | pki_AuthenticatedData_d() |
 */
pki_ContentInfo *pki_ContentInfo_new(void);
void pki_ContentInfo_free(pki_ContentInfo *pElement);
uint32_t pki_ContentInfo_e(uint8_t **pp, const pki_ContentInfo *pElement);
const uint8_t *pki_ContentInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 pki_ContentInfo **ppElement, uint32_t depth);
pki_ContentInfo *pki_ContentInfo_clone(const pki_ContentInfo *pElement);

/** IssuerAndSerialNumber ::= SEQUENCE { issuer Name, serialNumber INTEGER } (10.2.4). */
pki_IssuerAndSerialNumber *pki_IssuerAndSerialNumber_new(void);
void pki_IssuerAndSerialNumber_free(pki_IssuerAndSerialNumber *pElement);
uint32_t pki_IssuerAndSerialNumber_e(uint8_t **pp, const pki_IssuerAndSerialNumber *pElement);
const uint8_t *pki_IssuerAndSerialNumber_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           pki_IssuerAndSerialNumber **ppElement, uint32_t depth);
pki_IssuerAndSerialNumber *pki_IssuerAndSerialNumber_clone(
    const pki_IssuerAndSerialNumber *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Certificates and revocation lists in messages                                                */
/* -------------------------------------------------------------------------------------------- */

/**
 * OtherCertificateFormat ::= SEQUENCE { otherCertFormat OBJECT IDENTIFIER, otherCert ANY DEFINED
 * BY otherCertFormat } (10.2.2).
 */
pki_OtherCertificateFormat *pki_OtherCertificateFormat_new(void);
void pki_OtherCertificateFormat_free(pki_OtherCertificateFormat *pElement);
uint32_t pki_OtherCertificateFormat_e(uint8_t **pp, const pki_OtherCertificateFormat *pElement);
const uint8_t *pki_OtherCertificateFormat_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            pki_OtherCertificateFormat **ppElement, uint32_t depth);
pki_OtherCertificateFormat *pki_OtherCertificateFormat_clone(
    const pki_OtherCertificateFormat *pElement);

/**
 * CertificateChoices ::= CHOICE (10.2.2). `kind` is the number of the tag, and says what `value`
 * points to:
 *
 * | kind | alternative | value |
 * |---|---|---|
 * | 16 | certificate | Certificate |
 * | 0 | extendedCertificate | Any: the whole element, tag included |
 * | 1 | v1AttrCert | Any: the whole element, tag included |
 * | 2 | v2AttrCert | Any: the whole element, tag included |
 * | 3 | other | pki_OtherCertificateFormat |
 */
pki_CertificateChoices *pki_CertificateChoices_new(void);
void pki_CertificateChoices_free(pki_CertificateChoices *pElement);
uint32_t pki_CertificateChoices_e(uint8_t **pp, const pki_CertificateChoices *pElement);
const uint8_t *pki_CertificateChoices_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        pki_CertificateChoices **ppElement, uint32_t depth);
pki_CertificateChoices *pki_CertificateChoices_clone(const pki_CertificateChoices *pElement);

/**
 * OtherRevocationInfoFormat ::= SEQUENCE { otherRevInfoFormat OBJECT IDENTIFIER, otherRevInfo ANY
 * DEFINED BY otherRevInfoFormat } (10.2.1). An OCSP response is one (RFC 5940).
 */
pki_OtherRevocationInfoFormat *pki_OtherRevocationInfoFormat_new(void);
void pki_OtherRevocationInfoFormat_free(pki_OtherRevocationInfoFormat *pElement);
uint32_t pki_OtherRevocationInfoFormat_e(uint8_t **pp,
                                         const pki_OtherRevocationInfoFormat *pElement);
const uint8_t *pki_OtherRevocationInfoFormat_d(const uint8_t *z, const uint8_t *end,
                                               uint32_t impl_tag,
                                               pki_OtherRevocationInfoFormat **ppElement,
                                               uint32_t depth);
pki_OtherRevocationInfoFormat *pki_OtherRevocationInfoFormat_clone(
    const pki_OtherRevocationInfoFormat *pElement);

/**
 * RevocationInfoChoice ::= CHOICE (10.2.1). `kind` is the number of the tag, and says what `value`
 * points to:
 *
 * | kind | alternative | value |
 * |---|---|---|
 * | 16 | crl | CertificateRevocationList |
 * | 1 | other | pki_OtherRevocationInfoFormat |
 */
pki_RevocationInfoChoice *pki_RevocationInfoChoice_new(void);
void pki_RevocationInfoChoice_free(pki_RevocationInfoChoice *pElement);
uint32_t pki_RevocationInfoChoice_e(uint8_t **pp, const pki_RevocationInfoChoice *pElement);
const uint8_t *pki_RevocationInfoChoice_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          pki_RevocationInfoChoice **ppElement, uint32_t depth);
pki_RevocationInfoChoice *pki_RevocationInfoChoice_clone(const pki_RevocationInfoChoice *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Signed and digested messages                                                                 */
/* -------------------------------------------------------------------------------------------- */

/**
 * What stands inside the tag of eContent. RFC 5652 has an OCTET STRING there. PKCS #7 has an
 * element of the type that the content is of, as in signed code (5.2.1): an OCTET STRING for data,
 * a SEQUENCE for all others. `kind` is the number of the tag, and says what `value` points to:
 *
 * | kind | value |
 * |---|---|
 * | 4 | OctetString: the content. The segments of a constructed string are joined |
 * | 16 | Any: the whole SEQUENCE. A digest is made of its content octets, without the header |
 */
pki_EncapsulatedContent *pki_EncapsulatedContent_new(void);
void pki_EncapsulatedContent_free(pki_EncapsulatedContent *pElement);
uint32_t pki_EncapsulatedContent_e(uint8_t **pp, const pki_EncapsulatedContent *pElement);
const uint8_t *pki_EncapsulatedContent_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                         pki_EncapsulatedContent **ppElement, uint32_t depth);
pki_EncapsulatedContent *pki_EncapsulatedContent_clone(const pki_EncapsulatedContent *pElement);

/**
 * EncapsulatedContentInfo ::= SEQUENCE { eContentType OBJECT IDENTIFIER, eContent [0] EXPLICIT
 * OCTET STRING OPTIONAL } (5.2).
 */
pki_EncapsulatedContentInfo *pki_EncapsulatedContentInfo_new(void);
void pki_EncapsulatedContentInfo_free(pki_EncapsulatedContentInfo *pElement);
uint32_t pki_EncapsulatedContentInfo_e(uint8_t **pp, const pki_EncapsulatedContentInfo *pElement);
const uint8_t *pki_EncapsulatedContentInfo_d(const uint8_t *z, const uint8_t *end,
                                             uint32_t impl_tag,
                                             pki_EncapsulatedContentInfo **ppElement,
                                             uint32_t depth);
pki_EncapsulatedContentInfo *pki_EncapsulatedContentInfo_clone(
    const pki_EncapsulatedContentInfo *pElement);

/**
 * SignerIdentifier ::= CHOICE (5.3), and RecipientIdentifier (6.2.1), which is the same. `kind` is
 * the number of the tag, and says what `value` points to:
 *
 * | kind | alternative | value |
 * |---|---|---|
 * | 16 | issuerAndSerialNumber | pki_IssuerAndSerialNumber |
 * | 0 | subjectKeyIdentifier | OctetString |
 */
pki_SignerIdentifier *pki_SignerIdentifier_new(void);
void pki_SignerIdentifier_free(pki_SignerIdentifier *pElement);
uint32_t pki_SignerIdentifier_e(uint8_t **pp, const pki_SignerIdentifier *pElement);
const uint8_t *pki_SignerIdentifier_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      pki_SignerIdentifier **ppElement, uint32_t depth);
pki_SignerIdentifier *pki_SignerIdentifier_clone(const pki_SignerIdentifier *pElement);

/**
 * SignerInfo ::= SEQUENCE { version CMSVersion, sid SignerIdentifier, digestAlgorithm
 * AlgorithmIdentifier, signedAttrs [0] IMPLICIT SET OF Attribute OPTIONAL, signatureAlgorithm
 * AlgorithmIdentifier, signature OCTET STRING, unsignedAttrs [1] IMPLICIT SET OF Attribute
 * OPTIONAL } (5.3).
 */
pki_SignerInfo *pki_SignerInfo_new(void);
void pki_SignerInfo_free(pki_SignerInfo *pElement);
uint32_t pki_SignerInfo_e(uint8_t **pp, const pki_SignerInfo *pElement);
const uint8_t *pki_SignerInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                pki_SignerInfo **ppElement, uint32_t depth);
pki_SignerInfo *pki_SignerInfo_clone(const pki_SignerInfo *pElement);

/**
 * Writes the octets that the signature is made of where there are signed attributes: these, encoded
 * under the tag of SET OF (5.4). Returns their number, and takes `pp`, as an encoder does. Returns
 * 0 where there are no signed attributes: the signature is made of the content itself then.
 *
 * The octets are those that were read, but for the first. Without kept octets, and where those have
 * an indefinite length, `signedAttrs` is encoded. A signer who fills that list has to put it into
 * the order of DER, by the octets of the elements (X.690, 11.6).
 */
uint32_t pki_SignerInfo_signed_octets(uint8_t **pp, const pki_SignerInfo *pElement);

/**
 * SignedData ::= SEQUENCE { version CMSVersion, digestAlgorithms SET OF AlgorithmIdentifier,
 * encapContentInfo EncapsulatedContentInfo, certificates [0] IMPLICIT SET OF CertificateChoices
 * OPTIONAL, crls [1] IMPLICIT SET OF RevocationInfoChoice OPTIONAL, signerInfos SET OF SignerInfo
 * } (5.1), of any version.
 */
pki_SignedData *pki_SignedData_new(void);
void pki_SignedData_free(pki_SignedData *pElement);
uint32_t pki_SignedData_e(uint8_t **pp, const pki_SignedData *pElement);
const uint8_t *pki_SignedData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                pki_SignedData **ppElement, uint32_t depth);
pki_SignedData *pki_SignedData_clone(const pki_SignedData *pElement);

/**
 * DigestedData ::= SEQUENCE { version CMSVersion, digestAlgorithm AlgorithmIdentifier,
 * encapContentInfo EncapsulatedContentInfo, digest OCTET STRING } (7).
 */
pki_DigestedData *pki_DigestedData_new(void);
void pki_DigestedData_free(pki_DigestedData *pElement);
uint32_t pki_DigestedData_e(uint8_t **pp, const pki_DigestedData *pElement);
const uint8_t *pki_DigestedData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  pki_DigestedData **ppElement, uint32_t depth);
pki_DigestedData *pki_DigestedData_clone(const pki_DigestedData *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Recipients                                                                                   */
/* -------------------------------------------------------------------------------------------- */

/**
 * KeyTransRecipientInfo ::= SEQUENCE { version CMSVersion, rid RecipientIdentifier,
 * keyEncryptionAlgorithm AlgorithmIdentifier, encryptedKey OCTET STRING } (6.2.1).
 */
pki_KeyTransRecipientInfo *pki_KeyTransRecipientInfo_new(void);
void pki_KeyTransRecipientInfo_free(pki_KeyTransRecipientInfo *pElement);
uint32_t pki_KeyTransRecipientInfo_e(uint8_t **pp, const pki_KeyTransRecipientInfo *pElement);
const uint8_t *pki_KeyTransRecipientInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           pki_KeyTransRecipientInfo **ppElement, uint32_t depth);
pki_KeyTransRecipientInfo *pki_KeyTransRecipientInfo_clone(
    const pki_KeyTransRecipientInfo *pElement);

/**
 * OriginatorPublicKey ::= SEQUENCE { algorithm AlgorithmIdentifier, publicKey BIT STRING }
 * (6.2.2).
 */
pki_OriginatorPublicKey *pki_OriginatorPublicKey_new(void);
void pki_OriginatorPublicKey_free(pki_OriginatorPublicKey *pElement);
uint32_t pki_OriginatorPublicKey_e(uint8_t **pp, const pki_OriginatorPublicKey *pElement);
const uint8_t *pki_OriginatorPublicKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                         pki_OriginatorPublicKey **ppElement, uint32_t depth);
pki_OriginatorPublicKey *pki_OriginatorPublicKey_clone(const pki_OriginatorPublicKey *pElement);

/**
 * OriginatorIdentifierOrKey ::= CHOICE (6.2.2). `kind` is the number of the tag, and says what
 * `value` points to:
 *
 * | kind | alternative | value |
 * |---|---|---|
 * | 16 | issuerAndSerialNumber | pki_IssuerAndSerialNumber |
 * | 0 | subjectKeyIdentifier | OctetString |
 * | 1 | originatorKey | pki_OriginatorPublicKey |
 */
pki_OriginatorIdentifierOrKey *pki_OriginatorIdentifierOrKey_new(void);
void pki_OriginatorIdentifierOrKey_free(pki_OriginatorIdentifierOrKey *pElement);
uint32_t pki_OriginatorIdentifierOrKey_e(uint8_t **pp,
                                         const pki_OriginatorIdentifierOrKey *pElement);
const uint8_t *pki_OriginatorIdentifierOrKey_d(const uint8_t *z, const uint8_t *end,
                                               uint32_t impl_tag,
                                               pki_OriginatorIdentifierOrKey **ppElement,
                                               uint32_t depth);
pki_OriginatorIdentifierOrKey *pki_OriginatorIdentifierOrKey_clone(
    const pki_OriginatorIdentifierOrKey *pElement);

/**
 * OtherKeyAttribute ::= SEQUENCE { keyAttrId OBJECT IDENTIFIER, keyAttr ANY DEFINED BY keyAttrId
 * OPTIONAL } (10.2.7).
 */
pki_OtherKeyAttribute *pki_OtherKeyAttribute_new(void);
void pki_OtherKeyAttribute_free(pki_OtherKeyAttribute *pElement);
uint32_t pki_OtherKeyAttribute_e(uint8_t **pp, const pki_OtherKeyAttribute *pElement);
const uint8_t *pki_OtherKeyAttribute_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       pki_OtherKeyAttribute **ppElement, uint32_t depth);
pki_OtherKeyAttribute *pki_OtherKeyAttribute_clone(const pki_OtherKeyAttribute *pElement);

/**
 * RecipientKeyIdentifier ::= SEQUENCE { subjectKeyIdentifier OCTET STRING, date GeneralizedTime
 * OPTIONAL, other OtherKeyAttribute OPTIONAL } (6.2.2).
 */
pki_RecipientKeyIdentifier *pki_RecipientKeyIdentifier_new(void);
void pki_RecipientKeyIdentifier_free(pki_RecipientKeyIdentifier *pElement);
uint32_t pki_RecipientKeyIdentifier_e(uint8_t **pp, const pki_RecipientKeyIdentifier *pElement);
const uint8_t *pki_RecipientKeyIdentifier_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            pki_RecipientKeyIdentifier **ppElement, uint32_t depth);
pki_RecipientKeyIdentifier *pki_RecipientKeyIdentifier_clone(
    const pki_RecipientKeyIdentifier *pElement);

/**
 * KeyAgreeRecipientIdentifier ::= CHOICE (6.2.2). `kind` is the number of the tag, and says what
 * `value` points to:
 *
 * | kind | alternative | value |
 * |---|---|---|
 * | 16 | issuerAndSerialNumber | pki_IssuerAndSerialNumber |
 * | 0 | rKeyId | pki_RecipientKeyIdentifier |
 */
pki_KeyAgreeRecipientIdentifier *pki_KeyAgreeRecipientIdentifier_new(void);
void pki_KeyAgreeRecipientIdentifier_free(pki_KeyAgreeRecipientIdentifier *pElement);
uint32_t pki_KeyAgreeRecipientIdentifier_e(uint8_t **pp,
                                           const pki_KeyAgreeRecipientIdentifier *pElement);
const uint8_t *pki_KeyAgreeRecipientIdentifier_d(const uint8_t *z, const uint8_t *end,
                                                 uint32_t impl_tag,
                                                 pki_KeyAgreeRecipientIdentifier **ppElement,
                                                 uint32_t depth);
pki_KeyAgreeRecipientIdentifier *pki_KeyAgreeRecipientIdentifier_clone(
    const pki_KeyAgreeRecipientIdentifier *pElement);

/**
 * RecipientEncryptedKey ::= SEQUENCE { rid KeyAgreeRecipientIdentifier, encryptedKey OCTET STRING
 * } (6.2.2).
 */
pki_RecipientEncryptedKey *pki_RecipientEncryptedKey_new(void);
void pki_RecipientEncryptedKey_free(pki_RecipientEncryptedKey *pElement);
uint32_t pki_RecipientEncryptedKey_e(uint8_t **pp, const pki_RecipientEncryptedKey *pElement);
const uint8_t *pki_RecipientEncryptedKey_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           pki_RecipientEncryptedKey **ppElement, uint32_t depth);
pki_RecipientEncryptedKey *pki_RecipientEncryptedKey_clone(
    const pki_RecipientEncryptedKey *pElement);

/**
 * KeyAgreeRecipientInfo ::= SEQUENCE { version CMSVersion, originator [0] EXPLICIT
 * OriginatorIdentifierOrKey, ukm [1] EXPLICIT OCTET STRING OPTIONAL, keyEncryptionAlgorithm
 * AlgorithmIdentifier, recipientEncryptedKeys SEQUENCE OF RecipientEncryptedKey } (6.2.2).
 */
pki_KeyAgreeRecipientInfo *pki_KeyAgreeRecipientInfo_new(void);
void pki_KeyAgreeRecipientInfo_free(pki_KeyAgreeRecipientInfo *pElement);
uint32_t pki_KeyAgreeRecipientInfo_e(uint8_t **pp, const pki_KeyAgreeRecipientInfo *pElement);
const uint8_t *pki_KeyAgreeRecipientInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           pki_KeyAgreeRecipientInfo **ppElement, uint32_t depth);
pki_KeyAgreeRecipientInfo *pki_KeyAgreeRecipientInfo_clone(
    const pki_KeyAgreeRecipientInfo *pElement);

/**
 * KEKIdentifier ::= SEQUENCE { keyIdentifier OCTET STRING, date GeneralizedTime OPTIONAL, other
 * OtherKeyAttribute OPTIONAL } (6.2.3).
 */
pki_KEKIdentifier *pki_KEKIdentifier_new(void);
void pki_KEKIdentifier_free(pki_KEKIdentifier *pElement);
uint32_t pki_KEKIdentifier_e(uint8_t **pp, const pki_KEKIdentifier *pElement);
const uint8_t *pki_KEKIdentifier_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   pki_KEKIdentifier **ppElement, uint32_t depth);
pki_KEKIdentifier *pki_KEKIdentifier_clone(const pki_KEKIdentifier *pElement);

/**
 * KEKRecipientInfo ::= SEQUENCE { version CMSVersion, kekid KEKIdentifier, keyEncryptionAlgorithm
 * AlgorithmIdentifier, encryptedKey OCTET STRING } (6.2.3).
 */
pki_KEKRecipientInfo *pki_KEKRecipientInfo_new(void);
void pki_KEKRecipientInfo_free(pki_KEKRecipientInfo *pElement);
uint32_t pki_KEKRecipientInfo_e(uint8_t **pp, const pki_KEKRecipientInfo *pElement);
const uint8_t *pki_KEKRecipientInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      pki_KEKRecipientInfo **ppElement, uint32_t depth);
pki_KEKRecipientInfo *pki_KEKRecipientInfo_clone(const pki_KEKRecipientInfo *pElement);

/**
 * PasswordRecipientInfo ::= SEQUENCE { version CMSVersion, keyDerivationAlgorithm [0] IMPLICIT
 * AlgorithmIdentifier OPTIONAL, keyEncryptionAlgorithm AlgorithmIdentifier, encryptedKey OCTET
 * STRING } (6.2.4).
 */
pki_PasswordRecipientInfo *pki_PasswordRecipientInfo_new(void);
void pki_PasswordRecipientInfo_free(pki_PasswordRecipientInfo *pElement);
uint32_t pki_PasswordRecipientInfo_e(uint8_t **pp, const pki_PasswordRecipientInfo *pElement);
const uint8_t *pki_PasswordRecipientInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           pki_PasswordRecipientInfo **ppElement, uint32_t depth);
pki_PasswordRecipientInfo *pki_PasswordRecipientInfo_clone(
    const pki_PasswordRecipientInfo *pElement);

/**
 * OtherRecipientInfo ::= SEQUENCE { oriType OBJECT IDENTIFIER, oriValue ANY DEFINED BY oriType }
 * (6.2.5).
 */
pki_OtherRecipientInfo *pki_OtherRecipientInfo_new(void);
void pki_OtherRecipientInfo_free(pki_OtherRecipientInfo *pElement);
uint32_t pki_OtherRecipientInfo_e(uint8_t **pp, const pki_OtherRecipientInfo *pElement);
const uint8_t *pki_OtherRecipientInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        pki_OtherRecipientInfo **ppElement, uint32_t depth);
pki_OtherRecipientInfo *pki_OtherRecipientInfo_clone(const pki_OtherRecipientInfo *pElement);

/**
 * RecipientInfo ::= CHOICE (6.2). `kind` is the number of the tag, and says what `value` points
 * to:
 *
 * | kind | alternative | value |
 * |---|---|---|
 * | 16 | ktri | pki_KeyTransRecipientInfo |
 * | 1 | kari | pki_KeyAgreeRecipientInfo |
 * | 2 | kekri | pki_KEKRecipientInfo |
 * | 3 | pwri | pki_PasswordRecipientInfo |
 * | 4 | ori | pki_OtherRecipientInfo |
 */
pki_RecipientInfo *pki_RecipientInfo_new(void);
void pki_RecipientInfo_free(pki_RecipientInfo *pElement);
uint32_t pki_RecipientInfo_e(uint8_t **pp, const pki_RecipientInfo *pElement);
const uint8_t *pki_RecipientInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   pki_RecipientInfo **ppElement, uint32_t depth);
pki_RecipientInfo *pki_RecipientInfo_clone(const pki_RecipientInfo *pElement);

/**
 * OriginatorInfo ::= SEQUENCE { certs [0] IMPLICIT SET OF CertificateChoices OPTIONAL, crls [1]
 * IMPLICIT SET OF RevocationInfoChoice OPTIONAL } (6.1).
 */
pki_OriginatorInfo *pki_OriginatorInfo_new(void);
void pki_OriginatorInfo_free(pki_OriginatorInfo *pElement);
uint32_t pki_OriginatorInfo_e(uint8_t **pp, const pki_OriginatorInfo *pElement);
const uint8_t *pki_OriginatorInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    pki_OriginatorInfo **ppElement, uint32_t depth);
pki_OriginatorInfo *pki_OriginatorInfo_clone(const pki_OriginatorInfo *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Encrypted and authenticated messages                                                         */
/* -------------------------------------------------------------------------------------------- */

/**
 * EncryptedContentInfo ::= SEQUENCE { contentType OBJECT IDENTIFIER, contentEncryptionAlgorithm
 * AlgorithmIdentifier, encryptedContent [0] IMPLICIT OCTET STRING OPTIONAL } (6.1). The segments
 * of a constructed string are joined.
 */
EncryptedContentInfo *pki_EncryptedContentInfo_new(void);
void pki_EncryptedContentInfo_free(EncryptedContentInfo *pElement);
uint32_t pki_EncryptedContentInfo_e(uint8_t **pp, const EncryptedContentInfo *pElement);
const uint8_t *pki_EncryptedContentInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          EncryptedContentInfo **ppElement, uint32_t depth);
EncryptedContentInfo *pki_EncryptedContentInfo_clone(const EncryptedContentInfo *pElement);

/**
 * EncryptedData ::= SEQUENCE { version CMSVersion, encryptedContentInfo EncryptedContentInfo,
 * unprotectedAttrs [1] IMPLICIT SET OF Attribute OPTIONAL } (8).
 */
pki_EncryptedData *pki_EncryptedData_new(void);
void pki_EncryptedData_free(pki_EncryptedData *pElement);
uint32_t pki_EncryptedData_e(uint8_t **pp, const pki_EncryptedData *pElement);
const uint8_t *pki_EncryptedData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   pki_EncryptedData **ppElement, uint32_t depth);
pki_EncryptedData *pki_EncryptedData_clone(const pki_EncryptedData *pElement);

/**
 * EnvelopedData ::= SEQUENCE { version CMSVersion, originatorInfo [0] IMPLICIT OriginatorInfo
 * OPTIONAL, recipientInfos SET OF RecipientInfo, encryptedContentInfo EncryptedContentInfo,
 * unprotectedAttrs [1] IMPLICIT SET OF Attribute OPTIONAL } (6.1).
 */
pki_EnvelopedData *pki_EnvelopedData_new(void);
void pki_EnvelopedData_free(pki_EnvelopedData *pElement);
uint32_t pki_EnvelopedData_e(uint8_t **pp, const pki_EnvelopedData *pElement);
const uint8_t *pki_EnvelopedData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   pki_EnvelopedData **ppElement, uint32_t depth);
pki_EnvelopedData *pki_EnvelopedData_clone(const pki_EnvelopedData *pElement);

/**
 * AuthenticatedData ::= SEQUENCE { version CMSVersion, originatorInfo [0] IMPLICIT OriginatorInfo
 * OPTIONAL, recipientInfos SET OF RecipientInfo, macAlgorithm AlgorithmIdentifier, digestAlgorithm
 * [1] IMPLICIT AlgorithmIdentifier OPTIONAL, encapContentInfo EncapsulatedContentInfo, authAttrs
 * [2] IMPLICIT SET OF Attribute OPTIONAL, mac OCTET STRING, unauthAttrs [3] IMPLICIT SET OF
 * Attribute OPTIONAL } (9.1).
 *
 * Where there are authenticated attributes, the code is made of pki_Attributes_e() of them (9.2).
 */
pki_AuthenticatedData *pki_AuthenticatedData_new(void);
void pki_AuthenticatedData_free(pki_AuthenticatedData *pElement);
uint32_t pki_AuthenticatedData_e(uint8_t **pp, const pki_AuthenticatedData *pElement);
const uint8_t *pki_AuthenticatedData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       pki_AuthenticatedData **ppElement, uint32_t depth);
pki_AuthenticatedData *pki_AuthenticatedData_clone(const pki_AuthenticatedData *pElement);

#ifdef __cplusplus
}
#endif

#endif
