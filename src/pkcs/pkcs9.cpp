// Attributes (X.501, PKCS #9), and the identifiers of PKCS #9 and personal data.
#include "registry/name_attributes.h"
#include "x509/codecs.h"

using namespace asn1;

namespace {

// A table has a line for each field.
// clang-format off

// Attribute ::= SEQUENCE {
//   type    OBJECT IDENTIFIER,
//   values  SET OF ANY }
using AttributeSyntax = Sequence<Attribute,
    Required<&Attribute::type, ObjIdCodec>,
    Required<&Attribute::values, SetOf<AnyCodec>>>;

// clang-format on

}  // namespace

Attribute *asn1_Attribute_new() { return AttributeSyntax::create(); }
void asn1_Attribute_free(Attribute *pElement) { AttributeSyntax::free(pElement); }
Attribute *asn1_Attribute_clone(const Attribute *pElement) {
  return AttributeSyntax::clone(pElement);
}
uint32_t asn1_Attribute_e(uint8_t **pp, const Attribute *pElement) {
  return AttributeSyntax::encode(pp, pElement);
}
const uint8_t *asn1_Attribute_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                Attribute **ppElement, uint32_t depth) {
  return AttributeSyntax::decode(z, end, impl_tag, ppElement, depth);
}

Attribute *asn1_Attributes_getAttribute(const List *attributes, const ObjId *oid) {
  for (int32_t i = 0; i < List_len(attributes); ++i) {
    auto *const attribute = static_cast<Attribute *>(List_get(attributes, i));
    if (asn1_ObjId_cmp(attribute->type, oid) == 0) return attribute;
  }
  return nullptr;
}

OBJECT_IDENTIFIER_GETTER(emailAddress)
OBJECT_IDENTIFIER(unstructuredName, 1, 2, 840, 113549, 1, 9, 2)
OBJECT_IDENTIFIER(contentType, 1, 2, 840, 113549, 1, 9, 3)
OBJECT_IDENTIFIER(messageDigest, 1, 2, 840, 113549, 1, 9, 4)
OBJECT_IDENTIFIER(signingTime, 1, 2, 840, 113549, 1, 9, 5)
OBJECT_IDENTIFIER(counterSignature, 1, 2, 840, 113549, 1, 9, 6)
OBJECT_IDENTIFIER(challengePassword, 1, 2, 840, 113549, 1, 9, 7)
OBJECT_IDENTIFIER(unstructuredAddress, 1, 2, 840, 113549, 1, 9, 8)
OBJECT_IDENTIFIER(extendedCertificateAttributes, 1, 2, 840, 113549, 1, 9, 9)
OBJECT_IDENTIFIER(issuerAndSerialNumber, 1, 2, 840, 113549, 1, 9, 10)
OBJECT_IDENTIFIER(passwordCheck, 1, 2, 840, 113549, 1, 9, 11)
OBJECT_IDENTIFIER(publicKey, 1, 2, 840, 113549, 1, 9, 12)
OBJECT_IDENTIFIER(signingDescription, 1, 2, 840, 113549, 1, 9, 13)
OBJECT_IDENTIFIER(extensionRequest, 1, 2, 840, 113549, 1, 9, 14)
OBJECT_IDENTIFIER(smimeCapabilities, 1, 2, 840, 113549, 1, 9, 15)
OBJECT_IDENTIFIER(friendlyName, 1, 2, 840, 113549, 1, 9, 20)
OBJECT_IDENTIFIER(localKeyId, 1, 2, 840, 113549, 1, 9, 21)
OBJECT_IDENTIFIER(certTypes, 1, 2, 840, 113549, 1, 9, 22)
OBJECT_IDENTIFIER(crlTypes, 1, 2, 840, 113549, 1, 9, 23)
OBJECT_IDENTIFIER(userPKCS12, 2, 16, 840, 1, 113730, 3, 1, 216)
OBJECT_IDENTIFIER(pkcs15Token, 1, 2, 840, 113549, 1, 9, 25, 1)
OBJECT_IDENTIFIER(encryptedPrivateKeyInfo, 1, 2, 840, 113549, 1, 9, 25, 2)
OBJECT_IDENTIFIER(randomNonce, 1, 2, 840, 113549, 1, 9, 25, 3)
OBJECT_IDENTIFIER(sequenceNumber, 1, 2, 840, 113549, 1, 9, 25, 4)
OBJECT_IDENTIFIER(pkcs7PDU, 1, 2, 840, 113549, 1, 9, 25, 5)
OBJECT_IDENTIFIER(dateOfBirth, 1, 3, 6, 1, 5, 5, 7, 9, 1)
OBJECT_IDENTIFIER(placeOfBirth, 1, 3, 6, 1, 5, 5, 7, 9, 2)
OBJECT_IDENTIFIER(gender, 1, 3, 6, 1, 5, 5, 7, 9, 3)
OBJECT_IDENTIFIER(countryOfCitizenship, 1, 3, 6, 1, 5, 5, 7, 9, 4)
OBJECT_IDENTIFIER(countryOfResidence, 1, 3, 6, 1, 5, 5, 7, 9, 5)
