// Attributes and messages, as fields of records.
#ifndef ORVELPKI_FORMS_RFC5652_H
#define ORVELPKI_FORMS_RFC5652_H

#include "pki/export.h"
#include "pki/forms/rfc5280.h"
#include "pki/forms/rfc5280_extensions.h"

namespace pki {

DECLARE_FORM(Attributes, List, tag::set)
DECLARE_FORM(ContentInfo, pki_ContentInfo, tag::sequence)

}  // namespace pki

#endif
