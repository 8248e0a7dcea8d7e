#include "commands/outlines.h"

#include "model/page.h"
#include "records/recognise.h"
#include "system/output.h"

namespace tool {

namespace {

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

}  // namespace

Output::~Output() { emit(text_); }

void Output::add(std::string_view text) {
  constexpr size_t enough = 65536;
  text_ += text;
  if (text_.size() < enough) return;
  emit(text_);
  text_.clear();
}

std::optional<Fault> each_line(const Element &element, const Type *wanted,
                               const std::function<bool(const OutlineLine &)> &tell) {
  const Type *const type = type_of(element, wanted);
  const auto fault = outline(element.octets, type == nullptr ? nullptr : type->syntax.type, tell);
  if (!fault) return std::nullopt;
  return Fault{fault->offset, fault->text, fault->path};
}

void print_outline(const Element &element, const Type *wanted, const std::string &where,
                   const OutlineStyle &style) {
  constexpr size_t lines_at_a_glance = 500;
  Output output;
  output.add(toned("Outline", Tone::heading, style.colour) + "  " +
             toned(where, Tone::quiet, style.colour) + "\n");
  OutlineWriter write(element.octets.size(), style);
  size_t lines = 0;
  each_line(element, wanted, [&](const OutlineLine &line) {
    if (lines++ == lines_at_a_glance && !style.full) {
      output.add("... and more from offset " + std::to_string(line.offset) +
                 " on: --full shows it, and \"orvelasn1 tree\"\n");
      return false;
    }
    output.add("  " + write(line));
    return true;
  });
  output.add("\n");
}

}  // namespace tool
