// The records that other units have as fields.
#ifndef ORVELASN1_CODECS_H
#define ORVELASN1_CODECS_H

#include "core/pattern.h"

namespace asn1 {

using AttributeCodec = ORVELASN1_FAMILY(0x30, Attribute);
using AttributesCodec = SetOf<AttributeCodec>;
using CertificateCodec = ORVELASN1_FAMILY(0x30, Certificate);
using ContentInfoCodec = ORVELASN1_FAMILY(0x30, ContentInfo);
using DigestInfoCodec = ORVELASN1_FAMILY(0x30, DigestInfo);
using ExtensionCodec = ORVELASN1_FAMILY(0x30, Extension);
using ExtensionsCodec = SequenceOf<ExtensionCodec>;
using SubjectPKICodec = ORVELASN1_FAMILY(0x30, SubjectPKI);

/// A CHOICE, which begins with the octet of one of its alternatives; it is never optional.
using GeneralNameCodec = ORVELASN1_FAMILY(0, GeneralName);
using GeneralNamesCodec = SequenceOf<GeneralNameCodec>;

}  // namespace asn1

#endif
