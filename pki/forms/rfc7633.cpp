// The TLS feature extension (RFC 7633).
#include "pki/export.h"

using namespace pki;

// clang-format off

// Features ::= SEQUENCE OF INTEGER
using FeaturesTable = SequenceOf<IntegerCodec>;
EXPORT_FORM_LIST(Features, List, "Features", FeaturesTable)
