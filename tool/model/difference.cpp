#include "model/difference.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

#include "text/object_identifiers.h"

namespace tool {

namespace {

using Kind = Difference::Kind;

/// Whether a field is for JSON only: something that is kept, or follows from other fields.
bool is_hidden(const Node &field) { return field.shown != nullptr && field.shown->empty(); }

std::string json_text(const Node &node) { return json_of(node).text(); }

const Node::Fields *fields_of(const Node &node) { return std::get_if<Node::Fields>(&node.value); }

const ObjId *const *identifier_of(const Node &node) {
  return std::get_if<const ObjId *>(&node.value);
}

bool is_record(const Node &node) { return fields_of(node) != nullptr; }
bool is_list(const Node &node) { return std::holds_alternative<Node::Items>(node.value); }

/// Whether two values are written alike for people. Only texts may be, and differ all the same.
bool reads_the_same(const Node &a, const Node &b) {
  const auto *const one = std::get_if<Node::Text>(&a.value);
  const auto *const other = std::get_if<Node::Text>(&b.value);
  if (one == nullptr || other == nullptr) return json_text(a) == json_text(b);
  return one->lines == other->lines;
}

/// Whether a node is a record of values that a page shows as a text, such as an algorithm. What a
/// page shows of an extension does not tell whether it is critical.
bool is_simple(const Node &node) {
  const auto *const fields = fields_of(node);
  return fields != nullptr && node.shown != nullptr &&
         std::holds_alternative<Node::Text>(node.shown->value) &&
         std::ranges::none_of(*fields, [](const Node &field) {
           return is_record(field) || is_list(field) || field.name == "decoded" ||
                  field.name == "extnValue";
         });
}

/// What identifies an element of a list, and how a path names it.
struct Identity {
  std::string key;
  std::string name;
};

/// Returns the identity of a record: the object identifier that it begins with, or its name, such
/// as a serial number; and of a value the value. Returns nothing for other records and for lists.
std::optional<Identity> identity_of(const Node &node) {
  if (const auto *const fields = fields_of(node)) {
    if (!fields->empty())
      if (const ObjId *const *const oid = identifier_of(fields->front()))
        return Identity{dotted(*oid), label(*oid, View())};
    if (node.name.empty()) return std::nullopt;
    return Identity{node.name, node.name};
  }
  if (is_list(node)) return std::nullopt;
  return Identity{json_text(node), ""};
}

class Comparison {
 public:
  explicit Comparison(const Differ &differ) : differ_(differ) {}

  void compare(const Node &a, const Node &b) {
    if (is_simple(a) && is_simple(b) && !reads_the_same(*a.shown, *b.shown)) {
      report(Kind::value, &a, &b);
    } else if (is_record(a) && is_record(b)) {
      compare_fields(*fields_of(a), *fields_of(b));
    } else if (is_list(a) && is_list(b)) {
      compare_items(std::get<Node::Items>(a.value), std::get<Node::Items>(b.value));
    } else if (is_record(a) || is_record(b) || is_list(a) || is_list(b)) {
      report(Kind::value, &a, &b);
    } else if (!reads_the_same(a, b)) {
      report(Kind::value, &a, &b);
    } else if (json_text(a) != json_text(b)) {
      report(Kind::encoding, &a, &b);
    }
  }

 private:
  void report(Kind kind, const Node *a, const Node *b) {
    ++count_;
    differ_({kind, path_, a, b});
  }

  /// Runs `job` with a part appended to the path. Returns whether it reported something.
  template <class Job>
  bool at(const std::string &part, Job job) {
    const size_t before = count_;
    const size_t size = path_.size();
    path_ += part;
    job();
    path_.resize(size);
    return count_ != before;
  }

  std::string part_for(const std::string &name) const { return (path_.empty() ? "" : ".") + name; }

  // ---- Records ----------------------------------------------------------------------------------

