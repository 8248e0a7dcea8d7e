// Names, as fields of records.
#ifndef ORVELPKI_FORMS_NAMES_H
#define ORVELPKI_FORMS_NAMES_H

#include "pki/forms/universal.h"

namespace pki {

DECLARE_FORM(RelativeDistinguishedName, RelativeDistinguishedName, tag::set)
DECLARE_FORM(RDNSequence, RDNSequence, tag::sequence)
DECLARE_FORM(GeneralName, GeneralName, tag::any)
DECLARE_FORM(GeneralNames, List, tag::sequence)

/// The functions of a name that is one element of the encoding and two members of the record: the
/// structure, which is written, and the text that is made of it.
extern const FieldFunctions name_functions;

template <auto Structure, auto TextOfIt>
consteval Field name_field() {
  Field field =
      with_name(asn1::member_name<TextOfIt>.data(), Required<Structure, RDNSequenceCodec>::field);
  field.text = asn1::offset_of<TextOfIt>();
  field.by_hand = &name_functions;
  return field;
}

template <auto Structure, auto TextOfIt>
struct NameForms {
  static constexpr Field field = name_field<Structure, TextOfIt>();
};

}  // namespace pki

#endif
