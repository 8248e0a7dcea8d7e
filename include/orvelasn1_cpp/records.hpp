// What the generated classes of records stand on: lists, CHOICE, fields, and records that are owned.
#ifndef ORVELASN1_CPP_RECORDS_H
#define ORVELASN1_CPP_RECORDS_H

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <ranges>
#include <type_traits>
#include <utility>
#include <vector>

#include "result.hpp"
#include "values.hpp"

namespace orvel {

/// The functions of C of a type, and the name that pki_Type_find() knows it by. A function that the
/// type does not have is NULL.
template <class R>
struct Calls {
  const char *name;
  R *(*create)();
  const uint8_t *(*decode)(const uint8_t *, const uint8_t *, uint32_t, R **, uint32_t);
  uint32_t (*encode)(uint8_t **, const R *);
  R *(*clone)(const R *);
  void (*release)(R *);
};

/// A class of orvel::pki or orvel::asn1 that stands for a type of the library.
template <class T>
concept Type = requires {
  typename T::Record;
  { T::calls.release } -> std::convertible_to<void (*)(typename T::Record *)>;
};

/// A text that is an argument of a template.
template <std::size_t size>
struct Literal {
  consteval Literal(const char (&text)[size]) { std::copy_n(text, size, characters); }
  constexpr std::string_view view() const noexcept { return {characters, size - 1}; }
  char characters[size] = {};
};
template <std::size_t size>
Literal(const char (&)[size]) -> Literal<size>;

/// A field of a record: its name in ASN.1, its type, the function that reads it, the member of C
/// that holds it, and the members that hold the same in other forms, such as the octets as read.
template <Literal field_name, class T, auto field_accessor, auto field_member, auto... also>
struct Field {
  using Type = T;
  static constexpr std::string_view name = field_name.view();
  static constexpr auto accessor = field_accessor;
  static constexpr auto member = field_member;

  /// Whether a function is the one that reads this field.
  static constexpr bool is(auto) { return false; }
  static constexpr bool is(decltype(field_accessor) other) { return other == field_accessor; }

  /// Calls `f` with each member that holds the field in another form.
  template <class F>
  static constexpr void for_each_other_member([[maybe_unused]] F f) {
    (f(also), ...);
  }
};

template <class... F>
struct FieldList {};

/// A record whose fields are known by name.
template <class T>
concept HasFields = requires {
  typename T::Fields;
};

// ---------------------------------------------------------------------------------------------
// Lists
// ---------------------------------------------------------------------------------------------

/// What every list is.
struct ListBase {};

/// A SEQUENCE OF or SET OF: a range of its elements. One that its record does not have is empty,
/// and `!list`.
template <class E>
class List : public View<::List>, public ListBase {
 public:
  using View::View;
  using Element = E;
  using value_type = orvel::Seen<E>;

  class iterator {
   public:
    using value_type = List::value_type;
    using reference = value_type;
    using pointer = void;
    using difference_type = std::ptrdiff_t;
    using iterator_concept = std::random_access_iterator_tag;
    using iterator_category = std::input_iterator_tag;

    constexpr iterator() noexcept = default;
    constexpr iterator(const ::List *list, std::int32_t index) noexcept
        : list_(list), index_(index) {}

    value_type operator*() const noexcept { return detail::see<E>(List_get(list_, index_)); }
    value_type operator[](difference_type by) const noexcept { return *(*this + by); }
    iterator &operator++() noexcept { return ++index_, *this; }
    iterator &operator--() noexcept { return --index_, *this; }
    iterator operator++(int) noexcept { return {list_, index_++}; }
    iterator operator--(int) noexcept { return {list_, index_--}; }
    iterator &operator+=(difference_type by) noexcept {
      index_ = static_cast<std::int32_t>(index_ + by);
      return *this;
    }
    iterator &operator-=(difference_type by) noexcept { return *this += -by; }
    friend iterator operator+(iterator at, difference_type by) noexcept { return at += by; }
    friend iterator operator+(difference_type by, iterator at) noexcept { return at += by; }
    friend iterator operator-(iterator at, difference_type by) noexcept { return at -= by; }
    friend difference_type operator-(iterator a, iterator b) noexcept {
      return difference_type{a.index_} - b.index_;
    }
    friend bool operator==(iterator a, iterator b) noexcept { return a.index_ == b.index_; }
    friend auto operator<=>(iterator a, iterator b) noexcept { return a.index_ <=> b.index_; }

