// INTEGER, BOOLEAN, ENUMERATED, NULL, ANY and OBJECT IDENTIFIER.
#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include "core/cursor.h"
#include "core/decimal.h"
#include "core/scan.h"
#include "universal/content.h"

using namespace asn1;

namespace {
constexpr const char *unit = "asn1_x680";
}

// ---------------------------------------------------------------------------------------------
// INTEGER
// ---------------------------------------------------------------------------------------------

namespace {

// What is written of an INTEGER: a zero octet where DER wants one, then the octets of the record
// past their leading zeros.
struct IntegerContent {
  bool zero_first = true;
  const uint8_t *octets = nullptr;
  uint32_t count = 0;        // octets that are written
  uint32_t length_tail = 0;  // octets that the header announces for them

  explicit IntegerContent(const Integer &integer) {
    if (integer.data == nullptr) return;
    if (integer.length > INT32_MAX) {  // a limit of this library: such a length has no content
      zero_first = false;
      length_tail = integer.length;
      return;
    }
    octets = integer.data;
    count = integer.length;
    while (count != 0 && *octets == 0) {
      ++octets;
      --count;
    }
    zero_first = count == 0 || (integer.negative == 0 && (*octets & 0x80) != 0);
    length_tail = count;
  }

  uint32_t announced() const { return length_tail + (zero_first ? 1 : 0); }
  uint32_t written() const { return count + (zero_first ? 1 : 0); }
};

}  // namespace

Integer *asn1_Integer_new(uint32_t length) {
  auto *integer = new_record<Integer>();
  if (integer == nullptr || length == 0) return integer;
  integer->data = static_cast<uint8_t *>(std::calloc(length, 1));
  if (integer->data == nullptr) {
    std::free(integer);
    return nullptr;
  }
  integer->length = length;
  return integer;
}

void asn1_Integer_free(Integer *pElement) {
  if (pElement == nullptr) return;
  std::free(pElement->data);
  std::free(pElement);
}

Integer *asn1_Integer_set(uint32_t value) {
  uint8_t octets[4];
  uint32_t count = 0;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const auto octet = static_cast<uint8_t>(value >> shift);
    if (octet != 0 || count != 0) octets[count++] = octet;
  }
  const Integer integer = {count, octets, 0};
  return asn1_Integer_clone(&integer);
}

uint32_t asn1_Integer_get(const Integer *integer) {
  require(integer != nullptr, unit, __func__, "integer != NULL");
  if (integer->data == nullptr) return 0;
  uint32_t value = 0;
  for (uint32_t i = 0; i < integer->length; ++i) {
    if (value > 0xFFFFFF) return UINT32_MAX;
    value = value << 8 | integer->data[i];
  }
  return value;
}

uint32_t asn1_Integer_e(uint8_t **pp, const Integer *pElement) {
  if (pElement == nullptr) return 0;
  const IntegerContent content(*pElement);
  const uint32_t whole = header_octets(content.announced()) + content.written();
  if (pp == nullptr) return whole;
  Writer out(pp);
  out.header(tag::integer, content.announced());
  if (content.zero_first) out.octet(0);
  out.octets(content.octets, content.count);
  return whole;
}

const uint8_t *asn1_Integer_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              Integer **ppElement, uint32_t depth) {
  if (z == nullptr || z >= end || ppElement == nullptr) return nullptr;
  Reader in(z, end);
  uint32_t length;
  const uint8_t *octets;
  if (!in.read_header(impl_tag, tag::integer, &length, depth) || length == 0 ||
      !in.take(length, &octets)) {
    return nullptr;
  }
  const uint8_t first = *octets;
  if (first == 0) {
    ++octets;
    --length;
  }
  Integer *const integer = *ppElement = new_record<Integer>();
  if (integer == nullptr) return nullptr;
  if (length != 0) {
    integer->data = new_array<uint8_t>(length);
    if (integer->data == nullptr) {
      std::free(integer);
      *ppElement = nullptr;
      return nullptr;
    }
    std::memcpy(integer->data, octets, length);
  }
  integer->length = length;
  integer->negative = first >> 7;
  if (depth != 0) [[unlikely]] {
    if (length > 4) {
      asn1_LogByteArray(depth, integer->data, static_cast<int32_t>(length));
    } else {
      asn1_LogMessage(depth, " %i\n", static_cast<int>(asn1_Integer_get(integer)));
    }
  }
  return in.position();
}

