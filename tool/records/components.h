// The components of a SEQUENCE for which the library has no type.
#ifndef ORVELASN1_TOOL_RECORDS_COMPONENTS_H
#define ORVELASN1_TOOL_RECORDS_COMPONENTS_H

#include "records/values.h"

namespace tool {

/// Reads the components of an element one after the other. Those that are not there are left out.
class Components {
 public:
  Components(Octets element, const View &view)
      : parts_(components(element, most)), view_(view), fields_(view) {}

  /// Adds the next component if it is of the type. Adds nothing otherwise.
  Components &take(const char *name, const char *type, Describe describe = nullptr) {
    if (next_ == parts_.size()) return *this;
    Inside inside = read_value(parts_[next_], type, view_, describe);
    if (!inside.malformed.empty()) return *this;
    ++next_;
    fields_.field(name, std::move(inside.node));
    return *this;
  }

  /// Returns the record; nothing where a component is left, or where there is none.
  Node node() { return parts_.empty() || next_ < parts_.size() ? Node() : fields_.node(); }

 private:
  static constexpr size_t most = 16;

  std::vector<Octets> parts_;
  size_t next_ = 0;
  const View &view_;
  Description fields_;
};

}  // namespace tool

#endif
