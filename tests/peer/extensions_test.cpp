// The forms of extensions, against the openssl tool: it makes a certificate whose extensions the
// library reads and writes back, and prints those that the library makes.
#include <forms.h>

#include "revocation.h"

namespace extensions_test {

namespace {

using support::Bytes;
using support::created;
using support::decoded;
using support::dotted;
using support::element_of;
using support::encoded;
using support::expect_kept;
using support::Held;
using support::hex;
using support::key;
using support::list_of;
using support::octet_string;
using support::openssl;
using support::read_file;
using support::text;
using support::value;
using support::write_file;

/// The values of a list of extensions, by the texts of their identifiers.
std::map<std::string, Bytes> values_of(const List *extensions) {
  std::map<std::string, Bytes> values;
  for (int32_t i = 0; i < List_len(extensions); ++i) {
    const auto &extension = element_of<Extension>(extensions, i);
    values[dotted(extension.extnID)] = value(extension.extnValue);
  }
  return values;
}

/// Makes the certificate "extensions.der" with extensions of a configuration, and returns them by
/// the text of their identifiers.
std::map<std::string, Bytes> made_by_openssl(const std::string &extensions) {
  write_file("extensions.cnf",
             text("[req]\nprompt=no\ndistinguished_name=name\nx509_extensions=extensions\n"
                  "[name]\nCN=a\n[extensions]\n" +
                  extensions));
  openssl("req -x509 -new -config extensions.cnf -key " + key("ec") +
          " -outform DER -out extensions.der");
  const auto certificate = decoded(FORM(Certificate, Certificate), read_file("extensions.der"));
  return values_of(certificate->tbsCertificate->extensions);
}

/// What the tool prints of an extension that the library encoded.
std::string printed(const std::string &identifier, const Bytes &octets) {
  made_by_openssl(identifier + "=DER:" + support::upper_hex(octets) + "\n");
  return openssl("x509 -inform DER -in extensions.der -noout -text -certopt ext_parse");
}

const char *const many =
    "subjectKeyIdentifier=hash\n"
    "authorityKeyIdentifier=keyid:always,issuer:always\n"
    "basicConstraints=critical,CA:TRUE,pathlen:3\n"
    "keyUsage=critical,digitalSignature,keyCertSign,cRLSign,decipherOnly\n"
    "extendedKeyUsage=serverAuth,clientAuth,2.25.340282366920938463463374607431768211455\n"
    "subjectAltName=DNS:a.example,IP:192.0.2.1,email:a@b.example,URI:https://a.example/"
    ",RID:1.2.3.4,"
    "otherName:1.2.3.5;UTF8:x,dirName:directory\n"
    "issuerAltName=URI:https://b.example/\n"
    "crlDistributionPoints=full,relative\n"
    "freshestCRL=URI:http://a.example/d.crl\n"
    "authorityInfoAccess=OCSP;URI:http://a.example/o,caIssuers;dirName:directory\n"
    "subjectInfoAccess=caRepository;URI:http://a.example/r\n"
    "certificatePolicies=1.2.3.4,@policy\n"
    "policyMappings=1.2.3.4:1.2.3.5,1.2.3.6:1.2.3.7\n"
    "policyConstraints=critical,requireExplicitPolicy:3,inhibitPolicyMapping:0\n"
    "nameConstraints=critical,permitted;DNS:.example,permitted;dirName:directory,"
    "excluded;IP:192.0.2.0/255.255.255.0\n"
    "inhibitAnyPolicy=critical,2\n"
    "tlsfeature=status_request,status_request_v2\n"
    "sbgp-ipAddrBlock=critical,IPv4:10.0.32.0/20,IPv4:10.2.48.0-10.2.64.255,IPv6:inherit\n"
    "sbgp-autonomousSysNum=critical,AS:135,AS:3000-3999,RDI:inherit\n"
    "[full]\n"
    "fullname=URI:http://a.example/1.crl,URI:http://a.example/2.crl\n"
    "CRLissuer=dirName:directory\n"
    "reasons=keyCompromise,CACompromise\n"
    "[relative]\n"
    "relativename=relative_name\n"
    "[relative_name]\nCN=a\n"
    "[directory]\nC=DE\nCN=b\n"
    "[policy]\npolicyIdentifier=1.2.3.5\nCPS.1=http://a.example/cps\nuserNotice.1=@notice\n"
    "[notice]\nexplicitText=UTF8:text\norganization=org\nnoticeNumbers=1,2\n";

template <class T>
Held<T> kept(const support::RecordFamily<T> &family, std::map<std::string, Bytes> &values,
             const char *identifier) {
  SCOPED_TRACE(identifier);
  return expect_kept(family, values.at(identifier));
}

TEST(ExtensionsOfOpenssl, AreReadAndComeBack) {
  auto values = made_by_openssl(many);
  const auto authority =
      kept(FORM(AuthorityKeyIdentifier, AuthorityKeyIdentifier), values, "2.5.29.35");
  const auto subject = kept(FORM_LIST(SubjectKeyIdentifier, OctetString), values, "2.5.29.14");
  ASSERT_NE(nullptr, authority->keyIdentifier);
  EXPECT_EQ(value(subject.get()), value(authority->keyIdentifier));
  EXPECT_EQ(1, List_len(authority->authorityCertIssuer));
  ASSERT_NE(nullptr, authority->authorityCertSerialNumber);

  const auto constraints = kept(FORM(BasicConstraints, BasicConstraints), values, "2.5.29.19");
  EXPECT_NE(0U, constraints->cA);
  EXPECT_EQ(3U, asn1_Integer_get(constraints->pathLenConstraint));
  EXPECT_EQ(9U, kept(FORM_LIST(KeyUsage, BitString), values, "2.5.29.15")->length);
  const auto purposes = kept(FORM_LIST(ExtKeyUsageSyntax, List), values, "2.5.29.37");
  EXPECT_EQ("2.25.340282366920938463463374607431768211455",
            dotted(&element_of<ObjId>(purposes.get(), 2)));
  EXPECT_EQ(7, List_len(kept(FORM_LIST(GeneralNames, List), values, "2.5.29.17").get()));
  EXPECT_EQ(1, List_len(kept(FORM_LIST(GeneralNames, List), values, "2.5.29.18").get()));

  const auto points = kept(FORM_LIST(CRLDistributionPoints, List), values, "2.5.29.31");
  ASSERT_EQ(2, List_len(points.get()));
  const auto &full = element_of<DistributionPoint>(points.get(), 0);
  EXPECT_EQ(0, full.distributionPoint->kind);
  EXPECT_EQ(hex("60"), value(full.reasons));
  EXPECT_EQ(4, element_of<GeneralName>(full.cRLIssuer, 0).kind);
  EXPECT_EQ(1, element_of<DistributionPoint>(points.get(), 1).distributionPoint->kind);
  EXPECT_EQ(1, List_len(kept(FORM_LIST(CRLDistributionPoints, List), values, "2.5.29.46").get()));

  const auto access = FORM_LIST(AuthorityInfoAccessSyntax, List);
  EXPECT_EQ(2, List_len(kept(access, values, "1.3.6.1.5.5.7.1.1").get()));
  EXPECT_EQ(1, List_len(kept(access, values, "1.3.6.1.5.5.7.1.11").get()));

  const auto policies = kept(FORM_LIST(CertificatePolicies, List), values, "2.5.29.32");
  ASSERT_EQ(2, List_len(policies.get()));
  const List *const qualifiers =
      element_of<pki_PolicyInformation>(policies.get(), 1).policyQualifiers;
  ASSERT_EQ(2, List_len(qualifiers));
  EXPECT_EQ(text("http://a.example/cps"),
            value(expect_kept(FORM_LIST(CPSuri, IA5String),
                              value(element_of<pki_PolicyQualifierInfo>(qualifiers, 0).qualifier))
                      .get()));
  const auto notice =
      expect_kept(FORM(UserNotice, pki_UserNotice),
                  value(element_of<pki_PolicyQualifierInfo>(qualifiers, 1).qualifier));
  EXPECT_EQ(text("org"),
            value(static_cast<const ASN1String *>(notice->noticeRef->organization->value)));
  EXPECT_EQ(2, List_len(notice->noticeRef->noticeNumbers));
  EXPECT_EQ(12, notice->explicitText->kind);
  EXPECT_EQ(2, List_len(kept(FORM_LIST(PolicyMappings, List), values, "2.5.29.33").get()));
  const auto policy = kept(FORM(PolicyConstraints, PolicyConstraints), values, "2.5.29.36");
  EXPECT_EQ(3U, asn1_Integer_get(policy->requireExplicitPolicy));
  EXPECT_EQ(0U, asn1_Integer_get(policy->inhibitPolicyMapping));
  EXPECT_EQ(
      2U, asn1_Integer_get(kept(FORM_LIST(InhibitAnyPolicy, Integer), values, "2.5.29.54").get()));

  const auto names = kept(FORM(NameConstraints, NameConstraints), values, "2.5.29.30");
  EXPECT_EQ(2, List_len(names->permittedSubtrees));
  EXPECT_EQ(1, List_len(names->excludedSubtrees));
  EXPECT_EQ(2, List_len(kept(FORM_LIST(Features, List), values, "1.3.6.1.5.5.7.1.24").get()));
  EXPECT_EQ(2, List_len(kept(FORM_LIST(IPAddrBlocks, List), values, "1.3.6.1.5.5.7.1.7").get()));
  const auto systems = kept(FORM(ASIdentifiers, pki_ASIdentifiers), values, "1.3.6.1.5.5.7.1.8");
  EXPECT_EQ(16, systems->asnum->kind);
  EXPECT_EQ(5, systems->rdi->kind);
  EXPECT_EQ(19U, values.size());
}

TEST(ExtensionsOfOpenssl, OfARevocationListAreReadAndComeBack) {
  write_file("list.cnf", text(R"([ca]
default_ca=authority
[authority]
database=index.txt
crlnumber=crlnumber
default_md=sha256
crl_extensions=extensions
[extensions]
authorityKeyIdentifier=keyid:always
deltaCRL=critical,ASN1:INTEGER:0x1267
issuingDistributionPoint=critical,@point
freshestCRL=URI:http://a.example/d.crl
[point]
relativename=relative
onlyCA=TRUE
onlysomereasons=keyCompromise,CACompromise
indirectCRL=TRUE
[relative]
CN=a
)"));
  write_file("crlnumber", text("0100\n"));
  support::write_index(
      {{"260131120000Z,superseded", "01"}, {"260131120000Z,keyTime,20251231235959Z", "02"}});
  openssl("ca -gencrl -config list.cnf -crldays 1 -keyfile " + key("ec") + " -cert " +
          support::authority("ec") + " -out list.pem");
  openssl("crl -in list.pem -outform DER -out list.der");
  const auto crl = expect_kept(FORM(CertificateRevocationList, CertificateRevocationList),
                               read_file("list.der"));

  auto values = values_of(crl->tbsCertList->crlExtensions);
  EXPECT_EQ(5U, values.size());
  kept(FORM(AuthorityKeyIdentifier, AuthorityKeyIdentifier), values, "2.5.29.35");
  EXPECT_EQ(256U, asn1_Integer_get(kept(FORM_LIST(CRLNumber, Integer), values, "2.5.29.20").get()));
  EXPECT_EQ(4711U,
            asn1_Integer_get(kept(FORM_LIST(BaseCRLNumber, Integer), values, "2.5.29.27").get()));
  kept(FORM_LIST(CRLDistributionPoints, List), values, "2.5.29.46");
  const auto point =
      kept(FORM(IssuingDistributionPoint, pki_IssuingDistributionPoint), values, "2.5.29.28");
  EXPECT_EQ(1, point->distributionPoint->kind);
  EXPECT_EQ(0U, point->onlyContainsUserCerts);
  EXPECT_NE(0U, point->onlyContainsCACerts);
  EXPECT_EQ(hex("60"), value(point->onlySomeReasons));
  EXPECT_NE(0U, point->indirectCRL);
  EXPECT_EQ(0U, point->onlyContainsAttributeCerts);

  const List *const entries = crl->tbsCertList->revokedCertificates;
  ASSERT_EQ(2, List_len(entries));
  const auto reason = FORM_LIST(CRLReason, Integer);
  auto first = values_of(element_of<CRLEntry>(entries, 0).crlEntryExtensions);
  EXPECT_EQ(4U, asn1_Integer_get(kept(reason, first, "2.5.29.21").get()));
  auto second = values_of(element_of<CRLEntry>(entries, 1).crlEntryExtensions);
  EXPECT_EQ(1U, asn1_Integer_get(kept(reason, second, "2.5.29.21").get()));
  EXPECT_STREQ("20251231235959Z",
               kept(FORM_LIST(InvalidityDate, GeneralizedTime), second, "2.5.29.24").get());
}

/// Whether the tool prints these lines, whatever stands between them.
void expect_printed(const std::string &report, std::initializer_list<const char *> lines) {
  size_t from = 0;
  for (const char *line : lines) {
    const size_t place = report.find(line, from);
    ASSERT_NE(std::string::npos, place) << line << "\n" << report;
    from = place + 1;
  }
}

TEST(ExtensionsForOpenssl, OfAuthorityKeyIdentifier) {
  const auto family = FORM(AuthorityKeyIdentifier, AuthorityKeyIdentifier);
  const auto record = created(family);
  record->keyIdentifier = octet_string(hex("01 02 AB"));
  GeneralName *const name = pki_GeneralName_new();
  name->kind = 2;
  name->value = octet_string(text("a.example"));
  record->authorityCertIssuer = list_of({name});
  record->authorityCertSerialNumber =
      decoded(FORM_LIST(CRLNumber, Integer), hex("02 02 12 67")).release();
  expect_printed(printed("authorityKeyIdentifier", encoded(family, record)),
                 {"Authority Key Identifier", "keyid:01:02:AB", "DNS:a.example", "serial:12:67"});
}

TEST(ExtensionsForOpenssl, OfIssuingDistributionPoint) {
  const auto family = FORM(IssuingDistributionPoint, pki_IssuingDistributionPoint);
  const auto record = created(family);
  record->distributionPoint = pki_DistributionPointName_new();
  GeneralName *const name = pki_GeneralName_new();
  name->kind = 6;
  name->value = octet_string(text("http://a.example/"));
  record->distributionPoint->value = list_of({name});
  record->onlyContainsUserCerts = 1;
  record->onlySomeReasons = support::bit_string(hex("60"));
  record->indirectCRL = 1;
  expect_printed(printed("issuingDistributionPoint", encoded(family, record)),
                 {"Issuing Distribution Point", "URI:http://a.example/", "Only User Certificates",
                  "Indirect CRL", "Only Some Reasons", "Key Compromise, CA Compromise"});
}

TEST(ExtensionsForOpenssl, OfTimestamps) {
  const auto family = FORM_LIST(SignedCertificateTimestampList, List);
  pki_SignedCertificateTimestamp *const record = pki_SignedCertificateTimestamp_new();
  const Held<List> timestamps{list_of({record}), family.free};
  for (uint8_t i = 0; i < 32; ++i) record->logID[i] = i;
  record->timestamp = 1735689600123;  // 2025-01-01, and 123 milliseconds
  record->hashAlgorithm = 4;          // SHA-256
  record->signatureAlgorithm = 3;     // ECDSA
  record->extensions = octet_string(hex("AA BB"));
  record->signature = octet_string(hex("30 06 02 01 01 02 01 02"));
  expect_printed(printed("1.3.6.1.4.1.11129.2.4.2", encoded(family, timestamps)),
                 {"CT Precertificate SCTs", "Version   : v1 (0x0)", "00:01:02:03:04:05:06:07",
                  "Jan  1 00:00:00.123 2025 GMT", "Extensions: AA:BB", "ecdsa-with-SHA256",
                  "30:06:02:01:01:02:01:02"});
}

TEST(ExtensionsForOpenssl, OfPrivateKeyUsagePeriod) {
  const auto family = FORM(PrivateKeyUsagePeriod, pki_PrivateKeyUsagePeriod);
  const auto record = created(family);
  record->notBefore = asn1_GeneralizedTime_clone("20260131120000Z");
  record->notAfter = asn1_GeneralizedTime_clone("20270131120000Z");
  expect_printed(printed("2.5.29.16", encoded(family, record)),
                 {"Private Key Usage Period", "Not Before: Jan 31 12:00:00 2026 GMT",
                  "Not After: Jan 31 12:00:00 2027 GMT"});
}

}  // namespace

}  // namespace extensions_test
