// Calls of the library with an eye on its memory, and with the ends of the process caught. The
// program is linked so that the library's calls of malloc, calloc, realloc, strdup, free and abort
// come by here, whatever the build and its sanitizers do below.
#ifndef ORVELASN1_TESTS_ATTACK_GUARD_H
#define ORVELASN1_TESTS_ATTACK_GUARD_H

#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <string>

namespace attack {

/// A set of blocks of memory.
class BlockSet {
 public:
  BlockSet() = default;
  BlockSet(const BlockSet &) = delete;
  BlockSet &operator=(const BlockSet &) = delete;
  ~BlockSet();

  void insert(void *block);
  bool erase(void *block);  ///< false where it is not in the set
  size_t size() const { return size_; }
  void release_all();

 private:
  size_t home(const void *block) const;
  void grow();

  void **slots_ = nullptr;
  size_t capacity_ = 0;  ///< a power of two
  size_t size_ = 0;
};

class Guard {
 public:
  Guard() = default;
  Guard(const Guard &) = delete;
  Guard &operator=(const Guard &) = delete;
  /// Releases what is left, such as what a call had made that ended the process.
  ~Guard() { blocks_.release_all(); }

  /// Calls `f`. Returns whether it returned. Where it ended the process, it is left in the middle,
  /// and what it had said is in last_words().
  template <class F>
  bool run(F f) {
    return call([](void *function) { (*static_cast<F *>(function))(); }, &f);
  }

  const std::string &last_words() const { return last_words_; }

  /// The blocks that the calls made and did not release.
  size_t blocks() const { return blocks_.size(); }

  /// Whether a call released what was no block of its own: released before, or never made.
  bool released_a_stranger() const { return released_a_stranger_; }

  /// Lets the allocation after the next `successes` fail, once.
  void fail_after(long successes) { until_failure_ = successes; }
  void fail_no_more() { until_failure_ = -1; }
  bool has_failed() const { return until_failure_ < 0; }

  // What the library's calls come to.
  static Guard *current();
  bool fails_now() { return until_failure_ >= 0 && until_failure_-- == 0; }
  void made(void *block) { blocks_.insert(block); }
  void released(void *block);
  [[noreturn]] void leave();
  void hear(const char *words, size_t size) { last_words_.append(words, size); }

 private:
  bool call(void (*function)(void *), void *argument);

  BlockSet blocks_;
  std::string last_words_;
  std::jmp_buf exit_;
  long until_failure_ = -1;
  bool released_a_stranger_ = false;
};

}  // namespace attack

#endif
