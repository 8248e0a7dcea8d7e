// Distinguished names and general names (RFC 5280, 4.1.2.4, 4.2.1.6).
#include "pki/forms/names.h"

#include "core/engine.h"
#include "pki/export.h"
#include "pki/forms/content.h"
#include "pki/forms/identifier.h"

using namespace pki;

namespace {

// The value of an attribute: the record keeps its identifier octet and its content as it stands.
AttributeValueAssertion &assertion(void *record) {
  return *static_cast<AttributeValueAssertion *>(record);
}
const AttributeValueAssertion &assertion(const void *record) {
  return *static_cast<const AttributeValueAssertion *>(record);
}

/// The value, where the record is filled with one that has an encoding.
const ASN1String *value_of(const AttributeValueAssertion &from) {
  const bool has_octets =
      from.value != nullptr && (from.value->length == 0 || from.value->data != nullptr);
  return is_attribute_tag(from.valueTag) && has_octets ? from.value : nullptr;
}

constexpr FieldFunctions value_functions{
    .decode =
        [](const Field &, ContentReader &in, void *record, uint32_t depth) {
          AttributeValueAssertion &to = assertion(record);
          to.valueTag = in.peek();
          Header header;
          const uint8_t *octets = nullptr;
          if (!is_attribute_tag(to.valueTag) ||
              !in.read_exact_header(0, static_cast<uint8_t>(to.valueTag), Forms::one, &header,
                                    depth) ||
              !in.take(header.length, &octets)) {
            return false;
          }
          to.value = asn1::new_record<ASN1String>();
          if (to.value == nullptr || header.length == 0) return to.value != nullptr;
          to.value->data = asn1::new_array<uint8_t>(header.length);
          if (to.value->data == nullptr) return false;
          std::memcpy(to.value->data, octets, header.length);
          to.value->length = header.length;
          if (depth != 0) [[unlikely]] {
            asn1_LogByteArray(depth, octets, static_cast<int32_t>(header.length));
          }
          return true;
        },
    .measure =
        [](const Field &, const void *record, asn1::Measure &size) {
          const ASN1String *const value = value_of(assertion(record));
          return value != nullptr && size.add(asn1::element_octets(value->length));
        },
    .write =
        [](const Field &, asn1::BackWriter &out, const void *record) {
          const AttributeValueAssertion &from = assertion(record);
          out.octets(from.value->data, from.value->length);
          out.header(static_cast<uint8_t>(from.valueTag), from.value->length);
        },
    .clone =
        [](const Field &, void *copy, const void *source) {
          const AttributeValueAssertion &from = assertion(source);
          assertion(copy).valueTag = from.valueTag;
          if (from.value == nullptr) return true;
          assertion(copy).value = asn1_ASN1String_clone(from.value);
          return assertion(copy).value != nullptr;
        }};

constinit const Type attribute_value{
    .kind = Kind::attribute_value,
    .exact = true,
    .by_hand = {.free =
                    [](void *value) { asn1_ASN1String_free(static_cast<ASN1String *>(value)); }},
    .name = "AttributeValue",
    .record = "ASN1String"};

using AttributeValueCodec = Codec<attribute_value, ASN1String, tag::any>;

template <class F, const FieldFunctions &Functions>
using ByHand = asn1::ByHand<F, Functions>;

}  // namespace

namespace pki {

constinit const FieldFunctions name_functions{
    .decode =
        [](const Field &field, ContentReader &in, void *record, uint32_t depth) {
          void *const structure = asn1::member_of(record, field.member);
          if (!read(in, structure, depth, RDNSequenceType)) return false;
          Name *const text =
              pki_RDNSequence_text(static_cast<const RDNSequence *>(asn1::load(structure)));
          asn1::store(asn1::member_of(record, field.text), text);
          return text != nullptr;
        },
    .clone =
        [](const Field &field, void *copy, const void *source) {
          const auto *const text =
              static_cast<const Name *>(asn1::load(asn1::member_of(source, field.text)));
          if (text != nullptr) {
            Name *const made = asn1_Name_clone(text);
            asn1::store(asn1::member_of(copy, field.text), made);
            if (made == nullptr) return false;
          }
          return asn1::clone_member(asn1::member_of(copy, field.member),
                                    asn1::member_of(source, field.member), RDNSequenceType);
        },
    .free =
        [](const Field &field, void *record) {
          asn1::release(asn1::load(asn1::member_of(record, field.member)), RDNSequenceType);
          asn1_Name_free(static_cast<Name *>(asn1::load(asn1::member_of(record, field.text))));
        }};

}  // namespace pki

