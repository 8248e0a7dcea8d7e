#include <algorithm>
#include <system_error>
#include <utility>

#include "commands/batch.h"
#include "commands/commands.h"
#include "model/difference.h"
#include "system/isolate.h"
#include "system/output.h"
#include "text/characters.h"

namespace tool {

namespace {

using Kind = Difference::Kind;
using Lines = std::vector<std::string>;

constexpr size_t most_lines = 64;

/// How many pairs in a row may be refused, and how many elements without a counterpart are named.
/// Octets that are no structure may still be elements, half a million of them in a megabyte.
constexpr size_t most_strangers = 16;

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

/// Writes the differences between two elements.
class Writer {
 public:
  Writer(const DiffRequest &request, size_t element, std::string heading)
      : request_(request), element_(element), heading_(std::move(heading)) {}

  void write(const Difference &difference) {
    any_ = true;
    if (request_.json)
      write_json(difference.kind, difference.path, difference.a, difference.b);
    else
      write_text(difference);
  }

  /// Writes a difference of the elements as a whole.
  void write_whole(const std::string &what, const std::string &a, const std::string &b) {
    any_ = true;
    if (request_.json) {
      Json object = start(what, "");
      if (!a.empty()) object.put("a", a);
      if (!b.empty()) object.put("b", b);
      return emit(object.text() + "\n");
    }
    std::string out = head("(" + what + ")");
    if (!a.empty()) out += line("-", a, Tone::alarm);
    if (!b.empty()) out += line("+", b, Tone::plain);
    emit(out);
  }

  /// Writes that the octets differ in nothing that is described.
  void write_unseen(size_t a, size_t b, size_t offset) {
    any_ = true;
    if (request_.json) return emit(start("encoding", "").put("offset", offset).text() + "\n");
    emit(head("(encoding)") + "  " + std::to_string(a) + " and " + counted(b, "octet") +
         ", different from offset " + std::to_string(offset) + " on, in nothing that is shown\n");
  }

  bool any() const { return any_; }

 private:
  Json start(const std::string &what, const std::string &path) const {
    Json object = Json::object();
    return object.put("element", element_).put("path", path).put("difference", what);
  }

  void write_json(Kind kind, const std::string &path, const Node *a, const Node *b) const {
    static constexpr const char *words[] = {"value", "encoding", "order", "onlyA", "onlyB"};
    Json object = start(words[static_cast<size_t>(kind)], path);
    if (a != nullptr) object.put("a", json_of(*a));
    if (b != nullptr) object.put("b", json_of(*b));
    emit(object.text() + "\n");
  }

  /// Returns the heading of the elements where nothing was written, and a path that was not.
  std::string head(const std::string &path) {
    std::string out = std::exchange(heading_, "");
    if (path != last_path_) out += toned(path, Tone::heading, request_.view.colour) + "\n";
    last_path_ = path;
    return out;
  }

  std::string line(const char *sign, const std::string &text, Tone tone) const {
    return toned(std::string(sign) + " " + text, tone, request_.view.colour) + "\n";
  }

  std::string lines(const char *sign, const Lines &all, Tone tone) const {
    // One line more takes no more room than the line that says how many there are.
    const size_t shown = all.size() <= most_lines + 1 ? all.size() : most_lines;
    std::string out;
    for (size_t i = 0; i < shown; ++i) out += line(sign, all[i], tone);
    if (shown < all.size())
      out += line(sign, "... and " + counted(all.size() - shown, "more line"), tone);
    return out;
  }

  void write_text(const Difference &difference) {
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
    emit(out);
  }

