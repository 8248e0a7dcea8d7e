#include <algorithm>
#include <limits>

#include "commands/batch.h"
#include "commands/commands.h"
#include "commands/json_lines.h"
#include "commands/outlines.h"
#include "model/brief.h"
#include "records/chain.h"
#include "records/end_of_validity.h"
#include "system/output.h"
#include "text/characters.h"

namespace tool {

namespace {

/// Collects the certificates of each input, and ends its pages with their chain.
Course chain_after_pages(Chain &chain, const View &view) {
  return {nullptr, [&chain](const Element &element) { chain.add(element); },
          [&chain, &view](const Input &input) {
            emit(chain.page(input.name(), view));
            chain = Chain();
          }};
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
  Chain chain;
  Course course;
  if (request.by_end)
    course.order = end_or_never;
  else if (request.form == ShowRequest::Form::page && !request.within &&
           (request.type == nullptr || request.type->name == "certificate"))
    course = chain_after_pages(chain, request.view);
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
  const auto refuse = [&request](const Input &input, const Element &element, const Fault &fault,
                                 bool decoded) {
    if (request.form == ShowRequest::Form::json) return emit(json_line(input, element, fault));
    const View &view = request.view;
    const bool may_be_key = std::ranges::any_of(candidates(element, request.type), &Type::secret);
    const bool has_outline = request.form == ShowRequest::Form::page && !decoded &&
                             !element.octets.empty() && (view.secrets || !may_be_key);
    if (has_outline) {
      print_outline(element, request.type, input.where(element),
                    {view.colour, view.oids, view.full, false});
    }
    report(input, element, fault);
  };
  return for_each_record(request.files, request.type, show_one, refuse, course);
}

}  // namespace tool
