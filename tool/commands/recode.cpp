#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "commands/batch.h"
#include "commands/commands.h"
#include "system/output.h"
#include "text/characters.h"

namespace tool {

namespace {

/// The file that the encodings go to, if it has a name. It is opened before the input is read and
/// shared with the children, one after the other; what was in it is overwritten as they go and cut
/// at the end, so that the input itself may be the output.
class OutputFile {
 public:
  explicit OutputFile(const std::string &name) : name_(name) {
    if (!name.empty()) descriptor_ = open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  }
  OutputFile(const OutputFile &) = delete;
  OutputFile &operator=(const OutputFile &) = delete;
  ~OutputFile() {
    if (descriptor_ >= 0) close(descriptor_);
  }

  bool good() const { return name_.empty() || descriptor_ >= 0; }

  void write(const Bytes &octets) const {
    if (descriptor_ >= 0) emit_to(descriptor_, printable(name_), text_of(octets));
  }

  /// Cuts what stands behind the octets that were written. A device or a pipe has no length to cut.
  void cut() const {
    const off_t end = descriptor_ >= 0 ? lseek(descriptor_, 0, SEEK_CUR) : -1;
    if (end >= 0 && ftruncate(descriptor_, end) != 0 && errno != EINVAL)
      complain(printable(name_) + ": " + std::strerror(errno));
  }

 private:
  std::string name_;
  int descriptor_ = -1;
};

std::string octets_at(const char *side, Octets octets, size_t offset) {
  constexpr size_t shown = 16;
  if (offset >= octets.size()) return std::string("  ") + side + "  (the end)\n";
  return std::string("  ") + side + "  " +
         spaced_hex(octets.subspan(offset, std::min(shown, octets.size() - offset))) + "\n";
}

/// The line for an element, and behind a difference the octets of both sides.
std::string verdict(Octets in, Octets out) {
  const auto [a, b] = std::ranges::mismatch(in, out);
  if (a == in.end() && b == out.end()) return "same, " + std::to_string(in.size()) + " octets\n";
  const size_t offset = static_cast<size_t>(a - in.begin());
  return "different from offset " + std::to_string(offset) + ", " + std::to_string(in.size()) +
         " octets in, " + std::to_string(out.size()) + " out\n" + octets_at("in ", in, offset) +
         octets_at("out", out, offset);
}

}  // namespace

bool recode(const RecodeRequest &request) {
  const OutputFile output(request.output);
  if (!output.good()) {
    complain(printable(request.output) + ": " + std::strerror(errno));
    return false;
  }
  const bool same =
      for_each_record({request.file}, request.type,
                      [&](const Input &input, const Element &element, Record &record) {
                        if (record.type().encode == nullptr) {
                          complain(input.where(element) + ": the library reads the type " +
                                   std::string(record.type().name) + " and does not write it");
                          return false;
                        }
                        if (request.fresh) record.forget_encodings();
                        const Bytes out = record.encode();
                        if (out.empty()) {
                          complain(input.where(element) + ": the encoder refuses what was decoded");
                          return false;
                        }
                        output.write(out);
                        emit(input.where(element) + ": " + verdict(element.octets, out));
                        return std::ranges::equal(element.octets, out);
                      });
  output.cut();
  return same;
}

}  // namespace tool
