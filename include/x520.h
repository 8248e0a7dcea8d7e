/**
 * @file x520.h
 * Object identifiers: attribute types of names (ITU-T X.520).
 *
 * Each getter gives the same constant record on every call. It belongs to the library: it is never
 * released, nor stored in a record that will be.
 */
#ifndef ORVELASN1_X520_H
#define ORVELASN1_X520_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Gives id_at, 2.5.4. */
const ObjId *asn1_Get_id_at(void);
/** Gives id_at_objectClass, 2.5.4.0. */
const ObjId *asn1_Get_id_at_objectClass(void);
/** Gives id_at_aliasedEntryName, 2.5.4.1. */
const ObjId *asn1_Get_id_at_aliasedEntryName(void);
/** Gives id_at_knowledgeInformation, 2.5.4.2. */
const ObjId *asn1_Get_id_at_knowledgeInformation(void);
/** Gives id_at_commonName, 2.5.4.3. */
const ObjId *asn1_Get_id_at_commonName(void);
/** Gives id_at_surname, 2.5.4.4. */
const ObjId *asn1_Get_id_at_surname(void);
/** Gives id_at_serialNumber, 2.5.4.5. */
const ObjId *asn1_Get_id_at_serialNumber(void);
/** Gives id_at_countryName, 2.5.4.6. */
const ObjId *asn1_Get_id_at_countryName(void);
/** Gives id_at_localityName, 2.5.4.7. */
const ObjId *asn1_Get_id_at_localityName(void);
/** Gives id_at_collectiveLocalityName, 2.5.4.7.1. */
const ObjId *asn1_Get_id_at_collectiveLocalityName(void);
/** Gives id_at_stateOrProvinceName, 2.5.4.8. */
const ObjId *asn1_Get_id_at_stateOrProvinceName(void);
/** Gives id_at_collectiveStateOrProvinceName, 2.5.4.8.1. */
const ObjId *asn1_Get_id_at_collectiveStateOrProvinceName(void);
/** Gives id_at_streetAddress, 2.5.4.9. */
const ObjId *asn1_Get_id_at_streetAddress(void);
/** Gives id_at_collectiveStreetAddress, 2.5.4.9.1. */
const ObjId *asn1_Get_id_at_collectiveStreetAddress(void);
/** Gives id_at_organizationName, 2.5.4.10. */
const ObjId *asn1_Get_id_at_organizationName(void);
/** Gives id_at_collectiveOrganizationName, 2.5.4.10.1. */
const ObjId *asn1_Get_id_at_collectiveOrganizationName(void);
/** Gives id_at_organizationalUnitName, 2.5.4.11. */
const ObjId *asn1_Get_id_at_organizationalUnitName(void);
/** Gives id_at_collectiveOrganizationalUnitName, 2.5.4.11.1. */
const ObjId *asn1_Get_id_at_collectiveOrganizationalUnitName(void);
/** Gives id_at_title, 2.5.4.12. */
const ObjId *asn1_Get_id_at_title(void);
/** Gives id_at_description, 2.5.4.13. */
const ObjId *asn1_Get_id_at_description(void);
/** Gives id_at_name, 2.5.4.41. */
const ObjId *asn1_Get_id_at_name(void);
/** Gives id_at_givenName, 2.5.4.42. */
const ObjId *asn1_Get_id_at_givenName(void);
/** Gives id_at_initials, 2.5.4.43. */
const ObjId *asn1_Get_id_at_initials(void);
/** Gives id_at_generationQualifier, 2.5.4.44. */
const ObjId *asn1_Get_id_at_generationQualifier(void);
/** Gives id_at_uniqueIdentifier, 2.5.4.45. */
const ObjId *asn1_Get_id_at_uniqueIdentifier(void);
/** Gives id_at_dnQualifier, 2.5.4.46. */
const ObjId *asn1_Get_id_at_dnQualifier(void);

#ifdef __cplusplus
}
#endif

#endif
