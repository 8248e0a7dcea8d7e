// Eight threads that decode, trace, explain, encode, copy, compare, print and release objects of all types,
// for a time and under a limit of memory, while allocations fail at random and all memory is taken from
// them again and again.
//
//   soak SECONDS SEED
//
// A call none of whose allocations fails has the same result as at the start, in one thread and with
// enough memory. A call with a failed allocation fails. Nothing is left after any, and the resident memory
// of the process does not grow.
#include <malloc.h>
#include <octets.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "family.h"
#include "guard.h"
#include "laws.h"

namespace {

using namespace attack;
using Clock = std::chrono::steady_clock;

constexpr unsigned thread_count = 8;
constexpr rlim_t memory_limit = rlim_t{768} << 20;
constexpr size_t largest_file = 64 << 10;
constexpr size_t largest_output = 1 << 20;
constexpr unsigned many_names = 4000;
constexpr uintptr_t most_blocks = 16 * many_names;
/// What the process may grow by: memory that was released is not all returned to the system.
constexpr size_t slack = 4 << 20;

/// The results of all calls with one input.
struct Answer {
  long consumed = -1;
  uint64_t written = 0;  ///< of the encoding; this and those below are hashes
  uint64_t written_copy = 0;
  uint64_t explanation = 0;
  std::array<uint64_t, 3> texts{};
  int32_t with_itself = 0;
  int32_t with_copy = 0;
  bool has_copy = false;

  bool operator==(const Answer &) const = default;
};

struct Input {
  const Family *family;
  Bytes octets;
  Answer answer;
};

uint64_t hash(const void *octets, size_t size) {
  uint64_t value = 0xCBF29CE484222325;
  for (size_t i = 0; i < size; ++i)
    value = (value ^ static_cast<const uint8_t *>(octets)[i]) * 0x100000001B3;
  return value;
}

/// A sequence of numbers that its seed decides (SplitMix64).
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  uint64_t next() {
    uint64_t z = state_ += 0x9E3779B97F4A7C15;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
  }
  uint64_t below(uint64_t limit) { return next() % limit; }

 private:
  uint64_t state_;
};

/// Counts the times at which memory began and ceased to be taken away: it is odd while it is.
std::atomic<unsigned> exhaustion{0};
std::atomic<bool> stop{false};
std::atomic<bool> failed{false};
std::atomic<unsigned> ready{0};

/// Held while memory is taken away, and by those who need some.
std::mutex memory;

struct Counts {
  uint64_t inputs = 0;
  uint64_t faults = 0;   ///< calls that failed because an allocation was made to
  uint64_t starved = 0;  ///< calls that failed for want of memory
  uint64_t endings = 0;  ///< promised ends of the process

  Counts &operator+=(const Counts &other) {
    inputs += other.inputs;
    faults += other.faults;
    starved += other.starved;
    endings += other.endings;
    return *this;
  }
};

/// Works on one input after the other, in one thread. Makes no block of its own while it works.
class Worker {
 public:
  Worker(uint64_t seed, bool with_faults)
      : random_(seed), with_faults_(with_faults), out_(largest_output) {
    make_guard();
  }

  /// Returns whether the calls came to their ends. Where `expected` is null, `*answer` is what they
  /// returned, and nothing is demanded.
  bool work(const Input &input, const Answer *expected, Answer *answer);

  Random &random() { return random_; }
  const Counts &counts() const { return counts_; }
  const char *mistake() const { return mistake_; }

 private:
  /// Makes a guard that has room for its blocks and for what it hears, as memory may be exhausted
  /// later.
  void make_guard();

  /// Calls `f`, which returns whether it succeeded, with an allocation failing or none. Returns the
  /// same, or false where the process ended.
  template <class F>
  bool call(const Input &input, bool may_fail, F f);
  bool starved_since(unsigned before) const { return before % 2 != 0 || exhaustion != before; }
  void demand(bool holds, const char *what) {
    if (!holds && mistake_ == nullptr) mistake_ = what;
  }
  void decode(const Input &input, const Answer *expected, Answer *answer, void **record);
  uint64_t encode(const Input &input, const Answer *expected, uint64_t before, const void *record);
  int32_t compare(const Input &input, const void *a, const void *b, int32_t before);
  void print(const Input &input, const Answer *expected, Answer *answer, const void *record);
  void release(const Input &input, void *record);

  Random random_;
  bool with_faults_;
  Bytes out_;
  std::optional<Guard> guard_;
  Counts counts_;
  const char *mistake_ = nullptr;
  bool ended_ = false;
};

