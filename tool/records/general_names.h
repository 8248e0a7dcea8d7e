// General names, as alternative names, issuers and locations in extensions have them.
#ifndef ORVELASN1_TOOL_RECORDS_GENERAL_NAMES_H
#define ORVELASN1_TOOL_RECORDS_GENERAL_NAMES_H

#include "model/node.h"

namespace tool {

/// Returns "DNS www.example.org", "IP 192.0.2.1" and the like, safe to print.
std::string general_name_text(const GeneralName *name, const View &view);

/// Returns one line for each name of a list.
std::vector<std::string> general_name_lines(const List *names, const View &view);

/// Describes the name that a subtree begins at: as any other, but for addresses, which have a mask.
Node subtree_base(const GeneralName *name, const View &view);

/// Returns "192.0.2.1" or "2001:db8::1"; the digits of octets that are no address.
std::string address_text(Octets address);

}  // namespace tool

#endif
