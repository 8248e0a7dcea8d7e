#include "core/record.h"

#include "core/list.h"
#include "core/stack.h"

namespace asn1 {

namespace {

constexpr const char *unit = "asn1_x680";

// ---------------------------------------------------------------------------------------------
// The values of fields
// ---------------------------------------------------------------------------------------------

/// The value of a member: the pointer in it, or the place of a number.
const void *value_of(const void *member, const Type &type) {
  return type.is_number ? member : load(member);
}

bool is_set(const void *member, const Type &type) {
  uint32_t number;
  if (!type.is_number) return load(member) != nullptr;
  std::memcpy(&number, member, sizeof number);
  return number != 0;
}

OctetString *kept_octets(const Field &field, const void *record) {
  return static_cast<OctetString *>(load(member_of(record, field.kept)));
}

// ---------------------------------------------------------------------------------------------
// Release
// ---------------------------------------------------------------------------------------------

void release_field(const Field &field, void *record, bool abandoned) {
  if (field.by_hand != nullptr && field.by_hand->free != nullptr) {
    field.by_hand->free(field, record);
  } else if (!field.type->is_number) {
    void *const value = load(member_of(record, field.member));
    if (value != nullptr) {
      if (field.wiped) {
        const auto *const bits = static_cast<const BitString *>(value);
        if (bits->data != nullptr) explicit_bzero(bits->data, octets_of_bits(bits->length));
      }
      release(value, *field.type);
    }
  }
  if (field.kept != no_member && (abandoned || field.keeper == Kept::by_the_record)) {
    asn1_OctetString_free(kept_octets(field, record));
  }
}

void release_list(List *list, const Type &element) {
  for (int32_t i = 0; i < List_len(list); ++i) release(List_get(list, i), element);
  List_free(list, nullptr);
}

/// The place of the alternative that a CHOICE has, or a null pointer. All CHOICE records are alike.
const Field *alternative(uint8_t kind, const Type &type) {
  for (uint16_t i = 0; i < type.count; ++i) {
    if (type.fields[i].kind == kind) return &type.fields[i];
  }
  return nullptr;
}

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

void release_record(void *record, const Type &type) {
  for (uint16_t i = 0; i < type.count; ++i) release_field(type.fields[i], record, false);
  std::free(record);
}

}  // namespace

void *create(const Type &type) {
  void *const record = std::malloc(type.size);
  if (record != nullptr) std::memset(record, 0, type.size);
  return record;
}

void release(void *value, const Type &type) {
  if (type.by_hand.free != nullptr) return type.by_hand.free(value);
  if (value == nullptr) return;
  if (type.kind == Kind::sequence) return release_record(value, type);
  if (type.kind == Kind::choice) return release_choice(value, type);
  return release_list(static_cast<List *>(value), *type.element);
}

// ---------------------------------------------------------------------------------------------
// Copy
// ---------------------------------------------------------------------------------------------

bool clone_member(void *copy, const void *source, const Type &type) {
  if (type.is_number) {
    std::memcpy(copy, source, sizeof(uint32_t));
    return true;
  }
  const void *const value = load(source);
  if (value == nullptr) return true;
  void *const made = clone(value, type);
  store(copy, made);
  return made != nullptr;
}

namespace {

bool clone_field(const Field &field, void *copy, const void *source) {
  if (field.by_hand != nullptr && field.by_hand->clone != nullptr) {
    if (!field.by_hand->clone(field, copy, source)) return false;
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

void *clone_record(const void *source, const Type &type) {
  void *const copy = create(type);
  if (copy == nullptr) return nullptr;
  for (uint16_t i = 0; i < type.count; ++i) {
    if (!clone_field(type.fields[i], copy, source)) {
      release(copy, type);
      return nullptr;
    }
  }
  return copy;
}

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
  List *const copy = List_new(0);
  if (copy == nullptr) return nullptr;
  for (int32_t i = 0; i < List_len(source); ++i) {
    void *const made = clone(List_get(source, i), element);
    if (made == nullptr || List_append(copy, made, 0) == 0) {
      if (made != nullptr) release(made, element);
      release_list(copy, element);
      return nullptr;
    }
  }
  return copy;
}

}  // namespace

void *clone(const void *value, const Type &type) {
  if (type.by_hand.clone != nullptr) return type.by_hand.clone(value);
  if (value == nullptr) return nullptr;
  if (type.kind == Kind::sequence) return clone_record(value, type);
  if (type.kind == Kind::choice) return clone_choice(value, type);
  return clone_list(static_cast<const List *>(value), *type.element);
}

// ---------------------------------------------------------------------------------------------
// Encode: measure, then write from the end
// ---------------------------------------------------------------------------------------------

uint32_t measure_tagged(const Field &field, const void *value) {
  if (field.tagging == Tagging::none) return measure(value, *field.type);
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
  if (field.optional && !is_set(member, *field.type)) return true;
  return size.add(measure_tagged(field, value_of(member, *field.type)));
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
  if (field.optional && !is_set(member, *field.type)) return;
  write_tagged(field, out, value_of(member, *field.type));
}

uint32_t measure_record(const void *record, const Type &type) {
  require(record != nullptr, unit, "encoder of a SEQUENCE", "pElement != NULL");
  return measure_fields(record, type);
}

uint32_t measure_choice(const void *record, const Type &type) {
  require(record != nullptr, unit, "encoder of a CHOICE", "pElement != NULL");
  const auto *const choice = static_cast<const ChoiceRecord *>(record);
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

const uint8_t *decode_list(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, uint32_t tag,
                           List **place, uint32_t depth, const Elements &elements) {
  require(place != nullptr, unit, "asn1_List_d", "ppList != NULL");
  if (z == nullptr) return nullptr;
  void *element = nullptr;
  auto fail = [&]() -> const uint8_t * {
    elements.release(elements.context, element);
    elements.release_list(elements.context, *place);
    *place = nullptr;
    return nullptr;
  };

  *place = List_new(0);
  if (*place == nullptr) return fail();
  Reader in(z, end);
  Header header;
  if (!in.read_header(impl_tag, static_cast<uint8_t>(tag | tag::constructed), Forms::indefinite,
                      &header, depth)) {
    return nullptr;
  }
  const uint32_t inner_depth = child_depth(depth);
  ContentReader content = in.content(header);
  while (!content.at_end()) {
    element = nullptr;
    const uint8_t *next =
        elements.decode(elements.context, content.position(), content.end(), &element, inner_depth);
    if (next == nullptr) return fail();
    content.move_to(next);
    if (List_append(*place, element, 0) == 0) return fail();
    element = nullptr;  // the list's from here on, also on the way out
  }
  if (header.indefinite && !content.read_outer_eoc()) return fail();
  if (inner_depth != 0) trace_close(depth);
  return content.position();
}

namespace {

const Type &type_in(const void *context) { return *static_cast<const Type *>(context); }

/// The elements of a type, for decode_list().
Elements elements_of(const Type &type) {
  return {&type,
          [](const void *context, const uint8_t *z, const uint8_t *end, void **place,
             uint32_t depth) { return decode(z, end, 0, place, depth, type_in(context)); },
          [](const void *context, void *element) { release(element, type_in(context)); },
          [](const void *context, List *list) { release_list(list, type_in(context)); }};
}

bool is_there(const Field &field, const ContentReader &in) {
  if (field.presence == Presence::always) return true;
  if (field.presence == Presence::anything_left) return !in.at_end();
  if (field.presence == Presence::octet_of_input) return in.peek_outer() == field.found_by;
  const int octet = in.peek();
  if (octet < 0) return false;
  if (octet == field.found_by) return true;
  if (field.presence == Presence::either_form) return octet == (field.found_by | tag::constructed);
  return field.type->other_identifier != 0 && octet == field.type->other_identifier;
}

const uint8_t *decode_tagged(const Field &field, const uint8_t *z, const uint8_t *end, void *place,
                             uint32_t depth) {
  if (field.tagging != Tagging::explicit_tag) {
    return decode(z, end, field.tag, place, depth, *field.type);
  }
  Reader in(z, end);
  uint32_t length;
  const auto expected = static_cast<uint8_t>(field.tag | tag::constructed);
  if (!in.read_header(0, expected, &length, depth)) return nullptr;
  const Reader content = in.content(length);
  return decode(content.position(), content.end(), 0, place, depth, *field.type);
}

bool decode_field(const Field &field, ContentReader &in, void *record, uint32_t depth) {
  if (!is_there(field, in)) return true;
  if (field.allowed != nullptr && !field.allowed(record)) return false;
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

/// Releases a record that was not read to its end. A field may own more then than it does in a
/// record that a caller holds.
void abandon(void *record, const Type &type) {
  for (uint16_t i = 0; i < type.count; ++i) release_field(type.fields[i], record, true);
  std::free(record);
}

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

// What is left in the content past the last field that was recognised is neither refused nor
// skipped: the cursor that is returned stands in front of it. A refused header leaves the place
// alone, but for a type that may have an indefinite length, whose end-of-contents stands right past
// the last field, and past which more may follow.
const uint8_t *decode_record(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                             uint32_t depth, const Type &type) {
  if (type.any_length) {
    if (place == nullptr) return nullptr;
    store(place, nullptr);
  }
  Reader in(z, end);
  Header header;
  if (!in.read_header(impl_tag, tag::sequence, type.any_length ? Forms::indefinite : Forms::one,
                      &header, depth) ||
      place == nullptr) {
    return nullptr;
  }
  void *const record = create(type);
  store(place, record);
  if (record == nullptr) return nullptr;
  const uint32_t inner_depth = child_depth(depth);
  ContentReader content = in.content(header);
  bool complete = true;
  for (uint16_t i = 0; complete && i < type.count; ++i) {
    complete = decode_field(type.fields[i], content, record, inner_depth);
  }
  if (complete && (!header.indefinite || content.read_outer_eoc())) {
    trace_close(depth);
    return content.position();
  }
  abandon(record, type);
  store(place, nullptr);
  return nullptr;
}

}  // namespace

const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void *place,
                      uint32_t depth, const Type &type) {
  if (type.by_hand.decode != nullptr) return type.by_hand.decode(z, end, impl_tag, place, depth);
  if (type.kind == Kind::sequence) return decode_record(z, end, impl_tag, place, depth, type);
  if (type.kind == Kind::choice) return decode_choice(z, end, place, depth, type);
  return decode_list(z, end, impl_tag, type.identifier, static_cast<List **>(place), depth,
                         elements_of(*type.element));
}

bool read(ContentReader &in, void *place, uint32_t depth, const Type &type, uint32_t impl_tag) {
  const uint8_t *const next = decode(in.position(), in.end(), impl_tag, place, depth, type);
  if (next == nullptr) return false;
  in.move_to(next);
  return true;
}

}  // namespace asn1
