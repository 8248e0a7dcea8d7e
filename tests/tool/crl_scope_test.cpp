// The command "crl" for lists that are not of all that an issuer revokes (RFC 5280, 5.2.5), for
// names that are encoded otherwise, and for what stands beside an element.
#include "records.h"

namespace crl_scope_test {

namespace {

using namespace tool_tests;

Bytes utc(const char *text) { return element(0x17, support::text(text)); }

Bytes extension(const char *identifier, const Bytes &value) {
  return sequence(oid(identifier) + octet_string(value));
}

/// An issuing distribution point of these fields.
Bytes issuing_point(const Bytes &fields) { return extension("55 1D 1C", sequence(fields)); }

Bytes uri(const char *text) { return element(0x86, support::text(text)); }

const Bytes users_only = hex("81 01 FF");
const Bytes authorities_only = hex("82 01 FF");
const Bytes key_compromise_only = hex("83 02 06 40");
const Bytes indirect = hex("84 01 FF");
const Bytes attributes_only = hex("85 01 FF");
const Bytes at_x = element(0xA0, element(0xA0, uri("http://x/")));

/// A CRL of "CA" that revokes the number 01.
Bytes crl(const Bytes &extensions, const Bytes &entries = {}) {
  const Bytes entry = sequence(integer("01") + utc("200102030405Z"));
  return sequence(sequence(hex("02 01 01") + hex(ed25519) + common_name("CA") +
                           utc("200101000000Z") + utc("300101000000Z") + sequence(entry + entries) +
                           element(0xA0, sequence(extensions))) +
                  hex(ed25519) + element(0x03, hex("00 01")));
}

/// A certificate with the number 02.
Bytes certificate(const Bytes &issuer, const Bytes &extensions = {}) {
  return sequence(sequence(hex("A0 03 02 01 02") + integer("02") + hex(ed25519) + issuer +
                           sequence(utc("200101000000Z") + utc("300101000000Z")) +
                           common_name("leaf") + sequence(hex(ed25519) + hex("03 02 00 01")) +
                           (extensions.empty() ? Bytes() : element(0xA3, sequence(extensions)))) +
                  hex(ed25519) + element(0x03, hex("00 01")));
}

const Bytes authority = extension("55 1D 13", sequence(hex("01 01 FF")));

/// Points of distribution: one with the name, and one of the issuer "CA".
Bytes named_point(const char *name) {
  return extension("55 1D 1F", sequence(sequence(element(0xA0, element(0xA0, uri(name))))));
}
const Bytes point_of_ca =
    extension("55 1D 1F", sequence(sequence(element(0xA2, element(0xA4, common_name("CA"))))));

class CrlScope : public Records {
 protected:
  std::string answer(std::vector<std::string> more, const Bytes &list) const {
    more.insert(more.begin(), "crl");
    const Outcome result = run(std::move(more), characters(list));
    return std::to_string(result.status) + " " + result.out + result.err;
  }
  /// What is said of a certificate, without the name of its file.
  std::string of_certificate(const Bytes &one, const Bytes &list) const {
    const std::string name = file("one.der", one);
    std::string said = answer({"--certificate", name}, list);
    const size_t at = said.find(name + ": element 1: ");
    return at == said.npos ? said : said.erase(at, (name + ": element 1: ").size());
  }
};

const std::string covers_not = "2 orvelasn1: standard input: element 1 is no CRL for it, since ";
const std::string ask = ": ask the CRL that the certificate names\n";

TEST_F(CrlScope, SaysThatAListIsNotForACertificate) {
  const Bytes user = certificate(common_name("CA"));
  const Bytes issuer = certificate(common_name("CA"), authority);
  EXPECT_EQ(covers_not + "it is for user certificates only" + ask,
            of_certificate(issuer, crl(issuing_point(users_only))));
  EXPECT_EQ("1 02: not revoked, in a CRL of limited scope: only user certificates\n",
            of_certificate(user, crl(issuing_point(users_only))));
  EXPECT_EQ(covers_not + "it is for CA certificates only" + ask,
            of_certificate(user, crl(issuing_point(authorities_only))));
  EXPECT_EQ("1 02: not revoked, in a CRL of limited scope: only CA certificates\n",
            of_certificate(issuer, crl(issuing_point(authorities_only))));
  EXPECT_EQ(covers_not + "it is for attribute certificates only" + ask,
            of_certificate(user, crl(issuing_point(attributes_only))));
}

TEST_F(CrlScope, HoldsTheNamesOfDistributionPointsAgainstEachOther) {
  const Bytes list = crl(issuing_point(at_x));
  EXPECT_EQ("1 02: not revoked, in a CRL of limited scope: URI http://x/\n",
            of_certificate(certificate(common_name("CA"), named_point("http://x/")), list));
  EXPECT_EQ(
      covers_not + "it is for certificates that name its distribution point, URI http://x/" + ask,
      of_certificate(certificate(common_name("CA"), named_point("http://y/")), list));
}

TEST_F(CrlScope, ALaterListMayBeForTheCertificate) {
  const Bytes user = certificate(common_name("CA"));
  EXPECT_EQ("1 standard input: element 2: 02: not revoked\n",
            of_certificate(user, crl(issuing_point(authorities_only)) + crl({})));
}

TEST_F(CrlScope, SomeReasonsAreNotAll) {
  EXPECT_EQ(
      "2 02: not revoked, in a CRL of limited scope: only for keyCompromise\norvelasn1: standard "
      "input: element 1: it lists only what is revoked for some reasons: ask the CRL of the "
      "others, too\n",
      of_certificate(certificate(common_name("CA")), crl(issuing_point(key_compromise_only))));
}

TEST_F(CrlScope, ASerialNumberAloneIsAnsweredWithTheScope) {
  EXPECT_EQ("0 01: revoked on 2020-01-02 03:04:05 UTC, no reason given\n",
            answer({"--serial", "0x1"}, crl(issuing_point(users_only))));
  EXPECT_EQ("1 02: not revoked, in a CRL of limited scope: only user certificates\n",
            answer({"--serial", "0x2"}, crl(issuing_point(users_only))));
  const Outcome object =
      run({"crl", "--json", "--serial", "0x2"}, characters(crl(issuing_point(users_only))));
  EXPECT_EQ(json::parse(R"({"file": "standard input", "element": 1, "serialNumber": "02",
                            "revoked": false, "scope": ["only user certificates"]})"),
            json::parse(object.out));
}

TEST_F(CrlScope, AnIndirectListIsForThoseWhoNameItsIssuer) {
  const Bytes other = certificate(common_name("Other CA"), point_of_ca);
  EXPECT_EQ("1 02: not revoked, in a CRL of limited scope: an indirect CRL\n",
            of_certificate(other, crl(issuing_point(indirect))));
  // The entry 02 is of "other ca", written otherwise.
  const Bytes name =
      extension("55 1D 1D", sequence(element(0xA4, common_name(" other  CA", 0x13))));
  const Bytes entry = sequence(integer("02") + utc("200102030405Z") + sequence(name));
  EXPECT_EQ(
      "0 02: revoked on 2020-01-02 03:04:05 UTC, no reason given, issued by "
      "commonName= other  CA\n",
      of_certificate(other, crl(issuing_point(indirect), entry)));
  // The same number of the list's own issuer is not revoked.
  EXPECT_EQ("1 02: not revoked, in a CRL of limited scope: an indirect CRL\n",
            of_certificate(certificate(common_name("CA")), crl(issuing_point(indirect), entry)));
  EXPECT_EQ("2 orvelasn1: - has no CRL of its issuer, commonName=Third" + ask,
            of_certificate(certificate(common_name("Third")), crl(issuing_point(indirect), entry)));
}

// RFC 5280, 7.1: neither the case of letters, nor blanks, nor the type of the string matter.
TEST_F(CrlScope, NamesThatAreTheSameAreOne) {
  EXPECT_EQ("1 02: not revoked\n", of_certificate(certificate(common_name("ca ", 0x13)), crl({})));
  EXPECT_EQ("2 orvelasn1: - has no CRL of its issuer, commonName=C A" + ask,
            of_certificate(certificate(common_name("C A")), crl({})));
}

TEST_F(CrlScope, TheSummaryHasIt) {
  EXPECT_EQ(R"(CertificateRevocationList  standard input: element 1
  issuer           commonName=CA
  thisUpdate       2020-01-01 00:00:00 UTC
  nextUpdate       2030-01-01 00:00:00 UTC, 31 days left
  scope            URI http://x/
                   only user certificates
                   only for keyCompromise
  entries          1
  firstRevocation  2020-01-02 03:04:05 UTC
  lastRevocation   2020-01-02 03:04:05 UTC
  reasons          1 no reason given

)",
            good({"crl", "--at", "2029-12-01"},
                 crl(issuing_point(at_x + users_only + key_compromise_only))));
}

