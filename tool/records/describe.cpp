#include "records/describe.h"

#include "records/distinguished_names.h"
#include "text/characters.h"

namespace tool {

namespace {

constexpr int64_t soon = 30;  ///< days

}  // namespace

Node time_of(uint8_t kind, const char *value) {
  if (value == nullptr) return {};
  std::string copy(value);
  const Time time{kind, copy.data()};
  return text(time_text(&time, " UTC"), json_of(&time));
}

Node rdn_sequence(const RDNSequence *name, const View &view) {
  if (name == nullptr) return {};
  return text(List_len(name) == 0 ? "(empty)" : one_line(name, view), json_of_name(name));
}

Node name_text(const Name *name, const View &view) {
  if (name == nullptr) return {};
  return text(directory_text(name, view), to_utf8(from_utf8(octets_of(name))));
}

Node characters(uint8_t tag, const ASN1String *string) {
  if (string == nullptr) return {};
  const auto value = from_string(tag, octets(string));
  if (!value) return text(hex(octets(string)), hex(octets(string)));
  return text(printable(*value), to_utf8(*value));
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
  return node.empty() ? *this : add(std::move(name), shown_as(std::move(node), Node()));
}

Description &Description::encoding(std::string name, const OctetString *octets) {
  return octets == nullptr ? *this : hidden(std::move(name), describe(octets, view_));
}

Description &Description::version(std::string name, const Integer *integer) {
  if (integer == nullptr) return field(std::move(name), Node());
  Node node = number(integer);
  const uint32_t value = asn1_Integer_get(integer);
  if (integer->negative != 0 || value > 2) return field(std::move(name), std::move(node));
  std::string line = std::to_string(value) + " (v" + std::to_string(value + 1) + ")";
  return field(std::move(name), shown_as(std::move(node), text(std::move(line), nullptr)));
}

Description &Description::name(const std::string &name, const RDNSequence *sequence,
                               const Name *text, const OctetString *encoded) {
  hidden(name + "Sequence", rdn_sequence(sequence, view_));
  Node node = name_text(text, view_);
  if (!node.empty() && sequence != nullptr)
    node = shown_as(std::move(node), rdn_sequence(sequence, view_));
  field(name, std::move(node));
  return encoding(name + "Encoded", encoded);
}

Description &Description::period(std::string from_name, Time *from, std::string until_name,
                                 Time *until) {
  field(std::move(from_name), from);
  if (until == nullptr) return field(std::move(until_name), Node());
  const Validity validity{from, until};
  const Standing state = standing(&validity, view_.moment);
  field(std::move(until_name),
        shown_as(describe(until, view_),
                 text(time_text(until, " UTC") + ", " + state.text, nullptr, tone_of(state))));
  hidden("state", text("", name_of(state.state)));
  if (state.state == Standing::State::unknown) return *this;
  return hidden("daysLeft", text("", state.days_left));
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
  return record;
}

Tone tone_of(const Standing &standing) {
  if (standing.state != Standing::State::valid) return Tone::alarm;
  return standing.days_left < soon ? Tone::warning : Tone::plain;
}

}  // namespace tool
