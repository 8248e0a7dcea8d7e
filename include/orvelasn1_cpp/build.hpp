// Making records out of C++ values. Everything is copied or moved into the record: what it holds is
// its own, under the tag that its type says. What a field cannot hold is a fault, or does not compile.
#ifndef ORVELASN1_CPP_BUILD_H
#define ORVELASN1_CPP_BUILD_H

#include <bit>
#include <initializer_list>
#include <tuple>

#include "types.hpp"

namespace orvel {

/// An INTEGER that is not negative, as octets, the most significant first: a serial number.
struct Magnitude {
  Octets octets;
  explicit Magnitude(Input input) noexcept : octets(input.octets()) {}
};

/// A BIT STRING of named bits: NamedBits{5, 6} for keyCertSign and cRLSign.
class NamedBits {
 public:
  /// Of the numbers of bits below 64.
  constexpr NamedBits(std::initializer_list<unsigned> bits) noexcept {
    for (const unsigned bit : bits) set_ |= bit < 64 ? std::uint64_t{1} << (63 - bit) : 0;
  }

  /// The number of bits, without zeros at the end (X.690, 11.2.2).
  constexpr unsigned size() const noexcept {
    return 64 - static_cast<unsigned>(std::countr_zero(set_));
  }
  constexpr std::byte octet(unsigned index) const noexcept {
    return static_cast<std::byte>(set_ >> (56 - 8 * index) & 0xFF);
  }

