#include "identifiers.h"

OBJECT_IDENTIFIER(id_pkix_ocsp, 1, 3, 6, 1, 5, 5, 7, 48, 1)
OBJECT_IDENTIFIER(id_pkix_ocsp_basic, 1, 3, 6, 1, 5, 5, 7, 48, 1, 1)
OBJECT_IDENTIFIER(id_pkix_ocsp_nonce, 1, 3, 6, 1, 5, 5, 7, 48, 1, 2)
OBJECT_IDENTIFIER(id_pkix_ocsp_crl, 1, 3, 6, 1, 5, 5, 7, 48, 1, 3)
OBJECT_IDENTIFIER(id_pkix_ocsp_response, 1, 3, 6, 1, 5, 5, 7, 48, 1, 4)
OBJECT_IDENTIFIER(id_pkix_ocsp_nocheck, 1, 3, 6, 1, 5, 5, 7, 48, 1, 5)
OBJECT_IDENTIFIER(id_pkix_ocsp_archive_cutoff, 1, 3, 6, 1, 5, 5, 7, 48, 1, 6)
OBJECT_IDENTIFIER(id_pkix_ocsp_service_locator, 1, 3, 6, 1, 5, 5, 7, 48, 1, 7)
