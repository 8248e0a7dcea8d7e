// What differs between two descriptions, place by place.
#ifndef ORVELASN1_TOOL_MODEL_DIFFERENCE_H
#define ORVELASN1_TOOL_MODEL_DIFFERENCE_H

#include "model/node.h"

namespace tool {

/// A place where two descriptions differ.
struct Difference {
  enum class Kind : uint8_t {
    value,     ///< both have it, with other values
    encoding,  ///< both have it, and it reads the same, but stands there otherwise
    order,     ///< a list has its elements in another order
    only_a,    ///< the second does not have it
    only_b     ///< the first does not have it
  };
  Kind kind;
  const std::string &path;  ///< "tbsCertificate.validity.notAfter"
  const Node *a;            ///< null where only the second has it
  const Node *b;            ///< null where only the first has it
};

using Differ = std::function<void(const Difference &difference)>;

/// Calls `differ` for each difference, in the order of the first description. Fields are compared
/// by their names. The elements of a list are compared by what identifies them, such as an object
/// identifier or a serial number; those without, by their place between what both lists begin and
/// end with. Octets that are kept of what is described, or repeat it, are not compared. Elements of
/// lists with the same octets are not described. The time is that of sorting the descriptions.
void find_differences(const Node &a, const Node &b, const Differ &differ);

}  // namespace tool

#endif
