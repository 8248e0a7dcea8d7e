// Constant object identifiers, each with a getter.
#ifndef ORVELASN1_IDENTIFIERS_H
#define ORVELASN1_IDENTIFIERS_H

#include "core/library.h"

/// Defines the constant record `name` of the arcs that follow. The record has a pointer to arcs
/// that may be written, which the constant ones never are.
// NOLINTBEGIN(bugprone-macro-parentheses): `name` is a name, which parentheses do not go around.
#define OBJECT_IDENTIFIER_RECORD(name, ...)                                \
  inline constexpr uint32_t name##_oid[] = {__VA_ARGS__};                  \
  inline constexpr ObjId name = {sizeof name##_oid / sizeof name##_oid[0], \
                                 const_cast<uint32_t *>(name##_oid)};

/// Defines the public getter of a record.
#define OBJECT_IDENTIFIER_GETTER(name) \
  const ObjId *asn1_Get_##name() { return &name; }

#define OBJECT_IDENTIFIER(name, ...)          \
  namespace {                                 \
  OBJECT_IDENTIFIER_RECORD(name, __VA_ARGS__) \
  }                                           \
  OBJECT_IDENTIFIER_GETTER(name)
// NOLINTEND(bugprone-macro-parentheses)

#endif