 private:
  std::uint64_t set_ = 0;  // the first bit is the highest
};

/// The named bits of KeyUsage (RFC 5280, 4.2.1.3).
namespace key_usage {
inline constexpr unsigned digitalSignature = 0;
inline constexpr unsigned nonRepudiation = 1;
inline constexpr unsigned keyEncipherment = 2;
inline constexpr unsigned dataEncipherment = 3;
inline constexpr unsigned keyAgreement = 4;
inline constexpr unsigned keyCertSign = 5;
inline constexpr unsigned cRLSign = 6;
inline constexpr unsigned encipherOnly = 7;
inline constexpr unsigned decipherOnly = 8;
}  // namespace key_usage

template <class T>
class Builder;

namespace detail {

inline const Fault &no_memory() noexcept {
  static const Fault fault = Fault::of("memory is exhausted");
  return fault;
}

// ---------------------------------------------------------------------------------------------
// What is released and copied, also where a type has no functions
// ---------------------------------------------------------------------------------------------

template <class T>
void release(typename T::Record *record) noexcept {
  if constexpr (Type<T>) {
    T::calls.release(record);
  } else if constexpr (std::derived_from<T, ListBase>) {
    constexpr void (*release_element)(typename T::Element::Record *) = release<typename T::Element>;
    List_free(record, release_element);
  } else {
    static_assert(std::same_as<typename T::Record, ::ASN1String>);
    asn1_ASN1String_free(record);
  }
}

/// A record that is released unless it is handed on.
template <class T>
struct Release {
  void operator()(typename T::Record *record) const noexcept { detail::release<T>(record); }
};
template <class T>
using Made = std::unique_ptr<typename T::Record, Release<T>>;

template <class T>
Made<T> copy(const T &view) noexcept {
  if (!view) return nullptr;
  if constexpr (Type<T>) {
    static_assert(T::calls.clone != nullptr,
                  "the library does not copy this type: std::move() the record");
    return Made<T>(T::calls.clone(view.c()));
  } else if constexpr (std::derived_from<T, ListBase>) {
    Made<T> list(List_new(0));
    for (std::size_t i = 0; list != nullptr && i < view.size(); ++i) {
      using E = typename T::Element;
      const auto *const element =
          static_cast<const typename E::Record *>(List_get(view.c(), static_cast<std::int32_t>(i)));
      Made<E> made = copy(E(element));
      if (made == nullptr || List_append(list.get(), made.get(), 0) == 0) return nullptr;
      static_cast<void>(made.release());
    }
    return list;
  } else {
    return Made<T>(asn1_ASN1String_clone(view.c()));
  }
}

// ---------------------------------------------------------------------------------------------
// Which values a type takes
// ---------------------------------------------------------------------------------------------

template <class V, template <class> class Of>
inline constexpr bool is_a = false;
template <class T, template <class> class Of>
inline constexpr bool is_a<Of<T>, Of> = true;

/// What owns, makes or shows a record of the type itself.
template <class T, class V>
concept Itself = std::same_as<V, T> || std::same_as<V, Owned<T>> || std::same_as<V, Builder<T>> ||
    std::same_as<V, Result<Owned<T>>>;

/// What has an encoding of its own.
template <class V>
concept Encodable = Type<V> || is_a<V, Owned> || is_a<V, Builder> ||
    (is_a<V, Result> &&requires { requires is_a<typename V::value_type, Owned>; });

template <class V>
concept LikeCharacters = std::convertible_to<const V &, std::string_view>;

/// Octets that are not meant as characters.
template <class V>
concept LikeOctets = std::convertible_to<const V &, Input> && !LikeCharacters<V>;

template <class V>
concept WholeNumber = std::integral<V> && !std::same_as<V, bool> && !std::same_as<V, char> &&
                      !std::same_as<V, wchar_t> && !std::same_as<V, char8_t>;

template <class T, class V>
consteval bool takes() {
  if constexpr (std::same_as<T, bool>)
    return std::same_as<V, bool>;
  else if constexpr (std::integral<T>)
    return WholeNumber<V>;
  else if constexpr (Itself<T, V>)
    return true;
  else if constexpr (std::derived_from<T, Number>)
    return WholeNumber<V> || std::same_as<V, Magnitude> || std::derived_from<V, Number>;
  else if constexpr (std::derived_from<T, Identifier>)
    return std::same_as<V, Oid> || std::derived_from<V, Identifier> || LikeCharacters<V> ||
           std::same_as<V, const ::ObjId *> || std::same_as<V, ::ObjId *>;
  else if constexpr (std::derived_from<T, Bits>)
    return LikeOctets<V> || std::same_as<V, NamedBits> || std::derived_from<V, Bits>;
  else if constexpr (std::derived_from<T, Text>)
    return LikeCharacters<V>;
  else if constexpr (std::derived_from<T, Element>)
    return LikeOctets<V> || Encodable<V>;
  else if constexpr (std::derived_from<T, OctetText>)
    return LikeOctets<V> || Encodable<V>;
  else if constexpr (requires(T time) {
                       { time.seen() } -> std::same_as<Instant>;
                     })
    return std::convertible_to<V, std::chrono::sys_seconds> || std::same_as<V, Instant>;
  else if constexpr (std::derived_from<T, ListBase> && requires(T name) { name.rfc4514(); })
    return LikeCharacters<V>;
  else
    return false;
}

// ---------------------------------------------------------------------------------------------
// Making the universal types
// ---------------------------------------------------------------------------------------------

inline ::Integer *integer_of(Octets digits, bool is_negative) noexcept {
  while (!is_negative && !digits.empty() && digits[0] == std::byte{0}) digits = digits.subspan(1);
  ::Integer *const made = asn1_Integer_new(static_cast<std::uint32_t>(digits.size()));
  if (made == nullptr) return nullptr;
  if (!digits.empty()) std::memcpy(made->data, digits.data(), digits.size());
  made->negative = is_negative ? 1 : 0;
  return made;
}

template <class V>
::Integer *integer_of(V value) noexcept {
  const bool is_negative = value < 0;
  const auto bits = static_cast<std::uint64_t>(value);
  std::byte digits[8];
  for (unsigned i = 0; i < 8; ++i) digits[i] = static_cast<std::byte>(bits >> (56 - 8 * i) & 0xFF);
  std::size_t first = 0;
  if (is_negative) {
    while (first < 7 && digits[first] == std::byte{0xFF} &&
           (digits[first + 1] & std::byte{0x80}) != std::byte{0})
      ++first;
  }
  return integer_of(Octets(digits).subspan(first), is_negative);
}

inline ::ObjId *object_identifier_of(std::span<const std::uint32_t> arcs) noexcept {
  ::ObjId *const made = asn1_ObjId_new(static_cast<std::uint32_t>(arcs.size()));
  if (made != nullptr) std::copy(arcs.begin(), arcs.end(), made->arcs);
  return made;
}

inline ::ASN1String *string_of(Octets octets) noexcept {
  // With NULL for the octets: an empty text is not looked for at an address.
  ::ASN1String *const made =
      asn1_ASN1String_new(static_cast<std::uint32_t>(octets.size()), nullptr);
  if (made != nullptr && !octets.empty()) std::memcpy(made->data, octets.data(), octets.size());
  return made;
}

inline ::BitString *bits_of(Octets octets, std::size_t size) noexcept {
  ::BitString *const made = asn1_BitString_new(static_cast<std::uint32_t>(size));
  if (made != nullptr && size != 0) std::memcpy(made->data, octets.data(), (size + 7) / 8);
  return made;
}

/// Whether a string type has a character (X.680, 41); of UTF8String and the types of no set of
/// characters, every octet.
template <class T>
constexpr bool has_character(unsigned char c) noexcept {
  if constexpr (std::derived_from<T, asn1::NumericString>)
    return (c >= '0' && c <= '9') || c == ' ';
  else if constexpr (std::derived_from<T, asn1::PrintableString>)
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           (c != '\0' &&
            std::string_view(" '()+,-./:=?").find(static_cast<char>(c)) != std::string_view::npos);
  else if constexpr (std::derived_from<T, asn1::VisibleString>)
    return c >= ' ' && c < 0x7F;
  else if constexpr (std::derived_from<T, asn1::IA5String> || std::same_as<T, pki::CPSuri>)
    return c < 0x80;
  else
    return true;
}

/// Writes a time: "260131120000Z", with a year of four digits where the type has one. Returns
/// whether the year fits.
inline bool write_time(char *text, std::chrono::sys_seconds time, bool four_digits) noexcept {
  using namespace std::chrono;
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss<seconds> clock(time - day);
  const int year = int{date.year()};
  if (four_digits ? year < 0 || year > 9999 : year < 1950 || year > 2049) return false;
  const auto write_two = [&](auto number) {
    *text++ = static_cast<char>('0' + static_cast<int>(number) / 10 % 10);
    *text++ = static_cast<char>('0' + static_cast<int>(number) % 10);
  };
  if (four_digits) write_two(year / 100);
  write_two(year % 100);
  write_two(unsigned{date.month()});
  write_two(unsigned{date.day()});
  write_two(clock.hours().count());
  write_two(clock.minutes().count());
  write_two(clock.seconds().count());
  *text++ = 'Z';
  *text = '\0';
  return true;
}

inline char *time_text(std::uint8_t kind, std::chrono::sys_seconds time,
                       std::optional<Fault> &fault) noexcept {
  char *const made = kind == 24 ? asn1_GeneralizedTime_new() : asn1_UTCTime_new();
  if (made == nullptr) {
    fault = no_memory();
  } else if (!write_time(made, time, kind == 24)) {
    asn1_UTCTime_free(made);
    fault = Fault::of("the type has no such year");
    return nullptr;
  }
  return made;
}

/// The octets of what has an encoding, or a fault.
template <class V>
Result<std::vector<std::byte>> encoded(V &&value) {
  using Plain = std::remove_cvref_t<V>;
  if constexpr (is_a<Plain, Result>) {
    if (!value) return value.error();
    return encode(*value);
  } else if constexpr (is_a<Plain, Builder>) {
    return std::move(value).build().and_then([](auto built) { return encode(built); });
  } else {
    return encode(value);
  }
}

// ---------------------------------------------------------------------------------------------
// Making any type
// ---------------------------------------------------------------------------------------------

template <class T, class... V>
Made<T> made(std::optional<Fault> &fault, V &&...values);

/// A record of the type itself, moved where it may be, else copied.
template <class T, class V>
Made<T> made_whole(std::optional<Fault> &fault, V &&value) {
  using Plain = std::remove_cvref_t<V>;
  if constexpr (std::same_as<Plain, Result<Owned<T>>>) {
    if (!value) {
      fault = value.error();
      return nullptr;
    }
    return made_whole<T>(fault, *std::forward<V>(value));
  } else if constexpr (std::same_as<Plain, Builder<T>>) {
    static_assert(!std::is_lvalue_reference_v<V>, "a builder is used up: std::move() it");
    return made_whole<T>(fault, std::move(value).build());
  } else if constexpr (std::same_as<V, Owned<T>>) {
    if (!value) fault = Fault::of("there is no record");
    return Made<T>(value.release());
  } else {
    Made<T> record = copy<T>(value);
    if (record == nullptr) fault = value ? no_memory() : Fault::of("there is no record");
    return record;
  }
}

/// Makes a value of a universal type.
template <class T, class V>
Made<T> made_of(std::optional<Fault> &fault, V &&value) {
  using Plain = std::remove_cvref_t<V>;
  const auto or_fault = [&](typename T::Record *record) {
    if (record == nullptr && !fault) fault = no_memory();
    return Made<T>(record);
  };
  if constexpr (std::derived_from<T, Number>) {
    if constexpr (std::derived_from<Plain, Number>)
      return or_fault(asn1_Integer_clone(value.c()));
    else if constexpr (std::same_as<Plain, Magnitude>)
      return or_fault(integer_of(value.octets, false));
    else
      return or_fault(integer_of(value));
  } else if constexpr (std::derived_from<T, Identifier>) {
    if constexpr (std::same_as<Plain, Oid>) {
      return or_fault(object_identifier_of(value.arcs()));
    } else if constexpr (LikeCharacters<Plain>) {
      const std::string text(value);
      ::ObjId *const parsed =
          text.find('\0') == std::string::npos ? pki_ObjId_parse(text.c_str()) : nullptr;
      if (parsed == nullptr)
        fault = Fault::of("the text is no object identifier, or memory is exhausted");
      return Made<T>(parsed);
    } else {
      return or_fault(asn1_ObjId_clone(Identifier(value).c()));
    }
  } else if constexpr (std::derived_from<T, Bits>) {
    if constexpr (std::derived_from<Plain, Bits>) {
      return or_fault(asn1_BitString_clone(value.c()));
    } else if constexpr (std::same_as<Plain, NamedBits>) {
      std::byte octets[8];
      for (unsigned i = 0; i < 8; ++i) octets[i] = value.octet(i);
      return or_fault(bits_of(octets, value.size()));
    } else {
      const Octets octets = Input(value).octets();
      return or_fault(bits_of(octets, octets.size() * 8));
    }
  } else if constexpr (std::derived_from<T, Text>) {
    const std::string_view text(value);
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (!has_character<T>(static_cast<unsigned char>(text[i]))) {
        fault = Fault::of("the type does not have the character of octet " + std::to_string(i));
        return nullptr;
      }
    }
    if (std::derived_from<T, asn1::UTF8String> && !is_utf8(text)) {
      fault = Fault::of("the octets are not UTF-8");
      return nullptr;
    }
    return or_fault(string_of(Input(text).octets()));
  } else if constexpr (std::derived_from<T, OctetText> && Encodable<Plain>) {
    const auto octets = encoded(std::forward<V>(value));
    if (!octets) {
      fault = octets.error();
      return nullptr;
    }
    return or_fault(string_of(*octets));
  } else if constexpr (std::derived_from<T, OctetText>) {
    const Octets octets = Input(value).octets();
    if constexpr (std::derived_from<T, Element>) {
      pki_Octets rest = {raw(octets.data()), static_cast<std::uint32_t>(octets.size())}, element{};
      if (pki_view_next(&rest, &element) != 1 || rest.length != 0) {
        fault = Fault::of("the octets are not one whole element");
        return nullptr;
      }
    }
    return or_fault(string_of(octets));
  } else if constexpr (std::derived_from<T, TimeChoice>) {
    Made<T> time = or_fault(asn1_Time_new());
    if (time == nullptr) return nullptr;
    if constexpr (std::same_as<Plain, Instant>) {
      const ::Time from = {value.kind(), const_cast<char *>(value.text().data())};
      return or_fault(value ? asn1_Time_clone(&from) : nullptr);
    } else {
      // Up to 2049 as UTCTime, from 2050 on as GeneralizedTime (RFC 5280, 4.1.2.5).
      const std::chrono::sys_seconds seconds(value);
      const std::chrono::year_month_day date(std::chrono::floor<std::chrono::days>(seconds));
      const int year = int{date.year()};
      const std::uint8_t kind = year >= 1950 && year < 2050 ? 23 : 24;
      time->value = time_text(kind, seconds, fault);
      if (time->value == nullptr) return nullptr;
      time->kind = kind;
      return time;
    }
  } else if constexpr (requires(T time) {
                         { time.seen() } -> std::same_as<Instant>;
                       }) {
    constexpr std::uint8_t kind = T(nullptr).instant().kind();
    if constexpr (std::same_as<Plain, Instant>) {
      const auto seconds = value.seconds();
      if (!seconds) {
        fault = Fault::of("the text is no time");
        return nullptr;
      }
      return or_fault(time_text(kind, *seconds, fault));
    } else {
      return or_fault(time_text(kind, std::chrono::sys_seconds(value), fault));
    }
  } else {
    // A name, as RFC 4514 writes it.
    const std::string text(value);
    ::RDNSequence *const name =
        text.find('\0') == std::string::npos ? pki_name_parse_rfc4514(text.c_str()) : nullptr;
    if (name == nullptr)
      fault = Fault::of("the text is no name of RFC 4514, or memory is exhausted");
    return Made<T>(name);
  }
}

template <class T, class V>
bool append(::List *list, std::optional<Fault> &fault, V &&value) {
  using E = typename T::Element;
  Made<E> element = made<E>(fault, std::forward<V>(value));
  if (element == nullptr) return false;
  if (List_append(list, element.get(), 0) == 0) {
    fault = no_memory();
    return false;
  }
  static_cast<void>(element.release());
  return true;
}

/// Makes a list of the values, or of the elements of one range of values.
template <class T, class... V>
Made<T> made_list(std::optional<Fault> &fault, V &&...values) {
  using E = typename T::Element;
  Made<T> list(List_new(0));
  if (list == nullptr) {
    fault = no_memory();
    return list;
  }
  [[maybe_unused]] const auto append_one = [&]<class One>(One &&one) {
    if constexpr (takes<E, std::remove_cvref_t<One>>() || !std::ranges::range<One>) {
      return append<T>(list.get(), fault, std::forward<One>(one));
    } else {
      for (auto &&element : one) {
        if (std::is_lvalue_reference_v<One> ? !append<T>(list.get(), fault, std::as_const(element))
                                            : !append<T>(list.get(), fault, std::move(element)))
          return false;
      }
      return true;
    }
  };
  if (!(append_one(std::forward<V>(values)) && ...)) return nullptr;
  return list;
}

template <class T, class... V>
Made<T> made(std::optional<Fault> &fault, V &&...values) {
  if constexpr (sizeof...(V) == 1 && (takes<T, std::remove_cvref_t<V>>() && ...)) {
    if constexpr ((Itself<T, std::remove_cvref_t<V>> && ...))
      return made_whole<T>(fault, std::forward<V>(values)...);
    else
      return made_of<T>(fault, std::forward<V>(values)...);
  } else if constexpr (std::derived_from<T, ListBase>) {
    return made_list<T>(fault, std::forward<V>(values)...);
  } else {
    static_assert(sizeof(T) == 0, "the type takes no such value");
    return nullptr;
  }
}

template <auto accessor, class... F>
consteval auto field_of(FieldList<F...>) {
  constexpr bool is_there = (F::is(accessor) || ...);
  static_assert(is_there,
                "this is no field of the record; what is signed is built by itself, and set whole");
  return []<std::size_t... i>(std::index_sequence<i...>) {
    constexpr std::size_t at = ((F::is(accessor) ? i : 0) + ... + 0);
    return std::tuple_element_t<at, std::tuple<F...>>();
  }
  (std::index_sequence_for<F...>());
}

/// Takes the octets that were kept of a field out of its record: they are no longer its own.
inline void remake(::ASN1String *&kept, const void *) noexcept {
  asn1_ASN1String_free(kept);
  kept = nullptr;
}

/// Makes the text of a name anew.
inline void remake(char *&text, const ::List *name) noexcept {
  asn1_Name_free(text);
  text = pki_RDNSequence_text(name);
}

}  // namespace detail

