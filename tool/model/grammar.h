// What the grammar says of each element of an input, as the elements come: the field that it is, and
// the type of its value.
#ifndef ORVELASN1_TOOL_MODEL_GRAMMAR_H
#define ORVELASN1_TOOL_MODEL_GRAMMAR_H

#include <orvelpki.h>

#include "text/octets.h"

namespace tool {

/// What is known of an element.
struct Place {
  bool known = false;                 ///< whether the grammar has a place for the element
  std::string_view field;             ///< of a SEQUENCE; empty where it is none
  std::string_view alternative;       ///< of a CHOICE; empty where it is none
  std::optional<size_t> index;        ///< in a list
  const pki_Type *type = nullptr;     ///< of the value; null where it is not known
  const pki_Type *content = nullptr;  ///< of what is inside the string, by an identifier
  bool wraps = false;  ///< whether the element is an explicit tag around a value of the type
  bool fills = false;  ///< whether a value that begins here must take all octets of its level
  const pki_Type *begins = nullptr;  ///< the type of a value that begins here, of which the types
                                     ///< around it say nothing; null elsewhere
};

/// Follows an input from element to element through the types. Levels are those of the input: 0 is
/// around the whole of it.
class Grammar {
 public:
  /// The first element is of this type. Nothing is known where `type` is null.
  explicit Grammar(const pki_Type *type);

  /// Returns the place of the next element of a level, which begins with this identifier octet, and
  /// moves past it.
  Place next(size_t level, uint8_t identifier);

  /// Notes the content of an OBJECT IDENTIFIER of a level, which may define what follows it. The
  /// octets must outlive the level.
  void note_identifier(size_t level, Octets content);

  /// Goes into an element, whose content is this level.
  void open(size_t level, const Place &place);

  /// Goes into the content of a string, which is this level.
  void open_string(size_t level, const Place &place);

  /// Leaves a level.
  void close(size_t level);

  /// Whether the grammar has something to say about this level.
  bool knows(size_t level) const;

  /// Returns the path to the innermost level that the grammar knows.
  const std::string &path() const { return path_; }

  /// Returns the path to a place in it.
  std::string path(const Place &place) const;

 private:
  enum class Kind : uint8_t { fields, list, value };
  struct Frame {
    size_t level = 0;
    Kind kind = Kind::value;
    const pki_Type *type = nullptr;  ///< the SEQUENCE; or that of the elements, or of the value
    const pki_Type *of = nullptr;    ///< the type of which the level is the content
    size_t next = 0;                 ///< number of a field or an element
    size_t path_length = 0;          ///< of the path around it
    std::string_view field{};        ///< of which a list or a value is
    Octets identifier{};             ///< that defines values of the level
    Octets inner{};                  ///< that of the last record in the level, such as an algorithm
    bool whole = false;              ///< whether one value must take all octets of the level
    bool defines = false;            ///< whether the level is in a value that an identifier defines
  };

  static Place next_field(Frame &frame, uint8_t identifier);
  void define(const Frame &frame, std::string_view field, Place &place) const;
  std::string_view around() const;
  void push(Frame frame, const Place &place);

  std::vector<Frame> frames_;  // as many as the types nest
  std::string path_;
  size_t defined_ = 0;  ///< open values that identifiers define
};

}  // namespace tool

#endif
