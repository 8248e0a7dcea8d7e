// Writes orvelasn1_cpp/types.hpp, the classes of all types, from the descriptors of liborvelpki and
// the public headers: a descriptor knows a field's name, type and place, its header the member of C
// at that place. With "oids", writes orvelasn1_cpp/oids.hpp, the named identifiers, from the getters
// that the headers declare; with "list", a line TYPE(CLASS) for each class.
//
//   write_types INCLUDE_DIRECTORY types|oids|list >FILE
#include <dlfcn.h>
#include <orvelasn1.h>
#include <orvelpki.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// ---------------------------------------------------------------------------------------------
// The public headers
// ---------------------------------------------------------------------------------------------

/// The public headers of C without comments, each run of blanks as one.
std::string declarations(const std::string &folder) {
  std::vector<std::filesystem::path> headers;
  for (const auto &file : std::filesystem::directory_iterator(folder)) {
    if (file.path().extension() == ".h") headers.push_back(file.path());
  }
  std::sort(headers.begin(), headers.end());
  std::string all;
  for (const auto &header : headers) {
    std::ifstream in(header);
    all.append(std::istreambuf_iterator<char>(in), {});
  }
  std::string plain;
  for (size_t i = 0; i < all.size(); ++i) {
    if (all.compare(i, 2, "/*") == 0) i = all.find("*/", i) + 2;
    const char c = all.at(i) == '\n' ? ' ' : all[i];
    if (c != ' ' || (!plain.empty() && plain.back() != ' ')) plain += c;
  }
  return plain;
}

struct Member {
  std::string type;
  std::string name;
  bool is_pointer;
};

/// The members of a record, by the octets in front of them.
std::map<size_t, Member> members_of(const std::string &headers, const std::string &record) {
  const std::string opening = "typedef struct " + record + " { ";
  size_t at = headers.find(opening);
  if (at == std::string::npos) return {};
  at += opening.size();
  const std::string body = headers.substr(at, headers.find('}', at) - at);
  static const std::map<std::string, size_t> sizes = {{"uint8_t", 1},
                                                      {"int32_t", 4},
                                                      {"uint32_t", 4},
                                                      {"uint64_t", 8},
                                                      {"unsigned long", sizeof(unsigned long)}};
  std::map<size_t, Member> members;
  size_t offset = 0;
  static const std::regex member("([A-Za-z0-9_ ]+) (\\*?)([A-Za-z0-9_]+)(\\[(\\d+)\\])?;");
  for (std::sregex_iterator i(body.begin(), body.end(), member), end; i != end; ++i) {
    const std::smatch &found = *i;
    std::string type = found[1];
    type.erase(0, type.find_first_not_of(' '));
    const bool is_pointer = found[2].length() != 0;
    const size_t size = is_pointer ? sizeof(void *) : sizes.at(type);
    offset = (offset + size - 1) / size * size;
    members[offset] = {type, found[3], is_pointer};
    offset += size * (found[5].length() != 0 ? std::stoul(found[5]) : 1);
  }
  return members;
}

// ---------------------------------------------------------------------------------------------
// The classes
// ---------------------------------------------------------------------------------------------

class Writer {
 public:
  explicit Writer(const std::string &folder) : headers_(declarations(folder)) {
    for (uint32_t i = 0; i < pki_Type_count(); ++i) {
      const pki_Type *const type = pki_Type_get(i);
      by_name_[pki_Type_record(type)] = type;
    }
  }

  void write() {
    std::cout << "// Written by tests/cpp/write_types.cpp from the types as data: do not edit.\n"
                 "// A class for each type: what rfcNNNN.h says of the type, orvel::pki has under "
                 "the same name.\n"
                 "// clang-format off\n"
                 "#ifndef ORVELASN1_CPP_TYPES_H\n"
                 "#define ORVELASN1_CPP_TYPES_H\n\n"
                 "#include \"../orvelasn1.h\"\n#include \"records.hpp\"\n\n";
    std::cout << "/// The universal types, and what has no form of an RFC: the types of "
                 "liborvelasn1.\nnamespace orvel::asn1 {\n";
    for (const auto &[name, type] : by_name_) {
      if (is_universal(type)) write_class(type);
    }
    std::cout << "\n}  // namespace orvel::asn1\n\n/// The forms of the RFCs.\n"
                 "namespace orvel::pki {\n";
    for (const auto &[name, type] : by_name_) {
      if (is_form(type)) write_class(type);
    }
    std::cout << "\n}  // namespace orvel::pki\n\nnamespace orvel::asn1 {\n";
    for (const auto &[name, type] : by_name_) {
      if (!is_form(type) && !has_form(type)) write_class(type);
    }
    std::cout << "\n}  // namespace orvel::asn1\n\n#endif\n";
  }

