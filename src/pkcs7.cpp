#include "identifiers.h"

OBJECT_IDENTIFIER(data, 1, 2, 840, 113549, 1, 7, 1)
OBJECT_IDENTIFIER(signedData, 1, 2, 840, 113549, 1, 7, 2)
OBJECT_IDENTIFIER(envelopedData, 1, 2, 840, 113549, 1, 7, 3)
OBJECT_IDENTIFIER(signedAndEnvelopedData, 1, 2, 840, 113549, 1, 7, 4)
OBJECT_IDENTIFIER(digestedData, 1, 2, 840, 113549, 1, 7, 5)
OBJECT_IDENTIFIER(encryptedData, 1, 2, 840, 113549, 1, 7, 6)
