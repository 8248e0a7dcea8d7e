/**
 * @file rfc7292.h
 * Stores of keys and certificates (PKCS #12, RFC 7292). rfc5280.h says what the functions promise.
 *
 * Nothing is decrypted or checked. A store is decoded a floor at a time, because each may be
 * encrypted. The way from an open store down to its certificates:
 *
 *     // Decodes the list that an OCTET STRING holds. Returns NULL where it does not.
 *     static List *list_in(const Any *string,
 *                          const uint8_t *(*decode)(const uint8_t *, const uint8_t *, uint32_t,
 *                                                   List **, uint32_t)) {
 *       OctetString *octets = NULL;
 *       List *list = NULL;
 *       if (string == NULL) return NULL;
 *       asn1_OctetString_d(string->data, string->data + string->length, 0, &octets, 0);
 *       if (octets != NULL) decode(octets->data, octets->data + octets->length, 0, &list, 0);
 *       asn1_OctetString_free(octets);
 *       return list;
 *     }
 *
 *     static Certificate *certificate_in(const SafeBag *bag) {
 *       const Any *value = bag->bagValue;
 *       CertBag *cert_bag = NULL;
 *       OctetString *octets = NULL;
 *       Certificate *certificate = NULL;
 *       if (asn1_ObjId_cmp(bag->bagId, asn1_Get_certBag()) != 0) return NULL;
 *       pki_CertBag_d(value->data, value->data + value->length, 0, &cert_bag, 0);
 *       if (cert_bag == NULL) return NULL;
 *       if (asn1_ObjId_cmp(cert_bag->certId, asn1_Get_x509Certificate()) == 0) {
 *         value = cert_bag->certValue;
 *         asn1_OctetString_d(value->data, value->data + value->length, 0, &octets, 0);
 *       }
 *       if (octets != NULL) {
 *         pki_Certificate_d(octets->data, octets->data + octets->length, 0, &certificate, 0);
 *       }
 *       asn1_OctetString_free(octets);
 *       pki_CertBag_free(cert_bag);
 *       return certificate;
 *     }
 *
 *     void each_certificate(const pki_PFX *pfx, void (*f)(const Certificate *)) {
 *       List *safe = list_in(pfx->authSafe->content, pki_AuthenticatedSafe_d);
 *       for (int32_t i = 0; i < List_len(safe); ++i) {
 *         // A content that is encrypted is no OCTET STRING, and opens to no list.
 *         const pki_ContentInfo *info = (const pki_ContentInfo *)List_get(safe, i);
 *         List *bags = list_in(info->content, pki_SafeContents_d);
 *         for (int32_t j = 0; j < List_len(bags); ++j) {
 *           Certificate *certificate = certificate_in((const SafeBag *)List_get(bags, j));
 *           if (certificate != NULL) f(certificate);
 *           pki_Certificate_free(certificate);
 *         }
 *         pki_SafeContents_free(bags);
 *       }
 *       pki_AuthenticatedSafe_free(safe);
 *     }
 *
 * A content of the type encryptedData is a pki_EncryptedData: decrypt the octets of its
 * `encryptedContentInfo->encryptedContent`, and decode the result with pki_SafeContents_d().
 */
#ifndef ORVELPKI_RFC7292_H
#define ORVELPKI_RFC7292_H

#include "pkcs12.h"
#include "rfc5652.h"
#include "rfc5958.h"
#include "rfc8017.h"

#ifdef __cplusplus
extern "C" {
#endif

/** PFX. */
typedef struct pki_PFX {
  Integer *version;          /**< owned */
  pki_ContentInfo *authSafe; /**< owned */
  MacData *macData;          /**< owned; NULL where absent */
} pki_PFX;

/**
 * PFX ::= SEQUENCE { version INTEGER, authSafe ContentInfo, macData MacData OPTIONAL } (4). The
 * content of authSafe is an OCTET STRING that holds an AuthenticatedSafe, or a SignedData whose
 * content does.
 */
pki_PFX *pki_PFX_new(void);
void pki_PFX_free(pki_PFX *pElement);
uint32_t pki_PFX_e(uint8_t **pp, const pki_PFX *pElement);
const uint8_t *pki_PFX_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                         pki_PFX **ppElement, uint32_t depth);
pki_PFX *pki_PFX_clone(const pki_PFX *pElement);

/**
 * MacData ::= SEQUENCE { mac DigestInfo, macSalt OCTET STRING, iterations INTEGER DEFAULT 1 } (4).
 */
MacData *pki_MacData_new(void);
void pki_MacData_free(MacData *pElement);
uint32_t pki_MacData_e(uint8_t **pp, const MacData *pElement);
const uint8_t *pki_MacData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             MacData **ppElement, uint32_t depth);
MacData *pki_MacData_clone(const MacData *pElement);