   private:
    const ::List *list_ = nullptr;
    std::int32_t index_ = 0;
  };
  using const_iterator = iterator;

  std::size_t size() const noexcept { return static_cast<std::size_t>(List_len(c())); }
  bool empty() const noexcept { return List_len(c()) == 0; }
  iterator begin() const noexcept { return {c(), 0}; }
  iterator end() const noexcept { return {c(), List_len(c())}; }

  /// The element of an index; an empty one, where there is none.
  value_type operator[](std::size_t index) const noexcept {
    if (index > std::size_t{0x7FFFFFFF}) index = 0x7FFFFFFF;
    return detail::see<E>(List_get(c(), static_cast<std::int32_t>(index)));
  }
  value_type front() const noexcept { return (*this)[0]; }
};

/// A name: its relative distinguished names, and its texts.
template <class Rdn>
class NameList : public List<Rdn> {
 public:
  using List<Rdn>::List;

  /// The string of RFC 4514, such as "CN=Some One,C=DE". Nothing, where pki_name_rfc4514() makes
  /// none.
  std::optional<std::string> rfc4514() const { return detail::taken(pki_name_rfc4514(this->c())); }

  /// The library's own text, such as "/c(19)=DE/cn(12)=Some One".
  std::optional<std::string> text() const { return detail::taken(pki_RDNSequence_text(this->c())); }
};

namespace detail {

template <class T>
constexpr Identifier identifier_of(const T &element) noexcept {
  if constexpr (requires { element.extnID(); })
    return element.extnID();
  else
    return element.type();
}

}  // namespace detail

/// Finds the first element with an identifier: an extension, an attribute of a list, an assertion
/// of a relative distinguished name. Nothing, where there is none.
template <class L, class Id>
requires std::derived_from<L, ListBase>
auto find(const L &list, const Id &identifier) noexcept -> std::optional<typename L::value_type> {
  for (const auto element : list) {
    if (detail::identifier_of(element) == identifier) return element;
  }
  return std::nullopt;
}

// ---------------------------------------------------------------------------------------------
// CHOICE
// ---------------------------------------------------------------------------------------------

/// An alternative of a CHOICE, and its value: `*name` for a GeneralName::dNSName.
template <Literal alternative_name, class C, std::uint8_t number, class T>
struct Alternative {
  static constexpr std::string_view name = alternative_name.view();
  using Choice = C;
  using Type = T;
  static constexpr std::uint8_t kind = number;
  Seen<T> value;

  constexpr Seen<T> operator*() const noexcept { return value; }
  constexpr const Seen<T> *operator->() const noexcept { return &value; }
};

template <class... A>
struct AlternativeList {};

/// What a visitor is called with where a CHOICE is none of its alternatives. No decoder makes such
/// a record; a new one is like this until it is filled.
struct Unknown {
  std::uint8_t kind;
};

/// Functions as one visitor: `name.visit(Overloaded{[](pki::GeneralName::dNSName name) {…}, …})`.
template <class... F>
struct Overloaded : F... {
  using F::operator()...;
};
template <class... F>
Overloaded(F...) -> Overloaded<F...>;

/// A CHOICE. Self lists its alternatives.
template <class Self, class R>
class Choice : public View<R> {
 public:
  using View<R>::View;

  /// The number of the alternative, as the header of C has it.
  std::uint8_t kind() const noexcept { return this->at(&R::kind); }