int32_t asn1_Integer_cmp(const Integer *a, const Integer *b) {
  if (a == nullptr || b == nullptr) return 1;
  if (a->negative != b->negative || a->length != b->length) return 1;
  return compare_octets(a->data, b->data, a->length);
}

Integer *asn1_Integer_clone(const Integer *pElement) {
  if (pElement == nullptr) return nullptr;
  const uint32_t length = pElement->length;
  // A record may announce octets that it does not have, as the encoder knows.
  if (length != 0 && pElement->data == nullptr) return nullptr;
  Integer *copy = asn1_Integer_new(length);
  if (copy == nullptr) return nullptr;
  if (length != 0) std::memcpy(copy->data, pElement->data, length);
  copy->negative = pElement->negative;
  return copy;
}

namespace {
constexpr uint8_t integer0Bytes[] = {0};
constexpr uint8_t integer1Bytes[] = {1};
constexpr uint8_t integer2Bytes[] = {2};
constexpr uint8_t integer3Bytes[] = {3};
constexpr Integer integer0 = {1, const_cast<uint8_t *>(integer0Bytes), 0};
constexpr Integer integer1 = {1, const_cast<uint8_t *>(integer1Bytes), 0};
constexpr Integer integer2 = {1, const_cast<uint8_t *>(integer2Bytes), 0};
constexpr Integer integer3 = {1, const_cast<uint8_t *>(integer3Bytes), 0};
}  // namespace

const Integer *asn1_Integer_0() { return &integer0; }
const Integer *asn1_Integer_1() { return &integer1; }
const Integer *asn1_Integer_2() { return &integer2; }
const Integer *asn1_Integer_3() { return &integer3; }

// ---------------------------------------------------------------------------------------------
// BOOLEAN, ENUMERATED, NULL
// ---------------------------------------------------------------------------------------------

namespace {

uint32_t encode_octet(uint8_t **pp, uint8_t identifier, uint32_t value) {
  if (pp != nullptr) {
    Writer out(pp);
    out.header(identifier, 1);
    out.octet(static_cast<uint8_t>(value));
  }
  return 3;
}

// Reads one content octet. At the end of the range nothing is read and nothing is wrong: the caller
// keeps the number that it had.
template <class Trace>
const uint8_t *decode_octet(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            uint8_t own_tag, uint32_t *value, uint32_t depth, Trace trace) {
  if (value == nullptr) return nullptr;
  Reader in(z, end);
  if (z != nullptr && end != nullptr && !in.at_end()) {
    uint32_t length;
    uint8_t octet;
    if (!in.read_header(impl_tag, own_tag, &length, depth) || length != 1 ||
        !in.read_octet(&octet)) {
      return nullptr;
    }
    *value = octet;
  }
  if (depth != 0) [[unlikely]] {
    trace(*value);
  }
  return in.position();
}

}  // namespace

uint32_t asn1_Boolean_e(uint8_t **pp, uint32_t value) {
  return encode_octet(pp, tag::boolean, value);
}

const uint8_t *asn1_Boolean_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              uint32_t *value, uint32_t depth) {
  return decode_octet(z, end, impl_tag, tag::boolean, value, depth, [depth](uint32_t number) {
    asn1_LogMessage(depth, "  %s (%0x)\n", number != 0 ? "TRUE" : "FALSE", number);
  });
}

uint32_t asn1_Enumerated_e(uint8_t **pp, uint32_t value) {
  return encode_octet(pp, tag::enumerated, value);
}

const uint8_t *asn1_Enumerated_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 uint32_t *value, uint32_t depth) {
  return decode_octet(z, end, impl_tag, tag::enumerated, value, depth, [depth](uint32_t number) {
    asn1_LogMessage(depth, "  %i\n", static_cast<int>(number));
  });
}

uint32_t asn1_Null_e(uint8_t **pp) {
  if (pp != nullptr) Writer(pp).header(tag::null, 0);
  return 2;
}

const uint8_t *asn1_Null_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **,
                           uint32_t depth) {
  Reader in(z, end);
  uint32_t length;
  return in.read_header(impl_tag, tag::null, &length, depth) ? in.position() : nullptr;
}

// ---------------------------------------------------------------------------------------------
// ANY
// ---------------------------------------------------------------------------------------------

Any *asn1_Any_new(uint32_t length) { return asn1_ASN1String_new(length, nullptr); }
void asn1_Any_free(Any *pElement) { asn1_ASN1String_free(pElement); }
Any *asn1_Any_clone(const Any *pElement) { return asn1_ASN1String_clone(pElement); }
int32_t asn1_Any_cmp(const Any *a, const Any *b) { return asn1_ASN1String_cmp(a, b); }

