/**
 * @file global_identifier.h
 * Object identifiers: the global identifier, a name attribute.
 *
 * Each getter returns the same constant record on every call. The library owns it: never release
 * it. In a record that will be released, store a copy of asn1_ObjId_clone(): without it, a compiler
 * warns of the `const` that is lost.
 */
#ifndef ORVELASN1_GLOBAL_IDENTIFIER_H
#define ORVELASN1_GLOBAL_IDENTIFIER_H

#include "asn1_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Returns korvaneGlobalIdentifier, 1.3.6.1.4.1.53917.1.1.2.2.75. */
const ObjId *asn1_Get_korvaneGlobalIdentifier(void);

#ifdef __cplusplus
}
#endif

#endif
