// Distinguished names as a structure.
#include "core/pattern.h"

using namespace asn1;

// ---------------------------------------------------------------------------------------------
// AttributeValueAssertion
// ---------------------------------------------------------------------------------------------

namespace {

/// The value of an attribute: a string under whatever identifier octet it has, which the record
/// keeps beside it. The copy of a record has no identifier octet; whoever encodes copied names has
/// their stored octets or their text.
struct AttributeValue {
  static bool decode(ContentReader &in, AttributeValueAssertion *record, uint32_t depth) {
    const int octet = in.peek();
    if (octet < 0) return false;
    record->valueTag = octet;
    const uint8_t *next = asn1_ASN1String_d(in.position(), in.end(), 0,
                                            static_cast<uint32_t>(octet), &record->value, depth);
    if (next == nullptr) return false;
    in.move_to(next);
    return true;
  }
  static bool encode(uint8_t **pp, const AttributeValueAssertion *record, Measure &size) {
    return size.add(
        asn1_ASN1String_e(pp, static_cast<uint32_t>(record->valueTag) & 0xFF, record->value));
  }
  static bool clone(AttributeValueAssertion *copy, const AttributeValueAssertion *source) {
    if (source->value == nullptr) return true;
    copy->value = asn1_ASN1String_clone(source->value);
    return copy->value != nullptr;
  }
  static void free(AttributeValueAssertion *record) { asn1_ASN1String_free(record->value); }
};

// A table has a line for each field.
// clang-format off

// AttributeTypeAndValue ::= SEQUENCE {
//   type   OBJECT IDENTIFIER,
//   value  ANY DEFINED BY type }
using AssertionSyntax = Sequence<AttributeValueAssertion,
    Required<&AttributeValueAssertion::type, ObjIdCodec>,
    AttributeValue>;

// clang-format on

using AssertionCodec = ORVELASN1_FAMILY(0x30, AttributeValueAssertion);

// RelativeDistinguishedName ::= SET OF AttributeTypeAndValue
using RdnSyntax = SetOf<AssertionCodec>;
using RdnCodec = ORVELASN1_FAMILY(0x31, RelativeDistinguishedName);

// RDNSequence ::= SEQUENCE OF RelativeDistinguishedName
using RdnSequenceSyntax = SequenceOf<RdnCodec>;

/// Whether two lists are alike as sets, without counting how often an element occurs.
bool alike(const List *a, const List *b, List_comparison cmp) {
  if (List_len(a) != List_len(b)) return false;
  for (int32_t i = 0; i < List_len(a); ++i) {
    if (List_contains(b, List_get(a, i), cmp) < 0) return false;
  }
  return true;
}

}  // namespace

AttributeValueAssertion *asn1_AttributeValueAssertion_new() { return AssertionSyntax::create(); }
void asn1_AttributeValueAssertion_free(AttributeValueAssertion *pElement) {
  AssertionSyntax::free(pElement);
}
AttributeValueAssertion *asn1_AttributeValueAssertion_clone(
    const AttributeValueAssertion *pElement) {
  return AssertionSyntax::clone(pElement);
}
uint32_t asn1_AttributeValueAssertion_e(uint8_t **pp, const AttributeValueAssertion *pElement) {
  return AssertionSyntax::encode(pp, pElement);
}
const uint8_t *asn1_AttributeValueAssertion_d(const uint8_t *z, const uint8_t *end,
                                              uint32_t impl_tag,
                                              AttributeValueAssertion **ppElement, uint32_t depth) {
  return AssertionSyntax::decode(z, end, impl_tag, ppElement, depth);
}

int32_t asn1_AttributeValueAssertion_cmp(const AttributeValueAssertion *a,
                                         const AttributeValueAssertion *b) {
  if (a == nullptr || b == nullptr) return 1;
  return asn1_ObjId_cmp(a->type, b->type) == 0 && a->valueTag == b->valueTag &&
                 asn1_ASN1String_cmp(a->value, b->value) == 0
             ? 0
             : 1;
}

// ---------------------------------------------------------------------------------------------
// RelativeDistinguishedName, RDNSequence
// ---------------------------------------------------------------------------------------------

void asn1_RelativeDistinguishedName_free(RelativeDistinguishedName *pElement) {
  RdnSyntax::free(pElement);
}
RelativeDistinguishedName *asn1_RelativeDistinguishedName_clone(
    const RelativeDistinguishedName *pElement) {
  return RdnSyntax::clone(pElement);
}
uint32_t asn1_RelativeDistinguishedName_e(uint8_t **pp, const RelativeDistinguishedName *pElement) {
  return RdnSyntax::encode(pp, pElement);
}
const uint8_t *asn1_RelativeDistinguishedName_d(const uint8_t *z, const uint8_t *end,
                                                uint32_t impl_tag,
                                                RelativeDistinguishedName **ppElement,
                                                uint32_t depth) {
  return RdnSyntax::decode(z, end, impl_tag, ppElement, depth);
}
int32_t asn1_RelativeDistinguishedName_cmp(const RelativeDistinguishedName *a,
                                           const RelativeDistinguishedName *b) {
  return alike(a, b, asn1_AttributeValueAssertion_cmp) ? 0 : 1;
}

void asn1_RDNSequence_free(RDNSequence *pElement) { RdnSequenceSyntax::free(pElement); }
RDNSequence *asn1_RDNSequence_clone(const RDNSequence *pElement) {
  return RdnSequenceSyntax::clone(pElement);
}
uint32_t asn1_RDNSequence_e(uint8_t **pp, const RDNSequence *pElement) {
  return RdnSequenceSyntax::encode(pp, pElement);
}
const uint8_t *asn1_RDNSequence_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  RDNSequence **ppElement, uint32_t depth) {
  return RdnSequenceSyntax::decode(z, end, impl_tag, ppElement, depth);
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
