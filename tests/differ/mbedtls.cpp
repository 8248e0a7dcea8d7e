#include <mbedtls/error.h>
#include <mbedtls/oid.h>
#include <mbedtls/x509_crt.h>

#include <ctime>

#include "library.h"

namespace differ {

namespace {

std::string octets(const mbedtls_x509_buf &buffer) { return text_of(buffer.p, buffer.len); }

std::string seconds(const mbedtls_x509_time &time) {
  std::tm fields{};
  fields.tm_year = time.year - 1900;
  fields.tm_mon = time.mon - 1;
  fields.tm_mday = time.day;
  fields.tm_hour = time.hour;
  fields.tm_min = time.min;
  fields.tm_sec = time.sec;
  return std::to_string(timegm(&fields));
}

/// The bits of MBEDTLS_X509_KU_…, which are those of the first octet and, above them, of the
/// second.
unsigned named_bits(unsigned usage) {
  unsigned named = 0;
  for (unsigned bit = 0; bit < 8; ++bit)
    if ((usage & 0x80U >> bit) != 0) named |= 1U << bit;
  return (usage & 0x8000U) != 0 ? named | 1U << 8 : named;
}

Answer facts_of(const mbedtls_x509_crt &certificate) {
  Answer answer;
  answer.taken = true;
  auto &facts = answer.facts;
  facts[serial] = shortest(octets(certificate.serial));
  facts[issuer] = octets(certificate.issuer_raw);
  facts[subject] = octets(certificate.subject_raw);
  facts[not_before] = seconds(certificate.valid_from);
  facts[not_after] = seconds(certificate.valid_to);
  facts[key_info] = octets(certificate.pk_raw);
  facts[extension_list] = octets(certificate.v3_ext);
  const bool has_usage = (certificate.ext_types & MBEDTLS_X509_EXT_KEY_USAGE) != 0;
  facts[key_usage] = has_usage ? std::to_string(named_bits(certificate.key_usage)) : none;
  facts[may_issue] = issuing(certificate.ca_istrue != 0, has_usage,
                             (certificate.key_usage & MBEDTLS_X509_KU_KEY_CERT_SIGN) != 0,
                             certificate.max_pathlen - 1);
  bool broken = false;
  Names dns(&broken);
  for (const mbedtls_x509_sequence *name = &certificate.subject_alt_names;
       name != nullptr && name->buf.p != nullptr; name = name->next)
    if ((name->buf.tag & MBEDTLS_ASN1_TAG_VALUE_MASK) == MBEDTLS_X509_SAN_DNS_NAME)
      dns.add_characters(octets(name->buf));
  facts[dns_names] = dns.fact();
  return answer;
}

}  // namespace

Answer read_mbedtls(Octets input) {
  mbedtls_x509_crt certificate;
  mbedtls_x509_crt_init(&certificate);
  const int state = mbedtls_x509_crt_parse_der_nocopy(&certificate, input.data(), input.size());
  Answer answer;
  if (state != 0) {
    char why[256];
    mbedtls_strerror(state, why, sizeof why);
    answer.why = why;
  } else if (certificate.raw.len != input.size()) {
    answer.why = left_over;
  } else {
    answer = facts_of(certificate);
  }
  mbedtls_x509_crt_free(&certificate);
  return answer;
}

}  // namespace differ
