// The logotype extension of certificates (RFC 3709), write only.
#include "x509/codecs.h"

using namespace asn1;

namespace {

template <uint8_t Identifier, auto Encode, auto Free>
using WriteOnly = Family<Identifier, Encode, nullptr, nullptr, Free>;

using URIsCodec = SequenceOf<IA5StringCodec>;

// A table has a line for each field.
// clang-format off

// HashAlgAndValue ::= SEQUENCE {
//   hashAlg    AlgorithmIdentifier,
//   hashValue  OCTET STRING }
using HashAlgAndValueSyntax = Sequence<HashAlgAndValue,
    Required<&HashAlgAndValue::hashAlg, AlgIdCodec>,
    Required<&HashAlgAndValue::hashValue, OctetStringCodec>>;
using HashesCodec = SequenceOf<WriteOnly<0x30, asn1_HashAlgAndValue_e, asn1_HashAlgAndValue_free>>;

// LogotypeDetails ::= SEQUENCE {
//   mediaType     IA5String,
//   logotypeHash  SEQUENCE OF HashAlgAndValue,
//   logotypeURI   SEQUENCE OF IA5String }
using LogotypeDetailsSyntax = Sequence<LogotypeDetails,
    Required<&LogotypeDetails::mediaType, IA5StringCodec>,
    Required<&LogotypeDetails::logotypeHash, HashesCodec>,
    Required<&LogotypeDetails::logotypeURI, URIsCodec>>;
using LogotypeDetailsCodec = WriteOnly<0x30, asn1_LogotypeDetails_e, asn1_LogotypeDetails_free>;

// LogotypeReference ::= SEQUENCE {
//   refStructHash  SEQUENCE OF HashAlgAndValue,
//   refStructURI   SEQUENCE OF IA5String }
using LogotypeReferenceSyntax = Sequence<LogotypeReference,
    Required<&LogotypeReference::refStructHash, HashesCodec>,
    Required<&LogotypeReference::refStructURI, URIsCodec>>;
using LogotypeReferenceCodec =
    WriteOnly<0x30, asn1_LogotypeReference_e, asn1_LogotypeReference_free>;

// LogotypeImageResolution ::= CHOICE {
//   numBits    INTEGER,
//   tableSize  INTEGER }
//
// Neither alternative has a tag of its own.
using LogotypeImageResolutionSyntax = Choice<LogotypeImageResolution, UnknownKind::fails,
    Alternative<1, IntegerCodec>,
    Alternative<2, IntegerCodec>>;
using LogotypeImageResolutionCodec =
    WriteOnly<0, asn1_LogotypeImageResolution_e, asn1_LogotypeImageResolution_free>;

// LogotypeImageInfo ::= SEQUENCE {
//   type        [0] IMPLICIT INTEGER OPTIONAL,
//   fileSize        INTEGER,
//   xSize           INTEGER,
//   ySize           INTEGER,
//   resolution      LogotypeImageResolution OPTIONAL,
//   language        IA5String OPTIONAL }
using LogotypeImageInfoSyntax = Sequence<LogotypeImageInfo,
    Optional<&LogotypeImageInfo::type, Implicit<0, IntegerCodec>>,
    Required<&LogotypeImageInfo::fileSize, IntegerCodec>,
    Required<&LogotypeImageInfo::xSize, IntegerCodec>,
    Required<&LogotypeImageInfo::ySize, IntegerCodec>,
    Optional<&LogotypeImageInfo::resolution, LogotypeImageResolutionCodec>,
    Optional<&LogotypeImageInfo::language, IA5StringCodec>>;

// LogotypeImage ::= SEQUENCE {
//   imageDetails  LogotypeDetails,
//   imageInfo     LogotypeImageInfo OPTIONAL }
using LogotypeImageSyntax = Sequence<LogotypeImage,
    Required<&LogotypeImage::imageDetails, LogotypeDetailsCodec>,
    Optional<&LogotypeImage::imageInfo, WriteOnly<0x30, asn1_LogotypeImageInfo_e, asn1_LogotypeImageInfo_free>>>;
using LogotypeImageCodec = WriteOnly<0x30, asn1_LogotypeImage_e, asn1_LogotypeImage_free>;

// LogotypeAudioInfo ::= SEQUENCE {
//   fileSize        INTEGER,
//   playTime        INTEGER,
//   channels        INTEGER,
//   sampleRate  [3] IMPLICIT INTEGER OPTIONAL,
//   language    [4] IMPLICIT IA5String OPTIONAL }
using LogotypeAudioInfoSyntax = Sequence<LogotypeAudioInfo,
    Required<&LogotypeAudioInfo::fileSize, IntegerCodec>,
    Required<&LogotypeAudioInfo::playTime, IntegerCodec>,
    Required<&LogotypeAudioInfo::channels, IntegerCodec>,
    Optional<&LogotypeAudioInfo::sampleRate, Implicit<3, IntegerCodec>>,
    Optional<&LogotypeAudioInfo::language, Implicit<4, IA5StringCodec>>>;

// LogotypeAudio ::= SEQUENCE {
//   audioDetails  LogotypeDetails,
//   audioInfo     LogotypeAudioInfo OPTIONAL }
using LogotypeAudioSyntax = Sequence<LogotypeAudio,
    Required<&LogotypeAudio::audioDetails, LogotypeDetailsCodec>,
    Optional<&LogotypeAudio::audioInfo, WriteOnly<0x30, asn1_LogotypeAudioInfo_e, asn1_LogotypeAudioInfo_free>>>;
using LogotypeAudioCodec = WriteOnly<0x30, asn1_LogotypeAudio_e, asn1_LogotypeAudio_free>;

// clang-format on

// An image written as an audio record, field by field in the order of both.
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

// The second element of LogotypeData: written where there is a list of audio records, but from the
// images.
struct AudioOfImages {
  static bool encode(uint8_t **pp, const LogotypeData *data, Measure &size) {
    return data->audio == nullptr ||
           size.add(encode_list(pp, 0x81, data->image, encode_image_as_audio));
  }
  static void free(LogotypeData *data) { SequenceOf<LogotypeAudioCodec>::free(data->audio); }
};

// A table has a line for each field.
// clang-format off

// LogotypeData ::= SEQUENCE {
//   image      SEQUENCE OF LogotypeImage OPTIONAL,
//   audio  [1] IMPLICIT SEQUENCE OF LogotypeAudio OPTIONAL }
using LogotypeDataSyntax = Sequence<LogotypeData,
    Optional<&LogotypeData::image, SequenceOf<LogotypeImageCodec>>,
    AudioOfImages>;
using LogotypeDataCodec = WriteOnly<0x30, asn1_LogotypeData_e, asn1_LogotypeData_free>;

// LogotypeInfo ::= CHOICE {
//   direct    [0] IMPLICIT LogotypeData,
//   indirect  [1] IMPLICIT LogotypeReference }
using LogotypeInfoSyntax = Choice<LogotypeInfo, UnknownKind::fails,
    Alternative<0, Implicit<0, LogotypeDataCodec>>,
    Alternative<1, Implicit<1, LogotypeReferenceCodec>>>;
using LogotypeInfoCodec = WriteOnly<0, asn1_LogotypeInfo_e, asn1_LogotypeInfo_free>;

// OtherLogotypeInfo ::= SEQUENCE {
//   logotypeType  OBJECT IDENTIFIER,
//   info          LogotypeInfo }
//
// Nothing refers to it: the other logotypes of an extension are LogotypeInfo records.
using OtherLogotypeInfoSyntax = Sequence<OtherLogotypeInfo,
    Required<&OtherLogotypeInfo::logotypeType, ObjIdCodec>,
    Required<&OtherLogotypeInfo::info, LogotypeInfoCodec>>;

// clang-format on

// The last element of LogotypeExtn, which comes with the community logos and only with them:
// without a list of its own it fails then.
struct OtherLogos {
  using List = SequenceOf<LogotypeInfoCodec>;

