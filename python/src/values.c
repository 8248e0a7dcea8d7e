#include "values.h"

#include <orvelasn1.h>
#include <stdlib.h>
#include <string.h>

struct py_Value {
  const pki_Type *type;
  const void *record;
  py_Value *whole;     /* of which this is a part; NULL for the whole itself */
  uint32_t references; /* of the whole: itself and its parts */
};

static int is_list(pki_Kind kind) {
  return kind == PKI_SEQUENCE_OF || kind == PKI_SET_OF || kind == PKI_TLS_LIST;
}

static int is_number(pki_Kind kind) { return kind == PKI_BOOLEAN || kind == PKI_ENUMERATED; }

static int is_form(const pki_Type *type) { return strncmp(pki_Type_record(type), "pki_", 4) == 0; }

/* The only types with objects of a card are those objects and GDO. */
static int is_object(const pki_Type *type) { return pki_Type_kind(type) == PKI_CARD_OBJECT; }

static int has_sets(const pki_Type *type) {
  return strcmp(pki_Type_record(type), "GDOObjectSetOfSetOf") == 0;
}

static const void *pointer_at(const void *record, uint32_t offset) {
  const void *pointer;
  memcpy(&pointer, (const char *)record + offset, sizeof pointer);
  return pointer;
}

static int holds_objects(const pki_Type *type) {
  pki_Field field;
  return is_object(type) || (pki_Type_field(type, 0, &field) != 0 && is_object(field.type));
}

int32_t py_is_decoded(const pki_Type *type) {
  const pki_Functions *const functions = pki_Type_functions(type);
  return functions->decode != NULL && functions->free != NULL;
}

/* The library writes attributes of objects with identifiers that it does not read. */
int32_t py_is_encoded(const pki_Type *type) {
  return pki_Type_functions(type)->encode != NULL && !holds_objects(type);
}

static py_Role role_of(const GDOObject *object) {
  if (object->id == 0x20) return PY_ATTRIBUTES;
  return (object->id >= 0x10 && object->id <= 0x14) || object->id == 0x21 ? PY_CONTAINER : PY_LEAF;
}

static int all_are_shallow(const List *objects, uint32_t levels);

/* Whether no more than so many levels of objects are in an object. */
static int is_shallow(const GDOObject *object, int sets, uint32_t levels) {
  int32_t i;
  if (object == NULL || role_of(object) != PY_CONTAINER) return 1;
  if (!sets) return all_are_shallow(object->children, levels);
  for (i = 0; i < List_len(object->children); i++) {
    if (!all_are_shallow(List_get(object->children, i), levels)) return 0;
  }
  return 1;
}

static int all_are_shallow(const List *objects, uint32_t levels) {
  int32_t i;
  if (levels == 0) return List_len(objects) == 0;
  for (i = 0; i < List_len(objects); i++) {
    if (!is_shallow(List_get(objects, i), 0, levels - 1)) return 0;
  }
  return 1;
}

static int nests_too_deeply(const pki_Type *type, const void *record) {
  pki_Field field;
  uint32_t i;
  if (!holds_objects(type)) return 0;
  if (is_object(type)) return !is_shallow(record, has_sets(type), PY_DEEPEST);
  for (i = 0; pki_Type_field(type, i, &field) != 0; i++) {
    if (is_object(field.type) &&
        !is_shallow(pointer_at(record, field.offset), has_sets(field.type), PY_DEEPEST))
      return 1;
  }
  return 0;
}

/* Decodes octets that are a value. Returns the cursor past it, or NULL. */
static const uint8_t *decode(const pki_Type *type, const uint8_t *z, size_t size, void **record) {
  pki_Fault fault;
  *record = NULL;
  if (type == NULL || z == NULL || !py_is_decoded(type)) return NULL;
  /* What is no form may end the process for an input in which there is a fault. */
  if (!is_form(type) && pki_explain(type, z, z + size, &fault) != 0) return NULL;
  return pki_Type_functions(type)->decode(z, z + size, 0, record, 0);
}

