#include "text/json.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

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

/// Whether one of eight characters has an escape: it is below a blank, a quotation mark or a
/// backslash. A difference to one of these sets the highest bit of its octet where it is below 0.
bool has_escape(uint64_t eight) {
  constexpr uint64_t ones = 0x0101010101010101;
  const uint64_t marks = eight ^ ones * '"';
  const uint64_t backslashes = eight ^ ones * '\\';
  return ((((eight - ones * ' ') & ~eight) | ((marks - ones) & ~marks) |
           ((backslashes - ones) & ~backslashes)) &
          ones * 0x80) != 0;
}

/// Returns how many characters at the start of a text have no escape.
size_t plain_size(std::string_view text) {
  size_t at = 0;
  for (uint64_t eight = 0; text.size() - at >= sizeof eight; at += sizeof eight) {
    std::memcpy(&eight, text.data() + at, sizeof eight);
    if (has_escape(eight)) break;
  }
  while (at < text.size() && escape_of(text[at]) == 0) ++at;
  return at;
}

}  // namespace

void append_quoted(std::string &out, std::string_view utf8) {
  static constexpr std::string_view digits = "0123456789abcdef";
  out += '"';
  for (;;) {
    const size_t plain = plain_size(utf8);
    out.append(utf8, 0, plain);
    if (plain == utf8.size()) break;
    const char c = utf8[plain];
    out += '\\';
    out += escape_of(c);
    if (escape_of(c) == 'u') {
      const auto code = static_cast<unsigned char>(c);
      out += "00";
      out += digits[code >> 4];
      out += digits[code & 0xF];
    }
    utf8.remove_prefix(plain + 1);
  }
  out += '"';
}

void append_key(std::string &out, std::string_view key, std::string_view end) {
  const std::string_view start = out.back() == '{' ? "\"" : ",\"";
  const size_t at = out.size();
  out.resize(at + start.size() + key.size() + end.size() + 2);
  char *to = &out[at];
  for (const std::string_view part : {start, key, end, std::string_view("\":")})
    to = std::ranges::copy(part, to).out;
}

std::string Json::text() const {
  std::string out;
  append_to(out);
  return out;
}

std::vector<std::string_view> keys_of(std::string_view json) {
  std::vector<std::string_view> keys;
  if (!json.starts_with('{')) return keys;
  size_t depth = 0;
  for (size_t at = 0; at < json.size(); ++at) {
    if (json[at] == '{' || json[at] == '[') ++depth;
    if (json[at] == '}' || json[at] == ']') --depth;
    if (json[at] != '"') continue;
    const size_t from = ++at;
    for (; json[at] != '"'; ++at)
      if (json[at] == '\\') ++at;
    if (depth == 1 && json.substr(at + 1).starts_with(':'))
      keys.push_back(json.substr(from, at - from));
  }
  return keys;
}

}  // namespace tool