  /// Calls the visitor with the alternative that the record has, or with an Unknown, and returns
  /// what it returns. The visitor takes all alternatives and returns the same type for each.
  template <class Visitor>
  constexpr auto visit(Visitor &&visitor) const {
    return visit_one_of(visitor, typename Self::Alternatives());
  }

  /// Whether the record has an alternative: `name.is<pki::GeneralName::dNSName>()`.
  template <class A>
  bool is() const noexcept {
    static_assert(belongs<A>(typename Self::Alternatives()),
                  "this is no alternative of this CHOICE");
    return *this && kind() == A::kind;
  }

  /// The value, where the record has an alternative.
  template <class A>
  auto get() const noexcept -> std::optional<Seen<typename A::Type>> {
    if (!is<A>()) return std::nullopt;
    return detail::see<typename A::Type>(this->at(&R::value));
  }

 private:
  template <class A, class... All>
  static constexpr bool belongs(AlternativeList<All...>) {
    return (std::is_same_v<A, All> || ...);
  }

  template <class Visitor, class... All>
  constexpr auto visit_one_of(Visitor &visitor, AlternativeList<All...> all) const {
    constexpr bool takes_all = (std::is_invocable_v<Visitor &, All> && ...);
    static_assert(takes_all, "the visitor does not take every alternative of this CHOICE");
    static_assert(std::is_invocable_v<Visitor &, Unknown>,
                  "the visitor does not take orvel::Unknown, which is none of the alternatives");
    if constexpr (takes_all && std::is_invocable_v<Visitor &, Unknown>) {
      using Returned = std::invoke_result_t<Visitor &, Unknown>;
      static_assert((std::is_same_v<Returned, std::invoke_result_t<Visitor &, All>> && ...),
                    "the visitor returns different types for different alternatives");
      return visit_next<Returned>(visitor, all);
    }
  }

  template <class Returned, class Visitor, class A, class... Rest>
  constexpr Returned visit_next(Visitor &visitor, AlternativeList<A, Rest...>) const {
    if (*this && kind() == A::kind) {
      return visitor(A{{detail::see<typename A::Type>(this->at(&R::value))}});
    }
    if constexpr (sizeof...(Rest) == 0)
      return visitor(Unknown{kind()});
    else
      return visit_next<Returned>(visitor, AlternativeList<Rest...>());
  }
};

// ---------------------------------------------------------------------------------------------
// Values that are alike
// ---------------------------------------------------------------------------------------------

namespace detail {

template <class V>
bool alike(const V &a, const V &b) {
  return a == b;
}
inline bool alike(Octets a, Octets b) { return are_same(a, b); }
template <class V>
bool alike(const std::optional<V> &a, const std::optional<V> &b) {
  return a.has_value() == b.has_value() && (!a || alike(*a, *b));
}

template <class V, class... F>
bool alike_in(const V &a, const V &b, FieldList<F...>) {
  return (alike((a.*F::accessor)(), (b.*F::accessor)()) && ...);
}

template <class V, class... A>
bool alike_in(const V &a, const V &b, AlternativeList<A...>) {
  return ((a.kind() != A::kind || alike(a.template get<A>(), b.template get<A>())) && ...);
}

}  // namespace detail

/// Records are alike where all their fields are. The octets that were kept beside the fields do not
/// count: a certificate in BER is like the same one in DER.
template <HasFields T>
bool operator==(const T &a, const T &b) {
  return bool{a} == bool{b} && detail::alike_in(a, b, typename T::Fields());
}

template <class T>
requires requires { typename T::Alternatives; }
bool operator==(const T &a, const T &b) {
  return bool{a} == bool{b} && a.kind() == b.kind() &&
         detail::alike_in(a, b, typename T::Alternatives());
}

/// Lists are alike where they have like elements in the same order.
template <class L>
requires std::derived_from<L, ListBase>
bool operator==(const L &a, const L &b) {
  return bool{a} == bool{b} &&
         std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const auto &x, const auto &y) { return detail::alike(x, y); });
}

