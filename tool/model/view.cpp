#include "model/view.h"

#include "text/object_identifiers.h"

namespace tool {

std::string label(const ObjId *oid, const View &view) {
  const std::string name = display_name(oid);
  if (name.empty()) return dotted(oid);
  return view.oids ? name + " (" + dotted(oid) + ")" : name;
}

}  // namespace tool
