// Values that are malformed: what can be read of them, with each part that cannot marked at its place.
#ifndef ORVELASN1_TOOL_RECORDS_PARTIAL_H
#define ORVELASN1_TOOL_RECORDS_PARTIAL_H

#include "records/values.h"

namespace tool {

/// Describes octets that are not exactly one value of a type: the components that are read as
/// themselves, and the others by what is wrong with them. Offsets count from the first of the
/// octets, which the description borrows.
Inside read_partly(Octets octets, const pki_Type *type, const View &view);

/// The same of a SEQUENCE OF or SET OF, whether it is malformed or not. `describe` replaces the
/// description of the elements that are read.
Inside read_elements(Octets octets, const pki_Type *element, const View &view, Describe describe);

}  // namespace tool

#endif
