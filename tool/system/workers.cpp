#include "system/workers.h"

#include <poll.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <exception>
#include <memory>
#include <new>
#include <system_error>
#include <utility>
#include <vector>

#include "system/descriptor.h"
#include "system/output.h"
#include "system/process.h"
#include "system/shared_memory.h"

namespace tool {

namespace {

/// How much memory an idle slot keeps of its input and of its answer.
constexpr size_t kept = size_t{1} << 20;
/// Room for the answer of a piece, of which only what is written takes memory.
constexpr size_t answer_room = Workers::most * 8;
/// Pieces that a worker has in hand: the one that it works on and the next one.
constexpr size_t pieces_a_worker = 2;

[[noreturn]] void throw_error(const char *what) {
  throw std::system_error(errno, std::generic_category(), what);
}

/// Two ends that are connected. A write to an end whose other end is gone fails, without a signal.
struct Connection {
  Connection() {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) throw_error("socketpair");
    ours = Descriptor(ends[0]);
    theirs = Descriptor(ends[1]);
  }
  Descriptor ours;
  Descriptor theirs;
};

/// Sends the number of a slot, one octet. Returns false where nobody is at the other end.
bool send_number(int fd, uint8_t number) {
  for (;;) {
    const ssize_t count = send(fd, &number, 1, MSG_NOSIGNAL);
    if (count == 1) return true;
    if (errno != EINTR) return false;
  }
}

bool receive_number(int fd, uint8_t &number) {
  for (;;) {
    const ssize_t count = recv(fd, &number, 1, 0);
    if (count == 1) return true;
    if (count == 0 || errno != EINTR) return false;
  }
}

}  // namespace

/// The memory of a piece.
struct Piece::Slot {
  // Set before a worker has the piece.
  size_t size = 0;
  uint64_t first_unit = 0;
  uint64_t origin = 0;
  // Set by the workers.
  struct State {
    size_t at = 0;        ///< where the unit in hand begins
    size_t in_hand = 0;   ///< its octets; 0 where no unit is in hand
    size_t kept = 0;      ///< those of them that are not written over
    size_t answered = 0;  ///< octets of the answer up to the unit in hand
    uint64_t units = 0;   ///< that are done
    Counts counts;
  };
  /// The present state and room for the next one. What changes with the end of a unit changes at
  /// once, so that a worker may be ended at any moment.
  State states[2];
  std::atomic<uint8_t> present{0};
  size_t written = 0;     ///< octets of the answer, and of the unit in hand
  bool is_ended = false;  ///< whether a worker ended since
  char last_words[4096] = {};
  // The memory of the input and of the answer follows.

  State &state() { return states[present]; }
  void end_unit(Counts more) {
    const State &now = state();
    const uint8_t other = present ^ 1;
    states[other] = {now.at + now.in_hand,
                     0,
                     0,
                     written,
                     now.units + 1,
                     {now.counts.elements + more.elements, now.counts.faults + more.faults}};
    present = other;
  }

  uint8_t *input() { return reinterpret_cast<uint8_t *>(this) + page; }
  uint8_t *answer() { return input() + Workers::most; }

  static constexpr size_t page = 8192;
  static constexpr size_t room = page + Workers::most + answer_room;
};

std::span<const uint8_t> Piece::rest() const {
  const size_t at = slot_->state().at;
  return {slot_->input() + at, slot_->size - at};
}
std::span<uint8_t> Piece::begin(size_t size, size_t kept) {
  Slot::State &state = slot_->state();
  state.kept = kept;
  state.in_hand = size;
  return {slot_->input() + state.at, size};
}
std::span<const uint8_t> Piece::kept() const { return rest().first(slot_->state().kept); }
uint64_t Piece::unit() const { return slot_->first_unit + slot_->state().units; }
uint64_t Piece::origin() const { return slot_->origin; }

bool Piece::write(std::string_view text) {
  if (text.size() > answer_room - slot_->written) return false;
  std::memcpy(slot_->answer() + slot_->written, text.data(), text.size());
  slot_->written += text.size();
  return true;
}

void Piece::done(Counts counts) { slot_->end_unit(counts); }

/// What run() does, step by step.
class Workers::Crew {
 public:
  Crew(size_t jobs, Source &source, const Tasks &tasks)
      : source_(source), tasks_(tasks), slots_(slot_count(jobs)), workers_(jobs) {
    for (Memory &slot : slots_) new (slot.memory.start()) Piece::Slot;
    for (size_t i = 0; i < slots_.size(); ++i) free_.push_back(static_cast<uint8_t>(i));
    for (Worker &worker : workers_) start(worker);
  }

  void run() {
    bool is_more = true;
    while (is_more || !order_.empty()) {
      if (is_more && !free_.empty()) is_more = give_out();
      take_answers();
      const bool may_fill = is_more && !free_.empty();
      if (!order_.empty() && (!may_fill || waits_)) wait(may_fill);
    }
    for (Worker &worker : workers_) worker.end.reset();
    for (const Worker &worker : workers_) wait_for(worker.process);
  }

 private:
  struct Memory {
    Memory() : memory(Piece::Slot::room) {}
    Piece::Slot &slot() { return *static_cast<Piece::Slot *>(memory.start()); }
    SharedMemory memory;
    bool is_done = false;
  };
  struct Worker {
    pid_t process = -1;
    Descriptor end{};               ///< takes numbers of slots to work on, and returns them
    Descriptor words{};             ///< what it wrote to standard error
    std::deque<uint8_t> in_hand{};  ///< slots, in their order
  };

