// JSON, written as its values are put together.
#ifndef ORVELASN1_TOOL_TEXT_JSON_H
#define ORVELASN1_TOOL_TEXT_JSON_H

#include <charconv>
#include <concepts>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "text/octets.h"

namespace tool {

/// Appends a text between quotation marks, with what RFC 8259, section 7 wants escaped.
void append_quoted(std::string &out, std::string_view utf8);

/// Appends a number in decimal digits.
template <std::integral Number>
void append_number(std::string &out, Number number) {
  char digits[24];
  out.append(digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr);
}

/// Appends the key of a member of an object that is being written, after a comma where it is not
/// the first. The value follows. A key, which may have a word at its end, has no character that
/// would be escaped.
void append_key(std::string &out, std::string_view key, std::string_view end = {});

/// Appends an array. `append` appends an element.
template <class Range, class Append>
void append_array(std::string &out, const Range &range, Append append) {
  out += '[';
  for (const auto &element : range) {
    if (out.back() != '[') out += ',';
    append(element);
  }
  out += ']';
}

/// Appends a value: null, a truth value, a number, a text in UTF-8, octets as the string of their
/// hexadecimal digits, the value of an optional or null, a range as an array, or a Json.
template <class Value>
void append_value(std::string &out, const Value &value);

/// A JSON value: its text, or a part of a record and what writes its text.
class Json {
 public:
  template <class Value>
  requires(!std::derived_from<Value, Json>) Json(const Value &value) { append_value(text_, value); }

  /// Returns the value whose text this is.
  static Json of_text(std::string text) {
    Json json;
    json.text_ = std::move(text);
    return json;
  }

  /// Returns the value that `append` writes for a part of a record, which it borrows.
  template <auto append, class Part>
  static Json of_part(const Part *part) {
    Json json;
    json.part_ = part;
    json.append_ = [](std::string &out, const void *of) {
      append(out, static_cast<const Part *>(of));
    };
    return json;
  }

  /// Returns an object without members.
  static Json object() { return of_text("{}"); }

  /// Adds a member, whose key must be new, to an object. Members stay in the order in which they
  /// are added. Returns this object.
  template <class Value>
  Json &put(std::string_view key, const Value &value) {
    text_.pop_back();
    append_key(text_, key);
    append_value(text_, value);
    text_ += '}';
    return *this;
  }

  void append_to(std::string &out) const {
    if (append_ == nullptr)
      out += text_;
    else
      append_(out, part_);
  }
  std::string text() const;

 private:
  Json() = default;

  std::string text_;
  void (*append_)(std::string &out, const void *part) = nullptr;
  const void *part_ = nullptr;
};

template <class Value>
void append_value(std::string &out, const Value &value) {
  if constexpr (std::same_as<Value, std::nullptr_t>) {
    out += "null";
  } else if constexpr (std::same_as<Value, bool>) {
    out += value ? "true" : "false";
  } else if constexpr (std::integral<Value>) {
    append_number(out, value);
  } else if constexpr (std::convertible_to<Value, std::string_view>) {
    append_quoted(out, value);
  } else if constexpr (std::convertible_to<Value, Octets>) {
    out += '"';
    append_hex(out, value);
    out += '"';
  } else if constexpr (requires { value.append_to(out); }) {
    value.append_to(out);
  } else if constexpr (requires { value.has_value(); }) {
    if (value)
      append_value(out, *value);
    else
      out += "null";
  } else {
    append_array(out, value, [&](const auto &element) { append_value(out, element); });
  }
}

/// Writes an object to a text, member by member.
class JsonObject {
 public:
  explicit JsonObject(std::string &out) : out_(out) { out_ += '{'; }
  JsonObject(const JsonObject &) = delete;
  JsonObject &operator=(const JsonObject &) = delete;
  ~JsonObject() { out_ += '}'; }

  template <class Value>
  JsonObject &put(std::string_view key, const Value &value) {
    append_key(out_, key);
    append_value(out_, value);
    return *this;
  }

 private:
  std::string &out_;
};

/// Returns the keys of an object by its text; no keys where it is no object.
std::vector<std::string_view> keys_of(std::string_view json);

}  // namespace tool

#endif