int32_t py_nests_too_deeply(const pki_Type *type, const uint8_t *z, size_t size) {
  const size_t room_for_a_level = 512;
  void *record;
  int found;
  if (type == NULL || z == NULL || !holds_objects(type)) return 0;
  if (decode(type, z, size, &record) != NULL) {
    found = nests_too_deeply(type, record);
  } else {
    /* Without a fault in the octets, it is the stack or the memory. */
    void *const room = malloc(size < SIZE_MAX / room_for_a_level ? size * room_for_a_level : size);
    found = room != NULL;
    free(room);
  }
  if (record != NULL) pki_Type_functions(type)->free(record);
  return found;
}

py_Value *py_decode(const pki_Type *type, const uint8_t *z, size_t size, size_t *taken) {
  void *record;
  const uint8_t *const next = decode(type, z, size, &record);
  py_Value *value = NULL;
  if (next != NULL && (taken != NULL || next == z + size) && !nests_too_deeply(type, record))
    value = calloc(1, sizeof *value);
  if (value == NULL) {
    if (record != NULL) pki_Type_functions(type)->free(record);
    return NULL;
  }
  if (taken != NULL) *taken = (size_t)(next - z);
  value->type = type;
  value->record = record;
  value->references = 1;
  return value;
}

static void let_go(py_Value *whole) {
  if (__atomic_sub_fetch(&whole->references, 1, __ATOMIC_ACQ_REL) != 0) return;
  pki_Type_functions(whole->type)->free((void *)(uintptr_t)whole->record);
  free(whole);
}

void py_release(py_Value *value) {
  if (value == NULL) return;
  if (value->whole == NULL) {
    let_go(value);
  } else {
    let_go(value->whole);
    free(value);
  }
}

const pki_Type *py_type(const py_Value *value) { return value != NULL ? value->type : NULL; }

/* A part of a value, and where it is kept. */
typedef struct Part {
  const pki_Type *type;
  pki_Kind kind;
  const void *at;       /* the record, or the number; NULL where the part is not there */
  uint32_t kept;        /* the member with its octets, or PKI_NO_MEMBER */
  const void *holder;   /* the record of which it is a member */
  uint32_t holder_size; /* the octets of that */
} Part;

/* Goes into SEQUENCEs as the levels of an index say. Returns the number of the field in the last of
 * them, whose record is NULL where it is not there. */
static uint32_t go_into(const pki_Type **type, const void **record, uint32_t index) {
  pki_Field field;
  int shift;
  if (index >> 30 != 0) *record = NULL;
  for (shift = 24; shift > 0 && *record != NULL; shift -= PY_LEVEL) {
    const uint32_t number = index >> shift & PY_MOST_FIELDS;
    if (number == 0) continue;
    if (pki_Type_field(*type, number - 1, &field) == 0 || field.offset == PKI_NO_MEMBER ||
        pki_Type_kind(field.type) != PKI_SEQUENCE) {
      *record = NULL;
    } else {
      *record = pointer_at(*record, field.offset);
      *type = field.type;
    }
  }
  return index & PY_MOST_FIELDS;
}

static Part part_of(const py_Value *value, uint32_t index) {
  Part part = {NULL, PKI_NULL, NULL, PKI_NO_MEMBER, NULL, 0};
  const pki_Type *type;
  pki_Field field;
  pki_Kind kind;
  if (value == NULL || value->record == NULL) return part;
  type = value->type;
  kind = pki_Type_kind(type);
  part.holder = value->record;
  if (index == PY_SELF) {
    part.type = type;
    part.at = value->record;
  } else if (kind == PKI_SEQUENCE || kind == PKI_CHOICE) {
    if (kind == PKI_SEQUENCE) index = go_into(&type, &part.holder, index);
    if (part.holder == NULL || pki_Type_field(type, index, &field) == 0) return part;
    if (kind == PKI_CHOICE && *(const uint8_t *)part.holder != field.kind) return part;
    part.type = field.type;
    part.kept = field.encoded_offset;
    part.holder_size = pki_Type_size(type);
    if (is_number(pki_Type_kind(field.type)))
      part.at = (const char *)part.holder + field.offset;
    else if (field.offset != PKI_NO_MEMBER)
      part.at = pointer_at(part.holder, field.offset);
  } else if (is_list(kind)) {
    part.type = pki_Type_element(type);
    if (part.type == NULL || index > INT32_MAX) return part;
    part.at = List_get(value->record, (int32_t)index);
  }
  if (part.type != NULL) part.kind = pki_Type_kind(part.type);
  return part;
}

