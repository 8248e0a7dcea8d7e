#include "input/pem.h"

#include <algorithm>

#include "text/characters.h"

namespace tool {

namespace {

constexpr std::string_view begin_mark = "-----BEGIN ";
constexpr std::string_view end_mark = "-----END ";
constexpr std::string_view closing_mark = "-----";

std::string_view trimmed(std::string_view line) {
  constexpr std::string_view blanks = " \t\r\f\v";
  const size_t first = line.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

/// Returns the label of a line that is `mark`, a label and the closing dashes. Fails on other
/// lines.
std::optional<std::string> label_of(std::string_view line, std::string_view mark) {
  line = trimmed(line);
  if (!line.starts_with(mark) || !line.ends_with(closing_mark)) return std::nullopt;
  if (line.size() < mark.size() + closing_mark.size()) return std::nullopt;
  line.remove_prefix(mark.size());
  line.remove_suffix(closing_mark.size());
  return std::string(line);
}

int base64_value(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

/// Decodes base64 piece by piece. Four characters become three octets, so that the output may be
/// the place that the input was read from.
class Base64 {
 public:
  explicit Base64(uint8_t *out) : start_(out), out_(out) {}

  /// Takes the characters of a line. Returns what is wrong with one of them, or an empty text.
  std::string take(std::string_view line) {
    for (const char c : line) {
      if (c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v') continue;
      any_ = true;
      if (c == '=') {
        ++padding_;
        continue;
      }
      const int value = base64_value(c);
      if (value < 0) return in_quotes(std::string(1, c)) + " is not a base64 character";
      if (padding_ != 0) return "base64 text after the padding";
      group_ = group_ << 6 | static_cast<uint32_t>(value);
      if (++count_ == 4) {
        put(3);
        count_ = 0;
      }
    }
    return {};
  }

  /// Takes the end. Returns what is wrong with it, or an empty text.
  std::string finish() {
    if ((count_ + padding_) % 4 != 0 || padding_ > 2 || count_ == 1)
      return "the base64 text ends inside a group of four";
    if (count_ != 0) {
      const size_t octets = count_ - 1;
      group_ <<= 6 * (4 - count_);
      put(octets);
      count_ = 0;
    }
    return {};
  }

  bool started() const { return any_; }
  Octets octets() const { return Octets(start_, out_); }

 private:
  void put(size_t octets) {
    for (size_t i = 0; i < octets; ++i) *out_++ = static_cast<uint8_t>(group_ >> (16 - 8 * i));
    group_ = 0;
  }

  uint8_t *start_;
  uint8_t *out_;
  uint32_t group_ = 0;
  size_t count_ = 0;
  size_t padding_ = 0;
  bool any_ = false;
};

}  // namespace

bool is_pem(Octets data) {
  const std::string_view text = text_of(data);
  bool line_start = true;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (line_start && c == '-' && text.substr(i).starts_with(begin_mark)) return true;
    if (c == '\n')
      line_start = true;
    else if (c != ' ' && c != '\t')
      line_start = false;
    const bool control = static_cast<unsigned char>(c) < 0x20;
    if (control && !(c >= '\t' && c <= '\r')) return false;
  }
  return false;
}

std::optional<Element> PemReader::operator()() {
  while (next_line())
    if (auto label = label_of(line(), begin_mark)) return take_block(std::move(*label));
  if (count_ != 0) return std::nullopt;
  Element none;
  none.number = ++count_;
  none.fault = Fault{std::nullopt, "the input has no complete BEGIN line"};
  return none;
}

bool PemReader::next_line() {
  if (next_ >= data_.size()) return false;
  start_ = next_;
  const auto rest = data_.subspan(start_);
  stop_ = start_ + static_cast<size_t>(std::ranges::find(rest, '\n') - rest.begin());
  next_ = stop_ + 1;
  ++line_number_;
  return true;
}

/// Takes the lines of a block up to its END line. A block without an END line ends in front of the
/// next BEGIN line.
Element PemReader::take_block(std::string label) {
  Element element;
  element.number = ++count_;
  element.line = line_number_;
  element.label = std::move(label);
  Base64 base64(data_.data() + start_);
  std::string wrong;
  bool in_headers = false;
  bool ended = false;
  while (next_line()) {
    if (const auto end = label_of(line(), end_mark)) {
      ended = true;
      if (wrong.empty() && *end != element.label)
        wrong = "the PEM block begins as " + printable(element.label) + " and ends as " +
                printable(*end);
      break;
    }
    if (label_of(line(), begin_mark)) {
      next_ = start_;
      --line_number_;
      break;
    }
    // Headers of the older form precede the base64 text, with an empty line after them.
    if (in_headers || (!base64.started() && line().find(':') != std::string_view::npos)) {
      in_headers = !trimmed(line()).empty();
    } else if (wrong.empty()) {
      wrong = base64.take(line());
      if (!wrong.empty()) wrong.insert(0, "line " + std::to_string(line_number_) + ": ");
    }
  }
  if (wrong.empty() && !ended) wrong = "the PEM block has no END line";
  if (wrong.empty()) wrong = base64.finish();
  if (wrong.empty() && base64.octets().empty()) wrong = "the PEM block is empty";
  if (!wrong.empty()) element.fault = Fault{std::nullopt, std::move(wrong)};
  element.octets = base64.octets();
  return element;
}

std::string pem(std::string_view label, Octets octets) {
  const std::string name(label);
  return "-----BEGIN " + name + "-----\n" + base64(octets) + "-----END " + name + "-----\n";
}

}  // namespace tool
