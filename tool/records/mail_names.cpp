#include "records/mail_names.h"

#include <algorithm>

#include "input/der.h"
#include "text/characters.h"

namespace tool {

namespace {

/// Returns the characters of a string; an empty text for an element that is none.
std::string string_in(Octets element, uint8_t tag) {
  const Header header = read_header(element);
  if (!header.fault.empty() || header.indefinite || header.constructed()) return "";
  const auto characters = from_string(tag, element.subspan(header.size, header.length));
  return characters ? printable(*characters) : "";
}

std::string string_in(Octets element) {
  return element.empty() ? "" : string_in(element, element[0]);
}

/// A standard attribute of an address (X.411), by its identifier octet, and its short name
/// (ISO/IEC 10021-2, annex F).
struct Standard {
  uint8_t tag;
  const char *name;
};

constexpr Standard standards[] = {{0x61, "C"},    {0x62, "A"}, {0x80, "X121"},
                                  {0x81, "T-ID"}, {0xA2, "P"}, {0x83, "O"},
                                  {0x84, "N-ID"}, {0xA5, ""},  {0xA6, "OU"}};

/// The parts of a personal name, by their numbers.
constexpr const char *persons[] = {"S", "G", "I", "Q"};

std::string attribute_text(Octets element) {
  const auto *const known = std::ranges::find(standards, element[0], &Standard::tag);
  if (known == std::end(standards)) return "";
  const std::string name = std::string(known->name) + "=";
  if ((element[0] & tag::constructed) == 0) {
    const std::string value = string_in(element, tag::printable_string);
    return value.empty() ? "" : name + value;
  }
  std::string out;
  size_t number = 0;
  for (const Octets part : components(element, 8)) {
    const bool is_person = *known->name == '\0';
    const size_t kind = part[0] & 0x1Fu;
    if (is_person && kind >= std::size(persons)) return "";
    const std::string value = is_person ? string_in(part, tag::printable_string) : string_in(part);
    if (value.empty()) return "";
    out += out.empty() ? "" : "; ";
    out += is_person            ? std::string(persons[kind]) + "="
           : element[0] == 0xA6 ? "OU" + std::to_string(++number) + "="
                                : name;
    out += value;
  }
  return out;
}

}  // namespace

std::string x400_address_text(Octets element) {
  constexpr size_t most = 16;
  const auto parts = components(element, 2);
  // Attributes that a domain defines, and extensions, would follow.
  if (parts.size() != 1 || parts[0][0] != tag::sequence) return "";
  std::vector<std::string> words;
  for (const Octets part : components(parts[0], most)) {
    words.push_back(attribute_text(part));
    if (words.back().empty()) return "";
  }
  return joined(words, "; ");
}

std::string edi_party_text(Octets element) {
  constexpr uint8_t assigner = 0xA0;
  constexpr uint8_t party = 0xA1;
  std::string by;
  std::string name;
  for (const Octets part : components(element, 3)) {
    const std::string value = string_in(component(part, 0));
    if (value.empty() || (part[0] != assigner && part[0] != party)) return "";
    (part[0] == assigner ? by : name) = value;
  }
  return name.empty() || by.empty() ? name : name + ", assigned by " + by;
}

}  // namespace tool
