// The ASN.1 of a type as a table, used to say where and why an input departs from it once the
// library has refused it.
#ifndef ORVELASN1_TOOL_SYNTAX_H
#define ORVELASN1_TOOL_SYNTAX_H

#include "der.h"

namespace tool {

struct Syntax;

/// A component of a SEQUENCE.
struct Field {
  std::string_view name;
  const Syntax *syntax;
  bool optional = false;
  uint8_t tag = 0;  ///< the identifier octet of an implicit tag; 0 for the syntax's own
};

/// What an element may be. A default member means that the word does not apply.
struct Syntax {
  uint8_t tag = 0;                  ///< the identifier octet; 0 for any
  uint8_t other_tag = 0;            ///< a second one, in a CHOICE of two
  bool segments = false;            ///< a string, which may come in constructed form
  std::span<const Field> fields{};  ///< the components of a SEQUENCE, or the one of a wrapper
  const Syntax *element = nullptr;  ///< the elements of a SEQUENCE OF or SET OF
  bool non_empty = false;           ///< a list that needs an element
  /// Gives what is wrong with the content, or nothing.
  const char *(*content_fault)(Octets content) = nullptr;
};

/// Where the first octets are that do not follow the syntax, and what was expected there; nothing
/// where the octets follow it.
std::optional<Fault> syntax_fault(Octets octets, const Syntax &syntax);

// What the tables of all types are made of.
extern const Syntax any_syntax;
extern const Syntax boolean_syntax;
extern const Syntax integer_syntax;
extern const Syntax bit_string_syntax;
extern const Syntax octet_string_syntax;
extern const Syntax oid_syntax;
extern const Syntax time_syntax;
extern const Syntax algorithm_syntax;
extern const Syntax name_syntax;
extern const Syntax extensions_syntax;

}  // namespace tool

#endif
