// The descriptors of the types, against the public headers and the RFCs, and what pki_explain() says
// of inputs that are made by hand.
#include <orvelpki.h>

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <set>

#include "nest.h"
#include "support.h"
#include "zeros.h"

namespace descriptor_test {

namespace {

using support::Bytes;
using support::element;
using support::hex;
using support::Input;
using support::Nest;
using support::on_small_stack;
using support::text;
using support::operator+;

// ---------------------------------------------------------------------------------------------
// The public headers
// ---------------------------------------------------------------------------------------------

/// A member of a record.
struct Member {
  std::string name;
  std::string type;  ///< without its "*"
  bool is_pointer;
};

struct Record {
  std::map<size_t, Member> members;  ///< by the octets in front of them
  size_t size = 0;
};

/// The declarations of the public headers, on one line: without comments and directives, and with
/// one blank where there were more.
std::string declarations() {
  std::string all, plain;
  for (const auto &file : std::filesystem::directory_iterator(PUBLIC_HEADERS)) {
    std::ifstream in(file.path());
    for (std::string line; std::getline(in, line);) {
      if (line.starts_with('#')) {
        while (line.ends_with('\\') && std::getline(in, line)) continue;
      } else {
        all += line + ' ';
      }
    }
  }
  for (size_t at = 0; at < all.size(); ++at) {
    if (all.compare(at, 2, "/*") == 0) at = all.find("*/", at) + 2;
    if (all[at] != ' ' || (!plain.empty() && plain.back() != ' ' && plain.back() != '(')) {
      plain += all[at];
    }
  }
  return plain;
}

const std::string &headers() {
  static const std::string text = declarations();
  return text;
}

std::vector<std::string> split(const std::string &text, const std::string &separator) {
  std::vector<std::string> parts;
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find(separator, start), text.size());
    parts.push_back(text.substr(start, end - start));
    start = end + separator.size();
  }
  return parts;
}

size_t octets_of(const Member &member) {
  static const std::map<std::string, size_t> octets = {{"uint8_t", 1},
                                                       {"int32_t", 4},
                                                       {"uint32_t", 4},
                                                       {"uint64_t", 8},
                                                       {"unsigned long", sizeof(unsigned long)}};
  return member.is_pointer ? sizeof(void *) : octets.at(member.type);
}

/// The members of `typedef struct T { ... } T;`, laid out as the C ABI does it.
Record record_of(const std::string &name) {
  Record record;
  const std::string opening = "typedef struct " + name + " { ", closing = "} " + name + ";";
  const size_t start = headers().find(opening) + opening.size();
  if (start < opening.size()) return record;
  size_t widest = 1;
  for (const std::string &line :
       split(headers().substr(start, headers().find(closing, start) - start), "; ")) {
    const size_t blank = line.rfind(' ');
    Member member{line.substr(blank + 1), line.substr(0, blank), false};
    if (member.name.starts_with('*')) {
      member.name.erase(0, 1);
      member.is_pointer = true;
    }
    const size_t octets = octets_of(member);
    widest = std::max(widest, octets);
    record.size = (record.size + octets - 1) / octets * octets;
    record.members[record.size] = member;
    record.size += octets;
  }
  record.size = (record.size + widest - 1) / widest * widest;
  return record;
}

bool declares(const std::string &declaration) {
  return headers().find(declaration) != std::string::npos;
}

/// The T of every decoder asn1_T_d, and the pki_T of every pki_T_d, that needs nothing but the
/// input, the tag, a place and the depth; and the record that it makes.
const std::map<std::string, std::string> &families() {
  static const auto all = [] {
    const std::string prefix = "const uint8_t *";
    std::map<std::string, std::string> found;
    for (size_t at = headers().find(prefix); at != std::string::npos;
         at = headers().find(prefix, at + 1)) {
      const size_t open = headers().find('(', at), close = headers().find(");", at);
      std::string name = headers().substr(at + prefix.size(), open - at - prefix.size());
      const auto parameters = split(headers().substr(open + 1, close - open - 1), ", ");
      if (!name.ends_with("_d") || parameters.size() != 5 || parameters[2] != "uint32_t impl_tag" ||
          parameters[4] != "uint32_t depth") {
        continue;
      }
      name.resize(name.size() - 2);
      if (name.starts_with("asn1_")) name.erase(0, 5);
      found[name] = parameters[3].substr(0, parameters[3].find(' '));
    }
    return found;
  }();
  return all;
}

std::vector<const pki_Type *> types() {
  std::vector<const pki_Type *> all;
  for (uint32_t i = 0; i < pki_Type_count(); ++i) all.push_back(pki_Type_get(i));
  return all;
}

std::vector<pki_Field> fields_of(const pki_Type *type) {
  std::vector<pki_Field> fields(pki_Type_field_count(type));
  for (uint32_t i = 0; i < fields.size(); ++i) EXPECT_EQ(1, pki_Type_field(type, i, &fields[i]));
  return fields;
}

/// Whether a type is a form of an RFC, with functions pki_T.
bool is_form(const std::string &record) { return record.starts_with("pki_"); }

/// The name of the struct of a type: the objects of a card share one, and a form may have that of
/// liborvelasn1.
std::string struct_of(const pki_Type *type) {
  const std::string record = pki_Type_record(type);
  if (is_form(record)) return families().at(record);
  return pki_Type_kind(type) == PKI_CARD_OBJECT ? "GDOObject" : record;
}

TEST(Headers, AreReadByThisTest) {
  const Record entry = record_of("CRLEntry");
  ASSERT_EQ(3U, entry.members.size());
  EXPECT_EQ("revocationDate", entry.members.at(offsetof(CRLEntry, revocationDate)).name);
  EXPECT_EQ("Time", entry.members.at(offsetof(CRLEntry, revocationDate)).type);
  EXPECT_EQ(sizeof(Extension), record_of("Extension").size);
  EXPECT_EQ(sizeof(Time), record_of("Time").size);
  EXPECT_EQ(sizeof(GDOObject), record_of("GDOObject").size);
  EXPECT_EQ(0U, record_of("NoRecord").size);
  EXPECT_LT(100U, families().size());
  EXPECT_TRUE(families().contains("Validity"));
  EXPECT_EQ("Certificate", families().at("pki_Certificate"));
  EXPECT_FALSE(families().contains("SeqOf"));
}

TEST(Descriptors, AreThereForEveryFamilyOfTheHeadersAndForNothingElse) {
  std::set<std::string> described;
  for (const pki_Type *type : types()) {
    EXPECT_TRUE(described.insert(pki_Type_record(type)).second) << pki_Type_record(type);
  }
  std::set<std::string> declared;
  for (const auto &[name, record] : families()) declared.insert(name);
  EXPECT_EQ(declared, described);
  for (const std::string &name : declared) {
    const pki_Type *const found = pki_Type_find(name.c_str());
    ASSERT_NE(nullptr, found) << name;
    EXPECT_EQ(name, pki_Type_record(found));
  }
}