  /// One octet is the number of a slot.
  static size_t slot_count(size_t jobs) {
    return std::min<size_t>(jobs * pieces_a_worker + 2, 256);
  }

  /// Fills a slot and gives it to the worker with the least to do. Returns false at the end of the
  /// input.
  bool give_out() {
    const uint8_t number = free_.front();
    Piece::Slot &slot = slots_[number].slot();
    const size_t size = source_.fill({slot.input(), Workers::most}, order_.empty());
    waits_ = size == later;
    if (waits_) return true;
    if (size == 0) return false;
    free_.pop_front();
    slot.size = size;
    slot.first_unit = source_.first_unit;
    slot.origin = source_.origin;
    slot.state() = {};
    slot.written = 0;
    slot.is_ended = false;
    slots_[number].is_done = false;
    order_.push_back(number);
    Worker &worker = *std::ranges::min_element(
        workers_, {}, [](const Worker &one) { return one.in_hand.size(); });
    worker.in_hand.push_back(number);
    // A worker that ended reads no more: wait() finds that out, and gives the slot to the next.
    send_number(worker.end.get(), number);
    return true;
  }

  void take_answers() {
    while (!order_.empty() && slots_[order_.front()].is_done) {
      const uint8_t number = order_.front();
      Piece::Slot &slot = slots_[number].slot();
      const Piece::Slot::State &state = slot.state();
      tasks_.take({reinterpret_cast<const char *>(slot.answer()), state.answered}, state.counts);
      shrink(slot.input(), slot.size);
      shrink(slot.answer(), slot.written);
      order_.pop_front();
      free_.push_back(number);
    }
  }

  /// Returns the memory of a large piece to the system.
  static void shrink(uint8_t *start, size_t used) {
    if (used > kept) madvise(start + kept, used - kept, MADV_REMOVE);
  }

  /// Waits for a worker, or for input.
  void wait(bool for_input) {
    std::vector<pollfd> ends;
    for (const Worker &worker : workers_) ends.push_back({worker.end.get(), POLLIN, 0});
    if (for_input) ends.push_back({source_.descriptor, POLLIN, 0});
    while (poll(ends.data(), ends.size(), -1) < 0)
      if (errno != EINTR) throw_error("poll");
    for (size_t i = 0; i < workers_.size(); ++i)
      if (ends[i].revents != 0) hear(workers_[i]);
  }

  /// Takes the number of a slot from a worker, or sets another in its place where it ended.
  void hear(Worker &worker) {
    uint8_t number = 0;
    if (receive_number(worker.end.get(), number)) {
      slots_[number].is_done = true;
      std::erase(worker.in_hand, number);
      return;
    }
    const int status = wait_for(worker.process);
    follow(status);
    if (!worker.in_hand.empty()) {
      Piece::Slot &slot = slots_[worker.in_hand.front()].slot();
      slot.is_ended = true;
      slot.written = slot.state().answered;
      const ssize_t size =
          pread(worker.words.get(), slot.last_words, sizeof slot.last_words - 1, 0);
      if (size > 0)
        slot.last_words[size] = '\0';
      else
        std::snprintf(slot.last_words, sizeof slot.last_words, "%s", manner_of_end(status).c_str());
    }
    start(worker);
    for (const uint8_t slot : worker.in_hand) send_number(worker.end.get(), slot);
  }

  /// Starts a worker. What it writes to standard error is kept, as its last words.
  void start(Worker &worker) {
    Connection connection;
    Descriptor words(memfd_create("last words", MFD_CLOEXEC));
    if (words.get() < 0) throw_error("memfd_create");
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0) throw_error("fork");
    if (child == 0) {
      // The others' ends, so that they see the end of the tool.
      for (Worker &other : workers_) other.end.reset();
      connection.ours.reset();
      be_a_worker(connection.theirs.get(), words.get());
    }
    worker.process = child;
    worker.end = std::move(connection.ours);
    worker.words = std::move(words);
  }

  [[noreturn]] void be_a_worker(int end, int words) {
    const rlimit no_core{0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    complain_to(dup(STDERR_FILENO));
    dup2(words, STDERR_FILENO);
    try {
      uint8_t number = 0;
      while (receive_number(end, number)) {
        Piece::Slot &slot = slots_[number].slot();
        Piece piece(slot);
        if (std::exchange(slot.is_ended, false) && slot.state().in_hand != 0)
          tasks_.ended(piece, slot.last_words);
        tasks_.work(piece);
        if (!send_number(end, number)) break;
      }
    } catch (const std::exception &error) {
      std::fprintf(stderr, "%s\n", error.what());
      std::fflush(stderr);
      std::_Exit(EXIT_FAILURE);
    }
    std::_Exit(EXIT_SUCCESS);
  }

  Source &source_;
  const Tasks &tasks_;
  std::vector<Memory> slots_;
  std::vector<Worker> workers_;
  std::deque<uint8_t> free_;   ///< used in turn, so that the memory soon is what it will be
  std::deque<uint8_t> order_;  ///< slots in use, in the order of their pieces
  bool waits_ = false;         ///< whether the source waits for input
};

void Workers::run(size_t jobs, Source &source, const Tasks &tasks) {
  Crew(std::max<size_t>(jobs, 1), source, tasks).run();
}

}  // namespace tool
