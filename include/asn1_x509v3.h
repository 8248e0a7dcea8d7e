/**
 * @file asn1_x509v3.h
 * The syntaxes of certificate and CRL extensions (RFC 5280, 4.2, 5.2), and their identifiers.
 *
 * An Extension holds its value as octets. A caller who wants one of these syntaxes hands the octets
 * to its decoder. Several of them are in forms of this library's own, as told at each type: a value
 * in the public form is then refused, or decodes to a record that lacks fields, with the cursor in
 * front of what was not read.
 *
 * Whatever holds a GeneralName may end the process where that is a directory name, as asn1_Name_d()
 * says, and has no copy where it is an other name.
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
 * GeneralName ::= CHOICE. `value` is, by `kind`: 0 an OtherName; 1, 2 and 6 (mail, DNS, URI) an
 * IA5String; 4 a Name; 7 (IP address) an OctetString; 8 an ObjId. The kinds 3 and 5 have no value.
 */
typedef struct GeneralName {
  uint8_t kind; /**< the context tag number */
  void *value;  /**< owned, of the type that `kind` says; or NULL */
} GeneralName;

/**
 * AuthorityKeyIdentifier, with explicit tags: the public form, with implicit ones, decodes to an
 * empty record where the key's identifier or the serial number comes first, and is refused where
 * the issuer does.
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
 * GeneralSubtree, with explicit tags: of the public form, with implicit ones, only `base` is read.
 */
typedef struct GeneralSubtree {
  GeneralName *base; /**< owned */
  Integer *minimum;  /**< [0], owned; NULL where absent, no default is filled in */
  Integer *maximum;  /**< [1], owned, or NULL */
} GeneralSubtree;

/** NameConstraints, with explicit tags around SEQUENCE OF. */
typedef struct NameConstraints {
  List *permittedSubtrees; /**< [0], GeneralSubtree records, owned, or NULL */
  List *excludedSubtrees;  /**< [1], GeneralSubtree records, owned, or NULL */
} NameConstraints;

/** PolicyConstraints, with explicit tags. */
typedef struct PolicyConstraints {
  Integer *requireExplicitPolicy; /**< [0], owned, or NULL */
  Integer *inhibitPolicyMapping;  /**< [1], owned, or NULL */
} PolicyConstraints;

/** One element of PolicyMappings: SEQUENCE { issuerDomainPolicy, subjectDomainPolicy }. */
typedef struct PolicyMapping {
  ObjId *issuerDomainPolicy;  /**< owned */
  ObjId *subjectDomainPolicy; /**< owned */
} PolicyMapping;

/** PrivateKeyUsagePeriod, with explicit tags and UTCTime. */
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

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
OtherName *asn1_OtherName_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_OtherName_free(OtherName *pElement);

/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. The
 * second argument is not read. */
uint32_t asn1_OtherName_e(uint8_t **pp, const void *unused, const OtherName *pElement);
/** Gives the cursor behind the last field of the OtherName that was recognised, or NULL. */
const uint8_t *asn1_OtherName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                OtherName **ppElement, uint32_t depth);

/**
 * Gives an empty copy, which the caller owns, of a record without fields; NULL for NULL and for a
 * record whose `type` or `value` can be copied.
 */
OtherName *asn1_OtherName_clone(const OtherName *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
GeneralName *asn1_GeneralName_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_GeneralName_free(GeneralName *pElement);
/**
 * Gives the number of octets of the name; 0 for a kind that has no value, or a value that fails. A
 * NULL `value` of the other kinds ends the process.
 */
uint32_t asn1_GeneralName_e(uint8_t **pp, const GeneralName *pElement);
/**
 * Gives the cursor behind the name, or NULL, also for the kinds that have no value. `impl_tag` must
 * be 0. A directory name has the SETs directly under its tag: the public form, with a SEQUENCE
 * inside, is refused. A value in it under an identifier octet of 100 or more ends the process, as
 * asn1_Name_d() says.
 */
const uint8_t *asn1_GeneralName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  GeneralName **ppElement, uint32_t depth);
/**
 * Gives a deep copy, which the caller owns; NULL for NULL, for an other name with content, or when
 * memory is exhausted.
 */
