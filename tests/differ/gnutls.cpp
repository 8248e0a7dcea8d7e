#include <gnutls/gnutls.h>
#include <gnutls/x509.h>

#include <ctime>

#include "library.h"

namespace differ {

namespace {

class Certificate {
 public:
  explicit Certificate(Octets input) {
    const gnutls_datum_t octets{const_cast<unsigned char *>(input.data()),
                                static_cast<unsigned>(input.size())};
    state_ = gnutls_x509_crt_init(&made_);
    if (state_ == 0) state_ = gnutls_x509_crt_import(made_, &octets, GNUTLS_X509_FMT_DER);
  }
  ~Certificate() { gnutls_x509_crt_deinit(made_); }
  Certificate(const Certificate &) = delete;
  Certificate &operator=(const Certificate &) = delete;

  int state() const { return state_; }
  gnutls_x509_crt_t get() const { return made_; }

 private:
  gnutls_x509_crt_t made_ = nullptr;
  int state_ = 0;
};

/// What `f(data, &size)` writes into a buffer; nothing where it fails.
template <class F>
std::optional<std::string> written(F f) {
  std::string buffer(4096, '\0');
  size_t size = buffer.size();
  if (f(buffer.data(), &size) < 0) return {};
  buffer.resize(size);
  return buffer;
}

std::string without_nul(std::string text) {
  if (!text.empty() && text.back() == '\0') text.pop_back();
  return text;
}

std::string text_of_datum(const gnutls_datum_t &datum) { return text_of(datum.data, datum.size); }

template <auto Get>
std::optional<std::string> element(gnutls_x509_crt_t certificate) {
  gnutls_datum_t datum{};
  if (Get(certificate, &datum) < 0) return {};
  std::string copy = text_of_datum(datum);
  gnutls_free(datum.data);
  return copy;
}

/// The library tells -1 for times that it cannot read and for the end that is not known, and 0 for
/// those before 1970.
std::optional<std::string> seconds(std::time_t time) {
  if (time == -1 || time == 0) return {};
  return std::to_string(time);
}

std::optional<std::string> lines_of(gnutls_x509_crt_t certificate) {
  std::string lines;
  for (unsigned i = 0;; ++i) {
    unsigned critical = 0;
    char identifier[256];
    size_t size = sizeof identifier;
    const int state =
        gnutls_x509_crt_get_extension_info(certificate, i, identifier, &size, &critical);
    if (state == GNUTLS_E_REQUESTED_DATA_NOT_AVAILABLE) return lines;
    gnutls_datum_t value{};
    if (state < 0 || gnutls_x509_crt_get_extension_data2(certificate, i, &value) < 0) return {};
    lines +=
        extension_line(without_nul(text_of(identifier, size)), critical != 0, text_of_datum(value));
    gnutls_free(value.data);
  }
}

/// The bits of GNUTLS_KEY_…, which are those of the first octet and, above them, of the second.
unsigned named_bits(unsigned usage) {
  unsigned named = 0;
  for (unsigned bit = 0; bit < 8; ++bit)
    if ((usage & 0x80U >> bit) != 0) named |= 1U << bit;
  return (usage & 0x8000U) != 0 ? named | 1U << 8 : named;
}

void tell_usage_and_limits(gnutls_x509_crt_t certificate, Answer *answer) {
  unsigned usage = 0, critical = 0, is_ca = 0;
  const int has_usage = gnutls_x509_crt_get_key_usage(certificate, &usage, &critical);
  const bool no_usage = has_usage == GNUTLS_E_REQUESTED_DATA_NOT_AVAILABLE;
  answer->facts[key_usage] = no_usage        ? none
                             : has_usage < 0 ? unreadable
                                             : std::to_string(named_bits(usage));
  int limit = -1;
  const int has_limits =
      gnutls_x509_crt_get_basic_constraints(certificate, &critical, &is_ca, &limit);
  const bool no_limits = has_limits == GNUTLS_E_REQUESTED_DATA_NOT_AVAILABLE;
  if ((has_usage < 0 && !no_usage) || (has_limits < 0 && !no_limits))
    answer->facts[may_issue] = unreadable;
  else
    answer->facts[may_issue] = issuing(has_limits >= 0 && is_ca != 0, !no_usage,
                                       (usage & GNUTLS_KEY_KEY_CERT_SIGN) != 0, limit);
}

void tell_names(gnutls_x509_crt_t certificate, Answer *answer) {
  bool broken = false;
  Names dns(&broken), mail(&broken), uri(&broken), ip(&broken);
  for (unsigned i = 0;; ++i) {
    char text[4096];
    size_t size = sizeof text;
    unsigned kind = 0;
    const int state =
        gnutls_x509_crt_get_subject_alt_name2(certificate, i, text, &size, &kind, nullptr);
    if (state == GNUTLS_E_REQUESTED_DATA_NOT_AVAILABLE) break;
    if (state < 0) {
      broken = true;
      break;
    }
    const std::string name = text_of(text, size);
    if (kind == GNUTLS_SAN_DNSNAME) dns.add_characters(name);
    if (kind == GNUTLS_SAN_RFC822NAME) mail.add_characters(name);
    if (kind == GNUTLS_SAN_URI) uri.add_characters(name);
    if (kind == GNUTLS_SAN_IPADDRESS) ip.add_address(name);
  }
  answer->facts[dns_names] = dns.fact();
  answer->facts[mail_addresses] = mail.fact();
  answer->facts[uris] = uri.fact();
  answer->facts[ip_addresses] = ip.fact();
}

}  // namespace

Answer read_gnutls(Octets input) {
  const Certificate certificate(input);
  if (certificate.state() < 0) return Answer::refused(gnutls_strerror(certificate.state()));
  gnutls_x509_crt_t made = certificate.get();
  Answer answer;
  answer.taken = true;
  auto &facts = answer.facts;
  const auto content = written(
      [made](char *data, size_t *size) { return gnutls_x509_crt_get_serial(made, data, size); });
  if (content) facts[serial] = shortest(*content);
  facts[issuer] = element<gnutls_x509_crt_get_raw_issuer_dn>(made);
  facts[subject] = element<gnutls_x509_crt_get_raw_dn>(made);
  facts[not_before] = seconds(gnutls_x509_crt_get_activation_time(made));
  facts[not_after] = seconds(gnutls_x509_crt_get_expiration_time(made));
  const auto identifier = written(
      [made](char *data, size_t *size) { return gnutls_x509_crt_get_pk_oid(made, data, size); });
  if (identifier) facts[key_algorithm] = without_nul(*identifier);
  gnutls_datum_t m{}, e{};
  if (gnutls_x509_crt_get_pk_rsa_raw(made, &m, &e) == 0) {
    facts[modulus] = magnitude(text_of_datum(m));
    gnutls_free(m.data);
    gnutls_free(e.data);
  }
  facts[extensions] = lines_of(made);
  tell_usage_and_limits(made, &answer);
  tell_names(made, &answer);
  facts[subject_key_identifier] = written([made](char *data, size_t *size) {
    return gnutls_x509_crt_get_subject_key_id(made, data, size, nullptr);
  });
  facts[authority_key_identifier] = written([made](char *data, size_t *size) {
    return gnutls_x509_crt_get_authority_key_id(made, data, size, nullptr);
  });
  return answer;
}

}  // namespace differ
