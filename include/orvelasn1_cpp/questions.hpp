// The common questions about a certificate, as pki_certificate.h answers them; and what a signer signs and
// a response of OCSP holds.
#ifndef ORVELASN1_CPP_QUESTIONS_H
#define ORVELASN1_CPP_QUESTIONS_H

#include "oids.hpp"
#include "types.hpp"

namespace orvel {

namespace detail {

/// A list that C made of a certificate's names. E is the class of an element.
template <class E>
class Taken : public List<E> {
 public:
  using List<E>::List;
  static constexpr Calls<::List> calls{
      "",      nullptr, nullptr,
      nullptr, nullptr, [](::List *list) { List_free(list, asn1_ASN1String_free); }};
};

}  // namespace detail

/// The names that a certificate has of one kind: a range of std::string_view, or of Octets for
/// addresses. What could not be read is counted: who refuses such a certificate asks unreadable().
template <class E>
class Names {
 public:
  Names(::List *made, std::uint32_t unreadable) noexcept : list_(made), unreadable_(unreadable) {}

  auto begin() const &noexcept { return list_.begin(); }
  auto end() const &noexcept { return list_.end(); }
  std::size_t size() const noexcept { return list_->size(); }
  bool empty() const noexcept { return list_->empty(); }
  Seen<E> operator[](std::size_t index) const &noexcept { return (*list_)[index]; }

  /// How many names of the extension could not be read, of whatever kind.
  std::uint32_t unreadable() const noexcept { return unreadable_; }

 private:
  Owned<detail::Taken<E>> list_;
  std::uint32_t unreadable_;
};

namespace detail {

template <class E>
Result<Names<E>> names(::List *(*question)(const ::Certificate *, std::uint32_t *),
                       const pki::Certificate &certificate) {
  if (!certificate) return Fault::of("there is no record");
  std::uint32_t unreadable = 0;
  ::List *const made = question(certificate.c(), &unreadable);
  if (made == nullptr) return Fault::of("memory is exhausted");
  return Names<E>(made, unreadable);
}

}  // namespace detail

/// The DNS names of the subject. Fails only where memory is exhausted or there is no certificate;
/// so do the next six.
inline Result<Names<Text>> dns_names(const pki::Certificate &certificate) {
  return detail::names<Text>(pki_dns_names, certificate);
}
inline Result<Names<Text>> mail_addresses(const pki::Certificate &certificate) {
  return detail::names<Text>(pki_mail_addresses, certificate);
}
inline Result<Names<Text>> uris(const pki::Certificate &certificate) {
  return detail::names<Text>(pki_uris, certificate);
}
/// Addresses of 4 or 16 octets.
inline Result<Names<OctetText>> ip_addresses(const pki::Certificate &certificate) {
  return detail::names<OctetText>(pki_ip_addresses, certificate);
}
inline Result<Names<Text>> crl_places(const pki::Certificate &certificate) {
  return detail::names<Text>(pki_crl_places, certificate);
}
inline Result<Names<Text>> ocsp_places(const pki::Certificate &certificate) {
  return detail::names<Text>(pki_ocsp_places, certificate);
}
inline Result<Names<Text>> issuer_places(const pki::Certificate &certificate) {
  return detail::names<Text>(pki_issuer_places, certificate);
}

/// The bits of keyUsage, PKI_DIGITAL_SIGNATURE and so on. Nothing, where the certificate does not
/// have the extension, which allows every use. A fault, where it cannot be read.
inline Result<std::optional<std::uint32_t>> key_usage_of(const pki::Certificate &certificate) {
  std::uint32_t usage = 0;
  switch (pki_key_usage(certificate.c(), &usage)) {
    case 1:
      return std::optional(usage);
    case 0:
      return std::optional<std::uint32_t>();
    default:
      return Fault::of("keyUsage cannot be read");
  }
}

/// Whether extKeyUsage allows a purpose, such as oid::id_kp_serverAuth; a certificate without the
/// extension allows all.
inline Result<bool> allows_purpose(const pki::Certificate &certificate, const Oid &purpose) {
  const ::ObjId identifier = {static_cast<std::uint32_t>(purpose.arcs().size()),
                              const_cast<std::uint32_t *>(purpose.arcs().data())};
  const std::int32_t answer = pki_allows_purpose(certificate.c(), &identifier);
  if (answer < 0) return Fault::of("extKeyUsage cannot be read, or memory is exhausted");
  return answer == 1;
}

/// Whether a subject may issue certificates, and how many issuers may follow.
struct Issuing {
  bool allowed;
  std::optional<std::uint32_t> path_length;  ///< nothing: any number
};
inline Result<Issuing> may_issue(const pki::Certificate &certificate) {
  std::uint32_t length = 0;
  const std::int32_t answer = pki_may_issue(certificate.c(), &length);
  if (answer < 0) return Fault::of("basicConstraints or keyUsage cannot be read");
  if (answer == 0) return Issuing{false, 0U};
  return Issuing{true, length == UINT32_MAX ? std::nullopt : std::optional(length)};
}

/// The key identifiers; no octets, where there is none. They live as long as the record.
inline Octets subject_key_identifier(const pki::Certificate &certificate) noexcept {
  const pki_Octets found = pki_subject_key_identifier(certificate.c());
  return detail::octets_at(found.data, found.length);
}
inline Octets authority_key_identifier(const pki::Certificate &certificate) noexcept {
  const pki_Octets found = pki_authority_key_identifier(certificate.c());
  return detail::octets_at(found.data, found.length);
}

/// Whether a time lies in the validity of a certificate, its ends included.
inline bool is_valid_at(const pki::Certificate &certificate,
                        std::chrono::sys_seconds time) noexcept {
  std::int64_t not_before = 0, not_after = 0;
  return pki_validity(certificate.c(), &not_before, &not_after) == 1 &&
         time.time_since_epoch().count() >= not_before &&
         time.time_since_epoch().count() <= not_after;
}

/// The octets that the signature of a signer is made of, where there are signed attributes; nothing
/// without them, when it is made of the content itself (RFC 5652, 5.4).
inline Result<std::optional<std::vector<std::byte>>> signed_octets(const pki::SignerInfo &signer) {
  if (!signer.signedAttrs() && signer.signedAttrs_encoded().empty()) {
    return std::optional<std::vector<std::byte>>();
  }
  std::vector<std::byte> octets(pki_SignerInfo_signed_octets(nullptr, signer.c()));
  auto *cursor = reinterpret_cast<uint8_t *>(octets.data());
  if (octets.empty() || pki_SignerInfo_signed_octets(&cursor, signer.c()) == 0) {
    return Fault::of("the signed attributes cannot be written, or memory is exhausted");
  }
  return std::optional(std::move(octets));
}

/// Decodes the basic response that a response of OCSP holds. Returns it, or why there is none: the
/// responder refused, or has an answer of another type.
inline Result<Owned<pki::BasicOCSPResponse>> basic_response(const pki::OCSPResponse &response) {
  const auto holder = response.responseBytes();
  if (!holder) return detail::inside("responseBytes", Fault::of("is missing"));
  if (holder->responseType() != oid::id_pkix_ocsp_basic) {
    return detail::inside("responseBytes.responseType",
                          Fault::of("expected 1.3.6.1.5.5.7.48.1.1, found another type"));
  }
  return decode<pki::BasicOCSPResponse>(holder->response());
}

}  // namespace orvel

#endif