uint32_t py_count(const py_Value *value) {
  if (value == NULL || !is_list(pki_Type_kind(value->type))) return 0;
  return (uint32_t)List_len(value->record);
}

uint32_t py_alternative(const py_Value *value) {
  pki_Field field;
  uint32_t i;
  if (value == NULL || value->record == NULL || pki_Type_kind(value->type) != PKI_CHOICE)
    return PY_SELF;
  for (i = 0; pki_Type_field(value->type, i, &field) != 0; i++) {
    if (field.kind == *(const uint8_t *)value->record) return i;
  }
  return PY_SELF;
}

int32_t py_has(const py_Value *value, uint32_t index) { return part_of(value, index).at != NULL; }

static py_Value *make_part(const py_Value *value, const pki_Type *type, const void *record) {
  py_Value *const made = calloc(1, sizeof *made);
  py_Value *whole;
  if (made == NULL) return NULL;
  whole = value->whole != NULL ? value->whole : (py_Value *)(uintptr_t)value;
  __atomic_add_fetch(&whole->references, 1, __ATOMIC_RELAXED);
  made->type = type;
  made->record = record;
  made->whole = whole;
  return made;
}

py_Value *py_part(const py_Value *value, uint32_t index) {
  const Part part = part_of(value, index);
  if (part.at == NULL) return NULL;
  if (part.kind != PKI_SEQUENCE && part.kind != PKI_CHOICE && part.kind != PKI_CARD_OBJECT &&
      !is_list(part.kind))
    return NULL;
  return make_part(value, part.type, part.at);
}

int64_t py_number(const py_Value *value, uint32_t index) {
  const Part part = part_of(value, index);
  const Integer *integer;
  uint64_t number;
  uint32_t i;
  if (part.at == NULL) return PY_ABSENT;
  if (is_number(part.kind)) {
    uint32_t inside;
    memcpy(&inside, part.at, sizeof inside);
    return inside;
  }
  if (part.kind != PKI_INTEGER) return PY_ABSENT;
  integer = part.at;
  if (integer->length > 7)
    return PY_OTHER + 2 * (int64_t)integer->length + (integer->negative != 0);
  number = integer->negative != 0 ? UINT64_MAX : 0;
  for (i = 0; i < integer->length; i++) number = number << 8 | integer->data[i];
  return (int64_t)number;
}

/* The number of the tag of a time: of a UTCTime, a GeneralizedTime, or a CHOICE of both. */
static int time_in(Part part, Time *time) {
  pki_Field field;
  time->kind = 0;
  time->value = NULL;
  if (part.at == NULL) return 0;
  if (part.kind == PKI_UTC_TIME || part.kind == PKI_GENERALIZED_TIME) {
    time->kind = pki_Type_identifier(part.type);
    time->value = (char *)(uintptr_t)part.at;
  } else if (part.kind == PKI_CHOICE) {
    if (pki_Type_field(part.type, 0, &field) == 0) return 0;
    if (pki_Type_kind(field.type) != PKI_UTC_TIME) return 0;
    *time = *(const Time *)part.at;
  }
  return time->value != NULL;
}

int64_t py_seconds(const py_Value *value, uint32_t index) {
  Time time;
  int64_t seconds;
  if (!time_in(part_of(value, index), &time)) return PY_ABSENT;
  return pki_Time_seconds(&time, &seconds) != 0 ? seconds : PY_OTHER;
}

