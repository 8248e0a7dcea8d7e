#include "input/der.h"

#include <orvelpki.h>

namespace tool {

std::string text_with_offset(const Fault &fault) {
  return (fault.offset ? "offset " + std::to_string(*fault.offset) + ": " : "") + fault.text;
}

std::optional<size_t> element_size(Octets rest, const Header &header) {
  if (!header.fault.empty()) return std::nullopt;
  if (!header.indefinite) return header.size + header.length;
  // Elements of definite length are jumped over, so that only the open indefinite ones count.
  size_t open = 1;
  size_t at = header.size;
  while (open != 0) {
    const Octets here = rest.subspan(at);
    if (ber::ends_contents(here)) {
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
    const auto size = element_size(rest, header);
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
