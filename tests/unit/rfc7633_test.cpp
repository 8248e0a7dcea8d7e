// The TLS feature extension (RFC 7633). The octets are made by hand.
#include "forms.h"

namespace {

using support::at;
using support::expect_exact;
using support::expect_no_record;
using support::hex;
using support::same;

TEST(FeaturesForm, IsAListOfNumbers) {
  const auto family = FORM_LIST(Features, List);
  expect_exact(family, 0x30, hex("02 01 05 02 01 11"));
  const auto features = same(family, hex("30 06 02 01 05 02 01 11"));
  ASSERT_EQ(2, List_len(features.get()));
  EXPECT_EQ(5U, asn1_Integer_get(at<Integer>(features.get(), 0)));
  EXPECT_EQ(17U, asn1_Integer_get(at<Integer>(features.get(), 1)));
  EXPECT_EQ(0, List_len(same(family, hex("30 00")).get()));
  expect_no_record(family, hex("30 03 0A 01 05"));
}

}  // namespace
