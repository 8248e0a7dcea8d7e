// JSON, written as its values are put together.
#ifndef ORVELASN1_TOOL_TEXT_JSON_H
#define ORVELASN1_TOOL_TEXT_JSON_H

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "text/octets.h"

namespace tool {

/// Appends a text between quotation marks, with what RFC 8259, section 7 wants escaped.
void append_quoted(std::string &out, std::string_view utf8);

/// Appends the key of a member of an object that is being written, after a comma where it is not
/// the first. The value follows.
void append_key(std::string &out, std::string_view key);

/// A JSON value, kept as its text.
class Json {
 public:
  Json(std::nullptr_t) : text_("null") {}
  Json(bool value) : text_(value ? "true" : "false") {}
  template <std::integral Number>
  Json(Number value) : text_(std::to_string(value)) {}
  Json(std::string_view utf8) { append_quoted(text_, utf8); }
  Json(const std::string &utf8) : Json(std::string_view(utf8)) {}
  Json(const char *utf8) : Json(std::string_view(utf8)) {}

  /// Returns the value whose text this is.
  static Json of_text(std::string text);

  /// Returns the string of the hexadecimal digits of octets.
  static Json hex(Octets octets);

  static Json array(const std::vector<Json> &elements);

  /// Returns an object without members, with room for a text of a size.
  static Json object(size_t room = 0);

  /// Adds a member, whose key must be new, to an object. Members stay in the order in which they
  /// are added. Returns this object.
  Json &put(std::string_view key, const Json &value);

  /// Adds a member whose value `write` appends to a text.
  template <std::invocable<std::string &> Write>
  Json &put(std::string_view key, Write write) {
    begin(key);
    write(text_);
    return *this;
  }

  /// Whether an object has a member of this key.
  bool has(std::string_view key) const;

  /// Adds the members of another object. Adds nothing and returns false where `other` is no object,
  /// or where one of its keys is taken.
  bool join(const Json &other);

  void append_to(std::string &out) const;
  std::string text() const;

 private:
  /// Where a key stands in the text.
  struct Key {
    size_t begin;
    size_t size;
  };

  void begin(std::string_view key);
  std::string_view key(const Key &of) const {
    return std::string_view(text_).substr(of.begin, of.size);
  }

  std::string text_;  ///< of an object all but the brace that closes it
  std::vector<Key> keys_;
  bool is_object_ = false;
};

}  // namespace tool

#endif