TEST(Descriptors, HaveTheSizesAndMembersOfTheRecords) {
  for (const pki_Type *type : types()) {
    SCOPED_TRACE(pki_Type_record(type));
    const pki_Kind kind = pki_Type_kind(type);
    const Record record = record_of(struct_of(type));
    if (kind == PKI_SEQUENCE || kind == PKI_CHOICE || kind == PKI_CARD_OBJECT) {
      ASSERT_NE(0U, record.size);
      EXPECT_EQ(record.size, pki_Type_size(type));
    } else {
      const bool is_number = kind == PKI_BOOLEAN || kind == PKI_ENUMERATED;
      EXPECT_EQ(is_number ? sizeof(uint32_t) : 0U, pki_Type_size(type));
    }
    for (const pki_Field &field : fields_of(type)) {
      SCOPED_TRACE(field.name);
      ASSERT_TRUE(record.members.contains(field.offset));
      const Member &member = record.members.at(field.offset);
      if (kind == PKI_CHOICE) {
        EXPECT_EQ("value", member.name);
        EXPECT_EQ("kind", record.members.at(0).name);
        EXPECT_EQ(static_cast<uint32_t>(PKI_NO_MEMBER), field.text_offset);
        continue;
      }
      // A name is kept as a structure, as a text, and as octets; the text has its name.
      if (field.text_offset == PKI_NO_MEMBER) {
        EXPECT_EQ(field.name, member.name);
      } else {
        EXPECT_EQ(field.name, record.members.at(field.text_offset).name);
        EXPECT_EQ("Name", record.members.at(field.text_offset).type);
        EXPECT_EQ(std::string(field.name) + "Sequence", member.name);
      }
      if (field.encoded_offset != PKI_NO_MEMBER) {
        const Member &octets = record.members.at(field.encoded_offset);
        EXPECT_EQ("OctetString", octets.type);
        EXPECT_TRUE(octets.name.ends_with("Encoded") || octets.name.ends_with("Bytes"));
      }
      const pki_Kind inner = pki_Type_kind(field.type);
      const bool in_place =
          inner == PKI_BOOLEAN || inner == PKI_ENUMERATED || inner == PKI_CARD_IDENTIFIER;
      EXPECT_NE(in_place, member.is_pointer);
    }
  }
}

// Every member of a SEQUENCE is a field, or a form of one.
TEST(Descriptors, LeaveNoMemberOut) {
  for (const pki_Type *type : types()) {
    if (pki_Type_kind(type) != PKI_SEQUENCE) continue;
    Record record = record_of(struct_of(type));
    for (const pki_Field &field : fields_of(type)) {
      for (const uint32_t offset : {field.offset, field.text_offset, field.encoded_offset}) {
        record.members.erase(offset);
      }
    }
    // The identifier octet of an attribute's value stands beside the value.
    if (struct_of(type) == "AttributeValueAssertion") {
      record.members.erase(offsetof(AttributeValueAssertion, valueTag));
    }
    for (const auto &[offset, member] : record.members) {
      ADD_FAILURE() << pki_Type_record(type) << ": " << member.name << " at " << offset;
    }
  }
}

TEST(Descriptors, HaveTheFunctionsOfTheHeaders) {
  // These exist by name only.
  const std::set<std::string> never_copied = {"AuthorityKeyIdentifier", "GeneralSubtree",
                                              "PrivateKeyUsagePeriod"};
  for (const pki_Type *type : types()) {
    const std::string record = pki_Type_record(type), of = struct_of(type);
    SCOPED_TRACE(record);
    const pki_Functions *const functions = pki_Type_functions(type);
    const std::string f = is_form(record) ? record : "asn1_" + record;
    const bool by_name_only = record.starts_with("Logotype") || record == "HashAlgAndValue" ||
                              record == "OtherLogotypeInfo";
    const std::string create = is_form(record) ? record : "asn1_" + of;
    EXPECT_EQ(declares(of + " *" + create + "_new(void);"), functions->create != nullptr);
    EXPECT_EQ(
        declares("const uint8_t *" + f +
                 "_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, " + of + " **") &&
            !by_name_only,
        functions->decode != nullptr);
    EXPECT_EQ(declares("uint32_t " + f + "_e(uint8_t **pp, const " + of + " *"),
              functions->encode != nullptr);
    EXPECT_EQ(declares(of + " *" + f + "_clone(const " + of + " *") && !by_name_only &&
                  !never_copied.contains(record),
              functions->clone != nullptr);
    EXPECT_EQ(declares("void " + f + "_free(" + of + " *"), functions->free != nullptr);
    EXPECT_EQ(declares("int32_t " + f + "_cmp(const " + of + " *"), functions->compare != nullptr);
  }
}

TEST(Descriptors, CallTheFunctionsOfTheType) {
  const Bytes octets = hex("30 08 06 03 2A 03 04 02 01 05");
  const Input input(octets);
  const pki_Functions *const functions = pki_Type_functions(pki_Type_find("AlgorithmIdentifier"));
  void *record = nullptr;
  ASSERT_EQ(input.end(), functions->decode(input.z(), input.end(), 0, &record, 0));
  const auto *const algorithm = static_cast<const AlgId *>(record);
  ASSERT_EQ(4U, algorithm->algorithm->count);
  EXPECT_EQ(4U, algorithm->algorithm->arcs[3]);
  void *const copy = functions->clone(record);
  Bytes out(functions->encode(nullptr, copy));
  uint8_t *cursor = out.data();
  EXPECT_EQ(octets.size(), functions->encode(&cursor, copy));
  EXPECT_EQ(octets, out);
  functions->free(copy);
  functions->free(record);
  void *const empty = functions->create();
  EXPECT_EQ(nullptr, static_cast<const AlgId *>(empty)->algorithm);
  functions->free(empty);
  functions->free(nullptr);

  int untouched = 0;
  record = &untouched;
  EXPECT_EQ(nullptr, functions->decode(input.z(), input.z() + 1, 0, &record, 0));
  EXPECT_EQ(&untouched, record);

  const pki_Functions *const integers = pki_Type_functions(pki_Type_find("INTEGER"));
  const Input two(hex("02 01 05 02 01 06"));
  void *five = nullptr, *six = nullptr;
  EXPECT_EQ(two.z() + 3, integers->decode(two.z(), two.end(), 0, &five, 0));
  EXPECT_EQ(two.end(), integers->decode(two.z() + 3, two.end(), 0, &six, 0));
  EXPECT_EQ(0, integers->compare(five, five));
  EXPECT_NE(0, integers->compare(five, six));
  integers->free(five);
  integers->free(six);
}

