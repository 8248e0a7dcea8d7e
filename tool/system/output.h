// Standard output and standard error.
#ifndef ORVELASN1_TOOL_SYSTEM_OUTPUT_H
#define ORVELASN1_TOOL_SYSTEM_OUTPUT_H

#include <string>
#include <string_view>

namespace tool {

/// The status of the tool, and of its children, when its output cannot be written.
constexpr int output_failed = 3;

/// Writes a text to standard output at once. When that fails it says so and ends the process.
void emit(std::string_view text);

/// Writes octets to a file descriptor; `name` is what the message about a failure, which ends the
/// process, calls it.
void emit_to(int descriptor, const std::string &name, std::string_view octets);

/// Writes one line about what is wrong to standard error. The text is expected to be printable.
void complain(const std::string &text);

/// From now on complaints go to this file descriptor.
void complain_to(int descriptor);

}  // namespace tool

#endif
