// Parameters of elliptic-curve keys, and their signatures (RFC 5480).
#include "pki/forms/rfc5480.h"

using namespace pki;

// clang-format off

// ECParameters ::= CHOICE {
//   namedCurve      OBJECT IDENTIFIER,
//   implicitCurve   NULL,
//   specifiedCurve  SpecifiedECDomain }
using ECParametersTable = Choice<pki_ECParameters,
    Alternative<6, "namedCurve", ObjIdCodec>,
    Alternative<5, "implicitCurve", NullCodec>,
    Alternative<16, "specifiedCurve", AnyCodec>>;
EXPORT_FORM(ECParameters, pki_ECParameters, "ECParameters", ECParametersTable)

// ECDSA-Sig-Value ::= SEQUENCE {
//   r  INTEGER,
//   s  INTEGER }
using Sig = pki_ECDSA_Sig_Value;
using ECDSA_Sig_ValueTable = Sequence<Sig,
    Required<&Sig::r, IntegerCodec>,
    Required<&Sig::s, IntegerCodec>>;
EXPORT_FORM(ECDSA_Sig_Value, Sig, "ECDSA-Sig-Value", ECDSA_Sig_ValueTable)
