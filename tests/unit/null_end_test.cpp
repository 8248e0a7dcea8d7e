// Tests the decoders that look at the first octet themselves. With `end` NULL they end the process,
// as the reader of a header does. With `z` NULL they fail.
#include "support.h"

namespace null_end_test {

namespace {

using support::Bytes;

/// Octets that begin the alternatives of every CHOICE, and octets that begin none.
constexpr uint8_t octets[] = {0x17, 0x18, 0x80, 0x81, 0x82, 0xA0,
                              0xA1, 0xA2, 0x30, 0x31, 0x06, 0x00};

template <class Record>
using Decoder = const uint8_t *(*)(const uint8_t *, const uint8_t *, uint32_t, Record **, uint32_t);

template <class Record>
void expect_assert_without_an_end(Decoder<Record> element_d) {
  for (const uint8_t octet : octets) {
    SCOPED_TRACE(static_cast<int>(octet));
    const Bytes input{octet, 0};
    Record *record = nullptr;
    EXPECT_ASSERT(element_d(input.data(), nullptr, 0, &record, 0), "asn1_Tag_d", "end != NULL");
  }
}

template <class Record>
void expect_failure_without_a_cursor(Decoder<Record> element_d) {
  const uint8_t octet = 0x17;
  for (const uint8_t *const end : {static_cast<const uint8_t *>(nullptr), &octet}) {
    Record *record = nullptr;
    EXPECT_EQ(nullptr, element_d(nullptr, end, 0, &record, 0));
    EXPECT_EQ(nullptr, record);
  }
}

const uint8_t *plain_object_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                              GDOObject **place, uint32_t depth) {
  return asn1_GDOObject_d(z, end, impl_tag, 0, place, depth);
}
const uint8_t *nested_object_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               GDOObject **place, uint32_t depth) {
  return asn1_GDOObject_d(z, end, impl_tag, 1, place, depth);
}

#define NEEDS_AN_END(name, element_d)                                                   \
  TEST(NullEndDeathTest, name##NeedsAnEnd) { expect_assert_without_an_end(element_d); } \
  TEST(NullEnd, name##FailsWithoutACursor) { expect_failure_without_a_cursor(element_d); }

NEEDS_AN_END(Time, asn1_Time_d)
NEEDS_AN_END(GeneralName, asn1_GeneralName_d)
NEEDS_AN_END(DistributionPointName, asn1_DistributionPointName_d)
NEEDS_AN_END(ResponderID, asn1_ResponderID_d)
NEEDS_AN_END(OCSPCertStatus, asn1_OCSPCertStatus_d)
NEEDS_AN_END(GDOObject, plain_object_d)
NEEDS_AN_END(GDOObjectAtANestedSetPlace, nested_object_d)
NEEDS_AN_END(GDOObjectSetOf, asn1_GDOObjectSetOf_d)
NEEDS_AN_END(GDOObjectSetOfSetOf, asn1_GDOObjectSetOfSetOf_d)

}  // namespace

}  // namespace null_end_test
