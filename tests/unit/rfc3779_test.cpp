// Blocks of addresses and autonomous system numbers (RFC 3779). The first octets of each are those of
// its Appendix B and C; the others are made by hand.
#include "forms.h"

namespace rfc3779_test {

namespace {

using support::Bytes;
using support::created;
using support::element_of;
using support::encoded;
using support::expect_exact;
using support::expect_form_refused;
using support::expect_kept;
using support::expect_unfilled;
using support::hex;
using support::sequence;
using support::value;
using support::operator+;

// Appendix B: 10.0.32.0/20, 10.0.64.0/24, 10.1.0.0/16, 10.2.48.0/20, 10.2.64.0/24, 10.3.0.0/16 for
// unicast IPv4, and what is inherited for IPv6.
const Bytes blocks =
    hex("30 35"
        "30 2B 04 03 00 01 01 30 24 03 04 04 0A 00 20 03 04 00 0A 00 40 03 03 00 0A 01"
        "30 0C 03 04 04 0A 02 30 03 04 00 0A 02 40 03 03 00 0A 03"
        "30 06 04 02 00 02 05 00");

TEST(IPAddrBlocksForm, ReadsTheExampleOfTheRfc) {
  const auto family = FORM_LIST(IPAddrBlocks, List);
  expect_exact(family, 0x30, Bytes(blocks.begin() + 2, blocks.end()));
  const auto families = expect_kept(family, blocks);
  ASSERT_EQ(2, List_len(families.get()));
  const auto *unicast = &element_of<pki_IPAddressFamily>(families.get(), 0);
  EXPECT_EQ(hex("00 01 01"), value(unicast->addressFamily));
  ASSERT_EQ(16, unicast->ipAddressChoice->kind);
  const auto *addresses = static_cast<const List *>(unicast->ipAddressChoice->value);
  ASSERT_EQ(5, List_len(addresses));
  const auto *prefix = &element_of<pki_IPAddressOrRange>(addresses, 0);
  ASSERT_EQ(3, prefix->kind);
  EXPECT_EQ(20U, static_cast<const BitString *>(prefix->value)->length);
  EXPECT_EQ(hex("0A 00 20"), value(static_cast<const BitString *>(prefix->value)));
  // The zero bits of a prefix count: 10.0.64.0/24.
  EXPECT_EQ(
      24U,
      static_cast<const BitString *>(element_of<pki_IPAddressOrRange>(addresses, 1).value)->length);
  const auto *range = &element_of<pki_IPAddressOrRange>(addresses, 3);
  ASSERT_EQ(16, range->kind);
  EXPECT_EQ(hex("0A 02 30"), value(static_cast<const pki_IPAddressRange *>(range->value)->min));
  EXPECT_EQ(hex("0A 02 40"), value(static_cast<const pki_IPAddressRange *>(range->value)->max));
  const auto *inherited = &element_of<pki_IPAddressFamily>(families.get(), 1);
  EXPECT_EQ(5, inherited->ipAddressChoice->kind);
  EXPECT_EQ(nullptr, inherited->ipAddressChoice->value);
}

TEST(IPAddressForms, StandAlone) {
  const auto family = FORM(IPAddressFamily, pki_IPAddressFamily);
  const auto choice = FORM(IPAddressChoice, pki_IPAddressChoice);
  const auto address = FORM(IPAddressOrRange, pki_IPAddressOrRange);
  const auto range = FORM(IPAddressRange, pki_IPAddressRange);
  expect_exact(family, 0x30, hex("04 02 00 01 05 00"));
  expect_kept(choice, hex("05 00"));
  expect_kept(choice, hex("30 00"));
  expect_kept(choice, sequence(hex("03 01 00 03 03 00 0A 00")));
  expect_kept(address, hex("03 03 00 0A 00"));
  expect_exact(range, 0x30, hex("03 01 00 03 03 07 0A 80"));
  expect_kept(address, sequence(hex("03 01 00 03 03 07 0A 80")));
  expect_unfilled(family);
  expect_unfilled(choice);
  expect_unfilled(address);
  expect_unfilled(range);
  expect_form_refused(choice, hex("05 01 00"));
  expect_form_refused(choice, hex("85 00"));
  expect_form_refused(choice, hex("04 00"));
  expect_form_refused(address, hex("04 01 00"));
  expect_form_refused(address, sequence(hex("03 01 00")));
  const auto record = created(choice);
  record->kind = 5;
  EXPECT_EQ(hex("05 00"), encoded(choice, record));
  record->kind = 16;
  EXPECT_EQ(Bytes(), encoded(choice, record));
}

TEST(ASIdentifiersForm, HasNumbersAndRanges) {
  const auto family = FORM(ASIdentifiers, pki_ASIdentifiers);
  // Appendix C: 135, 3000 to 3999 and 5001, and the routing domains that are inherited.
  const Bytes numbers = hex("A0 14 30 12 02 02 00 87 30 08 02 02 0B B8 02 02 0F 9F 02 02 13 89");
  const Bytes inherited = hex("A1 02 05 00");
  expect_exact(family, 0x30, numbers + inherited);
  const auto both = expect_kept(family, sequence(numbers + inherited));
  ASSERT_EQ(16, both->asnum->kind);
  const auto *list = static_cast<const List *>(both->asnum->value);
  ASSERT_EQ(3, List_len(list));
  ASSERT_EQ(2, element_of<pki_ASIdOrRange>(list, 0).kind);
  EXPECT_EQ(135U, asn1_Integer_get(
                      static_cast<const Integer *>(element_of<pki_ASIdOrRange>(list, 0).value)));
  ASSERT_EQ(16, element_of<pki_ASIdOrRange>(list, 1).kind);
  const auto *range = static_cast<const pki_ASRange *>(element_of<pki_ASIdOrRange>(list, 1).value);
  EXPECT_EQ(3000U, asn1_Integer_get(range->min));
  EXPECT_EQ(3999U, asn1_Integer_get(range->max));
  EXPECT_EQ(5, both->rdi->kind);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(numbers))->rdi);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(inherited))->asnum);
  expect_unfilled(family, hex("30 00"));
  expect_form_refused(family, sequence(inherited + numbers));
  expect_form_refused(family, sequence(hex("A0 00")));
  expect_form_refused(family, sequence(hex("A0 04 05 00 05 00")));
  expect_form_refused(family, sequence(hex("80 00")));
}

TEST(ASForms, StandAlone) {
  const auto choice = FORM(ASIdentifierChoice, pki_ASIdentifierChoice);
  const auto number = FORM(ASIdOrRange, pki_ASIdOrRange);
  const auto range = FORM(ASRange, pki_ASRange);
  expect_kept(choice, hex("05 00"));
  expect_kept(choice, sequence(hex("02 01 05")));
  expect_kept(number, hex("02 05 00 FF FF FF FF"));
  expect_kept(number, sequence(hex("02 01 00 02 01 05")));
  expect_exact(range, 0x30, hex("02 01 00 02 01 05"));
  expect_unfilled(choice);
  expect_unfilled(number);
  expect_unfilled(range);
  expect_form_refused(number, hex("05 00"));
  expect_form_refused(range, sequence(hex("02 01 00")));
}

}  // namespace

}  // namespace rfc3779_test
