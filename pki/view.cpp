// Views: the walk over a type's fields that makes no records.
#include "core/engine.h"
#include "pki/export.h"
#include "pki/forms/content.h"
#include "pki/forms/rfc5280.h"
#include "pki/forms/seconds.h"
#include "pki/type.h"

using namespace pki;

namespace pki {
DECLARE_FORM(Certificate_TBS, Certificate_TBS, tag::sequence)
DECLARE_FORM(CertificateList_TBS, CertificateList_TBS, tag::sequence)
DECLARE_FORM(CRLEntry, CRLEntry, tag::sequence)
}  // namespace pki

namespace {

pki_Octets octets_between(const uint8_t *from, const uint8_t *to) {
  return {from, static_cast<uint32_t>(to - from)};
}

/// Whether an element of a field may begin with this octet.
bool may_begin(const Field &field, int octet) {
  if (octet < 0) return false;
  const uint8_t own = field.tagging == asn1::Tagging::none ? field.type->identifier : field.tag;
  if (own == tag::any || octet == own) return true;
  const bool constructed_too =
      field.tagging != asn1::Tagging::explicit_tag &&
      (field.type->kind == Kind::bit_string || field.type->kind == Kind::octet_string ||
       field.type->kind == Kind::character_string);
  if (constructed_too && octet == (own | tag::constructed)) return true;
  return field.type->other_identifier != 0 && octet == field.type->other_identifier;
}

bool view_field(const Field &field, ContentReader &in, pki_Octets *view) {
  *view = {};
  if (!asn1::is_there(field, in)) return true;
  const uint8_t *const from = in.position();
  const uint8_t *at = nullptr;
  if (!may_begin(field, in.peek()) || take_any(in, &at) != nullptr) return false;
  *view = octets_between(from, in.position());
  return true;
}

/// Fills in a view for each field of an exact SEQUENCE.
const uint8_t *view_fields(const Type &type, const uint8_t *z, const uint8_t *end,
                           pki_Octets *views) {
  Reader in(z, end);
  Header header;
  if (z == nullptr || end == nullptr || z >= end ||
      !in.read_exact_header(0, type.identifier, Forms::indefinite, &header, 0)) {
    return nullptr;
  }
  ContentReader content = in.exact_content(header);
  for (uint16_t i = 0; i < type.count; ++i) {
    if (!view_field(type.fields[i], content, &views[i])) return nullptr;
  }
  if (!content.close(header)) return nullptr;
  const auto whole = static_cast<size_t>(content.position() - z);
  return whole <= UINT32_MAX ? content.position() : nullptr;
}

bool view_fields(const Type &type, pki_Octets value, pki_Octets *views) {
  return view_fields(type, value.data, value.data + value.length, views) != nullptr;
}

/// The views of a record of views begin at its first member, in the order of the type's fields.
template <auto First, auto Last>
bool view_members(const Type &type, pki_Octets value,
                  typename asn1::MemberOf<decltype(First)>::Record *views) {
  constexpr size_t count =
      (asn1::offset_of<Last>() - asn1::offset_of<First>()) / sizeof(pki_Octets) + 1;
  pki_Octets found[count];
  if (type.count != count || !view_fields(type, value, found)) return false;
  std::memcpy(asn1::member_of(static_cast<void *>(views), asn1::offset_of<First>()), found,
              sizeof found);
  return true;
}

/// Opens an element: its content, and past it the end-of-contents of an indefinite one. False where
/// the octets are not one element.
bool open(pki_Octets element, pki_Octets *content) {
  if (element.data == nullptr) return false;
  Reader in(element.data, element.data + element.length);
  Header header;
  if (take_any_header(in, &header) != nullptr) return false;
  if (!header.indefinite) {
    *content = {in.position(), header.length};
    return header.length == in.left();
  }
  if (in.left() < 2) return false;
  *content = {in.position(), static_cast<uint32_t>(in.left() - 2)};
  return true;
}

bool is_same(pki_Octets octets, const uint8_t *others, uint32_t length) {
  return octets.length == length && asn1::compare_octets(octets.data, others, length) == 0;
}

bool view_extension(pki_Octets element, pki_ExtensionView *view) {
  return view_members<&pki_ExtensionView::extnID, &pki_ExtensionView::extnValue>(ExtensionType,
                                                                                 element, view);
}

/// CRLReason ::= ENUMERATED in an OCTET STRING, from the extensions of an entry.
int32_t reason_of(pki_Octets extensions) {
  constexpr uint8_t id_ce_cRLReasons[] = {0x55, 0x1D, 0x15};
  pki_ExtensionView extension;
  pki_Octets value, reason;
  if (pki_extension_view(extensions, id_ce_cRLReasons, sizeof id_ce_cRLReasons, &extension) != 1 ||
      !open(extension.extnValue, &value) || value.length == 0 || value.data[0] != tag::enumerated ||
      !open(value, &reason) || refuse_enumerated({reason.data, reason.length}) != nullptr) {
    return PKI_NO_REASON;
  }
  return reason.data[0];
}

bool read_entry(pki_Octets element, pki_CrlEntry *entry) {
  pki_Octets serial, date;
  *entry = {};
  if (!view_members<&pki_CrlEntry::serialNumber, &pki_CrlEntry::extensions>(CRLEntryType, element,
                                                                            entry) ||
      !open(entry->serialNumber, &serial) || !open(entry->revocationDate, &date) ||
      refuse_integer({serial.data, serial.length}) != nullptr) {
    return false;
  }
  if (!read_seconds(entry->revocationDate.data[0], {date.data, date.length}, &entry->revoked)) {
    entry->revoked = 0;
  }
  entry->serialNumber = serial;
  entry->revocationDate = date;
  entry->reason = reason_of(entry->extensions);
  return true;
}

}  // namespace

