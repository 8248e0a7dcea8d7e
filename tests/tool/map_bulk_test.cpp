// "orvelasn1 map" over very many certificates, and what goes wrong around it: broken lines, readers
// that go away, full disks, processes that are killed.
//
// ORVELASN1_BULK sets the number of certificates; scripts/bulk.sh runs a million.
#include <fcntl.h>
#include <poll.h>

#include <csignal>
#include <functional>
#include <numeric>
#include <set>

#include "map.h"
#include "pem.h"
#include "sanitizers.h"

namespace map_bulk_test {

namespace {

using namespace tool_tests;

// ---- Lines --------------------------------------------------------------------------------------

/// Certificates that differ in their serial numbers, as many as are asked for: those that the
/// system trusts, again and again, each with a number of eight octets in place of its own.
class Certificates {
 public:
  Certificates() {
    for (const Bytes &one : support::certificates_of_pem(read_file(support::trust_store))) add(one);
  }

  /// The line of a certificate, with its line end.
  std::string_view line(uint64_t number) {
    Model &model = of(number);
    uint8_t *const serial = model.der.data() + model.serial;
    for (size_t i = 1; i < serial_size; ++i)
      serial[i] = static_cast<uint8_t>(number >> (8 * (serial_size - 1 - i)));
    // Three octets are four digits.
    const size_t first = model.serial / 3;
    const size_t last = (model.serial + serial_size - 1) / 3;
    const auto start = model.der.begin() + static_cast<std::ptrdiff_t>(3 * first);
    const std::string digits =
        base64(Bytes(start, start + static_cast<std::ptrdiff_t>(3 * (last + 1 - first))));
    model.line.replace(4 * first, digits.size(), digits);
    return model.line;
  }

  /// The serial number as the tool prints it.
  static std::string serial(uint64_t number) {
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "7A%014llX",
                  static_cast<unsigned long long>(number));
    return digits.data();
  }

  size_t size(uint64_t number) { return of(number).der.size(); }

 private:
  static constexpr size_t serial_size = 8;
  struct Model {
    Bytes der;
    size_t serial;  ///< where its octets begin
    std::string line;
  };

  Model &of(uint64_t number) { return models_[number % models_.size()]; }

  /// The content of the element at the start, and what follows it.
  static std::pair<Bytes, Bytes> split(const Bytes &octets) {
    size_t header = 2;
    size_t length = octets.at(1);
    if (length >= 0x80) {
      header += length & 0x7F;
      length = 0;
      for (size_t i = 2; i < header; ++i) length = length << 8 | octets.at(i);
    }
    const auto at = [&](size_t i) { return octets.begin() + static_cast<std::ptrdiff_t>(i); };
    return {Bytes(at(header), at(header + length)), Bytes(at(header + length), octets.end())};
  }

  void add(const Bytes &certificate) {
    const auto [tbs, signature] = split(split(certificate).first);
    const Bytes version(hex("A0 03 02 01 02"));
    // One of version 1 has its serial number first.
    if (!std::equal(version.begin(), version.end(), tbs.begin())) return;
    const Bytes serial{0x7A, 0, 0, 0, 0, 0, 0, 0};
    const Bytes rest = split(Bytes(tbs.begin() + 5, tbs.end())).second;
    Model model;
    model.der = sequence(sequence(version + element(0x02, serial) + rest) + signature);
    // A header of four octets for each SEQUENCE, the version, and the header of the serial number.
    model.serial = 4 + 4 + version.size() + 2;
    ASSERT_TRUE(std::equal(serial.begin(), serial.end(),
                           model.der.begin() + static_cast<std::ptrdiff_t>(model.serial)));
    model.line = base64(model.der) + "\n";
    models_.push_back(std::move(model));
  }

