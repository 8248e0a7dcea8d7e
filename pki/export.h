// EXPORT_FORM lines: the type of a table of an RFC's form, and its public functions.
//
//   EXPORT_FORM(NameConstraints, NameConstraints, "NameConstraints", NameConstraintsTable)
//
// defines pki_NameConstraints_new, _d, _e, _clone and _free over records of the second name, the type's
// data and its codec. EXPORT_FORM_LIST does so without _new, for what is no record of its own: lists,
// numbers, strings.
#ifndef ORVELPKI_PKI_EXPORT_H
#define ORVELPKI_PKI_EXPORT_H

#include "pki/forms/universal.h"

#pragma GCC visibility push(default)
#include "orvelpki.h"
#pragma GCC visibility pop

namespace pki {

/// A type of this form with its names and public functions.
constexpr Type described(Type type, const char *name, const char *record,
                         const asn1::PublicFunctions &functions) {
  type.name = name;
  type.record = record;
  type.functions = {functions.create, functions.decode, functions.encode,
                    functions.clone,  functions.free,   functions.compare};
  return type;
}

constexpr const Type &form_at(const Type &form) { return form; }
constexpr const Type &form_at(const Type *form) { return *form; }

/// The type of a table, with the functions that the table brings in place of the engine's.
template <class Table>
consteval Type form_of() {
  Type type = form_at(Table::type);
  if constexpr (requires { Table::functions; }) type.by_hand = Table::functions;
  return type;
}

/// The public decoder of every form. A CHOICE takes no tag in place of its own (X.680, 31.2.7).
const uint8_t *decode_form(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                           uint32_t depth, const Type &type);

}  // namespace pki

// NOLINTBEGIN(bugprone-macro-parentheses): types and names, which parentheses do not go around.

#define EXPORT_FORM(T, Record, name, Table)                                           \
  PKI_FORM(                                                                           \
      T, Record, name, Table, .create = []() -> void * { return pki_##T##_new(); }, ) \
  Record *pki_##T##_new() { return static_cast<Record *>(asn1::create(pki::T##Type)); }

#define EXPORT_FORM_LIST(T, Record, name, Table) PKI_FORM(T, Record, name, Table, )

#define PKI_FORM(T, Record, asn1_name, Table, ...)                                                 \
  namespace pki {                                                                                  \
  extern const Type T##Type;                                                                       \
  using T##Codec = Codec<T##Type, Record, Table::identifier>;                                      \
  constinit const Type T##Type = described(                                                        \
      form_of<Table>(), asn1_name, "pki_" #T,                                                      \
      {__VA_ARGS__.decode =                                                                        \
           [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **place,               \
              uint32_t depth) { return decode_form(z, end, impl_tag, place, depth, T##Type); },    \
       .encode = [](uint8_t **pp, const void *value) { return asn1::encode(pp, value, T##Type); }, \
       .clone = [](const void *value) { return asn1::clone(value, T##Type); },                     \
       .free = [](void *value) { asn1::release(value, T##Type); }});                               \
  }                                                                                                \
  const uint8_t *pki_##T##_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,              \
                             Record **ppElement, uint32_t depth) {                                 \
    return pki::decode_form(z, end, impl_tag, ppElement, depth, pki::T##Type);                     \
  }                                                                                                \
  uint32_t pki_##T##_e(uint8_t **pp, const Record *pElement) {                                     \
    return asn1::encode(pp, pElement, pki::T##Type);                                               \
  }                                                                                                \
  Record *pki_##T##_clone(const Record *pElement) {                                                \
    return static_cast<Record *>(asn1::clone(pElement, pki::T##Type));                             \
  }                                                                                                \
  void pki_##T##_free(Record *pElement) { asn1::release(pElement, pki::T##Type); }

// NOLINTEND(bugprone-macro-parentheses)

#endif
