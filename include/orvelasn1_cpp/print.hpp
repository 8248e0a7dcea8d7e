// Values and records as a person reads them, by << and, where the standard library has it, by
// std::format.
#ifndef ORVELASN1_CPP_PRINT_H
#define ORVELASN1_CPP_PRINT_H

#include <cstdio>
#include <ostream>
#include <sstream>
#if __has_include(<format>)
#include <format>
#endif

#include "records.hpp"

namespace orvel {

namespace detail {

/// Appends a text of a stranger as a terminal may show it. `special` are characters that a
/// backslash goes in front of.
inline void append_visible(std::string &all, std::string_view text, std::string_view special) {
  const bool is_utf8 = detail::is_utf8(text);
  const auto octet = [&](std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
  };
  for (std::size_t i = 0; i < text.size();) {
    const unsigned first = octet(i), second = octet(i + 1), third = octet(i + 2);
    const std::size_t size = !is_utf8 || first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    // U+0000 to U+001F, U+007F to U+009F, U+200E, U+200F, U+2028 to U+202E, U+2066 to U+2069.
    const bool is_control = first < ' ' || first == 0x7F || (first == 0xC2 && second < 0xA0) ||
                            (first == 0xE2 && second == 0x80 && (third & ~1U) == 0x8E) ||
                            (first == 0xE2 && second == 0x80 && third >= 0xA8 && third <= 0xAE) ||
                            (first == 0xE2 && second == 0x81 && third >= 0xA6 && third <= 0xA9);
    if (is_control || (!is_utf8 && first > 0x7F)) {
      for (std::size_t k = 0; k < size; ++k)
        all.append("\\x").append(orvel::hex(text.substr(i + k, 1)));
    } else {
      if (special.find(text[i]) != std::string_view::npos) all += '\\';
      all.append(text.substr(i, size));
    }
    i += size;
  }
}

}  // namespace detail

/// A text of a stranger between quotation marks, as a terminal may show it. Escaped are controls,
/// also those that change the direction of writing, quotation marks and backslashes; and all octets
/// above 0x7F where the text is not UTF-8.
inline std::string quoted(std::string_view text) {
  std::string all = "\"";
  detail::append_visible(all, text, "\"\\");
  return all + '"';
}

/// Decimal digits where 64 bits hold the number, else hexadecimal ones after "0x".
inline std::ostream &operator<<(std::ostream &out, Number number) {
  if (!number) return out << "none";
  if (const auto value = number.value()) return out << *value;
  if (const auto value = number.signed_value()) return out << *value;
  return out << (number.is_negative() ? "-0x" : "0x")
             << number.hex().substr(number.is_negative() ? 1 : 0);
}

inline std::ostream &operator<<(std::ostream &out, Identifier identifier) {
  return identifier ? out << identifier.text() : out << "none";
}
inline std::ostream &operator<<(std::ostream &out, const Oid &oid) {
  const char *dot = "";
  for (const std::uint32_t arc : oid.arcs()) {
    out << dot << arc;
    dot = ".";
  }
  return out;
}

/// "2026-01-31 12:00:00 UTC"; the text, where it is no time.
inline std::ostream &operator<<(std::ostream &out, Instant instant) {
  using namespace std::chrono;
  const auto time = instant.seconds();
  if (!time) return instant ? out << quoted(instant.text()) : out << "none";
  const year_month_day date(floor<days>(*time));
  const hh_mm_ss<seconds> clock(*time - floor<days>(*time));
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d UTC", int{date.year()},
                unsigned{date.month()}, unsigned{date.day()},
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return out << text;
}

/// The octets, and the number of bits where it is not theirs.
inline std::ostream &operator<<(std::ostream &out, Bits bits) {
  if (!bits) return out << "none";
  out << hex(bits.octets());
  return bits.size() % 8 == 0 ? out : out << " (" << bits.size() << " bits)";
}

inline std::ostream &operator<<(std::ostream &out, Null) { return out << "NULL"; }

/// Strings and times that are values by themselves, as they are shown in a record.
inline std::ostream &operator<<(std::ostream &out, Text text) {
  return out << (text ? quoted(text.text()) : "none");
}
inline std::ostream &operator<<(std::ostream &out, OctetText octets) {
  return out << (octets ? hex(octets.octets()) : "none");
}
inline std::ostream &operator<<(std::ostream &out, Characters text) {
  return out << (text ? quoted(text.text()) : "none");
}
inline std::ostream &operator<<(std::ostream &out, TimeChoice time) {
  return out << time.instant();
}
template <std::uint8_t kind>
std::ostream &operator<<(std::ostream &out, TimeText<kind> time) {
  return out << time.instant();
}

namespace detail {

template <class V>
void print(std::ostream &out, const V &value) {
  if constexpr (std::same_as<V, bool>)
    out << (value ? "true" : "false");
  else if constexpr (std::integral<V>)
    out << +value;
  else if constexpr (std::same_as<V, std::string_view>)
    out << quoted(value);
  else if constexpr (std::same_as<V, Octets>)
    out << hex(value);
  else
    out << value;
}

template <class T, class... F>
void print_fields(std::ostream &out, const T &record, FieldList<F...>) {
  const char *comma = "";
  const auto print_one = [&](std::string_view name, const auto &value) {
    if constexpr (requires { value.has_value(); }) {
      if (!value) return;
      out << comma << name << ": ";
      print(out, *value);
    } else {
      if constexpr (std::derived_from<std::remove_cvref_t<decltype(value)>, ListBase>) {
        if (!value) return;
      }
      out << comma << name << ": ";
      print(out, value);
    }
    comma = ", ";
  };
  out << "{";
  (print_one(F::name, (record.*F::accessor)()), ...);
  out << "}";
}

}  // namespace detail

/// A record: the fields that are there, with their names.
template <HasFields T>
std::ostream &operator<<(std::ostream &out, const T &record) {
  if (!record) return out << "none";
  detail::print_fields(out, record, typename T::Fields());
  return out;
}

/// A CHOICE: the name of the alternative and its value.
template <class T>
requires requires { typename T::Alternatives; }
std::ostream &operator<<(std::ostream &out, const T &choice) {
  if (!choice) return out << "none";
  choice.visit(Overloaded{[&](Unknown unknown) { out << "unknown " << +unknown.kind; },
                          [&](const auto &alternative) {
                            out << std::remove_cvref_t<decltype(alternative)>::name << " ";
                            detail::print(out, *alternative);
                          }});
  return out;
}

/// A list: its elements between brackets; a name: its text of RFC 4514.
template <class L>
requires std::derived_from<L, ListBase> std::ostream &operator<<(std::ostream &out, const L &list) {
  if (!list) return out << "none";
  if constexpr (requires { list.rfc4514(); }) {
    if (const auto text = list.rfc4514()) {
      std::string visible;
      detail::append_visible(visible, *text, "");
      return out << visible;
    }
  }
  const char *comma = "";
  out << "[";
  for (const auto element : list) {
    out << comma;
    detail::print(out, element);
    comma = ", ";
  }
  return out << "]";
}

/// An object of a card: its identifier in hexadecimal digits, and what it holds.
template <class T>
requires std::derived_from<T, CardObject> std::ostream &operator<<(std::ostream &out,
                                                                   const T &object) {
  if (!object) return out << "none";
  char id[2 + 2 * sizeof(unsigned long) + 1];
  std::snprintf(id, sizeof id, "0x%02lX", object.id());
  out << id << " ";
  if (object.c()->children == nullptr) return out << hex(object.value());
  if constexpr (requires { object.children(); })
    return out << object.children();
  else
    return object.holds_attributes() ? out << object.attributes() : out << object.sets();
}

template <class T>
std::ostream &operator<<(std::ostream &out, const Owned<T> &owned) {
  return out << *owned;
}

namespace detail {

template <class T>
concept Printable = (std::same_as<T, Fault> || std::same_as<T, Oid> || std::same_as<T, Instant> ||
                     requires { typename T::Record; }) &&
                    requires(std::ostream &out, const T &value) {
  out << value;
};

}  // namespace detail

/// What << writes.
template <detail::Printable T>
std::string to_string(const T &value) {
  std::ostringstream out;
  out << value;
  return std::move(out).str();
}

}  // namespace orvel

#ifdef __cpp_lib_format
/// Formats as a text, with the width and alignment of one. The library formats ranges itself, from
/// C++23 on: a list goes through to_string().
template <orvel::detail::Printable T>
requires(!std::ranges::range<T>) struct std::formatter<T, char>
    : std::formatter<std::string_view, char> {
  template <class Context>
  auto format(const T &value, Context &context) const {
    return std::formatter<std::string_view, char>::format(orvel::to_string(value), context);
  }
};
#endif

#endif
