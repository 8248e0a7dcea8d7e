#include "model/wrap.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tool {

namespace {

constexpr bool continues(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// Returns the number of octets of the character at the start of a text.
size_t character_size(std::string_view utf8) {
  size_t size = 1;
  while (size < utf8.size() && continues(utf8[size])) ++size;
  return size;
}

char32_t code_point(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  char32_t c = first < 0x80   ? first
               : first < 0xE0 ? first & 0x1F
               : first < 0xF0 ? first & 0x0F
                              : first & 0x07;
  for (const char next : character.substr(1))
    c = c << 6 | (static_cast<unsigned char>(next) & 0x3F);
  return c;
}

using Range = std::pair<char32_t, char32_t>;

template <size_t count>
bool is_in(const std::array<Range, count> &ranges, char32_t c) {
  return std::ranges::any_of(
      ranges, [c](const Range &range) { return range.first <= c && c <= range.second; });
}

/// Marks that are drawn over the character in front of them.
constexpr std::array<Range, 9> combining{{{0x300, 0x36F},
                                          {0x483, 0x489},
                                          {0x591, 0x5BD},
                                          {0x610, 0x61A},
                                          {0x64B, 0x65F},
                                          {0x1AB0, 0x1AFF},
                                          {0x1DC0, 0x1DFF},
                                          {0x20D0, 0x20FF},
                                          {0xFE00, 0xFE2F}}};

/// Scripts of East Asia and pictures (Unicode, UAX #11).
constexpr std::array<Range, 10> wide{{{0x1100, 0x115F},
                                      {0x2E80, 0x303E},
                                      {0x3041, 0xA4CF},
                                      {0xAC00, 0xD7A3},
                                      {0xF900, 0xFAFF},
                                      {0xFE30, 0xFE6F},
                                      {0xFF00, 0xFF60},
                                      {0x1F300, 0x1F64F},
                                      {0x1F900, 0x1F9FF},
                                      {0x20000, 0x3FFFD}}};

size_t character_width(std::string_view character) {
  const char32_t c = code_point(character);
  if (c < 0x300) return 1;
  return is_in(combining, c) ? 0 : is_in(wide, c) ? 2 : 1;
}

/// Whether the word at the start of a text fits into so many columns.
bool word_fits(std::string_view text, size_t columns) {
  constexpr size_t longest_character = 4;
  const std::string_view word = text.substr(0, text.find(' '));
  return word.size() <= longest_character * columns && width(word) <= columns;
}

/// Whether a text is a number in hexadecimal, such as a digest.
bool is_number(std::string_view text) {
  return text.find_first_not_of("0123456789ABCDEF") == text.npos;
}

/// Returns the number of digits that a piece takes off a number that takes several: as many as the
/// others, in pairs.
size_t digits_a_piece(size_t digits, size_t columns) {
  const size_t pieces = (digits + columns - 1) / columns;
  const size_t size = (digits + pieces - 1) / pieces;
  return std::min(size + size % 2, columns);
}

/// Returns the number of octets that a piece takes off the start of a text.
size_t piece_size(std::string_view text, size_t columns) {
  if (text.size() > columns && is_number(text)) return digits_a_piece(text.size(), columns);
  constexpr std::string_view marks = ",;/:&?=+.-_";
  size_t size = 0;
  size_t at_blank = 0;
  size_t after_mark = 0;
  for (size_t used = 0; size < text.size();) {
    const std::string_view character = text.substr(size, character_size(text.substr(size)));
    used += character_width(character);
    if (character == " ") at_blank = size;
    // A piece takes at least one character, however narrow its place is.
    if (used > columns && size != 0) {
      if (at_blank != 0 && word_fits(text.substr(at_blank + 1), columns)) return at_blank;
      return after_mark > size / 2 ? after_mark : size;
    }
    size += character.size();
    if (marks.find(character) != marks.npos) after_mark = size;
  }
  return size;
}

}  // namespace

size_t width(std::string_view utf8) {
  size_t columns = 0;
  while (!utf8.empty()) {
    const std::string_view character = utf8.substr(0, character_size(utf8));
    columns += character_width(character);
    utf8.remove_prefix(character.size());
  }
  return columns;
}

std::vector<std::string> wrapped(std::string_view line, size_t columns, size_t hang) {
  if (width(line) <= columns) return {std::string(line)};
  std::vector<std::string> pieces;
  if (is_number(line)) hang = 0;
  // A blank at the start belongs to the text: it says that a line belongs to the one above.
  const size_t lead = std::min(line.find_first_not_of(' '), line.size());
  std::string margin;
  while (!line.empty()) {
    const size_t skip = pieces.empty() ? lead : 0;
    const size_t place = columns > margin.size() + skip ? columns - margin.size() - skip : 1;
    const size_t size = skip + piece_size(line.substr(skip), place);
    pieces.push_back(margin + std::string(line.substr(0, size)));
    line.remove_prefix(size);
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    margin.assign(lead + hang, ' ');
  }
  return pieces;
}

}  // namespace tool
