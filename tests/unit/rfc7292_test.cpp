// Stores of keys and certificates in the form of RFC 7292. The octets are made by hand.
#include <forms.h>

namespace rfc7292_test {

namespace {

using namespace support;

const auto stores = FORM(PFX, pki_PFX);
const auto macs = FORM(MacData, MacData);
const auto bags = FORM(SafeBag, SafeBag);
const auto certificate_bags = FORM(CertBag, CertBag);
const auto revocation_bags = FORM(CRLBag, CRLBag);
const auto secret_bags = FORM(SecretBag, SecretBag);
const auto key_parameters = FORM(PbeParams, PbeParams);
const RecordFamily<List> safes = {[] { return List_new(0); }, pki_AuthenticatedSafe_free,
                                  pki_AuthenticatedSafe_e, pki_AuthenticatedSafe_d,
                                  pki_AuthenticatedSafe_clone};
const RecordFamily<List> bag_lists = {[] { return List_new(0); }, pki_SafeContents_free,
                                      pki_SafeContents_e, pki_SafeContents_d,
                                      pki_SafeContents_clone};

const Bytes data = hex("06 09 2A 86 48 86 F7 0D 01 07 01");
const Bytes own_type = hex("06 03 2A 03 04");
const Bytes octets = hex("04 02 AB CD");
const Bytes content = sequence(data + element(0xA0, octets));
const Bytes sha256 = sequence(hex("06 09 60 86 48 01 65 03 04 02 01 05 00"));
const Bytes digest = sequence(sha256 + hex("04 02 01 02"));
const Bytes friendly_name =
    sequence(hex("06 09 2A 86 48 86 F7 0D 01 09 14") + element(0x31, hex("1E 02 00 41")));

TEST(Store, HasItsFieldsInTheirPlaces) {
  const auto store = expect_kept(
      stores, sequence(hex("02 01 03") + content + sequence(digest + hex("04 01 07 02 02 08 00"))));
  EXPECT_EQ(3U, asn1_Integer_get(store->version));
  EXPECT_EQ(octets, value(store->authSafe->content));
  EXPECT_EQ(hex("01 02"), value(store->macData->mac->digest));
  EXPECT_EQ(hex("07"), value(store->macData->macSalt));
  EXPECT_EQ(2048U, asn1_Integer_get(store->macData->iterations));
}

TEST(Store, MayHaveNoCode) {
  EXPECT_EQ(nullptr, expect_kept(stores, sequence(hex("02 01 03") + content))->macData);
}

TEST(Store, OfIndefiniteLengthIsWrittenInDerButForItsContent) {
  const Bytes segments = hex("24 80 04 01 AB 04 01 CD 00 00");
  const auto store = expect_written(
      stores,
      hex("30 80 02 01 03 30 80") + data + hex("A0 80") + segments + hex("00 00 00 00 00 00"),
      sequence(hex("02 01 03") + sequence(data + element(0xA0, segments))));
  EXPECT_EQ(segments, value(store->authSafe->content));
}

TEST(Store, IsRefused) {
  for (const Bytes &fields :
       {hex("02 01 03"), content, hex("02 01 03") + content + hex("05 00"),
        hex("02 01 03") + content + sequence(digest),
        hex("02 01 03") + content + sequence(digest + octets) + hex("02 01 03")}) {
    expect_form_refused(stores, sequence(fields));
  }
}

TEST(StoreCode, KeepsADefaultThatWasWrittenOut) {
  EXPECT_EQ(nullptr, expect_kept(macs, sequence(digest + octets))->iterations);
  const auto mac = expect_kept(macs, sequence(digest + octets + hex("02 01 01")));
  EXPECT_EQ(1U, asn1_Integer_get(mac->iterations));
  expect_form_refused(macs, sequence(digest + octets + hex("02 01 01 02 01 01")));
}

TEST(Safe, IsAListOfContents) {
  const auto safe = expect_kept(safes, sequence(content + sequence(own_type)));
  ASSERT_EQ(2, List_len(safe.get()));
  EXPECT_EQ(octets, value(element_of<const pki_ContentInfo>(safe.get(), 0).content));
  EXPECT_EQ(nullptr, element_of<const pki_ContentInfo>(safe.get(), 1).content);
  expect_kept(safes, hex("30 00"));
  expect_form_refused(safes, sequence(content + hex("05 00")));
  expect_form_refused(safes, content);
}

TEST(Bag, HasAttributes) {
  const auto bag = expect_kept(
      bags, sequence(own_type + element(0xA0, sequence(octets)) + element(0x31, friendly_name)));
  EXPECT_EQ(own_type, encode(asn1_ObjId_e, bag->bagId));
  EXPECT_EQ(sequence(octets), value(bag->bagValue));
  ASSERT_EQ(1, List_len(bag->bagAttributes));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_friendlyName(),
                              element_of<const Attribute>(bag->bagAttributes, 0).type));
}