uint32_t asn1_Any_e(uint8_t **pp, const Any *pElement) {
  if (pElement == nullptr) return 0;
  if (pp != nullptr) Writer(pp).octets(pElement->data, pElement->length);
  return pElement->length;
}

const uint8_t *asn1_Any_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, Any **ppElement,
                          uint32_t depth) {
  require((impl_tag & 0xFF) == 0, unit, __func__, "impl_tag == 0");
  if (ppElement == nullptr || z == nullptr) return nullptr;
  *ppElement = nullptr;
  require(end != nullptr, unit, "asn1_Length_d", "end != NULL");
  Reader in(z, end);
  uint32_t length;
  if (!in.skip(1) || !in.read_length(&length, nullptr, depth) || !in.skip(length)) return nullptr;
  // The size in the shortest form: an element with a longer length than needed loses its last
  // octets.
  const uint32_t size = header_octets(length) + length;
  *ppElement = asn1_ASN1String_new(size, z);
  if (*ppElement == nullptr) return nullptr;
  if (depth != 0) [[unlikely]] {
    asn1_LogMessage(depth, "[ANY]\n");
    asn1_LogByteArray(depth, (*ppElement)->data, static_cast<int32_t>(size));
  }
  return in.position();
}

namespace {
constexpr uint8_t anyNullBytes[] = {tag::null, 0};
constexpr Any anyNull = {2, const_cast<uint8_t *>(anyNullBytes)};
}  // namespace

const Any *asn1_Any_NULL() { return &anyNull; }

// ---------------------------------------------------------------------------------------------
// OBJECT IDENTIFIER
// ---------------------------------------------------------------------------------------------

namespace {

constexpr uint32_t base128_octets(uint32_t value) {
  if (value <= 0x7F) return 1;
  if (value <= 0x3FFF) return 2;
  if (value <= 0x1FFFFF) return 3;
  if (value <= 0xFFFFFFF) return 4;
  return 5;
}

uint32_t encode_base128(uint8_t **pp, uint32_t value) {
  const uint32_t octets = base128_octets(value);
  if (pp != nullptr) {
    Writer out(pp);
    for (uint32_t i = octets - 1; i != 0; --i) {
      out.octet(static_cast<uint8_t>(0x80 | (value >> (7 * i))));
    }
    out.octet(value & 0x7F);
  }
  return octets;
}

}  // namespace

ObjId *asn1_ObjId_new(uint32_t count) {
  auto *oid = new_record<ObjId>();
  if (oid == nullptr || count == 0) return oid;
  oid->arcs = static_cast<uint32_t *>(std::calloc(count, sizeof(uint32_t)));
  if (oid->arcs == nullptr) {
    std::free(oid);
    return nullptr;
  }
  oid->count = count;
  return oid;
}

void asn1_ObjId_free(ObjId *pElement) {
  if (pElement == nullptr) return;
  std::free(pElement->arcs);
  std::free(pElement);
}

ObjId *asn1_ObjId_clone(const ObjId *pElement) {
  if (pElement == nullptr || (pElement->count != 0 && pElement->arcs == nullptr)) return nullptr;
  ObjId *copy = asn1_ObjId_new(pElement->count);
  if (copy != nullptr && copy->count != 0) {
    std::memcpy(copy->arcs, pElement->arcs, copy->count * sizeof(uint32_t));
  }
  return copy;
}

int32_t asn1_ObjId_cmp(const ObjId *oid1, const ObjId *oid2) {
  require(oid1 != nullptr, unit, __func__, "oid1 != NULL");
  require(oid2 != nullptr, unit, __func__, "oid2 != NULL");
  if (oid1->count != oid2->count) return 1;
  const int32_t order = compare_octets(oid1->arcs, oid2->arcs, oid1->count * sizeof(uint32_t));
  return order == 0 ? 0 : 1;
}

uint32_t asn1_ObjId_e(uint8_t **pp, const ObjId *oid) {
  if (oid == nullptr || oid->count < 2) return 0;
  const uint32_t first = oid->arcs[0] * 40 + oid->arcs[1];
  Measure size;
  if (!size.add(encode_base128(nullptr, first))) return 0;
  for (uint32_t i = 2; i < oid->count; ++i) {
    if (!size.add(encode_base128(nullptr, oid->arcs[i]))) return 0;
  }
  const uint32_t whole = size.element();
  if (pp == nullptr || whole == 0) return whole;
  Writer(pp).header(tag::object_identifier, size.content());
  encode_base128(pp, first);
  for (uint32_t i = 2; i < oid->count; ++i) encode_base128(pp, oid->arcs[i]);
  return whole;
}