TEST(Descriptors, AreFoundByEitherName) {
  EXPECT_EQ(pki_Type_find("Certificate_TBS"), pki_Type_find("TBSCertificate"));
  EXPECT_EQ(pki_Type_find("OctetString"), pki_Type_find("OCTET STRING"));
  EXPECT_STREQ("TBSCertificate", pki_Type_name(pki_Type_find("Certificate_TBS")));
  EXPECT_STREQ("Certificate_TBS", pki_Type_record(pki_Type_find("TBSCertificate")));
  EXPECT_EQ(nullptr, pki_Type_find("NoSuchType"));
  EXPECT_EQ(nullptr, pki_Type_find("certificate"));
  EXPECT_EQ(nullptr, pki_Type_find(""));
  EXPECT_EQ(nullptr, pki_Type_find(nullptr));
}

TEST(Descriptors, EndWhereTheirNumberSays) {
  const uint32_t count = pki_Type_count();
  EXPECT_NE(nullptr, pki_Type_get(count - 1));
  EXPECT_EQ(nullptr, pki_Type_get(count));
  EXPECT_EQ(nullptr, pki_Type_get(UINT32_MAX));
  const pki_Type *const validity = pki_Type_find("Validity");
  ASSERT_EQ(2U, pki_Type_field_count(validity));
  pki_Field field{}, untouched{};
  EXPECT_EQ(1, pki_Type_field(validity, 1, &field));
  EXPECT_STREQ("notAfter", field.name);
  EXPECT_EQ(0, pki_Type_field(validity, 2, &untouched));
  EXPECT_EQ(nullptr, untouched.name);
  EXPECT_EQ(0, pki_Type_field(validity, UINT32_MAX, &untouched));
  EXPECT_EQ(0, pki_Type_field(validity, 0, nullptr));
}

TEST(Descriptors, SayWhatATypeIs) {
  const struct {
    const char *name;
    pki_Kind kind;
    uint8_t identifier;
    const char *element;
  } expected[] = {
      {"ANY", PKI_ANY, 0, nullptr},
      {"BOOLEAN", PKI_BOOLEAN, 1, nullptr},
      {"INTEGER", PKI_INTEGER, 2, nullptr},
      {"BIT STRING", PKI_BIT_STRING, 3, nullptr},
      {"OCTET STRING", PKI_OCTET_STRING, 4, nullptr},
      {"NULL", PKI_NULL, 5, nullptr},
      {"OBJECT IDENTIFIER", PKI_OBJECT_IDENTIFIER, 6, nullptr},
      {"ENUMERATED", PKI_ENUMERATED, 10, nullptr},
      {"UTF8String", PKI_CHARACTER_STRING, 12, nullptr},
      {"UTCTime", PKI_UTC_TIME, 23, nullptr},
      {"GeneralizedTime", PKI_GENERALIZED_TIME, 24, nullptr},
      {"Certificate", PKI_SEQUENCE, 0x30, nullptr},
      {"Extensions", PKI_SEQUENCE_OF, 0x30, "Extension"},
      {"RDNSequence", PKI_SEQUENCE_OF, 0x30, "RelativeDistinguishedName"},
      {"RelativeDistinguishedName", PKI_SET_OF, 0x31, "AttributeTypeAndValue"},
      {"Name", PKI_NAME, 0x30, "RelativeDistinguishedName"},
      {"GeneralName", PKI_CHOICE, 0, nullptr},
      {"Time", PKI_CHOICE, 23, nullptr},
      {"GDOObject", PKI_CARD_OBJECT, 0x30, nullptr},
  };
  for (const auto &[name, kind, identifier, element] : expected) {
    SCOPED_TRACE(name);
    const pki_Type *const type = pki_Type_find(name);
    ASSERT_NE(nullptr, type);
    EXPECT_STREQ(name, pki_Type_name(type));
    EXPECT_EQ(kind, pki_Type_kind(type));
    EXPECT_EQ(identifier, pki_Type_identifier(type));
    EXPECT_EQ(element == nullptr ? nullptr : pki_Type_find(element), pki_Type_element(type));
  }
  // A list in a record has no name, and the type of its elements has.
  const pki_Type *const revoked = fields_of(pki_Type_find("TBSCertList")).at(5).type;
  EXPECT_STREQ("", pki_Type_name(revoked));
  EXPECT_STREQ("", pki_Type_record(revoked));
  EXPECT_EQ(pki_Type_find("CRLEntry"), pki_Type_element(revoked));
}

// ---------------------------------------------------------------------------------------------
// Types as the RFCs have them
// ---------------------------------------------------------------------------------------------

constexpr size_t none = PKI_NO_MEMBER;

/// A field in words.
std::string in_words(const std::string &name, const std::string &type, pki_Tagging tagging,
                     unsigned tag, pki_Presence presence, size_t offset, size_t text_offset,
                     size_t encoded_offset, unsigned kind) {
  static const char *const taggings[] = {"", " IMPLICIT", " EXPLICIT"};
  static const char *const presences[] = {"", " OPTIONAL", " OPTIONAL, even past the content",
                                          " in either form", " where anything is left"};
  std::string words = name + ' ' + std::to_string(tag) + taggings[tagging] + ' ' + type +
                      presences[presence] + " at " + std::to_string(offset);
  if (text_offset != none) words += ", text at " + std::to_string(text_offset);
  if (encoded_offset != none) words += ", octets at " + std::to_string(encoded_offset);
  return words + ", kind " + std::to_string(kind);
}

std::vector<std::string> described(const char *name) {
  std::vector<std::string> words;
  for (const pki_Field &field : fields_of(pki_Type_find(name))) {
    std::string type = pki_Type_name(field.type);
    if (type.empty()) {
      type = (pki_Type_kind(field.type) == PKI_SET_OF ? "SET OF " : "SEQUENCE OF ") +
             std::string(pki_Type_name(pki_Type_element(field.type)));
    }
    words.push_back(in_words(field.name, type, field.tagging, field.tag, field.presence,
                             field.offset, field.text_offset, field.encoded_offset, field.kind));
  }
  return words;
}

using Words = std::vector<std::string>;

// RFC 5280, 4.1
TEST(Descriptors, OfCertificate) {
  using R = Certificate;
  EXPECT_EQ((Words{in_words("tbsCertificate", "TBSCertificate", PKI_UNTAGGED, 0, PKI_ALWAYS,
                            offsetof(R, tbsCertificate), none, offsetof(R, tbsEncoded), 0),
                   in_words("signatureAlgorithm", "AlgorithmIdentifier", PKI_UNTAGGED, 0,
                            PKI_ALWAYS, offsetof(R, signatureAlgorithm), none, none, 0),
                   in_words("signatureValue", "BIT STRING", PKI_UNTAGGED, 0, PKI_ALWAYS,
                            offsetof(R, signatureValue), none, none, 0)}),
            described("Certificate"));
}

