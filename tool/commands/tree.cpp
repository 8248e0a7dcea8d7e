#include <unistd.h>

#include "commands/batch.h"
#include "commands/commands.h"
#include "commands/outlines.h"
#include "model/outline_path.h"
#include "system/output.h"

namespace tool {

namespace {

/// Prints what the path leads to; nothing where it leads nowhere. Returns the first fault in there.
std::optional<Fault> print(const Element &element, const TreeRequest &request,
                           OutlineSearch &search) {
  Output output;
  OutlineWriter write(element.octets.size(), request.style);
  std::optional<Fault> fault;
  each_line(element, request.type, [&](const OutlineLine &line) {
    if (search(line)) {
      output.add(write(line));
      if (line.kind == OutlineLine::Kind::fault && !fault)
        fault = Fault{line.offset, line.text, {}};
    }
    return !search.is_past();
  });
  return fault;
}

/// Writes the octets of the element that the path leads to.
void extract(const Element &element, const TreeRequest &request, OutlineSearch &search) {
  each_line(element, request.type, [&](const OutlineLine &line) {
    if (!search(line) || line.kind != OutlineLine::Kind::element) return true;
    constexpr size_t end_of_contents = 2;
    Octets octets = line.octets;
    const auto size = ber::element_size(octets);
    if (size) octets = octets.first(*size);
    if (request.content) octets = octets.subspan(line.header.size);
    if (request.content && size && line.header.indefinite)
      octets = octets.first(octets.size() - end_of_contents);
    emit(text_of(octets));
    return false;
  });
}

}  // namespace

bool tree(const TreeRequest &request) {
  const bool octets = request.extract || request.content;
  if (octets && isatty(STDOUT_FILENO) != 0) {
    complain(
        "standard output is a terminal, and the octets may be anything: write them to a file, "
        "or show them with --hex");
    return false;
  }
  const auto path = OutlinePath::parse(request.path);
  return path && for_each_element(request.files, [&](const Input &input, const Element &element) {
           OutlineSearch search(*path);
           std::optional<Fault> fault;
           if (octets)
             extract(element, request, search);
           else
             fault = print(element, request, search);
           // What a reader of DER finds wrong, the outline says more about.
           const bool is_pem = element.line != 0;
           if (!fault && (is_pem || element.octets.empty())) fault = element.fault;
           if (!fault && !search.is_found()) fault = Fault{std::nullopt, search.why_not(), {}};
           if (fault) report(input, element, *fault);
           return !fault;
         });
}

}  // namespace tool
