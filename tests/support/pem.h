// Reads the certificates of a PEM text, such as the file of those that a system trusts.
#ifndef ORVELASN1_TESTS_PEM_H
#define ORVELASN1_TESTS_PEM_H

#include <cstdint>
#include <string_view>
#include <vector>

namespace support {

/// The file in which Debian keeps the certificates that the system trusts.
constexpr const char *trust_store = "/etc/ssl/certs/ca-certificates.crt";

/// Returns the octets of a base64 text. Skips what is not a digit of base64.
inline std::vector<uint8_t> from_base64(std::string_view text) {
  constexpr std::string_view digits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::vector<uint8_t> out;
  uint32_t bits = 0, count = 0;
  for (const char c : text) {
    const size_t digit = digits.find(c);
    if (digit == std::string_view::npos) continue;
    bits = (bits << 6 | static_cast<uint32_t>(digit)) & 0xFFFFFF;
    count += 6;
    if (count < 8) continue;
    count -= 8;
    out.push_back(static_cast<uint8_t>(bits >> count));
  }
  return out;
}

/// Returns the octets of each CERTIFICATE block, in order.
inline std::vector<std::vector<uint8_t>> certificates_of_pem(std::string_view pem) {
  constexpr std::string_view begin = "-----BEGIN CERTIFICATE-----";
  constexpr std::string_view end = "-----END CERTIFICATE-----";
  std::vector<std::vector<uint8_t>> certificates;
  for (size_t at = pem.find(begin); at != std::string_view::npos; at = pem.find(begin, at)) {
    const size_t start = at + begin.size();
    at = pem.find(end, start);
    certificates.push_back(from_base64(pem.substr(start, at - start)));
  }
  return certificates;
}

}  // namespace support

#endif
