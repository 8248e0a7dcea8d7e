#include "system/pager.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "system/output.h"
#include "system/process.h"
#include "system/terminal.h"

namespace tool {

namespace {

bool is_in_path(const std::string &program) {
  const char *const path = std::getenv("PATH");
  std::string_view rest = path == nullptr ? "" : path;
  while (!rest.empty()) {
    const size_t stop = std::min(rest.find(':'), rest.size());
    const std::string file = std::string(rest.substr(0, stop)) + "/" + program;
    if (access(file.c_str(), X_OK) == 0) return true;
    rest.remove_prefix(std::min(stop + 1, rest.size()));
  }
  return false;
}

/// Returns the command of the pager; an empty text where there is none.
std::string pager_command() {
  const char *const wanted = std::getenv("PAGER");
  if (wanted != nullptr) return std::string_view(wanted) == "cat" ? "" : wanted;
  return is_in_path("less") ? "less -R" : "";
}

/// A pipe, whose ends close themselves.
class Pipe {
 public:
  Pipe() {
    if (pipe(ends_) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
  }
  Pipe(const Pipe &) = delete;
  Pipe &operator=(const Pipe &) = delete;
  ~Pipe() {
    close_end(0);
    close_end(1);
  }
  int reading() const { return ends_[0]; }
  int writing() const { return ends_[1]; }
  void close_reading() { close_end(0); }
  void close_writing() { close_end(1); }

 private:
  void close_end(size_t end) {
    if (ends_[end] >= 0) close(ends_[end]);
    ends_[end] = -1;
  }
  int ends_[2] = {-1, -1};
};

/// Reads what is there. Returns an empty text at the end.
std::string read_some(int descriptor) {
  std::string text(65536, '\0');
  ssize_t count = 0;
  do count = ::read(descriptor, text.data(), text.size());
  while (count < 0 && errno == EINTR);
  text.resize(count < 0 ? 0 : static_cast<size_t>(count));
  return text;
}

/// Starts the pager, which reads from the pipe.
std::optional<pid_t> start_pager(const std::string &command, const Pipe &pipe) {
  // Colours, unless the user has settings of his own.
  setenv("LESS", "R", 0);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, pipe.reading(), STDIN_FILENO);
  posix_spawn_file_actions_addclose(&actions, pipe.reading());
  posix_spawn_file_actions_addclose(&actions, pipe.writing());
  const char *const words[] = {"sh", "-c", command.c_str(), nullptr};
  pid_t pager = 0;
  const int failure =
      posix_spawnp(&pager, "sh", &actions, nullptr, const_cast<char **>(words), environ);
  posix_spawn_file_actions_destroy(&actions);
  return failure == 0 ? std::optional(pager) : std::nullopt;
}

/// Copies the output of the job, from what was read of it on, to the pager, until one of the two
/// ends.
void show_in(const std::string &command, std::string text, Pipe &output) {
  Pipe input;
  const auto pager = start_pager(command, input);
  input.close_reading();
  // The pager decides what an interrupt means. It may go before it has read all.
  for (const int signal : {SIGINT, SIGQUIT, SIGPIPE}) std::signal(signal, SIG_IGN);
  const int target = pager ? input.writing() : STDOUT_FILENO;
  while (!text.empty() && write_all(target, text)) text = read_some(output.reading());
  output.close_reading();
  input.close_writing();
  if (pager) wait_for(*pager);
}

/// Returns the status of the job. Ends as it ended, if that was by a signal; that the reader of its
/// output went is no failure.
int status_of(pid_t child) {
  const int status = wait_for(child);
  if (WIFEXITED(status)) return WEXITSTATUS(status);
  if (WTERMSIG(status) == SIGPIPE) return EXIT_SUCCESS;
  std::signal(WTERMSIG(status), SIG_DFL);
  std::raise(WTERMSIG(status));
  return EXIT_FAILURE;
}

}  // namespace

int run_paged(const std::function<int()> &job) {
  const size_t rows = terminal_rows();
  const std::string command = rows == 0 ? "" : pager_command();
  if (command.empty()) return job();
  Pipe output;
  const pid_t child = fork();
  if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (child == 0) {
    if (isatty(STDERR_FILENO) != 0) dup2(output.writing(), STDERR_FILENO);
    dup2(output.writing(), STDOUT_FILENO);
    output.close_reading();
    output.close_writing();
    return job();
  }
  output.close_writing();
  std::string text;
  size_t lines = 0;
  while (lines < rows) {
    const std::string more = read_some(output.reading());
    if (more.empty()) break;
    lines += static_cast<size_t>(std::ranges::count(more, '\n'));
    text += more;
  }
  if (lines < rows)
    write_all(STDOUT_FILENO, text);
  else
    show_in(command, std::move(text), output);
  return status_of(child);
}

}  // namespace tool
