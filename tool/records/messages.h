// What messages (PKCS #7) and the containers that are made of them (PKCS #12) share.
#ifndef ORVELASN1_TOOL_RECORDS_MESSAGES_H
#define ORVELASN1_TOOL_RECORDS_MESSAGES_H

#include "records/type.h"

namespace tool {

extern const Syntax content_info_syntax;  ///< with its content as an ANY

/// Finds where a message departs from its syntax. Looks at messages inside messages, too: one
/// without a well-formed identifier ends the process of its decoder.
std::optional<Fault> message_fault(Octets octets);

/// Releases the encodings that the records of a message keep.
void forget_encodings_of(ContentInfo *message);

}  // namespace tool

#endif
