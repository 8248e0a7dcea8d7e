// The functions of this folder's families that depart from their tables.
#include "core/record.h"
#include "x509/x509.h"

using namespace asn1;

namespace asn1 {
extern const Type OtherNameType;
}

// The public encoder has a parameter more than the others.
uint32_t asn1_OtherName_e(uint8_t **pp, const void *, const OtherName *pElement) {
  return encode(pp, pElement, OtherNameType);
}

// A field that was copied ends the copy: one comes back only of a record without fields, or where
// the field could not be copied.
OtherName *asn1_OtherName_clone(const OtherName *pElement) {
  if (pElement == nullptr) return nullptr;
  OtherName *const copy = asn1_OtherName_new();
  if (copy == nullptr) return nullptr;
  copy->type = asn1_ObjId_clone(pElement->type);
  if (copy->type == nullptr) copy->value = asn1_Any_clone(pElement->value);
  if (copy->type == nullptr && copy->value == nullptr) return copy;
  asn1_OtherName_free(copy);
  return nullptr;
}

// The issuer's name hash takes no part, nor do the parameters of the hash algorithm.
int32_t asn1_CertID_cmp(const CertID *a, const CertID *b) {
  if (a == nullptr || b == nullptr) return 1;
  if (a->hashAlgorithm == nullptr || b->hashAlgorithm == nullptr) return 1;
  return asn1_ObjId_cmp(a->hashAlgorithm->algorithm, b->hashAlgorithm->algorithm) == 0 &&
                 asn1_Integer_cmp(a->serialNumber, b->serialNumber) == 0 &&
                 asn1_OctetString_cmp(a->issuerKeyHash, b->issuerKeyHash) == 0
             ? 0
             : 1;
}
