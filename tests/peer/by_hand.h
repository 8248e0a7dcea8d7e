// Shared by the tests of keys, messages and exchange files: values as the tool prints them, records
// filled by hand, and checks that octets are written as they were read.
#ifndef ORVELASN1_TESTS_PEER_BY_HAND_H
#define ORVELASN1_TESTS_PEER_BY_HAND_H

#include <records.h>

#include "openssl.h"

#define RECORD_FAMILY(T) \
  RecordFamily<T> { asn1_##T##_new, asn1_##T##_free, asn1_##T##_e, asn1_##T##_d, asn1_##T##_clone }

namespace support {

/* ------------------------------------------------------------------------------------------- */
/* What the tool prints                                                                          */
/* ------------------------------------------------------------------------------------------- */

/// Returns the number that `report` has after `label`, most significant octet first and without
/// leading zero octets. The report has it as in "65537 (0x10001)", or as lines of octets.
inline Bytes printed_number(const std::string &label, const std::string &report) {
  std::string digits;
  std::string line = after(label, report);
  const size_t in_hex = line.find("(0x");
  if (in_hex != std::string::npos) {
    digits = line.substr(in_hex + 3, line.find(')') - in_hex - 3);
  } else {
    std::istringstream lines(report.substr(report.find(label) + label.size()));
    std::getline(lines, line);
    while (std::getline(lines, line) &&
           line.find_first_not_of(" :0123456789abcdef") == std::string::npos)
      digits += line;
    std::erase_if(digits, [](char c) { return c == ' ' || c == ':'; });
  }
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
  return hex(digits.size() % 2 == 0 ? digits : "0" + digits);
}

/// Writes octets as a PEM file for those commands that take no DER.
inline void write_pem(const std::string &file, const std::string &label, const Bytes &octets) {
  write_file("pem.der", octets);
  write_file(file, text("-----BEGIN " + label + "-----\n" + openssl("base64 -in pem.der") +
                        "-----END " + label + "-----\n"));
}

/// The identifiers of the digests, by the tool's names.
inline const std::map<std::string, const char *> digest_identifiers = {
    {"md5", "1.2.840.113549.2.5"},        {"sha1", "1.3.14.3.2.26"},
    {"sha224", "2.16.840.1.101.3.4.2.4"}, {"sha256", "2.16.840.1.101.3.4.2.1"},
    {"sha384", "2.16.840.1.101.3.4.2.2"}, {"sha512", "2.16.840.1.101.3.4.2.3"}};

inline Bytes digest_of(const std::string &algorithm, const Bytes &octets) {
  write_file("to_be_digested", octets);
  openssl("dgst -" + algorithm + " -binary -out digest to_be_digested");
  return read_file("digest");
}

/* ------------------------------------------------------------------------------------------- */
/* Records filled by hand, which the caller owns                                                 */
/* ------------------------------------------------------------------------------------------- */

/// Returns the positive INTEGER of these octets, most significant first.
inline Integer *number(const Bytes &octets) {
  Integer *result = asn1_Integer_new(static_cast<uint32_t>(octets.size()));
  std::copy(octets.begin(), octets.end(), result->data);
  return result;
}

inline Any *whole_element(const Bytes &octets) {
  Any *result = asn1_Any_new(static_cast<uint32_t>(octets.size()));
  std::copy(octets.begin(), octets.end(), result->data);
  return result;
}

inline Any *null_element() { return asn1_Any_clone(asn1_Any_NULL()); }

inline ObjId *identifier(const ObjId *constant) { return asn1_ObjId_clone(constant); }
inline ObjId *identifier(const char *dotted) { return asn1_ObjId_parse(&dotted); }

/// Returns an algorithm. It has no parameters where `parameters` is null.
inline AlgId *algorithm(ObjId *id, Any *parameters) {
  AlgId *result = asn1_AlgId_new();
  result->algorithm = id;
  result->parameters = parameters;
  return result;
}

inline AlgId *digest_algorithm(const std::string &name) {
  return algorithm(identifier(digest_identifiers.at(name)), null_element());
}

inline Attribute *attribute(const ObjId *type, const Bytes &only_value) {
  Attribute *result = asn1_Attribute_new();
  result->type = asn1_ObjId_clone(type);
  result->values = owning_list({whole_element(only_value)});
  return result;
}

/* ------------------------------------------------------------------------------------------- */
/* Octets that are written as they were read                                                     */
/* ------------------------------------------------------------------------------------------- */

/// Returns the record of the octets. Checks that it and a copy of it are written as these octets.
template <class T>
Held<T> kept(const RecordFamily<T> &family, const Bytes &octets) {
  Held<T> record = decoded(family, octets);
  if (record == nullptr) throw std::runtime_error("refused: " + upper_hex(octets));
  EXPECT_EQ(octets, encoded(family, record));
  EXPECT_EQ(octets, encoded(family, cloned(family, record)));
  return record;
}

inline void expect_algorithm(const Element &element, const AlgId *algorithm) {
  EXPECT_EQ(element.whole, encode(asn1_AlgId_e, algorithm));
  EXPECT_EQ(element.parts.at(0).whole, encode(asn1_ObjId_e, algorithm->algorithm));
  ASSERT_EQ(element.parts.size() == 2, algorithm->parameters != nullptr);
  if (algorithm->parameters != nullptr) {
    EXPECT_EQ(element.parts[1].whole, value(algorithm->parameters));
  }
}

}  // namespace support

#endif
