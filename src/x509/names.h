// Names as fields of records.
#ifndef ORVELASN1_NAMES_H
#define ORVELASN1_NAMES_H

#include "core/pattern.h"

namespace asn1 {

using RdnSequenceCodec = ORVELASN1_FAMILY(0x30, RDNSequence);
using NameCodec = ORVELASN1_FAMILY(0x30, Name);

/// A name that is one element of the encoding and two members of the record: the structure, and the
/// text that is made of it. A name without a text, which is one without an RDN, is a failure. The
/// encoder takes the structure where there is one.
template <auto Sequence, auto Text>
struct NameForms {
  template <class Record>
  static bool decode(ContentReader &in, Record *record, uint32_t depth) {
    if (!read<RdnSequenceCodec>(in, &(record->*Sequence), depth)) return false;
    record->*Text = asn1_RDNSequence_to_Name(record->*Sequence);
    return record->*Text != nullptr;
  }
  template <class Record>
  static bool encode(uint8_t **pp, const Record *record, Measure &size) {
    return size.add(record->*Sequence != nullptr ? asn1_RDNSequence_e(pp, record->*Sequence)
                                                 : asn1_Name_e(pp, record->*Text));
  }
  template <class Record>
  static bool clone(Record *copy, const Record *source) {
    return clone_field<RdnSequenceCodec>(&(copy->*Sequence), source->*Sequence) &&
           clone_field<NameCodec>(&(copy->*Text), source->*Text);
  }
  template <class Record>
  static void free(Record *record) {
    asn1_RDNSequence_free(record->*Sequence);
    asn1_Name_free(record->*Text);
  }
};

}  // namespace asn1

#endif
