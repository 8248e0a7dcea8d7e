// The universal types as C++ has them. All are views: they own nothing, and live as long as the
// record that they were taken from.
//
// A view may be empty: it then stands for a member that a record does not have. Everything that is
// asked of an empty view is answered with nothing: no value, no octets, an empty view. So no record
// that a decoder made, or that a caller filled in part, makes undefined behaviour.
#ifndef ORVELASN1_CPP_VALUES_H
#define ORVELASN1_CPP_VALUES_H

#include <algorithm>
#include <chrono>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "../orvelpki.h"

namespace orvel {

/// Octets of a record or of an input.
using Octets = std::span<const std::byte>;

/// Octets to read: anything contiguous whose elements are octets, such as a
/// std::vector<std::byte>, a std::vector<uint8_t>, a std::string_view.
class Input {
 public:
  template <class Range>
  requires(!std::same_as<std::remove_cvref_t<Range>, Input>) && requires(const Range &range) {
    std::data(range);
    std::size(range);
    requires sizeof(*std::data(range)) == 1 &&
        std::is_trivially_copyable_v<std::remove_cvref_t<decltype(*std::data(range))>>;
  }
  &&(!std::is_array_v<std::remove_reference_t<Range>> ||
     !std::same_as<std::remove_cvref_t<std::remove_extent_t<std::remove_reference_t<Range>>>, char>)
      Input(const Range &range) noexcept
      : octets_(reinterpret_cast<const std::byte *>(std::data(range)), std::size(range)) {}

  Octets octets() const noexcept { return octets_; }

 private:
  Octets octets_;
};

namespace detail {

inline const uint8_t *raw(const std::byte *octets) noexcept {
  return reinterpret_cast<const uint8_t *>(octets);
}

inline Octets octets_at(const uint8_t *data, std::size_t size) noexcept {
  return data != nullptr ? Octets(reinterpret_cast<const std::byte *>(data), size) : Octets();
}

inline bool are_same(Octets a, Octets b) noexcept {
  return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size()) == 0);
}

/// The digits of octets, two for each.
inline std::string hex(Octets octets) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  text.reserve(2 * octets.size());
  for (const std::byte octet : octets) {
    text += digits[std::to_integer<std::size_t>(octet >> 4)];
    text += digits[std::to_integer<std::size_t>(octet & std::byte{0xF})];
  }
  return text;
}

/// Whether the octets are UTF-8 (RFC 3629).
inline bool is_utf8(std::string_view text) noexcept {
  for (std::size_t i = 0; i < text.size();) {
    const auto octet = [&](std::size_t at) {
      return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
    };
    const unsigned first = octet(i);
    const std::size_t more = first < 0x80                     ? 0
                             : first >= 0xC2 && first <= 0xDF ? 1
                             : first >= 0xE0 && first <= 0xEF ? 2
                             : first >= 0xF0 && first <= 0xF4 ? 3
                                                              : 4;
    if (more == 4) return false;
    for (std::size_t k = 1; k <= more; ++k) {
      if ((octet(i + k) & 0xC0) != 0x80) return false;
    }
    const unsigned second = octet(i + 1);
    if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) ||
        (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F))
      return false;
    i += more + 1;
  }
  return true;
}

struct Free {
  void operator()(char *text) const noexcept { asn1_Name_free(text); }
};

/// A text that C made and this releases. Nothing, where C made none.
inline std::optional<std::string> taken(char *made) {
  const std::unique_ptr<char, Free> text(made);
  if (text == nullptr) return std::nullopt;
  return std::string(text.get());
}

}  // namespace detail

/// The hexadecimal digits of octets, in capitals.
inline std::string hex(Input input) { return detail::hex(input.octets()); }

namespace detail {

template <class T>
constexpr auto seen(T view) noexcept {
  if constexpr (requires { typename T::Seen; })
    return view.seen();
  else
    return view;
}

}  // namespace detail