  std::string pair(const Node &a, const Node &b) const {
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

  const DiffRequest &request_;
  size_t element_;
  std::string heading_;
  std::string last_path_;
  bool any_ = false;
};

/// What the children say to their parent.
struct Outcome {
  bool differs = false;
  size_t failures = 0;  ///< pairs in a row that cannot be read
};

std::string octets_text(const Element &element) { return counted(element.octets.size(), "octet"); }

/// Compares two elements. Returns whether both can be read.
bool compare(const DiffRequest &request, const Input &a, const Element &in_a, const Input &b,
             const Element &in_b, Outcome &outcome) {
  if (!in_a.fault && !in_b.fault && std::ranges::equal(in_a.octets, in_b.octets)) return true;
  const Decoding one = decode(in_a, request.type);
  const Decoding other = decode(in_b, request.type);
  if (one.fault) report(a, in_a, *one.fault);
  if (other.fault) report(b, in_b, *other.fault);
  if (!one.record || !other.record) return false;
  Writer writer(request, in_a.number, "--- " + a.where(in_a) + "\n+++ " + b.where(in_b) + "\n");
  if (one.type != other.type) {
    writer.write_whole("type", one.type->name, other.type->name);
  } else {
    View view = request.view;
    view.full = true;
    find_differences(one.type->describe(one.record->get(), view),
                     other.type->describe(other.record->get(), view),
                     [&writer](const Difference &difference) { writer.write(difference); });
    if (!writer.any()) {
      const auto [at, place] = std::ranges::mismatch(in_a.octets, in_b.octets);
      writer.write_unseen(in_a.octets.size(), in_b.octets.size(),
                          static_cast<size_t>(at - in_a.octets.begin()));
    }
  }
  outcome.differs = true;
  return !one.fault && !other.fault;
}

/// The elements of two inputs, pair by pair.
class Pairs {
 public:
  explicit Pairs(const DiffRequest &request)
      : request_(request), a_(request.a), b_(request.b), shared_(sizeof(Outcome)) {}

  Answer run() {
    constexpr size_t elements_a_child = 1024;
    Outcome &outcome = *new (shared_.start()) Outcome;
    bool all_well = true;
    while (outcome.failures < most_strangers) {
      const auto one = a_.take(elements_a_child);
      const auto other = b_.take(elements_a_child);
      const size_t both = std::min(one.size(), other.size());
      if (one.empty() && other.empty()) break;
      all_well &= run_isolated(
          both, [&](size_t i) { return compare_pair(one[i], other[i], outcome); },
          [&](size_t i, const std::string &words) {
            complain(a_.where(one[i]) + " or " + b_.where(other[i]) +
                     ": the library ended its process: " +
                     printable(std::string_view(words).substr(0, words.find('\n'))));
          });
      all_well &= say_alone(a_, one, both, true);
      all_well &= say_alone(b_, other, both, false);
    }
    if (alone_ > most_strangers) {
      const std::string more = "and " + counted(alone_ - most_strangers, "more element");
      Writer(request_, 0, "")
          .write_whole("only in one file", alone_in_a_ ? more : "", alone_in_a_ ? "" : more);
    }
    if (!all_well) return Answer::unknown;
    return outcome.differs || alone_ != 0 ? Answer::no : Answer::yes;
  }

 private:
  bool compare_pair(const Element &one, const Element &other, Outcome &outcome) {
    if (outcome.failures >= most_strangers) return false;
    const bool good = compare(request_, a_, one, b_, other, outcome);
    outcome.failures = good ? 0 : outcome.failures + 1;
    if (outcome.failures == most_strangers)
      complain(a_.where(one) + ": the rest is skipped: " + std::to_string(most_strangers) +
               " pairs in a row cannot be read");
    return good;
  }

  /// Says which elements have no counterpart. Returns whether they are elements.
  bool say_alone(const Input &input, const std::vector<Element> &elements, size_t from, bool in_a) {
    bool all_well = true;
    for (const Element &element : std::span(elements).subspan(from)) {
      if (element.fault) {
        report(input, element, *element.fault);
        all_well = false;
        continue;
      }
      alone_in_a_ = in_a;
      if (++alone_ > most_strangers) continue;
      const std::string where = input.where(element) + ", " + octets_text(element);
      Writer(request_, element.number, "")
          .write_whole(in_a ? "only in the first file" : "only in the second file",
                       in_a ? where : "", in_a ? "" : where);
    }
    return all_well;
  }

  const DiffRequest &request_;
  Input a_;
  Input b_;
  SharedMemory shared_;
  size_t alone_ = 0;
  bool alone_in_a_ = false;
};

}  // namespace

Answer diff(const DiffRequest &request) {
  try {
    return Pairs(request).run();
  } catch (const std::system_error &error) {
    complain(printable(std::string_view(error.what())));
    return Answer::unknown;
  }
}

}  // namespace tool
