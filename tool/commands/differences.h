// What the command diff writes of a difference.
#ifndef ORVELASN1_TOOL_COMMANDS_DIFFERENCES_H
#define ORVELASN1_TOOL_COMMANDS_DIFFERENCES_H

#include "commands/commands.h"
#include "model/difference.h"

namespace tool {

/// Writes the differences between two elements, as text or as JSON.
class DifferenceWriter {
 public:
  /// @param heading of what is written as text; stands in front of the first difference.
  DifferenceWriter(const DiffRequest &request, size_t element, std::string heading)
      : request_(request), element_(element), heading_(std::move(heading)) {}

  std::string operator()(const Difference &difference);

  /// Returns a difference of the elements as a whole.
  std::string whole(const std::string &what, const std::string &a, const std::string &b);

  /// Returns that elements of so many octets differ in nothing that is described.
  std::string unseen(size_t a, size_t b, size_t offset);

  /// Whether there was a difference.
  bool any() const { return any_; }

 private:
  Json start(const std::string &what, const std::string &path) const;
  std::string head(const std::string &path);
  std::string line(const char *sign, const std::string &text, Tone tone) const;
  std::string lines(const char *sign, const std::vector<std::string> &all, Tone tone) const;
  std::string json(const Difference &difference) const;
  std::string text(const Difference &difference);
  std::string pair(const Node &a, const Node &b) const;

  const DiffRequest &request_;
  size_t element_;
  std::string heading_;
  std::string last_path_;
  bool any_ = false;
};

}  // namespace tool

#endif
