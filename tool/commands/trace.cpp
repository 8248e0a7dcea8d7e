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

/// Takes what is written to the trace and prints it with each unsafe character escaped: the trace
/// quotes the input as it is.
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

/// Where the trace goes: standard output, guarded where that is a terminal. It is written line by
/// line, so that a trace is there up to the line at which the library ends the process.
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
  type.decode(octets.data(), octets.data() + octets.size(), &record, 1);
  asn1_LogStart(nullptr);
  type.release(record);
}

/// The type to trace an element as: the one that takes it, or else the first that might. What is
/// not recognised is traced as the first of all types.
const Type &traced_type(const Element &element, const Type *wanted) {
  const auto tried = candidates(element, wanted);
  if (tried.empty()) return *types().front();
  if (tried.size() == 1) return *tried.front();
  const Decoding decoding = decode(element, wanted);
  return decoding.record ? decoding.record->type() : *tried.front();
}

}  // namespace

bool trace(const TraceRequest &request) {
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  return for_each_element(request.files, [&request](const Input &input, const Element &element) {
    if (!element.octets.empty()) print_trace(traced_type(element, request.type), element.octets);
    emit("");  // ends the process where the trace could not be written
    const Decoding decoding = decode(element, request.type);
    if (decoding.fault)
      complain(input.where(element, *decoding.fault) + ": " + decoding.fault->text);
    return !decoding.fault;
  });
}

}  // namespace tool