  void compare_fields(const Node::Fields &a, const Node::Fields &b) {
    std::unordered_map<std::string_view, const Node *> others;
    for (const Node &field : b)
      if (!field.empty()) others.emplace(field.name, &field);
    const auto other = [&others](const std::string &name) -> const Node * {
      const auto found = others.find(name);
      return found == others.end() ? nullptr : found->second;
    };
    const bool inside_differs = compare_decoded(a, other("decoded"));
    for (const Node &field : a) {
      if (field.empty() || is_hidden(field) || field.name == "decoded") continue;
      const Node *const match = other(field.name);
      others.erase(field.name);
      // The octets of what is decoded repeat it.
      if (match != nullptr && inside_differs && !identifier_of(field) && !is_text(field)) continue;
      at(part_for(field.name), [&] {
        if (match == nullptr) return report(Kind::only_a, &field, nullptr);
        const size_t before = count_;
        compare(field, *match);
        if (count_ == before && kept_differs(field.name, a, other))
          report(Kind::encoding, &field, match);
      });
    }
    for (const Node &field : b)
      if (!is_hidden(field) && field.name != "decoded" && others.contains(field.name))
        at(part_for(field.name), [&] { report(Kind::only_b, nullptr, &field); });
  }

  static bool is_text(const Node &node) { return std::holds_alternative<Node::Text>(node.value); }

  /// Compares what the octets of a record are, under the path of the record. Returns whether it
  /// differs.
  bool compare_decoded(const Node::Fields &a, const Node *b) {
    const auto found = std::ranges::find_if(
        a, [](const Node &field) { return field.name == "decoded" && !field.empty(); });
    const Node *const one = found == a.end() ? nullptr : &*found;
    if (one == nullptr && b == nullptr) return false;
    return at("", [&] {
      if (one != nullptr && b != nullptr) return compare(*one, *b);
      report(b == nullptr ? Kind::only_a : Kind::only_b, one, b);
    });
  }

  /// Whether the forms differ that are kept of a field, which have its name and a word after it.
  template <class Other>
  static bool kept_differs(const std::string &name, const Node::Fields &fields, Other other) {
    for (const Node &field : fields) {
      if (!is_hidden(field) || field.name == name || !field.name.starts_with(name)) continue;
      const Node *const match = other(field.name);
      if (match == nullptr || json_text(field) != json_text(*match)) return true;
    }
    return false;
  }

  // ---- Lists ------------------------------------------------------------------------------------

  void compare_items(const Node::Items &a, const Node::Items &b) {
    // What both begin and end with needs no more memory than two elements.
    size_t start = 0;
    const size_t fewer = std::min(a.count, b.count);
    while (start < fewer &&
           (same_octets(a, start, b, start) || compare_if_same(a.at(start), b.at(start))))
      ++start;
    size_t end = 0;
    while (end < fewer - start && same_element(a, a.count - 1 - end, b, b.count - 1 - end)) ++end;
    const size_t a_end = a.count - end;
    const size_t b_end = b.count - end;
    const bool identified =
        (start < a_end && identity_of(a.at(start))) || (start < b_end && identity_of(b.at(start)));
    if (identified)
      compare_identified(a, b, start, a_end, b_end);
    else
      compare_by_place(a, b, start, a_end, b_end);
  }

  /// Whether two elements have the same octets, which are at hand.
  static bool same_octets(const Node::Items &a, size_t i, const Node::Items &b, size_t j) {
    return a.octets && b.octets && std::ranges::equal(a.octets(i), b.octets(j));
  }

  static bool same_element(const Node::Items &a, size_t i, const Node::Items &b, size_t j) {
    return same_octets(a, i, b, j) || json_text(a.at(i)) == json_text(b.at(j));
  }

  /// Compares two elements that stand at the same place of their lists. Returns false, and does
  /// nothing, where they are not the same one.
  bool compare_if_same(const Node &a, const Node &b) {
    const auto one = identity_of(a);
    const auto other = identity_of(b);
    if (one.has_value() != other.has_value()) return false;
    if (!one) return json_text(a) == json_text(b);
    if (one->key != other->key) return false;
    at("[" + one->name + "]", [&] { compare(a, b); });
    return true;
  }

