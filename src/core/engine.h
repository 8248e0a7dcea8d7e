// The engine's walk over the fields of a record, for types that are walked in a loop and for the few
// whose walk is unrolled at compile time because most of the time goes there (Unrolled, table.h).
#ifndef ORVELASN1_CORE_ENGINE_H
#define ORVELASN1_CORE_ENGINE_H

#include "core/list.h"
#include "core/record.h"

namespace asn1 {

inline OctetString *kept_octets(const Field &field, const void *record) {
  return static_cast<OctetString *>(load(member_of(record, field.kept)));
}

// ---------------------------------------------------------------------------------------------
// Release
// ---------------------------------------------------------------------------------------------

/// Zeroes the octets of a string or a number, whose records begin alike.
inline void wipe(const void *value, const Type &type) {
  OctetString octets;
  std::memcpy(&octets, value, sizeof octets);
  if (octets.data == nullptr) return;
  const bool bits = type.kind == Kind::bit_string;
  explicit_bzero(octets.data, bits ? octets_of_bits(octets.length) : octets.length);
}

/// `abandoned` says that the record was not read to its end. A field may own more then than it does
/// in a record that a caller holds.
[[gnu::always_inline]] inline void release_field(const Field &field, void *record, bool abandoned) {
  if (field.by_hand != nullptr && field.by_hand->free != nullptr) {
    field.by_hand->free(field, record);
  } else if (!field.is_number) {
    void *const value = load(member_of(record, field.member));
    if (value != nullptr) {
      if (field.wiped) wipe(value, *field.type);
      release(value, *field.type);
    }
  }
  if (field.kept != no_member && (abandoned || field.keeper == Kept::by_the_record)) {
    asn1_OctetString_free(kept_octets(field, record));
  }
}

/// `Walk` is a type with `all(f)`, which calls `f` with each field until one gives false.
template <class Walk>
void release_fields(void *record, const Walk &walk, bool abandoned = false) {
  walk.all([&](const Field &field) __attribute__((always_inline)) {
    release_field(field, record, abandoned);
    return true;
  });
  std::free(record);
}

/// Releases a list and its elements; takes a null pointer.
inline void release_elements(void *list, const Type &element) {
  auto *const elements = static_cast<List *>(list);
  if (element.by_hand.free != nullptr) return List_free(elements, element.by_hand.free);
  for (int32_t i = 0; i < List_len(elements); ++i) release(List_get(elements, i), element);
  List_free(elements, nullptr);
}

// ---------------------------------------------------------------------------------------------
// Copy
// ---------------------------------------------------------------------------------------------

[[gnu::always_inline]] inline bool clone_field(const Field &field, void *copy, const void *source) {
  if (field.by_hand != nullptr && field.by_hand->clone != nullptr) {
    if (!field.by_hand->clone(field, copy, source)) return false;
  } else if (field.is_number) {
    std::memcpy(member_of(copy, field.member), member_of(source, field.member), sizeof(uint32_t));
  } else if (!clone_member(member_of(copy, field.member), member_of(source, field.member),
                           *field.type)) {
    return false;
  }
  if (field.kept == no_member || field.keeper != Kept::by_the_record) return true;
  const OctetString *const kept = kept_octets(field, source);
  if (kept == nullptr) return true;
  OctetString *const made = asn1_OctetString_clone(kept);
  store(member_of(copy, field.kept), made);
  return made != nullptr;
}

template <class Walk>
void *clone_fields(const void *source, const Walk &walk) {
  void *const copy = zeroed(walk.type.size);
  if (copy == nullptr) return nullptr;
  if (walk.all([&](const Field &field)
                   __attribute__((always_inline)) { return clone_field(field, copy, source); })) {
    return copy;
  }
  release_fields(copy, walk);
  return nullptr;
}

// ---------------------------------------------------------------------------------------------
// Decode
// ---------------------------------------------------------------------------------------------

[[gnu::always_inline]] inline bool is_there(const Field &field, const ContentReader &in) {
  if (field.presence == Presence::always) return true;
  if (field.presence == Presence::anything_left) return !in.at_end();
  if (field.presence == Presence::any_element) return in.element_follows();
  if (field.presence == Presence::octet_of_input) return in.peek_outer() == field.found_by;
  const int octet = in.peek();
  if (octet < 0) return false;
  if (octet == field.found_by) return true;
  if (field.presence == Presence::either_form) return octet == (field.found_by | tag::constructed);
  return field.type->other_identifier != 0 && octet == field.type->other_identifier;
}

/// Decodes what is inside an explicit tag.
const uint8_t *decode_explicit(const Field &field, const uint8_t *z, const uint8_t *end,
                               void *place, uint32_t depth);

[[gnu::always_inline]] inline const uint8_t *decode_tagged(const Field &field, const uint8_t *z,
                                                           const uint8_t *end, void *place,
                                                           uint32_t depth) {
  if (field.tagging == Tagging::explicit_tag) return decode_explicit(field, z, end, place, depth);
  return decode(z, end, field.tag, place, depth, *field.type);
}

[[gnu::always_inline]] inline bool decode_field(const Field &field, ContentReader &in, void *record,
                                                uint32_t depth) {
  if (!is_there(field, in)) return true;
  if (field.condition != nullptr && !field.condition->holds(record)) return false;
  const uint8_t *const from = in.position();
  if (field.by_hand != nullptr && field.by_hand->decode != nullptr) {
    if (!field.by_hand->decode(field, in, record, depth)) return false;
  } else {
    const uint8_t *const next =
        decode_tagged(field, from, in.end(), member_of(record, field.member), depth);
    if (next == nullptr) return false;
    in.move_to(next);
  }
  if (field.kept == no_member) return true;
  const auto count = static_cast<size_t>(in.position() - from);
  if (count == 0 || count > UINT32_MAX) return false;
  OctetString *const kept = asn1_ASN1String_new(static_cast<uint32_t>(count), from);
  store(member_of(record, field.kept), kept);
  return kept != nullptr;
}

// What is left in the content past the last field that was recognised is refused in an exact type.
// In any other it is neither refused nor skipped: the cursor that is returned stands in front of it. A
// refused header leaves the place alone, but for a type that may have an indefinite length, whose
// end-of-contents stands right past the last field, and past which more may follow.
template <class Walk>
const uint8_t *decode_fields(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                             uint32_t depth, const Walk &walk) {
  const Type &type = walk.type;
  if (type.any_length || type.exact) {
    if (place == nullptr) return nullptr;
    store(place, nullptr);
  }
  Reader in(z, end);
  Header header;
  if (type.exact) {
    if (!in.read_exact_header(impl_tag, type.identifier, Forms::indefinite, &header, depth)) {
      return nullptr;
    }
  } else if (!in.read_header(impl_tag, tag::sequence,
                             type.any_length ? Forms::indefinite : Forms::one, &header, depth) ||
             place == nullptr) {
    return nullptr;
  }
  void *const record = zeroed(type.size);
  store(place, record);
  if (record == nullptr) return nullptr;
  const uint32_t inner_depth = child_depth(depth);
  ContentReader content = type.exact ? in.exact_content(header) : in.content(header);
  if (walk.all([&](const Field &field) __attribute__((always_inline)) {
        return decode_field(field, content, record, inner_depth);
      }) &&
      (type.exact ? content.close(header) : !header.indefinite || content.read_outer_eoc())) {
    if (!type.closed_with_fields || inner_depth != 0) trace_close(depth);
    return content.position();
  }
  release_fields(record, walk, true);
  store(place, nullptr);
  return nullptr;
}

/// The same for an exact type: a failure leaves no list.
inline const uint8_t *decode_exact_elements(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            void *place, uint32_t depth, const Type &type) {
  if (place == nullptr) return nullptr;
  store(place, nullptr);
  Reader in(z, end);
  Header header;
  if (!in.read_exact_header(impl_tag, type.identifier, Forms::indefinite, &header, depth)) {
    return nullptr;
  }
  List *const list = List_new(0);
  if (list == nullptr) return nullptr;
  const Type &element_type = *type.element;
  const uint32_t inner_depth = child_depth(depth);
  ContentReader content = in.exact_content(header);
  while (content.element_follows()) {
    void *element = nullptr;
    const uint8_t *const next =
        decode(content.position(), content.end(), 0, &element, inner_depth, element_type);
    if (next == nullptr || List_append(list, element, 0) == 0) {
      if (next != nullptr) release(element, element_type);
      break;
    }
    content.move_to(next);
  }
  // Where the loop stopped at an element, that stands in front of the end.
  if (content.close(header)) {
    trace_close(depth);
    store(place, list);
    return content.position();
  }
  release_elements(list, element_type);
  return nullptr;
}

[[gnu::always_inline]] inline const uint8_t *decode_elements(const uint8_t *z, const uint8_t *end,
                                                             uint32_t impl_tag, void *place,
                                                             uint32_t depth, const Type &type) {
  if (type.exact) return decode_exact_elements(z, end, impl_tag, place, depth, type);
  const Type &element = *type.element;
  return decode_list(
      z, end, impl_tag, type.identifier, static_cast<List **>(place), depth,
      [&](const uint8_t *from, const uint8_t *limit, void **to, uint32_t inner_depth) {
        return decode(from, limit, 0, to, inner_depth, element);
      },
      [&](void *value) { release(value, element); }, [&](List *list) { release(list, type); });
}

}  // namespace asn1

#endif
