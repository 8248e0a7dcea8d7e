// The objects of a smart card, for their decoder and their table.
#ifndef ORVELASN1_CARD_GDO_H
#define ORVELASN1_CARD_GDO_H

#include "core/record.h"
#include "universal/universal.h"

namespace asn1 {

/// What the identifier of an object says that it holds.
enum class GdoRole : uint8_t { leaf, container, attribute_holder };
GdoRole gdo_role(unsigned long id);

// An object at a plain place, and one at a nested-set place.
extern const Type GDOObjectSetOfType;
extern const Type GDOObjectSetOfSetOfType;

/// The type of the children of an object that is no leaf.
const Type &gdo_children(unsigned long id, const Type &type);

}  // namespace asn1

#endif
