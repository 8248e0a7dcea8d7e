// The common questions about a certificate, answered from the octets of its extensions.
#include "core/engine.h"
#include "pki/export.h"
#include "pki/forms/content.h"
#include "pki/forms/identifier.h"
#include "pki/forms/rfc5280.h"
#include "pki/forms/seconds.h"
#include "pki/type.h"

using namespace pki;

namespace pki {
DECLARE_FORM(AccessDescription, AccessDescription, tag::sequence)
DECLARE_FORM(AuthorityKeyIdentifier, AuthorityKeyIdentifier, tag::sequence)
DECLARE_FORM(BasicConstraints, BasicConstraints, tag::sequence)
DECLARE_FORM(DistributionPoint, DistributionPoint, tag::sequence)
}  // namespace pki

namespace {

constexpr uint8_t identifier_of_ocsp[] = {0x2B, 6, 1, 5, 5, 7, 0x30, 1};        // id-ad-ocsp
constexpr uint8_t identifier_of_ca_issuers[] = {0x2B, 6, 1, 5, 5, 7, 0x30, 2};  // id-ad-caIssuers
constexpr uint8_t identifier_of_any_purpose[] = {0x55, 0x1D, 0x25, 0};  // anyExtendedKeyUsage

template <class T>
void store(T *place, T value) {
  if (place != nullptr) *place = value;
}

// ---------------------------------------------------------------------------------------------
// Octets
// ---------------------------------------------------------------------------------------------

/// Finds the octets of the first extension with an identifier. False where there is none.
bool find_value(const Certificate *certificate, const ObjId *identifier, pki_Octets *value) {
  if (certificate == nullptr || certificate->tbsCertificate == nullptr) return false;
  const Extension *const extension =
      pki_find_extension(certificate->tbsCertificate->extensions, identifier);
  if (extension == nullptr) return false;
  *value = {};
  const OctetString *const octets = extension->extnValue;
  if (octets != nullptr && octets->data != nullptr) *value = {octets->data, octets->length};
  return true;
}

/// Opens octets that are one element under an identifier octet, used up.
bool open(pki_Octets octets, uint8_t identifier, pki_Octets *content) {
  pki_Octets element;
  if (octets.length == 0 || octets.data[0] != identifier || pki_view_next(&octets, &element) != 1 ||
      octets.length != 0) {
    return false;
  }
  *content = pki_view_content(element);
  return true;
}

/// Finds the fields of octets that are one SEQUENCE, used up.
template <uint32_t Count>
bool view(const Type &type, pki_Octets octets, pki_Octets (&fields)[Count]) {
  const uint8_t *const end = octets.data + octets.length;
  return octets.length != 0 &&
         pki_view(asn1::handle_of(&type), octets.data, end, fields, Count) == end;
}

/// Whether the decoder of a type takes the value that the octets begin with.
bool is_value(const Type &type, pki_Octets octets) {
  pki_Fault fault;
  return pki_explain(asn1::handle_of(&type), octets.data, octets.data + octets.length, &fault) == 0;
}

/// Reads octets that are one string, used up, segment by segment. `identifier` is that of the
/// primitive form.
template <class Take>
bool read_string(pki_Octets octets, uint8_t identifier, StringSize *size, Take take) {
  if (octets.length == 0) return false;
  Reader in(octets.data, octets.data + octets.length);
  Header header;
  Refusal refusal = nullptr;
  const uint8_t *at = nullptr;
  return in.read_exact_header(0, identifier, Forms::any, &header, 0) &&
         take_string(in, header, identifier == tag::bit_string, size, &refusal, &at, take) ==
             in.end();
}

bool is_same(pki_Octets octets, const uint8_t *others, uint32_t length) {
  return octets.length == length && asn1::compare_octets(octets.data, others, length) == 0;
}

/// Opens an OBJECT IDENTIFIER.
bool open_identifier(pki_Octets octets, pki_Octets *content) {
  return open(octets, tag::object_identifier, content) &&
         refuse_identifier({content->data, content->length}, 0) == nullptr;
}

// ---------------------------------------------------------------------------------------------
// Lists of names
// ---------------------------------------------------------------------------------------------

/// The alternatives of a GeneralName that are strings, by their identifier octets.
enum NameKind : uint8_t {
  mail_address = tag::context | 1,
  dns_name = tag::context | 2,
  uri = tag::context | 6,
  ip_address = tag::context | 7
};

bool is_characters(pki_Octets name, uint8_t identifier) {
  StringSize size;
  bool good = true;
  return read_string(name, identifier, &size,
                     [&good](View segment) {
                       for (uint32_t i = 0; i < segment.length; ++i) {
                         good = good && segment.data[i] != 0 && segment.data[i] < 0x80;
                       }
                     }) &&
         good;
}

bool is_address(pki_Octets name) {
  StringSize size;
  return read_string(name, ip_address, &size, [](View) {}) &&
         (size.octets == 4 || size.octets == 16);
}

/// The identifier octet without the bit that a string in segments has.
uint8_t kind_of(pki_Octets name) { return name.data[0] & static_cast<uint8_t>(~tag::constructed); }

bool is_name(pki_Octets name) {
  switch (kind_of(name)) {
    case mail_address:
    case dns_name:
    case uri:
      return is_characters(name, kind_of(name));
    case ip_address:
      return is_address(name);
    default:
      return is_value(GeneralNameType, name);
  }
}

/// Copies the names of one kind into a list, and counts what cannot be read.
class Names {
 public:
  explicit Names(NameKind kind) : kind_(kind), list_(List_new(0)), exhausted_(list_ == nullptr) {}
  ~Names() { List_free(list_, asn1_ASN1String_free); }
  Names(const Names &) = delete;
  Names &operator=(const Names &) = delete;

