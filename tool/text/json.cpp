#include "text/json.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tool {

namespace {

/// What stands for a character: itself where this is 0, a letter after a backslash, or 'u'.
constexpr auto escapes = [] {
  std::array<char, 256> letters{};
  for (size_t control = 0; control < 0x20; ++control) letters[control] = 'u';
  letters['\b'] = 'b';
  letters['\f'] = 'f';
  letters['\n'] = 'n';
  letters['\r'] = 'r';
  letters['\t'] = 't';
  letters['"'] = '"';
  letters['\\'] = '\\';
  return letters;
}();

char escape_of(char c) { return escapes[static_cast<unsigned char>(c)]; }

}  // namespace

void append_quoted(std::string &out, std::string_view utf8) {
  static constexpr std::string_view digits = "0123456789abcdef";
  out += '"';
  for (auto from = utf8.begin(); from != utf8.end();) {
    const auto to = std::find_if(from, utf8.end(), escape_of);
    out.append(from, to);
    if (to == utf8.end()) break;
    out += '\\';
    out += escape_of(*to);
    if (escape_of(*to) == 'u') {
      const auto code = static_cast<unsigned char>(*to);
      out += "00";
      out += digits[code >> 4];
      out += digits[code & 0xF];
    }
    from = to + 1;
  }
  out += '"';
}

void append_key(std::string &out, std::string_view key) {
  if (out.back() != '{') out += ',';
  append_quoted(out, key);
  out += ':';
}

Json Json::of_text(std::string text) {
  Json json(nullptr);
  json.text_ = std::move(text);
  return json;
}

Json Json::hex(Octets octets) {
  std::string text(1, '"');
  append_hex(text, octets);
  return of_text(text += '"');
}

Json Json::array(const std::vector<Json> &elements) {
  std::string text(1, '[');
  for (const Json &element : elements) {
    if (&element != &elements.front()) text += ',';
    element.append_to(text);
  }
  return of_text(text += ']');
}

Json Json::object(size_t room) {
  Json object = of_text("{");
  object.text_.reserve(room);
  object.is_object_ = true;
  return object;
}

void Json::begin(std::string_view key) {
  const size_t comma = text_.size() > 1 ? 1 : 0;
  const size_t place = text_.size() + comma;
  append_key(text_, key);
  keys_.push_back({place, text_.size() - 1 - place});
}

Json &Json::put(std::string_view key, const Json &value) {
  begin(key);
  value.append_to(text_);
  return *this;
}

bool Json::has(std::string_view key) const {
  std::string quoted;
  append_quoted(quoted, key);
  return std::ranges::any_of(keys_, [&](const Key &one) { return this->key(one) == quoted; });
}

bool Json::join(const Json &other) {
  const auto is_taken = [&](const Key &key) {
    return std::ranges::any_of(keys_,
                               [&](const Key &own) { return this->key(own) == other.key(key); });
  };
  if (!other.is_object_ || std::ranges::any_of(other.keys_, is_taken)) return false;
  if (text_.size() > 1 && other.text_.size() > 1) text_ += ',';
  const size_t moved = text_.size() - 1;
  text_.append(other.text_, 1);
  for (const Key &key : other.keys_) keys_.push_back({key.begin + moved, key.size});
  return true;
}

void Json::append_to(std::string &out) const {
  out += text_;
  if (is_object_) out += '}';
}

std::string Json::text() const {
  std::string out;
  append_to(out);
  return out;
}

}  // namespace tool