  void write_list() const {
    for (const auto &[name, type] : by_name_) {
      if (record_of(type).empty() || (!is_form(type) && !is_universal(type) && has_form(type))) {
        continue;
      }
      std::cout << "TYPE(" << (is_form(type) ? "pki::" : "asn1::") << class_of(type) << ")\n";
    }
  }

  void write_identifiers() const {
    std::cout << "// Written by tests/cpp/write_types.cpp from the getters: do not edit.\n"
                 "// The object identifiers that the library names, as constants.\n"
                 "#ifndef ORVELASN1_CPP_OIDS_H\n"
                 "#define ORVELASN1_CPP_OIDS_H\n\n"
                 "#include \"values.hpp\"\n\nnamespace orvel::oid {\n\n";
    std::set<std::string> names;
    static const std::regex getter("const ObjId \\*asn1_Get_([A-Za-z0-9_]+)\\(void\\);");
    for (std::sregex_iterator i(headers_.begin(), headers_.end(), getter), end; i != end; ++i) {
      names.insert((*i)[1]);
    }
    for (const std::string &name : names) {
      void *const symbol = dlsym(RTLD_DEFAULT, ("asn1_Get_" + name).c_str());
      if (symbol == nullptr) throw std::runtime_error("no asn1_Get_" + name);
      const ObjId *(*get)() = nullptr;
      std::memcpy(&get, &symbol, sizeof get);
      std::string text;
      for (uint32_t arc = 0; arc < get()->count; ++arc) {
        text += (arc == 0 ? "" : ".") + std::to_string(get()->arcs[arc]);
      }
      std::cout << "inline constexpr Oid " << name << "(\"" << text << "\");\n";
    }
    std::cout << "\n}  // namespace orvel::oid\n\n#endif\n";
  }

 private:
  static bool is_form(const pki_Type *type) {
    return std::string(pki_Type_record(type)).starts_with("pki_");
  }

  static std::string class_of(const pki_Type *type) {
    const std::string record = pki_Type_record(type);
    return is_form(type) ? record.substr(4) : record;
  }

  bool has_form(const pki_Type *type) const {
    return by_name_.contains("pki_" + std::string(pki_Type_record(type)));
  }

  static bool is_list(const pki_Type *type) {
    const pki_Kind kind = pki_Type_kind(type);
    return kind == PKI_SEQUENCE_OF || kind == PKI_SET_OF || kind == PKI_TLS_LIST;
  }

  static bool is_number(const pki_Type *type) {
    return pki_Type_kind(type) == PKI_BOOLEAN || pki_Type_kind(type) == PKI_ENUMERATED;
  }

  bool is_universal(const pki_Type *type) const {
    const std::string name = pki_Type_record(type);
    if (is_form(type)) return false;
    if (name == "Time") return true;
    const pki_Kind kind = pki_Type_kind(type);
    return pki_Type_size(type) == 0 && !is_list(type) && kind != PKI_NULL && kind != PKI_NAME;
  }

  /// The record of C, by the function that releases it; "" for a number in a record.
  std::string record_of(const pki_Type *type) const {
    const std::string name = (is_form(type) ? "" : "asn1_") + std::string(pki_Type_record(type));
    const std::string opening = "void " + name + "_free(";
    size_t at = headers_.find(opening);
    if (at == std::string::npos) return "";
    at += opening.size();
    return headers_.substr(at, headers_.find(' ', at) - at);
  }

  bool declares(const std::string &name) const {
    return headers_.find(" " + name + "(") != std::string::npos ||
           headers_.find("*" + name + "(") != std::string::npos;
  }

  /// The class of a field's or element's type, as the namespaces of orvel see it. Where the record
  /// is the same, liborvelasn1's type is that of the form.
  std::string qualified(const pki_Type *type) const {
    const std::string record = pki_Type_record(type);
    if (pki_Type_kind(type) == PKI_NULL) return "Null";
    if (pki_Type_kind(type) == PKI_BOOLEAN) return "bool";
    if (pki_Type_kind(type) == PKI_ENUMERATED) return "std::uint32_t";
    if (!record.empty() && by_name_.contains(record)) {
      if (is_form(type)) return "pki::" + record.substr(4);
      if (has_form(type) && record_of(type) == record_of(by_name_.at("pki_" + record))) {
        return "pki::" + record;
      }
      return "asn1::" + record;
    }
    if (is_list(type)) return "List<" + qualified(pki_Type_element(type)) + ">";
    return base_of(type);
  }

