#include "text/characters.h"

#include <algorithm>
#include <cstring>

namespace tool {

namespace {

constexpr char32_t octet_mark = 0x110000;

constexpr bool is_surrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

/// Characters that a terminal would obey, or that hide what a text says.
bool is_unsafe(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0xAD || c == 0x61C || c == 0x180E ||
         (c >= 0x115F && c <= 0x1160) || (c >= 0x200B && c <= 0x200F) ||
         (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x206F) || c == 0x3164 ||
         is_surrogate(c) || (c >= 0xFDD0 && c <= 0xFDEF) || c == 0xFEFF ||
         (c >= 0xFFF0 && c <= 0xFFFB) || (c & 0xFFFE) == 0xFFFE || c >= 0xE0000;
}

void append_utf8(std::string &out, char32_t c) {
  const auto put = [&out](char32_t octet) {
    out += static_cast<char>(static_cast<unsigned char>(octet));
  };
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    put(0xC0 | c >> 6);
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | c >> 12);
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | c >> 18);
    put(0x80 | (c >> 12 & 0x3F));
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

std::string hex_number(char32_t c) {
  std::string digits;
  do {
    digits.insert(digits.begin(), "0123456789ABCDEF"[c & 0xF]);
    c >>= 4;
  } while (c != 0);
  return digits;
}

CodePoints from_ascii(Octets octets) {
  CodePoints out;
  out.reserve(octets.size());
  for (const uint8_t octet : octets) out += octet < 0x80 ? char32_t{octet} : octet_mark + octet;
  return out;
}

CodePoints from_latin1(Octets octets) { return CodePoints(octets.begin(), octets.end()); }

/// Reads units of `size` octets, most significant octet first. Marks octets that make no character.
CodePoints from_units(Octets octets, size_t size) {
  CodePoints out;
  while (octets.size() >= size) {
    const auto unit = [octets, size](size_t index) {
      char32_t value = 0;
      for (const uint8_t octet : octets.subspan(index * size, size)) value = value << 8 | octet;
      return value;
    };
    const char32_t first = unit(0);
    size_t taken = size;
    if (size == 2 && first >= 0xD800 && first <= 0xDBFF && octets.size() >= 4 &&
        unit(1) >= 0xDC00 && unit(1) <= 0xDFFF) {
      out += 0x10000 + ((first - 0xD800) << 10) + (unit(1) - 0xDC00);
      taken = 4;
    } else if (first < octet_mark && !is_surrogate(first)) {
      out += first;
    } else {
      for (const uint8_t octet : octets.first(size)) out += octet_mark + octet;
    }
    octets = octets.subspan(taken);
  }
  for (const uint8_t octet : octets) out += octet_mark + octet;
  return out;
}

}  // namespace

namespace {

/// Takes a character off the front of UTF-8 that is not empty. Takes an octet that is not text
/// alone.
char32_t take_character(Octets &octets) {
  const uint8_t lead = octets[0];
  const size_t size = lead < 0x80   ? 1
                      : lead < 0xC2 ? 0
                      : lead < 0xE0 ? 2
                      : lead < 0xF0 ? 3
                      : lead < 0xF5 ? 4
                                    : 0;
  char32_t c = size < 2 ? lead : lead & (0x7FU >> size);
  bool good = size != 0 && octets.size() >= size;
  for (size_t k = 1; good && k < size; ++k) {
    good = (octets[k] & 0xC0) == 0x80;
    c = c << 6 | (octets[k] & 0x3F);
  }
  good = good && !(size == 3 && c < 0x800) && !(size == 4 && c < 0x10000) && c < octet_mark &&
         !is_surrogate(c);
  octets = octets.subspan(good ? size : 1);
  return good ? c : octet_mark + lead;
}

}  // namespace

CodePoints from_utf8(Octets octets) {
  CodePoints out;
  out.reserve(octets.size());
  while (!octets.empty()) out += take_character(octets);
  return out;
}

namespace {

/// How the characters of a string type are encoded.
enum class Coding : uint8_t { none, utf8, ascii, latin1, two_octets, four_octets };

Coding coding_of(uint32_t tag) {
  switch (tag & ~uint32_t{tag::constructed}) {
    case 0x0C:
      return Coding::utf8;
    case 0x12:
    case 0x13:
    case 0x16:
    case 0x19:
    case 0x1A:
    case 0x1B:
      return Coding::ascii;
    case 0x14:
      return Coding::latin1;
    case 0x1C:
      return Coding::four_octets;
    case 0x1E:
      return Coding::two_octets;
    default:
      return Coding::none;
  }
}

CodePoints decoded(Coding coding, Octets value) {
  switch (coding) {
    case Coding::utf8:
      return from_utf8(value);
    case Coding::ascii:
      return from_ascii(value);
    case Coding::latin1:
      return from_latin1(value);
    case Coding::two_octets:
      return from_units(value, 2);
    case Coding::four_octets:
      return from_units(value, 4);
    case Coding::none:
      break;
  }
  return {};
}

}  // namespace

