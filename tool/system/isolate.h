// Jobs that may end the process, run where they can do no harm to each other.
#ifndef ORVELASN1_TOOL_SYSTEM_ISOLATE_H
#define ORVELASN1_TOOL_SYSTEM_ISOLATE_H

#include <cstddef>
#include <functional>
#include <string>

namespace tool {

/// Runs `job` for 0 to `count` - 1, in order, in a child process. When a job ends that process,
/// `ended` is told its number and what it left on standard error, and a new child goes on with the
/// next one: a child a casualty, not a child a job.
///
/// @return whether every job gave true and none ended its process.
bool run_isolated(size_t count, const std::function<bool(size_t)> &job,
                  const std::function<void(size_t, const std::string &last_words)> &ended);

}  // namespace tool

#endif
