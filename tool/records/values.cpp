#include "records/values.h"

#include "text/characters.h"

namespace tool {

namespace {

Inside unread(std::string why) { return {Node(), std::move(why)}; }

/// Returns an element of definite length.
Bytes element(uint8_t tag, Octets content) {
  Bytes out{tag};
  if (content.size() < 0x80) {
    out.push_back(static_cast<uint8_t>(content.size()));
  } else {
    out.push_back(0x84);
    for (int shift = 24; shift >= 0; shift -= 8)
      out.push_back(static_cast<uint8_t>(content.size() >> shift));
  }
  out.insert(out.end(), content.begin(), content.end());
  return out;
}

/// Returns a SEQUENCE in which the fields that the public form tags implicitly are tagged as the
/// library has them, explicitly; no octets where there is another field.
Bytes explicitly_tagged(Octets value, const pki_Type *type) {
  Bytes content;
  size_t taken = 0;
  for (const Octets component : components(value)) {
    const Header header = read_header(component);
    pki_Field field;
    uint32_t i = 0;
    while (pki_Type_field(type, i, &field) != 0 &&
           header.tag != ((field.tag & ~tag::constructed) |
                          (pki_Type_identifier(field.type) & tag::constructed)))
      ++i;
    if (header.indefinite || i == pki_Type_field_count(type)) return {};
    const Bytes inner = element(pki_Type_identifier(field.type), component.subspan(header.size));
    const Bytes outer = element(field.tag, inner);
    content.insert(content.end(), outer.begin(), outer.end());
    taken += component.size();
  }
  const Header header = read_header(value);
  return header.tag == tag::sequence && header.size + taken == value.size()
             ? element(tag::sequence, content)
             : Bytes();
}

/// Returns the value with a line below it that names its form.
Node in_public_form(Node node, const View &view) {
  auto lines = lines_of(node, view).value_or(std::vector<std::string>());
  lines.emplace_back("(in the public form, which the library's own decoder does not read)");
  return shown_as(std::move(node), text(std::move(lines), nullptr));
}

}  // namespace

Inside read_value(Octets octets, const Syntax &syntax, const View &view, Describe describe) {
  if (const auto fault = syntax.fault(octets)) return unread(text_with_offset(*fault));
  void *made = nullptr;
  if (syntax.decode(octets.data(), octets.data() + octets.size(), &made, 0) == nullptr)
    return unread("its decoder refuses it");
  const auto record = std::make_shared<const Record>(syntax, made);
  Node node = describe != nullptr ? describe(made, view) : syntax.describe(made, view);
  node.owner = record;
  return {std::move(node), ""};
}

Inside read_inside(Octets octets, std::string_view name, const View &view) {
  const View deeper = view.inside();
  if (deeper.too_deep()) return unread("it is nested more deeply than is shown");
  const Type &type = *type_named(name);
  return read_value(octets, type.syntax, deeper, type.by_hand);
}

Description &add_inside(Description &fields, std::string name, Node octets, Inside inside) {
  if (!inside.node.empty())
    return fields.hidden(std::move(name), std::move(octets))
        .field("decoded", std::move(inside.node));
  return fields.field(std::move(name), std::move(octets))
      .field("unread", text("not in a form that this library reads: " + inside.why, inside.why));
}

Node list_inside(const List *elements, std::string_view type, const View &view) {
  const auto describe_any = [type](const Any *any, const View &at) {
    Inside inside = read_inside(octets(any), type, at);
    if (!inside.node.empty()) return std::move(inside.node);
    Description fields(at);
    return add_inside(fields, "octets", describe(any, at), std::move(inside)).node();
  };
  return list_of<Any>(elements, describe_any, view);
}

Inside read_value(Octets value, const ValueRow &row, const View &view) {
  if (row.read != nullptr)
    if (Node node = row.read(value, view); !node.empty()) return {std::move(node), ""};
  if (row.type == nullptr) return unread("it is no character string");
  const Syntax syntax(row.type, row.list);
  if (row.read != nullptr) {
    const auto fault = syntax.fault(value);
    return unread(fault ? text_with_offset(*fault) : "it holds something else");
  }
  Inside inside = read_value(value, syntax, view, row.describe);
  if (!inside.node.empty() || row.describe_public == nullptr) return inside;
  const Bytes own_form = explicitly_tagged(value, syntax.type);
  Inside of_public = read_value(own_form, syntax, view, row.describe_public);
  if (of_public.node.empty()) return inside;
  return {in_public_form(std::move(of_public.node), view), ""};
}

Node string_value(Octets value, const View &) {
  if (value.empty()) return {};
  const uint8_t *const end = value.data() + value.size();
  ASN1String *made = nullptr;
  const uint8_t *const next = asn1_ASN1String_d(value.data(), end, 0, value[0], &made, 0);
  const Owned<ASN1String> owned(next == nullptr ? nullptr : made, asn1_ASN1String_free);
  if (next != end || !from_string(value[0], octets(owned.get()))) return {};
  return characters(value[0], owned.get());
}

}  // namespace tool