  std::string base_of(const pki_Type *type) const {
    static const std::map<pki_Kind, std::string> bases = {{PKI_INTEGER, "Number"},
                                                          {PKI_OBJECT_IDENTIFIER, "Identifier"},
                                                          {PKI_BIT_STRING, "Bits"},
                                                          {PKI_OCTET_STRING, "OctetText"},
                                                          {PKI_ATTRIBUTE_VALUE, "OctetText"},
                                                          {PKI_CHARACTER_STRING, "Text"},
                                                          {PKI_ANY, "Element"},
                                                          {PKI_UTC_TIME, "TimeText<23>"},
                                                          {PKI_GENERALIZED_TIME, "TimeText<24>"},
                                                          {PKI_NAME, "Characters"}};
    const pki_Kind kind = pki_Type_kind(type);
    const std::string record = record_of(type);
    if (std::string(pki_Type_record(type)) == "Time") return "TimeChoice";
    if (kind == PKI_TLS_LIST) return "List<SignedCertificateTimestamp>";
    if (kind == PKI_CARD_OBJECT) return "CardObject";
    if (kind == PKI_CHOICE) return "Choice<" + class_of(type) + ", ::" + record + ">";
    if (is_list(type)) {
      return (record == "RDNSequence" ? "NameList<" : "List<") + qualified(pki_Type_element(type)) +
             ">";
    }
    if (kind == PKI_CHARACTER_STRING && is_form(type) && pki_Type_identifier(type) == 22) {
      return "asn1::IA5String";
    }
    const auto found = bases.find(kind);
    return found != bases.end() ? found->second : "View<::" + record + ">";
  }

  /// What the accessor of a type returns.
  std::string seen(const pki_Type *type) const {
    static const std::map<pki_Kind, std::string> values = {
        {PKI_INTEGER, "Number"},
        {PKI_OBJECT_IDENTIFIER, "Identifier"},
        {PKI_BIT_STRING, "Bits"},
        {PKI_OCTET_STRING, "Octets"},
        {PKI_ATTRIBUTE_VALUE, "Octets"},
        {PKI_ANY, "Octets"},
        {PKI_CHARACTER_STRING, "std::string_view"},
        {PKI_NAME, "std::string_view"},
        {PKI_UTC_TIME, "Instant"},
        {PKI_GENERALIZED_TIME, "Instant"}};
    if (std::string(pki_Type_record(type)) == "Time") return "Instant";
    const auto found = values.find(pki_Type_kind(type));
    return found != values.end() ? found->second : qualified(type);
  }

  bool is_optional(const pki_Field &field) const {
    return field.presence != PKI_ALWAYS && !is_list(field.type) && !is_number(field.type);
  }

  static std::vector<pki_Field> fields_of(const pki_Type *type) {
    std::vector<pki_Field> fields(pki_Type_field_count(type));
    for (uint32_t i = 0; i < fields.size(); ++i) pki_Type_field(type, i, &fields[i]);
    return fields;
  }

  void write_class(const pki_Type *type) {
    const std::string name = class_of(type);
    // A number in a record is no type of its own; content that departs is left to C.
    if (name.empty() || record_of(type).empty() || !written_.insert(type).second) return;
    if (pki_Type_element(type) != nullptr) write_needed(pki_Type_element(type), type);
    for (const pki_Field &field : fields_of(type)) {
      write_needed(field.type, type);
      if (pki_Type_element(field.type) != nullptr) write_needed(pki_Type_element(field.type), type);
    }
    if (pki_Type_kind(type) == PKI_TLS_LIST) write_timestamp();
    const std::string base = base_of(type);
    std::cout << "\n/// " << pki_Type_name(type) << "\n";
    const std::string plain = base.substr(0, base.find('<'));
    const std::string constructor = plain.substr(plain.rfind(':') + 1);
    std::cout << "class " << name << " : public " << base << " {\n public:\n  using " << constructor
              << "::" << constructor << ";\n";
    if (pki_Type_kind(type) == PKI_CHOICE && name != "Time") {
      write_alternatives(type);
    } else if (pki_Type_kind(type) == PKI_SEQUENCE) {
      write_fields(type);
    } else if (pki_Type_kind(type) == PKI_CARD_OBJECT) {
      write_children(name);
    }
    write_calls(type);
    std::cout << "};\n";
  }

  void write_needed(const pki_Type *needed, const pki_Type *by) {
    const auto found = by_name_.find(pki_Type_record(needed));
    if (found != by_name_.end() && is_form(found->second) == is_form(by) &&
        (is_form(by) || !has_form(found->second))) {
      write_class(found->second);
    }
  }