/// What a program sees of a field or an element of type T: a number, a text, octets, or the T.
template <class T>
using Seen = decltype(detail::seen(std::declval<T>()));

namespace detail {

template <class T, class Pointer>
constexpr Seen<T> see(Pointer *record) noexcept {
  return seen(T(static_cast<const typename T::Record *>(record)));
}

}  // namespace detail

/// A view of a record of C. The record is where c() says, and outlives the view.
template <class R>
class View {
 public:
  using Record = R;

  constexpr View() noexcept = default;
  constexpr explicit View(const R *record) noexcept : record_(record) {}

  /// The record, for the functions of C; or NULL.
  constexpr const R *c() const noexcept { return record_; }

  /// Whether there is a record.
  constexpr explicit operator bool() const noexcept { return record_ != nullptr; }

 protected:
  /// A member of the record, or a zero.
  template <class Member, class Of>
  constexpr Member at(Member Of::*member) const noexcept {
    return record_ != nullptr ? record_->*member : Member{};
  }

  /// A member of the record as a program sees it.
  template <class T, class Member, class Of>
  constexpr orvel::Seen<T> see(Member Of::*member) const noexcept {
    return detail::see<T>(at(member));
  }

  /// The same, where the field is OPTIONAL.
  template <class T, class Member, class Of>
  constexpr std::optional<orvel::Seen<T>> see_optional(Member Of::*member) const noexcept {
    const Member value = at(member);
    if (value == nullptr) return std::nullopt;
    return detail::see<T>(value);
  }

 private:
  const R *record_ = nullptr;
};

/// An INTEGER of any size.
class Number : public View<::Integer> {
 public:
  using View::View;
  using Seen = Number;
  constexpr Number seen() const noexcept { return *this; }

  bool is_negative() const noexcept { return at(&Record::negative) != 0; }

  /// The content: two's complement where the number is negative, else its magnitude.
  Octets octets() const noexcept {
    return detail::octets_at(at(&Record::data), at(&Record::length));
  }

  /// The value, where it is from 0 to 2^64 - 1.
  std::optional<std::uint64_t> value() const noexcept {
    const Octets digits = significant();
    if (!*this || is_negative() || digits.size() > 8) return std::nullopt;
    return join(digits, 0);
  }

  /// The value, where it is from -2^63 to 2^63 - 1.
  std::optional<std::int64_t> signed_value() const noexcept {
    const Octets digits = significant();
    if (!*this || digits.size() > 8) return std::nullopt;
    const auto joined =
        static_cast<std::int64_t>(join(digits, is_negative() ? ~std::uint64_t{0} : 0));
    if ((joined < 0) != is_negative()) return std::nullopt;
    return joined;
  }

  /// The magnitude in hexadecimal digits, two for each octet, after a "-" where the number is
  /// negative: "0A1B", "00", "-01".
  std::string hex() const {
    const Octets digits = significant();
    if (!is_negative()) return digits.empty() ? "00" : detail::hex(digits);
    std::string magnitude(digits.size(), '\0');
    unsigned carry = 1;
    for (std::size_t i = digits.size(); i-- > 0;) {
      carry += 0xFF ^ std::to_integer<unsigned>(digits[i]);
      magnitude[i] = static_cast<char>(carry & 0xFF);
      carry >>= 8;
    }
    if (carry != 0) magnitude.insert(magnitude.begin(), '\1');
    std::string_view shown = magnitude;
    while (shown.size() > 1 && shown.front() == '\0') shown.remove_prefix(1);
    return "-" + orvel::hex(shown);
  }

  /// Numbers have their order, whatever their size. That there is none comes first.
  friend std::strong_ordering operator<=>(Number a, Number b) noexcept {
    if (!a || !b) return bool{a} <=> bool{b};
    if (a.is_negative() != b.is_negative()) return b.is_negative() <=> a.is_negative();
    const Octets left = a.significant(), right = b.significant();
    if (left.size() != right.size()) {
      return a.is_negative() ? right.size() <=> left.size() : left.size() <=> right.size();
    }
    return (left.empty() ? 0 : std::memcmp(left.data(), right.data(), left.size())) <=> 0;
  }
  friend bool operator==(Number a, Number b) noexcept { return std::is_eq(a <=> b); }