  /// Calls `f` for each element of a list's content.
  template <class F>
  void for_each(pki_Octets content, F f) {
    pki_Octets element;
    int32_t found = 0;
    while (!exhausted_ && (found = pki_view_next(&content, &element)) == 1) f(element);
    if (found < 0) refuse();
  }

  /// Takes the names in the content of a GeneralNames.
  void take_all(pki_Octets content) {
    for_each(content, [this](pki_Octets name) { take(name); });
  }

  /// Takes a name, where it is one of the kind and `wanted`.
  void take(pki_Octets name, bool wanted = true) {
    if (!is_name(name)) {
      refuse();
    } else if (wanted && kind_of(name) == kind_) {
      copy(name);
    }
  }

  /// Counts a part that cannot be read.
  void refuse() { ++unreadable_; }

  /// Hands over the list; a null pointer when memory is exhausted.
  List *list(uint32_t *unreadable) {
    store(unreadable, unreadable_);
    List *const list = exhausted_ ? nullptr : list_;
    if (list != nullptr) list_ = nullptr;
    return list;
  }

 private:
  /// The name can be read, so that it is the memory where its decoder fails.
  void copy(pki_Octets name) {
    ASN1String *string = nullptr;
    decode_form(name.data, name.data + name.length, kind_, &string, 0, OctetStringType);
    exhausted_ = string == nullptr || List_append(list_, string, 0) == 0;
    if (exhausted_) asn1_ASN1String_free(string);
  }

