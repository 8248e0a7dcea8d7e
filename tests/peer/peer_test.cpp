// Certificates that the openssl tool makes are read as it reads them itself, and certificates that
// this library makes are read and verified by it.
#include <support.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>

namespace {

using namespace support;

/* ------------------------------------------------------------------------------------------- */
/* The openssl tool                                                                              */
/* ------------------------------------------------------------------------------------------- */

/// A folder of its own for each run, in which the tool works. It goes away at the end.
const std::filesystem::path &folder() {
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

void write_file(const std::string &name, const Bytes &octets) {
  std::ofstream out(folder() / name, std::ios::binary);
  std::copy(octets.begin(), octets.end(), std::ostreambuf_iterator<char>(out));
}

Bytes read_file(const std::string &name) {
  std::ifstream in(folder() / name, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), {});
}

/// What `openssl ARGUMENTS` prints. Where it fails, what it printed is the failure of the test.
std::string openssl(const std::string &arguments) {
  const std::string command = "cd '" + folder().string() + "' && openssl " + arguments + " 2>&1";
  FILE *pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("no pipe for " + command);
  std::string out;
  for (int c = getc(pipe); c != EOF; c = getc(pipe)) out += static_cast<char>(c);
  if (pclose(pipe) != 0) throw std::runtime_error(command + "\n" + out);
  return out;
}

/// The rest of the line of `report` behind `label`.
std::string after(const std::string &label, const std::string &report) {
  const size_t start = report.find(label);
  if (start == std::string::npos) throw std::runtime_error("no " + label + " in\n" + report);
  const size_t text = start + label.size();
  return report.substr(text, report.find('\n', text) - text);
}

/// The file of a private key, made at its first use; "rsa.spki" and so on hold the public key. That
/// ends in an odd octet, because the library writes a key without zero bits at its end.
std::string key(const std::string &kind) {
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

/* ------------------------------------------------------------------------------------------- */
/* A certificate as the tool takes it apart                                                      */
/* ------------------------------------------------------------------------------------------- */

/// One element as `openssl asn1parse` finds it.
struct Element {
  int depth;
  std::string type;
  Bytes whole;
  Bytes content;
  std::vector<Element> parts;
};

Element take_apart(const std::string &file) {
  const Bytes octets = read_file(file);
  std::istringstream report(openssl("asn1parse -inform DER -in " + file));
  Element top{-1, "", {}, {}, {}};
  for (std::string line; std::getline(report, line);) {
    size_t offset = 0, header = 0, length = 0;
    int depth = 0;
    char form[5] = "", type[19] = "";
    if (std::sscanf(line.c_str(), " %zu:d=%d hl=%zu l=%zu %4s: %18[^:]", &offset, &depth, &header,
                    &length, form, type) != 6)
      throw std::runtime_error("not a line of asn1parse: " + line);
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

std::string upper_hex(const Bytes &octets) {
  std::string out;
  for (const uint8_t octet : octets) {
    out += "0123456789ABCDEF"[octet >> 4];
    out += "0123456789ABCDEF"[octet & 15];
  }
  return out;
}

/// 4711 is "1267", -5 is "-05".
std::string serial_text(const Integer *serial) {
  Bytes octets = value(serial);
  if (octets.empty()) return "00";
  if (serial->negative == 0) return upper_hex(octets);
  bool carry = true;
  for (auto octet = octets.rbegin(); octet != octets.rend(); ++octet) {
    *octet = static_cast<uint8_t>(~*octet + (carry ? 1 : 0));
    carry = carry && *octet == 0;
  }
  return std::string("-").append(upper_hex(octets));
}

/// "2026-01-31 12:00:00Z" for "260131120000Z" and for "20260131120000Z".
std::string date_text(const Time *time) {
  std::string t = time->value;
  if (time->kind == 23) t.insert(0, t < "50" ? "20" : "19");
  return t.substr(0, 4) + "-" + t.substr(4, 2) + "-" + t.substr(6, 2) + " " + t.substr(8, 2) + ":" +
         t.substr(10, 2) + ":" + t.substr(12);
}

std::string identifier_text(const ObjId *oid) {
  uint32_t size = 0;
  EXPECT_EQ(0, asn1_ObjId_sprint(oid, nullptr, &size));
  std::string out(size, '\0');
  EXPECT_EQ(0, asn1_ObjId_sprint(oid, out.data(), &size));
  out.resize(size - 1);
  return out;
}

/// "2.5.4.6=#13024445,2.5.4.10=#0C0161+2.5.4.11=#0C0162"
std::string name_text(const RDNSequence *name) {
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

const std::string as_encoded = " -nameopt oid,sep_comma_plus,dump_all,dump_der";

/* ------------------------------------------------------------------------------------------- */
/* Reading what the tool makes                                                                   */
/* ------------------------------------------------------------------------------------------- */

struct FreeCertificate {
  void operator()(Certificate *c) const { asn1_Certificate_free(c); }
};
using CertificatePointer = std::unique_ptr<Certificate, FreeCertificate>;

CertificatePointer decoded_certificate(const Bytes &der) {
  const Decoded<Certificate> result = decode(asn1_Certificate_d, der);
  if (!result.ok()) throw std::runtime_error("the certificate was refused");
  EXPECT_EQ(static_cast<long>(der.size()), result.consumed);
  return CertificatePointer(result.record);
}

template <class T>
void release(void (*element_free)(T *), T *&field) {
  element_free(field);
  field = nullptr;
}

/// Every field holds what `openssl x509` prints for the certificate.
void expect_printed_values(const Certificate *certificate, const std::string &file) {
  const Certificate_TBS *tbs = certificate->tbsCertificate;
  const std::string report =
      openssl("x509 -inform DER -noout -in " + file +
              " -serial -dates -dateopt iso_8601 -subject -issuer" + as_encoded + " -text");
  EXPECT_EQ(after("serial=", report), serial_text(tbs->serialNumber));
  EXPECT_EQ(after("notBefore=", report), date_text(tbs->validity->notBefore));
  EXPECT_EQ(after("notAfter=", report), date_text(tbs->validity->notAfter));
  EXPECT_EQ(after("subject=", report), name_text(tbs->subjectSequence));
  EXPECT_EQ(after("issuer=", report), name_text(tbs->issuerSequence));
  const uint32_t version = tbs->version == nullptr ? 0 : asn1_Integer_get(tbs->version);
  EXPECT_EQ(after("Version: ", report),
            std::to_string(version + 1) + " (0x" + std::to_string(version) + ")");
}

/// Every field has the octets that `openssl asn1parse` finds in its place.
void expect_same_octets(const Certificate *certificate, const std::string &file) {
  const Element whole = take_apart(file);
  ASSERT_EQ(3U, whole.parts.size());
  EXPECT_EQ(whole.parts[0].whole, value(certificate->tbsEncoded));
  EXPECT_EQ(whole.parts[1].whole, encode(asn1_AlgId_e, certificate->signatureAlgorithm));
  EXPECT_EQ(whole.parts[2].whole, encode(asn1_BitString_BER_e, certificate->signatureValue));

  const Certificate_TBS *tbs = certificate->tbsCertificate;
  const std::vector<Element> &fields = whole.parts[0].parts;
  auto field = fields.begin();
  ASSERT_LE(6U, fields.size());
  ASSERT_EQ(field->type == "cont [ 0 ]", tbs->version != nullptr);
  if (tbs->version != nullptr) {
    EXPECT_EQ(field++->content, encode(asn1_Integer_e, tbs->version));
  }
  EXPECT_EQ(field++->whole, encode(asn1_Integer_e, tbs->serialNumber));
  EXPECT_EQ(field++->whole, encode(asn1_AlgId_e, tbs->signature));
  EXPECT_EQ(field++->whole, value(tbs->issuerEncoded));
  EXPECT_EQ(field++->whole, encode(asn1_Validity_e, tbs->validity));
  EXPECT_EQ(field++->whole, value(tbs->subjectEncoded));
  EXPECT_EQ(field++->whole, encode(asn1_SubjectPKI_e, tbs->subjectPublicKeyInfo));
  for (const auto &[type, bits] : {std::pair{"cont [ 1 ]", tbs->issuerUniqueID},
                                   std::pair{"cont [ 2 ]", tbs->subjectUniqueID}}) {
    const bool there = field != fields.end() && field->type == type;
    ASSERT_EQ(there, bits != nullptr);
    if (there) {
      EXPECT_EQ(element(3, field++->content), encode(asn1_BitString_BER_e, bits));
    }
  }
  ASSERT_EQ(field != fields.end(), tbs->extensions != nullptr);
  if (tbs->extensions == nullptr) return;

  ASSERT_EQ("cont [ 3 ]", field->type);
  const std::vector<Element> &extensions = field->parts.at(0).parts;
  ASSERT_EQ(extensions.size(), static_cast<size_t>(List_len(tbs->extensions)));
  for (size_t i = 0; i < extensions.size(); ++i) {
    const std::vector<Element> &parts = extensions[i].parts;
    const auto *extension =
        static_cast<const Extension *>(List_get(tbs->extensions, static_cast<int32_t>(i)));
    EXPECT_EQ(parts.front().whole, encode(asn1_ObjId_e, extension->extnID));
    EXPECT_EQ(parts.size() == 3 ? parts[1].content.at(0) : 0U, extension->critical);
    EXPECT_EQ(parts.back().content, value(extension->extnValue));
  }
}

/// The certificate comes back as it was: from what was stored of it, from its fields, and from the
/// text of its names where that keeps them whole.
void expect_round_trips(Certificate *certificate, const Bytes &der, bool text_keeps_the_names) {
  EXPECT_EQ(der, encode(asn1_Certificate_e, certificate));

  Certificate_TBS *tbs = certificate->tbsCertificate;
  release(asn1_OctetString_free, certificate->tbsEncoded);
  EXPECT_EQ(der, encode(asn1_Certificate_e, certificate)) << "names from their octets";

  release(asn1_OctetString_free, tbs->issuerEncoded);
  release(asn1_OctetString_free, tbs->subjectEncoded);
  EXPECT_EQ(der, encode(asn1_Certificate_e, certificate)) << "names from their sequences";

  release(asn1_RDNSequence_free, tbs->issuerSequence);
  release(asn1_RDNSequence_free, tbs->subjectSequence);
  EXPECT_EQ(text_keeps_the_names, der == encode(asn1_Certificate_e, certificate))
      << "names from their texts, such as " << tbs->subject;
}

/// A certificate of one shape, as a configuration of the tool.
struct Shape {
  const char *name;
  const char *key;
  int version;
  bool text_keeps_the_names;
  const char *arguments;
  const char *settings;  // string_mask and the like
  const char *subject;
  const char *extensions;
};

void PrintTo(const Shape &shape, std::ostream *out) { *out << shape.name; }

constexpr const char *plain_name = "C=DE\nO=Example\nCN=Some One\n";
constexpr const char *of_an_authority = "basicConstraints=critical,CA:TRUE\n";

const Shape shapes[] = {
    {"Rsa", "rsa", 3, true, "-sha256", "string_mask=utf8only\n", plain_name, of_an_authority},
    {"RsaPss", "rsa", 3, true, "-sha384 -sigopt rsa_padding_mode:pss -sigopt rsa_pss_saltlen:48",
     "string_mask=utf8only\n", plain_name, of_an_authority},
    {"Ec", "ec", 3, true, "-sha512", "string_mask=utf8only\n", plain_name, of_an_authority},
    {"Ed25519", "ed25519", 3, true, "", "string_mask=utf8only\n", plain_name, of_an_authority},
    {"Version1", "ec", 1, true, "", "string_mask=utf8only\n", plain_name, ""},

    {"Utf8Names", "ec", 3, true, "", "string_mask=utf8only\nutf8=yes\n",
     "C=DE\nO=Übergröße\nCN=Αθήνα 東京\n", of_an_authority},
    {"PrintableNames", "ec", 3, true, "", "string_mask=MASK:0x2\n",
     "C=DE\nO=A/B,C (D) = E+F\nCN='x':y?-z.\n", of_an_authority},
    {"T61Names", "ec", 3, true, "", "string_mask=MASK:0x4\nutf8=yes\n",
     "C=DE\nO=Übergröße\nCN=a/b,c\n", of_an_authority},
    {"BmpNames", "ec", 3, false, "", "string_mask=MASK:0x800\nutf8=yes\n",
     "C=DE\nO=Übergröße\nCN=東京\n", of_an_authority},
    {"BmpNamesWithoutAZeroOctet", "ec", 3, true, "", "string_mask=MASK:0x800\nutf8=yes\n",
     "C=DE\nCN=東京\n", of_an_authority},
    {"Ia5Names", "ec", 3, true, "", "string_mask=utf8only\n",
     "0.DC=org\n1.DC=example\nemailAddress=some.one@example.org\n", of_an_authority},
    {"MultiValuedNames", "ec", 3, true, "", "string_mask=utf8only\n",
     "C=DE\nO=a\n+OU=b\n+L=c\nST=d\n+CN=e\n", of_an_authority},
    {"NamesOfManyAttributes", "ec", 3, true, "", "string_mask=utf8only\n",
     "C=DE\nST=s\nL=l\nstreet=5, High/Low St\nO=o\n0.OU=u\n1.OU=v\ntitle=t\nSN=sur\nGN=giv\n"
     "initials=i\ngenerationQualifier=III\nname=n\ndnQualifier=q\n0.2.5.4.65=pseudonym\nCN=c\n",
     of_an_authority},
    {"NamesWithASerialNumber", "ec", 3, false, "", "string_mask=utf8only\n",
     "C=DE\nCN=card\nserialNumber=12-34\n", of_an_authority},

    {"GeneralizedTimePast2050", "ec", 3, true, "-days 20000", "string_mask=utf8only\n", plain_name,
     of_an_authority},
    {"SerialNumberZero", "ec", 3, true, "-set_serial 0", "string_mask=utf8only\n", plain_name,
     of_an_authority},
    {"SmallNegativeSerialNumber", "ec", 3, true, "-set_serial -5", "string_mask=utf8only\n",
     plain_name, of_an_authority},
    {"LargeNegativeSerialNumber", "ec", 3, true,
     "-set_serial -0x0102030405060708090A0B0C0D0E0F1011121314", "string_mask=utf8only\n",
     plain_name, of_an_authority},
    {"SerialNumberOf20Octets", "ec", 3, true,
     "-set_serial 0x7F02030405060708090A0B0C0D0E0F1011121314", "string_mask=utf8only\n", plain_name,
     of_an_authority},
    {"SerialNumberOf20OctetsWithItsTopBitSet", "ec", 3, true,
     "-set_serial 0xFFEEDDCCBBAA99887766554433221100FFEEDDCC", "string_mask=utf8only\n", plain_name,
     of_an_authority},

    {"ManyExtensions", "rsa", 3, true, "", "string_mask=utf8only\n", plain_name,
     "basicConstraints=critical,CA:TRUE,pathlen:3\n"
     "keyUsage=critical,digitalSignature,keyCertSign,cRLSign\n"
     "extendedKeyUsage=serverAuth,clientAuth,1.2.3.4\n"
     "subjectKeyIdentifier=hash\n"
     "subjectAltName=DNS:a.example,IP:192.0.2.1,IP:2001:db8::1,email:a@b.example,"
     "URI:https://a.example/x,RID:1.2.3.4,otherName:1.2.3.5;UTF8:x,dirName:name\n"
     "issuerAltName=URI:https://b.example/\n"
     "crlDistributionPoints=URI:http://a.example/1.crl,URI:http://a.example/2.crl\n"
     "freshestCRL=URI:http://a.example/d.crl\n"
     "authorityInfoAccess=OCSP;URI:http://a.example/o,caIssuers;URI:http://a.example/c\n"
     "certificatePolicies=1.2.3.4,1.2.3.5\n"
     "policyMappings=1.2.3.4:1.2.3.5\n"
     "policyConstraints=critical,requireExplicitPolicy:3\n"
     "nameConstraints=critical,permitted;DNS:.example,excluded;IP:192.0.2.0/255.255.255.0\n"
     "inhibitAnyPolicy=critical,2\n"
     "tlsfeature=status_request\n"
     "noCheck=yes\n"
     "nsComment=a comment\n"
     "1.2.3.4.5=critical,DER:0102030405\n"
     "1.2.3.4.4294967295=ASN1:UTF8String:x\n"
     "2.999.1=ASN1:FORMAT:HEX,OCTETSTRING:00112233445566778899AABBCCDDEEFF00112233445566778899AABB"
     "CCDDEEFF00112233445566778899AABBCCDDEEFF00112233445566778899AABBCCDDEEFF00112233445566778899"
     "AABBCCDDEEFF00112233445566778899AABBCCDDEEFF00112233445566778899AABBCCDDEEFF0011223344556677"
     "8899AABBCCDDEEFF\n"},
};

class CertificateOfOpenssl : public testing::TestWithParam<Shape> {};

TEST_P(CertificateOfOpenssl, ReadsAsItIsReportedAndComesBack) {
  const Shape &shape = GetParam();
  const std::string file = std::string(shape.name) + ".der";
  const bool extended = *shape.extensions != '\0';
  std::string configuration = "[req]\nprompt=no\ndistinguished_name=name\n";
  configuration += shape.settings;
  if (extended) configuration += "x509_extensions=extensions\n";
  configuration += std::string("[name]\n") + shape.subject + "[extensions]\n" + shape.extensions;
  write_file("shape.cnf", text(configuration));
  // Newer versions of the tool add extensions unless they are told not to.
  const bool must_ask = !extended && openssl("req -help").find("-x509v1") != std::string::npos;
  openssl("req -x509 -new -config shape.cnf -key " + key(shape.key) + " " + shape.arguments +
          (must_ask ? " -x509v1" : "") + " -outform DER -out " + file);

  const Bytes der = read_file(file);
  const CertificatePointer certificate = decoded_certificate(der);
  const Integer *version = certificate->tbsCertificate->version;
  EXPECT_EQ(shape.version,
            version == nullptr ? 1 : static_cast<int>(asn1_Integer_get(version)) + 1);
  expect_printed_values(certificate.get(), file);
  expect_same_octets(certificate.get(), file);
  expect_round_trips(certificate.get(), der, shape.text_keeps_the_names);
}

INSTANTIATE_TEST_SUITE_P(Shapes, CertificateOfOpenssl, testing::ValuesIn(shapes),
                         [](const auto &shape) { return std::string(shape.param.name); });

// What `openssl req` does not write: version 2, unique identifiers, a GeneralizedTime where UTCTime
// would do, strings of rare types, an empty value.
TEST(CertificateOfOpensslByHand, ReadsAsItIsReportedAndComesBack) {
  write_file("by_hand.cnf", text(R"(asn1=SEQUENCE:certificate
[certificate]
tbs=SEQUENCE:tbs
algorithm=SEQUENCE:algorithm
signature=FORMAT:HEX,BITSTRING:3003020100
[tbs]
version=EXPLICIT:0,INTEGER:1
serial=INTEGER:0x80
signature=SEQUENCE:algorithm
issuer=SEQUENCE:issuer
validity=SEQUENCE:validity
subject=SEQUENCE:subject
key=SEQUENCE:key
issuer_id=IMPLICIT:1,FORMAT:HEX,BITSTRING:0102030405
subject_id=IMPLICIT:2,FORMAT:HEX,BITSTRING:FF
[algorithm]
id=OID:1.2.840.10045.4.3.2
[issuer]
a=SET:a
[subject]
a=SET:a
b=SET:b
c=SET:c
e=SET:e
[a]
v=SEQUENCE:a_value
[a_value]
type=OID:2.5.4.3
value=NUMERICSTRING:12 34
[b]
v=SEQUENCE:b_value
[b_value]
type=OID:2.5.4.4
value=UNIVERSALSTRING:universal
[c]
v=SEQUENCE:c_value
[c_value]
type=OID:2.5.4.42
value=T61STRING:teletex
[e]
v=SEQUENCE:e_value
[e_value]
type=OID:1.2.3.4.5.6
value=UTF8:
[validity]
from=GENERALIZEDTIME:19500101000000Z
to=UTCTIME:491231235959Z
[key]
algorithm=SEQUENCE:key_algorithm
key=FORMAT:HEX,BITSTRING:0401
[key_algorithm]
id=OID:1.2.840.10045.2.1
curve=OID:1.2.840.10045.3.1.7
)"));
  openssl("asn1parse -genconf by_hand.cnf -noout -out by_hand.der");

  const Bytes der = read_file("by_hand.der");
  const CertificatePointer certificate = decoded_certificate(der);
  ASSERT_NE(nullptr, certificate->tbsCertificate->subjectUniqueID);
  expect_printed_values(certificate.get(), "by_hand.der");
  expect_same_octets(certificate.get(), "by_hand.der");
  // A text ends at the zero octets of a UniversalString.
  expect_round_trips(certificate.get(), der, false);
}

// The tool's own names for the library's identifiers.
TEST(IdentifiersOfOpenssl, HaveTheOctetsThatTheToolWrites) {
  const std::pair<const char *, const ObjId *(*)(void)> rows[] = {
      {"rsaEncryption", asn1_Get_rsaEncryption},
      {"md5WithRSAEncryption", asn1_Get_md5WithRSAEncryption},
      {"sha1WithRSAEncryption", asn1_Get_sha_1WithRSAEncryption},
      {"sha256WithRSAEncryption", asn1_Get_sha256WithRSAEncryption},
      {"sha384WithRSAEncryption", asn1_Get_sha384WithRSAEncryption},
      {"sha512WithRSAEncryption", asn1_Get_sha512WithRSAEncryption},
      {"id-ecPublicKey", asn1_Get_id_ecPublicKey},
      {"sha1", asn1_Get_id_SHA1},
      {"ripemd160", asn1_Get_RIPEMD_160},
      {"dsaEncryption", asn1_Get_id_dsa},
      {"dsaWithSHA1", asn1_Get_id_dsa_with_sha1},
      {"X9.42 DH", asn1_Get_dhpublicnumber},
      {"commonName", asn1_Get_id_at_commonName},
      {"surname", asn1_Get_id_at_surname},
      {"serialNumber", asn1_Get_id_at_serialNumber},
      {"countryName", asn1_Get_id_at_countryName},
      {"localityName", asn1_Get_id_at_localityName},
      {"stateOrProvinceName", asn1_Get_id_at_stateOrProvinceName},
      {"streetAddress", asn1_Get_id_at_streetAddress},
      {"organizationName", asn1_Get_id_at_organizationName},
      {"organizationalUnitName", asn1_Get_id_at_organizationalUnitName},
      {"title", asn1_Get_id_at_title},
      {"description", asn1_Get_id_at_description},
      {"name", asn1_Get_id_at_name},
      {"givenName", asn1_Get_id_at_givenName},
      {"initials", asn1_Get_id_at_initials},
      {"generationQualifier", asn1_Get_id_at_generationQualifier},
      {"dnQualifier", asn1_Get_id_at_dnQualifier},
      {"emailAddress", asn1_Get_emailAddress},
      {"challengePassword", asn1_Get_challengePassword},
      {"unstructuredName", asn1_Get_unstructuredName},
      {"signingTime", asn1_Get_signingTime},
      {"messageDigest", asn1_Get_messageDigest},
      {"friendlyName", asn1_Get_friendlyName},
      {"localKeyID", asn1_Get_localKeyId},
      {"extReq", asn1_Get_extensionRequest},
      {"SMIME-CAPS", asn1_Get_smimeCapabilities},
      {"authorityKeyIdentifier", asn1_Get_id_ce_authorityKeyIdentifier},
      {"subjectKeyIdentifier", asn1_Get_id_ce_subjectKeyIdentifier},
      {"keyUsage", asn1_Get_id_ce_keyUsage},
      {"privateKeyUsagePeriod", asn1_Get_id_ce_privateKeyUsagePeriod},
      {"certificatePolicies", asn1_Get_id_ce_certificatePolicies},
      {"anyPolicy", asn1_Get_anyPolicy},
      {"id-qt-cps", asn1_Get_id_qt_cps},
      {"policyMappings", asn1_Get_id_ce_policyMappings},
      {"subjectAltName", asn1_Get_id_ce_subjectAltName},
      {"issuerAltName", asn1_Get_id_ce_issuerAltName},
      {"subjectDirectoryAttributes", asn1_Get_id_ce_subjectDirectoryAttributes},
      {"basicConstraints", asn1_Get_id_ce_basicConstraints},
      {"nameConstraints", asn1_Get_id_ce_nameConstraints},
      {"policyConstraints", asn1_Get_id_ce_policyConstraints},
      {"extendedKeyUsage", asn1_Get_id_ce_extKeyUsage},
      {"anyExtendedKeyUsage", asn1_Get_anyExtendedKeyUsage},
      {"serverAuth", asn1_Get_id_kp_serverAuth},
      {"clientAuth", asn1_Get_id_kp_clientAuth},
      {"codeSigning", asn1_Get_id_kp_codeSigning},
      {"emailProtection", asn1_Get_id_kp_emailProtection},
      {"timeStamping", asn1_Get_id_kp_timeStamping},
      {"OCSPSigning", asn1_Get_id_kp_OCSPSigning},
      {"crlDistributionPoints", asn1_Get_id_ce_cRLDistributionPoints},
      {"authorityInfoAccess", asn1_Get_id_pe_authorityInfoAccess},
      {"OCSP", asn1_Get_id_ad_ocsp},
      {"caIssuers", asn1_Get_id_ad_caIssuers},
      {"crlNumber", asn1_Get_id_ce_cRLNumber},
      {"deltaCRL", asn1_Get_id_ce_deltaCRLIndicator},
      {"issuingDistributionPoint", asn1_Get_id_ce_issuingDistributionPoint},
      {"freshestCRL", asn1_Get_id_ce_freshestCRL},
      {"CRLReason", asn1_Get_id_ce_cRLReason},
      {"holdInstructionCode", asn1_Get_id_ce_holdInstructionCode},
      {"invalidityDate", asn1_Get_id_ce_invalidityDate},
      {"certificateIssuer", asn1_Get_id_ce_certificateIssuer},
      {"basicOCSPResponse", asn1_Get_id_pkix_ocsp_basic},
      {"Nonce", asn1_Get_id_pkix_ocsp_nonce},
      {"noCheck", asn1_Get_id_pkix_ocsp_nocheck},
      {"archiveCutoff", asn1_Get_id_pkix_ocsp_archive_cutoff},
      {"serviceLocator", asn1_Get_id_pkix_ocsp_service_locator},
      {"pkcs7-data", asn1_Get_data},
      {"pkcs7-signedData", asn1_Get_signedData},
      {"pkcs7-envelopedData", asn1_Get_envelopedData},
      {"pkcs7-digestData", asn1_Get_digestedData},
      {"pkcs7-encryptedData", asn1_Get_encryptedData},
      {"keyBag", asn1_Get_keyBag},
      {"pkcs8ShroudedKeyBag", asn1_Get_pkcs_8ShroudedKeyBag},
      {"certBag", asn1_Get_certBag},
      {"crlBag", asn1_Get_crlBag},
      {"secretBag", asn1_Get_secretBag},
      {"safeContentsBag", asn1_Get_safeContentBag},
      {"x509Certificate", asn1_Get_x509Certificate},
      {"x509Crl", asn1_Get_x509Crl},
      {"PBE-SHA1-3DES", asn1_Get_pbeWithSHA1And3_KeyTripleDES_CBC},
      {"PBE-SHA1-RC2-40", asn1_Get_pbeWithSHA1And40BitRC2},
      {"nsComment", asn1_Get_netscape_comment},
      {"nsCertType", asn1_Get_netscape_cert_type},
      {"nsBaseUrl", asn1_Get_netscape_base_url},
      {"msExtReq", asn1_Get_ms_certificate_request_extensions},
      {"id-pda-dateOfBirth", asn1_Get_dateOfBirth},
      {"id-pda-countryOfResidence", asn1_Get_countryOfResidence},
  };
  std::string configuration = "asn1=SEQUENCE:all\n[all]\n";
  Bytes ours;
  for (size_t i = 0; i < std::size(rows); ++i) {
    configuration += std::to_string(i) + "=OID:" + rows[i].first + "\n";
    ours = ours + encode(asn1_ObjId_e, rows[i].second());
  }
  write_file("identifiers.cnf", text(configuration));
  openssl("asn1parse -genconf identifiers.cnf -noout -out identifiers.der");
  const Element all = take_apart("identifiers.der");
  ASSERT_EQ(std::size(rows), all.parts.size());
  for (size_t i = 0; i < std::size(rows); ++i)
    EXPECT_EQ(all.parts[i].whole, encode(asn1_ObjId_e, rows[i].second())) << rows[i].first;
}

/* ------------------------------------------------------------------------------------------- */
/* Making what the tool reads                                                                    */
/* ------------------------------------------------------------------------------------------- */

AlgId *signature_algorithm(const std::string &kind) {
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

Time *utc_time(const char *text) {
  Time *time = asn1_Time_new();
  time->kind = 23;
  time->value = asn1_UTCTime_clone(text);
  return time;
}

Time *generalized_time(const char *text) {
  Time *time = asn1_Time_new();
  time->kind = 24;
  time->value = asn1_GeneralizedTime_clone(text);
  return time;
}

Extension *extension(const ObjId *id, uint32_t critical, const Bytes &content) {
  Extension *result = asn1_Extension_new();
  result->extnID = asn1_ObjId_clone(id);
  result->critical = critical;
  result->extnValue = asn1_OctetString_new(0);
  asn1_ASN1String_append(result->extnValue, static_cast<uint32_t>(content.size()), content.data());
  return result;
}

/// A certificate for the key of a kind; its signature is still missing.
CertificatePointer unsigned_certificate(const std::string &kind, const std::string &issuer_kind,
                                        uint32_t serial, const char *issuer, const char *subject) {
  key(kind);
  Certificate *certificate = asn1_Certificate_new();
  Certificate_TBS *tbs = asn1_Certificate_TBS_new();
  certificate->tbsCertificate = tbs;
  certificate->signatureAlgorithm = signature_algorithm(issuer_kind);
  tbs->version = asn1_Integer_set(2);
  tbs->serialNumber = asn1_Integer_set(serial);
  tbs->signature = signature_algorithm(issuer_kind);
  tbs->issuer = asn1_Name_clone(issuer);
  tbs->validity = asn1_Validity_new();
  tbs->validity->notBefore = utc_time("200131120000Z");
  tbs->validity->notAfter = generalized_time("99991231235959Z");
  tbs->subjectSequence = asn1_Name_to_RDNSequence(subject);
  tbs->subjectPublicKeyInfo = decode(asn1_SubjectPKI_d, read_file(kind + ".spki")).record;
  tbs->extensions = List_new(0);
  return CertificatePointer(certificate);
}

void add(Certificate *certificate, Extension *made) {
  ASSERT_EQ(1, List_append(certificate->tbsCertificate->extensions, made, 0));
}

/// Lets the tool sign the certificate with the key of a kind and writes it to `file`.
void sign(Certificate *certificate, const std::string &kind, const std::string &file) {
  const Bytes tbs = encode(asn1_Certificate_TBS_e, certificate->tbsCertificate);
  ASSERT_FALSE(tbs.empty());
  write_file("tbs.der", tbs);
  openssl("pkeyutl -sign -rawin -in tbs.der -out signature -inkey " + key(kind) +
          (kind == "ed25519" ? "" : " -digest sha256"));
  const Bytes signature = read_file("signature");
  asn1_BitString_free(certificate->signatureValue);
  certificate->signatureValue = asn1_BitString_new(0);
  asn1_BitString_append(certificate->signatureValue, static_cast<uint32_t>(signature.size()),
                        signature.data());
  write_file("signed.der", encode(asn1_Certificate_e, certificate));
  openssl("x509 -inform DER -in signed.der -out " + file);
}

const char authority_name[] = "/c(19)=DE/o(12)=Example,ou(12)=A//B/,C/cn(19)=Authority";
const Bytes basic_constraints_of_an_authority = hex("30 06 01 01 FF 02 01 00");
const Bytes certificate_signing = hex("03 02 01 06");
const Bytes key_identifier = hex("04 02 4B 49");
const Bytes authority_key_identifier = hex("30 04 80 02 4B 49");

class CertificateForOpenssl : public testing::TestWithParam<const char *> {};

TEST_P(CertificateForOpenssl, IsPrintedAndVerified) {
  const std::string kind = GetParam();
  const CertificatePointer authority =
      unsigned_certificate(kind, kind, 1, authority_name, authority_name);
  add(authority.get(),
      extension(asn1_Get_id_ce_basicConstraints(), 0xFF, basic_constraints_of_an_authority));
  add(authority.get(), extension(asn1_Get_id_ce_keyUsage(), 0xFF, certificate_signing));
  add(authority.get(), extension(asn1_Get_id_ce_subjectKeyIdentifier(), 0, key_identifier));
  sign(authority.get(), kind, "authority.pem");
  EXPECT_EQ("authority.pem: OK\n",
            openssl("verify -check_ss_sig -CAfile authority.pem authority.pem"));

  const CertificatePointer leaf = unsigned_certificate(
      "ec", kind, 0xFEDCBA98, authority_name, "/c(19)=FR/cn(12)=www.example.org/2.5.4.9(20)=Rue 1");
  const Bytes names = element(0x30, element(0x82, text("www.example.org")));
  add(leaf.get(), extension(asn1_Get_id_ce_subjectAltName(), 0, names));
  add(leaf.get(), extension(asn1_Get_id_ce_authorityKeyIdentifier(), 0, authority_key_identifier));
  sign(leaf.get(), kind, "leaf.pem");
  EXPECT_EQ("leaf.pem: OK\n",
            openssl("verify -x509_strict -purpose any -CAfile authority.pem leaf.pem"));

  const std::string report = openssl(
      "x509 -in leaf.pem -noout -text -serial -subject -issuer -dates -dateopt iso_8601"
      " -nameopt sname,sep_comma_plus,esc_2253");
  EXPECT_EQ("3 (0x2)", after("Version: ", report));
  EXPECT_EQ("FEDCBA98", after("serial=", report));
  EXPECT_EQ("C=FR,CN=www.example.org,street=Rue 1", after("subject=", report));
  EXPECT_EQ("C=DE,O=Example+OU=A/B\\,C,CN=Authority", after("issuer=", report));
  EXPECT_EQ("2020-01-31 12:00:00Z", after("notBefore=", report));
  EXPECT_EQ("9999-12-31 23:59:59Z", after("notAfter=", report));
  EXPECT_NE(std::string::npos, report.find("X509v3 Subject Alternative Name: \n"));
  EXPECT_NE(std::string::npos, report.find("DNS:www.example.org\n"));
}

TEST_P(CertificateForOpenssl, IsVerifiedAfterADecodedOneWasChanged) {
  const std::string kind = GetParam();
  openssl("req -x509 -new -subj /CN=root -sha256 -outform DER -out root.der -key " + key(kind));
  const CertificatePointer certificate = decoded_certificate(read_file("root.der"));
  release(asn1_OctetString_free, certificate->tbsEncoded);
  release(asn1_Integer_free, certificate->tbsCertificate->serialNumber);
  certificate->tbsCertificate->serialNumber = asn1_Integer_set(0x4711);
  sign(certificate.get(), kind, "root.pem");
  EXPECT_EQ("root.pem: OK\n", openssl("verify -check_ss_sig -CAfile root.pem root.pem"));
  EXPECT_EQ("serial=4711\n", openssl("x509 -in root.pem -noout -serial"));
}

INSTANTIATE_TEST_SUITE_P(Keys, CertificateForOpenssl, testing::Values("rsa", "ec", "ed25519"),
                         [](const auto &kind) { return std::string(kind.param); });

}  // namespace
