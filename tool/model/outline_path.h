// One place of an outline, by its path.
#ifndef ORVELASN1_TOOL_MODEL_OUTLINE_PATH_H
#define ORVELASN1_TOOL_MODEL_OUTLINE_PATH_H

#include "model/outline.h"

namespace tool {

/// The path to a place: names of fields and of alternatives with dots between them, and, in
/// brackets, numbers of elements or names of the identifiers that they begin with, as in
/// "tbsCertificate.extensions[subjectAltName].extnValue[0]". The paths of faults are such paths.
class OutlinePath {
 public:
  /// Reads a path; nothing where the text is none. The empty text is the path to the whole.
  static std::optional<OutlinePath> parse(std::string_view text);

  /// A part of a path.
  struct Step {
    std::string text;                ///< such as "extensions" or "[0]"
    std::vector<Bytes> identifiers;  ///< those that words in brackets name: their content octets
  };
  const std::vector<Step> &steps() const { return steps_; }

 private:
  std::vector<Step> steps_;
};

/// Follows the lines of an outline to a place.
class OutlineSearch {
 public:
  explicit OutlineSearch(OutlinePath path);

  /// Whether the line belongs to the place, or to what is in it: the first of several places with
  /// the path.
  bool operator()(const OutlineLine &line);

  /// Whether the place was found.
  bool is_found() const { return found_; }

  /// Whether all lines of the place were seen.
  bool is_past() const { return past_; }

  /// Says where the path stops, and what there is.
  std::string why_not() const;

 private:
  /// An element on the way.
  struct Level {
    size_t depth;
    size_t taken;         ///< steps of the path that lead here
    size_t elements = 0;  ///< in it, so far
  };

  std::optional<size_t> take(const OutlineLine &line, Level &around);
  bool is_next(size_t taken, std::string_view step) const;
  bool is_next(size_t taken, Octets identifier) const;
  void reach(size_t taken);
  void note(size_t taken, const std::string &step);
  bool wants_notes(size_t taken) const;

  OutlinePath path_;
  std::vector<Level> way_{{SIZE_MAX, 0}};  ///< from the whole input on
  bool found_ = false;
  bool past_ = false;
  size_t depth_ = 0;                ///< of the place
  size_t furthest_ = 0;             ///< steps to where most of the path was followed
  std::vector<std::string> there_;  ///< what there is, or the first of it
};

}  // namespace tool

#endif
