// The entries of a revocation list (RFC 5280, 5.1), one after the other, without records of them.
#ifndef ORVELASN1_TOOL_RECORDS_REVOCATIONS_H
#define ORVELASN1_TOOL_RECORDS_REVOCATIONS_H

#include <orvelpki.h>

#include <functional>

#include "input/der.h"
#include "model/view.h"

namespace tool {

/// An entry of a revocation list. All octets are views of the list.
struct Revocation {
  enum : int32_t { no_reason = PKI_NO_REASON, unreadable_reason = PKI_NO_REASON - 1 };

  Octets element;               ///< the whole entry
  Octets serial;                ///< the content of the serial number in the shortest form
  Octets issuer;                ///< the Name of the one who issued the certificate
  Octets date_text;             ///< the characters of the date
  std::optional<Seconds> date;  ///< the same; nothing where they are no date
  int32_t reason = no_reason;   ///< CRLReason (5.3.1), or one of the two above
  pki_Octets extensions{};      ///< a SEQUENCE OF Extension, or none

  /// Returns "2026-01-31 12:00:00 UTC", or the characters in quotation marks.
  std::string date_for_people() const;

  /// Whether the certificate stands in a delta CRL because it is revoked no longer (5.3.1).
  bool is_removal() const;

  /// Returns the time from which on the certificate was not to be trusted (5.3.2), if it is given.
  std::optional<Seconds> invalid_since() const;
};

/// Returns "keyCompromise", or what to say in its place.
std::string reason_text(int32_t reason);

class RevocationList {
 public:
  /// Opens a list, which is made of views. Fails, with a reason, where the octets are none.
  static std::optional<RevocationList> open(Octets octets, std::optional<Fault> &fault);

  Octets issuer() const { return issuer_; }
  Octets this_update() const { return this_update_; }
  Octets next_update() const { return next_update_; }  ///< none where it is not there

  /// Returns the content of the CRL number; no octets where it is not there. Fails where it cannot
  /// be read.
  std::optional<Octets> number() const;

  /// Returns the same of the list that a delta CRL is based on.
  std::optional<Octets> base_number() const;

  /// Returns the octets of the issuing distribution point; none where it is not there. Fails where
  /// the extensions cannot be read.
  std::optional<Octets> issuing_distribution_point() const;

  using Job = std::function<void(const Revocation &entry)>;
  using Refuse = std::function<void(const Fault &fault)>;

  /// Calls `job` for each entry, in the order of the list, and `refuse` where there is none. Skips
  /// what is no entry, where it has an end.
  void for_each(const Job &job, const Refuse &refuse) const;

  /// Says what is wrong outside the entries: the name, the dates, the extensions, the numbers.
  std::vector<Fault> faults() const;

  /// Says what is wrong with an entry that `job` was called for.
  std::optional<Fault> fault(const Revocation &entry) const;

 private:
  size_t offset_of(const uint8_t *place) const {
    return static_cast<size_t>(place - octets_.data());
  }

  Octets octets_;
  Octets issuer_;
  Octets this_update_;
  Octets next_update_;
  pki_CrlReader reader_{};
};

}  // namespace tool

#endif
