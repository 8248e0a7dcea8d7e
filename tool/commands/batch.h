// Runs a command over the elements of all its inputs, one after the other.
#ifndef ORVELASN1_TOOL_COMMANDS_BATCH_H
#define ORVELASN1_TOOL_COMMANDS_BATCH_H

#include <functional>
#include <system_error>

#include "input/input.h"
#include "records/recognise.h"

namespace tool {

/// Reports what is wrong with an element, and where.
void report(const Input &input, const Element &element, const Fault &fault);

/// Says why a file cannot be read.
void report_file(const std::string &file, const std::system_error &error);

/// Says what is worth a message and no fault of an element; nothing where there is nothing.
void report_remark(const Input &input, const Element &element);

/// How many elements in a row may be strangers: of no type, without a key or a counterpart. Octets
/// that are no structure may still be elements: a file of 05 and 00 by turns has half a million in
/// a megabyte.
constexpr size_t most_strangers = 16;

using ElementJob = std::function<bool(const Input &, const Element &)>;

/// How a command goes through the elements, beside its jobs. All of these may be null.
struct Course {
  /// Returns where an element stands in the order, from the least on. All elements are then in
  /// memory. Without it they are taken as they come, and no more than some of them are in memory.
  std::function<int64_t(const Element &)> order;
  /// Run in the tool's own process for each element before its job, where there is no order.
  std::function<void(const Element &)> seen;
  /// Run in the tool's own process past the last job of an input, where there is no order.
  std::function<void(const Input &)> ended;
  /// Whether the jobs may write over an input: it is read as a whole before the first of them.
  bool overwrites = false;
};

/// Runs `job` for each element of each file, isolated from the rest. Reports a file that cannot be
/// read and an element that ends its process, and goes on with the others. Where many elements in
/// a row of a DER input are of no type, skips the rest of it.
///
/// @return whether all went well.
bool for_each_element(const std::vector<std::string> &files, const ElementJob &job,
                      const Course &course = {});

using RecordJob = std::function<bool(const Input &, const Element &, const Type &, Record &)>;

/// What a command does in place of report(). An element that was decoded has something left over.
using RefusalJob = std::function<void(const Input &, const Element &, const Fault &, bool decoded)>;

/// Decodes each element and runs `job` for each record, isolated from the rest. Runs `refused`, or
/// report() where it is null, for each element that is refused.
bool for_each_record(const std::vector<std::string> &files, const Type *wanted,
                     const RecordJob &job, const RefusalJob &refused = nullptr,
                     const Course &course = {});

}  // namespace tool

#endif
