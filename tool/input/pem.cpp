#include "input/pem.h"

#include <algorithm>

#include "input/base64.h"
#include "input/formats.h"
#include "text/characters.h"

namespace tool {

namespace {

constexpr std::string_view dashes = "-----";
constexpr std::string_view begin_word = "BEGIN ";
constexpr std::string_view end_word = "END ";
constexpr size_t longest_label = 64;

/// A mark, with an octet after it. What follows so many octets does not change what the mark is.
constexpr size_t longest_mark =
    dashes.size() + begin_word.size() + longest_label + dashes.size() + 1;

bool is_control(char c) { return static_cast<unsigned char>(c) < 0x20; }

/// Returns the label at the start of a text, up to the dashes after it. Fails where there are none.
std::optional<std::string_view> label_in(std::string_view text) {
  text = text.substr(0, longest_label + dashes.size());
  const std::string_view label = text.substr(0, text.find(dashes));
  if (label.size() == text.size() || std::ranges::any_of(label, is_control)) return std::nullopt;
  return label;
}

/// Takes the first line off a text. A line may end as in a JSON string.
std::string_view take_line(std::string_view &text) {
  const auto ends_at = [text](size_t at) {
    return text[at] == '\n' || text[at] == '\r' ||
           (text[at] == '\\' && blank_in_base64(text.substr(at)) > 1);
  };
  size_t end = 0;
  while (end < text.size() && !ends_at(end)) ++end;
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(line.size());
  text.remove_prefix(std::max<size_t>(blank_in_base64(text), text.empty() ? 0 : 1));
  return line;
}

bool is_blank(std::string_view line) { return line.find_first_not_of(" \t\f\v") == line.npos; }

/// Takes the headers of the older form (RFC 1421, 4.6) off the body of a block, and the empty line
/// after them.
std::string_view take_headers(std::string_view &body) {
  const std::string_view whole = body;
  bool in_headers = false;
  while (!body.empty()) {
    std::string_view rest = body;
    const std::string_view line = take_line(rest);
    if (!in_headers && !is_blank(line) && line.find(':') == line.npos) break;
    in_headers = !is_blank(line);
    body = rest;
  }
  return whole.substr(0, whole.size() - body.size());
}

/// Why the base64 text of a block is refused.
struct Base64Fault {
  std::string text{};          ///< empty where nothing is wrong
  std::optional<size_t> at{};  ///< of the character that is wrong; none where no one character is
};

/// Judges what is left of the text of a block, and how much was decoded of it.
Base64Fault fault_of(std::string_view text, const Base64Text &decoded) {
  size_t padding = 0;
  for (size_t at = decoded.end; at < text.size();) {
    if (const size_t blank = blank_in_base64(text.substr(at))) {
      at += blank;
    } else if (text[at] == '=') {
      ++padding;
      ++at;
    } else if (is_base64_digit(text[at])) {
      return {"base64 text after the padding", at};
    } else {
      return {in_quotes(text.substr(at, 1)) + " is not a base64 character", at};
    }
  }
  if ((decoded.digits + padding) % 4 != 0 || padding > 2)
    return {"the base64 text ends inside a group of four; it may have been cut short"};
  if (decoded.digits == 0) return {"the PEM block is empty"};
  return {};
}

/// Leaves the certificate of a "TRUSTED CERTIFICATE", and a remark about the settings after it.
void leave_certificate(Element &element) {
  element.label = "CERTIFICATE";
  const Header header = read_header(element.octets);
  const auto size = element_size(element.octets, header);
  if (!size || *size == element.octets.size()) return;
  element.remark = counted(element.octets.size() - *size, "octet") +
                   " of trust settings after the certificate are not shown; \"openssl x509 -text "
                   "-in FILE\" shows them";
  element.octets = element.octets.first(*size);
}

}  // namespace

/// A BEGIN or END, up to the dashes after its label.
struct PemReader::Mark {
  size_t start;
  size_t stop;
  bool begins;
  std::optional<std::string_view> label;  ///< none where the mark is not complete
};

bool may_precede_pem(Octets data) {
  return std::ranges::none_of(text_of(data),
                              [](char c) { return is_control(c) && !(c >= '\t' && c <= '\r'); });
}

bool is_pem(Octets data) {
  const std::string_view text = text_of(data);
  const size_t mark = text.find(std::string(dashes) + std::string(begin_word));
  return mark != text.npos && may_precede_pem(data.first(mark));
}

std::optional<Element> PemReader::operator()(Window &window) {
  window_ = window;
  counted_ = window.at;
  std::optional<Element> element;
  size_t &at = window_.at;
  auto mark = next_mark(at);
  for (; mark && (!mark->begins || !mark->label); mark = next_mark(at)) at = mark->stop;
  if (mark) {
    // A block that does not end in the window begins it.
    at = mark->start;
    element = block(*mark);
  } else if (!window.is_last) {
    // A mark may have begun.
    at = std::max(at, window.data.size() - std::min(window.data.size(), longest_mark));
  } else if (count_ == 0) {
    element.emplace().number = ++count_;
    element->fault = Fault{std::nullopt, "the input has no complete BEGIN line"};
  }
  count_lines(at);
  window.at = at;
  return element;
}

std::optional<PemReader::Mark> PemReader::next_mark(size_t from) const {
  for (size_t at = text().find(dashes, from); at != std::string_view::npos;
       at = text().find(dashes, at + 1)) {
    std::string_view rest = text().substr(at + dashes.size());
    const bool begins = rest.starts_with(begin_word);
    if (!begins && !rest.starts_with(end_word)) continue;
    if (!window_.is_last && text().size() - at < longest_mark) break;
    rest.remove_prefix((begins ? begin_word : end_word).size());
    const auto label = label_in(rest);
    const size_t stop = text().size() - rest.size() + (label ? label->size() + dashes.size() : 0);
    return Mark{at, stop, begins, label};
  }
  return std::nullopt;
}

/// Takes a block up to its END. A block without one ends in front of the next BEGIN. Takes none
/// where the window ends before that.
std::optional<Element> PemReader::block(const Mark &begin) {
  const auto mark = next_mark(begin.stop);
  if (!mark && !window_.is_last) return std::nullopt;
  Element element;
  element.number = ++count_;
  element.label = *begin.label;
  count_lines(begin.start);
  element.line = line_;
  const size_t stop = mark ? mark->start : text().size();
  const bool ends = mark && !mark->begins;
  window_.at = ends ? mark->stop : stop;
  std::string_view body = text().substr(begin.stop, stop - begin.stop);
  const std::string_view headers = take_headers(body);
  const size_t start = stop - body.size();
  std::string wrong = foreign_label(element.label);
  if (wrong.empty() && headers.find("ENCRYPTED") != headers.npos)
    wrong =
        "encrypted, and this tool has no password: \"openssl pkey -in FILE -out plain.pem\" asks "
        "for it and writes the key without";
  if (wrong.empty()) {
    count_lines(start);
    const Base64Text decoded = take_base64(body, SIZE_MAX, window_.data.data() + start);
    element.octets = decoded.octets;
    // The octets have taken the place of lines.
    line_ += decoded.line_ends;
    counted_ = start + decoded.end;
    Base64Fault fault = fault_of(body, decoded);
    if (fault.at) {
      count_lines(start + *fault.at);
      wrong = "line " + std::to_string(line_) + ": " + fault.text;
    } else if (!ends) {
      wrong = "the PEM block has no END line; it may have been cut short";
    } else if (!mark->label) {
      wrong = "the END line of the PEM block is not complete";
    } else if (*mark->label != element.label) {
      wrong = "the PEM block begins as " + printable(element.label) + " and ends as " +
              printable(*mark->label);
    } else {
      wrong = std::move(fault.text);
    }
  }
  count_lines(window_.at);
  if (!wrong.empty())
    element.fault = Fault{std::nullopt, std::move(wrong)};
  else if (element.label == "TRUSTED CERTIFICATE")
    leave_certificate(element);
  return element;
}

/// Counts the line ends up to an offset. A carriage return with a newline after it is none.
void PemReader::count_lines(size_t to) {
  const std::string_view lines = text().substr(0, to);
  for (size_t at = counted_; (at = lines.find('\n', at)) != lines.npos; ++at) ++line_;
  for (size_t at = counted_; (at = lines.find('\r', at)) != lines.npos; ++at)
    if (!text().substr(at + 1).starts_with('\n')) ++line_;
  counted_ = std::max(counted_, to);
}

std::optional<Element> first_block(std::span<uint8_t> text) {
  Window whole{text};
  return PemReader()(whole);
}

void append_pem(std::string &out, std::string_view label, Octets octets,
                std::string_view line_end) {
  const auto append_mark = [&](std::string_view word) {
    for (const std::string_view part : {dashes, word, label, dashes, line_end}) out += part;
  };
  append_mark(begin_word);
  append_base64(out, octets, line_end);
  append_mark(end_word);
}

}  // namespace tool
