// Distinguished names (X.501; RFC 5280, 4.1.2.4).
#include "core/export.h"
#include "x509/x509.h"

using namespace asn1;

namespace {

// The value of an attribute: a string under whatever identifier octet it has, which the record keeps
// beside it. The copy of a record has no identifier octet; whoever encodes copied names has their
// stored octets or their text.
const AttributeValueAssertion &assertion(const void *record) {
  return *static_cast<const AttributeValueAssertion *>(record);
}

uint32_t encode_value(uint8_t **pp, const AttributeValueAssertion &from) {
  return asn1_ASN1String_e(pp, static_cast<uint32_t>(from.valueTag) & 0xFF, from.value);
}

constexpr FieldFunctions value_functions{
    .decode =
        [](const Field &, ContentReader &in, void *record, uint32_t depth) {
          auto *const to = static_cast<AttributeValueAssertion *>(record);
          const int octet = in.peek();
          if (octet < 0) return false;
          to->valueTag = octet;
          const uint8_t *const next = asn1_ASN1String_d(
              in.position(), in.end(), 0, static_cast<uint32_t>(octet), &to->value, depth);
          if (next == nullptr) return false;
          in.move_to(next);
          return true;
        },
    .measure = [](const Field &, const void *record,
                  Measure &size) { return size.add(encode_value(nullptr, assertion(record))); },
    .write =
        [](const Field &, BackWriter &out, const void *record) {
          out.element([record](uint8_t **pp) { return encode_value(pp, assertion(record)); });
        }};

constexpr Type attribute_value{
    .kind = Kind::attribute_value,
    .by_hand = {
        .clone = [](const void *value) -> void * {
          return asn1_ASN1String_clone(static_cast<const ASN1String *>(value));
        },
        .free = [](void *value) { asn1_ASN1String_free(static_cast<ASN1String *>(value)); }}};

using AttributeValueCodec = Codec<attribute_value, ASN1String, tag::any>;

}  // namespace

// clang-format off

// AttributeTypeAndValue ::= SEQUENCE {
//   type   OBJECT IDENTIFIER,
//   value  ANY DEFINED BY type }
using AttributeValueAssertionTable = Unrolled<Sequence<AttributeValueAssertion,
    Required<&AttributeValueAssertion::type, ObjIdCodec>,
    ByHand<Required<&AttributeValueAssertion::value, AttributeValueCodec>, value_functions>>>;
EXPORT_NAMED(AttributeValueAssertion, "AttributeTypeAndValue", AttributeValueAssertionTable,
             NEW, DECODER, ENCODER, CLONE, FREE, OWN_COMPARE)

// RelativeDistinguishedName ::= SET OF AttributeTypeAndValue
using RelativeDistinguishedNameTable = UnrolledList<SetOf<AttributeValueAssertionCodec>>;
EXPORT(RelativeDistinguishedName, RelativeDistinguishedNameTable,
       DECODER, ENCODER, CLONE, FREE, OWN_COMPARE)

// RDNSequence ::= SEQUENCE OF RelativeDistinguishedName
using RDNSequenceTable = UnrolledList<SequenceOf<RelativeDistinguishedNameCodec>>;
EXPORT(RDNSequence, RDNSequenceTable, DECODER, ENCODER, CLONE, FREE, OWN_COMPARE)

// clang-format on

namespace asn1 {

// Name ::= CHOICE { rdnSequence  RDNSequence }, as a text. Its functions are spelled out.
constinit const Type NameType = defined(
    {.kind = Kind::name, .identifier = tag::sequence, .element = &RelativeDistinguishedNameType},
    "Name", "Name", adapted<Name, asn1_Name_d, asn1_Name_e, asn1_Name_clone, asn1_Name_free>,
    {ORVELASN1_DESCRIPTION(Name, DECODER, ENCODER, CLONE, FREE)});

namespace {

/// The form of a name that is encoded: the structure, where there is one.
struct Form {
  const void *value;
  const Type &type;

  Form(const Field &field, const void *record)
      : Form(load(member_of(record, field.member)), load(member_of(record, field.text))) {}

 private:
  Form(const void *structure, const void *text)
      : value(structure != nullptr ? structure : text),
        type(structure != nullptr ? RDNSequenceType : NameType) {}
};

}  // namespace

constinit const FieldFunctions name_functions{
    .decode =
        [](const Field &field, ContentReader &in, void *record, uint32_t depth) {
          void *const structure = member_of(record, field.member);
          if (!read(in, structure, depth, RDNSequenceType)) return false;
          Name *const text = asn1_RDNSequence_to_Name(static_cast<RDNSequence *>(load(structure)));
          store(member_of(record, field.text), text);
          return text != nullptr;
        },
    .measure =
        [](const Field &field, const void *record, Measure &size) {
          const Form form(field, record);
          return size.add(measure(form.value, form.type));
        },
    .write =
        [](const Field &field, BackWriter &out, const void *record) {
          const Form form(field, record);
          write(out, form.value, form.type);
        },
    .clone =
        [](const Field &field, void *copy, const void *source) {
          return clone_member(member_of(copy, field.member), member_of(source, field.member),
                              RDNSequenceType) &&
                 clone_member(member_of(copy, field.text), member_of(source, field.text), NameType);
        },
    .free =
        [](const Field &field, void *record) {
          release(load(member_of(record, field.member)), RDNSequenceType);
          release(load(member_of(record, field.text)), NameType);
        }};

}  // namespace asn1
