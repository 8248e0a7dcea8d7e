#include <algorithm>
#include <filesystem>

#include "commands/batch.h"
#include "commands/commands.h"
#include "system/output.h"

namespace tool {

namespace {

std::string octets_at(const char *side, Octets octets, size_t offset) {
  constexpr size_t shown = 16;
  if (offset >= octets.size()) return std::string("  ") + side + "  (the end)\n";
  return std::string("  ") + side + "  " +
         spaced_hex(octets.subspan(offset, std::min(shown, octets.size() - offset))) + "\n";
}

/// Returns the line for an element, and after a difference the octets of both sides.
std::string verdict(Octets in, Octets out) {
  const auto [a, b] = std::ranges::mismatch(in, out);
  if (a == in.end() && b == out.end()) return "same, " + std::to_string(in.size()) + " octets\n";
  const size_t offset = static_cast<size_t>(a - in.begin());
  return "different from offset " + std::to_string(offset) + ", " + std::to_string(in.size()) +
         " octets in, " + std::to_string(out.size()) + " out\n" + octets_at("in ", in, offset) +
         octets_at("out", out, offset);
}

/// Whether what is written to a file is written over the input.
bool is_overwritten(const std::string &input, const std::string &output) {
  std::error_code none;
  return !output.empty() &&
         std::filesystem::equivalent(input == "-" ? "/dev/stdin" : input, output, none);
}

}  // namespace

bool recode(const RecodeRequest &request) {
  const OutputFile output(request.output);
  if (!output.good()) return false;
  Course course;
  course.overwrites = is_overwritten(request.file, request.output);
  const bool same = for_each_record(
      {request.file}, request.type,
      [&](const Input &input, const Element &element, const Type &type, Record &record) {
        if (!type.is_written()) {
          complain(input.where(element) + ": the library reads the type " + type.name +
                   " but does not write it");
          return false;
        }
        if (request.fresh) record.forget_encodings();
        const Bytes out = type.encode(record.get());
        if (out.empty()) {
          complain(input.where(element) + ": the encoder refuses what was decoded");
          return false;
        }
        output.write(text_of(out));
        emit(input.where(element) + ": " + verdict(element.octets, out));
        return std::ranges::equal(element.octets, out);
      },
      nullptr, course);
  output.cut();
  return same;
}

}  // namespace tool
