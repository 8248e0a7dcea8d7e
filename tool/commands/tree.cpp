#include <unistd.h>

#include "commands/batch.h"
#include "commands/commands.h"
#include "model/outline_path.h"
#include "system/output.h"

namespace tool {

namespace {

/// Collects text and writes it in large pieces.
class Output {
 public:
  Output() = default;
  Output(const Output &) = delete;
  Output &operator=(const Output &) = delete;
  ~Output() { emit(text_); }

  void add(std::string_view text) {
    text_ += text;
    if (text_.size() < enough) return;
    emit(text_);
    text_.clear();
  }

 private:
  static constexpr size_t enough = 65536;
  std::string text_;
};

/// Whether the octets follow a type into one of its fields' own fields, and no further.
bool follows_far(const Type &type, Octets octets) {
  pki_Fault fault;
  return pki_explain(type.syntax.type, octets.data(), octets.data() + octets.size(), &fault) == 0 ||
         std::string_view(fault.path).find('.') != std::string_view::npos;
}

/// Returns the type of an element: the one that it is taken for, or the one of several that takes
/// all its octets. Returns null where none is sure: any element has the structure of some small
/// type up to a few octets.
const Type *type_of(const Element &element, const Type *wanted) {
  auto tried = candidates(element, wanted);
  const bool is_named = wanted != nullptr || !element.label.empty();
  std::erase_if(tried, [&](const Type *type) {
    return tried.size() > 1 ? type->syntax.fault(element.octets).has_value()
                            : !is_named && !follows_far(*type, element.octets);
  });
  return tried.size() == 1 ? tried.front() : nullptr;
}

/// Tells the lines of an element's outline.
std::optional<Fault> each_line(const Element &element, const Type *wanted,
                               const std::function<bool(const OutlineLine &)> &tell) {
  const Type *const type = type_of(element, wanted);
  const auto fault = outline(element.octets, type == nullptr ? nullptr : type->syntax.type,
                             type != nullptr && type->syntax.list, tell);
  if (!fault) return std::nullopt;
  return Fault{fault->offset, fault->text};
}

/// Prints what the path leads to; nothing where it leads nowhere. Returns the first fault in there.
std::optional<Fault> print(const Element &element, const TreeRequest &request,
                           OutlineSearch &search) {
  Output output;
  OutlineWriter write(element.octets.size(), request.style);
  std::optional<Fault> fault;
  each_line(element, request.type, [&](const OutlineLine &line) {
    if (search(line)) {
      output.add(write(line));
      if (line.kind == OutlineLine::Kind::fault && !fault) fault = Fault{line.offset, line.text};
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
           if (!fault) fault = element.fault;
           if (!fault && !search.is_found()) fault = Fault{std::nullopt, search.why_not()};
           if (fault) report(input, element, *fault);
           return !fault;
         });
}

}  // namespace tool
