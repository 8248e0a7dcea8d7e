// Runs jobs that may end the process so that they do no harm to each other.
#ifndef ORVELASN1_TOOL_SYSTEM_ISOLATE_H
#define ORVELASN1_TOOL_SYSTEM_ISOLATE_H

#include <cstddef>
#include <functional>
#include <string>

namespace tool {

/// Runs `job` for 0 to `count` - 1, in order, in a child process. When a job ends that process,
/// calls `ended` with its number and what it left on standard error, and starts a new child for the
/// rest.
///
/// @return whether every job returned true.
bool run_isolated(size_t count, const std::function<bool(size_t)> &job,
                  const std::function<void(size_t, const std::string &last_words)> &ended);

}  // namespace tool

#endif
