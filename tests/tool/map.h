// What the tests of "orvelasn1 map" share: small certificates, and lines of base64.
#ifndef ORVELASN1_TESTS_TOOL_MAP_H
#define ORVELASN1_TESTS_TOOL_MAP_H

#include "records.h"

namespace tool_tests {

/// An INTEGER of three octets.
inline Bytes integer(uint32_t value) {
  return {0x02, 0x03, static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 8),
          static_cast<uint8_t>(value)};
}

/// A certificate of version 3, with this serial number, these common names, and DNS names.
inline Bytes certificate(uint32_t serial, const std::string &subject,
                         const std::vector<std::string> &names = {}) {
  const Bytes algorithm = hex(ed25519);
  Bytes extensions;
  Bytes all;
  for (const std::string &one : names) all = all + element(0x82, support::text(one));
  if (!names.empty())
    extensions =
        element(0xA3, sequence(sequence(hex("06 03 55 1D 11") + octet_string(sequence(all)))));
  return sequence(sequence(hex("A0 03 02 01 02") + integer(serial) + algorithm +
                           common_name("Example CA") +
                           sequence(element(0x17, support::text("200101000000Z")) +
                                    element(0x17, support::text("291231235959Z"))) +
                           common_name(subject) +
                           sequence(algorithm + element(0x03, Bytes(33, 0x01))) + extensions) +
                  algorithm + hex("03 02 00 01"));
}

/// Base64 in one line (RFC 4648, 4).
inline std::string base64(const Bytes &octets) {
  static constexpr char digits[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  for (size_t i = 0; i < octets.size(); i += 3) {
    uint32_t group = 0;
    const size_t count = std::min<size_t>(3, octets.size() - i);
    for (size_t j = 0; j < 3; ++j) group = group << 8 | (j < count ? octets[i + j] : 0U);
    for (size_t j = 0; j < 4; ++j) out += j <= count ? digits[group >> (18 - 6 * j) & 63] : '=';
  }
  return out;
}

/// A CRL without entries.
inline Bytes revocation_list() {
  return sequence(sequence(hex(ed25519) + common_name("Example CA") +
                           element(0x17, support::text("291101000000Z"))) +
                  hex(ed25519) + hex("03 02 00 01"));
}

}  // namespace tool_tests

#endif
