// Stores of keys and certificates (RFC 7292).
#include "pki/forms/rfc5652.h"
#include "pki/forms/rfc8017.h"

using namespace pki;

// clang-format off

// MacData ::= SEQUENCE {
//   mac         DigestInfo,
//   macSalt     OCTET STRING,
//   iterations  INTEGER DEFAULT 1 }
using MacDataTable = Sequence<MacData,
    Required<&MacData::mac, DigestInfoCodec>,
    Required<&MacData::macSalt, OctetStringCodec>,
    Optional<&MacData::iterations, IntegerCodec>>;
EXPORT_FORM(MacData, MacData, "MacData", MacDataTable)

// PFX ::= SEQUENCE {
//   version   INTEGER,
//   authSafe  ContentInfo,
//   macData   MacData OPTIONAL }
using PFXTable = Sequence<pki_PFX,
    Required<&pki_PFX::version, IntegerCodec>,
    Required<&pki_PFX::authSafe, ContentInfoCodec>,
    Optional<&pki_PFX::macData, MacDataCodec>>;
EXPORT_FORM(PFX, pki_PFX, "PFX", PFXTable)

// AuthenticatedSafe ::= SEQUENCE OF ContentInfo
using AuthenticatedSafeTable = SequenceOf<ContentInfoCodec>;
EXPORT_FORM_LIST(AuthenticatedSafe, List, "AuthenticatedSafe", AuthenticatedSafeTable)

// SafeBag ::= SEQUENCE {
//   bagId              OBJECT IDENTIFIER,
//   bagValue       [0] EXPLICIT ANY DEFINED BY bagId,
//   bagAttributes      SET OF Attribute OPTIONAL }
//
// The value may be a private key that is not encrypted.
using SafeBagTable = Sequence<SafeBag,
    Required<&SafeBag::bagId, ObjIdCodec>,
    Wiped<Required<&SafeBag::bagValue, Explicit<0, AnyCodec>>>,
    Optional<&SafeBag::bagAttributes, AttributesCodec>>;
EXPORT_FORM(SafeBag, SafeBag, "SafeBag", SafeBagTable)

// SafeContents ::= SEQUENCE OF SafeBag
using SafeContentsTable = SequenceOf<SafeBagCodec>;
EXPORT_FORM_LIST(SafeContents, List, "SafeContents", SafeContentsTable)

// CertBag ::= SEQUENCE {
//   certId         OBJECT IDENTIFIER,
//   certValue  [0] EXPLICIT ANY DEFINED BY certId }
using CertBagTable = Sequence<CertBag,
    Required<&CertBag::certId, ObjIdCodec>,
    Required<&CertBag::certValue, Explicit<0, AnyCodec>>>;
EXPORT_FORM(CertBag, CertBag, "CertBag", CertBagTable)

// CRLBag ::= SEQUENCE {
//   crlId         OBJECT IDENTIFIER,
//   crlValue  [0] EXPLICIT ANY DEFINED BY crlId }
using CRLBagTable = Sequence<CRLBag,
    Required<&CRLBag::crlId, ObjIdCodec>,
    Required<&CRLBag::crlValue, Explicit<0, AnyCodec>>>;
EXPORT_FORM(CRLBag, CRLBag, "CRLBag", CRLBagTable)

// SecretBag ::= SEQUENCE {
//   secretTypeId      OBJECT IDENTIFIER,
//   secretValue   [0] EXPLICIT ANY DEFINED BY secretTypeId }
using SecretBagTable = Sequence<SecretBag,
    Required<&SecretBag::secretTypeId, ObjIdCodec>,
    Wiped<Required<&SecretBag::secretValue, Explicit<0, AnyCodec>>>>;
EXPORT_FORM(SecretBag, SecretBag, "SecretBag", SecretBagTable)

// pkcs-12PbeParams ::= SEQUENCE {
//   salt        OCTET STRING,
//   iterations  INTEGER }
using PbeParamsTable = Sequence<PbeParams,
    Required<&PbeParams::salt, OctetStringCodec>,
    Required<&PbeParams::iterations, IntegerCodec>>;
EXPORT_FORM(PbeParams, PbeParams, "pkcs-12PbeParams", PbeParamsTable)
