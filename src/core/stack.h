// How far the stack of the calling thread reaches, for values that hold values of their own kind.
#ifndef ORVELASN1_STACK_H
#define ORVELASN1_STACK_H

namespace asn1 {

/// Stands on the stack while a value is read that may hold further values of its kind. Together
/// they may use a third of what was left of the stack when the outermost was entered, so that
/// whatever is read can also be written, copied and released on the same thread.
///
/// A program may jump out of a reading, from the handler of the signal that ends the process or
/// from its own allocator. What was left in the middle is forgotten as soon as a value is read that
/// stands as far up on the stack or further: inside the other it would stand further down.
class ReadingNested {
 public:
  ReadingNested();
  ~ReadingNested();
  ReadingNested(const ReadingNested &) = delete;
  ReadingNested &operator=(const ReadingNested &) = delete;

  /// Whether there is stack for this value.
  bool fits() const { return fits_; }

 private:
  bool outermost_;
  bool fits_;
};

/// Whether there is stack to write or copy one more value inside another.
bool stack_for_nested();

}  // namespace asn1

#endif
