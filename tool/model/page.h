// A page of text in sections of two aligned columns. What is longer than its column is wrapped.
#ifndef ORVELASN1_TOOL_MODEL_PAGE_H
#define ORVELASN1_TOOL_MODEL_PAGE_H

#include <string>
#include <string_view>
#include <vector>

#include "model/view.h"
#include "text/octets.h"

namespace tool {

/// How a piece of text is meant; a terminal shows it in a colour.
enum class Tone : uint8_t { plain, heading, quiet, warning, alarm };

/// Returns the text between the escape sequences of its tone, or as it is if `colour` is false.
std::string toned(std::string_view text, Tone tone, bool colour);

class Page {
 public:
  explicit Page(const View &view) : colour_(view.colour), columns_(view.columns) {}

  /// Opens a section. The note follows the heading in a quiet tone. It is not wrapped: it may be
  /// the name of a file.
  void section(std::string heading, std::string note = {});

  /// Adds a row to the section: a key and one or more lines.
  void row(std::string key, std::vector<std::string> lines, Tone tone = Tone::plain);
  void row(std::string key, std::string line, Tone tone = Tone::plain);

  /// Returns the whole page.
  std::string text() const;

 private:
  struct Row {
    std::string key;
    std::vector<std::string> lines;
    Tone tone;
  };
  struct Section {
    std::string heading;
    std::string note;
    std::vector<Row> rows;
  };
  bool colour_;
  size_t columns_;
  std::vector<Section> sections_;
};

/// How many octets are shown of many.
constexpr size_t octets_at_a_glance = 64;

/// Returns a hexadecimal dump in lines of sixteen octets. Cuts a long one unless `full`; the last
/// line then has the number of octets left out.
std::vector<std::string> dump(Octets octets, bool full);

}  // namespace tool

#endif
