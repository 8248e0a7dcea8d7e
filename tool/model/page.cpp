#include "model/page.h"

#include <algorithm>
#include <array>

#include "model/wrap.h"
#include "text/characters.h"

namespace tool {

namespace {

constexpr size_t widest_key = 40;
constexpr size_t octets_a_line = 16;

}  // namespace

std::string toned(std::string_view text, Tone tone, bool colour) {
  static constexpr std::array<const char *, 5> starts{"", "\x1B[1m", "\x1B[2m", "\x1B[33m",
                                                      "\x1B[1;31m"};
  const char *const start = starts[static_cast<size_t>(tone)];
  if (!colour || *start == '\0') return std::string(text);
  return start + std::string(text) + "\x1B[0m";
}

void Page::section(std::string heading, std::string note) {
  sections_.push_back({std::move(heading), std::move(note), {}});
}

void Page::row(std::string key, std::vector<std::string> lines, Tone tone) {
  sections_.back().rows.push_back({std::move(key), std::move(lines), tone});
}

void Page::row(std::string key, std::string line, Tone tone) {
  row(std::move(key), std::vector<std::string>{std::move(line)}, tone);
}

std::string Page::text() const {
  constexpr size_t indent = 2;
  constexpr size_t gap = 2;
  const size_t widest = std::min(widest_key, columns_ / 2 - indent - gap);
  size_t column = 0;
  for (const Section &section : sections_)
    for (const Row &row : section.rows)
      if (width(row.key) <= widest) column = std::max(column, width(row.key));
  const std::string margin(indent + column + gap, ' ');
  const size_t place = columns_ - margin.size();

  std::string out;
  for (const Section &section : sections_) {
    out += toned(section.heading, Tone::heading, colour_);
    if (!section.note.empty()) out += "  " + toned(section.note, Tone::quiet, colour_);
    out += '\n';
    for (const Row &row : section.rows) {
      const bool fits = width(row.key) <= column;
      bool first = true;
      for (const std::string &piece : wrapped(row.key, columns_ - indent)) {
        if (!first) out += '\n';
        first = false;
        out += std::string(indent, ' ') + toned(piece, Tone::quiet, colour_);
      }
      first = fits;
      for (const std::string &line : row.lines)
        for (const std::string &piece : wrapped(line, place)) {
          out += first ? std::string(column - width(row.key) + gap, ' ') : '\n' + margin;
          first = false;
          out += toned(piece, row.tone, colour_);
        }
      out += '\n';
    }
  }
  return out;
}

std::vector<std::string> dump(Octets octets, bool full) {
  const size_t shown = full || octets.size() <= octets_at_a_glance + octets_a_line
                           ? octets.size()
                           : octets_at_a_glance;
  std::vector<std::string> lines;
  for (size_t i = 0; i < shown; i += octets_a_line) {
    const Octets line = octets.subspan(i, std::min(octets_a_line, shown - i));
    std::string text;
    for (size_t k = 0; k < line.size(); k += 4) {
      if (k != 0) text += ' ';
      text += hex(line.subspan(k, std::min<size_t>(4, line.size() - k)));
    }
    lines.push_back(std::move(text));
  }
  if (shown < octets.size())
    lines.push_back("... and " + counted(octets.size() - shown, "more octet"));
  if (lines.empty()) lines.push_back("(empty)");
  return lines;
}

}  // namespace tool
