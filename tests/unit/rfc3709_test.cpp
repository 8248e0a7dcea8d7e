// Logotypes (RFC 3709, 4.1). The octets are made by hand.
#include "forms.h"

namespace rfc3709_test {

namespace {

using support::Bytes;
using support::created;
using support::dotted;
using support::element;
using support::element_of;
using support::encoded;
using support::expect_exact;
using support::expect_form_refused;
using support::expect_kept;
using support::expect_unfilled;
using support::hex;
using support::sequence;
using support::text;
using support::value;
using support::operator+;

const Bytes algorithm = sequence(hex("06 05 2B 0E 03 02 1A"));
const Bytes hash = sequence(algorithm + hex("04 02 12 34"));
const Bytes uri = element(22, text("http://a/"));
const Bytes details = sequence(element(22, text("image/gif")) + sequence(hash) + sequence(uri));
const Bytes sizes = hex("02 01 10 02 01 20 02 01 40");
const Bytes data_content = sequence(sequence(details));
const Bytes direct = element(0xA0, data_content);
const Bytes indirect = element(0xA1, sequence(hash) + sequence(uri));

TEST(HashAlgAndValueForm, HasBothFields) {
  const auto family = FORM(HashAlgAndValue, HashAlgAndValue);
  expect_exact(family, 0x30, algorithm + hex("04 02 12 34"));
  const auto record = expect_kept(family, hash);
  EXPECT_EQ("1.3.14.3.2.26", dotted(record->hashAlg->algorithm));
  EXPECT_EQ(hex("12 34"), value(record->hashValue));
  expect_unfilled(family);
  expect_form_refused(family, sequence(algorithm));
}

TEST(LogotypeDetailsForm, HasItsThreeFields) {
  const auto family = FORM(LogotypeDetails, LogotypeDetails);
  expect_exact(family, 0x30, element(22, text("image/gif")) + sequence(hash) + sequence(uri + uri));
  const auto record = expect_kept(family, details);
  EXPECT_EQ(text("image/gif"), value(record->mediaType));
  EXPECT_EQ(hex("12 34"), value(element_of<HashAlgAndValue>(record->logotypeHash, 0).hashValue));
  EXPECT_EQ(text("http://a/"), value(&element_of<IA5String>(record->logotypeURI, 0)));
  expect_unfilled(family);
  expect_form_refused(family, sequence(element(22, text("image/gif")) + sequence(hash)));
}

TEST(LogotypeReferenceForm, HasHashesAndPlaces) {
  const auto family = FORM(LogotypeReference, LogotypeReference);
  expect_exact(family, 0x30, sequence(hash + hash) + sequence(uri));
  const auto record = expect_kept(family, sequence(sequence(hash + hash) + sequence(uri)));
  EXPECT_EQ(2, List_len(record->refStructHash));
  EXPECT_EQ(1, List_len(record->refStructURI));
  expect_unfilled(family);
  expect_form_refused(family, sequence(sequence(hash)));
}

TEST(LogotypeImageInfoForm, LacksEachOptionalField) {
  const auto family = FORM(LogotypeImageInfo, LogotypeImageInfo);
  const Bytes type = hex("80 01 00"), bits = hex("81 01 08"), table = hex("82 02 01 00"),
              language = hex("84 02 65 6E");
  expect_exact(family, 0x30, type + sizes + bits + language);
  const auto all = expect_kept(family, sequence(type + sizes + bits + language));
  EXPECT_EQ(0U, asn1_Integer_get(all->type));
  EXPECT_EQ(16U, asn1_Integer_get(all->fileSize));
  EXPECT_EQ(32U, asn1_Integer_get(all->xSize));
  EXPECT_EQ(64U, asn1_Integer_get(all->ySize));
  EXPECT_EQ(1, all->resolution->kind);
  EXPECT_EQ(8U, asn1_Integer_get(static_cast<const Integer *>(all->resolution->value)));
  EXPECT_EQ(text("en"), value(all->language));
  const auto with_table = expect_kept(family, sequence(sizes + table));
  EXPECT_EQ(nullptr, with_table->type);
  EXPECT_EQ(2, with_table->resolution->kind);
  EXPECT_EQ(256U, asn1_Integer_get(static_cast<const Integer *>(with_table->resolution->value)));
  EXPECT_EQ(nullptr, with_table->language);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(sizes + language))->resolution);
  expect_kept(family, sequence(sizes));
  expect_kept(family, sequence(type + sizes));
  // A default that was written out stays.
  expect_kept(family, sequence(hex("80 01 01") + sizes));
  expect_unfilled(family);
  expect_form_refused(family, sequence(sizes + bits + table));
  expect_form_refused(family, sequence(sizes + language + bits));
  expect_form_refused(family, sequence(sizes + hex("02 01 08")));
  expect_form_refused(family, sequence(sizes + hex("16 02 65 6E")));
  expect_form_refused(family, sequence(hex("02 01 10 02 01 20")));
}

TEST(LogotypeImageResolutionForm, IsOneOfTwoNumbers) {
  const auto family = FORM(LogotypeImageResolution, LogotypeImageResolution);
  EXPECT_EQ(1, expect_kept(family, hex("81 01 08"))->kind);
  EXPECT_EQ(2, expect_kept(family, hex("82 02 01 00"))->kind);
  expect_unfilled(family);
  for (const char *octets : {"02 01 08", "80 01 08", "83 01 08", "A1 01 08", "41 01 08", "81 00"}) {
    expect_form_refused(family, hex(octets));
  }
}

