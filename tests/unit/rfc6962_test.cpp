// Lists of signed certificate timestamps (RFC 6962, 3.2 and 3.3). The octets are made by hand.
#include "forms.h"

namespace rfc6962_test {

namespace {

using support::Bytes;
using support::decoded;
using support::element;
using support::element_of;
using support::encoded;
using support::expect_form_refused;
using support::expect_kept;
using support::Held;
using support::hex;
using support::list_of;
using support::value;
using support::operator+;

const auto family = FORM_LIST(SignedCertificateTimestampList, List);

/// A vector whose length stands in two octets in front of it.
Bytes vector(const Bytes &octets) {
  return Bytes{static_cast<uint8_t>(octets.size() >> 8), static_cast<uint8_t>(octets.size())} +
         octets;
}

Bytes list(const Bytes &elements) { return element(4, vector(elements)); }

Bytes cut(const Bytes &octets, size_t size) {
  return Bytes(octets.begin(), octets.begin() + static_cast<std::ptrdiff_t>(size));
}

const Bytes log_id =
    hex("00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11 12 13 14 15 16 17 18 19 1A 1B 1C 1D "
        "1E 1F");
const Bytes start = hex("00") + log_id + hex("00 00 01 9A BC DE F0 12");
const Bytes plain = start + hex("00 00 04 03 00 02 30 00");
const Bytes extended = start + hex("00 03 AA BB CC 08 07 00 00");

TEST(SignedCertificateTimestampListForm, HasTheFieldsOfTheFirstVersion) {
  const auto timestamps = expect_kept(family, list(vector(plain) + vector(extended)));
  ASSERT_EQ(2, List_len(timestamps.get()));
  const auto *first = &element_of<pki_SignedCertificateTimestamp>(timestamps.get(), 0);
  EXPECT_EQ(0, first->version);
  EXPECT_EQ(log_id, Bytes(std::begin(first->logID), std::end(first->logID)));
  EXPECT_EQ(0x19ABCDEF012U, first->timestamp);
  EXPECT_EQ(nullptr, first->extensions);
  EXPECT_EQ(4, first->hashAlgorithm);
  EXPECT_EQ(3, first->signatureAlgorithm);
  EXPECT_EQ(hex("30 00"), value(first->signature));
  EXPECT_EQ(nullptr, first->opaque);
  const auto *second = &element_of<pki_SignedCertificateTimestamp>(timestamps.get(), 1);
  EXPECT_EQ(hex("AA BB CC"), value(second->extensions));
  EXPECT_EQ(8, second->hashAlgorithm);
  EXPECT_EQ(7, second->signatureAlgorithm);
  EXPECT_EQ(0U, second->signature->length);
}

TEST(SignedCertificateTimestampListForm, KeepsOtherVersionsWhole) {
  const auto timestamps = expect_kept(family, list(vector(hex("01 AB CD")) + vector(hex("FF"))));
  const auto *first = &element_of<pki_SignedCertificateTimestamp>(timestamps.get(), 0);
  EXPECT_EQ(1, first->version);
  EXPECT_EQ(hex("AB CD"), value(first->opaque));
  EXPECT_EQ(nullptr, first->signature);
  const auto *second = &element_of<pki_SignedCertificateTimestamp>(timestamps.get(), 1);
  EXPECT_EQ(255, second->version);
  EXPECT_EQ(0U, second->opaque->length);
}

TEST(SignedCertificateTimestampListForm, RefusesWhatIsCutOrLeftOver) {
  const Bytes whole = list(vector(plain));
  for (size_t size = 0; size < whole.size(); ++size) expect_form_refused(family, cut(whole, size));
  // The same where all lengths around the cut fit it.
  for (const Bytes &timestamp : {plain, extended}) {
    for (size_t size = 0; size < timestamp.size(); ++size) {
      SCOPED_TRACE(size);
      expect_form_refused(family, list(vector(cut(timestamp, size))));
      expect_form_refused(family, list(vector(plain) + vector(cut(timestamp, size))));
    }
    expect_form_refused(family, list(vector(timestamp + hex("00"))));
  }
  expect_form_refused(family, list({}));
  expect_form_refused(family, list(vector({})));
  expect_form_refused(family, list(vector(plain) + hex("00")));
  expect_form_refused(family, hex("04 00"));
  expect_form_refused(family, element(4, vector(vector(plain)) + hex("00")));
  expect_form_refused(family, element(4, hex("00 02") + vector(hex("FF"))));
}

TEST(SignedCertificateTimestampListForm, RefusesOtherElements) {
  const Bytes content = vector(vector(plain));
  expect_form_refused(family, element(5, content));
  expect_form_refused(family, element(0x84, content));
  expect_form_refused(family, element(0x24, element(4, content)));
  decoded(family, element(0x84, content), 0, 0x84);
}

TEST(SignedCertificateTimestampListForm, ReadsAsManyOctetsAsALengthCounts) {
  const Bytes largest = list(vector(hex("01") + Bytes(65532, 0xAB)));
  EXPECT_EQ(65532U,
            element_of<pki_SignedCertificateTimestamp>(expect_kept(family, largest).get(), 0)
                .opaque->length);
}

/// A list of one record.
Held<List> list_with(pki_SignedCertificateTimestamp *record) {
  return {list_of({record}), family.free};
}

OctetString *octets(uint32_t count) { return asn1_OctetString_new(count); }

TEST(SignedCertificateTimestampListForm, IsWrittenFromItsFields) {
  pki_SignedCertificateTimestamp *const record = pki_SignedCertificateTimestamp_new();
  const auto timestamps = list_with(record);
  EXPECT_EQ(Bytes(), encoded(family, timestamps));  // no signature
  std::copy(log_id.begin(), log_id.end(), record->logID);
  record->timestamp = 0x19ABCDEF012;
  record->hashAlgorithm = 4;
  record->signatureAlgorithm = 3;
  const uint8_t signature[] = {0x30, 0x00};
  record->signature = asn1_ASN1String_new(2, signature);
  EXPECT_EQ(list(vector(plain)), encoded(family, timestamps));
  record->extensions = octets(0);
  EXPECT_EQ(list(vector(plain)), encoded(family, timestamps));
}

TEST(SignedCertificateTimestampListForm, IsNotWrittenWithoutElementsNorPastItsLengths) {
  EXPECT_EQ(0U, family.encode(nullptr, nullptr));
  const Held<List> none{List_new(0), family.free};
  EXPECT_EQ(Bytes(), encoded(family, none));
  const Held<List> null{list_of({nullptr}), family.free};
  EXPECT_EQ(Bytes(), encoded(family, null));

  pki_SignedCertificateTimestamp *const other = pki_SignedCertificateTimestamp_new();
  const auto one = list_with(other);
  other->version = 1;
  EXPECT_EQ(Bytes(), encoded(family, one));
  // The version and two lengths leave 65532 of 65535 octets.
  other->opaque = octets(65532);
  EXPECT_EQ(list(vector(hex("01") + Bytes(65532, 0))), encoded(family, one));
  asn1_OctetString_free(other->opaque);
  other->opaque = octets(65533);
  EXPECT_EQ(Bytes(), encoded(family, one));

  pki_SignedCertificateTimestamp *const first = pki_SignedCertificateTimestamp_new();
  const auto long_extensions = list_with(first);
  first->signature = octets(2);
  first->extensions = octets(65536);
  EXPECT_EQ(Bytes(), encoded(family, long_extensions));
}

TEST(SignedCertificateTimestampForm, CopiesWhatItHas) {
  EXPECT_EQ(nullptr, pki_SignedCertificateTimestamp_clone(nullptr));
  pki_SignedCertificateTimestamp_free(nullptr);
  pki_SignedCertificateTimestamp *const record = pki_SignedCertificateTimestamp_new();
  record->timestamp = 7;
  record->logID[31] = 9;
  pki_SignedCertificateTimestamp *const copy = pki_SignedCertificateTimestamp_clone(record);
  pki_SignedCertificateTimestamp_free(record);
  EXPECT_EQ(7U, copy->timestamp);
  EXPECT_EQ(9, copy->logID[31]);
  EXPECT_EQ(nullptr, copy->signature);
  pki_SignedCertificateTimestamp_free(copy);
}

TEST(SignedCertificateTimestampListForm, IsExplained) {
  const pki_Type *const type = pki_Type_find("SignedCertificateTimestampList");
  ASSERT_NE(nullptr, type);
  EXPECT_EQ(PKI_TLS_LIST, pki_Type_kind(type));
  const auto fault_of = [type](const Bytes &octets) {
    pki_Fault fault{};
    EXPECT_EQ(1, pki_explain(type, octets.data(), octets.data() + octets.size(), &fault));
    return std::to_string(fault.offset) + ": " + fault.sentence;
  };
  EXPECT_EQ("2: a list without elements", fault_of(list({})));
  EXPECT_EQ("4: a timestamp without octets", fault_of(list(vector({}))));
  EXPECT_EQ("55: a timestamp that ends inside a field",
            fault_of(list(vector(plain) + vector(cut(plain, 5)))));
  EXPECT_EQ("4: octets past the signature of a timestamp",
            fault_of(list(vector(plain + hex("00")))));
  EXPECT_EQ("4: an element that reaches past its list", fault_of(list(hex("00 02 FF"))));
  EXPECT_EQ("7: octets past the list", fault_of(element(4, vector(hex("00 01 FF")) + hex("00"))));
  EXPECT_EQ("2: a list that is not as long as its length says", fault_of(hex("04 02 00 01")));
}

TEST(SignedCertificateTimestampListForm, HasNoEncodingWhereARecordIsNotFilled) {
  uint8_t octet = 0xFF;
  OctetString good{1, &octet}, none{1, nullptr}, large{0x10000, &octet}, half{0x8000, &octet};
  pki_SignedCertificateTimestamp record{};
  List *const timestamps = List_new(0);
  ASSERT_EQ(1, List_append(timestamps, &record, 0));
  const auto measured = [timestamps] {
    return pki_SignedCertificateTimestampList_e(nullptr, timestamps);
  };
  record.signature = &good;
  // 1 + 32 + 8 + 2 + 2 + 2 octets and the signature's; the vectors' lengths, and a header of two.
  EXPECT_EQ(48U + 4 + 2, measured());
  for (OctetString *const wrong : {&none, &large}) {
    record.signature = wrong;
    EXPECT_EQ(0U, measured());
    record.signature = &good;
    record.extensions = wrong;
    EXPECT_EQ(0U, measured());
    record.extensions = nullptr;
    record.version = 1;
    record.opaque = wrong;
    EXPECT_EQ(0U, measured());
    record.version = 0;
  }
  record.extensions = record.signature = &half;
  EXPECT_EQ(0U, measured());
  record.signature = nullptr;
  EXPECT_EQ(0U, measured());
  List_free(timestamps, nullptr);
}

#ifndef ORVELASN1_TESTS_SANITIZED

// The list grows past what it holds without memory of its own.
TEST(SignedCertificateTimestampListForm, FailsAtEachAllocation) {
  Bytes elements;
  for (int i = 0; i < 40; ++i) elements = elements + vector(hex("01 AB"));
  const Bytes octets = list(elements);
  EXPECT_LT(120, support::expect_failure_at_each_allocation([&] {
              List *made = nullptr;
              const uint8_t *const end = octets.data() + octets.size();
              const bool read =
                  pki_SignedCertificateTimestampList_d(octets.data(), end, 0, &made, 0) == end;
              pki_SignedCertificateTimestampList_free(made);
              return read;
            }));
}

#endif

}  // namespace

}  // namespace rfc6962_test
