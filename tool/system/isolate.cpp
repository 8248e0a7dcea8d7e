#include "system/isolate.h"

#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <system_error>

#include "system/output.h"
#include "system/process.h"
#include "system/shared_memory.h"

namespace tool {

namespace {

/// What parent and child both see.
struct Progress {
  std::atomic<size_t> done{0};
  std::atomic<bool> failed{false};
};

/// Runs the jobs from the first that is not done. Never returns.
[[noreturn]] void be_the_child(size_t count, const std::function<bool(size_t)> &job,
                               Progress &progress, int words) {
  const rlimit no_core{0, 0};
  setrlimit(RLIMIT_CORE, &no_core);
  complain_to(dup(STDERR_FILENO));
  dup2(words, STDERR_FILENO);
  close(words);
  try {
    for (size_t i = progress.done; i < count; ++i) {
      if (!job(i)) progress.failed = true;
      progress.done = i + 1;
    }
  } catch (const std::exception &e) {
    std::fprintf(stderr, "%s\n", e.what());
    std::exit(EXIT_FAILURE);
  }
  std::exit(EXIT_SUCCESS);
}

/// Reads the pipe until its last writer is gone. Returns the beginning of a long text.
std::string read_words(int pipe_end) {
  constexpr size_t most = 65536;
  std::string words;
  char buffer[4096];
  for (;;) {
    const ssize_t count = read(pipe_end, buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    if (words.size() < most) words.append(buffer, static_cast<size_t>(count));
  }
  return words;
}

}  // namespace

bool run_isolated(size_t count, const std::function<bool(size_t)> &job,
                  const std::function<void(size_t, const std::string &last_words)> &ended) {
  const SharedMemory shared(sizeof(Progress));
  Progress &progress = *new (shared.start()) Progress;
  bool all_well = true;
  while (progress.done < count) {
    int ends[2];
    if (pipe(ends) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (child == 0) {
      close(ends[0]);
      be_the_child(count, job, progress, ends[1]);
    }
    close(ends[1]);
    std::string words = read_words(ends[0]);
    close(ends[0]);
    const int status = wait_for(child);
    follow(status);
    if (progress.done < count) {
      ended(progress.done, words.empty() ? manner_of_end(status) : words);
      progress.done = progress.done + 1;
      all_well = false;
    } else if (status != 0) {
      complain("a child " + manner_of_end(status) + "\n" + words);
      all_well = false;
    }
  }
  return all_well && !progress.failed;
}

}  // namespace tool
