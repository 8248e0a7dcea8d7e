// Cryptographic message syntax (PKCS #7, RFC 2315).
#include "core/export.h"
#include "pkcs/pkcs.h"

using namespace asn1;

namespace {

const ContentInfo &content_info(const void *record) {
  return *static_cast<const ContentInfo *>(record);
}

/// The content of a message, [0] EXPLICIT of the type that `contentType` says.
Field content_field(const ContentInfo &info) {
  return {.type = &content_type(info),
          .tagging = Tagging::explicit_tag,
          .tag = tag::context | tag::constructed};
}

bool has_content(const ContentInfo &info) {
  return info.content != nullptr && info.content->value != nullptr;
}

constexpr FieldFunctions content_functions{
    .measure =
        [](const Field &, const void *record, Measure &size) {
          const ContentInfo &info = content_info(record);
          return !has_content(info) ||
                 size.add(measure_tagged(content_field(info), info.content->value));
        },
    .write =
        [](const Field &, BackWriter &out, const void *record) {
          const ContentInfo &info = content_info(record);
          if (has_content(info)) write_tagged(content_field(info), out, info.content->value);
        }};

constexpr Type typed_content{.kind = Kind::typed_content};
using TypedContentCodec = Codec<typed_content, Content, tag::any>;

}  // namespace

// clang-format off

// IssuerAndSerialNumber ::= SEQUENCE {
//   issuer        Name,
//   serialNumber  INTEGER }
using Issued = IssuerAndSerialNumber;
using IssuerAndSerialNumberTable = Sequence<Issued,
    Stored<&Issued::issuerEncoded, Required<&Issued::issuer, NameCodec>>,
    Required<&Issued::serialNumber, IntegerCodec>>;
EXPORT_RECORD(IssuerAndSerialNumber, IssuerAndSerialNumberTable)

// SignerInfo ::= SEQUENCE {
//   version                        INTEGER,
//   issuerAndSerialNumber          IssuerAndSerialNumber,
//   digestAlgorithm                AlgorithmIdentifier,
//   authenticatedAttributes    [0] IMPLICIT SET OF Attribute OPTIONAL,
//   digestEncryptionAlgorithm      AlgorithmIdentifier,
//   encryptedDigest                OCTET STRING,
//   unauthenticatedAttributes  [1] IMPLICIT SET OF Attribute OPTIONAL }
using SignerInfoTable = Sequence<SignerInfo,
    Required<&SignerInfo::version, IntegerCodec>,
    Required<&SignerInfo::issuerAndSerialNumber, IssuerAndSerialNumberCodec>,
    Required<&SignerInfo::digestAlgorithm, AlgIdCodec>,
    Optional<&SignerInfo::authenticatedAttributes, Implicit<0, AttributesCodec>>,
    Required<&SignerInfo::digestEncryptionAlgorithm, AlgIdCodec>,
    Required<&SignerInfo::encryptedDigest, OctetStringCodec>,
    Optional<&SignerInfo::unauthenticatedAttributes, Implicit<1, AttributesCodec>>>;
EXPORT_RECORD(SignerInfo, SignerInfoTable)

// SignedData ::= SEQUENCE {
//   version               INTEGER,
//   digestAlgorithms      SET OF AlgorithmIdentifier,
//   contentInfo           ContentInfo,
//   certificates      [0] IMPLICIT SET OF ANY OPTIONAL,
//   crls              [1] IMPLICIT SET OF ANY OPTIONAL,
//   signerInfos           SET OF SignerInfo }
//
// Certificates and CRLs stay whole elements.
using SignedDataTable = Sequence<SignedData,
    Required<&SignedData::version, IntegerCodec>,
    Required<&SignedData::digestAlgorithms, SetOf<AlgIdCodec>>,
    Required<&SignedData::contentInfo, ContentInfoCodec>,
    Optional<&SignedData::certificates, Implicit<0, SetOf<AnyCodec>>>,
    Optional<&SignedData::crls, Implicit<1, SetOf<AnyCodec>>>,
    Required<&SignedData::signerInfos, SetOf<SignerInfoCodec>>>;
EXPORT_RECORD(SignedData, SignedDataTable)

// EncryptedContentInfo ::= SEQUENCE {
//   contentType                     OBJECT IDENTIFIER,
//   contentEncryptionAlgorithm      AlgorithmIdentifier,
//   encryptedContent            [0] IMPLICIT OCTET STRING OPTIONAL }
//
// The content is read where it is there, in primitive or constructed form; but never left out when
// writing: a record without it ends the process.
using EncryptedContentInfoTable = AnyLengthSequence<EncryptedContentInfo,
    Required<&EncryptedContentInfo::contentType, ObjIdCodec>,
    Required<&EncryptedContentInfo::contentEncryptionAlgorithm, AlgIdCodec>,
    EitherForm<&EncryptedContentInfo::encryptedContent, Implicit<0, OctetStringCodec>>>;
EXPORT_RECORD(EncryptedContentInfo, EncryptedContentInfoTable)

// EncryptedData ::= SEQUENCE {
//   version               INTEGER,
//   encryptedContentInfo  EncryptedContentInfo }
using EncryptedDataTable = AnyLengthSequence<EncryptedData,
    Required<&EncryptedData::version, IntegerCodec>,
    Required<&EncryptedData::encryptedContentInfo, EncryptedContentInfoCodec>>;
EXPORT_RECORD(EncryptedData, EncryptedDataTable)

// ContentInfo ::= SEQUENCE {
//   contentType      OBJECT IDENTIFIER,
//   content      [0] EXPLICIT ANY DEFINED BY contentType OPTIONAL }
using ContentInfoTable = Nesting<AnyLengthSequence<ContentInfo,
    Required<&ContentInfo::contentType, ObjIdCodec>,
    ByHand<Optional<&ContentInfo::content, Explicit<0, TypedContentCodec>>, content_functions>>>;
EXPORT(ContentInfo, ContentInfoTable, OWN_NEW, OWN_DECODER, ENCODER, OWN_CLONE, OWN_FREE)

// clang-format on

// A record without a type ends the process in the comparison, on every way through here: there is no
// telling what its value is.
const Type &asn1::content_type(const ContentInfo &info) {
  auto is = [&info](const ObjId *type) { return asn1_ObjId_cmp(type, info.contentType) == 0; };
  if (is(asn1_Get_data())) return OctetStringType;
  if (is(asn1_Get_signedData())) return SignedDataType;
  if (is(asn1_Get_encryptedData())) return EncryptedDataType;
  return AnyType;
}
