// How far the stack of the calling thread reaches, for values that hold values of their own kind.
#ifndef ORVELASN1_STACK_H
#define ORVELASN1_STACK_H

namespace asn1 {

/// Stands on the stack while a value is read that may hold further values of its kind. Together
/// they may use a third of what was left of the stack when the outermost was entered, so that
/// whatever is read can also be written, copied and released on the same thread.
///
/// A program may jump out of a reading. Where it does so from the handler of the signal that ends
/// the process, forget_reading() has forgotten the reading. Where it does so from its own
/// allocator, the next value that is read as far up on the stack or further counts as outermost:
/// inside the other it would stand further down. A value that is read further down has less stack
/// until then.
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

/// Forgets the values that the calling thread is reading. The next one counts as outermost.
void forget_reading();

/// Whether there is stack to write or copy one more value inside another.
bool stack_for_nested();

}  // namespace asn1

#endif
