#include "forms.h"

namespace attack {

namespace {

using support::element;
using support::hex;
using support::operator+;

Bytes sequence(const Bytes &content) { return element(0x30, content); }

// 10.0.32.0/20, and 10.0.64.0 to 10.0.95.255 (RFC 3779, Appendix B).
const Bytes prefix = hex("03 04 04 0A 00 20");
const Bytes range = sequence(hex("03 04 06 0A 00 40 03 04 05 0A 00 40"));
const Bytes no_bits = hex("03 01 00");
const Bytes inherit = hex("05 00");
const Bytes addresses = sequence(no_bits + prefix + range);
const Bytes unicast = sequence(hex("04 03 00 01 01") + addresses);
const Bytes inherited = sequence(hex("04 02 00 02") + inherit);

const Bytes number = hex("02 03 00 FF FE");
const Bytes numbers = sequence(hex("02 01 01 02 05 00 FF FF FF FF"));
const Bytes list = sequence(number + numbers);

}  // namespace

std::vector<Form> rfc3779_forms() {
  return {
      {"pki_IPAddrBlocks", {sequence(unicast + inherited)}},
      {"pki_IPAddressFamily", {unicast, inherited}},
      {"pki_IPAddressChoice", {addresses, inherit}},
      {"pki_IPAddressOrRange", {prefix, range, no_bits}},
      {"pki_IPAddressRange", {range}},
      {"pki_ASIdentifiers",
       {sequence(element(0xA0, list) + element(0xA1, inherit)), sequence(element(0xA1, list)),
        sequence({})}},
      {"pki_ASIdentifierChoice", {list, inherit}},
      {"pki_ASIdOrRange", {number, numbers}},
      {"pki_ASRange", {numbers}},
  };
}

}  // namespace attack
