// BIT STRING, OCTET STRING and the character strings.
#include "universal/content.h"

using namespace asn1;

namespace {

constexpr const char *unit = "asn1_x680";

/// Octets in one block that grows and that the caller takes over in the end.
class Buffer {
 public:
  Buffer() = default;
  Buffer(const Buffer &) = delete;
  Buffer &operator=(const Buffer &) = delete;
  ~Buffer() { std::free(data_); }

  /// Appends octets, which together with those before must be no more than 32 bits count. The first
  /// octets get a block of their own size. Only a value that goes on in further segments gets room
  /// in advance.
  bool append(const uint8_t *octets, uint32_t count) {
    if (count == 0) return true;
    const uint32_t sum = size_ + count;
    if (sum > capacity_ && !reserve(sum)) return false;
    std::memcpy(data_ + size_, octets, count);
    size_ = sum;
    return true;
  }

  uint32_t size() const { return size_; }

  /// Hands the block over, no longer than its octets.
  uint8_t *release() {
    uint8_t *data = data_;
    if (capacity_ > size_) {
      auto *fitted = static_cast<uint8_t *>(std::realloc(data, size_));
      if (fitted != nullptr) data = fitted;
    }
    data_ = nullptr;
    return data;
  }

 private:
  bool reserve(uint32_t octets) {
    uint32_t capacity;
    if (size_ == 0 || __builtin_add_overflow(octets, octets / 2, &capacity)) capacity = octets;
    auto *data = static_cast<uint8_t *>(std::realloc(data_, capacity));
    if (data == nullptr) return false;
    data_ = data;
    capacity_ = capacity;
    return true;
  }

  uint8_t *data_ = nullptr;
  uint32_t size_ = 0;
  uint32_t capacity_ = 0;
};

/// The constructed values that are open while a string is read, innermost last. They are kept on
/// the heap, because the input decides how many there are.
class OpenValues {
 public:
  struct Value {
    ContentReader rest;
    bool indefinite;
  };

  OpenValues() = default;
  OpenValues(const OpenValues &) = delete;
  OpenValues &operator=(const OpenValues &) = delete;
  ~OpenValues() { std::free(values_); }

  bool push(const Value &value) {
    if (count_ == capacity_) {
      const size_t capacity = capacity_ == 0 ? 8 : capacity_ * 2;
      if (capacity > SIZE_MAX / sizeof(Value)) return false;
      auto *values = static_cast<Value *>(
          std::realloc(static_cast<void *>(values_), capacity * sizeof(Value)));
      if (values == nullptr) return false;
      values_ = values;
      capacity_ = capacity;
    }
    values_[count_++] = value;
    return true;
  }
  void pop() { --count_; }
  bool empty() const { return count_ == 0; }
  Value &top() { return values_[count_ - 1]; }

