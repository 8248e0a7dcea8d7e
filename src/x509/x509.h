// Names, certificates and their parts, as fields of records.
#ifndef ORVELASN1_X509_X509_H
#define ORVELASN1_X509_X509_H

#include "core/record.h"
#include "universal/universal.h"

namespace asn1 {

DECLARE_TYPE(RelativeDistinguishedName, tag::set)
DECLARE_TYPE(RDNSequence, tag::sequence)
DECLARE_TYPE(Name, tag::sequence)
DECLARE_TYPE(SubjectPKI, tag::sequence)
DECLARE_TYPE(Extension, tag::sequence)
DECLARE_TYPE(Extensions, tag::sequence)
DECLARE_TYPE(Certificate, tag::sequence)
/// A CHOICE, which begins with the octet of one of its alternatives; it is never optional.
DECLARE_TYPE(GeneralName, tag::any)

using GeneralNamesCodec = SequenceOf<GeneralNameCodec>;

/// The functions of a name that is one element of the encoding and two members of the record: the
/// structure, and the text that is made of it. A name without a text, which is one without an RDN,
/// is a failure. The encoder takes the structure where there is one.
extern const FieldFunctions name_functions;

template <auto Structure, auto TextOfIt>
consteval Field name_field() {
  Field field =
      with_name(member_name<TextOfIt>.data(), Required<Structure, RDNSequenceCodec>::field);
  field.type = &NameType;
  field.text = offset_of<TextOfIt>();
  field.by_hand = &name_functions;
  return field;
}

template <auto Structure, auto TextOfIt>
struct NameForms {
  static constexpr Field field = name_field<Structure, TextOfIt>();
};

}  // namespace asn1

#endif
