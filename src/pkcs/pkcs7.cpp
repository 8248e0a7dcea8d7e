// Cryptographic message syntax (PKCS #7, RFC 2315), and the identifiers of its content types.
#include "core/stack.h"
#include "registry/identifiers.h"
#include "x509/codecs.h"
#include "x509/names.h"

using namespace asn1;

namespace {

constexpr const char *unit = "pkcs7";

// A table has a line for each field.
// clang-format off

// IssuerAndSerialNumber ::= SEQUENCE {
//   issuer        Name,
//   serialNumber  INTEGER }
using Issued = IssuerAndSerialNumber;
using IssuerAndSerialNumberSyntax = Sequence<Issued,
    Stored<&Issued::issuerEncoded, Required<&Issued::issuer, NameCodec>>,
    Required<&Issued::serialNumber, IntegerCodec>>;
using IssuerAndSerialNumberCodec = ORVELASN1_FAMILY(0x30, IssuerAndSerialNumber);

// SignerInfo ::= SEQUENCE {
//   version                        INTEGER,
//   issuerAndSerialNumber          IssuerAndSerialNumber,
//   digestAlgorithm                AlgorithmIdentifier,
//   authenticatedAttributes    [0] IMPLICIT SET OF Attribute OPTIONAL,
//   digestEncryptionAlgorithm      AlgorithmIdentifier,
//   encryptedDigest                OCTET STRING,
//   unauthenticatedAttributes  [1] IMPLICIT SET OF Attribute OPTIONAL }
using SignerInfoSyntax = Sequence<SignerInfo,
    Required<&SignerInfo::version, IntegerCodec>,
    Required<&SignerInfo::issuerAndSerialNumber, IssuerAndSerialNumberCodec>,
    Required<&SignerInfo::digestAlgorithm, AlgIdCodec>,
    Optional<&SignerInfo::authenticatedAttributes, Implicit<0, AttributesCodec>>,
    Required<&SignerInfo::digestEncryptionAlgorithm, AlgIdCodec>,
    Required<&SignerInfo::encryptedDigest, OctetStringCodec>,
    Optional<&SignerInfo::unauthenticatedAttributes, Implicit<1, AttributesCodec>>>;
using SignerInfoCodec = ORVELASN1_FAMILY(0x30, SignerInfo);

// SignedData ::= SEQUENCE {
//   version               INTEGER,
//   digestAlgorithms      SET OF AlgorithmIdentifier,
//   contentInfo           ContentInfo,
//   certificates      [0] IMPLICIT SET OF ANY OPTIONAL,
//   crls              [1] IMPLICIT SET OF ANY OPTIONAL,
//   signerInfos           SET OF SignerInfo }
//
// Certificates and CRLs stay whole elements.
using SignedDataSyntax = Sequence<SignedData,
    Required<&SignedData::version, IntegerCodec>,
    Required<&SignedData::digestAlgorithms, SetOf<AlgIdCodec>>,
    Required<&SignedData::contentInfo, ContentInfoCodec>,
    Optional<&SignedData::certificates, Implicit<0, SetOf<AnyCodec>>>,
    Optional<&SignedData::crls, Implicit<1, SetOf<AnyCodec>>>,
    Required<&SignedData::signerInfos, SetOf<SignerInfoCodec>>>;
using SignedDataCodec = ORVELASN1_FAMILY(0x30, SignedData);

// clang-format on

// Read where it is there, in primitive or constructed form; but never left out when writing: a
// record without it ends the process.
struct EncryptedContent
    : Required<&EncryptedContentInfo::encryptedContent, Implicit<0, OctetStringCodec>> {
  static bool decode(ContentReader &in, EncryptedContentInfo *record, uint32_t depth) {
    const int octet = in.peek();
    if (octet != 0x80 && octet != 0xA0) return true;
    const uint8_t *next = asn1_OctetString_d(in.position(), in.end(), static_cast<uint32_t>(octet),
                                             &record->encryptedContent, depth);
    if (next == nullptr) return false;
    in.move_to(next);
    return true;
  }
};

// A table has a line for each field.
// clang-format off

// EncryptedContentInfo ::= SEQUENCE {
//   contentType                     OBJECT IDENTIFIER,
//   contentEncryptionAlgorithm      AlgorithmIdentifier,
//   encryptedContent            [0] IMPLICIT OCTET STRING OPTIONAL }
using EncryptedContentInfoSyntax = Sequence<EncryptedContentInfo,
    Required<&EncryptedContentInfo::contentType, ObjIdCodec>,
    Required<&EncryptedContentInfo::contentEncryptionAlgorithm, AlgIdCodec>,
    EncryptedContent>;
using EncryptedContentInfoCodec = ORVELASN1_FAMILY(0x30, EncryptedContentInfo);

// EncryptedData ::= SEQUENCE {
//   version               INTEGER,
//   encryptedContentInfo  EncryptedContentInfo }
using EncryptedDataSyntax = Sequence<EncryptedData,
    Required<&EncryptedData::version, IntegerCodec>,
    Required<&EncryptedData::encryptedContentInfo, EncryptedContentInfoCodec>>;
using EncryptedDataCodec = ORVELASN1_FAMILY(0x30, EncryptedData);

// clang-format on

// Calls `f` with the codec of the content's type. A record without a type ends the process in the
// comparison, on every way through here: there is no telling what its value is.
template <class F>
auto with_content_codec(const ContentInfo &info, F f) {
  auto is = [&info](const ObjId *type) { return asn1_ObjId_cmp(type, info.contentType) == 0; };
  if (is(asn1_Get_data())) return f(OctetStringCodec());
  if (is(asn1_Get_signedData())) return f(SignedDataCodec());
  if (is(asn1_Get_encryptedData())) return f(EncryptedDataCodec());
  return f(AnyCodec());
}

// The content of a message, [0] EXPLICIT of the type that `contentType` says.
struct TypedContent {
  static bool encode(uint8_t **pp, const ContentInfo *info, Measure &size) {
    if (info->content == nullptr || info->content->value == nullptr) return true;
    return size.add(with_content_codec(*info, [&](auto codec) {
      using Codec = decltype(codec);
      return Explicit<0, Codec>::encode(pp,
                                        static_cast<typename Codec::Field>(info->content->value));
    }));
  }
};

// A table has a line for each field.
// clang-format off

// ContentInfo ::= SEQUENCE {
//   contentType      OBJECT IDENTIFIER,
//   content      [0] EXPLICIT ANY DEFINED BY contentType OPTIONAL }
using ContentInfoSyntax = Sequence<ContentInfo,
    Required<&ContentInfo::contentType, ObjIdCodec>,
    TypedContent>;

// clang-format on

}  // namespace

