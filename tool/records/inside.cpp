#include "records/inside.h"

namespace tool {

namespace {

Inside unread(std::string why) { return {Node(), std::move(why)}; }

}  // namespace

Inside read_inside(Octets octets, std::string_view name, const View &view) {
  const View deeper = view.inside();
  if (deeper.too_deep()) return unread("it is nested more deeply than is shown");
  const Type &type = *type_named(name);
  if (const auto fault = refusal(type, octets)) return unread(text_with_offset(*fault));
  void *made = nullptr;
  const uint8_t *const end = octets.data() + octets.size();
  const uint8_t *const next = type.decode(octets.data(), end, &made, 0);
  if (next == nullptr) return unread("its decoder refuses it");
  const auto record = std::make_shared<const Record>(type, made);
  if (next != end) return unread("its decoder does not take all of it");
  Node node = type.describe(record->get(), deeper);
  node.owner = record;
  return {std::move(node), ""};
}

Description &add_inside(Description &fields, std::string name, Node octets, Inside inside) {
  if (!inside.node.empty())
    return fields.hidden(std::move(name), std::move(octets))
        .field("decoded", std::move(inside.node));
  return fields.field(std::move(name), std::move(octets))
      .field("unread", text("not in a form that this library reads: " + inside.why, inside.why));
}

Node list_inside(const List *elements, std::string_view type, const View &view) {
  if (elements == nullptr) return {};
  const auto describe_any = [type](const Any *any, const View &at) {
    Inside inside = read_inside(octets(any), type, at);
    if (!inside.node.empty()) return std::move(inside.node);
    Description fields(at);
    return add_inside(fields, "octets", describe(any, at), std::move(inside)).node();
  };
  return list_of<Any>(elements, describe_any, view);
}

}  // namespace tool
