// What holds for every family and every input, and the ends of the process that are no findings.
#ifndef ORVELASN1_TESTS_ATTACK_LAWS_H
#define ORVELASN1_TESTS_ATTACK_LAWS_H

#include <map>
#include <span>
#include <string>

#include "family.h"

namespace attack {

using Octets = std::span<const uint8_t>;

/// Counts the ends of the process by what was said on standard error.
using Endings = std::map<std::string, unsigned long>;

/// Whether the library promises to end the process with these words on some inputs.
bool is_promised_ending(const std::string &words);

/// Decodes, traces, encodes, copies, compares and releases. Gives the law that does not hold, or an
/// empty text:
/// - the result does not depend on the trace, nor on the octets past the end;
/// - depth 0 writes no trace;
/// - the cursor stays in the range;
/// - a failed decoder leaves the place alone or clears it;
/// - what measures n octets writes n octets, and what measures none writes none;
/// - what was written is read, and written, to the same octets;
/// - a copy is written to the same octets, also when its original is gone;
/// - a record is like itself and like its copy;
/// - everything is released once;
/// - only the promised inputs end the process, and none does for a form of an RFC;
/// - what was decoded as such a form has an encoding.
/// Departures are those of the family.
std::string broken_law(const Family &family, Octets input, Endings *endings = nullptr);

/// The same for decoding and releasing alone, with the octets where they stand.
std::string broken_law_in_place(const Family &family, Octets input);

/// Explains the octets where they stand, and decodes them. Gives the law that does not hold, or an
/// empty text:
/// - an explanation allocates nothing, releases nothing, and does not end the process;
/// - its offset lies inside the input, and its texts end in a NUL octet;
/// - nothing is wrong exactly where the decoder takes the octets, and then the offset is the number
///   of those that it takes;
/// - a fault has a sentence.
/// The family must have a type.
std::string broken_agreement(const Family &family, Octets input);

/// The length octets of an element.
struct LengthPlace {
  size_t offset;
  size_t octets;
  uint32_t value;
};

/// The lengths of all elements, down to the primitive ones.
std::vector<LengthPlace> lengths(Octets input);

/// Whether every element, down to the primitive ones, has a definite length in its shortest form;
/// false also where that is not sure.
bool has_shortest_lengths(Octets input);

/// Whether an element, down to the primitive ones, has this number as its tag; true also where that
/// is not sure.
bool has_tag(Octets input, uint8_t number);

/// Whether the element after the OBJECT IDENTIFIER that begins a SEQUENCE is in constructed form;
/// true also where that is not sure.
bool has_constructed_value(Octets input);

}  // namespace attack

#endif
