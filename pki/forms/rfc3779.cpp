// Blocks of addresses and autonomous system numbers (RFC 3779).
#include "pki/export.h"

using namespace pki;

namespace {

constexpr uint8_t sequence_number = tag::sequence & tag::number;

}  // namespace

// clang-format off

// IPAddress ::= BIT STRING
// IPAddressRange ::= SEQUENCE {
//   min  IPAddress,
//   max  IPAddress }
using IPAddressRangeTable = Sequence<pki_IPAddressRange,
    Required<&pki_IPAddressRange::min, BitStringCodec>,
    Required<&pki_IPAddressRange::max, BitStringCodec>>;
EXPORT_FORM(IPAddressRange, pki_IPAddressRange, "IPAddressRange", IPAddressRangeTable)

// IPAddressOrRange ::= CHOICE {
//   addressPrefix  IPAddress,
//   addressRange   IPAddressRange }
using IPAddressOrRangeTable = Choice<pki_IPAddressOrRange,
    Alternative<tag::bit_string, "addressPrefix", BitStringCodec>,
    Alternative<sequence_number, "addressRange", IPAddressRangeCodec>>;
EXPORT_FORM(IPAddressOrRange, pki_IPAddressOrRange, "IPAddressOrRange", IPAddressOrRangeTable)

// IPAddressChoice ::= CHOICE {
//   inherit            NULL,
//   addressesOrRanges  SEQUENCE OF IPAddressOrRange }
using IPAddressChoiceTable = Choice<pki_IPAddressChoice,
    Alternative<tag::null, "inherit", NullCodec>,
    Alternative<sequence_number, "addressesOrRanges", SequenceOf<IPAddressOrRangeCodec>>>;
EXPORT_FORM(IPAddressChoice, pki_IPAddressChoice, "IPAddressChoice", IPAddressChoiceTable)

// IPAddressFamily ::= SEQUENCE {
//   addressFamily    OCTET STRING,
//   ipAddressChoice  IPAddressChoice }
using IPAddressFamilyTable = Sequence<pki_IPAddressFamily,
    Required<&pki_IPAddressFamily::addressFamily, OctetStringCodec>,
    Required<&pki_IPAddressFamily::ipAddressChoice, IPAddressChoiceCodec>>;
EXPORT_FORM(IPAddressFamily, pki_IPAddressFamily, "IPAddressFamily", IPAddressFamilyTable)

// IPAddrBlocks ::= SEQUENCE OF IPAddressFamily
using IPAddrBlocksTable = SequenceOf<IPAddressFamilyCodec>;
EXPORT_FORM_LIST(IPAddrBlocks, List, "IPAddrBlocks", IPAddrBlocksTable)

// ASId ::= INTEGER
// ASRange ::= SEQUENCE {
//   min  ASId,
//   max  ASId }
using ASRangeTable = Sequence<pki_ASRange,
    Required<&pki_ASRange::min, IntegerCodec>,
    Required<&pki_ASRange::max, IntegerCodec>>;
EXPORT_FORM(ASRange, pki_ASRange, "ASRange", ASRangeTable)

// ASIdOrRange ::= CHOICE {
//   id     ASId,
//   range  ASRange }
using ASIdOrRangeTable = Choice<pki_ASIdOrRange,
    Alternative<tag::integer, "id", IntegerCodec>,
    Alternative<sequence_number, "range", ASRangeCodec>>;
EXPORT_FORM(ASIdOrRange, pki_ASIdOrRange, "ASIdOrRange", ASIdOrRangeTable)

// ASIdentifierChoice ::= CHOICE {
//   inherit        NULL,
//   asIdsOrRanges  SEQUENCE OF ASIdOrRange }
using ASIdentifierChoiceTable = Choice<pki_ASIdentifierChoice,
    Alternative<tag::null, "inherit", NullCodec>,
    Alternative<sequence_number, "asIdsOrRanges", SequenceOf<ASIdOrRangeCodec>>>;
EXPORT_FORM(ASIdentifierChoice, pki_ASIdentifierChoice, "ASIdentifierChoice",
            ASIdentifierChoiceTable)

// ASIdentifiers ::= SEQUENCE {
//   asnum  [0] EXPLICIT ASIdentifierChoice OPTIONAL,
//   rdi    [1] EXPLICIT ASIdentifierChoice OPTIONAL }
using ASIdentifiersTable = Sequence<pki_ASIdentifiers,
    Optional<&pki_ASIdentifiers::asnum, Explicit<0, ASIdentifierChoiceCodec>>,
    Optional<&pki_ASIdentifiers::rdi, Explicit<1, ASIdentifierChoiceCodec>>>;
EXPORT_FORM(ASIdentifiers, pki_ASIdentifiers, "ASIdentifiers", ASIdentifiersTable)