  void write_alternatives(const pki_Type *type) {
    std::string list;
    for (const pki_Field &field : fields_of(type)) {
      std::cout << "  struct " << field.name << " : Alternative<\"" << field.name << "\", "
                << class_of(type) << ", " << unsigned{field.kind} << ", " << qualified(field.type)
                << "> {};\n";
      list += (list.empty() ? "" : ", ") + std::string(field.name);
    }
    std::cout << "  using Alternatives = AlternativeList<" << list << ">;\n";
  }

  void write_fields(const pki_Type *type) {
    const std::string name = class_of(type);
    const auto members = members_of(headers_, record_of(type));
    std::set<size_t> described;
    std::vector<std::string> list;
    for (const pki_Field &field : fields_of(type)) {
      described.insert(field.offset);
      const std::string member = "&Record::" + members.at(field.offset).name;
      const std::string kind = qualified(field.type);
      std::string line = "Field<\"" + std::string(field.name) + "\", " + kind + ", &" + name +
                         "::" + field.name + ", " + member;
      if (is_number(field.type)) {
        std::cout << "  " << kind << " " << field.name << "() const noexcept { return at(" << member
                  << ")" << (kind == "bool" ? " != 0" : "") << "; }\n";
      } else {
        const std::string returned =
            is_optional(field) ? "std::optional<" + seen(field.type) + ">" : seen(field.type);
        std::cout << "  " << returned << " " << field.name << "() const noexcept { return "
                  << (is_optional(field) ? "see_optional<" : "see<") << kind << ">(" << member
                  << "); }\n";
      }
      for (const auto &[offset, suffix] :
           {std::pair{field.text_offset, "_text"}, std::pair{field.encoded_offset, "_encoded"}}) {
        if (offset == PKI_NO_MEMBER) continue;
        described.insert(offset);
        const bool is_text = offset == field.text_offset;
        std::cout << "  " << (is_text ? "std::string_view " : "Octets ") << field.name << suffix
                  << "() const noexcept { return see<" << (is_text ? "Characters" : "Element")
                  << ">(&Record::" << members.at(offset).name << "); }\n";
        line += ", &Record::" + members.at(offset).name;
      }
      list.push_back(line + ">");
      if (field.encoded_offset != PKI_NO_MEMBER && pki_Type_kind(field.type) == PKI_SEQUENCE) {
        write_signed(field);
        if (!is_form(type)) {
          std::cout << "  /// The encoder only measures while these octets are kept.\n"
                       "  static constexpr auto kept = &Record::"
                    << members.at(field.encoded_offset).name << ";\n";
        }
      }
    }
    for (const auto &[offset, member] : members) {
      if (described.contains(offset) || member.is_pointer || member.type != "uint32_t") continue;
      std::cout << "  std::uint32_t " << member.name
                << "() const noexcept { return at(&Record::" << member.name << "); }\n";
      list.push_back("Field<\"" + member.name + "\", std::uint32_t, &" + name + "::" + member.name +
                     ", &Record::" + member.name + ">");
    }
    std::cout << "  using Fields = FieldList<";
    for (size_t i = 0; i < list.size(); ++i)
      std::cout << (i == 0 ? "" : ",") << "\n    " << list[i];
    std::cout << ">;\n";
  }

  /// The fields of what is signed, but for its algorithms, as those of the whole.
  void write_signed(const pki_Field &part) const {
    for (const pki_Field &field : fields_of(part.type)) {
      if (std::string(pki_Type_name(field.type)) == "AlgorithmIdentifier") continue;
      std::string returned = seen(field.type);
      if (is_optional(field)) returned = "std::optional<" + returned + ">";
      std::cout << "  " << returned << " " << field.name << "() const noexcept { return "
                << part.name << "()." << field.name << "(); }\n";
    }
  }

  /// What a card object holds beside octets. The objects in a set of sets stand at a plain place.
  static void write_children(const std::string &name) {
    if (name == "GDOObjectSetOf") {
      std::cout << "  /// The objects of a container, or the attributes of their holder.\n"
                   "  List<GDOObjectSetOf> children() const noexcept { return "
                   "see<List<GDOObjectSetOf>>(&Record::children); }\n";
      return;
    }
    std::cout << "  /// The attributes, where the object holds some.\n"
                 "  List<GDOObjectSetOf> attributes() const noexcept { return "
                 "List<GDOObjectSetOf>(holds_attributes() ? at(&Record::children) : nullptr); }\n"
                 "  /// The sets of objects of a container.\n"
                 "  List<List<GDOObjectSetOf>> sets() const noexcept { return "
                 "List<List<GDOObjectSetOf>>(holds_attributes() ? nullptr : "
                 "at(&Record::children)); }\n";
  }

