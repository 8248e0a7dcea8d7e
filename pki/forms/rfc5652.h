// Attributes and messages, as fields of records.
#ifndef ORVELPKI_FORMS_RFC5652_H
#define ORVELPKI_FORMS_RFC5652_H

#include "pki/forms/rfc5280.h"

namespace pki {

DECLARE_FORM(Attribute, Attribute, tag::sequence)

}  // namespace pki

#endif