/// Makes a value of a type out of values of C++: `make<pki::CRLNumber>(7)`,
/// `make<pki::KeyUsage>(NamedBits{key_usage::cRLSign})`, `make<pki::RDNSequence>("CN=Some One")`,
/// and of a list out of its elements. Returns it, or why there is none.
template <class T, class... V>
Result<Owned<T>> make(V &&...values) {
  detail::must_be_a_type<T>();
  std::optional<Fault> fault;
  detail::Made<T> record = detail::made<T>(fault, std::forward<V>(values)...);
  if (record == nullptr) return fault ? *fault : detail::no_memory();
  return Owned<T>(record.release());
}

/// Makes a CHOICE of one alternative: `choose<pki::GeneralName::dNSName>("www.example")`.
template <class A, class... V>
Result<Owned<typename A::Choice>> choose(V &&...values) {
  using C = typename A::Choice;
  Owned<C> choice(C::calls.create());
  if (!choice) return detail::no_memory();
  if constexpr (!std::same_as<typename A::Type, Null>) {
    std::optional<Fault> fault;
    auto value = detail::made<typename A::Type>(fault, std::forward<V>(values)...);
    if (value == nullptr) return fault ? *fault : detail::no_memory();
    choice.c()->value = value.release();
  } else {
    static_assert(sizeof...(V) == 0, "a NULL takes no value");
  }
  choice.c()->kind = A::kind;
  return choice;
}

