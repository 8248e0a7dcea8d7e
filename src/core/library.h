// What every unit of the library begins with: the public declarations, the end of the process on a
// programmer's error, and memory.
#ifndef ORVELASN1_LIBRARY_H
#define ORVELASN1_LIBRARY_H

// The library is built with hidden visibility. What the public headers declare is what it exports.
#pragma GCC visibility push(default)
#include "orvelasn1.h"
#pragma GCC visibility pop

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <type_traits>

namespace asn1 {

/// Ends the process after one line on standard error, which names the unit, the function and what
/// was found there.
[[noreturn, gnu::cold]] void fatal(const char *unit, const char *function, const char *finding);

/// Ends the process because `test`, quoted as the public documents quote it, does not hold.
[[noreturn, gnu::cold]] void assertion_failed(const char *unit, const char *function,
                                              const char *test);

/// A test of the caller's own duty, live in every build.
inline void require(bool holds, const char *unit, const char *function, const char *test) {
  if (!holds) [[unlikely]] {
    assertion_failed(unit, function, test);
  }
}

/// A block of zero octets. Not calloc: the runtime's passes by the cache of free blocks of the
/// thread, which costs more than the rest of the decoding of a small record.
inline void *zeroed(size_t size) {
  void *const block = std::malloc(size);
  if (block != nullptr) std::memset(block, 0, size);
  return block;
}

/// A new record, all fields zero.
template <class Record>
Record *new_record() {
  static_assert(std::is_trivially_copyable_v<Record>);
  return static_cast<Record *>(zeroed(sizeof(Record)));
}

/// Room for `count` values, not initialised.
template <class Value>
Value *new_array(size_t count) {
  if (count > SIZE_MAX / sizeof(Value)) return nullptr;
  return static_cast<Value *>(std::malloc(count * sizeof(Value)));
}

/// 0 where both sides have the same octets, otherwise another number: that of memcmp(), or 1 where
/// a side has none.
inline int32_t compare_octets(const void *a, const void *b, size_t size) {
  if (size == 0) return 0;
  return a == nullptr || b == nullptr ? 1 : std::memcmp(a, b, size);
}

/// The octets that hold so many bits.
constexpr uint32_t octets_of_bits(uint32_t bits) { return bits / 8 + (bits % 8 != 0 ? 1 : 0); }

/// The depth of the trace for what stands inside a constructed value.
constexpr uint32_t child_depth(uint32_t depth) { return depth == 0 ? 0 : depth + 1; }

/// Writes the line that closes a constructed value.
inline void trace_close(uint32_t depth) {
  if (depth != 0) [[unlikely]] {
    asn1_LogMessage(depth, "}\n");
  }
}

}  // namespace asn1

#endif
