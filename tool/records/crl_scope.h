// Which certificates a CRL is for: its issuing distribution point (RFC 5280, 5.2.5), held against what
// a certificate says.
#ifndef ORVELASN1_TOOL_RECORDS_CRL_SCOPE_H
#define ORVELASN1_TOOL_RECORDS_CRL_SCOPE_H

#include "records/revocations.h"

namespace tool {

class CrlScope {
 public:
  explicit CrlScope(const RevocationList &list);

  /// Returns what limits the list, one thing a line: "only user certificates". Returns no line for
  /// a list of all that its issuer revokes.
  const std::vector<std::string> &limits() const { return limits_; }

  /// Whether what the list says of that can be read.
  bool is_readable() const { return point_ || value_.empty(); }

  /// Whether the list says that it lists only what is revoked for some reasons.
  bool some_reasons() const { return point_ && point_->onlySomeReasons != nullptr; }

  /// Whether the list is the one that speaks of certificates of this issuer: its own, or those that
  /// name the issuer of an indirect list as the one to ask.
  bool is_of_issuer(Octets certificate) const;

  /// Says why the list is not for a certificate of its issuer: "it is for CA certificates only"; an
  /// empty text where it is.
  std::string why_not(Octets certificate) const;

 private:
  std::string issuer_;  ///< its identity
  Octets value_;        ///< of the extension
  Owned<pki_IssuingDistributionPoint> point_;
  std::vector<std::string> limits_;
};

}  // namespace tool

#endif
