#include "records/values.h"

#include "model/outline_text.h"
#include "records/partial.h"
#include "text/characters.h"

namespace tool {

namespace {

/// Reads octets unless they are nested too deeply.
template <class Read>
Inside read_deeper(const View &view, Read read) {
  const View deeper = view.inside();
  if (!deeper.too_deep()) return read(deeper);
  return {text("(nested more deeply than is shown)", nullptr), "", true};
}

/// Returns the outline of octets that are an element, up to and past what is wrong in it; a dump of
/// others.
std::vector<std::string> outline_or_dump(Octets octets, const View &view) {
  constexpr size_t lines_at_a_glance = 24;
  if (!ber::is_element(octets)) return dump(octets, view.full);
  return outline_lines(octets, nullptr, {.oids = view.oids, .full = view.full},
                       view.full ? SIZE_MAX : lines_at_a_glance);
}

}  // namespace

Node sound_value(Octets octets, const pki_Type *type, const View &view, Describe describe) {
  Syntax syntax(type);
  // A universal type inside a form has the functions of liborvelasn1's.
  if (syntax.functions().decode == nullptr) syntax = Syntax(pki_Type_record(type));
  if (syntax.type == nullptr || syntax.functions().decode == nullptr) {
    const Header header = read_header(octets);
    if (is_list(type)) return read_elements(octets, pki_Type_element(type), view, describe).node;
    if (pki_Type_kind(type) == PKI_NULL) return text("present", true);
    return pki_Type_kind(type) == PKI_BOOLEAN ? boolean(octets[header.size])
                                              : text(hex(octets), hex(octets));
  }
  void *made = nullptr;
  if (syntax.decode(octets.data(), octets.data() + octets.size(), &made, 0) == nullptr)
    return malformed("the decoder refuses it", octets, view);
  const auto record = std::make_shared<const Record>(syntax, made);
  Node node = describe != nullptr ? describe(made, view) : tool::describe(type, made, view);
  node.keep(record);
  return node;
}

Inside read_value(Octets octets, const pki_Type *type, const View &view, Describe describe) {
  return read_deeper(view, [=](const View &deeper) -> Inside {
    if (Syntax(type).refusal(octets)) return read_partly(octets, type, deeper);
    return {sound_value(octets, type, deeper, describe), "", true};
  });
}

Inside read_value(Octets octets, const char *type, const View &view, Describe describe) {
  return read_value(octets, type_called(type), view, describe);
}

Inside read_list(Octets octets, const pki_Type *element, const View &view, Describe describe) {
  return read_deeper(
      view, [=](const View &deeper) { return read_elements(octets, element, deeper, describe); });
}

Inside read_value(Octets value, const ValueRow &row, const View &view) {
  if (row.read != nullptr)
    if (Node node = row.read(value, view); !node.empty()) return {std::move(node), "", true};
  if (row.type == nullptr) {
    const std::string why = "it is no character string";
    return {malformed(why, value, view), why, false};
  }
  const pki_Type *const type = type_called(row.type);
  return row.list ? read_list(value, type, view, row.describe)
                  : read_value(value, type, view, row.describe);
}

Description &add_inside(Description &fields, std::string name, Node octets, Inside inside) {
  if (inside.node.empty()) return fields.field(std::move(name), std::move(octets));
  if (!inside.malformed.empty()) fields.hidden("malformed", inside.malformed);
  const bool complete = inside.read && inside.malformed.empty();
  if (inside.read) fields.hidden("decoded", inside.node);
  if (complete) return fields.undecoded(std::move(name), std::move(octets), std::move(inside.node));
  return fields.field(std::move(name), shown_as(std::move(octets), std::move(inside.node)));
}

Node unknown_octets(Octets octets, const View &view) {
  return text(
      view, [&] { return outline_or_dump(octets, view); }, octets);
}

Node malformed(const std::string &why, Octets octets, const View &view) {
  std::vector<std::string> lines{"malformed: " + why};
  if (!octets.empty())
    for (const std::string &line : outline_or_dump(octets, view)) lines.push_back("  " + line);
  Json json = Json::object();
  json.put("malformed", why).put("octets", octets);
  return text(std::move(lines), std::move(json), Tone::alarm);
}

// A nonce is an OCTET STRING as any other.
Owned<OctetString> octet_string(Octets octets) {
  return decoded(pki_Nonce_d, pki_Nonce_free, octets);
}

Node string_value(Octets value, const View &view) {
  if (value.empty()) return {};
  const uint8_t *const end = value.data() + value.size();
  ASN1String *made = nullptr;
  const uint8_t *const next = asn1_ASN1String_d(value.data(), end, 0, value[0], &made, 0);
  const Owned<ASN1String> owned(next == nullptr ? nullptr : made, asn1_ASN1String_free);
  if (next != end || !from_string(value[0], octets(owned.get()))) return {};
  return characters(value[0], owned.get(), view);
}

}  // namespace tool