  static bool encode(uint8_t **pp, const LogotypeExtn *extn, Measure &size) {
    if (extn->communityLogos == nullptr) return true;
    return extn->otherLogos != nullptr && size.add(Explicit<3, List>::encode(pp, extn->otherLogos));
  }
  static void free(LogotypeExtn *extn) { List::free(extn->otherLogos); }
};

// A table has a line for each field.
// clang-format off

// LogotypeExtn ::= SEQUENCE {
//   communityLogos  [0] EXPLICIT SEQUENCE OF LogotypeInfo OPTIONAL,
//   issuerLogo      [1] EXPLICIT LogotypeInfo OPTIONAL,
//   subjectLogo     [2] EXPLICIT LogotypeInfo OPTIONAL,
//   otherLogos      [3] EXPLICIT SEQUENCE OF LogotypeInfo OPTIONAL }
using LogotypeExtnSyntax = Sequence<LogotypeExtn,
    Optional<&LogotypeExtn::communityLogos, Explicit<0, SequenceOf<LogotypeInfoCodec>>>,
    Optional<&LogotypeExtn::issuerLogo, Explicit<1, LogotypeInfoCodec>>,
    Optional<&LogotypeExtn::subjectLogo, Explicit<2, LogotypeInfoCodec>>,
    OtherLogos>;

// clang-format on

}  // namespace

