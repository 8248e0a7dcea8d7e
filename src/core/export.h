// EXPORT lines: a type's data and its public functions, a word for each function.
//
//   EXPORT_RECORD(Validity, ValidityTable)
//
// defines asn1_Validity_new, _d, _e, _clone and _free over ValidityTable. A family that has other
// functions lists them, in this order:
//
//   NEW      DECODER          ENCODER      CLONE      FREE                  over the table
//            TAGLESS_DECODER                                                without implicit tags
//            NO_DECODER                    NO_CLONE                         by name only: they fail
//   OWN_NEW  OWN_DECODER      OWN_ENCODER  OWN_CLONE  OWN_FREE  OWN_COMPARE spelled out elsewhere
//
// The sources of the tables are compiled twice. For liborvelasn1 an EXPORT line is the functions; for
// liborvelpki, with ORVELASN1_DESCRIBES, it is the description of the type, with the functions that
// it has there.
#ifndef ORVELASN1_CORE_EXPORT_H
#define ORVELASN1_CORE_EXPORT_H

#include "core/record.h"
#include "core/table.h"

// NOLINTBEGIN(bugprone-macro-parentheses): types and names, which parentheses do not go around.

#define EXPORT_RECORD(T, Table) EXPORT(T, Table, NEW, DECODER, ENCODER, CLONE, FREE)
#define EXPORT_RECORD_AS(T, name, Table) \
  EXPORT_NAMED(T, name, Table, NEW, DECODER, ENCODER, CLONE, FREE)
#define EXPORT_LIST(T, Table) EXPORT(T, Table, DECODER, ENCODER, CLONE, FREE)
#define EXPORT(T, Table, ...) EXPORT_NAMED(T, #T, Table, __VA_ARGS__)

/// The same for a type whose record has another name than the ASN.1.
#define EXPORT_NAMED(T, name, Table, ...)                                             \
  namespace asn1 {                                                                    \
  extern const Type T##Type;                                                          \
  using T##Codec = Codec<T##Type, T, Table::identifier>;                              \
  constinit const Type T##Type =                                                      \
      defined(Table::type, name, #T,                                                  \
              functions_of<Table>({ORVELASN1_EACH(ORVELASN1_TYPE_, T, __VA_ARGS__)}), \
              {ORVELASN1_DESCRIPTION(T, __VA_ARGS__)});                               \
  }                                                                                   \
  ORVELASN1_FUNCTIONS(T, __VA_ARGS__)

namespace asn1 {

/// The functions of a table that brings some, or those that an EXPORT line names.
template <class Table>
consteval TypeFunctions functions_of(const TypeFunctions &named) {
  if constexpr (requires { Table::functions; }) return Table::functions;
  return named;
}

/// A type of this form, with the functions that replace the engine's. Only a description has a name
/// and the public functions.
constexpr Type defined(const Type &form, [[maybe_unused]] const char *name,
                       [[maybe_unused]] const char *record, const TypeFunctions &by_hand,
                       [[maybe_unused]] const PublicFunctions &functions) {
  Type type = form;
  type.by_hand = by_hand;
#ifdef ORVELASN1_DESCRIBES
  type.name = name;
  type.record = record;
  type.functions = {functions.create, functions.decode, functions.encode,
                    functions.clone,  functions.free,   functions.compare};
#endif
  return type;
}
constexpr Type defined(const Type *form, const char *name, const char *record,
                       const TypeFunctions &by_hand, const PublicFunctions &functions) {
  return defined(*form, name, record, by_hand, functions);
}

}  // namespace asn1

#ifdef ORVELASN1_DESCRIBES
#define ORVELASN1_FUNCTIONS(T, ...)
#define ORVELASN1_DESCRIPTION(T, ...) ORVELASN1_EACH(ORVELASN1_PUBLIC_, T, __VA_ARGS__)
#else
#define ORVELASN1_FUNCTIONS(T, ...) ORVELASN1_EACH(ORVELASN1_FUNCTION_, T, __VA_ARGS__)
#define ORVELASN1_DESCRIPTION(T, ...)
#endif

