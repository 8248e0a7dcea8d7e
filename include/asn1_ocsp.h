/**
 * @file asn1_ocsp.h
 * Object identifiers: the Online Certificate Status Protocol (RFC 6960).
 *
 * Each getter gives the same constant record on every call. It belongs to the library: it is never
 * released, nor stored in a record that will be.
 */
#ifndef ASN1_OCSP_H
#define ASN1_OCSP_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Gives id_pkix_ocsp, 1.3.6.1.5.5.7.48.1. */
const ObjId *asn1_Get_id_pkix_ocsp(void);
/** Gives id_pkix_ocsp_basic, 1.3.6.1.5.5.7.48.1.1. */
const ObjId *asn1_Get_id_pkix_ocsp_basic(void);
/** Gives id_pkix_ocsp_nonce, 1.3.6.1.5.5.7.48.1.2. */
const ObjId *asn1_Get_id_pkix_ocsp_nonce(void);
/** Gives id_pkix_ocsp_crl, 1.3.6.1.5.5.7.48.1.3. */
const ObjId *asn1_Get_id_pkix_ocsp_crl(void);
/** Gives id_pkix_ocsp_response, 1.3.6.1.5.5.7.48.1.4. */
const ObjId *asn1_Get_id_pkix_ocsp_response(void);
/** Gives id_pkix_ocsp_nocheck, 1.3.6.1.5.5.7.48.1.5. */
const ObjId *asn1_Get_id_pkix_ocsp_nocheck(void);
/** Gives id_pkix_ocsp_archive_cutoff, 1.3.6.1.5.5.7.48.1.6. */
const ObjId *asn1_Get_id_pkix_ocsp_archive_cutoff(void);
/** Gives id_pkix_ocsp_service_locator, 1.3.6.1.5.5.7.48.1.7. */
const ObjId *asn1_Get_id_pkix_ocsp_service_locator(void);

#ifdef __cplusplus
}
#endif

#endif
