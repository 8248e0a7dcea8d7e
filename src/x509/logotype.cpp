// The logotype extension of certificates (RFC 3709), write only.
#include "core/export.h"
#include "core/list.h"
#include "x509/x509.h"

using namespace asn1;

namespace {

/// An image written as an audio record, field by field in the order of both.
uint32_t encode_image_as_audio(uint8_t **pp, const void *element) {
  const auto *const image = static_cast<const LogotypeImage *>(element);
  const LogotypeImageInfo *const source = image->imageInfo;
  uint8_t language_octets[4];
  IA5String language = {0, language_octets};
  LogotypeAudioInfo info = {};
  const LogotypeAudio audio = {image->imageDetails, source == nullptr ? nullptr : &info};
  if (source != nullptr) {
    info = {source->type, source->fileSize, source->xSize, source->ySize, nullptr};
    // A resolution is a language of `kind` octets, which are the low octets of the length of its
    // number. One of another kind, or without a number, has ended the encoder before.
    const LogotypeImageResolution *const resolution = source->resolution;
    if (resolution != nullptr) {
      const uint32_t length = static_cast<const Integer *>(resolution->value)->length;
      // cppcheck-suppress unreadVariable // read as the data of `language`
      for (int i = 0; i < 4; ++i) language_octets[i] = static_cast<uint8_t>(length >> (8 * i));
      language.length = resolution->kind;
      info.language = &language;
    }
  }
  return asn1_LogotypeAudio_e(pp, &audio);
}

uint32_t encode_images_as_audio(uint8_t **pp, const List *images) {
  return encode_list(pp, tag::context | 1, images, encode_image_as_audio);
}

const LogotypeData &logotype_data(const void *record) {
  return *static_cast<const LogotypeData *>(record);
}

/// The second element of LogotypeData: written where there is a list of audio records, but from the
/// images.
constexpr FieldFunctions audio_functions{
    .measure =
        [](const Field &, const void *record, Measure &size) {
          const LogotypeData &data = logotype_data(record);
          return data.audio == nullptr || size.add(encode_images_as_audio(nullptr, data.image));
        },
    .write =
        [](const Field &, BackWriter &out, const void *record) {
          const LogotypeData &data = logotype_data(record);
          if (data.audio == nullptr) return;
          out.element([&](uint8_t **pp) { return encode_images_as_audio(pp, data.image); });
        }};

const LogotypeExtn &logotype_extn(const void *record) {
  return *static_cast<const LogotypeExtn *>(record);
}

/// The last element of LogotypeExtn, which comes with the community logos and only with them:
/// without a list of its own it fails then.
constexpr FieldFunctions other_logos_functions{
    .measure =
        [](const Field &field, const void *record, Measure &size) {
          const LogotypeExtn &extn = logotype_extn(record);
          if (extn.communityLogos == nullptr) return true;
          return extn.otherLogos != nullptr && size.add(measure_tagged(field, extn.otherLogos));
        },
    .write =
        [](const Field &field, BackWriter &out, const void *record) {
          const LogotypeExtn &extn = logotype_extn(record);
          if (extn.communityLogos != nullptr) write_tagged(field, out, extn.otherLogos);
        }};

}  // namespace

// clang-format off

using URIsCodec = SequenceOf<IA5StringCodec>;

// HashAlgAndValue ::= SEQUENCE {
//   hashAlg    AlgorithmIdentifier,
//   hashValue  OCTET STRING }
using HashAlgAndValueTable = Sequence<HashAlgAndValue,
    Required<&HashAlgAndValue::hashAlg, AlgIdCodec>,
    Required<&HashAlgAndValue::hashValue, OctetStringCodec>>;
EXPORT(HashAlgAndValue, HashAlgAndValueTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)
using HashesCodec = SequenceOf<HashAlgAndValueCodec>;

// LogotypeDetails ::= SEQUENCE {
//   mediaType     IA5String,
//   logotypeHash  SEQUENCE OF HashAlgAndValue,
//   logotypeURI   SEQUENCE OF IA5String }
using LogotypeDetailsTable = Sequence<LogotypeDetails,
    Required<&LogotypeDetails::mediaType, IA5StringCodec>,
    Required<&LogotypeDetails::logotypeHash, HashesCodec>,
    Required<&LogotypeDetails::logotypeURI, URIsCodec>>;
EXPORT(LogotypeDetails, LogotypeDetailsTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)

// LogotypeReference ::= SEQUENCE {
//   refStructHash  SEQUENCE OF HashAlgAndValue,
//   refStructURI   SEQUENCE OF IA5String }
using LogotypeReferenceTable = Sequence<LogotypeReference,
    Required<&LogotypeReference::refStructHash, HashesCodec>,
    Required<&LogotypeReference::refStructURI, URIsCodec>>;
EXPORT(LogotypeReference, LogotypeReferenceTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)

// LogotypeImageResolution ::= CHOICE {
//   numBits    INTEGER,
//   tableSize  INTEGER }
//
// Neither alternative has a tag of its own.
using LogotypeImageResolutionTable = Choice<LogotypeImageResolution, UnknownKind::fails,
    Alternative<1, "numBits", IntegerCodec>,
    Alternative<2, "tableSize", IntegerCodec>>;
EXPORT(LogotypeImageResolution, LogotypeImageResolutionTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)