void Worker::make_guard() {
  const std::scoped_lock<std::mutex> lock(memory);
  guard_.emplace();
  for (uintptr_t i = 1; i <= most_blocks; ++i) guard_->made(reinterpret_cast<void *>(16 * i));
  for (uintptr_t i = 1; i <= most_blocks; ++i) guard_->released(reinterpret_cast<void *>(16 * i));
  guard_->hear(std::string(1024, ' ').c_str(), 1024);
}

template <class F>
bool Worker::call(const Input &input, bool may_fail, F f) {
  const bool faulty = with_faults_ && random_.below(4) == 0;
  // Small numbers are as likely as large ones.
  if (faulty)
    guard_->fail_after(static_cast<long>(random_.below(uint64_t{1} << random_.below(12))));
  const size_t blocks = guard_->blocks();
  const unsigned before = exhaustion;
  bool succeeded = false;
  const bool returned = guard_->run([&] { succeeded = f(); });
  const bool refused = faulty && guard_->has_failed();
  guard_->fail_no_more();
  demand(!guard_->released_a_stranger(), "what is released is a block, once");
  if (refused) ++counts_.faults;
  if (!returned) {
    ended_ = true;
    ++counts_.endings;
    demand(!input.family->is_form() && is_promised_ending(guard_->last_words()),
           "only promised inputs end the process");
    return false;
  }
  demand(!refused || !succeeded, "a call with a failed allocation fails");
  if (!succeeded) {
    demand(guard_->blocks() == blocks, "a call that fails keeps nothing");
    if (!refused && !may_fail) {
      demand(starved_since(before), "a call fails although none of its allocations does");
      ++counts_.starved;
    }
  }
  return succeeded;
}

void Worker::decode(const Input &input, const Answer *expected, Answer *answer, void **record) {
  const uint8_t *const z = input.octets.data();
  const uint8_t *const end = z + input.octets.size();
  const bool may_fail = expected == nullptr || expected->consumed < 0;
  const uint32_t depth = random_.below(4) == 0;
  const bool taken = call(input, may_fail, [&] {
    const uint8_t *const next = input.family->decode(z, end, 0, record, depth);
    if (next != nullptr) {
      answer->consumed = next - z;
      return true;
    }
    // A list that was left is the caller's.
    input.family->free(*record);
    return false;
  });
  if (!taken) *record = nullptr;
}

uint64_t Worker::encode(const Input &input, const Answer *expected, uint64_t before,
                        const void *record) {
  if (expected != nullptr && before == 0) return before;
  const bool may_fail = expected == nullptr;
  uint32_t measured = 0;
  if (!call(input, may_fail, [&] {
        measured = input.family->encode(nullptr, record);
        return measured != 0;
      }))
    return before;
  demand(measured <= out_.size(), "an encoding is small");
  if (measured > out_.size()) return before;
  if (input.family->has(is_not_written)) return measured;
  uint8_t *cursor = out_.data();
  return call(input, may_fail, [&] { return input.family->encode(&cursor, record) == measured; })
             ? hash(out_.data(), measured)
             : before;
}

int32_t Worker::compare(const Input &input, const void *a, const void *b, int32_t before) {
  // Want of memory cannot be told from a difference.
  const unsigned phase = exhaustion;
  int32_t result = 0;
  demand(guard_->run([&] { result = input.family->compare(a, b); }), "a comparison returns");
  return starved_since(phase) ? before : result;
}

void Worker::print(const Input &input, const Answer *expected, Answer *answer, const void *record) {
  const std::string_view name = input.family->name;
  if (name != "RDNSequence" && name != "pki_RDNSequence") return;
  using Printer = char *(*)(const RDNSequence *);
  constexpr Printer printers[] = {pki_RDNSequence_text, pki_name_rfc4514, asn1_RDNSequence_to_Name};
  for (size_t i = 0; i < std::size(printers); ++i) {
    if (expected != nullptr && expected->texts.at(i) == 0) continue;
    call(input, expected == nullptr, [&] {
      char *const text = printers[i](static_cast<const RDNSequence *>(record));
      if (text == nullptr) return false;
      answer->texts.at(i) = hash(text, std::strlen(text));
      std::free(text);
      return true;
    });
  }
}

void Worker::release(const Input &input, void *record) {
  demand(guard_->run([&] { input.family->free(record); }), "a release ends the process");
}

