// CRLs of any size, described without a record of their entries.
#ifndef ORVELASN1_TOOL_RECORDS_CRL_IN_PLACE_H
#define ORVELASN1_TOOL_RECORDS_CRL_IN_PLACE_H

#include "model/node.h"

namespace tool {

/// Describes a CRL whose entries stay where they are: each is decoded when it is described. The
/// octets must outlive the node. Returns nothing where they are not exactly one CRL.
std::optional<Node> crl_in_place(Octets octets, const View &view);

}  // namespace tool

#endif
