// DSA and Diffie-Hellman parameters, and their identifiers.
#include "registry/identifiers.h"
#include "x509/codecs.h"

using namespace asn1;

namespace {

// A table has a line for each field.
// clang-format off

// Dss-Parms ::= SEQUENCE { p INTEGER, q INTEGER, g INTEGER }
using DssParmsSyntax = Sequence<DssParms,
    Required<&DssParms::p, IntegerCodec>,
    Required<&DssParms::q, IntegerCodec>,
    Required<&DssParms::g, IntegerCodec>>;

// Dss-Sig-Value ::= SEQUENCE { r INTEGER, s INTEGER }
using DssSigValueSyntax = Sequence<DssSigValue,
    Required<&DssSigValue::r, IntegerCodec>,
    Required<&DssSigValue::s, IntegerCodec>>;

// ValidationParms ::= SEQUENCE {
//   seed         BIT STRING,
//   pgenCounter  INTEGER }
using ValidationParmsSyntax = Sequence<ValidationParms,
    Required<&ValidationParms::seed, BitStringCodec>,
    Required<&ValidationParms::pgenCounter, IntegerCodec>>;
using ValidationParmsCodec = ORVELASN1_FAMILY(0x30, ValidationParms);

// DomainParameters ::= SEQUENCE {
//   p                INTEGER,
//   g                INTEGER,
//   q                INTEGER OPTIONAL,
//   j                INTEGER OPTIONAL,
//   validationParms  ValidationParms OPTIONAL }
//
// The decoder does not look which field comes: whatever is left is the next one. A record without
// `j` but with `validationParms` is written in a form that is not read back.
using DomainParametersSyntax = Sequence<DomainParameters,
    Required<&DomainParameters::p, IntegerCodec>,
    Required<&DomainParameters::g, IntegerCodec>,
    Optional<&DomainParameters::q, IntegerCodec, Presence::anything_left>,
    Optional<&DomainParameters::j, IntegerCodec, Presence::anything_left>,
    Optional<&DomainParameters::validationParms, ValidationParmsCodec, Presence::anything_left>>;

// clang-format on

}  // namespace

DssParms *asn1_DssParms_new() { return DssParmsSyntax::create(); }
void asn1_DssParms_free(DssParms *pElement) { DssParmsSyntax::free(pElement); }
DssParms *asn1_DssParms_clone(const DssParms *pElement) { return DssParmsSyntax::clone(pElement); }
uint32_t asn1_DssParms_e(uint8_t **pp, const DssParms *pElement) {
  return DssParmsSyntax::encode(pp, pElement);
}
const uint8_t *asn1_DssParms_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                               DssParms **ppElement, uint32_t depth) {
  return DssParmsSyntax::decode(z, end, impl_tag, ppElement, depth);
}

DssSigValue *asn1_DssSigValue_new() { return DssSigValueSyntax::create(); }
void asn1_DssSigValue_free(DssSigValue *pElement) { DssSigValueSyntax::free(pElement); }
DssSigValue *asn1_DssSigValue_clone(const DssSigValue *pElement) {
  return DssSigValueSyntax::clone(pElement);
}
uint32_t asn1_DssSigValue_e(uint8_t **pp, const DssSigValue *pElement) {
  return DssSigValueSyntax::encode(pp, pElement);
}
const uint8_t *asn1_DssSigValue_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  DssSigValue **ppElement, uint32_t depth) {
  return DssSigValueSyntax::decode(z, end, impl_tag, ppElement, depth);
}

ValidationParms *asn1_ValidationParms_new() { return ValidationParmsSyntax::create(); }
void asn1_ValidationParms_free(ValidationParms *pElement) { ValidationParmsSyntax::free(pElement); }
ValidationParms *asn1_ValidationParms_clone(const ValidationParms *pElement) {
  return ValidationParmsSyntax::clone(pElement);
}
uint32_t asn1_ValidationParms_e(uint8_t **pp, const ValidationParms *pElement) {
  return ValidationParmsSyntax::encode(pp, pElement);
}
const uint8_t *asn1_ValidationParms_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      ValidationParms **ppElement, uint32_t depth) {
  return ValidationParmsSyntax::decode(z, end, impl_tag, ppElement, depth);
}

DomainParameters *asn1_DomainParameters_new() { return DomainParametersSyntax::create(); }
void asn1_DomainParameters_free(DomainParameters *pElement) {
  DomainParametersSyntax::free(pElement);
}
DomainParameters *asn1_DomainParameters_clone(const DomainParameters *pElement) {
  return DomainParametersSyntax::clone(pElement);
}
uint32_t asn1_DomainParameters_e(uint8_t **pp, const DomainParameters *pElement) {
  return DomainParametersSyntax::encode(pp, pElement);
}
const uint8_t *asn1_DomainParameters_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       DomainParameters **ppElement, uint32_t depth) {
  return DomainParametersSyntax::decode(z, end, impl_tag, ppElement, depth);
}

OBJECT_IDENTIFIER(dhpublicnumber, 1, 2, 840, 10046, 2, 1)
OBJECT_IDENTIFIER(id_dsa_with_sha1, 1, 2, 840, 10040, 4, 3)
OBJECT_IDENTIFIER(id_dsa, 1, 2, 840, 10040, 4, 1)
OBJECT_IDENTIFIER(dsaWithSha, 1, 3, 14, 3, 2, 13)
OBJECT_IDENTIFIER(dsaWithSha1, 1, 3, 14, 3, 2, 27)
OBJECT_IDENTIFIER(dsa, 1, 3, 14, 3, 2, 12)
