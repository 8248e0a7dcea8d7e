// What the user asked to see.
#ifndef ORVELASN1_TOOL_VIEW_H
#define ORVELASN1_TOOL_VIEW_H

#include "times.h"

namespace tool {

struct View {
  bool oids = false;    ///< the dotted form beside each name
  bool full = false;    ///< long values to their end, and keys and signatures
  bool colour = false;  ///< escape sequences for a terminal
  Seconds moment = 0;   ///< what validity is judged at
};

/// The name of an identifier, its dotted form where it has none, or both where the view says so.
std::string label(const ObjId *oid, const View &view);

}  // namespace tool

#endif
