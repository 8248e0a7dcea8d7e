// The ASN.1 of a type as a table, used to say where and why an input departs from it once the
// library has refused it.
#ifndef ORVELASN1_TOOL_RECORDS_SYNTAX_H
#define ORVELASN1_TOOL_RECORDS_SYNTAX_H

#include "input/der.h"

namespace tool {

struct Syntax;

/// A component of a SEQUENCE, or an alternative of a CHOICE.
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
  uint8_t tag_limit = 0;            ///< where any octet will do, the first that will not, or 0
  bool segments = false;            ///< a string, which may come in constructed form
  bool indefinite = false;          ///< whether a SEQUENCE or wrapper may have indefinite length
  std::span<const Field> fields{};  ///< the components of a SEQUENCE, or the one of a wrapper
  std::span<const Field> choice{};  ///< the alternatives of a CHOICE
  const Syntax *element = nullptr;  ///< the elements of a SEQUENCE OF or SET OF
  bool non_empty = false;           ///< a list that needs an element
  /// Gives what is wrong with the content, or nothing.
  const char *(*content_fault)(Octets content) = nullptr;
};

/// Where the first octets are that do not follow the syntax, and what was expected there; nothing
/// where the octets follow it.
std::optional<Fault> syntax_fault(Octets octets, const Syntax &syntax);

/// Why a value that a record keeps undecoded is not read, as syntax_fault() tells.
std::string why_unread(Octets value, const Syntax &syntax);

// What the tables of all types are made of.
extern const Syntax any_syntax;
extern const Syntax boolean_syntax;
extern const Syntax integer_syntax;
extern const Syntax enumerated_syntax;
extern const Syntax bit_string_syntax;
extern const Syntax octet_string_syntax;
extern const Syntax oid_syntax;
extern const Syntax ia5_string_syntax;
extern const Syntax utc_time_syntax;
extern const Syntax generalized_time_syntax;
extern const Syntax time_syntax;
extern const Syntax algorithm_syntax;
extern const Syntax assertion_syntax;
extern const Syntax rdn_syntax;
extern const Syntax rdn_sequence_syntax;
extern const Syntax name_syntax;  ///< a name that is kept as a text, too: it needs an RDN
extern const Syntax key_syntax;
extern const Syntax extension_syntax;
extern const Syntax extensions_syntax;
extern const Syntax general_name_syntax;
extern const Syntax general_names_syntax;
extern const Syntax attribute_syntax;
extern const Syntax digest_info_syntax;
extern const Syntax attributes_0_syntax;     ///< [0] IMPLICIT SET OF Attribute
extern const Syntax wrapped_integer_syntax;  ///< [0] EXPLICIT INTEGER
extern const Syntax wrapped_any_syntax;      ///< [0] EXPLICIT ANY

}  // namespace tool

#endif
