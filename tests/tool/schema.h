// The JSON schemas of docs/, and whether a value is as they say.
#ifndef ORVELASN1_TESTS_TOOL_SCHEMA_H
#define ORVELASN1_TESTS_TOOL_SCHEMA_H

#include <set>

#include "tool.h"

namespace tool_tests {

/// A schema of the folder. It knows the words that those schemas use, and no others.
class Schema {
 public:
  explicit Schema(const std::string &name) : name_(name) {}

  /// What in a value is not as the schema says; an empty text where nothing is.
  std::string violation(const json &value) const {
    return check({&document(name_), &document(name_)}, value, "$").violation;
  }

 private:
  /// A rule, and the document that its references start from.
  struct Rule {
    const json *document;
    const json *rule;
    Rule at(const json &inner) const { return {document, &inner}; }
    const json &operator*() const { return *rule; }
    const json *operator->() const { return rule; }
  };
  struct Result {
    std::string violation;
    std::set<std::string> described;  ///< the members that a rule speaks of
  };

  static const json &document(const std::string &name) {
    static std::map<std::string, json> documents;
    json &found = documents[name];
    if (found.is_null()) found = json::parse(read_file(ORVELASN1_DOCS_PATH + ("/" + name)));
    return found;
  }

  static Rule target(const Rule &rule, const std::string &reference) {
    const size_t mark = reference.find('#');
    const json &other = mark == 0 ? *rule.document : document(reference.substr(0, mark));
    return {&other, &other.at(json::json_pointer(reference.substr(mark + 1)))};
  }

  static bool is_of_type(const json &value, const std::string &type) {
    return (type == "object" && value.is_object()) || (type == "array" && value.is_array()) ||
           (type == "string" && value.is_string()) || (type == "boolean" && value.is_boolean()) ||
           (type == "integer" && value.is_number_integer()) || (type == "null" && value.is_null());
  }

  /// What is wrong with the value itself, whatever is inside it.
  static std::string check_itself(const json &rule, const json &value) {
    static const std::set<std::string> known{"$schema",
                                             "$id",
                                             "$defs",
                                             "title",
                                             "description",
                                             "type",
                                             "required",
                                             "const",
                                             "enum",
                                             "pattern",
                                             "minimum",
                                             "maximum",
                                             "anyOf",
                                             "items",
                                             "$ref",
                                             "properties",
                                             "additionalProperties",
                                             "unevaluatedProperties"};
    for (const auto &word : rule.items())
      if (!known.contains(word.key())) return " meets the unknown word " + word.key();
    if (rule.contains("type")) {
      const json types = rule["type"].is_array() ? rule["type"] : json::array({rule["type"]});
      if (std::ranges::none_of(
              types, [&](const json &type) { return is_of_type(value, type.get<std::string>()); }))
        return " is of another type";
    }
    if (rule.contains("const") && value != rule["const"]) return " has another value";
    if (rule.contains("enum") && std::ranges::find(rule["enum"], value) == rule["enum"].end())
      return " is not among the values";
    if (rule.contains("pattern") && value.is_string() &&
        !matches(value.get<std::string>(), rule["pattern"].get<std::string>()))
      return " does not follow the pattern";
    if (rule.contains("minimum") && value < rule["minimum"]) return " is too small";
    if (rule.contains("maximum") && value > rule["maximum"]) return " is too large";
    if (rule.contains("required") && value.is_object())
      for (const json &key : rule["required"])
        if (!value.contains(key.get<std::string>())) return " lacks " + key.get<std::string>();
    return "";
  }

  static Result check(const Rule &rule, const json &value, const std::string &place) {
    Result result;
    const auto wrong = [&result](const std::string &text) {
      result.violation = text;
      return result;
    };
    const auto holds = [&](const Rule &other) {
      const Result inner = check(other, value, place);
      result.described.insert(inner.described.begin(), inner.described.end());
      return inner.violation;
    };
    const std::string itself = check_itself(*rule, value);
    if (!itself.empty()) return wrong(place + itself);
    if (rule->contains("properties") && value.is_object())
      for (const auto &property : (*rule)["properties"].items()) {
        if (!value.contains(property.key())) continue;
        result.described.insert(property.key());
        const Result inner =
            check(rule.at(property.value()), value[property.key()], place + "." + property.key());
        if (!inner.violation.empty()) return wrong(inner.violation);
      }
    if (rule->contains("items") && value.is_array())
      for (size_t i = 0; i < value.size(); ++i) {
        const Result inner =
            check(rule.at((*rule)["items"]), value[i], place + "[" + std::to_string(i) + "]");
        if (!inner.violation.empty()) return wrong(inner.violation);
      }
    if (rule->contains("$ref")) {
      const std::string violation = holds(target(rule, (*rule)["$ref"]));
      if (!violation.empty()) return wrong(violation);
    }
    if (rule->contains("anyOf")) {
      const std::string violation = check_alternatives(rule, value, place, result);
      if (!violation.empty()) return wrong(violation);
    }
    const bool closed =
        rule->contains("additionalProperties") || rule->contains("unevaluatedProperties");
    if (closed && value.is_object())
      for (const auto &member : value.items())
        if (!result.described.contains(member.key()))
          return wrong(place + "." + member.key() + " is not described");
    return result;
  }

  /// What is wrong where no alternative holds: of those that get further than the first member,
  /// the words of the one that gets furthest.
  static std::string check_alternatives(const Rule &rule, const json &value,
                                        const std::string &place, Result &result) {
    std::string furthest = place + " is none of what is allowed";
    size_t reached = place.size() + std::string(".type").size();
    bool any = false;
    for (const json &one : (*rule)["anyOf"]) {
      const Result inner = check(rule.at(one), value, place);
      const size_t stop = inner.violation.find(' ');
      if (inner.violation.empty()) {
        any = true;
        result.described.insert(inner.described.begin(), inner.described.end());
      } else if (stop > reached) {
        reached = stop;
        furthest = inner.violation;
      }
    }
    return any ? "" : furthest;
  }

  std::string name_;
};

/// What in a line of JSON is not as docs/records.schema.json says; nothing where all is.
inline std::string record_violation(const std::string &line) {
  return Schema("records.schema.json").violation(json::parse(line));
}

}  // namespace tool_tests

#endif
