#include "records/condition.h"

#include <regex.h>

#include <algorithm>
#include <charconv>
#include <memory>

#include "text/characters.h"
#include "text/nearest.h"

namespace tool {

namespace {

/// A regular expression of POSIX.
class Pattern {
 public:
  /// @throws std::string, what is wrong with it.
  explicit Pattern(const std::string &text) {
    const int error = regcomp(&regex_, text.c_str(), REG_EXTENDED | REG_NOSUB);
    if (error == 0) return;
    std::string why(256, '\0');
    why.resize(regerror(error, &regex_, why.data(), why.size()) - 1);
    throw why;
  }
  Pattern(const Pattern &) = delete;
  Pattern &operator=(const Pattern &) = delete;
  ~Pattern() { regfree(&regex_); }

  bool finds(const std::string &text) const {
    regmatch_t range{0, static_cast<regoff_t>(text.size())};
    return regexec(&regex_, text.c_str(), 1, &range, REG_STARTEND) == 0;
  }

 private:
  regex_t regex_{};
};

bool is_there(const Value &value) {
  if (const auto *const text = std::get_if<std::string>(&value)) return !text->empty();
  if (const auto *const texts = std::get_if<std::vector<std::string>>(&value))
    return !texts->empty();
  return value.index() != 0;
}

using Test = std::function<bool(const Object &)>;

/// Returns a test of whether one of the values of a field has a property.
template <class T, class Property>
Test where(const Field *field, Property property) {
  return [field, property = std::move(property)](const Object &object) {
    const Value value = field->of(object);
    if constexpr (std::is_same_v<T, std::string>)
      if (const auto *const texts = std::get_if<std::vector<std::string>>(&value))
        return std::ranges::any_of(*texts, property);
    const T *const one = std::get_if<T>(&value);
    return one != nullptr && property(*one);
  };
}

/// Returns a test of a field against a value of its own kind.
template <class T>
Test comparison(const Field *field, std::string_view sign, const T &value) {
  if (sign == "!=") {
    return [test = comparison(field, "=", value)](const Object &object) { return !test(object); };
  }
  return where<T>(field, [sign, value](const T &one) {
    if (sign == "<") return one < value;
    if (sign == "<=") return one <= value;
    if (sign == ">") return one > value;
    if (sign == ">=") return one >= value;
    return one == value;
  });
}

}  // namespace

/// Reads the text of a condition from the left to the right.
class ConditionReader {
 public:
  ConditionReader(std::string_view text, Seconds now) : text_(text), now_(now) {}

  Condition read() {
    Test test = any();
    if (peek() != "") fail("expected \"and\", \"or\" or the end");
    return Condition(std::move(test));
  }

 private:
  [[noreturn]] void fail(std::string why) const {
    const auto is_first_octet = [](char c) {
      return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    };
    const auto before = std::ranges::count_if(text_.substr(0, at_), is_first_octet);
    throw Condition::Mistake{static_cast<size_t>(before) + 1, std::move(why)};
  }

  static bool is_word(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
           c == '-' || c == '+' || c == ':' || c == '_';
  }

  /// Returns the next word, number, sign, or text with its marks; nothing at the end.
  std::string_view peek() {
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t' || text_[at_] == '\n'))
      ++at_;
    const std::string_view rest = text_.substr(at_);
    if (rest.empty()) return rest;
    if (is_word(rest[0])) {
      const auto end = std::ranges::find_if_not(rest, is_word);
      return rest.substr(0, static_cast<size_t>(end - rest.begin()));
    }
    if (rest[0] == '\'' || rest[0] == '"') {
      const size_t end = rest.find(rest[0], 1);
      if (end == rest.npos) fail("the text has no end");
      return rest.substr(0, end + 1);
    }
    const bool is_long =
        rest.size() > 1 && rest[1] == '=' && std::string_view("=!<>").find(rest[0]) != rest.npos;
    return rest.substr(0, is_long ? 2 : 1);
  }

  bool take(std::string_view token) {
    if (peek() != token) return false;
    at_ += token.size();
    return true;
  }

  void expect(std::string_view token) {
    if (!take(token)) fail("expected " + in_quotes(token));
  }

  Test any() {
    std::vector<Test> tests{all()};
    while (take("or")) tests.push_back(all());
    return tests.size() == 1 ? tests[0] : [tests = std::move(tests)](const Object &object) {
      return std::ranges::any_of(tests, [&](const Test &test) { return test(object); });
    };
  }

