#include "system/process.h"

#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include "system/output.h"

namespace tool {

int wait_for(pid_t child) {
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  return status;
}

std::string manner_of_end(int status) {
  if (WIFSIGNALED(status)) return std::string("ended by signal: ") + strsignal(WTERMSIG(status));
  return "ended with status " + std::to_string(WEXITSTATUS(status));
}

void follow(int status) {
  if (WIFEXITED(status) && WEXITSTATUS(status) == output_failed) std::exit(output_failed);
  if (!WIFSIGNALED(status)) return;
  for (const int signal : {SIGPIPE, SIGINT, SIGTERM, SIGHUP, SIGQUIT})
    if (WTERMSIG(status) == signal) {
      std::signal(signal, SIG_DFL);
      std::raise(signal);
    }
}

}  // namespace tool
