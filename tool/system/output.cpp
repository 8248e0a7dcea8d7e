#include "system/output.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace tool {

namespace {

int complaints = STDERR_FILENO;

[[noreturn]] void give_up(const std::string &name) {
  complain(name + ": " + std::strerror(errno));
  std::_Exit(output_failed);
}

bool write_all(int descriptor, std::string_view octets) {
  while (!octets.empty()) {
    const ssize_t count = write(descriptor, octets.data(), octets.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    octets.remove_prefix(static_cast<size_t>(count));
  }
  return true;
}

}  // namespace

void emit(std::string_view text) {
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (!written || std::fflush(stdout) != 0 || std::ferror(stdout) != 0) give_up("standard output");
}

void emit_to(int descriptor, const std::string &name, std::string_view octets) {
  if (!write_all(descriptor, octets)) give_up(name);
}

void complain(const std::string &text) { write_all(complaints, "orvelasn1: " + text + "\n"); }

void complain_to(int descriptor) { complaints = descriptor; }

}  // namespace tool
