#include "records/object_json.h"

#include "input/pem.h"
#include "text/characters.h"

namespace tool {

std::string json_of_object(const Object &object, const View &view) {
  constexpr size_t about = 6;  // characters an octet
  Json json = Json::object(about * object.octets.size());
  if (!object.id.empty()) json.put("id", valid_utf8(object.id));
  if (object.record != nullptr) json.put("type", object.type->name);
  json.put("file", valid_utf8(object.file)).put("element", object.number);
  if (object.record == nullptr) {
    put_fault(json, *object.fault);
    return json.text();
  }
  const Type &type = *object.type;
  const bool is_hidden = view.compact || (type.secret && !view.secrets);
  if (!is_hidden && type.labels.empty()) json.put("octets", Json::hex(object.octets));
  if (!is_hidden && !type.labels.empty()) json.put("pem", pem(type.labels.front(), object.octets));
  View only_json = view;
  only_json.lines = false;
  put_members(json, type.describe(object.record, only_json));
  return json.text();
}

void put_fault(Json &object, const Fault &fault) {
  object.put("error", valid_utf8(fault.text));
  if (fault.offset) object.put("offset", *fault.offset);
  if (!fault.path.empty()) object.put("path", valid_utf8(fault.path));
}

}  // namespace tool