/* The octets of a part, and their number; or NULL. */
static const void *octets_of(Part part, int64_t *length) {
  Time time;
  *length = PY_ABSENT;
  if (part.at == NULL) return NULL;
  switch (part.kind) {
    case PKI_INTEGER:
      *length = ((const Integer *)part.at)->length;
      return ((const Integer *)part.at)->data;
    case PKI_OBJECT_IDENTIFIER:
      *length = (int64_t)sizeof(uint32_t) * ((const ObjId *)part.at)->count;
      return ((const ObjId *)part.at)->arcs;
    case PKI_BIT_STRING:
      *length = ((int64_t)((const BitString *)part.at)->length + 7) / 8;
      return ((const BitString *)part.at)->data;
    case PKI_ANY:
    case PKI_OCTET_STRING:
    case PKI_CHARACTER_STRING:
    case PKI_ATTRIBUTE_VALUE:
      *length = ((const ASN1String *)part.at)->length;
      return ((const ASN1String *)part.at)->data;
    case PKI_UTC_TIME:
    case PKI_GENERALIZED_TIME:
    case PKI_CHOICE:
      if (!time_in(part, &time)) return NULL;
      *length = (int64_t)strlen(time.value);
      return time.value;
    default:
      return NULL;
  }
}

int64_t py_length(const py_Value *value, uint32_t index) {
  int64_t length;
  octets_of(part_of(value, index), &length);
  return length;
}

const char *py_octets(const py_Value *value, uint32_t index) {
  int64_t length;
  return octets_of(part_of(value, index), &length);
}

int64_t py_bits(const py_Value *value, uint32_t index) {
  const Part part = part_of(value, index);
  if (part.at == NULL || part.kind != PKI_BIT_STRING) return PY_ABSENT;
  return ((const BitString *)part.at)->length;
}

uint32_t py_identifier(const py_Value *value, uint32_t index) {
  const Part part = part_of(value, index);
  Time time;
  if (part.at == NULL) return 0;
  if (part.kind == PKI_CHARACTER_STRING) return pki_Type_identifier(part.type);
  /* The only record with such a field is that of an attribute in a name. */
  if (part.kind == PKI_ATTRIBUTE_VALUE && part.holder_size == sizeof(AttributeValueAssertion))
    return (uint8_t)((const AttributeValueAssertion *)part.holder)->valueTag;
  return time_in(part, &time) ? time.kind : 0;
}

/* The identifiers that were read, at the places that their arcs say or shortly after. They stay. */
static ObjId *known[PY_MOST_KNOWN];

static uint32_t hash_of(const ObjId *identifier) {
  uint32_t hash = identifier->count, i;
  for (i = 0; i < identifier->count; i++) hash = (hash ^ identifier->arcs[i]) * 0x9E3779B1U;
  return hash ^ hash >> 16;
}

static int is_same(const ObjId *a, const ObjId *b) {
  return a->count == b->count && memcmp(a->arcs, b->arcs, a->count * sizeof *a->arcs) == 0;
}

int32_t py_known(const py_Value *value, uint32_t index) {
  const Part part = part_of(value, index);
  const ObjId *const identifier = part.at;
  const uint32_t most_arcs = 32, most_steps = 16;
  uint32_t at, step;
  if (part.kind != PKI_OBJECT_IDENTIFIER || identifier == NULL || identifier->count == 0 ||
      identifier->count > most_arcs)
    return -1;
  for (at = hash_of(identifier), step = 0; step < most_steps; at++, step++) {
    ObjId **const place = &known[at % PY_MOST_KNOWN];
    ObjId *found = __atomic_load_n(place, __ATOMIC_ACQUIRE);
    if (found == NULL) {
      ObjId *const made = asn1_ObjId_clone(identifier);
      if (made == NULL) return -1;
      if (__atomic_compare_exchange_n(place, &found, made, 0, __ATOMIC_ACQ_REL, __ATOMIC_ACQUIRE))
        return (int32_t)(at % PY_MOST_KNOWN);
      asn1_ObjId_free(made);
    }
    if (is_same(found, identifier)) return (int32_t)(at % PY_MOST_KNOWN);
  }
  return -1;
}

char *py_identifier_text(const py_Value *value, uint32_t index) {
  const Part part = part_of(value, index);
  if (part.at == NULL || part.kind != PKI_OBJECT_IDENTIFIER) return NULL;
  return pki_ObjId_text(part.at);
}

