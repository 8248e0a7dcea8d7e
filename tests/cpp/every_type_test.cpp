// What holds for every class: an empty view and an empty record have nothing and are shown, compared and
// walked like any other; and what a decoder makes of changed octets can be looked at in all its parts.
#include <gtest/gtest.h>

#include <orvelasn1.hpp>
#include <set>

#include "certificate.h"

namespace every_type_test {

namespace {

namespace pki = orvel::pki;
namespace asn1 = orvel::asn1;
using support::Bytes;
using support::element;
using support::hex;
using support::some_certificate;
using support::text;
using support::operator+;

std::set<std::string> names;

/// Looks at every field of a view. Returns what there is to see.
template <class T>
std::string everything(const T &view) {
  if constexpr (requires { orvel::to_string(view); })
    return orvel::to_string(view);
  else
    return view ? "some" : "none";
}

/// An expectation that takes little to compile for each of the types.
void expect(bool holds, int line = __builtin_LINE()) { EXPECT_TRUE(holds) << "line " << line; }

template <class T>
void check(const char *name) {
  SCOPED_TRACE(name);
  static_assert(orvel::Type<T>);
  static_assert(sizeof(T) == sizeof(void *) && std::is_trivially_copyable_v<T>);
  static_assert(sizeof(orvel::Owned<T>) == sizeof(void *));
  expect(names.insert(T::calls.name).second);
  expect(pki_Type_find(T::calls.name) != nullptr);
  expect(everything(T()) == "none");
  if constexpr (requires { T() == T(); }) expect(T() == T());
  const orvel::Owned<T> empty(T::calls.create != nullptr ? T::calls.create() : nullptr);
  // A Time of kind 0 is no time, and shown as none.
  if constexpr (T::calls.create != nullptr && !std::derived_from<T, orvel::TimeChoice>) {
    expect(!everything(*empty).empty() && everything(*empty) != "none");
    if constexpr (requires { T() == T(); }) expect(*empty == *empty && *empty != T());
  }
  if constexpr (T::calls.decode != nullptr) expect(!orvel::decode<T>(orvel::Octets()));
  // An empty record may have an encoding, where every field is OPTIONAL. It never ends the process.
  if constexpr (T::calls.encode != nullptr && orvel::HasFields<T>) {
    const auto encoded = orvel::encode(*empty);
    expect(encoded || !encoded.error().sentence().empty());
    expect(!orvel::encode(T()));
    expect(bool{encoded} == bool{orvel::Builder<T>().build()});
  }
}

TEST(CppEveryType, MayBeEmptyAndIsThereForEachOfTheLibrary) {
#define TYPE(T) check<T>(#T);
#include "every_type.inc"
#undef TYPE
  EXPECT_LT(150U, names.size());
  for (std::uint32_t i = 0; i < pki_Type_count(); ++i) {
    const pki_Type *const type = pki_Type_get(i);
    const std::string name = pki_Type_record(type);
    const bool has_functions = pki_Type_functions(type)->free != nullptr;
    const bool has_form = pki_Type_find(("pki_" + name).c_str()) != nullptr;
    EXPECT_TRUE(names.contains(name) || has_form || !has_functions) << name;
  }
}

/// Changes each octet in turn, and looks at what is still decoded.
template <class T>
void change_each_octet_of(const Bytes &octets) {
  int decoded = 0;
  for (std::size_t at = 0; at < octets.size(); ++at) {
    for (const int by : {0x01, 0x20, 0x80, 0xFF}) {
      Bytes changed = octets;
      changed[at] = static_cast<std::uint8_t>(changed[at] ^ by);
      const auto result = orvel::decode<T>(changed);
      if (!result) {
        EXPECT_FALSE(result.error().sentence().empty());
        EXPECT_LE(result.error().offset(), octets.size());
        continue;
      }
      ++decoded;
      EXPECT_NE("none", everything(**result));
      const auto copy = orvel::clone(*result);
      ASSERT_TRUE(copy);
      EXPECT_EQ(*copy, *result);
      EXPECT_TRUE(orvel::encode(*copy));
    }
  }
  EXPECT_LT(0, decoded);
}

TEST(CppEveryType, IsReadAfterAChange) {
  change_each_octet_of<pki::Certificate>(some_certificate);
  change_each_octet_of<pki::GeneralNames>(element(
      0x30, element(0xA4, element(0x30, element(0x31, element(0x30, hex("06 03 55 04 03") +
                                                                        element(12, text("A")))))) +
                hex("82 01 61 A0 08 06 02 2A 03 A0 02 05 00 88 03 2A 03 04 87 04 01 02 03 04")));
  change_each_octet_of<pki::OCSPCertStatus>(
      element(0xA1, element(24, text("20260131120000Z")) + hex("A0 03 0A 01 01")));
  change_each_octet_of<pki::UserNotice>(
      element(0x30, element(0x30, hex("0C 01 41 30 03 02 01 01")) + hex("1A 01 41")));
}

}  // namespace

}  // namespace every_type_test
