#include "forms.h"

namespace attack {

namespace {

using support::element;
using support::hex;
using support::operator+;

/// A vector whose length stands in two octets in front of it.
Bytes vector(const Bytes &octets) {
  const size_t length = octets.size();
  return Bytes{static_cast<uint8_t>(length >> 8), static_cast<uint8_t>(length)} + octets;
}

const Bytes log_and_time = Bytes(32, 0xA5) + hex("00 00 01 9A BC DE F0 12");
const Bytes plain = hex("00") + log_and_time + hex("00 00 04 03") + vector(hex("30 00"));
const Bytes extended =
    hex("00") + log_and_time + vector(hex("01 02 03")) + hex("08 07") + vector({});
const Bytes unknown = hex("01 AB CD");
const Bytes only_version = hex("FF");

Bytes list(const Bytes &elements) { return element(4, vector(elements)); }

}  // namespace

std::vector<Form> rfc6962_forms() {
  return {{"pki_SignedCertificateTimestampList",
           {list(vector(plain)),
            list(vector(plain) + vector(unknown) + vector(extended) + vector(only_version))}}};
}

}  // namespace attack
