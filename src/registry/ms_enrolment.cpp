#include "registry/identifiers.h"

OBJECT_IDENTIFIER(ms_certificate_request_extensions, 1, 3, 6, 1, 4, 1, 311, 2, 1, 14)
OBJECT_IDENTIFIER(ms_enrolment_csp, 1, 3, 6, 1, 4, 1, 311, 13, 2, 2)
OBJECT_IDENTIFIER(ms_os_version, 1, 3, 6, 1, 4, 1, 311, 13, 2, 3)
OBJECT_IDENTIFIER(ms_certificate_template_name, 1, 3, 6, 1, 4, 1, 311, 20, 2)
OBJECT_IDENTIFIER(ms_certificate_template_name_3, 1, 3, 6, 1, 4, 1, 311, 20, 2, 3)
OBJECT_IDENTIFIER(ms_ca_key_cert_index_pair, 1, 3, 6, 1, 4, 1, 311, 21, 1)
