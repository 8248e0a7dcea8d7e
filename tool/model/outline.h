// The outline of any DER or BER: a line for each element, as the octets come. No tree is built, and
// what is kept in between is less than the input, however deep its elements are.
#ifndef ORVELASN1_TOOL_MODEL_OUTLINE_H
#define ORVELASN1_TOOL_MODEL_OUTLINE_H

#include <functional>

#include "model/ber.h"
#include "model/grammar.h"

namespace tool {

/// One line of an outline.
struct OutlineLine {
  enum class Kind : uint8_t {
    element,          ///< an element; those in it follow, one level deeper
    end_of_contents,  ///< of an indefinite length
    fault,            ///< what is wrong at the offset
    rest              ///< octets that are no elements, after a fault
  };
  Kind kind = Kind::element;
  size_t offset = 0;   ///< from the start of the input
  size_t depth = 0;    ///< number of elements around it
  ber::Header header;  ///< of an element
  Place place;         ///< what the grammar says of an element
  /// Whether the element has no step of its own in a path: the first of all, that inside an
  /// explicit tag, and that inside a string.
  bool same_path = false;
  bool holds = false;  ///< whether an element is inside the string
  /// The octets of an element, or what is left of them where its length is indefinite or overlong;
  /// those that are left over.
  Octets octets;
  std::string text;  ///< of a fault: the path of the field, and what is wrong

  /// Returns the content octets, as many as there are.
  Octets content() const { return octets.subspan(header.size); }

  /// Returns the universal tag that says how the content is read: its own, or that of its type
  /// under an implicit tag; 0 where it is not known.
  uint8_t meant() const;
};

/// What is wrong with an input, and where.
struct OutlineFault {
  size_t offset;
  std::string text;  ///< with the path in front of it
  std::string path;  ///< of the field; empty where it is not known
};

/// Tells the lines of the outline of octets, in the order of their offsets, until `tell` returns
/// false. The first element is a value of `type`; nothing is known of it where `type` is null.
/// Takes linear time. A line is good until `tell` returns.
///
/// @return the first fault.
std::optional<OutlineFault> outline(Octets octets, const pki_Type *type,
                                    const std::function<bool(const OutlineLine &)> &tell);

}  // namespace tool

#endif
