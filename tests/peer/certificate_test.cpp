// Tests certificates against the openssl tool: the library reads those of the tool as the tool
// does, and the tool reads and verifies those of the library.
#include "openssl.h"

namespace certificate_test {

namespace {

using namespace support;

/* ------------------------------------------------------------------------------------------- */
/* Reading what the tool makes                                                                   */
/* ------------------------------------------------------------------------------------------- */

using CertificatePointer = Owned<Certificate, asn1_Certificate_free>;

CertificatePointer decoded_certificate(const Bytes &der) {
  return record_of<asn1_Certificate_free>(asn1_Certificate_d, der);
}

/// Checks that every field has the value that `openssl x509` prints for the certificate.
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

/// Checks that every field has the octets that `openssl asn1parse` finds in its place.
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
  expect_same_extensions(field->parts.at(0), tbs->extensions);
}

/// Checks that the certificate is written as it was: from its stored octets, from its fields, and
/// from the text of its names where that keeps them whole.
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
  // Newer versions of the tool add extensions unless the configuration says otherwise.
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

// The tool's names for the library's identifiers.
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

/// Returns a certificate for the key of a kind, without its signature.
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

/// Makes the tool sign the certificate with the key of a kind, and writes it to `file`.
void sign(Certificate *certificate, const std::string &kind, const std::string &file) {
  const Bytes tbs = encode(asn1_Certificate_TBS_e, certificate->tbsCertificate);
  ASSERT_FALSE(tbs.empty());
  asn1_BitString_free(certificate->signatureValue);
  certificate->signatureValue = bit_string(signature_over(tbs, kind));
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

}  // namespace certificate_test
