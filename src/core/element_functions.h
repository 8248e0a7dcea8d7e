// Calling the element functions that a caller hands to lists and wrappers.
#ifndef ORVELASN1_ELEMENT_FUNCTIONS_H
#define ORVELASN1_ELEMENT_FUNCTIONS_H

#include "core/library.h"

namespace asn1 {

// The wrappers and lists take functions of any record type, and call them with pointers to void.
// All pointers are passed alike on the platforms of this library, which is more than the language
// promises and what the function sanitizer would report. A function that is missing fails.
#ifdef __clang__
#define CALLS_ELEMENT_FUNCTIONS __attribute__((no_sanitize("function")))
#else
#define CALLS_ELEMENT_FUNCTIONS
#endif

CALLS_ELEMENT_FUNCTIONS
inline uint32_t call(asn1_encoder_function f, uint8_t **pp, const void *element) {
  return f == nullptr ? 0 : f(pp, element);
}

CALLS_ELEMENT_FUNCTIONS
inline const uint8_t *call(asn1_decoder_function f, const uint8_t *z, const uint8_t *end,
                           void *place, uint32_t depth) {
  return f == nullptr ? nullptr : f(z, end, 0, place, depth);
}

CALLS_ELEMENT_FUNCTIONS
inline void call(List_destructor_function f, void *element) {
  if (f != nullptr) f(element);
}

#undef CALLS_ELEMENT_FUNCTIONS

}  // namespace asn1

#endif
