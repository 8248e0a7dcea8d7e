// The floor of a decoder: what its blocks alone cost. The program's own malloc and its relatives note
// the blocks while a value is decoded and released. The floor allocates and frees the same sizes in
// the same order, through the same functions.
#ifndef ORVELASN1_BENCH_BLOCKS_H
#define ORVELASN1_BENCH_BLOCKS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace bench {

/// The calls to the allocator that a piece of work makes, as runs of calls of one kind: walking
/// these costs next to nothing.
class Blocks {
 public:
  /// Runs `work`, which must release what it allocates, and nothing else.
  explicit Blocks(const std::function<void()> &work);

  /// The number of blocks that are allocated.
  size_t allocations() const { return slots_; }

  /// Makes the same calls again.
  void replay() const;

  /// The same, and writes to each octet of each block, as a decoder must.
  void replay_written() const;

 private:
  enum class Kind : uint8_t { allocate, resize, release };
  struct Run {
    Kind kind;
    uint32_t uses;
  };
  struct Use {
    uint32_t slot;  // the number of the block
    uint32_t size;
  };
  friend class Notes;

  template <class Write>
  void replay(Write write) const;

  std::vector<Run> runs_;
  std::vector<Use> uses_;  // of all runs
  uint32_t slots_ = 0;
};

}  // namespace bench

#endif
