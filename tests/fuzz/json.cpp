// A fuzz target for the lines of show --json: of the elements that the tool finds in an input, of the
// whole of it as each of the types that a file may hold, and of what is refused.
#include "commands/json_lines.h"
#include "records/recognise.h"
#include "tool_target.h"

namespace {

using namespace tool;

/// What users may ask for, all of it and nothing.
View view(bool compact) {
  View view;
  view.compact = compact;
  view.secrets = compact;
  view.oids = compact;
  return view;
}

void hold_one(const Input &input, const Element &element, const Type *wanted) {
  static const View views[] = {view(false), view(true)};
  const Decoding decoding = decode(element, wanted);
  fuzz::expect(decoding.record || decoding.fault, "an element is read, or has a fault");
  if (decoding.fault) fuzz::expect_json_line(json_line(input, element, *decoding.fault));
  if (!decoding.record) return;
  for (const View &view : views)
    fuzz::expect_json_line(json_line(input, element, *decoding.type, *decoding.record, view));
}

}  // namespace

void fuzz::hold(Octets data) {
  constexpr size_t most = 8;
  Input input("a \"file\"\n\xFF", data);
  for (const Element &element : input.take(most)) hold_one(input, element, nullptr);
  Element whole;
  whole.number = 1;
  whole.octets = data;
  if (data.empty()) return;
  for (const Type *const type : types_worth_trying(data)) hold_one(input, whole, type);
}
