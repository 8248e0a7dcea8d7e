#include "core/record.h"

#include "core/engine.h"
#include "core/stack.h"

namespace asn1 {

namespace {

constexpr const char *unit = "asn1_x680";

/// A type that is known at run time: its fields are walked in a loop.
struct Walked {
  const Type &type;

  template <class F>
  bool all(F f) const {
    for (uint16_t i = 0; i < type.count; ++i) {
      if (!f(type.fields[i])) return false;
    }
    return true;
  }
};

// ---------------------------------------------------------------------------------------------
// The values of fields
// ---------------------------------------------------------------------------------------------

/// The value of a member: the pointer in it, or the place of a number.
const void *value_of(const Field &field, const void *member) {
  return field.is_number ? member : load(member);
}

bool is_set(const Field &field, const void *member) {
  uint32_t number;
  if (!field.is_number) return load(member) != nullptr;
  std::memcpy(&number, member, sizeof number);
  return number != 0;
}

// ---------------------------------------------------------------------------------------------
// Release
// ---------------------------------------------------------------------------------------------

/// The alternative that a CHOICE has, or a null pointer.
const Field *alternative(uint8_t kind, const Type &type) {
  for (uint16_t i = 0; i < type.count; ++i) {
    if (type.fields[i].kind == kind) return &type.fields[i];
  }
  return nullptr;
}

/// All CHOICE records are alike.
struct ChoiceRecord {
  uint8_t kind;
  void *value;
};

void release_choice(void *record, const Type &type) {
  const auto *const choice = static_cast<const ChoiceRecord *>(record);
  const Field *const chosen = alternative(choice->kind, type);
  if (chosen != nullptr) release(choice->value, *chosen->type);
  std::free(record);
}

}  // namespace

void *create(const Type &type) { return zeroed(type.size); }

void release_walked(void *value, const Type &type) {
  if (value == nullptr) return;
  if (type.kind == Kind::sequence) return release_fields(value, Walked{type});
  if (type.kind == Kind::choice) return release_choice(value, type);
  release_elements(value, *type.element);
}

// ---------------------------------------------------------------------------------------------
// Copy
// ---------------------------------------------------------------------------------------------

namespace {

void *clone_choice(const void *source, const Type &type) {
  const auto *const from = static_cast<const ChoiceRecord *>(source);
  const Field *const chosen = alternative(from->kind, type);
  if (chosen == nullptr && !type.copies_unknown_kind) return nullptr;
  auto *const copy = static_cast<ChoiceRecord *>(create(type));
  if (copy == nullptr) return nullptr;
  // NULL has no value, whatever stands there.
  if (chosen != nullptr && chosen->type->kind != Kind::null &&
      !clone_member(&copy->value, &from->value, *chosen->type)) {
    std::free(copy);
    return nullptr;
  }
  copy->kind = from->kind;
  return copy;
}

List *clone_list(const List *source, const Type &element) {
  if (element.by_hand.clone != nullptr && element.by_hand.free != nullptr) {
    return List_clone(source, element.by_hand.clone, element.by_hand.free);
  }
  List *const copy = List_new(0);
  if (copy == nullptr) return nullptr;
  for (int32_t i = 0; i < List_len(source); ++i) {
    void *const made = clone(List_get(source, i), element);
    if (made == nullptr || List_append(copy, made, 0) == 0) {
      if (made != nullptr) release(made, element);
      release_elements(copy, element);
      return nullptr;
    }
  }
  return copy;
}

}  // namespace

void *clone_walked(const void *value, const Type &type) {
  if (value == nullptr) return nullptr;
  if (type.kind == Kind::sequence) return clone_fields(value, Walked{type});
  if (type.kind == Kind::choice) return clone_choice(value, type);
  return clone_list(static_cast<const List *>(value), *type.element);
}

// ---------------------------------------------------------------------------------------------
// Encode: measure, then write from the end
// ---------------------------------------------------------------------------------------------

/// Whether a value of an exact type is not there. NULL has none.
static bool is_missing(const void *value, const Type &type) {
  return value == nullptr && type.exact && type.kind != Kind::null;
}

uint32_t measure_tagged(const Field &field, const void *value) {
  if (field.tagging == Tagging::none) return measure(value, *field.type);
  if (is_missing(value, *field.type)) return 0;
  require(value != nullptr || field.may_be_null, unit,
          field.tagging == Tagging::implicit ? "asn1_implicit_e" : "asn1_explicit_e", "pElement");
  const uint32_t octets = measure(value, *field.type);
  return octets == 0 || field.tagging == Tagging::implicit ? octets : element_octets(octets);
}

void write_tagged(const Field &field, BackWriter &out, const void *value) {
  const uint32_t end = out.left();
  write(out, value, *field.type);
  if (field.tagging == Tagging::implicit) out.retag(field.tag);
  if (field.tagging == Tagging::explicit_tag) {
    out.header(static_cast<uint8_t>(field.tag | tag::constructed), end - out.left());
  }
}

namespace {

bool measure_field(const Field &field, const void *record, Measure &size) {
  if (field.kept != no_member) {
    const OctetString *const kept = kept_octets(field, record);
    if (kept != nullptr) return size.add(kept->length);
  }
  if (field.by_hand != nullptr && field.by_hand->measure != nullptr) {
    return field.by_hand->measure(field, record, size);
  }
  const void *const member = member_of(record, field.member);
  if (field.optional && !is_set(field, member)) return true;
  return size.add(measure_tagged(field, value_of(field, member)));
}

void write_field(const Field &field, BackWriter &out, const void *record) {
  if (field.kept != no_member) {
    const OctetString *const kept = kept_octets(field, record);
    if (kept != nullptr) return out.octets(kept->data, kept->length);
  }
  if (field.by_hand != nullptr && field.by_hand->write != nullptr) {
    return field.by_hand->write(field, out, record);
  }
  const void *const member = member_of(record, field.member);
  if (field.optional && !is_set(field, member)) return;
  write_tagged(field, out, value_of(field, member));
}

uint32_t measure_record(const void *record, const Type &type) {
  require(record != nullptr, unit, "encoder of a SEQUENCE", "pElement != NULL");
  return measure_fields(record, type);
}

uint32_t measure_choice(const void *record, const Type &type) {
  require(record != nullptr, unit, "encoder of a CHOICE", "pElement != NULL");
  const auto *const choice = static_cast<const ChoiceRecord *>(record);
  // There is a record, which the analyzer loses at some depth.
  // NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
  const Field *const chosen = alternative(choice->kind, type);
  return chosen == nullptr ? 0 : measure_tagged(*chosen, choice->value);
}

uint32_t measure_list(const List *list, const Type &element) {
  Measure size;
  for (int32_t i = 0; i < List_len(list); ++i) {
    if (!size.add(measure(List_get(list, i), element))) return 0;
  }
  return size.element();
}

}  // namespace

uint32_t measure_fields(const void *record, const Type &type) {
  Measure size;
  for (uint16_t i = 0; i < type.count; ++i) {
    if (!measure_field(type.fields[i], record, size)) return 0;
  }
  return size.element();
}

uint32_t measure(const void *value, const Type &type) {
  if (is_missing(value, type)) return 0;
  if (type.nests && !stack_for_nested()) return 0;
  if (type.by_hand.measure != nullptr) return type.by_hand.measure(value);
  if (type.kind == Kind::sequence) return measure_record(value, type);
  if (type.kind == Kind::choice) return measure_choice(value, type);
  return measure_list(static_cast<const List *>(value), *type.element);
}

void write(BackWriter &out, const void *value, const Type &type) {
  if (type.nests && !stack_for_nested()) return out.fail();
  if (type.by_hand.write != nullptr) return type.by_hand.write(out, value);
  const uint32_t end = out.left();
  if (type.kind == Kind::choice) {
    const auto *const choice = static_cast<const ChoiceRecord *>(value);
    return write_tagged(*alternative(choice->kind, type), out, choice->value);
  }
  if (type.kind == Kind::sequence) {
    for (uint16_t i = type.count; i != 0; --i) write_field(type.fields[i - 1], out, value);
  } else {
    const auto *const list = static_cast<const List *>(value);
    for (int32_t i = List_len(list); i != 0; --i) write(out, List_get(list, i - 1), *type.element);
  }
  out.header(type.identifier, end - out.left());
}

uint32_t encode(uint8_t **pp, const void *value, const Type &type) {
  const uint32_t whole = measure(value, type);
  if (pp == nullptr || whole == 0) return whole;
  BackWriter out(*pp, whole);
  write(out, value, type);
  if (!out.complete()) return 0;
  *pp += whole;
  return whole;
}

// ---------------------------------------------------------------------------------------------
// Decode
// ---------------------------------------------------------------------------------------------

const uint8_t *decode_explicit(const Field &field, const uint8_t *z, const uint8_t *end,
                               void *place, uint32_t depth) {
  Reader in(z, end);
  uint32_t length;
  const auto expected = static_cast<uint8_t>(field.tag | tag::constructed);
  if (field.type->exact) {
    Header header;
    if (!in.read_exact_header(0, expected, Forms::indefinite, &header, depth)) return nullptr;
    ContentReader content = in.exact_content(header);
    const uint8_t *const next =
        decode(content.position(), content.end(), 0, place, depth, *field.type);
    if (next == nullptr) return nullptr;
    content.move_to(next);
    // The value that was read is released with the record in which it stands.
    return content.close(header) ? content.position() : nullptr;
  }
  if (!in.read_header(0, expected, &length, depth)) return nullptr;
  const Reader content = in.content(length);
  return decode(content.position(), content.end(), 0, place, depth, *field.type);
}

namespace {

const uint8_t *decode_choice(const uint8_t *z, const uint8_t *end, void *place, uint32_t depth,
                             const Type &type) {
  if (place == nullptr) return nullptr;
  auto *const choice = static_cast<ChoiceRecord *>(create(type));
  store(place, choice);
  if (choice == nullptr) return nullptr;
  const uint8_t *next = nullptr;
  if (z != nullptr) {
    require(end != nullptr, unit, "asn1_Tag_d", "end != NULL");
    const int octet = Reader(z, end).peek();
    if (octet >= 0) {
      choice->kind = octet & tag::number;
      const Field *const chosen = alternative(choice->kind, type);
      if (chosen != nullptr) {
        void *value = nullptr;
        next = decode_tagged(*chosen, z, end, &value, child_depth(depth));
        choice->value = value;
      }
    }
  }
  if (next == nullptr) {
    release_choice(choice, type);
    store(place, nullptr);
    return nullptr;
  }
  trace_close(depth);
  return next;
}

}  // namespace

const uint8_t *decode_walked(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                             uint32_t depth, const Type &type) {
  if (type.kind == Kind::sequence) {
    return decode_fields(z, end, impl_tag, place, depth, Walked{type});
  }
  if (type.kind == Kind::choice) return decode_choice(z, end, place, depth, type);
  return decode_elements(z, end, impl_tag, place, depth, type);
}

}  // namespace asn1