  template <std::integral Other>
  friend std::strong_ordering operator<=>(Number a, Other b) noexcept {
    if (!a) return std::strong_ordering::less;
    const auto outside =
        a.is_negative() ? std::strong_ordering::less : std::strong_ordering::greater;
    if constexpr (std::signed_integral<Other>) {
      const auto value = a.signed_value();
      return value ? *value <=> static_cast<std::int64_t>(b) : outside;
    } else {
      const auto value = a.value();
      return value ? *value <=> static_cast<std::uint64_t>(b) : outside;
    }
  }
  template <std::integral Other>
  friend bool operator==(Number a, Other b) noexcept {
    return std::is_eq(a <=> b);
  }

 private:
  /// The content without octets that only repeat the sign.
  Octets significant() const noexcept {
    Octets digits = octets();
    if (is_negative()) {
      while (digits.size() > 1 && digits[0] == std::byte{0xFF} &&
             (digits[1] & std::byte{0x80}) != std::byte{0})
        digits = digits.subspan(1);
    } else {
      while (!digits.empty() && digits[0] == std::byte{0}) digits = digits.subspan(1);
    }
    return digits;
  }

  static std::uint64_t join(Octets digits, std::uint64_t value) noexcept {
    for (const std::byte octet : digits) value = value << 8 | std::to_integer<std::uint64_t>(octet);
    return value;
  }
};

namespace detail {

/// Not constant: a text that ends here does not compile.
void this_is_no_object_identifier();

}  // namespace detail

/// An object identifier that is known when the program is compiled: Oid("2.5.29.17"), or
/// "2.5.29.17"_oid with orvel::literals. A text that is none, by the rules of pki_ObjId_parse(), or
/// that has more than 24 arcs or an arc of more than 32 bits, does not compile.
class Oid {
 public:
  consteval explicit Oid(std::string_view text) {
    while (true) {
      if (count_ == most) detail::this_is_no_object_identifier();
      arcs_[count_++] = take_arc(text);
      if (text.empty()) break;
      if (text.front() != '.') detail::this_is_no_object_identifier();
      text.remove_prefix(1);
    }
    if (count_ < 2 || arcs_[0] > 2 || (arcs_[0] < 2 && arcs_[1] > 39)) {
      detail::this_is_no_object_identifier();
    }
  }

  constexpr std::span<const std::uint32_t> arcs() const noexcept { return {arcs_, count_}; }

 private:
  static constexpr std::size_t most = 24;

  static consteval std::uint32_t take_arc(std::string_view &text) {
    std::uint64_t arc = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && text[digits] >= '0' && text[digits] <= '9'; ++digits) {
      arc = arc * 10 + static_cast<std::uint64_t>(text[digits] - '0');
      if (arc > 0xFFFFFFFF) detail::this_is_no_object_identifier();
    }
    if (digits == 0 || (digits > 1 && text.front() == '0')) detail::this_is_no_object_identifier();
    text.remove_prefix(digits);
    return static_cast<std::uint32_t>(arc);
  }

  std::uint32_t arcs_[most] = {};
  std::uint32_t count_ = 0;
};

inline namespace literals {
consteval Oid operator""_oid(const char *text, std::size_t size) {
  return Oid(std::string_view(text, size));
}
}  // namespace literals

/// An OBJECT IDENTIFIER. Compares with others, with an Oid, and with what the getters of C return:
/// `extension.extnID() == "2.5.29.17"_oid`, `… == asn1_Get_id_ce_subjectAltName()`.
class Identifier : public View<::ObjId> {
 public:
  using View::View;
  using Seen = Identifier;
  constexpr Identifier seen() const noexcept { return *this; }

