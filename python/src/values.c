#include "values.h"

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

static const void *pointer_at(const void *record, uint32_t offset) {
  const void *pointer;
  memcpy(&pointer, (const char *)record + offset, sizeof pointer);
  return pointer;
}

int32_t py_is_decoded(const pki_Type *type) {
  const pki_Functions *const functions = pki_Type_functions(type);
  return functions->decode != NULL && functions->free != NULL;
}

int32_t py_is_encoded(const pki_Type *type) { return pki_Type_functions(type)->encode != NULL; }

py_Value *py_decode(const pki_Type *type, const uint8_t *z, size_t size, size_t *taken) {
  const pki_Functions *functions;
  const uint8_t *end, *next;
  void *record = NULL;
  py_Value *value;
  pki_Fault fault;
  if (type == NULL || z == NULL) return NULL;
  if (!py_is_decoded(type)) return NULL;
  functions = pki_Type_functions(type);
  end = z + size;
  /* What is no form may end the process for an input in which there is a fault. */
  if (!is_form(type) && pki_explain(type, z, end, &fault) != 0) return NULL;
  value = calloc(1, sizeof *value);
  if (value == NULL) return NULL;
  next = functions->decode(z, end, 0, &record, 0);
  if (next == NULL || (taken == NULL && next != end)) {
    functions->free(record);
    free(value);
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
  const void *at; /* the record, or the number; NULL where the part is not there */
  uint32_t kept;  /* the member with its octets, or PKI_NO_MEMBER */
} Part;

static Part part_of(const py_Value *value, uint32_t index) {
  Part part = {NULL, PKI_NULL, NULL, PKI_NO_MEMBER};
  pki_Field field;
  pki_Kind kind;
  if (value == NULL || value->record == NULL) return part;
  kind = pki_Type_kind(value->type);
  if (index == PY_SELF) {
    part.type = value->type;
    part.at = value->record;
  } else if (kind == PKI_SEQUENCE || kind == PKI_CHOICE) {
    if (pki_Type_field(value->type, index, &field) == 0) return part;
    if (kind == PKI_CHOICE && *(const uint8_t *)value->record != field.kind) return part;
    part.type = field.type;
    part.kept = field.encoded_offset;
    if (is_number(pki_Type_kind(field.type)))
      part.at = (const char *)value->record + field.offset;
    else if (field.offset != PKI_NO_MEMBER)
      part.at = pointer_at(value->record, field.offset);
  } else if (is_list(kind)) {
    part.type = pki_Type_element(value->type);
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

py_Value *py_part(const py_Value *value, uint32_t index) {
  const Part part = part_of(value, index);
  py_Value *made, *whole;
  if (part.at == NULL) return NULL;
  if (part.kind != PKI_SEQUENCE && part.kind != PKI_CHOICE && !is_list(part.kind)) return NULL;
  made = calloc(1, sizeof *made);
  if (made == NULL) return NULL;
  whole = value->whole != NULL ? value->whole : (py_Value *)(uintptr_t)value;
  __atomic_add_fetch(&whole->references, 1, __ATOMIC_RELAXED);
  made->type = part.type;
  made->record = part.at;
  made->whole = whole;
  return made;
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
  if (part.kind == PKI_ATTRIBUTE_VALUE && index != PY_SELF &&
      pki_Type_size(value->type) == sizeof(AttributeValueAssertion))
    return (uint8_t)((const AttributeValueAssertion *)value->record)->valueTag;
  return time_in(part, &time) ? time.kind : 0;
}

char *py_identifier_text(const py_Value *value, uint32_t index) {
  const Part part = part_of(value, index);
  if (part.at == NULL || part.kind != PKI_OBJECT_IDENTIFIER) return NULL;
  return pki_ObjId_text(part.at);
}

static const OctetString *kept_of(const py_Value *value, uint32_t index) {
  const Part part = part_of(value, index);
  if (part.kept == PKI_NO_MEMBER || index == PY_SELF) return NULL;
  return pointer_at(value->record, part.kept);
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
  const pki_Functions *functions;
  if (value == NULL || value->record == NULL) return 0;
  functions = pki_Type_functions(value->type);
  return functions->encode != NULL ? functions->encode(cursor, value->record) : 0;
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
