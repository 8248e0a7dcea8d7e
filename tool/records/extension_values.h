// The values of extensions, which certificates, CRLs and messages carry undecoded: the one list of
// the syntaxes that are read.
#ifndef ORVELASN1_TOOL_RECORDS_EXTENSION_VALUES_H
#define ORVELASN1_TOOL_RECORDS_EXTENSION_VALUES_H

#include "model/node.h"

namespace tool {

struct ExtensionValue {
  Node node;          ///< the value, or what a page shows in its place
  bool read = true;   ///< false where the value is not understood
  std::string why{};  ///< why not, where its syntax is known
};

ExtensionValue read_extension(const Extension *extension, const View &view);

/// Adds a section with a row for each extension. Adds nothing for an empty list.
void add_extensions(Page &page, const Extensions *extensions, const View &view);

}  // namespace tool

#endif
