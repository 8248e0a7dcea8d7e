/**
 * @file ms_enrolment.h
 * Object identifiers: Microsoft certificate enrolment.
 *
 * Each getter returns the same constant record on every call. The library owns it: never release
 * it. In a record that will be released, store a copy of asn1_ObjId_clone(): without it, a compiler
 * warns of the `const` that is lost.
 */
#ifndef ORVELASN1_MS_ENROLMENT_H
#define ORVELASN1_MS_ENROLMENT_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Returns ms_certificate_request_extensions, 1.3.6.1.4.1.311.2.1.14. */
const ObjId *asn1_Get_ms_certificate_request_extensions(void);
/** Returns ms_enrolment_csp, 1.3.6.1.4.1.311.13.2.2. */
const ObjId *asn1_Get_ms_enrolment_csp(void);
/** Returns ms_os_version, 1.3.6.1.4.1.311.13.2.3. */
const ObjId *asn1_Get_ms_os_version(void);
/** Returns ms_certificate_template_name, 1.3.6.1.4.1.311.20.2. */
const ObjId *asn1_Get_ms_certificate_template_name(void);
/** Returns ms_certificate_template_name_3, 1.3.6.1.4.1.311.20.2.3. */
const ObjId *asn1_Get_ms_certificate_template_name_3(void);
/** Returns ms_ca_key_cert_index_pair, 1.3.6.1.4.1.311.21.1. */
const ObjId *asn1_Get_ms_ca_key_cert_index_pair(void);

#ifdef __cplusplus
}
#endif

#endif
