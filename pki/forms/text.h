// A text that grows.
#ifndef ORVELPKI_FORMS_TEXT_H
#define ORVELPKI_FORMS_TEXT_H

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace pki {

/// Octets that are appended to. Once memory is exhausted, nothing more is, and the text has failed.
/// Takes no memory before the room that it has in itself is full.
class Text {
 public:
  Text() = default;
  ~Text() { std::free(block_); }
  Text(const Text &) = delete;
  Text &operator=(const Text &) = delete;

  const char *data() const { return octets_; }
  size_t size() const { return size_; }
  bool failed() const { return failed_; }

  /// Makes the text empty, with the room that it has.
  void clear() { size_ = 0; }

  void append(char c) {
    if (size_ == room_ && !reserve(1)) return;
    octets_[size_++] = c;
  }
  void append(const char *text) { append(text, std::strlen(text)); }
  void append(const char *octets, size_t count) {
    if (count == 0 || (count > room_ - size_ && !reserve(count))) return;
    std::memcpy(octets_ + size_, octets, count);
    size_ += count;
  }

  /// Makes a block of the octets, with a NUL at its end. Returns NULL where the text has failed,
  /// and when memory is exhausted.
  char *release() {
    append('\0');
    if (failed_) return nullptr;
    auto *const block = static_cast<char *>(std::realloc(block_, size_));
    if (block == nullptr) return nullptr;
    if (block_ == nullptr) std::memcpy(block, own_, size_);
    block_ = nullptr;
    octets_ = own_;
    size_ = 0;
    room_ = sizeof own_;
    return block;
  }

 private:
  /// Makes the room twice as large: the copying stays linear.
  bool reserve(size_t count) {
    size_t room = room_;
    while (room - size_ < count && !failed_) failed_ = __builtin_mul_overflow(room, 2U, &room);
    auto *const block = failed_ ? nullptr : static_cast<char *>(std::realloc(block_, room));
    if (block == nullptr) {
      failed_ = true;
      room_ = size_;
      return false;
    }
    if (block_ == nullptr) std::memcpy(block, own_, size_);
    octets_ = block_ = block;
    room_ = room;
    return true;
  }

  char own_[256] = {};
  char *octets_ = own_;
  char *block_ = nullptr;  ///< where the octets are once their own room is full
  size_t size_ = 0;
  size_t room_ = sizeof own_;
  bool failed_ = false;
};

}  // namespace pki

#endif