/// Fills a record field by field:
///
///     auto validity = Builder<pki::Validity>()
///                         .set<&pki::Validity::notBefore>(today)
///                         .set<&pki::Validity::notAfter>(today + std::chrono::days(90))
///                         .build();
///
/// A field is named by the function that reads it. The first thing that goes wrong is kept, and
/// returned by build().
template <class T>
class [[nodiscard]] Builder {
  static_assert(Type<T> && HasFields<T>, "only records are built; make<T>() makes other types");
  static_assert(T::calls.encode != nullptr, "the library does not encode this type");

 public:
  /// Starts with an empty record.
  Builder() : record_(T::calls.create()) {
    if (!record_) fault_ = detail::no_memory();
  }

  /// Starts with a record, to change some of its fields.
  explicit Builder(Owned<T> record) noexcept : record_(std::move(record)) {
    if (!record_) fault_ = Fault::of("there is no record");
  }

  /// Sets a field. What it held is released, and with it the octets that were kept of it.
  template <auto accessor, class... V>
  Builder &set(V &&...values) & {
    if (fault_) return *this;
    using F = decltype(detail::field_of<accessor>(typename T::Fields()));
    using Held = typename F::Type;
    if constexpr (std::integral<Held>) {
      static_assert(sizeof...(V) == 1 && (detail::takes<Held, std::remove_cvref_t<V>>() && ...),
                    "the field takes no such value");
      (set_number<F>(values), ...);
      remake_other_forms<F>();
    } else {
      auto made = detail::made<Held>(fault_, std::forward<V>(values)...);
      if (made == nullptr) {
        fault_ = detail::inside(F::name, fault_ ? *fault_ : detail::no_memory());
        return *this;
      }
      auto *&member = record_.c()->*F::member;
      detail::release<Held>(member);
      member = made.release();
      remake_other_forms<F>();
    }
    return *this;
  }
  template <auto accessor, class... V>
  Builder &&set(V &&...values) && {
    return std::move(set<accessor>(std::forward<V>(values)...));
  }

