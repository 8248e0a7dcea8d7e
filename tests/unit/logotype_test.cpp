// Tests logotypes, which are only written. The octets are put together by hand.
#include "records.h"

namespace logotype_test {

namespace {

using namespace support;

constexpr RecordFamily<HashAlgAndValue> hashes = {
    asn1_HashAlgAndValue_new, asn1_HashAlgAndValue_free, asn1_HashAlgAndValue_e,
    asn1_HashAlgAndValue_d, asn1_HashAlgAndValue_clone};
constexpr RecordFamily<LogotypeDetails> details = {
    asn1_LogotypeDetails_new, asn1_LogotypeDetails_free, asn1_LogotypeDetails_e,
    asn1_LogotypeDetails_d, asn1_LogotypeDetails_clone};
constexpr RecordFamily<LogotypeReference> references = {
    asn1_LogotypeReference_new, asn1_LogotypeReference_free, asn1_LogotypeReference_e,
    asn1_LogotypeReference_d, asn1_LogotypeReference_clone};
constexpr RecordFamily<LogotypeImageResolution> resolutions = {
    asn1_LogotypeImageResolution_new, asn1_LogotypeImageResolution_free,
    asn1_LogotypeImageResolution_e, asn1_LogotypeImageResolution_d,
    asn1_LogotypeImageResolution_clone};
constexpr RecordFamily<LogotypeImageInfo> image_infos = {
    asn1_LogotypeImageInfo_new, asn1_LogotypeImageInfo_free, asn1_LogotypeImageInfo_e,
    asn1_LogotypeImageInfo_d, asn1_LogotypeImageInfo_clone};
constexpr RecordFamily<LogotypeImage> images = {asn1_LogotypeImage_new, asn1_LogotypeImage_free,
                                                asn1_LogotypeImage_e, asn1_LogotypeImage_d,
                                                asn1_LogotypeImage_clone};
constexpr RecordFamily<LogotypeAudioInfo> audio_infos = {
    asn1_LogotypeAudioInfo_new, asn1_LogotypeAudioInfo_free, asn1_LogotypeAudioInfo_e,
    asn1_LogotypeAudioInfo_d, asn1_LogotypeAudioInfo_clone};
constexpr RecordFamily<LogotypeAudio> audios = {asn1_LogotypeAudio_new, asn1_LogotypeAudio_free,
                                                asn1_LogotypeAudio_e, asn1_LogotypeAudio_d,
                                                asn1_LogotypeAudio_clone};
constexpr RecordFamily<LogotypeData> datas = {asn1_LogotypeData_new, asn1_LogotypeData_free,
                                              asn1_LogotypeData_e, asn1_LogotypeData_d,
                                              asn1_LogotypeData_clone};
constexpr RecordFamily<LogotypeInfo> infos = {asn1_LogotypeInfo_new, asn1_LogotypeInfo_free,
                                              asn1_LogotypeInfo_e, asn1_LogotypeInfo_d,
                                              asn1_LogotypeInfo_clone};
constexpr RecordFamily<OtherLogotypeInfo> other_infos = {
    asn1_OtherLogotypeInfo_new, asn1_OtherLogotypeInfo_free, asn1_OtherLogotypeInfo_e,
    asn1_OtherLogotypeInfo_d, asn1_OtherLogotypeInfo_clone};
constexpr RecordFamily<LogotypeExtn> extensions = {asn1_LogotypeExtn_new, asn1_LogotypeExtn_free,
                                                   asn1_LogotypeExtn_e, asn1_LogotypeExtn_d,
                                                   asn1_LogotypeExtn_clone};

/// Calls `f` with each of the families.
template <class F>
void for_each_family(F f) {
  f(hashes);
  f(details);
  f(references);
  f(resolutions);
  f(image_infos);
  f(images);
  f(audio_infos);
  f(audios);
  f(datas);
  f(infos);
  f(other_infos);
  f(extensions);
}

// ---- records, and what they are on the wire -----------------------------------------------------

IA5String *ia5(const char *characters) { return asn1_ASN1String_new(0, characters); }

HashAlgAndValue *new_hash() {
  auto *hash = asn1_HashAlgAndValue_new();
  hash->hashAlg = asn1_AlgId_new();
  hash->hashAlg->algorithm = decode(asn1_ObjId_d, hex("06 05 2B 0E 03 02 1A")).record;
  hash->hashValue = asn1_ASN1String_new(2, "\xAB\xCD");
  return hash;
}
const Bytes hash_octets = hex("30 0D 30 07 06 05 2B 0E 03 02 1A 04 02 AB CD");

LogotypeDetails *new_details() {
  auto *record = asn1_LogotypeDetails_new();
  record->mediaType = ia5("a/b");
  record->logotypeHash = list_of({new_hash()});
  record->logotypeURI = list_of({ia5("u")});
  return record;
}
const Bytes details_octets =
    hex("30 1B 16 03 61 2F 62 30 0F") + hash_octets + hex("30 03 16 01 75");

LogotypeReference *new_reference() {
  auto *record = asn1_LogotypeReference_new();
  record->refStructHash = list_of({new_hash()});
  record->refStructURI = list_of({ia5("u")});
  return record;
}
const Bytes reference_content = hex("30 0F") + hash_octets + hex("30 03 16 01 75");

LogotypeImageResolution *new_resolution(uint8_t kind, uint32_t number) {
  auto *record = asn1_LogotypeImageResolution_new();
  record->kind = kind;
  record->value = asn1_Integer_set(number);
  return record;
}

/// Returns a record with all fields set and a resolution of kind 1.
LogotypeImageInfo *new_image_info() {
  auto *record = asn1_LogotypeImageInfo_new();
  record->type = asn1_Integer_set(1);
  record->fileSize = asn1_Integer_set(2);
  record->xSize = asn1_Integer_set(3);
  record->ySize = asn1_Integer_set(4);
  record->resolution = new_resolution(1, 5);
  record->language = ia5("en");
  return record;
}
const Bytes image_info_octets =
    hex("30 13 80 01 01 02 01 02 02 01 03 02 01 04 02 01 05 16 02 65 6E");

/// Returns a record with all fields set.
LogotypeAudioInfo *new_audio_info() {
  auto *record = asn1_LogotypeAudioInfo_new();
  record->fileSize = asn1_Integer_set(1);
  record->playTime = asn1_Integer_set(2);
  record->channels = asn1_Integer_set(3);
  record->sampleRate = asn1_Integer_set(4);
  record->language = ia5("en");
  return record;
}
const Bytes audio_info_octets = hex("30 10 02 01 01 02 01 02 02 01 03 83 01 04 84 02 65 6E");

LogotypeImage *new_image(LogotypeImageInfo *info) {
  auto *record = asn1_LogotypeImage_new();
  record->imageDetails = new_details();
  record->imageInfo = info;
  return record;
}

LogotypeAudio *new_audio(LogotypeAudioInfo *info) {
  auto *record = asn1_LogotypeAudio_new();
  record->audioDetails = new_details();
  record->audioInfo = info;
  return record;
}

LogotypeInfo *new_info(uint8_t kind, void *value) {
  auto *record = asn1_LogotypeInfo_new();
  record->kind = kind;
  record->value = value;
  return record;
}
LogotypeInfo *new_empty_info() { return new_info(0, asn1_LogotypeData_new()); }
LogotypeInfo *new_bad_info() { return new_info(2, nullptr); }

template <class T>
Held<T> held(const RecordFamily<T> &family, T *record) {
  return {record, family.free};
}

// ---------------------------------------------------------------------------- decoders and copies

TEST(Logotype, NewRecordsAreZero) {
  for_each_family([](const auto &family) {
    using Record = std::remove_pointer_t<decltype(family.create())>;
    if constexpr (std::has_unique_object_representations_v<Record>) {
      expect_new_record_is_zero(family);
    } else {
      const auto record = created(family);  // a choice
      EXPECT_EQ(0, record->kind);
      EXPECT_EQ(nullptr, record->value);
    }
  });
}

TEST(Logotype, FreeIgnoresNull) {
  for_each_family([](const auto &family) { family.free(nullptr); });
}

TEST(Logotype, DecodersGiveNullAndLeaveThePlaceAlone) {
  for_each_family([](const auto &family) {
    const auto record = created(family);
    for (const Bytes &octets :
         {Bytes(), hex("30 00"), hash_octets, details_octets, hex("A0 00"), hex("02 01 05")}) {
      EXPECT_EQ(record.get(), left_by_refusal(family.decode, octets, record.get()));
      EXPECT_EQ(record.get(), left_by_refusal(family.decode, octets, record.get(), 0xA0));
    }
    EXPECT_EQ(nullptr, family.decode(nullptr, nullptr, 0, nullptr, 0));
  });
}

TEST(Logotype, DecodersTraceNothing) {
  for_each_family([](const auto &family) {
    EXPECT_EQ(Lines{}, traced(family, hex("30 00")));
    EXPECT_EQ(Lines{}, traced(family, hex("30 05")));
  });
}

TEST(Logotype, ClonesGiveNull) {
  for_each_family([](const auto &family) {
    EXPECT_EQ(nullptr, family.clone(nullptr));
    EXPECT_EQ(nullptr, family.clone(created(family).get()));
  });
  EXPECT_EQ(nullptr, asn1_HashAlgAndValue_clone(held(hashes, new_hash()).get()));
  EXPECT_EQ(nullptr, asn1_LogotypeInfo_clone(held(infos, new_empty_info()).get()));
}

// ------------------------------------------------------------------------- hashes, details, reference

TEST(LogotypeHash, IsAnAlgorithmAndOctets) {
  const auto record = held(hashes, new_hash());
  EXPECT_EQ(hash_octets, encoded(hashes, record));

  record->hashAlg->parameters = decode(asn1_Any_d, hex("05 00")).record;
  EXPECT_EQ(hex("30 0F 30 09 06 05 2B 0E 03 02 1A 05 00 04 02 AB CD"), encoded(hashes, record));

  clear(record->hashValue, asn1_OctetString_free);
  record->hashValue = asn1_OctetString_new(0);
  EXPECT_EQ(hex("30 0D 30 09 06 05 2B 0E 03 02 1A 05 00 04 00"), encoded(hashes, record));
}

TEST(LogotypeHash, IsNotEncodedWithoutItsFields) {
  const auto record = held(hashes, new_hash());
  clear(record->hashValue, asn1_OctetString_free);
  expect_nothing_written(hashes, record.get());
  clear(record->hashAlg->algorithm, asn1_ObjId_free);
  expect_nothing_written(hashes, record.get());
}

TEST(LogotypeDetails, AreATypeAndTwoLists) {
  const auto record = held(details, new_details());
  EXPECT_EQ(details_octets, encoded(details, record));

  // The elements are written in list order, whatever they are.
  List_append(record->logotypeURI, ia5("b"), 0);
  List_append(record->logotypeURI, ia5("a"), 0);
  EXPECT_EQ(
      hex("30 21 16 03 61 2F 62 30 0F") + hash_octets + hex("30 09 16 01 75 16 01 62 16 01 61"),
      encoded(details, record));
}

TEST(LogotypeDetails, MayHaveEmptyLists) {
  const auto record = created(details);
  record->mediaType = ia5("a/b");
  record->logotypeHash = List_new(0);
  record->logotypeURI = List_new(0);
  EXPECT_EQ(hex("30 09 16 03 61 2F 62 30 00 30 00"), encoded(details, record));
}

TEST(LogotypeDetails, HaveEmptyListsWhereListsAreMissing) {
  const auto record = created(details);
  record->mediaType = ia5("a/b");
  EXPECT_EQ(hex("30 09 16 03 61 2F 62 30 00 30 00"), encoded(details, record));
}

TEST(LogotypeDetails, AreNotEncodedWhenAFieldFails) {
  const auto record = held(details, new_details());
  List_append(record->logotypeURI, nullptr, 0);
  expect_nothing_written(details, record.get());

  const auto without_hash = held(details, new_details());
  auto *hash = static_cast<HashAlgAndValue *>(List_get(without_hash->logotypeHash, 0));
  clear(hash->hashValue, asn1_OctetString_free);
  expect_nothing_written(details, without_hash.get());

  const auto without_type = held(details, new_details());
  clear(without_type->mediaType, asn1_IA5String_free);
  expect_nothing_written(details, without_type.get());
}

TEST(LogotypeReference, IsTwoLists) {
  const auto record = held(references, new_reference());
  EXPECT_EQ(hex("30 16") + reference_content, encoded(references, record));

  List_append(record->refStructURI, nullptr, 0);
  expect_nothing_written(references, record.get());

  const auto empty = created(references);
  empty->refStructHash = List_new(0);
  empty->refStructURI = List_new(0);
  EXPECT_EQ(hex("30 04 30 00 30 00"), encoded(references, empty));
}

// -------------------------------------------------------------------------------------------- images

TEST(LogotypeResolution, IsAPlainIntegerWhateverItsKind) {
  for (const uint8_t kind : Bytes{1, 2}) {
    const auto record = held(resolutions, new_resolution(kind, 0x1234));
    EXPECT_EQ(hex("02 02 12 34"), encoded(resolutions, record));
  }
}

TEST(LogotypeResolution, IsNotEncodedWithAnotherKindOrWithoutANumber) {
  for (const uint8_t kind : Bytes{0, 3, 255}) {
    const auto record = held(resolutions, new_resolution(kind, 5));
    expect_nothing_written(resolutions, record.get());
    record->kind = 1;  // so that the number is released
  }
  const auto record = created(resolutions);
  for (const uint8_t kind : Bytes{1, 2}) {
    record->kind = kind;
    expect_nothing_written(resolutions, record.get());
  }
}

TEST(LogotypeResolution, OfAnotherKindKeepsItsValueWhenReleased) {
  uint8_t not_owned = 7;
  for (const uint8_t kind : Bytes{0, 3, 255}) {
    const auto record = created(resolutions);
    record->kind = kind;
    record->value = &not_owned;
  }
  EXPECT_EQ(7, not_owned);
}

TEST(LogotypeImageInfo, WritesEachCombinationOfOptionalFields) {
  for (unsigned present = 0; present < 8; ++present) {
    const auto record = held(image_infos, new_image_info());
    const bool type = (present & 1) != 0, resolution = (present & 2) != 0,
               language = (present & 4) != 0;
    if (!type) clear(record->type, asn1_Integer_free);
    if (!resolution) clear(record->resolution, asn1_LogotypeImageResolution_free);
    if (!language) clear(record->language, asn1_IA5String_free);
    const Bytes content = (type ? hex("80 01 01") : Bytes()) + hex("02 01 02 02 01 03 02 01 04") +
                          (resolution ? hex("02 01 05") : Bytes()) +
                          (language ? hex("16 02 65 6E") : Bytes());
    EXPECT_EQ(sequence(content), encoded(image_infos, record));
  }
  EXPECT_EQ(image_info_octets, encoded(image_infos, held(image_infos, new_image_info())));
}

TEST(LogotypeImageInfo, WritesTheLanguageWithoutAContextTag) {
  const Bytes of_image = encoded(image_infos, held(image_infos, new_image_info()));
  const Bytes of_audio = encoded(audio_infos, held(audio_infos, new_audio_info()));
  EXPECT_EQ(hex("16 02 65 6E"), Bytes(of_image.end() - 4, of_image.end()));
  EXPECT_EQ(hex("84 02 65 6E"), Bytes(of_audio.end() - 4, of_audio.end()));
}

TEST(LogotypeImageInfo, IsNotEncodedWithoutARequiredNumber) {
  for (Integer *LogotypeImageInfo::*number :
       {&LogotypeImageInfo::fileSize, &LogotypeImageInfo::xSize, &LogotypeImageInfo::ySize}) {
    const auto record = held(image_infos, new_image_info());
    clear((*record).*number, asn1_Integer_free);
    expect_nothing_written(image_infos, record.get());
  }
  const auto record = held(image_infos, new_image_info());
  clear(record->resolution, asn1_LogotypeImageResolution_free);
  record->resolution = asn1_LogotypeImageResolution_new();
  expect_nothing_written(image_infos, record.get());
}

TEST(LogotypeImage, IsDetailsAndAnOptionalInfo) {
  EXPECT_EQ(hex("30 1D") + details_octets, encoded(images, held(images, new_image(nullptr))));
  EXPECT_EQ(hex("30 32") + details_octets + image_info_octets,
            encoded(images, held(images, new_image(new_image_info()))));
}

TEST(LogotypeImage, IsNotEncodedWhenAFieldFails) {
  expect_nothing_written(images, held(images, new_image(asn1_LogotypeImageInfo_new())).get());
  const auto record = held(images, new_image(new_image_info()));
  clear(record->imageDetails->mediaType, asn1_IA5String_free);
  expect_nothing_written(images, record.get());
}

// --------------------------------------------------------------------------------------------- audio

TEST(LogotypeAudioInfo, WritesEachCombinationOfOptionalFields) {
  for (unsigned present = 0; present < 4; ++present) {
    const auto record = held(audio_infos, new_audio_info());
    const bool rate = (present & 1) != 0, language = (present & 2) != 0;
    if (!rate) clear(record->sampleRate, asn1_Integer_free);
    if (!language) clear(record->language, asn1_IA5String_free);
    const Bytes content = hex("02 01 01 02 01 02 02 01 03") + (rate ? hex("83 01 04") : Bytes()) +
                          (language ? hex("84 02 65 6E") : Bytes());
    EXPECT_EQ(sequence(content), encoded(audio_infos, record));
  }
  EXPECT_EQ(audio_info_octets, encoded(audio_infos, held(audio_infos, new_audio_info())));
}

TEST(LogotypeAudioInfo, IsNotEncodedWithoutARequiredNumber) {
  for (Integer *LogotypeAudioInfo::*number :
       {&LogotypeAudioInfo::fileSize, &LogotypeAudioInfo::playTime, &LogotypeAudioInfo::channels}) {
    const auto record = held(audio_infos, new_audio_info());
    clear((*record).*number, asn1_Integer_free);
    expect_nothing_written(audio_infos, record.get());
  }
}

TEST(LogotypeAudio, IsDetailsAndAnOptionalInfo) {
  EXPECT_EQ(hex("30 1D") + details_octets, encoded(audios, held(audios, new_audio(nullptr))));
  EXPECT_EQ(hex("30 2F") + details_octets + audio_info_octets,
            encoded(audios, held(audios, new_audio(new_audio_info()))));
  expect_nothing_written(audios, held(audios, new_audio(asn1_LogotypeAudioInfo_new())).get());
}

// ---------------------------------------------------------------------------------------------- data

TEST(LogotypeData, MayBeEmpty) { EXPECT_EQ(hex("30 00"), encoded(datas, created(datas))); }

TEST(LogotypeData, WritesItsImages) {
  const auto record = created(datas);
  record->image = List_new(0);
  EXPECT_EQ(hex("30 02 30 00"), encoded(datas, record));

  List_append(record->image, new_image(nullptr), 0);
  List_append(record->image, new_image(new_image_info()), 0);
  EXPECT_EQ(sequence(sequence(hex("30 1D") + details_octets + hex("30 32") + details_octets +
                              image_info_octets)),
            encoded(datas, record));
}

/// Returns the data of one image and a list of audio records.
Held<LogotypeData> data_of(LogotypeImageInfo *info) {
  auto record = created(datas);
  record->image = list_of({new_image(info)});
  record->audio = List_new(0);
  return record;
}

/// Returns the octets of that record, from those of the two forms of the info.
Bytes written_twice(const Bytes &as_image, const Bytes &as_audio) {
  return sequence(sequence(sequence(details_octets + as_image)) +
                  element(0xA1, sequence(details_octets + as_audio)));
}

TEST(LogotypeData, WritesItsImagesAgainAsAudioWhereThereIsAListOfAudio) {
  EXPECT_EQ(written_twice({}, {}), encoded(datas, data_of(nullptr)));
  // The numbers follow the order of the fields. The language has no number.
  const auto record = data_of(new_image_info());
  const Bytes as_audio = hex("30 0F 02 01 01 02 01 02 02 01 03 83 01 04 84 01 01");
  EXPECT_EQ(written_twice(image_info_octets, as_audio), encoded(datas, record));
}

TEST(LogotypeData, DoesNotLookIntoItsListOfAudio) {
  const auto record = data_of(nullptr);
  List_append(record->audio, asn1_LogotypeAudio_new(), 0);
  List_append(record->audio, new_audio(new_audio_info()), 0);
  EXPECT_EQ(written_twice({}, {}), encoded(datas, record));

  clear(record->image, [](List *list) { List_free(list, asn1_LogotypeImage_free); });
  record->image = List_new(0);
  EXPECT_EQ(hex("30 04 30 00 A1 00"), encoded(datas, record));
}

TEST(LogotypeData, WritesAnEmptyAudioElementWithoutImages) {
  const auto record = created(datas);
  record->audio = list_of({new_audio(new_audio_info())});
  EXPECT_EQ(hex("30 02 A1 00"), encoded(datas, record));
}

TEST(LogotypeData, WritesAResolutionAsALanguageOfItsKindsOctetsOfTheLengthOfItsNumber) {
  // The number has only zero octets, so the image has 02 01 00.
  const struct {
    uint8_t kind;
    uint32_t length;
    const char *language;
  } rows[] = {
      {1, 0, "84 01 00"},          {2, 0, "84 02 00 00"},      {1, 1, "84 01 01"},
      {2, 1, "84 02 01 00"},       {1, 255, "84 01 FF"},       {2, 255, "84 02 FF 00"},
      {1, 0x0302, "84 01 02"},     {2, 0x0302, "84 02 02 03"}, {1, 0x10405, "84 01 05"},
      {2, 0x10405, "84 02 05 04"},
  };
  for (const auto &row : rows) {
    auto *info = new_image_info();
    clear(info->language, asn1_IA5String_free);
    auto *resolution = info->resolution;
    resolution->kind = row.kind;
    asn1_Integer_free(static_cast<Integer *>(resolution->value));
    resolution->value = asn1_Integer_new(row.length);
    const Bytes as_image = sequence(hex("80 01 01 02 01 02 02 01 03 02 01 04 02 01 00"));
    const Bytes as_audio = sequence(hex("02 01 01 02 01 02 02 01 03 83 01 04") + hex(row.language));
    EXPECT_EQ(written_twice(as_image, as_audio), encoded(datas, data_of(info))) << row.language;
  }
}

TEST(LogotypeData, HasNoLanguageOfAudioWithoutAResolution) {
  auto *info = new_image_info();
  clear(info->resolution, asn1_LogotypeImageResolution_free);
  EXPECT_EQ(written_twice(sequence(hex("80 01 01 02 01 02 02 01 03 02 01 04 16 02 65 6E")),
                          sequence(hex("02 01 01 02 01 02 02 01 03 83 01 04"))),
            encoded(datas, data_of(info)));
}

TEST(LogotypeData, IsNotEncodedAsAudioWithoutTheTypeOfAnImage) {
  auto *info = new_image_info();
  clear(info->type, asn1_Integer_free);
  const auto record = data_of(info);
  expect_nothing_written(datas, record.get());

  List_free(record->audio, nullptr);
  record->audio = nullptr;
  EXPECT_EQ(
      sequence(sequence(sequence(
          details_octets + sequence(hex("02 01 02 02 01 03 02 01 04 02 01 05 16 02 65 6E"))))),
      encoded(datas, record));
}

TEST(LogotypeData, IsNotEncodedWithAnImageThatFails) {
  for (const uint8_t kind : Bytes{0, 3}) {
    auto *info = new_image_info();
    info->resolution->kind = kind;
    const auto record = data_of(info);
    expect_nothing_written(datas, record.get());
    info->resolution->kind = 1;  // so that the number is released
  }
  auto *info = new_image_info();
  asn1_Integer_free(static_cast<Integer *>(info->resolution->value));
  info->resolution->value = nullptr;
  expect_nothing_written(datas, data_of(info).get());
}

// ------------------------------------------------------------------------------ infos and extensions

TEST(LogotypeInfo, IsDirectUnderA0AndIndirectUnderA1) {
  EXPECT_EQ(hex("A0 00"), encoded(infos, held(infos, new_empty_info())));

  auto *data = asn1_LogotypeData_new();
  data->image = List_new(0);
  EXPECT_EQ(hex("A0 02 30 00"), encoded(infos, held(infos, new_info(0, data))));
  EXPECT_EQ(hex("A1 16") + reference_content,
            encoded(infos, held(infos, new_info(1, new_reference()))));
}

TEST(LogotypeInfo, OfAnotherKindIsNotEncoded) {
  uint8_t not_owned = 7;
  for (const uint8_t kind : Bytes{2, 3, 0x80, 255}) {
    expect_nothing_written(infos, held(infos, new_info(kind, nullptr)).get());
    expect_nothing_written(infos, held(infos, new_info(kind, &not_owned)).get());
  }
  EXPECT_EQ(7, not_owned);  // its value is not released
}

TEST(LogotypeInfo, IsNotEncodedWhenItsValueFails) {
  auto *data = asn1_LogotypeData_new();
  data->image = list_of({new_image(asn1_LogotypeImageInfo_new())});
  expect_nothing_written(infos, held(infos, new_info(0, data)).get());
}

TEST(OtherLogotypeInfo, IsATypeAndAnInfo) {
  const auto record = created(other_infos);
  record->logotypeType = decode(asn1_ObjId_d, hex("06 01 2A")).record;
  record->info = new_info(1, new_reference());
  EXPECT_EQ(hex("30 1B 06 01 2A A1 16") + reference_content, encoded(other_infos, record));

  clear(record->info, asn1_LogotypeInfo_free);
  record->info = new_bad_info();
  expect_nothing_written(other_infos, record.get());
  clear(record->logotypeType, asn1_ObjId_free);
  expect_nothing_written(other_infos, record.get());
}

TEST(LogotypeExtension, WritesOtherLogosWithCommunityLogosOnly) {
  for (unsigned present = 0; present < 16; ++present) {
    const bool community = (present & 1) != 0, issuer = (present & 2) != 0,
               subject = (present & 4) != 0, other = (present & 8) != 0;
    const auto record = created(extensions);
    if (community) record->communityLogos = list_of({new_empty_info(), new_empty_info()});
    if (issuer) record->issuerLogo = new_empty_info();
    if (subject) record->subjectLogo = new_info(1, new_reference());
    if (other) record->otherLogos = list_of({new_empty_info()});
    if (community && !other) {
      expect_nothing_written(extensions, record.get());
      continue;
    }
    EXPECT_EQ(sequence((community ? hex("A0 06 30 04 A0 00 A0 00") : Bytes()) +
                       (issuer ? hex("A1 02 A0 00") : Bytes()) +
                       (subject ? hex("A2 18 A1 16") + reference_content : Bytes()) +
                       (community ? hex("A3 04 30 02 A0 00") : Bytes())),
              encoded(extensions, record));
  }
}

TEST(LogotypeExtension, MayBeEmptyAndHaveEmptyLists) {
  const auto record = created(extensions);
  EXPECT_EQ(hex("30 00"), encoded(extensions, record));
  record->otherLogos = List_new(0);
  EXPECT_EQ(hex("30 00"), encoded(extensions, record));
  record->communityLogos = List_new(0);
  EXPECT_EQ(hex("30 08 A0 02 30 00 A3 02 30 00"), encoded(extensions, record));
}

TEST(LogotypeExtension, OfAnIssuersLogoAloneIsOneElement) {
  const auto record = created(extensions);
  record->issuerLogo = new_info(1, new_reference());
  EXPECT_EQ(hex("30 1A A1 18 A1 16") + reference_content, encoded(extensions, record));
}

TEST(LogotypeExtension, IsNotEncodedWithALogoThatFails) {
  const auto bad_issuer = created(extensions);
  bad_issuer->issuerLogo = new_bad_info();
  expect_nothing_written(extensions, bad_issuer.get());

  const auto bad_subject = created(extensions);
  bad_subject->subjectLogo = new_bad_info();
  expect_nothing_written(extensions, bad_subject.get());

  const auto bad_other = created(extensions);
  bad_other->communityLogos = List_new(0);
  bad_other->otherLogos = list_of({new_empty_info(), new_bad_info()});
  expect_nothing_written(extensions, bad_other.get());
}

TEST(LogotypeExtension, FailsBeforeALaterFieldCanAssert) {
  const auto record = created(extensions);
  record->communityLogos = list_of({new_bad_info()});
  record->issuerLogo = new_info(0, nullptr);
  expect_nothing_written(extensions, record.get());
}

// ------------------------------------------------------------------------------- ends of the process

TEST(LogotypeDeathTest, EncodersEndTheProcessWithoutARecord) {
  for_each_family([](const auto &family) { expect_encoder_ends_the_process(family, nullptr); });
}

TEST(LogotypeDeathTest, EncodersEndTheProcessWithoutARequiredRecord) {
  expect_encoder_ends_the_process(hashes, created(hashes).get());
  expect_encoder_ends_the_process(images, created(images).get());
  expect_encoder_ends_the_process(audios, created(audios).get());
  const auto other = created(other_infos);
  other->logotypeType = decode(asn1_ObjId_d, hex("06 01 2A")).record;
  expect_encoder_ends_the_process(other_infos, other.get());
}

TEST(LogotypeDeathTest, AnInfoAssertsItsValue) {
  for (const uint8_t kind : Bytes{0, 1}) {
    const auto record = held(infos, new_info(kind, nullptr));
    EXPECT_ASSERT(asn1_LogotypeInfo_e(nullptr, record.get()), "asn1_implicit_e", "pElement");
  }
  const auto record = created(extensions);
  record->subjectLogo = new_info(0, nullptr);
  EXPECT_ASSERT(asn1_LogotypeExtn_e(nullptr, record.get()), "asn1_implicit_e", "pElement");
}

// --------------------------------------------------------------------------------- exhausted memory

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(LogotypeMemory, AFailingAllocationGivesNoRecord) {
  for_each_family([](const auto &family) {
    EXPECT_EQ(1, expect_failure_at_each_allocation([&] {
                const auto record = created(family);
                return record != nullptr;
              }));
  });
}

TEST(LogotypeMemory, EncodersAllocateNothing) {
  const auto record = data_of(new_image_info());
  uint8_t octets[256];
  uint8_t *cursor = octets;
  const FailingAllocation none(0);
  const uint32_t measured = asn1_LogotypeData_e(nullptr, record.get());
  const uint32_t written = asn1_LogotypeData_e(&cursor, record.get());
  const bool happened = none.happened();
  EXPECT_NE(0U, measured);
  EXPECT_EQ(measured, written);
  EXPECT_FALSE(happened);
}

#endif

}  // namespace

}  // namespace logotype_test
