#include "made.h"

#include <orvelpki.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <random>

namespace differ {

namespace {

class Random {
 public:
  explicit Random(uint64_t seed) : engine_(seed) {}

  uint64_t below(uint64_t limit) { return engine_() % limit; }
  bool one_in(uint64_t cases) { return below(cases) == 0; }

  Bytes octets(size_t size) {
    Bytes made(size);
    for (uint8_t &octet : made) octet = static_cast<uint8_t>(engine_());
    return made;
  }

  /// A text of letters, digits and dots.
  std::string text(size_t most) {
    static constexpr char characters[] =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ012345.";
    std::string made(1 + below(most), 'a');
    for (char &c : made) c = characters[below(sizeof characters - 1)];
    return made;
  }

 private:
  std::mt19937_64 engine_;
};

// ---------------------------------------------------------------------------------------------
// Elements, written without the library
// ---------------------------------------------------------------------------------------------

std::string element(uint8_t identifier, const std::string &content) {
  std::string header(1, static_cast<char>(identifier));
  std::string length;
  for (size_t rest = content.size(); rest != 0; rest >>= 8)
    length.insert(length.begin(), static_cast<char>(rest));
  if (content.size() < 0x80)
    header += static_cast<char>(content.size());
  else
    header += static_cast<char>(0x80 | length.size()) + length;
  return header + content;
}

std::string text_of(const Bytes &octets) { return differ::text_of(octets.data(), octets.size()); }

/// An OBJECT IDENTIFIER of arcs that have one octet each, but for the two of an RSA identifier.
std::string identifier(const std::string &digits) {
  std::string content;
  std::vector<uint32_t> arcs;
  for (size_t at = 0; at < digits.size(); at = std::min(digits.find('.', at), digits.size()) + 1)
    arcs.push_back(static_cast<uint32_t>(std::stoul(digits.substr(at))));
  content += static_cast<char>(arcs[0] * 40 + arcs[1]);
  for (size_t i = 2; i < arcs.size(); ++i) {
    for (uint32_t shift = 28; shift != 0; shift -= 7)
      if (arcs[i] >> shift != 0) content += static_cast<char>(0x80 | (arcs[i] >> shift & 0x7F));
    content += static_cast<char>(arcs[i] & 0x7F);
  }
  return element(0x06, content);
}

/// A positive INTEGER of these octets.
std::string positive(std::string octets) {
  octets = magnitude(octets);
  if (octets.empty() || static_cast<uint8_t>(octets[0]) >= 0x80) octets.insert(0, 1, '\0');
  return element(0x02, octets);
}

// ---------------------------------------------------------------------------------------------
// Records
// ---------------------------------------------------------------------------------------------

OctetString *string_record(const std::string &octets) {
  auto *const made = asn1_OctetString_new(static_cast<uint32_t>(octets.size()));
  if (!octets.empty()) std::memcpy(made->data, octets.data(), octets.size());
  return made;
}

Integer *number_record(const std::string &octets) {
  Integer *const made = asn1_Integer_new(static_cast<uint32_t>(octets.size()));
  if (!octets.empty()) std::memcpy(made->data, octets.data(), octets.size());
  return made;
}

BitString *bits_record(const std::string &octets) {
  BitString *const made = asn1_BitString_new(static_cast<uint32_t>(octets.size() * 8));
  std::memcpy(made->data, octets.data(), octets.size());
  return made;
}

template <class T>
std::string encoded(uint32_t (*encode)(uint8_t **, const T *), const T *record) {
  Bytes octets(encode(nullptr, record));
  uint8_t *cursor = octets.data();
  if (encode(&cursor, record) != octets.size()) octets.clear();
  return text_of(octets);
}

/// What is made: in the record, as an element, and as facts.
class Maker {
 public:
  Maker(uint64_t number, uint64_t seed) : random_(seed * 0x9E3779B97F4A7C15 + number) {}

  Made make() {
    Certificate *const record = pki_Certificate_new();
    record->tbsCertificate = pki_Certificate_TBS_new();
    Certificate_TBS &tbs = *record->tbsCertificate;
    tbs.version = asn1_Integer_set(2);
    std::string content = element(0xA0, element(0x02, std::string(1, '\2')));

    Bytes number = random_.octets(1 + random_.below(20));
    number[0] = static_cast<uint8_t>(1 + number[0] % 0xFF);
    tbs.serialNumber = number_record(text_of(number));
    const std::string serial_element = positive(text_of(number));
    facts()[serial] = serial_element.substr(2);
    content += serial_element + algorithm("1.2.840.113549.1.1.11", &tbs.signature);

    facts()[issuer] = name(&tbs.issuerSequence);
    content += *facts()[issuer];
    tbs.validity = pki_Validity_new();
    const std::string from = time(&tbs.validity->notBefore, not_before);
    content += element(0x30, from + time(&tbs.validity->notAfter, not_after));
    facts()[subject] = name(&tbs.subjectSequence);
    content += *facts()[subject];
    content += public_key(&tbs.subjectPublicKeyInfo);
    content += extension_elements(&tbs.extensions);

    const std::string signature = text_of(random_.octets(1 + random_.below(256)));
    std::string whole = element(0x30, content);
    whole += algorithm("1.2.840.113549.1.1.11", &record->signatureAlgorithm);
    whole = element(0x30, whole + element(0x03, '\0' + signature));
    record->signatureValue = bits_record(signature);

    const std::string written = encoded(pki_Certificate_e, record);
    pki_Certificate_free(record);
    made_.octets.assign(written.begin(), written.end());
    made_.der.assign(whole.begin(), whole.end());
    made_.content.taken = true;
    return std::move(made_);
  }