  static void write_timestamp() {
    std::cout << "\n/// SignedCertificateTimestamp (RFC 6962, 3.2)\n"
                 "class SignedCertificateTimestamp : public View<::pki_SignedCertificateTimestamp> "
                 "{\n public:\n  using View::View;\n"
                 "  std::uint8_t version() const noexcept { return at(&Record::version); }\n"
                 "  std::uint8_t hashAlgorithm() const noexcept { return "
                 "at(&Record::hashAlgorithm); }\n"
                 "  std::uint8_t signatureAlgorithm() const noexcept { return "
                 "at(&Record::signatureAlgorithm); }\n"
                 "  Octets logID() const noexcept { return *this ? "
                 "detail::octets_at(c()->logID, sizeof c()->logID) : Octets(); }\n"
                 "  std::uint64_t timestamp() const noexcept { return at(&Record::timestamp); }\n"
                 "  Octets extensions() const noexcept { return "
                 "see<OctetText>(&Record::extensions); }\n"
                 "  Octets signature() const noexcept { return "
                 "see<OctetText>(&Record::signature); }\n"
                 "  Octets opaque() const noexcept { return "
                 "see<OctetText>(&Record::opaque); }\n";
    std::cout << "  using Fields = FieldList<";
    const char *const names[] = {"version",   "hashAlgorithm", "signatureAlgorithm",
                                 "timestamp", "extensions",    "signature",
                                 "opaque"};
    for (const std::string name : names) {
      const bool is_octets = name == "extensions" || name == "signature" || name == "opaque";
      std::cout << "\n    Field<\"" << name << "\", "
                << (is_octets             ? "OctetText"
                    : name == "timestamp" ? "std::uint64_t"
                                          : "std::uint8_t")
                << ", &SignedCertificateTimestamp::" << name << ", &Record::" << name << ">,";
    }
    std::cout << "\n    Field<\"logID\", Octets, &SignedCertificateTimestamp::logID, "
                 "&Record::logID>>;\n"
                 "  static constexpr Calls<Record> calls{\"\", "
                 "pki_SignedCertificateTimestamp_new, nullptr, nullptr,\n"
                 "    pki_SignedCertificateTimestamp_clone, "
                 "pki_SignedCertificateTimestamp_free};\n};\n";
  }

  void write_calls(const pki_Type *type) const {
    const std::string prefix = (is_form(type) ? "" : "asn1_") + std::string(pki_Type_record(type));
    const pki_Functions *const functions = pki_Type_functions(type);
    const auto function = [&](bool is_there, const char *suffix) {
      // A constructor may go by another name.
      return is_there && declares(prefix + suffix) ? prefix + suffix : std::string("nullptr");
    };
    if (reaches_a_name(type)) {
      std::cout << "  /// There are octets for which the decoder ends the process: ask first.\n"
                   "  static constexpr bool may_end_the_process = true;\n";
    }
    std::cout << "  static constexpr Calls<Record> calls{\"" << pki_Type_record(type) << "\", "
              << function(functions->create != nullptr, "_new") << ", "
              << function(functions->decode != nullptr, "_d") << ",\n    "
              << function(functions->encode != nullptr, "_e") << ", "
              << function(functions->clone != nullptr, "_clone") << ", "
              << function(functions->free != nullptr, "_free") << "};\n";
  }

  /// Whether a type of liborvelasn1 has a name in it, or a message.
  bool reaches_a_name(const pki_Type *type) const {
    const pki_Kind kind = pki_Type_kind(type);
    if (is_form(type)) return false;
    if (kind == PKI_NAME || kind == PKI_TYPED_CONTENT) return true;
    if (is_list(type)) return reaches_a_name(pki_Type_element(type));
    const auto fields = fields_of(type);
    return std::any_of(fields.begin(), fields.end(),
                       [&](const pki_Field &field) { return reaches_a_name(field.type); });
  }

  std::string headers_;
  std::map<std::string, const pki_Type *> by_name_;
  std::set<const pki_Type *> written_;
};

}  // namespace

int main(int argc, char **argv) {
  try {
    if (argc != 3) throw std::runtime_error("write_types INCLUDE_DIRECTORY types|oids|list");
    Writer writer(argv[1]);
    if (std::string(argv[2]) == "oids") {
      writer.write_identifiers();
    } else if (std::string(argv[2]) == "list") {
      writer.write_list();
    } else {
      writer.write();
    }
    return 0;
  } catch (const std::exception &e) {
    std::cerr << e.what() << "\n";
    return 1;
  }
}
