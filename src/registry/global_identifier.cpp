#include "registry/name_attributes.h"

using namespace asn1;

OBJECT_IDENTIFIER_GETTER(korvaneGlobalIdentifier)
