// Shared by the tests of messages and of PKCS #12 files, which are built on them.
#ifndef ORVELASN1_TESTS_MESSAGES_H
#define ORVELASN1_TESTS_MESSAGES_H

#include "records.h"

namespace support {

/// Returns the identifier 1.2.840.113549.1.7 with one more arc.
inline Bytes content_type(uint8_t arc) { return hex("06 09 2A 86 48 86 F7 0D 01 07") + Bytes{arc}; }
inline Bytes integer(uint8_t number) { return hex("02 01") + Bytes{number}; }
inline Bytes octet_string(const Bytes &content) { return element(4, content); }
inline Bytes explicit_0(const Bytes &content) { return element(0xA0, content); }
inline Bytes indefinite(uint8_t tag, const Bytes &content) {
  return Bytes{tag, 0x80} + content + Bytes{0, 0};
}

inline Bytes message(const Bytes &type, const Bytes &content) {
  return sequence(type + explicit_0(content));
}

/// Checks that the octets are written as `output`, also from a copy that outlives its original.
template <class T>
void expect_rewritten(const RecordFamily<T> &family, const Bytes &input, const Bytes &output,
                      size_t unread = 0) {
  Held<T> record = decoded(family, input, unread);
  ASSERT_NE(nullptr, record);
  EXPECT_EQ(output, encoded(family, record));
  const Held<T> copy = cloned(family, record);
  record.reset();
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(output, encoded(family, copy));
}
template <class T>
void expect_kept(const RecordFamily<T> &family, const Bytes &octets) {
  expect_rewritten(family, octets, octets);
}

/// Checks a family that accepts indefinite lengths. A refused header clears the place.
template <class T>
void expect_sequence_of_any_length(const RecordFamily<T> &family, const Bytes &content) {
  for (const Bytes &octets : {Bytes(), hex("30"), hex("30 01"), hex("30 85"), hex("30 FF"),
                              element(0x31, content), element(0xA1, content)}) {
    expect_refused(family, octets);
  }
  T before = {};
  EXPECT_EQ(nullptr, left_by_refusal(family.decode, sequence(content), &before, 0xA1));

  decoded(family, element(0x10, content));  // the primitive form
  for (const uint32_t impl_tag : {0xA1U, 0x81U, 0x2A1U}) {
    decoded(family, element(0xA1, content), 0, impl_tag);
    decoded(family, element(0x81, content), 0, impl_tag);
    decoded(family, indefinite(0xA1, content), 0, impl_tag);
  }
  const Bytes behind = hex("05 00");
  decoded(family, sequence(content) + behind, 2);
  decoded(family, sequence(content + behind), 2);  // left inside the SEQUENCE

  expect_rewritten(family, indefinite(0x30, content), sequence(content));
  expect_rewritten(family, indefinite(0x30, content) + behind, sequence(content), 2);
  for (const char *ending : {"", "00", "00 01", "01 00", "05 00 00 00"}) {
    expect_refused(family, hex("30 80") + content + hex(ending));
  }

  const Input input(sequence(content));
  EXPECT_EQ(nullptr, family.decode(input.z(), input.end(), 0, nullptr, 0));
}

/// Releases a message without a type, for which asn1_ContentInfo_free() ends the process.
inline void release_untyped(ContentInfo *info) {
  asn1_Content_free(info->content);
  std::free(info);
}
using Untyped = Owned<ContentInfo, release_untyped>;

/// The line on standard error when a message without a type is released or copied.
inline const std::string no_type = assert_line("asn1_ObjId_cmp", "oid2 != NULL");
inline const testing::KilledBySignal aborted(SIGABRT);

#ifndef ORVELASN1_TESTS_SANITIZED

/// Returns the number of allocations that `f` makes and keeps.
template <class F>
long allocations_of(F f) {
  const FailingAllocation none(1'000'000);
  f();
  return none.blocks_left();
}

/// Runs `f` in a process of its own, with its memory exhausted after so many allocations. Exits
/// with 0 where `f` returns NULL and keeps nothing, otherwise with 1. `f` may also end the process.
template <class F>
void run_exhausted(long successes, F f) {
  const FailingAllocation failing(successes);
  const bool failed = f() == nullptr && failing.happened() && failing.blocks_left() == 0;
  std::_Exit(failed ? 0 : 1);
}

inline bool failed_or_aborted(int status) {
  return testing::ExitedWithCode(0)(status) || aborted(status);
}

template <class T, class F>
void expect_null_or_end(const RecordFamily<T> &family, F f) {
  T *record = nullptr;
  const long allocations = allocations_of([&] { record = f(); });
  family.free(record);
  ASSERT_LT(0, allocations);
  const std::string nothing_or_no_type = "^(" + no_type.substr(1, no_type.size() - 2) + ")?$";
  for (long successes = 0; successes < allocations; ++successes) {
    SCOPED_TRACE(successes);
    EXPECT_EXIT(run_exhausted(successes, f), failed_or_aborted, nothing_or_no_type);
  }
}

#endif

}  // namespace support

#endif
