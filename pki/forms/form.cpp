#include "pki/export.h"

namespace pki {

const uint8_t *decode_form(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                           uint32_t depth, const Type &type) {
  if (place == nullptr) return nullptr;
  asn1::store(place, nullptr);
  if (z == nullptr || end == nullptr || z >= end) return nullptr;
  if (type.kind == Kind::choice && (impl_tag & 0xFF) != 0) return nullptr;
  const uint8_t *const next = asn1::decode(z, end, impl_tag, place, depth, type);
  if (next != nullptr) return next;
  // A string, number or text that was refused after it was made.
  asn1::release(asn1::load(place), type);
  asn1::store(place, nullptr);
  return nullptr;
}

}  // namespace pki
