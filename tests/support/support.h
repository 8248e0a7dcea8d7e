// Shared by the tests: decoding from a buffer of exactly the input's size, encoding in two passes,
// and the lines of the trace.
#ifndef ORVELASN1_TESTS_SUPPORT_H
#define ORVELASN1_TESTS_SUPPORT_H

#include <gtest/gtest.h>
#include <orvelasn1.h>
#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "octets.h"

namespace support {

/// A copy of the octets in a heap block of exactly their size, so that a sanitizer sees a read past
/// the end.
class Input {
 public:
  explicit Input(const Bytes &octets)
      : size_(octets.size()), block_(static_cast<uint8_t *>(std::malloc(size_ ? size_ : 1))) {
    std::copy(octets.begin(), octets.end(), block_.get());
  }
  const uint8_t *z() const { return block_.get(); }
  const uint8_t *end() const { return block_.get() + size_; }

 private:
  struct Free {
    void operator()(uint8_t *p) const { std::free(p); }
  };
  size_t size_;
  std::unique_ptr<uint8_t[], Free> block_;
};

/// The result of a decoder: the octets consumed, or -1 where it returned NULL, and what it stored.
template <class T>
struct Decoded {
  long consumed;
  T *record;
  bool ok() const { return consumed >= 0; }
};

/// Calls a family's decoder on exactly these octets. The caller releases the record.
template <class T>
Decoded<T> decode(const uint8_t *(*element_d)(const uint8_t *, const uint8_t *, uint32_t, T **,
                                              uint32_t),
                  const Bytes &octets, uint32_t impl_tag = 0, uint32_t depth = 0) {
  const Input input(octets);
  Decoded<T> result{-1, nullptr};
  const uint8_t *next = element_d(input.z(), input.end(), impl_tag, &result.record, depth);
  if (next != nullptr) result.consumed = next - input.z();
  return result;
}

/// Calls a family's decoder on octets that it must refuse, with `before` in the place for the
/// record. Returns what is in that place after the call.
template <class T>
T *left_by_refusal(const uint8_t *(*element_d)(const uint8_t *, const uint8_t *, uint32_t, T **,
                                               uint32_t),
                   const Bytes &octets, T *before, uint32_t impl_tag = 0, uint32_t depth = 0) {
  const Input input(octets);
  T *place = before;
  EXPECT_EQ(nullptr, element_d(input.z(), input.end(), impl_tag, &place, depth));
  return place;
}

template <auto Free>
struct Release {
  template <class T>
  void operator()(T *record) const {
    Free(record);
  }
};

/// A record that is released by its family's function when the scope ends.
template <class T, auto Free>
using Owned = std::unique_ptr<T, Release<Free>>;

/// Calls an encoder `uint32_t f(uint8_t **pp)` in both passes. Checks that they agree and that the
/// cursor moves by as much. Returns the octets, which are empty where the measure is 0.
template <class Encode>
Bytes encode_with(Encode f) {
  const uint32_t measured = f(nullptr);
  if (measured == 0) return {};
  std::unique_ptr<uint8_t[]> buffer(new uint8_t[measured]);
  uint8_t *cursor = buffer.get();
  EXPECT_EQ(measured, f(&cursor));
  EXPECT_EQ(buffer.get() + measured, cursor);
  return Bytes(buffer.get(), buffer.get() + measured);
}

/// Returns the octets that a family's encoder writes for a record; they are empty where it fails.
template <class T, class U>
Bytes encode(uint32_t (*element_e)(uint8_t **, const T *), const U *record) {
  return encode_with([&](uint8_t **pp) { return element_e(pp, record); });
}

/// Return the content octets of the record of a string, BIT STRING or INTEGER.
inline Bytes value(const ASN1String *s) { return Bytes(s->data, s->data + s->length); }
inline Bytes value(const Integer *i) { return Bytes(i->data, i->data + i->length); }
inline Bytes value(const BitString *b) { return Bytes(b->data, b->data + (b->length + 7) / 8); }

/// Runs `f` with the trace on. Returns what the trace has.
template <class F>
std::string trace_text(F f) {
  char *buffer = nullptr;
  size_t size = 0;
  FILE *stream = open_memstream(&buffer, &size);
  asn1_LogStart(stream);
  f();
  asn1_LogStart(nullptr);
  std::fclose(stream);
  std::string out(buffer, size);
  std::free(buffer);
  return out;
}

/// Returns the lines that `f` writes to the trace, each without its prefix up to "ASN.1: ".
template <class F>
std::vector<std::string> trace_lines(F f) {
  const std::string all = trace_text(f);
  std::vector<std::string> lines;
  size_t start = 0;
  while (start < all.size()) {
    size_t stop = all.find('\n', start);
    if (stop == std::string::npos) stop = all.size();
    std::string line = all.substr(start, stop - start);
    const size_t prefix = line.find("ASN.1: ");
    if (prefix != std::string::npos) line = line.substr(prefix + 7);
    lines.push_back(line);
    start = stop + 1;
  }
  return lines;
}

/// Runs `f` on a thread that has a stack of so many octets, with an unreadable page below it. The
/// thread library would hand out a larger stack that it has kept.
template <class F>
void on_stack_of(size_t octets, F f) {
  constexpr size_t page = 4096;
  void *const block =
      mmap(nullptr, page + octets, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
  ASSERT_NE(MAP_FAILED, block);
  char *const low = static_cast<char *>(block) + page;
  ASSERT_EQ(0, mprotect(low, octets, PROT_READ | PROT_WRITE));
  pthread_attr_t attributes;
  ASSERT_EQ(0, pthread_attr_init(&attributes));
  ASSERT_EQ(0, pthread_attr_setstack(&attributes, low, octets));
  const auto run = [](void *function) -> void * {
    (*static_cast<F *>(function))();
    return nullptr;
  };
  pthread_t thread;
  ASSERT_EQ(0, pthread_create(&thread, &attributes, run, &f));
  ASSERT_EQ(0, pthread_join(thread, nullptr));
  ASSERT_EQ(0, pthread_attr_destroy(&attributes));
  munmap(block, page + octets);
}

/// Runs `f` on a thread that has a stack of 256 KiB.
template <class F>
void on_small_stack(F f) {
  on_stack_of(size_t{256} << 10, f);
}

/// Returns the pattern of a standard error that has one line and nothing else, but for what an
/// emulator of another processor says about a signal.
inline std::string only_line(const std::string &pattern) {
  return "^" + pattern + "\n(qemu: uncaught target signal [^\n]+\n)?$";
}

inline const std::string any_line = only_line("[^\n]+");

/// Returns the pattern of the line that a failed assert writes to standard error.
inline std::string assert_line(std::string_view function, std::string_view test,
                               std::string_view unit = "asn1_x680") {
  std::string line(unit);
  line.append(": ").append(function).append(": assertion \"").append(test);
  return only_line(line.append("\" failed"));
}

}  // namespace support

/// Checks that a statement ends the process by the assert of `function` that quotes `test`.
#define EXPECT_ASSERT(statement, function, test) \
  EXPECT_EXIT(statement, ::testing::KilledBySignal(SIGABRT), ::support::assert_line(function, test))

/// Checks that a statement ends the process because the text of a name has no room for the
/// identifier octet of a value.
#define EXPECT_VALUE_TAG_ENDS_THE_PROCESS(statement)                                             \
  EXPECT_EXIT(statement, ::testing::KilledBySignal(SIGABRT),                                     \
              ::support::only_line("asn1_x501: asn1_RDNSequence_to_Name: valueTag does not fit " \
                                   "\"\\(%i\\)=\" in six octets"))

#endif
