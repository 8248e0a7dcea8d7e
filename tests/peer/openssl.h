// Shared by the tests against the openssl tool: running it, its keys and signatures, the elements
// and values that it finds in an encoding, and records made for it.
#ifndef ORVELASN1_TESTS_PEER_OPENSSL_H
#define ORVELASN1_TESTS_PEER_OPENSSL_H

#include <support.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>

namespace support {

/* ------------------------------------------------------------------------------------------- */
/* The openssl tool                                                                              */
/* ------------------------------------------------------------------------------------------- */

/// The folder in which the tool works, a new one for each run. It is removed at the end.
inline const std::filesystem::path &folder() {
  struct Temporary {
    std::filesystem::path path = std::filesystem::temp_directory_path() / "orvelasn1.XXXXXX";
    Temporary() {
      std::string name = path.string();
      if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
      path = name;
    }
    ~Temporary() {
      std::error_code ignored;
      std::filesystem::remove_all(path, ignored);
    }
  };
  static const Temporary temporary;
  return temporary.path;
}

inline void write_file(const std::string &name, const Bytes &octets) {
  std::ofstream out(folder() / name, std::ios::binary);
  std::copy(octets.begin(), octets.end(), std::ostreambuf_iterator<char>(out));
}

inline Bytes read_file(const std::string &name) {
  std::ifstream in(folder() / name, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), {});
}

/// Returns what `openssl ARGUMENTS` prints. Where it fails, the test fails with its output.
inline std::string openssl(const std::string &arguments) {
  const std::string command = "cd '" + folder().string() + "' && openssl " + arguments + " 2>&1";
  FILE *pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("no pipe for " + command);
  std::string out;
  for (int c = getc(pipe); c != EOF; c = getc(pipe)) out += static_cast<char>(c);
  if (pclose(pipe) != 0) throw std::runtime_error(command + "\n" + out);
  return out;
}

using Lines = std::vector<std::string>;

/// Returns the lines of `report` after the line `title`, up to one that begins with one of `ends`.
/// Removes the blanks around them and the empty lines, and joins the lines that the tool broke.
inline Lines section(const std::string &title, const std::string &report,
                     std::initializer_list<std::string_view> ends) {
  Lines lines;
  bool inside = false;
  std::istringstream all(report);
  for (std::string line; std::getline(all, line);) {
    line.erase(0, line.find_first_not_of(' '));
    line.erase(line.find_last_not_of(' ') + 1);
    const auto begins_line = [&](std::string_view end) { return line.rfind(end, 0) == 0; };
    if (inside && std::any_of(ends.begin(), ends.end(), begins_line)) break;
    const bool goes_on = inside && !lines.empty() && lines.back().back() == '\\';
    if (goes_on) lines.back().replace(lines.back().size() - 1, 1, line);
    if (inside && !goes_on && !line.empty()) lines.push_back(line);
    inside = inside || line == title;
  }
  return lines;
}

/// Returns whether `openssl ARGUMENTS` fails.
inline bool openssl_refuses(const std::string &arguments) {
  try {
    openssl(arguments);
    return false;
  } catch (const std::runtime_error &) {
    return true;
  }
}

/// Returns the rest of the line of `report` after `label`.
inline std::string after(const std::string &label, const std::string &report) {
  const size_t start = report.find(label);
  if (start == std::string::npos) throw std::runtime_error("no " + label + " in\n" + report);
  const size_t text = start + label.size();
  return report.substr(text, report.find('\n', text) - text);
}

/// Returns the file of a private key, and makes it at its first use. "rsa.spki" and so on hold the
/// public key. It ends in an odd octet, because the library writes a key without zero bits at its
/// end.
inline std::string key(const std::string &kind) {
  static const std::map<std::string, std::string> options = {
      {"rsa", "-algorithm RSA -pkeyopt rsa_keygen_bits:2048"},
      {"ec", "-algorithm EC -pkeyopt ec_paramgen_curve:P-256"},
      {"ed25519", "-algorithm ED25519"}};
  const std::string pem = kind + ".pem";
  while (!std::filesystem::exists(folder() / pem)) {
    openssl("genpkey " + options.at(kind) + " -out candidate.pem");
    openssl("pkey -in candidate.pem -pubout -outform DER -out " + kind + ".spki");
    if (read_file(kind + ".spki").back() % 2 != 0)
      std::filesystem::rename(folder() / "candidate.pem", folder() / pem);
  }
  return pem;
}

/// Returns the file of a self-signed certificate of a key, and makes it at its first use.
/// "rsa.crt.der" and so on hold its octets.
inline std::string certificate_file(const std::string &kind) {
  const std::string pem = kind + ".crt";
  if (!std::filesystem::exists(folder() / pem)) {
    openssl("req -x509 -new -days 3650 -subj '/C=DE/O=Example/CN=" + kind + "' -key " + key(kind) +
            " -out " + pem);
    openssl("x509 -in " + pem + " -outform DER -out " + pem + ".der");
  }
  return pem;
}

