#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "commands/batch.h"
#include "commands/commands.h"
#include "system/output.h"
#include "text/characters.h"

namespace tool {

namespace {

/// Prints what is written to the trace with each unsafe character escaped: the trace quotes the
/// input as it is.
ssize_t print_safely(void *, const char *text, size_t size) {
  std::string_view rest(text, size);
  std::string safe;
  while (!rest.empty()) {
    const size_t stop = rest.find('\n');
    safe += printable(rest.substr(0, stop));
    if (stop == std::string_view::npos) break;
    safe += '\n';
    rest.remove_prefix(stop + 1);
  }
  emit(safe);
  return static_cast<ssize_t>(size);
}

/// Standard output for the trace, guarded if it is a terminal. It is written line by line, so that
/// the trace is complete up to the line at which the library ends the process.
class TraceStream {
 public:
  TraceStream() {
    if (isatty(STDOUT_FILENO) == 0) return;
    cookie_io_functions_t functions{};
    functions.write = print_safely;
    FILE *const guarded = fopencookie(nullptr, "w", functions);
    if (guarded == nullptr) throw std::system_error(errno, std::generic_category(), "fopencookie");
    stream_ = guarded;
    std::setvbuf(stream_, nullptr, _IOLBF, BUFSIZ);
  }
  TraceStream(const TraceStream &) = delete;
  TraceStream &operator=(const TraceStream &) = delete;
  ~TraceStream() {
    if (stream_ != stdout) std::fclose(stream_);
  }
  FILE *get() const { return stream_; }

 private:
  FILE *stream_ = stdout;
};

void print_trace(const Type &type, Octets octets) {
  const TraceStream stream;
  asn1_LogStart(stream.get());
  void *record = nullptr;
  type.syntax.decode(octets.data(), octets.data() + octets.size(), &record, 1);
  asn1_LogStart(nullptr);
  if (record != nullptr) type.syntax.release(record);
}

/// Returns the type to trace an element as: the one that decodes it, or else the first candidate.
/// An element that is not recognised is traced as the first of all types.
const Type &traced_type(const Element &element, const Type *wanted) {
  const auto tried = candidates(element, wanted);
  if (tried.empty()) return types().front();
  if (tried.size() == 1) return *tried.front();
  const Decoding decoding = decode(element, wanted);
  return decoding.record ? *decoding.type : *tried.front();
}

}  // namespace

bool trace(const std::vector<std::string> &files, const Type *type) {
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  return for_each_element(files, [type](const Input &input, const Element &element) {
    if (!element.octets.empty()) print_trace(traced_type(element, type), element.octets);
    emit("");  // ends the process if the trace could not be written
    const Decoding decoding = decode(element, type);
    if (decoding.fault) report(input, element, *decoding.fault);
    return !decoding.fault;
  });
}

}  // namespace tool
