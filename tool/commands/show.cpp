#include <limits>

#include "commands/batch.h"
#include "commands/commands.h"
#include "input/pem.h"
#include "model/brief.h"
#include "records/end_of_validity.h"
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

/// Returns the names of files, with room for the numbers of their elements.
std::vector<std::string> names_of(const std::vector<std::string> &files) {
  std::vector<std::string> names;
  for (const std::string &file : files)
    names.push_back((file == "-" ? "standard input" : printable(file)) + " #99");
  if (names.empty()) names.emplace_back("standard input #99");
  return names;
}

/// Returns the name of an element in the short form: "chain.pem", "chain.pem #2".
std::string short_name(const Input &input, const Element &element) {
  const std::string name = printable(input.name());
  return element.number == 1 ? name : name + " #" + std::to_string(element.number);
}

/// Returns where an element stands in the order of the ends of validity.
Seconds end_or_never(const Element &element) {
  return end_of_validity(element.octets).value_or(std::numeric_limits<Seconds>::max());
}

}  // namespace

bool show(const ShowRequest &request) {
  const BriefColumns columns(names_of(request.files), request.view);
  const auto show_one = [&](const Input &input, const Element &element, const Type &type,
                            const Record &record) {
    if (request.within) {
      const auto end = end_of_validity(element.octets);
      if (!end || *end - request.view.moment > *request.within) return true;
    }
    switch (request.form) {
      case ShowRequest::Form::page:
        emit(type.show(record.get(), input.where(element), request.view) + "\n");
        break;
      case ShowRequest::Form::brief:
        emit(
            columns.lines(short_name(input, element), type.show_short(record.get(), request.view)));
        break;
      case ShowRequest::Form::json:
        emit(json_line(input, element, type, record, request.view));
        break;
    }
    return !request.within;
  };
  return for_each_record(request.files, request.type, show_one,
                         request.by_end ? Order(end_or_never) : Order());
}

}  // namespace tool
