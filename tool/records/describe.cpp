#include "records/describe.h"

#include "records/distinguished_names.h"
#include "records/type.h"
#include "text/characters.h"

namespace tool {

namespace {

constexpr int64_t soon = 30;  ///< days

/// Returns the value of a field: a number where it lies in the record, or else what the record
/// points to.
const void *value_at(const void *record, const pki_Field &field) {
  const pki_Kind kind = pki_Type_kind(field.type);
  if (kind == PKI_BOOLEAN || kind == PKI_ENUMERATED)
    return static_cast<const char *>(record) + field.offset;
  return field.offset == PKI_NO_MEMBER ? nullptr : pointer_at(record, field.offset);
}

/// Returns a Time, or the text of a time as one.
Time time_in(const void *value, const pki_Type *type) {
  if (value == nullptr) return {};
  if (pki_Type_kind(type) == PKI_CHOICE) return *static_cast<const Time *>(value);
  return {pki_Type_identifier(type), static_cast<char *>(const_cast<void *>(value))};
}

/// Describes the alternative of a CHOICE, whose record is its number and a pointer.
Node alternative(const pki_Type *type, const void *record, bool bare, const View &view) {
  pki_Field field;
  for (uint32_t i = 0; pki_Type_field(type, i, &field) != 0; ++i) {
    if (field.kind != *static_cast<const uint8_t *>(record)) continue;
    const void *const value = pointer_at(record, field.offset);
    if (value == nullptr && pki_Type_kind(field.type) != PKI_NULL) continue;
    const Node chosen = describe(field.type, value, view);
    Node node = Description(view).field(field.name, chosen).node();
    return bare ? shown_as(std::move(node), chosen) : node;
  }
  return {};
}

bool is_name(const pki_Type *type) {
  return std::string_view(pki_Type_name(type)) == "RDNSequence";
}

}  // namespace

Node describe(const pki_Type *type, const void *value, const View &view) {
  const Type *const row = row_of(type);
  if (row != nullptr && row->by_hand != nullptr) return row->by_hand(value, view);
  switch (pki_Type_kind(type)) {
    case PKI_ANY:
    case PKI_OCTET_STRING:
      return as<ASN1String>(value, view);
    case PKI_BOOLEAN:
      return boolean(*static_cast<const uint32_t *>(value));
    case PKI_INTEGER:
      return as<Integer>(value, view);
    case PKI_ENUMERATED: {
      const uint32_t number = *static_cast<const uint32_t *>(value);
      return text(std::to_string(number), number);
    }
    case PKI_OBJECT_IDENTIFIER:
      return as<ObjId>(value, view);
    case PKI_BIT_STRING:
      return as<BitString>(value, view);
    case PKI_CHARACTER_STRING:
      return characters(pki_Type_identifier(type), static_cast<const ASN1String *>(value), view);
    case PKI_UTC_TIME:
    case PKI_GENERALIZED_TIME:
      return time_of(pki_Type_identifier(type), static_cast<const char *>(value), view);
    case PKI_SEQUENCE:
      return Description(view).all(type, value).node();
    case PKI_SEQUENCE_OF:
    case PKI_SET_OF:
      return list_of(pki_Type_element(type), static_cast<const List *>(value), view);
    case PKI_CHOICE:
      return alternative(type, value, row != nullptr && row->bare, view);
    case PKI_NAME:
      return name_text(static_cast<const Name *>(value), view);
    case PKI_NULL:
      return text("present", true);
    case PKI_ATTRIBUTE_VALUE:
    case PKI_TYPED_CONTENT:
    case PKI_CARD_OBJECT:
    case PKI_CARD_IDENTIFIER:
    case PKI_TLS_LIST:
      break;  // no value, or one that only its record's own description knows
  }
  return {};
}

Node list_of(const pki_Type *element, const List *list, const View &view) {
  const auto describe_element = [element](const void *value, const View &at) {
    return describe(element, value, at);
  };
  return list_of<void>(list, describe_element, view);
}

Node list_of(const char *element, const List *list, const View &view) {
  return list == nullptr ? Node() : list_of(type_called(element), list, view);
}

Node record_lines(std::vector<std::string> lines) {
  if (lines.empty()) lines.emplace_back("(empty)");
  return text(std::move(lines), nullptr);
}

std::vector<std::string> flat_lines(const Node &node, const View &view) {
  if (auto lines = lines_of(node, view)) return std::move(*lines);
  const Node &here = node.shown == nullptr ? node : *node.shown;
  std::vector<std::string> lines;
  const auto add = [&](const std::string &name, const Node &part) {
    for (const std::string &line : flat_lines(part, view)) lines.push_back(name + line);
  };
  if (const auto *const fields = std::get_if<Node::Fields>(&here.value))
    for (const Node &field : *fields) add(field.name + " ", field);
  if (const auto *const items = std::get_if<Node::Items>(&here.value))
    for (size_t i = 0; i < items->count; ++i) {
      const Node item = items->at(i);
      add(item.name.empty() ? "" : item.name + " ", item);
    }
  return lines;
}

Node version(const Integer *integer) {
  Node node = number(integer);
  const uint32_t value = asn1_Integer_get(integer);
  if (integer->negative != 0 || value > 2) return node;
  std::string line = std::to_string(value) + " (v" + std::to_string(value + 1) + ")";
  return shown_as(std::move(node), text(std::move(line), nullptr));
}

Node time_of(uint8_t kind, const char *value, const View &view) {
  if (value == nullptr) return {};
  const Time time{kind, const_cast<char *>(value)};
  return text(
      view, [&] { return time_text(&time, " UTC"); }, json_of(&time));
}

Node rdn_sequence(const RDNSequence *name, const View &view) {
  if (name == nullptr) return {};
  return text(
      view, [&] { return one_line(name, view); }, Json::of_part<append_name>(name));
}

Node name_text(const Name *name, const View &view) {
  if (name == nullptr) return {};
  return text(
      view, [&] { return directory_text(name, view); }, valid_utf8(name));
}

Node characters(uint8_t tag, const ASN1String *string, const View &view) {
  if (string == nullptr) return {};
  const Octets value = octets(string);
  const auto utf8 = utf8_from_string(tag, value);
  if (!utf8) return text(hex(value), value);
  return text(
      view, [&] { return printable(*from_string(tag, value)); }, utf8->characters);
}

std::optional<std::string> text_in(Octets octets) {
  const CodePoints text = from_utf8(octets);
  if (octets.empty() || !is_safe(text)) return std::nullopt;
  return to_utf8(text);
}

Node octets_with_text(const OctetString *string, const View &view) {
  constexpr size_t most = 64;
  const auto text_inside = text_in(octets(string));
  const Node node = describe(string, view);
  auto lines = *lines_of(node, view);
  if (text_inside && lines.size() == 1)
    lines.front() += "  " + in_quotes(*text_inside);
  else if (text_inside && (view.full || text_inside->size() <= most))
    lines.push_back(in_quotes(*text_inside));
  return shown_as(node, text(std::move(lines), nullptr));
}

Description &Description::field(std::string name, Node node) {
  last_.reset();
  if (node.empty()) return *this;
  last_ = fields_.size();
  return add(std::move(name), std::move(node));
}

Description &Description::hidden(std::string name, Node node) {
  return node.empty() ? *this : add(std::move(name), tool::hidden(std::move(node)));
}

Description &Description::undecoded(std::string name, Node octets, Node shown) {
  last_ = fields_.size();
  return add(std::move(name),
             shown_as(view_.compact ? Node() : std::move(octets), std::move(shown)));
}

Description &Description::page_only(std::string name, Node node) {
  return add(std::move(name), shown_as(Node(), std::move(node)));
}

Description &Description::encoding(std::string name, const OctetString *octets) {
  return octets == nullptr || view_.compact ? *this
                                            : hidden(std::move(name), describe(octets, view_));
}

Description &Description::name(const std::string &name, const RDNSequence *sequence,
                               const OctetString *encoded) {
  hidden(name + "Sequence", rdn_sequence(sequence, view_));
  if (sequence == nullptr) return field(name, Node());
  field(name, text(
                  view_, [&] { return one_line(sequence, view_); }, utf8_text(sequence)));
  return encoding(name + "Encoded", encoded);
}

Description &Description::all(const pki_Type *type, const void *record) {
  const Type *const row = row_of(type);
  fields_.reserve(fields_.size() + 2 * size_t{pki_Type_field_count(type)});
  pki_Field field;
  for (uint32_t i = 0; pki_Type_field(type, i, &field) != 0; ++i) {
    const Hint hint = hint_for(row, field);
    const void *const value = value_at(record, field);
    const auto *const kept = static_cast<const OctetString *>(
        field.encoded_offset == PKI_NO_MEMBER ? nullptr : pointer_at(record, field.encoded_offset));
    if (is_name(field.type)) {
      name(field.name, static_cast<const RDNSequence *>(value), kept);
    } else if (hint.starts_period) {
      pki_Field end;
      pki_Type_field(type, ++i, &end);
      period(field.name, time_in(value, field.type), end.name,
             time_in(value_at(record, end), end.type));
    } else {
      // In the order of the record.
      const bool kept_first = field.encoded_offset < field.offset;
      if (kept_first) encoding(hint.kept, kept);
      this->field(field.name, value == nullptr           ? Node()
                              : hint.describe != nullptr ? hint.describe(value, view_)
                                                         : describe(field.type, value, view_));
      if (hint.in_brief) brief();
      if (!kept_first) encoding(hint.kept, kept);
      continue;
    }
    if (hint.in_brief) brief();
  }
  return *this;
}

Description &Description::period(const std::string &from_name, Time from,
                                 const std::string &until_name, Time until) {
  field(from_name, time_of(from.kind, from.value, view_));
  Node end = time_of(until.kind, until.value, view_);
  if (end.empty()) return field(until_name, Node());
  const Validity validity{&from, &until};
  const Standing state = standing(&validity, view_.moment);
  const auto line = [&] { return time_text(&until, " UTC") + ", " + state.text(); };
  field(until_name, shown_as(std::move(end), text(view_, line, nullptr, tone_of(state))));
  hidden("state", Json(name_of(state.state)));
  if (state.state == Standing::State::unknown) return *this;
  return hidden("daysLeft", Json(state.days_left));
}

Description &Description::keep(std::shared_ptr<const void> source) {
  source_ = std::move(source);
  return *this;
}

Description &Description::brief() {
  if (last_) fields_[*last_].brief = true;
  return *this;
}

Description &Description::add(std::string name, Node node) {
  node.name = std::move(name);
  fields_.push_back(std::move(node));
  return *this;
}

Node Description::node() {
  Node record;
  record.value = std::move(fields_);
  record.owner = std::move(source_);
  return record;
}

Tone tone_of(const Standing &standing) {
  if (standing.state != Standing::State::valid) return Tone::alarm;
  return standing.days_left < soon ? Tone::warning : Tone::plain;
}

}  // namespace tool
