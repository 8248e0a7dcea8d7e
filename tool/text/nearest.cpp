#include "text/nearest.h"

#include <algorithm>
#include <utility>

namespace tool {

namespace {

/// Returns the number of edits that make one word the other. Keeps three rows of the table of
/// distances between the beginnings of the words.
size_t distance(std::string_view a, std::string_view b) {
  std::vector<size_t> before_last(b.size() + 1);
  std::vector<size_t> last(b.size() + 1);
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    std::swap(before_last, last);
    std::swap(last, row);
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        row[j] = std::min(row[j], before_last[j - 2] + 1);
    }
  }
  return row[b.size()];
}

}  // namespace

std::string did_you_mean(std::string_view word, const std::vector<std::string> &known) {
  constexpr size_t longest = 64;
  if (word.size() > longest) return {};
  const std::string *nearest = nullptr;
  size_t least = std::max<size_t>(1, word.size() / 3) + 1;
  for (const std::string &one : known) {
    const size_t edits = distance(word, one);
    if (edits >= least) continue;
    least = edits;
    nearest = &one;
  }
  return nearest == nullptr ? "" : "; did you mean \"" + *nearest + "\"?";
}

}  // namespace tool
