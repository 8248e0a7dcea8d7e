#include <algorithm>

#include "commands/commands.h"
#include "system/output.h"
#include "text/characters.h"

namespace tool {

namespace {

std::string notes(const Type &type) {
  return type.labels.empty() ? "" : "  [" + joined(type.labels) + "]";
}

}  // namespace

bool list_types() {
  const std::vector<Type> &all = types();
  const size_t column =
      std::ranges::max(all, {}, [](const Type &type) { return type.name.size(); }).name.size();
  std::string out;
  for (const Type &type : all)
    out += type.name + std::string(column - type.name.size() + 2, ' ') + std::string(type.about) +
           notes(type) + "\n";
  emit(out);
  return true;
}

}  // namespace tool