const uint8_t *asn1_ObjId_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            ObjId **ppElement, uint32_t depth) {
  if (ppElement == nullptr || z == nullptr) return nullptr;
  *ppElement = nullptr;
  Reader in(z, end);
  uint32_t length;
  if (!in.read_header(impl_tag, tag::object_identifier, &length, depth)) return nullptr;

  const uint32_t count = arcs_of(in.content(length));
  auto *oid = new_record<ObjId>();
  if (oid == nullptr) return nullptr;
  oid->arcs = new_array<uint32_t>(count);
  oid->count = count;
  // The first number makes the first two arcs (X.690, 8.19.4), here without a rule for the root arc 2.
  uint32_t first = 0;
  bool complete = oid->arcs != nullptr && (count == 1 || read_subidentifier(&in, &first));
  if (complete) {
    oid->arcs[0] = first / 40;
    if (count != 1) oid->arcs[1] = first % 40;
  }
  for (uint32_t i = 2; complete && i < count; ++i) {
    complete = read_subidentifier(&in, &oid->arcs[i]);
  }
  if (!complete) {
    asn1_ObjId_free(oid);
    return nullptr;
  }
  *ppElement = oid;
  if (depth != 0) [[unlikely]] {
    asn1_LogObjId(depth, oid);
  }
  return in.position();
}

int32_t asn1_ObjId_sprint(const ObjId *oid, char *s, uint32_t *length) {
  require(oid != nullptr, unit, __func__, "oid != NULL");
  require(length != nullptr, unit, __func__, "length != NULL");
  constexpr size_t arc_size = sizeof ".-2147483648";
  auto *const text = reinterpret_cast<char *>(new_array<char[arc_size]>(size_t{oid->count} + 1));
  if (text == nullptr) return -1;
  char *tail = text;
  for (uint32_t i = 0; i < oid->count; ++i) {
    if (i != 0) *tail++ = '.';
    const Decimal arc(static_cast<int32_t>(oid->arcs[i]));
    tail = std::copy(arc.begin(), arc.end(), tail);
  }
  *tail = '\0';
  const auto size = static_cast<size_t>(tail - text) + 1;
  const bool fits = size <= (s == nullptr ? UINT32_MAX : *length);
  if (fits) {
    if (s != nullptr) std::memcpy(s, text, size);
    *length = static_cast<uint32_t>(size);
  }
  std::free(text);
  return fits ? 0 : -1;
}

int32_t asn1_ObjId_fprint(const ObjId *oid, FILE *fp) {
  require(oid != nullptr, unit, __func__, "oid != NULL");
  require(fp != nullptr, unit, __func__, "fp != NULL");
  if (oid->count == 0) return -1;
  int32_t result = std::fprintf(fp, "%" PRId32, static_cast<int32_t>(oid->arcs[0]));
  for (uint32_t i = 1; i < oid->count; ++i) {
    result = std::fprintf(fp, ".%" PRId32, static_cast<int32_t>(oid->arcs[i]));
  }
  return result;
}

ObjId *asn1_ObjId_parse(const char **text) {
  if (text == nullptr || *text == nullptr || !is_digit(**text)) return nullptr;
  const char *cursor = *text;
  uint32_t count = 1;
  for (const char *c = cursor; is_digit(*c) || *c == '.'; ++c) count += *c == '.' ? 1U : 0U;
  ObjId *oid = asn1_ObjId_new(count);
  if (oid == nullptr) return nullptr;

  // An arc without a number, as after a double dot, keeps the number and the width of the arc before
  // it. The cursor never moves past the closing NUL.
  auto advance = [&cursor](size_t characters) {
    for (; characters != 0 && *cursor != '\0'; --characters) ++cursor;
  };
  IntegerScanner scanner;
  int32_t arc = 0;
  size_t width = 0;
  for (uint32_t i = 0; i < count; ++i) {
    if (scanner.scan(cursor, &arc, &width) == Scan::failure) {
      asn1_ObjId_free(oid);
      return nullptr;
    }
    oid->arcs[i] = static_cast<uint32_t>(arc);
    advance(width);
    if (i + 1 < count) advance(1);
  }
  *text = cursor;
  return oid;
}
