// What the types of the values in an outline find wrong.
#ifndef ORVELASN1_TOOL_MODEL_OUTLINE_FAULTS_H
#define ORVELASN1_TOOL_MODEL_OUTLINE_FAULTS_H

#include <orvelpki.h>

#include <algorithm>

#include "text/octets.h"

namespace tool {

struct TypeFault {
  size_t offset;
  std::string path;
  std::string sentence;

  std::string text() const { return path.empty() ? sentence : path + ": " + sentence; }
};

/// Whether one path leads to the other.
bool on_one_way(std::string_view a, std::string_view b);

/// Faults that wait until an outline comes to their places. There are few: one for each value
/// around a place that begins in another.
class TypeFaults {
 public:
  /// Holds the octets of an input from `at` to `end` against a type. Where `whole`, one value must
  /// take all of them. `path` is that of the value.
  void expect(const pki_Type *type, Octets input, size_t at, size_t end, const std::string &path,
              bool whole);

  bool empty() const { return waiting_.empty(); }

  /// Takes the first fault that the test is true of.
  template <class Test>
  std::optional<TypeFault> take(Test test) {
    const auto found = std::ranges::find_if(waiting_, test);
    if (found == waiting_.end()) return std::nullopt;
    std::optional<TypeFault> taken(std::move(*found));
    waiting_.erase(found);
    return taken;
  }

  /// Leaves out the faults that the test is true of.
  template <class Test>
  void forget(Test test) {
    std::erase_if(waiting_, test);
  }

 private:
  void add(size_t offset, const std::string &around, std::string_view inside, std::string sentence);

  std::vector<TypeFault> waiting_;
};

}  // namespace tool

#endif
