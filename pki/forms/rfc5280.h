// Certificates and their parts, as fields of records.
#ifndef ORVELPKI_FORMS_RFC5280_H
#define ORVELPKI_FORMS_RFC5280_H

#include "pki/forms/names.h"

namespace pki {

DECLARE_FORM(SubjectPKI, SubjectPKI, tag::sequence)
DECLARE_FORM(Extension, Extension, tag::sequence)
DECLARE_FORM(Extensions, Extensions, tag::sequence)
DECLARE_FORM(Certificate, Certificate, tag::sequence)
DECLARE_FORM(CertificateRevocationList, CertificateRevocationList, tag::sequence)

}  // namespace pki

#endif
