// The values of extensions. A certificate carries them undecoded; here is the one list of the
// syntaxes that are read.
#ifndef ORVELASN1_TOOL_EXTENSIONS_H
#define ORVELASN1_TOOL_EXTENSIONS_H

#include "json.h"
#include "page.h"
#include "view.h"

namespace tool {

struct ExtensionValue {
  std::vector<std::string> lines;  ///< for people; a dump where the value cannot be read
  Json json;                       ///< null where the value cannot be read
};

ExtensionValue read_extension(const Extension *extension, const View &view);

/// Adds a section with a row for each extension; nothing where there is none.
void add_extensions(Page &page, const Extensions *extensions, const View &view);

}  // namespace tool

#endif