  /// The arcs. Those of an identifier with an arc above 2^32 - 1 are as pki_x680.h says.
  std::span<const std::uint32_t> arcs() const noexcept {
    const std::uint32_t *const arcs = at(&Record::arcs);
    if (arcs == nullptr) return {};
    return {arcs, at(&Record::count)};
  }

  /// The digits, "2.5.29.17"; "" where it is none. Mind the time that pki_ObjId_text() takes.
  std::string text() const { return detail::taken(pki_ObjId_text(c())).value_or(std::string()); }

  friend bool operator==(Identifier a, Identifier b) noexcept { return same(a.arcs(), b.arcs()); }
  friend bool operator==(Identifier a, const Oid &b) noexcept { return same(a.arcs(), b.arcs()); }
  friend bool operator==(Identifier a, const ::ObjId *b) noexcept { return a == Identifier(b); }

  /// The order of the arcs.
  friend std::strong_ordering operator<=>(Identifier a, Identifier b) noexcept {
    return order(a.arcs(), b.arcs());
  }
  friend std::strong_ordering operator<=>(Identifier a, const Oid &b) noexcept {
    return order(a.arcs(), b.arcs());
  }

 private:
  using Arcs = std::span<const std::uint32_t>;

  static bool same(Arcs a, Arcs b) noexcept {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
  }
  static std::strong_ordering order(Arcs a, Arcs b) noexcept {
    const auto [left, right] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (left == a.end() || right == b.end()) return a.size() <=> b.size();
    return *left <=> *right;
  }
};

/// A BIT STRING, such as a signature or a list of named bits.
class Bits : public View<::BitString> {
 public:
  using View::View;
  using Seen = Bits;
  constexpr Bits seen() const noexcept { return *this; }

  /// The number of bits.
  std::size_t size() const noexcept { return at(&Record::length); }
  bool empty() const noexcept { return size() == 0; }

  /// Whether the bit is there and set. Bit 0 is the highest of the first octet.
  bool operator[](std::size_t bit) const noexcept {
    const Octets all = octets();
    return bit < size() && bit / 8 < all.size() &&
           (all[bit / 8] & (std::byte{0x80} >> static_cast<int>(bit % 8))) != std::byte{0};
  }

  /// The octets that hold the bits; of the last one, those past the end are as they were read.
  Octets octets() const noexcept { return detail::octets_at(at(&Record::data), (size() + 7) / 8); }

  friend bool operator==(Bits a, Bits b) noexcept {
    return bool{a} == bool{b} && a.size() == b.size() && detail::are_same(a.octets(), b.octets());
  }
};

/// A time: a text, and the second that it stands for.
class Instant {
 public:
  constexpr Instant() noexcept = default;

  /// Of a universal tag, 23 for UTCTime or 24 for GeneralizedTime, and a text, or NULL.
  constexpr Instant(std::uint8_t kind, const char *text) noexcept : text_(text), kind_(kind) {}

  constexpr explicit operator bool() const noexcept { return text_ != nullptr; }

  /// The tag: 23 for UTCTime, 24 for GeneralizedTime.
  constexpr std::uint8_t kind() const noexcept { return kind_; }

  /// The characters as they were read, such as "260131120000Z".
  constexpr std::string_view text() const noexcept { return text_ != nullptr ? text_ : ""; }

  /// The time in UTC, as pki_Time_seconds() reads it; nothing, where the text is no time.
  std::optional<std::chrono::sys_seconds> seconds() const noexcept {
    const ::Time record = {kind_, const_cast<char *>(text_)};
    std::int64_t seconds = 0;
    if (text_ == nullptr || pki_Time_seconds(&record, &seconds) == 0) return std::nullopt;
    return std::chrono::sys_seconds(std::chrono::seconds(seconds));
  }

