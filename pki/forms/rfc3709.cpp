// Logotypes (RFC 3709, 4.1). The module has implicit tags, but for those of a CHOICE (X.680, 31.2.7)
// and those that say otherwise.
#include "pki/export.h"

using namespace pki;

namespace {

/// A CHOICE of two identifier octets, which an optional field is found by.
template <class Table, uint8_t First, uint8_t Second>
struct FoundByEither : Table {
  static constexpr uint8_t identifier = First;
  static constexpr Type type = [] {
    Type found = Table::type;
    found.identifier = First;
    found.other_identifier = Second;
    return found;
  }();
};

}  // namespace

// clang-format off

// HashAlgAndValue ::= SEQUENCE {
//   hashAlg    AlgorithmIdentifier,
//   hashValue  OCTET STRING }
using HashAlgAndValueTable = Sequence<HashAlgAndValue,
    Required<&HashAlgAndValue::hashAlg, AlgIdCodec>,
    Required<&HashAlgAndValue::hashValue, OctetStringCodec>>;
EXPORT_FORM(HashAlgAndValue, HashAlgAndValue, "HashAlgAndValue", HashAlgAndValueTable)

// LogotypeDetails ::= SEQUENCE {
//   mediaType     IA5String,
//   logotypeHash  SEQUENCE OF HashAlgAndValue,
//   logotypeURI   SEQUENCE OF IA5String }
using LogotypeDetailsTable = Sequence<LogotypeDetails,
    Required<&LogotypeDetails::mediaType, IA5StringCodec>,
    Required<&LogotypeDetails::logotypeHash, SequenceOf<HashAlgAndValueCodec>>,
    Required<&LogotypeDetails::logotypeURI, SequenceOf<IA5StringCodec>>>;
EXPORT_FORM(LogotypeDetails, LogotypeDetails, "LogotypeDetails", LogotypeDetailsTable)

// LogotypeReference ::= SEQUENCE {
//   refStructHash  SEQUENCE OF HashAlgAndValue,
//   refStructURI   SEQUENCE OF IA5String }
using LogotypeReferenceTable = Sequence<LogotypeReference,
    Required<&LogotypeReference::refStructHash, SequenceOf<HashAlgAndValueCodec>>,
    Required<&LogotypeReference::refStructURI, SequenceOf<IA5StringCodec>>>;
EXPORT_FORM(LogotypeReference, LogotypeReference, "LogotypeReference", LogotypeReferenceTable)

// LogotypeImageResolution ::= CHOICE {
//   numBits    [1] IMPLICIT INTEGER,
//   tableSize  [2] IMPLICIT INTEGER }
using LogotypeImageResolutionTable = FoundByEither<Choice<LogotypeImageResolution,
    Alternative<1, "numBits", Implicit<1, IntegerCodec>>,
    Alternative<2, "tableSize", Implicit<2, IntegerCodec>>>, tag::context | 1, tag::context | 2>;
EXPORT_FORM(LogotypeImageResolution, LogotypeImageResolution, "LogotypeImageResolution",
            LogotypeImageResolutionTable)

// LogotypeImageInfo ::= SEQUENCE {
//   type        [0] IMPLICIT INTEGER DEFAULT color,
//   fileSize        INTEGER,
//   xSize           INTEGER,
//   ySize           INTEGER,
//   resolution      LogotypeImageResolution OPTIONAL,
//   language    [4] IMPLICIT IA5String OPTIONAL }
using LogotypeImageInfoTable = Sequence<LogotypeImageInfo,
    Optional<&LogotypeImageInfo::type, Implicit<0, IntegerCodec>>,
    Required<&LogotypeImageInfo::fileSize, IntegerCodec>,
    Required<&LogotypeImageInfo::xSize, IntegerCodec>,
    Required<&LogotypeImageInfo::ySize, IntegerCodec>,
    Optional<&LogotypeImageInfo::resolution, LogotypeImageResolutionCodec>,
    Optional<&LogotypeImageInfo::language, Implicit<4, IA5StringCodec>>>;
EXPORT_FORM(LogotypeImageInfo, LogotypeImageInfo, "LogotypeImageInfo", LogotypeImageInfoTable)