// Decoders and copies exist by name only.

HashAlgAndValue *asn1_HashAlgAndValue_new() { return HashAlgAndValueSyntax::create(); }
void asn1_HashAlgAndValue_free(HashAlgAndValue *pElement) { HashAlgAndValueSyntax::free(pElement); }
uint32_t asn1_HashAlgAndValue_e(uint8_t **pp, const HashAlgAndValue *pElement) {
  return HashAlgAndValueSyntax::encode(pp, pElement);
}
const uint8_t *asn1_HashAlgAndValue_d(const uint8_t *, const uint8_t *, uint32_t,
                                      HashAlgAndValue **, uint32_t) {
  return nullptr;
}
HashAlgAndValue *asn1_HashAlgAndValue_clone(const HashAlgAndValue *) { return nullptr; }

LogotypeDetails *asn1_LogotypeDetails_new() { return LogotypeDetailsSyntax::create(); }
void asn1_LogotypeDetails_free(LogotypeDetails *pElement) { LogotypeDetailsSyntax::free(pElement); }
uint32_t asn1_LogotypeDetails_e(uint8_t **pp, const LogotypeDetails *pElement) {
  return LogotypeDetailsSyntax::encode(pp, pElement);
}
const uint8_t *asn1_LogotypeDetails_d(const uint8_t *, const uint8_t *, uint32_t,
                                      LogotypeDetails **, uint32_t) {
  return nullptr;
}
LogotypeDetails *asn1_LogotypeDetails_clone(const LogotypeDetails *) { return nullptr; }

LogotypeReference *asn1_LogotypeReference_new() { return LogotypeReferenceSyntax::create(); }
void asn1_LogotypeReference_free(LogotypeReference *pElement) {
  LogotypeReferenceSyntax::free(pElement);
}
uint32_t asn1_LogotypeReference_e(uint8_t **pp, const LogotypeReference *pElement) {
  return LogotypeReferenceSyntax::encode(pp, pElement);
}
const uint8_t *asn1_LogotypeReference_d(const uint8_t *, const uint8_t *, uint32_t,
                                        LogotypeReference **, uint32_t) {
  return nullptr;
}
LogotypeReference *asn1_LogotypeReference_clone(const LogotypeReference *) { return nullptr; }

LogotypeImageResolution *asn1_LogotypeImageResolution_new() {
  return LogotypeImageResolutionSyntax::create();
}
void asn1_LogotypeImageResolution_free(LogotypeImageResolution *pElement) {
  LogotypeImageResolutionSyntax::free(pElement);
}
uint32_t asn1_LogotypeImageResolution_e(uint8_t **pp, const LogotypeImageResolution *pElement) {
  return LogotypeImageResolutionSyntax::encode(pp, pElement);
}
const uint8_t *asn1_LogotypeImageResolution_d(const uint8_t *, const uint8_t *, uint32_t,
                                              LogotypeImageResolution **, uint32_t) {
  return nullptr;
}
LogotypeImageResolution *asn1_LogotypeImageResolution_clone(const LogotypeImageResolution *) {
  return nullptr;
}

LogotypeImageInfo *asn1_LogotypeImageInfo_new() { return LogotypeImageInfoSyntax::create(); }
void asn1_LogotypeImageInfo_free(LogotypeImageInfo *pElement) {
  LogotypeImageInfoSyntax::free(pElement);
}
uint32_t asn1_LogotypeImageInfo_e(uint8_t **pp, const LogotypeImageInfo *pElement) {
  return LogotypeImageInfoSyntax::encode(pp, pElement);
}
const uint8_t *asn1_LogotypeImageInfo_d(const uint8_t *, const uint8_t *, uint32_t,
                                        LogotypeImageInfo **, uint32_t) {
  return nullptr;
}
LogotypeImageInfo *asn1_LogotypeImageInfo_clone(const LogotypeImageInfo *) { return nullptr; }

LogotypeImage *asn1_LogotypeImage_new() { return LogotypeImageSyntax::create(); }
void asn1_LogotypeImage_free(LogotypeImage *pElement) { LogotypeImageSyntax::free(pElement); }
uint32_t asn1_LogotypeImage_e(uint8_t **pp, const LogotypeImage *pElement) {
  return LogotypeImageSyntax::encode(pp, pElement);
}
const uint8_t *asn1_LogotypeImage_d(const uint8_t *, const uint8_t *, uint32_t, LogotypeImage **,
                                    uint32_t) {
  return nullptr;
}
LogotypeImage *asn1_LogotypeImage_clone(const LogotypeImage *) { return nullptr; }

