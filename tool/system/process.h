// The ends of child processes.
#ifndef ORVELASN1_TOOL_SYSTEM_PROCESS_H
#define ORVELASN1_TOOL_SYSTEM_PROCESS_H

#include <sys/types.h>

#include <string>

namespace tool {

/// Waits until a child has ended. Returns its status, as waitpid() has it.
int wait_for(pid_t child);

/// Returns in words how a child ended.
std::string manner_of_end(int status);

/// Ends the tool as its child ended, where that is meant for the whole tool: by a signal from
/// outside, for lack of a reader, or because the output cannot be written.
void follow(int status);

}  // namespace tool

#endif