  std::vector<Model> models_;
};

// ---- The tool between pipes ---------------------------------------------------------------------

/// The tool with a pipe at each of its streams.
class Running {
 public:
  /// @param output a file for standard output in place of a pipe; may be empty.
  explicit Running(std::vector<std::string> words, const std::string &output = "") {
    words.insert(words.begin(), {ORVELASN1_TOOL_PATH, "map"});
    std::vector<char *> arguments;
    for (std::string &word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    int in[2], out[2], err[2];
    for (int *const ends : {in, out, err}) EXPECT_EQ(0, pipe2(ends, O_CLOEXEC));
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in[0], 0);
    posix_spawn_file_actions_adddup2(&actions, out[1], 1);
    posix_spawn_file_actions_adddup2(&actions, err[1], 2);
    if (!output.empty()) posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY, 0);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    EXPECT_EQ(0, posix_spawn(&process_, words[0].c_str(), &actions, &attributes, arguments.data(),
                             environ));
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    for (const int end : {in[0], out[1], err[1]}) close(end);
    in_ = in[1];
    out_ = out[0];
    err_ = err[0];
    fcntl(in_, F_SETFL, O_NONBLOCK);
  }
  Running(const Running &) = delete;
  Running &operator=(const Running &) = delete;
  ~Running() {
    for (int *const end : {&in_, &out_, &err_}) close_end(*end);
    if (process_ > 0) {
      kill(process_, SIGKILL);
      waitpid(process_, nullptr, 0);
    }
  }

  /// Returns the next octets of the input; none at its end.
  using Feed = std::function<std::string_view()>;
  /// Takes a line. Returns false where no more are wanted.
  using Take = std::function<bool(std::string_view line)>;

  /// Goes on until all of the feed is written and so many lines are taken.
  void run(const Feed &feed, const Take &take, uint64_t lines) {
    run_until(feed, take, [&] { return is_fed_ && lines_ >= lines; });
  }

