#include <openssl/err.h>
#include <openssl/provider.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <ctime>
#include <memory>

#include "library.h"

namespace differ {

namespace {

template <class T, auto Free>
struct Freed {
  void operator()(T *made) const { Free(made); }
};
template <class T, auto Free>
using Owned = std::unique_ptr<T, Freed<T, Free>>;

std::string octets(const ASN1_STRING *string) {
  return string == nullptr ? std::string()
                           : text_of(ASN1_STRING_get0_data(string),
                                     static_cast<size_t>(ASN1_STRING_length(string)));
}

std::string number(const ASN1_INTEGER *integer) {
  unsigned char *der = nullptr;
  const int size = i2d_ASN1_INTEGER(integer, &der);
  std::string content;
  if (size > 2 && der[1] < 0x80)
    content = text_of(der + 2, static_cast<size_t>(size) - 2);
  else if (size > 3)
    content = text_of(der + 2 + (der[1] & 0x7F), static_cast<size_t>(size) - 2 - (der[1] & 0x7F));
  OPENSSL_free(der);
  return shortest(content);
}

std::string element(const X509_NAME *name) {
  const unsigned char *der = nullptr;
  size_t size = 0;
  return X509_NAME_get0_der(name, &der, &size) == 1 ? text_of(der, size) : "?";
}

std::string digits(const ASN1_OBJECT *identifier) {
  char text[1024];
  const int size = OBJ_obj2txt(text, sizeof text, identifier, 1);
  return size <= 0 || static_cast<size_t>(size) >= sizeof text ? "?" : text;
}

std::string seconds(const ASN1_TIME *time) {
  std::tm fields{};
  if (ASN1_TIME_to_tm(time, &fields) != 1) return unreadable;
  return std::to_string(timegm(&fields));
}

std::string lines_of(const X509 *certificate) {
  std::string lines;
  for (int i = 0; i < X509_get_ext_count(certificate); ++i) {
    X509_EXTENSION *const extension = X509_get_ext(certificate, i);
    lines += extension_line(digits(X509_EXTENSION_get_object(extension)),
                            X509_EXTENSION_get_critical(extension) > 0,
                            octets(X509_EXTENSION_get_data(extension)));
  }
  return lines;
}

/// An extension's value, decoded. `state` is 1 where it is there, 0 where not; -1 where it cannot
/// be read, and -2 where there are several.
template <class T>
T *value(const X509 *certificate, int identifier, int *state) {
  int critical = 0;
  void *const made = X509_get_ext_d2i(certificate, identifier, &critical, nullptr);
  *state = made != nullptr ? 1 : critical == -1 ? 0 : critical == -2 ? -2 : -1;
  return static_cast<T *>(made);
}

void tell_usage_and_limits(const X509 *certificate, Answer *answer) {
  int has_usage = 0, has_limits = 0;
  const Owned<ASN1_BIT_STRING, ASN1_BIT_STRING_free> bits(
      value<ASN1_BIT_STRING>(certificate, NID_key_usage, &has_usage));
  unsigned usage = 0;
  for (int bit = 0; bits && bit < 9; ++bit)
    if (ASN1_BIT_STRING_get_bit(bits.get(), bit) == 1) usage |= 1U << bit;
  if (has_usage != -2)
    answer->facts[key_usage] = has_usage < 0    ? unreadable
                               : has_usage == 0 ? none
                                                : std::to_string(usage);
  const Owned<BASIC_CONSTRAINTS, BASIC_CONSTRAINTS_free> limits(
      value<BASIC_CONSTRAINTS>(certificate, NID_basic_constraints, &has_limits));
  if (has_usage == -2 || has_limits == -2) return;
  std::string &answered = answer->facts[may_issue].emplace("no");
  if (has_usage < 0 || has_limits < 0) {
    answered = unreadable;
  } else if (limits) {
    int64_t limit = -1;
    if (limits->pathlen != nullptr && ASN1_INTEGER_get_int64(&limit, limits->pathlen) != 1)
      limit = INT64_MAX;
    if (limits->pathlen != nullptr && ASN1_STRING_type(limits->pathlen) == V_ASN1_NEG_INTEGER)
      answered = unreadable;
    else
      answered = issuing(limits->ca != 0, has_usage == 1, (usage & 1U << 5) != 0, limit);
  }
}

void tell_names(const X509 *certificate, Answer *answer) {
  int state = 0;
  const Owned<GENERAL_NAMES, GENERAL_NAMES_free> names(
      value<GENERAL_NAMES>(certificate, NID_subject_alt_name, &state));
  if (state == -2) return;
  bool broken = state < 0;
  Names dns(&broken), mail(&broken), uri(&broken), ip(&broken);
  for (int i = 0; names && i < sk_GENERAL_NAME_num(names.get()); ++i) {
    int kind = 0;
    const void *const found = GENERAL_NAME_get0_value(sk_GENERAL_NAME_value(names.get(), i), &kind);
    const auto name = [found] { return octets(static_cast<const ASN1_STRING *>(found)); };
    if (kind == GEN_DNS) dns.add_characters(name());
    if (kind == GEN_EMAIL) mail.add_characters(name());
    if (kind == GEN_URI) uri.add_characters(name());
    if (kind == GEN_IPADD) ip.add_address(name());
  }
  answer->facts[dns_names] = dns.fact();
  answer->facts[mail_addresses] = mail.fact();
  answer->facts[uris] = uri.fact();
  answer->facts[ip_addresses] = ip.fact();
}

void tell_key_identifiers(const X509 *certificate, Answer *answer) {
  int state = 0;
  const Owned<ASN1_OCTET_STRING, ASN1_OCTET_STRING_free> own(
      value<ASN1_OCTET_STRING>(certificate, NID_subject_key_identifier, &state));
  if (state != -2) answer->facts[subject_key_identifier] = octets(own.get());
  const Owned<AUTHORITY_KEYID, AUTHORITY_KEYID_free> authority(
      value<AUTHORITY_KEYID>(certificate, NID_authority_key_identifier, &state));
  if (state != -2)
    answer->facts[authority_key_identifier] = authority ? octets(authority->keyid) : std::string();
}

/// The first error's reason, and the first place that an error names.
std::string why_not() {
  std::string reason, place;
  const char *data = nullptr;
  int flags = 0;
  while (const unsigned long error = ERR_get_error_all(nullptr, nullptr, nullptr, &data, &flags)) {
    const char *const text = ERR_reason_error_string(error);
    if (reason.empty() && text != nullptr) reason = text;
    if (place.empty() && (flags & ERR_TXT_STRING) != 0 && data != nullptr) place = data;
  }
  return reason + (place.empty() ? "" : ", " + place);
}

/// Decodes a certificate in a context without algorithms. Otherwise each would have a key made of
/// its SubjectPublicKeyInfo, which takes longer than everything else and has no say in what is a
/// certificate.
X509 *decode(Octets input, const unsigned char **cursor) {
  static OSSL_LIB_CTX *const context = [] {
    OSSL_LIB_CTX *const made = OSSL_LIB_CTX_new();
    OSSL_PROVIDER_load(made, "null");
    return made;
  }();
  X509 *certificate = X509_new_ex(context, nullptr);
  *cursor = input.data();
  return d2i_X509(&certificate, cursor, static_cast<long>(input.size()));  // which releases it
}

}  // namespace

Answer read_openssl(Octets input) {
  ERR_clear_error();
  const unsigned char *cursor = nullptr;
  const Owned<X509, X509_free> made(decode(input, &cursor));
  if (!made) return Answer::refused(why_not());
  if (cursor != input.data() + input.size()) return Answer::refused(left_over);
  const X509 *const certificate = made.get();
  Answer answer;
  answer.taken = true;
  auto &facts = answer.facts;
  facts[serial] = number(X509_get0_serialNumber(certificate));
  facts[issuer] = element(X509_get_issuer_name(certificate));
  facts[subject] = element(X509_get_subject_name(certificate));
  facts[not_before] = seconds(X509_get0_notBefore(certificate));
  facts[not_after] = seconds(X509_get0_notAfter(certificate));
  const ASN1_BIT_STRING *const bits = X509_get0_pubkey_bitstr(certificate);
  facts[key] = bits_of(ASN1_STRING_get0_data(bits), static_cast<size_t>(ASN1_STRING_length(bits)),
                       (bits->flags & ASN1_STRING_FLAG_BITS_LEFT) != 0 ? bits->flags & 7 : 0);
  ASN1_OBJECT *algorithm = nullptr;
  if (X509_PUBKEY_get0_param(&algorithm, nullptr, nullptr, nullptr,
                             X509_get_X509_PUBKEY(certificate)) == 1)
    facts[key_algorithm] = digits(algorithm);
  facts[extensions] = lines_of(certificate);
  tell_usage_and_limits(certificate, &answer);
  tell_names(certificate, &answer);
  tell_key_identifiers(certificate, &answer);
  ERR_clear_error();
  return answer;
}

}  // namespace differ