// clang-format off

// AttributeTypeAndValue ::= SEQUENCE {
//   type   AttributeType,
//   value  AttributeValue }
using AttributeValueAssertionTable = Unrolled<Sequence<AttributeValueAssertion,
    Required<&AttributeValueAssertion::type, AttributeTypeCodec>,
    ByHand<Required<&AttributeValueAssertion::value, AttributeValueCodec>, value_functions>>>;
EXPORT_FORM(AttributeValueAssertion, AttributeValueAssertion, "AttributeTypeAndValue",
            AttributeValueAssertionTable)

// RelativeDistinguishedName ::= SET OF AttributeTypeAndValue
using RelativeDistinguishedNameTable = UnrolledList<SetOf<AttributeValueAssertionCodec>>;
EXPORT_FORM_LIST(RelativeDistinguishedName, RelativeDistinguishedName, "RelativeDistinguishedName",
                 RelativeDistinguishedNameTable)

// RDNSequence ::= SEQUENCE OF RelativeDistinguishedName
using RDNSequenceTable = UnrolledList<SequenceOf<RelativeDistinguishedNameCodec>>;
EXPORT_FORM_LIST(RDNSequence, RDNSequence, "RDNSequence", RDNSequenceTable)

// AnotherName ::= SEQUENCE {
//   type-id      OBJECT IDENTIFIER,
//   value    [0] EXPLICIT ANY DEFINED BY type-id }
using OtherNameTable = Sequence<OtherName,
    Required<&OtherName::type, ObjIdCodec>,
    Required<&OtherName::value, Explicit<0, AnyCodec>>>;
EXPORT_FORM(OtherName, OtherName, "AnotherName", OtherNameTable)

// GeneralName ::= CHOICE {
//   otherName                  [0] IMPLICIT AnotherName,
//   rfc822Name                 [1] IMPLICIT IA5String,
//   dNSName                    [2] IMPLICIT IA5String,
//   x400Address                [3] IMPLICIT ORAddress,
//   directoryName              [4] EXPLICIT Name,
//   ediPartyName               [5] IMPLICIT EDIPartyName,
//   uniformResourceIdentifier  [6] IMPLICIT IA5String,
//   iPAddress                  [7] IMPLICIT OCTET STRING,
//   registeredID               [8] IMPLICIT OBJECT IDENTIFIER }
using GeneralNameTable = Choice<GeneralName,
    Alternative<0, "otherName", Implicit<0, OtherNameCodec>>,
    Alternative<1, "rfc822Name", Implicit<1, IA5StringCodec>>,
    Alternative<2, "dNSName", Implicit<2, IA5StringCodec>>,
    Alternative<3, "x400Address", TaggedAnyCodec<3>>,
    Alternative<4, "directoryName", Explicit<4, RDNSequenceCodec>>,
    Alternative<5, "ediPartyName", TaggedAnyCodec<5>>,
    Alternative<6, "uniformResourceIdentifier", Implicit<6, IA5StringCodec>>,
    Alternative<7, "iPAddress", Implicit<7, OctetStringCodec>>,
    Alternative<8, "registeredID", Implicit<8, ObjIdCodec>>>;
EXPORT_FORM(GeneralName, GeneralName, "GeneralName", GeneralNameTable)

// GeneralNames ::= SEQUENCE OF GeneralName
using GeneralNamesTable = SequenceOf<GeneralNameCodec>;
EXPORT_FORM_LIST(GeneralNames, List, "GeneralNames", GeneralNamesTable)
