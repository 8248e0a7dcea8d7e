// Comparing names, and finding an attribute in one.
#include "core/library.h"

namespace {

/// Whether two lists are alike as sets, without counting how often an element occurs.
bool alike(const List *a, const List *b, List_comparison cmp) {
  if (List_len(a) != List_len(b)) return false;
  for (int32_t i = 0; i < List_len(a); ++i) {
    if (List_contains(b, List_get(a, i), cmp) < 0) return false;
  }
  return true;
}

}  // namespace

int32_t asn1_AttributeValueAssertion_cmp(const AttributeValueAssertion *a,
                                         const AttributeValueAssertion *b) {
  if (a == nullptr || b == nullptr) return 1;
  return asn1_ObjId_cmp(a->type, b->type) == 0 && a->valueTag == b->valueTag &&
                 asn1_ASN1String_cmp(a->value, b->value) == 0
             ? 0
             : 1;
}

int32_t asn1_RelativeDistinguishedName_cmp(const RelativeDistinguishedName *a,
                                           const RelativeDistinguishedName *b) {
  return alike(a, b, asn1_AttributeValueAssertion_cmp) ? 0 : 1;
}

// The order of the RDNs does not count, as if the sequence were a set.
int32_t asn1_RDNSequence_cmp(const RDNSequence *a, const RDNSequence *b) {
  return alike(a, b, asn1_RelativeDistinguishedName_cmp) ? 0 : 1;
}

AttributeValueAssertion *asn1_RDNSequence_getAttr(const RDNSequence *sequence, const ObjId *oid,
                                                  AttributeValueAssertion **ppElement) {
  for (int32_t i = 0; i < List_len(sequence); ++i) {
    const auto *const rdn = static_cast<const RelativeDistinguishedName *>(List_get(sequence, i));
    for (int32_t j = 0; j < List_len(rdn); ++j) {
      auto *const assertion = static_cast<AttributeValueAssertion *>(List_get(rdn, j));
      *ppElement = assertion;
      if (asn1_ObjId_cmp(assertion->type, oid) == 0) return assertion;
    }
  }
  *ppElement = nullptr;
  return nullptr;
}
