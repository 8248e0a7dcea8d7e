// Two flat records of a smart card.
#include "core/export.h"
#include "universal/universal.h"

using namespace asn1;

// clang-format off

// CardInfo ::= SEQUENCE of six OCTET STRINGs
using CardInfoTable = Sequence<CardInfo,
    Required<&CardInfo::octets1, OctetStringCodec>,
    Required<&CardInfo::octets2, OctetStringCodec>,
    Required<&CardInfo::octets3, OctetStringCodec>,
    Required<&CardInfo::octets4, OctetStringCodec>,
    Required<&CardInfo::octets5, OctetStringCodec>,
    Required<&CardInfo::octets6, OctetStringCodec>>;
EXPORT(CardInfo, CardInfoTable, NEW, DECODER, ENCODER, FREE)

// PublicKeyMAC ::= SEQUENCE of two OCTET STRINGs
using PublicKeyMACTable = Sequence<PublicKeyMAC,
    Required<&PublicKeyMAC::octets1, OctetStringCodec>,
    Required<&PublicKeyMAC::octets2, OctetStringCodec>>;
EXPORT_RECORD(PublicKeyMAC, PublicKeyMACTable)
