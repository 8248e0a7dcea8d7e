// Lists of signed certificate timestamps (RFC 6962, 3.3).
#include "pki/export.h"
#include "pki/forms/timestamps.h"

using namespace pki;

namespace {

using asn1::BackWriter;
using Record = pki_SignedCertificateTimestamp;

/// Makes a string of octets in a member. Returns whether that was possible.
bool copy(OctetString **member, View octets) {
  *member = asn1_ASN1String_new(octets.length, octets.length == 0 ? nullptr : octets.data);
  return *member != nullptr;
}
bool copy(OctetString **member, const OctetString *source) {
  if (source == nullptr) return true;
  *member = asn1_OctetString_clone(source);
  return *member != nullptr;
}

/// Fills a record. Returns whether that was possible.
bool fill(Record &to, const Timestamp &from) {
  to.version = from.version;
  if (from.version != timestamp_v1) return copy(&to.opaque, from.opaque);
  std::memcpy(to.logID, from.log_id, log_id_octets);
  to.timestamp = from.milliseconds;
  to.hashAlgorithm = from.hash_algorithm;
  to.signatureAlgorithm = from.signature_algorithm;
  return (from.extensions.length == 0 || copy(&to.extensions, from.extensions)) &&
         copy(&to.signature, from.signature);
}

/// Appends a record of a timestamp to a list.
Refusal append(List *list, const Timestamp &timestamp) {
  constexpr Refusal exhausted = "memory is exhausted";
  Record *const record = pki_SignedCertificateTimestamp_new();
  if (record == nullptr) return exhausted;
  if (fill(*record, timestamp) && List_append(list, record, 0) != 0) return nullptr;
  pki_SignedCertificateTimestamp_free(record);
  return exhausted;
}

void release_list(void *list) {
  List_free(static_cast<List *>(list), pki_SignedCertificateTimestamp_free);
}

const uint8_t *decode_list(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                           uint32_t depth) {
  Reader in(z, end);
  View content;
  if (!take_primitive(in, impl_tag, tag::octet_string, depth, &content)) return nullptr;
  List *const list = List_new(0);
  if (list == nullptr) return nullptr;
  const uint8_t *at = nullptr;
  if (read_timestamps(content, &at, [list](const Timestamp &timestamp) {
        return append(list, timestamp);
      }) != nullptr) {
    release_list(list);
    return nullptr;
  }
  asn1::store(place, list);
  if (depth != 0) [[unlikely]] {
    asn1_LogByteArray(depth, content.data, static_cast<int32_t>(content.length));
  }
  return in.position();
}

// ---------------------------------------------------------------------------------------------
// Encode
// ---------------------------------------------------------------------------------------------

constexpr uint32_t length_octets = 2;
constexpr uint32_t fixed_octets = 1 + log_id_octets + 8 + length_octets + 2 + length_octets;

/// Whether a string is filled, and its octets fit a vector; one that is missing has none.
bool fits(const OctetString *string) {
  return string == nullptr ||
         (string->length <= UINT16_MAX && (string->length == 0 || string->data != nullptr));
}
uint32_t octets_of(const OctetString *string) { return string == nullptr ? 0 : string->length; }

/// The octets of an element without its length; 0 where the record is not filled.
uint32_t measure_timestamp(const Record *record) {
  if (record == nullptr) return 0;
  uint32_t octets = 0;
  if (record->version != timestamp_v1) {
    if (record->opaque == nullptr || !fits(record->opaque)) return 0;
    octets = 1 + record->opaque->length;
  } else {
    if (record->signature == nullptr || !fits(record->signature) || !fits(record->extensions)) {
      return 0;
    }
    octets = fixed_octets + octets_of(record->extensions) + record->signature->length;
  }
  return octets <= UINT16_MAX ? octets : 0;
}

/// The octets of a list without its length; 0 where there are none, or more than its length counts.
uint32_t measure_timestamps(const List *list) {
  uint32_t octets = 0;
  for (int32_t i = 0; i < List_len(list); ++i) {
    const uint32_t element = measure_timestamp(static_cast<const Record *>(List_get(list, i)));
    if (element == 0) return 0;
    octets += length_octets + element;
    if (octets > UINT16_MAX) return 0;
  }
  return octets;
}

template <class Number>
void write_number(BackWriter &out, Number number) {
  uint8_t octets[sizeof(Number)];
  for (size_t i = sizeof octets; i != 0; --i) {
    octets[i - 1] = static_cast<uint8_t>(number);
    number = static_cast<Number>(uint64_t{number} >> 8);
  }
  out.octets(octets, sizeof octets);
}

void write_vector(BackWriter &out, const OctetString *string) {
  if (string != nullptr) out.octets(string->data, string->length);
  write_number(out, static_cast<uint16_t>(octets_of(string)));
}

void write_timestamp(BackWriter &out, const Record &record) {
  if (record.version != timestamp_v1) {
    out.octets(record.opaque->data, record.opaque->length);
  } else {
    write_vector(out, record.signature);
    write_number(out, record.signatureAlgorithm);
    write_number(out, record.hashAlgorithm);
    write_vector(out, record.extensions);
    write_number(out, record.timestamp);
    out.octets(record.logID, log_id_octets);
  }
  write_number(out, record.version);
}

void write_list(BackWriter &out, const void *value) {
  const auto *const list = static_cast<const List *>(value);
  const uint32_t end = out.left();
  for (int32_t i = List_len(list); i != 0; --i) {
    const uint32_t element_end = out.left();
    write_timestamp(out, *static_cast<const Record *>(List_get(list, i - 1)));
    write_number(out, static_cast<uint16_t>(element_end - out.left()));
  }
  write_number(out, static_cast<uint16_t>(end - out.left()));
  out.header(tag::octet_string, end - out.left());
}

// SignedCertificateTimestampList ::= OCTET STRING
struct SignedCertificateTimestampListTable {
  static constexpr uint8_t identifier = tag::octet_string;
  static constexpr Type type{.kind = Kind::tls_list, .identifier = identifier, .exact = true};
  static constexpr TypeFunctions functions{
      .decode = decode_list,
      .measure = [](const void *value) -> uint32_t {
        const uint32_t octets = measure_timestamps(static_cast<const List *>(value));
        return octets == 0 ? 0 : asn1::element_octets(length_octets + octets);
      },
      .write = write_list,
      .clone = [](const void *value) -> void * {
        return List_clone(static_cast<const List *>(value), pki_SignedCertificateTimestamp_clone,
                          pki_SignedCertificateTimestamp_free);
      },
      .free = release_list};
};

}  // namespace

pki_SignedCertificateTimestamp *pki_SignedCertificateTimestamp_new() {
  return asn1::new_record<Record>();
}

void pki_SignedCertificateTimestamp_free(Record *pElement) {
  if (pElement == nullptr) return;
  asn1_OctetString_free(pElement->extensions);
  asn1_OctetString_free(pElement->signature);
  asn1_OctetString_free(pElement->opaque);
  std::free(pElement);
}

Record *pki_SignedCertificateTimestamp_clone(const Record *pElement) {
  if (pElement == nullptr) return nullptr;
  Record *const made = pki_SignedCertificateTimestamp_new();
  if (made == nullptr) return nullptr;
  *made = *pElement;
  made->extensions = made->signature = made->opaque = nullptr;
  if (copy(&made->extensions, pElement->extensions) &&
      copy(&made->signature, pElement->signature) && copy(&made->opaque, pElement->opaque)) {
    return made;
  }
  pki_SignedCertificateTimestamp_free(made);
  return nullptr;
}

EXPORT_FORM_LIST(SignedCertificateTimestampList, List, "SignedCertificateTimestampList",
                 SignedCertificateTimestampListTable)