  /// Times are alike where they are the same second, whatever their texts. A text that is no time
  /// is like the same text only, and comes neither before nor after another.
  friend std::partial_ordering operator<=>(Instant a, Instant b) noexcept {
    const auto left = a.seconds(), right = b.seconds();
    if (left && right)
      return left->time_since_epoch().count() <=> right->time_since_epoch().count();
    return !left && !right && bool{a} == bool{b} && a.text() == b.text()
               ? std::partial_ordering::equivalent
               : std::partial_ordering::unordered;
  }
  friend bool operator==(Instant a, Instant b) noexcept { return std::is_eq(a <=> b); }

  friend std::partial_ordering operator<=>(Instant a, std::chrono::sys_seconds b) noexcept {
    const auto left = a.seconds();
    if (!left) return std::partial_ordering::unordered;
    return left->time_since_epoch().count() <=> b.time_since_epoch().count();
  }
  friend bool operator==(Instant a, std::chrono::sys_seconds b) noexcept {
    return std::is_eq(a <=> b);
  }

 private:
  const char *text_ = nullptr;
  std::uint8_t kind_ = 0;
};

/// A string in characters, in those that its type has; fields of it are std::string_view. The
/// characters are not checked.
class Text : public View<::ASN1String> {
 public:
  using View::View;
  using Seen = std::string_view;
  Seen seen() const noexcept { return text(); }

  std::string_view text() const noexcept {
    const char *const data = reinterpret_cast<const char *>(at(&Record::data));
    return data != nullptr ? std::string_view(data, at(&Record::length)) : std::string_view();
  }
  friend bool operator==(Text a, Text b) noexcept {
    return bool{a} == bool{b} && a.text() == b.text();
  }
};

/// An OCTET STRING; fields of it are Octets.
class OctetText : public View<::ASN1String> {
 public:
  using View::View;
  using Seen = Octets;
  Seen seen() const noexcept { return octets(); }

  Octets octets() const noexcept {
    return detail::octets_at(at(&Record::data), at(&Record::length));
  }
  friend bool operator==(OctetText a, OctetText b) noexcept {
    return bool{a} == bool{b} && detail::are_same(a.octets(), b.octets());
  }
};

/// One whole element of any type; fields of it are Octets, for decode<T>() to read.
class Element : public OctetText {
 public:
  using OctetText::OctetText;
};

/// A NULL, which has no value.
class Null : public View<void> {
 public:
  constexpr Null() noexcept = default;
  constexpr explicit Null(const void *) noexcept {}
  using Seen = Null;
  constexpr Null seen() const noexcept { return {}; }
  friend constexpr bool operator==(Null, Null) noexcept { return true; }
};

/// A CHOICE of the two times; fields of it are Instant.
class TimeChoice : public View<::Time> {
 public:
  using View::View;
  using Seen = Instant;
  Seen seen() const noexcept { return instant(); }
  Instant instant() const noexcept { return {at(&Record::kind), at(&Record::value)}; }
  friend bool operator==(TimeChoice a, TimeChoice b) noexcept { return a.instant() == b.instant(); }
};

/// A text of C that is a time of one kind; fields of it are Instant.
template <std::uint8_t kind>
class TimeText : public View<char> {
 public:
  using View::View;
  using Seen = Instant;
  constexpr Seen seen() const noexcept { return instant(); }
  constexpr Instant instant() const noexcept { return {kind, c()}; }
  friend bool operator==(TimeText a, TimeText b) noexcept { return a.instant() == b.instant(); }
};

/// A text of C; fields of it are std::string_view.
class Characters : public View<char> {
 public:
  using View::View;
  using Seen = std::string_view;
  Seen seen() const noexcept { return text(); }
  std::string_view text() const noexcept { return c() != nullptr ? c() : ""; }
  friend bool operator==(Characters a, Characters b) noexcept {
    return bool{a} == bool{b} && a.text() == b.text();
  }
};

}  // namespace orvel

#endif
