// What may fail returns a Result: a value, or the fault that is in its place.
#ifndef ORVELASN1_CPP_RESULT_H
#define ORVELASN1_CPP_RESULT_H

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "../orvelpki.h"

namespace orvel {

/// What is wrong with an input, or with a record that is to be written: where, in which field, and
/// what was expected there.
class Fault {
 public:
  constexpr explicit Fault(const pki_Fault &fault) noexcept : fault_(fault) {}

  /// Makes a fault of the whole value. A sentence of more than 255 octets is cut.
  static Fault of(std::string_view sentence, std::size_t offset = 0) noexcept {
    pki_Fault made{};
    made.offset = static_cast<uint32_t>(offset);
    sentence.substr(0, sizeof made.sentence - 1).copy(made.sentence, sizeof made.sentence - 1);
    return Fault(made);
  }

  /// Octets from the start of the input to where it goes wrong; 0 where nothing was decoded.
  std::size_t offset() const noexcept { return fault_.offset; }

  /// The field, as in "tbsCertificate.extensions[3].extnValue"; "" for the value itself.
  std::string_view path() const noexcept { return fault_.path; }

  /// What was expected and what was found, without a full stop.
  std::string_view sentence() const noexcept { return fault_.sentence; }

  /// All three, as in "offset 13, tbsCertificate.serialNumber: expected INTEGER (02), found
  /// SEQUENCE (30)".
  std::string text() const {
    std::string all = "offset " + std::to_string(fault_.offset);
    if (fault_.path[0] != '\0') all.append(", ").append(fault_.path);
    return all.append(": ").append(fault_.sentence);
  }

  friend std::ostream &operator<<(std::ostream &out, const Fault &fault) {
    return out << fault.text();
  }

 private:
  pki_Fault fault_;
};

/// Thrown by Result::value(), and by nothing else here.
class FaultError : public std::runtime_error {
 public:
  explicit FaultError(const Fault &fault) : std::runtime_error(fault.text()), fault_(fault) {}
  const Fault &fault() const noexcept { return fault_; }

 private:
  Fault fault_;
};

/// A value, or a fault in its place; in the shape of std::expected<T, Fault>.
///
/// A record must not be looked at through a Result that is about to go: there, `->` does not
/// compile.
template <class T>
class [[nodiscard]] Result {
 public:
  using value_type = T;
  using error_type = Fault;
  static constexpr bool owns_a_record = requires(const T &value) { value.operator->(); };

  constexpr Result(T value) noexcept : value_(std::move(value)), has_value_(true) {}
  constexpr Result(const Fault &fault) noexcept : fault_(fault), has_value_(false) {}

  Result(Result &&other) noexcept : has_value_(other.has_value_) {
    if (has_value_)
      new (&value_) T(std::move(other.value_));
    else
      new (&fault_) Fault(other.fault_);
  }
  Result &operator=(Result &&other) noexcept {
    if (this != &other) {
      this->~Result();
      new (this) Result(std::move(other));
    }
    return *this;
  }
  ~Result() {
    if (has_value_) value_.~T();
  }

  constexpr bool has_value() const noexcept { return has_value_; }
  constexpr explicit operator bool() const noexcept { return has_value_; }

  /// The value, which must be there.
  T &operator*() &noexcept { return value_; }
  const T &operator*() const &noexcept { return value_; }
  T &&operator*() &&noexcept { return std::move(value_); }

  /// A member of the value, which must be there; of the record, where the value owns one.
  auto operator->() const &noexcept {
    if constexpr (owns_a_record)
      return value_.operator->();
    else
      return &value_;
  }
  T *operator->() &noexcept requires(!owns_a_record) { return &value_; }
  const T *operator->() const &&noexcept requires(!owns_a_record) { return &value_; }
  void operator->() const &&requires owns_a_record =
      delete;  // the record would be gone: give the Result a name

  /// The value. Throws FaultError where there is none; without exceptions, ends the process.
  T &value() & { return check(), value_; }
  const T &value() const & { return check(), value_; }
  T value() && { return check(), std::move(value_); }

  /// The value, or `otherwise`.
  template <class Other>
  T value_or(Other &&otherwise) && {
    return has_value_ ? std::move(value_) : static_cast<T>(std::forward<Other>(otherwise));
  }

  /// The fault, which must be there.
  const Fault &error() const &noexcept { return fault_; }
  Fault error() &&noexcept { return fault_; }

  /// What `next`, which returns a Result, makes of the value; or the fault.
  template <class Next>
  auto and_then(Next &&next) && -> std::invoke_result_t<Next, T> {
    if (has_value_) return std::forward<Next>(next)(std::move(value_));
    return fault_;
  }

  /// What `change` makes of the value, or the fault.
  template <class Change>
  auto transform(Change &&change) && -> Result<std::invoke_result_t<Change, T>> {
    if (has_value_) return std::forward<Change>(change)(std::move(value_));
    return fault_;
  }

 private:
  void check() const {
    if (has_value_) return;
#ifdef __cpp_exceptions
    throw FaultError(fault_);
#else
    std::fprintf(stderr, "%s\n", fault_.sentence().data());
    std::abort();
#endif
  }

  union {
    T value_;
    Fault fault_;
  };
  bool has_value_;
};

}  // namespace orvel

#endif
