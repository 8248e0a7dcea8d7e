// Object identifiers and their names: those of the library's registry, and those that it lacks.
#ifndef ORVELASN1_TOOL_TEXT_OBJECT_IDENTIFIERS_H
#define ORVELASN1_TOOL_TEXT_OBJECT_IDENTIFIERS_H

#include "text/json.h"
#include "text/octets.h"

namespace tool {

/// Returns the dotted form, "2.5.4.3", of arcs of any size; of an identifier whose content is too
/// long for that, how long it is. Returns an empty text for what is no identifier.
std::string dotted(const ObjId *oid);

/// Reads a dotted form, with arcs of any size. Returns null for any other text, and for one of more
/// than 4,096 characters.
Owned<ObjId> from_dotted(std::string_view text);

/// Decodes octets that are exactly one OBJECT IDENTIFIER, with arcs of any size. Returns null for
/// others.
Owned<ObjId> from_element(Octets element);

/// Encodes an identifier, with arcs of any size. Returns no octets for what is no identifier.
Bytes element_of(const ObjId *oid);

/// Returns the names of the identifier in the registry, as in the getters: "id_at_commonName".
std::vector<std::string_view> registry_names(const ObjId *oid);

/// Returns the name that people use: "commonName", "sha256WithRSAEncryption"; an empty text for an
/// unknown identifier.
std::string display_name(const ObjId *oid);

/// Finds the identifiers that have this name, as one of the registry or as a display name, in upper
/// or lower case.
std::vector<Owned<ObjId>> named(std::string_view name);

/// A name of the registry, with its value.
struct RegistryEntry {
  std::string_view name;
  const ObjId *(*get)();
};

/// Whether the identifier is that of a getter.
inline bool is(const ObjId *oid, const ObjId *(*get)()) { return asn1_ObjId_cmp(oid, get()) == 0; }

/// Appends the dotted form of an identifier to an object that is being written, under `key`, and
/// its name, if it has one, under `key` with "Name" appended.
void append_oid(std::string &out, std::string_view key, const ObjId *oid);

/// Returns all names of the registry.
std::span<const RegistryEntry> registry();

/// Returns the number of bits of a named elliptic curve; nothing for another identifier.
std::optional<uint32_t> curve_bits(const ObjId *oid);

}  // namespace tool

#endif