  void compare_by_place(const Node::Items &a, const Node::Items &b, size_t start, size_t a_end,
                        size_t b_end) {
    for (size_t i = start; i < std::max(a_end, b_end); ++i)
      at("[" + std::to_string(i) + "]", [&] {
        if (i >= a_end) return report_one(Kind::only_b, b.at(i));
        if (i >= b_end) return report_one(Kind::only_a, a.at(i));
        compare(a.at(i), b.at(i));
      });
  }

  void compare_identified(const Node::Items &a, const Node::Items &b, size_t start, size_t a_end,
                          size_t b_end) {
    const auto identity = [](const Node &node) {
      return identity_of(node).value_or(Identity{json_text(node), ""});
    };
    const auto part = [](const Identity &one) {
      return one.name.empty() ? "" : "[" + one.name + "]";
    };
    // The places in b of the elements of a.
    std::vector<size_t> matches(a_end - start, unmatched);
    std::vector<bool> met(b_end - start);
    if (a.octets && b.octets) match_octets(a, b, start, matches, met);
    // The other elements of b under each key, the last one first.
    std::unordered_map<std::string, std::vector<size_t>> places;
    for (size_t i = b_end; i-- > start;)
      if (!met[i - start]) places[identity(b.at(i)).key].push_back(i);
    size_t last = 0;
    bool same_order = true;
    for (size_t i = start; i < a_end; ++i) {
      size_t place = matches[i - start];
      if (place == unmatched) {
        const Node one = a.at(i);
        const Identity key = identity(one);
        const auto found = places.find(key.key);
        if (found == places.end() || found->second.empty()) {
          at(part(key), [&] { report_one(Kind::only_a, one); });
          continue;
        }
        place = found->second.back();
        found->second.pop_back();
        met[place - start] = true;
        at(part(key), [&] { compare(one, b.at(place)); });
      }
      same_order = same_order && place >= last;
      last = place;
    }
    for (size_t i = start; i < b_end; ++i) {
      if (met[i - start]) continue;
      const Node one = b.at(i);
      at(part(identity(one)), [&] { report_one(Kind::only_b, one); });
    }
    if (!same_order) report(Kind::order, nullptr, nullptr);
  }

  /// Finds the elements of a, from `start` on, whose octets an element of b has, too: each to one,
  /// in their order.
  static void match_octets(const Node::Items &a, const Node::Items &b, size_t start,
                           std::vector<size_t> &matches, std::vector<bool> &met) {
    const auto less = [](Octets one, Octets other) {
      return std::ranges::lexicographical_compare(one, other);
    };
    const auto octets = [&b](size_t place) { return b.octets(place); };
    std::vector<size_t> sorted(met.size());
    std::iota(sorted.begin(), sorted.end(), start);
    std::ranges::stable_sort(sorted, less, octets);
    // Of those with the same octets, how many are taken: counted at the first of them.
    std::vector<size_t> taken(sorted.size());
    for (size_t i = 0; i < matches.size(); ++i) {
      const Octets wanted = a.octets(start + i);
      const auto first = std::ranges::lower_bound(sorted, wanted, less, octets);
      const auto group = static_cast<size_t>(first - sorted.begin());
      if (group == sorted.size()) continue;
      const size_t next = group + taken[group];
      if (next == sorted.size() || !std::ranges::equal(b.octets(sorted[next]), wanted)) continue;
      ++taken[group];
      matches[i] = sorted[next];
      met[sorted[next] - start] = true;
    }
  }

  void report_one(Kind kind, const Node &node) {
    report(kind, kind == Kind::only_a ? &node : nullptr, kind == Kind::only_b ? &node : nullptr);
  }

  static constexpr size_t unmatched = SIZE_MAX;

  const Differ &differ_;
  std::string path_;
  size_t count_ = 0;
};

}  // namespace

void find_differences(const Node &a, const Node &b, const Differ &differ) {
  Comparison(differ).compare(a, b);
}

}  // namespace tool
