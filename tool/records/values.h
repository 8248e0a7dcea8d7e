// Octets that a record keeps undecoded and that are a value of a type of their own: those of
// extensions, attributes, bags and the like.
#ifndef ORVELASN1_TOOL_RECORDS_VALUES_H
#define ORVELASN1_TOOL_RECORDS_VALUES_H

#include "records/type.h"

namespace tool {

/// What such octets are.
struct Inside {
  Node node;        ///< the record, which the node keeps; empty where the octets are not read
  std::string why;  ///< why they are not read
};

using Describe = Node (*)(const void *record, const View &view);

/// Reads octets that must be exactly one value. Explains them before any decoder runs: for some
/// inputs a decoder ends the process. `describe` replaces the description of the syntax.
Inside read_value(Octets octets, const Syntax &syntax, const View &view,
                  Describe describe = nullptr);

/// Reads octets that must be exactly one element of the type of this name, unless they are nested
/// too deeply.
Inside read_inside(Octets octets, std::string_view type, const View &view);

/// Adds octets under their name, and after them the field "decoded" with what they are. A page
/// shows that field only. If the octets are not read, a page shows them and the reason.
Description &add_inside(Description &fields, std::string name, Node octets, Inside inside);

/// Describes a list of ANY, each of which must be an element of the type of this name.
Node list_inside(const List *elements, std::string_view type, const View &view);

/// The syntax of the values under an identifier.
struct ValueRow {
  std::string_view name;  ///< the display name of the identifier
  const char *type;       ///< as pki_Type_find() takes it; null for a string of any type
  bool list = false;      ///< a SEQUENCE OF the type
  Describe describe = nullptr;
  /// Reads a value by hand, and is tried first. Returns an empty node for octets of another form.
  Node (*read)(Octets value, const View &view) = nullptr;
  /// Describes the public form, with implicit tags where the library's own has explicit ones.
  Describe describe_public = nullptr;
};

/// Reads a value as its row says.
Inside read_value(Octets value, const ValueRow &row, const View &view);

/// Reads a character string of any type. Returns an empty node for other octets.
Node string_value(Octets value, const View &view);

/// The row of a character string of any type.
constexpr ValueRow string_row(std::string_view name) {
  return {.name = name, .type = nullptr, .read = string_value};
}

}  // namespace tool

#endif
