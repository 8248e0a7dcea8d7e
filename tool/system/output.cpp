#include "system/output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "text/characters.h"

namespace tool {

namespace {

int complaints = STDERR_FILENO;

[[noreturn]] void give_up(const std::string &name) {
  complain(name + ": " + std::strerror(errno));
  std::_Exit(output_failed);
}

}  // namespace

bool write_all(int descriptor, std::string_view octets) {
  while (!octets.empty()) {
    const ssize_t count = ::write(descriptor, octets.data(), octets.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    octets.remove_prefix(static_cast<size_t>(count));
  }
  return true;
}

void emit(std::string_view text) {
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (!written || std::fflush(stdout) != 0 || std::ferror(stdout) != 0) give_up("standard output");
}

OutputFile::OutputFile(const std::string &name) : name_(printable(std::string_view(name))) {
  if (name.empty()) return;
  descriptor_ = open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  if (descriptor_ < 0) complain(name_ + ": " + std::strerror(errno));
}

OutputFile::~OutputFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

void OutputFile::write(std::string_view octets) const {
  if (descriptor_ >= 0 && !write_all(descriptor_, octets)) give_up(name_);
}

void OutputFile::cut() const {
  const off_t end = descriptor_ >= 0 ? lseek(descriptor_, 0, SEEK_CUR) : -1;
  if (end >= 0 && ftruncate(descriptor_, end) != 0 && errno != EINVAL)
    complain(name_ + ": " + std::strerror(errno));
}

void complain(const std::string &text) { write_all(complaints, "orvelasn1: " + text + "\n"); }

void complain_to(int descriptor) { complaints = descriptor; }

}  // namespace tool
