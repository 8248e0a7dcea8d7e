// Shared by the tests of the RFCs' forms: what holds for every one of them, and short ways to look
// into their records.
#ifndef ORVELASN1_TESTS_FORMS_H
#define ORVELASN1_TESTS_FORMS_H

#include <orvelpki.h>

#include "records.h"

/// The functions of a form: of a record, and of what is no record of its own.
#define FORM(T, Record)                                                      \
  ::support::RecordFamily<Record> {                                          \
    pki_##T##_new, pki_##T##_free, pki_##T##_e, pki_##T##_d, pki_##T##_clone \
  }
#define FORM_LIST(T, Record)                                           \
  ::support::RecordFamily<Record> {                                    \
    nullptr, pki_##T##_free, pki_##T##_e, pki_##T##_d, pki_##T##_clone \
  }

namespace support {

/// Decodes octets, which must be used up. The record must come back as those octets, and so must a
/// copy that outlives it.
template <class T>
Held<T> same(const RecordFamily<T> &family, const Bytes &octets) {
  Held<T> first = decoded(family, octets);
  EXPECT_EQ(octets, encoded(family, first));
  Held<T> copy = cloned(family, first);
  first.reset();
  EXPECT_EQ(octets, encoded(family, copy));
  return copy;
}

/// Checks that octets are refused, and that no record is left.
template <class T>
void expect_no_record(const RecordFamily<T> &family, const Bytes &octets) {
  uint64_t other = 0;
  T *const before = static_cast<T *>(static_cast<void *>(&other));
  EXPECT_EQ(nullptr, left_by_refusal(family.decode, octets, before));
}

/// Checks that an element is read under its own tag and an implicit one only, and up to its end:
/// every cut is refused, and so is something left over. A cut of the content that is an encoding
/// comes back as it is. The content must have the last field.
template <class T>
void expect_exact(const RecordFamily<T> &family, uint8_t tag, const Bytes &content) {
  constexpr uint8_t constructed = 0x20;
  const auto start = [](const Bytes &all, size_t size) {
    return Bytes(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(size));
  };
  const Bytes octets = element(tag, content);
  same(family, octets);
  EXPECT_EQ(nullptr, family.clone(nullptr));
  EXPECT_EQ(0U, family.encode(nullptr, nullptr));
  family.free(nullptr);
  for (size_t size = 0; size < octets.size(); ++size) {
    SCOPED_TRACE(size);
    expect_no_record(family, start(octets, size));
  }
  for (size_t size = 0; size < content.size(); ++size) {
    SCOPED_TRACE(size);
    const Bytes cut = element(tag, start(content, size));
    const Held<T> record{decode(family.decode, cut).record, family.free};
    if (record != nullptr) {
      EXPECT_EQ(cut, encoded(family, record));
    }
  }
  expect_no_record(family, element(tag ^ 1, content));
  expect_no_record(family, element(tag | 0x80, content));
  const auto implicit = static_cast<uint8_t>(0x8A | (tag & constructed));
  decoded(family, element(implicit, content), 0, implicit);
  if ((tag & constructed) == 0) return;
  expect_no_record(family, element(tag, content + hex("05 00")));
  expect_no_record(family, element(tag ^ constructed, content));
  decoded(family, Bytes{tag, 0x80} + content + hex("00 00"));
  expect_no_record(family, Bytes{tag, 0x80} + content);
}

/// Checks that a new record lacks a field and has no encoding, or has that of no fields.
template <class T>
void expect_unfilled(const RecordFamily<T> &family, const Bytes &encoding = {}) {
  EXPECT_EQ(encoding, encoded(family, created(family)));
}

/// Returns the dotted text of an identifier.
inline std::string dotted(const ObjId *identifier) {
  char *const made = pki_ObjId_text(identifier);
  std::string text = made == nullptr ? "" : made;
  std::free(made);
  return text;
}

/// Returns an element of a list.
template <class T>
const T *at(const List *list, int32_t index) {
  return static_cast<const T *>(List_get(list, index));
}

/// Checks that octets are refused, and that nothing is left in the place for the record.
template <class T>
void expect_form_refused(const RecordFamily<T> &family, const Bytes &octets) {
  SCOPED_TRACE(testing::PrintToString(octets));
  char before = 0;
  EXPECT_EQ(nullptr, left_by_refusal(family.decode, octets, reinterpret_cast<T *>(&before)));
}

/// Decodes the octets, and checks that the record and its copy are written as `written`.
template <class T>
Held<T> expect_written(const RecordFamily<T> &family, const Bytes &octets, const Bytes &written) {
  Held<T> record = decoded(family, octets);
  EXPECT_EQ(written, encoded(family, record));
  EXPECT_EQ(written, encoded(family, cloned(family, record)));
  return record;
}

/// The same for octets that come back.
template <class T>
Held<T> expect_kept(const RecordFamily<T> &family, const Bytes &octets) {
  return expect_written(family, octets, octets);
}

/// Returns element `index` of a list.
template <class T>
T &element_of(const List *list, int32_t index) {
  return *static_cast<T *>(List_get(list, index));
}

}  // namespace support

#endif