static const OctetString *kept_of(const py_Value *value, uint32_t index) {
  const Part part = part_of(value, index);
  if (part.kept == PKI_NO_MEMBER || index == PY_SELF) return NULL;
  return pointer_at(part.holder, part.kept);
}

int64_t py_kept_length(const py_Value *value, uint32_t index) {
  const OctetString *const kept = kept_of(value, index);
  return kept != NULL ? (int64_t)kept->length : PY_ABSENT;
}

const char *py_kept_octets(const py_Value *value, uint32_t index) {
  const OctetString *const kept = kept_of(value, index);
  return kept != NULL ? (const char *)kept->data : NULL;
}

static int is_name(const py_Value *value) {
  return value != NULL && strcmp(pki_Type_record(value->type), "pki_RDNSequence") == 0;
}

char *py_name_text(const py_Value *value) {
  return is_name(value) ? pki_name_rfc4514(value->record) : NULL;
}

char *py_name_own_text(const py_Value *value) {
  return is_name(value) ? pki_RDNSequence_text(value->record) : NULL;
}

py_Value *py_name_parse(const char *text) {
  py_Value *const value = calloc(1, sizeof *value);
  if (value == NULL) return NULL;
  value->type = pki_Type_find("pki_RDNSequence");
  value->record = pki_name_parse_rfc4514(text);
  value->references = 1;
  if (value->record != NULL) return value;
  free(value);
  return NULL;
}

void py_free_text(char *text) { free(text); }

const pki_Type *py_defined_by(const char *identifier) {
  ObjId *const oid = pki_ObjId_parse(identifier);
  const pki_Type *const type = pki_Type_defined_by(oid);
  asn1_ObjId_free(oid);
  return type;
}

char *py_identifier_parse(const char *text) {
  ObjId *const oid = pki_ObjId_parse(text);
  char *const own = pki_ObjId_text(oid);
  asn1_ObjId_free(oid);
  return own;
}

static uint32_t encode(const py_Value *value, uint8_t **cursor) {
  if (value == NULL || value->record == NULL || !py_is_encoded(value->type)) return 0;
  return pki_Type_functions(value->type)->encode(cursor, value->record);
}

uint32_t py_size(const py_Value *value) { return encode(value, NULL); }

uint32_t py_encode(const py_Value *value, uint8_t *out) {
  return out != NULL ? encode(value, &out) : 0;
}

int32_t py_find_missing(const py_Value *value, pki_Fault *fault) {
  return value != NULL ? pki_find_missing(value->type, value->record, fault) : 0;
}

static pki_Octets octets_in(const OctetString *string) {
  const pki_Octets octets = {string != NULL ? string->data : NULL,
                             string != NULL ? string->length : 0};
  return octets;
}

int32_t py_timestamp(const py_Value *list, uint32_t index, py_Timestamp *timestamp) {
  const pki_SignedCertificateTimestamp *record;
  if (list == NULL || timestamp == NULL || index > INT32_MAX) return 0;
  if (strcmp(pki_Type_record(list->type), "pki_SignedCertificateTimestampList") != 0) return 0;
  record = List_get(list->record, (int32_t)index);
  if (record == NULL) return 0;
  timestamp->version = record->version;
  timestamp->hashAlgorithm = record->hashAlgorithm;
  timestamp->signatureAlgorithm = record->signatureAlgorithm;
  timestamp->timestamp = record->timestamp;
  memcpy(timestamp->logID, record->logID, sizeof timestamp->logID);
  timestamp->extensions = octets_in(record->extensions);
  timestamp->signature = octets_in(record->signature);
  timestamp->opaque = octets_in(record->opaque);
  return 1;
}

/* ---------------------------------------------------------------------------------------------- */
/* Objects of a card                                                                              */
/* ---------------------------------------------------------------------------------------------- */

static const GDOObject *object_of(const py_Value *value) {
  return value != NULL && is_object(value->type) ? value->record : NULL;
}

