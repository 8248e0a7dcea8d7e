// A type that its RFC gives another name, and nothing else: CPSuri ::= IA5String.
#ifndef ORVELPKI_FORMS_RENAMED_H
#define ORVELPKI_FORMS_RENAMED_H

#include "pki/forms/universal.h"

namespace pki {

/// Has the octets and the record of `C`, whose type may be defined elsewhere, and so is no constant
/// to read from here: the functions ask it.
template <class C, Kind K>
struct Renamed {
  static constexpr uint8_t identifier = C::identifier;
  static constexpr Type type{.kind = K, .identifier = identifier, .exact = true};
  static constexpr TypeFunctions functions{
      .decode =
          [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place, uint32_t depth) {
            return asn1::decode(z, end, impl_tag, place, depth, *C::type);
          },
      .measure = [](const void *value) { return asn1::measure(value, *C::type); },
      .write = [](asn1::BackWriter &out, const void *value) { asn1::write(out, value, *C::type); },
      .clone = [](const void *value) { return asn1::clone(value, *C::type); },
      .free = [](void *value) { asn1::release(value, *C::type); }};
};

}  // namespace pki

#endif
