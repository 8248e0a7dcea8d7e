// Two flat records of a smart card.
#include "x509/codecs.h"

using namespace asn1;

namespace {

// A table has a line for each field.
// clang-format off

// CardInfo ::= SEQUENCE of six OCTET STRINGs
using CardInfoSyntax = Sequence<CardInfo,
    Required<&CardInfo::octets1, OctetStringCodec>,
    Required<&CardInfo::octets2, OctetStringCodec>,
    Required<&CardInfo::octets3, OctetStringCodec>,
    Required<&CardInfo::octets4, OctetStringCodec>,
    Required<&CardInfo::octets5, OctetStringCodec>,
    Required<&CardInfo::octets6, OctetStringCodec>>;

// PublicKeyMAC ::= SEQUENCE of two OCTET STRINGs
using PublicKeyMACSyntax = Sequence<PublicKeyMAC,
    Required<&PublicKeyMAC::octets1, OctetStringCodec>,
    Required<&PublicKeyMAC::octets2, OctetStringCodec>>;

// clang-format on

}  // namespace

CardInfo *asn1_CardInfo_new() { return CardInfoSyntax::create(); }
void asn1_CardInfo_free(CardInfo *pElement) { CardInfoSyntax::free(pElement); }
uint32_t asn1_CardInfo_e(uint8_t **pp, const CardInfo *pElement) {
  return CardInfoSyntax::encode(pp, pElement);
}
const uint8_t *asn1_CardInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               CardInfo **ppElement, uint32_t depth) {
  return CardInfoSyntax::decode(z, end, impl_tag, ppElement, depth);
}

PublicKeyMAC *asn1_PublicKeyMAC_new() { return PublicKeyMACSyntax::create(); }
void asn1_PublicKeyMAC_free(PublicKeyMAC *pElement) { PublicKeyMACSyntax::free(pElement); }
PublicKeyMAC *asn1_PublicKeyMAC_clone(const PublicKeyMAC *pElement) {
  return PublicKeyMACSyntax::clone(pElement);
}
uint32_t asn1_PublicKeyMAC_e(uint8_t **pp, const PublicKeyMAC *pElement) {
  return PublicKeyMACSyntax::encode(pp, pElement);
}
const uint8_t *asn1_PublicKeyMAC_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   PublicKeyMAC **ppElement, uint32_t depth) {
  return PublicKeyMACSyntax::decode(z, end, impl_tag, ppElement, depth);
}
