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
/// without a PEM label has its octets in hexadecimal. Octets that may hold a private key are left
/// out unless the view asks for secrets, and all of them from a compact object.
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

/// Returns one JSON object in the place of an element that is refused.
std::string json_line(const Input &input, const Element &element, const Fault &fault) {
  Json object = Json::object();
  object.put("file", valid_utf8(input.name()))
      .put("element", element.number)
      .put("error", valid_utf8(fault.text));
  if (fault.offset) object.put("offset", *fault.offset);
  if (!fault.path.empty()) object.put("path", valid_utf8(fault.path));
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
      [&request](const Input &input, const Element &element, const Fault &fault, bool decoded) {
        if (request.form == ShowRequest::Form::json) return emit(json_line(input, element, fault));
        if (request.form == ShowRequest::Form::page && !decoded && !element.octets.empty()) {
          const View &view = request.view;
          print_outline(element, request.type, input.where(element),
                        {view.colour, view.oids, view.full, false});
        }
        report(input, element, fault);
      });
}

}  // namespace tool