TEST(Descriptors, OfTbsCertificate) {
  using R = Certificate_TBS;
  EXPECT_EQ(
      (Words{in_words("version", "INTEGER", PKI_EXPLICIT, 0xA0, PKI_OCTET_OF_INPUT,
                      offsetof(R, version), none, none, 0),
             in_words("serialNumber", "INTEGER", PKI_UNTAGGED, 0, PKI_ALWAYS,
                      offsetof(R, serialNumber), none, none, 0),
             in_words("signature", "AlgorithmIdentifier", PKI_UNTAGGED, 0, PKI_ALWAYS,
                      offsetof(R, signature), none, none, 0),
             in_words("issuer", "Name", PKI_UNTAGGED, 0, PKI_ALWAYS, offsetof(R, issuerSequence),
                      offsetof(R, issuer), offsetof(R, issuerEncoded), 0),
             in_words("validity", "Validity", PKI_UNTAGGED, 0, PKI_ALWAYS, offsetof(R, validity),
                      none, none, 0),
             in_words("subject", "Name", PKI_UNTAGGED, 0, PKI_ALWAYS, offsetof(R, subjectSequence),
                      offsetof(R, subject), offsetof(R, subjectEncoded), 0),
             in_words("subjectPublicKeyInfo", "SubjectPublicKeyInfo", PKI_UNTAGGED, 0, PKI_ALWAYS,
                      offsetof(R, subjectPublicKeyInfo), none, none, 0),
             in_words("issuerUniqueID", "BIT STRING", PKI_IMPLICIT, 0x81, PKI_NEXT_OCTET,
                      offsetof(R, issuerUniqueID), none, none, 0),
             in_words("subjectUniqueID", "BIT STRING", PKI_IMPLICIT, 0x82, PKI_NEXT_OCTET,
                      offsetof(R, subjectUniqueID), none, none, 0),
             in_words("extensions", "Extensions", PKI_EXPLICIT, 0xA3, PKI_NEXT_OCTET,
                      offsetof(R, extensions), none, none, 0)}),
      described("TBSCertificate"));
}

// RFC 5280, 5.1: an entry of revokedCertificates
TEST(Descriptors, OfAnEntryOfARevocationList) {
  using R = CRLEntry;
  EXPECT_EQ((Words{in_words("userCertificate", "INTEGER", PKI_UNTAGGED, 0, PKI_ALWAYS,
                            offsetof(R, userCertificate), none, none, 0),
                   in_words("revocationDate", "Time", PKI_UNTAGGED, 0, PKI_ALWAYS,
                            offsetof(R, revocationDate), none, none, 0),
                   in_words("crlEntryExtensions", "Extensions", PKI_UNTAGGED, 0, PKI_NEXT_OCTET,
                            offsetof(R, crlEntryExtensions), none, none, 0)}),
            described("CRLEntry"));
}

// RFC 5280, 4.2.1.6. There are no X.400 addresses (3) and no EDI party names (5), and the tag of a
// directory name is an implicit one.
TEST(Descriptors, OfGeneralName) {
  const auto alternative = [](const char *name, const char *type, unsigned tag, unsigned kind) {
    return in_words(name, type, PKI_IMPLICIT, tag, PKI_ALWAYS, offsetof(GeneralName, value), none,
                    none, kind);
  };
  EXPECT_EQ((Words{alternative("otherName", "AnotherName", 0xA0, 0),
                   alternative("rfc822Name", "IA5String", 0x81, 1),
                   alternative("dNSName", "IA5String", 0x82, 2),
                   alternative("directoryName", "Name", 0xA4, 4),
                   alternative("uniformResourceIdentifier", "IA5String", 0x86, 6),
                   alternative("iPAddress", "OCTET STRING", 0x87, 7),
                   alternative("registeredID", "OBJECT IDENTIFIER", 0x88, 8)}),
            described("GeneralName"));
}

// The functions of these fields do not go by what the table says of them.
TEST(Descriptors, OfFieldsThatAreWrittenByHand) {
  const pki_Field content = fields_of(pki_Type_find("ContentInfo")).at(1);
  EXPECT_STREQ("content", content.name);
  EXPECT_EQ(PKI_EXPLICIT, content.tagging);
  EXPECT_EQ(0xA0, content.tag);
  EXPECT_EQ(PKI_NEXT_OCTET, content.presence);
  const pki_Field audio = fields_of(pki_Type_find("LogotypeData")).at(1);
  EXPECT_STREQ("audio", audio.name);
  EXPECT_EQ(PKI_IMPLICIT, audio.tagging);
  EXPECT_EQ(0xA1, audio.tag);
  EXPECT_EQ(PKI_NEXT_OCTET, audio.presence);
}

// ---------------------------------------------------------------------------------------------
// Explanations
// ---------------------------------------------------------------------------------------------

/// What is wrong, on one line: "OFFSET PATH: SENTENCE"; or "taken: OFFSET".
std::string explained(const char *type, const Bytes &octets) {
  const Input input(octets);
  pki_Fault fault;
  std::memset(&fault, 0xAA, sizeof fault);
  const int32_t found = pki_explain(pki_Type_find(type), input.z(), input.end(), &fault);
  if (found == 0) return "taken: " + std::to_string(fault.offset);
  EXPECT_EQ(1, found);
  return std::to_string(fault.offset) + " " + fault.path + ": " + fault.sentence;
}

Bytes sequence(const Bytes &content) { return element(0x30, content); }

const Bytes algorithm = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00");  // 15 octets
const Bytes name = hex("30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45");       // 15 octets
const Bytes time_2026 = hex("17 0D 32 36 30 31 30 31 30 30 30 30 30 30 5A");  // 15 octets
const Bytes key = sequence(algorithm + hex("03 03 00 30 00"));                // 22 octets
const Bytes good_extension = hex("30 09 06 03 55 1D 0E 04 02 04 00");         // 11 octets
const Bytes bad_extension = hex("30 09 06 03 55 1D 0E 0C 02 04 00");          // 11 octets

/// The content of a TBSCertificate: 3 octets of a serial number, 15 + 15, 2 + 30 of a validity, and
/// 15 + 22 follow the version.
Bytes tbs(const Bytes &version, const Bytes &extensions) {
  return version + hex("02 01 07") + algorithm + name + sequence(time_2026 + time_2026) + name +
         key + element(0xA3, sequence(extensions));
}

Bytes certificate(const Bytes &version, const Bytes &extensions) {
  return sequence(sequence(tbs(version, extensions)) + algorithm + hex("03 02 00 8B"));
}

const Bytes version_3 = hex("A0 03 02 01 02");

TEST(Explanation, OfAGoodInputIsTheNumberOfItsOctets) {
  const Bytes good = certificate(version_3, good_extension);
  EXPECT_EQ("taken: " + std::to_string(good.size()), explained("Certificate", good));
  EXPECT_EQ("taken: " + std::to_string(good.size()), explained("Certificate", good + hex("30 00")));
  EXPECT_EQ("taken: 3", explained("INTEGER", hex("02 01 05 02")));
}

