/**
 * @file x520.h
 * Object identifiers: attribute types of names (ITU-T X.520).
 *
 * Each getter returns the same constant record on every call. The library owns it: never release
 * it. In a record that will be released, store a copy of asn1_ObjId_clone(): without it, a compiler
 * warns of the `const` that is lost.
 */
#ifndef ORVELASN1_X520_H
#define ORVELASN1_X520_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Returns id_at, 2.5.4. */
const ObjId *asn1_Get_id_at(void);
/** Returns id_at_objectClass, 2.5.4.0. */
const ObjId *asn1_Get_id_at_objectClass(void);
/** Returns id_at_aliasedEntryName, 2.5.4.1. */
const ObjId *asn1_Get_id_at_aliasedEntryName(void);
/** Returns id_at_knowledgeInformation, 2.5.4.2. */
const ObjId *asn1_Get_id_at_knowledgeInformation(void);
/** Returns id_at_commonName, 2.5.4.3. */
const ObjId *asn1_Get_id_at_commonName(void);
/** Returns id_at_surname, 2.5.4.4. */
const ObjId *asn1_Get_id_at_surname(void);
/** Returns id_at_serialNumber, 2.5.4.5. */
const ObjId *asn1_Get_id_at_serialNumber(void);
/** Returns id_at_countryName, 2.5.4.6. */
const ObjId *asn1_Get_id_at_countryName(void);
/** Returns id_at_localityName, 2.5.4.7. */
const ObjId *asn1_Get_id_at_localityName(void);
/** Returns id_at_collectiveLocalityName, 2.5.4.7.1. */
const ObjId *asn1_Get_id_at_collectiveLocalityName(void);
/** Returns id_at_stateOrProvinceName, 2.5.4.8. */
const ObjId *asn1_Get_id_at_stateOrProvinceName(void);
/** Returns id_at_collectiveStateOrProvinceName, 2.5.4.8.1. */
const ObjId *asn1_Get_id_at_collectiveStateOrProvinceName(void);
/** Returns id_at_streetAddress, 2.5.4.9. */
const ObjId *asn1_Get_id_at_streetAddress(void);
/** Returns id_at_collectiveStreetAddress, 2.5.4.9.1. */
const ObjId *asn1_Get_id_at_collectiveStreetAddress(void);
/** Returns id_at_organizationName, 2.5.4.10. */
const ObjId *asn1_Get_id_at_organizationName(void);
/** Returns id_at_collectiveOrganizationName, 2.5.4.10.1. */
const ObjId *asn1_Get_id_at_collectiveOrganizationName(void);
/** Returns id_at_organizationalUnitName, 2.5.4.11. */
const ObjId *asn1_Get_id_at_organizationalUnitName(void);
/** Returns id_at_collectiveOrganizationalUnitName, 2.5.4.11.1. */
const ObjId *asn1_Get_id_at_collectiveOrganizationalUnitName(void);
/** Returns id_at_title, 2.5.4.12. */
const ObjId *asn1_Get_id_at_title(void);
/** Returns id_at_description, 2.5.4.13. */
const ObjId *asn1_Get_id_at_description(void);
/** Returns id_at_name, 2.5.4.41. */
const ObjId *asn1_Get_id_at_name(void);
/** Returns id_at_givenName, 2.5.4.42. */
const ObjId *asn1_Get_id_at_givenName(void);
/** Returns id_at_initials, 2.5.4.43. */
const ObjId *asn1_Get_id_at_initials(void);
/** Returns id_at_generationQualifier, 2.5.4.44. */
const ObjId *asn1_Get_id_at_generationQualifier(void);
/** Returns id_at_uniqueIdentifier, 2.5.4.45. */
const ObjId *asn1_Get_id_at_uniqueIdentifier(void);
/** Returns id_at_dnQualifier, 2.5.4.46. */
const ObjId *asn1_Get_id_at_dnQualifier(void);

#ifdef __cplusplus
}
#endif

#endif