Content *asn1_Content_new() { return new_record<Content>(); }
void asn1_Content_free(Content *pElement) { std::free(pElement); }

ContentInfo *asn1_ContentInfo_new() {
  auto *info = new_record<ContentInfo>();
  if (info == nullptr) return nullptr;
  info->content = asn1_Content_new();
  if (info->content != nullptr) return info;
  asn1_ContentInfo_free(info);  // which ends the process, as for every record without a type
  return nullptr;
}

void asn1_ContentInfo_free(ContentInfo *pElement) {
  if (pElement == nullptr) return;
  with_content_codec(*pElement, [&](auto codec) {
    using Codec = decltype(codec);
    require(pElement->content != nullptr, unit, "asn1_ContentInfo_free", "content != NULL");
    Codec::free(static_cast<typename Codec::Field>(pElement->content->value));
  });
  asn1_ObjId_free(pElement->contentType);
  asn1_Content_free(pElement->content);
  std::free(pElement);
}

ContentInfo *asn1_ContentInfo_clone(const ContentInfo *pElement) {
  if (pElement == nullptr || !stack_for_nested()) return nullptr;
  ContentInfo *const copy = asn1_ContentInfo_new();
  if (copy == nullptr) return nullptr;
  bool complete = clone_field<ObjIdCodec>(&copy->contentType, pElement->contentType);
  if (complete && pElement->content != nullptr) {
    complete = with_content_codec(*pElement, [&](auto codec) {
      using Codec = decltype(codec);
      using Value = typename Codec::Field;
      Value value = nullptr;
      if (!clone_field<Codec>(&value, static_cast<Value>(pElement->content->value))) return false;
      copy->content->value = value;
      return true;
    });
  }
  if (complete) return copy;
  asn1_ContentInfo_free(copy);
  return nullptr;
}