TEST_F(CrlScope, APointThatCannotBeReadIsAFault) {
  const Outcome result = run({"crl"}, characters(crl(extension("55 1D 1C", hex("05 00")))));
  EXPECT_EQ(2, result.status);
  EXPECT_TRUE(
      matches(result.err,
              "^orvelasn1: standard input: element 1, offset [0-9]+: "
              "issuingDistributionPoint: expected SEQUENCE \\(30\\), found NULL \\(05\\)\n$"))
      << result.err;
}

TEST_F(CrlScope, APointThatCannotBeReadLeavesTheAnswerOpen) {
  EXPECT_EQ(
      "2 02: not revoked\norvelasn1: standard input: element 1: its issuing distribution point "
      "cannot be read: which certificates it is for is not known\n",
      answer({"--serial", "0x2"}, crl(extension("55 1D 1C", hex("05 00")))));
}

// ---- What is beside an element ------------------------------------------------------------------

/// The settings of openssl after a certificate, as a "TRUSTED CERTIFICATE".
TEST_F(CrlScope, RemarksAreSaidByEachCommand) {
  const std::string pem = make_certificate(ec_key);
  const std::string trusted =
      file("trusted.pem", openssl({"x509", "-trustout", "-addtrust", "serverAuth"}, pem));
  const std::string plain = file("plain.pem", pem);
  const std::string remark = "^orvelasn1: " + trusted +
                             ": element 1 \\(line 1\\): [0-9]+ octets of trust settings after the "
                             "certificate are not shown; \"openssl x509 -text -in FILE\" shows "
                             "them\n$";
  const Outcome shown = run({"show", trusted});
  EXPECT_TRUE(matches(shown.err, remark)) << shown.err;
  const Outcome keys = run({"key", trusted, path("key.pem")});
  EXPECT_EQ(0, keys.status);
  EXPECT_TRUE(matches(keys.err, remark)) << keys.err;
  const Outcome same = run({"diff", plain, trusted});
  EXPECT_EQ(0, same.status);
  EXPECT_TRUE(matches(same.err, remark)) << same.err;
  const Outcome asked = run({"crl", "--certificate", trusted}, characters(crl({})));
  EXPECT_EQ(2, asked.status);
  EXPECT_TRUE(matches(asked.err.substr(0, asked.err.find('\n') + 1), remark)) << asked.err;
}

}  // namespace

}  // namespace crl_scope_test
