// The names of other mail systems: X.400 addresses and parties of EDI (RFC 5280, 4.2.1.6). The library
// keeps them whole.
#ifndef ORVELASN1_TOOL_RECORDS_MAIL_NAMES_H
#define ORVELASN1_TOOL_RECORDS_MAIL_NAMES_H

#include "text/octets.h"

namespace tool {

/// Returns "C=DE; A=example; S=Doe; G=Jane", of an element [3] ORAddress. Returns an empty text
/// where there is anything that it does not know.
std::string x400_address_text(Octets element);

/// Returns the name of the party, and who assigned it, of an element [5] EDIPartyName. Returns an
/// empty text where there is anything else.
std::string edi_party_text(Octets element);

}  // namespace tool

#endif
