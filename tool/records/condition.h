// Conditions on the fields of objects, such as "key.bits < 2048 and not san.dns ~ '[.]test$'".
#ifndef ORVELASN1_TOOL_RECORDS_CONDITION_H
#define ORVELASN1_TOOL_RECORDS_CONDITION_H

#include <functional>

#include "records/fields.h"

namespace tool {

/// What a condition is made of:
///
///     condition  = both *("or" both)
///     both       = one *("and" one)
///     one        = "not" one / "(" condition ")" / "has" "(" field ")" / field [comparison value]
///     comparison = "=" / "==" / "!=" / "<" / "<=" / ">" / ">=" / "~"
///     value      = number / text between ' or " / "true" / "false" / date / "now" [("+" / "-")
///     time]
///
/// A field alone must be a truth. A comparison with a field of several texts is true where it is
/// for one of them, and one with a field that the object does not have is false; "!=" is the
/// contrary of "=". "~" searches for an extended regular expression (POSIX), "has" asks whether a
/// field is there and not empty. A date is 2030-01-31 or 2030-01-31T12:00:00Z, a time 12h, 30d,
/// 2w or 1y.
class Condition {
 public:
  /// A mistake in a text, and where, in characters from 1.
  struct Mistake {
    size_t place = 0;
    std::string text;
  };

  /// Reads a condition. `now` is the moment that "now" stands for.
  /// @return the condition, or the first mistake.
  static std::variant<Condition, Mistake> parse(std::string_view text, Seconds now);

  /// Whether an object meets the condition.
  bool operator()(const Object &object) const { return test_(object); }

 private:
  friend class ConditionReader;
  using Test = std::function<bool(const Object &)>;
  explicit Condition(Test test) : test_(std::move(test)) {}

  Test test_;
};

}  // namespace tool

#endif
