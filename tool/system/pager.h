// A pager for an output that is longer than the terminal.
#ifndef ORVELASN1_TOOL_SYSTEM_PAGER_H
#define ORVELASN1_TOOL_SYSTEM_PAGER_H

#include <functional>

namespace tool {

/// Runs `job`, which returns the status of the tool. Where standard output is a terminal, and what
/// the job prints has more lines, shows it in $PAGER, or in less where that is not set and less is
/// there. What goes to standard error is then shown in its place in between.
///
/// Where there may be a pager the job runs in a child, and this returns in the child, too.
int run_paged(const std::function<int()> &job);

}  // namespace tool

#endif
