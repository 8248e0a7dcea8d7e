// Parameters of elliptic-curve keys, as fields of records.
#ifndef ORVELPKI_FORMS_RFC5480_H
#define ORVELPKI_FORMS_RFC5480_H

#include "pki/export.h"

namespace pki {

DECLARE_FORM(ECParameters, pki_ECParameters, tag::any)

}  // namespace pki

#endif