 private:
  static_assert(std::is_trivially_copyable_v<Value>);
  Value *values_ = nullptr;
  size_t count_ = 0;
  size_t capacity_ = 0;
};

void trace_octets(uint32_t depth, const Octets &octets) {
  if (depth != 0) [[unlikely]] {
    asn1_LogByteArray(depth, octets.data, static_cast<int32_t>(octets.count));
  }
}

/// Reads the content of a primitive string into a new record. Returns the position after it, or
/// NULL.
template <class Content, class Record>
const uint8_t *read_primitive(Reader in, const Header &header, uint32_t depth, Record *record) {
  Content content;
  Octets octets;
  if (!content.take(&in, header, depth, &octets)) return nullptr;
  if (octets.count != 0) {
    record->data = new_array<uint8_t>(octets.count);
    if (record->data == nullptr) return nullptr;
    std::memcpy(record->data, octets.data, octets.count);
  }
  record->length = octets.count * Content::units - content.unused;
  trace_octets(depth, octets);
  return in.position();
}

/// Joins the segments of a constructed string into a new record. Returns the position after them,
/// or NULL. The segments carry `tag` themselves and may be constructed in turn, to any depth. The
/// value has whole octets: the unused bits of a segment are bits of the value.
///
/// In the trace, the segments and the opening line of a constructed value stand at `depth`, and its
/// closing line one level above.
///
/// Not inlined, so that the decoder of a primitive string does not set up what this one needs.
template <class Content, class Record>
[[gnu::noinline]] const uint8_t *join_segments(Reader in, Header header, uint8_t tag,
                                               uint32_t depth, Record *record) {
  Content content;
  Buffer joined;
  OpenValues open;
  // An indefinite value needs room for its end-of-contents from the start.
  auto enter = [&open](const Reader &from, const Header &opened) {
    if (opened.indefinite && from.left() < 2) return false;
    return open.push({from.content(opened), opened.indefinite});
  };
  if (!enter(in, header)) return nullptr;
  for (;;) {
    OpenValues::Value &value = open.top();
    if (value.indefinite ? value.rest.read_outer_eoc() : value.rest.at_end()) {
      const uint8_t *const next = value.rest.position();
      if (depth != 0) trace_close(depth - 1);
      open.pop();
      if (open.empty()) {
        record->length = joined.size() * Content::units;
        record->data = joined.release();
        return next;
      }
      open.top().rest.move_to(next);
      continue;
    }
    Header segment;
    if (!value.rest.read_header(0, tag, Forms::any, &segment, depth)) return nullptr;
    if (segment.constructed) {
      if (!enter(value.rest, segment)) return nullptr;
      continue;
    }
    Octets octets;
    if (!content.take(&value.rest, segment, depth, &octets)) return nullptr;
    // A segment that is complete is traced, even where the value becomes too long with it.
    const bool fits = octets.count <= Content::limit - joined.size();
    if (fits && !joined.append(octets.data, octets.count)) return nullptr;
    trace_octets(depth, octets);
    if (!fits) return nullptr;
  }
}

/// Decodes a string in any form. Makes the record before it reads the content: where there is no
/// memory for it, the trace ends with the header.
template <class Content, class Record>
const uint8_t *decode_string(const char *function, const uint8_t *z, const uint8_t *end,
                             uint32_t impl_tag, uint8_t tag, Record **place, uint32_t depth) {
  require(z != nullptr, unit, function, "z != NULL");
  require(end != nullptr, unit, function, "end != NULL");
  require(place != nullptr, unit, function, "s != NULL");
  *place = nullptr;
  Reader in(z, end);
  Header header;
  if (!in.read_header(impl_tag, tag, Forms::any, &header, depth)) return nullptr;
  auto *const record = new_record<Record>();
  if (record == nullptr) return nullptr;
  const uint8_t *const next = header.constructed
                                  ? join_segments<Content>(in, header, tag, depth, record)
                                  : read_primitive<Content>(in, header, depth, record);
  if (next == nullptr) {
    std::free(record);
    return nullptr;
  }
  *place = record;
  return next;
}

// A named bit list: zero octets at the end are left out, and the zero bits below the last set bit
// are the unused ones. Padding bits of the record count as bits.
uint32_t encode_named_bits(uint8_t **pp, uint32_t bits, const uint8_t *data) {
  uint32_t count = octets_of_bits(bits);
  while (count != 0 && data[count - 1] == 0) --count;
  const uint32_t whole = header_octets(count + 1) + count + 1;
  if (pp == nullptr) return whole;
  Writer out(pp);
  out.header(tag::bit_string, count + 1);
  out.octet(count == 0 ? 0 : static_cast<uint8_t>(__builtin_ctz(data[count - 1])));
  out.octets(data, count);
  return whole;
}

/// Appends `count` octets to a block of `size`. Returns the block, or NULL, which leaves it as it
/// was.
uint8_t *grown(uint8_t *data, uint32_t size, uint32_t count, const void *octets) {
  uint32_t sum;
  if (__builtin_add_overflow(size, count, &sum)) return nullptr;
  auto *block = static_cast<uint8_t *>(std::realloc(data, sum));
  if (block != nullptr && octets != nullptr) std::memcpy(block + size, octets, count);
  return block;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// BIT STRING
// ---------------------------------------------------------------------------------------------

BitString *asn1_BitString_new(uint32_t length) {
  auto *bs = new_record<BitString>();
  if (bs == nullptr || length == 0) return bs;
  bs->data = static_cast<uint8_t *>(std::calloc(octets_of_bits(length), 1));
  if (bs->data == nullptr) {
    std::free(bs);
    return nullptr;
  }
  bs->length = length;
  return bs;
}

void asn1_BitString_free(BitString *pElement) {
  if (pElement == nullptr) return;
  std::free(pElement->data);
  std::free(pElement);
}

uint32_t asn1_BitString_e(uint8_t **pp, const BitString *pElement) {
  if (pElement == nullptr) return 0;
  return encode_named_bits(pp, pElement->length, pElement->data);
}

uint32_t asn1_BitString_BER_e(uint8_t **pp, const BitString *pElement) {
  if (pElement == nullptr) return 0;
  const uint32_t count = octets_of_bits(pElement->length);
  const uint32_t whole = header_octets(count + 1) + count + 1;
  if (pp == nullptr) return whole;
  Writer out(pp);
  out.header(tag::bit_string, count + 1);
  out.octet(static_cast<uint8_t>(count * 8 - pElement->length));
  out.octets(pElement->data, count);
  return whole;
}

const uint8_t *asn1_BitString_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                BitString **s, uint32_t depth) {
  return decode_string<BitContent>(__func__, z, end, impl_tag, tag::bit_string, s, depth);
}

BitString *asn1_BitString_clone(const BitString *pElement) {
  if (pElement == nullptr || (pElement->length != 0 && pElement->data == nullptr)) return nullptr;
  BitString *copy = asn1_BitString_new(pElement->length);
  if (copy != nullptr && copy->length != 0) {
    std::memcpy(copy->data, pElement->data, octets_of_bits(copy->length));
  }
  return copy;
}

int32_t asn1_BitString_cmp(const BitString *a, const BitString *b) {
  if (a == nullptr || b == nullptr || a->length != b->length) return 1;
  return compare_octets(a->data, b->data, octets_of_bits(a->length));
}

BitString *asn1_BitString_set(BitString *bs, uint32_t bit, uint32_t value) {
  require(bs != nullptr, unit, __func__, "bs");
  const uint32_t octets = octets_of_bits(bs->length);
  const uint32_t index = bit / 8;
  const auto mask = static_cast<uint8_t>(0x80 >> (bit % 8));
  if (value == 0) {
    if (index < octets) bs->data[index] = static_cast<uint8_t>(bs->data[index] & ~mask);
    return bs;
  }
  if (bit == UINT32_MAX) return nullptr;  // the length would not fit
  if (index >= octets) {
    auto *data = static_cast<uint8_t *>(std::realloc(bs->data, index + 1));
    if (data == nullptr) return nullptr;
    std::memset(data + octets, 0, index + 1 - octets);
    bs->data = data;
  }
  if (bs->length < bit + 1) bs->length = bit + 1;
  bs->data[index] |= mask;
  return bs;
}

int32_t asn1_BitString_test(const BitString *bs, uint32_t bit) {
  if (bs == nullptr || bit >= bs->length) return 0;
  return (bs->data[bit / 8] & (0x80 >> (bit % 8))) != 0 ? 1 : 0;
}

BitString *asn1_BitString_append(BitString *s, uint32_t count, const void *bytes) {
  require(s != nullptr, unit, __func__, "s != NULL");
  if (count == 0) return s;
  const uint32_t octets = octets_of_bits(s->length);
  // The bits of the whole must fit 32 bits as well.
  if (uint64_t{octets} + count > UINT32_MAX / 8) return nullptr;
  uint8_t *data = grown(s->data, octets, count, bytes);
  if (data == nullptr) return nullptr;
  s->data = data;
  s->length = (octets + count) * 8;
  return s;
}

// ---------------------------------------------------------------------------------------------
// Strings of octets
// ---------------------------------------------------------------------------------------------

ASN1String *asn1_ASN1String_new(uint32_t length, const void *bytes) {
  if (length == 0 && bytes != nullptr) {
    const size_t measured = std::strlen(static_cast<const char *>(bytes));
    if (measured > UINT32_MAX) return nullptr;
    length = static_cast<uint32_t>(measured);
  }
  auto *s = new_record<ASN1String>();
  if (s == nullptr || length == 0) return s;
  s->data = new_array<uint8_t>(length);
  if (s->data == nullptr) {
    std::free(s);
    return nullptr;
  }
  if (bytes != nullptr) {
    std::memcpy(s->data, bytes, length);
  } else {
    std::memset(s->data, 0, length);
  }
  s->length = length;
  return s;
}

void asn1_ASN1String_free(ASN1String *pElement) {
  if (pElement == nullptr) return;
  std::free(pElement->data);
  std::free(pElement);
}

uint32_t asn1_ASN1String_e(uint8_t **pp, uint32_t tag, const ASN1String *pElement) {
  if (pElement == nullptr) return 0;
  if ((tag & 0xFF) == tag::bit_string)
    return encode_named_bits(pp, pElement->length, pElement->data);
  const uint32_t whole = element_octets(pElement->length);
  if (pp == nullptr || whole == 0) return whole;
  Writer out(pp);
  out.header(static_cast<uint8_t>(tag), pElement->length);
  out.octets(pElement->data, pElement->length);
  return whole;
}

const uint8_t *asn1_ASN1String_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 uint32_t tag, ASN1String **s, uint32_t depth) {
  return decode_string<OctetContent>(__func__, z, end, impl_tag, static_cast<uint8_t>(tag), s,
                                     depth);
}

ASN1String *asn1_ASN1String_clone(const ASN1String *pElement) {
  return pElement == nullptr ? nullptr : asn1_ASN1String_new(pElement->length, pElement->data);
}

int32_t asn1_ASN1String_cmp(const ASN1String *a, const ASN1String *b) {
  if (a == nullptr || b == nullptr || a->length != b->length) return 1;
  return compare_octets(a->data, b->data, a->length);
}

ASN1String *asn1_ASN1String_append(ASN1String *s, uint32_t count, const void *bytes) {
  require(s != nullptr, unit, __func__, "s != NULL");
  if (count == 0) return s;
  uint8_t *data = grown(s->data, s->length, count, bytes);
  if (data == nullptr) return nullptr;
  s->data = data;
  s->length += count;
  return s;
}
