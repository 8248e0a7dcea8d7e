#include "identifiers.h"

OBJECT_IDENTIFIER(dhpublicnumber, 1, 2, 840, 10046, 2, 1)
OBJECT_IDENTIFIER(id_dsa_with_sha1, 1, 2, 840, 10040, 4, 3)
OBJECT_IDENTIFIER(id_dsa, 1, 2, 840, 10040, 4, 1)
OBJECT_IDENTIFIER(dsaWithSha, 1, 3, 14, 3, 2, 13)
OBJECT_IDENTIFIER(dsaWithSha1, 1, 3, 14, 3, 2, 27)
OBJECT_IDENTIFIER(dsa, 1, 3, 14, 3, 2, 12)
