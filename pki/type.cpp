#include "pki/type.h"

#include <cstddef>
#include <cstring>
#include <iterator>

using namespace asn1;

namespace asn1 {
#define TYPE(T) extern const Type T##Type;
#define FORM(T)
#include "types.inc"
#undef FORM
#undef TYPE
}  // namespace asn1

namespace pki {
#define TYPE(T)
#define FORM(T) extern const Type T##Type;
#include "types.inc"
#undef FORM
#undef TYPE
}  // namespace pki

namespace {

constexpr const Type *types[] = {
#define TYPE(T) &asn1::T##Type,
#define FORM(T) &pki::T##Type,
#include "types.inc"
#undef FORM
#undef TYPE
};

static_assert(static_cast<int>(Kind::card_identifier) == PKI_CARD_IDENTIFIER);
static_assert(static_cast<int>(Tagging::explicit_tag) == PKI_EXPLICIT);
static_assert(static_cast<int>(Presence::any_element) == PKI_ANY_ELEMENT);
static_assert(no_member == PKI_NO_MEMBER);

const char *text_or_none(const char *text) { return text == nullptr ? "" : text; }

bool is_called(const char *text, const char *name) { return std::strcmp(text, name) == 0; }

}  // namespace

uint32_t pki_Type_count() { return static_cast<uint32_t>(std::size(types)); }

const pki_Type *pki_Type_get(uint32_t index) {
  return index < std::size(types) ? handle_of(types[index]) : nullptr;
}

const pki_Type *pki_Type_find(const char *name) {
  if (name == nullptr) return nullptr;
  for (const Type *type : types) {
    if (is_called(type->name, name) || is_called(type->record, name)) return handle_of(type);
  }
  return nullptr;
}

const char *pki_Type_name(const pki_Type *type) { return text_or_none(type_of(type).name); }
const char *pki_Type_record(const pki_Type *type) { return text_or_none(type_of(type).record); }
pki_Kind pki_Type_kind(const pki_Type *type) { return static_cast<pki_Kind>(type_of(type).kind); }
uint8_t pki_Type_identifier(const pki_Type *type) { return type_of(type).identifier; }
uint32_t pki_Type_size(const pki_Type *type) { return type_of(type).size; }
const pki_Type *pki_Type_element(const pki_Type *type) { return handle_of(type_of(type).element); }
uint32_t pki_Type_field_count(const pki_Type *type) { return type_of(type).count; }
const pki_Functions *pki_Type_functions(const pki_Type *type) { return &type_of(type).functions; }

int32_t pki_Type_field(const pki_Type *type, uint32_t index, pki_Field *field) {
  if (field == nullptr || index >= type_of(type).count) return 0;
  const Field &from = type_of(type).fields[index];
  // The records of all CHOICE types are alike: `kind`, and a pointer to the value.
  const bool is_alternative = type_of(type).kind == Kind::choice;
  *field = {from.name,
            handle_of(from.type),
            is_alternative ? static_cast<uint32_t>(offsetof(GeneralName, value)) : from.member,
            from.text,
            from.kept,
            static_cast<pki_Tagging>(from.tagging),
            from.tag,
            static_cast<pki_Presence>(from.presence),
            from.found_by,
            from.kind};
  return 1;
}
