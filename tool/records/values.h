// Octets that a record keeps undecoded and that are a value of a type of their own: those of
// extensions, attributes, parameters, bags and the like.
#ifndef ORVELASN1_TOOL_RECORDS_VALUES_H
#define ORVELASN1_TOOL_RECORDS_VALUES_H

#include "records/type.h"

namespace tool {

/// What such octets are.
struct Inside {
  Node node;              ///< what can be read, with what cannot marked at its place
  std::string malformed;  ///< where it first goes wrong and why; an empty text where nothing does
  bool read = false;      ///< whether anything can be read
};

using Describe = Node (*)(const void *record, const View &view);

/// Reads octets that must be exactly one value. What is malformed is marked at its place and hides
/// nothing beside it. `describe` replaces the description of the type.
Inside read_value(Octets octets, const pki_Type *type, const View &view,
                  Describe describe = nullptr);

/// The same by the name of the type, as pki_Type_find() takes it.
Inside read_value(Octets octets, const char *type, const View &view, Describe describe = nullptr);

/// Reads octets that must be exactly one SEQUENCE OF or SET OF values of a type.
Inside read_list(Octets octets, const pki_Type *element, const View &view,
                 Describe describe = nullptr);

/// Describes octets in which Syntax::refusal() finds nothing wrong.
Node sound_value(Octets octets, const pki_Type *type, const View &view,
                 Describe describe = nullptr);

/// Adds octets under their name, for which a page shows what they are. JSON has that beside them,
/// as "decoded", and as "malformed" what is wrong with it. Compact JSON has only what they are
/// where all of them are read.
Description &add_inside(Description &fields, std::string name, Node octets, Inside inside);

/// Describes octets of no known type: a page shows the outline of those that are an element.
Node unknown_octets(Octets octets, const View &view);

/// What a page says of octets that are no value of their type, and the octets, or their outline.
Node malformed(const std::string &why, Octets octets, const View &view);

/// The type of the values under an identifier.
struct ValueRow {
  std::string_view name;  ///< the display name of the identifier
  const char *type;       ///< as pki_Type_find() takes it; null for a string of any type
  bool list = false;      ///< a SEQUENCE OF the type
  Describe describe = nullptr;
  /// Reads a value by hand, and is tried first. Returns an empty node for octets of another form.
  Node (*read)(Octets value, const View &view) = nullptr;
};

/// Reads a value as its row says.
Inside read_value(Octets value, const ValueRow &row, const View &view);

/// Decodes octets that are exactly one OCTET STRING, in segments or not. Returns null for others.
Owned<OctetString> octet_string(Octets octets);

/// Reads a character string of any type. Returns an empty node for other octets.
Node string_value(Octets value, const View &view);

/// The row of a character string of any type.
constexpr ValueRow string_row(std::string_view name) {
  return {.name = name, .type = nullptr, .read = string_value};
}

}  // namespace tool

#endif
