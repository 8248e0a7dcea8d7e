#include "records/general_names.h"

#include <arpa/inet.h>

#include "records/distinguished_names.h"
#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

constexpr uint8_t other_name = 0;
constexpr uint8_t mail = 1;
constexpr uint8_t dns = 2;
constexpr uint8_t directory = 4;
constexpr uint8_t uri = 6;
constexpr uint8_t ip_address = 7;
constexpr uint8_t registered = 8;

const char *word_for(uint8_t kind) {
  static constexpr const char *words[] = {"other name", "mail", "DNS", "unknown",   "directory",
                                          "unknown",    "URI",  "IP",  "identifier"};
  return kind < std::size(words) ? words[kind] : "unknown";
}

template <class T>
const T *value_of(const GeneralName *name) {
  return static_cast<const T *>(name->value);
}

}  // namespace

std::string address_text(Octets address) {
  constexpr size_t ipv4 = 4;
  constexpr size_t ipv6 = 16;
  char text[INET6_ADDRSTRLEN];
  if (address.size() != ipv4 && address.size() != ipv6) return hex(address);
  inet_ntop(address.size() == ipv4 ? AF_INET : AF_INET6, address.data(), text, sizeof text);
  return text;
}

std::string general_name_text(const GeneralName *name, const View &view) {
  std::string word = std::string(word_for(name->kind)) + " ";
  switch (name->kind) {
    case other_name: {
      const auto *const other = value_of<OtherName>(name);
      return word + label(other->type, view) + ", " + hex(octets(other->value));
    }
    case mail:
    case dns:
    case uri:
      return word + printable(text_of(octets(value_of<IA5String>(name))));
    case directory:
      return word + one_line(value_of<RDNSequence>(name), view);
    case ip_address:
      return word + address_text(octets(value_of<OctetString>(name)));
    case registered:
      return word + label(value_of<ObjId>(name), view);
    default:
      return word;
  }
}

std::vector<std::string> general_name_lines(const List *names, const View &view) {
  std::vector<std::string> lines;
  for (const auto *name : elements<GeneralName>(names))
    lines.push_back(general_name_text(name, view));
  return lines;
}

Json json_of(const GeneralName *name) {
  Json object = Json::object();
  object.put("kind", name->kind).put("kindName", word_for(name->kind));
  switch (name->kind) {
    case other_name: {
      const auto *const other = value_of<OtherName>(name);
      put_oid(object, "type", other->type);
      return object.put("value", hex(octets(other->value)));
    }
    case mail:
    case dns:
    case uri:
      return object.put("value", to_utf8(from_utf8(octets(value_of<IA5String>(name)))));
    case directory:
      return object.put("value", utf8_text(value_of<RDNSequence>(name)));
    case ip_address:
      return object.put("value", address_text(octets(value_of<OctetString>(name))));
    case registered:
      put_oid(object, "value", value_of<ObjId>(name));
      return object;
    default:
      return object;
  }
}

}  // namespace tool
