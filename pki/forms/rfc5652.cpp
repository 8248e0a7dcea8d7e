// Cryptographic messages (RFC 5652).
#include "pki/forms/rfc5652.h"

#include "pki/export.h"

using namespace pki;

// clang-format off

// Attribute ::= SEQUENCE {
//   attrType    OBJECT IDENTIFIER,
//   attrValues  SET OF AttributeValue }
using AttributeTable = Sequence<Attribute,
    Required<&Attribute::type, ObjIdCodec>,
    Required<&Attribute::values, SetOf<AnyCodec>>>;
EXPORT_FORM(Attribute, Attribute, "Attribute", AttributeTable)
