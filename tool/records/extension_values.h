// The values of extensions, which certificates, CRLs and messages carry undecoded: the one list of
// the types that the library does not name by their identifier.
#ifndef ORVELASN1_TOOL_RECORDS_EXTENSION_VALUES_H
#define ORVELASN1_TOOL_RECORDS_EXTENSION_VALUES_H

#include "records/values.h"

namespace tool {

/// Reads the value of an extension. One that nobody knows is described, and not read.
Inside read_extension(const Extension *extension, const View &view);

/// Adds a section with a row for each extension. Adds nothing for an empty list.
void add_extensions(Page &page, const Extensions *extensions, const View &view);

}  // namespace tool

#endif
