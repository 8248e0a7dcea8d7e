// Runs a command over the elements of all its inputs, one after the other.
#ifndef ORVELASN1_TOOL_COMMANDS_BATCH_H
#define ORVELASN1_TOOL_COMMANDS_BATCH_H

#include <functional>

#include "input/input.h"
#include "records/recognise.h"

namespace tool {

/// Reports what is wrong with an element, and where.
void report(const Input &input, const Element &element, const Fault &fault);

/// Returns where an element stands in an order, from the least on.
using Order = std::function<int64_t(const Element &)>;

using ElementJob = std::function<bool(const Input &, const Element &)>;

/// Runs `job` for each element of each file, isolated from the rest. Reports a file that cannot be
/// read and an element that ends its process, and goes on with the others. Where many elements in
/// a row of a DER input are of no type, skips the rest of it. Takes the elements in their order,
/// with all inputs in memory, or one after the other where no order is given.
///
/// @return whether all went well.
bool for_each_element(const std::vector<std::string> &files, const ElementJob &job,
                      const Order &order = {});

using RecordJob = std::function<bool(const Input &, const Element &, const Type &, Record &)>;

/// Decodes each element and runs `job` for each record, isolated from the rest. Reports elements
/// that are refused.
bool for_each_record(const std::vector<std::string> &files, const Type *wanted,
                     const RecordJob &job, const Order &order = {});

}  // namespace tool

#endif
