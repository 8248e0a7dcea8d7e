#include "batch.h"
#include "commands.h"
#include "output.h"
#include "pem.h"
#include "text.h"

namespace tool {

namespace {

/// A text from the command line or a PEM label as valid UTF-8.
std::string valid_utf8(std::string_view text) { return to_utf8(from_utf8(octets_of(text))); }

std::string json_line(const Input &input, const Element &element, const Record &record,
                      const View &view) {
  Json object;
  object["type"] = record.type().name;
  object["file"] = valid_utf8(input.name());
  object["element"] = element.number;
  object["pem"] = pem(record.type().labels.front(), element.octets);
  record.type().put_json(object, record.get(), view);
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
