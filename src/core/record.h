// The engine: creates, decodes, encodes, copies and releases the value of any type, by walking its
// fields. The arguments are those of the public functions, with the type last: an exported function
// is then one instruction and a jump.
#ifndef ORVELASN1_CORE_RECORD_H
#define ORVELASN1_CORE_RECORD_H

#include "core/type.h"

namespace asn1 {

/// Makes a record, all fields zero. Returns a null pointer when memory is exhausted. Not calloc:
/// the runtime's passes by the cache of free blocks of the thread.
void *create(const Type &type);

void release_walked(void *value, const Type &type);
void *clone_walked(const void *value, const Type &type);
const uint8_t *decode_walked(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                             uint32_t depth, const Type &type);

/// Releases a value and all that it owns; takes a null pointer.
inline void release(void *value, const Type &type) {
  type.by_hand.free != nullptr ? type.by_hand.free(value) : release_walked(value, type);
}

/// Copies a value and all that it owns. Returns a null pointer for a null pointer, where the type
/// has no copy of the value, and when memory is exhausted.
inline void *clone(const void *value, const Type &type) {
  return type.by_hand.clone != nullptr ? type.by_hand.clone(value) : clone_walked(value, type);
}

/// Decodes a value into the place at `place`. Returns the cursor past it, or a null pointer.
inline const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                             uint32_t depth, const Type &type) {
  return type.by_hand.decode != nullptr ? type.by_hand.decode(z, end, impl_tag, place, depth)
                                        : decode_walked(z, end, impl_tag, place, depth, type);
}

/// Decodes a value at the position of `in`, and moves past it.
inline bool read(ContentReader &in, void *place, uint32_t depth, const Type &type) {
  const uint8_t *const next = decode(in.position(), in.end(), 0, place, depth, type);
  if (next == nullptr) return false;
  in.move_to(next);
  return true;
}

/// Counts the octets of the encoding. Returns 0 where the value cannot be encoded, or has more
/// octets than 32 bits count.
uint32_t measure(const void *value, const Type &type);

/// Writes what measure() counted.
void write(BackWriter &out, const void *value, const Type &type);

/// The same for the value of a field, under its tag, and for the fields of a record that there is.
uint32_t measure_fields(const void *record, const Type &type);
uint32_t measure_tagged(const Field &field, const void *value);
void write_tagged(const Field &field, BackWriter &out, const void *value);

/// Encodes a value as the public encoders do: counts the octets where `pp` is a null pointer, and
/// writes them at `*pp`, which moves past them, where it is not. Returns their number; 0, with
/// nothing moved, where the value cannot be encoded.
uint32_t encode(uint8_t **pp, const void *value, const Type &type);

/// The pointer in a member of a record, and the place of a member.
inline void *load(const void *member) {
  void *value;
  std::memcpy(&value, member, sizeof value);
  return value;
}
inline void store(void *member, void *value) { std::memcpy(member, &value, sizeof value); }
inline void *member_of(void *record, uint16_t offset) {
  return static_cast<char *>(record) + offset;
}
inline const void *member_of(const void *record, uint16_t offset) {
  return static_cast<const char *>(record) + offset;
}

/// Copies the pointer in a member and what it points to; a null pointer stays one. Returns whether
/// that was possible.
inline bool clone_member(void *copy, const void *source, const Type &type) {
  const void *const value = load(source);
  if (value == nullptr) return true;
  void *const made = clone(value, type);
  store(copy, made);
  return made != nullptr;
}

}  // namespace asn1

#endif
