#include "commands/json_lines.h"

#include "input/pem.h"
#include "text/characters.h"

namespace tool {

std::string valid_utf8(std::string_view text) { return to_utf8(from_utf8(octets_of(text))); }

std::string json_line(const Input &input, const Element &element, const Type &type,
                      const Record &record, const View &view) {
  Json object = Json::object();
  object.put("type", type.name)
      .put("file", valid_utf8(input.name()))
      .put("element", element.number);
  const bool is_hidden = view.compact || (type.secret && !view.secrets);
  if (!is_hidden && type.labels.empty()) object.put("octets", hex(element.octets));
  if (!is_hidden && !type.labels.empty())
    object.put("pem", pem(type.labels.front(), element.octets));
  put_members(object, type.describe(record.get(), view));
  return object.text() + "\n";
}

std::string json_line(const Input &input, const Element &element, const Fault &fault) {
  Json object = Json::object();
  object.put("file", valid_utf8(input.name()))
      .put("element", element.number)
      .put("error", valid_utf8(fault.text));
  if (fault.offset) object.put("offset", *fault.offset);
  if (!fault.path.empty()) object.put("path", valid_utf8(fault.path));
  return object.text() + "\n";
}

}  // namespace tool
