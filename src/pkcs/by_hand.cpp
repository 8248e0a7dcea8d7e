// The functions of this folder's families that depart from their tables.
#include "core/record.h"
#include "pkcs/pkcs.h"

using namespace asn1;

namespace asn1 {
extern const Type SignedPublicKeyAndChallengeType;
}

// A record with stored octets can be measured, but not written: the caller clears them first.
uint32_t asn1_SignedPublicKeyAndChallenge_e(uint8_t **pp,
                                            const SignedPublicKeyAndChallenge *pElement) {
  if (pp != nullptr && pElement != nullptr && pElement->tbsEncoded != nullptr) return 0;
  return encode(pp, pElement, SignedPublicKeyAndChallengeType);
}

Attribute *asn1_Attributes_getAttribute(const List *attributes, const ObjId *oid) {
  for (int32_t i = 0; i < List_len(attributes); ++i) {
    auto *const attribute = static_cast<Attribute *>(List_get(attributes, i));
    if (asn1_ObjId_cmp(attribute->type, oid) == 0) return attribute;
  }
  return nullptr;
}
