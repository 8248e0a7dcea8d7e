#include "input/base64_reader.h"

#include <algorithm>
#include <array>

#include "input/base64.h"
#include "input/pem.h"

namespace tool {

namespace {

constexpr size_t longest_header = 6;

/// The header of an element in base64, and the number of octets that it announces with itself.
struct Announced {
  Header header;
  size_t size = 0;
};

/// Reads the header of an element in base64. `fault` says that it is not one.
Announced announced(std::string_view base64) {
  std::array<uint8_t, longest_header> start{};
  Announced read;
  const Octets octets = take_base64(base64, start.size(), start.data()).octets;
  read.header = read_header(octets);
  if (read.header.size == 0 || read.header.indefinite) return read;
  // The content is not there, and not looked for.
  read.header.fault.clear();
  read.size = read.header.size + std::min(read.header.length, SIZE_MAX - read.header.size);
  return read;
}

/// Counts the octets that the digits at the start of a text stand for, up to `most`.
size_t count_octets(std::string_view base64, size_t most) {
  Base64Digits next(base64);
  size_t digits = 0;
  while (digits * 3 / 4 < most && next() >= 0) ++digits;
  return std::min(most, digits * 3 / 4);
}

}  // namespace

std::optional<std::span<uint8_t>> decode_base64(std::span<uint8_t> data) {
  const std::string_view text = text_of(data);
  for (size_t at = 0; at < text.size();) {
    const size_t blank = blank_in_base64(text.substr(at));
    if (blank == 0 && !is_base64_digit(text[at]) && text[at] != '=') return std::nullopt;
    at += std::max<size_t>(1, blank);
  }
  std::array<uint8_t, 64> start{};
  const Announced first = announced(text);
  const bool fits = first.size > 1 && first.header.identifier != 0 &&
                    count_octets(text, first.size) == first.size;
  const bool is_der = fits || (first.size > 1 && first.header.identifier == tag::sequence &&
                               count_octets(text, start.size()) == start.size());
  if (!is_der && !is_pem(take_base64(text, start.size(), start.data()).octets)) return std::nullopt;

  size_t count = 0;
  for (size_t at = 0; at < text.size();) {
    const size_t stop = std::min(text.find('=', at), text.size());
    count += take_base64(text.substr(at, stop - at), SIZE_MAX, data.data() + count).octets.size();
    at = std::min(text.find_first_not_of('=', stop), text.size());
  }
  return data.first(count);
}

std::optional<Element> Base64Reader::operator()() {
  while (at_ < data_.size()) {
    const char c = rest()[0];
    if (!is_base64_digit(c)) {
      // A carriage return with a newline after it is no line end of its own.
      if (c == '\n' || (c == '\r' && !rest().starts_with("\r\n"))) ++line_;
      // What follows a backslash is part of an escape, not of a word.
      at_ += std::min<size_t>(c == '\\' ? 2 : 1, rest().size());
      continue;
    }
    Element element;
    element.line = line_;
    if (const auto octets = sequence_here()) {
      element.number = ++count_;
      element.octets = *octets;
      const Header header = read_header(*octets);
      if (!header.fault.empty()) element.fault = Fault{0, header.fault};
      return element;
    }
    skip_word();
  }
  return std::nullopt;
}

/// Takes the SEQUENCE that begins here. Fails where none does. A word of prose may begin like one:
/// a short SEQUENCE counts only if its components fill it, a long one if the text goes on like
/// base64.
std::optional<Octets> Base64Reader::sequence_here() {
  constexpr size_t shortest_word = 16;
  constexpr size_t surely = 48;
  const std::string_view text = rest();
  if (text[0] != 'M' || text.size() < shortest_word ||
      !std::ranges::all_of(text.substr(0, shortest_word), is_base64_digit))
    return std::nullopt;
  const Announced found = announced(text);
  if (found.header.identifier != tag::sequence || found.size < shortest_word / 4 * 3)
    return std::nullopt;
  const size_t there = count_octets(text, found.size);
  if (there < found.size && there < surely) return std::nullopt;
  if (found.size < 128) {
    std::array<uint8_t, 128> copy{};
    const Octets octets = take_base64(text, found.size, copy.data()).octets;
    size_t filled = found.header.size;
    for (const Octets part : components(octets)) filled += part.size();
    if (filled != octets.size()) return std::nullopt;
  }
  Base64Digits next(text);
  for (size_t octets = 0, digits = 0; octets < there; octets = digits * 3 / 4) {
    next();
    ++digits;
  }
  const size_t lines = static_cast<size_t>(std::ranges::count(text.substr(0, next.at()), '\n'));
  const Octets octets = take_base64(text, there, data_.data() + at_).octets;
  at_ += next.at();
  line_ += lines;
  return octets;
}

void Base64Reader::skip_word() {
  while (at_ < data_.size() && is_base64_digit(rest()[0])) ++at_;
}

}  // namespace tool
