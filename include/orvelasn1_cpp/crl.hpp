// Revocation lists of any size, entry by entry, as pki_crl.h reads them: nothing is allocated.
#ifndef ORVELASN1_CPP_CRL_H
#define ORVELASN1_CPP_CRL_H

#include "../pki_crl.h"
#include "types.hpp"

namespace orvel {

/// The octets of a view of C.
inline Octets octets_of(pki_Octets octets) noexcept {
  return detail::octets_at(octets.data, octets.length);
}

/// An entry of a revocation list. Its octets are those of the list.
class CrlEntry {
 public:
  constexpr explicit CrlEntry(const pki_CrlEntry &entry) noexcept : entry_(entry) {}

  /// The content of the INTEGER, in two's complement.
  Octets serialNumber() const noexcept { return octets_of(entry_.serialNumber); }

  /// When the certificate was revoked; nothing, where the list has no time there.
  std::optional<std::chrono::sys_seconds> revocationDate() const noexcept {
    if (entry_.revoked == 0) return std::nullopt;
    return std::chrono::sys_seconds(std::chrono::seconds(entry_.revoked));
  }

  /// The CRLReason (RFC 5280, 5.3.1); nothing, where none is given or can be read.
  std::optional<std::int32_t> reason() const noexcept {
    if (entry_.reason == PKI_NO_REASON) return std::nullopt;
    return entry_.reason;
  }

  /// An Extensions, for decode<pki::Extensions>() to read; or no octets.
  Octets extensions() const noexcept { return octets_of(entry_.extensions); }

  /// The entry of C.
  constexpr const pki_CrlEntry &c() const noexcept { return entry_; }

 private:
  pki_CrlEntry entry_;
};

/// A revocation list that is read entry by entry:
///
///     auto list = CrlReader::open(octets).value();
///     while (const auto entry = list.next().value()) …
///
/// Owns nothing; the octets must outlive it.
class CrlReader {
 public:
  /// Opens the list that begins the octets. Returns its reader, or why there is none.
  static Result<CrlReader> open(Input input) {
    static const uint8_t none = 0;
    const Octets octets = input.octets();
    const uint8_t *const z = octets.data() != nullptr ? detail::raw(octets.data()) : &none;
    CrlReader reader;
    if (pki_crl_open(&reader.reader_, z, z + octets.size()) == 1) return reader;
    pki_Fault fault{};
    if (pki_explain(pki_Type_find("pki_CertificateRevocationList"), z, z + octets.size(), &fault) !=
        0)
      return Fault(fault);
    return Fault::of("the octets are no revocation list");
  }

  /// Reads the next entry. Returns it, or nothing past the last one; or a fault, where the octets
  /// there are no entry.
  Result<std::optional<CrlEntry>> next() noexcept {
    pki_CrlEntry entry;
    return found(pki_crl_next(&reader_, &entry), entry);
  }

  /// Finds the entry of a serial number, wherever next() is. Returns it, or nothing; or a fault,
  /// where the octets up to there are no entries.
  Result<std::optional<CrlEntry>> find(const Number &number) const {
    const auto encoded = encode(asn1::Integer(number.c()));
    if (!encoded) return encoded.error();
    const pki_Octets content = pki_view_content(
        {detail::raw(encoded->data()), static_cast<std::uint32_t>(encoded->size())});
    pki_CrlEntry entry;
    return found(pki_crl_find(&reader_, content.data, content.length, &entry), entry);
  }

  /// An RDNSequence, for decode<pki::RDNSequence>() to read.
  Octets issuer() const noexcept { return octets_of(reader_.issuer); }

  /// The reader of C, which has the other fields of the list.
  constexpr const pki_CrlReader &c() const noexcept { return reader_; }

 private:
  constexpr CrlReader() noexcept = default;

  static Result<std::optional<CrlEntry>> found(std::int32_t answer, const pki_CrlEntry &entry) {
    if (answer < 0) return Fault::of("the octets are no entry of a revocation list");
    if (answer == 0) return std::optional<CrlEntry>();
    return std::optional(CrlEntry(entry));
  }

  pki_CrlReader reader_{};
};

}  // namespace orvel

#endif
