// What the user asked to see.
#ifndef ORVELASN1_TOOL_MODEL_VIEW_H
#define ORVELASN1_TOOL_MODEL_VIEW_H

#include "text/times.h"

namespace tool {

/// How deep messages, bags and objects that hold their like are followed. An input may have any
/// number of levels; the stack is limited.
constexpr uint32_t deepest = 32;

struct View {
  bool oids = false;     ///< the dotted form after each name
  bool full = false;     ///< long values to their end, and keys and signatures
  bool secrets = false;  ///< the secret octets of private keys
  bool lines = true;     ///< lines for people; without them there is JSON alone
  bool compact = false;  ///< in JSON no octets that stand there in another form, too
  bool colour = false;   ///< escape sequences for a terminal
  size_t columns = 80;   ///< the width of a page, at least 40
  Seconds moment = 0;    ///< the moment for which validity is judged
  uint32_t depth = 0;    ///< how many messages, bags and objects are around what is described

  /// Returns the view of what is inside one more of them.
  View inside() const {
    View deeper = *this;
    ++deeper.depth;
    return deeper;
  }
  bool too_deep() const { return depth > deepest; }
};

/// Returns the name of an identifier, or its dotted form if it has no name, or both if the view
/// asks for it.
std::string label(const ObjId *oid, const View &view);

}  // namespace tool

#endif
