#include <orvelpki.h>

#include <cstdlib>

#include "library.h"

namespace differ {

namespace {

std::string octets(const ASN1String *string) {
  return string == nullptr ? std::string() : text_of(string->data, string->length);
}

std::string octets(pki_Octets view) { return text_of(view.data, view.length); }

std::string number(const Integer *integer) {
  std::string content = text_of(integer->data, integer->length);
  if (integer->negative == 0) content.insert(content.begin(), '\0');
  return shortest(content);
}

std::string digits(const ObjId *identifier) {
  char *const text = pki_ObjId_text(identifier);
  std::string copy(text == nullptr ? "?" : text);
  std::free(text);
  return copy;
}

std::string bits(const BitString *string) {
  const uint32_t size = string->length / 8 + (string->length % 8 != 0);
  return bits_of(string->data, size, size * 8 - string->length);
}

std::string lines_of(const Extensions *extensions) {
  std::string lines;
  for (int32_t i = 0; i < List_len(extensions); ++i) {
    const auto *const extension = static_cast<const Extension *>(List_get(extensions, i));
    lines += extension_line(digits(extension->extnID), extension->critical != 0,
                            octets(extension->extnValue));
  }
  return lines;
}

std::string seconds(const Time *time) {
  int64_t value = 0;
  return pki_Time_seconds(time, &value) == 1 ? std::to_string(value) : unreadable;
}

std::string names(List *list, uint32_t unread) {
  std::string lines;
  for (int32_t i = 0; i < List_len(list); ++i)
    lines += octets(static_cast<const ASN1String *>(List_get(list, i))) + '\n';
  List_free(list, reinterpret_cast<List_destructor_function>(asn1_IA5String_free));
  return unread == 0 ? lines : unreadable;
}

/// The modulus of an RSA key, where the key is one.
std::optional<std::string> modulus_of(const SubjectPKI *info) {
  if (digits(info->algorithm->algorithm) != "1.2.840.113549.1.1.1") return {};  // rsaEncryption
  const BitString *const string = info->subjectPublicKey;
  const uint8_t *const end = string->data + string->length / 8;
  RSAPublicKey *made = nullptr;
  std::optional<std::string> found;
  if (string->length != 0 && string->length % 8 == 0 &&
      pki_RSAPublicKey_d(string->data, end, 0, &made, 0) == end)
    found = magnitude(number(made->modulus));
  pki_RSAPublicKey_free(made);
  return found;
}

std::string usage_of(const Certificate *certificate) {
  uint32_t usage = 0;
  const int32_t found = pki_key_usage(certificate, &usage);
  return found < 0 ? unreadable : found == 0 ? none : std::to_string(usage);
}

std::string issuing_of(const Certificate *certificate) {
  uint32_t limit = 0;
  const int32_t found = pki_may_issue(certificate, &limit);
  return found < 0             ? unreadable
         : found == 0          ? "no"
         : limit == UINT32_MAX ? "no limit"
                               : std::to_string(limit);
}

Answer facts_of(const Certificate *certificate, const pki_CertificateView &view) {
  Answer answer;
  answer.taken = true;
  auto &facts = answer.facts;
  const Certificate_TBS &tbs = *certificate->tbsCertificate;
  facts[serial] = number(tbs.serialNumber);
  facts[issuer] = octets(tbs.issuerEncoded);
  facts[subject] = octets(tbs.subjectEncoded);
  facts[not_before] = seconds(tbs.validity->notBefore);
  facts[not_after] = seconds(tbs.validity->notAfter);
  facts[key] = bits(tbs.subjectPublicKeyInfo->subjectPublicKey);
  facts[key_info] = octets(view.subjectPublicKeyInfo);
  facts[key_algorithm] = digits(tbs.subjectPublicKeyInfo->algorithm->algorithm);
  facts[modulus] = modulus_of(tbs.subjectPublicKeyInfo);
  facts[extensions] = lines_of(tbs.extensions);
  facts[extension_list] = octets(pki_view_content(view.extensions));
  facts[key_usage] = usage_of(certificate);
  facts[may_issue] = issuing_of(certificate);
  uint32_t unread = 0;
  List *list = pki_dns_names(certificate, &unread);
  facts[dns_names] = names(list, unread);
  list = pki_mail_addresses(certificate, &unread);
  facts[mail_addresses] = names(list, unread);
  list = pki_uris(certificate, &unread);
  facts[uris] = names(list, unread);
  list = pki_ip_addresses(certificate, &unread);
  facts[ip_addresses] = names(list, unread);
  facts[subject_key_identifier] = octets(pki_subject_key_identifier(certificate));
  facts[authority_key_identifier] = octets(pki_authority_key_identifier(certificate));
  return answer;
}

/// The fault without what differs from input to input: numbers, and octets in hexadecimal digits.
std::string why_not(Octets input) {
  static const pki_Type *const type = pki_Type_find("pki_Certificate");
  pki_Fault fault;
  if (pki_explain(type, input.data(), input.data() + input.size(), &fault) == 0)
    return fault.offset == input.size() ? "LAW BROKEN: pki_explain finds nothing wrong" : left_over;
  std::string why;
  bool in_number = false;
  for (const char c : std::string(fault.path) + ": " + fault.sentence) {
    const bool is_digit =
        (c >= '0' && c <= '9') || (in_number && ((c >= 'A' && c <= 'F') || c == ' '));
    if (is_digit && !in_number) why += 'n';
    if (!is_digit && in_number && c != ']' && c != ')' && c != ',') why += ' ';
    if (!is_digit) why += c;
    in_number = is_digit;
  }
  return why;
}

}  // namespace

Answer read_ours(Octets input) {
  const uint8_t *const end = input.data() + input.size();
  Certificate *certificate = nullptr;
  pki_CertificateView view;
  // A failure is NULL, and so is the end of an input without octets.
  if (pki_Certificate_d(input.data(), end, 0, &certificate, 0) != end || certificate == nullptr) {
    pki_Certificate_free(certificate);
    return Answer::refused(why_not(input));
  }
  if (pki_certificate_view(input.data(), end, &view) != end) {
    pki_Certificate_free(certificate);
    return Answer::refused("LAW BROKEN: there is no view of what was decoded");
  }
  Answer answer = facts_of(certificate, view);
  pki_Certificate_free(certificate);
  return answer;
}

}  // namespace differ
