#include "records/crl_scope.h"

#include <algorithm>

#include "records/describe.h"
#include "records/same_name.h"
#include "text/characters.h"

namespace tool {

namespace {

constexpr uint8_t directory = 4;

/// What a certificate says of the CRLs that it is in.
struct Described {
  std::string issuer;  ///< its identity
  bool is_authority = false;
  std::vector<std::string> points;   ///< the names of its distribution points
  std::vector<std::string> issuers;  ///< of CRLs, where they are others
};

/// Returns a text that two GeneralNames share where they are the same.
std::string identity(const GeneralName *name) {
  const Bytes octets = encoded([name](uint8_t **pp) { return pki_GeneralName_e(pp, name); });
  if (name->kind != directory) return hex(octets);
  return name_identity(
      octets_of(pki_view_content({octets.data(), static_cast<uint32_t>(octets.size())})));
}

std::vector<std::string> identities(const List *names) {
  std::vector<std::string> all;
  for (const auto *name : elements<GeneralName>(names)) all.push_back(identity(name));
  return all;
}

/// Returns the full names of a distribution point.
std::vector<std::string> full_names(const DistributionPointName *point) {
  constexpr uint8_t full_name = 0;
  if (point == nullptr || point->kind != full_name) return {};
  return identities(static_cast<const List *>(point->value));
}

bool have_one_in_common(const std::vector<std::string> &a, const std::vector<std::string> &b) {
  return std::ranges::any_of(
      a, [&b](const std::string &one) { return std::ranges::find(b, one) != b.end(); });
}

Octets value_of(const pki_CertificateView &view, uint8_t last_arc) {
  const uint8_t identifier[] = {0x55, 0x1D, last_arc};
  pki_ExtensionView extension;
  if (pki_extension_view(view.extensions, identifier, sizeof identifier, &extension) != 1)
    return {};
  return octets_of(pki_view_content(extension.extnValue));
}

Described certificate_in(Octets octets) {
  enum : uint8_t { basic_constraints = 19, distribution_points = 31 };
  Described certificate;
  pki_CertificateView view;
  if (pki_certificate_view(octets.data(), octets.data() + octets.size(), &view) == nullptr)
    return certificate;
  certificate.issuer = name_identity(octets_of(view.issuer));
  const auto constraints =
      decoded(pki_BasicConstraints_d, pki_BasicConstraints_free, value_of(view, basic_constraints));
  certificate.is_authority = constraints && constraints->cA != 0;
  const auto points = decoded(pki_CRLDistributionPoints_d, pki_CRLDistributionPoints_free,
                              value_of(view, distribution_points));
  for (const auto *point : elements<DistributionPoint>(points.get())) {
    std::ranges::move(full_names(point->distributionPoint), std::back_inserter(certificate.points));
    std::ranges::move(identities(point->cRLIssuer), std::back_inserter(certificate.issuers));
  }
  return certificate;
}

}  // namespace

CrlScope::CrlScope(const RevocationList &list)
    : issuer_(name_identity(list.issuer())),
      value_(list.issuing_distribution_point().value_or(Octets())),
      point_(decoded(pki_IssuingDistributionPoint_d, pki_IssuingDistributionPoint_free, value_)) {
  if (point_) limits_ = lines_of(describe(point_.get(), View()), View()).value_or(limits_);
}

bool CrlScope::is_of_issuer(Octets octets) const {
  const Described certificate = certificate_in(octets);
  return certificate.issuer == issuer_ ||
         (point_ && point_->indirectCRL != 0 &&
          std::ranges::find(certificate.issuers, issuer_) != certificate.issuers.end());
}

std::string CrlScope::why_not(Octets octets) const {
  if (!point_) return "";
  const Described certificate = certificate_in(octets);
  if (point_->onlyContainsAttributeCerts != 0) return "it is for attribute certificates only";
  if (point_->onlyContainsUserCerts != 0 && certificate.is_authority)
    return "it is for user certificates only";
  if (point_->onlyContainsCACerts != 0 && !certificate.is_authority)
    return "it is for CA certificates only";
  const auto names = full_names(point_->distributionPoint);
  if (!names.empty() && !have_one_in_common(names, certificate.points))
    return "it is for certificates that name its distribution point, " + limits_.front();
  return "";
}

}  // namespace tool
