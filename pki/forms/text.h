// A text that grows.
#ifndef ORVELPKI_FORMS_TEXT_H
#define ORVELPKI_FORMS_TEXT_H

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace pki {

/// Octets that are appended to. Once memory is exhausted, nothing more is, and the text has failed.
class Text {
 public:
  Text() = default;
  ~Text() { std::free(octets_); }
  Text(const Text &) = delete;
  Text &operator=(const Text &) = delete;

  const char *data() const { return octets_; }
  size_t size() const { return size_; }
  bool failed() const { return failed_; }

  /// Makes the text empty, with the room that it has.
  void clear() { size_ = 0; }

  void append(char c) { append(&c, 1); }
  void append(const char *text) { append(text, std::strlen(text)); }
  void append(const char *octets, size_t count) {
    if (count == 0 || !reserve(count)) return;
    std::memcpy(octets_ + size_, octets, count);
    size_ += count;
  }

  /// Hands the block over, with a NUL at its end. Returns NULL where the text has failed.
  char *release() {
    append('\0');
    if (failed_) return nullptr;
    char *const block = octets_;
    octets_ = nullptr;
    size_ = room_ = 0;
    return block;
  }

 private:
  bool reserve(size_t count) {
    if (failed_) return false;
    if (count <= room_ - size_) return true;
    // Twice the room: the copying stays linear.
    size_t room = room_ < least ? least : room_;
    while (room - size_ < count && !failed_) failed_ = __builtin_mul_overflow(room, 2U, &room);
    auto *const block = failed_ ? nullptr : static_cast<char *>(std::realloc(octets_, room));
    failed_ = block == nullptr;
    if (failed_) return false;
    octets_ = block;
    room_ = room;
    return true;
  }

  static constexpr size_t least = 64;

  char *octets_ = nullptr;
  size_t size_ = 0;
  size_t room_ = 0;
  bool failed_ = false;
};

}  // namespace pki

#endif
