// What the differential program asks of a library, each of which has a file of this folder: whether
// octets are a certificate, and what stands in it.
#ifndef ORVELASN1_TESTS_DIFFER_LIBRARY_H
#define ORVELASN1_TESTS_DIFFER_LIBRARY_H

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace differ {

using Bytes = std::vector<uint8_t>;
using Octets = std::span<const uint8_t>;

/// What is compared.
enum Fact : uint8_t {
  serial,          ///< the content of the INTEGER in the shortest form
  issuer,          ///< the element
  subject,         ///< the element
  not_before,      ///< seconds since 1970, or "unreadable"
  not_after,       ///< seconds since 1970, or "unreadable"
  key,             ///< the count of unused bits and the octets, unused bits cleared
  key_info,        ///< the element
  key_algorithm,   ///< the identifier as digits
  modulus,         ///< of an RSA key
  extensions,      ///< each in a line: identifier, "critical", value
  extension_list,  ///< the element
  key_usage,       ///< "none", "unreadable" or the bits as a number
  may_issue,       ///< "no", "unreadable" or the limit of the path's length
  dns_names,       ///< each in a line
  mail_addresses,  ///< each in a line
  uris,            ///< each in a line
  ip_addresses,    ///< each in a line
  subject_key_identifier,
  authority_key_identifier,
  fact_count
};

constexpr std::array<const char *, fact_count> fact_names{"serial number",
                                                          "issuer",
                                                          "subject",
                                                          "notBefore",
                                                          "notAfter",
                                                          "key",
                                                          "SubjectPublicKeyInfo",
                                                          "algorithm of the key",
                                                          "modulus",
                                                          "extensions",
                                                          "list of extensions",
                                                          "key usage",
                                                          "may issue",
                                                          "DNS names",
                                                          "mail addresses",
                                                          "URIs",
                                                          "IP addresses",
                                                          "subject key identifier",
                                                          "authority key identifier"};

constexpr const char *unreadable = "unreadable";
constexpr const char *none = "none";

/// What a library says of an input. A fact that it does not tell is left out.
struct Answer {
  bool taken = false;  ///< as a certificate that uses up the input
  std::string why;     ///< where it is not: in words that similar inputs share
  std::array<std::optional<std::string>, fact_count> facts;

  static Answer refused(std::string why) {
    Answer answer;
    answer.why = std::move(why);
    return answer;
  }
};

struct Library {
  const char *name;
  Answer (*read)(Octets input);
};

Answer read_ours(Octets input);
Answer read_openssl(Octets input);
Answer read_gnutls(Octets input);
Answer read_mbedtls(Octets input);

constexpr std::array<Library, 4> libraries{{{"we", read_ours},
                                            {"OpenSSL", read_openssl},
                                            {"GnuTLS", read_gnutls},
                                            {"mbedTLS", read_mbedtls}}};

constexpr const char *left_over = "octets are left over";

inline std::string text_of(const void *data, size_t size) {
  return size == 0 ? std::string() : std::string(static_cast<const char *>(data), size);
}

/// The content of an INTEGER in the shortest form (X.690, 8.3.2).
inline std::string shortest(std::string content) {
  const auto octet = [&content](size_t at) { return static_cast<uint8_t>(content[at]); };
  size_t skip = 0;
  while (skip + 1 < content.size() && ((octet(skip) == 0x00 && octet(skip + 1) < 0x80) ||
                                       (octet(skip) == 0xFF && octet(skip + 1) >= 0x80)))
    ++skip;
  return content.substr(skip);
}

/// The octets of a number that is not negative, without zeros in front.
inline std::string magnitude(std::string octets) {
  const size_t first = octets.find_first_not_of('\0');
  return first == std::string::npos ? std::string() : octets.substr(first);
}

/// The bits of a BIT STRING as a fact.
inline std::string bits_of(const uint8_t *data, size_t octets, unsigned unused) {
  std::string bits(1, static_cast<char>(unused));
  bits += text_of(data, octets);
  if (octets != 0)
    bits.back() = static_cast<char>(static_cast<uint8_t>(bits.back()) & 0xFFU << unused);
  return bits;
}

/// An extension as a line of its fact.
inline std::string extension_line(std::string_view identifier, bool critical,
                                  const std::string &value) {
  std::string line(identifier);
  line += critical ? " critical " : " ";
  static constexpr char digits[] = "0123456789abcdef";
  for (const char c : value) {
    line += digits[static_cast<uint8_t>(c) >> 4];
    line += digits[static_cast<uint8_t>(c) & 0xF];
  }
  return line + '\n';
}

/// The answer to pki_may_issue() from what a peer read. `limit` is negative where there is none.
inline std::string issuing(bool is_ca, bool has_usage, bool may_sign, int64_t limit) {
  if (!is_ca || (has_usage && !may_sign)) return "no";
  return limit < 0 || limit > UINT32_MAX ? "no limit" : std::to_string(limit);
}

/// The names of one kind, each in a line; "unreadable" where one of them is none for
/// pki_certificate.h, which tells what is not: other characters, an address of another size.
class Names {
 public:
  void add(const std::string &name) { lines_ += name + '\n'; }
  void add_characters(const std::string &name) {
    for (const char c : name) *broken_ |= c == '\0' || static_cast<uint8_t>(c) >= 0x80;
    add(name);
  }
  void add_address(const std::string &name) {
    *broken_ |= name.size() != 4 && name.size() != 16;
    add(name);
  }
  std::string fact() const { return *broken_ ? unreadable : lines_; }

  /// What cannot be read makes all kinds of an extension's names so.
  explicit Names(bool *broken) : broken_(broken) {}

 private:
  std::string lines_;
  bool *broken_;
};

}  // namespace differ

#endif