// ---------------------------------------------------------------------------------------------
// Objects of smart cards
// ---------------------------------------------------------------------------------------------

/// An object of a smart card. Its identifier decides what it holds: a leaf octets, a container
/// objects, the holder of attributes, 0x20, attributes.
class CardObject : public View<::GDOObject> {
 public:
  using View::View;

  /// The identifier: of an object one octet, of an attribute a number.
  unsigned long id() const noexcept { return at(&Record::id); }

  /// The octets of a leaf, or of an attribute.
  Octets value() const noexcept { return see<OctetText>(&Record::value); }

  /// Whether the object holds attributes.
  bool holds_attributes() const noexcept { return id() == 0x20; }
};

template <class T>
requires std::derived_from<T, CardObject>
bool operator==(const T &a, const T &b) {
  if (bool{a} != bool{b} || a.id() != b.id() || !detail::alike(a.value(), b.value())) return false;
  if constexpr (requires { a.children(); })
    return a.children() == b.children();
  else
    return a.attributes() == b.attributes() && a.sets() == b.sets();
}

// ---------------------------------------------------------------------------------------------
// Owned records
// ---------------------------------------------------------------------------------------------

/// A record that is owned, and released with all that it owns. Of the size of one pointer; moves,
/// and is copied by clone() only.
///
/// `->` and `*` give the view, which must not outlive the owner: of a temporary, they do not
/// compile.
template <class T>
class [[nodiscard]] Owned {
  static_assert(Type<T>, "the type is none of orvel::pki and orvel::asn1; records of C are not");

 public:
  using View = T;
  using Record = typename T::Record;

  /// Takes over a record that a function of C made, or NULL. It must have been made for the
  /// functions of this type: pki_Certificate_d() for pki::Certificate.
  constexpr explicit Owned(Record *made = nullptr) noexcept : view_(made) {}

  Owned(Owned &&other) noexcept : view_(other.release()) {}
  Owned &operator=(Owned &&other) noexcept {
    reset(other.release());
    return *this;
  }
  Owned(const Owned &) = delete;  // clone() copies, and says so
  Owned &operator=(const Owned &) = delete;
  ~Owned() { T::calls.release(c()); }

  constexpr explicit operator bool() const noexcept { return bool{view_}; }

  constexpr const T &operator*() const &noexcept { return view_; }
  void operator*() const && = delete;  // the record would be gone: give its owner a name
  constexpr const T *operator->() const &noexcept { return &view_; }
  void operator->() const && = delete;  // the record would be gone: give its owner a name
  constexpr operator const T &() const &noexcept { return view_; }
  operator const T &() const && = delete;  // the record would be gone: give its owner a name

  /// The elements of a list.
  auto begin() const &noexcept requires std::derived_from<T, ListBase> { return view_.begin(); }
  auto end() const &noexcept requires std::derived_from<T, ListBase> { return view_.end(); }

  friend bool operator==(const Owned &a, const Owned &b) { return a.view_ == b.view_; }

  /// The record, for the functions of C. It may be changed; what is put in must be as C wants it.
  Record *c() &noexcept { return const_cast<Record *>(view_.c()); }
  const Record *c() const &noexcept { return view_.c(); }
  void c() const && = delete;  // release() hands the record over

  /// The record, which the caller releases from now on.
  [[nodiscard]] Record *release() noexcept {
    Record *const record = c();
    view_ = T();
    return record;
  }

  /// Releases the record, and takes over another one.
  void reset(Record *made = nullptr) noexcept {
    Record *const before = c();
    view_ = T(made);
    T::calls.release(before);
  }

 private:
  T view_;  // of a record that is not constant
};

