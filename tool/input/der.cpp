#include "input/der.h"

#include <orvelpki.h>

namespace tool {

std::string text_with_offset(const Fault &fault) {
  return (fault.offset ? "offset " + std::to_string(*fault.offset) + ": " : "") + fault.text;
}

Header read_header(Octets rest) {
  Header header;
  if (rest.empty()) {
    header.fault = "nothing is left";
    return header;
  }
  header.tag = rest[0];
  if ((header.tag & 0x1F) == 0x1F) {
    header.fault = "the identifier octet " + hex(rest.first(1)) + " has a number above 30";
    return header;
  }
  if (rest.size() < 2) {
    header.fault = "the input ends after the identifier octet " + hex(rest.first(1));
    return header;
  }
  const uint8_t first = rest[1];
  if (first < 0x80) {
    header.size = 2;
    header.length = first;
  } else if (first == 0x80) {
    header.size = 2;
    header.indefinite = true;
    return header;
  } else {
    const size_t count = first & 0x7F;
    if (count > 4) {
      header.fault = "a length of " + std::to_string(count) + " octets, where four are the most";
      return header;
    }
    if (rest.size() < 2 + count) {
      header.fault = "the input ends inside the length octets";
      return header;
    }
    header.size = 2 + count;
    for (const uint8_t octet : rest.subspan(2, count)) header.length = header.length << 8 | octet;
  }
  const size_t left = rest.size() - header.size;
  if (header.length > left)
    header.fault = "the header " + spaced_hex(rest.first(header.size)) + " promises " +
                   std::to_string(header.length) + " octets, but only " + std::to_string(left) +
                   " are left";
  return header;
}

std::optional<size_t> element_size(Octets rest, const Header &header) {
  if (!header.indefinite) return header.size + header.length;
  // Elements of definite length are jumped over, so that only the open indefinite ones count.
  size_t open = 1;
  size_t at = header.size;
  while (open != 0) {
    const Octets here = rest.subspan(at);
    if (here.size() >= 2 && here[0] == 0 && here[1] == 0) {
      --open;
      at += 2;
      continue;
    }
    const Header inner = read_header(here);
    if (!inner.fault.empty()) return std::nullopt;
    if (inner.indefinite) ++open;
    at += inner.size + inner.length;
  }
  return at;
}

std::string tag_name(uint8_t tag) {
  char name[48];
  return pki_identifier_name(tag, name, sizeof name);
}

std::vector<Octets> components(Octets element, size_t most) {
  std::vector<Octets> found;
  const Header outer = read_header(element);
  if (element.empty() || !outer.fault.empty()) return found;
  Octets rest = element.subspan(outer.size);
  if (!outer.indefinite) rest = rest.first(outer.length);
  while (!rest.empty() && found.size() < most) {
    const Header header = read_header(rest);
    const auto size = header.fault.empty() ? element_size(rest, header) : std::nullopt;
    if (!size) break;
    found.push_back(rest.first(*size));
    rest = rest.subspan(*size);
  }
  return found;
}

Octets component(Octets element, size_t number) {
  const auto found = components(element, number + 1);
  return number < found.size() ? found[number] : Octets();
}

}  // namespace tool