  NameKind kind_;
  List *list_;
  bool exhausted_;
  uint32_t unreadable_ = 0;
};

/// Lists the names of one kind in an extension, whose content `take(names, content)` reads.
template <class Take>
List *list_names(const Certificate *certificate, const ObjId *extension, NameKind kind,
                 uint32_t *unreadable, Take take) {
  store(unreadable, uint32_t{0});
  if (certificate == nullptr) return nullptr;
  Names names(kind);
  pki_Octets value, content;
  if (find_value(certificate, extension, &value)) {
    if (open(value, tag::sequence, &content)) {
      take(names, content);
    } else {
      names.refuse();
    }
  }
  return names.list(unreadable);
}

List *names_of_subject(const Certificate *certificate, NameKind kind, uint32_t *unreadable) {
  return list_names(certificate, asn1_Get_id_ce_subjectAltName(), kind, unreadable,
                    [](Names &names, pki_Octets content) { names.take_all(content); });
}

/// Takes the full name of a DistributionPoint.
void take_point(Names &names, pki_Octets point) {
  constexpr uint8_t full_name = tag::context | tag::constructed;  // [0]
  constexpr uint8_t relative_name = tag::context | tag::constructed | 1;
  pki_Octets fields[3], content;
  if (!view(DistributionPointType, point, fields)) return names.refuse();
  if (fields[0].length == 0) return;  // known by its issuer alone
  const pki_Octets name = pki_view_content(fields[0]);
  if (open(name, full_name, &content)) return names.take_all(content);
  if (!open(name, relative_name, &content)) names.refuse();
}

/// Lists the URIs of an access method, which is given as the content of its identifier.
template <uint32_t Length>
List *places(const Certificate *certificate, const uint8_t (&method)[Length],
             uint32_t *unreadable) {
  const auto take_description = [&method](Names &names, pki_Octets description) {
    pki_Octets fields[2], identifier;
    if (!view(AccessDescriptionType, description, fields) ||
        !open_identifier(fields[0], &identifier)) {
      names.refuse();
    } else {
      names.take(fields[1], is_same(identifier, method, Length));
    }
  };
  return list_names(certificate, asn1_Get_id_pe_authorityInfoAccess(), uri, unreadable,
                    [&](Names &names, pki_Octets content) {
                      names.for_each(content,
                                     [&](pki_Octets element) { take_description(names, element); });
                    });
}

// ---------------------------------------------------------------------------------------------
// Purposes and limits
// ---------------------------------------------------------------------------------------------

/// Looks for an identifier, given as its content octets, in an ExtKeyUsageSyntax.
int32_t find_purpose(pki_Octets value, const uint8_t *purpose, uint32_t length) {
  pki_Octets content, element, identifier;
  if (!open(value, tag::sequence, &content)) return -1;
  int32_t answer = 0, found = 0;
  while ((found = pki_view_next(&content, &element)) == 1) {
    if (!open_identifier(element, &identifier)) return -1;
    if (is_same(identifier, purpose, length) ||
        is_same(identifier, identifier_of_any_purpose, sizeof identifier_of_any_purpose)) {
      answer = 1;
    }
  }
  return found < 0 ? -1 : answer;
}

/// The number in the content of an INTEGER that is not negative; UINT32_MAX where that is less.
uint32_t at_most_32_bits(pki_Octets content) {
  uint64_t number = 0;
  for (uint32_t i = 0; i < content.length && number <= UINT32_MAX; ++i) {
    number = number << 8 | content.data[i];
  }
  return number < UINT32_MAX ? static_cast<uint32_t>(number) : UINT32_MAX;
}

}  // namespace

const Extension *pki_find_extension(const Extensions *extensions, const ObjId *identifier) {
  if (identifier == nullptr) return nullptr;
  for (int32_t i = 0; i < List_len(extensions); ++i) {
    const auto *const extension = static_cast<const Extension *>(List_get(extensions, i));
    if (extension != nullptr && extension->extnID != nullptr &&
        asn1_ObjId_cmp(extension->extnID, identifier) == 0) {
      return extension;
    }
  }
  return nullptr;
}

List *pki_dns_names(const Certificate *certificate, uint32_t *unreadable) {
  return names_of_subject(certificate, dns_name, unreadable);
}

List *pki_mail_addresses(const Certificate *certificate, uint32_t *unreadable) {
  return names_of_subject(certificate, mail_address, unreadable);
}

List *pki_uris(const Certificate *certificate, uint32_t *unreadable) {
  return names_of_subject(certificate, uri, unreadable);
}

List *pki_ip_addresses(const Certificate *certificate, uint32_t *unreadable) {
  return names_of_subject(certificate, ip_address, unreadable);
}

int32_t pki_key_usage(const Certificate *certificate, uint32_t *usage) {
  constexpr uint32_t named_bits = 9;
  store(usage, uint32_t{0});
  if (certificate == nullptr) return -1;
  pki_Octets value;
  if (!find_value(certificate, asn1_Get_id_ce_keyUsage(), &value)) return 0;
  StringSize size;
  uint32_t bits = 0, octets = 0;  // the first octet's highest bit is the bit 0
  if (!read_string(value, tag::bit_string, &size, [&](View segment) {
        for (uint32_t i = 0; i < segment.length && octets < sizeof bits; ++i, ++octets) {
          bits |= uint32_t{segment.data[i]} << (24 - 8 * octets);
        }
      })) {
    return -1;
  }
  uint32_t named = 0;
  for (uint32_t i = 0; i < named_bits && i < size.octets * 8 - size.unused; ++i) {
    if ((bits & 0x80000000U >> i) != 0) named |= 1U << i;
  }
  store(usage, named);
  return 1;
}

