// Object identifiers and their names: those of the library's registry, and a few that it lacks.
#ifndef ORVELASN1_TOOL_TEXT_OBJECT_IDENTIFIERS_H
#define ORVELASN1_TOOL_TEXT_OBJECT_IDENTIFIERS_H

#include "text/octets.h"

namespace tool {

/// The dotted form, "2.5.4.3". A first number from 80 up is written under the arc 2, where the
/// library's record has arcs above 2.
std::string dotted(const ObjId *oid);

/// The record of a dotted form; null where the text is none.
Owned<ObjId> from_dotted(std::string_view text);

/// The names under which the registry holds the identifier, as in the getters: "id_at_commonName".
std::vector<std::string_view> registry_names(const ObjId *oid);

/// The name that people use: "commonName", "sha256WithRSAEncryption"; empty for an unknown one.
std::string display_name(const ObjId *oid);

/// The identifiers that have this name, as one of the registry or as a display name, in any case.
std::vector<Owned<ObjId>> named(std::string_view name);

/// A name of the registry, with its value.
struct RegistryEntry {
  std::string_view name;
  const ObjId *(*get)();
};

/// All names of the registry.
std::span<const RegistryEntry> registry();

/// The number of bits of a named elliptic curve; nothing for another identifier.
std::optional<uint32_t> curve_bits(const ObjId *oid);

}  // namespace tool

#endif
