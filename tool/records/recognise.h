// Which type an element is of, and its record.
#ifndef ORVELASN1_TOOL_RECORDS_RECOGNISE_H
#define ORVELASN1_TOOL_RECORDS_RECOGNISE_H

#include "input/element.h"
#include "records/type.h"

namespace tool {

/// The result of decoding an element.
struct Decoding {
  std::optional<Record> record;
  std::optional<Fault> fault;  ///< why there is no record, or what follows the element
  const Type *type = nullptr;  ///< of the record
};

/// Returns the types that an element may be: `wanted` where that is not null, else those of its PEM
/// label, else those whose structure it has, or follows furthest where it has none in full. Runs no
/// decoder.
std::vector<const Type *> candidates(const Element &element, const Type *wanted);

/// Decodes an element as its candidate, or as the one of several that takes all its octets.
Decoding decode(const Element &element, const Type *wanted);

}  // namespace tool

#endif