LogotypeAudioInfo *asn1_LogotypeAudioInfo_new() { return LogotypeAudioInfoSyntax::create(); }
void asn1_LogotypeAudioInfo_free(LogotypeAudioInfo *pElement) {
  LogotypeAudioInfoSyntax::free(pElement);
}
uint32_t asn1_LogotypeAudioInfo_e(uint8_t **pp, const LogotypeAudioInfo *pElement) {
  return LogotypeAudioInfoSyntax::encode(pp, pElement);
}
const uint8_t *asn1_LogotypeAudioInfo_d(const uint8_t *, const uint8_t *, uint32_t,
                                        LogotypeAudioInfo **, uint32_t) {
  return nullptr;
}
LogotypeAudioInfo *asn1_LogotypeAudioInfo_clone(const LogotypeAudioInfo *) { return nullptr; }

LogotypeAudio *asn1_LogotypeAudio_new() { return LogotypeAudioSyntax::create(); }
void asn1_LogotypeAudio_free(LogotypeAudio *pElement) { LogotypeAudioSyntax::free(pElement); }
uint32_t asn1_LogotypeAudio_e(uint8_t **pp, const LogotypeAudio *pElement) {
  return LogotypeAudioSyntax::encode(pp, pElement);
}
const uint8_t *asn1_LogotypeAudio_d(const uint8_t *, const uint8_t *, uint32_t, LogotypeAudio **,
                                    uint32_t) {
  return nullptr;
}
LogotypeAudio *asn1_LogotypeAudio_clone(const LogotypeAudio *) { return nullptr; }

LogotypeData *asn1_LogotypeData_new() { return LogotypeDataSyntax::create(); }
void asn1_LogotypeData_free(LogotypeData *pElement) { LogotypeDataSyntax::free(pElement); }
uint32_t asn1_LogotypeData_e(uint8_t **pp, const LogotypeData *pElement) {
  return LogotypeDataSyntax::encode(pp, pElement);
}
const uint8_t *asn1_LogotypeData_d(const uint8_t *, const uint8_t *, uint32_t, LogotypeData **,
                                   uint32_t) {
  return nullptr;
}
LogotypeData *asn1_LogotypeData_clone(const LogotypeData *) { return nullptr; }

LogotypeInfo *asn1_LogotypeInfo_new() { return LogotypeInfoSyntax::create(); }
void asn1_LogotypeInfo_free(LogotypeInfo *pElement) { LogotypeInfoSyntax::free(pElement); }
uint32_t asn1_LogotypeInfo_e(uint8_t **pp, const LogotypeInfo *pElement) {
  return LogotypeInfoSyntax::encode(pp, pElement);
}
const uint8_t *asn1_LogotypeInfo_d(const uint8_t *, const uint8_t *, uint32_t, LogotypeInfo **,
                                   uint32_t) {
  return nullptr;
}
LogotypeInfo *asn1_LogotypeInfo_clone(const LogotypeInfo *) { return nullptr; }

OtherLogotypeInfo *asn1_OtherLogotypeInfo_new() { return OtherLogotypeInfoSyntax::create(); }
void asn1_OtherLogotypeInfo_free(OtherLogotypeInfo *pElement) {
  OtherLogotypeInfoSyntax::free(pElement);
}
uint32_t asn1_OtherLogotypeInfo_e(uint8_t **pp, const OtherLogotypeInfo *pElement) {
  return OtherLogotypeInfoSyntax::encode(pp, pElement);
}
const uint8_t *asn1_OtherLogotypeInfo_d(const uint8_t *, const uint8_t *, uint32_t,
                                        OtherLogotypeInfo **, uint32_t) {
  return nullptr;
}
OtherLogotypeInfo *asn1_OtherLogotypeInfo_clone(const OtherLogotypeInfo *) { return nullptr; }

LogotypeExtn *asn1_LogotypeExtn_new() { return LogotypeExtnSyntax::create(); }
void asn1_LogotypeExtn_free(LogotypeExtn *pElement) { LogotypeExtnSyntax::free(pElement); }
uint32_t asn1_LogotypeExtn_e(uint8_t **pp, const LogotypeExtn *pElement) {
  return LogotypeExtnSyntax::encode(pp, pElement);
}
const uint8_t *asn1_LogotypeExtn_d(const uint8_t *, const uint8_t *, uint32_t, LogotypeExtn **,
                                   uint32_t) {
  return nullptr;
}
LogotypeExtn *asn1_LogotypeExtn_clone(const LogotypeExtn *) { return nullptr; }