namespace detail {

/// Why the octets were refused; or that memory ran out, where nothing is wrong with them.
[[gnu::cold, gnu::noinline]] inline Fault why_refused(const char *name, const uint8_t *z,
                                                      const uint8_t *end) noexcept {
  pki_Fault fault{};
  const pki_Type *const type = pki_Type_find(name);
  if (type != nullptr && pki_explain(type, z, end, &fault) != 0) return Fault(fault);
  return Fault::of("the octets are well-formed, but memory is exhausted");
}

[[gnu::cold, gnu::noinline]] inline Fault left_over(std::size_t read, std::size_t size) {
  return Fault::of("expected the end of the input, found " + std::to_string(size - read) +
                       (size - read == 1 ? " more octet" : " more octets"),
                   read);
}

/// Puts the name of a field in front of a fault's path.
inline Fault inside(std::string_view field, const Fault &fault) {
  std::string path(field);
  if (!fault.path().empty()) path.append(".").append(fault.path());
  pki_Fault made{};
  made.offset = static_cast<uint32_t>(fault.offset());
  path.copy(made.path, sizeof made.path - 1);
  fault.sentence().copy(made.sentence, sizeof made.sentence - 1);
  return Fault(made);
}

/// Whether the encoder of a type checks itself that its fields are there.
template <class T>
inline constexpr bool is_form = std::string_view(T::calls.name).starts_with("pki_");

/// Whether a record of a SEQUENCE has all fields that are not OPTIONAL, and so have the SEQUENCEs
/// in it. Without one, an encoder of liborvelasn1 may end the process. `path` is called with the
/// name of the field that is missing, then with those that it stands in.
template <class T, class Path, class... F>
bool is_whole(const T &view, const Path &path, FieldList<F...>) {
  const auto is_there = [&]<class One>(One *) {
    if constexpr (std::integral<typename One::Type>) {
      return true;
    } else {
      const auto *const member = view.c()->*One::member;
      bool is_kept = false;
      One::for_each_other_member([&](auto other) { is_kept |= view.c()->*other != nullptr; });
      if (member == nullptr) {
        constexpr bool is_optional = requires { (view.*One::accessor)().has_value(); }
        || std::derived_from<typename One::Type, ListBase>;
        if (is_optional || is_kept) return true;
      } else if constexpr (HasFields<typename One::Type>) {
        if (is_whole(typename One::Type(member), path, typename One::Type::Fields())) return true;
      } else {
        return true;
      }
      path(One::name);
      return false;
    }
  };
  return (is_there(static_cast<F *>(nullptr)) && ...);
}

/// Why a record is not written.
template <class T>
[[gnu::cold, gnu::noinline]] Fault why_not_written(const T &view) {
  if (!view) return Fault::of("there is no record");
  if constexpr (is_form<T>) {
    pki_Fault fault{};
    const pki_Type *const type = pki_Type_find(T::calls.name);
    if (type != nullptr && pki_find_missing(type, view.c(), &fault) != 0) return Fault(fault);
  } else if constexpr (HasFields<T>) {
    Fault fault = Fault::of("is missing");
    const auto path = [&](std::string_view name) { fault = inside(name, fault); };
    if (!is_whole(view, path, typename T::Fields())) return fault;
  }
  return Fault::of("the record cannot be written, or memory is exhausted");
}

template <class T>
constexpr void must_be_a_type() {
  static_assert(Type<T>, "the type is none of orvel::pki and orvel::asn1; records of C are not");
}

}  // namespace detail

/// Decodes one value in front of the octets, and moves them past it.
template <class T>
Result<Owned<T>> decode_next(Octets &octets) {
  detail::must_be_a_type<T>();
  static_assert(T::calls.decode != nullptr, "the library does not decode this type");
  static const uint8_t none = 0;
  const uint8_t *const z = octets.data() != nullptr ? detail::raw(octets.data()) : &none;
  const uint8_t *const end = z + octets.size();
  if constexpr (requires { requires T::may_end_the_process; }) {
    pki_Fault fault{};
    if (pki_explain(pki_Type_find(T::calls.name), z, end, &fault) != 0) return Fault(fault);
  }
  typename T::Record *record = nullptr;
  const uint8_t *const past = T::calls.decode(z, end, 0, &record, 0);
  if (past == nullptr || record == nullptr) [[unlikely]] {
    T::calls.release(record);
    return detail::why_refused(T::calls.name, z, end);
  }
  octets = octets.subspan(static_cast<std::size_t>(past - z));
  return Owned<T>(record);
}