  /// Takes a field out of the record, an OPTIONAL one.
  template <auto accessor>
  Builder &clear() & {
    using F = decltype(detail::field_of<accessor>(typename T::Fields()));
    if (fault_) return *this;
    auto &member = record_.c()->*F::member;
    if constexpr (!std::integral<typename F::Type>) detail::release<typename F::Type>(member);
    member = {};
    remake_other_forms<F>();
    return *this;
  }
  template <auto accessor>
  Builder &&clear() && {
    return std::move(clear<accessor>());
  }

  /// The record; or the first fault, or the first field that is missing.
  Result<Owned<T>> build() && {
    if (!fault_ && encoded_size(record_) == 0) fault_ = detail::why_not_written(*record_);
    if (fault_) return *fault_;
    return std::move(record_);
  }

 private:
  template <class F>
  void set_number(auto value) {
    using Member = std::remove_reference_t<decltype(record_.c()->*F::member)>;
    if constexpr (std::same_as<decltype(value), bool>)
      record_.c()->*F::member = value ? 0xFF : 0;  // as DER has it (X.690, 11.1)
    else if (std::in_range<Member>(value))
      record_.c()->*F::member = static_cast<Member>(value);
    else
      fault_ = detail::inside(F::name, Fault::of("the number is out of range"));
  }

