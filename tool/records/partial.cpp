#include "records/partial.h"

#include <algorithm>

namespace tool {

namespace {

/// Octets inside others: where they are, and what keeps them where they are a copy.
struct Source {
  Octets octets;
  size_t offset = 0;   ///< from the first of all octets
  std::string path{};  ///< of fields and elements, down to these octets
  std::shared_ptr<const Bytes> copy{};
  std::optional<uint8_t> tag{};  ///< the first of the octets, where the copy has that of the type

  Source part(Octets of, const std::string &step) const {
    Source inner = *this;
    inner.octets = of;
    inner.tag.reset();
    inner.offset += static_cast<size_t>(of.data() - octets.data());
    if (!step.empty() && step[0] != '[' && !inner.path.empty()) inner.path += '.';
    inner.path += step;
    return inner;
  }
};

/// Splits the content of an element. Octets that are no element are the last part.
std::vector<Octets> parts_of(Octets element, const Header &header) {
  std::vector<Octets> parts;
  Octets rest = element.subspan(header.size);
  if (!header.indefinite) rest = rest.first(std::min(header.length, rest.size()));
  while (!rest.empty()) {
    if (header.indefinite && ber::ends_contents(rest)) break;
    const Header inner = read_header(rest);
    const auto size = element_size(rest, inner);
    parts.push_back(rest.first(size.value_or(rest.size())));
    rest = rest.subspan(parts.back().size());
  }
  return parts;
}

std::string in_path(const Source &source, const std::string &path, const std::string &sentence) {
  std::string out = source.path;
  if (!path.empty() && path[0] != '[' && !out.empty()) out += '.';
  out += path;
  return out.empty() ? sentence : out + ": " + sentence;
}

Node refused(const Source &source, const std::string &sentence, const View &view) {
  return malformed(text_with_offset({source.offset, in_path(source, "", sentence)}), source.octets,
                   view);
}

bool same_number(uint8_t a, uint8_t b) { return (a | tag::constructed) == (b | tag::constructed); }

/// Whether an element that begins with this octet is a field, in either form.
bool begins(const pki_Field &field, uint8_t octet) {
  if (field.tagging != PKI_UNTAGGED) return same_number(field.tag, octet);
  if (pki_Type_kind(field.type) != PKI_CHOICE)
    return field.found_by == 0 || same_number(field.found_by, octet);
  pki_Field alternative;
  for (uint32_t i = 0; pki_Type_field(field.type, i, &alternative) != 0; ++i)
    if (begins(alternative, octet)) return true;
  return false;
}

Node value_of(const Source &source, const pki_Type *type, const View &view, Describe describe);

/// Describes the value of a field, inside its tag.
Node field_of(const Source &source, const pki_Field &field, const View &view, Describe describe) {
  if (field.tagging == PKI_UNTAGGED) return value_of(source, field.type, view, describe);
  const bool may_be_either =
      field.presence == PKI_EITHER_FORM || field.presence == PKI_ANYTHING_LEFT;
  if (source.octets[0] != field.tag && !may_be_either)
    return refused(
        source, "expected " + tag_name(field.tag) + ", found " + tag_name(source.octets[0]), view);
  const std::string cut = read_header(source.octets).fault;
  if (!cut.empty()) return refused(source, cut, view);
  if (field.tagging == PKI_EXPLICIT) {
    const auto inner = parts_of(source.octets, read_header(source.octets));
    if (inner.size() != 1) return refused(source, "expected one element inside the tag", view);
    return value_of(source.part(inner[0], ""), field.type, view, describe);
  }
  auto copy = std::make_shared<Bytes>(source.octets.begin(), source.octets.end());
  copy->front() =
      static_cast<uint8_t>(pki_Type_identifier(field.type) | (copy->front() & tag::constructed));
  Source inner = source;
  inner.octets = *copy;
  inner.tag = source.octets[0];
  inner.copy = std::move(copy);
  return value_of(inner, field.type, view, describe);
}

Node elements_of(const Source &source, const pki_Type *element, const View &view,
                 Describe describe) {
  auto parts = std::make_shared<const std::vector<Octets>>(
      parts_of(source.octets, read_header(source.octets)));
  Node list;
  list.value =
      Node::Items{parts->size(), [source, parts, element, view, describe](size_t i) {
                    return value_of(source.part((*parts)[i], "[" + std::to_string(i) + "]"),
                                    element, view, describe);
                  }};
  return list;
}

Node fields_of(const Source &source, const pki_Type *type, const View &view) {
  const Type *const row = row_of(type);
  const auto parts = parts_of(source.octets, read_header(source.octets));
  Description fields(view);
  size_t next = 0;
  pki_Field field;
  for (uint32_t i = 0; pki_Type_field(type, i, &field) != 0; ++i) {
    const bool is_there = next < parts.size() && begins(field, parts[next][0]);
    if (!is_there && field.presence != PKI_ALWAYS) continue;
    if (next == parts.size()) {
      fields.field(field.name, refused(source.part(source.octets.last(0), field.name),
                                       "expected " + tag_name(field.found_by) +
                                           ", but the enclosing element ends",
                                       view));
      continue;
    }
    const Hint hint = hint_for(row, field);
    fields.field(field.name,
                 field_of(source.part(parts[next++], field.name), field, view, hint.describe));
  }
  if (next < parts.size()) {
    const uint8_t *const rest = parts[next].data();
    const Octets left(rest, static_cast<size_t>(&parts.back().back() + 1 - rest));
    fields.field("unexpected", refused(source.part(left, ""),
                                       "expected the end, found " + tag_name(*rest), view));
  }
  return fields.node();
}

Node alternative_of(const Source &source, const pki_Type *type, const View &view) {
  const Type *const row = row_of(type);
  pki_Field field;
  for (uint32_t i = 0; pki_Type_field(type, i, &field) != 0; ++i) {
    if (!begins(field, source.octets[0])) continue;
    Node chosen = field_of(source.part(source.octets, field.name), field, view, nullptr);
    Node node = Description(view).field(field.name, chosen).node();
    return row != nullptr && row->bare ? shown_as(std::move(node), std::move(chosen)) : node;
  }
  return {};
}

/// Describes what can be read of a value that is malformed; nothing where that is nothing.
Node partial_of(const Source &source, const pki_Type *type, const View &view, Describe describe) {
  const pki_Kind kind = pki_Type_kind(type);
  const Header header = read_header(source.octets);
  if (!header.fault.empty()) return {};
  if (kind == PKI_CHOICE) return alternative_of(source, type, view);
  if (header.identifier != pki_Type_identifier(type)) return {};
  if (kind == PKI_SEQUENCE) return fields_of(source, type, view);
  if (kind != PKI_SEQUENCE_OF && kind != PKI_SET_OF) return {};
  return elements_of(source, pki_Type_element(type), view, describe);
}

Node value_of(const Source &source, const pki_Type *type, const View &view, Describe describe) {
  const auto refusal = Syntax(type).refusal(source.octets);
  if (!refusal) {
    Node node = sound_value(source.octets, type, view, describe);
    if (source.copy != nullptr) node.keep(source.copy);
    return node;
  }
  Node node = partial_of(source, type, view, describe);
  if (!node.empty()) return node;
  Bytes octets(source.octets.begin(), source.octets.end());
  if (source.tag) octets[0] = *source.tag;
  return malformed(text_with_offset({source.offset + refusal->offset,
                                     in_path(source, refusal->path, refusal->sentence)}),
                   octets, view);
}

/// Returns the value with what follows it marked.
Node with_rest(Node node, const Source &rest, const View &view) {
  Node marked = refused(rest, "expected the end, found " + tag_name(rest.octets[0]), view);
  if (auto *const fields = std::get_if<Node::Fields>(&node.value)) {
    // The value may have a field of this name already, for what is left over inside it.
    const bool taken = std::ranges::find(*fields, "unexpected", &Node::name) != fields->end();
    marked.name = taken ? "unexpectedAfter" : "unexpected";
    fields->push_back(std::move(marked));
    node.shown = nullptr;
  } else if (auto lines = lines_of(node, view)) {
    const auto more = lines_of(marked, view);
    lines->insert(lines->end(), more->begin(), more->end());
    node = shown_as(std::move(node), text(std::move(*lines), nullptr, Tone::alarm));
  }
  return node;
}

}  // namespace

Inside read_partly(Octets octets, const pki_Type *type, const View &view) {
  const auto refusal = Syntax(type).refusal(octets);
  const std::string why = text_with_offset(refusal->fault());
  const Header header = read_header(octets);
  const auto size = element_size(octets, header);
  const Source source{octets.first(size.value_or(octets.size()))};
  Node node;
  if (!source.octets.empty() && !Syntax(type).refusal(source.octets))
    node = sound_value(source.octets, type, view);
  else if (!source.octets.empty())
    node = partial_of(source, type, view, nullptr);
  if (node.empty()) return {malformed(why, octets, view), why, false};
  if (source.octets.size() < octets.size()) {
    Source rest{octets.subspan(source.octets.size())};
    rest.offset = source.octets.size();
    node = with_rest(std::move(node), rest, view);
  }
  return {std::move(node), why, true};
}

Inside read_elements(Octets octets, const pki_Type *element, const View &view, Describe describe) {
  const Header header = read_header(octets);
  const auto refuse = [&](const std::string &why) -> Inside {
    return {malformed("offset 0: " + why, octets, view), "offset 0: " + why, false};
  };
  if (!header.fault.empty()) return refuse(header.fault);
  if (header.identifier != tag::sequence && header.identifier != tag::set)
    return refuse("expected " + tag_name(tag::sequence) + ", found " + tag_name(header.identifier));
  return {elements_of({octets}, element, view, describe), "", true};
}

}  // namespace tool
