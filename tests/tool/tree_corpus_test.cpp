// The outlines of "orvelasn1 tree" against those of "openssl asn1parse", for files of a folder that the
// environment variable ORVELASN1_CORPUS names, and for what openssl makes: offsets, octets of headers and
// of contents, and types are the same. openssl does not look into strings; what the tool finds there is
// held against "openssl asn1parse -strparse".
#include <cstdlib>
#include <tuple>

#include "tool.h"

namespace tree_corpus_test {

namespace {

using namespace tool_tests;

/// An element: its offset, the octets of its header and of its content, and its type.
using Element = std::tuple<size_t, size_t, std::string, std::string>;
using Elements = std::vector<Element>;

/// The name that the tool has for a type of openssl's.
std::string type_of(std::string name) {
  static const std::map<std::string, std::string> names{
      {"OBJECT", "OBJECT IDENTIFIER"}, {"EOC", "end-of-contents"},
      {"UTF8STRING", "UTF8String"},    {"NUMERICSTRING", "NumericString"},
      {"UTCTIME", "UTCTime"},          {"GENERALIZEDTIME", "GeneralizedTime"},
      {"IA5STRING", "IA5String"},      {"PRINTABLESTRING", "PrintableString"},
      {"T61STRING", "TeletexString"},  {"VISIBLESTRING", "VisibleString"},
      {"BMPSTRING", "BMPString"},      {"UNIVERSALSTRING", "UniversalString"},
      {"<ASN1 13>", "RELATIVE-OID"}};
  name.erase(name.find_last_not_of(' ') + 1);
  const auto number = [&name](const std::string &start, const std::string &own) {
    if (!name.starts_with(start)) return false;
    name = own + name.substr(start.size(), name.find(' ', start.size()) - start.size()) + "]";
    return true;
  };
  if (number("cont [ ", "[") || number("appl [ ", "[APPLICATION ") ||
      number("priv [ ", "[PRIVATE "))
    return name;
  const auto found = names.find(name);
  return found == names.end() ? name : found->second;
}

/// Runs a function over each line of a text.
template <class F>
void for_each_line(const std::string &text, F function) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) function(line);
}

/// The elements that openssl prints, and where its strings are. Other lines are the rest of a text
/// with a newline.
Elements peer_elements(const std::string &text, std::vector<std::pair<size_t, size_t>> &strings) {
  Elements found;
  for_each_line(text, [&](const std::string &line) {
    size_t offset = 0, header = 0;
    char length[16], form[8];
    int type = 0;
    if (std::sscanf(line.c_str(), " %zu:d=%*u hl=%zu l= %15[0-9inf] %7[a-z]: %n", &offset, &header,
                    length, form, &type) != 4)
      return;
    constexpr size_t widest = 18;
    found.emplace_back(offset, header, length,
                       type_of(line.substr(static_cast<size_t>(type), widest)));
    if (std::string(form) == "prim")
      strings.emplace_back(offset, offset + header + std::stoul(length));
  });
  return found;
}

/// The elements that the tool prints: "offset  header+length  field: TYPE value".
Elements own_elements(const std::string &text) {
  Elements found;
  for_each_line(text, [&](const std::string &line) {
    size_t offset = 0, header = 0;
    char length[16];
    int start = 0;
    if (std::sscanf(line.c_str(), " %zu %zu+%15[0-9inf] %n", &offset, &header, length, &start) != 3)
      return;
    std::string type = line.substr(static_cast<size_t>(start));
    const size_t colon = type.find(": ");
    if (colon != std::string::npos && type.find(' ') > colon) type.erase(0, colon + 2);
    const std::string form = "constructed ";
    if (type.starts_with(form)) type.erase(0, form.size());
    size_t end = type[0] == '[' ? type.find(']') + 1 : std::min(type.find(' '), type.size());
    for (const std::string second : {" STRING", " IDENTIFIER"})
      if (type.substr(end).starts_with(second)) end += second.size();
    found.emplace_back(offset, header, length, type.substr(0, end));
  });
  return found;
}

/// Returns a line for each element.
std::string lines_of(const Elements &elements) {
  std::string out;
  for (const auto &[offset, header, length, type] : elements)
    out += std::to_string(offset) + " " + std::to_string(header) + " " + length + " " + type + "\n";
  return out;
}

class ToolTreePeer : public Tool {
 protected:
  /// Compares the outlines of a file; counts it where openssl parses it.
  void compare(const std::string &file) {
    const Outcome theirs =
        run_program({"openssl", "asn1parse", "-inform", "DER", "-in", file}, "", {});
    if (theirs.status != 0) return;
    ++compared_;
    std::vector<std::pair<size_t, size_t>> strings;
    const Elements expected = peer_elements(theirs.out, strings);
    Elements found = own_elements(run({"tree", file}).out);
    auto string = strings.begin();
    std::erase_if(found, [&](const Element &element) {
      while (string != strings.end() && string->second <= std::get<0>(element)) ++string;
      return string != strings.end() && std::get<0>(element) > string->first;
    });
    EXPECT_EQ(lines_of(expected), lines_of(found)) << file;
  }

  void compare_all(const char *folder) {
    const char *const corpus = std::getenv("ORVELASN1_CORPUS");
    if (corpus == nullptr) return;
    const size_t before = compared_;
    for (const auto &file :
         std::filesystem::directory_iterator(std::filesystem::path(corpus) / folder))
      compare(file.path());
    EXPECT_LT(before, compared_);
  }

  size_t compared_ = 0;
};

TEST_F(ToolTreePeer, AgreesOnCertificatesListsAndStatusMessages) {
  compare(file("made.der", to_der(make_certificate(ec_key, {"-addext", "nsComment=a"}))));
  EXPECT_EQ(1U, compared_);
  for (const char *folder : {"certificates", "crls", "ocsp-requests", "ocsp-responses"})
    compare_all(folder);
}

TEST_F(ToolTreePeer, AgreesOnMessagesOfIndefiniteLength) {
  const std::string certificate = file("c.pem", make_certificate({"rsa:1024"}));
  openssl({"cms", "-sign", "-stream", "-binary", "-nodetach", "-signer", certificate, "-inkey",
           path("key.pem"), "-outform", "DER", "-out", path("message.der")},
          "a text");
  compare(path("message.der"));
  EXPECT_EQ(1U, compared_);
}

TEST_F(ToolTreePeer, FindsInStringsWhatOpensslFindsThere) {
  const std::string der = file(
      "made.der", to_der(make_certificate(ec_key, {"-addext", "subjectAltName=DNS:a,email:b@c"})));
  const std::string all = run({"tree", der}).out;
  const Elements found = own_elements(
      run({"tree", "--path", "tbsCertificate.extensions[subjectAltName].extnValue", der}).out);
  ASSERT_EQ(4U, found.size());
  const size_t offset = std::get<0>(found[0]), content = offset + std::get<1>(found[0]);
  std::vector<std::pair<size_t, size_t>> strings;
  Elements expected = peer_elements(
      openssl({"asn1parse", "-inform", "DER", "-in", der, "-strparse", std::to_string(offset)}),
      strings);
  for (Element &element : expected) std::get<0>(element) += content;
  EXPECT_EQ(lines_of(expected), lines_of({found.begin() + 1, found.end()}));
}

}  // namespace

}  // namespace tree_corpus_test