  template <class F>
  void remake_other_forms() noexcept {
    F::for_each_other_member(
        [&](auto other) { detail::remake(record_.c()->*other, record_.c()->*F::member); });
  }

  Owned<T> record_;
  std::optional<Fault> fault_;
};

// ---------------------------------------------------------------------------------------------
// Records that most values hold
// ---------------------------------------------------------------------------------------------

/// Makes an AlgorithmIdentifier: `algorithm(oid::id_ecPublicKey, curve)`. Parameters that are left
/// out are absent, which is not the same as NULL; null() is the latter.
template <class Id, class... V>
Result<Owned<pki::AlgId>> algorithm(const Id &identifier, V &&...parameters) {
  Builder<pki::AlgId> builder;
  builder.set<&pki::AlgId::algorithm>(identifier);
  if constexpr (sizeof...(V) != 0) {
    builder.set<&pki::AlgId::parameters>(std::forward<V>(parameters)...);
  }
  return std::move(builder).build();
}

/// Returns a NULL as an element: the parameters of RSA.
inline Octets null() noexcept {
  static constexpr std::byte octets[] = {std::byte{5}, std::byte{0}};
  return octets;
}

/// Makes an extension that is not critical: `extension(oid::id_ce_subjectAltName, names)`. The
/// value is what is encoded inside, or its octets.
template <class Id, class V>
Result<Owned<pki::Extension>> extension(const Id &identifier, V &&value) {
  return Builder<pki::Extension>()
      .set<&pki::Extension::extnID>(identifier)
      .template set<&pki::Extension::extnValue>(std::forward<V>(value))
      .build();
}

/// Makes an extension that is critical.
template <class Id, class V>
Result<Owned<pki::Extension>> critical_extension(const Id &identifier, V &&value) {
  return Builder<pki::Extension>()
      .set<&pki::Extension::extnID>(identifier)
      .template set<&pki::Extension::critical>(true)
      .template set<&pki::Extension::extnValue>(std::forward<V>(value))
      .build();
}

/// Makes an attribute of its values: `attribute(oid::extensionRequest, extensions)`.
template <class Id, class... V>
Result<Owned<pki::Attribute>> attribute(const Id &identifier, V &&...values) {
  return Builder<pki::Attribute>()
      .set<&pki::Attribute::type>(identifier)
      .template set<&pki::Attribute::values>(std::forward<V>(values)...)
      .build();
}

}  // namespace orvel

#endif
