// The public handle of a type is the address of its data.
#ifndef ORVELPKI_PKI_TYPE_H
#define ORVELPKI_PKI_TYPE_H

#include "core/type.h"

#pragma GCC visibility push(default)
#include "orvelpki.h"
#pragma GCC visibility pop

namespace asn1 {

inline const pki_Type *handle_of(const Type *type) {
  return reinterpret_cast<const pki_Type *>(type);
}
inline const Type &type_of(const pki_Type *type) { return *reinterpret_cast<const Type *>(type); }

}  // namespace asn1

#endif
