// Calling the element functions that a caller hands to lists and wrappers.
#ifndef ORVELASN1_ELEMENT_FUNCTIONS_H
#define ORVELASN1_ELEMENT_FUNCTIONS_H

#include <type_traits>

#include "core/library.h"

namespace asn1 {

// A class around an element function stands where C has the bare pointer, and is passed as that is.
template <class Function>
inline constexpr bool is_one_pointer =
    std::conjunction_v<std::bool_constant<sizeof(Function) == sizeof(void (*)())>,
                       std::is_trivially_copyable<Function>, std::is_standard_layout<Function>>;
static_assert(is_one_pointer<asn1_encoder>);
static_assert(is_one_pointer<asn1_decoder>);

// The wrappers and lists take functions of any record type, and call them with pointers to void.
// All pointers are passed alike on the platforms of this library, which is more than the language
// promises and what the function sanitizer would report. A function that is missing fails.
#ifdef __clang__
#define CALLS_ELEMENT_FUNCTIONS __attribute__((no_sanitize("function")))
#else
#define CALLS_ELEMENT_FUNCTIONS
#endif

CALLS_ELEMENT_FUNCTIONS
inline uint32_t call(asn1_encoder f, uint8_t **pp, const void *element) {
  return f.function == nullptr ? 0 : f.function(pp, element);
}

CALLS_ELEMENT_FUNCTIONS
inline const uint8_t *call(asn1_decoder f, const uint8_t *z, const uint8_t *end, void *place,
                           uint32_t depth) {
  return f.function == nullptr ? nullptr : f.function(z, end, 0, place, depth);
}

CALLS_ELEMENT_FUNCTIONS
inline void call(asn1_destructor f, void *element) {
  if (f.function != nullptr) f.function(element);
}

#undef CALLS_ELEMENT_FUNCTIONS

}  // namespace asn1

#endif