int32_t pki_allows_purpose(const Certificate *certificate, const ObjId *purpose) {
  if (certificate == nullptr || purpose == nullptr) return -1;
  const uint32_t length = identifier_octets(*purpose);
  if (length == 0) return -1;
  pki_Octets value;
  if (!find_value(certificate, asn1_Get_id_ce_extKeyUsage(), &value)) return 1;
  auto *const octets = asn1::new_array<uint8_t>(length);
  if (octets == nullptr) return -1;
  write_identifier(*purpose, octets);
  const int32_t answer = find_purpose(value, octets, length);
  std::free(octets);
  return answer;
}

int32_t pki_may_issue(const Certificate *certificate, uint32_t *path_length) {
  store(path_length, uint32_t{0});
  uint32_t usage = 0;
  const int32_t has_usage = pki_key_usage(certificate, &usage);
  if (has_usage < 0) return -1;
  pki_Octets value, fields[2];
  if (!find_value(certificate, asn1_Get_id_ce_basicConstraints(), &value)) return 0;
  if (!is_value(BasicConstraintsType, value) || !view(BasicConstraintsType, value, fields)) {
    return -1;
  }
  const pki_Octets is_ca = pki_view_content(fields[0]), limit = pki_view_content(fields[1]);
  if (limit.length != 0 && limit.data[0] >= 0x80) return -1;
  if (is_ca.length == 0 || is_ca.data[0] == 0) return 0;
  if (has_usage == 1 && (usage & PKI_KEY_CERT_SIGN) == 0) return 0;
  store(path_length, limit.length == 0 ? UINT32_MAX : at_most_32_bits(limit));
  return 1;
}

pki_Octets pki_subject_key_identifier(const Certificate *certificate) {
  pki_Octets value, content;
  return find_value(certificate, asn1_Get_id_ce_subjectKeyIdentifier(), &value) &&
                 open(value, tag::octet_string, &content)
             ? content
             : pki_Octets();
}

pki_Octets pki_authority_key_identifier(const Certificate *certificate) {
  pki_Octets value, fields[3], content;
  return find_value(certificate, asn1_Get_id_ce_authorityKeyIdentifier(), &value) &&
                 view(AuthorityKeyIdentifierType, value, fields) &&
                 open(fields[0], tag::context, &content)
             ? content
             : pki_Octets();
}

List *pki_crl_places(const Certificate *certificate, uint32_t *unreadable) {
  return list_names(certificate, asn1_Get_id_ce_cRLDistributionPoints(), uri, unreadable,
                    [](Names &names, pki_Octets content) {
                      names.for_each(content, [&](pki_Octets point) { take_point(names, point); });
                    });
}

List *pki_ocsp_places(const Certificate *certificate, uint32_t *unreadable) {
  return places(certificate, identifier_of_ocsp, unreadable);
}

List *pki_issuer_places(const Certificate *certificate, uint32_t *unreadable) {
  return places(certificate, identifier_of_ca_issuers, unreadable);
}

int32_t pki_validity(const Certificate *certificate, int64_t *not_before, int64_t *not_after) {
  const bool is_filled = certificate != nullptr && certificate->tbsCertificate != nullptr &&
                         certificate->tbsCertificate->validity != nullptr;
  int64_t first = 0, last = 0;
  const bool is_read =
      is_filled &&
      pki_Time_seconds(certificate->tbsCertificate->validity->notBefore, &first) == 1 &&
      pki_Time_seconds(certificate->tbsCertificate->validity->notAfter, &last) == 1;
  store(not_before, is_read ? first : 0);
  store(not_after, is_read ? last : 0);
  return is_read ? 1 : 0;
}

int32_t pki_Time_seconds(const Time *time, int64_t *seconds) {
  store(seconds, int64_t{0});
  if (time == nullptr || time->value == nullptr) return 0;
  const size_t length = std::strlen(time->value);
  if (length > INT32_MAX) return 0;
  const View text{reinterpret_cast<const uint8_t *>(time->value), static_cast<uint32_t>(length)};
  int64_t read = 0;
  if (!read_seconds(time->kind, text, &read)) return 0;
  store(seconds, read);
  return 1;
}
