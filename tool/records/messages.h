// What messages (PKCS #7) and the containers that are made of them (PKCS #12) share.
#ifndef ORVELASN1_TOOL_RECORDS_MESSAGES_H
#define ORVELASN1_TOOL_RECORDS_MESSAGES_H

#include "records/type.h"

namespace tool {

extern const Syntax content_info_syntax;  ///< with its content as an ANY

/// Where a message departs from its syntax. Messages inside messages are looked at, too: one
/// without a well-formed identifier ends the process of its decoder.
std::optional<Fault> message_fault(Octets octets);

/// A fault in a part of the octets, as one of the whole.
std::optional<Fault> fault_of_part(std::optional<Fault> fault, Octets part, Octets whole);

/// The components of the first element, as far as they can be told apart, and no more than `most`.
std::vector<Octets> components(Octets element, size_t most = SIZE_MAX);

/// The component of this number; no octets where it is not there.
Octets component(Octets element, size_t number);

/// Releases the encodings that the records of a message keep.
void forget_encodings_of(ContentInfo *message);

}  // namespace tool

#endif
