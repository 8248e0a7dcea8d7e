// Text from outside: from the string types of ASN.1 to code points, and from there to what may be
// shown. Nothing here depends on the locale; every output is UTF-8.
#ifndef ORVELASN1_TOOL_TEXT_CHARACTERS_H
#define ORVELASN1_TOOL_TEXT_CHARACTERS_H

#include "text/octets.h"

namespace tool {

/// Code points. 0x110000 and above mean one octet that is not text.
using CodePoints = std::u32string;

/// Reads UTF-8 and checks each octet.
CodePoints from_utf8(Octets octets);

/// Reads a string whose identifier octet is `tag`. Fails if that is not a string type.
/// TeletexString is read as ISO 8859-1, as it is used in practice.
std::optional<CodePoints> from_string(uint32_t tag, Octets value);

/// A string as UTF-8, with U+FFFD for each octet that is not text.
struct Utf8 {
  std::string characters;
  bool is_clean = true;  ///< whether each octet was text
};

/// Reads a string as from_string() does.
std::optional<Utf8> utf8_from_string(uint32_t tag, Octets value);

/// Whether each character is text and safe to print as it is.
bool is_safe(const CodePoints &text);
bool is_safe(std::string_view utf8);

/// Returns UTF-8 that is safe to print: controls, invisible and direction marks, and octets that
/// are not text, are written as \x1B or \u{202E}, a backslash as two. The characters of `also` get
/// a backslash too.
std::string printable(const CodePoints &text, std::string_view also = {});

/// Returns or appends the same for a text that should be UTF-8.
std::string printable(std::string_view utf8);
void append_printable(std::string &out, std::string_view utf8);

/// Returns the printable form of a text between quotation marks.
std::string in_quotes(std::string_view utf8);

/// Returns a number and what it counts: "1 octet", "2 octets".
std::string counted(size_t count, std::string_view noun);

/// Returns the words in one line.
template <class Words>
std::string joined(const Words &words, std::string_view separator = ", ") {
  std::string out;
  for (const auto &word : words) {
    if (&word != &*std::begin(words)) out += separator;
    out += word;
  }
  return out;
}

/// Returns the word for a number, or "reason 7" for a number without one, with `otherwise`
/// "reason".
std::string word_of(std::span<const char *const> words, uint32_t number,
                    std::string_view otherwise);

/// Returns UTF-8 of the code points, with U+FFFD for each octet that is not text.
std::string to_utf8(const CodePoints &text);

/// Whether all octets are ASCII.
bool is_ascii(std::string_view text);

/// Returns a text from outside as valid UTF-8, with U+FFFD for each octet that is not text.
std::string valid_utf8(std::string_view text);

}  // namespace tool

#endif
