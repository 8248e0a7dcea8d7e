// Certificates for people, for other programs, and the reasons why one is refused.
#ifndef ORVELASN1_TOOL_CERTIFICATE_VIEW_H
#define ORVELASN1_TOOL_CERTIFICATE_VIEW_H

#include "der.h"
#include "json.h"
#include "view.h"

namespace tool {

struct CertificateView {
  static std::string show(const Certificate *certificate, const std::string &where,
                          const View &view);
  static std::string show_short(const Certificate *certificate, const View &view);
  static void put_json(Json &object, const Certificate *certificate, const View &view);
  static void forget_encodings(Certificate *certificate);
  static std::optional<Fault> explain(Octets octets);
};

}  // namespace tool

#endif