TEST(Explanation, NamesTheFieldInsideAListInsideARecord) {
  const Bytes bad = certificate(
      version_3, good_extension + good_extension + good_extension + bad_extension + good_extension);
  // Each of the two outer headers has 3 octets. Version, serial number, algorithm, name, validity,
  // name and key have 5 + 3 + 15 + 15 + 32 + 15 + 22; the headers of the tag and the list 2 + 2; three
  // extensions 33; and the header and identifier of the fourth 2 + 5.
  const size_t offset = 3 + 3 + 5 + 3 + 15 + 15 + 32 + 15 + 22 + 2 + 2 + 33 + 7;
  ASSERT_EQ(0x0C, bad.at(offset));
  EXPECT_EQ(std::to_string(offset) +
                " tbsCertificate.extensions[3].extnValue: expected OCTET STRING (04), found "
                "UTF8String (0C)",
            explained("Certificate", bad));
}

TEST(Explanation, OfATruncationSaysWhatTheHeaderPromises) {
  Bytes octets = sequence(hex("02 01 05") + element(4, text("abc")));  // 30 08 02 01 05 04 03 ...
  octets.pop_back();
  EXPECT_EQ("0 : the header 30 08 promises 8 octets, but only 7 are left",
            explained("DssSigValue", octets));
  // 0x010203.
  EXPECT_EQ("0 : the header 30 83 01 02 03 promises 66051 octets, but only 2 are left",
            explained("DssSigValue", hex("30 83 01 02 03 05 00")));
  EXPECT_EQ("0 : the input ends after the identifier octet 30",
            explained("DssSigValue", hex("30")));
  EXPECT_EQ("0 : the input ends inside the length octets",
            explained("DssSigValue", hex("30 82 01")));
  EXPECT_EQ("0 : a length of 5 octets, where four are the most",
            explained("DssSigValue", hex("30 85 00 00 00 00 00")));
  EXPECT_EQ("0 : an indefinite length, which the library does not take here",
            explained("DssSigValue", hex("30 80 02 01 05 02 01 05 00 00")));
  EXPECT_EQ("2 r: the header 02 04 promises 4 octets, but only 1 are left",
            explained("DssSigValue", hex("30 03 02 04 05")));
  EXPECT_EQ("5 s: expected INTEGER (02), but the enclosing element ends",
            explained("DssSigValue", hex("30 03 02 01 05 02 01 06")));
}

// X.690, 8.2.1: the content of a BOOLEAN is one octet.
TEST(Explanation, OfABooleanOfTwoOctets) {
  EXPECT_EQ("9 critical: a BOOLEAN that is not one octet",
            explained("pki_Extension", hex("30 0D 06 03 55 1D 0E 01 02 FF FF 04 02 04 00")));
}

TEST(Explanation, OfANumberWithALengthThatNoneHas) {
  EXPECT_EQ("7 critical: a length of 2147483648 octets",
            explained("pki_Extension", hex("30 0D 06 03 55 1D 0E 01 84 80 00 00 00 04 00")));
  EXPECT_EQ("2 responseStatus: a length of 2147483648 octets",
            explained("pki_OCSPResponse", hex("30 06 0A 84 80 00 00 00")));
}

TEST(Explanation, OfAChoiceListsTheAlternatives) {
  EXPECT_EQ(
      "0 : expected one of [0] (A0), [1] (81), [2] (82), [4] (A4), [6] (86), [7] (87), [8] (88), "
      "found [3] (A3)",
      explained("GeneralName", hex("A3 00")));
  EXPECT_EQ("0 : expected one of UTCTime (17), GeneralizedTime (18), found INTEGER (02)",
            explained("Time", hex("02 01 05")));
  EXPECT_EQ("4 registeredID: an OBJECT IDENTIFIER with an arc of more than 32 bits",
            explained("GeneralName", hex("88 08 2A 03 90 80 80 80 80 00")));
  EXPECT_EQ("taken: 3", explained("GeneralName", hex("82 01 61")));
}

// The text of a name has two digits for the identifier octet of a value, and its decoder ends the
// process where they are not enough. A structure has room.
TEST(Explanation, RefusesANameThatWouldEndTheProcess) {
  const Bytes rare = sequence(element(0x31, sequence(hex("06 03 55 04 03 C8 01 78"))));
  EXPECT_EQ("11 [0][0].value: expected an identifier octet below 100, found [PRIVATE 8] (C8)",
            explained("Name", rare));
  EXPECT_EQ("taken: 14", explained("RDNSequence", rare));
  EXPECT_EQ("0 : the list is empty, and at least one element is needed",
            explained("Name", hex("30 00")));
}

TEST(Explanation, OfAnIndefiniteMessage) {
  const Bytes type = hex("06 09 2A 86 48 86 F7 0D 01 07 01");
  const Bytes content = hex("A0 80 24 80 04 01 61 00 00 00 00");
  EXPECT_EQ("taken: 26", explained("ContentInfo", hex("30 80") + type + content + hex("00 00")));
  EXPECT_EQ("13 : expected the end-of-contents",
            explained("ContentInfo", hex("30 80") + type + hex("00 01")));
  EXPECT_EQ("15 content: expected OCTET STRING (04), found INTEGER (02)",
            explained("ContentInfo", sequence(type + element(0xA0, hex("02 01 05")))));
  EXPECT_EQ("2 contentType: expected OBJECT IDENTIFIER (06), found NULL (05)",
            explained("ContentInfo", hex("30 02 05 00")));
}

TEST(Explanation, OfAVersion1CertificateWithExtensions) {
  const size_t offset = 3 + 3 + 3 + 15 + 15 + 32 + 15 + 22;
  EXPECT_EQ(std::to_string(offset) +
                " tbsCertificate.extensions: found [3] (A3), which needs a version above 1",
            explained("Certificate", certificate({}, good_extension + good_extension)));
  // Octets that the tag has past the version are neither refused nor skipped.
  EXPECT_EQ(std::string::npos, explained("TBSCertificate", sequence(hex("A0 04 02 01 02 02 01 07") +
                                                                    tbs({}, good_extension)))
                                   .find("version above 1"));
}

TEST(Explanation, OfATypeThatIsNeverRead) {
  EXPECT_EQ("0 : a type that the library writes and never reads",
            explained("LogotypeExtn", hex("30 00")));
}

TEST(Explanation, TakesInputsOfNoOctets) {
  const std::string expected = "0 : expected SEQUENCE (30), but the enclosing element ends";
  EXPECT_EQ(expected, explained("Certificate", {}));
  const uint8_t octet = 0x30;
  for (const auto &[z, end] : {std::pair<const uint8_t *, const uint8_t *>{nullptr, nullptr},
                               {nullptr, &octet},
                               {&octet, nullptr},
                               {&octet + 1, &octet},
                               {&octet, &octet}}) {
    pki_Fault fault{};
    EXPECT_EQ(1, pki_explain(pki_Type_find("Certificate"), z, end, &fault));
    EXPECT_EQ(0U, fault.offset);
    EXPECT_STREQ("", fault.path);
    EXPECT_STREQ("expected SEQUENCE (30), but the enclosing element ends", fault.sentence);
    // A number is not there, and nothing is wrong with that.
    EXPECT_EQ(0, pki_explain(pki_Type_find("BOOLEAN"), z, end, &fault));
    EXPECT_EQ(0U, fault.offset);
    EXPECT_STREQ("", fault.sentence);
  }
}

