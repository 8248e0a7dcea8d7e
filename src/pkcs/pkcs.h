// The records of PKCS #1, #7 and #9 that others have as fields.
#ifndef ORVELASN1_PKCS_PKCS_H
#define ORVELASN1_PKCS_PKCS_H

#include "x509/x509.h"

namespace asn1 {

DECLARE_TYPE(Attribute, tag::sequence)
DECLARE_TYPE(ContentInfo, tag::sequence)
DECLARE_TYPE(DigestInfo, tag::sequence)
extern const Type EncryptedDataType;
extern const Type SignedDataType;

/// The type of a message's content.
const Type &content_type(const ContentInfo &info);

using AttributesCodec = SetOf<AttributeCodec>;

}  // namespace asn1

#endif