int64_t py_object_id(const py_Value *object) {
  const GDOObject *const record = object_of(object);
  return record != NULL ? (int64_t)(uint8_t)record->id : -1;
}

int32_t py_object_role(const py_Value *object) {
  const GDOObject *const record = object_of(object);
  return record != NULL ? (int32_t)role_of(record) : -1;
}

int32_t py_object_has_sets(const py_Value *object) {
  return py_object_role(object) == PY_CONTAINER && has_sets(object->type);
}

/* What is in an object, or in one of its sets; NULL where there is none. */
static const List *children_of(const py_Value *object, uint32_t set) {
  const GDOObject *const record = object_of(object);
  if (record == NULL || role_of(record) == PY_LEAF) return NULL;
  if (set == PY_SELF) return record->children;
  if (!py_object_has_sets(object) || set > INT32_MAX) return NULL;
  return List_get(record->children, (int32_t)set);
}

static const void *child_of(const List *list, uint32_t index) {
  return list != NULL && index <= INT32_MAX ? List_get(list, (int32_t)index) : NULL;
}

uint32_t py_object_count(const py_Value *object, uint32_t set) {
  const List *const list = children_of(object, set);
  return list != NULL ? (uint32_t)List_len(list) : 0;
}

py_Value *py_object_child(const py_Value *object, uint32_t set, uint32_t index) {
  const GDOObject *child;
  if (py_object_role(object) != PY_CONTAINER) return NULL;
  if (py_object_has_sets(object) != (set != PY_SELF)) return NULL;
  child = child_of(children_of(object, set), index);
  if (child == NULL) return NULL;
  return make_part(object, pki_Type_find("GDOObjectSetOf"), child);
}

static const GDOObjectAttribute *attribute_of(const py_Value *object, uint32_t index) {
  if (py_object_role(object) != PY_ATTRIBUTES) return NULL;
  return child_of(children_of(object, PY_SELF), index);
}

int64_t py_object_attribute(const py_Value *object, uint32_t index) {
  const GDOObjectAttribute *const attribute = attribute_of(object, index);
  return attribute != NULL ? (int64_t)(uint32_t)attribute->id : -1;
}

pki_Octets py_object_octets(const py_Value *object, uint32_t index) {
  const GDOObject *const record =
      index == PY_SELF ? object_of(object) : attribute_of(object, index);
  return octets_in(record != NULL ? record->value : NULL);
}

/* ---------------------------------------------------------------------------------------------- */
/* Questions                                                                                      */
/* ---------------------------------------------------------------------------------------------- */

static const Certificate *certificate_of(const py_Value *value) {
  if (value == NULL || strcmp(pki_Type_record(value->type), "pki_Certificate") != 0) return NULL;
  return value->record;
}

List *py_list(const py_Value *certificate, uint32_t which, uint32_t *unreadable) {
  static List *(*const calls[])(const Certificate *, uint32_t *) = {
      pki_dns_names,  pki_mail_addresses, pki_uris,         pki_ip_addresses,
      pki_crl_places, pki_ocsp_places,    pki_issuer_places};
  if (which >= sizeof calls / sizeof *calls) return NULL;
  return calls[which](certificate_of(certificate), unreadable);
}

uint32_t py_list_count(const List *list) { return (uint32_t)List_len(list); }

pki_Octets py_list_octets(const List *list, uint32_t index) {
  return octets_in(child_of(list, index));
}

void py_free_list(List *list) { List_free(list, asn1_ASN1String_free); }

int32_t py_key_usage(const py_Value *certificate, uint32_t *usage) {
  return pki_key_usage(certificate_of(certificate), usage);
}

int32_t py_allows_purpose(const py_Value *certificate, const char *purpose) {
  ObjId *const identifier = pki_ObjId_parse(purpose);
  const int32_t answer = pki_allows_purpose(certificate_of(certificate), identifier);
  asn1_ObjId_free(identifier);
  return answer;
}

int32_t py_may_issue(const py_Value *certificate, uint32_t *path_length) {
  return pki_may_issue(certificate_of(certificate), path_length);
}

