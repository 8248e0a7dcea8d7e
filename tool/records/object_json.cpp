#include "records/object_json.h"

#include "input/pem.h"
#include "text/characters.h"

namespace tool {

Json json_of_object(const Object &object, const View &view) {
  const Type &type = *object.type;
  Json json = Json::object();
  json.put("type", type.name).put("file", valid_utf8(object.file)).put("element", object.number);
  const bool is_hidden = view.compact || (type.secret && !view.secrets);
  if (!is_hidden && type.labels.empty()) json.put("octets", hex(object.octets));
  if (!is_hidden && !type.labels.empty()) json.put("pem", pem(type.labels.front(), object.octets));
  put_members(json, type.describe(object.record, view));
  return json;
}

Json json_of_refused(const Object &object) {
  Json json = Json::object();
  json.put("file", valid_utf8(object.file)).put("element", object.number);
  put_fault(json, *object.fault);
  return json;
}

void put_fault(Json &object, const Fault &fault) {
  object.put("error", valid_utf8(fault.text));
  if (fault.offset) object.put("offset", *fault.offset);
  if (!fault.path.empty()) object.put("path", valid_utf8(fault.path));
}

}  // namespace tool