  Test all() {
    std::vector<Test> tests{one()};
    while (take("and")) tests.push_back(one());
    return tests.size() == 1 ? tests[0] : [tests = std::move(tests)](const Object &object) {
      return std::ranges::all_of(tests, [&](const Test &test) { return test(object); });
    };
  }

  Test one() {
    constexpr size_t deepest_condition = 100;
    if (depth_ == deepest_condition) fail("the condition is too deep");
    ++depth_;
    Test test = one_of();
    --depth_;
    return test;
  }

  Test one_of() {
    if (take("not")) return [test = one()](const Object &object) { return !test(object); };
    if (take("(")) {
      Test test = any();
      expect(")");
      return test;
    }
    if (take("has")) {
      expect("(");
      const Field *const asked = field();
      expect(")");
      return [asked](const Object &object) { return is_there(asked->of(object)); };
    }
    const Field *const asked = field();
    for (const std::string_view sign : {"=", "==", "!=", "<", "<=", ">", ">="})
      if (take(sign)) return compared(asked, sign == "==" ? "=" : sign);
    if (peek() == "~") return searched(asked);
    if (asked->kind != ValueKind::truth)
      fail("expected a comparison: " + std::string(asked->name) + " is no truth");
    return where<bool>(asked, [](bool value) { return value; });
  }

  const Field *field() {
    const std::string_view word = peek();
    if (word.empty() || !is_word(word[0])) fail("expected a field");
    const Field *const found = field_named(word);
    if (found == nullptr) {
      std::vector<std::string> known;
      for (const Field &one : fields()) known.emplace_back(one.name);
      fail("no field has the name " + in_quotes(word) + did_you_mean(word, known));
    }
    at_ += word.size();
    return found;
  }

  /// Takes a text between marks.
  std::string quoted(const Field *asked) {
    const std::string_view token = peek();
    if (token.empty() || (token[0] != '\'' && token[0] != '"'))
      fail("expected a text between quotation marks, since " + std::string(asked->name) +
           " holds " + std::string(name_of(asked->kind)));
    at_ += token.size();
    return std::string(token.substr(1, token.size() - 2));
  }

  Test searched(const Field *asked) {
    if (asked->kind != ValueKind::text && asked->kind != ValueKind::texts)
      fail(std::string(asked->name) + " is no text to search in");
    take("~");
    peek();
    const size_t place = at_;
    const std::string pattern = quoted(asked);
    try {
      return where<std::string>(
          asked, [pattern = std::make_shared<const Pattern>(pattern)](const std::string &text) {
            return pattern->finds(text);
          });
    } catch (const std::string &why) {
      at_ = place;
      fail("no regular expression: " + why);
    }
  }

  Test compared(const Field *asked, std::string_view sign) {
    switch (asked->kind) {
      case ValueKind::text:
      case ValueKind::texts:
        return comparison(asked, sign, quoted(asked));
      case ValueKind::number:
        return comparison(asked, sign, number());
      case ValueKind::moment:
        return comparison(asked, sign, moment());
      case ValueKind::truth:
        if (take("true")) return comparison(asked, sign, true);
        if (take("false")) return comparison(asked, sign, false);
        fail("expected \"true\" or \"false\"");
    }
    fail("expected a value");
  }

  int64_t number() {
    const std::string_view word = peek();
    int64_t value = 0;
    const auto [stop, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || stop != word.data() + word.size()) fail("expected a number");
    at_ += word.size();
    return value;
  }

  Moment moment() {
    const std::string_view word = peek();
    std::optional<Seconds> seconds;
    if (word.starts_with("now")) {
      const std::string_view rest = word.substr(3);
      const auto span = rest.empty() ? 0 : duration_of(rest.substr(1));
      if (rest.empty())
        seconds = now_;
      else if (span && rest[0] == '+')
        seconds = now_ + *span;
      else if (span && rest[0] == '-')
        seconds = now_ - *span;
    } else {
      seconds = seconds_of(word);
    }
    if (!seconds) fail("expected a date, such as 2030-01-31, 2030-01-31T12:00:00Z or now+30d");
    at_ += word.size();
    return Moment{*seconds};
  }

  std::string_view text_;
  Seconds now_;
  size_t at_ = 0;
  size_t depth_ = 0;
};

std::variant<Condition, Condition::Mistake> Condition::parse(std::string_view text, Seconds now) {
  try {
    return ConditionReader(text, now).read();
  } catch (Mistake &mistake) {
    return std::move(mistake);
  }
}

}  // namespace tool