// LogotypeImage ::= SEQUENCE {
//   imageDetails  LogotypeDetails,
//   imageInfo     LogotypeImageInfo OPTIONAL }
using LogotypeImageTable = Sequence<LogotypeImage,
    Required<&LogotypeImage::imageDetails, LogotypeDetailsCodec>,
    Optional<&LogotypeImage::imageInfo, LogotypeImageInfoCodec>>;
EXPORT_FORM(LogotypeImage, LogotypeImage, "LogotypeImage", LogotypeImageTable)

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
EXPORT_FORM(LogotypeAudioInfo, LogotypeAudioInfo, "LogotypeAudioInfo", LogotypeAudioInfoTable)

// LogotypeAudio ::= SEQUENCE {
//   audioDetails  LogotypeDetails,
//   audioInfo     LogotypeAudioInfo OPTIONAL }
using LogotypeAudioTable = Sequence<LogotypeAudio,
    Required<&LogotypeAudio::audioDetails, LogotypeDetailsCodec>,
    Optional<&LogotypeAudio::audioInfo, LogotypeAudioInfoCodec>>;
EXPORT_FORM(LogotypeAudio, LogotypeAudio, "LogotypeAudio", LogotypeAudioTable)

// LogotypeData ::= SEQUENCE {
//   image      SEQUENCE OF LogotypeImage OPTIONAL,
//   audio  [1] IMPLICIT SEQUENCE OF LogotypeAudio OPTIONAL }
using LogotypeDataTable = Sequence<LogotypeData,
    Optional<&LogotypeData::image, SequenceOf<LogotypeImageCodec>>,
    Optional<&LogotypeData::audio, Implicit<1, SequenceOf<LogotypeAudioCodec>>>>;
EXPORT_FORM(LogotypeData, LogotypeData, "LogotypeData", LogotypeDataTable)

// LogotypeInfo ::= CHOICE {
//   direct    [0] IMPLICIT LogotypeData,
//   indirect  [1] IMPLICIT LogotypeReference }
using LogotypeInfoTable = Choice<LogotypeInfo,
    Alternative<0, "direct", Implicit<0, LogotypeDataCodec>>,
    Alternative<1, "indirect", Implicit<1, LogotypeReferenceCodec>>>;
EXPORT_FORM(LogotypeInfo, LogotypeInfo, "LogotypeInfo", LogotypeInfoTable)

// OtherLogotypeInfo ::= SEQUENCE {
//   logotypeType  OBJECT IDENTIFIER,
//   info          LogotypeInfo }
using OtherLogotypeInfoTable = Sequence<OtherLogotypeInfo,
    Required<&OtherLogotypeInfo::logotypeType, ObjIdCodec>,
    Required<&OtherLogotypeInfo::info, LogotypeInfoCodec>>;
EXPORT_FORM(OtherLogotypeInfo, OtherLogotypeInfo, "OtherLogotypeInfo", OtherLogotypeInfoTable)

// LogotypeExtn ::= SEQUENCE {
//   communityLogos  [0] EXPLICIT SEQUENCE OF LogotypeInfo OPTIONAL,
//   issuerLogo      [1] EXPLICIT LogotypeInfo OPTIONAL,
//   subjectLogo     [2] EXPLICIT LogotypeInfo OPTIONAL,
//   otherLogos      [3] EXPLICIT SEQUENCE OF OtherLogotypeInfo OPTIONAL }
using LogotypeExtnTable = Sequence<LogotypeExtn,
    Optional<&LogotypeExtn::communityLogos, Explicit<0, SequenceOf<LogotypeInfoCodec>>>,
    Optional<&LogotypeExtn::issuerLogo, Explicit<1, LogotypeInfoCodec>>,
    Optional<&LogotypeExtn::subjectLogo, Explicit<2, LogotypeInfoCodec>>,
    Optional<&LogotypeExtn::otherLogos, Explicit<3, SequenceOf<OtherLogotypeInfoCodec>>>>;
EXPORT_FORM(LogotypeExtn, LogotypeExtn, "LogotypeExtn", LogotypeExtnTable)
