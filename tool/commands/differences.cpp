#include "commands/differences.h"

#include <algorithm>
#include <utility>

#include "text/characters.h"

namespace tool {

namespace {

using Kind = Difference::Kind;
using Lines = std::vector<std::string>;

constexpr size_t most_lines = 64;

/// Returns the octets of a value that is shown as a dump of several lines.
std::optional<Bytes> dumped(const Lines &lines) {
  std::string all;
  for (const std::string &line : lines) all += line + " ";
  all = all.substr(0, all.find(','));  // the number of bits
  return lines.size() < 2 ? std::nullopt : from_hex(all);
}

/// Returns the octets of a value that are too many to be read one by one.
std::optional<Bytes> long_octets(const Node &node) {
  constexpr size_t at_a_glance = 20;
  if (const auto *const octets = std::get_if<Octets>(&node.value))
    return octets->size() > at_a_glance ? std::optional(Bytes(octets->begin(), octets->end()))
                                        : std::nullopt;
  const auto *const text = std::get_if<Node::Text>(&node.value);
  return text == nullptr ? std::nullopt : dumped(text->lines);
}

/// Returns the lines of a node as a page has them.
Lines page_lines(const Node &node, const View &view) {
  if (const auto *const text = std::get_if<Node::Text>(&node.value)) return text->lines;
  if (auto lines = lines_of(node, view)) return *lines;
  View plain = view;
  plain.colour = false;
  const std::string page = page_of(node, "", "", plain);
  Lines lines;
  for (size_t at = page.find('\n') + 1; at < page.size();) {
    const size_t stop = page.find('\n', at);
    lines.push_back(page.substr(at, stop - at));
    at = stop + 1;
  }
  for (std::string &line : lines) line.erase(0, std::min<size_t>(2, line.find_first_not_of(' ')));
  return lines;
}

}  // namespace

std::string DifferenceWriter::operator()(const Difference &difference) {
  any_ = true;
  return request_.json ? json(difference) : text(difference);
}

std::string DifferenceWriter::whole(const std::string &what, const std::string &a,
                                    const std::string &b) {
  any_ = true;
  if (request_.json) {
    Json object = start(what, "");
    if (!a.empty()) object.put("a", a);
    if (!b.empty()) object.put("b", b);
    return object.text() + "\n";
  }
  std::string out = head("(" + what + ")");
  if (!a.empty()) out += line("-", a, Tone::alarm);
  if (!b.empty()) out += line("+", b, Tone::plain);
  return out;
}

std::string DifferenceWriter::unseen(size_t a, size_t b, size_t offset) {
  any_ = true;
  if (request_.json) return start("encoding", "").put("offset", offset).text() + "\n";
  return head("(encoding)") + "  " + std::to_string(a) + " and " + counted(b, "octet") +
         ", different from offset " + std::to_string(offset) + " on, in nothing that is shown\n";
}

Json DifferenceWriter::start(const std::string &what, const std::string &path) const {
  Json object = Json::object();
  return object.put("element", element_).put("path", path).put("difference", what);
}

std::string DifferenceWriter::json(const Difference &difference) const {
  static constexpr const char *words[] = {"value", "encoding", "order", "onlyA", "onlyB"};
  Json object = start(words[static_cast<size_t>(difference.kind)], difference.path);
  if (difference.a != nullptr) object.put("a", json_of(*difference.a));
  if (difference.b != nullptr) object.put("b", json_of(*difference.b));
  return object.text() + "\n";
}

/// Returns the heading of the elements where nothing was written, and a path that was not.
std::string DifferenceWriter::head(const std::string &path) {
  std::string out = std::exchange(heading_, "");
  if (path != last_path_) out += toned(path, Tone::heading, request_.view.colour) + "\n";
  last_path_ = path;
  return out;
}

std::string DifferenceWriter::line(const char *sign, const std::string &text, Tone tone) const {
  return toned(std::string(sign) + " " + text, tone, request_.view.colour) + "\n";
}

std::string DifferenceWriter::lines(const char *sign, const Lines &all, Tone tone) const {
  // One line more takes no more room than the line that says how many there are.
  const size_t shown = all.size() <= most_lines + 1 ? all.size() : most_lines;
  std::string out;
  for (size_t i = 0; i < shown; ++i) out += line(sign, all[i], tone);
  if (shown < all.size())
    out += line(sign, "... and " + counted(all.size() - shown, "more line"), tone);
  return out;
}

std::string DifferenceWriter::text(const Difference &difference) {
  const Node *const a = difference.a;
  const Node *const b = difference.b;
  std::string out = head(difference.path.empty() ? "(the value)" : difference.path);
  switch (difference.kind) {
    case Kind::order:
      out += "  the elements stand in another order\n";
      break;
    case Kind::encoding:
      out += lines(" ", page_lines(*a, request_.view), Tone::plain) +
             "  reads the same, and is encoded otherwise\n";
      break;
    case Kind::value:
      out += pair(*a, *b);
      break;
    case Kind::only_a:
    case Kind::only_b:
      if (a != nullptr) out += lines("-", page_lines(*a, request_.view), Tone::alarm);
      if (b != nullptr) out += lines("+", page_lines(*b, request_.view), Tone::plain);
      break;
  }
  return out;
}

std::string DifferenceWriter::pair(const Node &a, const Node &b) const {
  const auto long_a = long_octets(a);
  const auto long_b = long_octets(b);
  if (long_a && long_b) {
    const auto [at, other] = std::ranges::mismatch(*long_a, *long_b);
    return "  " + std::to_string(long_a->size()) + " and " + counted(long_b->size(), "octet") +
           ", different from octet " + std::to_string(at - long_a->begin() + 1) + " on\n";
  }
  Lines before = page_lines(a, request_.view);
  Lines after = page_lines(b, request_.view);
  const auto [first, other] = std::ranges::mismatch(before, after);
  const auto same = first - before.begin();
  before.erase(before.begin(), before.begin() + same);
  after.erase(after.begin(), after.begin() + same);
  while (!before.empty() && !after.empty() && before.back() == after.back()) {
    before.pop_back();
    after.pop_back();
  }
  return lines("-", before, Tone::alarm) + lines("+", after, Tone::plain);
}

}  // namespace tool
