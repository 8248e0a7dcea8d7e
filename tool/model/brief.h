// The short form: an object in a line or two, aligned with those of others.
#ifndef ORVELASN1_TOOL_MODEL_BRIEF_H
#define ORVELASN1_TOOL_MODEL_BRIEF_H

#include "model/page.h"
#include "model/view.h"

namespace tool {

struct Brief {
  std::string state;                 ///< "31 days left", or what kind of object it is
  Tone tone = Tone::plain;           ///< of the state
  std::string title;                 ///< what it is about
  std::vector<std::string> details;  ///< what else is to be said
  std::vector<std::string> names;    ///< as many as there is room for are shown
};

/// The columns of the short form.
class BriefColumns {
 public:
  /// @param names of all files, so that what stands after them is aligned.
  BriefColumns(const std::vector<std::string> &names, const View &view);

  /// Returns the lines of an object.
  std::string lines(const std::string &name, const Brief &brief) const;

 private:
  const View &view_;
  size_t names_ = 0;  ///< the columns that names take
};

}  // namespace tool

#endif
