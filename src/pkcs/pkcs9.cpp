// Attributes (X.501, PKCS #9), and the identifiers of PKCS #9 and personal data.
#include "core/export.h"
#include "pkcs/pkcs.h"

using namespace asn1;

// clang-format off

// Attribute ::= SEQUENCE {
//   type    OBJECT IDENTIFIER,
//   values  SET OF ANY }
using AttributeTable = Sequence<Attribute,
    Required<&Attribute::type, ObjIdCodec>,
    Required<&Attribute::values, SetOf<AnyCodec>>>;
EXPORT_RECORD(Attribute, AttributeTable)