TEST(Explanation, LeavesOutTheStartOfAPathThatIsTooLong) {
  Nest nest(hex("30 02 05 00"));
  std::string whole = "contentType";
  for (int level = 0; level < 40; ++level) {
    nest.before(hex("02 01 01 31 00")).behind(hex("31 00")).wrap(0x30).wrap(0xA0);
    nest.before(hex("06 09 2A 86 48 86 F7 0D 01 07 02")).wrap(0x30);
    whole.insert(0, "content.contentInfo.");
  }
  const Input input(nest.octets());
  pki_Fault fault{};
  ASSERT_EQ(1, pki_explain(pki_Type_find("ContentInfo"), input.z(), input.end(), &fault));
  EXPECT_STREQ("expected OBJECT IDENTIFIER (06), found NULL (05)", fault.sentence);
  const std::string path = fault.path;
  EXPECT_TRUE(whole.ends_with(path)) << path;
  // Whole names are left out.
  EXPECT_GE(255U, path.size());
  EXPECT_LT(255U - std::strlen(".contentInfo"), path.size());
  EXPECT_TRUE(path.starts_with("content")) << path;
}

TEST(Explanation, OfDeepNestingEndsWithTheStack) {
  Nest nest(hex("04 01 AA"));
  for (int level = 0; level < 100'000; ++level) nest.wrap(0x24);
  const Input input(nest.octets());
  on_small_stack([&] {
    pki_Fault fault{};
    EXPECT_EQ(1, pki_explain(pki_Type_find("OCTET STRING"), input.z(), input.end(), &fault));
    EXPECT_STREQ("values nested more deeply than the stack allows", fault.sentence);
    EXPECT_STREQ("", fault.path);
    EXPECT_LT(0U, fault.offset);
  });
}

TEST(Explanation, OfUniversalTypes) {
  const struct {
    const char *type, *octets, *expected;
  } rows[] = {
      {"INTEGER", "02 00", "2 : an INTEGER without content"},
      {"INTEGER", "02 84 80 00 00 00", "6 : a length of 2147483648 octets"},
      {"UTCTime", "17 84 80 00 00 00", "6 : a length of 2147483648 octets"},
      {"Any", "05 84 80 00 00 00", "6 : a length of 2147483648 octets"},
      {"BOOLEAN", "01 00", "2 : a BOOLEAN that is not one octet"},
      {"ENUMERATED", "0A 02 00 00", "2 : an ENUMERATED that is not one octet"},
      // X.690, 8.6 and 8.7.
      {"BIT STRING", "03 00", "2 : a BIT STRING without its count of unused bits"},
      {"BIT STRING", "03 00 05", "2 : a BIT STRING without its count of unused bits"},
      {"BIT STRING", "03 80", "2 : a BIT STRING without its count of unused bits"},
      {"BIT STRING", "03 80 08", "2 : a BIT STRING with more than seven unused bits"},
      {"BIT STRING", "03 01 01", "2 : a BIT STRING with unused bits and no others"},
      {"BIT STRING", "03 84 80 00 00 01 00", "6 : a length of 2147483649 octets"},
      {"BIT STRING", "03 80 01 AA",
       "2 : a string of indefinite length without its end-of-contents"},
      {"OCTET STRING", "04 84 80 00 00 00", "6 : a length of 2147483648 octets"},
      {"OCTET STRING", "24 06 24 04 04 02 61 62", "taken: 8"},
      {"OCTET STRING", "24 80 00",
       "2 : expected the end-of-contents, but the enclosing element ends"},
      {"OCTET STRING", "24 04 24 02 05 00", "4 : expected OCTET STRING (04), found NULL (05)"},
      {"OCTET STRING", "24 05 04 80 61 00 01",
       "4 : a string of indefinite length without its end-of-contents"},
      {"RDNSequence", "30 80 00 00", "taken: 4"},
      {"RDNSequence", "30 80 00 01", "2 : expected the end-of-contents"},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(row.expected, explained(row.type, hex(row.octets))) << row.type << row.octets;
  }
}

TEST(Explanation, OfTheFormsOfTheRfcs) {
  EXPECT_EQ("0 : a length of 2147483648 octets",
            explained("pki_Validity", hex("30 84 80 00 00 00")));
  EXPECT_EQ("32 : expected the end-of-contents, but the enclosing element ends",
            explained("pki_Validity", hex("30 80") + time_2026 + time_2026));
  EXPECT_EQ("2 : found end-of-contents (00), where the value ends",
            explained("pki_GeneralNames", hex("30 02 00 00")));
  // X.690, 8.3.2.
  EXPECT_EQ("4 pathLenConstraint: an INTEGER with needless octets",
            explained("pki_BasicConstraints", hex("30 04 02 02 FF 80")));
  EXPECT_EQ("taken: 6", explained("pki_BasicConstraints", hex("30 04 02 02 FF 7F")));
  // Strings in segments (X.690, 8.6.4 and 8.7.3), up to eight levels of them.
  EXPECT_EQ("2 : a primitive of indefinite length",
            explained("pki_SubjectKeyIdentifier", hex("24 04 04 80 00 00")));
  EXPECT_EQ("8 : unused bits in front of another segment",
            explained("pki_KeyUsage", hex("23 08 03 02 01 AA 03 02 00 AA")));
  Nest nest(hex("04 01 AA"));
  for (int level = 0; level < 8; ++level) nest.wrap(0x24);
  EXPECT_EQ("taken: 19", explained("pki_SubjectKeyIdentifier", nest.octets()));
  EXPECT_EQ("16 : segments nested more deeply than is read",
            explained("pki_SubjectKeyIdentifier", nest.wrap(0x24).octets()));
  // Attributes of a name: headers of 2 octets and a type of 5, then headers of 3.
  const auto named = [](const Bytes &type, const Bytes &value) {
    return sequence(element(0x31, sequence(type + value)));
  };
  EXPECT_EQ("11 [0][0].value: an indefinite length, which the library does not take here",
            explained("pki_RDNSequence", named(hex("06 03 55 04 03"), hex("24 80 00 00"))));
  const Bytes long_type = element(6, Bytes(129, 1)), largest_type = element(6, Bytes(128, 1));
  EXPECT_EQ("12 [0][0].type: an OBJECT IDENTIFIER too long for a name",
            explained("pki_RDNSequence", named(long_type, hex("13 01 61"))));
  for (const Bytes &type : {long_type, largest_type}) {
    const Bytes octets = named(type, hex("13 01 61"));
    const Input input(octets);
    RDNSequence *made = nullptr;
    const uint8_t *const next = pki_RDNSequence_d(input.z(), input.end(), 0, &made, 0);
    EXPECT_EQ(type == largest_type ? input.end() : nullptr, next);
    pki_RDNSequence_free(made);
  }
}

TEST(Explanation, OfMessagesAndWhatIsInThem) {
  const Bytes signed_data = hex("06 09 2A 86 48 86 F7 0D 01 07 02");  // 11 octets
  const Bytes data = hex("06 09 2A 86 48 86 F7 0D 01 07 01");
  // Of as many arcs as the identifiers of the messages, and under the root 2: any content is taken.
  const Bytes other = hex("06 09 52 86 48 86 F7 0D 01 07 01");
  EXPECT_EQ("taken: 18", explained("ContentInfo", sequence(other + hex("A0 03 02 01 05"))));
  EXPECT_EQ("13 content: the input ends after the identifier octet A0",
            explained("ContentInfo", sequence(data + hex("A0"))));
  EXPECT_EQ("18 content: expected the end-of-contents",
            explained("ContentInfo", sequence(data + hex("A0 80 04 01 61 00 01"))));
  const Bytes encrypted = hex("30 80 02 01 00 30 0A 06 01 2A 30 03 06 01 2A 80 00");
  EXPECT_EQ("taken: 19", explained("EncryptedData", encrypted + hex("00 00")));
  EXPECT_EQ("17 : expected the end-of-contents",
            explained("EncryptedData", encrypted + hex("00 01")));
  // The type of a message's content stands in no input: the message decides it.
  pki_Field content;
  ASSERT_EQ(1, pki_Type_field(pki_Type_find("ContentInfo"), 1, &content));
  const Input input(hex("04 01 61"));
  pki_Fault fault{};
  EXPECT_EQ(1, pki_explain(content.type, input.z(), input.end(), &fault));
  EXPECT_STREQ("a type that stands in no input by itself", fault.sentence);

  Nest messages(sequence(data));
  for (int level = 0; level < 10'000; ++level) {
    messages.before(hex("02 01 01 31 00")).behind(hex("31 00")).wrap(0x30).wrap(0xA0);
    messages.before(signed_data).wrap(0x30);
  }
  Nest objects(hex("30 06 06 01 01 04 01 AA"));
  for (int level = 0; level < 10'000; ++level) {
    objects.wrap(0x31).wrap(0x04).before(hex("06 01 10")).wrap(0x30);
  }
  on_small_stack([&] {
    for (const auto &[type, octets] : {std::pair{"ContentInfo", messages.octets()},
                                       std::pair{"GDOObjectSetOf", objects.octets()}}) {
      EXPECT_NE(std::string::npos,
                explained(type, octets).find("values nested more deeply than the stack allows"))
          << type;
    }
  });
}

TEST(Explanation, OfCardObjects) {
  const struct {
    const char *octets, *expected;
  } rows[] = {
      {"30 06 06 01 01 04 01 AA", "taken: 8"},
      {"06 01 15", "0 : expected SEQUENCE (30), found OBJECT IDENTIFIER (06)"},
      // An object without content: its identifier is 0, that of a leaf.
      {"30 00 06", "2 value: expected OCTET STRING (04), but the enclosing element ends"},
      {"30 02 06 05", "2 id: the header 06 05 promises 5 octets, but only 0 are left"},
      {"30 04 06 02 01 01", "4 id: an identifier that is not one octet"},
      // The holder of attributes has a wrapper of either type around them.
      {"30 07 06 01 20 04 02 31 00", "taken: 9"},
      {"30 07 06 01 20 03 02 31 00", "taken: 9"},
      {"30 05 06 01 20 05 00",
       "5 children: expected BIT STRING (03) or OCTET STRING (04), found NULL (05)"},
      {"30 03 06 01 20",
       "5 children: expected BIT STRING (03) or OCTET STRING (04), but the enclosing element ends"},
      {"30 05 06 01 20 04 02",
       "5 children: the header 04 02 promises 2 octets, but only 0 are left"},
      {"30 0C 06 01 20 03 07 31 05 30 03 06 01 05",
       "13 children[0].id: an identifier that is not four octets"},
      {"30 0B 06 01 20 03 06 31 04 30 02 05 00",
       "11 children[0].id: expected OBJECT IDENTIFIER (06), found NULL (05)"},
      {"30 09 06 01 20 03 04 31 02 30 00",
       "11 children[0].value: expected OCTET STRING (04), but the enclosing element ends"},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(row.expected, explained("GDOObjectSetOf", hex(row.octets))) << row.octets;
  }
}

// One octet and 2^29 - 1 of them are more bits than 32 bits count.
TEST(Explanation, OfABitStringOfTooManySegments) {
  constexpr size_t size = 6 + 4 + 6 + (size_t{1} << 29);
  const support::Zeros input(size);
  ASSERT_TRUE(input.are_there());
  uint8_t *const z = input.begin();
  const Bytes headers = hex("23 84 20 00 00 0A 03 02 00 AA 03 84 20 00 00 00");
  std::copy(headers.begin(), headers.end(), z);
  pki_Fault fault{};
  EXPECT_EQ(1, pki_explain(pki_Type_find("BIT STRING"), z, z + size, &fault));
  EXPECT_STREQ("segments of more octets than the library counts", fault.sentence);
  EXPECT_EQ(size, fault.offset);
  BitString *made = nullptr;
  EXPECT_EQ(nullptr, asn1_BitString_d(z, z + size, 0, &made, 0));
  EXPECT_EQ(nullptr, made);
  EXPECT_EQ(1, pki_explain(pki_Type_find("pki_KeyUsage"), z, z + size, &fault));
  EXPECT_STREQ("more octets than the library counts", fault.sentence);
  EXPECT_EQ(16U, fault.offset);
  EXPECT_EQ(nullptr, pki_KeyUsage_d(z, z + size, 0, &made, 0));
  EXPECT_EQ(nullptr, made);
}

TEST(Explanation, OfCertificatesThatTheLibraryRefuses) {
  const Bytes signature = algorithm + hex("03 02 00 8B");
  EXPECT_EQ("21 certs: found [0] (A0), which the library refuses here",
            explained("OCSPSignature", sequence(signature + hex("A0 02 30 00"))));
}

TEST(Explanation, WritesNoTrace) {
  const Bytes good = certificate(version_3, good_extension);
  for (const char *const type : {"Certificate", "pki_Certificate"}) {
    EXPECT_EQ("", support::trace_text([&] { explained(type, good); })) << type;
  }
}

// The octets of the segments are not looked at: of each, its header and the count of unused bits are
// read. 32 bits count those of 0x1FFFFFFF octets, and both segments have 0x10000000.
TEST(Explanation, OfSegmentsThatAreTooLongTogether) {
  constexpr size_t size = 0x20000014;
  const support::Zeros input(size);
  ASSERT_TRUE(input.are_there());
  uint8_t *const z = input.begin();
  const Bytes whole = hex("23 84 20 00 00 0E"), segment = hex("03 84 10 00 00 01 00");
  std::copy(whole.begin(), whole.end(), z);
  std::copy(segment.begin(), segment.end(), z + 6);
  std::copy(segment.begin(), segment.end(), z + 6 + 6 + 0x10000001);
  pki_Fault fault{};
  EXPECT_EQ(1, pki_explain(pki_Type_find("BIT STRING"), z, z + size, &fault));
  EXPECT_STREQ("segments of more octets than the library counts", fault.sentence);
  EXPECT_EQ(size, fault.offset);
}

// X.690, 8.7.3
TEST(Explanation, OfASegmentSaysWhereItStands) {
  EXPECT_EQ("5 : a segment with another header",
            explained("pki_SubjectKeyIdentifier", hex("24 05 04 01 41 05 00")));
  EXPECT_EQ("5 : expected the end-of-contents",
            explained("pki_SubjectKeyIdentifier", hex("24 80 04 01 41")));
  EXPECT_EQ("4 : a segment with another header",
            explained("pki_SubjectKeyIdentifier", hex("24 04 24 02 05 00")));
}

TEST(IdentifierNames, SayClassFormAndNumber) {
  const struct {
    uint8_t octet;
    const char *name;
  } rows[] = {{0x00, "end-of-contents (00)"},
              {0x02, "INTEGER (02)"},
              {0x22, "constructed INTEGER (22)"},
              {0x10, "SEQUENCE (10)"},
              {0x30, "SEQUENCE (30)"},
              {0x31, "SET (31)"},
              {0x33, "constructed PrintableString (33)"},
              {0x1F, "long tag (1F)"},
              {0x41, "[APPLICATION 1] (41)"},
              {0x80, "[0] (80)"},
              {0xA3, "[3] (A3)"},
              {0xDE, "[PRIVATE 30] (DE)"}};
  for (const auto &row : rows) {
    char buffer[48];
    EXPECT_STREQ(row.name, pki_identifier_name(row.octet, buffer, sizeof buffer));
  }
  char small[4];
  EXPECT_STREQ("INT", pki_identifier_name(2, small, sizeof small));
}

/// What RFC 5280, 3739, 3779, 3709, 4055, 5652, 5958, 6960, 6962, 7292 and 7633 define by
/// identifiers.
constexpr const char *values_of_identifiers[][2] = {
    {"2.5.29.9", "SubjectDirectoryAttributes"},
    {"2.5.29.14", "SubjectKeyIdentifier"},
    {"2.5.29.15", "KeyUsage"},
    {"2.5.29.16", "PrivateKeyUsagePeriod"},
    {"2.5.29.17", "GeneralNames"},
    {"2.5.29.18", "GeneralNames"},
    {"2.5.29.19", "BasicConstraints"},
    {"2.5.29.20", "CRLNumber"},
    {"2.5.29.21", "CRLReason"},
    {"2.5.29.24", "InvalidityDate"},
    {"2.5.29.27", "BaseCRLNumber"},
    {"2.5.29.28", "IssuingDistributionPoint"},
    {"2.5.29.29", "GeneralNames"},
    {"2.5.29.30", "NameConstraints"},
    {"2.5.29.31", "CRLDistributionPoints"},
    {"2.5.29.32", "CertificatePolicies"},
    {"2.5.29.33", "PolicyMappings"},
    {"2.5.29.35", "AuthorityKeyIdentifier"},
    {"2.5.29.36", "PolicyConstraints"},
    {"2.5.29.37", "ExtKeyUsageSyntax"},
    {"2.5.29.46", "CRLDistributionPoints"},
    {"2.5.29.54", "InhibitAnyPolicy"},
    {"1.3.6.1.5.5.7.1.1", "AuthorityInfoAccessSyntax"},
    {"1.3.6.1.5.5.7.1.3", "QCStatements"},
    {"1.3.6.1.5.5.7.1.7", "IPAddrBlocks"},
    {"1.3.6.1.5.5.7.1.8", "ASIdentifiers"},
    {"1.3.6.1.5.5.7.1.11", "AuthorityInfoAccessSyntax"},
    {"1.3.6.1.5.5.7.1.12", "LogotypeExtn"},
    {"1.3.6.1.5.5.7.1.24", "Features"},
    {"1.3.6.1.5.5.7.2.1", "CPSuri"},
    {"1.3.6.1.5.5.7.2.2", "UserNotice"},
    {"1.3.6.1.5.5.7.48.1.1", "BasicOCSPResponse"},
    {"1.3.6.1.5.5.7.48.1.2", "Nonce"},
    {"1.3.6.1.5.5.7.48.1.3", "CrlID"},
    {"1.3.6.1.5.5.7.48.1.4", "AcceptableResponses"},
    {"1.3.6.1.5.5.7.48.1.6", "ArchiveCutoff"},
    {"1.3.6.1.5.5.7.48.1.7", "ServiceLocator"},
    {"1.3.6.1.5.5.7.48.1.8", "PreferredSignatureAlgorithms"},
    {"1.3.6.1.4.1.11129.2.4.2", "SignedCertificateTimestampList"},
    {"1.3.6.1.4.1.11129.2.4.5", "SignedCertificateTimestampList"},
    {"1.2.840.113549.1.1.7", "RSAES_OAEP_params"},
    {"1.2.840.113549.1.1.10", "RSASSA_PSS_params"},
    {"1.2.840.10045.2.1", "ECParameters"},
    {"1.2.840.113549.1.7.2", "SignedData"},
    {"1.2.840.113549.1.7.3", "EnvelopedData"},
    {"1.2.840.113549.1.7.5", "DigestedData"},
    {"1.2.840.113549.1.7.6", "EncryptedData"},
    {"1.2.840.113549.1.9.14", "Extensions"},
    {"1.2.840.113549.1.9.16.1.2", "AuthenticatedData"},
    {"1.2.840.113549.1.12.10.1.1", "OneAsymmetricKey"},
    {"1.2.840.113549.1.12.10.1.2", "EncryptedPrivateKeyInfo"},
    {"1.2.840.113549.1.12.10.1.3", "CertBag"},
    {"1.2.840.113549.1.12.10.1.4", "CRLBag"},
    {"1.2.840.113549.1.12.10.1.5", "SecretBag"},
    {"1.2.840.113549.1.12.10.1.6", "SafeContents"},
    {"2.5.29.99", nullptr},
    {"1.3.6.1.5.5.7.2.3", nullptr},
};

TEST(TypesDefinedBy, AreThoseOfTheRfcs) {
  for (const auto &[digits, form] : values_of_identifiers) {
    const std::unique_ptr<ObjId, void (*)(ObjId *)> identifier(pki_ObjId_parse(digits),
                                                               asn1_ObjId_free);
    ASSERT_NE(nullptr, identifier) << digits;
    const pki_Type *const type = pki_Type_defined_by(identifier.get());
    const pki_Type *const expected =
        form == nullptr ? nullptr : pki_Type_find((std::string("pki_") + form).c_str());
    EXPECT_EQ(form != nullptr, expected != nullptr) << form;
    EXPECT_EQ(expected, type) << digits;
  }
  ObjId no_arcs{2, nullptr};
  EXPECT_EQ(nullptr, pki_Type_defined_by(&no_arcs));
  EXPECT_EQ(nullptr, pki_Type_defined_by(nullptr));
}

}  // namespace

}  // namespace descriptor_test
