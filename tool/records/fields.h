// The fields of objects that lines have and conditions ask for: each a question with a short answer.
#ifndef ORVELASN1_TOOL_RECORDS_FIELDS_H
#define ORVELASN1_TOOL_RECORDS_FIELDS_H

#include <variant>

#include "records/recognise.h"
#include "text/times.h"

namespace tool {

/// What fields are made from: an element, whether it could be read or not.
struct Object {
  std::string_view file;
  uint64_t number = 0;  ///< of the element in its file, counted from 1
  std::string_view id;  ///< what was passed through
  Octets octets;
  const Fault *fault = nullptr;
  const Type *type = nullptr;    ///< null where there is no record
  const void *record = nullptr;  ///< of that type
  /// The certificate; null where the object is none.
  const Certificate *certificate = nullptr;
};

/// A moment, which is shown in ISO form.
enum class Moment : Seconds {};

/// The answer: none where the object has no such thing.
using Value =
    std::variant<std::monostate, std::string, int64_t, Moment, bool, std::vector<std::string>>;

enum class ValueKind : uint8_t { text = 1, number, moment, truth, texts };

struct Field {
  std::string_view name;
  ValueKind kind;
  std::string_view about;
  Value (*of)(const Object &object);
};

/// Returns all fields, in the order in which they are listed.
std::span<const Field> fields();

/// Returns the field of this name, or null.
const Field *field_named(std::string_view name);

/// Returns a word for a kind of values: "texts".
std::string_view name_of(ValueKind kind);

Json json_of(const Value &value);

/// Returns a value in one line: several texts with commas between them, and a backslash in front of
/// a comma or a backslash that is inside one; nothing for none. Characters are not escaped. The
/// text is that of the value, or is written to `room`.
std::string_view text_of(const Value &value, std::string &room);

}  // namespace tool

#endif
