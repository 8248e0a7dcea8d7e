// The lines of an outline as text.
#ifndef ORVELASN1_TOOL_MODEL_OUTLINE_TEXT_H
#define ORVELASN1_TOOL_MODEL_OUTLINE_TEXT_H

#include <unordered_map>

#include "model/outline.h"

namespace tool {

/// How the lines of an outline are written.
struct OutlineStyle {
  bool colour = false;  ///< escape sequences for a terminal
  bool oids = false;    ///< the dotted form after each name
  bool full = false;    ///< long values and dumps to their end
  bool hex = false;     ///< a dump of the octets below each line
};

/// Writes the lines of an outline: offset, octets of the header and of the content, and, further to
/// the right with each level, the field, the type and a short value.
class OutlineWriter {
 public:
  /// @param size octets of the input, which say how wide the columns are.
  OutlineWriter(size_t size, const OutlineStyle &style);

  /// Returns the text of a line, with a newline at its end, and a dump below it where one is
  /// wanted.
  std::string operator()(const OutlineLine &line);

 private:
  std::string element(const OutlineLine &line);
  std::string value(const OutlineLine &line);
  std::string identifier(Octets content);
  std::string dump(Octets octets, size_t header, size_t offset) const;
  std::string coloured(std::string_view text) const;

  OutlineStyle style_;
  size_t offset_width_;
  size_t lengths_width_;
  size_t fields_ = 0;  ///< number of elements so far, which the colours go by
  std::unordered_map<std::string, std::string> names_;  ///< of the last identifiers
};

/// Returns the lines of an outline for a page, without newlines. After `most` lines the last one
/// says that there are more. Nothing is known of the octets where `type` is null.
std::vector<std::string> outline_lines(Octets octets, const pki_Type *type,
                                       const OutlineStyle &style, size_t most);

}  // namespace tool

#endif
