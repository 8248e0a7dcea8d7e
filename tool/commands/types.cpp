#include <algorithm>

#include "commands/commands.h"
#include "system/output.h"

namespace tool {

namespace {

std::string notes(const Type &type) {
  std::string out;
  for (const std::string_view label : type.labels)
    out += (out.empty() ? "  [" : ", ") + std::string(label);
  if (!out.empty()) out += "]";
  return out;
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
