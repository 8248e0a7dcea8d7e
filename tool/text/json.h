// JSON, written as its values are put together.
#ifndef ORVELASN1_TOOL_TEXT_JSON_H
#define ORVELASN1_TOOL_TEXT_JSON_H

#include <concepts>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// A JSON value, kept as its text.
class Json {
 public:
  Json(std::nullptr_t) : text_("null") {}
  Json(bool value) : text_(value ? "true" : "false") {}
  template <std::integral Number>
  Json(Number value) : text_(std::to_string(value)) {}
  Json(std::string_view utf8);
  Json(const std::string &utf8) : Json(std::string_view(utf8)) {}
  Json(const char *utf8) : Json(std::string_view(utf8)) {}

  static Json array(const std::vector<Json> &elements);

  /// Returns an object without members.
  static Json object();

  /// Adds a member, whose key must be new, to an object. Members stay in the order in which they
  /// are added. Returns this object.
  Json &put(std::string_view key, const Json &value);

  /// Adds the members of another object. Adds nothing and returns false where `other` is no object,
  /// or where one of its keys is taken.
  bool join(const Json &other);

  std::string text() const { return keys_ ? "{" + text_ + "}" : text_; }

 private:
  void add(std::string_view members);

  std::string text_;                              ///< of an object what is between its braces
  std::optional<std::vector<std::string>> keys_;  ///< of an object
};

}  // namespace tool

#endif
