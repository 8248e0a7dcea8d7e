#include "input/der_reader.h"

#include <algorithm>

#include "text/characters.h"

namespace tool {

namespace {

/// Returns "3 octets after it are not DER: skipped (0A 00 00)".
std::string after_it(Octets rest) {
  constexpr size_t shown = 8;
  return counted(rest.size(), "octet") + " after it " + (rest.size() == 1 ? "is" : "are") +
         " not DER: skipped (" + spaced_hex(rest.first(std::min(shown, rest.size()))) +
         (rest.size() > shown ? " ...)" : ")");
}

}  // namespace

std::optional<Element> DerReader::operator()(Window &window) {
  const Octets rest = window.rest();
  if (rest.empty()) return std::nullopt;
  if (count_ == 0) first_ = rest[0];
  const Header header = read_header(rest);
  Element element;
  element.number = count_ + 1;
  element.offset = window.start + window.at;
  element.octets = rest;
  if (rest[0] == 0 && count_ == 0) {
    element.octets = {};
    element.fault = Fault{0, "the input begins with an octet 00, as no DER does"};
  } else if (count_ != 0 &&
             (!may_follow(rest[0]) || (!header.fault.empty() && rest[0] != first_))) {
    element.number = count_;
    element.octets = {};
    element.fault = Fault{0, after_it(rest)};
  } else if (!header.fault.empty()) {
    element.fault = Fault{0, header.fault};
  } else if (const auto size = element_size(rest, header)) {
    element.octets = rest.first(*size);
  } else {
    element.fault = Fault{0, "an indefinite length without its end-of-contents"};
  }
  // What follows may be what is missing, or belong to what is skipped.
  if (element.fault && !window.is_last) return std::nullopt;
  window.at += element.fault ? rest.size() : element.octets.size();
  ++count_;
  return element;
}

// Padding, line ends and the like are primitive and universal.
bool DerReader::may_follow(uint8_t tag) const {
  const bool tagged = (first_ & tag::class_bits) != 0;
  return tag == first_ || (tag & tag::constructed) != 0 ||
         (tagged && (tag & tag::class_bits) == (first_ & tag::class_bits));
}

}  // namespace tool
