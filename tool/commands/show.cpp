#include "commands/batch.h"
#include "commands/commands.h"
#include "input/pem.h"
#include "system/output.h"
#include "text/characters.h"

namespace tool {

namespace {

/// A text from the command line or a PEM label as valid UTF-8.
std::string valid_utf8(std::string_view text) { return to_utf8(from_utf8(octets_of(text))); }

/// What every object begins with, and the fields of the record. A type that has no PEM label gets
/// its octets as they are.
std::string json_line(const Input &input, const Element &element, const Record &record,
                      const View &view) {
  const Type &type = record.type();
  Json object;
  object["type"] = type.name;
  object["file"] = valid_utf8(input.name());
  object["element"] = element.number;
  if (type.labels.empty())
    object["octets"] = hex(element.octets);
  else
    object["pem"] = pem(type.labels.front(), element.octets);
  put_members(object, type.describe(record.get(), view));
  return object.dump() + "\n";
}

}  // namespace

bool show(const ShowRequest &request) {
  return for_each_record(
      request.files, request.type,
      [&request](const Input &input, const Element &element, const Record &record) {
        const Type &type = record.type();
        switch (request.form) {
          case ShowRequest::Form::page:
            emit(type.show(record.get(), input.where(element), request.view) + "\n");
            break;
          case ShowRequest::Form::brief:
            emit(type.show_short(record.get(), request.view));
            break;
          case ShowRequest::Form::json:
            emit(json_line(input, element, record, request.view));
            break;
        }
        return true;
      });
}

}  // namespace tool
