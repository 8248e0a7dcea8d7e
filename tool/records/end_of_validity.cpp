#include "records/end_of_validity.h"

#include <orvelpki.h>

namespace tool {

namespace {

/// Returns the moment of a time that stands in the input.
std::optional<Seconds> seconds_of(pki_Octets element) {
  constexpr uint32_t longest = 64;
  const pki_Octets content = pki_view_content(element);
  if (content.length == 0 || content.length > longest) return std::nullopt;
  std::string text(text_of(Octets(content.data, content.length)));
  if (text.find('\0') != text.npos) return std::nullopt;
  Time time{};
  time.kind = static_cast<uint8_t>(element.data[0]);
  time.value = text.data();
  return tool::seconds_of(&time);
}

}  // namespace

std::optional<Seconds> end_of_validity(Octets octets) {
  const uint8_t *const start = octets.data();
  const uint8_t *const end = start + octets.size();
  pki_CertificateView certificate;
  if (pki_certificate_view(start, end, &certificate) != nullptr) {
    pki_Octets times = pki_view_content(certificate.validity);
    pki_Octets time{};
    for (int i = 0; i < 2; ++i)
      if (pki_view_next(&times, &time) != 1) return std::nullopt;
    return seconds_of(time);
  }
  pki_CrlReader list;
  if (pki_crl_open(&list, start, end) == 1 && list.nextUpdate.length != 0)
    return seconds_of(list.nextUpdate);
  return std::nullopt;
}

}  // namespace tool
