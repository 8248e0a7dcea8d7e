#include "commands/json_lines.h"

#include <utility>

#include "records/object_json.h"

namespace tool {

namespace {

/// Returns what a line of JSON is made from.
Object object_of(const Input &input, const Element &element) {
  Object object;
  object.file = input.name();
  object.number = element.number;
  object.octets = element.octets;
  return object;
}

std::string line_of(const Object &object, const View &view) {
  std::string line;
  append_json(line, object, view);
  return std::move(line += '\n');
}

}  // namespace

std::string json_line(const Input &input, const Element &element, const Type &type,
                      const Record &record, const View &view) {
  Object object = object_of(input, element);
  object.type = &type;
  object.record = record.get();
  return line_of(object, view);
}

std::string json_line(const Input &input, const Element &element, const Fault &fault) {
  Object object = object_of(input, element);
  object.fault = &fault;
  return line_of(object, View());
}

}  // namespace tool
