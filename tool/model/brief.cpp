#include "model/brief.h"

#include <algorithm>

#include "model/wrap.h"
#include "text/characters.h"

namespace tool {

namespace {

constexpr size_t widest_name = 36;
constexpr size_t state_columns = 21;
constexpr size_t indent = 4;

std::string padded(const std::string &text, size_t columns) {
  return std::string(columns - std::min(columns, width(text)), ' ');
}

/// Returns as many names as there is room for, and how many there are besides. Returns all where
/// the view is full.
std::string some_of(const std::vector<std::string> &names, size_t columns, const View &view) {
  std::string text;
  for (size_t i = 0; i < names.size(); ++i) {
    const size_t rest = names.size() - i;
    const std::string more = " and " + std::to_string(rest) + " more";
    const std::string next = (i == 0 ? "" : ", ") + names[i];
    const size_t room = width(text) + width(next) + (rest == 1 ? 0 : more.size());
    if (i != 0 && !view.full && room > columns) return text + more;
    text += next;
  }
  return text;
}

}  // namespace

BriefColumns::BriefColumns(const std::vector<std::string> &names, const View &view) : view_(view) {
  for (const std::string &name : names)
    if (width(name) <= widest_name) names_ = std::max(names_, width(name));
}

std::string BriefColumns::lines(const std::string &name, const Brief &brief) const {
  const size_t start =
      std::max(names_, width(name)) + 2 + std::max(state_columns, width(brief.state)) + 2;
  const bool fits = start + width(brief.title) <= view_.columns;
  std::string out =
      name + padded(name, names_) + "  " + toned(brief.state, brief.tone, view_.colour);
  if (fits && !brief.title.empty()) out += padded(brief.state, state_columns) + "  " + brief.title;
  out += '\n';

  std::string second = joined(brief.details);
  if (!fits) second.insert(0, brief.title + (second.empty() ? "" : "; "));
  if (!brief.names.empty() && !second.empty()) second += ": ";
  const size_t place = view_.columns - indent;
  second += some_of(brief.names, place - std::min(place, width(second)), view_);
  if (second.empty()) return out;
  for (const std::string &piece : wrapped(second, place))
    out += std::string(indent, ' ') + toned(piece, Tone::quiet, view_.colour) + '\n';
  return out;
}

}  // namespace tool