/**
 * AuthenticatedSafe ::= SEQUENCE OF ContentInfo (4.1): a List of pki_ContentInfo records. Each is
 * of the type data, whose OCTET STRING holds SafeContents, or encryptedData or envelopedData,
 * which do so once they are decrypted.
 */
void pki_AuthenticatedSafe_free(List *pElement);
uint32_t pki_AuthenticatedSafe_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_AuthenticatedSafe_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       List **ppElement, uint32_t depth);
List *pki_AuthenticatedSafe_clone(const List *pElement);

/** SafeContents ::= SEQUENCE OF SafeBag (4.2): a List of SafeBag records. */
void pki_SafeContents_free(List *pElement);
uint32_t pki_SafeContents_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_SafeContents_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  List **ppElement, uint32_t depth);
List *pki_SafeContents_clone(const List *pElement);

/**
 * SafeBag ::= SEQUENCE { bagId OBJECT IDENTIFIER, bagValue [0] EXPLICIT ANY DEFINED BY bagId,
 * bagAttributes SET OF Attribute OPTIONAL } (4.2). The value is one whole element, whose octets
 * are zeroed before they are released. Decode it with the function of its type:
 *
 * | bagId | function |
 * |---|---|
 * | asn1_Get_keyBag() | pki_OneAsymmetricKey_d() |
 * | asn1_Get_pkcs_8ShroudedKeyBag() | pki_EncryptedPrivateKeyInfo_d() |
 * | asn1_Get_certBag() | pki_CertBag_d() |
 * | asn1_Get_crlBag() | pki_CRLBag_d() |
 * | asn1_Get_secretBag() | pki_SecretBag_d() |
 * | asn1_Get_safeContentBag() | pki_SafeContents_d() |
 */
SafeBag *pki_SafeBag_new(void);
void pki_SafeBag_free(SafeBag *pElement);
uint32_t pki_SafeBag_e(uint8_t **pp, const SafeBag *pElement);
const uint8_t *pki_SafeBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             SafeBag **ppElement, uint32_t depth);
SafeBag *pki_SafeBag_clone(const SafeBag *pElement);

/**
 * CertBag ::= SEQUENCE { certId OBJECT IDENTIFIER, certValue [0] EXPLICIT ANY DEFINED BY certId }
 * (4.2.3). The value for asn1_Get_x509Certificate() is an OCTET STRING that holds a Certificate,
 * that for asn1_Get_sdsiCertificate() an IA5String.
 */
CertBag *pki_CertBag_new(void);
void pki_CertBag_free(CertBag *pElement);
uint32_t pki_CertBag_e(uint8_t **pp, const CertBag *pElement);
const uint8_t *pki_CertBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                             CertBag **ppElement, uint32_t depth);
CertBag *pki_CertBag_clone(const CertBag *pElement);

/**
 * CRLBag ::= SEQUENCE { crlId OBJECT IDENTIFIER, crlValue [0] EXPLICIT ANY DEFINED BY crlId }
 * (4.2.4). The value for asn1_Get_x509Crl() is an OCTET STRING that holds a CertificateList.
 */
CRLBag *pki_CRLBag_new(void);
void pki_CRLBag_free(CRLBag *pElement);
uint32_t pki_CRLBag_e(uint8_t **pp, const CRLBag *pElement);
const uint8_t *pki_CRLBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            CRLBag **ppElement, uint32_t depth);
CRLBag *pki_CRLBag_clone(const CRLBag *pElement);

/**
 * SecretBag ::= SEQUENCE { secretTypeId OBJECT IDENTIFIER, secretValue [0] EXPLICIT ANY DEFINED BY
 * secretTypeId } (4.2.5). The octets of the value are zeroed before they are released.
 */
SecretBag *pki_SecretBag_new(void);
void pki_SecretBag_free(SecretBag *pElement);
uint32_t pki_SecretBag_e(uint8_t **pp, const SecretBag *pElement);
const uint8_t *pki_SecretBag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               SecretBag **ppElement, uint32_t depth);
SecretBag *pki_SecretBag_clone(const SecretBag *pElement);

/** pkcs-12PbeParams ::= SEQUENCE { salt OCTET STRING, iterations INTEGER } (appendix C). */
PbeParams *pki_PbeParams_new(void);
void pki_PbeParams_free(PbeParams *pElement);
uint32_t pki_PbeParams_e(uint8_t **pp, const PbeParams *pElement);
const uint8_t *pki_PbeParams_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               PbeParams **ppElement, uint32_t depth);
PbeParams *pki_PbeParams_clone(const PbeParams *pElement);

#ifdef __cplusplus
}
#endif

#endif
