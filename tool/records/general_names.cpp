#include "records/general_names.h"

#include <arpa/inet.h>

#include <algorithm>
#include <bit>

#include "records/distinguished_names.h"
#include "records/mail_names.h"
#include "records/values.h"
#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

constexpr uint8_t other_name = 0;
constexpr uint8_t mail = 1;
constexpr uint8_t dns = 2;
constexpr uint8_t x400_address = 3;
constexpr uint8_t directory = 4;
constexpr uint8_t edi_party = 5;
constexpr uint8_t uri = 6;
constexpr uint8_t ip_address = 7;
constexpr uint8_t registered = 8;

const char *word_for(uint8_t kind) {
  static constexpr const char *words[] = {"other name", "email", "DNS", "X.400",     "directory",
                                          "EDI party",  "URI",   "IP",  "identifier"};
  return kind < std::size(words) ? words[kind] : "unknown";
}

template <class T>
const T *value_of(const GeneralName *name) {
  return static_cast<const T *>(name->value);
}

constexpr size_t ipv4 = 4;
constexpr size_t ipv6 = 16;

}  // namespace

std::string address_text(Octets address) {
  char text[INET6_ADDRSTRLEN];
  if (address.size() != ipv4 && address.size() != ipv6) return hex(address);
  inet_ntop(address.size() == ipv4 ? AF_INET : AF_INET6, address.data(), text, sizeof text);
  return text;
}

namespace {

/// Returns "192.0.2.0/24" for an address and its mask; the mask itself where it has gaps.
std::string network_text(Octets network) {
  const size_t half = network.size() / 2;
  if (network.size() != 2 * ipv4 && network.size() != 2 * ipv6) return hex(network);
  const Octets mask = network.subspan(half);
  size_t bits = 0;
  while (bits < 8 * half && (mask[bits / 8] & (0x80 >> (bits % 8))) != 0) ++bits;
  size_t ones = 0;
  for (const uint8_t octet : mask) ones += static_cast<size_t>(std::popcount(octet));
  return address_text(network.first(half)) + "/" +
         (ones == bits ? std::to_string(bits) : address_text(mask));
}

/// Returns the value of an other name as a text, if it is a character string.
std::optional<std::string> text_of_other(const OtherName *name, const View &view) {
  const Node node = string_value(octets(name->value), view);
  const auto lines = lines_of(node, view);
  return lines ? std::optional(lines->front()) : std::nullopt;
}

/// Returns digits; of long octets the first ones only, unless all are wanted.
std::string short_hex(Octets octets, const View &view) {
  constexpr size_t most = 32;
  if (view.full || octets.size() <= most) return hex(octets);
  return hex(octets.first(most)) + "... and " + counted(octets.size() - most, "more octet");
}

/// Returns what follows the word.
std::string value_text(const GeneralName *name, const View &view) {
  switch (name->kind) {
    case other_name: {
      const auto *const other = value_of<OtherName>(name);
      const auto text = text_of_other(other, view);
      return label(other->type, view) + ", " +
             (text ? *text : short_hex(octets(other->value), view));
    }
    case mail:
    case dns:
    case uri:
      return printable(text_of(octets(value_of<IA5String>(name))));
    case directory:
      return one_line(value_of<RDNSequence>(name), view);
    case x400_address:
    case edi_party: {
      const Octets element = octets(value_of<Any>(name));
      const std::string text =
          name->kind == edi_party ? edi_party_text(element) : x400_address_text(element);
      return text.empty() ? short_hex(element, view) : text;
    }
    case ip_address:
      return address_text(octets(value_of<OctetString>(name)));
    case registered:
      return label(value_of<ObjId>(name), view);
    default:
      return "";
  }
}

template <std::string (*address)(Octets)>
void append_general_name(std::string &out, const GeneralName *name) {
  const View plain;
  JsonObject object(out);
  object.put("kind", name->kind).put("kindName", word_for(name->kind));
  switch (name->kind) {
    case other_name: {
      const auto *const other = value_of<OtherName>(name);
      append_oid(out, "type", other->type);
      object.put("value", octets(other->value));
      const Node text = string_value(octets(other->value), plain);
      if (!text.empty()) object.put("text", json_of(text));
      break;
    }
    case mail:
    case dns:
    case uri:
      object.put("value", valid_utf8(text_of(octets(value_of<IA5String>(name)))));
      break;
    case directory:
      object.put("value", utf8_text(value_of<RDNSequence>(name)));
      break;
    case x400_address:
    case edi_party:
      object.put("value", octets(value_of<Any>(name))).put("text", value_text(name, plain));
      break;
    case ip_address:
      object.put("value", address(octets(value_of<OctetString>(name))));
      break;
    case registered:
      append_oid(out, "value", value_of<ObjId>(name));
      break;
    default:
      break;
  }
}

}  // namespace

std::string general_name_text(const GeneralName *name, const View &view) {
  return std::string(word_for(name->kind)) + " " + value_text(name, view);
}

std::vector<std::string> general_name_lines(const List *names, const View &view) {
  std::vector<std::string> lines;
  for (const auto *name : elements<GeneralName>(names))
    lines.push_back(general_name_text(name, view));
  return lines;
}

Node subtree_base(const GeneralName *name, const View &view) {
  if (name->kind != ip_address) return describe(name, view);
  return text("IP " + network_text(octets(value_of<OctetString>(name))),
              Json::of_part<append_general_name<network_text>>(name));
}

// GeneralName ::= CHOICE
Node describe(const GeneralName *name, const View &view) {
  return text(
      view, [&] { return general_name_text(name, view); },
      Json::of_part<append_general_name<address_text>>(name));
}

std::vector<Type> name_types() {
  return {
      {.syntax = "pki_OtherName", .about = "a name of a kind of its own"},
      {.syntax = "pki_GeneralName",
       .about = "a name of one of several kinds",
       .by_hand = as<GeneralName>},
      {.syntax = "pki_GeneralNames", .about = "names, each of one of several kinds"},
  };
}

}  // namespace tool