const uint8_t *pki_view(const pki_Type *type, const uint8_t *z, const uint8_t *end,
                        pki_Octets *fields, uint32_t count) {
  if (type == nullptr || fields == nullptr) return nullptr;
  const Type &form = asn1::type_of(type);
  if (!form.exact || form.kind != Kind::sequence || form.count != count) return nullptr;
  return view_fields(form, z, end, fields);
}

pki_Octets pki_view_content(pki_Octets element) {
  pki_Octets content{};
  return open(element, &content) ? content : pki_Octets();
}

int32_t pki_view_next(pki_Octets *content, pki_Octets *element) {
  if (content == nullptr || element == nullptr) return -1;
  if (content->data == nullptr || content->length == 0) return 0;
  const uint8_t *const from = content->data;
  const uint8_t *const end = from + content->length;
  Reader in(from, end);
  const uint8_t *at = nullptr;
  if (take_any(in, &at) != nullptr) return -1;
  *element = octets_between(from, in.position());
  *content = octets_between(in.position(), end);
  return 1;
}

const uint8_t *pki_certificate_view(const uint8_t *z, const uint8_t *end,
                                    pki_CertificateView *view) {
  if (view == nullptr) return nullptr;
  *view = {};
  pki_Octets parts[3];
  const uint8_t *const next = view_fields(CertificateType, z, end, parts);
  using View = pki_CertificateView;
  if (next == nullptr ||
      !view_members<&View::version, &View::extensions>(Certificate_TBSType, parts[0], view)) {
    return nullptr;
  }
  static_assert(offsetof(View, tbsCertificate) == 0 && offsetof(View, version) == sizeof parts);
  std::memcpy(&view->tbsCertificate, parts, sizeof parts);
  return next;
}

int32_t pki_extension_view(pki_Octets extensions, const uint8_t *identifier, uint32_t length,
                           pki_ExtensionView *view) {
  if (view == nullptr || (identifier == nullptr && length != 0)) return -1;
  if (extensions.length == 0) return 0;
  pki_Octets content, element;
  if (extensions.data != nullptr && extensions.data[0] != tag::sequence) {
    if (!open(extensions, &extensions)) return -1;
  }
  if (!open(extensions, &content) || extensions.data[0] != tag::sequence) return -1;
  for (;;) {
    const int32_t found = pki_view_next(&content, &element);
    if (found != 1) return found;
    if (!view_extension(element, view)) return -1;
    if (is_same(pki_view_content(view->extnID), identifier, length)) return 1;
  }
}

int32_t pki_crl_open(pki_CrlReader *reader, const uint8_t *z, const uint8_t *end) {
  if (reader == nullptr) return 0;
  *reader = {};
  pki_Octets parts[3];
  using View = pki_CrlReader;
  if (view_fields(CertificateRevocationListType, z, end, parts) == nullptr ||
      !view_members<&View::version, &View::extensions>(CertificateList_TBSType, parts[0], reader)) {
    return 0;
  }
  static_assert(offsetof(View, tbsCertList) == 0 && offsetof(View, version) == sizeof parts);
  std::memcpy(&reader->tbsCertList, parts, sizeof parts);
  reader->rest = pki_view_content(reader->revokedCertificates);
  return 1;
}

int32_t pki_crl_next(pki_CrlReader *reader, pki_CrlEntry *entry) {
  if (reader == nullptr || entry == nullptr) return -1;
  pki_Octets rest = reader->rest, element;
  const int32_t found = pki_view_next(&rest, &element);
  if (found != 1) return found;
  if (!read_entry(element, entry)) return -1;
  reader->rest = rest;
  return 1;
}

int32_t pki_crl_find(const pki_CrlReader *reader, const uint8_t *serial, uint32_t length,
                     pki_CrlEntry *entry) {
  if (reader == nullptr || entry == nullptr || (serial == nullptr && length != 0)) return -1;
  pki_CrlReader again = *reader;
  again.rest = pki_view_content(reader->revokedCertificates);
  for (;;) {
    const int32_t found = pki_crl_next(&again, entry);
    if (found != 1 || is_same(entry->serialNumber, serial, length)) return found;
  }
}
