#include "model/outline_text.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "model/page.h"
#include "text/characters.h"
#include "text/object_identifiers.h"
#include "text/times.h"

namespace tool {

namespace {

using Kind = OutlineLine::Kind;

constexpr size_t octets_a_row = 16;
constexpr size_t octets_of_a_value = 20;
constexpr size_t levels_indented = 30;

std::string right(const std::string &text, size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string left(const std::string &text, size_t width) {
  return text + std::string(width - std::min(width, text.size()), ' ');
}

/// Returns the blanks in front of an element; further in, all stand in one column, with the number
/// of elements around each.
std::string indent(size_t depth) {
  std::string out(2 * std::min(depth, levels_indented), ' ');
  if (depth > levels_indented) out.append("(").append(std::to_string(depth)).append(" deep) ");
  return out;
}

/// Returns the first octets, and how many there are where these are not all.
std::string first_octets(Octets octets, bool full) {
  if (full || octets.size() <= octets_of_a_value) return spaced_hex(octets);
  return spaced_hex(octets.first(octets_of_a_value - 4)) + " ... (" +
         counted(octets.size(), "octet") + ")";
}

/// Returns a number in decimal, or a large one in hexadecimal.
std::string decimal(Octets content, bool full) {
  if (content.empty()) return "";
  if (content.size() > sizeof(int64_t)) {
    const bool cut = !full && content.size() > octets_of_a_value + 1;
    return "0x" + hex(cut ? content.first(octets_of_a_value - 4) : content) +
           (cut ? "... (" + counted(content.size(), "octet") + ")" : "");
  }
  uint64_t value = content[0] < 0x80 ? 0 : UINT64_MAX;
  for (const uint8_t octet : content) value = value << 8 | octet;
  return std::to_string(static_cast<int64_t>(value));
}

std::string bits(Octets content, bool full) {
  if (content.empty()) return "";
  const std::string octets = first_octets(content.subspan(1), full);
  if (content[0] == 0) return octets;
  return octets + " (" + counted(content[0], "unused bit") + ")";
}

/// Returns a text in quotation marks, or its beginning.
std::string quoted(uint8_t number, Octets content, bool full) {
  const size_t most = full ? content.size() : octets_at_a_glance;
  const bool cut = content.size() > most;
  const auto text = from_string(number, content.first(cut ? most : content.size()));
  if (!text) return first_octets(content, full);
  return "\"" + printable(*text, "\"") + "\"" +
         (cut ? "... (" + counted(content.size(), "octet") + ")" : "");
}

std::string time(uint8_t kind, Octets content) {
  if (content.size() > octets_of_a_value + 12) return first_octets(content, false);
  std::string text(text_of(content));
  const Time time{kind, text.data()};
  return text.find('\0') == std::string::npos && seconds_of(&time) ? time_text(&time)
                                                                   : in_quotes(text);
}

/// Whether octets under a tag that says nothing are a text of some length.
bool is_plain_text(Octets content) {
  constexpr size_t fewest = 4;
  return content.size() >= fewest &&
         std::ranges::all_of(content, [](uint8_t c) { return c >= 0x20 && c < 0x7F; });
}

/// Returns the field or number of an element, or the name of a type that begins with it.
std::string name_of(const OutlineLine &line) {
  const Place &place = line.place;
  std::string name(place.field);
  if (place.index) name = "[" + std::to_string(*place.index) + "]";
  if (name.empty() && place.begins != nullptr) name = pki_Type_name(place.begins);
  if (name == ber::tag_name(line.header)) name.clear();
  if (!place.alternative.empty())
    name += (name.empty() ? "" : ".") + std::string(place.alternative);
  return name;
}

}  // namespace

OutlineWriter::OutlineWriter(size_t size, const OutlineStyle &style)
    : style_(style),
      offset_width_(std::to_string(size).size()),
      lengths_width_(std::max<size_t>(offset_width_ + 2, 5)) {}

std::string OutlineWriter::operator()(const OutlineLine &line) {
  const std::string offset = right(std::to_string(line.offset), offset_width_) + "  ";
  std::string lengths = "fault";
  std::string text;
  switch (line.kind) {
    case Kind::fault:
      text = toned(printable(std::string_view(line.text)), Tone::alarm, style_.colour);
      break;
    case Kind::rest:
      lengths = "rest";
      text = counted(line.octets.size(), "octet") + ": " + first_octets(line.octets, style_.full);
      break;
    case Kind::end_of_contents:
      lengths = "2+0";
      text = "end-of-contents";
      break;
    case Kind::element:
      lengths = std::to_string(line.header.size) + "+" +
                (line.header.indefinite ? "inf" : std::to_string(line.header.length));
      ++fields_;
      text = element(line);
      break;
  }
  std::string out = toned(offset + left(lengths, lengths_width_), Tone::quiet, style_.colour) +
                    "  " + indent(line.depth) + text + "\n";
  if (style_.hex && line.kind != Kind::fault) {
    const bool whole = line.kind != Kind::element || (!line.header.constructed() && !line.holds);
    out += dump(whole ? line.octets : line.octets.first(line.header.size), line.header.size,
                line.offset);
  }
  return out;
}

std::string OutlineWriter::element(const OutlineLine &line) {
  const std::string name = name_of(line);
  std::string out = name.empty() ? "" : coloured(name) + ": ";
  out += ber::tag_name(line.header);
  if (line.header.constructed() || line.holds || line.header.overlong) return out;
  const std::string text = value(line);
  return text.empty() ? out : out + " " + text;
}

/// Returns a short value of a primitive element.
std::string OutlineWriter::value(const OutlineLine &line) {
  const Octets content = line.content();
  const uint8_t number = line.meant();
  switch (number) {
    case tag::boolean:
      if (content.size() == 1) return content[0] == 0 ? "FALSE" : "TRUE";
      break;
    case tag::integer:
    case tag::enumerated:
      return decimal(content, style_.full);
    case tag::bit_string:
      return bits(content, style_.full);
    case tag::object_identifier:
      return identifier(content);
    case tag::utc_time:
    case tag::generalized_time:
      return time(number, content);
    case tag::null:
      break;
    case 0:
      if (is_plain_text(content)) return quoted(tag::ia5_string, content, style_.full);
      break;
    default:
      return quoted(number, content, style_.full);
  }
  return first_octets(content, style_.full);
}

/// Returns the name of an identifier, or its dotted form.
std::string OutlineWriter::identifier(Octets content) {
  constexpr size_t most_names = 1000;
  const std::string key(text_of(content));
  if (const auto known = names_.find(key); known != names_.end()) return known->second;
  const auto record = ber::record_of(content);
  const std::unique_ptr<char, void (*)(void *)> dots(
      record ? pki_ObjId_text(record.get()) : nullptr, std::free);
  if (!dots) return first_octets(content, style_.full);
  std::string name = display_name(record.get());
  if (name.empty())
    name = dots.get();
  else if (style_.oids)
    name += std::string(" (") + dots.get() + ")";
  if (names_.size() == most_names) names_.clear();
  return names_[key] = name;
}

/// Returns rows of octets with their characters. The header is quiet, the rest has the colour of
/// the field.
std::string OutlineWriter::dump(Octets octets, size_t header, size_t offset) const {
  const bool cut = !style_.full && octets.size() > octets_at_a_glance + octets_a_row;
  const Octets shown = cut ? octets.first(octets_at_a_glance) : octets;
  const std::string margin(offset_width_ + lengths_width_ + 4, ' ');
  std::string out;
  for (size_t at = 0; at < shown.size(); at += octets_a_row) {
    const Octets row = shown.subspan(at, std::min(octets_a_row, shown.size() - at));
    const size_t quiet = std::min(row.size(), header - std::min(header, at));
    std::string characters;
    for (const uint8_t c : row) characters += c >= 0x20 && c < 0x7F ? static_cast<char>(c) : '.';
    const bool both = quiet != 0 && quiet != row.size();
    out += toned(right(std::to_string(offset + at), offset_width_), Tone::quiet, style_.colour) +
           margin.substr(offset_width_) +
           toned(spaced_hex(row.first(quiet)), Tone::quiet, style_.colour) + (both ? " " : "") +
           (quiet == row.size() ? "" : coloured(spaced_hex(row.subspan(quiet)))) +
           std::string(3 * (octets_a_row - row.size()) + 2, ' ') + characters + "\n";
  }
  if (cut) out += margin + "... and " + counted(octets.size() - shown.size(), "more octet") + "\n";
  return out;
}

/// Returns a text in the colour of the element that was told last.
std::string OutlineWriter::coloured(std::string_view text) const {
  static constexpr std::array<const char *, 4> colours{"\x1B[36m", "\x1B[32m", "\x1B[35m",
                                                       "\x1B[34m"};
  if (!style_.colour) return std::string(text);
  return colours[fields_ % colours.size()] + std::string(text) + "\x1B[0m";
}

std::vector<std::string> outline_lines(Octets octets, const pki_Type *type,
                                       const OutlineStyle &style, size_t most) {
  std::vector<std::string> lines;
  OutlineWriter write(octets.size(), style);
  outline(octets, type, [&](const OutlineLine &line) {
    if (lines.size() == most) {
      lines.push_back("... and more from offset " + std::to_string(line.offset) + " on");
      return false;
    }
    lines.push_back(write(line));
    lines.back().pop_back();
    return true;
  });
  return lines;
}

}  // namespace tool
