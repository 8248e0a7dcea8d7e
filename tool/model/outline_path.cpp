#include "model/outline_path.h"

#include <algorithm>

#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

using Kind = OutlineLine::Kind;

constexpr size_t shown_at_most = 24;

std::string numbered(size_t number) { return "[" + std::to_string(number) + "]"; }

/// Returns the content of the OBJECT IDENTIFIER that is, or begins, an element; nothing where there
/// is none. An attribute of a name begins with one in a SEQUENCE in a SET.
Octets first_identifier(const OutlineLine &line) {
  constexpr int levels = 3;
  ber::Header header = line.header;
  Octets content = line.content();
  for (int i = 0; i < levels && header.constructed(); ++i) {
    header = ber::read_header(content);
    if (!header.fault.empty()) return {};
    content = content.subspan(header.size);
  }
  if (header.identifier != tag::object_identifier || header.overlong) return {};
  return content.first(header.length);
}

std::string display_name(Octets identifier) {
  const auto record = ber::record_of(identifier);
  return record == nullptr ? "" : tool::display_name(record.get());
}

/// Returns the content octets of an identifier; none of one that has no encoding.
Bytes content_of(const ObjId *oid) {
  const Bytes element = element_of(oid);
  const Octets content = Octets(element).subspan(ber::read_header(element).size);
  return {content.begin(), content.end()};
}

/// Returns the identifiers that words name: by any of the registry's names, or in the dotted form.
std::vector<Bytes> identifiers_of(const std::string &words) {
  std::vector<Bytes> found;
  for (const auto &oid : named(words)) found.push_back(content_of(oid.get()));
  if (const auto dotted = from_dotted(words)) found.push_back(content_of(dotted.get()));
  return found;
}

std::string text_of(std::span<const OutlinePath::Step> steps) {
  std::string out;
  for (const auto &step : steps) {
    if (!out.empty() && step.text[0] != '[') out += '.';
    out += step.text;
  }
  return printable(std::string_view(out));
}

}  // namespace

std::optional<OutlinePath> OutlinePath::parse(std::string_view text) {
  OutlinePath path;
  while (!text.empty()) {
    const bool in_brackets = text[0] == '[';
    const size_t end = in_brackets ? text.find(']') : text.find_first_of(".[");
    if (in_brackets && end == std::string_view::npos) return std::nullopt;
    const size_t size = std::min(end, text.size()) + (in_brackets ? 1 : 0);
    if (size == 0 || text.substr(0, size) == "[]") return std::nullopt;
    Step step{std::string(text.substr(0, size)), {}};
    if (in_brackets) step.identifiers = identifiers_of(step.text.substr(1, size - 2));
    path.steps_.push_back(std::move(step));
    text.remove_prefix(size);
    if (text.empty() || text[0] == '[') continue;
    if (text[0] != '.' || text.size() == 1 || text[1] == '[') return std::nullopt;
    text.remove_prefix(1);
  }
  return path;
}

OutlineSearch::OutlineSearch(OutlinePath path) : path_(std::move(path)) {
  found_ = path_.steps().empty();
}

bool OutlineSearch::operator()(const OutlineLine &line) {
  if (path_.steps().empty()) return true;
  if (past_) return false;
  if (found_) {
    const bool is_fault = line.kind == Kind::fault || line.kind == Kind::rest;
    past_ = line.depth < depth_ || (line.depth == depth_ && !is_fault);
    return !past_;
  }
  if (line.kind != Kind::element) return false;
  while (way_.size() > 1 && way_.back().depth >= line.depth) way_.pop_back();
  Level &around = way_.back();
  if (around.depth + 1 != line.depth) return false;
  const auto taken = take(line, around);
  if (!taken) return false;
  reach(*taken);
  way_.push_back({line.depth, *taken});
  found_ = *taken == path_.steps().size();
  depth_ = line.depth;
  return found_;
}

bool OutlineSearch::is_next(size_t taken, std::string_view step) const {
  return taken < path_.steps().size() && path_.steps()[taken].text == step;
}

bool OutlineSearch::is_next(size_t taken, Octets identifier) const {
  return taken < path_.steps().size() &&
         std::ranges::any_of(path_.steps()[taken].identifiers, [&](const Bytes &wanted) {
           return std::ranges::equal(wanted, identifier);
         });
}

/// Returns the number of steps that lead to an element; nothing where the path leads elsewhere.
std::optional<size_t> OutlineSearch::take(const OutlineLine &line, Level &around) {
  size_t taken = around.taken;
  const Place &place = line.place;
  const size_t number = around.elements++;
  if (!line.same_path) {
    const bool is_element = place.field.empty();
    const Octets identifier = is_element ? first_identifier(line) : Octets();
    const std::string step = is_element ? numbered(number) : std::string(place.field);
    if (wants_notes(taken)) {
      const std::string name = display_name(identifier);
      note(taken, name.empty() ? step : "[" + name + "]");
    }
    if (!is_next(taken, step) && (identifier.empty() || !is_next(taken, identifier)))
      return std::nullopt;
    ++taken;
  }
  // A path may leave out the alternative of a CHOICE.
  if (place.alternative.empty() || taken == path_.steps().size()) return taken;
  note(taken, std::string(place.alternative));
  return is_next(taken, place.alternative) ? taken + 1 : taken;
}

/// Whether more is to be said of what there is after so many steps.
bool OutlineSearch::wants_notes(size_t taken) const {
  return taken >= furthest_ && there_.size() <= shown_at_most;
}

void OutlineSearch::reach(size_t taken) {
  if (taken <= furthest_) return;
  furthest_ = taken;
  there_.clear();
}

/// Notes what there is after so many steps.
void OutlineSearch::note(size_t taken, const std::string &step) {
  if (taken < furthest_) return;
  reach(taken);
  if (there_.size() <= shown_at_most)
    there_.push_back(there_.size() < shown_at_most ? step : "...");
}

std::string OutlineSearch::why_not() const {
  const std::span steps(path_.steps());
  const std::string way = text_of(steps.first(furthest_));
  const std::string what = "there is no " + text_of(steps.subspan(furthest_, 1));
  if (there_.empty()) return what + " in " + way + ", which has nothing inside";
  return what + (way.empty() ? "" : " in " + way) + "; there is " + joined(there_);
}

}  // namespace tool