bool Worker::work(const Input &input, const Answer *expected, Answer *answer) {
  const Family &family = *input.family;
  ++counts_.inputs;
  ended_ = false;
  if (expected != nullptr) *answer = *expected;
  if (family.type != nullptr) {
    pki_Fault fault;
    std::memset(&fault, 0, sizeof fault);
    const uint8_t *const z = input.octets.data();
    const int32_t found = pki_explain(family.type, z, z + input.octets.size(), &fault);
    answer->explanation = hash(fault.path, std::strlen(fault.path)) ^
                          hash(fault.sentence, std::strlen(fault.sentence)) ^
                          (fault.offset + (found == 0 ? 0 : uint64_t{1} << 32));
  }
  void *record = nullptr, *copy = nullptr;
  decode(input, expected, answer, &record);
  // Where memory was exhausted, the answer stays the expected one, and there is no record.
  if (record != nullptr) {
    if (family.encode != nullptr)
      answer->written = encode(input, expected, expected ? expected->written : 0, record);
    if (family.clone != nullptr && (expected == nullptr || expected->has_copy) &&
        call(input, expected == nullptr, [&] { return (copy = family.clone(record)) != nullptr; }))
      answer->has_copy = true;
    if (family.compare != nullptr) {
      answer->with_itself = compare(input, record, record, answer->with_itself);
      if (copy != nullptr) answer->with_copy = compare(input, record, copy, answer->with_copy);
    }
    print(input, expected, answer, record);
    release(input, record);
    if (copy != nullptr && family.encode != nullptr)
      answer->written_copy = encode(input, expected, expected ? expected->written_copy : 0, copy);
    if (copy != nullptr) release(input, copy);
  }
  // What had been made when the process ended is released with the guard.
  demand(ended_ || guard_->blocks() == 0, "everything is released");
  if (ended_) make_guard();
  return !ended_;
}

/// The inputs that do not end the process, each with its answer: the samples of all families,
/// a list that needs much memory, and the files of a folder where one is named.
std::vector<Input> make_inputs() {
  std::vector<Input> made;
  const auto add = [&](std::string_view name, const Bytes &octets) {
    for (const Family &family : families())
      if (family.name == name) made.push_back({&family, octets, {}});
  };
  using support::operator+;
  Bytes names;
  for (unsigned i = 0; i < many_names; ++i)
    names = std::move(names) + support::element(0x82, support::text("example.org"));
  add("pki_GeneralNames", support::element(0x30, names));
  for (const Family &family : families())
    for (const Bytes &sample : family.samples) made.push_back({&family, sample, {}});

  const char *const corpus = std::getenv("ORVELASN1_CORPUS");
  const std::pair<const char *, const char *> folders[] = {
      {"certificates", "Certificate"},
      {"certificates", "pki_Certificate"},
      {"hostile-certificates", "pki_Certificate"},
      {"crls", "CertificateRevocationList"},
      {"crls", "pki_CertificateRevocationList"},
      {"hostile-crls", "pki_CertificateRevocationList"},
      {"ocsp-requests", "pki_OCSPRequest"},
      {"ocsp-responses", "pki_OCSPResponse"},
  };
  for (const auto &[folder, name] : folders) {
    if (corpus == nullptr) break;
    for (const auto &file :
         std::filesystem::directory_iterator(std::filesystem::path(corpus) / folder)) {
      if (file.file_size() > largest_file) continue;
      std::ifstream in(file.path(), std::ios::binary);
      add(name, Bytes(std::istreambuf_iterator<char>(in), {}));
    }
  }

  Worker worker(0, false);
  std::erase_if(made, [&](Input &input) { return !worker.work(input, nullptr, &input.answer); });
  if (worker.mistake() != nullptr) {
    std::printf("soak: broken law in one thread: %s\n", worker.mistake());
    failed = true;
  }
  return made;
}

/// Takes all memory that the limit leaves, for as long as it lives.
class Hog {
 public:
  Hog() = default;
  void take() {
    for (size_t size = size_t{64} << 20; size >= 4096; size /= 2) {
      while (count_ < blocks_.size()) {
        void *const block = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (block == MAP_FAILED) break;
        blocks_.at(count_++) = {block, size};
      }
    }
  }
  Hog(const Hog &) = delete;
  Hog &operator=(const Hog &) = delete;
  ~Hog() {
    while (count_ != 0) {
      --count_;
      munmap(blocks_.at(count_).first, blocks_.at(count_).second);
    }
  }

 private:
  std::array<std::pair<void *, size_t>, 256> blocks_{};
  size_t count_ = 0;
};

