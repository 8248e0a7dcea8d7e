// Shared by the tests of records: a family of functions as one value, and the checks for every
// family over a SEQUENCE.
#ifndef ORVELASN1_TESTS_RECORDS_H
#define ORVELASN1_TESTS_RECORDS_H

#include <csignal>
#include <initializer_list>
#include <type_traits>
#include <utility>

#include "allocator.h"
#include "support.h"

namespace support {

using Lines = std::vector<std::string>;

/// The functions of a family of records. A function that it does not have is null.
template <class T>
struct RecordFamily {
  T *(*create)();
  void (*free)(T *);
  uint32_t (*encode)(uint8_t **, const T *);
  const uint8_t *(*decode)(const uint8_t *, const uint8_t *, uint32_t, T **, uint32_t);
  T *(*clone)(const T *);
};

/// A record that is released by its family.
template <class T>
using Held = std::unique_ptr<T, void (*)(T *)>;

inline Bytes sequence(const Bytes &content) { return element(0x30, content); }

template <class T>
Held<T> created(const RecordFamily<T> &family) {
  return {family.create(), family.free};
}

template <class T>
Held<T> cloned(const RecordFamily<T> &family, const Held<T> &record) {
  return {family.clone(record.get()), family.free};
}

/// Decodes the octets and returns the record. The cursor must stop before the last `unread` octets.
template <class T>
Held<T> decoded(const RecordFamily<T> &family, const Bytes &octets, size_t unread = 0,
                uint32_t impl_tag = 0) {
  const auto result = decode(family.decode, octets, impl_tag);
  EXPECT_EQ(static_cast<long>(octets.size() - unread), result.consumed);
  return {result.record, family.free};
}

template <class T>
Bytes encoded(const RecordFamily<T> &family, const Held<T> &record) {
  return encode(family.encode, record.get());
}

/// Returns the lines that the decoder writes to the trace.
template <class T>
Lines traced(const RecordFamily<T> &family, const Bytes &octets, uint32_t depth = 1) {
  return trace_lines(
      [&] { family.free(decode(family.decode, octets, uint32_t{0}, depth).record); });
}

/// A line of the trace without the dots in front of it, after the number of these.
using Leveled = std::pair<size_t, std::string>;

/// Returns the lines that the decoder writes to the trace, each with its level. The first level is
/// 0. The trace counts levels in 16 bits.
template <class T>
std::vector<Leveled> traced_levels(const RecordFamily<T> &family, const Bytes &octets,
                                   uint32_t depth) {
  std::vector<Leveled> leveled;
  for (const std::string &line : traced(family, octets, depth)) {
    size_t level = 0;
    while (line.compare(2 * level, 2, ". ") == 0) ++level;
    leveled.emplace_back(level, line.substr(2 * level));
  }
  return leveled;
}

/// Returns the line of the trace for up to 16 octets: their digits, and the octets as characters.
inline std::string dump(std::string digits, std::string_view characters) {
  digits.resize(16 * 3, ' ');
  return "  0x00000000 " + digits.append(characters);
}

/// Returns a new list that owns the elements.
inline List *list_of(std::initializer_list<void *> elements) {
  List *list = List_new(0);
  for (void *element : elements) EXPECT_NE(0, List_append(list, element, 0));
  return list;
}

/// Releases the value of a field and sets the field to NULL.
template <class T, class Release>
void clear(T *&field, Release release) {
  release(field);
  field = nullptr;
}

// ---------------------------------------------------------------------------------------------
// Refusals
// ---------------------------------------------------------------------------------------------

/// Checks that octets are refused after the header: the place for the record is set to NULL.
template <class T>
void expect_refused(const RecordFamily<T> &family, const Bytes &octets) {
  T before = {};
  EXPECT_EQ(nullptr, left_by_refusal(family.decode, octets, &before));
}

/// Checks that octets are refused at the header: the place for the record does not change.
template <class T>
void expect_header_refused(const RecordFamily<T> &family, const Bytes &octets,
                           uint32_t impl_tag = 0) {
  T before = {};
  EXPECT_EQ(&before, left_by_refusal(family.decode, octets, &before, impl_tag));
}

/// Checks that the encoder returns 0 in both passes. The second changes neither buffer nor cursor.
template <class T>
void expect_nothing_written(const RecordFamily<T> &family, const std::type_identity_t<T> *record) {
  EXPECT_EQ(0U, family.encode(nullptr, record));
  uint8_t buffer[16] = {};
  uint8_t *cursor = buffer;
  EXPECT_EQ(0U, family.encode(&cursor, record));
  EXPECT_EQ(buffer, cursor);
  EXPECT_EQ(Bytes(16, 0), Bytes(std::begin(buffer), std::end(buffer)));
}

/// Checks that both passes end the process, with one line on standard error.
template <class T>
void expect_encoder_ends_the_process(const RecordFamily<T> &family,
                                     const std::type_identity_t<T> *record) {
  const testing::KilledBySignal aborted(SIGABRT);
  uint8_t buffer[16] = {};
  uint8_t *cursor = buffer;
  EXPECT_EXIT(family.encode(nullptr, record), aborted, any_line);
  EXPECT_EXIT(family.encode(&cursor, record), aborted, any_line);
}

/// Checks that the reader of a header asserts both cursors.
template <class T>
void expect_decoder_asserts_its_cursors(const RecordFamily<T> &family) {
  const uint8_t octets[] = {0x30, 0x00};
  T *place = nullptr;
  EXPECT_ASSERT(family.decode(nullptr, octets + 2, 0, &place, 0), "asn1_Tag_d", "z != NULL");
  EXPECT_ASSERT(family.decode(octets, nullptr, 0, &place, 0), "asn1_Tag_d", "end != NULL");
}

// ---------------------------------------------------------------------------------------------
// Checks for every record over a SEQUENCE
// ---------------------------------------------------------------------------------------------

/// Checks that a new record has no field set, and that NULL can be released.
template <class T>
void expect_new_record_is_zero(const RecordFamily<T> &family) {
  static_assert(std::has_unique_object_representations_v<T>);
  const Held<T> record = created(family);
  const auto *octets = reinterpret_cast<const uint8_t *>(record.get());
  EXPECT_EQ(Bytes(sizeof(T), 0), Bytes(octets, octets + sizeof(T)));
  family.free(nullptr);
}

/// Checks the header, and octets after the last field. `content` must have all fields.
template <class T>
void expect_sequence_of_definite_length(const RecordFamily<T> &family, const Bytes &content) {
  for (const Bytes &octets :
       {Bytes(), hex("30"), hex("30 01"), hex("30 85"), element(0x31, content),
        element(0xA1, content), hex("30 80") + content + hex("00 00")}) {
    expect_header_refused(family, octets);
  }
  expect_header_refused(family, sequence(content), 0xA1);

  decoded(family, sequence(content));
  decoded(family, element(0x10, content));  // the primitive form
  for (const uint32_t impl_tag : {0xA1U, 0x81U, 0x2A1U}) {
    decoded(family, element(0xA1, content), 0, impl_tag);
    decoded(family, element(0x81, content), 0, impl_tag);
  }
  decoded(family, sequence(content) + hex("05 00"), 2);
  decoded(family, sequence(content + hex("05 00")), 2);  // left inside the SEQUENCE
}

/// Checks that every cut of a valid input is refused, whether its length octets fit the cut or not.
/// Contents of the sizes in `complete` are accepted.
template <class T>
void expect_every_cut_refused(const RecordFamily<T> &family, const Bytes &content,
                              const std::vector<size_t> &complete = {}) {
  const auto start = [](const Bytes &all, size_t size) {
    return Bytes(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(size));
  };
  const Bytes octets = sequence(content);
  for (size_t size = 0; size < octets.size(); ++size) {
    expect_header_refused(family, start(octets, size));
  }
  for (size_t size = 0; size < content.size(); ++size) {
    SCOPED_TRACE(size);
    if (std::find(complete.begin(), complete.end(), size) != complete.end()) {
      decoded(family, sequence(start(content, size)));
    } else {
      expect_refused(family, sequence(start(content, size)));
    }
  }
}

/// Checks lengths with the top bit set: these put the limit below the cursor, so no field is found.
template <class T>
void expect_huge_lengths_refused(const RecordFamily<T> &family, const Bytes &content) {
  expect_refused(family, hex("30 84 80 00 00 00") + content);
  expect_refused(family, hex("30 84 FF FF FF FF") + content);
}

/// Checks that a copy of NULL is NULL, that a copy of an empty record is empty, and that a copy of
/// a full one outlives it.
template <class T>
void expect_deep_clone(const RecordFamily<T> &family, const Bytes &octets) {
  EXPECT_EQ(nullptr, family.clone(nullptr));
  const Held<T> empty = cloned(family, created(family));
  const auto *fields = reinterpret_cast<const uint8_t *>(empty.get());
  EXPECT_EQ(Bytes(sizeof(T), 0), Bytes(fields, fields + sizeof(T)));

  Held<T> record = decoded(family, octets);
  const Held<T> copy = cloned(family, record);
  record.reset();
  EXPECT_EQ(octets, encoded(family, copy));
}

/// Checks that the constructor, the decoder and the clone fail at each allocation that fails, and
/// that nothing stays allocated.
template <class T>
void expect_exhausted_memory_to_fail(const RecordFamily<T> &family,
                                     [[maybe_unused]] const Bytes &octets) {
#ifdef ORVELASN1_TESTS_SANITIZED
  // The sanitizer's allocator cannot be made to fail.
  EXPECT_NE(nullptr, created(family));
#else
  const auto released = [&](T *record) {
    const bool succeeded = record != nullptr;
    family.free(record);
    return succeeded;
  };
  EXPECT_EQ(1, expect_failure_at_each_allocation([&] { return released(family.create()); }));

  const Input input(octets);
  if (family.decode != nullptr) {
    const long allocations = expect_failure_at_each_allocation([&] {
      T *record = nullptr;
      const bool succeeded = family.decode(input.z(), input.end(), 0, &record, 0) != nullptr;
      EXPECT_EQ(succeeded, record != nullptr);
      family.free(record);
      return succeeded;
    });
    EXPECT_LE(1, allocations);
  }
  if (family.decode != nullptr && family.clone != nullptr) {
    const Held<T> record = decoded(family, octets);
    const long allocations =
        expect_failure_at_each_allocation([&] { return released(family.clone(record.get())); });
    EXPECT_LE(1, allocations);
  }
#endif
}

}  // namespace support

#endif