// Applies `prefix` ## word to T for each of up to seven words.
#define ORVELASN1_EACH(prefix, T, ...)                                                           \
  ORVELASN1_SELECT(__VA_ARGS__, ORVELASN1_EACH_7, ORVELASN1_EACH_6, ORVELASN1_EACH_5,            \
                   ORVELASN1_EACH_4, ORVELASN1_EACH_3, ORVELASN1_EACH_2, ORVELASN1_EACH_1, none) \
  (prefix, T, __VA_ARGS__)
#define ORVELASN1_SELECT(a, b, c, d, e, f, g, name, ...) name
#define ORVELASN1_EACH_1(prefix, T, word) prefix##word(T)
#define ORVELASN1_EACH_2(prefix, T, word, ...) \
  prefix##word(T) ORVELASN1_EACH_1(prefix, T, __VA_ARGS__)
#define ORVELASN1_EACH_3(prefix, T, word, ...) \
  prefix##word(T) ORVELASN1_EACH_2(prefix, T, __VA_ARGS__)
#define ORVELASN1_EACH_4(prefix, T, word, ...) \
  prefix##word(T) ORVELASN1_EACH_3(prefix, T, __VA_ARGS__)
#define ORVELASN1_EACH_5(prefix, T, word, ...) \
  prefix##word(T) ORVELASN1_EACH_4(prefix, T, __VA_ARGS__)
#define ORVELASN1_EACH_6(prefix, T, word, ...) \
  prefix##word(T) ORVELASN1_EACH_5(prefix, T, __VA_ARGS__)
#define ORVELASN1_EACH_7(prefix, T, word, ...) \
  prefix##word(T) ORVELASN1_EACH_6(prefix, T, __VA_ARGS__)

// What the engine takes from elsewhere.
#define ORVELASN1_TYPE_NEW(T)
#define ORVELASN1_TYPE_OWN_NEW(T)
#define ORVELASN1_TYPE_DECODER(T)
#define ORVELASN1_TYPE_TAGLESS_DECODER(T)
#define ORVELASN1_TYPE_NO_DECODER(T)
#define ORVELASN1_TYPE_OWN_DECODER(T)                                                \
  .decode = [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place, \
               uint32_t depth) {                                                     \
    return asn1_##T##_d(z, end, impl_tag, static_cast<T **>(place), depth);          \
  },
#define ORVELASN1_TYPE_ENCODER(T)
#define ORVELASN1_TYPE_OWN_ENCODER(T)
#define ORVELASN1_TYPE_CLONE(T)
#define ORVELASN1_TYPE_NO_CLONE(T) .clone = [](const void *) -> void * { return nullptr; },
#define ORVELASN1_TYPE_OWN_CLONE(T)                         \
  .clone = [](const void *value) -> void * {                \
    return asn1_##T##_clone(static_cast<const T *>(value)); \
  },
#define ORVELASN1_TYPE_FREE(T)
#define ORVELASN1_TYPE_OWN_FREE(T) \
  .free = [](void *value) { asn1_##T##_free(static_cast<T *>(value)); },
#define ORVELASN1_TYPE_OWN_COMPARE(T)

// The public functions.
#define ORVELASN1_FUNCTION_NEW(T) \
  T *asn1_##T##_new() { return static_cast<T *>(asn1::create(asn1::T##Type)); }
#define ORVELASN1_FUNCTION_OWN_NEW(T)
#define ORVELASN1_FUNCTION_DECODER(T)                                                  \
  const uint8_t *asn1_##T##_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, \
                              T **ppElement, uint32_t depth) {                         \
    return asn1::decode(z, end, impl_tag, ppElement, depth, asn1::T##Type);            \
  }
#define ORVELASN1_FUNCTION_TAGLESS_DECODER(T)                                          \
  const uint8_t *asn1_##T##_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, \
                              T **ppElement, uint32_t depth) {                         \
    asn1::require((impl_tag & 0xFF) == 0, unit, __func__, "impl_tag == 0");            \
    return asn1::decode(z, end, 0, ppElement, depth, asn1::T##Type);                   \
  }
#define ORVELASN1_FUNCTION_NO_DECODER(T)                                                    \
  const uint8_t *asn1_##T##_d(const uint8_t *, const uint8_t *, uint32_t, T **, uint32_t) { \
    return nullptr;                                                                         \
  }
