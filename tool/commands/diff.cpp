#include <algorithm>
#include <utility>

#include "commands/batch.h"
#include "commands/differences.h"
#include "records/crl_in_place.h"
#include "system/isolate.h"
#include "system/output.h"
#include "system/shared_memory.h"
#include "text/characters.h"

namespace tool {

namespace {

/// What the children say to their parent.
struct Outcome {
  bool differs = false;
  size_t failures = 0;  ///< pairs in a row that cannot be read
};

std::string octets_text(const Element &element) { return counted(element.octets.size(), "octet"); }

/// What an element holds.
struct Reading {
  const Type *type = nullptr;
  std::optional<Node> node;    ///< nothing where it cannot be read
  std::optional<Fault> fault;  ///< why that is so, or what follows what is read
};

/// Reads an element. The entries of a CRL stay where they are, so that those of two CRLs are not in
/// memory twice.
Reading read(const Element &element, const Type *wanted, const View &view) {
  const auto tried = candidates(element, wanted);
  if (!element.fault && tried.size() == 1 && tried.front()->name == "crl")
    if (auto node = crl_in_place(element.octets, view))
      return {tried.front(), std::move(node), std::nullopt};
  Decoding decoding = decode(element, wanted);
  if (!decoding.record) return {nullptr, std::nullopt, std::move(decoding.fault)};
  const auto record = std::make_shared<const Record>(std::move(*decoding.record));
  Node node = decoding.type->describe(record->get(), view);
  node.keep(record);
  return {decoding.type, std::move(node), std::move(decoding.fault)};
}

/// Compares two elements. Returns whether both can be read.
bool compare(const DiffRequest &request, const Input &a, const Element &in_a, const Input &b,
             const Element &in_b, Outcome &outcome) {
  if (!in_a.fault && !in_b.fault && std::ranges::equal(in_a.octets, in_b.octets)) return true;
  View view = request.view;
  view.full = true;
  const Reading one = read(in_a, request.type, view);
  const Reading other = read(in_b, request.type, view);
  if (one.fault) report(a, in_a, *one.fault);
  if (other.fault) report(b, in_b, *other.fault);
  if (!one.node || !other.node) return false;
  DifferenceWriter write(request, in_a.number,
                         "--- " + a.where(in_a) + "\n+++ " + b.where(in_b) + "\n");
  if (one.type != other.type) {
    emit(write.whole("type", one.type->name, other.type->name));
  } else {
    find_differences(*one.node, *other.node,
                     [&write](const Difference &difference) { emit(write(difference)); });
    if (!write.any()) {
      const auto [at, place] = std::ranges::mismatch(in_a.octets, in_b.octets);
      emit(write.unseen(in_a.octets.size(), in_b.octets.size(),
                        static_cast<size_t>(at - in_a.octets.begin())));
    }
  }
  outcome.differs = true;
  return !one.fault && !other.fault;
}

/// The elements of two inputs, pair by pair.
class Pairs {
 public:
  Pairs(const DiffRequest &request, Input a, Input b)
      : request_(request), a_(std::move(a)), b_(std::move(b)), shared_(sizeof(Outcome)) {}

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
      emit(DifferenceWriter(request_, 0, "")
               .whole("only in one file", alone_in_a_ ? more : "", alone_in_a_ ? "" : more));
    }
    if (!all_well) return Answer::unknown;
    return outcome.differs || alone_ != 0 ? Answer::no : Answer::yes;
  }

 private:
  bool compare_pair(const Element &one, const Element &other, Outcome &outcome) {
    if (outcome.failures >= most_strangers) return false;
    const bool good = compare(request_, a_, one, b_, other, outcome);
    report_remark(a_, one);
    report_remark(b_, other);
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
      report_remark(input, element);
      if (element.fault) {
        report(input, element, *element.fault);
        all_well = false;
        continue;
      }
      alone_in_a_ = in_a;
      if (++alone_ > most_strangers) continue;
      const std::string where = input.where(element) + ", " + octets_text(element);
      emit(DifferenceWriter(request_, element.number, "")
               .whole(in_a ? "only in the first file" : "only in the second file",
                      in_a ? where : "", in_a ? "" : where));
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
  const std::string *file = &request.a;
  try {
    Input a(request.a);
    file = &request.b;
    return Pairs(request, std::move(a), Input(request.b)).run();
  } catch (const std::system_error &error) {
    report_file(*file, error);
    return Answer::unknown;
  }
}

}  // namespace tool