/* ------------------------------------------------------------------------------------------- */
/* The elements that the tool finds in an encoding                                               */
/* ------------------------------------------------------------------------------------------- */

/// An element as `openssl asn1parse` finds it.
struct Element {
  int depth;
  std::string type;
  Bytes whole;
  Bytes content;
  std::vector<Element> parts;
};

inline Element take_apart(const std::string &file) {
  const Bytes octets = read_file(file);
  std::istringstream report(openssl("asn1parse -inform DER -in " + file));
  Element top{-1, "", {}, {}, {}};
  for (std::string line; std::getline(report, line);) {
    size_t offset = 0, header = 0, length = 0;
    int depth = 0;
    char form[5] = "", type[19] = "";
    const int found = std::sscanf(line.c_str(), " %zu:d=%d hl=%zu l=%zu %4s: %18[^:]", &offset,
                                  &depth, &header, &length, form, type);
    if (found < 2) continue;  // the rest of a value that has a line break in it
    if (found != 6) throw std::runtime_error("not a line of asn1parse: " + line);
    std::string name = type;
    name.erase(name.find_last_not_of(' ') + 1);
    Element *parent = &top;
    while (parent->depth + 1 < depth) parent = &parent->parts.back();
    const auto start = octets.begin() + static_cast<std::ptrdiff_t>(offset);
    const auto content = start + static_cast<std::ptrdiff_t>(header);
    const auto stop = content + static_cast<std::ptrdiff_t>(length);
    parent->parts.push_back({depth, name, Bytes(start, stop), Bytes(content, stop), {}});
  }
  return top.parts.at(0);
}

/* ------------------------------------------------------------------------------------------- */
/* Records as the tool prints them                                                               */
/* ------------------------------------------------------------------------------------------- */

inline std::string upper_hex(const Bytes &octets) {
  std::string out;
  for (const uint8_t octet : octets) {
    out += "0123456789ABCDEF"[octet >> 4];
    out += "0123456789ABCDEF"[octet & 15];
  }
  return out;
}

/// Returns "1267" for 4711, "-05" for -5.
inline std::string serial_text(const Integer *serial) {
  Bytes octets = value(serial);
  if (octets.empty()) return "00";
  if (serial->negative == 0) return upper_hex(octets);
  bool carry = true;
  for (auto octet = octets.rbegin(); octet != octets.rend(); ++octet) {
    *octet = static_cast<uint8_t>(~*octet + (carry ? 1 : 0));
    carry = carry && *octet == 0;
  }
  if (octets.size() > 1 && octets[0] == 0) octets.erase(octets.begin());
  return std::string("-").append(upper_hex(octets));
}

/// Returns "20260131120000Z" for "260131120000Z".
inline std::string full_year(const Time *time) {
  std::string t = time->value;
  if (time->kind == 23) t.insert(0, t < "50" ? "20" : "19");
  return t;
}

/// Returns "2026-01-31 12:00:00Z" for "260131120000Z" and for "20260131120000Z".
inline std::string date_text(const Time *time) {
  const std::string t = full_year(time);
  return t.substr(0, 4) + "-" + t.substr(4, 2) + "-" + t.substr(6, 2) + " " + t.substr(8, 2) + ":" +
         t.substr(10, 2) + ":" + t.substr(12);
}

/// Returns "Jan 31 12:00:00 2026 GMT" for "20260131120000Z".
inline std::string gmt_text(const std::string &t) {
  static const char *const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const std::string day = t[6] == '0' ? std::string(" ").append(t, 7, 1) : t.substr(6, 2);
  return std::string(months[std::stoul(t.substr(4, 2)) - 1]) + " " + day + " " + t.substr(8, 2) +
         ":" + t.substr(10, 2) + ":" + t.substr(12, 2) + " " + t.substr(0, 4) + " GMT";
}

inline std::string identifier_text(const ObjId *oid) {
  uint32_t size = 0;
  EXPECT_EQ(0, asn1_ObjId_sprint(oid, nullptr, &size));
  std::string out(size, '\0');
  EXPECT_EQ(0, asn1_ObjId_sprint(oid, out.data(), &size));
  out.resize(size - 1);
  return out;
}

/// Returns a name as in "2.5.4.6=#13024445,2.5.4.10=#0C0161+2.5.4.11=#0C0162".
inline std::string name_text(const RDNSequence *name) {
  std::string out;
  for (int32_t i = 0; i < List_len(name); ++i) {
    const auto *rdn = static_cast<const RelativeDistinguishedName *>(List_get(name, i));
    for (int32_t k = 0; k < List_len(rdn); ++k) {
      const auto *part = static_cast<const AttributeValueAssertion *>(List_get(rdn, k));
      if (!out.empty()) out += k == 0 ? ',' : '+';
      out += identifier_text(part->type) + "=#" +
             upper_hex(element(static_cast<uint8_t>(part->valueTag), value(part->value)));
    }
  }
  return out;
}

inline const std::string as_encoded = " -nameopt oid,sep_comma_plus,dump_all,dump_der";

/* ------------------------------------------------------------------------------------------- */
/* Records of what the tool made                                                                 */
/* ------------------------------------------------------------------------------------------- */

