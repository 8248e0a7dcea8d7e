// The universal types and AlgorithmIdentifier, as fields of records.
#ifndef ORVELASN1_UNIVERSAL_UNIVERSAL_H
#define ORVELASN1_UNIVERSAL_UNIVERSAL_H

#include "core/table.h"

namespace asn1 {

DECLARE_TYPE(Integer, tag::integer)
DECLARE_TYPE(ObjId, tag::object_identifier)
DECLARE_TYPE(BitString, tag::bit_string)  ///< written with the zero bits at its end left out
DECLARE_TYPE(OctetString, tag::octet_string)
DECLARE_TYPE(IA5String, tag::ia5_string)
DECLARE_TYPE(UTCTime, tag::utc_time)
DECLARE_TYPE(GeneralizedTime, tag::generalized_time)
DECLARE_TYPE(Any, tag::any)  ///< any element: an optional one is there when anything is left
DECLARE_TYPE(AlgId, tag::sequence)
DECLARE_TYPE(Time, tag::utc_time)  ///< which begins with the octet of either alternative

// Numbers inside the record, and NULL, which has no value.
extern const Type BooleanType;
extern const Type EnumeratedType;
extern const Type NullType;
template <const Type &T, uint8_t Identifier>
struct NumberCodec : Codec<T, uint32_t, Identifier> {
  static constexpr bool is_number = true;
};
using BooleanCodec = NumberCodec<BooleanType, tag::boolean>;
using EnumeratedCodec = NumberCodec<EnumeratedType, tag::enumerated>;
using NullCodec = Codec<NullType, void, tag::null>;

/// BIT STRING, written as it stands.
extern const Type BitStringAsStoredType;
using BitStringAsStoredCodec = Codec<BitStringAsStoredType, BitString, tag::bit_string>;

}  // namespace asn1

#endif