uint32_t asn1_ContentInfo_e(uint8_t **pp, const ContentInfo *pElement) {
  return stack_for_nested() ? ContentInfoSyntax::encode(pp, pElement) : 0;
}

namespace {

// The [0] around the content may have an indefinite length of its own, and a level of its own in
// the trace: its opening line stands at the raised depth, its closing line one level above.
bool read_content(Reader *in, ContentInfo *info, uint32_t depth) {
  Header header;
  if (!in->read_header(0, 0xA0, Forms::indefinite, &header, depth)) return false;
  const ContentReader content = in->content(header);
  const uint8_t *next = with_content_codec(*info, [&](auto codec) {
    using Codec = decltype(codec);
    typename Codec::Field value = nullptr;
    const uint8_t *behind = Codec::decode(content.position(), content.end(), 0, &value, depth);
    info->content->value = value;
    return behind;
  });
  if (next == nullptr) return false;
  in->move_to(next);
  if (header.indefinite && !in->read_eoc()) return false;
  if (depth != 0) trace_close(depth - 1);
  return true;
}

}  // namespace

// An input that has no well-formed identifier where the type should be ends the process, because
// the record that is then released has no type.
const uint8_t *asn1_ContentInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  ContentInfo **ppElement, uint32_t depth) {
  if (ppElement == nullptr) return nullptr;
  *ppElement = nullptr;
  const ReadingNested nested;
  if (!nested.fits()) return nullptr;
  Reader in(z, end);
  Header header;
  if (!in.read_header(impl_tag, 0x30, Forms::indefinite, &header, depth)) return nullptr;
  ContentInfo *const info = asn1_ContentInfo_new();
  *ppElement = info;
  if (info == nullptr) return nullptr;
  const uint32_t inner_depth = child_depth(depth);
  ContentReader content = in.content(header);
  const uint8_t *next =
      asn1_ObjId_d(content.position(), content.end(), 0, &info->contentType, inner_depth);
  bool complete = next != nullptr;
  if (complete) {
    content.move_to(next);
    if (content.peek() == 0xA0) {
      complete = read_content(&content, info, child_depth(inner_depth));
    }
  }
  if (complete && header.indefinite) complete = content.read_outer_eoc();
  if (!complete) {
    asn1_ContentInfo_free(info);
    *ppElement = nullptr;
    return nullptr;
  }
  if (inner_depth != 0) trace_close(inner_depth - 1);
  return content.position();
}

SignedData *asn1_SignedData_new() { return SignedDataSyntax::create(); }
void asn1_SignedData_free(SignedData *pElement) { SignedDataSyntax::free(pElement); }
SignedData *asn1_SignedData_clone(const SignedData *pElement) {
  return SignedDataSyntax::clone(pElement);
}
uint32_t asn1_SignedData_e(uint8_t **pp, const SignedData *pElement) {
  return SignedDataSyntax::encode(pp, pElement);
}
const uint8_t *asn1_SignedData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 SignedData **ppElement, uint32_t depth) {
  return SignedDataSyntax::decode(z, end, impl_tag, ppElement, depth);
}

