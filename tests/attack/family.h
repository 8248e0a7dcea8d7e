// Every family of the library, each with samples of its encodings: what the tests of hostile input and
// the fuzz targets run over. The types and their functions come from the descriptors; what stands in
// families.cpp is what only a person knows.
#ifndef ORVELASN1_TESTS_ATTACK_FAMILY_H
#define ORVELASN1_TESTS_ATTACK_FAMILY_H

#include <orvelasn1.h>
#include <orvelpki.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace attack {

using Bytes = std::vector<uint8_t>;

/// Where a family departs from the law that what was decoded and encoded decodes again and then
/// encodes to the same octets, or from the one that a copy encodes to the same octets.
enum Departure : unsigned {
  none = 0,
  /// ANY is kept short by the needless octets of its length: the laws hold for shortest lengths.
  keeps_any = 1U << 0,
  /// Attribute values of identifier 03 go through the encoder of BIT STRING, which counts bits. The
  /// segments of those in constructed form are joined, and the octets written under the constructed
  /// identifier as they are.
  writes_attribute_values = 1U << 1,
  /// A copy of a name's structure has no identifier octets of its values.
  copy_forgets_value_tags = 1U << 2,
  /// There are no copies, or none of some records.
  may_lack_copies = 1U << 3,
  /// What is written is not read back, or differently.
  is_not_read_back = 1U << 4,
  /// A decoded record can be measured but not written.
  is_not_written = 1U << 5,
  /// A refused header leaves an empty list, which is the caller's.
  may_leave_a_list = 1U << 6,
  /// Not every record can be compared: texts that are no times.
  may_not_compare = 1U << 7,
  /// The short name of a serial number is written in a text, and cannot be read there.
  cannot_read_sn = 1U << 8,
  /// An arc above 0x7FFFFFFF is written as a negative number, and the reader counts arcs by the
  /// digits and dots before the minus: those after it are not read.
  cannot_read_negative_arcs = 1U << 9,
  /// The decoder exists by name only, and refuses everything. What decodes here is the tests' own.
  is_never_read = 1U << 10,
};

/// A family is its functions; null ones are those that there are not.
struct Family : pki_Functions {
  std::string_view group;  ///< of families that belong together
  std::string_view name;
  unsigned departures;
  const pki_Type *type;  ///< null for functions that are no type's

  std::vector<Bytes> samples;  ///< that decode and come back as they are

  bool has(Departure departure) const { return (departures & departure) != 0; }

  /// Whether this is a form of an RFC, whose functions never end the process, and which encodes
  /// whatever was decoded.
  bool is_form() const { return name.starts_with("pki_"); }
};

/// All families, the members of a group side by side. A type that families.cpp does not name is in
/// the group "unknown", without samples: a test fails for it.
const std::vector<Family> &families();

/// The families of a group.
std::vector<const Family *> families_of(std::string_view group);

/// The names of the groups.
std::vector<std::string_view> groups();

}  // namespace attack

#endif
