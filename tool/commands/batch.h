// The elements of all inputs of a command, one after the other.
#ifndef ORVELASN1_TOOL_COMMANDS_BATCH_H
#define ORVELASN1_TOOL_COMMANDS_BATCH_H

#include <functional>

#include "input/input.h"
#include "records/type.h"

namespace tool {

/// Runs `job` for each element of each file, isolated from the rest. A file that cannot be read and
/// an element that ends its process are reported, and the others go on.
///
/// @return whether all went well.
bool for_each_element(const std::vector<std::string> &files,
                      const std::function<bool(const Input &, const Element &)> &job);

/// Decodes each element and runs `job` for each record, isolated from the rest. Elements that are
/// refused are reported.
bool for_each_record(const std::vector<std::string> &files, const Type *wanted,
                     const std::function<bool(const Input &, const Element &, Record &)> &job);

}  // namespace tool

#endif