#define ORVELASN1_FUNCTION_OWN_DECODER(T)
#define ORVELASN1_FUNCTION_ENCODER(T)                      \
  uint32_t asn1_##T##_e(uint8_t **pp, const T *pElement) { \
    return asn1::encode(pp, pElement, asn1::T##Type);      \
  }
#define ORVELASN1_FUNCTION_OWN_ENCODER(T)
#define ORVELASN1_FUNCTION_CLONE(T)                                \
  T *asn1_##T##_clone(const T *pElement) {                         \
    return static_cast<T *>(asn1::clone(pElement, asn1::T##Type)); \
  }
#define ORVELASN1_FUNCTION_NO_CLONE(T) \
  T *asn1_##T##_clone(const T *) { return nullptr; }
#define ORVELASN1_FUNCTION_OWN_CLONE(T)
#define ORVELASN1_FUNCTION_FREE(T) \
  void asn1_##T##_free(T *pElement) { asn1::release(pElement, asn1::T##Type); }
#define ORVELASN1_FUNCTION_OWN_FREE(T)
#define ORVELASN1_FUNCTION_OWN_COMPARE(T)

// The same as a description has them.
#define ORVELASN1_PUBLIC_NEW(T) .create = []() -> void * { return asn1_##T##_new(); },
#define ORVELASN1_PUBLIC_OWN_NEW(T) ORVELASN1_PUBLIC_NEW(T)
// A decoder that fails may leave the place as it was.
#define ORVELASN1_PUBLIC_DECODER(T)                                                   \
  .decode = [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **place, \
               uint32_t depth) {                                                      \
    T *made = static_cast<T *>(*place);                                               \
    const uint8_t *const next = asn1_##T##_d(z, end, impl_tag, &made, depth);         \
    *place = made;                                                                    \
    return next;                                                                      \
  },
#define ORVELASN1_PUBLIC_TAGLESS_DECODER(T) ORVELASN1_PUBLIC_DECODER(T)
#define ORVELASN1_PUBLIC_NO_DECODER(T)
#define ORVELASN1_PUBLIC_OWN_DECODER(T) ORVELASN1_PUBLIC_DECODER(T)
#define ORVELASN1_PUBLIC_ENCODER(T)                          \
  .encode = [](uint8_t **pp, const void *record) {           \
    return asn1_##T##_e(pp, static_cast<const T *>(record)); \
  },
#define ORVELASN1_PUBLIC_OWN_ENCODER(T) ORVELASN1_PUBLIC_ENCODER(T)
#define ORVELASN1_PUBLIC_CLONE(T) ORVELASN1_TYPE_OWN_CLONE(T)
#define ORVELASN1_PUBLIC_NO_CLONE(T)
#define ORVELASN1_PUBLIC_OWN_CLONE(T) ORVELASN1_TYPE_OWN_CLONE(T)
#define ORVELASN1_PUBLIC_FREE(T) ORVELASN1_TYPE_OWN_FREE(T)
#define ORVELASN1_PUBLIC_OWN_FREE(T) ORVELASN1_TYPE_OWN_FREE(T)
#define ORVELASN1_PUBLIC_OWN_COMPARE(T)                                          \
  .compare = [](const void *a, const void *b) {                                  \
    return asn1_##T##_cmp(static_cast<const T *>(a), static_cast<const T *>(b)); \
  },

// NOLINTEND(bugprone-macro-parentheses)

#endif