 private:
  decltype(Answer::facts) &facts() { return made_.content.facts; }

  std::string algorithm(const char *digits, AlgId **place) {
    *place = pki_AlgId_new();
    (*place)->algorithm = pki_ObjId_parse(digits);
    (*place)->parameters = asn1_Any_clone(asn1_Any_NULL());
    return element(0x30, identifier(digits) + element(0x05, ""));
  }

  std::string name(RDNSequence **place) {
    static constexpr const char *types[] = {"2.5.4.3", "2.5.4.10", "2.5.4.11", "2.5.4.7",
                                            "2.5.4.8"};
    static constexpr uint8_t tags[] = {0x13, 0x0C, 0x14};
    *place = List_new(0);
    std::string names;
    for (uint64_t count = 1 + random_.below(5); count != 0; --count) {
      const char *const type = types[random_.below(std::size(types))];
      const uint8_t tag = tags[random_.below(std::size(tags))];
      const std::string value = random_.text(40);
      AttributeValueAssertion *const record = pki_AttributeValueAssertion_new();
      record->type = pki_ObjId_parse(type);
      record->valueTag = tag;
      record->value = string_record(value);
      RelativeDistinguishedName *const set = List_new(0);
      List_append(set, record, 0);
      List_append(*place, set, 0);
      names += element(0x31, element(0x30, identifier(type) + element(tag, value)));
    }
    return element(0x30, names);
  }

  /// UTCTime through 2049, GeneralizedTime from 2050 (RFC 5280, 4.1.2.5).
  std::string time(Time **place, Fact fact) {
    constexpr std::time_t first = -631152000, in_2050 = 2524608000, after_9999 = 253402300800;
    const std::time_t seconds =
        first + static_cast<std::time_t>(random_.below(
                    static_cast<uint64_t>((random_.one_in(3) ? after_9999 - 1 : in_2050) - first)));
    const bool is_utc = seconds < in_2050;
    std::tm fields{};
    gmtime_r(&seconds, &fields);
    char with_century[32];
    std::strftime(with_century, sizeof with_century, "%Y%m%d%H%M%SZ", &fields);
    const char *const text = with_century + (is_utc ? 2 : 0);
    *place = asn1_Time_new();
    (*place)->kind = is_utc ? 23 : 24;
    (*place)->value = strdup(text);
    facts()[fact] = std::to_string(seconds);
    return element((*place)->kind, text);
  }

  std::string public_key(SubjectPKI **place) {
    Bytes number = random_.octets(128);
    number.front() |= 0x80;  // 1024 bits
    number.back() |= 1;      // and odd, which mbedTLS asks for
    const std::string exponent("\1\0\1", 3);
    RSAPublicKey *const rsa = pki_RSAPublicKey_new();
    rsa->modulus = number_record(text_of(number));
    rsa->publicExponent = number_record(exponent);
    *place = pki_SubjectPKI_new();
    (*place)->subjectPublicKey = bits_record(encoded(pki_RSAPublicKey_e, rsa));
    pki_RSAPublicKey_free(rsa);
    const std::string bits = element(0x30, positive(text_of(number)) + positive(exponent));
    facts()[modulus] = text_of(number);
    facts()[key] = '\0' + bits;
    facts()[key_algorithm] = "1.2.840.113549.1.1.1";
    facts()[key_info] = element(
        0x30, algorithm("1.2.840.113549.1.1.1", &(*place)->algorithm) + element(0x03, '\0' + bits));
    return *facts()[key_info];
  }

  /// Adds an extension whose value the library wrote as `value`, and has to be `der`.
  void add(Extensions *list, const std::string &digits, bool critical, const std::string &value,
           const std::string &der) {
    Extension *const record = pki_Extension_new();
    record->extnID = pki_ObjId_parse(digits.c_str());
    record->critical = critical ? 255 : 0;
    record->extnValue = string_record(value);
    List_append(list, record, 0);
    elements_ += element(
        0x30, identifier(digits) + (critical ? element(0x01, "\xFF") : "") + element(0x04, der));
    *facts()[extensions] += extension_line(digits, critical, der);
  }