SignerInfo *asn1_SignerInfo_new() { return SignerInfoSyntax::create(); }
void asn1_SignerInfo_free(SignerInfo *pElement) { SignerInfoSyntax::free(pElement); }
SignerInfo *asn1_SignerInfo_clone(const SignerInfo *pElement) {
  return SignerInfoSyntax::clone(pElement);
}
uint32_t asn1_SignerInfo_e(uint8_t **pp, const SignerInfo *pElement) {
  return SignerInfoSyntax::encode(pp, pElement);
}
const uint8_t *asn1_SignerInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 SignerInfo **ppElement, uint32_t depth) {
  return SignerInfoSyntax::decode(z, end, impl_tag, ppElement, depth);
}

IssuerAndSerialNumber *asn1_IssuerAndSerialNumber_new() {
  return IssuerAndSerialNumberSyntax::create();
}
void asn1_IssuerAndSerialNumber_free(IssuerAndSerialNumber *pElement) {
  IssuerAndSerialNumberSyntax::free(pElement);
}
IssuerAndSerialNumber *asn1_IssuerAndSerialNumber_clone(const IssuerAndSerialNumber *pElement) {
  return IssuerAndSerialNumberSyntax::clone(pElement);
}
uint32_t asn1_IssuerAndSerialNumber_e(uint8_t **pp, const IssuerAndSerialNumber *pElement) {
  return IssuerAndSerialNumberSyntax::encode(pp, pElement);
}
const uint8_t *asn1_IssuerAndSerialNumber_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                            IssuerAndSerialNumber **ppElement, uint32_t depth) {
  return IssuerAndSerialNumberSyntax::decode(z, end, impl_tag, ppElement, depth);
}

EncryptedData *asn1_EncryptedData_new() { return EncryptedDataSyntax::create(); }
void asn1_EncryptedData_free(EncryptedData *pElement) { EncryptedDataSyntax::free(pElement); }
EncryptedData *asn1_EncryptedData_clone(const EncryptedData *pElement) {
  return EncryptedDataSyntax::clone(pElement);
}
uint32_t asn1_EncryptedData_e(uint8_t **pp, const EncryptedData *pElement) {
  return EncryptedDataSyntax::encode(pp, pElement);
}
const uint8_t *asn1_EncryptedData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    EncryptedData **ppElement, uint32_t depth) {
  return EncryptedDataSyntax::decode_any_length(z, end, impl_tag, ppElement, depth);
}

EncryptedContentInfo *asn1_EncryptedContentInfo_new() {
  return EncryptedContentInfoSyntax::create();
}
void asn1_EncryptedContentInfo_free(EncryptedContentInfo *pElement) {
  EncryptedContentInfoSyntax::free(pElement);
}
EncryptedContentInfo *asn1_EncryptedContentInfo_clone(const EncryptedContentInfo *pElement) {
  return EncryptedContentInfoSyntax::clone(pElement);
}
uint32_t asn1_EncryptedContentInfo_e(uint8_t **pp, const EncryptedContentInfo *pElement) {
  return EncryptedContentInfoSyntax::encode(pp, pElement);
}
const uint8_t *asn1_EncryptedContentInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                           EncryptedContentInfo **ppElement, uint32_t depth) {
  return EncryptedContentInfoSyntax::decode_any_length(z, end, impl_tag, ppElement, depth);
}

OBJECT_IDENTIFIER(data, 1, 2, 840, 113549, 1, 7, 1)
OBJECT_IDENTIFIER(signedData, 1, 2, 840, 113549, 1, 7, 2)
OBJECT_IDENTIFIER(envelopedData, 1, 2, 840, 113549, 1, 7, 3)
OBJECT_IDENTIFIER(signedAndEnvelopedData, 1, 2, 840, 113549, 1, 7, 4)
OBJECT_IDENTIFIER(digestedData, 1, 2, 840, 113549, 1, 7, 5)
OBJECT_IDENTIFIER(encryptedData, 1, 2, 840, 113549, 1, 7, 6)