TEST(Bag, MayHaveNone) {
  EXPECT_EQ(nullptr, expect_kept(bags, sequence(own_type + element(0xA0, octets)))->bagAttributes);
  const auto list = expect_kept(bag_lists, sequence(sequence(own_type + element(0xA0, octets)) +
                                                    sequence(own_type + element(0xA0, content))));
  ASSERT_EQ(2, List_len(list.get()));
  EXPECT_EQ(content, value(element_of<const SafeBag>(list.get(), 1).bagValue));
}

TEST(Bag, IsRefused) {
  for (const Bytes &fields :
       {own_type, own_type + hex("A0 00"), own_type + octets, element(0xA0, octets),
        own_type + element(0xA0, octets + octets), own_type + element(0xA0, octets) + hex("05 00"),
        own_type + element(0xA0, octets) + hex("31 02 05 00"),
        own_type + element(0xA0, octets) + hex("30 00")}) {
    expect_form_refused(bags, sequence(fields));
  }
}

/// Checks that the octets are zeroed when the record is released.
template <class T>
void expect_wiped(Held<T> record, const Any *secret) {
  const Bytes zeros(secret->length, 0);
  ASSERT_NE(zeros, value(secret));
  const ReleaseWatch watch(secret->data, secret->length);
  record.reset();
  EXPECT_TRUE(watch.released());
  EXPECT_EQ(zeros, watch.octets());
}

TEST(Bag, IsWiped) {
  auto bag = decoded(bags, sequence(own_type + element(0xA0, sequence(octets))));
  const Any *const secret = bag->bagValue;
  expect_wiped(std::move(bag), secret);
}

TEST(SecretBagValue, IsWiped) {
  auto bag = expect_kept(secret_bags, sequence(own_type + element(0xA0, octets)));
  EXPECT_EQ(own_type, encode(asn1_ObjId_e, bag->secretTypeId));
  const Any *const secret = bag->secretValue;
  expect_wiped(std::move(bag), secret);
}

TEST(BagValues, AreWholeElements) {
  const Bytes bag = sequence(own_type + element(0xA0, octets));
  const auto certificate = expect_kept(certificate_bags, bag);
  EXPECT_EQ(own_type, encode(asn1_ObjId_e, certificate->certId));
  EXPECT_EQ(octets, value(certificate->certValue));
  const auto list = expect_kept(revocation_bags, bag);
  EXPECT_EQ(own_type, encode(asn1_ObjId_e, list->crlId));
  EXPECT_EQ(octets, value(list->crlValue));
  for (const Bytes &fields : {own_type, own_type + octets, own_type + hex("A0 00"),
                              own_type + element(0xA0, octets) + hex("05 00")}) {
    expect_form_refused(certificate_bags, sequence(fields));
    expect_form_refused(revocation_bags, sequence(fields));
    expect_form_refused(secret_bags, sequence(fields));
  }
}

TEST(KeyParameters, AreSaltAndIterations) {
  const auto parameters = expect_kept(key_parameters, sequence(octets + hex("02 02 08 00")));
  EXPECT_EQ(hex("AB CD"), value(parameters->salt));
  EXPECT_EQ(2048U, asn1_Integer_get(parameters->iterations));
  expect_form_refused(key_parameters, sequence(octets));
}

}  // namespace

}  // namespace rfc7292_test
