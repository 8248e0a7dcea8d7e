// What the user asked to see.
#ifndef ORVELASN1_TOOL_MODEL_VIEW_H
#define ORVELASN1_TOOL_MODEL_VIEW_H

#include "text/times.h"

namespace tool {

/// How far messages, bags and objects that hold their like are followed. Inputs have as many levels
/// as they like, and the stack has not.
constexpr uint32_t deepest = 32;

struct View {
  bool oids = false;    ///< the dotted form beside each name
  bool full = false;    ///< long values to their end, and keys and signatures
  bool colour = false;  ///< escape sequences for a terminal
  Seconds moment = 0;   ///< what validity is judged at
  uint32_t depth = 0;   ///< how many messages, bags and objects are around what is described

  /// The view of what is inside one more of them.
  View inside() const {
    View deeper = *this;
    ++deeper.depth;
    return deeper;
  }
  bool too_deep() const { return depth > deepest; }
};

/// The name of an identifier, its dotted form where it has none, or both where the view says so.
std::string label(const ObjId *oid, const View &view);

}  // namespace tool

#endif