  std::string extension_elements(Extensions **place) {
    Extensions *const list = List_new(0);
    facts()[extensions] = "";
    for (uint64_t others = random_.below(3); others != 0; --others) {
      const std::string value = text_of(random_.octets(random_.below(40)));
      add(list, "1.2.3." + std::to_string(random_.below(UINT32_MAX / 4) * 4 + others), false, value,
          value);
    }
    const uint64_t usage = random_.one_in(3) ? 0 : 1 + random_.below(511);
    if (usage != 0) add_usage(list, static_cast<uint32_t>(usage));
    facts()[key_usage] = usage == 0 ? none : std::to_string(usage);
    add_limits(list, usage != 0, (usage & PKI_KEY_CERT_SIGN) != 0);
    add_names(list);
    add_key_identifiers(list);
    if (elements_.empty()) {
      List_free(list, nullptr);
      facts()[extension_list] = "";
      return "";
    }
    *place = list;
    facts()[extension_list] = element(0x30, elements_);
    return element(0xA3, *facts()[extension_list]);
  }

  void add_usage(Extensions *list, uint32_t usage) {
    BitString *bits = asn1_BitString_new(0);
    uint32_t last = 0, octets[2] = {0, 0};
    for (uint32_t bit = 0; bit < 9; ++bit) {
      if ((usage & 1U << bit) == 0) continue;
      asn1_BitString_set(bits, bit, 1);
      octets[bit / 8] |= 0x80U >> bit % 8;
      last = bit;
    }
    std::string content(1, static_cast<char>(7 - last % 8));
    content += static_cast<char>(octets[0]);
    if (last == 8) content += static_cast<char>(octets[1]);
    add(list, "2.5.29.15", random_.one_in(2), encoded(pki_KeyUsage_e, bits),
        element(0x03, content));
    asn1_BitString_free(bits);
  }

  void add_limits(Extensions *list, bool has_usage, bool may_sign) {
    const bool is_there = !random_.one_in(3), is_ca = is_there && random_.one_in(2);
    const int64_t limit =
        is_ca && random_.one_in(2) ? static_cast<int64_t>(random_.below(300)) : -1;
    facts()[may_issue] = issuing(is_ca, has_usage, may_sign, limit);
    if (!is_there) return;
    BasicConstraints *const record = pki_BasicConstraints_new();
    record->cA = is_ca ? 255 : 0;
    std::string content = is_ca ? element(0x01, "\xFF") : "";
    if (limit >= 0) {
      record->pathLenConstraint = asn1_Integer_set(static_cast<uint32_t>(limit));
      content += positive({static_cast<char>(limit >> 8), static_cast<char>(limit)});
    }
    add(list, "2.5.29.19", random_.one_in(2), encoded(pki_BasicConstraints_e, record),
        element(0x30, content));
    pki_BasicConstraints_free(record);
  }

  void add_names(Extensions *list) {
    bool broken = false;
    Names dns(&broken), mail(&broken), uri(&broken), ip(&broken);
    List *const names = List_new(0);
    std::string content;
    for (uint64_t count = random_.below(6); count != 0; --count) {
      static constexpr uint8_t kinds[] = {1, 2, 6, 7};
      const uint8_t kind = kinds[random_.below(std::size(kinds))];
      std::string value = random_.text(30);
      if (kind == 1) value += "@b";
      if (kind == 6) value = "http://" + value;
      if (kind == 7) value = text_of(random_.octets(random_.one_in(2) ? 4 : 16));
      (kind == 1 ? mail : kind == 2 ? dns : kind == 6 ? uri : ip).add(value);
      GeneralName *const record = pki_GeneralName_new();
      record->kind = kind;
      record->value = string_record(value);
      List_append(names, record, 0);
      content += element(static_cast<uint8_t>(0x80 | kind), value);
    }
    if (!content.empty())
      add(list, "2.5.29.17", random_.one_in(2), encoded(pki_GeneralNames_e, names),
          element(0x30, content));
    pki_GeneralNames_free(names);
    facts()[dns_names] = dns.fact();
    facts()[mail_addresses] = mail.fact();
    facts()[uris] = uri.fact();
    facts()[ip_addresses] = ip.fact();
  }

  void add_key_identifiers(Extensions *list) {
    facts()[subject_key_identifier] = facts()[authority_key_identifier] = "";
    if (random_.one_in(2)) {
      const std::string value = text_of(random_.octets(1 + random_.below(30)));
      OctetString *const record = string_record(value);
      add(list, "2.5.29.14", false, encoded(pki_SubjectKeyIdentifier_e, record),
          element(0x04, value));
      asn1_OctetString_free(record);
      facts()[subject_key_identifier] = value;
    }
    if (random_.one_in(2)) {
      const std::string value = text_of(random_.octets(1 + random_.below(30)));
      AuthorityKeyIdentifier *const record = pki_AuthorityKeyIdentifier_new();
      record->keyIdentifier = string_record(value);
      add(list, "2.5.29.35", false, encoded(pki_AuthorityKeyIdentifier_e, record),
          element(0x30, element(0x80, value)));
      pki_AuthorityKeyIdentifier_free(record);
      facts()[authority_key_identifier] = value;
    }
  }

  Random random_;
  Made made_;
  std::string elements_;  ///< of the extensions
};

}  // namespace

Made make(uint64_t number, uint64_t seed) { return Maker(number, seed).make(); }

}  // namespace differ
