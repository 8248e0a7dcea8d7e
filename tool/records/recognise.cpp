#include "records/recognise.h"

#include <algorithm>

#include "text/characters.h"

namespace tool {

namespace {

bool has_label(const Type &type, std::string_view label) {
  return std::ranges::find(type.labels, label) != type.labels.end();
}

std::vector<const Type *> with_label(std::string_view label) {
  std::vector<const Type *> found;
  for (const Type &type : types())
    if (has_label(type, label)) found.push_back(&type);
  return found;
}

/// Returns the types whose structure octets have or else follow furthest. A type counts only if its
/// structure is followed past the outer header.
std::vector<const Type *> with_structure(Octets octets) {
  constexpr size_t whole = SIZE_MAX;
  const size_t header = read_header(octets).size;
  size_t furthest = 0;
  std::vector<const Type *> best;
  for (const Type &type : types()) {
    if (!type.stands_alone) continue;
    if (type.resembles != nullptr && !type.resembles(octets)) continue;
    const Syntax::Reading reading = type.syntax.read(octets);
    const bool takes_all = !reading.fault && reading.reached == octets.size();
    if (reading.reached <= header) continue;
    const size_t reached = takes_all ? whole : reading.reached;
    if (reached < furthest) continue;
    if (reached > furthest) best.clear();
    furthest = reached;
    best.push_back(&type);
  }
  return best;
}

Fault unrecognised(const Element &element) {
  if (element.label.empty())
    return {std::nullopt,
            "it has the structure of no type that is recognised without a PEM label: \"orvelasn1 "
            "types\" lists them, and --type NAME takes it for one of them"};
  return {std::nullopt,
          "a PEM block of " + printable(element.label) +
              ", a label that no type has: \"orvelasn1 types\" lists them, and --type "
              "NAME takes it for one of them"};
}

/// A record, and where its decoder stopped.
struct Attempt {
  const Type *type;
  Record record;
  const uint8_t *next;
};

Fault ambiguous(const std::vector<Attempt> &made) {
  std::vector<std::string_view> names;
  names.reserve(made.size());
  for (const Attempt &attempt : made) names.push_back(attempt.type->name);
  return {std::nullopt, "it may be " + joined(names, " or ") + ": say which with --type"};
}

/// Returns the explanation of a refusal that goes furthest into the octets. If several types come
/// as far, returns all of theirs.
Fault explain(Octets octets, const std::vector<const Type *> &refused_by) {
  std::optional<Fault> best;
  std::string all;
  bool several = false;
  for (const Type *const type : refused_by) {
    const auto fault = type->syntax.fault(octets);
    const auto reached = [](const Fault &one) { return one.offset.value_or(0); };
    if (!fault || (best && reached(*fault) < reached(*best))) continue;
    several = best && reached(*fault) == reached(*best);
    if (!several) {
      all.clear();
      best = fault;
    }
    all += (several ? "; as " : "as ") + type->name + ": " + fault->text;
  }
  if (!best) return {std::nullopt, "the decoder refuses it"};
  if (several) return {best->offset, all};
  return *best;
}

std::vector<Attempt> attempts(Octets octets, const std::vector<const Type *> &tried) {
  std::vector<Attempt> made;
  for (const Type *const type : tried) {
    void *record = nullptr;
    const uint8_t *const next =
        type->syntax.decode(octets.data(), octets.data() + octets.size(), &record, 0);
    if (next != nullptr) made.push_back({type, Record(type->syntax, record), next});
  }
  return made;
}

}  // namespace

std::vector<const Type *> candidates(const Element &element, const Type *wanted) {
  if (wanted != nullptr) return {wanted};
  if (!element.label.empty()) return with_label(element.label);
  return with_structure(element.octets);
}

Decoding decode(const Element &element, const Type *wanted) {
  if (element.fault && element.octets.empty()) return {std::nullopt, element.fault};
  const auto tried = candidates(element, wanted);
  if (tried.empty() && (!element.fault || !element.label.empty()))
    return {std::nullopt, unrecognised(element)};
  if (element.fault) return {std::nullopt, element.fault};
  const uint8_t *const end = element.octets.data() + element.octets.size();
  auto made = attempts(element.octets, tried);
  if (made.empty()) return {std::nullopt, explain(element.octets, tried)};
  const auto takes_all = [end](const Attempt &attempt) { return attempt.next == end; };
  if (std::ranges::any_of(made, takes_all))
    std::erase_if(made, [&](const Attempt &attempt) { return !takes_all(attempt); });
  if (made.size() > 1) return {std::nullopt, ambiguous(made)};
  const uint8_t *const next = made.front().next;
  Decoding decoding{std::move(made.front().record), std::nullopt, made.front().type};
  if (next != end)
    decoding.fault = Fault{static_cast<size_t>(next - element.octets.data()),
                           counted(static_cast<size_t>(end - next), "octet") +
                               " left over after the " + decoding.type->name};
  return decoding;
}

}  // namespace tool
