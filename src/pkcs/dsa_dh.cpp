// DSA and Diffie-Hellman parameters, and their identifiers.
#include "core/export.h"
#include "universal/universal.h"

using namespace asn1;

// clang-format off

// Dss-Parms ::= SEQUENCE { p INTEGER, q INTEGER, g INTEGER }
using DssParmsTable = Sequence<DssParms,
    Required<&DssParms::p, IntegerCodec>,
    Required<&DssParms::q, IntegerCodec>,
    Required<&DssParms::g, IntegerCodec>>;
EXPORT_RECORD(DssParms, DssParmsTable)

// Dss-Sig-Value ::= SEQUENCE { r INTEGER, s INTEGER }
using DssSigValueTable = Sequence<DssSigValue,
    Required<&DssSigValue::r, IntegerCodec>,
    Required<&DssSigValue::s, IntegerCodec>>;
EXPORT_RECORD(DssSigValue, DssSigValueTable)

// ValidationParms ::= SEQUENCE {
//   seed         BIT STRING,
//   pgenCounter  INTEGER }
using ValidationParmsTable = Sequence<ValidationParms,
    Required<&ValidationParms::seed, BitStringCodec>,
    Required<&ValidationParms::pgenCounter, IntegerCodec>>;
EXPORT_RECORD(ValidationParms, ValidationParmsTable)

// DomainParameters ::= SEQUENCE {
//   p                INTEGER,
//   g                INTEGER,
//   q                INTEGER OPTIONAL,
//   j                INTEGER OPTIONAL,
//   validationParms  ValidationParms OPTIONAL }
//
// The decoder does not look which field comes: whatever is left is the next one. A record without
// `j` but with `validationParms` is written in a form that is not read back.
using DomainParametersTable = Sequence<DomainParameters,
    Required<&DomainParameters::p, IntegerCodec>,
    Required<&DomainParameters::g, IntegerCodec>,
    Optional<&DomainParameters::q, IntegerCodec, Presence::anything_left>,
    Optional<&DomainParameters::j, IntegerCodec, Presence::anything_left>,
    Optional<&DomainParameters::validationParms, ValidationParmsCodec, Presence::anything_left>>;
EXPORT_RECORD(DomainParameters, DomainParametersTable)
