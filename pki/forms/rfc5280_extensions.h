// Attributes and extensions, as fields of records.
#ifndef ORVELPKI_FORMS_RFC5280_EXTENSIONS_H
#define ORVELPKI_FORMS_RFC5280_EXTENSIONS_H

#include "pki/forms/names.h"

namespace pki {

DECLARE_FORM(Attribute, Attribute, tag::sequence)
DECLARE_FORM(AuthorityInfoAccessSyntax, AuthorityInfoAccessSyntax, tag::sequence)

}  // namespace pki

#endif