/// Decodes a record, which must take all of the octets.
template <auto Free, class T>
Owned<T, Free> record_of(const uint8_t *(*element_d)(const uint8_t *, const uint8_t *, uint32_t,
                                                     T **, uint32_t),
                         const Bytes &octets) {
  const Decoded<T> result = decode(element_d, octets);
  if (!result.ok()) throw std::runtime_error("refused: " + upper_hex(octets));
  EXPECT_EQ(static_cast<long>(octets.size()), result.consumed);
  return Owned<T, Free>(result.record);
}

template <class T>
std::vector<const T *> elements_of(const List *list) {
  std::vector<const T *> out;
  for (int32_t i = 0; i < List_len(list); ++i)
    out.push_back(static_cast<const T *>(List_get(list, i)));
  return out;
}

/// Checks that each extension has the octets that `openssl asn1parse` finds in its place.
inline void expect_same_extensions(const Element &sequence, const Extensions *extensions) {
  const std::vector<const Extension *> ours = elements_of<Extension>(extensions);
  ASSERT_EQ(sequence.parts.size(), ours.size());
  for (size_t i = 0; i < ours.size(); ++i) {
    const std::vector<Element> &parts = sequence.parts[i].parts;
    EXPECT_EQ(parts.front().whole, encode(asn1_ObjId_e, ours[i]->extnID));
    EXPECT_EQ(parts.size() == 3 ? parts[1].content.at(0) : 0U, ours[i]->critical);
    EXPECT_EQ(parts.back().content, value(ours[i]->extnValue));
  }
}

/// A BIT STRING, and the form in which the library leaves out the zero bits at its end.
struct TrimmedBits {
  const char *read;
  const char *written;
};

inline void PrintTo(const TrimmedBits &bits, std::ostream *out) { *out << bits.read; }

inline constexpr TrimmedBits trimmed_bits[] = {
    {"03 03 00 AB 01", "03 03 00 AB 01"},
    {"03 03 00 AB 10", "03 03 04 AB 10"},
    {"03 03 00 AB 80", "03 03 07 AB 80"},
    {"03 03 00 AB 00", "03 02 00 AB"},
    {"03 04 00 AC 00 00", "03 02 02 AC"},
    {"03 02 03 F8", "03 02 03 F8"},
    {"03 02 01 F8", "03 02 03 F8"},
    {"03 02 00 00", "03 01 00"},
    {"03 01 00", "03 01 00"},
};

/* ------------------------------------------------------------------------------------------- */
/* Records for the tool                                                                          */
/* ------------------------------------------------------------------------------------------- */

template <class T>
void release(void (*element_free)(T *), T *&field) {
  element_free(field);
  field = nullptr;
}

inline AlgId *signature_algorithm(const std::string &kind) {
  AlgId *algorithm = asn1_AlgId_new();
  if (kind == "rsa") {
    algorithm->algorithm = asn1_ObjId_clone(asn1_Get_sha256WithRSAEncryption());
    algorithm->parameters = asn1_Any_clone(asn1_Any_NULL());
  } else {
    const char *dotted = kind == "ec" ? "1.2.840.10045.4.3.2" : "1.3.101.112";
    algorithm->algorithm = asn1_ObjId_parse(&dotted);
  }
  return algorithm;
}

/// Returns the tool's signature over the octets with the key of a kind and its
/// signature_algorithm().
inline Bytes signature_over(const Bytes &octets, const std::string &kind) {
  write_file("to_be_signed", octets);
  openssl("pkeyutl -sign -rawin -in to_be_signed -out signature -inkey " + key(kind) +
          (kind == "ed25519" ? "" : " -digest sha256"));
  return read_file("signature");
}

inline BitString *bit_string(const Bytes &octets) {
  BitString *result = asn1_BitString_new(0);
  asn1_BitString_append(result, static_cast<uint32_t>(octets.size()), octets.data());
  return result;
}

inline OctetString *octet_string(const Bytes &octets) {
  OctetString *result = asn1_OctetString_new(0);
  asn1_ASN1String_append(result, static_cast<uint32_t>(octets.size()), octets.data());
  return result;
}

inline Time *utc_time(const char *text) {
  Time *time = asn1_Time_new();
  time->kind = 23;
  time->value = asn1_UTCTime_clone(text);
  return time;
}

inline Time *generalized_time(const char *text) {
  Time *time = asn1_Time_new();
  time->kind = 24;
  time->value = asn1_GeneralizedTime_clone(text);
  return time;
}

/// Returns a new list that owns the records.
inline List *owning_list(std::initializer_list<void *> records) {
  List *list = List_new(0);
  for (void *record : records) EXPECT_EQ(1, List_append(list, record, 0));
  return list;
}

inline Extension *extension(const ObjId *id, uint32_t critical, const Bytes &content) {
  Extension *result = asn1_Extension_new();
  result->extnID = asn1_ObjId_clone(id);
  result->critical = critical;
  result->extnValue = octet_string(content);
  return result;
}

}  // namespace support

#endif