GeneralName *asn1_GeneralName_clone(const GeneralName *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
AuthorityKeyIdentifier *asn1_AuthorityKeyIdentifier_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_AuthorityKeyIdentifier_free(AuthorityKeyIdentifier *pElement);
/**
 * Gives the cursor behind the last field of the AuthorityKeyIdentifier that was recognised, or
 * NULL.
 */
const uint8_t *asn1_AuthorityKeyIdentifier_d(const uint8_t *z, const uint8_t *end,
                                             uint32_t impl_tag, AuthorityKeyIdentifier **ppElement,
                                             uint32_t depth);
/** Gives NULL, whatever the record holds: there are no copies of this type. */
AuthorityKeyIdentifier *asn1_AuthorityKeyIdentifier_clone(const AuthorityKeyIdentifier *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
BasicConstraints *asn1_BasicConstraints_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_BasicConstraints_free(BasicConstraints *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_BasicConstraints_e(uint8_t **pp, const BasicConstraints *pElement);
/** Gives the cursor behind the last field of the BasicConstraints that was recognised, or NULL. */
const uint8_t *asn1_BasicConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       BasicConstraints **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
BasicConstraints *asn1_BasicConstraints_clone(const BasicConstraints *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
GeneralSubtree *asn1_GeneralSubtree_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_GeneralSubtree_free(GeneralSubtree *pElement);
/** Gives the cursor behind the last field of the GeneralSubtree that was recognised, or NULL. */
const uint8_t *asn1_GeneralSubtree_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     GeneralSubtree **ppElement, uint32_t depth);
/** Gives NULL, whatever the record holds: there are no copies of this type. */
GeneralSubtree *asn1_GeneralSubtree_clone(const GeneralSubtree *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
NameConstraints *asn1_NameConstraints_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_NameConstraints_free(NameConstraints *pElement);
/** Gives the cursor behind the last field of the NameConstraints that was recognised, or NULL. */
const uint8_t *asn1_NameConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      NameConstraints **ppElement, uint32_t depth);
/**
 * Gives a deep copy, which the caller owns; NULL for NULL, for a record with a subtree in it, or
 * when memory is exhausted.
 */
NameConstraints *asn1_NameConstraints_clone(const NameConstraints *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
PolicyConstraints *asn1_PolicyConstraints_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_PolicyConstraints_free(PolicyConstraints *pElement);
/** Gives the cursor behind the last field of the PolicyConstraints that was recognised, or NULL. */
const uint8_t *asn1_PolicyConstraints_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        PolicyConstraints **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
PolicyConstraints *asn1_PolicyConstraints_clone(const PolicyConstraints *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
PolicyMapping *asn1_PolicyMapping_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_PolicyMapping_free(PolicyMapping *pElement);
/** Gives the cursor behind the last field of the PolicyMapping that was recognised, or NULL. */
const uint8_t *asn1_PolicyMapping_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    PolicyMapping **ppElement, uint32_t depth);
/** Gives a deep copy, which the caller owns; NULL for NULL, or when memory is exhausted. */
PolicyMapping *asn1_PolicyMapping_clone(const PolicyMapping *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
PrivateKeyUsagePeriod *asn1_PrivateKeyUsagePeriod_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_PrivateKeyUsagePeriod_free(PrivateKeyUsagePeriod *pElement);
/**
 * Gives the cursor behind the last field of the PrivateKeyUsagePeriod that was recognised, or NULL.
 */
const uint8_t *asn1_PrivateKeyUsagePeriod_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            PrivateKeyUsagePeriod **ppElement, uint32_t depth);
/** Gives NULL, whatever the record holds: there are no copies of this type. */
PrivateKeyUsagePeriod *asn1_PrivateKeyUsagePeriod_clone(const PrivateKeyUsagePeriod *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
DistributionPointName *asn1_DistributionPointName_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_DistributionPointName_free(DistributionPointName *pElement);
/**
 * Gives the number of octets of the name; 0 for an unknown kind, or a value that fails. A NULL
 * `value` is an empty list for kind 0, and ends the process for kind 1.
 */
uint32_t asn1_DistributionPointName_e(uint8_t **pp, const DistributionPointName *pElement);
/** Gives the cursor behind the name, or NULL. `impl_tag` must be 0. */
const uint8_t *asn1_DistributionPointName_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            DistributionPointName **ppElement, uint32_t depth);
/**
 * Gives a deep copy, which the caller owns; NULL for NULL, for an other name with content in it, or
 * when memory is exhausted.
 */
DistributionPointName *asn1_DistributionPointName_clone(const DistributionPointName *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
DistributionPoint *asn1_DistributionPoint_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_DistributionPoint_free(DistributionPoint *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_DistributionPoint_e(uint8_t **pp, const DistributionPoint *pElement);
/**
 * Gives the cursor behind the last field of the DistributionPoint that was recognised, or NULL.
 * `cRLIssuer` is read under the octet 82 only, and written as A2: what this library writes, it
 * stops in front of.
 */
const uint8_t *asn1_DistributionPoint_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        DistributionPoint **ppElement, uint32_t depth);
/**
 * Gives a deep copy, which the caller owns; NULL for NULL, for an other name with content in it, or
 * when memory is exhausted.
 */
DistributionPoint *asn1_DistributionPoint_clone(const DistributionPoint *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
AccessDescription *asn1_AccessDescription_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_AccessDescription_free(AccessDescription *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_AccessDescription_e(uint8_t **pp, const AccessDescription *pElement);
/** Gives the cursor behind the last field of the AccessDescription that was recognised, or NULL. */
const uint8_t *asn1_AccessDescription_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        AccessDescription **ppElement, uint32_t depth);
/**
 * Gives a deep copy, which the caller owns; NULL for NULL, for an other name with content in it, or
 * when memory is exhausted.
 */
AccessDescription *asn1_AccessDescription_clone(const AccessDescription *pElement);

/** Gives nothing; releases the list and its records. NULL is ignored. */
void asn1_AuthorityInfoAccessSyntax_free(AuthorityInfoAccessSyntax *pElement);

/** Gives the number of octets of the SEQUENCE; 0 when a record fails. */
uint32_t asn1_AuthorityInfoAccessSyntax_e(uint8_t **pp, const AuthorityInfoAccessSyntax *pElement);
/** Gives the cursor behind the SEQUENCE, or NULL; as asn1_SeqOf_d(). */
const uint8_t *asn1_AuthorityInfoAccessSyntax_d(const uint8_t *z, const uint8_t *end,
                                                uint32_t impl_tag,
                                                AuthorityInfoAccessSyntax **ppElement,
                                                uint32_t depth);

/* Object identifiers. Each getter gives the same constant record on every call. It belongs to the
 * library: it is never released, nor stored in a record that will be. */

/** Gives id_ce, 2.5.29. */
const ObjId *asn1_Get_id_ce(void);
/** Gives id_ce_authorityKeyIdentifier, 2.5.29.35. */
const ObjId *asn1_Get_id_ce_authorityKeyIdentifier(void);
/** Gives id_ce_subjectKeyIdentifier, 2.5.29.14. */
const ObjId *asn1_Get_id_ce_subjectKeyIdentifier(void);
/** Gives id_ce_keyUsage, 2.5.29.15. */
const ObjId *asn1_Get_id_ce_keyUsage(void);
/** Gives id_ce_privateKeyUsagePeriod, 2.5.29.16. */
const ObjId *asn1_Get_id_ce_privateKeyUsagePeriod(void);
/** Gives id_qt, 1.3.6.1.5.5.7.2. */
const ObjId *asn1_Get_id_qt(void);
/** Gives id_ce_certificatePolicies, 2.5.29.32. */
const ObjId *asn1_Get_id_ce_certificatePolicies(void);
/** Gives anyPolicy, 2.5.29.32.0. */
const ObjId *asn1_Get_anyPolicy(void);
/** Gives id_qt_cps, 1.3.6.1.5.5.7.2.1. */
const ObjId *asn1_Get_id_qt_cps(void);
/** Gives id_qt_unotice, 1.3.6.1.5.5.7.2.1; the same value as id_qt_cps. */
const ObjId *asn1_Get_id_qt_unotice(void);
/** Gives id_ce_policyMappings, 2.5.29.33. */
const ObjId *asn1_Get_id_ce_policyMappings(void);
/** Gives id_ce_subjectAltName, 2.5.29.17. */
const ObjId *asn1_Get_id_ce_subjectAltName(void);
/** Gives id_ce_issuerAltName, 2.5.29.18. */
const ObjId *asn1_Get_id_ce_issuerAltName(void);
/** Gives id_ce_subjectDirectoryAttributes, 2.5.29.9. */
const ObjId *asn1_Get_id_ce_subjectDirectoryAttributes(void);
/** Gives id_ce_basicConstraints, 2.5.29.19. */
const ObjId *asn1_Get_id_ce_basicConstraints(void);
/** Gives id_ce_nameConstraints, 2.5.29.30. */
const ObjId *asn1_Get_id_ce_nameConstraints(void);
/** Gives id_ce_policyConstraints, 2.5.29.36. */
const ObjId *asn1_Get_id_ce_policyConstraints(void);
/** Gives id_ce_extKeyUsage, 2.5.29.37. */
const ObjId *asn1_Get_id_ce_extKeyUsage(void);
/** Gives anyExtendedKeyUsage, 2.5.29.37.0. */
const ObjId *asn1_Get_anyExtendedKeyUsage(void);
/** Gives id_kp, 1.3.6.1.5.5.7.3. */
const ObjId *asn1_Get_id_kp(void);
/** Gives id_kp_serverAuth, 1.3.6.1.5.5.7.3.1. */
const ObjId *asn1_Get_id_kp_serverAuth(void);
/** Gives id_kp_clientAuth, 1.3.6.1.5.5.7.3.2. */
const ObjId *asn1_Get_id_kp_clientAuth(void);
/** Gives id_kp_codeSigning, 1.3.6.1.5.5.7.3.3. */
const ObjId *asn1_Get_id_kp_codeSigning(void);
/** Gives id_kp_emailProtection, 1.3.6.1.5.5.7.3.4. */
const ObjId *asn1_Get_id_kp_emailProtection(void);
/** Gives id_kp_timeStamping, 1.3.6.1.5.5.7.3.8. */
const ObjId *asn1_Get_id_kp_timeStamping(void);
/** Gives id_kp_OCSPSigning, 1.3.6.1.5.5.7.3.9. */
const ObjId *asn1_Get_id_kp_OCSPSigning(void);
/** Gives id_ce_cRLDistributionPoints, 2.5.29.31. */
const ObjId *asn1_Get_id_ce_cRLDistributionPoints(void);
/** Gives id_pkix, 1.3.6.1.5.5.7. */
const ObjId *asn1_Get_id_pkix(void);
/** Gives id_pe, 1.3.6.1.5.5.7.1. */
const ObjId *asn1_Get_id_pe(void);
/** Gives id_pe_authorityInfoAccess, 1.3.6.1.5.5.7.1.1. */
const ObjId *asn1_Get_id_pe_authorityInfoAccess(void);
/** Gives id_ad, 1.3.6.1.5.5.7.48. */
const ObjId *asn1_Get_id_ad(void);
/** Gives id_ad_ocsp, 1.3.6.1.5.5.7.48.1. */
const ObjId *asn1_Get_id_ad_ocsp(void);
/** Gives id_ad_caIssuers, 1.3.6.1.5.5.7.48.2. */
const ObjId *asn1_Get_id_ad_caIssuers(void);
/** Gives id_ce_cRLNumber, 2.5.29.20. */
const ObjId *asn1_Get_id_ce_cRLNumber(void);
/** Gives id_ce_deltaCRLIndicator, 2.5.29.27. */
const ObjId *asn1_Get_id_ce_deltaCRLIndicator(void);
/** Gives id_ce_issuingDistributionPoint, 2.5.29.28. */
const ObjId *asn1_Get_id_ce_issuingDistributionPoint(void);
/** Gives id_ce_freshestCRL, 2.5.29.46. */
const ObjId *asn1_Get_id_ce_freshestCRL(void);
/** Gives id_ce_cRLReason, 2.5.29.21. */
const ObjId *asn1_Get_id_ce_cRLReason(void);
/** Gives id_ce_holdInstructionCode, 2.5.29.23. */
const ObjId *asn1_Get_id_ce_holdInstructionCode(void);
/** Gives id_ce_invalidityDate, 2.5.29.24. */
const ObjId *asn1_Get_id_ce_invalidityDate(void);
/** Gives id_ce_certificateIssuer, 2.5.29.29. */
const ObjId *asn1_Get_id_ce_certificateIssuer(void);

#ifdef __cplusplus
}
#endif

#endif