// LogotypeImageInfo ::= SEQUENCE {
//   type        [0] IMPLICIT INTEGER OPTIONAL,
//   fileSize        INTEGER,
//   xSize           INTEGER,
//   ySize           INTEGER,
//   resolution      LogotypeImageResolution OPTIONAL,
//   language        IA5String OPTIONAL }
using LogotypeImageInfoTable = Sequence<LogotypeImageInfo,
    Optional<&LogotypeImageInfo::type, Implicit<0, IntegerCodec>>,
    Required<&LogotypeImageInfo::fileSize, IntegerCodec>,
    Required<&LogotypeImageInfo::xSize, IntegerCodec>,
    Required<&LogotypeImageInfo::ySize, IntegerCodec>,
    Optional<&LogotypeImageInfo::resolution, LogotypeImageResolutionCodec>,
    Optional<&LogotypeImageInfo::language, IA5StringCodec>>;
EXPORT(LogotypeImageInfo, LogotypeImageInfoTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)

// LogotypeImage ::= SEQUENCE {
//   imageDetails  LogotypeDetails,
//   imageInfo     LogotypeImageInfo OPTIONAL }
using LogotypeImageTable = Sequence<LogotypeImage,
    Required<&LogotypeImage::imageDetails, LogotypeDetailsCodec>,
    Optional<&LogotypeImage::imageInfo, LogotypeImageInfoCodec>>;
EXPORT(LogotypeImage, LogotypeImageTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)

// LogotypeAudioInfo ::= SEQUENCE {
//   fileSize        INTEGER,
//   playTime        INTEGER,
//   channels        INTEGER,
//   sampleRate  [3] IMPLICIT INTEGER OPTIONAL,
//   language    [4] IMPLICIT IA5String OPTIONAL }
using LogotypeAudioInfoTable = Sequence<LogotypeAudioInfo,
    Required<&LogotypeAudioInfo::fileSize, IntegerCodec>,
    Required<&LogotypeAudioInfo::playTime, IntegerCodec>,
    Required<&LogotypeAudioInfo::channels, IntegerCodec>,
    Optional<&LogotypeAudioInfo::sampleRate, Implicit<3, IntegerCodec>>,
    Optional<&LogotypeAudioInfo::language, Implicit<4, IA5StringCodec>>>;
EXPORT(LogotypeAudioInfo, LogotypeAudioInfoTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)

// LogotypeAudio ::= SEQUENCE {
//   audioDetails  LogotypeDetails,
//   audioInfo     LogotypeAudioInfo OPTIONAL }
using LogotypeAudioTable = Sequence<LogotypeAudio,
    Required<&LogotypeAudio::audioDetails, LogotypeDetailsCodec>,
    Optional<&LogotypeAudio::audioInfo, LogotypeAudioInfoCodec>>;
EXPORT(LogotypeAudio, LogotypeAudioTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)

// LogotypeData ::= SEQUENCE {
//   image      SEQUENCE OF LogotypeImage OPTIONAL,
//   audio  [1] IMPLICIT SEQUENCE OF LogotypeAudio OPTIONAL }
using LogotypeDataTable = Sequence<LogotypeData,
    Optional<&LogotypeData::image, SequenceOf<LogotypeImageCodec>>,
    ByHand<Optional<&LogotypeData::audio, Implicit<1, SequenceOf<LogotypeAudioCodec>>>, audio_functions>>;
EXPORT(LogotypeData, LogotypeDataTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)

// LogotypeInfo ::= CHOICE {
//   direct    [0] IMPLICIT LogotypeData,
//   indirect  [1] IMPLICIT LogotypeReference }
using LogotypeInfoTable = Choice<LogotypeInfo, UnknownKind::fails,
    Alternative<0, "direct", Implicit<0, LogotypeDataCodec>>,
    Alternative<1, "indirect", Implicit<1, LogotypeReferenceCodec>>>;
EXPORT(LogotypeInfo, LogotypeInfoTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)

// OtherLogotypeInfo ::= SEQUENCE {
//   logotypeType  OBJECT IDENTIFIER,
//   info          LogotypeInfo }
//
// Nothing refers to it: the other logotypes of an extension are LogotypeInfo records.
using OtherLogotypeInfoTable = Sequence<OtherLogotypeInfo,
    Required<&OtherLogotypeInfo::logotypeType, ObjIdCodec>,
    Required<&OtherLogotypeInfo::info, LogotypeInfoCodec>>;
EXPORT(OtherLogotypeInfo, OtherLogotypeInfoTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)

// LogotypeExtn ::= SEQUENCE {
//   communityLogos  [0] EXPLICIT SEQUENCE OF LogotypeInfo OPTIONAL,
//   issuerLogo      [1] EXPLICIT LogotypeInfo OPTIONAL,
//   subjectLogo     [2] EXPLICIT LogotypeInfo OPTIONAL,
//   otherLogos      [3] EXPLICIT SEQUENCE OF LogotypeInfo OPTIONAL }
using LogotypeExtnTable = Sequence<LogotypeExtn,
    Optional<&LogotypeExtn::communityLogos, Explicit<0, SequenceOf<LogotypeInfoCodec>>>,
    Optional<&LogotypeExtn::issuerLogo, Explicit<1, LogotypeInfoCodec>>,
    Optional<&LogotypeExtn::subjectLogo, Explicit<2, LogotypeInfoCodec>>,
    ByHand<Optional<&LogotypeExtn::otherLogos, Explicit<3, SequenceOf<LogotypeInfoCodec>>>, other_logos_functions>>;
EXPORT(LogotypeExtn, LogotypeExtnTable, NEW, NO_DECODER, ENCODER, NO_CLONE, FREE)