pki_Octets py_key_identifier(const py_Value *certificate, int32_t of_issuer) {
  const Certificate *const record = certificate_of(certificate);
  return of_issuer ? pki_authority_key_identifier(record) : pki_subject_key_identifier(record);
}

/* ---------------------------------------------------------------------------------------------- */
/* Views                                                                                          */
/* ---------------------------------------------------------------------------------------------- */

/* The octets up to the end; no more than a view counts. */
static pki_Octets octets_up_to(const uint8_t *z, size_t size) {
  const pki_Octets octets = {z, size < UINT32_MAX ? (uint32_t)size : UINT32_MAX};
  return octets;
}

static py_Place place_of(const uint8_t *z, pki_Octets octets) {
  const py_Place place = {octets.data != NULL ? (uint64_t)(octets.data - z) : 0, octets.length};
  return place;
}

int32_t py_view_element(const uint8_t *z, size_t size, py_Place *element, py_Place *content) {
  pki_Octets rest = octets_up_to(z, size), found = {NULL, 0};
  const int32_t status = pki_view_next(&rest, &found);
  if (status != 1) return status;
  if (element != NULL) *element = place_of(z, found);
  if (content != NULL) *content = place_of(z, pki_view_content(found));
  return 1;
}

int32_t py_view_fields(const pki_Type *type, const uint8_t *z, size_t size, py_Place *fields,
                       uint32_t count) {
  pki_Octets found[32];
  uint32_t i;
  if (z == NULL || count > sizeof found / sizeof *found) return 0;
  if (pki_view(type, z, z + size, found, count) != z + size) return 0;
  for (i = 0; i < count; i++) fields[i] = place_of(z, found[i]);
  return 1;
}

int32_t py_view_extension(const uint8_t *z, size_t size, const uint8_t *identifier, uint32_t length,
                          py_Place *extension) {
  const pki_Type *const type = pki_Type_find("pki_Extension");
  pki_Octets content = pki_view_content(octets_up_to(z, size)), element, fields[3], found;
  int32_t status;
  if (size == 0 || z[0] != 0x30 || length == 0) return -1;
  while ((status = pki_view_next(&content, &element)) == 1) {
    if (pki_view(type, element.data, element.data + element.length, fields, 3) == NULL) return -1;
    found = pki_view_content(fields[0]);
    if (found.length == length && memcmp(found.data, identifier, length) == 0) {
      *extension = place_of(z, element);
      break;
    }
  }
  return status;
}

static int32_t open_crl(pki_CrlReader *reader, const uint8_t *z, size_t size) {
  return z != NULL && pki_crl_open(reader, z, z + size) != 0;
}

static void read_entry(const uint8_t *z, const pki_CrlEntry *from, py_Entry *entry) {
  entry->serialNumber = place_of(z, from->serialNumber);
  entry->revocationDate = place_of(z, from->revocationDate);
  entry->extensions = place_of(z, from->extensions);
  entry->revoked = from->revoked;
  entry->reason = from->reason;
}

int32_t py_crl_next(const uint8_t *z, size_t size, uint64_t *offset, py_Entry *entry) {
  pki_CrlReader reader;
  pki_CrlEntry found;
  int32_t status;
  if (!open_crl(&reader, z, size)) return -1;
  if (*offset != 0) {
    const uint64_t first = place_of(z, reader.rest).offset;
    if (*offset < first || *offset - first > reader.rest.length) return -1;
    reader.rest.length -= (uint32_t)(*offset - first);
    reader.rest.data += *offset - first;
  }
  status = pki_crl_next(&reader, &found);
  if (status != 1) return status;
  read_entry(z, &found, entry);
  *offset = place_of(z, reader.rest).offset;
  return 1;
}

int32_t py_crl_find(const uint8_t *z, size_t size, const uint8_t *serial, uint32_t length,
                    py_Entry *entry) {
  pki_CrlReader reader;
  pki_CrlEntry found;
  int32_t status;
  if (!open_crl(&reader, z, size)) return -1;
  status = pki_crl_find(&reader, serial, length, &found);
  if (status == 1) read_entry(z, &found, entry);
  return status;
}
