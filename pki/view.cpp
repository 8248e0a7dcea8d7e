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
[[gnu::always_inline]] inline bool may_begin(const Field &field, int octet) {
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

[[gnu::always_inline]] inline bool view_field(const Field &field, ContentReader &in,
                                              pki_Octets *view) {
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
  if (z == nullptr || end == nullptr ||
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

/// Opens an element that take_small_header() leaves to it.
bool open_large(pki_Octets element, pki_Octets *content) {
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

/// Opens an element: its content, and past it the end-of-contents of an indefinite one. False where
/// the octets are not one element.
[[gnu::always_inline]] inline bool open(pki_Octets element, pki_Octets *content) {
  Reader in(element.data, element.data + element.length);
  if (!take_small_header(in, &content->length)) return open_large(element, content);
  content->data = in.position();
  return in.left() == content->length;
}

bool is_same(pki_Octets octets, const uint8_t *others, uint32_t length) {
  return octets.length == length && asn1::compare_octets(octets.data, others, length) == 0;
}

bool view_extension(pki_Octets element, pki_ExtensionView *view) {
  return view_members<&pki_ExtensionView::extnID, &pki_ExtensionView::extnValue>(ExtensionType,
                                                                                 element, view);
}

/// The content of a CRLReason, which is an ENUMERATED in an OCTET STRING, from the extensions of an
/// entry. Those of nearly all entries are a reason alone: these need no walk over their fields.
pki_Octets reason_in(pki_Octets extensions) {
  constexpr uint8_t id_ce_cRLReasons[] = {0x55, 0x1D, 0x15};
  constexpr uint8_t reason_alone[] = {0x30, 0x0C, 0x30, 0x0A, 0x06, 0x03, 0x55,
                                      0x1D, 0x15, 0x04, 0x03, 0x0A, 0x01};
  constexpr uint32_t size = sizeof reason_alone;
  if (extensions.length == size + 1 && std::memcmp(extensions.data, reason_alone, size) == 0) {
    return {extensions.data + size, 1};
  }
  pki_ExtensionView extension;
  if (pki_extension_view(extensions, id_ce_cRLReasons, sizeof id_ce_cRLReasons, &extension) != 1) {
    return {};
  }
  const pki_Octets value = pki_view_content(extension.extnValue);
  const bool is_enumerated = value.length != 0 && value.data[0] == tag::enumerated;
  return is_enumerated ? pki_view_content(value) : pki_Octets();
}

int32_t reason_of(pki_Octets extensions) {
  const pki_Octets reason = reason_in(extensions);
  if (refuse_enumerated({reason.data, reason.length}) != nullptr) return PKI_NO_REASON;
  return reason.data[0];
}

/// The elements of an entry, and the content of its serial number.
struct EntryView {
  pki_Octets serialNumber, revocationDate, extensions;
  pki_Octets serial;
};

/// Takes an element that begins with this octet and has one length octet.
[[gnu::always_inline]] inline bool take_small(Reader &in, uint8_t identifier, pki_Octets *element) {
  const uint8_t *const from = in.position();
  uint32_t length = 0;
  if (in.peek() != identifier || !take_small_header(in, &length)) return false;
  *element = {from, length + 2};
  in.move_to(in.position() + length);
  return true;
}

/// Takes the next entry from the front of a list where each of its elements has one length octet,
/// as they have in nearly all lists: the walk over the fields of CRLEntryType, unrolled. False,
/// with nothing taken, for any other.
[[gnu::always_inline]] inline bool take_small_entry(pki_Octets *list, EntryView *view) {
  const uint8_t *const end = list->data + list->length;
  Reader in(list->data, end);
  pki_Octets entry;
  if (!take_small(in, tag::sequence, &entry)) return false;
  Reader fields(entry.data + 2, in.position());
  if (!take_small(fields, tag::integer, &view->serialNumber) ||
      (!take_small(fields, tag::utc_time, &view->revocationDate) &&
       !take_small(fields, tag::generalized_time, &view->revocationDate))) {
    return false;
  }
  view->extensions = {};
  if (!fields.at_end() && !take_small(fields, tag::sequence, &view->extensions)) return false;
  if (!fields.at_end()) return false;
  view->serial = {view->serialNumber.data + 2, view->serialNumber.length - 2};
  *list = octets_between(in.position(), end);
  return true;
}

/// The same for any entry. Returns as pki_crl_next() does.
[[gnu::noinline]] int32_t take_large_entry(pki_Octets *list, EntryView *view) {
  pki_Octets rest = *list, element;
  const int32_t found = pki_view_next(&rest, &element);
  if (found != 1) return found;
  if (!view_members<&EntryView::serialNumber, &EntryView::extensions>(CRLEntryType, element,
                                                                      view)) {
    return -1;
  }
  view->serial = pki_view_content(view->serialNumber);
  *list = rest;
  return 1;
}

[[gnu::always_inline]] inline int32_t take_entry(pki_Octets *list, EntryView *view) {
  pki_Octets rest = *list;
  const int32_t found = take_small_entry(&rest, view) ? 1 : take_large_entry(&rest, view);
  if (found != 1) return found;
  if (refuse_integer({view->serial.data, view->serial.length}) != nullptr) return -1;
  *list = rest;
  return 1;
}

void fill_in(pki_CrlEntry *entry, const EntryView &view) {
  pki_Octets date{};
  open(view.revocationDate, &date);
  *entry = {view.serial, date, view.extensions, 0, reason_of(view.extensions)};
  if (!read_seconds(view.revocationDate.data[0], {date.data, date.length}, &entry->revoked)) {
    entry->revoked = 0;
  }
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
  return element.data != nullptr && open(element, &content) ? content : pki_Octets();
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
  if (extensions.data == nullptr || extensions.length == 0) return 0;
  pki_Octets content, element;
  if (extensions.data[0] != tag::sequence && !open(extensions, &extensions)) return -1;
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
  EntryView view;
  const int32_t found = take_entry(&reader->rest, &view);
  if (found == 1) fill_in(entry, view);
  return found;
}

int32_t pki_crl_find(const pki_CrlReader *reader, const uint8_t *serial, uint32_t length,
                     pki_CrlEntry *entry) {
  if (reader == nullptr || entry == nullptr || (serial == nullptr && length != 0)) return -1;
  pki_Octets list = pki_view_content(reader->revokedCertificates);
  for (;;) {
    EntryView view;
    const int32_t found = take_entry(&list, &view);
    if (found != 1) return found;
    if (!is_same(view.serial, serial, length)) continue;
    fill_in(entry, view);
    return 1;
  }
}
