/**
 * @file asn1_x509v3.h
 * The syntaxes of certificate and CRL extensions (RFC 5280, 4.2, 5.2), and their identifiers.
 *
 * An Extension holds its value as octets. To read one of these syntaxes, pass the octets to its
 * decoder. Several types have a form of this library's own, as their comments say. A value in the
 * public form is then refused, or decodes to a record that lacks fields, with the cursor before the
 * first field that was not read.
 *
 * A type that holds a GeneralName may end the process where that is a directory name, as
 * asn1_Name_d() says, and cannot be copied where it is an other name with content.
 */
#ifndef ORVELASN1_ASN1_X509V3_H
#define ORVELASN1_ASN1_X509V3_H

#include "certificate.h"

#ifdef __cplusplus
extern "C" {
#endif

/** AnotherName ::= SEQUENCE { type-id OBJECT IDENTIFIER, value [0] EXPLICIT ANY }. */
typedef struct OtherName {
  ObjId *type; /**< owned */
  Any *value;  /**< one whole element, owned */
} OtherName;

/**
 * GeneralName ::= CHOICE (RFC 5280, 4.2.1.6). The type of `value` depends on `kind`: 0 an
 * OtherName; 1, 2 and 6 (mail, DNS, URI) an IA5String; 4 a Name; 7 (IP address) an OctetString; 8
 * an ObjId. The kinds 3 and 5 have no value.
 */
typedef struct GeneralName {
  uint8_t kind; /**< the context tag number */
  void *value;  /**< owned, of the type that `kind` says; or NULL */
} GeneralName;

/**
 * AuthorityKeyIdentifier, with explicit tags. The public form (RFC 5280, 4.2.1.1) has implicit
 * tags: it decodes to an empty record where the key identifier or the serial number comes first,
 * and is refused where the issuer comes first.
 */
typedef struct AuthorityKeyIdentifier {
  OctetString *keyIdentifier;         /**< [0], owned, or NULL */
  List *authorityCertIssuer;          /**< [1], GeneralName records, owned, or NULL */
  Integer *authorityCertSerialNumber; /**< [2], owned, or NULL */
} AuthorityKeyIdentifier;

/**
 * BasicConstraints ::= SEQUENCE { cA BOOLEAN DEFAULT FALSE, pathLenConstraint INTEGER OPTIONAL }.
 */
typedef struct BasicConstraints {
  uint32_t cA; /**< 0 where absent, otherwise the content octet as read, such as 255 */
  Integer *pathLenConstraint; /**< owned, or NULL */
} BasicConstraints;

/**
 * GeneralSubtree, with explicit tags. Of the public form (RFC 5280, 4.2.1.10), which has implicit
 * tags, only `base` is read.
 */
typedef struct GeneralSubtree {
  GeneralName *base; /**< owned */
  Integer *minimum;  /**< [0], owned; NULL where absent, no default is filled in */
  Integer *maximum;  /**< [1], owned, or NULL */
} GeneralSubtree;

/** NameConstraints (RFC 5280, 4.2.1.10), with explicit tags around SEQUENCE OF. */
typedef struct NameConstraints {
  List *permittedSubtrees; /**< [0], GeneralSubtree records, owned, or NULL */
  List *excludedSubtrees;  /**< [1], GeneralSubtree records, owned, or NULL */
} NameConstraints;

/** PolicyConstraints (RFC 5280, 4.2.1.11), with explicit tags. */
typedef struct PolicyConstraints {
  Integer *requireExplicitPolicy; /**< [0], owned, or NULL */
  Integer *inhibitPolicyMapping;  /**< [1], owned, or NULL */
} PolicyConstraints;

/** One element of PolicyMappings: SEQUENCE { issuerDomainPolicy, subjectDomainPolicy }. */
typedef struct PolicyMapping {
  ObjId *issuerDomainPolicy;  /**< owned */
  ObjId *subjectDomainPolicy; /**< owned */
} PolicyMapping;

/**
 * PrivateKeyUsagePeriod (RFC 3280, 4.2.1.4), with explicit tags and UTCTime. The public form has
 * implicit tags and GeneralizedTime.
 */
typedef struct PrivateKeyUsagePeriod {
  UTCTime *notBefore; /**< [0], owned, or NULL */
  UTCTime *notAfter;  /**< [1], owned, or NULL */
} PrivateKeyUsagePeriod;

/**
 * DistributionPointName ::= CHOICE { fullName [0] GeneralNames, nameRelativeToCRLIssuer [1]
 * RelativeDistinguishedName }.
 */
typedef struct DistributionPointName {
  uint8_t kind; /**< 0 or 1 */
  void
      *value; /**< a List: of GeneralName records for 0, a RelativeDistinguishedName for 1; owned */
} DistributionPointName;

/**
 * DistributionPoint ::= SEQUENCE { distributionPoint [0] EXPLICIT, reasons [1] IMPLICIT BIT STRING,
 * cRLIssuer [2] }, all optional.
 */
typedef struct DistributionPoint {
  DistributionPointName *distributionPoint; /**< owned, or NULL */
  BitString *reasons;                       /**< owned, or NULL */
  List *cRLIssuer;                          /**< GeneralName records, owned, or NULL */
} DistributionPoint;

/**
 * AccessDescription ::= SEQUENCE { accessMethod OBJECT IDENTIFIER, accessLocation GeneralName }.
 */
typedef struct AccessDescription {
  ObjId *accessMethod;         /**< owned */
  GeneralName *accessLocation; /**< owned */
} AccessDescription;

/** AuthorityInfoAccessSyntax ::= SEQUENCE OF AccessDescription; List_new(0) makes one. */
typedef List AuthorityInfoAccessSyntax;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
OtherName *asn1_OtherName_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_OtherName_free(OtherName *pElement);

/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. The
 * second argument is not read.
 */
uint32_t asn1_OtherName_e(uint8_t **pp, const void *unused, const OtherName *pElement);
/** Decodes an OtherName. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_OtherName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                OtherName **ppElement, uint32_t depth);

/**
 * Makes an empty copy of a record without fields, which the caller owns. Returns NULL for NULL, for
 * a record whose `type` or `value` is set, or when memory is exhausted.
 */
OtherName *asn1_OtherName_clone(const OtherName *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
GeneralName *asn1_GeneralName_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_GeneralName_free(GeneralName *pElement);
/**
 * Encodes the name. Returns the number of octets, or 0 for a kind that has no value and for a value
 * that fails. A NULL `value` of any other kind ends the process.
 */
uint32_t asn1_GeneralName_e(uint8_t **pp, const GeneralName *pElement);
/**
 * Decodes a name. Returns the cursor past it, or NULL, also for the kinds that have no value.
 * `impl_tag` must be 0. A directory name has the SETs directly under its tag: the public form, with
 * a SEQUENCE inside (RFC 5280, 4.2.1.6), is refused. A value in it under an identifier octet of 100
 * or more ends the process, as asn1_Name_d() says.
 */
const uint8_t *asn1_GeneralName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  GeneralName **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for an other name with content,
 * or when memory is exhausted.
 */
GeneralName *asn1_GeneralName_clone(const GeneralName *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
AuthorityKeyIdentifier *asn1_AuthorityKeyIdentifier_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_AuthorityKeyIdentifier_free(AuthorityKeyIdentifier *pElement);
/**
 * Decodes an AuthorityKeyIdentifier. Returns the cursor past the last field that it recognises, or
 * NULL.
 */
const uint8_t *asn1_AuthorityKeyIdentifier_d(const uint8_t *z, const uint8_t *end,
                                             uint32_t impl_tag, AuthorityKeyIdentifier **ppElement,
                                             uint32_t depth);
/** Returns NULL, whatever the record holds: this type cannot be copied. */
AuthorityKeyIdentifier *asn1_AuthorityKeyIdentifier_clone(const AuthorityKeyIdentifier *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
BasicConstraints *asn1_BasicConstraints_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_BasicConstraints_free(BasicConstraints *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_BasicConstraints_e(uint8_t **pp, const BasicConstraints *pElement);
/**
 * Decodes a BasicConstraints. Returns the cursor past the last field that it recognises, or NULL.
 */
const uint8_t *asn1_BasicConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       BasicConstraints **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
BasicConstraints *asn1_BasicConstraints_clone(const BasicConstraints *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
GeneralSubtree *asn1_GeneralSubtree_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_GeneralSubtree_free(GeneralSubtree *pElement);
/**
 * Decodes a GeneralSubtree. Returns the cursor past the last field that it recognises, or NULL.
 */
const uint8_t *asn1_GeneralSubtree_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     GeneralSubtree **ppElement, uint32_t depth);
/** Returns NULL, whatever the record holds: this type cannot be copied. */
GeneralSubtree *asn1_GeneralSubtree_clone(const GeneralSubtree *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
NameConstraints *asn1_NameConstraints_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_NameConstraints_free(NameConstraints *pElement);
/**
 * Decodes a NameConstraints. Returns the cursor past the last field that it recognises, or NULL.
 */
const uint8_t *asn1_NameConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      NameConstraints **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for a record with a subtree in
 * it, or when memory is exhausted.
 */
NameConstraints *asn1_NameConstraints_clone(const NameConstraints *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
PolicyConstraints *asn1_PolicyConstraints_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_PolicyConstraints_free(PolicyConstraints *pElement);
/**
 * Decodes a PolicyConstraints. Returns the cursor past the last field that it recognises, or NULL.
 */
const uint8_t *asn1_PolicyConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        PolicyConstraints **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
PolicyConstraints *asn1_PolicyConstraints_clone(const PolicyConstraints *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
PolicyMapping *asn1_PolicyMapping_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_PolicyMapping_free(PolicyMapping *pElement);
/** Decodes a PolicyMapping. Returns the cursor past the last field that it recognises, or NULL. */
const uint8_t *asn1_PolicyMapping_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    PolicyMapping **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, or when memory is exhausted.
 */
PolicyMapping *asn1_PolicyMapping_clone(const PolicyMapping *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
PrivateKeyUsagePeriod *asn1_PrivateKeyUsagePeriod_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_PrivateKeyUsagePeriod_free(PrivateKeyUsagePeriod *pElement);
/**
 * Decodes a PrivateKeyUsagePeriod. Returns the cursor past the last field that it recognises, or
 * NULL.
 */
const uint8_t *asn1_PrivateKeyUsagePeriod_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            PrivateKeyUsagePeriod **ppElement, uint32_t depth);
/** Returns NULL, whatever the record holds: this type cannot be copied. */
PrivateKeyUsagePeriod *asn1_PrivateKeyUsagePeriod_clone(const PrivateKeyUsagePeriod *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
DistributionPointName *asn1_DistributionPointName_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_DistributionPointName_free(DistributionPointName *pElement);
/**
 * Encodes the name. Returns the number of octets, or 0 for an unknown kind and for a value that
 * fails. A NULL `value` is an empty list for kind 0, and ends the process for kind 1.
 */
uint32_t asn1_DistributionPointName_e(uint8_t **pp, const DistributionPointName *pElement);
/** Decodes a name. Returns the cursor past it, or NULL. `impl_tag` must be 0. */
const uint8_t *asn1_DistributionPointName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            DistributionPointName **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for an other name with content
 * in the record, or when memory is exhausted.
 */
DistributionPointName *asn1_DistributionPointName_clone(const DistributionPointName *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
DistributionPoint *asn1_DistributionPoint_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_DistributionPoint_free(DistributionPoint *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_DistributionPoint_e(uint8_t **pp, const DistributionPoint *pElement);
/**
 * Decodes a DistributionPoint. Returns the cursor past the last field that it recognises, or NULL.
 * `cRLIssuer` is read under the octet 82 only and written under A2: of what this library writes,
 * the decoder stops before that field.
 */
const uint8_t *asn1_DistributionPoint_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        DistributionPoint **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for an other name with content
 * in the record, or when memory is exhausted.
 */
DistributionPoint *asn1_DistributionPoint_clone(const DistributionPoint *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
AccessDescription *asn1_AccessDescription_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_AccessDescription_free(AccessDescription *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_AccessDescription_e(uint8_t **pp, const AccessDescription *pElement);
/**
 * Decodes an AccessDescription. Returns the cursor past the last field that it recognises, or NULL.
 */
const uint8_t *asn1_AccessDescription_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        AccessDescription **ppElement, uint32_t depth);
/**
 * Makes a deep copy, which the caller owns. Returns NULL for NULL, for an other name with content
 * in the record, or when memory is exhausted.
 */
AccessDescription *asn1_AccessDescription_clone(const AccessDescription *pElement);

/** Releases the list and its records. NULL is ignored. */
void asn1_AuthorityInfoAccessSyntax_free(AuthorityInfoAccessSyntax *pElement);

/** Encodes the SEQUENCE. Returns the number of octets, or 0 when a record fails. */
uint32_t asn1_AuthorityInfoAccessSyntax_e(uint8_t **pp, const AuthorityInfoAccessSyntax *pElement);
/** Decodes the SEQUENCE, as asn1_SeqOf_d(). Returns the cursor past it, or NULL. */
const uint8_t *asn1_AuthorityInfoAccessSyntax_d(const uint8_t *z, const uint8_t *end,
                                                uint32_t impl_tag,
                                                AuthorityInfoAccessSyntax **ppElement,
                                                uint32_t depth);

/* Object identifiers. Each getter returns the same constant record on every call. The library owns
 * it: never release it. In a record that will be released, store a copy of asn1_ObjId_clone(). */

/** Returns id_ce, 2.5.29. */
const ObjId *asn1_Get_id_ce(void);
/** Returns id_ce_authorityKeyIdentifier, 2.5.29.35. */
const ObjId *asn1_Get_id_ce_authorityKeyIdentifier(void);
/** Returns id_ce_subjectKeyIdentifier, 2.5.29.14. */
const ObjId *asn1_Get_id_ce_subjectKeyIdentifier(void);
/** Returns id_ce_keyUsage, 2.5.29.15. */
const ObjId *asn1_Get_id_ce_keyUsage(void);
/** Returns id_ce_privateKeyUsagePeriod, 2.5.29.16. */
const ObjId *asn1_Get_id_ce_privateKeyUsagePeriod(void);
/** Returns id_qt, 1.3.6.1.5.5.7.2. */
const ObjId *asn1_Get_id_qt(void);
/** Returns id_ce_certificatePolicies, 2.5.29.32. */
const ObjId *asn1_Get_id_ce_certificatePolicies(void);
/** Returns anyPolicy, 2.5.29.32.0. */
const ObjId *asn1_Get_anyPolicy(void);
/** Returns id_qt_cps, 1.3.6.1.5.5.7.2.1. */
const ObjId *asn1_Get_id_qt_cps(void);
/**
 * Returns id_qt_unotice, which has the value of id_qt_cps, 1.3.6.1.5.5.7.2.1. This is meant,
 * although
 * RFC 5280, 4.2.1.4 assigns 1.3.6.1.5.5.7.2.2.
 */
const ObjId *asn1_Get_id_qt_unotice(void);
/** Returns id_ce_policyMappings, 2.5.29.33. */
const ObjId *asn1_Get_id_ce_policyMappings(void);
/** Returns id_ce_subjectAltName, 2.5.29.17. */
const ObjId *asn1_Get_id_ce_subjectAltName(void);
/** Returns id_ce_issuerAltName, 2.5.29.18. */
const ObjId *asn1_Get_id_ce_issuerAltName(void);
/** Returns id_ce_subjectDirectoryAttributes, 2.5.29.9. */
const ObjId *asn1_Get_id_ce_subjectDirectoryAttributes(void);
/** Returns id_ce_basicConstraints, 2.5.29.19. */
const ObjId *asn1_Get_id_ce_basicConstraints(void);
/** Returns id_ce_nameConstraints, 2.5.29.30. */
const ObjId *asn1_Get_id_ce_nameConstraints(void);
/** Returns id_ce_policyConstraints, 2.5.29.36. */
const ObjId *asn1_Get_id_ce_policyConstraints(void);
/** Returns id_ce_extKeyUsage, 2.5.29.37. */
const ObjId *asn1_Get_id_ce_extKeyUsage(void);
/** Returns anyExtendedKeyUsage, 2.5.29.37.0. */
const ObjId *asn1_Get_anyExtendedKeyUsage(void);
/** Returns id_kp, 1.3.6.1.5.5.7.3. */
const ObjId *asn1_Get_id_kp(void);
/** Returns id_kp_serverAuth, 1.3.6.1.5.5.7.3.1. */
const ObjId *asn1_Get_id_kp_serverAuth(void);
/** Returns id_kp_clientAuth, 1.3.6.1.5.5.7.3.2. */
const ObjId *asn1_Get_id_kp_clientAuth(void);
/** Returns id_kp_codeSigning, 1.3.6.1.5.5.7.3.3. */
const ObjId *asn1_Get_id_kp_codeSigning(void);
/** Returns id_kp_emailProtection, 1.3.6.1.5.5.7.3.4. */
const ObjId *asn1_Get_id_kp_emailProtection(void);
/** Returns id_kp_timeStamping, 1.3.6.1.5.5.7.3.8. */
const ObjId *asn1_Get_id_kp_timeStamping(void);
/** Returns id_kp_OCSPSigning, 1.3.6.1.5.5.7.3.9. */
const ObjId *asn1_Get_id_kp_OCSPSigning(void);
/** Returns id_ce_cRLDistributionPoints, 2.5.29.31. */
const ObjId *asn1_Get_id_ce_cRLDistributionPoints(void);
/** Returns id_pkix, 1.3.6.1.5.5.7. */
const ObjId *asn1_Get_id_pkix(void);
/** Returns id_pe, 1.3.6.1.5.5.7.1. */
const ObjId *asn1_Get_id_pe(void);
/** Returns id_pe_authorityInfoAccess, 1.3.6.1.5.5.7.1.1. */
const ObjId *asn1_Get_id_pe_authorityInfoAccess(void);
/** Returns id_ad, 1.3.6.1.5.5.7.48. */
const ObjId *asn1_Get_id_ad(void);
/** Returns id_ad_ocsp, 1.3.6.1.5.5.7.48.1. */
const ObjId *asn1_Get_id_ad_ocsp(void);
/** Returns id_ad_caIssuers, 1.3.6.1.5.5.7.48.2. */
const ObjId *asn1_Get_id_ad_caIssuers(void);
/** Returns id_ce_cRLNumber, 2.5.29.20. */
const ObjId *asn1_Get_id_ce_cRLNumber(void);
/** Returns id_ce_deltaCRLIndicator, 2.5.29.27. */
const ObjId *asn1_Get_id_ce_deltaCRLIndicator(void);
/** Returns id_ce_issuingDistributionPoint, 2.5.29.28. */
const ObjId *asn1_Get_id_ce_issuingDistributionPoint(void);
/** Returns id_ce_freshestCRL, 2.5.29.46. */
const ObjId *asn1_Get_id_ce_freshestCRL(void);
/** Returns id_ce_cRLReason, 2.5.29.21. */
const ObjId *asn1_Get_id_ce_cRLReason(void);
/** Returns id_ce_holdInstructionCode, 2.5.29.23. */
const ObjId *asn1_Get_id_ce_holdInstructionCode(void);
/** Returns id_ce_invalidityDate, 2.5.29.24. */
const ObjId *asn1_Get_id_ce_invalidityDate(void);
/** Returns id_ce_certificateIssuer, 2.5.29.29. */
const ObjId *asn1_Get_id_ce_certificateIssuer(void);

#ifdef __cplusplus
}
#endif

#endif
