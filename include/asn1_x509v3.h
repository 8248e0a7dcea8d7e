/**
 * @file asn1_x509v3.h
 * Object identifiers: certificate and CRL extensions (RFC 5280).
 *
 * Each getter gives the same constant record on every call. It belongs to the library: it is never
 * released, nor stored in a record that will be.
 */
#ifndef ASN1_X509V3_H
#define ASN1_X509V3_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

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
