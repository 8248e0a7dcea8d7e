// OBJECT IDENTIFIER with arcs of any size, in the record of liborvelasn1 (pki_x680.h).
#ifndef ORVELPKI_FORMS_IDENTIFIER_H
#define ORVELPKI_FORMS_IDENTIFIER_H

#include "pki/forms/content.h"
#include "pki/forms/universal.h"

namespace pki {

/// Content octets that the type of an attribute of a name may have. Its text is made while the name
/// is decoded, in a time that is quadratic in the size of an arc.
constexpr uint16_t most_attribute_type_octets = 128;
DECLARE_FORM(AttributeType, ObjId, tag::object_identifier)

/// Makes the record of a content. Returns a null pointer where refuse_identifier() refuses it, and
/// when memory is exhausted.
ObjId *identifier_of(View content);

/// Counts the content octets; 0 where the record is not that of an identifier.
uint32_t identifier_octets(const ObjId &identifier);

/// Writes the octets that identifier_octets() counted.
void write_identifier(const ObjId &identifier, uint8_t *to);

}  // namespace pki

#endif
