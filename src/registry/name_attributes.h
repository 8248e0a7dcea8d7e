// The attributes that the text of a name knows by a short name.
#ifndef ORVELASN1_NAME_ATTRIBUTES_H
#define ORVELASN1_NAME_ATTRIBUTES_H

#include <array>

#include "registry/identifiers.h"

namespace asn1 {

OBJECT_IDENTIFIER_RECORD(korvaneGlobalIdentifier, 1, 3, 6, 1, 4, 1, 53917, 1, 1, 2, 2, 75)
OBJECT_IDENTIFIER_RECORD(emailAddress, 1, 2, 840, 113549, 1, 9, 1)
OBJECT_IDENTIFIER_RECORD(id_at_commonName, 2, 5, 4, 3)
OBJECT_IDENTIFIER_RECORD(id_at_surname, 2, 5, 4, 4)
OBJECT_IDENTIFIER_RECORD(id_at_serialNumber, 2, 5, 4, 5)
OBJECT_IDENTIFIER_RECORD(id_at_countryName, 2, 5, 4, 6)
OBJECT_IDENTIFIER_RECORD(id_at_localityName, 2, 5, 4, 7)
OBJECT_IDENTIFIER_RECORD(id_at_stateOrProvinceName, 2, 5, 4, 8)
OBJECT_IDENTIFIER_RECORD(id_at_organizationName, 2, 5, 4, 10)
OBJECT_IDENTIFIER_RECORD(id_at_organizationalUnitName, 2, 5, 4, 11)
OBJECT_IDENTIFIER_RECORD(id_at_title, 2, 5, 4, 12)
OBJECT_IDENTIFIER_RECORD(id_at_name, 2, 5, 4, 41)
OBJECT_IDENTIFIER_RECORD(id_at_givenName, 2, 5, 4, 42)
OBJECT_IDENTIFIER_RECORD(id_at_initials, 2, 5, 4, 43)
OBJECT_IDENTIFIER_RECORD(id_at_generationQualifier, 2, 5, 4, 44)

struct NameAttribute {
  const ObjId *identifier;
  const char *long_name;
  const char *short_name;
};

/// The reader of a name takes the first row whose short name is a prefix of the text, so the order
/// decides what can be read: "sn" cannot, because "s" stands ahead of it.
inline constexpr NameAttribute oidNameAttributes[] = {
    {&korvaneGlobalIdentifier, "Korvane GID", "gid"},
    {&id_at_commonName, "CommonName", "cn"},
    {&id_at_givenName, "GivenName", "gn"},
    {&id_at_organizationalUnitName, "OrganizationalUnit", "ou"},
    {&id_at_stateOrProvinceName, "StateOrProvince", "sp"},
    {&id_at_countryName, "Country", "c"},
    {&id_at_generationQualifier, "GenerationQualifier", "g"},
    {&id_at_initials, "Initials", "i"},
    {&id_at_localityName, "Locality", "l"},
    {&emailAddress, "E-MailAddress", "m"},
    {&id_at_name, "Name", "n"},
    {&id_at_organizationName, "Organization", "o"},
    {&id_at_surname, "Surname", "s"},
    {&id_at_title, "Title", "t"},
    {&id_at_serialNumber, "SerialNumber", "sn"},
};

/// Finds short names with one look for the identifiers 2.5.4.N, of which most names consist.
class ShortNames {
 public:
  constexpr ShortNames() {
    for (const NameAttribute &row : oidNameAttributes) {
      if (is_attribute_type(*row.identifier)) {
        by_last_arc_[row.identifier->arcs[3]] = row.short_name;
      }
    }
  }

  /// NULL where the identifier has no row.
  const char *find(const ObjId &oid) const {
    // An array of pointers, which cppcheck takes for one of numbers.
    // cppcheck-suppress CastIntegerToAddressAtReturn
    if (is_attribute_type(oid)) return by_last_arc_[oid.arcs[3]];
    for (const NameAttribute &row : oidNameAttributes) {
      if (asn1_ObjId_cmp(&oid, row.identifier) == 0) return row.short_name;
    }
    return nullptr;
  }

 private:
  static constexpr uint32_t arcs = 64;

  static constexpr bool is_attribute_type(const ObjId &oid) {
    return oid.count == 4 && oid.arcs[0] == 2 && oid.arcs[1] == 5 && oid.arcs[2] == 4 &&
           oid.arcs[3] < arcs;
  }

  std::array<const char *, arcs> by_last_arc_{};
};

inline constexpr ShortNames short_names;

}  // namespace asn1

#endif