/// The octets of this process that are in memory.
size_t resident() {
  size_t addresses = 0, pages = 0;
  std::ifstream("/proc/self/statm") >> addresses >> pages;
  return pages * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

void work_on_and_on(const std::vector<Input> &inputs, uint64_t seed, Counts *counts) {
  {
    // The families of texts keep pages for each thread, which grow with the longest text.
    Worker first(seed, false);
    Answer answer;
    for (const Input &input : inputs)
      if (input.family->group == "text") first.work(input, nullptr, &answer);
  }
  Worker worker(seed, true);
  ++ready;
  while (!stop) {
    auto at = static_cast<size_t>(worker.random().below(inputs.size()));
    if (exhaustion % 2 != 0 && worker.random().below(2) == 0) at = 0;
    const Input &input = inputs[at];
    Answer answer;
    const bool returned = worker.work(input, &input.answer, &answer);
    const char *mistake = worker.mistake();
    if (mistake == nullptr && returned && answer != input.answer)
      mistake = "an answer is another than at the start";
    if (mistake == nullptr) continue;
    std::printf("soak: broken law: %s: %s, input %zu\n", mistake,
                std::string(input.family->name).c_str(), &input - inputs.data());
    failed = true;
    stop = true;
  }
  *counts = worker.counts();
}

bool soak(long seconds, uint64_t seed) {
  const std::vector<Input> inputs = make_inputs();
  const std::unique_ptr<FILE, int (*)(FILE *)> nowhere(std::fopen("/dev/null", "w"), std::fclose);
  asn1_LogStart(nowhere.get());
  const rlimit limit{memory_limit, memory_limit};
  if (setrlimit(RLIMIT_AS, &limit) != 0) return false;
  // Blocks of a page and more come from the system, and go back to it.
  mallopt(M_MMAP_THRESHOLD, 4096);
  mallopt(M_TRIM_THRESHOLD, 0);
  // Another arena has its addresses before it needs them: the limit would not reach it.
  mallopt(M_ARENA_MAX, 1);

  std::array<Counts, thread_count> counts;
  std::vector<std::thread> threads;
  for (size_t i = 0; i < thread_count; ++i)
    threads.emplace_back(work_on_and_on, std::cref(inputs), seed + i, &counts.at(i));
  while (ready != thread_count) std::this_thread::yield();

  // Memory is taken away in a tenth of the time. The largest size of the first third of the time is
  // that of the last.
  std::array<size_t, 3> largest{};
  const Clock::time_point start = Clock::now(), end = start + std::chrono::seconds(seconds);
  for (Clock::time_point now = start; now < end && !stop; now = Clock::now()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(450));
    size_t &third =
        largest.at(static_cast<size_t>(std::min<int64_t>(2, (now - start) * 3 / (end - start))));
    third = std::max(third, resident());
    const std::scoped_lock<std::mutex> lock(memory);
    ++exhaustion;
    {
      // What is released meanwhile is taken, too.
      Hog hog;
      for (unsigned i = 0; i < 10; ++i) {
        hog.take();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
      }
    }
    ++exhaustion;
  }
  stop = true;
  for (std::thread &thread : threads) thread.join();
  asn1_LogStart(nullptr);

  Counts sum;
  for (const Counts &part : counts) sum += part;
  std::printf(
      "%zu inputs, %llu times in %u threads: %llu calls failed for an allocation that was made to "
      "fail,\n"
      "%llu for want of memory in %u times without any, %llu promised endings\n"
      "resident at most %zu KiB in the first third of the time, %zu KiB in the last\n",
      inputs.size(), static_cast<unsigned long long>(sum.inputs), thread_count,
      static_cast<unsigned long long>(sum.faults), static_cast<unsigned long long>(sum.starved),
      exhaustion / 2, static_cast<unsigned long long>(sum.endings), largest[0] >> 10,
      largest[2] >> 10);
  const auto demand = [](bool holds, const char *what) {
    if (!holds) std::printf("soak: %s\n", what);
    failed = failed || !holds;
  };
  demand(sum.faults != 0, "no allocation was made to fail");
  demand(sum.starved != 0, "memory was never exhausted");
  demand(largest[2] <= largest[0] + slack, "the process grows");
  return !failed;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc != 3) {
    std::fputs("soak SECONDS SEED\n", stderr);
    return 2;
  }
  const long seconds = std::strtol(argv[1], nullptr, 10);
  const uint64_t seed = std::strtoull(argv[2], nullptr, 10);
  // Within a call of a guard, standard error is the guards' for all threads.
  bool good = false;
  families();
  Guard outer;
  return outer.run([&] { good = soak(seconds, seed); }) && good ? EXIT_SUCCESS : EXIT_FAILURE;
}