  /// Goes on until the tool and all its processes have closed their streams. Returns the tool's
  /// status, or 128 and the number of the signal that ended it.
  int finish(const Feed &feed, const Take &take) {
    run_until(
        [&]() -> std::string_view {
          const std::string_view next = feed();
          if (next.empty()) close_end(in_);
          return next;
        },
        take, [&] { return out_ < 0 && err_ < 0; });
    int status = 0;
    if (testing::Test::HasFatalFailure()) return -1;
    waitpid(std::exchange(process_, 0), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

  void kill_all_but_workers() const { kill(process_, SIGKILL); }

  /// The processes of the workers.
  std::vector<pid_t> workers() const {
    std::vector<pid_t> found;
    for (const auto &entry : std::filesystem::directory_iterator("/proc")) {
      const pid_t id = std::atoi(entry.path().filename().c_str());
      if (id > 0 && number_of(id, "PPid:") == static_cast<size_t>(process_)) found.push_back(id);
    }
    return found;
  }

  /// Notes the memory of all processes, in KiB.
  void look_at_memory() {
    // What they share is counted once: it is all of the tool's own.
    size_t now = number_of(process_, "RssShmem:");
    std::vector<pid_t> all = workers();
    all.push_back(process_);
    for (const pid_t id : all) {
      now += number_of(id, "RssAnon:") + number_of(id, "RssFile:");
      peaks_[id] = std::max(peaks_[id], number_of(id, "VmHWM:"));
    }
    most_ = std::max(most_, now);
  }

  /// The most that all had at a time, as far as was noted.
  size_t most() const { return most_; }

  /// The sum of the most that each ever had, whenever that was, with what it shares. It cannot be
  /// less than what all had at any time.
  size_t bound() const {
    return std::accumulate(peaks_.begin(), peaks_.end(), size_t{0},
                           [](size_t sum, const auto &one) { return sum + one.second; });
  }

  const std::string &err() const { return err_text_; }

 private:
  static void close_end(int &end) {
    if (end >= 0) close(end);
    end = -1;
  }

  /// The number after a word in what the system tells of a process; 0 where there is none.
  static size_t number_of(pid_t process, const std::string &word) {
    const std::string text = read_file("/proc/" + std::to_string(process) + "/status");
    const size_t at = text.find("\n" + word);
    return at == text.npos ? 0 : std::strtoul(text.c_str() + at + 1 + word.size(), nullptr, 10);
  }

  void run_until(const Feed &feed, const Take &take, const std::function<bool()> &is_over) {
    is_fed_ = false;
    while (!is_over()) {
      if (rest_.empty() && !is_fed_ && in_ >= 0) {
        rest_ = feed();
        is_fed_ = rest_.empty();
      }
      pollfd ends[] = {
          {rest_.empty() ? -1 : in_, POLLOUT, 0}, {out_, POLLIN, 0}, {err_, POLLIN, 0}};
      constexpr int much_too_long = 60000;
      ASSERT_LT(0, poll(ends, std::size(ends), much_too_long)) << "the tool does nothing";
      if (ends[0].revents != 0) write_some();
      if (ends[1].revents != 0) read_some(take);
      if (ends[2].revents != 0) {
        std::array<char, 4096> buffer{};
        const ssize_t count = read(err_, buffer.data(), buffer.size());
        if (count > 0) err_text_.append(buffer.data(), static_cast<size_t>(count));
        if (count <= 0) close_end(err_);
      }
    }
  }

  void write_some() {
    const ssize_t count = write(in_, rest_.data(), rest_.size());
    if (count < 0 && errno != EAGAIN) {
      // The tool reads no more.
      is_fed_ = true;
      rest_ = {};
      close_end(in_);
    }
    if (count > 0) rest_.remove_prefix(static_cast<size_t>(count));
  }

  void read_some(const Take &take) {
    std::array<char, 65536> buffer{};
    const ssize_t count = read(out_, buffer.data(), buffer.size());
    if (count <= 0) {
      EXPECT_EQ("", out_text_) << "the last line has no end";
      return close_end(out_);
    }
    out_text_.append(buffer.data(), static_cast<size_t>(count));
    size_t start = 0;
    for (size_t end = 0; (end = out_text_.find('\n', start)) != out_text_.npos; start = end + 1) {
      ++lines_;
      if (!take(std::string_view(out_text_).substr(start, end - start))) {
        out_text_.clear();
        return close_end(out_);
      }
    }
    out_text_.erase(0, start);
  }

  pid_t process_ = 0;
  int in_ = -1, out_ = -1, err_ = -1;
  std::string_view rest_;
  bool is_fed_ = false;
  std::string out_text_;
  std::string err_text_;
  uint64_t lines_ = 0;
  std::map<pid_t, size_t> peaks_;
  size_t most_ = 0;
};

class MapBulk : public Tool {
 protected:
  MapBulk() { std::signal(SIGPIPE, SIG_IGN); }

  static const std::vector<std::string> &all_jobs() {
    static const std::vector<std::string> all{"1", "2", "3", "4", "5", "6", "7", "8"};
    return all;
  }

  /// The lines of the certificates up to a number.
  Running::Feed feed(uint64_t count) {
    return [this, count]() -> std::string_view {
      return fed_ == count ? std::string_view() : certificates_.line(fed_++);
    };
  }

  Certificates certificates_;
  uint64_t fed_ = 0;
};

// ---- Many ---------------------------------------------------------------------------------------

uint64_t bulk_count() {
  constexpr uint64_t usual = 20000;
  const char *const wanted = std::getenv("ORVELASN1_BULK");
  return wanted == nullptr ? usual : std::strtoull(wanted, nullptr, 10);
}

TEST_F(MapBulk, KeepsCountOrderAndSumInFlatMemory) {
  const auto memory_of = [&](uint64_t count) {
    Running tool({"--fields", "serial,size,subject,san.dns,notAfter,key.bits"});
    uint64_t expected_sum = 0;
    uint64_t sum = 0;
    uint64_t number = 0;
    fed_ = 0;
    const uint64_t step = count / 50 + 1;
    const int status = tool.finish(feed(count), [&](std::string_view line) {
      const std::string start = Certificates::serial(number) + "\t";
      EXPECT_TRUE(line.starts_with(start)) << "line " << number << ": " << line;
      sum += std::strtoull(line.data() + start.size(), nullptr, 10);
      expected_sum += certificates_.size(number);
      if (number++ % step == 0) tool.look_at_memory();
      return !HasFailure();
    });
    EXPECT_EQ(0, status);
    EXPECT_EQ(count, number);
    EXPECT_EQ(expected_sum, sum);
    EXPECT_TRUE(
        tool.err().starts_with("orvelasn1: " + std::to_string(count) + " elements, 0 errors, "))
        << tool.err();
    std::printf("%llu certificates: %zu KiB, at most %zu KiB, %s",
                static_cast<unsigned long long>(count), tool.most(), tool.bound(),
                tool.err().c_str());
#ifndef ORVELASN1_TESTS_SANITIZED
    EXPECT_GE(size_t{64} << 10, tool.bound());
#endif
    return tool.most();
  };
  const uint64_t count = bulk_count();
  const size_t small = memory_of(std::max<uint64_t>(count / 10, 10000));
  const size_t large = memory_of(count);
  EXPECT_LT(0U, small);
  EXPECT_LT(0U, large);
#ifndef ORVELASN1_TESTS_SANITIZED
  // In a short run it is left to chance how much of the window is ever in use at a time.
  const size_t percent = count < 1000000 ? 140 : 110;
  EXPECT_GE(small * percent / 100, large);
#endif
}

// ---- Broken lines -------------------------------------------------------------------------------

/// A tenth of the lines of each kind of what is broken; the others are sound.
class Mixed {
 public:
  explicit Mixed(Certificates &certificates) {
    const std::string good(certificates.line(1));
    const Bytes der = support::from_base64(good);
    const std::string fault = "[^\t]+";
    kinds_ = {
        {"*no base64*", "", "it is not base64"},
        {base64(Bytes(der.begin(), der.end() - 5)), "", fault},
        {base64(revocation_list()), "", ""},
        {"", "", "expected base64, found nothing"},
        {base64(sequence(Bytes(size_t{10} * 1024 * 1024 * 3 / 4, 0))), "", fault},
        {std::string(100, '\0'), "", "it is not base64"},
        {base64(certificate(0x070000, std::string("\0\x1B[31m\t\n\xFF", 9),
                            {std::string("\0\n\x1B", 3), "\xC2\x9B"})),
         "070000", ""},
        {good, Certificates::serial(1), ""},
        {good, Certificates::serial(1), ""},
        {good, Certificates::serial(1), ""},
    };
    for (Kind &kind : kinds_)
      if (!kind.line.ends_with('\n')) kind.line += '\n';
  }

  size_t kinds() const { return kinds_.size(); }
  std::string_view line(size_t number) const { return of(number).line; }

  /// The serial number and what is wrong, as a regular expression.
  std::string expected(size_t number) const {
    return "^" + of(number).serial + "\t" + of(number).fault + "$";
  }

 private:
  struct Kind {
    std::string line;
    std::string serial;
    std::string fault;
  };
  const Kind &of(size_t number) const { return kinds_[number * 7 % kinds_.size()]; }
  std::vector<Kind> kinds_;
};

TEST_F(MapBulk, HasALineForEachThatIsBrokenWhateverTheJobs) {
  const Mixed mixed(certificates_);
  const size_t count = 2 * mixed.kinds();
  for (const std::string &jobs : all_jobs()) {
    Running tool({"--fields", "serial,error", "--jobs", jobs});
    size_t in = 0;
    size_t out = 0;
    const int status = tool.finish(
        [&] { return in == count ? std::string_view() : mixed.line(in++); },
        [&](std::string_view line) {
          EXPECT_TRUE(matches(std::string(line), mixed.expected(out))) << out << ": " << line;
          ++out;
          return !HasFailure();
        });
    EXPECT_EQ(0, status) << jobs;
    EXPECT_EQ(count, out) << jobs;
    EXPECT_TRUE(tool.err().starts_with("orvelasn1: " + std::to_string(count) + " elements, " +
                                       std::to_string(count / 2) + " errors, "))
        << tool.err();
  }
}

// ---- Streams that fail --------------------------------------------------------------------------

TEST_F(MapBulk, EndsWithItsReader) {
  for (const std::string &jobs : all_jobs()) {
    Running tool({"--fields", "serial", "--jobs", jobs});
    fed_ = 0;
    // The end of standard error is the end of all processes.
    const int status = tool.finish(feed(UINT64_MAX), [&](std::string_view line) {
      EXPECT_EQ(Certificates::serial(0) + "\t", line);
      return false;
    });
    EXPECT_EQ(128 + SIGPIPE, status) << jobs;
    EXPECT_EQ("", tool.err()) << jobs;
  }
}

TEST_F(MapBulk, SaysThatTheDiskIsFull) {
  for (const std::string &jobs : all_jobs()) {
    Running tool({"--fields", "serial", "--jobs", jobs}, "/dev/full");
    fed_ = 0;
    const int status = tool.finish(feed(UINT64_MAX), [](std::string_view) { return true; });
    EXPECT_EQ(3, status) << jobs;
    EXPECT_EQ("orvelasn1: standard output: No space left on device\n", tool.err()) << jobs;
  }
}

// ---- Processes that are killed ------------------------------------------------------------------

TEST_F(MapBulk, LosesNothingToAnIdleWorkerThatIsKilled) {
  Running tool({"--fields", "serial", "--jobs", "2"});
  uint64_t number = 0;
  const auto take = [&](std::string_view line) {
    EXPECT_EQ(Certificates::serial(number++) + "\t", line);
    return true;
  };
  for (uint64_t part = 1; part <= 3; ++part) {
    tool.run(feed(100 * part), take, 100 * part);
    ASSERT_FALSE(HasFatalFailure());
    for (const pid_t worker : tool.workers()) kill(worker, SIGKILL);
  }
  EXPECT_EQ(0, tool.finish(feed(400), take));
  EXPECT_EQ(400U, number);
}

TEST_F(MapBulk, LosesOneLineAtMostToAWorkerThatIsKilled) {
  const uint64_t count = bulk_count();
  const std::string killed = "\tthe library ended its process: ended by signal: Killed";
  for (const char *const jobs : {"1", "2", "4"}) {
    Running tool({"--fields", "serial", "--jobs", jobs});
    uint64_t number = 0;
    uint64_t kills = 0;
    uint64_t lost = 0;
    fed_ = 0;
    const uint64_t step = count / 20 + 1;
    const int status = tool.finish(feed(count), [&](std::string_view line) {
      if (line == killed)
        ++lost;
      else
        EXPECT_EQ(Certificates::serial(number) + "\t", line);
      if (number++ % step == 0)
        for (const pid_t worker : tool.workers())
          if (kill(worker, SIGKILL) == 0) ++kills;
      return !HasFailure();
    });
    EXPECT_EQ(0, status);
    EXPECT_EQ(count, number) << jobs;
    EXPECT_LT(0U, kills);
    EXPECT_GE(kills, lost);
    EXPECT_NE(tool.err().npos, tool.err().find(" elements, " + std::to_string(lost) + " error"))
        << tool.err();
  }
}

TEST_F(MapBulk, LeavesNoWorkerBehind) {
  Running tool({"--fields", "serial", "--jobs", "4"});
  const int status = tool.finish(feed(UINT64_MAX), [&](std::string_view) {
    tool.kill_all_but_workers();
    return false;
  });
  EXPECT_EQ(128 + SIGKILL, status);
}

}  // namespace

}  // namespace map_bulk_test