/// Decodes octets that are one value and nothing else: `decode<pki::Certificate>(octets)`. Returns
/// the record, or why there is none. Octets that are left over are a fault.
template <class T>
Result<Owned<T>> decode(Input input) {
  Octets rest = input.octets();
  Result<Owned<T>> result = decode_next<T>(rest);
  if (!rest.empty() && result) [[unlikely]] {
    return detail::left_over(input.octets().size() - rest.size(), input.octets().size());
  }
  return result;
}

/// Copies a record with all that it owns.
template <class T>
Result<Owned<T>> clone(const T &view) {
  detail::must_be_a_type<T>();
  static_assert(T::calls.clone != nullptr, "the library does not copy this type");
  Owned<T> copy(view ? T::calls.clone(view.c()) : nullptr);
  if (!copy) return Fault::of(view ? "memory is exhausted" : "there is no record");
  return copy;
}
template <class T>
Result<Owned<T>> clone(const Owned<T> &owned) {
  return clone(*owned);
}

/// The number of octets that a record is encoded to; 0 where it has no encoding.
template <class T>
std::size_t encoded_size(const T &view) noexcept {
  detail::must_be_a_type<T>();
  static_assert(T::calls.encode != nullptr, "the library does not encode this type");
  if (!view) return 0;
  if constexpr (!detail::is_form<T> && HasFields<T>) {
    if (!detail::is_whole(
            view, [](std::string_view) {}, typename T::Fields()))
      return 0;
  }
  return T::calls.encode(nullptr, view.c());
}
template <class T>
std::size_t encoded_size(const Owned<T> &owned) noexcept {
  return encoded_size(*owned);
}

/// Encodes a record into a buffer. Returns the part that was written, or why there is none: a field
/// is missing, or the buffer is too small.
template <class T>
Result<std::span<std::byte>> encode_into(const T &view, std::span<std::byte> buffer) {
  if constexpr (requires { T::kept; }) {
    // The encoder writes nothing while these octets are kept.
    if (view && view.c()->*T::kept != nullptr) {
      Owned<T> copy(T::calls.clone(view.c()));
      if (!copy) return Fault::of("memory is exhausted");
      asn1_ASN1String_free(std::exchange(copy.c()->*T::kept, nullptr));
      return encode_into(*copy, buffer);
    }
  }
  const std::size_t size = encoded_size(view);
  if (size == 0) return detail::why_not_written(view);
  if (size > buffer.size()) {
    return Fault::of("the buffer has " + std::to_string(buffer.size()) + " octets, the value " +
                     std::to_string(size));
  }
  uint8_t *cursor = reinterpret_cast<uint8_t *>(buffer.data());
  if (T::calls.encode(&cursor, view.c()) != size) return detail::why_not_written(view);
  return buffer.first(size);
}
template <class T>
Result<std::span<std::byte>> encode_into(const Owned<T> &owned, std::span<std::byte> buffer) {
  return encode_into(*owned, buffer);
}

/// Encodes a record. Returns its octets, or why there are none.
template <class T>
Result<std::vector<std::byte>> encode(const T &view) {
  std::vector<std::byte> octets(encoded_size(view));
  const auto written = encode_into(view, octets);
  if (!written) return written.error();
  return octets;
}
template <class T>
Result<std::vector<std::byte>> encode(const Owned<T> &owned) {
  return encode(*owned);
}

}  // namespace orvel

/// Iterators of a list stand on the record, not on the list.
template <class L>
requires std::derived_from<L, orvel::ListBase>
inline constexpr bool std::ranges::enable_borrowed_range<L> = true;
template <class L>
requires std::derived_from<L, orvel::ListBase>
inline constexpr bool std::ranges::enable_view<L> = true;

#endif
