/**
 * @file netscape.h
 * Object identifiers: Netscape certificate extensions.
 *
 * Each getter returns the same constant record on every call. The library owns it: never release
 * it. In a record that will be released, store a copy of asn1_ObjId_clone(): without it, a compiler
 * warns of the `const` that is lost.
 */
#ifndef ORVELASN1_NETSCAPE_H
#define ORVELASN1_NETSCAPE_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Returns netscape, 2.16.840.1.113730. */
const ObjId *asn1_Get_netscape(void);
/** Returns netscape_cert_extension, 2.16.840.1.113730.1. */
const ObjId *asn1_Get_netscape_cert_extension(void);
/** Returns netscape_cert_type, 2.16.840.1.113730.1.1. */
const ObjId *asn1_Get_netscape_cert_type(void);
/** Returns netscape_base_url, 2.16.840.1.113730.1.2. */
const ObjId *asn1_Get_netscape_base_url(void);
/** Returns netscape_revocation_url, 2.16.840.1.113730.1.3. */
const ObjId *asn1_Get_netscape_revocation_url(void);
/** Returns netscape_ca_revocation_url, 2.16.840.1.113730.1.4. */
const ObjId *asn1_Get_netscape_ca_revocation_url(void);
/** Returns netscape_cert_renewal_url, 2.16.840.1.113730.1.7. */
const ObjId *asn1_Get_netscape_cert_renewal_url(void);
/** Returns netscape_ca_policy_url, 2.16.840.1.113730.1.8. */
const ObjId *asn1_Get_netscape_ca_policy_url(void);
/** Returns netscape_ssl_server_name, 2.16.840.1.113730.1.12. */
const ObjId *asn1_Get_netscape_ssl_server_name(void);
/** Returns netscape_comment, 2.16.840.1.113730.1.13. */
const ObjId *asn1_Get_netscape_comment(void);
/** Returns netscape_data_type, 2.16.840.1.113730.2. */
const ObjId *asn1_Get_netscape_data_type(void);
/** Returns netscape_cert_sequence, 2.16.840.1.113730.2.5. */
const ObjId *asn1_Get_netscape_cert_sequence(void);

#ifdef __cplusplus
}
#endif

#endif
