// What the grammar says of each element of an input, as the elements come: the field that it is, and
// the type of its value.
#ifndef ORVELASN1_TOOL_MODEL_GRAMMAR_H
#define ORVELASN1_TOOL_MODEL_GRAMMAR_H

#include <orvelpki.h>

#include "text/octets.h"

namespace tool {

/// What is known of an element. Nothing is where all of it is empty.
struct Place {
  std::string_view field;             ///< of a SEQUENCE
  std::string_view alternative;       ///< of a CHOICE
  std::optional<size_t> index;        ///< in a list
  bool known = false;                 ///< whether the grammar has a place for the element
  bool wraps = false;                 ///< whether it is an explicit tag around a value of the type
  bool by_identifier = false;         ///< whether an identifier beside it says its type
  const pki_Type *type = nullptr;     ///< of the value; null where it is not known
  const pki_Type *content = nullptr;  ///< of the value that the string holds, by an identifier
};

/// Follows an input from element to element through the types. Levels are those of the input, 0
/// around the whole of it.
class Grammar {
 public:
  /// The first element is of this type, or a SEQUENCE OF it where `list`; null where nothing is
  /// known.
  Grammar(const pki_Type *type, bool list);

  /// Returns the place of the next element of a level, which begins with this identifier octet, and
  /// moves past it.
  Place next(size_t level, uint8_t identifier);

  /// Notes the content of an OBJECT IDENTIFIER of a level, which may define what follows it.
  void note_identifier(size_t level, Octets content);

  /// Goes into an element, whose content is a level: 0 is around the first.
  void open(size_t level, const Place &place);

  /// Goes into the content of a string, a value of `place.content`.
  void open_string(size_t level, const Place &place);

  /// Leaves a level.
  void close(size_t level);

  /// Returns the path of a level, or that of a place in it.
  const std::string &path() const { return path_; }
  std::string path(const Place &place) const;

  /// Whether the grammar knows what is on a level.
  bool knows(size_t level) const { return !frames_.empty() && frames_.back().level == level; }

 private:
  enum class Kind : uint8_t { fields, list, value };
  struct Frame {
    size_t level;
    Kind kind;
    const pki_Type *type;    ///< the SEQUENCE, that of the list's elements, or of the value
    size_t next;             ///< number of a field or an element
    size_t path_length;      ///< of the path around it
    std::string_view field;  ///< that the list or value is of
    Octets identifier;       ///< that defines the values of the level
    Octets inner{};          ///< of a record in the level, such as an algorithm
    bool by_identifier = false;
  };

  Place field_of(Frame &frame, uint8_t identifier) const;
  void define(const Frame &frame, std::string_view field, Place &place) const;
  void push(Frame frame, const Place &place);

  std::vector<Frame> frames_;
  std::string path_;
  uint32_t by_identifier_ = 0;  ///< open values whose type an identifier says
};

}  // namespace tool

#endif
