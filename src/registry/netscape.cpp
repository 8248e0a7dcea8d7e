#include "registry/identifiers.h"

OBJECT_IDENTIFIER(netscape, 2, 16, 840, 1, 113730)
OBJECT_IDENTIFIER(netscape_cert_extension, 2, 16, 840, 1, 113730, 1)
OBJECT_IDENTIFIER(netscape_cert_type, 2, 16, 840, 1, 113730, 1, 1)
OBJECT_IDENTIFIER(netscape_base_url, 2, 16, 840, 1, 113730, 1, 2)
OBJECT_IDENTIFIER(netscape_revocation_url, 2, 16, 840, 1, 113730, 1, 3)
OBJECT_IDENTIFIER(netscape_ca_revocation_url, 2, 16, 840, 1, 113730, 1, 4)
OBJECT_IDENTIFIER(netscape_cert_renewal_url, 2, 16, 840, 1, 113730, 1, 7)
OBJECT_IDENTIFIER(netscape_ca_policy_url, 2, 16, 840, 1, 113730, 1, 8)
OBJECT_IDENTIFIER(netscape_ssl_server_name, 2, 16, 840, 1, 113730, 1, 12)
OBJECT_IDENTIFIER(netscape_comment, 2, 16, 840, 1, 113730, 1, 13)
OBJECT_IDENTIFIER(netscape_data_type, 2, 16, 840, 1, 113730, 2)
OBJECT_IDENTIFIER(netscape_cert_sequence, 2, 16, 840, 1, 113730, 2, 5)
