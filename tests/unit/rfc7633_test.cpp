// The TLS feature extension (RFC 7633). The octets are made by hand.
#include "forms.h"

namespace rfc7633_test {

namespace {

using support::element_of;
using support::expect_exact;
using support::expect_form_refused;
using support::expect_kept;
using support::hex;

TEST(FeaturesForm, IsAListOfNumbers) {
  const auto family = FORM_LIST(Features, List);
  expect_exact(family, 0x30, hex("02 01 05 02 01 11"));
  const auto features = expect_kept(family, hex("30 06 02 01 05 02 01 11"));
  ASSERT_EQ(2, List_len(features.get()));
  EXPECT_EQ(5U, asn1_Integer_get(&element_of<Integer>(features.get(), 0)));
  EXPECT_EQ(17U, asn1_Integer_get(&element_of<Integer>(features.get(), 1)));
  EXPECT_EQ(0, List_len(expect_kept(family, hex("30 00")).get()));
  expect_form_refused(family, hex("30 03 0A 01 05"));
}

}  // namespace

}  // namespace rfc7633_test
