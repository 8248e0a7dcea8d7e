// Work on a stream of pieces by several processes at a time, with the answers in the order of the
// pieces.
#ifndef ORVELASN1_TOOL_SYSTEM_WORKERS_H
#define ORVELASN1_TOOL_SYSTEM_WORKERS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace tool {

/// A piece of the input, which a worker goes through unit by unit. It lies in memory that the
/// tool's own process and its workers share, and so does the answer.
class Piece {
 public:
  /// What the units came to.
  struct Counts {
    uint64_t elements = 0;
    uint64_t faults = 0;
  };

  /// Returns the octets of the piece that are not done.
  std::span<const uint8_t> rest() const;

  /// Begins the next unit, which has so many octets. Returns them. A worker may write over them,
  /// but for the first `kept`.
  std::span<uint8_t> begin(size_t size, size_t kept = 0);

  /// Returns what is kept of the unit in hand.
  std::span<const uint8_t> kept() const;

  /// Returns the number of the piece's first unit, as the source set it, and adds those that are
  /// done.
  uint64_t unit() const;

  /// Returns where the piece came from, as the source set it.
  uint64_t origin() const;

  /// Adds to the answer of the unit in hand. Returns false where there is no room.
  bool write(std::string_view text);

  /// Ends the unit in hand: what was written is its answer. A process that is ended, at whatever
  /// moment, loses no more than the unit in hand.
  void done(Counts counts);

 private:
  friend class Workers;
  struct Slot;
  explicit Piece(Slot &slot) : slot_(&slot) {}
  Slot *slot_;
};

/// The processes, and the memory that they share with this one.
class Workers {
 public:
  /// The most octets that a piece has.
  static constexpr size_t most = size_t{65} << 20;

  /// Puts the next piece into the room. Returns how many octets it has; 0 at the end of the input.
  /// May wait for input, but only where `may_wait` says so: else it returns `later` in place of
  /// that.
  static constexpr size_t later = SIZE_MAX;
  struct Source {
    std::function<size_t(std::span<uint8_t> room, bool may_wait)> fill;
    uint64_t first_unit = 0;  ///< of the piece that was filled
    uint64_t origin = 0;      ///< of the piece that was filled
    int descriptor = -1;      ///< what has to be readable before `fill` can go on; -1 for nothing
  };

  struct Tasks {
    /// Goes through a piece, in a worker.
    std::function<void(Piece &piece)> work;
    /// Answers for the unit that a worker ended in, with its last words, and ends the unit. Runs in
    /// another worker.
    std::function<void(Piece &piece, std::string_view last_words)> ended;
    /// Takes the answer of a piece, in the order of the pieces, in this process.
    std::function<void(std::string_view answer, Piece::Counts counts)> take;
  };

  /// Runs all pieces of the source through `jobs` processes. There are never more than a few pieces
  /// in memory for each of them.
  /// @throws std::system_error where there is no memory or no process.
  static void run(size_t jobs, Source &source, const Tasks &tasks);

 private:
  class Crew;
};

}  // namespace tool

#endif