std::optional<CodePoints> from_string(uint32_t tag, Octets value) {
  const Coding coding = coding_of(tag);
  return coding == Coding::none ? std::nullopt : std::optional(decoded(coding, value));
}

// Nearly all strings are ASCII, which is its own UTF-8.
std::optional<Utf8> utf8_from_string(uint32_t tag, Octets value) {
  const Coding coding = coding_of(tag);
  const bool is_wide = coding == Coding::two_octets || coding == Coding::four_octets;
  if (coding == Coding::none) return std::nullopt;
  if (!is_wide && is_ascii(text_of(value))) return Utf8{std::string(text_of(value))};
  const CodePoints text = decoded(coding, value);
  return Utf8{to_utf8(text), std::ranges::all_of(text, [](char32_t c) { return c < octet_mark; })};
}

namespace {

/// ASCII that is safe to print and needs no backslash.
constexpr bool is_plain(char c) { return c >= ' ' && c <= '~' && c != '\\'; }

/// Whether eight octets are. An octet of `x - n` borrows into its top bit where that of `x` is
/// below `n`; the lowest such octet does so in any case, which is enough to know that there is one.
bool are_plain(uint64_t eight) {
  constexpr uint64_t ones = 0x0101010101010101;
  const auto below = [](uint64_t octets, uint64_t n) { return (octets - ones * n) & ~octets; };
  const uint64_t others =
      below(eight, ' ') | below(eight ^ ones * '\\', 1) | eight | (eight + ones);
  return (others & ones << 7) == 0;
}

/// Takes the plain characters off the front of a text. Returns them.
std::string_view take_plain(std::string_view &text) {
  const char *at = text.data();
  const char *const end = at + text.size();
  for (uint64_t eight = 0; end - at >= std::ptrdiff_t{sizeof eight}; at += sizeof eight) {
    std::memcpy(&eight, at, sizeof eight);
    if (!are_plain(eight)) break;
  }
  while (at != end && is_plain(*at)) ++at;
  const std::string_view taken(text.data(), static_cast<size_t>(at - text.data()));
  text.remove_prefix(taken.size());
  return taken;
}

/// Takes a character off the front of a text that is not empty.
char32_t take_character(std::string_view &text) {
  Octets rest = octets_of(text);
  const char32_t c = take_character(rest);
  text.remove_prefix(text.size() - rest.size());
  return c;
}

/// Appends a character in its printable form.
void append_printable(std::string &out, char32_t c, std::string_view also = {}) {
  if (c >= octet_mark || (c < 0x80 && is_unsafe(c))) {
    const uint8_t octet = static_cast<uint8_t>(c < octet_mark ? c : c - octet_mark);
    out += "\\x";
    append_hex(out, Octets(&octet, 1));
  } else if (is_unsafe(c)) {
    out += "\\u{" + hex_number(c) + "}";
  } else {
    const bool escaped =
        c == '\\' || (c < 0x80 && also.find(static_cast<char>(c)) != std::string_view::npos);
    if (escaped) out += '\\';
    append_utf8(out, c);
  }
}

}  // namespace

bool is_safe(const CodePoints &text) { return std::ranges::none_of(text, is_unsafe); }

bool is_safe(std::string_view utf8) {
  for (;;) {
    take_plain(utf8);
    if (utf8.empty()) return true;
    if (is_unsafe(take_character(utf8))) return false;
  }
}

std::string printable(const CodePoints &text, std::string_view also) {
  std::string out;
  for (const char32_t c : text) append_printable(out, c, also);
  return out;
}

void append_printable(std::string &out, std::string_view utf8) {
  for (;;) {
    out += take_plain(utf8);
    if (utf8.empty()) return;
    append_printable(out, take_character(utf8));
  }
}

std::string printable(std::string_view utf8) {
  std::string out;
  append_printable(out, utf8);
  return out;
}

std::string in_quotes(std::string_view utf8) {
  std::string out(1, '"');
  append_printable(out, utf8);
  out += '"';
  return out;
}

std::string counted(size_t count, std::string_view noun) {
  return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

std::string word_of(std::span<const char *const> words, uint32_t number,
                    std::string_view otherwise) {
  if (number < words.size()) return words[number];
  return std::string(otherwise) + " " + std::to_string(number);
}

std::string to_utf8(const CodePoints &text) {
  std::string out;
  out.reserve(text.size());
  for (const char32_t c : text) append_utf8(out, c >= octet_mark ? 0xFFFD : c);
  return out;
}

bool is_ascii(std::string_view text) {
  uint64_t all = 0;
  for (uint64_t eight = 0; text.size() >= sizeof eight; text.remove_prefix(sizeof eight)) {
    std::memcpy(&eight, text.data(), sizeof eight);
    all |= eight;
  }
  constexpr uint64_t highest_bits = 0x8080808080808080;
  return (all & highest_bits) == 0 &&
         std::ranges::all_of(text, [](char c) { return (c & 0x80) == 0; });
}

std::string valid_utf8(std::string_view text) {
  return is_ascii(text) ? std::string(text) : to_utf8(from_utf8(octets_of(text)));
}

}  // namespace tool