TEST(LogotypeAudioInfoForm, LacksEachOptionalField) {
  const auto family = FORM(LogotypeAudioInfo, LogotypeAudioInfo);
  const Bytes rate = hex("83 02 3E 80"), language = hex("84 02 65 6E");
  expect_exact(family, 0x30, sizes + rate + language);
  const auto all = expect_kept(family, sequence(sizes + rate + language));
  EXPECT_EQ(16U, asn1_Integer_get(all->fileSize));
  EXPECT_EQ(32U, asn1_Integer_get(all->playTime));
  EXPECT_EQ(64U, asn1_Integer_get(all->channels));
  EXPECT_EQ(16000U, asn1_Integer_get(all->sampleRate));
  EXPECT_EQ(text("en"), value(all->language));
  EXPECT_EQ(nullptr, expect_kept(family, sequence(sizes + rate))->language);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(sizes + language))->sampleRate);
  expect_kept(family, sequence(sizes));
  expect_unfilled(family);
  expect_form_refused(family, sequence(sizes + language + rate));
}

TEST(LogotypeImageAndAudioForms, HaveInformationOrNot) {
  const auto image = FORM(LogotypeImage, LogotypeImage);
  const auto audio = FORM(LogotypeAudio, LogotypeAudio);
  expect_exact(image, 0x30, details + sequence(sizes));
  expect_exact(audio, 0x30, details + sequence(sizes));
  EXPECT_NE(nullptr, expect_kept(image, sequence(details + sequence(sizes)))->imageInfo);
  EXPECT_EQ(nullptr, expect_kept(image, sequence(details))->imageInfo);
  EXPECT_NE(nullptr, expect_kept(audio, sequence(details + sequence(sizes)))->audioInfo);
  EXPECT_EQ(nullptr, expect_kept(audio, sequence(details))->audioInfo);
  expect_unfilled(image);
  expect_unfilled(audio);
}

TEST(LogotypeDataForm, HasImagesAndSounds) {
  const auto family = FORM(LogotypeData, LogotypeData);
  const Bytes images = sequence(sequence(details) + sequence(details + sequence(sizes)));
  const Bytes sounds = element(0xA1, sequence(details + sequence(sizes + hex("83 01 05"))));
  expect_exact(family, 0x30, images + sounds);
  const auto both = expect_kept(family, sequence(images + sounds));
  EXPECT_EQ(2, List_len(both->image));
  // Each element is written from its own list.
  EXPECT_EQ(5U, asn1_Integer_get(element_of<LogotypeAudio>(both->audio, 0).audioInfo->sampleRate));
  EXPECT_EQ(nullptr, expect_kept(family, sequence(images))->audio);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(sounds))->image);
  expect_unfilled(family, hex("30 00"));
  expect_form_refused(family, sequence(sounds + images));
  expect_form_refused(family, sequence(element(0xA1, sequence(sequence(details)))));
}

TEST(LogotypeInfoForm, IsDirectOrIndirect) {
  const auto family = FORM(LogotypeInfo, LogotypeInfo);
  EXPECT_EQ(0, expect_kept(family, direct)->kind);
  EXPECT_EQ(1, expect_kept(family, indirect)->kind);
  expect_unfilled(family);
  expect_form_refused(family, element(0xA2, data_content));
  expect_form_refused(family, element(0xA0, sequence(data_content)));
  expect_form_refused(family, sequence(data_content));
  const auto record = created(family);
  record->kind = 1;
  EXPECT_EQ(Bytes(), encoded(family, record));
}

TEST(LogotypeExtnForm, HasItsFourFieldsUnderExplicitTags) {
  const auto family = FORM(LogotypeExtn, LogotypeExtn);
  const auto other_family = FORM(OtherLogotypeInfo, OtherLogotypeInfo);
  const Bytes other = hex("06 03 2A 03 04") + indirect;
  const Bytes community = element(0xA0, sequence(direct + indirect));
  const Bytes issuer = element(0xA1, direct), subject = element(0xA2, indirect);
  const Bytes others = element(0xA3, sequence(sequence(other)));
  expect_exact(other_family, 0x30, other);
  expect_unfilled(other_family);
  expect_exact(family, 0x30, community + issuer + subject + others);
  const auto all = expect_kept(family, sequence(community + issuer + subject + others));
  ASSERT_EQ(2, List_len(all->communityLogos));
  EXPECT_EQ(1, element_of<LogotypeInfo>(all->communityLogos, 1).kind);
  EXPECT_EQ(0, all->issuerLogo->kind);
  EXPECT_EQ(1, all->subjectLogo->kind);
  EXPECT_EQ("1.2.3.4", dotted(element_of<OtherLogotypeInfo>(all->otherLogos, 0).logotypeType));
  EXPECT_EQ(1, element_of<OtherLogotypeInfo>(all->otherLogos, 0).info->kind);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(community))->otherLogos);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(issuer))->communityLogos);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(subject))->issuerLogo);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(others))->subjectLogo);
  expect_unfilled(family, hex("30 00"));
  expect_form_refused(family, sequence(element(0xA0, direct)));
  expect_form_refused(family, sequence(element(0xA1, direct + direct)));
  expect_form_refused(family, sequence(element(0xA3, sequence(direct))));
  expect_form_refused(family, sequence(subject + issuer));
}

}  // namespace

}  // namespace rfc3709_test
