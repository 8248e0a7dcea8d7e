// Personal information exchange (PKCS #12, RFC 7292), and its identifiers.
#include "core/export.h"
#include "pkcs/pkcs.h"

using namespace asn1;

// clang-format off

// MacData ::= SEQUENCE {
//   mac         DigestInfo,
//   macSalt     OCTET STRING,
//   iterations  INTEGER DEFAULT 1 }
//
// The default is applied in neither direction.
using MacDataTable = Sequence<MacData,
    Required<&MacData::mac, DigestInfoCodec>,
    Required<&MacData::macSalt, OctetStringCodec>,
    Optional<&MacData::iterations, IntegerCodec>>;
EXPORT_RECORD(MacData, MacDataTable)

// PFX ::= SEQUENCE {
//   version   INTEGER,
//   authSafe  ContentInfo,
//   macData   MacData OPTIONAL }
using PFXTable = AnyLengthSequence<PFX,
    Required<&PFX::version, IntegerCodec>,
    Required<&PFX::authSafe, ContentInfoCodec>,
    Optional<&PFX::macData, MacDataCodec>>;
EXPORT_RECORD(PFX, PFXTable)

// PBEParameter ::= SEQUENCE {
//   salt        OCTET STRING,
//   iterations  INTEGER }
using PbeParamsTable = Sequence<PbeParams,
    Required<&PbeParams::salt, OctetStringCodec>,
    Required<&PbeParams::iterations, IntegerCodec>>;
EXPORT_RECORD_AS(PbeParams, "PBEParameter", PbeParamsTable)

// SafeBag ::= SEQUENCE {
//   bagId              OBJECT IDENTIFIER,
//   bagValue       [0] EXPLICIT ANY DEFINED BY bagId,
//   bagAttributes      SET OF Attribute OPTIONAL }
using SafeBagTable = Sequence<SafeBag,
    Required<&SafeBag::bagId, ObjIdCodec>,
    Required<&SafeBag::bagValue, Explicit<0, AnyCodec>>,
    Optional<&SafeBag::bagAttributes, AttributesCodec, Presence::anything_left>>;
EXPORT_RECORD(SafeBag, SafeBagTable)

// CertBag ::= SEQUENCE {
//   certId           OBJECT IDENTIFIER,
//   certValue    [0] EXPLICIT ANY DEFINED BY certId }
using CertBagTable = Sequence<CertBag,
    Required<&CertBag::certId, ObjIdCodec>,
    Required<&CertBag::certValue, Explicit<0, AnyCodec>>>;
EXPORT_RECORD(CertBag, CertBagTable)

// CRLBag ::= SEQUENCE {
//   crlId            OBJECT IDENTIFIER,
//   crlValue     [0] EXPLICIT ANY DEFINED BY crlId }
using CRLBagTable = Sequence<CRLBag,
    Required<&CRLBag::crlId, ObjIdCodec>,
    Required<&CRLBag::crlValue, Explicit<0, AnyCodec>>>;
EXPORT_RECORD(CRLBag, CRLBagTable)

// SecretBag ::= SEQUENCE {
//   secretTypeId     OBJECT IDENTIFIER,
//   secretValue  [0] EXPLICIT ANY DEFINED BY secretTypeId }
using SecretBagTable = Sequence<SecretBag,
    Required<&SecretBag::secretTypeId, ObjIdCodec>,
    Required<&SecretBag::secretValue, Explicit<0, AnyCodec>>>;
EXPORT_RECORD(SecretBag, SecretBagTable)
