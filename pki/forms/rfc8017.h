// Digests, as fields of records.
#ifndef ORVELPKI_FORMS_RFC8017_H
#define ORVELPKI_FORMS_RFC8017_H

#include "pki/export.h"

namespace pki {

DECLARE_FORM(DigestInfo, DigestInfo, tag::sequence)

}  // namespace pki

#endif
