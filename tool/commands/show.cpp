#include "commands/batch.h"
#include "commands/commands.h"
#include "commands/outlines.h"
#include "input/pem.h"
#include "system/output.h"
#include "text/characters.h"

namespace tool {

namespace {

/// Returns a text from the command line as valid UTF-8.
std::string valid_utf8(std::string_view text) { return to_utf8(from_utf8(octets_of(text))); }

/// Returns one JSON object: the members that all types have, and the fields of the record. A type
/// without a PEM label has its octets in hexadecimal.
std::string json_line(const Input &input, const Element &element, const Type &type,
                      const Record &record, const View &view) {
  Json object = Json::object();
  object.put("type", type.name)
      .put("file", valid_utf8(input.name()))
      .put("element", element.number);
  if (type.labels.empty())
    object.put("octets", hex(element.octets));
  else
    object.put("pem", pem(type.labels.front(), element.octets));
  put_members(object, type.describe(record.get(), view));
  return object.text() + "\n";
}

}  // namespace

bool show(const ShowRequest &request) {
  return for_each_record(
      request.files, request.type,
      [&request](const Input &input, const Element &element, const Type &type,
                 const Record &record) {
        switch (request.form) {
          case ShowRequest::Form::page:
            emit(type.show(record.get(), input.where(element), request.view) + "\n");
            break;
          case ShowRequest::Form::brief:
            emit(type.show_short(record.get(), request.view));
            break;
          case ShowRequest::Form::json:
            emit(json_line(input, element, type, record, request.view));
            break;
        }
        return true;
      },
      [&request](const Input &input, const Element &element) {
        if (request.form != ShowRequest::Form::page || element.octets.empty()) return;
        const OutlineStyle style{request.view.colour, request.view.oids, request.view.full, false};
        print_outline(element, request.type, input.where(element), style);
      });
}

}  // namespace tool
